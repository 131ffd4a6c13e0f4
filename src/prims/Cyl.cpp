// SPDX-License-Identifier: MIT
#include "vesk/Cyl.h"

#include <array>
#include <cmath>

#include "ge/PointMatch.h"
#include "output/Output.h"
#include "output/RecordWords.h"
#include "vesk/GeConstants.h"

namespace Vesk {
namespace {

constexpr double kSmallestSize = 0.01;

std::array<GePoint, 2> ends(const Cyl& cyl) { return {cyl.origin, cyl.origin + cyl.axis}; }

}  // namespace

Cyl::Cyl(const GeVector& start, const GeVector& end, double faceDiameter)
    : origin(start), axis(end - start), diameter(faceDiameter) {}

std::int32_t Cyl::write(Output& out) const {
  if (out.mode == kFixedColumns) {
    out.beginRecord(Keywords::kCyl.fixedColumns, true);
    out.addPoint9(origin);
    out.addPoint9(origin + axis);
    out.addNumber(diameter);
  } else if (out.mode == kTokens) {
    out.beginRecord(Keywords::kCyl.tokens, true);
    out.addPoint(origin, out.pointDecimals, true);
    out.addPoint(axis, out.valueDecimals, true);
    out.addFixed(diameter, out.valueDecimals, false);
  }
  return static_cast<std::int32_t>(out.recs.size());
}

void Cyl::move(const GeVector& v) { origin += v; }

void Cyl::rot(const GeMatrix& m) {
  origin = m * origin;
  axis = m * axis;
}

void Cyl::scale(double factor) {
  rot(GeMatrix::scaling(factor));
  diameter *= factor;
}

Extents& Cyl::addExtents(Extents& box) const {
  return box.addCircle(origin, axis, diameter / 2.0).addCircle(origin + axis, axis, diameter / 2.0);
}

std::int32_t Cyl::checkSize() const {
  if (diameter < 0.0) return 2;
  if (std::fabs(diameter) < kSmallestSize) return 1;
  if (axis.length() < kSmallestSize) return 1;
  return 0;
}

double Cyl::volume() const {
  const double radius = diameter / 2.0;
  return kPi * (radius * radius) * distance(origin, origin + axis);
}

GePoint& Cyl::centroid(GePoint& p) const { return p = origin + axis / 2.0; }

bool Cyl::equal(const Geo& other, double tolerance) const {
  const auto* cyl = sameKind<Cyl>(other);
  if (cyl == nullptr || std::fabs(cyl->diameter - diameter) > tolerance) return false;
  return pointsCoincide(ends(*this), ends(*cyl), tolerance);
}

}  // namespace Vesk
