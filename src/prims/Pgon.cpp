// SPDX-License-Identifier: MIT
#include "vesk/Pgon.h"

#include <array>
#include <initializer_list>
#include <span>
#include <string_view>
#include <utility>

#include "output/Output.h"
#include "output/RecordWords.h"
#include "prims/CentroidAccumulator.h"
#include "prims/EarClipper.h"
#include "vesk/ExceptionInfo.h"
#include "vesk/GeDirect.h"

namespace Vesk {
namespace {

constexpr double kSmallestArea = 1e-8;
constexpr double kSmallestNormal = 1e-8;  // length of the area normal by area

// Writes one mode 2 record with these vertices; the first one says whether it
// has normals.
void writeRecord(Output& out, std::span<const PgonVertex* const> corners) {
  const bool triangle = corners.size() == 3;
  const bool normals = corners.front()->hasNormal;
  const Keyword& keyword =
      triangle ? (normals ? Keywords::kTriangleWithNormals : Keywords::kTriangle)
               : (normals ? Keywords::kQuadrangleWithNormals : Keywords::kQuadrangle);
  out.beginRecord(keyword.fixedColumns, true);
  for (const PgonVertex* corner : corners) out.addPoint9(corner->point);
  if (!normals) return;
  out.nextLine();
  for (const PgonVertex* corner : corners) out.addPoint9(corner->normal);
}

// Finishes a record so that another one can follow; false when the element
// counters are used up.
bool nextRecord(Output& out) {
  out.flushLine();
  return out.incrementCounter();
}

// The same for the records of a fan: the one that the counters end with stays in
// the assembler's line.
bool nextFanRecord(Output& out) {
  if (!out.incrementCounter()) return false;
  out.flushLine();
  return true;
}

// Twice the triangle's area along its normal.
GeVector areaNormal(const GePoint& a, const GePoint& b, const GePoint& c) {
  return cross(b - a, c - a);
}

}  // namespace

Pgon::Pgon(std::initializer_list<GePoint> points) {
  vertices.reserve(points.size());
  for (const GePoint& p : points) addVertex(p);
}

void Pgon::addVertex(const GePoint& point) { vertices.push_back({point, {}, false}); }

void Pgon::addVertex(const GePoint& point, const GeVector& normal) {
  vertices.push_back({point, normal, true});
}

bool Pgon::triangulate(std::vector<Pgon>& pieces) const {
  pieces.clear();
  for (const auto& triangle : keptTriangles()) {
    Pgon& piece = pieces.emplace_back();
    for (const std::uint32_t i : triangle) piece.vertices.push_back(vertices[i]);
  }
  return !pieces.empty();
}

// The triangles of the triangulation that are no degenerate slivers.
std::vector<std::array<std::uint32_t, 3>> Pgon::keptTriangles() const {
  std::vector<GePoint> points;
  points.reserve(vertices.size());
  for (const PgonVertex& vertex : vertices) points.push_back(vertex.point);
  auto triangles = clipEars(points);
  std::erase_if(triangles, [&points](const auto& t) {
    const double length = areaNormal(points[t[0]], points[t[1]], points[t[2]]).length();
    const double area = length / 2.0;
    return !(area > kSmallestArea && length / area > kSmallestNormal);
  });
  return triangles;
}

std::int32_t Pgon::write(Output& out) const {
  if (vertices.size() < 3) {
    throw ExceptionInfo("pgon: less than 3 vertices", ExceptionInfo::kFatal);
  }
  if (out.mode == kFixedColumns) writeFixedColumns(out);
  if (out.mode == kTokens) writeTokens(out);
  return static_cast<std::int32_t>(out.recs.size());
}

void Pgon::writeFixedColumns(Output& out) const {
  const std::size_t n = vertices.size();
  const PgonVertex* v = vertices.data();
  if (n == 3) return writeRecord(out, std::array{v, v + 1, v + 2});
  if (n == 4) return writeRecord(out, std::array{v, v + 1, v + 2, v + 3});

  bool first = true;
  for (const auto& [a, b, c] : keptTriangles()) {
    if (!first && !nextRecord(out)) return;
    writeRecord(out, std::array{v + a, v + b, v + c});
    first = false;
  }
  if (!first) return;

  for (std::size_t i = 0; i < n - 3; i += 2) {
    if (i > 0 && !nextFanRecord(out)) return;
    writeRecord(out, std::array{v, v + i + 1, v + i + 2, v + i + 3});
  }
  if (n % 2 == 0 || !nextFanRecord(out)) return;
  writeRecord(out, std::array{v, v + n - 2, v + n - 1});
}

void Pgon::writeTokens(Output& out) const {
  out.beginRecord(Keywords::kTriangle.tokens, true);
  bool first = true;
  const auto beginItem = [&](std::string_view word) {
    if (!first) out.addText(",");
    out.addText(word);
    first = false;
  };
  const GePoint& origin = vertices.front().point;
  for (const PgonVertex& vertex : vertices) {
    const bool absolute = first;
    beginItem(Words::kPoint);
    if (absolute) {
      out.addPoint(vertex.point, out.pointDecimals, false);
    } else {
      out.addPoint(vertex.point - origin, out.valueDecimals, false);
    }
  }
  for (const PgonVertex& vertex : vertices) {
    if (!vertex.hasNormal) continue;
    beginItem(Words::kNormal);
    out.addPoint(vertex.normal, out.valueDecimals, false);
  }
  for (const ArcEntry& arc : arcs) {
    beginItem(Words::kArc);
    out.addFixed(arc.radius, out.valueDecimals, false);
    for (const std::int32_t value : arc.values) {
      out.addText(" ");
      out.addFixed(value, 0, false);
    }
  }
}

void Pgon::move(const GeVector& v) {
  for (PgonVertex& vertex : vertices) vertex.point += v;
}

void Pgon::rot(const GeMatrix& m) {
  std::vector<PgonVertex> turned = vertices;
  for (PgonVertex& vertex : turned) {
    vertex.point = m * vertex.point;
    if (vertex.hasNormal) vertex.normal = GeDirect(m * vertex.normal);
  }
  vertices = std::move(turned);
}

void Pgon::scale(double factor) {
  const GeMatrix m = GeMatrix::scaling(factor);
  for (PgonVertex& vertex : vertices) vertex.point = m * vertex.point;
  for (ArcEntry& arc : arcs) arc.radius *= factor;
}

Extents& Pgon::addExtents(Extents& box) const {
  for (const PgonVertex& vertex : vertices) box.add(vertex.point);
  return box;
}

std::int32_t Pgon::pieceCount() const {
  return vertices.size() < 5 ? 1 : static_cast<std::int32_t>(vertices.size() / 2);
}

GePoint& Pgon::centroid(GePoint& p) const {
  CentroidAccumulator accumulator;
  for (const auto& triangle : keptTriangles()) {
    const GePoint a = vertices[triangle[0]].point;
    const GePoint b = vertices[triangle[1]].point;
    const GePoint c = vertices[triangle[2]].point;
    const double weight = (areaNormal(a, b, c) / 2.0).length() / 3.0;
    for (const GePoint& corner : {a, b, c}) accumulator.add(corner, weight);
  }
  return p = accumulator.point();
}

bool Pgon::equal(const Geo& other, double tolerance) const {
  const auto* pgon = sameKind<Pgon>(other);
  if (pgon == nullptr || pgon->vertices.size() != vertices.size()) return false;
  for (std::size_t i = 0; i < vertices.size(); ++i) {
    const PgonVertex& a = vertices[i];
    const PgonVertex& b = pgon->vertices[i];
    if (!(distance(a.point, b.point) <= tolerance) || a.hasNormal != b.hasNormal) return false;
    if (a.hasNormal && !((a.normal - b.normal).length() <= tolerance)) return false;
  }
  return true;
}

}  // namespace Vesk
