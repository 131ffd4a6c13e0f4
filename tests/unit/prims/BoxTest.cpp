// SPDX-License-Identifier: MIT
#include "vesk/Box.h"

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

// 10 by 20 by 30 at the origin.
const Box kRight({0, 0, 0}, {10, 0, 0}, {0, 20, 0}, {0, 0, 30});

// The same with marks.
Box marked(std::vector<TagEntry> edges) {
  Box box = kRight;
  box.edges = std::move(edges);
  return box;
}

const TagEntry kLeft{"left", {}};
const TagEntry kRightMark{"right", {}};
const TagEntry kSeam{"seam", {{1, 2.5}}};
const TagEntry kWeld{"weld", {{3, 4}, {0.12345, -6}}};

const std::string kBox2 = "60|000|BOX" + fields({0, 0, 0, 10, 0, 0, 0, 20, 0, 0, 0, 30});
const std::string kBox3 = "00|000|b 10 0 0,0 0 0,0 20 0,0 0 30";

// clang-format off
const RecordCase<Box> kRecords[] = {
    {"CornerAndItsThreeNeighbours", kRight, 2, {kBox2}},
    {"FirstEdgeBeforeTheCorner", kRight, 3, {kBox3}},
    {"NeighboursAreAbsolute", Box({1, 2, 3}, {2, 2, 3}, {1, 4, 3}, {1, 2, 6}), 2,
     {"60|000|BOX" + fields({1, 2, 3, 2, 2, 3, 1, 4, 3, 1, 2, 6})}},
    {"EdgesAreRelative", Box({1, 2, 3}, {2, 2, 3}, {1, 4, 3}, {1, 2, 6}), 3,
     {"00|000|b 1 0 0,1 2 3,0 2 0,0 0 3"}},
    {"PointHasFourDecimalsVectorsSix",
     Box({1.23456789, 0, 0}, {2.46913578, 0, 0}, {1.23456789, 0, 0}, {0, 0, 0}), 3,
     {"00|000|b 1.234568 0 0,1.2346 0 0,0 0 0,-1.234568 0 0"}},
    {"NotNumbersPass", Box({0, 0, 0}, {NAN, 0, 0}, {0, kInf, 0}, {0, 0, -kInf}), 2,
     {"60|000|BOX" + fields({0, 0, 0}) + "      nan" + fields({0, 0, 0}) + "      inf" +
      fields({0, 0, 0}) + "     -inf"}},
    {"NotNumbersPass", Box({0, 0, 0}, {NAN, 0, 0}, {0, kInf, 0}, {0, 0, -kInf}), 3,
     {"00|000|b nan 0 0,0 0 0,0 inf 0,0 0 -inf"}},

    {"MarksWithoutValuesShareALine", marked({kLeft, kRightMark}), 2,
     {kBox2, "63|000|BOX    *left*right*"}},
    {"EachMarkWithValuesHasItsLine", marked({kSeam, kWeld}), 2,
     {kBox2, "64|000|BOX    *seam*" + fields({1, 2.5}),
      "64|000|BOX    *weld*" + fields({3, 4, 0.12345, -6})}},
    {"MarksWithoutValuesComeFirst", marked({kSeam, kLeft, kWeld, kRightMark}), 2,
     {kBox2, "63|000|BOX    *left*right*", "64|000|BOX    *seam*" + fields({1, 2.5}),
      "64|000|BOX    *weld*" + fields({3, 4, 0.12345, -6})}},
    {"MarkOfAnEmptyName", marked({{"", {}}}), 2, {kBox2, "63|000|BOX    **"}},

    {"MarkWithoutValues", marked({kLeft}), 3, {kBox3, "00|000|beed left"}},
    {"MarksInTheirOrderWithACommaBetween", marked({kSeam, kLeft, kWeld}), 3,
     {kBox3, "00|000|beed seam 1 2.5,ed left,ed weld 3 4 0.1235 -6"}},
    {"LastMarkIsOneTokenAsTheOthers", marked({kWeld}), 3,
     {kBox3, "00|000|beed weld 3 4 0.1235 -6"}},
};
// clang-format on

