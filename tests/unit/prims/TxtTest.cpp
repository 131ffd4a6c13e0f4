// SPDX-License-Identifier: MIT
#include "vesk/Txt.h"

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

// Characters 0.5 wide and 2.5 high along x and y at (1, 2, 0).
Txt txt(std::string text, std::int32_t alignment = 1, std::int32_t flag = 0) {
  return {{1, 2, 0}, {1, 0, 0}, {0, 1, 0}, 0.5, 2.5, alignment, flag, std::move(text)};
}

Txt sized(double charWidth, double height) {
  Txt t = txt("AB");
  t.charWidth = charWidth;
  t.height = height;
  return t;
}

std::string head2(double alignment) {
  return "70|000|TXT" + fields({1, 2, 0, 1, 0, 0, 0, 1, 0, 2.5, 0.5, alignment});
}

const std::string k70 = head2(1);
const std::string k71 = "71|000|TXT";

// clang-format off
const RecordCase<Txt> kRecords[] = {
    {"ThreeLinesHeightBeforeWidth", txt("AB"), 2, {k70, k71, "72|000|TXT  2AB"}},
    {"CharactersOnAContinuationLine", txt("AB"), 3,
     {"00|000|x 1 2 0,1 0 0,0 1 0,2.5,0.5,1,2", "01|000|x AB"}},
    {"EmptyText", txt(""), 2, {k70, k71, "72|000|TXT  0"}},
    {"EmptyText", txt(""), 3, {"00|000|x 1 2 0,1 0 0,0 1 0,2.5,0.5,1,0", "01|000|x "}},
    {"AlignmentWithFlag", txt("AB", 7, 1), 2, {head2(7.2), k71, "72|000|TXT  2AB"}},
    {"FlagIsLostInTokens", txt("AB", 7, 1), 3,
     {"00|000|x 1 2 0,1 0 0,0 1 0,2.5,0.5,7,2", "01|000|x AB"}},
    {"AnyFlagButZeroIsSet", txt("AB", 5, -3), 2, {head2(5.2), k71, "72|000|TXT  2AB"}},
    {"NegativeAlignmentWithFlag", txt("AB", -1, 1), 2, {head2(-0.8), k71, "72|000|TXT  2AB"}},
    {"NegativeAlignmentWithFlag", txt("AB", -1, 1), 3,
     {"00|000|x 1 2 0,1 0 0,0 1 0,2.5,0.5,-1,2", "01|000|x AB"}},
    {"LargestAlignment", txt("AB", 2147483647), 3,
     {"00|000|x 1 2 0,1 0 0,0 1 0,2.5,0.5,2147483647,2", "01|000|x AB"}},
    {"AnyBytes", txt("\t,\xC3\xA4 "), 2, {k70, k71, "72|000|TXT  5\t,\xC3\xA4 "}},
    {"AnyBytes", txt("\t,\xC3\xA4 "), 3,
     {"00|000|x 1 2 0,1 0 0,0 1 0,2.5,0.5,1,5", "01|000|x \t,\xC3\xA4 "}},
    {"NegativeAndZeroSizes", sized(-0.5, 0), 3,
     {"00|000|x 1 2 0,1 0 0,0 1 0,0,-0.5,1,2", "01|000|x AB"}},
    {"NotNumbersPass", sized(NAN, -kInf), 2,
     {"70|000|TXT" + fields({1, 2, 0, 1, 0, 0, 0, 1, 0}) + "     -inf      nan" + fields({1}), k71,
      "72|000|TXT  2AB"}},
    {"NotNumbersPass", sized(NAN, -kInf), 3,
     {"00|000|x 1 2 0,1 0 0,0 1 0,-inf,nan,1,2", "01|000|x AB"}},
    {"PointHasFourDecimalsVectorsAndValuesSix",
     Txt({1.23456789, 0, 0}, {1.23456789, 0, 0}, {0, 0, 9.87654321}, 1.23456789, 2.3456789, 1, 0, ""), 3,
     {"00|000|x 1.2346 0 0,1.234568 0 0,0 0 9.876543,2.345679,1.234568,1,0", "01|000|x "}},
    // Prefix, keyword and count are 27 characters, so that 229 fill the line.
    {"TextThatFillsTheLine", txt(std::string(229, 't')), 2,
     {k70, k71, "72|000|TXT229" + std::string(229, 't')}},
    {"LongerTextHasALineOfItsOwn", txt(std::string(230, 't')), 2,
     {k70, k71, "72|000|TXT230", "73|000|TXT" + std::string(230, 't')}},
    {"LongestText", txt(std::string(256, 't')), 2,
     {k70, k71, "72|000|TXT256", "73|000|TXT" + std::string(256, 't')}},
    {"TextThatFillsTheLine", txt(std::string(491, 't')), 3,
     {"00|000|x 1 2 0,1 0 0,0 1 0,2.5,0.5,1,491", "01|000|x " + std::string(491, 't')}},
    {"LongestText", txt(std::string(512, 't')), 3,
     {"00|000|x 1 2 0,1 0 0,0 1 0,2.5,0.5,1,512", "01|000|x ", "02|000|x " + std::string(512, 't')}},
};
// clang-format on

