// SPDX-License-Identifier: MIT
#include "pcf/Sizes.h"

#include <gtest/gtest.h>

namespace Vesk::Pcf {
namespace {

struct SizeRow {
  double inches;
  double dn;
  double outside;
};

// ASME B36.10.
constexpr SizeRow kRows[] = {
    {0.125, 6, 10.3},   {0.25, 8, 13.7},    {0.375, 10, 17.1},  {0.5, 15, 21.3},
    {0.75, 20, 26.7},   {1, 25, 33.4},      {1.25, 32, 42.2},   {1.5, 40, 48.3},
    {2, 50, 60.3},      {2.5, 65, 73.0},    {3, 80, 88.9},      {3.5, 90, 101.6},
    {4, 100, 114.3},    {5, 125, 141.3},    {6, 150, 168.3},    {8, 200, 219.1},
    {10, 250, 273.0},   {12, 300, 323.8},   {14, 350, 355.6},   {16, 400, 406.4},
    {18, 450, 457.0},   {20, 500, 508.0},   {22, 550, 559.0},   {24, 600, 610.0},
    {26, 650, 660.0},   {28, 700, 711.0},   {30, 750, 762.0},   {32, 800, 813.0},
    {34, 850, 864.0},   {36, 900, 914.0},   {38, 950, 965.0},   {40, 1000, 1016.0},
    {42, 1050, 1067.0}, {44, 1100, 1118.0}, {46, 1150, 1168.0}, {48, 1200, 1219.0},
};

TEST(Sizes, AreThoseOfTheStandard) {
  for (const SizeRow& row : kRows) {
    const PipeSize* byDn = sizeOfDn(row.dn);
    ASSERT_NE(byDn, nullptr) << row.dn;
    EXPECT_EQ(byDn->inches, row.inches);
    EXPECT_EQ(byDn->outside, row.outside);
    const PipeSize* byInches = sizeOfNps(row.inches, 0.006);
    ASSERT_NE(byInches, nullptr) << row.inches;
    EXPECT_EQ(byInches->dn, row.dn);
    EXPECT_EQ(distanceToOutside(row.outside), 0.0) << row.outside;
  }
}

// EN 10220 besides.
TEST(Sizes, HaveTheEuropeanDiametersBesides) {
  for (const double outside : {10.2, 13.5, 17.2, 26.9, 33.7, 42.4, 76.1, 139.7, 323.9}) {
    EXPECT_EQ(distanceToOutside(outside), 0.0) << outside;
    EXPECT_NEAR(distanceToOutside(outside + 0.01), 0.01, 1e-9) << outside;
  }
}

TEST(Sizes, AreTakenWithinTheirTolerance) {
  EXPECT_NE(sizeOfDn(100.009), nullptr);
  EXPECT_NE(sizeOfDn(99.991), nullptr);
  EXPECT_EQ(sizeOfDn(100.011), nullptr);
  EXPECT_EQ(sizeOfDn(99.989), nullptr);
  EXPECT_EQ(sizeOfDn(110), nullptr);
  EXPECT_EQ(sizeOfNps(2.0059, 0.006)->dn, 50);
  EXPECT_EQ(sizeOfNps(1.9941, 0.006)->dn, 50);
  EXPECT_EQ(sizeOfNps(2.0061, 0.006), nullptr);
  EXPECT_EQ(sizeOfNps(1.9939, 0.006), nullptr);
  // Of two within the tolerance the nearer one.
  EXPECT_EQ(sizeOfNps(2.26, 1.0)->dn, 65);
  EXPECT_EQ(sizeOfNps(2.24, 1.0)->dn, 50);
}

}  // namespace
}  // namespace Vesk::Pcf
