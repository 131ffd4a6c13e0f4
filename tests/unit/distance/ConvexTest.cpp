// SPDX-License-Identifier: MIT
#include "distance/Convex.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace VeskTest {
namespace {

using namespace Vesk;

struct Disc {
  GeVector centre;
  GeVector normal;
  double radius;
};

struct PipeCase {
  const char* name;
  std::vector<Disc> discs;
  bool isPipe;

  friend std::ostream& operator<<(std::ostream& os, const PipeCase& each) {
    return os << each.name;
  }
};

// clang-format off
const PipeCase kPipes[] = {
    {"TwoEqualDiscsFacingEachOther", {{{1, 2, 3}, {0, 0, 1}, 5}, {{1, 2, 9}, {0, 0, 1}, 5}}, true},
    {"APoint", {}, false},
    {"OneDisc", {{{0, 0, 0}, {0, 0, 1}, 5}}, false},
    {"TwoSizes", {{{0, 0, 0}, {0, 0, 1}, 5}, {{0, 0, 9}, {0, 0, 1}, 4}}, false},
    {"FirstDiscTilted", {{{0, 0, 0}, {0.6, 0, 0.8}, 5}, {{0, 0, 9}, {0, 0, 1}, 5}}, false},
    {"SecondDiscTilted", {{{0, 0, 0}, {0, 0, 1}, 5}, {{0, 0, 9}, {0.6, 0, 0.8}, 5}}, false},
    {"TwoDiscsInOnePlace", {{{0, 0, 0}, {0, 0, 1}, 5}, {{0, 0, 0}, {0, 0, 1}, 5}}, false},
};
// clang-format on

class ConvexPipe : public testing::TestWithParam<PipeCase> {};

TEST_P(ConvexPipe, IsTwoEqualDiscsFacingEachOther) {
  Convex convex;
  for (const Disc& each : GetParam().discs) convex.addDisc(each.centre, each.normal, each.radius);
  if (GetParam().discs.empty()) convex.addPoint({1, 2, 3});
  const std::optional<Convex::Pipe> pipe = convex.pipe();
  ASSERT_EQ(pipe.has_value(), GetParam().isPipe);
  if (!pipe) return;
  EXPECT_EQ(pipe->from, GetParam().discs[0].centre);
  EXPECT_EQ(pipe->to, GetParam().discs[1].centre);
  EXPECT_EQ(pipe->radius, GetParam().discs[0].radius);
}

INSTANTIATE_TEST_SUITE_P(Of, ConvexPipe, testing::ValuesIn(kPipes),
                         [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace VeskTest
