// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "output/NumberTextSweep.h"

using VeskTest::firstDifference;

namespace {

// The same comparison for any count of values: numbertext_proof COUNT.
TEST(NumberTextProofTest, TwoMillionHardValuesPrintAsTheCLibraryAndToCharsDo) {
  EXPECT_EQ(firstDifference(0, 2000000), "");
}

}  // namespace
