// SPDX-License-Identifier: MIT
#include "vesk/Relb.h"

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

Relb relb(const GePoint& centre, const GeVector& start, const GeVector& end, double width,
          double depth, bool flipped = false) {
  Relb r;
  r.centre = centre;
  r.startVector = start;
  r.endVector = end;
  r.width = width;
  r.depth = depth;
  r.flipped = flipped;
  return r;
}

// Bend axis from (0, 0, 0) to (0, 0, 10), outer radius 50, inner radius 30.
const Relb kQuarter({0, 0, 0}, {0, 0, 10}, {50, 0, 0}, {0, 50, 0}, 30);

TEST(RelbTest, FieldsAreDerivedFromThePoints) {
  EXPECT_EQ(kQuarter.depth, 20);
  EXPECT_EQ(kQuarter.startVector, GeVector(40, 0, 0));
  EXPECT_EQ(kQuarter.endVector, GeVector(0, 40, 0));
  EXPECT_EQ(kQuarter.centre, GePoint(0, 0, 5));
  EXPECT_EQ(kQuarter.width, 10);
  EXPECT_FALSE(kQuarter.flipped);
}

// p3 is 70 from p0, p2 50: the end vector is 70 - 20/2.
TEST(RelbTest, UnequalDistancesGiveVectorsOfUnequalLength) {
  const Relb r({1, 2, 3}, {1, 2, 13}, {51, 2, 3}, {1, 72, 3}, 30);
  EXPECT_EQ(r.startVector, GeVector(40, 0, 0));
  EXPECT_EQ(r.endVector, GeVector(0, 60, 0));
  EXPECT_EQ(r.centre, GePoint(1, 2, 8));
  EXPECT_DOUBLE_EQ(r.volume(), kPi / 2 * 50 * (20 * 10));  // the mean of 40 and 60
  EXPECT_EQ(r.checkSize(), 0);
}

TEST(RelbTest, DefaultIsAllZero) {
  const Relb r;
  EXPECT_EQ(r.centre, GePoint(0, 0, 0));
  EXPECT_EQ(r.startVector, GeVector(0, 0, 0));
  EXPECT_EQ(r.endVector, GeVector(0, 0, 0));
  EXPECT_EQ(r.width, 0.0);
  EXPECT_EQ(r.depth, 0.0);
  EXPECT_FALSE(r.flipped);
}

TEST(RelbTest, NullArrayThrows) {
  const double* none = nullptr;
  const double p[3] = {1, 2, 3};
  const double q[3] = {4, 5, 6};
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { Relb(none, p, q, q, 1); }), "GeVector");
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { Relb(p, none, q, q, 1); }), "GeVector");
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { Relb(p, p, none, q, 1); }), "GeVector");
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { Relb(p, p, q, none, 1); }), "GeVector");
}

TEST(RelbTest, OuterPointAtTheAxisThrows) {
  EXPECT_EQ(placeOf<GeEx::NullDir>([&] {
              Relb({0, 0, 0}, {0, 0, 10}, {0, 0, 0}, {0, 50, 0}, 30);
            }),
            "GeDirect");
  EXPECT_EQ(placeOf<GeEx::NullDir>([&] {
              Relb({0, 0, 0}, {0, 0, 10}, {50, 0, 0}, {0, 0, 0}, 30);
            }),
            "GeDirect");
}

const Relb kFlipped = relb({0, 0, 5}, {40, 0, 0}, {0, 40, 0}, 10, 20, true);