TEST(TxtTest, WritesItsRecord) {
  for (const auto& row : kRecords) EXPECT_EQ(linesOf(row.primitive, row.mode), row.lines) << row;
}

TEST(TxtTest, TextLongerThanALineThrowsAfterTheLinesBeforeIt) {
  Output out = assembler(2);
  EXPECT_EQ(writeFailure(txt(std::string(257, 't')), out), "Output: line too big for output");
  EXPECT_EQ(out.recs.size(), 2U);
  EXPECT_EQ(shown(out), (Lines{k70, k71, "72|000|TXT257"}));

  out = assembler(3);
  EXPECT_EQ(writeFailure(txt(std::string(513, 't')), out), "Output: line too big for output");
  EXPECT_EQ(shown(out), (Lines{"00|000|x 1 2 0,1 0 0,0 1 0,2.5,0.5,1,513", "01|000|x "}));
}

TEST(TxtTest, DefaultIsAllZeroAndEmpty) {
  const Txt t;
  EXPECT_EQ(t.position, GePoint(0, 0, 0));
  EXPECT_EQ(t.direction, GeVector(0, 0, 0));
  EXPECT_EQ(t.upDirection, GeVector(0, 0, 0));
  EXPECT_EQ(t.charWidth, 0.0);
  EXPECT_EQ(t.height, 0.0);
  EXPECT_EQ(t.alignment, 0);
  EXPECT_EQ(t.alignmentFlag, 0);
  EXPECT_EQ(t.text, "");
}

TEST(TxtTest, NullArrayThrows) {
  const double* none = nullptr;
  const double p[3] = {1, 2, 3};
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { Txt(none, p, p, 1, 1, 1, 0, ""); }), "GePoint");
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { Txt(p, none, p, 1, 1, 1, 0, ""); }), "GeVector");
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { Txt(p, p, none, 1, 1, 1, 0, ""); }), "GeVector");
}

TEST(TxtTest, MoveLeavesATextWhereItIs) {
  Txt t = txt("AB");
  t.move({1, 2, 3});
  EXPECT_EQ(t.position, GePoint(1, 2, 0));
  EXPECT_TRUE(t.equal(txt("AB"), 0));
}

TEST(TxtTest, RotTranslatesThePositionNotTheDirections) {
  Txt t = txt("AB");
  t.rot({kUnitY, -kUnitX, kUnitZ, {100, 0, 0}});
  EXPECT_EQ(t.position, GePoint(98, 1, 0));
  EXPECT_EQ(t.direction, GeVector(0, 1, 0));
  EXPECT_EQ(t.upDirection, GeVector(-1, 0, 0));
  EXPECT_EQ(t.charWidth, 0.5);
  EXPECT_EQ(t.height, 2.5);
}

TEST(TxtTest, ScaleMultipliesPositionAndSizesNotTheDirections) {
  Txt t = txt("AB");
  t.scale(2);
  EXPECT_EQ(t.position, GePoint(2, 4, 0));
  EXPECT_EQ(t.charWidth, 1.0);
  EXPECT_EQ(t.height, 5.0);
  EXPECT_EQ(t.direction, GeVector(1, 0, 0));
  EXPECT_EQ(t.upDirection, GeVector(0, 1, 0));
}

struct ExtentsCase {
  const char* name;
  std::int32_t alignment;
  GePoint min;
  friend std::ostream& operator<<(std::ostream& os, const ExtentsCase& r) { return os << r.name; }
};

