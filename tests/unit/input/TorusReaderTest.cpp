// SPDX-License-Identifier: MIT
#include "input/ReaderTesting.h"
#include "vesk/Torus.h"

using namespace Vesk;

namespace {

TEST(TorusReaderTest, FixedColumnsHoldTheBendRadiusBeforeTheDiameter) {
  const auto torus = readFrom<Torus>(
      kFixedColumns, {fixedLine("60", "TOR", fields("1 0 0 101 0 0 1 100 0 90 20"))});
  EXPECT_EQ(torus.centre, GePoint(1, 0, 0));
  EXPECT_EQ(torus.startVector, GeVector(100, 0, 0));
  EXPECT_EQ(torus.endVector, GeVector(0, 100, 0));
  EXPECT_EQ(torus.bendRadius, 90.0);
  EXPECT_EQ(torus.diameter, 20.0);
}

TEST(TorusReaderTest, TokensDoNotKeepTheBendRadius) {
  Torus torus;
  torus.bendRadius = 90.0;
  Input in({tokenLine("00", "t ", "1 0 0,100 0 0,0 100 0,20,ft 1")}, kTokens);
  EXPECT_EQ(torus.read(in), 0);
  EXPECT_EQ(torus.centre, GePoint(1, 0, 0));
  EXPECT_EQ(torus.startVector, GeVector(100, 0, 0));
  EXPECT_EQ(torus.endVector, GeVector(0, 100, 0));
  EXPECT_EQ(torus.bendRadius, -1.0);
  EXPECT_EQ(torus.diameter, 20.0);
}

TEST(TorusReaderTest, Failures) {
  expectFailures<Torus>({
      {"AnotherStyleHasNoSuffix", kNoStyle, {"60"}, "1: torus: wrong style"},
      {"NoLine60",
       kFixedColumns,
       {fixedLine("61", "TOR", "")},
       "1: line \"60\" not found, primitive torus"},
      {"NoDiameter",
       kFixedColumns,
       {fixedLine("60", "TOR", fields("1 0 0 101 0 0 1 100 0 90"))},
       "1: Input: can't get double from expression \"\", primitive torus"},
      {"NoVector",
       kTokens,
       {tokenLine("00", "t ", "1 0 0,100 0 0")},
       "1: Input: can't get double, primitive torus"},
  });
}

}  // namespace