// clang-format off
const RecordCase<Relb> kRecords[] = {
    {"AxisEndsOuterPointsAndInnerRadius", kQuarter, 2,
     {"60|000|ELB" + fields({0, 0, 10, 0, 0, 0, 50, 0, 10, 0, 50, 10}), "61|000|ELB" + fields({30})}},
    {"DepthBeforeWidth", kQuarter, 3, {"00|000|e 0 0 5,40 0 0,0 40 0,20,10"}},
    {"FlippedStartsFromTheOtherSide", kFlipped, 2,
     {"60|000|ELB" + fields({0, 0, 0, 0, 0, 10, 50, 0, 0, 0, 50, 0}), "61|000|ELB" + fields({30})}},
    {"FlippedDoesNotShow", kFlipped, 3, {"00|000|e 0 0 5,40 0 0,0 40 0,20,10"}},
    {"InnerRadiusIsTheStartVectors", relb({0, 0, 0}, {40, 0, 0}, {0, 60, 0}, 10, 20), 2,
     {"60|000|ELB" + fields({0, 0, 5, 0, 0, -5, 50, 0, 5, 0, 70, 5}), "61|000|ELB" + fields({30})}},
    {"InnerRadiusIsTheStartVectorsAlsoWhenFlipped",
     relb({0, 0, 0}, {40, 0, 0}, {0, 60, 0}, 10, 20, true), 2,
     {"60|000|ELB" + fields({0, 0, -5, 0, 0, 5, 50, 0, -5, 0, 70, -5}), "61|000|ELB" + fields({30})}},
    // p0 to p1 against the turn from p2 to p3: a is p0, c and e are p2 and p3.
    {"AxisAgainstTheTurn", Relb({0, 0, 10}, {0, 0, 0}, {50, 0, 10}, {0, 50, 10}, 30), 2,
     {"60|000|ELB" + fields({0, 0, 10, 0, 0, 0, 50, 0, 10, 0, 50, 10}), "61|000|ELB" + fields({30})}},
    {"EndPointAtItsOwnDistance", Relb({0, 0, 10}, {0, 0, 0}, {50, 0, 10}, {0, 70, 10}, 30), 2,
     {"60|000|ELB" + fields({0, 0, 10, 0, 0, 0, 50, 0, 10, 0, 70, 10}), "61|000|ELB" + fields({30})}},
    {"NegativeSizesAreWritten", relb({0, 0, 0}, {40, 0, 0}, {0, 40, 0}, -10, -20), 2,
     {"60|000|ELB" + fields({0, 0, -5, 0, 0, 5, 30, 0, -5, 0, 30, -5}), "61|000|ELB" + fields({50})}},
    {"NegativeSizesAreWritten", relb({0, 0, 0}, {40, 0, 0}, {0, 40, 0}, -10, -20), 3,
     {"00|000|e 0 0 0,40 0 0,0 40 0,-20,-10"}},
    {"CollinearHasNoCornersButVectors", relb({0, 0, 0}, {40, 0, 0}, {-40, 0, 0}, 10, 20), 3,
     {"00|000|e 0 0 0,40 0 0,-40 0 0,20,10"}},
    {"NotNumbersPass", relb({0, 0, 0}, {NAN, 0, 0}, {0, kInf, 0}, NAN, -kInf), 3,
     {"00|000|e 0 0 0,nan 0 0,0 inf 0,-inf,nan"}},
    // A width that is no number spoils every corner, but not the inner radius.
    {"NotNumberWidthPasses", relb({1, 2, 3}, {40, 0, 0}, {0, 40, 0}, NAN, 20), 2,
     {"60|000|ELB      nan      nan      nan      nan      nan      nan"
      "      nan      nan      nan      nan      nan      nan", "61|000|ELB" + fields({30})}},
    {"PointHasFourDecimalsVectorsAndValuesSix",
     relb({1.23456789, 0, 0}, {1.23456789, 0, 0}, {0, 1.23456789, 0}, 9.87654321, 1.23456789), 3,
     {"00|000|e 1.2346 0 0,1.234568 0 0,0 1.234568 0,1.234568,9.876543"}},
};
// clang-format on

TEST(RelbTest, WritesItsRecord) {
  for (const auto& row : kRecords) EXPECT_EQ(linesOf(row.primitive, row.mode), row.lines) << row;
}

TEST(RelbTest, CollinearVectorsThrowInModeTwoAndLeaveTheAssemblerAsItWas) {
  const Relb refused[] = {
      relb({0, 0, 0}, {40, 0, 0}, {-40, 0, 0}, 10, 20),
      relb({0, 0, 0}, {40, 0, 0}, {80, 0, 0}, 10, 20),
      relb({0, 0, 0}, {0, 0, 0}, {0, 40, 0}, 10, 20),
      relb({0, 0, 0}, {40, 0, 0}, {0, 0, 0}, 10, 20),
  };
  for (const Relb& r : refused) {
    Output out = assembler(2);
    out.beginRecord("XYZ", true);
    out.nextLine();
    const Lines before = shown(out);
    EXPECT_EQ(placeOf<GeEx::NullDir>([&] { r.write(out); }), "GeDirect");
    EXPECT_EQ(shown(out), before);
    EXPECT_EQ(out.prefix.substr(0, 2), "61");
  }
}

TEST(RelbTest, MoveShiftsTheCentreOnly) {
  Relb r = kQuarter;
  r.move({1, 2, 3});
  EXPECT_EQ(r.centre, GePoint(1, 2, 8));
  EXPECT_EQ(r.startVector, GeVector(40, 0, 0));
  EXPECT_EQ(r.endVector, GeVector(0, 40, 0));
}

