// SPDX-License-Identifier: MIT
#include "vesk/Red.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "support/RecordLines.h"
#include "vesk/GeConstants.h"
#include "vesk/GeEx.h"

using namespace Vesk;
using namespace VeskTest;

namespace {

using Corners = std::array<GeVector, 8>;

constexpr double kInf = std::numeric_limits<double>::infinity();

// 10 by 10 at z = 0, 6 by 6 at z = 20, centred on each other.
const Corners kTransition = {{{0, 0, 0},
                              {10, 0, 0},
                              {0, 10, 0},
                              {10, 10, 0},
                              {2, 2, 20},
                              {8, 2, 20},
                              {2, 8, 20},
                              {8, 8, 20}}};

const Corners kUnitCube = {
    {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}, {1, 1, 1}}};

// The unit cube with one corner elsewhere.
Corners cubeWith(std::size_t k, const GeVector& corner) {
  Corners corners = kUnitCube;
  corners[k] = corner;
  return corners;
}

Corners shifted(Corners corners, const GeVector& v) {
  for (GeVector& corner : corners) corner += v;
  return corners;
}

Red tagged(std::vector<TagEntry> tags) {
  Red red(kTransition);
  red.tags = std::move(tags);
  return red;
}

const TagEntry kLeft{"left", {}};
const TagEntry kRight{"right", {}};
const TagEntry kSeam{"seam", {{1, 2.5}}};
const TagEntry kTriple{"triple", {{1, 2}, {3, 4}, {5.12345, -6}}};

const std::string kLine60 = "60|000|RED" + fields({0, 0, 0, 10, 0, 0, 0, 10, 0, 10, 10, 0});
const std::string kLine61 = "61|000|RED" + fields({2, 2, 20, 8, 2, 20, 2, 8, 20, 8, 8, 20});
const std::string kLine00 = "00|000|r 0 0 0,10 0 0,0 10 0,10 10 0,2 2 20,8 2 20,2 8 20,8 8 20";

// clang-format off
const RecordCase<Red> kRecords[] = {
    {"FourCornersOnEachOfTwoLines", Red(kTransition), 2, {kLine60, kLine61}},
    {"CornerAndSevenVectors", Red(kTransition), 3, {kLine00}},
    {"CornersAreAbsolute", Red(shifted(kUnitCube, {5, 6, 7})), 2,
     {"60|000|RED" + fields({5, 6, 7, 6, 6, 7, 5, 7, 7, 6, 7, 7}),
      "61|000|RED" + fields({5, 6, 8, 6, 6, 8, 5, 7, 8, 6, 7, 8})}},
    {"VectorsAreRelativeToCornerZero", Red(shifted(kUnitCube, {5, 6, 7})), 3,
     {"00|000|r 5 6 7,1 0 0,0 1 0,1 1 0,0 0 1,1 0 1,0 1 1,1 1 1"}},
    {"PointHasFourDecimalsVectorsSix", Red(Corners{{{1.23456789, 0, 0}, {2.46913578, 0, 0}}}), 3,
     {"00|000|r 1.2346 0 0,1.234568 0 0,-1.234568 0 0,-1.234568 0 0,-1.234568 0 0,"
      "-1.234568 0 0,-1.234568 0 0,-1.234568 0 0"}},
    {"NotNumbersPass", Red(cubeWith(7, {NAN, kInf, -kInf})), 2,
     {"60|000|RED" + fields({0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0}),
      "61|000|RED" + fields({0, 0, 1, 1, 0, 1, 0, 1, 1}) + "      nan      inf     -inf"}},
    {"NotNumbersPass", Red(cubeWith(7, {NAN, kInf, -kInf})), 3,
     {"00|000|r 0 0 0,1 0 0,0 1 0,1 1 0,0 0 1,1 0 1,0 1 1,nan inf -inf"}},

    {"TagsWithoutValuesShareALine", tagged({kLeft, kRight}), 2,
     {kLine60, kLine61, "63|000|RED    *left*right*"}},
    {"EachTagWithValuesHasItsLine", tagged({kSeam, kTriple}), 2,
     {kLine60, kLine61, "64|000|RED    *seam*" + fields({1, 2.5}),
      "64|000|RED    *triple*" + fields({1, 2, 3, 4, 5.12345, -6})}},
    {"TagsWithoutValuesComeFirst", tagged({kSeam, kLeft, kTriple, kRight}), 2,
     {kLine60, kLine61, "63|000|RED    *left*right*", "64|000|RED    *seam*" + fields({1, 2.5}),
      "64|000|RED    *triple*" + fields({1, 2, 3, 4, 5.12345, -6})}},

    {"OneTagWithoutValues", tagged({kLeft}), 3, {kLine00, "00|000|reed left"}},
    {"OneTagWithOnePair", tagged({kSeam}), 3, {kLine00, "00|000|reed seam 1 2.5"}},
    {"LastTagWithThreePairsIsThreeTokens", tagged({kTriple}), 3,
     {kLine00, "00|000|reed triple 1 2ed triple 1 2 3 4ed triple 1 2 3 4 5.1235 -6"}},
    {"TagBeforeTheLastIsOneTokenWithAComma", tagged({kTriple, kSeam}), 3,
     {kLine00, "00|000|reed triple 1 2 3 4 5.1235 -6,ed seam 1 2.5"}},
    {"LastTagWithoutValuesHasNoComma", tagged({kTriple, kLeft}), 3,
     {kLine00, "00|000|reed triple 1 2 3 4 5.1235 -6,ed left"}},
};
// clang-format on

