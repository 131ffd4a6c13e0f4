// SPDX-License-Identifier: MIT
#include "vesk/Cone.h"

#include <array>
#include <cmath>

#include "ge/PointMatch.h"
#include "output/Output.h"
#include "output/RecordWords.h"
#include "vesk/GeConstants.h"

namespace Vesk {
namespace {

constexpr double kSmallestDiameter = 0.01;
constexpr double kSmallestAxis = 1e-7;

std::array<GePoint, 2> ends(const Cone& cone) { return {cone.origin, cone.origin + cone.axis}; }

}  // namespace

Cone::Cone(const GeVector& start, const GeVector& end, double startDiameter, double endDiameter)
    : origin(start), axis(end - start), diameter1(startDiameter), diameter2(endDiameter) {}

std::int32_t Cone::write(Output& out) const {
  if (out.mode == kFixedColumns) {
    out.beginRecord(Keywords::kCone.fixedColumns, true);
    out.addPoint9(origin);
    out.addPoint9(origin + axis);
    out.addNumber(diameter1);
    out.addNumber(diameter2);
  } else if (out.mode == kTokens) {
    out.beginRecord(Keywords::kCone.tokens, true);
    out.addPoint(origin, out.pointDecimals, true);
    out.addPoint(axis, out.valueDecimals, true);
    out.addFixed(diameter1, out.valueDecimals, true);
    out.addFixed(diameter2, out.valueDecimals, false);
  }
  return static_cast<std::int32_t>(out.recs.size());
}

void Cone::move(const GeVector& v) { origin += v; }

void Cone::rot(const GeMatrix& m) {
  origin = m * origin;
  axis = m * axis;
}

void Cone::scale(double factor) {
  rot(GeMatrix::scaling(factor));
  diameter1 *= factor;
  diameter2 *= factor;
}

Extents& Cone::addExtents(Extents& box) const {
  return box.addCircle(origin, axis, diameter1 / 2.0)
      .addCircle(origin + axis, axis, diameter2 / 2.0);
}

std::int32_t Cone::checkSize() const {
  if (diameter1 < 0.0 || diameter2 < 0.0) return 2;
  if (diameter1 < kSmallestDiameter && diameter2 < kSmallestDiameter) return 1;
  if (axis.length() < kSmallestAxis) return 1;
  return 0;
}

double Cone::volume() const {
  const double r1 = diameter1 / 2.0;
  const double r2 = diameter2 / 2.0;
  return kPi / 3.0 * distance(origin, origin + axis) * (r1 * r1 + r1 * r2 + r2 * r2);
}

GePoint& Cone::centroid(GePoint& p) const {
  const double d1 = diameter1;
  const double d2 = diameter2;
  // The frustum's centre of gravity as a part of its height; the halves of the
  // diameters cancel.
  const double f = (d1 * d1 + 2.0 * d1 * d2 + 3.0 * d2 * d2) / (d2 * d2 + d1 * d2 + d1 * d1) / 4.0;
  return p = origin + axis * f;
}

bool Cone::equal(const Geo& other, double tolerance) const {
  const auto* cone = sameKind<Cone>(other);
  if (cone == nullptr) return false;
  const auto match = matchPoints(ends(*this), ends(*cone), tolerance);
  if (!match) return false;
  const std::array<double, 2> mine{diameter1, diameter2};
  const std::array<double, 2> theirs{cone->diameter1, cone->diameter2};
  for (std::size_t i = 0; i < 2; ++i) {
    if (std::fabs(mine[i] - theirs[match->partners[i]]) > tolerance) return false;
  }
  return true;
}

}  // namespace Vesk
