// SPDX-License-Identifier: MIT
#include "vesk/Cyl.h"

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

Cyl cyl(const GeVector& start, const GeVector& end, double diameter) {
  return {start, end, diameter};
}

// clang-format off
const RecordCase<Cyl> kRecords[] = {
    {"StartEndAndDiameter", cyl({0, 0, 0}, {0, 0, 1000}, 200), 2,
     {"60|000|CYL" + fields({0, 0, 0, 0, 0, 1000, 200})}},
    {"StartAxisAndDiameter", cyl({0, 0, 0}, {0, 0, 1000}, 200), 3,
     {"00|000|c 0 0 0,0 0 1000,200"}},
    {"SecondPointIsTheEnd", cyl({1, 2, 3}, {1, 2, 13}, 4), 2,
     {"60|000|CYL" + fields({1, 2, 3, 1, 2, 13, 4})}},
    {"SecondPointIsTheAxis", cyl({1, 2, 3}, {1, 2, 13}, 4), 3,
     {"00|000|c 1 2 3,0 0 10,4"}},
    {"EqualPointsAreWritten", cyl({1, 2, 3}, {1, 2, 3}, 4), 2,
     {"60|000|CYL" + fields({1, 2, 3, 1, 2, 3, 4})}},
    {"EqualPointsAreWritten", cyl({1, 2, 3}, {1, 2, 3}, 4), 3,
     {"00|000|c 1 2 3,0 0 0,4"}},
    {"NegativeDiameterIsWrittenAsItIs", cyl({0, 0, 0}, {1, 0, 0}, -5), 2,
     {"60|000|CYL" + fields({0, 0, 0, 1, 0, 0, -5})}},
    {"NegativeDiameterIsWrittenAsItIs", cyl({0, 0, 0}, {1, 0, 0}, -5), 3,
     {"00|000|c 0 0 0,1 0 0,-5"}},
    {"PointsHaveFourDecimalsVectorsAndValuesSix",
     cyl({1.23456789, 0, 0}, {2.46913578, 0, 0}, 9.87654321), 3,
     {"00|000|c 1.2346 0 0,1.234568 0 0,9.876543"}},
    {"NotNumbersPass", cyl({NAN, 0, 0}, {NAN, 0, kInf}, -kInf), 2,
     {"60|000|CYL      nan    0.000    0.000      nan    0.000      inf     -inf"}},
    {"NotNumbersPass", cyl({NAN, 0, 0}, {NAN, 0, kInf}, -kInf), 3,
     {"00|000|c nan 0 0,nan 0 inf,-inf"}},
    // 1e300 has 301 digits: two do not fit into 512 characters. The axis, the
    // difference of two equal lengths, is 0.
    {"LongNumbersContinue", cyl({1e300, 0, 1e300}, {1e300, 0, 1e300}, 1), 3,
     {"00|000|c " + std::to_string(1e300).substr(0, 301) + " 0 ",
      "01|000|c " + std::to_string(1e300).substr(0, 301) + ",0 0 0,1"}},
};
// clang-format on

TEST(CylTest, WritesItsRecord) {
  for (const auto& row : kRecords) EXPECT_EQ(linesOf(row.primitive, row.mode), row.lines) << row;
}

TEST(CylTest, EachRecordStartsAtTheFirstLineNumber) {
  const Cyl c({0, 0, 0}, {0, 0, 1}, 2);
  for (const auto& [mode, first] : {std::pair{2, "60|"}, {3, "00|"}}) {
    Output out = assembler(mode);
    c.write(out);
    out.nextLine();
    EXPECT_EQ(c.write(out), 1) << "the line of the first record";
    EXPECT_EQ(shown(out).back().substr(0, 3), first);
  }
}

TEST(CylTest, AttributesStandBetweenKeywordAndData) {
  Output out = assembler(3);
  out.attributes = "cs red,";
  EXPECT_EQ(linesOf(Cyl({0, 0, 0}, {0, 0, 1}, 2), out), Lines{"00|000|c cs red,0 0 0,0 0 1,2"});
}

TEST(CylTest, DefaultIsAllZero) {
  const Cyl c;
  EXPECT_EQ(c.origin, GePoint(0, 0, 0));
  EXPECT_EQ(c.axis, GeVector(0, 0, 0));
  EXPECT_EQ(c.diameter, 0.0);
}

TEST(CylTest, NullArrayThrows) {
  const double* none = nullptr;
  const double p[3] = {1, 2, 3};
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { Cyl(none, p, 1); }), "GeVector");
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { Cyl(p, none, 1); }), "GeVector");
}

struct SizeCase {
  const char* name;
  Cyl cyl;
  int size;
  friend std::ostream& operator<<(std::ostream& os, const SizeCase& row) { return os << row.name; }
};

// clang-format off
const SizeCase kSizes[] = {
    {"Usable",                        cyl({0, 0, 0}, {0, 0, 10}, 2),       0},
    {"DiameterAtTheLimitIsUsable",    cyl({0, 0, 0}, {0, 0, 10}, 0.01),    0},
    {"AxisAtTheLimitIsUsable",        cyl({0, 0, 0}, {0, 0, 0.01}, 2),     0},
    {"SmallDiameterIsDegenerate",     cyl({0, 0, 0}, {0, 0, 10}, 0.005),   1},
    {"ZeroDiameterIsDegenerate",      cyl({0, 0, 0}, {0, 0, 10}, 0),       1},
    {"EqualPointsAreDegenerate",      cyl({1, 2, 3}, {1, 2, 3}, 2),        1},
    {"ShortAxisIsDegenerate",         cyl({0, 0, 0}, {0, 0.0099, 0}, 2),   1},
    {"AxisOfAMillionthIsDegenerate",  cyl({0, 0, 0}, {0, 0, 1e-6}, 2),     1},
    {"NegativeDiameterIsInvalid",     cyl({0, 0, 0}, {0, 0, 10}, -1),      2},
    {"TinyNegativeDiameterIsInvalid", cyl({0, 0, 0}, {0, 0, 10}, -1e-300), 2},
    {"InvalidCountsBeforeDegenerate", cyl({0, 0, 0}, {0, 0, 0}, -1),       2},
};
// clang-format on

