// SPDX-License-Identifier: MIT
#include "input/ReaderTesting.h"
#include "vesk/Relb.h"

using namespace Vesk;

namespace {

// p0 = (0, 0, 0), p1 = (0, 0, 10), p2 = (50, 0, 0), p3 = (0, 50, 0), inner
// radius 30: depth 20, vectors of length 40, centre (0, 0, 5), width 10.
void expectElbow(const Relb& relb) {
  EXPECT_EQ(relb.centre, GePoint(0, 0, 5));
  EXPECT_EQ(relb.startVector, GeVector(40, 0, 0));
  EXPECT_EQ(relb.endVector, GeVector(0, 40, 0));
  EXPECT_EQ(relb.depth, 20.0);
  EXPECT_EQ(relb.width, 10.0);
}

TEST(RelbReaderTest, FixedColumnsHoldPoints) {
  const Recs lines{
      fixedLine(
          "60", "ELB",
          fields("0.000 0.000 10.000 0.000 0.000 0.000 50.000 0.000 10.000 0.000 50.000 10.000")),
      fixedLine("61", "ELB", fields("30.000"))};
  const auto relb = readFrom<Relb>(kFixedColumns, lines);
  expectElbow(relb);
  EXPECT_FALSE(relb.flipped);
  EXPECT_EQ(linesOf(relb, kFixedColumns), lines);
}

TEST(RelbReaderTest, FirstPointBelowTheBendPlaneMeansFlipped) {
  const Recs lines{
      fixedLine(
          "60", "ELB",
          fields("0.000 0.000 0.000 0.000 0.000 10.000 50.000 0.000 0.000 0.000 50.000 0.000")),
      fixedLine("61", "ELB", fields("30.000"))};
  const auto relb = readFrom<Relb>(kFixedColumns, lines);
  expectElbow(relb);
  EXPECT_TRUE(relb.flipped);
  EXPECT_EQ(linesOf(relb, kFixedColumns), lines);
}

TEST(RelbReaderTest, TokensHoldTheDepthBeforeTheWidth) {
  Relb relb;
  relb.flipped = true;
  Input in({tokenLine("00", "e ", "0 0 5,40 0 0,0 40 0,20,10")}, kTokens);
  EXPECT_EQ(relb.read(in), 0);
  expectElbow(relb);
  EXPECT_FALSE(relb.flipped);
}

TEST(RelbReaderTest, Failures) {
  const std::string points = fixedLine("60", "ELB", fields("0 0 10 0 0 0 50 0 10 0 50 10"));
  expectFailures<Relb>({
      {"AnotherStyle", kNoStyle, {"60"}, "1: relb: wrong style, primitive relbow"},
      {"NoLine60",
       kFixedColumns,
       {fixedLine("61", "ELB", fields("30"))},
       "1: line \"60\" not found, primitive relbow"},
      {"NoLine61", kFixedColumns, {points}, "1: line \"61\" not found, primitive relbow"},
      {"NoRadius",
       kFixedColumns,
       {points, fixedLine("61", "ELB", "")},
       "1: Input: can't get double from expression \"\", primitive relbow"},
      {"OuterPointOnTheAxis",
       kFixedColumns,
       {fixedLine("60", "ELB", fields("0 0 10 0 0 0 0 0 10 0 50 10")),
        fixedLine("61", "ELB", fields("30"))},
       "1: Direction should not be Null or Infinity, primitive relbow"},
      {"NoWidth",
       kTokens,
       {tokenLine("00", "e ", "0 0 5,40 0 0,0 40 0,20")},
       "1: Input: can't get string value, primitive relbow"},
  });
}

}  // namespace
