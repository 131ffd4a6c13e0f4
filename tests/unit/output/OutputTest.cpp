// SPDX-License-Identifier: MIT
#include "output/Output.h"

#include <gtest/gtest.h>

#include <limits>
#include <ostream>
#include <string>
#include <type_traits>

#include "support/Text.h"
#include "vesk/ExceptionInfo.h"
#include "vesk/GePoint.h"
#include "vesk/GeVector.h"

using namespace Vesk;
using VeskTest::joined;

namespace {

// Prefixes as the header writes them: counter 00A, line number at its start.
constexpr const char* kPrefix2 = "60    01  PIPELINE00A";
constexpr const char* kPrefix3 = "PIPELINE0100A    00";

Output assembler(int mode, std::uint32_t lineSize = 512) {
  Output out;
  out.mode = mode;
  out.lineSize = lineSize;
  out.prefix = mode == kFixedColumns ? kPrefix2 : kPrefix3;
  return out;
}

// The lines so far and, last, the one being built.
std::string all(Output& out) {
  out.flushLine();
  return joined(out.recs);
}

// Message and level of the ExceptionInfo that `work` throws.
template <class Work>
std::string failureOf(Work work) {
  try {
    work();
  } catch (const ExceptionInfo& e) {
    return e.message + " / " + std::to_string(e.level);
  }
  return "nothing";
}

constexpr const char* kNotSet = "Output: line size is not set / 1";
constexpr const char* kTooBig = "Output: line too big for output / 1";

TEST(OutputTest, ANewAssemblerIsEmptyWithLineSize512AndTags) {
  const Output out;
  EXPECT_TRUE(out.recs.empty());
  EXPECT_EQ(out.counter, 0);
  EXPECT_EQ(out.lineSize, 512u);
  EXPECT_TRUE(out.writeTags);
  EXPECT_EQ(out.lineText(), "");
}

TEST(OutputTest, AssemblerAndListAreDestroyedThroughTheirBases) {
  EXPECT_TRUE(std::has_virtual_destructor_v<Output>);
  EXPECT_TRUE(std::has_virtual_destructor_v<Recs>);
}

// Record and continuation

TEST(OutputTest, FirstLineIsNumberHeaderKeywordAttributesTokens) {
  Output out = assembler(kFixedColumns);
  out.attributes = "cs 12,";
  out.beginRecord("CYL", true);
  out.addText("1.5", true);
  out.addText("2.5", true);
  EXPECT_TEXT(all(out), joined({"60    01  PIPELINE00ACYLcs 12,1.5,2.5,"}));
}

TEST(OutputTest, ContinuationLineTakesTheNextNumberAndNoAttributes) {
  Output out = assembler(kFixedColumns, 40);
  out.attributes = "cs 12,";
  out.beginRecord("CYL", true);
  out.addText("1.5", true);                                                // 34 characters
  out.addText("2.5", true);                                                // 38
  out.addText("3.5", true);                                                // would be 42
  EXPECT_TEXT(all(out), joined({"60    01  PIPELINE00ACYLcs 12,1.5,2.5,",  //
                                "61    01  PIPELINE00ACYL3.5,"}));
}

TEST(OutputTest, TokenRecordsCountTheirLinesAtColumn17) {
  Output out = assembler(kTokens, 30);
  out.attributes = "sp A,";
  out.beginRecord("c ", true);
  out.addText("1234");  // 30 characters
  out.addText("5");
  EXPECT_TEXT(all(out), joined({"PIPELINE0100A    00c sp A,1234",  //
                                "PIPELINE0100A    01c 5"}));
}

TEST(OutputTest, KeywordKeepsItsFirstFourCharacters) {
  Output out = assembler(kFixedColumns);
  out.beginRecord("ABCDEF", true);
  EXPECT_EQ(out.keyword, "ABCD");
  EXPECT_TEXT(out.lineText(), "60    01  PIPELINE00AABCD");
}

TEST(OutputTest, BeginRecordDropsTheLineBeingBuilt) {
  Output out = assembler(kTokens);
  out.beginRecord("c ", true);
  out.addText("lost");
  out.beginRecord("n ", true);
  EXPECT_TEXT(all(out), joined({"PIPELINE0100A    00n "}));
}

TEST(OutputTest, BeginRecordResetsTheLineNumberOnRequestOnly) {
  Output two = assembler(kFixedColumns);
  two.startLine("75");
  two.beginRecord("CYL", false);
  EXPECT_TEXT(two.lineText(), "75    01  PIPELINE00ACYL");
  two.beginRecord("CYL", true);
  EXPECT_TEXT(two.lineText(), "60    01  PIPELINE00ACYL");

  Output three = assembler(kTokens);
  three.beginRecord("c ", true);
  three.nextLine();
  three.beginRecord("c ", false);
  EXPECT_TEXT(three.lineText(), "PIPELINE0100A    01c ");
  three.beginRecord("c ", true);
  EXPECT_TEXT(three.lineText(), "PIPELINE0100A    00c ");
}

struct TextKeywordCase {
  const char* name;
  int mode;
  const char* keyword;
  bool resetNumber;
  const char* line;

