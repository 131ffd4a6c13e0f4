// SPDX-License-Identifier: MIT
#include "input/ReaderTesting.h"
#include "vesk/Txt.h"

using namespace Vesk;

namespace {

const std::string kNumbers = fields("1 2 3 1 0 0 0 1 0 2.5 0.5 5.2");
const std::string kLine70 = fixedLine("70", "TXT", kNumbers);
const std::string kLine71 = fixedLine("71", "TXT", "");

std::string tokens(const std::string& length) {
  return tokenLine("00", "x ", "1 2 3,1 0 0,0 1 0,2.5,0.5,5," + length);
}

TEST(TxtReaderTest, FixedColumnsHoldTheHeightBeforeTheWidth) {
  const auto txt =
      readFrom<Txt>(kFixedColumns, {kLine70, kLine71, fixedLine("72", "TXT", "  2AB")});
  EXPECT_EQ(txt.position, GePoint(1, 2, 3));
  EXPECT_EQ(txt.direction, GeVector(1, 0, 0));
  EXPECT_EQ(txt.upDirection, GeVector(0, 1, 0));
  EXPECT_EQ(txt.height, 2.5);
  EXPECT_EQ(txt.charWidth, 0.5);
  EXPECT_EQ(txt.alignment, 5);
  EXPECT_EQ(txt.alignmentFlag, 1);
  EXPECT_EQ(txt.text, "AB");
}

TEST(TxtReaderTest, TokensDoNotKeepTheFlag) {
  Txt txt;
  txt.alignmentFlag = 1;
  txt.text = "old";
  Input in({tokens("2"), tokenLine("01", "x ", "AB")}, kTokens);
  EXPECT_EQ(txt.read(in), 0);
  EXPECT_EQ(txt.position, GePoint(1, 2, 3));
  EXPECT_EQ(txt.height, 2.5);
  EXPECT_EQ(txt.charWidth, 0.5);
  EXPECT_EQ(txt.alignment, 5);
  EXPECT_EQ(txt.alignmentFlag, 0);
  EXPECT_EQ(txt.text, "AB");
}

struct TextRow {
  const char* name;
  std::int32_t mode;
  Recs lines;
  std::string text;
};

const std::string kLong(1000, '0');

const TextRow kTexts[] = {
    {"Empty", kFixedColumns, {kLine70, kLine71, fixedLine("72", "TXT", "  0")}, ""},
    {"BlanksInFront", kFixedColumns, {kLine70, kLine71, fixedLine("72", "TXT", "  4  ab")}, "  ab"},
    {"DigitsInFront", kFixedColumns, {kLine70, kLine71, fixedLine("72", "TXT", "  412ab")}, "12ab"},
    {"DigitsOnly", kFixedColumns, {kLine70, kLine71, fixedLine("72", "TXT", "  512345")}, "12345"},
    {"LengthOfFourDigits",
     kFixedColumns,
     {kLine70, kLine71, fixedLine("72", "TXT", "1000" + kLong)},
     kLong},
    {"TextOnItsOwnLine",
     kFixedColumns,
     {kLine70, kLine71, fixedLine("72", "TXT", "  5"), fixedLine("73", "TXT", " 1 2 ")},
     " 1 2 "},
    {"NumbersRanOnToLine72",
     kFixedColumns,
     {fixedLine("70", "TXT", fields("1 2 3 1 0")), fixedLine("71", "TXT", fields("0 0 1 0 2.5")),
      fixedLine("72", "TXT", fields("0.5 5")), fixedLine("71", "TXT", ""),
      fixedLine("72", "TXT", "  1a")},
     "a"},
    {"WrongLengthTakesTheRest",
     kFixedColumns,
     {kLine70, kLine71, fixedLine("72", "TXT", "  9ab")},
     "ab"},
    {"NoLengthNoText", kFixedColumns, {kLine70, kLine71, fixedLine("72", "TXT", "")}, ""},
    {"Empty", kTokens, {tokens("0"), tokenLine("01", "x ", "")}, ""},
    {"BlanksInFront", kTokens, {tokens("4"), tokenLine("01", "x ", "  ab")}, "  ab"},
    {"BlanksOnly", kTokens, {tokens("3"), tokenLine("01", "x ", "   ")}, "   "},
    {"LooksLikeCs", kTokens, {tokens("7"), tokenLine("01", "x ", "cs 1,ab")}, "cs 1,ab"},
    {"LooksLikeSp", kTokens, {tokens("3"), tokenLine("01", "x ", "sp,")}, "sp,"},
    {"LooksLikeClosing", kTokens, {tokens("7"), tokenLine("01", "x ", "ab,ft 5")}, "ab,ft 5"},
    {"BeforeClosing", kTokens, {tokens("2"), tokenLine("01", "x ", "ab,ft 5,tk 6")}, "ab"},
    {"ClosingTwice", kTokens, {tokens("7"), tokenLine("01", "x ", "ab,ft 5,ft 5")}, "ab,ft 5"},
    {"EmptyBeforeClosing", kTokens, {tokens("0"), tokenLine("01", "x ", ",ft 5")}, ""},
    {"ClosingOnFurtherLines",
     kTokens,
     {tokens("2"), tokenLine("01", "x ", "ab,"), tokenLine("02", "x ", "ft "),
      tokenLine("03", "x ", "5")},
     "ab"},
    {"TextOnTheLineAfterNext",
     kTokens,
     {tokens("3"), tokenLine("01", "x ", ""), tokenLine("02", "x ", "abc")},
     "abc"},
    {"WrongLengthTakesTheLine", kTokens, {tokens("2"), tokenLine("01", "x ", "abcd")}, "abcd"},
    {"LengthTooLargeTakesTheLine",
     kTokens,
     {tokens("1e300"), tokenLine("01", "x ", "abcd")},
     "abcd"},
    {"LengthOnItsOwnLine",
     kTokens,
     {tokenLine("00", "x ", "1 2 3,1 0 0,0 1 0,2.5,0.5,5,"), tokenLine("01", "x ", "2"),
      tokenLine("02", "x ", "cs")},
     "cs"},
};

TEST(TxtReaderTest, GivesBackTheCharacters) {
  for (const TextRow& row : kTexts) {
    EXPECT_EQ(readFrom<Txt>(row.mode, row.lines).text, row.text)
        << row.name << " mode " << row.mode;
  }
}

TEST(TxtReaderTest, ClosingAttributesAreKept) {
  Input in({tokens("2"), tokenLine("01", "x ", "ab,ft 5,tk -6")}, kTokens);
  Txt txt;
  txt.read(in);
  EXPECT_EQ(in.ft, 5);
  EXPECT_EQ(in.tk, -6);
  EXPECT_EQ(in.textLength, 2.0);
}

TEST(TxtReaderTest, Failures) {
  expectFailures<Txt>({
      {"AnotherStyle", kNoStyle, {"60"}, "1: Txt: wrong style, primitive text"},
      {"NoLine70", kFixedColumns, {kLine71}, "1: line \"70\" not found, primitive text"},
      {"NoLine72", kFixedColumns, {kLine70, kLine71}, "1: line \"72\" not found, primitive text"},
      {"AlignmentOutOfRange",
       kFixedColumns,
       {fixedLine("70", "TXT", fields("1 2 3 1 0 0 0 1 0 2.5 0.5 1e10")), kLine71},
       "1: Input: number out of range, primitive text"},
      {"LengthIsNoNumber",
       kTokens,
       {tokens("x"), tokenLine("01", "x ", "ab")},
       "1: Input: can't get double from expression \"x\", primitive text"},
      {"NoTextLine", kTokens, {tokens("2")}, "1: Input: can't get string value, primitive text"},
  });
}

}  // namespace
