// SPDX-License-Identifier: MIT
#include "vesk/Cone.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "support/PlaceOf.h"
#include "support/RecordLines.h"
#include "vesk/GeConstants.h"
#include "vesk/GeEx.h"

using namespace Vesk;
using namespace VeskTest;

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

Cone cone(const GeVector& start, const GeVector& end, double d1, double d2) {
  return {start, end, d1, d2};
}

// clang-format off
const RecordCase<Cone> kRecords[] = {
    {"StartEndAndBothDiameters", cone({1, 2, 3}, {1, 2, 13}, 4, 6), 2,
     {"60|000|CON" + fields({1, 2, 3, 1, 2, 13, 4, 6})}},
    {"StartAxisAndBothDiameters", cone({1, 2, 3}, {1, 2, 13}, 4, 6), 3,
     {"00|000|n 1 2 3,0 0 10,4,6"}},
    {"PointedCone", cone({0, 0, 0}, {0, 0, 50}, 0, 100), 2,
     {"60|000|CON" + fields({0, 0, 0, 0, 0, 50, 0, 100})}},
    {"PointedCone", cone({0, 0, 0}, {0, 0, 50}, 0, 100), 3,
     {"00|000|n 0 0 0,0 0 50,0,100"}},
    {"NegativeDiametersAreWrittenAsTheyAre", cone({0, 0, 0}, {1, 0, 0}, -1, -2), 2,
     {"60|000|CON" + fields({0, 0, 0, 1, 0, 0, -1, -2})}},
    {"NegativeDiametersAreWrittenAsTheyAre", cone({0, 0, 0}, {1, 0, 0}, -1, -2), 3,
     {"00|000|n 0 0 0,1 0 0,-1,-2"}},
    {"PointsHaveFourDecimalsVectorsAndValuesSix",
     cone({1.23456789, 0, 0}, {2.46913578, 0, 0}, 9.87654321, 0.0000005), 3,
     {"00|000|n 1.2346 0 0,1.234568 0 0,9.876543,0"}},  // 0.0000005 is a little below its text
    {"NotNumbersPass", cone({0, 0, 0}, {0, 0, kInf}, NAN, -kInf), 2,
     {"60|000|CON" + fields({0, 0, 0, 0, 0}) + "      inf      nan     -inf"}},
    {"NotNumbersPass", cone({0, 0, 0}, {0, 0, kInf}, NAN, -kInf), 3,
     {"00|000|n 0 0 0,0 0 inf,nan,-inf"}},
};
// clang-format on

TEST(ConeTest, WritesItsRecord) {
  for (const auto& row : kRecords) EXPECT_EQ(linesOf(row.primitive, row.mode), row.lines) << row;
}

TEST(ConeTest, DefaultIsAllZero) {
  const Cone c;
  EXPECT_EQ(c.origin, GePoint(0, 0, 0));
  EXPECT_EQ(c.axis, GeVector(0, 0, 0));
  EXPECT_EQ(c.diameter1, 0.0);
  EXPECT_EQ(c.diameter2, 0.0);
}

TEST(ConeTest, NullArrayThrows) {
  const double* none = nullptr;
  const double p[3] = {1, 2, 3};
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { Cone(none, p, 1, 2); }), "GeVector");
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { Cone(p, none, 1, 2); }), "GeVector");
}

struct SizeCase {
  const char* name;
  Cone cone;
  int size;
  friend std::ostream& operator<<(std::ostream& os, const SizeCase& row) { return os << row.name; }
};

// clang-format off
const SizeCase kSizes[] = {
    {"Usable",                          cone({0, 0, 0}, {0, 0, 10}, 2, 3),           0},
    {"PointedAtTheStart",               cone({0, 0, 0}, {0, 0, 10}, 0, 100),         0},
    {"PointedAtTheEnd",                 cone({0, 0, 0}, {0, 0, 10}, 100, 0),         0},
    {"OneDiameterAtTheLimit",           cone({0, 0, 0}, {0, 0, 10}, 0.01, 0.005),    0},
    {"AxisOfAMillionthIsUsable",        cone({0, 0, 0}, {0, 0, 1e-6}, 2, 3),         0},
    {"AxisAtTheLimitIsUsable",          cone({0, 0, 0}, {0, 0, 1e-7}, 2, 3),         0},
    {"TwoSmallDiametersAreDegenerate",  cone({0, 0, 0}, {0, 0, 10}, 0.005, 0.005),   1},
    {"TwoZeroDiametersAreDegenerate",   cone({0, 0, 0}, {0, 0, 10}, 0, 0),           1},
    {"ShorterAxisIsDegenerate",         cone({0, 0, 0}, {0, 0, 0.99e-7}, 2, 3),      1},
    {"EqualPointsAreDegenerate",        cone({1, 2, 3}, {1, 2, 3}, 2, 3),            1},
    {"NegativeFirstDiameterIsInvalid",  cone({0, 0, 0}, {0, 0, 10}, -1, 3),          2},
    {"NegativeSecondDiameterIsInvalid", cone({0, 0, 0}, {0, 0, 10}, 3, -1),          2},
    {"InvalidCountsBeforeDegenerate",   cone({0, 0, 0}, {0, 0, 0}, 0, -1e-300),      2},
};
// clang-format on

TEST(ConeTest, CheckSize) {
  for (const SizeCase& row : kSizes) EXPECT_EQ(row.cone.checkSize(), row.size) << row;
}

