// SPDX-License-Identifier: MIT
#include "prims/CentroidAccumulator.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace Vesk;

namespace {

TEST(CentroidAccumulatorTest, StartsAtZero) {
  EXPECT_EQ(CentroidAccumulator().point(), GePoint(0, 0, 0));
}

TEST(CentroidAccumulatorTest, FirstPointReplacesTheStart) {
  CentroidAccumulator mean;
  mean.add({1, 2, 3}, 0.25);
  EXPECT_EQ(mean.point(), GePoint(1, 2, 3));
}

TEST(CentroidAccumulatorTest, MeanIsWeighted) {
  CentroidAccumulator mean;
  mean.add({0, 0, 0}, 1.0);
  mean.add({4, 8, -4}, 3.0);  // 3/4 of the way
  EXPECT_EQ(mean.point(), GePoint(3, 6, -3));
  mean.add({7, 6, 1}, 4.0);  // half of the way
  EXPECT_EQ(mean.point(), GePoint(5, 6, -1));
}

TEST(CentroidAccumulatorTest, CommonFactorOfTheWeightsChangesNothing) {
  CentroidAccumulator whole;
  CentroidAccumulator half;
  for (const double x : {1.0, 2.0, 5.0}) {
    whole.add({x, -x, x * x}, x);
    half.add({x, -x, x * x}, x / 2.0);
  }
  EXPECT_EQ(whole.point(), half.point());
}

TEST(CentroidAccumulatorTest, ZeroTotalLeavesThePoint) {
  CentroidAccumulator mean;
  mean.add({9, 9, 9}, 0.0);
  EXPECT_EQ(mean.point(), GePoint(0, 0, 0));
  mean.add({1, 2, 3}, 2.0);
  mean.add({5, 5, 5}, -2.0);
  EXPECT_EQ(mean.point(), GePoint(1, 2, 3));
  // The total is 0 now, so that what follows counts alone.
  mean.add({7, 8, 9}, 1.0);
  EXPECT_EQ(mean.point(), GePoint(7, 8, 9));
}

TEST(CentroidAccumulatorTest, NotANumberCountsAsNotZero) {
  CentroidAccumulator mean;
  mean.add({1, 2, 3}, NAN);
  EXPECT_TRUE(std::isnan(mean.point().x));
}

}  // namespace
