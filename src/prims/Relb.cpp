// SPDX-License-Identifier: MIT
#include "vesk/Relb.h"

#include <cmath>
#include <initializer_list>

#include "output/Output.h"
#include "output/RecordWords.h"
#include "prims/BendArc.h"
#include "prims/ElbowCorners.h"
#include "vesk/GeConstants.h"
#include "vesk/GeDirect.h"

namespace Vesk {
namespace {

BendArc arcOf(const Relb& relb) { return {relb.centre, relb.startVector, relb.endVector}; }

}  // namespace

ElbowCorners cornersOf(const Relb& relb) {
  const GeVector halfAxis = GeDirect(cross(relb.startVector, relb.endVector)) * (relb.width / 2.0);
  const GeVector side = relb.flipped ? -halfAxis : halfAxis;
  const GePoint a = relb.centre + side;
  const auto outer = [&](const GeVector& v) { return a + v + GeDirect(v) * relb.depth / 2.0; };
  return {a, relb.centre - side, outer(relb.startVector), outer(relb.endVector),
          relb.startVector.length() - 0.5 * relb.depth};
}

Relb::Relb(const GeVector& p0, const GeVector& p1, const GeVector& p2, const GeVector& p3,
           double innerRadius) {
  const GeVector toStart = p2 - p0;
  const GeVector toEnd = p3 - p0;
  depth = toStart.length() - innerRadius;
  startVector = toStart - GeDirect(toStart) * depth / 2.0;
  endVector = toEnd - GeDirect(toEnd) * depth / 2.0;
  centre = GePoint(p0 + (p1 - p0) / 2.0);
  width = (p1 - p0).length();
}

std::int32_t Relb::write(Output& out) const {
  if (out.mode == kFixedColumns) {
    const ElbowCorners corners = cornersOf(*this);
    out.beginRecord(Keywords::kRelb.fixedColumns, true);
    out.addPoint9(corners.a);
    out.addPoint9(corners.b);
    out.addPoint9(corners.c);
    out.addPoint9(corners.e);
    out.nextLine();
    out.addNumber(corners.innerRadius);
  } else if (out.mode == kTokens) {
    out.beginRecord(Keywords::kRelb.tokens, true);
    out.addPoint(centre, out.pointDecimals, true);
    out.addPoint(startVector, out.valueDecimals, true);
    out.addPoint(endVector, out.valueDecimals, true);
    out.addFixed(depth, out.valueDecimals, true);
    out.addFixed(width, out.valueDecimals, false);
  }
  return static_cast<std::int32_t>(out.recs.size());
}

void Relb::move(const GeVector& v) { centre += v; }

void Relb::rot(const GeMatrix& m) {
  centre = m * centre;
  startVector = m * startVector;
  endVector = m * endVector;
}

void Relb::scale(double factor) {
  rot(GeMatrix::scaling(factor));
  width *= factor;
  depth *= factor;
}

Extents& Relb::addExtents(Extents& box) const {
  const BendArc arc = arcOf(*this);
  if (!arc.hasPlane()) return box.add(centre);
  const double radius = arc.meanRadius();
  const GeVector side = arc.normal() * (width / 2.0);
  const auto addSection = [&](const GeVector& direction) {
    for (const double r : {radius - depth / 2.0, radius + depth / 2.0}) {
      box.add(centre + direction * r + side).add(centre + direction * r - side);
    }
  };
  addSection(arc.startDirection());
  addSection(arc.endDirection());
  for (const GeVector& axis : {kUnitX, kUnitY, kUnitZ}) {
    for (const GeVector& direction : arc.furthest(axis)) addSection(direction);
  }
  return box;
}

std::int32_t Relb::checkSize() const { return arcOf(*this).checkSize(depth); }

double Relb::volume() const {
  const BendArc arc = arcOf(*this);
  return arc.hasLength() ? arc.length() * (depth * width) : 0.0;
}

GePoint& Relb::centroid(GePoint& p) const {
  const double radius = startVector.length();
  const double inner = radius - depth / 2.0;
  const double outer = radius + depth / 2.0;
  return p = arcOf(*this).onBisector(0.6666666666666666 *
                                     (outer * outer * outer - inner * inner * inner) /
                                     (outer * outer - inner * inner));
}

bool Relb::equal(const Geo& other, double tolerance) const {
  const auto* relb = sameKind<Relb>(other);
  return relb != nullptr && std::fabs(width - relb->width) <= tolerance &&
         std::fabs(depth - relb->depth) <= tolerance && arcOf(*this).equal(arcOf(*relb), tolerance);
}

}  // namespace Vesk
