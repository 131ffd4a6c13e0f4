// SPDX-License-Identifier: MIT
#include "vesk/Box.h"

#include "ge/PointMatch.h"
#include "output/Output.h"
#include "output/RecordWords.h"
#include "prims/TagLines.h"

namespace Vesk {

Box::Box(const GeVector& corner, const GeVector& end1, const GeVector& end2, const GeVector& end3)
    : origin(corner), edge1(end1 - corner), edge2(end2 - corner), edge3(end3 - corner) {}

std::array<GePoint, 8> Box::corners() const {
  return {origin,
          origin + edge1,
          origin + edge2,
          origin + edge3,
          origin + edge1 + edge2,
          origin + edge2 + edge3,
          origin + edge3 + edge1,
          origin + edge1 + edge2 + edge3};
}

std::int32_t Box::write(Output& out) const {
  if (out.mode == kFixedColumns) {
    out.beginRecord(Keywords::kBox.fixedColumns, true);
    out.addPoint9(origin);
    out.addPoint9(origin + edge1);
    out.addPoint9(origin + edge2);
    out.addPoint9(origin + edge3);
    writeTagLines(out, edges);
  } else if (out.mode == kTokens) {
    out.beginRecord(Keywords::kBox.tokens, true);
    out.addPoint(edge1, out.valueDecimals, true);
    out.addPoint(origin, out.pointDecimals, true);
    out.addPoint(edge2, out.valueDecimals, true);
    out.addPoint(edge3, out.valueDecimals, false);
    if (!edges.empty()) out.startLine(Keywords::kBoxTags);
    for (const TagEntry& mark : edges) {
      std::string token = tagToken(mark);
      for (const auto& values : mark.values) appendTagValues(token, values, out);
      out.addText(token, &mark != &edges.back());
    }
  }
  return static_cast<std::int32_t>(out.recs.size());
}

void Box::move(const GeVector& v) { origin += v; }

void Box::rot(const GeMatrix& m) {
  origin = m * origin;
  edge1 = m * edge1;
  edge2 = m * edge2;
  edge3 = m * edge3;
}

void Box::scale(double factor) { rot(GeMatrix::scaling(factor)); }

Extents& Box::addExtents(Extents& box) const {
  for (const GePoint& corner : corners()) box.add(corner);
  return box;
}

double Box::volume() const {
  return distance(origin, origin + edge1) * distance(origin, origin + edge2) *
         distance(origin, origin + edge3);
}

GePoint& Box::centroid(GePoint& p) const { return p = origin + (edge1 + edge2 + edge3) / 2.0; }

bool Box::equal(const Geo& other, double tolerance) const {
  const auto* box = sameKind<Box>(other);
  return box != nullptr && pointsCoincide(corners(), box->corners(), tolerance);
}

}  // namespace Vesk
