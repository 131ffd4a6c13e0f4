// SPDX-License-Identifier: MIT
#include "vesk/Torus.h"

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

Torus torus(const GeVector& centre, const GeVector& start, const GeVector& end, double diameter,
            double bendRadius = -1.0) {
  Torus t(centre, start, end, diameter);
  t.bendRadius = bendRadius;
  return t;
}

// A quarter of a ring of radius 100 about the origin, in the x y plane.
Torus quarter(double diameter, double bendRadius = -1.0) {
  return torus({0, 0, 0}, {100, 0, 0}, {0, 100, 0}, diameter, bendRadius);
}

Torus scaled(Torus t, double factor) {
  t.scale(factor);
  return t;
}

// clang-format off
const RecordCase<Torus> kRecords[] = {
    {"CentreStartEndRadiusDiameter", quarter(20), 2,
     {"60|000|TOR" + fields({0, 0, 0, 100, 0, 0, 0, 100, 0, 100, 20})}},
    {"CentreVectorsDiameter", quarter(20), 3, {"00|000|t 0 0 0,100 0 0,0 100 0,20"}},
    {"PointsAreAbsolute", torus({1, 2, 3}, {11, 2, 3}, {1, 12, 3}, 4), 2,
     {"60|000|TOR" + fields({1, 2, 3, 11, 2, 3, 1, 12, 3, 10, 4})}},
    {"VectorsAreWrittenNotPointsAndNoRadius", torus({1, 2, 3}, {11, 2, 3}, {1, 12, 3}, 4, 77), 3,
     {"00|000|t 1 2 3,10 0 0,0 10 0,4"}},
    {"DerivedRadiusIsTheMeanOfUnequalLengths", torus({0, 0, 0}, {100, 0, 0}, {0, 50, 0}, 4), 2,
     {"60|000|TOR" + fields({0, 0, 0, 100, 0, 0, 0, 50, 0, 75, 4})}},
    {"PositiveRadiusIsWrittenAsItIs", quarter(20, 77), 2,
     {"60|000|TOR" + fields({0, 0, 0, 100, 0, 0, 0, 100, 0, 77, 20})}},
    {"TinyPositiveRadiusIsWrittenAsItIs", quarter(20, 1e-300), 2,
     {"60|000|TOR" + fields({0, 0, 0, 100, 0, 0, 0, 100, 0, 0, 20})}},
    {"ZeroRadiusIsReplaced", quarter(20, 0.0), 2,
     {"60|000|TOR" + fields({0, 0, 0, 100, 0, 0, 0, 100, 0, 100, 20})}},
    {"NegativeRadiusIsReplaced", quarter(20, -77), 2,
     {"60|000|TOR" + fields({0, 0, 0, 100, 0, 0, 0, 100, 0, 100, 20})}},
    {"RadiusThatIsNoNumberIsReplaced", quarter(20, NAN), 2,
     {"60|000|TOR" + fields({0, 0, 0, 100, 0, 0, 0, 100, 0, 100, 20})}},
    {"NegativeScaleMakesTheAbsentRadiusPositive", scaled(quarter(20), -3), 2,
     {"60|000|TOR" + fields({0, 0, 0, -300, 0, 0, 0, -300, 0, 3, -60})}},
    {"NotNumbersPass", torus({0, 0, 0}, {NAN, 0, 0}, {0, kInf, 0}, -kInf, 5), 2,
     {"60|000|TOR" + fields({0, 0, 0}) + "      nan" + fields({0, 0, 0}) + "      inf" +
      fields({0, 5}) + "     -inf"}},
    {"NotNumbersPass", torus({0, 0, 0}, {NAN, 0, 0}, {0, kInf, 0}, -kInf), 3,
     {"00|000|t 0 0 0,nan 0 0,0 inf 0,-inf"}},
    {"PointHasFourDecimalsVectorsAndValuesSix",
     torus({1.23456789, 0, 0}, {2.46913578, 0, 0}, {1.23456789, 1.23456789, 0}, 9.87654321), 3,
     {"00|000|t 1.2346 0 0,1.234568 0 0,0 1.234568 0,9.876543"}},
};
// clang-format on

TEST(TorusTest, WritesItsRecord) {
  for (const auto& row : kRecords) EXPECT_EQ(linesOf(row.primitive, row.mode), row.lines) << row;
}

