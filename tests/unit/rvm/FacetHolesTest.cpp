// SPDX-License-Identifier: MIT
#include "rvm/FacetHoles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>
#include <vector>

namespace {

using Vesk::PlanePoint;
using Contour = std::vector<PlanePoint>;

const Contour kSquare = {{0, 0}, {100, 0}, {100, 100}, {0, 100}};
const Contour kSquareTurningRight = {{0, 100}, {100, 100}, {100, 0}, {0, 0}};
const Contour kHole = {{20, 20}, {20, 40}, {40, 40}, {40, 20}};
const Contour kHoleTurningLeft = {{40, 20}, {40, 40}, {20, 40}, {20, 20}};
// A corner of the outline reaches in between the hole and the end of the edge to its right:
// (60, 35) from above and (60, 25) from below, beside the hole's corner (40, 30).
const Contour kToothFromAbove = {{0, 0},   {100, 0},  {100, 100}, {70, 100},
                                 {60, 35}, {50, 100}, {0, 100}};
const Contour kToothFromBelow = {{0, 0},   {50, 0},    {60, 25}, {70, 0},
                                 {100, 0}, {100, 100}, {0, 100}};
const Contour kArrow = {{20, 25}, {20, 35}, {40, 30}};

struct HoleCase {
  const char* name;
  std::vector<Contour> contours;
  std::size_t corners;  // those of all contours and two for each bridge; 0: no way
  double area;          // by shoelace; below 0 for a way that turns right

  friend std::ostream& operator<<(std::ostream& os, const HoleCase& each) {
    return os << each.name;
  }
};

// clang-format off
const HoleCase kCases[] = {
    {"NoContour", {}, 0, 0},
    {"EmptyOutline", {{}, kHole}, 0, 0},
    {"NoHole", {kSquare}, 4, 10000},
    {"AHole", {kSquare, kHole}, 10, 10000 - 400},
    {"HoleTheSameWayRoundAsItsOutline", {kSquare, kHoleTurningLeft}, 10, 10000 - 400},
    {"OutlineTurningRight", {kSquareTurningRight, kHole}, 10, -(10000 - 400)},
    {"OutlineAndHoleTurningRight", {kSquareTurningRight, kHoleTurningLeft}, 10, -(10000 - 400)},
    {"HoleOfTwoCornersIsNone", {kSquare, {{20, 20}, {40, 40}}}, 4, 10000},
    {"TwoHolesInARow", {kSquare, kHole, {{60, 20}, {60, 40}, {80, 40}, {80, 20}}}, 16, 10000 - 800},
    {"TwoHolesTheRightOneFirst", {kSquare, {{60, 20}, {60, 40}, {80, 40}, {80, 20}}, kHole}, 16, 10000 - 800},
    // An arrow to the right of 20 x 10 / 2.
    {"ToothFromAbove", {kToothFromAbove, kArrow}, 12, 10000 - 20 * 65 / 2 - 100},
    {"ToothFromBelow", {kToothFromBelow, kArrow}, 12, 10000 - 20 * 25 / 2 - 100},
    // Its right side leans inward, so that the edge's nearer end is below: 100 and 90 wide.
    {"SideThatLeansInward", {{{0, 0}, {100, 0}, {90, 100}, {0, 100}}, kHole}, 10, 9500 - 400},
    {"ToothFromBelowAndASideThatLeansInward",
     {{{0, 0}, {50, 0}, {60, 25}, {70, 0}, {100, 0}, {90, 100}, {0, 100}}, kArrow}, 12, 9500 - 250 - 100},
    // To the right is a side that leans far over the hole: its upper end, or its lower one, lies
    // to the left of it, behind another side of the hole.
    {"SideThatLeansOverTheHole", {{{0, 0}, {10, 0}, {0.5, 4}}, {{1, 1}, {1, 3.4}, {2, 2}}}, 8, 20 - 1.2},
    {"SideThatLeansUnderTheHole", {{{0.5, 0}, {10, 4}, {0, 4}}, {{1, 3}, {2, 2}, {1, 0.6}}}, 8, 20 - 1.2},
    {"HoleBeyondTheRight", {kSquare, {{120, 20}, {120, 40}, {140, 40}}}, 0, 0},
    {"HoleAbove", {kSquare, {{20, 120}, {20, 140}, {40, 140}}}, 0, 0},
    {"HoleTouchingTheOutline", {kSquare, {{20, 20}, {20, 40}, {100, 30}}}, 9, 10000 - 80 * 20 / 2},
};
// clang-format on

double areaOf(const std::vector<PlanePoint>& points, const std::vector<std::size_t>& way) {
  double sum = 0;
  for (std::size_t i = 0; i < way.size(); ++i) {
    const PlanePoint& a = points[way[i]];
    const PlanePoint& b = points[way[(i + 1) % way.size()]];
    sum += a.x * b.y - b.x * a.y;
  }
  return sum / 2;
}

// Whether two pieces of the way cross inside both: a bridge is walked to and fro, so ends
// that touch do not count.
bool crosses(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c, const PlanePoint& d) {
  const auto side = [](const PlanePoint& p, const PlanePoint& q, const PlanePoint& r) {
    return (q.x - p.x) * (r.y - p.y) - (q.y - p.y) * (r.x - p.x);
  };
  return side(a, b, c) * side(a, b, d) < 0 && side(c, d, a) * side(c, d, b) < 0;
}

class FacetHoles : public testing::TestWithParam<HoleCase> {};

TEST_P(FacetHoles, AreJoinedToOneWayThatCrossesNothing) {
  std::vector<PlanePoint> points;
  std::vector<std::size_t> ends;
  for (const Contour& contour : GetParam().contours) {
    points.insert(points.end(), contour.begin(), contour.end());
    ends.push_back(points.size());
  }
  const std::vector<std::size_t> way = Vesk::joinHoles(points, ends);
  ASSERT_EQ(way.size(), GetParam().corners);
  EXPECT_NEAR(areaOf(points, way), GetParam().area, 1e-9);
  for (std::size_t i = 0; i < way.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      EXPECT_FALSE(crosses(points[way[i]], points[way[(i + 1) % way.size()]], points[way[k]],
                           points[way[(k + 1) % way.size()]]))
          << i << ' ' << k;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Of, FacetHoles, testing::ValuesIn(kCases),
                         [](const auto& each) { return each.param.name; });

}  // namespace