TEST(ConeTest, VolumeOfAFrustum) {
  EXPECT_DOUBLE_EQ(cone({0, 0, 0}, {0, 0, 3}, 2, 0).volume(), kPi);      // pi/3 3 1
  EXPECT_DOUBLE_EQ(cone({0, 0, 0}, {0, 0, 3}, 4, 2).volume(), 7 * kPi);  // pi/3 3 (4 + 2 + 1)
  EXPECT_DOUBLE_EQ(cone({0, 0, 0}, {0, 0, 10}, 2, 2).volume(), 10 * kPi);
}

struct CentroidCase {
  const char* name;
  double d1;
  double d2;
  double height;  // of the centroid in a cone of height 12
  friend std::ostream& operator<<(std::ostream& os, const CentroidCase& r) { return os << r.name; }
};

// clang-format off
constexpr CentroidCase kCentroids[] = {
    {"CylinderShapedIsTheMiddle",   2, 2, 6},  // f = 6/3/4 = 1/2
    {"PointedAtTheEndIsAQuarter",   5, 0, 3},
    {"PointedAtTheStartIsThree",    0, 5, 9},
    {"FrustumByItsFormula",         4, 2, 132.0 / 28},  // f = (16 + 16 + 12) / (4 + 8 + 16) / 4
};
// clang-format on

TEST(ConeTest, CentroidLiesNearTheWiderFace) {
  for (const CentroidCase& row : kCentroids) {
    GePoint p;
    cone({1, 2, 3}, {1, 2, 15}, row.d1, row.d2).centroid(p);
    EXPECT_EQ(p.x, 1) << row;
    EXPECT_EQ(p.y, 2) << row;
    EXPECT_DOUBLE_EQ(p.z, 3 + row.height) << row;
  }
}

TEST(ConeTest, CentroidWithoutDiametersIsNotANumber) {
  GePoint p;
  cone({1, 2, 3}, {1, 2, 15}, 0, 0).centroid(p);
  EXPECT_TRUE(std::isnan(p.z));
}

TEST(ConeTest, RotTranslatesTheOriginNotTheAxis) {
  Cone c({1, 0, 0}, {3, 0, 5}, 4, 6);
  c.rot({kUnitY, -kUnitX, kUnitZ, {100, 0, 0}});
  EXPECT_EQ(c.origin, GePoint(100, 1, 0));
  EXPECT_EQ(c.axis, GeVector(0, 2, 5));
  EXPECT_EQ(c.diameter1, 4);
  EXPECT_EQ(c.diameter2, 6);
}

TEST(ConeTest, ScaleMultipliesBothDiameters) {
  Cone c({1, 2, 3}, {1, 2, 13}, 4, 6);
  c.scale(-2);
  EXPECT_EQ(c.origin, GePoint(-2, -4, -6));
  EXPECT_EQ(c.axis, GeVector(0, 0, -20));
  EXPECT_EQ(c.diameter1, -8);
  EXPECT_EQ(c.diameter2, -12);
}

TEST(ConeTest, ExtentsEncloseEachFaceWithItsOwnDiameter) {
  Extents box;
  Cone({0, 0, 0}, {10, 0, 0}, 4, 6).addExtents(box);
  EXPECT_EQ(box.min, GePoint(0, -3, -3));
  EXPECT_EQ(box.max, GePoint(10, 3, 3));
  box = {};
  Cone({0, 0, 0}, {10, 0, 0}, 6, -4).addExtents(box);
  EXPECT_EQ(box.min, GePoint(0, -3, -3));
  EXPECT_EQ(box.max, GePoint(10, 3, 3));
}

struct EqualCase {
  const char* name;
  Cone other;
  double tolerance;
  bool equal;
  friend std::ostream& operator<<(std::ostream& os, const EqualCase& row) { return os << row.name; }
};

// Against a cone from (0, 0, 0), diameter 2, to (0, 0, 10), diameter 4.
// clang-format off
const EqualCase kEquals[] = {
    {"Same",                                cone({0, 0, 0}, {0, 0, 10}, 2, 4),      0,   true},
    {"FromTheOtherEndWithDiametersSwapped", cone({0, 0, 10}, {0, 0, 0}, 4, 2),      0,   true},
    {"FromTheOtherEndOnly",                 cone({0, 0, 10}, {0, 0, 0}, 2, 4),      1,   false},
    {"DiametersSwappedOnly",                cone({0, 0, 0}, {0, 0, 10}, 4, 2),      1,   false},
    {"FirstDiameterAtTheTolerance",         cone({0, 0, 0}, {0, 0, 10}, 2.5, 4),    0.5, true},
    {"FirstDiameterAboveTheTolerance",      cone({0, 0, 0}, {0, 0, 10}, 2.625, 4),  0.5, false},
    {"SecondDiameterAboveTheTolerance",     cone({0, 0, 0}, {0, 0, 10}, 2, 3.25),   0.5, false},
    {"EndAtTheTolerance",                   cone({0, 0, 0}, {0, 0, 10.5}, 2, 4),    0.5, true},
    {"EndAboveTheTolerance",                cone({0, 0, 0}, {0, 0, 10.625}, 2, 4),  0.5, false},
    {"SwappedEndAboveTheTolerance",         cone({0, 0, 10}, {0, 0, 0.625}, 4, 2),  0.5, false},
};
// clang-format on

TEST(ConeTest, EqualPairsTheEndsWithTheirDiameters) {
  const Cone c({0, 0, 0}, {0, 0, 10}, 2, 4);
  for (const EqualCase& row : kEquals) {
    EXPECT_EQ(c.equal(row.other, row.tolerance), row.equal) << row;
    EXPECT_EQ(row.other.equal(c, row.tolerance), row.equal) << row << ", the other way round";
  }
}

}  // namespace
