// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "prims/TagLines.h"
#include "support/RecordLines.h"

using namespace Vesk;
using namespace VeskTest;

namespace {

struct LinesCase {
  const char* name;
  std::vector<TagEntry> tags;
  Lines lines;
  friend std::ostream& operator<<(std::ostream& os, const LinesCase& row) { return os << row.name; }
};

const TagEntry kBare{"a", {}};
const TagEntry kPair{"b", {{1, 2}}};

// clang-format off
const LinesCase kLines[] = {
    {"None",             {},             {}},
    {"Bare",             {kBare},        {"63|000|    *a*"}},
    {"WithValues",       {kPair},        {"64|000|    *b*" + fields({1, 2})}},
    {"NameWithBlanks",   {{"a b", {}}},  {"63|000|    *a b*"}},
    {"BareComeFirst",    {kPair, kBare, kPair},
     {"63|000|    *a*", "64|000|    *b*" + fields({1, 2}), "64|000|    *b*" + fields({1, 2})}},
};
// clang-format on

TEST(TagEntryTest, FixedColumnsHaveALineForTheBareAndOneForEachOther) {
  for (const LinesCase& row : kLines) {
    Output out = assembler(2);
    writeTagLines(out, row.tags);
    EXPECT_EQ(shown(out), row.lines) << row;
  }
}

TEST(TagEntryTest, SwitchedOffWritesNothing) {
  Output out = assembler(2);
  out.writeTags = false;
  writeTagLines(out, {kBare, kPair});
  EXPECT_EQ(shown(out), Lines{});
}

TEST(TagEntryTest, TokenHasPointDecimals) {
  Output out = assembler(3);
  out.pointDecimals = 2;
  std::string token = tagToken({"name", {}});
  EXPECT_EQ(token, "ed name");
  appendTagValues(token, {1.5, -2.346}, out);
  appendTagValues(token, {0, 100}, out);
  EXPECT_EQ(token, "ed name 1.5 -2.35 0 100");
}

}  // namespace