  friend std::ostream& operator<<(std::ostream& out, const TextKeywordCase& row) {
    return out << row.name;
  }
};

// clang-format off
constexpr TextKeywordCase kTextKeywords[] = {
    {"ATextRecordStartsAtLine70",                kFixedColumns, "TXT",  true,  "70    01  PIPELINE00ATXT"},
    {"TxtWithoutResetLeavesTheNumber",           kFixedColumns, "TXT",  false, "60    01  PIPELINE00ATXT"},
    {"AKeywordThatBeginsWithTxtCounts",          kFixedColumns, "TXTQ", true,  "70    01  PIPELINE00ATXTQ"},
    {"OnlyTheWholeWordCounts",                   kFixedColumns, "TX",   true,  "60    01  PIPELINE00ATX"},
    {"SmallLettersDoNotCount",                   kFixedColumns, "txt",  true,  "60    01  PIPELINE00Atxt"},
    {"InTokenRecordsTheFirstHeaderCharacterIsOverwritten",
                                                 kTokens,       "TXT",  true,  "7IPELINE0100A    00TXT"},
    {"InTokenRecordsNothingWithoutReset",        kTokens,       "TXT",  false, "PIPELINE0100A    00TXT"},
};
// clang-format on

TEST(OutputTest, TxtSetsTheFirstPrefixCharacterWithResetOnly) {
  for (const TextKeywordCase& row : kTextKeywords) {
    SCOPED_TRACE(row);
    Output out = assembler(row.mode);
    out.beginRecord(row.keyword, row.resetNumber);
    EXPECT_TEXT(out.lineText(), row.line);
  }
}

TEST(OutputTest, ContinuationLinesStopCountingAt99) {
  Output out = assembler(kFixedColumns);
  out.beginRecord("CYL", true);
  for (int i = 1; i <= 45; ++i) {
    out.nextLine();
    const int number = i < 39 ? 60 + i : 99;
    EXPECT_EQ(out.lineText().substr(0, 2), std::to_string(number)) << "continuation " << i;
  }
}

TEST(OutputTest, TokenRecordsStopCountingAt99Too) {
  Output out = assembler(kTokens);
  out.beginRecord("c ", true);
  for (int i = 1; i <= 105; ++i) {
    out.nextLine();
    const int number = i < 99 ? i : 99;
    const std::string digits = (number < 10 ? "0" : "") + std::to_string(number);
    EXPECT_EQ(out.lineText().substr(17, 2), digits) << "continuation " << i;
  }
  EXPECT_EQ(out.flushLine(), 106);
}

TEST(OutputTest, StartLineSetsTheNumberInFixedColumns) {
  Output out = assembler(kFixedColumns);
  out.beginRecord("BOX", true);
  out.addText("a");
  out.startLine("63x");
  out.addText("b");
  out.nextLine();
  EXPECT_TEXT(all(out), joined({"60    01  PIPELINE00ABOXa",  //
                                "63    01  PIPELINE00ABOXb",  //
                                "64    01  PIPELINE00ABOX"}));
}

TEST(OutputTest, StartLineSetsTheKeywordInTokenRecords) {
  Output out = assembler(kTokens);
  out.attributes = "cs 1,";
  out.beginRecord("b ", true);
  out.addText("a");
  out.startLine("be");
  out.addText("b");
  out.nextLine();
  EXPECT_TEXT(all(out), joined({"PIPELINE0100A    00b cs 1,a",  //
                                "PIPELINE0100A    00beb",       //
                                "PIPELINE0100A    01be"}));
}

TEST(OutputTest, StartLineOnAnEmptyLineAddsNoLine) {
  Output out = assembler(kFixedColumns);
  out.keyword = "BOX";
  out.startLine("63");
  EXPECT_TRUE(out.recs.empty());
}

// Measuring

TEST(OutputTest, ATokenOfExactlyTheLineSizeIsAccepted) {
  Output out = assembler(kTokens);
  out.beginRecord("x ", true);
  EXPECT_EQ(failureOf([&] { out.addText(std::string(512, 'a')); }), "nothing");
  EXPECT_EQ(failureOf([&] { out.addText(std::string(511, 'b'), true); }), "nothing");
}

TEST(OutputTest, OneCharacterMoreThrows) {
  Output out = assembler(kTokens);
  out.beginRecord("x ", true);
  EXPECT_EQ(failureOf([&] { out.addText(std::string(513, 'a')); }), kTooBig);
  EXPECT_EQ(failureOf([&] { out.addText(std::string(512, 'a'), true); }), kTooBig);
  EXPECT_EQ(failureOf([&] { out.addText(std::string(1000000, 'a')); }), kTooBig);
}

TEST(OutputTest, ATokenThatExactlyFillsTheLineStaysOnIt) {
  Output out = assembler(kTokens);
  out.beginRecord("x ", true);  // 21 characters
  out.addText(std::string(491, 'a'));
  EXPECT_EQ(out.recs.size(), 0u);
  EXPECT_EQ(out.lineText().size(), 512u);
  out.addText("b");
  EXPECT_EQ(out.recs.size(), 1u);
  EXPECT_TEXT(out.lineText(), "PIPELINE0100A    01x b");
}

TEST(OutputTest, TheCommaIsMeasuredWithItsToken) {
  Output out = assembler(kTokens);
  out.beginRecord("x ", true);
  out.addText(std::string(490, 'a'));
  out.addText("b", true);
  EXPECT_EQ(out.recs.size(), 1u);
  EXPECT_TEXT(out.lineText(), "PIPELINE0100A    01x b,");
}

TEST(OutputTest, AContinuationLineMayBeLongerThanTheLineSize) {
  Output out = assembler(kTokens);
  out.beginRecord("x ", true);
  out.addText("1");
  out.addText(std::string(512, 'a'));
  EXPECT_EQ(out.lineText().size(), 533u);
  out.addText("2");
  ASSERT_EQ(out.recs.size(), 2u);
  EXPECT_EQ(out.recs[1], "PIPELINE0100A    01x " + std::string(512, 'a'));
  EXPECT_TEXT(out.lineText(), "PIPELINE0100A    02x 2");
}

TEST(OutputTest, AnyStatedCapacityMayBeExceeded) {
  Output out = assembler(kTokens, 100000);
  out.prefix.append(1000, 'p');
  out.attributes.assign(3000, 'a');
  out.beginRecord("c ", true);
  out.addText(std::string(50000, 't'));
  EXPECT_EQ(out.lineText(), std::string(kPrefix3) + std::string(1000, 'p') + "c " +
                                std::string(3000, 'a') + std::string(50000, 't'));
}

TEST(OutputTest, AnAttributeTextThatDoesNotFitGoesToAContinuationLine) {
  Output out = assembler(kTokens, 24);
  out.attributes = "cs 1,";
  out.beginRecord("c ", true);
  EXPECT_TEXT(all(out), joined({"PIPELINE0100A    00c ",  //
                                "PIPELINE0100A    01c cs 1,"}));
}

TEST(OutputTest, AnUnsetLineSizeThrowsWhateverTheToken) {
  for (const std::string& token : {std::string(), std::string("a"), std::string(1000, 'a')}) {
    Output out = assembler(kTokens, 0);
    EXPECT_EQ(failureOf([&] { out.addText(token); }), kNotSet);
  }
  Output out = assembler(kTokens, 0);
  EXPECT_EQ(failureOf([&] { out.beginRecord("c ", true); }), kNotSet);
  EXPECT_EQ(failureOf([&] { out.nextLine(); }), kNotSet);
  EXPECT_EQ(failureOf([&] { out.startLine("be"); }), kNotSet);
}

TEST(OutputTest, NothingIsRolledBackAfterAFailure) {
  Output out = assembler(kTokens, 30);
  out.beginRecord("c ", true);
  out.addText("123456789");
  out.addText("987654321");
  EXPECT_EQ(failureOf([&] { out.addText(std::string(31, 'a')); }), kTooBig);
  EXPECT_TEXT(joined(out.recs), joined({"PIPELINE0100A    00c 123456789"}));
  EXPECT_TEXT(out.lineText(), "PIPELINE0100A    01c 987654321");
}

struct LineSizeCase {
  int mode;
  std::uint32_t lineSize;
  const char* failure;