TEST(BoxTest, WritesItsRecord) {
  for (const auto& row : kRecords) EXPECT_EQ(linesOf(row.primitive, row.mode), row.lines) << row;
}

TEST(BoxTest, TagSwitchRulesTheMarksOfModeTwoOnly) {
  const Box box = marked({kLeft, kSeam});
  for (const int mode : {2, 3}) {
    Output out = assembler(mode);
    out.writeTags = false;
    EXPECT_EQ(linesOf(box, out), mode == 2 ? Lines{kBox2} : linesOf(box, 3)) << mode;
  }
}

// The heading takes 24 characters, the opening and the name 10: (256 - 34) / 9
// leaves room for 24 numbers. The next mark starts at its own number again.
TEST(BoxTest, ManyValuesContinueOnTheNextLine) {
  TagEntry mark{"seam", {}};
  std::string numbers;
  for (int i = 0; i < 13; ++i) {
    mark.values.push_back({i, 2});
    numbers += fields({static_cast<double>(i), 2});
  }
  EXPECT_EQ(
      linesOf(marked({mark, kSeam}), 2),
      (Lines{kBox2, "64|000|BOX    *seam*" + numbers.substr(0, 24 * 9),
             "65|000|BOX" + numbers.substr(24 * 9), "64|000|BOX    *seam*" + fields({1, 2.5})}));
}

TEST(BoxTest, KeywordOfTheMarksStaysOnTheirContinuationLines) {
  TagEntry mark{std::string(400, 'm'), {}};
  EXPECT_EQ(linesOf(marked({mark, mark}), 3),
            (Lines{kBox3, "00|000|beed " + mark.name + ",", "01|000|beed " + mark.name}));
}

TEST(BoxTest, DefaultIsAllZeroWithoutMarks) {
  const Box box;
  EXPECT_EQ(box.origin, GePoint(0, 0, 0));
  EXPECT_EQ(box.edge1 + box.edge2 + box.edge3, GeVector(0, 0, 0));
  EXPECT_TRUE(box.edges.empty());
}

TEST(BoxTest, NullArrayThrows) {
  const double* none = nullptr;
  const double p[3] = {1, 2, 3};
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { Box(none, p, p, p); }), "GeVector");
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { Box(p, none, p, p); }), "GeVector");
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { Box(p, p, none, p); }), "GeVector");
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { Box(p, p, p, none); }), "GeVector");
}

TEST(BoxTest, EveryBoxIsUsable) {
  EXPECT_EQ(Box().checkSize(), 0);
  EXPECT_EQ(kRight.checkSize(), 0);
}

TEST(BoxTest, VolumeOfARightBox) { EXPECT_EQ(kRight.volume(), 6000); }

// Edges of 3, 5 and 2: the solid holds 3 * 4 * 2 = 24, the right box with the
// same edges 30, and it is the latter that a box reports.
TEST(BoxTest, VolumeOfAShearedBoxIsThatOfTheRightBoxWithTheSameEdges) {
  EXPECT_EQ(Box({1, 1, 1}, {4, 1, 1}, {4, 5, 1}, {1, 1, 3}).volume(), 30);
}

TEST(BoxTest, CentroidIsHalfOfTheEdges) {
  GePoint p;
  EXPECT_EQ(kRight.centroid(p), GePoint(5, 10, 15));
  EXPECT_EQ(Box({1, 1, 1}, {4, 1, 1}, {4, 5, 1}, {1, 1, 3}).centroid(p), GePoint(4, 3, 2));
}

TEST(BoxTest, MoveShiftsTheCornerOnly) {
  Box box = kRight;
  box.move({1, 2, 3});
  EXPECT_EQ(box.origin, GePoint(1, 2, 3));
  EXPECT_EQ(box.edge1, GeVector(10, 0, 0));
}

