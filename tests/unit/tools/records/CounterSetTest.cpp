// SPDX-License-Identifier: MIT
#include "records/CounterSet.h"

#include <gtest/gtest.h>

namespace VeskTool {
namespace {

TEST(CounterSet, HoldsWhatWasAddedAndNothingElse) {
  CounterSet set;
  EXPECT_TRUE(set.isEmpty());
  EXPECT_EQ(set.largest(), -1);
  EXPECT_EQ(set.smallest(), -1);
  set.add(3, 5);
  set.add(9);
  for (int i = -2; i < 12; ++i) EXPECT_EQ(set.has(i), (i >= 3 && i <= 5) || i == 9) << i;
  EXPECT_EQ(set.smallest(), 3);
  EXPECT_EQ(set.largest(), 9);
  EXPECT_TRUE(set.hasAny(-5, 3));
  EXPECT_FALSE(set.hasAny(6, 8));
  EXPECT_FALSE(set.hasAny(10, 46655));
}

TEST(CounterSet, LeavesOutWhatIsNoCounter) {
  CounterSet set;
  set.add(-7);
  set.add(46656);
  EXPECT_TRUE(set.isEmpty());
  set.add(-3, 99999);
  EXPECT_EQ(set.smallest(), 0);
  EXPECT_EQ(set.largest(), 46655);
}

TEST(CounterSet, MeetsAnotherInACommonCounterOnly) {
  CounterSet a;
  CounterSet b;
  a.add(1, 10);
  b.add(11, 20);
  EXPECT_FALSE(a.meets(b));
  EXPECT_FALSE(a.meets(CounterSet()));
  b.add(10);
  EXPECT_TRUE(a.meets(b));
  EXPECT_TRUE(b.meets(a));
  a.add(b);
  EXPECT_EQ(a.largest(), 20);
}

}  // namespace
}  // namespace VeskTool