TEST(CylTest, CheckSize) {
  for (const SizeCase& row : kSizes) EXPECT_EQ(row.cyl.checkSize(), row.size) << row;
}

TEST(CylTest, VolumeIsSectionTimesHeight) {
  EXPECT_DOUBLE_EQ(cyl({0, 0, 0}, {0, 0, 10}, 2).volume(), 31.415926535897931);  // pi 1^2 10
  EXPECT_DOUBLE_EQ(cyl({7, 7, 7}, {10, 11, 7}, 4).volume(), 20 * kPi);           // pi 2^2 5
}

TEST(CylTest, CentroidIsTheMiddleOfTheAxis) {
  GePoint p(9, 9, 9);
  EXPECT_EQ(cyl({1, 2, 3}, {1, 2, 13}, 4).centroid(p), GePoint(1, 2, 8));
}

TEST(CylTest, MoveShiftsTheOriginOnly) {
  Cyl c({1, 2, 3}, {1, 2, 13}, 4);
  c.move({10, 20, 30});
  EXPECT_EQ(c.origin, GePoint(11, 22, 33));
  EXPECT_EQ(c.axis, GeVector(0, 0, 10));
  EXPECT_EQ(c.diameter, 4);
}

// A quarter turn about z, x to y, and a shift.
TEST(CylTest, RotTranslatesTheOriginNotTheAxis) {
  Cyl c({1, 0, 0}, {3, 0, 5}, 4);
  c.rot({kUnitY, -kUnitX, kUnitZ, {100, 0, 0}});
  EXPECT_EQ(c.origin, GePoint(100, 1, 0));
  EXPECT_EQ(c.axis, GeVector(0, 2, 5));
  EXPECT_EQ(c.diameter, 4);
}

TEST(CylTest, ScaleIsAboutTheWorldOrigin) {
  Cyl c({1, 2, 3}, {1, 2, 13}, 4);
  c.scale(-2);
  EXPECT_EQ(c.origin, GePoint(-2, -4, -6));
  EXPECT_EQ(c.axis, GeVector(0, 0, -20));
  EXPECT_EQ(c.diameter, -8);
  c.scale(0);
  EXPECT_EQ(c.axis, GeVector(0, 0, 0));
  EXPECT_EQ(c.diameter, 0);
}

TEST(CylTest, ExtentsEncloseBothFaces) {
  Extents box;
  EXPECT_EQ(&Cyl({1, 2, 3}, {1, 2, 13}, 4).addExtents(box), &box);
  EXPECT_EQ(box.min, GePoint(-1, 0, 3));
  EXPECT_EQ(box.max, GePoint(3, 4, 13));
}

TEST(CylTest, ExtentsWithoutAxisAreTheCentreAlone) {
  Extents box;
  Cyl({1, 2, 3}, {1, 2, 3}, 4).addExtents(box);
  EXPECT_EQ(box.min, GePoint(1, 2, 3));
  EXPECT_EQ(box.max, GePoint(1, 2, 3));
}

struct EqualCase {
  const char* name;
  Cyl other;
  double tolerance;
  bool equal;
  friend std::ostream& operator<<(std::ostream& os, const EqualCase& row) { return os << row.name; }
};

// Against a cylinder from (0, 0, 0) to (0, 0, 10) of diameter 2.
// clang-format off
const EqualCase kEquals[] = {
    {"Same",                      cyl({0, 0, 0}, {0, 0, 10}, 2),     0,   true},
    {"FromTheOtherEnd",           cyl({0, 0, 10}, {0, 0, 0}, 2),     0,   true},
    {"DiameterAtTheTolerance",    cyl({0, 0, 0}, {0, 0, 10}, 2.5),   0.5, true},
    {"DiameterAboveTheTolerance", cyl({0, 0, 0}, {0, 0, 10}, 2.625), 0.5, false},
    {"SmallerDiameter",           cyl({0, 0, 0}, {0, 0, 10}, 1),     0.5, false},
    {"EndAtTheTolerance",         cyl({0, 0, 0}, {0, 0, 10.5}, 2),   0.5, true},
    {"EndAboveTheTolerance",      cyl({0, 0, 0}, {0, 0, 11}, 2),     0.5, false},
    {"StartAboveTheTolerance",    cyl({0, 0, -1}, {0, 0, 10}, 2),    0.5, false},
    {"SwappedAndOff",             cyl({0, 0, 11}, {0, 0, 0}, 2),     0.5, false},
    {"ParallelNotEqual",          cyl({1, 0, 0}, {1, 0, 10}, 2),     0.5, false},
};
// clang-format on

TEST(CylTest, EqualPairsTheEnds) {
  const Cyl c({0, 0, 0}, {0, 0, 10}, 2);
  for (const EqualCase& row : kEquals) {
    EXPECT_EQ(c.equal(row.other, row.tolerance), row.equal) << row;
    EXPECT_EQ(row.other.equal(c, row.tolerance), row.equal) << row << ", the other way round";
  }
}

}  // namespace
