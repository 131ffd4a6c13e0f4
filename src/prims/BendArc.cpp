// SPDX-License-Identifier: MIT
#include "prims/BendArc.h"

#include <cmath>

#include "vesk/GeConstants.h"
#include "vesk/GeDirect.h"

namespace Vesk {
namespace {

constexpr double kRadiusSlack = 0.01;
constexpr double kShortestVector = 1e-7;

}  // namespace

BendArc::BendArc(const GePoint& centre, const GeVector& start, const GeVector& end)
    : centre_(centre),
      start_(start),
      end_(end),
      startDirection_(start.normalised(kDirectionTolerance)),
      endDirection_(end.normalised(kDirectionTolerance)) {
  // A null vector has the null direction and so spans no plane either, nor does
  // an infinite one, whose direction is none.
  const GeVector across = cross(startDirection_, endDirection_);
  hasPlane_ = across.length() > kDirectionTolerance;
  normal_ = across.normalised(kDirectionTolerance);
}

double BendArc::meanRadius() const { return (start_.length() + end_.length()) / 2.0; }

bool BendArc::hasLength() const { return start_.length() > 0.0 && end_.length() > 0.0; }

double BendArc::length() const {
  return start_.angleTo(end_) * (start_.length() + end_.length()) / 2.0;
}

GePoint BendArc::onBisector(double distance) const {
  const GeDirect bisector(GeDirect(start_) + GeDirect(end_));
  const double half = start_.angleTo(end_) / 2.0;
  return centre_ + bisector * (std::sin(half) * distance / half);
}

int BendArc::checkSize(double radialSize) const {
  const double half = radialSize / 2.0;
  if (half > meanRadius() && std::fabs(meanRadius() - half) > kRadiusSlack) return 2;
  if (start_.length() < kShortestVector || end_.length() < kShortestVector) return 1;
  return 0;
}

bool BendArc::equal(const BendArc& other, double tolerance) const {
  const auto near = [tolerance](const GePoint& a, const GePoint& b) {
    return distance(a, b) <= tolerance;
  };
  if (!near(centre_, other.centre_) || !near(middle(), other.middle())) return false;
  const GePoint a = centre_ + start_;
  const GePoint b = centre_ + end_;
  const GePoint c = other.centre_ + other.start_;
  const GePoint d = other.centre_ + other.end_;
  return (near(a, c) && near(b, d)) || (near(a, d) && near(b, c));
}

std::vector<GeVector> BendArc::furthest(const GeVector& axis) const {
  const GeVector inPlane = axis - normal_ * dot(axis, normal_);
  if (inPlane.isNull(kCoarseTolerance)) return {};
  const GeVector direction = inPlane / inPlane.length();
  std::vector<GeVector> inside;
  for (const GeVector& d : {direction, -direction}) {
    if (triple(normal_, startDirection_, d) >= 0.0 && triple(normal_, d, endDirection_) >= 0.0) {
      inside.push_back(d);
    }
  }
  return inside;
}

// The centre itself for opposite vectors, which leave the bisector open.
GePoint BendArc::middle() const {
  return centre_ + (startDirection_ + endDirection_).normalised(kDirectionTolerance) * meanRadius();
}

}  // namespace Vesk
