// SPDX-License-Identifier: MIT
#include "prims/Orientation.h"

#include <gtest/gtest.h>

using namespace Vesk;

namespace {

int signOf(double number) { return number > 0.0 ? 1 : number < 0.0 ? -1 : 0; }

TEST(OrientationTest, IsTwiceTheSignedArea) {
  EXPECT_EQ(orientation({0, 0}, {4, 0}, {0, 3}), 12.0);
  EXPECT_EQ(orientation({0, 0}, {0, 3}, {4, 0}), -12.0);
  EXPECT_EQ(orientation({1, 1}, {2, 2}, {5, 5}), 0.0);
  EXPECT_EQ(orientation({1, 7}, {1, 7}, {5, 5}), 0.0);
}

// A point is left of the line from (12, 12) to (24, 24) if its y is larger than
// its x. Near (0.5, 0.5) the plain formula gets many of these signs wrong.
TEST(OrientationTest, SignIsExactOneUnitFromTheLine) {
  const double unit = 0x1p-53;
  for (int i = 0; i < 64; ++i) {
    for (int j = 0; j < 64; ++j) {
      const PlanePoint p{0.5 + i * unit * 2, 0.5 + j * unit * 2};
      EXPECT_EQ(signOf(orientation({12, 12}, {24, 24}, p)), signOf(j - i)) << i << ' ' << j;
      EXPECT_EQ(signOf(orientation({12, 12}, p, {24, 24})), signOf(i - j)) << i << ' ' << j;
    }
  }
}

// All on the line y = 3x; 2^-70 more in y is left of it on the way up. The
// number 3t + 2^-70 is a double: t is a small multiple of 2^-30.
TEST(OrientationTest, SignIsExactForPointsFarApart) {
  const PlanePoint low{-0x1p-10, -3 * 0x1p-10};
  const PlanePoint high{0x1p40, 3 * 0x1p40};
  for (int i = 1; i <= 1000; ++i) {
    const double t = i * 0x1p-30;
    ASSERT_NE(3 * t + 0x1p-70, 3 * t);
    EXPECT_EQ(orientation(low, high, {t, 3 * t}), 0.0);
    EXPECT_GT(orientation(low, high, {t, 3 * t + 0x1p-70}), 0.0);
    EXPECT_LT(orientation(low, high, {t, 3 * t - 0x1p-70}), 0.0);
  }
}

}  // namespace