// Four characters: 2 long along x, 2.5 high along y, about (1, 2, 0).
// clang-format off
constexpr ExtentsCase kExtents[] = {
    {"StartOfTheBaseLine",    1, {1, 2, 0}},
    {"MiddleOfTheBaseLine",   2, {0, 2, 0}},
    {"EndOfTheBaseLine",      3, {-1, 2, 0}},
    {"StartOfTheMiddleRow",   4, {1, 0.75, 0}},
    {"Middle",                5, {0, 0.75, 0}},
    {"EndOfTheMiddleRow",     6, {-1, 0.75, 0}},
    {"StartOfTheTopRow",      7, {1, -0.5, 0}},
    {"MiddleOfTheTopRow",     8, {0, -0.5, 0}},
    {"EndOfTheTopRow",        9, {-1, -0.5, 0}},
    {"ZeroCountsAsOne",       0, {1, 2, 0}},
    {"TenCountsAsOne",       10, {1, 2, 0}},
    {"NegativeCountsAsOne",  -5, {1, 2, 0}},
    {"SmallestCountsAsOne", std::numeric_limits<std::int32_t>::min(), {1, 2, 0}},
};
// clang-format on

TEST(TxtTest, ExtentsHangOnTheAlignment) {
  for (const ExtentsCase& row : kExtents) {
    for (const std::int32_t flag : {0, 1}) {
      const Txt t = txt("ABCD", row.alignment, flag);
      Extents box;
      t.addExtents(box);
      EXPECT_EQ(box.min, row.min) << row;
      EXPECT_EQ(box.max, row.min + GeVector(2, 2.5, 0)) << row;
      GePoint p;
      EXPECT_LE(distance(t.centroid(p), row.min + GeVector(1, 1.25, 0)), 1e-15) << row;
    }
  }
}

TEST(TxtTest, ExtentsOfASlantedText) {
  Txt t = txt("ABCD");
  t.direction = {1, 2, 0};     // A = 4 * 0.5 * direction = (2, 4, 0)
  t.upDirection = {-2, 0, 1};  // B = 2.5 * upDirection = (-5, 0, 2.5)
  Extents box;
  t.addExtents(box);
  EXPECT_EQ(box.min, GePoint(-4, 2, 0));
  EXPECT_EQ(box.max, GePoint(3, 6, 2.5));
}

TEST(TxtTest, ExtentsOfAnEmptyTextAreItsHeight) {
  Extents box;
  txt("").addExtents(box);
  EXPECT_EQ(box.min, GePoint(1, 2, 0));
  EXPECT_EQ(box.max, GePoint(1, 4.5, 0));
}

TEST(TxtTest, NeitherSolidNorMeasured) {
  EXPECT_FALSE(txt("AB").isSolid());
  EXPECT_EQ(txt("AB").volume(), 0.0);
  EXPECT_EQ(sized(-1, -1).checkSize(), 0);
  EXPECT_EQ(txt("AB").pieceCount(), 1);
}

struct EqualCase {
  const char* name;
  Txt other;
  double tolerance;
  bool equal;
  friend std::ostream& operator<<(std::ostream& os, const EqualCase& row) { return os << row.name; }
};

Txt with(GePoint Txt::*member, const GePoint& value) {
  Txt t = txt("AB");
  t.*member = value;
  return t;
}

Txt with(GeVector Txt::*member, const GeVector& value) {
  Txt t = txt("AB");
  t.*member = value;
  return t;
}

// clang-format off
const EqualCase kEquals[] = {
    {"Same",                           txt("AB"),                             0,   true},
    {"PositionAtTheTolerance",         with(&Txt::position, {1, 2.5, 0}),     0.5, true},
    {"PositionAboveTheTolerance",      with(&Txt::position, {1, 2.625, 0}),   0.5, false},
    {"DirectionAboveTheTolerance",     with(&Txt::direction, {1, 0, 0.625}),  0.5, false},
    {"UpDirectionAboveTheTolerance",   with(&Txt::upDirection, {0.625, 1, 0}), 0.5, false},
    {"CharWidthAtTheTolerance",        sized(1, 2.5),                         0.5, true},
    {"CharWidthAboveTheTolerance",     sized(1.125, 2.5),                     0.5, false},
    {"HeightAboveTheTolerance",        sized(0.5, 1.875),                     0.5, false},
    {"OtherAlignment",                 txt("AB", 2),                          9,   false},
    {"OtherFlag",                      txt("AB", 1, 1),                       9,   false},
    {"OtherText",                      txt("Ab"),                             9,   false},
};
// clang-format on

TEST(TxtTest, EqualComparesAllFields) {
  const Txt t = txt("AB");
  for (const EqualCase& row : kEquals) {
    EXPECT_EQ(t.equal(row.other, row.tolerance), row.equal) << row;
    EXPECT_EQ(row.other.equal(t, row.tolerance), row.equal) << row << ", the other way round";
  }
}

TEST(TxtTest, TwoSetFlagsAreEqualWhateverTheirNumber) {
  EXPECT_TRUE(txt("AB", 1, 1).equal(txt("AB", 1, -7), 0));
}

}  // namespace