  friend std::ostream& operator<<(std::ostream& out, const LineSizeCase& row) {
    return out << "mode " << row.mode << ", line size " << row.lineSize;
  }
};

// Prefix and keyword: 19 + 2 characters in mode 3, 21 + 3 in mode 2.
constexpr LineSizeCase kLineSizes[] = {
    {kTokens, 1, kTooBig},        {kTokens, 18, kTooBig},         {kTokens, 19, kTooBig},
    {kTokens, 20, kTooBig},       {kTokens, 21, "nothing"},       {kFixedColumns, 1, kTooBig},
    {kFixedColumns, 20, kTooBig}, {kFixedColumns, 21, kTooBig},   {kFixedColumns, 22, kTooBig},
    {kFixedColumns, 23, kTooBig}, {kFixedColumns, 24, "nothing"},
};

TEST(OutputTest, ALineSizeWithoutRoomForPrefixAndKeywordThrows) {
  for (const LineSizeCase& row : kLineSizes) {
    SCOPED_TRACE(row);
    const char* keyword = row.mode == kTokens ? "c " : "CYL";
    Output out = assembler(row.mode, row.lineSize);
    EXPECT_EQ(failureOf([&] { out.beginRecord(keyword, true); }), row.failure);
    out = assembler(row.mode, row.lineSize);
    out.keyword = keyword;
    EXPECT_EQ(failureOf([&] { out.nextLine(); }), row.failure);
    out = assembler(row.mode, row.lineSize);
    out.keyword = keyword;
    EXPECT_EQ(failureOf([&] { out.startLine(row.mode == kTokens ? "be" : "63"); }), row.failure);
  }
}

TEST(OutputTest, AtTheSmallestLineSizeEachTokenTakesALine) {
  Output out = assembler(kTokens, 21);
  out.beginRecord("c ", true);
  out.addText("1", true);
  out.addText("2", true);
  EXPECT_TEXT(all(out), joined({"PIPELINE0100A    00c ",    //
                                "PIPELINE0100A    01c 1,",  //
                                "PIPELINE0100A    02c 2,"}));
}

TEST(OutputTest, AKeywordThatGrewTooLongThrowsOnTheNextLine) {
  Output out = assembler(kTokens, 30);
  out.beginRecord("c ", true);
  EXPECT_EQ(failureOf([&] { out.startLine("123456789012"); }), kTooBig);
  EXPECT_TEXT(joined(out.recs), joined({"PIPELINE0100A    00c "}));
}

TEST(OutputTest, TheAssemblersOwnTextsMayBeTokens) {
  Output out = assembler(kTokens, 30);
  out.beginRecord("c ", true);
  out.addText("12345");  // 26 characters
  out.addText(out.lineText());
  out.addText(out.prefix);
  EXPECT_TEXT(all(out), joined({"PIPELINE0100A    00c 12345",                       //
                                "PIPELINE0100A    01c PIPELINE0100A    00c 12345",  //
                                "PIPELINE0100A    02c PIPELINE0100A    01"}));
}

// Finishing

TEST(OutputTest, FlushingAnEmptyLineAddsNothing) {
  Output out = assembler(kTokens);
  EXPECT_EQ(out.flushLine(), 0);
  EXPECT_TRUE(out.recs.empty());
}

TEST(OutputTest, FlushMovesTheLineAndCountsTheLines) {
  Output out = assembler(kTokens);
  out.beginRecord("c ", true);
  EXPECT_EQ(out.flushLine(), 1);
  EXPECT_EQ(out.lineText(), "");
  EXPECT_EQ(out.flushLine(), 1);
  out.nextLine();
  EXPECT_EQ(out.flushLine(), 2);
}

TEST(OutputTest, ClearForgetsLinesAndTheLineBeingBuilt) {
  Output out = assembler(kTokens);
  out.beginRecord("c ", true);
  out.nextLine();
  out.clear();
  EXPECT_EQ(out.flushLine(), 0);
}

// Line number

struct NumberCase {
  const char* name;
  int mode;
  const char* before;
  bool result;
  const char* after;

