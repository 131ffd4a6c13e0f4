// SPDX-License-Identifier: MIT
#include "output/FixedDecimals.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>

namespace {

constexpr std::uint64_t kEnd = 100000000;  // of the numbers of eight digits

// The digits one by one, the first in the lowest byte.
std::uint64_t digitByDigit(std::uint64_t n) {
  std::uint64_t word = 0;
  for (int i = 0; i < 8; ++i, n /= 10) word = word << 8 | n % 10;
  return word;
}

// Calls check(n) for numbers of every length, neighbours of round ones among them.
template <class Check>
void forManyNumbers(Check check) {
  for (std::uint64_t unit = 1; unit < kEnd; unit *= 10) {
    for (std::uint64_t n = 0; n < 10000 && n * unit < kEnd; ++n) {
      check(n * unit);
      check((n * unit + kEnd - 1) % kEnd);
    }
  }
  for (std::uint64_t n = 0; n < kEnd; n += 997) check(n);
}

TEST(FixedDecimalsTest, EightDigitsAreThoseOfTheDivisionsByTen) {
  if (std::endian::native != std::endian::little) GTEST_SKIP() << "not in use here";
  forManyNumbers([](std::uint64_t n) { ASSERT_EQ(Vesk::eightDigits(n), digitByDigit(n)) << n; });
}

TEST(FixedDecimalsTest, TwoNumbersAtOnceHaveTheDigitsOfEach) {
  if (std::endian::native != std::endian::little) GTEST_SKIP() << "not in use here";
  forManyNumbers([](std::uint64_t n) {
    const std::uint64_t other = kEnd - 1 - n;
    const auto [first, second] = Vesk::twiceEightDigits(n, other);
    ASSERT_EQ(first, digitByDigit(n)) << n;
    ASSERT_EQ(second, digitByDigit(other)) << other;
  });
}

}  // namespace
