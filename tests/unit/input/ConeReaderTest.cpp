// SPDX-License-Identifier: MIT
#include "input/ReaderTesting.h"
#include "vesk/Cone.h"

using namespace Vesk;

namespace {

TEST(ConeReaderTest, FixedColumnsStartAtLine60) {
  const auto cone = readFrom<Cone>(
      kFixedColumns, {"59 anything", fixedLine("60", "CON", fields("1 2 3 1 2 13 4 5"))});
  EXPECT_EQ(cone.origin, GePoint(1, 2, 3));
  EXPECT_EQ(cone.axis, GeVector(0, 0, 10));
  EXPECT_EQ(cone.diameter1, 4.0);
  EXPECT_EQ(cone.diameter2, 5.0);
}

TEST(ConeReaderTest, ContinuationLinesHaveTheirDataBehindTheKeyword) {
  const auto cone = readFrom<Cone>(kFixedColumns, {fixedLine("60", "CON", fields("1 2 3 1 2")),
                                                   fixedLine("61", "CON", fields("13 4 5"))});
  EXPECT_EQ(cone.axis, GeVector(0, 0, 10));
  EXPECT_EQ(cone.diameter2, 5.0);
}

TEST(ConeReaderTest, TokensHoldTheAxis) {
  const auto cone = readFrom<Cone>(kTokens, {tokenLine("00", "n ", "1 2 3,0 0 10,4,5,tk 6")});
  EXPECT_EQ(cone.origin, GePoint(1, 2, 3));
  EXPECT_EQ(cone.axis, GeVector(0, 0, 10));
  EXPECT_EQ(cone.diameter1, 4.0);
  EXPECT_EQ(cone.diameter2, 5.0);
}

TEST(ConeReaderTest, Failures) {
  expectFailures<Cone>({
      {"AnotherStyle", kNoStyle, {"60"}, "1: Cone: wrong style, primitive cone"},
      {"NoLine60",
       kFixedColumns,
       {fixedLine("61", "CON", fields("1 2 3 4 5 6 7 8"))},
       "1: line \"60\" not found, primitive cone"},
      {"NoNumber",
       kFixedColumns,
       {fixedLine("60", "CON", fields("1 2 3 4 5 6 7 1.2.3"))},
       "1: Input: can't get double from expression \"    1.2.3\", primitive cone"},
      {"ShortLine",
       kFixedColumns,
       {"60"},
       "1: Input: can't get double from expression \"\", primitive cone"},
      {"NoSecondDiameter",
       kTokens,
       {tokenLine("00", "n ", "1 2 3,0 0 10,4")},
       "1: Input: can't get string value, primitive cone"},
  });
}

}  // namespace
