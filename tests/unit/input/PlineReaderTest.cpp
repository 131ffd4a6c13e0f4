// SPDX-License-Identifier: MIT
#include "input/ReaderTesting.h"
#include "vesk/Pline.h"

using namespace Vesk;

namespace {

using Points = std::vector<GePoint>;

TEST(PlineReaderTest, BarePointHas51Characters) {
  const std::string line = fixedLine("60", "PNT", fields("1 2 3"));
  ASSERT_EQ(line.size(), 51u);
  const auto pline = readFrom<Pline>(kFixedColumns, {line});
  EXPECT_EQ(pline.vertices, Points({{1, 2, 3}}));
  EXPECT_EQ(pline.pointSize, 0);
  EXPECT_EQ(pline.pointDirection, GePoint(0, 0, 0));
}

TEST(PlineReaderTest, SizeIsTheFourthNumber) {
  const std::string line = fixedLine("60", "PNT", fields("1 2 3 4.9"));
  ASSERT_EQ(line.size(), 60u);
  const auto pline = readFrom<Pline>(kFixedColumns, {line});
  EXPECT_EQ(pline.pointSize, 4);
  EXPECT_EQ(pline.pointDirection, GePoint(0, 0, 0));
}

TEST(PlineReaderTest, SizeMayTakeTheRestOf78Characters) {
  const std::string line = fixedLine("60", "PNT", fields("1 2 3") + std::string(26, ' ') + '4');
  ASSERT_EQ(line.size(), 78u);
  EXPECT_EQ(readFrom<Pline>(kFixedColumns, {line}).pointSize, 4);
}

TEST(PlineReaderTest, DirectionStandsBehindANullPoint) {
  for (const Recs& lines : {Recs{fixedLine("60", "PNT", fields("1 2 3 0 0 0 4 5 6"))},
                            Recs{fixedLine("60", "PNT", fields("1 2 3 0")),
                                 fixedLine("61", "PNT", fields("0 0 4 5 6"))}}) {
    const auto pline = readFrom<Pline>(kFixedColumns, lines);
    EXPECT_EQ(pline.vertices, Points({{1, 2, 3}}));
    EXPECT_EQ(pline.pointSize, 0);
    EXPECT_EQ(pline.pointDirection, GePoint(4, 5, 6));
  }
}

TEST(PlineReaderTest, SegmentHasTwoPoints) {
  const auto pline =
      readFrom<Pline>(kFixedColumns, {fixedLine("60", "SEG", fields("1 2 3 4 5 6"))});
  EXPECT_EQ(pline.vertices, Points({{1, 2, 3}, {4, 5, 6}}));
}

TEST(PlineReaderTest, TokensAreRelativeToTheFirstPoint) {
  const auto pline =
      readFrom<Pline>(kTokens, {tokenLine("00", "l ", "pt 1 2 3,pt 3 0 0.5,pt 1 1 1")});
  EXPECT_EQ(pline.vertices, Points({{1, 2, 3}, {4, 2, 3.5}, {2, 3, 4}}));
}

TEST(PlineReaderTest, NegativeZeroOfAnOffsetComesBack) {
  const std::string line = tokenLine("00", "l ", "pt 5 0 -0,pt -0 -0 -0");
  EXPECT_EQ(linesOf(readFrom<Pline>(kTokens, {line}), kTokens), Recs{line});
}

TEST(PlineReaderTest, ReadsArcs) {
  const auto pline = readFrom<Pline>(
      kTokens, {tokenLine("00", "l ", "pt 1 2 3,pt 3 0 0.5,ar 12.5 0 1 2,ar -1 3 4 -5")});
  EXPECT_EQ(pline.vertices.size(), 2u);
  EXPECT_EQ(pline.arcs, std::vector<ArcEntry>({{12.5, {0, 1, 2}}, {-1, {3, 4, -5}}}));
}

TEST(PlineReaderTest, ArcsMayStandAlone) {
  const auto pline = readFrom<Pline>(kTokens, {tokenLine("00", "l ", ",ar 1 2 3 4")});
  EXPECT_TRUE(pline.vertices.empty());
  EXPECT_EQ(pline.arcs, std::vector<ArcEntry>({{1, {2, 3, 4}}}));
}

TEST(PlineReaderTest, AttributesAreSkipped) {
  for (const char* text : {"cs a,sp b,pt 1 2 3,ft 5,tk 6", "ft x,pt 1 2 3,tk ", "pt 1 2 3,tk 7 "}) {
    const auto pline = readFrom<Pline>(kTokens, {tokenLine("00", "l ", text)});
    EXPECT_EQ(pline.vertices, Points({{1, 2, 3}})) << text;
  }
}

TEST(PlineReaderTest, AttributeMayBeBroken) {
  Input in({tokenLine("00", "l ", "pt 1 2 3,ft "), tokenLine("01", "l ", "5,"),
            tokenLine("02", "l ", "tk -6")},
           kTokens);
  Pline pline;
  pline.read(in);
  EXPECT_EQ(in.ft, 5);
  EXPECT_EQ(in.tk, -6);
}

TEST(PlineReaderTest, ReadingReplacesEverything) {
  Pline pline{{9, 9, 9}, {8, 8, 8}};
  pline.addArc(1, 2, 3, 4);
  pline.pointSize = 5;
  pline.pointDirection = GePoint(1, 1, 1);
  Input in({tokenLine("00", "l ", "pt 1 2 3")}, kTokens);
  pline.read(in);
  EXPECT_EQ(pline.vertices, Points({{1, 2, 3}}));
  EXPECT_TRUE(pline.arcs.empty());
  EXPECT_EQ(pline.pointSize, 0);
  EXPECT_EQ(pline.pointDirection, GePoint(0, 0, 0));
}

TEST(PlineReaderTest, Failures) {
  expectFailures<Pline>({
      {"AnotherStyle", kNoStyle, {"60"}, "1: Pline: wrong style, primitive polyline"},
      {"AnotherKeyword",
       kFixedColumns,
       {fixedLine("60", "CYL", "")},
       "1: Pline: wrong style, primitive polyline"},
      {"PointWithoutLine60",
       kFixedColumns,
       {fixedLine("61", "PNT", fields("1 2 3"))},
       "1: line \"60\" not found, primitive point"},
      {"SegmentWithoutLine60",
       kFixedColumns,
       {fixedLine("61", "SEG", fields("1 2 3 4 5 6"))},
       "1: line \"60\" not found, primitive segment"},
      {"SizeOutOfRange",
       kFixedColumns,
       {fixedLine("60", "PNT", fields("1 2 3 9.9e9"))},
       "1: Input: number out of range, primitive point"},
      {"SegmentCut",
       kFixedColumns,
       {fixedLine("60", "SEG", fields("1 2 3 4 5"))},
       "1: Input: can't get double from expression \"\", primitive segment"},
      {"DigitForAnItem",
       kTokens,
       {tokenLine("00", "l ", "1 2 3")},
       "1: Pline: wrong style, primitive polyline"},
      {"UnknownItem",
       kTokens,
       {tokenLine("00", "l ", "pt 1 2 3,qq 1 2 3")},
       "1: Pline: unknown identifier \"qq\", primitive polyline"},
      {"PointCut",
       kTokens,
       {tokenLine("00", "l ", "pt")},
       "1: Input: can't get double, primitive polyline"},
      {"ArcCut",
       kTokens,
       {tokenLine("00", "l ", "pt 1 2 3,ar 1 2 3")},
       "1: Input: can't get string value, primitive polyline"},
      {"ArcNumberOutOfRange",
       kTokens,
       {tokenLine("00", "l ", "pt 1 2 3,ar 1 2 3 1e10")},
       "1: Input: number out of range, primitive polyline"},
  });
}

}  // namespace
