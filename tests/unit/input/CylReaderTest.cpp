// SPDX-License-Identifier: MIT
#include "input/ReaderTesting.h"
#include "vesk/Cyl.h"

using namespace Vesk;

namespace {

TEST(CylReaderTest, FixedColumnsHoldTheEndPoint) {
  const auto cyl =
      readFrom<Cyl>(kFixedColumns, {fixedLine("60", "CYL", fields("1 2 3 1 2 13 4.5"))});
  EXPECT_EQ(cyl.origin, GePoint(1, 2, 3));
  EXPECT_EQ(cyl.axis, GeVector(0, 0, 10));
  EXPECT_EQ(cyl.diameter, 4.5);
}

TEST(CylReaderTest, FixedColumnsNeedNoLineNumber) {
  const auto cyl = readFrom<Cyl>(kFixedColumns, {fixedLine("99", "CYL", fields("0 0 0 0 0 1 2"))});
  EXPECT_EQ(cyl.diameter, 2.0);
}

TEST(CylReaderTest, TokensHoldTheAxis) {
  const auto cyl = readFrom<Cyl>(kTokens, {tokenLine("00", "c ", "1 2 3,0 0 1000,200")});
  EXPECT_EQ(cyl.origin, GePoint(1, 2, 3));
  EXPECT_EQ(cyl.axis, GeVector(0, 0, 1000));
  EXPECT_EQ(cyl.diameter, 200.0);
}

TEST(CylReaderTest, AttributesStandAside) {
  const auto cyl =
      readFrom<Cyl>(kTokens, {tokenLine("00", "c ", "cs A,sp b c,1 2 3,0 0 1,2,ft 5,tk 6")});
  EXPECT_EQ(cyl.origin, GePoint(1, 2, 3));
  EXPECT_EQ(cyl.diameter, 2.0);
}

TEST(CylReaderTest, LinesMayBreakBetweenAllTokens) {
  const auto tokens =
      readFrom<Cyl>(kTokens, {tokenLine("00", "c ", "1 2"), tokenLine("01", "c ", " "),
                              tokenLine("02", "c ", "-3,"), tokenLine("03", "c ", "4"),
                              tokenLine("04", "c ", " -5 6,"), tokenLine("05", "c ", "7")});
  EXPECT_EQ(tokens.origin, GePoint(1, 2, -3));
  EXPECT_EQ(tokens.axis, GeVector(4, -5, 6));
  EXPECT_EQ(tokens.diameter, 7.0);
  const auto columns = readFrom<Cyl>(
      kFixedColumns, {fixedLine("60", "CYL", fields("1 2 3 4")),
                      fixedLine("61", "CYL", fields("5 6")), fixedLine("62", "CYL", fields("7"))});
  EXPECT_EQ(columns.axis, GeVector(3, 3, 3));
  EXPECT_EQ(columns.diameter, 7.0);
}

TEST(CylReaderTest, NegativeZeroOfAnEndPointComesBack) {
  const std::string line =
      fixedLine("60", "CYL", fields("5.000 0.000 -0.000 -0.000 -0.000 -0.000 1.000"));
  const auto cyl = readFrom<Cyl>(kFixedColumns, {line});
  EXPECT_EQ(linesOf(cyl, kFixedColumns), Recs{line});
}

TEST(CylReaderTest, EndPointAtTheBoundOfItsFormComesBack) {
  const std::string line =
      fixedLine("60", "CYL", fields("1024.339 -1024.661 4e12 99999.999 99999.999 0.001 1.000"));
  const auto cyl = readFrom<Cyl>(kFixedColumns, {line});
  EXPECT_EQ(linesOf(cyl, kFixedColumns).at(0).substr(51, 18), line.substr(51, 18));
  EXPECT_EQ(cyl.axis.z, 0.001 - 4e12);
}

TEST(CylReaderTest, Failures) {
  expectFailures<Cyl>({
      {"AnotherStyle", kNoStyle, {"60"}, "1: cylinder: wrong style, primitive cylinder"},
      {"NoNumber",
       kFixedColumns,
       {fixedLine("60", "CYL", fields("1 2 3 x"))},
       "1: Input: can't get double from expression \"        x\", primitive cylinder"},
      {"FieldMissing",
       kFixedColumns,
       {fixedLine("60", "CYL", fields("1 2 3 4 5 6"))},
       "1: Input: can't get double from expression \"\", primitive cylinder"},
      {"FieldCut",
       kFixedColumns,
       {fixedLine("60", "CYL", fields("1 2 3 4 5 6") + "   2.5")},
       "1: Input: can't get string value of specified length, primitive cylinder"},
      {"NoLine",
       kFixedColumns,
       {},
       "1: Input: can't get double from expression \"\", primitive cylinder"},
      {"NoToken",
       kTokens,
       {tokenLine("00", "c ", "1 2 3,0 0 1,")},
       "1: Input: can't get string value, primitive cylinder"},
      {"NoPoint",
       kTokens,
       {tokenLine("00", "c ", "1 2 3,")},
       "1: Input: can't get double, primitive cylinder"},
      {"DecimalComma",
       kTokens,
       {tokenLine("00", "c ", "1,5 2 3,0 0 1,2")},
       "1: Input: can't get double from expression \"1,5\", primitive cylinder"},
  });
}

}  // namespace
