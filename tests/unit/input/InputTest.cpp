// SPDX-License-Identifier: MIT
#include "input/Input.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "input/ReadFailure.h"
#include "input/ReaderFrame.h"
#include "input/ReaderTesting.h"
#include "vesk/TovExWhere.h"

using namespace Vesk;

namespace {

// A scanner at the beginning of the lines.
Input scan(Recs lines, std::int32_t mode, std::uint32_t column = 0) {
  Input in(std::move(lines), mode);
  in.rewind();
  in.startAt(column);
  return in;
}

std::string token(Input& in) {
  std::string text;
  in.getToken(text);
  return text;
}

std::string fixed(Input& in, std::size_t length) {
  std::string text = "old";
  in.getFixedString(text, length);
  return text;
}

std::string peek(Input& in) {
  std::string text = "old";
  in.peekToken(text);
  return text;
}

TEST(InputTest, RewindStandsAtTheFirstCharacter) {
  Input in({"abc", "de"}, kFixedColumns);
  in.hold = "x";
  in.lineIndex = 1;
  in.rewind();
  EXPECT_EQ(in.line, "abc");
  EXPECT_EQ(in.lineLength, 3u);
  EXPECT_EQ(in.cursor, 0u);
  EXPECT_EQ(in.lineIndex, 0u);
  EXPECT_EQ(in.hold, "");
  EXPECT_EQ(in.delimiters, "");
}

TEST(InputTest, WithoutLinesNothingIsLeft) {
  Input in = scan({}, kTokens, 21);
  EXPECT_TRUE(in.atEnd());
  EXPECT_EQ(peek(in), "");
  EXPECT_FALSE(in.findLine("60", 0));
}

TEST(InputTest, LinesOfAnyLengthAreKeptWhole) {
  const std::string tail(5000, '7');
  Input in = scan({"x " + tail}, kFixedColumns, 2);
  EXPECT_EQ(in.lineLength, 5002u);
  EXPECT_EQ(token(in), tail);
}

TEST(InputTest, CursorIsSetWithinTheLineOnly) {
  Input in = scan({"abc"}, kFixedColumns);
  in.setCursor(3);
  EXPECT_EQ(in.cursor, 3u);
  in.setCursor(1);
  in.setCursor(4);
  EXPECT_EQ(in.cursor, 1u);
}

TEST(InputTest, FindsLinesByNumberAndOccurrence) {
  Input in = scan({"60 a", "61 b", "60 c"}, kFixedColumns, 3);
  EXPECT_TRUE(in.findLine("60", 1));
  EXPECT_EQ(in.lineIndex, 2u);
  EXPECT_EQ(token(in), "c");
  EXPECT_TRUE(in.findLine("61", 0));
  EXPECT_EQ(in.cursor, 3u);
  EXPECT_FALSE(in.findLine("60", 2));
  EXPECT_FALSE(in.findLine("62", 0));
  EXPECT_EQ(in.lineIndex, 1u);
  EXPECT_EQ(in.countLines("60"), 2);
  EXPECT_EQ(in.countLines("62"), 0);
}

TEST(InputTest, TokenStyleHasNoLineNumbersToFind) {
  Input in = scan({"60 a"}, kTokens);
  in.hold = "x";
  EXPECT_FALSE(in.findLine("60", 0));
  EXPECT_EQ(in.hold, "");
  EXPECT_EQ(in.countLines("60"), 0);
}

TEST(InputTest, NextLineGoesToTheStartColumn) {
  Input in = scan({"..a", "..b"}, kFixedColumns, 2);
  EXPECT_TRUE(in.nextLine());
  EXPECT_EQ(in.cursor, 2u);
  EXPECT_EQ(token(in), "b");
  EXPECT_FALSE(in.nextLine());
  EXPECT_EQ(in.cursor, in.lineLength);
}

TEST(InputTest, HoldKeepsTheLine) {
  Input in = scan({"a", "b"}, kFixedColumns);
  in.hold = "x";
  EXPECT_FALSE(in.nextLine());
  EXPECT_EQ(in.lineIndex, 1u);
  EXPECT_EQ(in.line, "a");
  EXPECT_EQ(in.cursor, 0u);
}

TEST(InputTest, LinesWithNothingAreNotTheEnd) {
  Input in = scan({"..", "..", "", "..a"}, kFixedColumns, 2);
  EXPECT_TRUE(in.atLineEnd());
  EXPECT_FALSE(in.atEnd());
  EXPECT_EQ(token(in), "a");
  EXPECT_TRUE(in.atEnd());
}

TEST(InputTest, AHundredThousandBlankLinesArePassed) {
  for (const std::int32_t mode : {kFixedColumns, kTokens}) {
    Recs lines(100000, "..   ");
    lines.push_back("..7");
    Input in = scan(std::move(lines), mode, 2);
    EXPECT_EQ(in.getDouble(), 7.0);
    EXPECT_TRUE(in.atEnd());
  }
}

TEST(InputTest, SkipsCharactersOfTheSet) {
  Input in = scan({"..  ,a", "..  b"}, kFixedColumns, 2);
  in.skipChars(" ", false);
  EXPECT_EQ(in.cursor, 4u);
  in.skipChars(" ,", false);
  EXPECT_EQ(in.cursor, 5u);
  in.skipChars(" ,a", false);
  EXPECT_TRUE(in.atLineEnd());
  in.skipChars(" ", true);
  EXPECT_EQ(in.line[in.cursor], 'b');
}

TEST(InputTest, SkipsAtMostOneCharacter) {
  Input in = scan({",,", "b"}, kFixedColumns);
  in.skipChar(" ", true);
  EXPECT_EQ(in.cursor, 0u);
  in.skipChar(",", true);
  EXPECT_EQ(in.cursor, 1u);
  in.skipChar(",", false);
  EXPECT_TRUE(in.atLineEnd());
  in.skipChar(",", true);
  EXPECT_EQ(in.lineIndex, 0u);
  in.setCursor(1);
  in.skipChar(",", true);
  EXPECT_EQ(in.lineIndex, 1u);
}

TEST(InputTest, TokensEndAtDelimitersAndLineEnds) {
  Input in = scan({"ab,cd", "ef"}, kFixedColumns);
  in.setDelimiters(",");
  EXPECT_EQ(peek(in), "ab");
  std::string text;
  in.peekTokenN(text, 1);
  EXPECT_EQ(text, "a");
  EXPECT_EQ(in.cursor, 0u);
  EXPECT_EQ(token(in), "ab");
  EXPECT_EQ(token(in), "");
  in.skipChar(",", false);
  EXPECT_EQ(token(in), "cd");
  EXPECT_EQ(token(in), "ef");
  EXPECT_EQ(peek(in), "");
  EXPECT_EQ(failureOf([&] { token(in); }), "1: Input: can't get string value");
}

TEST(InputTest, FixedStringIsTakenFromOneLine) {
  Input in = scan({"abcde", "fg"}, kFixedColumns);
  EXPECT_EQ(fixed(in, 3), "abc");
  EXPECT_EQ(failureOf([&] { fixed(in, 4); }),
            "1: Input: can't get string value of specified length");
  EXPECT_EQ(in.cursor, 3u);
  EXPECT_EQ(fixed(in, 3), "de");  // one character less than asked for is taken
  EXPECT_EQ(fixed(in, 2), "fg");
  EXPECT_EQ(fixed(in, 2), "");
}

TEST(InputTest, NumbersAreTokens) {
  Input in = scan({"12.5", "12.5   ", " 12.5"}, kFixedColumns);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(in.getDouble(), 12.5);
  EXPECT_TRUE(in.atEnd());
}

TEST(InputTest, WhatIsNoNumberIsQuoted) {
  for (const std::string text : {"12.5x", "abc", "12;5"}) {
    Input in = scan({text}, kFixedColumns);
    EXPECT_EQ(failureOf([&] { in.getDouble(); }),
              "1: Input: can't get double from expression \"" + text + "\"");
    EXPECT_TRUE(in.atEnd());
  }
}

TEST(InputTest, TheQuotedTokenOutlivesItsLine) {
  Input in = scan({"abc,", "x,"}, kFixedColumns);
  in.setDelimiters(",");
  EXPECT_EQ(failureOf([&] { in.getDouble(); }),
            "1: Input: can't get double from expression \"abc\"");
  EXPECT_EQ(in.lineIndex, 1u);
}

TEST(InputTest, NumberAtTheEndOfInputIsAnError) {
  Input in = scan({" "}, kFixedColumns);
  EXPECT_EQ(failureOf([&] { in.getDouble(); }), "1: Input: can't get string value");
}

TEST(InputTest, FixedNumberTakesItsWidth) {
  Input in = scan({"    1.000   -2.500"}, kFixedColumns);
  EXPECT_EQ(in.getFixedDouble(9), 1.0);
  EXPECT_EQ(in.getFixedDouble(9), -2.5);
  EXPECT_EQ(failureOf([&] { in.getFixedDouble(9); }),
            "1: Input: can't get double from expression \"\"");
}

TEST(InputTest, FixedNumberRefusesTwoNumbers) {
  Input in = scan({"  1 2    "}, kFixedColumns);
  EXPECT_EQ(failureOf([&] { in.getFixedDouble(9); }),
            "1: Input: can't get double from expression \"  1 2    \"");
}

TEST(InputTest, FixedNumbersGoOnOnTheNextLine) {
  Input in = scan({".." + fields("1 2"), ".." + fields("3")}, kFixedColumns, 2);
  double values[3] = {};
  in.getFixedDoubles(3, values, 9);
  EXPECT_EQ(values[0], 1.0);
  EXPECT_EQ(values[1], 2.0);
  EXPECT_EQ(values[2], 3.0);
}

TEST(InputTest, PointEndsAtItsComma) {
  Input in = scan({"1 2 3,4 5 6"}, kFixedColumns);
  in.setDelimiters(" ,");
  GePoint p;
  in.getPoint(p);
  EXPECT_EQ(p, GePoint(1, 2, 3));
  EXPECT_EQ(in.delimiters, ",");
  in.getPoint(p);
  EXPECT_EQ(p, GePoint(4, 5, 6));
  EXPECT_EQ(failureOf([&] { in.getPoint(p); }), "1: Input: can't get double");
}

TEST(InputTest, PointHasManyForms) {
  const struct {
    const char* text;
    std::uint32_t lastColumn;  // of the third number
  } kRows[] = {
      {"1 2 3,4", 4},          {"1 2 3, 4", 4},      {"1  2 3,4", 5},
      {" 1 2 3 ,4", 5},        {"+1 2 3,4", 5},      {"1 2 3.,4", 4},
      {"1.0 2.00 3.000,4", 9}, {"1e0 2 3,4", 6},     {"1 2 0.000000003e9,4", 4},
      {"1 2 3,,4", 4},         {"1\t 2\t 3\t,4", 6},
  };
  for (const auto& row : kRows) {
    Input in = scan({row.text}, kTokens);
    in.setDelimiters(".");
    GePoint p;
    in.getPoint(p);
    EXPECT_EQ(p, GePoint(1, 2, 3)) << row.text;
    EXPECT_EQ(in.tokenColumn, row.lastColumn) << row.text;
    EXPECT_EQ(in.delimiters, ",") << row.text;
    EXPECT_EQ(in.getDouble(), 4.0) << row.text;
  }
}

TEST(InputTest, PointNamesTheTokenThatIsNoNumber) {
  const struct {
    const char* text;
    const char* token;
    std::uint32_t column;
  } kRows[] = {
      {"x 2 3", "x", 0},     {"1 y 3", "y", 2},     {"1 2 z", "z", 4},
      {"1 2 3 4", "3 4", 4}, {"1,2,3", "1,2,3", 0}, {"1 2 3;4,5", "3;4", 4},
  };
  for (const auto& row : kRows) {
    Input in = scan({row.text}, kTokens);
    GePoint p;
    EXPECT_EQ(failureOf([&] { in.getPoint(p); }),
              "1: Input: can't get double from expression \"" + std::string(row.token) + '"');
    EXPECT_EQ(in.tokenColumn, row.column) << row.text;
  }
}

TEST(InputTest, PointMayBeBrokenBetweenCoordinates) {
  for (const Recs& lines :
       {Recs{"..1", "..2", "..3"}, Recs{"..1 ", ".. 2", ".. 3,"}, Recs{"..1 2", ".. ", "..3"}}) {
    Input in = scan(lines, kTokens, 2);
    GePoint p;
    in.getPoint(p);
    EXPECT_EQ(p, GePoint(1, 2, 3));
  }
}

TEST(InputTest, TellsDigitsFromOthersAcrossLines) {
  Input in = scan({"..  ", "..  5-"}, kFixedColumns, 2);
  EXPECT_TRUE(in.atDigit());
  EXPECT_EQ(in.lineIndex, 1u);
  EXPECT_FALSE(in.atNonDigit());
  in.setCursor(5);
  EXPECT_TRUE(in.atNonDigit());
  EXPECT_FALSE(in.atDigit());
  in.setCursor(6);
  EXPECT_FALSE(in.atDigit());
  EXPECT_FALSE(in.atNonDigit());
}

TEST(InputTest, AttributesArePassedOver) {
  Input in = scan({"...cs 1,sp 2,pt 1 2 3"}, kTokens, 3);
  EXPECT_EQ(in.cursor, 13u);
  EXPECT_EQ(peek(in), "pt 1 2 3");
  Input further = scan({"...1", "...cs a,  sp b c,2"}, kTokens, 3);
  EXPECT_EQ(further.getDouble(), 1.0);
  EXPECT_EQ(further.getDouble(), 2.0);
  Input alone = scan({"...cs a", "...sp b,", "...7"}, kTokens, 3);
  EXPECT_EQ(alone.getDouble(), 7.0);
}

TEST(InputTest, AttributeSkipLeavesTheDelimiters) {
  Input in = scan({"...1 2", "...cs a,3 4"}, kTokens, 3);
  in.setDelimiters(" ");
  for (const double value : {1.0, 2.0, 3.0, 4.0}) EXPECT_EQ(in.getDouble(), value);
  EXPECT_EQ(in.delimiters, " ");
}

TEST(InputTest, FixedColumnsHaveNoAttributes) {
  Input in = scan({"...cs 1,"}, kFixedColumns, 3);
  EXPECT_EQ(in.cursor, 3u);
}

TEST(InputTest, PointsAreReused) {
  Input in;
  in.pushPoint({1, 1, 1});
  in.pushPoint({2, 2, 2});
  in.pointCount = 0;
  in.pushPoint({3, 3, 3});
  EXPECT_EQ(in.pointCount, 1u);
  ASSERT_EQ(in.points.size(), 2u);
  EXPECT_EQ(in.points[0], GePoint(3, 3, 3));
}

TEST(InputTest, IntegersDropTheirDecimals) {
  Input in = scan({"2.9 -2.9 2147483647.5 -2147483648.5"}, kFixedColumns);
  in.setDelimiters(" ");
  for (const std::int32_t value : {2, -2, 2147483647, -2147483647 - 1}) {
    EXPECT_EQ(in.getInt(), value);
  }
}

TEST(InputTest, IntegersOutOfRangeAreRefused) {
  for (const char* text : {"2147483648", "-2147483649", "1e300", "inf", "-inf", "nan"}) {
    Input in = scan({text}, kFixedColumns);
    EXPECT_EQ(failureOf([&] { in.getInt(); }), "1: Input: number out of range") << text;
  }
}

TEST(InputTest, NothingIsLeftOfATokenThatIsMissing) {
  Input in = scan({"a"}, kFixedColumns);
  std::string text;
  in.getToken(text);
  EXPECT_EQ(text, "a");
  EXPECT_EQ(failureOf([&] { in.getToken(text); }), "1: Input: can't get string value");
  EXPECT_EQ(text, "");
}

TEST(InputTest, RestAndVerbatimLinesComeAsTheyAre) {
  Input in = scan({"..1,", "..  cs x,y"}, kTokens, 2);
  in.setDelimiters(",");
  std::string text;
  in.getToken(text);
  ASSERT_TRUE(in.nextLineVerbatim());
  EXPECT_EQ(in.getRest(), "  cs x,y");
  EXPECT_EQ(in.getRest(), "");
  EXPECT_FALSE(in.nextLineVerbatim());
}

// What the kernel refuses in the steps of a reader becomes a failure of the primitive.
TEST(ReaderFrame, KernelsRefusalsAreFailuresOfTheReader) {
  const Input in({"P-1     01001    00c 0 0 0"}, kTokens);
  try {
    readRecord(in, "cylinder", [] { throw TovExWhere("axis"); });
    FAIL() << "nothing was thrown";
  } catch (const ReadFailure& failure) {
    EXPECT_EQ(failure.cause, ReadCause::kKernel);
    EXPECT_EQ(failure.token, "General error");
    EXPECT_EQ(failure.primitive, "cylinder");
  }
}

}  // namespace
