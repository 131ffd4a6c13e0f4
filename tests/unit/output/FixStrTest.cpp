// SPDX-License-Identifier: MIT
#include "vesk/FixStr.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <ostream>
#include <string>

#include "support/Text.h"

using namespace Vesk;

namespace {

struct AssignCase {
  const char* name;
  const char* text;
  bool blankControls;
  const char* field;  // of eight characters

  friend std::ostream& operator<<(std::ostream& out, const AssignCase& row) {
    return out << row.name;
  }
};

// clang-format off
constexpr AssignCase kAssigns[] = {
    {"TwoLettersAndSixBlanks",            "AB",                     true,  "AB      "},
    {"ALongerTextKeepsItsFirstEight",     "ABCDEFGHIJ",             true,  "ABCDEFGH"},
    {"ATextOfExactlyTheWidth",            "ABCDEFGH",               true,  "ABCDEFGH"},
    {"NoTextIsBlank",                     nullptr,                  true,  "        "},
    {"NoTextIsBlankWithControlsKept",     nullptr,                  false, "        "},
    {"AnEmptyTextIsBlank",                "",                       true,  "        "},
    {"ATabBecomesABlank",                 "A\tB",                   true,  "A B     "},
    {"ALineFeedBecomesABlank",            "A\nB",                   true,  "A B     "},
    {"ControlsStayWithoutTheFlag",        "A\tB\n",                 false, "A\tB\n    "},
    {"TheLastControlIs31",                "\x1f\x1e\x01",           true,  "        "},
    {"DeleteIsNoControl",                 "\x7f",                   true,  "\x7f       "},
    {"BytesAbove127Stay",                 "\x80\x9f\xc3\xbc\xff",   true,  "\x80\x9f\xc3\xbc\xff   "},
    {"AMultibyteCharacterIsCutByBytes",   "1234567\xc3\xbc",        true,  "1234567\xc3"},
    {"ControlsBehindTheWidthAreNotSeen",  "12345678\n",             true,  "12345678"},
};
// clang-format on

TEST(FixStrTest, AssignPadsCutsAndBlanksControls) {
  for (const AssignCase& row : kAssigns) {
    SCOPED_TRACE(row);
    FixStr<8> field;
    field.assign("xxxxxxxxxx", false);
    field.assign(row.text, row.blankControls);
    EXPECT_TEXT(field.data(), row.field);
    EXPECT_STREQ(field.text(), field.data());
  }
}

TEST(FixStrTest, BlankControlsTurnsCodes1To31IntoBlanksAndNoOther) {
  for (int code = 1; code < 256; ++code) {
    const char text[] = {static_cast<char>(code), '\0'};
    FixStr<2> field;
    field.assign(text, true);
    EXPECT_EQ(field.data()[0], code < 32 ? ' ' : text[0]) << "code " << code;
    EXPECT_EQ(field.data()[1], ' ');
  }
}

TEST(FixStrTest, TheTextIsReadUpToTheWidthOnly) {
  // Not terminated: reading a fourth character is an overrun.
  const auto text = std::make_unique<char[]>(3);
  std::memcpy(text.get(), "abc", 3);
  FixStr<3> field;
  field.assign(text.get(), false);
  EXPECT_STREQ(field.data(), "abc");
  field.assign(nullptr, false);
  field.put(0, 3, text.get());
  EXPECT_STREQ(field.data(), "abc");
  field.assign(nullptr, false);
  field.overlay(1, 3, text.get());
  EXPECT_TEXT(field.data(), " ab");
}

template <class Field>
class FixStrWidthTest : public testing::Test {};

using Fields = testing::Types<FixStr<2>, FixStr<3>, FixStr<4>, FixStr<8>, FixStr<18>>;
TYPED_TEST_SUITE(FixStrWidthTest, Fields);

TYPED_TEST(FixStrWidthTest, ANewFieldIsBlankAndTerminated) {
  const TypeParam field;
  EXPECT_EQ(std::strlen(field.data()), field.width());
  EXPECT_EQ(std::string(field.text()), std::string(field.width(), ' '));
  EXPECT_EQ(field.padChar(), 32);
  EXPECT_TRUE(field.isBlank());
}

TYPED_TEST(FixStrWidthTest, EveryLengthOfTextFillsTheFieldExactly) {
  for (std::size_t length = 0; length <= 20; ++length) {
    TypeParam field;
    field.assign(std::string(length, 'x').c_str(), true);
    const std::size_t kept = std::min(length, field.width());
    EXPECT_EQ(std::string(field.data()),
              std::string(kept, 'x') + std::string(field.width() - kept, ' '));
    EXPECT_EQ(field.isBlank(), length == 0);
  }
}

TYPED_TEST(FixStrWidthTest, AFieldOfBlanksEqualsAFreshOne) {
  TypeParam field;
  field.assign("x", true);
  EXPECT_FALSE(field == TypeParam());
  field.assign(" ", true);
  EXPECT_TRUE(field == TypeParam());
}

TEST(FixStrTest, FieldsAreComparedByTheirTexts) {
  FixStr<4> a;
  FixStr<4> b;
  a.assign("AB", false);
  b.assign("AB  ", false);
  EXPECT_TRUE(a == b);
  b.assign("AC", false);
  EXPECT_FALSE(a == b);
  FixStr<2> narrow;
  narrow.assign("AB", false);
  EXPECT_FALSE(a == narrow);  // "AB  " is not "AB"
}

TEST(FixStrTest, ACopyIsIndependent) {
  FixStr<4> a;
  a.assign("AB", false);
  FixStr<4> b = a;
  b.assign("CD", false);
  EXPECT_TEXT(a.data(), "AB  ");
  a = b;
  EXPECT_TEXT(a.data(), "CD  ");
}

struct EditCase {
  const char* name;
  int position;
  int count;
  const char* text;
  const char* field;  // "abcdefgh" afterwards

