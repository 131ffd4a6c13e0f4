// SPDX-License-Identifier: MIT
#include "output/Base36.h"

#include <gtest/gtest.h>

#include <climits>
#include <ostream>
#include <span>
#include <string>

using namespace Vesk;

namespace {

struct Base36Case {
  const char* name;
  int value;
  const char* digits;
  bool fits;

  friend std::ostream& operator<<(std::ostream& out, const Base36Case& row) {
    return out << row.name;
  }
};

// The powers of 36 are 1, 36, 1296 and 46656.
// clang-format off
constexpr Base36Case kThreeDigits[] = {
    {"Zero",                               0,       "000", true},
    {"NineIsTheLastDecimalDigit",          9,       "009", true},
    {"TenIsA",                             10,      "00A", true},
    {"ThirtyFiveIsZ",                      35,      "00Z", true},
    {"TheSecondDigitCounts36",             36,      "010", true},
    {"TheFirstDigitCounts1296",            1296,    "100", true},
    {"MostSignificantFirst",               13368,   "ABC", true},    // 10*1296 + 11*36 + 12
    {"TheLargestIsThreeZ",                 46655,   "ZZZ", true},
    {"OneMoreGives000AndFails",            46656,   "000", false},
    {"TheHighDigitsAreLost",               46657,   "001", false},
    {"TheLargestInt",                      INT_MAX, "0ZJ", false},  // ZIK0ZJ
    {"MinusOneIsOneBelowZero",             -1,      "00/", true},
    {"MinusThirtySixHasADigitMinusOne",    -36,     "0/0", true},
    {"MinusThirtySevenTakesTwo",           -37,     "0//", true},
    {"TheSmallestThatFits",                -46655,  "\r\r\r", true},  // '0' - 35 is 13
    {"OneLessFails",                       -46656,  "000", false},
};
// clang-format on

TEST(Base36Test, EncodesThreeDigitsByRemainderAndTheResultByQuotient) {
  for (const Base36Case& row : kThreeDigits) {
    SCOPED_TRACE(row);
    char digits[3];
    EXPECT_EQ(encodeBase36(row.value, digits), row.fits);
    EXPECT_EQ(std::string(digits, 3), row.digits);
  }
}

TEST(Base36Test, EncodesExactlyTheRequestedNumberOfDigits) {
  char digits[] = "******";
  EXPECT_TRUE(encodeBase36(35, std::span(digits + 1, 1)));
  EXPECT_STREQ(digits, "*Z****");
  EXPECT_FALSE(encodeBase36(36, std::span(digits + 1, 1)));
  EXPECT_STREQ(digits, "*0****");
  EXPECT_TRUE(encodeBase36(46656, std::span(digits + 1, 4)));
  EXPECT_STREQ(digits, "*1000*");
}

TEST(Base36Test, DecodesThreeDigits) {
  EXPECT_EQ(decodeBase36("000"), 0);
  EXPECT_EQ(decodeBase36("00A"), 10);
  EXPECT_EQ(decodeBase36("ABC"), 13368);
  EXPECT_EQ(decodeBase36("ZZZ"), kMaxCounter);
}

TEST(Base36Test, DecodingGivesBackWhatWasEncoded) {
  for (int value = -46655; value <= kMaxCounter; ++value) {
    char digits[3];
    ASSERT_TRUE(encodeBase36(value, digits)) << value;
    ASSERT_EQ(decodeBase36({digits, 3}), value);
  }
}

TEST(Base36Test, EveryIntCanBeEncoded) {
  char digits[3];
  EXPECT_FALSE(encodeBase36(INT_MIN, digits));
  EXPECT_FALSE(encodeBase36(INT_MAX, digits));
}

}  // namespace
