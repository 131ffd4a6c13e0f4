// SPDX-License-Identifier: MIT
#include "vesk/Torus.h"

#include <cmath>
#include <initializer_list>

#include "output/Output.h"
#include "output/RecordWords.h"
#include "prims/BendArc.h"
#include "vesk/GeConstants.h"

namespace Vesk {
namespace {

BendArc arcOf(const Torus& torus) { return {torus.centre, torus.startVector, torus.endVector}; }

}  // namespace

Torus::Torus(const GeVector& bendCentre, const GeVector& start, const GeVector& end,
             double tubeDiameter)
    : centre(bendCentre),
      startVector(start - bendCentre),
      endVector(end - bendCentre),
      diameter(tubeDiameter) {}

std::int32_t Torus::write(Output& out) const {
  if (out.mode == kFixedColumns) {
    out.beginRecord(Keywords::kTorus.fixedColumns, true);
    out.addPoint9(centre);
    out.addPoint9(centre + startVector);
    out.addPoint9(centre + endVector);
    out.addNumber(bendRadius > 0.0 ? bendRadius : arcOf(*this).meanRadius());
    out.addNumber(diameter);
  } else if (out.mode == kTokens) {
    out.beginRecord(Keywords::kTorus.tokens, true);
    out.addPoint(centre, out.pointDecimals, true);
    out.addPoint(startVector, out.valueDecimals, true);
    out.addPoint(endVector, out.valueDecimals, true);
    out.addFixed(diameter, out.valueDecimals, false);
  }
  return static_cast<std::int32_t>(out.recs.size());
}

void Torus::move(const GeVector& v) { centre += v; }

void Torus::rot(const GeMatrix& m) {
  centre = m * centre;
  startVector = m * startVector;
  endVector = m * endVector;
}

void Torus::scale(double factor) {
  rot(GeMatrix::scaling(factor));
  diameter *= factor;
  bendRadius *= factor;
}

Extents& Torus::addExtents(Extents& box) const {
  const BendArc arc = arcOf(*this);
  if (!arc.hasPlane()) return box.add(centre);
  const double radius = arc.meanRadius();
  const double half = diameter / 2.0;
  for (const GeVector& end : {arc.startDirection(), arc.endDirection()}) {
    box.addCircle(centre + end * radius, cross(arc.normal(), end), half);
  }
  // Between its ends the tube reaches furthest where the arc does: there the
  // axis lies in the plane of the tube's section.
  for (const GeVector& axis : {kUnitX, kUnitY, kUnitZ}) {
    for (const GeVector& direction : arc.furthest(axis)) {
      const GePoint middle = centre + direction * radius;
      box.add(middle + axis * half).add(middle - axis * half);
    }
  }
  return box;
}

std::int32_t Torus::checkSize() const { return arcOf(*this).checkSize(diameter); }

double Torus::volume() const {
  const BendArc arc = arcOf(*this);
  const double half = diameter / 2.0;
  return arc.hasLength() ? arc.length() * kPi * half * half : 0.0;
}

GePoint& Torus::centroid(GePoint& p) const {
  const double radius = startVector.length();
  const double half = diameter / 2.0;
  return p = arcOf(*this).onBisector((radius * radius + half * half / 8.0) / radius);
}

bool Torus::equal(const Geo& other, double tolerance) const {
  const auto* torus = sameKind<Torus>(other);
  return torus != nullptr && std::fabs(diameter - torus->diameter) <= tolerance &&
         arcOf(*this).equal(arcOf(*torus), tolerance);
}

}  // namespace Vesk