  friend std::ostream& operator<<(std::ostream& out, const EditCase& row) {
    return out << row.name;
  }
};

// clang-format off
constexpr EditCase kPuts[] = {
    {"ReplacesCountCharacters",              2,   3, "XYZW",       "abXYZfgh"},
    {"AShorterTextIsFilledWithBlanks",       2,   3, "X",          "abX  fgh"},
    {"AnEmptyTextBlanksCountCharacters",     2,   3, "",           "ab   fgh"},
    {"NoTextBlanksCountCharacters",          2,   3, nullptr,      "ab   fgh"},
    {"ACountBelowZeroReachesToTheEnd",       2,  -1, "XY",         "abXY    "},
    {"ACountBelowZeroFromTheStart",          0,  -1, "0123456789", "01234567"},
    {"TheCountIsCutAtTheEnd",                6,   9, "XYZ",        "abcdefXY"},
    {"TheLastPosition",                      7,   1, "X",          "abcdefgX"},
    {"APositionAtTheWidthChangesNothing",    8,   1, "X",          "abcdefgh"},
    {"APositionPastTheWidthChangesNothing",  99, -1, "X",          "abcdefgh"},
    {"APositionBelowZeroChangesNothing",     -1,  3, "XYZ",        "abcdefgh"},
    {"ACountOfZeroChangesNothing",           2,   0, "X",          "abcdefgh"},
};

constexpr EditCase kOverlays[] = {
    {"CopiesTheSmallerOfCountAndLength",     2,   2, "XYZ",        "abXYefgh"},
    {"AShorterTextIsNotPadded",              2,   5, "XY",         "abXYefgh"},
    {"CutAtTheEndOfTheField",                6,   9, "XYZ",        "abcdefXY"},
    {"AnEmptyTextChangesNothing",            2,   5, "",           "abcdefgh"},
    {"NoTextChangesNothing",                 2,   5, nullptr,      "abcdefgh"},
    {"ACountOfZeroChangesNothing",           2,   0, "X",          "abcdefgh"},
    {"ACountBelowZeroChangesNothing",        2,  -1, "X",          "abcdefgh"},
    {"APositionAtTheWidthChangesNothing",    8,   1, "X",          "abcdefgh"},
    {"APositionBelowZeroChangesNothing",     -1,  3, "XYZ",        "abcdefgh"},
};
// clang-format on

TEST(FixStrTest, PutReplacesAndPads) {
  for (const EditCase& row : kPuts) {
    SCOPED_TRACE(row);
    FixStr<8> field;
    field.assign("abcdefgh", false);
    field.put(row.position, row.count, row.text);
    EXPECT_TEXT(field.data(), row.field);
  }
}

TEST(FixStrTest, OverlayWritesOverWithoutPadding) {
  for (const EditCase& row : kOverlays) {
    SCOPED_TRACE(row);
    FixStr<8> field;
    field.assign("abcdefgh", false);
    field.overlay(row.position, row.count, row.text);
    EXPECT_TEXT(field.data(), row.field);
  }
}

struct CopyCase {
  int length;
  const char* buffer;  // of six characters, "......" before
};

TEST(FixStrTest, CopyOutFillsTheBufferBeyondTheWidthWithBlanks) {
  FixStr<4> field;
  field.assign("abcd", false);
  for (const auto& [length, expected] :
       {CopyCase{0, "......"}, CopyCase{-1, "......"}, CopyCase{1, "a....."}, CopyCase{4, "abcd.."},
        CopyCase{5, "abcd ."}, CopyCase{6, "abcd  "}}) {
    char buffer[] = "......";
    field.copyOut(buffer, length);
    EXPECT_TEXT(buffer, expected) << "length " << length;
  }
}

TEST(FixStrTest, TheBaseReachesEveryWidth) {
  FixStr<18> wide;
  FixStrB& field = wide;
  field.assign("x\ty", true);
  EXPECT_EQ(field.width(), 18u);
  EXPECT_EQ(field.padChar(), ' ');
  EXPECT_FALSE(field.isBlank());
  EXPECT_TEXT(field.data(), "x y               ");
}

}  // namespace
