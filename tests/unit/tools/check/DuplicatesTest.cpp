// SPDX-License-Identifier: MIT
#include "check/Duplicates.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <unordered_map>

#include "input/ReaderTesting.h"
#include "vesk/RecordFile.h"

using namespace Vesk;
using namespace VeskTool;

namespace {

ShapeKey keyOf(const std::string& keyword, const std::string& data) {
  const std::string text = tokenLine("00", keyword, data + '\n');
  RecordFile file(std::make_unique<TextSource>(text), "f");
  EXPECT_EQ(file.next(), RecordFile::Found::kElement) << text;
  return shapeKey(*file.element().geo);
}

bool isSame(const ShapeKey& a, const ShapeKey& b) { return a.high == b.high && a.low == b.low; }

struct Row {
  const char* name;
  const char* keyword;
  const char* data;
  const char* other;
  bool same;
};

const Row kRows[] = {
    {"OtherEndOfACylinder", "c ", "1 2 3,10 0 0,20", "11 2 3,-10 0 0,20", true},
    {"OtherDiameter", "c ", "1 2 3,10 0 0,20", "1 2 3,10 0 0,20.001", false},
    {"LessThanAThousandth", "c ", "1 2 3,10 0 0,20", "1 2 3,10 0 0,20.0004", true},
    {"NegativeZero", "c ", "0 0 0,10 0 0,20", "-0 0 -0,10 -0 0,20", true},
    {"OtherEndOfACone", "n ", "1 2 3,10 0 0,20,5", "11 2 3,-10 0 0,5,20", true},
    {"ConeTheOtherWayRound", "n ", "1 2 3,10 0 0,20,5", "1 2 3,10 0 0,5,20", false},
    {"OtherEndOfATorus", "t ", "1 2 3,9 0 0,0 9 0,4", "1 2 3,0 9 0,9 0 0,4", true},
    {"OtherBend", "t ", "1 2 3,9 0 0,0 9 0,4", "1 2 3,9 0 0,0 0 9,4", false},
    {"OtherEndOfAnElbow", "e ", "1 2 3,9 0 0,0 9 0,4,5", "1 2 3,0 9 0,9 0 0,4,5", true},
    {"WidthAndDepthExchanged", "e ", "1 2 3,9 0 0,0 9 0,4,5", "1 2 3,9 0 0,0 9 0,5,4", false},
    {"OtherWidthOfAnElbow", "e ", "1 2 3,9 0 0,0 9 0,4,5", "1 2 3,9 0 0,0 9 0,4,6", false},
    {"OtherDepthOfAnElbow", "e ", "1 2 3,9 0 0,0 9 0,4,5", "1 2 3,9 0 0,0 9 0,3,5", false},
    {"OtherDiameterOfATorus", "t ", "1 2 3,9 0 0,0 9 0,4", "1 2 3,9 0 0,0 9 0,5", false},
    // The same box from the corner (11, 2, 3) and with its edges in other order.
    {"OtherCornerOfABox", "b ", "10 0 0,1 2 3,0 20 0,0 0 30", "-10 0 0,11 2 3,0 0 30,0 20 0", true},
    {"OtherBox", "b ", "10 0 0,1 2 3,0 20 0,0 0 30", "20 0 0,1 2 3,0 10 0,0 0 30", false},
    {"OtherPointOrder", "l ", "pt 0 0 0,pt 1 0 0", "pt 1 0 0,pt -1 0 0", false},
    {"FaceOfMorePoints", "g ", "pt 0 0 0,pt 1 0 0,pt 0 1 0", "pt 0 0 0,pt 1 0 0,pt 0 1 0,pt 0 1 0",
     false},
};

TEST(DuplicatesTest, KeysAreEqualWhereShapesAre) {
  for (const Row& row : kRows) {
    EXPECT_EQ(isSame(keyOf(row.keyword, row.data), keyOf(row.keyword, row.other)), row.same)
        << row.name;
  }
}

TEST(DuplicatesTest, KindsDiffer) {
  EXPECT_FALSE(
      isSame(keyOf("l ", "pt 0 0 0,pt 1 0 0,pt 0 1 0"), keyOf("g ", "pt 0 0 0,pt 1 0 0,pt 0 1 0")));
}

TEST(DuplicatesTest, SetGivesTheFirstLine) {
  ShapeSet set;
  EXPECT_EQ(set.insert({5, 6ULL << 40}, 10), 0u);
  EXPECT_EQ(set.insert({5, 6ULL << 40}, 11), 10u);
  EXPECT_EQ(set.insert({5, 7ULL << 40}, 12), 0u);
  EXPECT_EQ(set.insert({5, 7ULL << 40}, 13), 12u);
  EXPECT_EQ(set.insert({6, 6ULL << 40}, ShapeSet::kLastLine + 5), 0u);
  EXPECT_EQ(set.insert({6, 6ULL << 40}, 14), ShapeSet::kLastLine);
  EXPECT_EQ(set.insert({0, 0}, 15), 0u);
  EXPECT_EQ(set.insert({0, 0}, 16), 15u);
  EXPECT_EQ(set.size(), 4u);
}

// Beside the standard library's map; the keys fall on few places, so that they
// run into each other.
TEST(DuplicatesTest, SetIsTheSameAsAMap) {
  std::mt19937_64 random(1);
  ShapeSet set;
  std::unordered_map<std::uint64_t, std::uint64_t> map;
  for (std::uint64_t line = 1; line <= 20000; ++line) {
    const std::uint64_t key = random() % 15000;
    const auto [found, isNew] = map.try_emplace(key, line);
    EXPECT_EQ(set.insert({key % 300, (key + 1) << 40}, line), isNew ? 0 : found->second);
  }
  EXPECT_EQ(set.size(), map.size());
}

}  // namespace
