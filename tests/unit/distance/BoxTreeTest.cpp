// SPDX-License-Identifier: MIT
#include "distance/BoxTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "distance/Body.h"
#include "support/Kinds.h"

namespace VeskTest {
namespace {

using namespace Vesk;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

std::vector<std::uint32_t> found(const BoxTree& tree, const Extents& box, double margin) {
  std::vector<std::uint32_t> all;
  tree.forEachNear(box, margin, [&](std::uint32_t i) {
    all.push_back(i);
    return true;
  });
  std::sort(all.begin(), all.end());
  return all;
}

TEST(BoxTree, FindsWhatALoopFinds) {
  Random random(1);
  for (const std::size_t count : {0U, 1U, 4U, 5U, 300U}) {
    std::vector<Extents> boxes;
    for (std::size_t i = 0; i < count; ++i) {
      const GePoint p = random.point();
      boxes.emplace_back(p, p + GeVector(random.between(0, 20), random.between(0, 20), 3));
    }
    const BoxTree tree(boxes);
    for (int n = 0; n < 50; ++n) {
      const GePoint p = random.point();
      const Extents box(p, p + GeVector(10, 10, 10));
      const double margin = random.between(0, 10);
      std::vector<std::uint32_t> expected;
      for (std::uint32_t i = 0; i < count; ++i) {
        const Extents blown(box.min - GeVector(margin, margin, margin),
                            box.max + GeVector(margin, margin, margin));
        if (gapOf(boxes[i], blown) == 0.0) expected.push_back(i);
      }
      EXPECT_EQ(found(tree, box, margin), expected);
    }
  }
}

TEST(BoxTree, TakesBoxesInOnePlace) {
  const std::vector<Extents> boxes(1000, Extents({0, 0, 0}, {1, 1, 1}));
  EXPECT_EQ(found(BoxTree(boxes), {{0.5, 0.5, 0.5}, {0.6, 0.6, 0.6}}, 0).size(), 1000U);
}

TEST(BoxTree, LeavesOutWhatHasNoPoint) {
  const std::vector<Extents> boxes = {{},
                                      {{kNan, 0, 0}, {1, 1, 1}},
                                      {{0, 0, 0}, {1, 1, 1}},
                                      {{0, 2, 0}, {1, 1, 1}},
                                      {{0, 0, 2}, {1, 1, 1}}};
  EXPECT_EQ(found(BoxTree(boxes), {{-9, -9, -9}, {9, 9, 9}}, 0), std::vector<std::uint32_t>{2});
}

TEST(BoxTree, EndsWhenItIsTold) {
  const std::vector<Extents> boxes(10, Extents({0, 0, 0}, {1, 1, 1}));
  int seen = 0;
  EXPECT_FALSE(BoxTree(boxes).forEachNear(boxes[0], 0, [&](std::uint32_t) { return ++seen < 3; }));
  EXPECT_EQ(seen, 3);
}

}  // namespace
}  // namespace VeskTest