  friend std::ostream& operator<<(std::ostream& out, const NumberCase& row) {
    return out << row.name;
  }
};

// clang-format off
constexpr NumberCase kNumbers[] = {
    {"FixedColumnsCountUp",                   kFixedColumns, "60rest",               true,  "61rest"},
    {"FixedColumnsCarry",                     kFixedColumns, "69rest",               true,  "70rest"},
    {"FixedColumnsReach99",                   kFixedColumns, "98rest",               true,  "99rest"},
    {"FixedColumnsNeverReach100",             kFixedColumns, "99rest",               false, "99rest"},
    {"ABelowTenResultCutsThePrefixShort",     kFixedColumns, "05rest",               true,  "6"},
    {"FromNineOnTheResultHasTwoDigits",       kFixedColumns, "09rest",               true,  "10rest"},
    {"TokensCountUp",                         kTokens,       "PIPELINE0100A    00",  true,  "PIPELINE0100A    01"},
    {"TokensBelowTenHaveALeadingZero",        kTokens,       "PIPELINE0100A    08",  true,  "PIPELINE0100A    09"},
    {"TokensCarry",                           kTokens,       "PIPELINE0100A    09",  true,  "PIPELINE0100A    10"},
    {"TokensNeverReach100",                   kTokens,       "PIPELINE0100A    99",  false, "PIPELINE0100A    99"},
    {"AnotherModeHasNoNumber",                1,             "60rest",               false, "60rest"},
    {"ModeZeroHasNoNumber",                   0,             "60rest",               false, "60rest"},
};
// clang-format on

TEST(OutputTest, IncrementLineNumber) {
  for (const NumberCase& row : kNumbers) {
    SCOPED_TRACE(row);
    Output out = assembler(row.mode);
    out.prefix = row.before;
    EXPECT_EQ(out.incrementLineNumber(), row.result);
    EXPECT_TEXT(out.prefix, row.after);
  }
}

TEST(OutputTest, APrefixTooShortForItsNumberIsNotOverrun) {
  for (const int mode : {0, kFixedColumns, kTokens}) {
    for (std::size_t length = 0; length < 22; ++length) {
      Output out = assembler(mode);
      out.prefix.assign(length, '7');
      out.beginRecord("TXT", true);
      out.incrementLineNumber();
      out.incrementCounter();
      out.startLine("71");
      EXPECT_LE(out.prefix.size(), 23u) << mode << ' ' << length;
    }
  }
}

// Counter

struct CounterCase {
  const char* name;
  const char* before;
  int value;
  bool result;
  const char* after;

