// SPDX-License-Identifier: MIT
#ifndef VESK_GE_POINTMATCH_H
#define VESK_GE_POINTMATCH_H

#include <cstddef>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "vesk/GePoint.h"

namespace Vesk {

// A pairing of two lists of points.
struct PointMatch {
  double largestDistance = 0.0;       // of all pairs
  std::vector<std::size_t> partners;  // for each point of the first list, its index in the second
};

// The pairing of two lists of equal length that makes the largest paired
// distance smallest (an exact minimum bottleneck matching). None when the
// lengths differ or that distance exceeds `limit`; a distance that is not a
// number counts as infinite. Where equal places are as good as any other the
// points are paired in order. Time grows with the cube of the length, memory
// with the square.
std::optional<PointMatch> matchPoints(std::span<const GePoint> first,
                                      std::span<const GePoint> second,
                                      double limit = std::numeric_limits<double>::infinity());

// Whether the two lists can be paired with no distance above `tolerance`.
bool pointsCoincide(std::span<const GePoint> first, std::span<const GePoint> second,
                    double tolerance);

}  // namespace Vesk

#endif
