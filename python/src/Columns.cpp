// SPDX-License-Identifier: MIT
#include "Columns.h"

namespace VeskPython {
namespace {

std::int64_t count(std::size_t size) { return static_cast<std::int64_t>(size); }

// What the offsets give to a row.
struct Range {
  Range(const Column<std::int64_t>& offsets, std::size_t row)
      : first(static_cast<std::size_t>(offsets.at(row))),
        last(static_cast<std::size_t>(offsets.at(row + 1))) {}

  std::size_t first;
  std::size_t last;
};

void addText(Column<std::uint8_t>& to, const std::string& text) {
  for (const char c : text) to.add(static_cast<std::uint8_t>(c));
}

std::string textOf(const Column<std::uint8_t>& from, const Range& range) {
  std::string text;
  text.reserve(range.last - range.first);
  for (std::size_t i = range.first; i < range.last; ++i) text += static_cast<char>(from.at(i));
  return text;
}

}  // namespace

Column<std::int64_t> TagColumns::started() {
  Column<std::int64_t> offsets;
  offsets.add(std::int64_t{0});
  return offsets;
}

void TagColumns::add(const std::vector<Vesk::TagEntry>& tags) {
  for (const Vesk::TagEntry& tag : tags) {
    addText(names, tag.name);
    nameOffsets.add(count(names.rows()));
    for (const auto& [one, other] : tag.values) {
      values.add(one);
      values.add(other);
    }
    valueOffsets.add(count(values.rows()));
  }
  offsets.add(count(nameOffsets.rows() - 1));
}

std::vector<Vesk::TagEntry> TagColumns::get(std::size_t row) const {
  std::vector<Vesk::TagEntry> tags;
  const Range range(offsets, row);
  for (std::size_t i = range.first; i < range.last; ++i) {
    Vesk::TagEntry tag{textOf(names, Range(nameOffsets, i)), {}};
    const Range pairs(valueOffsets, i);
    for (std::size_t k = pairs.first; k < pairs.last; ++k) {
      tag.values.emplace_back(values.at(2 * k), values.at(2 * k + 1));
    }
    tags.push_back(std::move(tag));
  }
  return tags;
}

void ArcColumns::add(const std::vector<Vesk::ArcEntry>& arcs) {
  for (const Vesk::ArcEntry& arc : arcs) {
    radius.add(arc.radius);
    for (const std::int32_t each : arc.values) values.add(each);
  }
  offsets.add(count(radius.rows()));
}

std::vector<Vesk::ArcEntry> ArcColumns::get(std::size_t row) const {
  std::vector<Vesk::ArcEntry> arcs;
  const Range range(offsets, row);
  for (std::size_t i = range.first; i < range.last; ++i) {
    arcs.push_back({radius.at(i), {values.at(3 * i), values.at(3 * i + 1), values.at(3 * i + 2)}});
  }
  return arcs;
}

void CylColumns::add(const Primitive& cyl) {
  start.add(cyl.origin);
  axis.add(cyl.axis);
  diameter.add(cyl.diameter);
}

void CylColumns::get(std::size_t row, Primitive& cyl) const {
  cyl.origin = start.point(row);
  cyl.axis = axis.vector(row);
  cyl.diameter = diameter.at(row);
}

void BoxColumns::add(const Primitive& box) {
  origin.add(box.origin);
  edge1.add(box.edge1);
  edge2.add(box.edge2);
  edge3.add(box.edge3);
  marks.add(box.edges);
}

void BoxColumns::get(std::size_t row, Primitive& box) const {
  box.origin = origin.point(row);
  box.edge1 = edge1.vector(row);
  box.edge2 = edge2.vector(row);
  box.edge3 = edge3.vector(row);
  box.edges = marks.get(row);
}

void RelbColumns::add(const Primitive& elbow) {
  centre.add(elbow.centre);
  startVector.add(elbow.startVector);
  endVector.add(elbow.endVector);
  width.add(elbow.width);
  depth.add(elbow.depth);
  flipped.add(elbow.flipped ? std::uint8_t{1} : std::uint8_t{0});
}

void RelbColumns::get(std::size_t row, Primitive& elbow) const {
  elbow.centre = centre.point(row);
  elbow.startVector = startVector.vector(row);
  elbow.endVector = endVector.vector(row);
  elbow.width = width.at(row);
  elbow.depth = depth.at(row);
  elbow.flipped = flipped.at(row) != 0;
}

void TorusColumns::add(const Primitive& torus) {
  centre.add(torus.centre);
  startVector.add(torus.startVector);
  endVector.add(torus.endVector);
  diameter.add(torus.diameter);
  bendRadius.add(torus.bendRadius);
}

void TorusColumns::get(std::size_t row, Primitive& torus) const {
  torus.centre = centre.point(row);
  torus.startVector = startVector.vector(row);
  torus.endVector = endVector.vector(row);
  torus.diameter = diameter.at(row);
  torus.bendRadius = bendRadius.at(row);
}

void RedColumns::add(const Primitive& red) {
  origin.add(red.origin);
  for (const GeVector& each : red.cornerVectors) cornerVectors.add(each);
  tags.add(red.tags);
}

void RedColumns::get(std::size_t row, Primitive& red) const {
  red.origin = origin.point(row);
  for (std::size_t k = 0; k < red.cornerVectors.size(); ++k) {
    red.cornerVectors[k] = cornerVectors.vector(row * red.cornerVectors.size() + k);
  }
  red.tags = tags.get(row);
}

void ConeColumns::add(const Primitive& cone) {
  start.add(cone.origin);
  axis.add(cone.axis);
  diameter1.add(cone.diameter1);
  diameter2.add(cone.diameter2);
}

void ConeColumns::get(std::size_t row, Primitive& cone) const {
  cone.origin = start.point(row);
  cone.axis = axis.vector(row);
  cone.diameter1 = diameter1.at(row);
  cone.diameter2 = diameter2.at(row);
}

void PlineColumns::add(const Primitive& pline) {
  pointSize.add(pline.pointSize);
  pointDirection.add(pline.pointDirection);
  for (const GePoint& each : pline.vertices) points.add(each);
  offsets.add(count(points.rows()));
  arcs.add(pline.arcs);
}

void PlineColumns::get(std::size_t row, Primitive& pline) const {
  pline.pointSize = pointSize.at(row);
  pline.pointDirection = pointDirection.point(row);
  pline.vertices.clear();
  const Range range(offsets, row);
  for (std::size_t i = range.first; i < range.last; ++i) pline.vertices.push_back(points.point(i));
  pline.arcs = arcs.get(row);
}

void PgonColumns::add(const Primitive& pgon) {
  for (const Vesk::PgonVertex& each : pgon.vertices) {
    points.add(each.point);
    normals.add(each.normal);
    hasNormal.add(each.hasNormal ? std::uint8_t{1} : std::uint8_t{0});
  }
  offsets.add(count(points.rows()));
  arcs.add(pgon.arcs);
}

void PgonColumns::get(std::size_t row, Primitive& pgon) const {
  pgon.vertices.clear();
  const Range range(offsets, row);
  for (std::size_t i = range.first; i < range.last; ++i) {
    pgon.vertices.push_back({points.point(i), normals.vector(i), hasNormal.at(i) != 0});
  }
  pgon.arcs = arcs.get(row);
}

void TxtColumns::add(const Primitive& txt) {
  position.add(txt.position);
  direction.add(txt.direction);
  up.add(txt.upDirection);
  charWidth.add(txt.charWidth);
  height.add(txt.height);
  alignment.add(txt.alignment);
  flag.add(txt.alignmentFlag);
  addText(textBytes, txt.text);
  textOffsets.add(count(textBytes.rows()));
}

void TxtColumns::get(std::size_t row, Primitive& txt) const {
  txt.position = position.point(row);
  txt.direction = direction.vector(row);
  txt.upDirection = up.vector(row);
  txt.charWidth = charWidth.at(row);
  txt.height = height.at(row);
  txt.alignment = alignment.at(row);
  txt.alignmentFlag = flag.at(row);
  txt.text = textOf(textBytes, Range(textOffsets, row));
}

}  // namespace VeskPython
