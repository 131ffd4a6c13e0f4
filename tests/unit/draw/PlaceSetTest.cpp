// SPDX-License-Identifier: MIT
#include "draw/PlaceSet.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace Vesk {
namespace {

struct SecondCase {
  const char* name;
  PlaceSet::Place first;
  PlaceSet::Place second;
  bool isNew;
};

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();

constexpr SecondCase kSeconds[] = {
    {"TheSamePlaceIsThereAlready", {1, 2, 3, 4}, {1, 2, 3, 4}, false},
    {"EveryNumberCounts", {1, 2, 3, 4}, {1, 2, 3, 5}, true},
    {"TheFirstNumberCounts", {0, 2, 3, 4}, {1, 2, 3, 4}, true},
    {"EndsAreNotExchanged", {1, 2, 3, 4}, {3, 4, 1, 2}, true},
    {"TheSignCounts", {1, 2, 3, 4}, {-1, 2, 3, 4}, true},
    {"NothingIsAPlaceToo", {1, 2, 3, 4}, {0, 0, 0, 0}, true},
    {"LargestNumbersAreAPlace",
     {-kMost, -kMost, -kMost, -kMost},
     {kMost, kMost, kMost, kMost},
     true},
};

class PlaceSetTest : public testing::TestWithParam<SecondCase> {};

TEST_P(PlaceSetTest, TellsWhetherTheSecondIsNew) {
  PlaceSet places(2);
  EXPECT_TRUE(places.insert(GetParam().first));
  EXPECT_EQ(places.insert(GetParam().second), GetParam().isNew);
}

INSTANTIATE_TEST_SUITE_P(Draw, PlaceSetTest, testing::ValuesIn(kSeconds),
                         [](const auto& each) { return each.param.name; });

// All of them, though many begin their search where another stands.
TEST(PlaceSet, HoldsAsManyAsWereForetold) {
  constexpr std::int32_t kCount = 10000;
  PlaceSet places(kCount);
  for (std::int32_t i = 0; i < kCount; ++i) EXPECT_TRUE(places.insert({i % 7, i, -i, i / 3})) << i;
  for (std::int32_t i = 0; i < kCount; ++i) EXPECT_FALSE(places.insert({i % 7, i, -i, i / 3})) << i;
}

}  // namespace
}  // namespace Vesk
