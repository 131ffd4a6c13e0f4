// SPDX-License-Identifier: MIT
#include "shape/QuadSplit.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace VeskTest {
namespace {

using namespace Vesk;

struct QuadCase {
  const char* name;
  GePoint a, b, c, d;
  bool fromFirst;
  bool crosses;

  friend std::ostream& operator<<(std::ostream& os, const QuadCase& each) {
    return os << each.name;
  }
};

// With d at (1 + e, 1) beside c the sides b c and d a cross: the worse triangle of
// a c is a c d with -e of the whole, of b d it is b c d with -e too. Above
// a part in 1e9 that is no rounding.
//
// clang-format off
const QuadCase kQuads[] = {
    {"Square", {0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, true, false},
    {"DentedAtA", {1, 1, 0}, {4, 0, 0}, {0, 0, 0}, {0, 4, 0}, true, false},
    {"DentedAtB", {0, 4, 0}, {1, 1, 0}, {4, 0, 0}, {0, 0, 0}, false, false},
    {"DentedAtC", {0, 0, 0}, {0, 4, 0}, {1, 1, 0}, {4, 0, 0}, true, false},
    {"DentedAtD", {4, 0, 0}, {0, 0, 0}, {0, 4, 0}, {1, 1, 0}, false, false},
    {"Crossed", {0, 0, 0}, {4, 4, 0}, {4, 0, 0}, {0, 3, 0}, true, true},
    {"TwoCornersAreOne", {0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {1, 1, 0}, true, false},
    {"CrossedByRounding", {0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {1 + 0x1p-31, 1, 0}, true, false},
    {"CrossedByMoreThanRounding", {0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {1 + 0x1p-29, 1, 0}, true, true},
};
// clang-format on

class QuadSplitTest : public testing::TestWithParam<QuadCase> {};

TEST_P(QuadSplitTest, TakesTheDiagonalThatLooksTheWayOfTheWhole) {
  const QuadCase& each = GetParam();
  const QuadSplit split = splitQuad(each.a, each.b, each.c, each.d);
  EXPECT_EQ(split.crosses, each.crosses);
  if (!each.crosses) {
    EXPECT_EQ(split.fromFirst, each.fromFirst);
  }
}

// The same shape whichever corner comes first, and seen from behind.
TEST_P(QuadSplitTest, FirstCornerAndDirectionDoNotMatter) {
  const QuadCase& each = GetParam();
  EXPECT_EQ(splitQuad(each.b, each.c, each.d, each.a).crosses, each.crosses);
  EXPECT_EQ(splitQuad(each.d, each.c, each.b, each.a).crosses, each.crosses);
}

INSTANTIATE_TEST_SUITE_P(Quads, QuadSplitTest, testing::ValuesIn(kQuads),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace VeskTest
