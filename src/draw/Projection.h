// SPDX-License-Identifier: MIT
#ifndef VESK_DRAW_PROJECTION_H
#define VESK_DRAW_PROJECTION_H

#include <vector>

#include "draw/StandardView.h"
#include "mesh/Placement.h"
#include "mesh/Scene.h"
#include "vesk/GePoint.h"

namespace Vesk {

// A place in a drawing, in pixels: to the right and down from the left upper
// corner, and towards the eye.
struct ScreenPoint {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  friend ScreenPoint operator+(const ScreenPoint& a, const ScreenPoint& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
  }
  friend ScreenPoint operator-(const ScreenPoint& a, const ScreenPoint& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
  }
  friend ScreenPoint operator*(const ScreenPoint& a, double s) {
    return {a.x * s, a.y * s, a.z * s};
  }
};

// The point so far along from a to b.
inline ScreenPoint between(const ScreenPoint& a, const ScreenPoint& b, double t) {
  return a + (b - a) * t;
}

// A rectangle of a drawing, in pixels.
struct ScreenArea {
  double left = 0.0;
  double top = 0.0;
  double right = 0.0;
  double bottom = 0.0;
};

// Which texts of a scene are far off: further from the box of all else than that is
// long. A note of the drawing frame that came along with a plant is no part of it.
// None are where there are only texts.
std::vector<bool> farTextsOf(const Scene& scene);

// How the model is laid into a drawing: seen along parallels, at one scale.
class Projection {
 public:
  // The largest scale at which the whole scene is in the area, and in its middle;
  // texts that are far off play no part.
  // An empty scene and one without a size have a pixel for each unit.
  static Projection fit(const Scene& scene, const StandardView& view, const ScreenArea& area);

  ScreenPoint point(const GePoint& p) const;
  ScreenPoint vector(const GeVector& v) const;

  const StandardView& view() const { return view_; }

  // Pixels for a unit of the scene.
  double scale() const { return scale_; }

 private:
  StandardView view_;
  GePoint centre_;  // comes to the pixel middle_
  ScreenPoint middle_;
  double scale_ = 1.0;
};

// Projection of a mesh at its place.
class PlacedProjection {
 public:
  PlacedProjection(const Projection& projection, const Placement& placement);

  ScreenPoint point(const GePoint& p) const { return origin_ + x_ * p.x + y_ * p.y + z_ * p.z; }

 private:
  ScreenPoint origin_;
  ScreenPoint x_;
  ScreenPoint y_;
  ScreenPoint z_;
};

}  // namespace Vesk

#endif
