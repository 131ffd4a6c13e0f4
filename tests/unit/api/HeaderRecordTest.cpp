// SPDX-License-Identifier: MIT
#include "api/HeaderRecord.h"

#include <gtest/gtest.h>

#include <climits>
#include <ostream>
#include <string>

#include "support/Text.h"

using namespace Vesk;

namespace {

// Fields that can be told apart.
HeaderRecord filled() {
  HeaderRecord header;
  header.f1.assign("11111111", false);
  header.f2.assign("22", false);
  header.f3.assign("333", false);
  header.f4.assign("44", false);
  header.f5.assign("55", false);
  header.f6.assign("6666", false);
  header.f7.assign("777777777777777777", false);
  return header;
}

Output written(const HeaderRecord& header, int mode) {
  Output out;
  out.mode = mode;
  out.prefix = "former";
  out.attributes = "former";
  header.writeTo(out);
  return out;
}

struct PrefixCase {
  const char* name;
  int mode;
  HeaderRecord header;
  const char* prefix;
  const char* attributes;

  friend std::ostream& operator<<(std::ostream& out, const PrefixCase& row) {
    return out << row.name;
  }
};

// clang-format off
const PrefixCase kPrefixes[] = {
    {"FixedColumnsHave21Characters",       kFixedColumns, filled(),
     "60" "6666" "22" "44" "11111111" "333", ""},
    {"TokensHave19CharactersAndAttributes", kTokens,      filled(),
     "11111111" "22" "333" "44" "55" "00",   "cs 6666,sp 777777777777777777,"},
    {"ABlankHeaderInFixedColumns",         kFixedColumns, HeaderRecord(), "60                   ", ""},
    {"ABlankHeaderHasNoAttributes",        kTokens,       HeaderRecord(), "                 00",    ""},
    {"AnotherModeHasNoPrefix",             1,             filled(),       "",                       ""},
};
// clang-format on

TEST(HeaderRecordTest, PrefixAndAttributesByMode) {
  for (const PrefixCase& row : kPrefixes) {
    SCOPED_TRACE(row);
    const Output out = written(row.header, row.mode);
    EXPECT_TEXT(out.prefix, row.prefix);
    EXPECT_TEXT(out.attributes, row.attributes);
  }
}

TEST(HeaderRecordTest, CounterAndLineNumberStandWhereTheAssemblerLooks) {
  HeaderRecord header;
  header.set("abc", "de", 1000);  // 0RS: 27*36 + 28
  for (const int mode : {kFixedColumns, kTokens}) {
    Output out = written(header, mode);
    EXPECT_EQ(out.counterValue(), 1000);
    EXPECT_TRUE(out.incrementLineNumber());
    EXPECT_EQ(out.prefix.substr(mode == kTokens ? 17 : 0, 2), mode == kTokens ? "01" : "61");
  }
}

struct AttributeCase {
  const char* name;
  const char* f6;
  const char* f7;
  const char* attributes;

  friend std::ostream& operator<<(std::ostream& out, const AttributeCase& row) {
    return out << row.name;
  }
};

// clang-format off
constexpr AttributeCase kAttributes[] = {
    {"BothBlankGiveNoToken",               "",       "",           ""},
    {"OnlyTheFirst",                       "12",     "",           "cs 12,"},
    {"OnlyTheSecond",                      "",       "A-B",        "sp A-B,"},
    {"BothInOrder",                        "12",     "A-B",        "cs 12,sp A-B,"},
    {"TrailingLineEndsAreRemoved",         "1\r\n",  "A \r\n \n",  "cs 1,sp A,"},
    {"LeadingAndInnerBlanksStay",          " 1 2",   " A B",       "cs  1 2,sp  A B,"},
    {"InnerLineEndsStay",                  "1\n2",   "",           "cs 1\n2,"},
    {"TrailingTabsStay",                   "1\t",    "",           "cs 1\t,"},
    {"OfLineEndsOnlyNothingButTheNameIsLeft", "\r\n", "",          "cs ,"},
};
// clang-format on

TEST(HeaderRecordTest, AttributesAreTrimmedTexts) {
  for (const AttributeCase& row : kAttributes) {
    SCOPED_TRACE(row);
    HeaderRecord header;
    header.f6.assign(row.f6, false);
    header.f7.assign(row.f7, false);
    EXPECT_TEXT(written(header, kTokens).attributes, row.attributes);
    EXPECT_TEXT(written(header, kFixedColumns).attributes, "");
  }
}

struct SetCase {
  const char* name;
  const char* a;
  const char* b;
  int n;
  bool fits;
  const char* prefix;  // in token records

  friend std::ostream& operator<<(std::ostream& out, const SetCase& row) { return out << row.name; }
};

// clang-format off
constexpr SetCase kSets[] = {
    {"ShortTextsArePadded",               "P-1",         "A",   1,      true,  "P-1     A 001    00"},
    {"LongTextsAreCut",                   "PIPELINE-77", "ABC", 42,     true,  "PIPELINEAB016    00"},
    {"NullTextsAreBlank",                 nullptr,       nullptr, 0,    true,  "          000    00"},
    {"ControlsBecomeBlanks",              "a\tb\nc\x1f", "\r\x01", 0,   true,  "a b c     000    00"},
    {"BytesAbove127Stay",                 "\xc3\xbc\xff", "\x80", 0,    true,  "\xc3\xbc\xff     \x80 000    00"},
    {"TheLargestNumberIsThreeZ",          "",            "",    46655,  true,  "          ZZZ    00"},
    {"OneMoreIs000AndDoesNotFit",         "",            "",    46656,  false, "          000    00"},
    {"TheHeaderIsSetThoughNDoesNotFit",   "P",           "A",   46657,  false, "P       A 001    00"},
    {"MinusOneHasOneDigitBelowZero",      "",            "",    -1,     true,  "          00/    00"},
    {"MinusThirtyEightHasTwo",            "",            "",    -38,    true,  "          0/.    00"},
    {"MinusThirtyFiveIsCode13",           "",            "",    -35,    true,  "          00\r    00"},
    {"TooFarBelowZeroDoesNotFit",         "",            "",    -46656, false, "          000    00"},
};
// clang-format on

TEST(HeaderRecordTest, SetFillsTheFirstThreeFields) {
  for (const SetCase& row : kSets) {
    SCOPED_TRACE(row);
    HeaderRecord header;
    header.set("XXXXXXXX", "XX", 46655);
    EXPECT_EQ(header.set(row.a, row.b, row.n), row.fits);
    EXPECT_TEXT(written(header, kTokens).prefix, row.prefix);
  }
}

TEST(HeaderRecordTest, SetLeavesTheOtherFields) {
  HeaderRecord header = filled();
  header.set("a", "b", 3);
  EXPECT_TEXT(written(header, kFixedColumns).prefix, "606666b 44a       003");
  EXPECT_TEXT(written(header, kTokens).prefix, "a       b 003445500");
}

}  // namespace
