// SPDX-License-Identifier: MIT
#include "shape/ReducerShape.h"

#include <algorithm>
#include <cmath>

#include "shape/QuadSplit.h"

namespace Vesk {
namespace {

// Of the product of the three extents: a smaller volume comes from rounding.
constexpr double kFlat = 1e-10;

GeVector areaOf(const ReducerCorners& c, const std::array<std::size_t, 4>& f) {
  return quadArea(c[f[0]], c[f[1]], c[f[2]], c[f[3]]);
}

// The six volumes of the pyramids from corner 0 to the faces.
double volumeOf(const ReducerCorners& c) {
  double six = 0.0;
  for (const auto& f : kReducerFaces) {
    const GeVector a = c[f[0]] - c[0];
    const GeVector b = c[f[1]] - c[0];
    const GeVector d = c[f[2]] - c[0];
    const GeVector e = c[f[3]] - c[0];
    // The mean of both triangulations.
    six += (triple(a, b, d) + triple(a, d, e) + triple(b, d, e) + triple(a, b, e)) / 2.0;
  }
  return six / 6.0;
}

// Whether a section half-way between two opposite faces looks against them, or has
// no area: somewhere on the way the solid turns inside out.
bool isTurnedInside(const ReducerCorners& c) {
  constexpr std::size_t kOpposite[3][2] = {{0, 1}, {2, 4}, {3, 5}};
  for (const auto& [one, other] : kOpposite) {
    const auto& f = kReducerFaces[one];
    // Across the solid a corner goes to the one that differs in this bit.
    const std::size_t across = one == 0 ? 4 : one == 2 ? 2 : 1;
    std::array<GePoint, 4> middle;
    for (std::size_t i = 0; i < 4; ++i) {
      middle[i] = c[f[i]] + (c[f[i] ^ across] - c[f[i]]) / 2.0;
    }
    const GeVector section = quadArea(middle[0], middle[1], middle[2], middle[3]);
    const GeVector ends = areaOf(c, f) - areaOf(c, kReducerFaces[other]);
    if (!(dot(section, ends) > kFlat * dot(ends, ends))) return true;
  }
  return false;
}

// The largest product of three edges in the three directions.
double boxAround(const ReducerCorners& c) {
  double product = 1.0;
  for (const std::size_t bit : {1U, 2U, 4U}) {
    double longest = 0.0;
    for (std::size_t k = 0; k < 8; ++k) {
      if ((k & bit) == 0) longest = std::max(longest, distance(c[k], c[k | bit]));
    }
    product *= longest;
  }
  return product;
}

bool hasBowTie(const ReducerCorners& c) {
  double extent = 0.0;
  for (const GePoint& corner : c) extent = std::max(extent, distance(corner, c[0]));
  const double least = kFlat * extent * extent;
  return std::any_of(kReducerFaces.begin(), kReducerFaces.end(), [&](const auto& f) {
    return isBowTie(c[f[0]], c[f[1]], c[f[2]], c[f[3]], least);
  });
}

ShapeFault faultOf(const ReducerCorners& c, double volume) {
  for (const auto& f : kReducerFaces) {
    if (splitQuad(c[f[0]], c[f[1]], c[f[2]], c[f[3]]).crosses) return ShapeFault::kFaceCrosses;
  }
  if (!(std::fabs(volume) > kFlat * boxAround(c))) {
    return hasBowTie(c) ? ShapeFault::kFaceCrosses : ShapeFault::kNoVolume;
  }
  return isTurnedInside(c) ? ShapeFault::kTurnedInside : ShapeFault::kNone;
}

}  // namespace

ReducerShape reducerShapeOf(const Red& red) {
  ReducerShape shape;
  bool isFinite = true;
  bool isSmall = true;
  double extent = 0.0;
  const auto look = [&](double v) {
    isFinite = isFinite && std::isfinite(v);
    isSmall = isSmall && std::fabs(v) <= kLargestNumber;
  };
  look(red.origin.x), look(red.origin.y), look(red.origin.z);
  for (std::size_t k = 1; k < 8; ++k) {
    const GeVector& v = red.cornerVectors[k - 1];
    look(v.x), look(v.y), look(v.z);
    extent = std::max(extent, v.length());
    shape.corners[k] = GePoint(v);
  }
  shape.volume = volumeOf(shape.corners);
  shape.fault = !isFinite                ? ShapeFault::kNotFinite
                : !isSmall               ? ShapeFault::kTooLarge
                : extent < kSmallestSize ? ShapeFault::kNoExtent
                                         : faultOf(shape.corners, shape.volume);
  return shape;
}

}  // namespace Vesk