TEST(RedTest, WritesItsRecord) {
  for (const auto& row : kRecords) EXPECT_EQ(linesOf(row.primitive, row.mode), row.lines) << row;
}

TEST(RedTest, TagSwitchRulesModeTwoOnly) {
  const Red red = tagged({kLeft, kSeam});
  for (const int mode : {2, 3}) {
    Output out = assembler(mode);
    out.writeTags = false;
    EXPECT_EQ(linesOf(red, out), mode == 2 ? (Lines{kLine60, kLine61}) : linesOf(red, 3)) << mode;
  }
}

// The three tokens of 6, 204 and 402 characters after the heading of 21: the
// third does not fit into 512.
TEST(RedTest, TokensOfTheLastTagContinueOnTheNextLine) {
  const std::string name(194, 'n');
  EXPECT_EQ(linesOf(tagged({{name, {{1, 2}, {3, 4}, {5, 6}}}}), 3),
            (Lines{kLine00, "00|000|reed " + name + " 1 2ed " + name + " 1 2 3 4",
                   "01|000|reed " + name + " 1 2 3 4 5 6"}));
}

TEST(RedTest, DefaultIsAllZeroWithoutTags) {
  const Red red;
  for (int k = 0; k < 8; ++k) EXPECT_EQ(red.corner(k), GePoint(0, 0, 0));
  EXPECT_TRUE(red.tags.empty());
}

TEST(RedTest, PointsGiveNoTags) { EXPECT_TRUE(Red(kTransition).tags.empty()); }

