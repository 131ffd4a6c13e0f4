// SPDX-License-Identifier: MIT
#include "pcf/shapes/Ruled.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <tuple>

#include <vesk/GeConstants.h>

namespace Vesk::Pcf {
namespace {

struct FacetRow {
  const char* name;
  double radius;
  double tolerance;
  int count;
};

// r (1 - cos(pi / n)) beside each.
constexpr FacetRow kFacets[] = {
    {"NeverBelowEight", 1, 1, 8},
    {"EightIsEnough", 13, 1, 8},     // 13 (1 - cos 22.5) = 0.99
    {"AlwaysEven", 14, 1, 10},       // 14: 1.07 with 8, 0.85 with 9, 0.69 with 10
    {"ASixInchPipe", 84.15, 1, 22},  // 1.04 with 20, 0.94 with 21
    {"Finer", 84.15, 0.1, 66},       // 0.101 with 64, 0.098 with 65
    {"NeverAboveAThousand", 5000, 1e-9, 1000},
    {"ToleranceWiderThanThePipe", 10, 50, 8},
};

TEST(Facets, KeepTheChordsWithinTheTolerance) {
  for (const FacetRow& row : kFacets)
    EXPECT_EQ(facets(row.radius, row.tolerance), row.count) << row.name;
}

double volumeOf(const std::vector<Red>& wedges) {
  double sum = 0;
  for (const Red& wedge : wedges) {
    EXPECT_GT(wedge.volume(), 0);
    sum += wedge.volume();
  }
  return sum;
}

// An oblique frustum has the volume of the right one: pi h / 3 (r1² + r1 r2 + r2²),
// and with n corners n / 2 sin(2 pi / n) in place of pi.
TEST(Wedges, HaveTheVolumeOfTheObliqueBody) {
  const RuledBody body{{0, 0, 0}, {1, 0, 0}, 84.15, {140, 0, 27}, {1, 0, 0}, 57.15};
  const double n = 22;
  const double section = 84.15 * 84.15 + 84.15 * 57.15 + 57.15 * 57.15;
  const double faceted = n / 2 * std::sin(2 * kPi / n) * 140 / 3 * section;
  EXPECT_NEAR(volumeOf(wedges(body, 1)), faceted, faceted * 1e-12);
  // 140 mm of a mantle no more than 1 mm off lose less than its area times 1 mm.
  EXPECT_NEAR(volumeOf(wedges(body, 1)), kPi * 140 / 3 * section, kPi * (84.15 + 57.15) * 150);
  // And a finer tolerance loses less: within one in ten thousand of the body.
  EXPECT_NEAR(volumeOf(wedges(body, 0.01)), kPi * 140 / 3 * section,
              kPi * 140 / 3 * section * 2e-4);
}

// Coaxial circles lean nowhere: a right frustum of 22 corners, and it begins anywhere.
TEST(Wedges, OfCoaxialCirclesAreTheRightFrustum) {
  const RuledBody body{{0, 0, 0}, {0, 0, 1}, 84.15, {0, 0, 140}, {0, 0, 1}, 57.15};
  const double section = 84.15 * 84.15 + 84.15 * 57.15 + 57.15 * 57.15;
  const double faceted = 11 * std::sin(kPi / 11) * 140 / 3 * section;
  EXPECT_NEAR(volumeOf(wedges(body, 1)), faceted, faceted * 1e-12);
}

TEST(Wedges, LieWithTheirCornersOnBothCircles) {
  const RuledBody body{{5, 6, 7}, {1, 0, 0}, 50, {105, 30, 7}, {0.8, 0.6, 0}, 30};
  for (const Red& wedge : wedges(body, 0.5)) {
    for (const int k : {1, 2, 3}) {
      EXPECT_NEAR(distance(wedge.corner(k), body.centre1), 50, 1e-9);
      EXPECT_NEAR(dot(wedge.corner(k) - body.centre1, body.normal1), 0, 1e-9);
      EXPECT_NEAR(distance(wedge.corner(k + 4), body.centre2), 30, 1e-9);
      EXPECT_NEAR(dot(wedge.corner(k + 4) - body.centre2, body.normal2), 0, 1e-9);
    }
  }
}

using Corner = std::tuple<double, double, double>;
using Face = std::vector<Corner>;

// The four corners of a face, in any order.
Face faceOf(const Red& red, std::initializer_list<int> corners) {
  Face face;
  for (const int k : corners) {
    const GePoint p = red.corner(k);
    face.emplace_back(std::round(p.x * 1e6), std::round(p.y * 1e6), std::round(p.z * 1e6));
  }
  std::sort(face.begin(), face.end());
  return face;
}

// Each face between two wedges stands twice, so that nothing gapes.
TEST(Wedges, ShareTheirInnerFaces) {
  const RuledBody body{{0, 0, 0}, {0, 0, 1}, 50, {20, 0, 100}, {0, 0, 1}, 30};
  std::map<Face, int> inner;
  for (const Red& wedge : wedges(body, 1)) {
    ++inner[faceOf(wedge, {0, 1, 4, 5})];
    ++inner[faceOf(wedge, {0, 2, 4, 6})];
  }
  EXPECT_EQ(inner.size(), 8u);  // 16 corners with 50 mm: 50 (1 - cos(pi / 16)) = 0.96
  for (const auto& [face, count] : inner) EXPECT_EQ(count, 2);
}

TEST(Wedges, KeepTheVolumeInAnyDirection) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> any(-1, 1);
  for (int i = 0; i < 500; ++i) {
    const double size = std::pow(10, 2 + 2 * any(random));
    const GeVector n = GeVector(any(random), any(random), any(random)).normalised(1e-3);
    if (n == GeVector()) continue;
    const GePoint from(1e6 * any(random), 1e6 * any(random), 1e6 * any(random));
    const GeVector aside = cross(n, GeVector(any(random), any(random), any(random))) * size;
    const double h = size * (1.2 + any(random));
    const double r1 = size * 0.5;
    const double r2 = size * (0.3 + 0.2 * any(random));
    const RuledBody body{from, n, r1, from + n * h + aside, n, r2};
    const double exact = kPi * h / 3 * (r1 * r1 + r1 * r2 + r2 * r2);
    const double count = facets(r1, size / 1000);
    const double faceted = exact * count / (2 * kPi) * std::sin(2 * kPi / count);
    EXPECT_NEAR(volumeOf(wedges(body, size / 1000)), faceted, exact * 1e-6) << i;
  }
}

}  // namespace
}  // namespace Vesk::Pcf
