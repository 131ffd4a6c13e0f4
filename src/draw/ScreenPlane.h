// SPDX-License-Identifier: MIT
#ifndef VESK_DRAW_SCREENPLANE_H
#define VESK_DRAW_SCREENPLANE_H

#include <cmath>

#include "draw/Surfaces.h"

namespace Vesk {

// The plane of a triangle that is not seen from its edge.
class ScreenPlane {
 public:
  ScreenPlane() = default;  // at depth 0

  explicit ScreenPlane(const ScreenTriangle& t) : origin_(t[0]) {
    const ScreenPoint u = t[1] - t[0];
    const ScreenPoint v = t[2] - t[0];
    const double area = u.x * v.y - u.y * v.x;
    perX_ = (u.z * v.y - v.z * u.y) / area;
    perY_ = (u.x * v.z - v.x * u.z) / area;
  }

  // The most that the depth changes within a pixel.
  double steepness() const { return std::sqrt(perX_ * perX_ + perY_ * perY_); }

  double depthAt(double x, double y) const {
    return origin_.z + perX_ * (x - origin_.x) + perY_ * (y - origin_.y);
  }

 private:
  ScreenPoint origin_;
  double perX_ = 0.0;
  double perY_ = 0.0;
};

}  // namespace Vesk

#endif
