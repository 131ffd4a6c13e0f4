// SPDX-License-Identifier: MIT
#include "vesk/Extents.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>
#include <random>

#include "vesk/GeConstants.h"

using namespace Vesk;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(ExtentsTest, ANewBoxIsEmpty) {
  const Extents box;
  EXPECT_EQ(box.min, GePoint(kInfinity, kInfinity, kInfinity));
  EXPECT_EQ(box.max, GePoint(-kInfinity, -kInfinity, -kInfinity));
}

TEST(ExtentsTest, APointEnlargesEachCoordinateOnItsOwn) {
  Extents box({0, 0, 0}, {1, 1, 1});
  EXPECT_EQ(&box.add({-1, 0.5, 2}), &box);
  EXPECT_EQ(box.min, GePoint(-1, 0, 0));
  EXPECT_EQ(box.max, GePoint(1, 1, 2));
  box.add({0.5, 0.5, 0.5}).add({NAN, NAN, NAN});
  EXPECT_EQ(box.min, GePoint(-1, 0, 0));
  EXPECT_EQ(box.max, GePoint(1, 1, 2));
}

TEST(ExtentsTest, TheFirstPointIsTheBox) {
  Extents box;
  box.add({1, -2, 3});
  EXPECT_EQ(box.min, GePoint(1, -2, 3));
  EXPECT_EQ(box.max, GePoint(1, -2, 3));
}

const double kHalf = 5.0 / std::sqrt(2.0);

struct CircleCase {
  const char* name;
  GePoint centre;
  GeVector normal;
  double radius;
  GePoint min;
  GePoint max;

  friend std::ostream& operator<<(std::ostream& out, const CircleCase& row) {
    return out << row.name;
  }
};

// clang-format off
const CircleCase kCircles[] = {
    {"NormalZeroAddsTheCentreOnly",          {1, 2, 3}, {0, 0, 0},     5,  {1, 2, 3},   {1, 2, 3}},
    {"NormalWithinToleranceAddsTheCentreOnly", {1, 2, 3}, {0, 1e-10, 0}, 5, {1, 2, 3},   {1, 2, 3}},
    {"NormalJustAboveToleranceHasAPlane",    {1, 2, 3}, {0, 1.1e-10, 0}, 5, {-4, 2, -2}, {6, 2, 8}},
    {"NormalAlongZ",                         {0, 0, 0}, {0, 0, 1},     5,  {-5, -5, 0}, {5, 5, 0}},
    {"NormalAgainstZ",                       {0, 0, 0}, {0, 0, -1},    5,  {-5, -5, 0}, {5, 5, 0}},
    {"TheLengthOfTheNormalDoesNotCount",     {0, 0, 0}, {0, 0, 1000},  5,  {-5, -5, 0}, {5, 5, 0}},
    {"NormalAlongXAtACentre",                {1, 2, 3}, {1, 0, 0},     5,  {1, -3, -2}, {1, 7, 8}},
    {"NormalAlongTheDiagonalOfXAndY",        {0, 0, 0}, {1, 1, 0},     5,  {-kHalf, -kHalf, -5}, {kHalf, kHalf, 5}},
    {"ANegativeRadiusCountsByItsSize",       {0, 0, 0}, {1, 1, 0},     -5, {-kHalf, -kHalf, -5}, {kHalf, kHalf, 5}},
    {"ARadiusOfZeroAddsTheCentre",           {1, 2, 3}, {1, 1, 0},     0,  {1, 2, 3},   {1, 2, 3}},
};
// clang-format on

void expectNear(const GePoint& a, const GePoint& b, double tolerance) {
  EXPECT_NEAR(a.x, b.x, tolerance);
  EXPECT_NEAR(a.y, b.y, tolerance);
  EXPECT_NEAR(a.z, b.z, tolerance);
}

TEST(ExtentsTest, ACircleIsEnclosedExactly) {
  for (const CircleCase& row : kCircles) {
    SCOPED_TRACE(row);
    Extents box;
    EXPECT_EQ(&box.addCircle(row.centre, row.normal, row.radius), &box);
    expectNear(box.min, row.min, 1e-14);
    expectNear(box.max, row.max, 1e-14);
  }
}

TEST(ExtentsTest, AnAxisAlongTheNormalContributesNothing) {
  Extents box;
  box.addCircle({0, 0, 0}, {0, 0, 1}, 5);
  EXPECT_EQ(box.min, GePoint(-5, -5, 0));
  EXPECT_EQ(box.max, GePoint(5, 5, 0));
}

TEST(ExtentsTest, ACircleOnlyEnlarges) {
  Extents box({-9, -1, -9}, {9, 1, 9});
  box.addCircle({0, 0, 0}, {0, 0, 1}, 5);
  EXPECT_EQ(box.min, GePoint(-9, -5, -9));
  EXPECT_EQ(box.max, GePoint(9, 5, 9));
}

TEST(ExtentsTest, ACircleOfNoNumberChangesNothing) {
  Extents box({0, 0, 0}, {1, 1, 1});
  box.addCircle({0, 0, 0}, {NAN, 0, 1}, 5).addCircle({0, 0, 0}, {0, 0, 1}, NAN);
  EXPECT_EQ(box.min, GePoint(0, 0, 0));
  EXPECT_EQ(box.max, GePoint(1, 1, 1));
}

// Along a world axis a circle of radius r whose unit normal has the component n
// there reaches r * sqrt(1 - n * n) to both sides.
TEST(ExtentsTest, RandomCirclesReachTheSineOfTheirTilt) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> coordinate(-10.0, 10.0);
  for (int i = 0; i < 2000; ++i) {
    const GePoint c(coordinate(random), coordinate(random), coordinate(random));
    const GeVector n(coordinate(random), coordinate(random), coordinate(random));
    const double r = coordinate(random);
    Extents box;
    box.addCircle(c, n, r);
    const double square = n.x * n.x + n.y * n.y + n.z * n.z;
    const auto reach = [&](double part) {
      return std::fabs(r) * std::sqrt(1 - part * part / square);
    };
    const GeVector half(reach(n.x), reach(n.y), reach(n.z));
    expectNear(box.min, c - half, 1e-12);
    expectNear(box.max, c + half, 1e-12);
  }
}

}  // namespace