TEST(BoxTest, RotTranslatesTheCornerNotTheEdges) {
  Box box({1, 0, 0}, {11, 0, 0}, {1, 20, 0}, {1, 0, 30});
  box.rot({kUnitY, -kUnitX, kUnitZ, {100, 0, 0}});
  EXPECT_EQ(box.origin, GePoint(100, 1, 0));
  EXPECT_EQ(box.edge1, GeVector(0, 10, 0));
  EXPECT_EQ(box.edge2, GeVector(-20, 0, 0));
  EXPECT_EQ(box.edge3, GeVector(0, 0, 30));
}

TEST(BoxTest, ScaleIsAboutTheWorldOriginAndLeavesTheMarks) {
  Box box({1, 2, 3}, {2, 2, 3}, {1, 4, 3}, {1, 2, 6});
  box.edges = {kSeam};
  box.scale(-2);
  EXPECT_EQ(box.origin, GePoint(-2, -4, -6));
  EXPECT_EQ(box.edge1, GeVector(-2, 0, 0));
  EXPECT_EQ(box.edge2, GeVector(0, -4, 0));
  EXPECT_EQ(box.edge3, GeVector(0, 0, -6));
  EXPECT_EQ(box.edges, std::vector{kSeam});
}

// Each of the eight corners of a box sheared in x, y and z is furthest in some
// direction; leaving one out shows in a box turned to it.
TEST(BoxTest, ExtentsEncloseAllEightCorners) {
  for (const double a : {-1.0, 1.0}) {
    for (const double b : {-1.0, 1.0}) {
      for (const double c : {-1.0, 1.0}) {
        Extents box;
        Box({0, 0, 0}, {a, 1, 0}, {b, 0, 1}, {c, 1, 1}).addExtents(box);
        EXPECT_EQ(box.min.x, std::fmin(a, 0) + std::fmin(b, 0) + std::fmin(c, 0));
        EXPECT_EQ(box.max.x, std::fmax(a, 0) + std::fmax(b, 0) + std::fmax(c, 0));
        EXPECT_EQ(box.min.y, 0);
        EXPECT_EQ(box.max.y, 2);
        EXPECT_EQ(box.max.z, 2);
      }
    }
  }
}

struct EqualCase {
  const char* name;
  Box other;
  double tolerance;
  bool equal;
  friend std::ostream& operator<<(std::ostream& os, const EqualCase& row) { return os << row.name; }
};

// clang-format off
const EqualCase kEquals[] = {
    {"Same",                   kRight,                                               0,   true},
    {"OtherCornerEdgesReversed",
     Box({10, 20, 30}, {0, 20, 30}, {10, 0, 30}, {10, 20, 0}),                       0,   true},
    {"EdgesInAnotherOrder",    Box({0, 0, 0}, {0, 0, 30}, {10, 0, 0}, {0, 20, 0}),   0,   true},
    {"MarksAreNotCompared",    marked({kSeam}),                                      0,   true},
    {"EdgeAtTheTolerance",     Box({0, 0, 0}, {10.5, 0, 0}, {0, 20, 0}, {0, 0, 30}), 0.5, true},
    {"EdgeAboveTheTolerance",  Box({0, 0, 0}, {10.625, 0, 0}, {0, 20, 0}, {0, 0, 30}), 0.5, false},
    {"ShearedDiffers",         Box({0, 0, 0}, {10, 0, 0}, {1, 20, 0}, {0, 0, 30}),   0.5, false},
};
// clang-format on

TEST(BoxTest, EqualPairsTheCorners) {
  for (const EqualCase& row : kEquals) {
    EXPECT_EQ(kRight.equal(row.other, row.tolerance), row.equal) << row;
    EXPECT_EQ(row.other.equal(kRight, row.tolerance), row.equal) << row << ", the other way round";
  }
}

}  // namespace
