// SPDX-License-Identifier: MIT
#include "pcf/Text.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "pcf/Layout.h"
#include "pcf/Words.h"

namespace Vesk::Pcf {
namespace {

struct IndentRow {
  const char* line;
  std::size_t indent;
};

TEST(Text, TabsStopAtEachEighth) {
  static constexpr IndentRow kRows[] = {
      {"x", 0},      {" x", 1},         {"\tx", 8},
      {"  \tx", 8},  {"       \tx", 8}, {"        \tx", 16},
      {"\t\tx", 16}, {"\t x", 9},       {"\t \tx", 16},
      {"", 0},       {"   ", 3},
  };
  for (const IndentRow& row : kRows) EXPECT_EQ(indentOf(row.line), row.indent) << row.line;
}

// Each line with its number and the place where it begins.
TEST(Text, LinesEndWithAFeedAReturnOrBoth) {
  struct Row {
    const char* text;
    std::uint32_t number;
    std::size_t offset;
  };
  const Row rows[] = {{"a", 7, 0}, {"bc", 8, 3}, {"d", 9, 6},
                      {"", 10, 8}, {"e", 11, 9}, {"f", 12, 11}};
  Lines lines("a\r\nbc\rd\n\ne\n\rf", 7);
  for (const Row& row : rows) {
    if (row.number == 12) {
      // A return behind a feed ends a line of its own.
      ASSERT_TRUE(lines.next());
      EXPECT_EQ(lines.line(), "");
      EXPECT_EQ(lines.number(), 12U);
      continue;
    }
    ASSERT_TRUE(lines.next());
    EXPECT_EQ(lines.line(), row.text);
    EXPECT_EQ(lines.number(), row.number);
    EXPECT_EQ(lines.offset(), row.offset);
  }
  ASSERT_TRUE(lines.next());
  EXPECT_EQ(lines.line(), "f");
  EXPECT_EQ(lines.number(), 13U);
  EXPECT_EQ(lines.behind(), 13U);
  EXPECT_FALSE(lines.next());
}

struct KeyRow {
  const char* line;
  const char* key;
  const char* value;
};

TEST(Text, KeyAndValueMayStandInBrackets) {
  static constexpr KeyRow kRows[] = {
      {"  KEY  a b  ", "KEY", "a b"}, {"KEY", "KEY", ""},          {"<KEY> a b", "KEY", "a b"},
      {"<KEY> <a b>", "KEY", "a b"},  {"<KEY a b>", "KEY", "a b"}, {"KEY <a b>", "KEY", "a b"},
      {"KEY <a", "KEY", "<a"},        {"KEY a>", "KEY", "a>"},     {"<KEY", "<KEY", ""},
      {"KEY <>", "KEY", ""},          {"KEY <", "KEY", "<"},       {"", "", ""},
  };
  for (const KeyRow& row : kRows) {
    const KeyValue entry = keyValueOf(row.line);
    EXPECT_EQ(entry.key, row.key) << row.line;
    EXPECT_EQ(entry.value, row.value) << row.line;
  }
}

TEST(Text, CommentsBeginWithTheseSigns) {
  for (const char* line : {"! a", "# a", "; a", "// a"}) EXPECT_TRUE(isComment(line)) << line;
  for (const char* line : {"/ a", "a !", "", "-- a", "*"}) EXPECT_FALSE(isComment(line)) << line;
}

// 40 bytes are shown, of 41 three dots stand for the last.
TEST(Text, IsCutBehind40Bytes) {
  EXPECT_EQ(harmless(std::string(40, 'x')), std::string(40, 'x'));
  EXPECT_EQ(harmless(std::string(41, 'x')), std::string(40, 'x') + "...");
  EXPECT_EQ(harmless("a\x7F\x1Fz\x80 ~"), "a??z? ~");
  EXPECT_EQ(harmless("\xC3\x98 100"), "\xC3\x98 100");
}

struct PatienceRow {
  std::size_t lines;  // of no meaning, before a pipe
  bool isPiping;
};

TEST(Layout, LooksAtAHundredLinesForAWordOfPiping) {
  static constexpr PatienceRow kRows[] = {{0, true}, {99, true}, {100, false}, {1000, false}};
  for (const PatienceRow& row : kRows) {
    std::string text;
    for (std::size_t i = 0; i < row.lines; ++i) text += "hello there\n! remarks do not count\n\n";
    text += "PIPE\n    END-POINT 0 0 0 100\n";
    EXPECT_EQ(layoutOf(text).isPiping, row.isPiping) << row.lines;
  }
}

struct LayoutRow {
  const char* text;
  std::size_t margin;
  std::size_t pointIndent;
  bool isByName;
};

TEST(Layout, IsThatOfMostLines) {
  static constexpr LayoutRow kRows[] = {
      {"PIPE\n    END-POINT 0 0 0\n", 0, 4, false},
      {"PIPE\nEND-POINT 0 0 0\n", 0, 0, true},
      {"PIPE\n", 0, 1, false},
      {"  PIPE\n", 2, 3, false},
      {"  PIPE\n      END-POINT 0 0 0\n", 2, 6, false},
      {"PIPE\n    END-POINT 0 0 0\n  PIPE\n  PIPE\n", 2, 4, false},
      // Of equally many the smallest.
      {"PIPE\n  END-POINT 0 0 0\n      END-POINT 0 0 0\n", 0, 2, false},
      {"PIPE\n  END-POINT 0 0 0\n      END-POINT 0 0 0\n      CENTRE-POINT 0 0 0\n", 0, 6, false},
      // Behind MATERIALS nothing counts.
      {"PIPE\n    END-POINT 0 0 0\nMATERIALS\n  PIPE\n  PIPE\n  PIPE\n", 0, 4, false},
  };
  for (const LayoutRow& row : kRows) {
    const Layout layout = layoutOf(row.text);
    EXPECT_EQ(layout.margin, row.margin) << row.text;
    EXPECT_EQ(layout.pointIndent, row.pointIndent) << row.text;
    EXPECT_EQ(layout.isByName, row.isByName) << row.text;
  }
}

struct WordRow {
  const char* word;
  Word meaning;
};

TEST(Words, MeanThis) {
  static constexpr WordRow kRows[] = {
      {"WELD", Word::kWeld},
      {"MESSAGE-SQUARE", Word::kMessage},
      {"MESSAGE-TEXT", Word::kText},
      {"END-CONNECTION-PIPELINE", Word::kMark},
      {"END-POSITION-OPEN", Word::kMark},
      {"START-CONNECTION", Word::kMark},
      {"START-POSITION", Word::kMark},
      {"INSTRUMENT-BALLOON", Word::kMark},
      {"SYMBOL", Word::kNothing},
      {"COORDINATE-SYMBOL", Word::kNothing},
      {"REFERENCE-LOCATION", Word::kNothing},
      {"FLOW-ARROW", Word::kNothing},
      {"LOCATION-POINT", Word::kNothing},
      {"CLEANING-SYMBOL", Word::kNothing},
      {"BOLT", Word::kNothing},
      {"TEXT", Word::kText},
      {"NOTE", Word::kText},
      {"LABEL", Word::kText},
      {"DESCRIPTION", Word::kText},
      {"MATERIALS", Word::kMaterials},
      {"MATERIAL", Word::kHeader},
      {"MATERIAL-IDENTIFIER", Word::kAttribute},
      {"MATERIAL-LIST", Word::kAttribute},
      {"ATTRIBUTE", Word::kHeader},
      {"ATTRIBUTE0", Word::kHeader},
      {"ATTRIBUTE9", Word::kHeader},
      {"ATTRIBUTE-X", Word::kHeader},
      {"ATTRIBUTEX", Word::kUnknown},
      {"ATTRIBUTE:", Word::kUnknown},
      {"ATTRIBUTE/", Word::kUnknown},
      {"PIPELINE-REFERENCE", Word::kHeader},
      {"PIPING-SPEC", Word::kHeader},
      {"UNITS-BORE", Word::kHeader},
      {"SUPPORT", Word::kBody},
      {"SUPPORT-DIRECTION", Word::kAttribute},
      {"SUPPORT-ANGLE", Word::kAttribute},
      {"BEND", Word::kBody},
      {"BEND-RADIUS", Word::kAttribute},
      {"BOLT-LENGTH", Word::kAttribute},
      {"BOLT-QUANTITY", Word::kAttribute},
      {"FLOW", Word::kAttribute},
      {"SPOOL", Word::kHeader},
      {"SKEY", Word::kAttribute},
      {"SPINDLE-DIRECTION", Word::kAttribute},
      {"TAP-CONNECTION", Word::kAttribute},
      {"WEIGHT", Word::kAttribute},
      {"STYLE-FILES", Word::kHeader},
      {"-FILES", Word::kHeader},
      {"FILES", Word::kUnknown},
      {"PIPE", Word::kBody},
      {"FOO", Word::kUnknown},
      {"END-POINT", Word::kPoint},
  };
  for (const WordRow& row : kRows) EXPECT_EQ(wordOf(row.word), row.meaning) << row.word;
}

struct RoleRow {
  const char* key;
  Role role;
};

TEST(Words, OfPointsTellTheirRole) {
  static constexpr RoleRow kRows[] = {
      {"END-POINT", Role::kEnd},
      {"end-point", Role::kEnd},
      {"CENTRE-POINT", Role::kCentre},
      {"center-point", Role::kCentre},
      {"CO-ORDS", Role::kPlace},
      {"coords", Role::kPlace},
      {"BRANCH1-POINT", Role::kBranch},
      {"branch2-point", Role::kBranch},
      {"BRANCH10-POINT", Role::kBranch},
      {"BRANCH-POINT", Role::kBranch},
      {"BRANCH1", Role::kNone},
      {"BRANCHX-POINT", Role::kNone},
      {"BRANCH:-POINT", Role::kNone},
      {"END-POINTS", Role::kNone},
      {"CENTRE", Role::kNone},
      {"POINT", Role::kNone},
      {"", Role::kNone},
  };
  for (const RoleRow& row : kRows) EXPECT_EQ(roleOf(row.key), row.role) << row.key;
}

}  // namespace
}  // namespace Vesk::Pcf
