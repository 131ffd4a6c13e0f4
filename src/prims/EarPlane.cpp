// SPDX-License-Identifier: MIT
#include "prims/EarPlane.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Vesk::Ears {
namespace {

// Coordinates carry half a unit of the last place each; a few of them count as
// nothing. Relative to coordinates below 1.
constexpr double kRounding = 0x1p-48;

// The power of two that brings the coordinates below 1 without rounding.
double scaleFor(double largest) {
  int exponent = 0;
  (void)std::frexp(largest, &exponent);
  return std::ldexp(1.0, std::clamp(-exponent, -1000, 1000));
}

}  // namespace

double largestCoordinate(std::span<const GePoint> polygon) {
  double largest = 0.0;
  for (const GePoint& p : polygon) {
    for (const double c : {p.x, p.y, p.z}) {
      if (!std::isfinite(c)) return c;
      largest = std::max(largest, std::abs(c));
    }
  }
  return largest;
}

std::vector<PlanePoint> flatten(std::span<const GePoint> polygon) {
  const double largest = largestCoordinate(polygon);
  if (!std::isfinite(largest)) return {};
  const double scale = scaleFor(largest);
  const auto scaled = [&](const GePoint& p) {
    return GePoint(p.x * scale, p.y * scale, p.z * scale);
  };

  const GePoint origin = scaled(polygon.front());
  GeVector normal;
  double perimeter = 0.0;
  GeVector last = scaled(polygon.back()) - origin;
  for (const GePoint& p : polygon) {
    const GeVector v = scaled(p) - origin;
    normal += cross(last, v);
    perimeter += (v - last).length();
    last = v;
  }
  if (!(normal.length() > kRounding * perimeter)) return {};

  const double sizeX = std::abs(normal.x);
  const double sizeY = std::abs(normal.y);
  const double sizeZ = std::abs(normal.z);
  const bool alongZ = sizeZ >= sizeX && sizeZ >= sizeY;
  const bool alongY = !alongZ && sizeY >= sizeX;
  const double along = alongZ ? normal.z : alongY ? normal.y : normal.x;
  std::vector<PlanePoint> points;
  points.reserve(polygon.size());
  for (const GePoint& p : polygon) {
    const GePoint s = scaled(p);
    PlanePoint flat = alongZ   ? PlanePoint{s.x, s.y}
                      : alongY ? PlanePoint{s.z, s.x}
                               : PlanePoint{s.y, s.z};
    if (along < 0.0) std::swap(flat.x, flat.y);
    points.push_back(flat);
  }
  return points;
}

}  // namespace Vesk::Ears