  friend std::ostream& operator<<(std::ostream& out, const CounterCase& row) {
    return out << row.name;
  }
};

constexpr CounterCase kCounters[] = {
    {"CountsInBase36", "000", 0, true, "001"},
    {"NineIsFollowedByA", "009", 9, true, "00A"},
    {"ZIsFollowedByTheNextPlace", "0ZZ", 1295, true, "100"},
    {"TheLargestIsReached", "ZZY", 46654, true, "ZZZ"},
    {"TheLargestIsFollowedByZeroAndFalse", "ZZZ", 46655, false, "000"},
};

TEST(OutputTest, IncrementCounterAtColumn10InTokenRecordsAnd18Otherwise) {
  for (const CounterCase& row : kCounters) {
    for (const int mode : {kFixedColumns, kTokens, 0}) {
      SCOPED_TRACE(VeskTest::streamed(row) + ", mode " + std::to_string(mode));
      Output out = assembler(mode);
      out.prefix.assign(24, '.');
      const std::size_t column = mode == kTokens ? 10 : 18;
      out.prefix.replace(column, 3, row.before);
      EXPECT_EQ(out.counterValue(), row.value);
      EXPECT_EQ(out.incrementCounter(), row.result);
      std::string expected(24, '.');
      EXPECT_EQ(out.prefix, expected.replace(column, 3, row.after));
    }
  }
}

// Numbers and points

TEST(OutputTest, NumberIsNineCharactersWithoutComma) {
  Output out = assembler(kFixedColumns);
  out.addNumber(1.5);
  out.addNumber(-12345.5);
  EXPECT_TEXT(out.lineText(), "    1.500-12345.50");
}

TEST(OutputTest, FixedTakesDecimalsCommaAndWidth) {
  Output out = assembler(kTokens);
  out.addFixed(1.5, 4, true);
  out.addFixed(10.0, 4, false);
  out.addFixed(7.0, 0, true, 3);
  out.addFixed(0.123456789, 6, false, 0);
  EXPECT_TEXT(out.lineText(), "1.5,10  7,0.123457");
}

TEST(OutputTest, PointHasBlanksBetweenAndTheCommaAtItsEnd) {
  Output out = assembler(kTokens);
  out.addPoint(1.0, -2.5, 3.00004, 4, true);
  out.addPoint(GePoint(4, 5, 6), 4, false);
  EXPECT_TEXT(out.lineText(), "1 -2.5 3,4 5 6");
}

TEST(OutputTest, PointWithAWidthIsAdjacentFields) {
  Output out = assembler(kTokens);
  out.addPoint(GeVector(1, -2, 3), 0, true, 4);
  EXPECT_TEXT(out.lineText(), "   1  -2   3,");
}

TEST(OutputTest, Point9IsThreeNumbersWithoutSeparator) {
  Output out = assembler(kFixedColumns);
  out.addPoint9(1.0, -2.5, 100000.0);
  out.addPoint9(GePoint(0, 0, 0));
  EXPECT_TEXT(out.lineText(), "    1.000   -2.500100000.00    0.000    0.000    0.000");
}

TEST(OutputTest, EachPartOfAPointWrapsOnItsOwn) {
  Output out = assembler(kTokens, 24);
  out.beginRecord("c ", true);
  out.addPoint(100, 2, 3, 4, true);                          // "100", then the blank does not fit
  EXPECT_TEXT(all(out), joined({"PIPELINE0100A    00c 100",  //
                                "PIPELINE0100A    01c  2 ",  //
                                "PIPELINE0100A    02c 3,"}));
}

TEST(OutputTest, NumbersWrapWhereAFieldNoLongerFits) {
  Output out = assembler(kFixedColumns, 256);
  out.beginRecord("QUA", true);  // 24 characters; 25 fields of nine make 249
  for (int i = 0; i < 27; ++i) out.addNumber(i);
  ASSERT_EQ(out.recs.size(), 1u);
  EXPECT_EQ(out.recs[0].size(), 249u);
  EXPECT_TEXT(out.lineText(), "61    01  PIPELINE00AQUA   25.000   26.000");
}

}  // namespace
