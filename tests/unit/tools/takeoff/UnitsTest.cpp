// SPDX-License-Identifier: MIT
#include "takeoff/Units.h"

#include <gtest/gtest.h>

#include "takeoff/Grouping.h"
#include "terminal/Exit.h"

namespace VeskTest {
namespace {

using namespace VeskTool;

struct FeetCase {
  double metres;
  const char* text;
};

// An inch is 0.0254 m.
constexpr FeetCase kFeet[] = {{0.0, "0'-0\""},
                              {0.3048, "1'-0\""},
                              {0.0254 * 150.5, "12'-6 1/2\""},
                              {0.0254 / 16, "0'-0 1/16\""},
                              {0.0254 / 33, "0'-0\""},
                              {0.0254 * 11.99, "1'-0\""},
                              {0.0254 * 12.25, "1'-0 1/4\""},
                              {304.8e9, "1000000000000'-0\""},
                              {304.8e12, "1000000000000000'"}};

TEST(FeetAndInches, GoToTheNextSixteenth) {
  for (const FeetCase& each : kFeet) EXPECT_EQ(feetAndInches(each.metres), each.text);
}

struct ValueCase {
  Quantity quantity;
  double metric;
  double imperial;
};

// 25.4 mm, 0.3048 m, 0.45359237 kg. Inches are rounded to a ten-thousandth.
constexpr ValueCase kValues[] = {{Quantity::kSize, 168.3, 6.626},
                                 {Quantity::kSize, 25.4, 1},
                                 {Quantity::kLength, 3.048, 10},
                                 {Quantity::kArea, 0.09290304, 1},
                                 {Quantity::kVolume, 0.028316846592, 1},
                                 {Quantity::kWeight, 45.359237, 100},
                                 {Quantity::kAngle, 90, 90},
                                 {Quantity::kCount, 7, 7}};

TEST(Units, TurnMetricIntoImperial) {
  for (const ValueCase& each : kValues) {
    EXPECT_NEAR(Units(true).value(each.quantity, each.metric), each.imperial,
                1e-12 * each.imperial);
    EXPECT_EQ(Units(false).value(each.quantity, each.metric), each.metric);
  }
}

TEST(NaturalLess, GoesByTheValuesOfNumbers) {
  const NaturalLess less;
  const char* const ordered[] = {
      "",    "(none)", "60.3",  "114.3", "219.1 x 114.3", "219.1 x 168.3", "A2", "A009",
      "A10", "A10 b",  "A0011", "B",     "DN 80",         "DN 100"};
  for (std::size_t i = 0; i < std::size(ordered); ++i) {
    for (std::size_t j = 0; j < std::size(ordered); ++j) {
      EXPECT_EQ(less(ordered[i], ordered[j]), i < j) << ordered[i] << " | " << ordered[j];
    }
  }
  // The same value in other digits is another text.
  EXPECT_NE(less("7", "07"), less("07", "7"));
}

TEST(Grouping, TellsBillsFromGroupsOfRecords) {
  EXPECT_TRUE(Grouping("item").isBill());
  EXPECT_TRUE(Grouping("item").isItem());
  EXPECT_TRUE(Grouping("item-code").isItem());
  EXPECT_TRUE(Grouping("spec,pipeline").isBill());
  EXPECT_FALSE(Grouping("spec,pipeline").isItem());
  EXPECT_FALSE(Grouping("spec,size").isBill());
  EXPECT_TRUE(Grouping("spec,size").needsSidecar());
  EXPECT_TRUE(Grouping("column:kind").isBill());
  EXPECT_FALSE(Grouping("header,group,kind,size").needsSidecar());
  EXPECT_EQ(Grouping("spec, size").by(), "spec,size");
  for (const char* wrong : {"", "header,", ",size", "column:"}) {
    EXPECT_THROW(Grouping{wrong}, Failure) << wrong;
  }
}

}  // namespace
}  // namespace VeskTest