TEST(RelbTest, RotTranslatesTheCentreNotTheVectors) {
  Relb r = relb({1, 0, 0}, {40, 0, 0}, {0, 40, 0}, 10, 20);
  r.rot({kUnitY, -kUnitX, kUnitZ, {100, 0, 0}});
  EXPECT_EQ(r.centre, GePoint(100, 1, 0));
  EXPECT_EQ(r.startVector, GeVector(0, 40, 0));
  EXPECT_EQ(r.endVector, GeVector(-40, 0, 0));
}

TEST(RelbTest, ScaleMultipliesWidthAndDepth) {
  Relb r = kQuarter;
  r.scale(-2);
  EXPECT_EQ(r.centre, GePoint(0, 0, -10));
  EXPECT_EQ(r.startVector, GeVector(-80, 0, 0));
  EXPECT_EQ(r.endVector, GeVector(0, -80, 0));
  EXPECT_EQ(r.width, -20);
  EXPECT_EQ(r.depth, -40);
}

struct SizeCase {
  const char* name;
  Relb relb;
  int size;
  friend std::ostream& operator<<(std::ostream& os, const SizeCase& row) { return os << row.name; }
};

// clang-format off
const SizeCase kSizes[] = {
    {"Usable",                    kQuarter,                                              0},
    {"DepthTwiceTheRadius",       relb({0, 0, 0}, {40, 0, 0}, {0, 40, 0}, 10, 80),       0},
    {"DeeperByLessThanTwoHundredths", relb({0, 0, 0}, {40, 0, 0}, {0, 40, 0}, 10, 80.0199), 0},
    {"DeeperByMore",              relb({0, 0, 0}, {40, 0, 0}, {0, 40, 0}, 10, 80.0201),  2},
    {"MeanRadiusCounts",          relb({0, 0, 0}, {60, 0, 0}, {0, 20, 0}, 10, 80),       0},
    {"WidthPlaysNoPart",          relb({0, 0, 0}, {40, 0, 0}, {0, 40, 0}, -1000, 20),    0},
    {"ShortStartVector",          relb({0, 0, 0}, {0.9e-7, 0, 0}, {0, 40, 0}, 10, 20),   1},
    {"ShortEndVector",            relb({0, 0, 0}, {40, 0, 0}, {0, 0.9e-7, 0}, 10, 20),   1},
    {"InvalidCountsBeforeDegenerate", relb({0, 0, 0}, {0, 0, 0}, {0, 0, 0}, 10, 20),     2},
};
// clang-format on

TEST(RelbTest, CheckSize) {
  for (const SizeCase& row : kSizes) EXPECT_EQ(row.relb.checkSize(), row.size) << row;
}

TEST(RelbTest, VolumeIsSweepTimesMeanRadiusTimesSection) {
  EXPECT_DOUBLE_EQ(kQuarter.volume(), kPi / 2 * 40 * 200);
  EXPECT_EQ(relb({0, 0, 0}, {0, 0, 0}, {0, 40, 0}, 10, 20).volume(), 0.0);
  EXPECT_EQ(relb({0, 0, 0}, {40, 0, 0}, {0, 0, 0}, 10, 20).volume(), 0.0);
  EXPECT_EQ(relb({0, 0, 0}, {40, 0, 0}, {0, NAN, 0}, 10, 20).volume(), 0.0);
  EXPECT_EQ(relb({0, 0, 0}, {0, 0, 0}, {0, 40, 0}, kInf, 20).volume(), 0.0);
  EXPECT_EQ(relb({0, 0, 0}, {40, 0, 0}, {0, 0, 0}, 1e300, 1e300).volume(), 0.0);
}

// 2/3 (50^3 - 30^3) / (50^2 - 30^2) = 2/3 98000 / 1600 = 245/6 along the
// bisector, times sin(pi/4) / (pi/4); each coordinate is cos(pi/4) of that:
// 245/6 * 1/2 / (pi/4) = 245 / (3 pi).
TEST(RelbTest, CentroidLiesOnTheBisector) {
  GePoint p;
  kQuarter.centroid(p);
  EXPECT_DOUBLE_EQ(p.x, 245 / (3 * kPi));
  EXPECT_DOUBLE_EQ(p.y, 245 / (3 * kPi));
  EXPECT_EQ(p.z, 5);
}

TEST(RelbTest, CentroidOfNullOrOppositeVectorsThrows) {
  GePoint p(1, 2, 3);
  EXPECT_EQ(placeOf<GeEx::NullDir>([&] {
              relb({0, 0, 0}, {0, 0, 0}, {0, 40, 0}, 10, 20).centroid(p);
            }),
            "GeDirect");
  EXPECT_EQ(placeOf<GeEx::NullDir>([&] {
              relb({0, 0, 0}, {40, 0, 0}, {0, 0, 0}, 10, 20).centroid(p);
            }),
            "GeDirect");
  EXPECT_EQ(placeOf<GeEx::NullDir>([&] {
              relb({0, 0, 0}, {40, 0, 0}, {-40, 0, 0}, 10, 20).centroid(p);
            }),
            "GeDirect");
  EXPECT_EQ(p, GePoint(1, 2, 3));
}

