// SPDX-License-Identifier: MIT
#include "check/LineRules.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "input/ReaderTesting.h"
#include "output/RecordLayout.h"

using namespace Vesk;
using namespace VeskTool;

namespace {

std::vector<LineFault> faults(const Recs& lines, std::int32_t mode) {
  std::vector<LineFault> found;
  checkLines(lines, mode, [&](LineFault fault) { found.push_back(std::move(fault)); });
  return found;
}

TEST(LineRulesTest, ControlCharactersAreFoundAtEveryPlace) {
  for (std::size_t length = 21; length < 60; ++length) {
    const std::string line = tokenLine("00", "l ", std::string(length - 21, 'a'));
    EXPECT_TRUE(faults({line}, kTokens).empty());
    for (std::size_t i = 14; i < length; ++i) {
      std::string damaged = line;
      damaged[i] = '\x1f';
      const std::vector<LineFault> found = faults({damaged}, kTokens);
      ASSERT_EQ(found.size(), 1u) << length << ' ' << i;
      EXPECT_EQ(found[0].code, "V019");
      EXPECT_EQ(found[0].column, i);
      EXPECT_EQ(found[0].message, "control character 0x1f");
    }
  }
}

TEST(LineRulesTest, AllBytesBelow32And127AreControlCharacters) {
  for (int byte = 0; byte < 256; ++byte) {
    // Between bytes that a sum over eight of them could carry into.
    for (const char other : {' ', '\x7e', '\x80', '\xff'}) {
      std::string text(8, other);
      text[3] = static_cast<char>(byte);
      const bool expected = byte < 32 || byte == 127;
      const Recs lines{tokenLine("00", "x ", "1" + text + "x")};
      EXPECT_EQ(faults(lines, kTokens).size(), expected ? 1u : 0u) << byte << ' ' << int{other};
    }
  }
}

TEST(LineRulesTest, EachLineOfAnElementIsLookedAt) {
  const Recs lines{fixedLine("60", "RED", "1"), fixedLine("61", "RED", "1 ")};
  const std::vector<LineFault> found = faults(lines, kFixedColumns);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].code, "V032");
  EXPECT_EQ(found[0].line, 1u);
  EXPECT_EQ(found[0].column, 25u);
}

TEST(LineRulesTest, SizesOfColumns) {
  const std::string full = fixedLine("60", "BOX", std::string(232, '1'));
  ASSERT_EQ(full.size(), 256u);
  EXPECT_TRUE(faults({full}, kFixedColumns).empty());
  EXPECT_EQ(faults({full + '1'}, kFixedColumns).size(), 1u);
  // The heading of 24 comes on top.
  EXPECT_TRUE(faults({full, full + std::string(24, '1')}, kFixedColumns).empty());
  EXPECT_EQ(faults({full, full + std::string(25, '1')}, kFixedColumns).size(), 1u);
}

TEST(LineRulesTest, ShortLinesAreNoAccident) {
  for (std::size_t length = 0; length < 25; ++length) {
    const std::string line = fixedLine("60", "CYL", "").substr(0, length);
    EXPECT_TRUE(faults({line}, kFixedColumns).empty()) << length;
    EXPECT_TRUE(faults({line}, kTokens).empty()) << length;
  }
}

}  // namespace
