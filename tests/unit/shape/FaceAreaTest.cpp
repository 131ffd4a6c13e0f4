// SPDX-License-Identifier: MIT
#include "shape/FaceArea.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

namespace VeskTest {
namespace {

using namespace Vesk;

constexpr double kRelative = 1e-9;

struct FaceCase {
  const char* name;
  GePoint a, b, c, d;
  double area;

  friend std::ostream& operator<<(std::ostream& os, const FaceCase& each) {
    return os << each.name;
  }
};

// Areas of warped faces by a program of its own in Python: Gauss's rule of 30 points in
// each of 24 x 24 cells. z = x y over the unit square besides in closed form:
// sqrt(3) / 3 + 4 / 3 ln((1 + sqrt(3)) / sqrt(2)) - pi / 18.
//
// clang-format off
const FaceCase kFaces[] = {
    {"Rectangle", {0, 0, 0}, {4, 0, 0}, {4, 3, 0}, {0, 3, 0}, 12},
    {"FarAway", {1e6, 1e6, 0}, {1e6 + 4, 1e6, 0}, {1e6 + 4, 1e6 + 3, 0}, {1e6, 1e6 + 3, 0}, 12},
    {"Trapezium", {0, 0, 0}, {4, 0, 0}, {3, 2, 0}, {1, 2, 0}, 6},            // (4 + 2) / 2 * 2
    {"Triangle", {0, 0, 0}, {4, 0, 0}, {0, 3, 0}, {0, 0, 0}, 6},
    {"DentedAndPlane", {0, 0, 0}, {4, 0, 0}, {1, 1, 0}, {0, 4, 0}, 4},       // 8 - 4
    {"Saddle", {0, 0, 0}, {1, 0, 0}, {1, 1, 1}, {0, 1, 0}, 1.2807892752734038},
    {"OneCornerUp", {0, 0, 0}, {1000, 0, 0}, {1000, 600, 250}, {0, 600, 0}, 622963.883549838},
    {"TwoCornersUp", {0, 0, 0}, {4, 0, 1}, {3, 5, 0}, {0, 4, 2}, 17.113392351725235},
    {"SideTurnedByAnEighth", {0, 0, 0}, {1, 0, 0},
     {0.7071067811865476, 0.7071067811865476, 2}, {0, 0, 2}, 1.9423416548542853},
};
// clang-format on

class FaceAreaTest : public testing::TestWithParam<FaceCase> {};

TEST_P(FaceAreaTest, IsThatOfTheBilinearFace) {
  const FaceCase& f = GetParam();
  EXPECT_NEAR(bilinearArea(f.a, f.b, f.c, f.d), f.area, kRelative * f.area);
  EXPECT_NEAR(quadrangleArea(f.a, f.b, f.c, f.d), f.area, kRelative * f.area);
}

// Whichever corner is named first, and in either sense.
TEST_P(FaceAreaTest, IsTheSameFromEveryCorner) {
  const FaceCase& f = GetParam();
  EXPECT_NEAR(bilinearArea(f.b, f.c, f.d, f.a), f.area, kRelative * f.area);
  EXPECT_NEAR(bilinearArea(f.d, f.c, f.b, f.a), f.area, kRelative * f.area);
}

// A bow tie whose wings are a tenth apart: in its middle the normal turns over within
// a tenth of the face. By the same program, with 24 x 24 and 48 x 48 cells.
TEST(FaceAreasTest, OfANormalThatTurnsOver) {
  EXPECT_NEAR(bilinearArea({0, 0, 0}, {1, 0, 0}, {0, 1, 0.1}, {1, 1, 0}), 0.50794763555253,
              kRelative * 0.5);
}

INSTANTIATE_TEST_SUITE_P(Faces, FaceAreaTest, testing::ValuesIn(kFaces),
                         [](const auto& each) { return each.param.name; });

// With the inner corner 0.1 above the others the
// drawn triangles are a b c and a c d, each of half the cross product
// |(4, 0, 0) x (1, 1, 0.1)| = |(0, -0.4, 4)|.
TEST(QuadrangleArea, OfAWarpedOneWithADentIsThatOfItsTriangles) {
  const GePoint a(0, 0, 0), b(4, 0, 0), c(1, 1, 0.1), d(0, 4, 0);
  EXPECT_NEAR(quadrangleArea(a, b, c, d), std::sqrt(0.16 + 16.0), 1e-12);
}

TEST(BilinearArea, OfNothingIsNothing) {
  const GePoint a(1, 2, 3);
  EXPECT_EQ(bilinearArea(a, a, a, a), 0.0);
  EXPECT_EQ(quadrangleArea(a, a, a, a), 0.0);
}

}  // namespace
}  // namespace VeskTest
