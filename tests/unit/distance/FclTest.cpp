// SPDX-License-Identifier: MIT
// The distance of convex bodies beside that of a library of others, from the same
// points that lie furthest in a direction. In millimetres about a near origin, and
// unsigned, as it is exact there.

#include <fcl/narrowphase/detail/convexity_based_algorithm/gjk_libccd.h>
#include <gtest/gtest.h>

#include "distance/Convex.h"
#include "support/Kinds.h"

namespace VeskTest {
namespace {

using namespace Vesk;

struct Placed {
  Convex convex;
  GeVector shift;
};

void support(const void* object, const ccd_vec3_t* direction, ccd_vec3_t* point) {
  const auto& placed = *static_cast<const Placed*>(object);
  const GeVector p =
      placed.convex.support({direction->v[0], direction->v[1], direction->v[2]}) + placed.shift;
  ccdVec3Set(point, p.x, p.y, p.z);
}

double distanceByFcl(Placed a, Placed b) {
  constexpr unsigned kSteps = 1000;
  constexpr double kTolerance = 1e-9;
  double distance = 0.0;
  fcl::detail::GJKDistance<double>(&a, support, &b, support, kSteps, kTolerance, &distance, nullptr,
                                   nullptr);
  return distance;
}

GeVector vectorOf(const GePoint& p) { return p - GePoint(); }

// A pipe, a cone, a bend's piece, a box, a face, an edge or a point.
Convex makeConvex(Random& random) {
  Convex convex;
  const int discs = random.below(3);
  if (discs > 0) {
    for (int i = 0; i < discs; ++i) {
      convex.addDisc(vectorOf(random.point()), random.direction(), random.between(0, 40));
    }
    return convex;
  }
  const int points = 1 + random.below(8);
  for (int i = 0; i < points; ++i) convex.addPoint(vectorOf(random.point()) * 0.4);
  return convex;
}

TEST(Fcl, FindsTheSameDistances) {
  Random random(3);
  int apart = 0;
  for (int n = 0; n < 2000; ++n) {
    SCOPED_TRACE(n);
    const Convex a = makeConvex(random);
    const Convex b = makeConvex(random);
    const GeVector shift = random.direction() * random.between(0, 400);
    const double ours = gapOf(a, b, shift).distance;
    const double theirs = distanceByFcl({a, {}}, {b, shift});
    if (ours > 0.0) ++apart;
    // Of bodies that overlap it says -1.
    EXPECT_NEAR(ours, std::max(0.0, theirs), 1e-4);
  }
  EXPECT_GT(apart, 500);
}

}  // namespace
}  // namespace VeskTest