TEST(TorusTest, DefaultIsAllZeroWithoutBendRadius) {
  const Torus t;
  EXPECT_EQ(t.centre, GePoint(0, 0, 0));
  EXPECT_EQ(t.startVector, GeVector(0, 0, 0));
  EXPECT_EQ(t.endVector, GeVector(0, 0, 0));
  EXPECT_EQ(t.diameter, 0.0);
  EXPECT_EQ(t.bendRadius, -1.0);
}

TEST(TorusTest, NullArrayThrows) {
  const double* none = nullptr;
  const double p[3] = {1, 2, 3};
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { Torus(none, p, p, 1); }), "GeVector");
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { Torus(p, none, p, 1); }), "GeVector");
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { Torus(p, p, none, 1); }), "GeVector");
}

TEST(TorusTest, MoveShiftsTheCentreOnly) {
  Torus t = torus({1, 2, 3}, {11, 2, 3}, {1, 12, 3}, 4);
  t.move({10, 20, 30});
  EXPECT_EQ(t.centre, GePoint(11, 22, 33));
  EXPECT_EQ(t.startVector, GeVector(10, 0, 0));
  EXPECT_EQ(t.endVector, GeVector(0, 10, 0));
}

TEST(TorusTest, RotTranslatesTheCentreNotTheVectors) {
  Torus t = torus({1, 0, 0}, {11, 0, 0}, {1, 10, 0}, 4);
  t.rot({kUnitY, -kUnitX, kUnitZ, {100, 0, 0}});
  EXPECT_EQ(t.centre, GePoint(100, 1, 0));
  EXPECT_EQ(t.startVector, GeVector(0, 10, 0));
  EXPECT_EQ(t.endVector, GeVector(-10, 0, 0));
}

TEST(TorusTest, ScaleMultipliesDiameterAndBendRadius) {
  const Torus t = scaled(torus({1, 2, 3}, {11, 2, 3}, {1, 12, 3}, 4, 10), 2);
  EXPECT_EQ(t.centre, GePoint(2, 4, 6));
  EXPECT_EQ(t.startVector, GeVector(20, 0, 0));
  EXPECT_EQ(t.endVector, GeVector(0, 20, 0));
  EXPECT_EQ(t.diameter, 8);
  EXPECT_EQ(t.bendRadius, 20);
}

struct SizeCase {
  const char* name;
  Torus torus;
  int size;
  friend std::ostream& operator<<(std::ostream& os, const SizeCase& row) { return os << row.name; }
};

// clang-format off
const SizeCase kSizes[] = {
    {"Usable",                               quarter(20),        0},
    {"HalfTheDiameterIsTheRadius",           quarter(200),       0},
    {"WiderThanTheBendByLessThanAHundredth", quarter(200.0199),  0},
    {"WiderThanTheBendByMore",               quarter(200.0201),  2},
    {"MuchWider",                            quarter(500),       2},
    {"NegativeDiameterIsNotCaught",          quarter(-500),      0},
    {"ShortStartVector", torus({0, 0, 0}, {0.9e-7, 0, 0}, {0, 100, 0}, 20),   1},
    {"ShortEndVector",   torus({0, 0, 0}, {100, 0, 0}, {0, 0.9e-7, 0}, 20),   1},
    {"VectorsAtTheLimit", torus({0, 0, 0}, {1e-7, 0, 0}, {0, 1e-7, 0}, 0.01), 0},
    {"InvalidCountsBeforeDegenerate", torus({0, 0, 0}, {0, 0, 0}, {0, 0, 0}, 1), 2},
    {"NullVectorsWithAThinTube", torus({0, 0, 0}, {0, 0, 0}, {0, 0, 0}, 0.02), 1},
    {"MeanRadiusCounts",  torus({0, 0, 0}, {150, 0, 0}, {0, 50, 0}, 200),     0},
};
// clang-format on

TEST(TorusTest, CheckSize) {
  for (const SizeCase& row : kSizes) EXPECT_EQ(row.torus.checkSize(), row.size) << row;
}

struct VolumeCase {
  const char* name;
  Torus torus;
  double volume;
  friend std::ostream& operator<<(std::ostream& os, const VolumeCase& r) { return os << r.name; }
};