TEST(RedTest, CornerOutsideZeroToSevenIsUndefined) {
  const Red red(shifted(kUnitCube, {5, 6, 7}));
  EXPECT_EQ(red.corner(0), GePoint(5, 6, 7));
  EXPECT_EQ(red.corner(1), GePoint(6, 6, 7));
  EXPECT_EQ(red.corner(7), GePoint(6, 7, 8));
  for (const int k : {-1, 8, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_EQ(red.corner(k), kUndefinedPoint) << k;
  }
}

TEST(RedTest, EveryReducerIsUsable) {
  EXPECT_EQ(Red().checkSize(), 0);
  EXPECT_EQ(Red(kTransition).checkSize(), 0);
}

TEST(RedTest, MoveShiftsTheOriginOnly) {
  Red red(kUnitCube);
  red.move({1, 2, 3});
  EXPECT_EQ(red.origin, GePoint(1, 2, 3));
  EXPECT_EQ(red.cornerVectors[6], GeVector(1, 1, 1));
}

TEST(RedTest, RotTranslatesTheOriginNotTheVectors) {
  Red red(shifted(kTransition, {1, 0, 0}));
  red.tags = {kSeam};
  red.rot({kUnitY, -kUnitX, kUnitZ, {100, 0, 0}});
  EXPECT_EQ(red.origin, GePoint(100, 1, 0));
  EXPECT_EQ(red.cornerVectors[0], GeVector(0, 10, 0));
  EXPECT_EQ(red.cornerVectors[6], GeVector(-8, 8, 20));
  EXPECT_EQ(red.tags, std::vector{kSeam});
}

TEST(RedTest, ScaleLeavesTheTags) {
  Red red(shifted(kUnitCube, {5, 6, 7}));
  red.tags = {kSeam};
  red.scale(-2);
  EXPECT_EQ(red.origin, GePoint(-10, -12, -14));
  EXPECT_EQ(red.cornerVectors[6], GeVector(-2, -2, -2));
  EXPECT_EQ(red.tags, std::vector{kSeam});
}

TEST(RedTest, ExtentsEncloseAllCorners) {
  for (std::size_t k = 0; k < 8; ++k) {
    Extents box;
    Red(cubeWith(k, {-7, 8, 9})).addExtents(box);
    EXPECT_EQ(box.min, GePoint(-7, 0, 0)) << k;
    EXPECT_EQ(box.max, GePoint(1, 8, 9)) << k;
  }
}

struct VolumeCase {
  const char* name;
  Corners corners;
  double volume;
  GePoint centroid;  // NaN: not compared
  friend std::ostream& operator<<(std::ostream& os, const VolumeCase& row) {
    return os << row.name;
  }
};

constexpr GePoint kAny{NAN, NAN, NAN};

// clang-format off
const VolumeCase kVolumes[] = {
    {"UnitCube",          kUnitCube,                                    1, {0.5, 0.5, 0.5}},
    {"FarUnitCube",       shifted(kUnitCube, {1024, -2048, 512}),       1, {1024.5, -2047.5, 512.5}},
    // 20/3 (100 + 60 + 36); its centre as the cone's: 20 (100 + 2 60 + 3 36) / (4 196)
    {"Transition",        kTransition,                     20.0 * 196 / 3, {5, 5, 20.0 * 328 / 784}},
    // Mirrored, the same solid is inside out.
    {"FirstEndLast",      {{{0, 0, 1}, {1, 0, 1}, {0, 1, 1}, {1, 1, 1},
                            {0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}}}, -1, {0.5, 0.5, 0.5}},
    // Moving a corner by d adds d . A / 3, A being the area vectors of the triangles that
    // hold the corner. On each of its three faces that is one triangle (1/2) along one
    // diagonal and two (1) along the other: 3/4 as their mean, A = (3/4, 3/4, 3/4).
    {"CornerMovedAlongTheDiagonal", cubeWith(7, {2, 2, 2}),          1.75, kAny},
    {"CornerMovedAlongAnEdge",      cubeWith(7, {1, 1, 2}),          1.25, kAny},
    // Second end shrunk to a point: a pyramid of height 1.
    {"Pyramid", {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, {0.5, 0.5, 1}, {0.5, 0.5, 1},
                  {0.5, 0.5, 1}, {0.5, 0.5, 1}}},                 1.0 / 3, {0.5, 0.5, 0.25}},
};
// clang-format on

TEST(RedTest, VolumeAndCentroid) {
  for (const VolumeCase& row : kVolumes) {
    const Red red(row.corners);
    EXPECT_NEAR(red.volume(), row.volume, 1e-6 * std::fabs(row.volume)) << row;
    GePoint p;
    EXPECT_EQ(&red.centroid(p), &p);
    if (std::isnan(row.centroid.x)) continue;
    EXPECT_LE(distance(p, row.centroid), 1e-6) << row;
  }
}

TEST(RedTest, UnitCubeIsExact) {
  GePoint p;
  EXPECT_DOUBLE_EQ(Red(kUnitCube).volume(), 1.0);
  EXPECT_LE(distance(Red(kUnitCube).centroid(p), {0.5, 0.5, 0.5}), 1e-15);
}

