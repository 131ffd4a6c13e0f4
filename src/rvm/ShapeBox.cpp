// SPDX-License-Identifier: MIT
#include "rvm/ShapeBox.h"

#include <algorithm>
#include <cmath>

namespace Vesk {
namespace {

// Of a ring sector in the plane from x towards y.
void addSweep(Extents& box, double inner, double outer, double angle, double low, double high) {
  const double quarter = std::acos(0.0);
  const auto add = [&](double turn) {
    for (const double r : {inner, outer}) {
      box.add({r * std::cos(turn), r * std::sin(turn), low});
      box.add({r * std::cos(turn), r * std::sin(turn), high});
    }
  };
  add(0.0);
  add(angle);
  for (int i = 1; i < 4; ++i) {
    if (i * quarter < angle) add(i * quarter);
  }
}

void addCentred(Extents& box, double x, double y, double halfX, double halfY, double z) {
  box.add({x - halfX, y - halfY, z}).add({x + halfX, y + halfY, z});
}

Extents boxOf(const ReviewShape& shape) {
  const auto& p = shape.parameters;
  Extents box;
  switch (shape.kind) {
    case ReviewKind::kPyramid:
      addCentred(box, -p[4] / 2, -p[5] / 2, p[0] / 2, p[1] / 2, -p[6] / 2);
      addCentred(box, p[4] / 2, p[5] / 2, p[2] / 2, p[3] / 2, p[6] / 2);
      break;
    case ReviewKind::kBox:
      addCentred(box, 0.0, 0.0, p[0] / 2, p[1] / 2, -p[2] / 2);
      addCentred(box, 0.0, 0.0, p[0] / 2, p[1] / 2, p[2] / 2);
      break;
    case ReviewKind::kRectangularTorus:
      addSweep(box, p[0], p[1], p[3], -p[2] / 2, p[2] / 2);
      break;
    case ReviewKind::kCircularTorus:
      addSweep(box, p[0] - p[1], p[0] + p[1], p[2], -p[1], p[1]);
      break;
    case ReviewKind::kEllipticalDish:
      addCentred(box, 0.0, 0.0, p[0], p[0], 0.0);
      box.add({0.0, 0.0, p[1]});
      break;
    case ReviewKind::kSphericalDish: {
      // More than half a sphere is widest above its rim.
      const double widest = p[1] > p[0] ? (p[0] * p[0] + p[1] * p[1]) / (2.0 * p[1]) : p[0];
      addCentred(box, 0.0, 0.0, widest, widest, 0.0);
      box.add({0.0, 0.0, p[1]});
      break;
    }
    case ReviewKind::kSnout:
      if (p[5] != 0.0 || p[6] != 0.0 || p[7] != 0.0 || p[8] != 0.0) return shape.box;
      addCentred(box, -p[3] / 2, -p[4] / 2, p[0], p[0], -p[2] / 2);
      addCentred(box, p[3] / 2, p[4] / 2, p[1], p[1], p[2] / 2);
      break;
    case ReviewKind::kCylinder:
      addCentred(box, 0.0, 0.0, p[0], p[0], -p[1] / 2);
      addCentred(box, 0.0, 0.0, p[0], p[0], p[1] / 2);
      break;
    case ReviewKind::kFacets:
      for (const GePoint& point : shape.facets.points) box.add(point);
      break;
    default:
      return shape.box;
  }
  return box;
}

bool samePoint(const GePoint& a, const GePoint& b) {
  return sameLength(a.x, b.x) && sameLength(a.y, b.y) && sameLength(a.z, b.z);
}

}  // namespace

bool sameLength(double a, double b) {
  return std::fabs(a - b) <= 0.02 + 1e-3 * std::max(std::fabs(a), std::fabs(b));
}

bool boxAgrees(const ReviewShape& shape) {
  const Extents box = boxOf(shape);
  return samePoint(box.min, shape.box.min) && samePoint(box.max, shape.box.max);
}

}  // namespace Vesk
