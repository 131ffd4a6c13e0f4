// SPDX-License-Identifier: MIT
#include "records/Sizes.h"

#include <gtest/gtest.h>

#include <limits>

#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/Pline.h"
#include "vesk/Relb.h"

namespace VeskTool {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// A pipe of no width from x to x + 2, at y -1 and z 3.
std::string cellOf(double x, std::optional<double> height = {}) {
  Vesk::Cyl cyl;
  cyl.origin = GePoint(x, -1.0, 3.0);
  cyl.axis = GeVector(2.0, 0.0, 0.0);
  cyl.diameter = 0.0;
  return cellName(cyl, {10.0, 10.0, height});
}

TEST(Sizes, ACellHoldsTheMiddleOfTheElement) {
  EXPECT_EQ(cellOf(0.0), "x0_y-1");
  EXPECT_EQ(cellOf(8.5), "x0_y-1");  // middle 9.5
  EXPECT_EQ(cellOf(9.0), "x1_y-1");  // middle 10, where the next cell begins
  EXPECT_EQ(cellOf(-1.5), "x-1_y-1");
  EXPECT_EQ(cellOf(0.0, 2.0), "x0_y-1_z1");
}

// From (-8, -18, -28) to (4, 14, 24): its middle is (-2, -2, -2).
TEST(Sizes, TheMiddleCountsAlongEveryAxis) {
  Vesk::Box box;
  box.origin = {-8.0, -18.0, -28.0};
  box.edge1 = {12.0, 0.0, 0.0};
  box.edge2 = {0.0, 32.0, 0.0};
  box.edge3 = {0.0, 0.0, 52.0};
  EXPECT_EQ(cellName(box, {1.0, 1.0, 1.0}), "x-2_y-2_z-2");
  EXPECT_EQ(cellName(box, {3.0, 3.0, 3.0}), "x-1_y-1_z-1");
}

TEST(Sizes, WhatHasNoPlaceIsNowhere) {
  EXPECT_EQ(cellOf(kNaN), "nowhere");
  EXPECT_EQ(cellOf(1e300), "nowhere");
  EXPECT_EQ(cellName(Vesk::Pline(), {1.0, 1.0, {}}), "nowhere");
}

TEST(Sizes, AreDiametersAndSides) {
  Vesk::Cyl cyl;
  cyl.diameter = 219.14;
  EXPECT_EQ(sizeName(cyl), "219.1");
  Vesk::Cone cone;
  cone.diameter1 = 60.3;
  cone.diameter2 = 88.9;
  EXPECT_EQ(sizeName(cone), "88.9");
  EXPECT_DOUBLE_EQ(sizeOf(cone), 88.9);
  Vesk::Relb relb;
  relb.width = 250.0;
  relb.depth = 400.0;
  EXPECT_EQ(sizeName(relb), "400x250");
  EXPECT_EQ(sizeName(Vesk::Pline()), "none");
}

}  // namespace
}  // namespace VeskTool