// Sweep times radius times pi times the square of half the diameter.
// clang-format off
const VolumeCase kVolumes[] = {
    {"Quarter",                     quarter(20),               kPi / 2 * 100 * kPi * 100},
    {"StoredRadiusPlaysNoPart",     quarter(20, 77),           kPi / 2 * 100 * kPi * 100},
    {"MeanOfUnequalLengths", torus({0, 0, 0}, {150, 0, 0}, {0, 50, 0}, 20), kPi / 2 * 100 * kPi * 100},
    {"Half",           torus({0, 0, 0}, {100, 0, 0}, {-100, 0, 0}, 20), kPi * 100 * kPi * 100},
    {"NoSweep",        torus({0, 0, 0}, {100, 0, 0}, {50, 0, 0}, 20),   0.0},
    {"NullStart",      torus({0, 0, 0}, {0, 0, 0}, {0, 100, 0}, 20),    0.0},
    {"NullEnd",        torus({0, 0, 0}, {100, 0, 0}, {0, 0, 0}, 20),    0.0},
    {"NullStartInfinitelyWide", torus({0, 0, 0}, {0, 0, 0}, {0, 100, 0}, HUGE_VAL), 0.0},
    {"NullEndHuge",    torus({0, 0, 0}, {100, 0, 0}, {0, 0, 0}, 1e300), 0.0},
    {"NoNumber",       torus({0, 0, 0}, {NAN, 0, 0}, {0, 100, 0}, 20),  0.0},
    {"ShortIsNotNull", torus({0, 0, 0}, {1e-8, 0, 0}, {0, 1e-8, 0}, 20), kPi / 2 * 1e-8 * kPi * 100},
};
// clang-format on

TEST(TorusTest, VolumeIsSweepTimesMeanRadiusTimesSection) {
  for (const VolumeCase& row : kVolumes) {
    EXPECT_DOUBLE_EQ(row.torus.volume(), row.volume) << row;
  }
}

// A true torus has (R^2 + h^2/4) / R in place of (R^2 + h^2/8) / R; the 8 is
// this system's own. R = 100, h = 40: (10000 + 200) / 100 = 102 along the
// bisector, times sin(pi/4) / (pi/4), of which each coordinate is cos(pi/4):
// 102 * 1/2 / (pi/4) = 204 / pi.
TEST(TorusTest, CentroidDividesBySquareOfHalfTheTubeByEight) {
  GePoint p;
  quarter(80).centroid(p);
  EXPECT_DOUBLE_EQ(p.x, 204 / kPi);
  EXPECT_DOUBLE_EQ(p.y, 204 / kPi);
  EXPECT_EQ(p.z, 0);
}

TEST(TorusTest, CentroidTakesTheLengthOfTheStartVectorOnly) {
  GePoint p;
  GePoint q;
  torus({0, 0, 0}, {100, 0, 0}, {0, 100, 0}, 80).centroid(p);
  torus({0, 0, 0}, {100, 0, 0}, {0, 7, 0}, 80).centroid(q);
  EXPECT_EQ(p, q);
}

TEST(TorusTest, CentroidOfNullOrOppositeVectorsThrows) {
  const Torus refused[] = {
      torus({0, 0, 0}, {0, 0, 0}, {0, 100, 0}, 20),
      torus({0, 0, 0}, {100, 0, 0}, {0, 0, 0}, 20),
      torus({0, 0, 0}, {0, 0, 0}, {0, 0, 0}, 20),
      torus({0, 0, 0}, {100, 0, 0}, {-100, 0, 0}, 20),
      torus({0, 0, 0}, {0.1, 0.2, 0.3}, {-0.3, -0.6, -0.9}, 20),
  };
  for (const Torus& t : refused) {
    GePoint p(1, 2, 3);
    EXPECT_EQ(placeOf<GeEx::NullDir>([&] { t.centroid(p); }), "GeDirect");
    EXPECT_EQ(p, GePoint(1, 2, 3));
  }
}

TEST(TorusTest, CentroidWithoutSweepIsNotANumber) {
  GePoint p;
  torus({0, 0, 0}, {100, 0, 0}, {50, 0, 0}, 20).centroid(p);
  EXPECT_TRUE(std::isnan(p.x));
}

struct ExtentsCase {
  const char* name;
  Torus torus;
  GePoint min;
  GePoint max;
  friend std::ostream& operator<<(std::ostream& os, const ExtentsCase& r) { return os << r.name; }
};

