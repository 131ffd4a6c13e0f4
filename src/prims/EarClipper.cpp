// SPDX-License-Identifier: MIT
#include "prims/EarClipper.h"

#include <cmath>
#include <cstddef>
#include <utility>

#include "prims/EarPlane.h"
#include "prims/EarRing.h"
#include "prims/EarSearch.h"
#include "prims/EarSweep.h"

namespace Vesk {

using namespace Ears;

namespace {

// The part of the area that triangles may cover twice or beside the polygon.
constexpr double kMaxInverted = 0x1p-10;

// Cuts the ears of a known triangulation: a vertex that is in one triangle
// only is the tip of an ear. No ears if the triangles do not fit together.
//
// If all of them turn to the left, they cover each point as many times as the
// polygon winds around it, which is once inside a polygon that does not cross
// itself: they are right, however they were found. The area of those that turn
// to the right is the most that the others can cover in excess; a little of it
// comes from a crossing without weight, or from vertices that touched an edge
// before their coordinates were rounded.
std::vector<EarTriangle> cutKnownEars(Ring ring, std::vector<Index> triangleCounts) {
  if (triangleCounts.empty()) return {};
  std::vector<EarTriangle> ears;
  ears.reserve(ring.size() - 2);
  double area = 0.0;
  double invertedArea = 0.0;
  std::vector<Index> tips = ring.vertices();
  std::erase_if(tips, [&](Index v) { return triangleCounts[v] != 1; });
  for (std::size_t i = 0; i < tips.size() && ring.size() > 2; ++i) {
    const Index v = tips[i];
    const double turn = ring.turnAt(v);
    if (turn > 0.0) ears.push_back(ring.earAt(v));
    (turn > 0.0 ? area : invertedArea) += std::abs(turn);
    for (const Index w : {ring.before(v), ring.after(v)}) {
      if (triangleCounts[w] == 0) return {};
      if (--triangleCounts[w] == 1) tips.push_back(w);
    }
    ring.remove(v);
  }
  const bool isRight = ring.size() == 2 && invertedArea <= kMaxInverted * area;
  return isRight ? std::move(ears) : std::vector<EarTriangle>();
}

}  // namespace

std::vector<EarTriangle> clipEars(std::span<const GePoint> polygon) {
  if (polygon.size() < 3) return {};
  if (polygon.size() == 3) {
    if (!std::isfinite(largestCoordinate(polygon))) return {};
    return {{0, 1, 2}};
  }
  const std::vector<PlanePoint> points = flatten(polygon);
  if (points.empty()) return {};

  Ring ring(points);
  ring.removeSpikes();
  if (ring.size() < 3) return {};
  const std::vector<Index> order = sweepOrder(ring);
  std::vector<EarTriangle> ears = cutKnownEars(ring, triangleCounts(ring, points.size(), order));
  if (!ears.empty()) return ears;
  return searchEars(std::move(ring), points.size(), order);
}

}  // namespace Vesk