// The corners of a cube numbered so that another pair of faces, turned or not,
// forms the ends. Every numbering names other diagonals first.
TEST(RedTest, VolumeDoesNotDependOnWhichFacesAreTheEnds) {
  Corners bent = cubeWith(7, {1.5, 1.25, 2});
  bent[2] = {-0.25, 1.5, 0.125};
  const double volume = Red(bent).volume();
  GePoint centroid;
  Red(bent).centroid(centroid);
  const int numberings[][8] = {
      {0, 4, 1, 5, 2, 6, 3, 7},  // x, y, z taken as y, z, x
      {0, 2, 4, 6, 1, 3, 5, 7},  // as z, x, y
      {1, 3, 0, 2, 5, 7, 4, 6},  // a quarter turn of the ends
      {3, 2, 1, 0, 7, 6, 5, 4},  // half a turn
      {5, 4, 7, 6, 1, 0, 3, 2},  // the second end first, turned over
  };
  for (const auto& numbering : numberings) {
    Corners renumbered;
    for (std::size_t k = 0; k < 8; ++k)
      renumbered[k] = bent[static_cast<std::size_t>(numbering[k])];
    GePoint p;
    EXPECT_NEAR(Red(renumbered).volume(), volume, 1e-14);
    EXPECT_LE(distance(Red(renumbered).centroid(p), centroid), 1e-14);
  }
}

TEST(RedTest, CornersInTheWrongOrderMakeTheVolumeSmallerOrNegative) {
  const Corners& c = kUnitCube;
  // Both ends 0, 1, 2, 3 round the face in place of 0, 1, 3, 2.
  EXPECT_LT(Red(Corners{c[0], c[1], c[3], c[2], c[4], c[5], c[7], c[6]}).volume(), 0.5);
  EXPECT_EQ(Red(Corners{c[0], c[1], c[3], c[2], c[4], c[5], c[7], c[6]}).checkSize(), 0);
  EXPECT_LT(Red(Corners{c[1], c[0], c[3], c[2], c[5], c[4], c[7], c[6]}).volume(), 0.0);
}

TEST(RedTest, CentroidOfNoVolumeIsNotANumber) {
  GePoint p;
  Red().centroid(p);
  EXPECT_TRUE(std::isnan(p.x));
}

struct EqualCase {
  const char* name;
  Corners corners;
  double tolerance;
  bool equal;
  friend std::ostream& operator<<(std::ostream& os, const EqualCase& row) { return os << row.name; }
};

// clang-format off
const EqualCase kEquals[] = {
    {"Same",                         kUnitCube,                       0,   true},
    {"LastCornerAtTheTolerance",     cubeWith(7, {1, 1.5, 1}),        0.5, true},
    {"LastCornerAboveTheTolerance",  cubeWith(7, {1, 1.625, 1}),      0.5, false},
    {"MiddleCornerAboveTheTolerance", cubeWith(3, {1, 1, -0.625}),    0.5, false},
    {"FirstCornerOnly",              cubeWith(0, {0.625, 0, 0}),      0.5, false},
    {"Shifted",                      shifted(kUnitCube, {0, 0, 0.5}), 0.5, true},
    {"AnotherNumberingIsNotEqual",
     {{{0, 1, 0}, {1, 1, 0}, {0, 0, 0}, {1, 0, 0}, {0, 1, 1}, {1, 1, 1}, {0, 0, 1}, {1, 0, 1}}},
     0.5, false},
};
// clang-format on

TEST(RedTest, EqualComparesCornerByCornerAndNoTags) {
  const Red cube(kUnitCube);
  for (const EqualCase& row : kEquals) {
    Red other(row.corners);
    other.tags = {kSeam};
    EXPECT_EQ(cube.equal(other, row.tolerance), row.equal) << row;
    EXPECT_EQ(other.equal(cube, row.tolerance), row.equal) << row << ", the other way round";
  }
}

}  // namespace