// clang-format off
const ExtentsCase kExtents[] = {
    // The ends' circles reach 10 beyond the axes' ends across the arc, not along it.
    {"EndsOnTheAxes",       quarter(20), {0, 0, -10}, {110, 110, 10}},
    {"NegativeDiameter",    quarter(-20), {0, 0, -10}, {110, 110, 10}},
    {"MeanRadiusCounts",    torus({0, 0, 0}, {150, 0, 0}, {0, 50, 0}, 20), {0, 0, -10}, {110, 110, 10}},
    // From 45 to 135 degrees the top, 90, lies inside; the sides are the ends'.
    {"ExtremeInsideTheSweep", torus({0, 0, 0}, {60, 60, 0}, {-60, 60, 0}, 0),
     {-60, 60, 0}, {60, std::sqrt(7200), 0}},
    {"CollinearIsTheCentreAlone", torus({1, 2, 3}, {101, 2, 3}, {-99, 2, 3}, 20), {1, 2, 3}, {1, 2, 3}},
    {"NullAndInfiniteIsTheCentreAlone", torus({1, 2, 3}, {1, 2, 3}, {HUGE_VAL, 2, 3}, 20), {1, 2, 3}, {1, 2, 3}},
    {"NoSweepIsTheCentreAlone",   torus({1, 2, 3}, {101, 2, 3}, {51, 2, 3}, 20), {1, 2, 3}, {1, 2, 3}},
    {"NullVectorIsTheCentreAlone", torus({1, 2, 3}, {1, 2, 3}, {51, 2, 3}, 20), {1, 2, 3}, {1, 2, 3}},
};
// clang-format on

TEST(TorusTest, Extents) {
  for (const ExtentsCase& row : kExtents) {
    Extents box;
    row.torus.addExtents(box);
    EXPECT_LE(distance(box.min, row.min), 1e-12) << row << ": " << box.min.x << " " << box.min.y;
    EXPECT_LE(distance(box.max, row.max), 1e-12) << row << ": " << box.max.x << " " << box.max.y;
  }
}

struct EqualCase {
  const char* name;
  Torus other;
  double tolerance;
  bool equal;
  friend std::ostream& operator<<(std::ostream& os, const EqualCase& row) { return os << row.name; }
};

// Against the quarter ring of diameter 20.
// clang-format off
const EqualCase kEquals[] = {
    {"Same",                        quarter(20),                                         0,   true},
    {"FromTheOtherEnd",     torus({0, 0, 0}, {0, 100, 0}, {100, 0, 0}, 20),      0,   true},
    {"BendRadiusIsNotCompared",     quarter(20, 77),                                     0,   true},
    {"DiameterAtTheTolerance",      quarter(20.5),                                       0.5, true},
    {"DiameterAboveTheTolerance",   quarter(20.625),                                     0.5, false},
    {"CentreAboveTheTolerance", torus({0, 0, 1}, {100, 0, 0}, {0, 100, 0}, 20),  0.5, false},
    {"StartAtTheTolerance", torus({0, 0, 0}, {100.5, 0, 0}, {0, 100, 0}, 20),    0.5, true},
    {"StartAboveTheTolerance", torus({0, 0, 0}, {101, 0, 0}, {0, 100, 0}, 20),   0.5, false},
    {"EndAboveTheTolerance", torus({0, 0, 0}, {100, 0, 0}, {0, 101, 0}, 20),     0.5, false},
    {"OtherQuarter", torus({0, 0, 0}, {0, 100, 0}, {-100, 0, 0}, 20),            0.5, false},
};
// clang-format on

TEST(TorusTest, EqualComparesCentreMiddleAndEndsInEitherOrder) {
  for (const EqualCase& row : kEquals) {
    EXPECT_EQ(quarter(20).equal(row.other, row.tolerance), row.equal) << row;
    EXPECT_EQ(row.other.equal(quarter(20), row.tolerance), row.equal) << row << ", swapped";
  }
}

// Just above and just below half a turn: the ends are near each other, but the
// arcs run on opposite sides.
TEST(TorusTest, ArcsOnOppositeSidesAreNotEqual) {
  const Torus above = torus({0, 0, 0}, {100, 0, 0}, {-100, 0.125, 0}, 20);
  const Torus below = torus({0, 0, 0}, {100, 0, 0}, {-100, -0.125, 0}, 20);
  EXPECT_FALSE(above.equal(below, 0.5));
  EXPECT_TRUE(above.equal(above, 0.5));
}

}  // namespace
