// SPDX-License-Identifier: MIT
#include "tiles/DetailSum.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <vector>

namespace VeskTest {
namespace {

using VeskTool::DetailSum;
using VeskTool::ElementDetail;

// Errors are powers of the square root of two.
struct LevelCase {
  const char* name;
  double length;
  double error;  // the lowest that is no less
};

// clang-format off
const LevelCase kLevels[] = {
    {"APowerOfTwoIsItsOwn", 4.0, 4.0},
    {"OneIsItsOwn", 1.0, 1.0},
    {"BetweenPowersItIsTheNextRoot", 1.1, std::sqrt(2.0)},
    {"AboveTheRootItIsTheNextPower", 1.5, 2.0},
    {"AFraction", 0.3, std::sqrt(0.125)},
    {"AThousand", 1000.0, 1024.0},
};
// clang-format on

TEST(DetailSumTest, TheErrorOfALengthIsTheLowestThatIsNoLess) {
  for (const LevelCase& each : kLevels) {
    EXPECT_DOUBLE_EQ(DetailSum::errorOf(DetailSum::levelOf(each.length)), each.error) << each.name;
  }
  EXPECT_EQ(DetailSum::levelOf(0.0), 0U);
  EXPECT_EQ(DetailSum::levelOf(1e300), DetailSum::kLevels - 1);
}

struct SumCase {
  const char* name;
  std::uint64_t most;
  double error;
  std::uint64_t triangles;
  std::uint64_t leftOut;  // of the largest that are left out
};

// Three elements: 2 large, 100 triangles or 10 within 0.5; 8 large, 200 or 20 within 1;
// 64 large, 12 either way.
constexpr ElementDetail kElements[] = {
    {2.0, 0.5, 100, 10}, {8.0, 1.0, 200, 20}, {64.0, 0.0, 12, 12}};

// clang-format off
constexpr SumCase kSums[] = {
    {"AllFine", 312, 0.0, 312, 0},
    {"TheFirstIsCoarse", 311, 0.5, 222, 0},          // 10 + 200 + 12
    {"TheSecondToo", 221, 1.0, 42, 0},               // 10 + 20 + 12
    {"TheFirstIsLeftOut", 41, 2.0, 32, 10},          // 20 + 12
    {"TheSecondToo", 31, 8.0, 12, 20},
    {"All", 11, 64.0, 0, 12},
};
// clang-format on

TEST(DetailSumTest, TheErrorIsTheLowestThatTakesNoMoreTriangles) {
  DetailSum sum;
  for (const ElementDetail& each : kElements) sum.add(each);
  EXPECT_EQ(sum.fine(), 312U);
  for (const SumCase& each : kSums) {
    const std::size_t level = sum.levelFor(each.most);
    if (each.error > 0.0) {
      EXPECT_DOUBLE_EQ(DetailSum::errorOf(level), each.error) << each.name << each.most;
    } else {
      EXPECT_EQ(level, 0U);
    }
    EXPECT_EQ(sum.triangles(level), each.triangles) << each.name << each.most;
    EXPECT_EQ(sum.leftOut(level), each.leftOut) << each.name << each.most;
  }
}

TEST(DetailSumTest, ASubsetNeedsNoHigherError) {
  for (unsigned set = 0; set < 8; ++set) {
    for (unsigned part = 0; part < 8; ++part) {
      if ((part & ~set) != 0) continue;
      DetailSum whole;
      DetailSum some;
      for (unsigned i = 0; i < 3; ++i) {
        if ((set >> i & 1U) != 0) whole.add(kElements[i]);
        if ((part >> i & 1U) != 0) some.add(kElements[i]);
      }
      for (std::uint64_t most = 0; most < 330; most += 3) {
        EXPECT_LE(some.levelFor(most), whole.levelFor(most)) << set << ' ' << part << ' ' << most;
      }
    }
  }
}

}  // namespace
}  // namespace VeskTest