TEST(RelbTest, CentroidWithoutSweepIsNotANumber) {
  GePoint p;
  relb({0, 0, 0}, {40, 0, 0}, {40, 0, 0}, 10, 20).centroid(p);
  EXPECT_TRUE(std::isnan(p.x));
}

struct ExtentsCase {
  const char* name;
  Relb relb;
  GePoint min;
  GePoint max;
  friend std::ostream& operator<<(std::ostream& os, const ExtentsCase& r) { return os << r.name; }
};

// clang-format off
const ExtentsCase kExtents[] = {
    {"EndsOnTheAxes",    kQuarter, {0, 0, 0}, {50, 50, 10}},
    {"NegativeSizes",    relb({0, 0, 5}, {40, 0, 0}, {0, 40, 0}, -10, -20), {0, 0, 0}, {50, 50, 10}},
    {"FlippedIsTheSame", kFlipped, {0, 0, 0}, {50, 50, 10}},
    // From 53 to 127 degrees: outer radius 110, inner radius 90.
    {"ExtremeInsideTheSweep", relb({0, 0, 0}, {60, 80, 0}, {-60, 80, 0}, 10, 20),
     {-66, 72, -5}, {66, 110, 5}},
    {"CollinearIsTheCentreAlone", relb({1, 2, 3}, {40, 0, 0}, {-40, 0, 0}, 10, 20),
     {1, 2, 3}, {1, 2, 3}},
    {"NullAndInfiniteIsTheCentreAlone", relb({1, 2, 3}, {0, 0, 0}, {kInf, 0, 0}, 10, 20),
     {1, 2, 3}, {1, 2, 3}},
    {"InfiniteIsTheCentreAlone", relb({1, 2, 3}, {40, 0, 0}, {0, kInf, 0}, 10, 20),
     {1, 2, 3}, {1, 2, 3}},
    {"NoNumberIsTheCentreAlone", relb({1, 2, 3}, {NAN, 0, 0}, {0, 40, 0}, 10, 20),
     {1, 2, 3}, {1, 2, 3}},
};
// clang-format on

TEST(RelbTest, Extents) {
  for (const ExtentsCase& row : kExtents) {
    Extents box;
    row.relb.addExtents(box);
    EXPECT_LE(distance(box.min, row.min), 1e-12) << row;
    EXPECT_LE(distance(box.max, row.max), 1e-12) << row;
  }
}

struct EqualCase {
  const char* name;
  Relb other;
  double tolerance;
  bool equal;
  friend std::ostream& operator<<(std::ostream& os, const EqualCase& row) { return os << row.name; }
};

// clang-format off
const EqualCase kEquals[] = {
    {"Same",                   kQuarter,                                              0,   true},
    {"FromTheOtherEnd",        relb({0, 0, 5}, {0, 40, 0}, {40, 0, 0}, 10, 20),       0,   true},
    {"FlippedIsNotCompared",   kFlipped,                                              0,   true},
    {"WidthAtTheTolerance",    relb({0, 0, 5}, {40, 0, 0}, {0, 40, 0}, 10.5, 20),     0.5, true},
    {"WidthAboveTheTolerance", relb({0, 0, 5}, {40, 0, 0}, {0, 40, 0}, 10.625, 20),   0.5, false},
    {"DepthAtTheTolerance",    relb({0, 0, 5}, {40, 0, 0}, {0, 40, 0}, 10, 19.5),     0.5, true},
    {"DepthAboveTheTolerance", relb({0, 0, 5}, {40, 0, 0}, {0, 40, 0}, 10, 19.375),   0.5, false},
    {"CentreAboveTheTolerance", relb({0, 0, 6}, {40, 0, 0}, {0, 40, 0}, 10, 20),      0.5, false},
    {"EndAtTheTolerance",      relb({0, 0, 5}, {40, 0, 0}, {0, 40.5, 0}, 10, 20),     0.5, true},
    {"EndAboveTheTolerance",   relb({0, 0, 5}, {40, 0, 0}, {0, 41, 0}, 10, 20),       0.5, false},
};
// clang-format on

TEST(RelbTest, EqualComparesSectionCentreMiddleAndEndsInEitherOrder) {
  for (const EqualCase& row : kEquals) {
    EXPECT_EQ(kQuarter.equal(row.other, row.tolerance), row.equal) << row;
    EXPECT_EQ(row.other.equal(kQuarter, row.tolerance), row.equal) << row << ", swapped";
  }
}

}  // namespace
