// SPDX-License-Identifier: MIT
#include "input/ParseDouble.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <string_view>

using namespace Vesk;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct NumberRow {
  const char* name;
  std::string text;
  double value;
};

void PrintTo(const NumberRow& row, std::ostream* out) { *out << row.name; }

const NumberRow kNumbers[] = {
    {"Plain", "12.5", 12.5},
    {"BlanksBehind", "12.5   ", 12.5},
    {"WhiteSpaceInFront", " \t\n\v\f\r12.5", 12.5},
    {"PlusSign", "+1e3", 1000.0},
    {"MinusSign", "-7", -7.0},
    {"NoDigitBeforeThePoint", ".5", 0.5},
    {"NoDigitAfterThePoint", "5.", 5.0},
    {"CapitalExponent", "1E+2", 100.0},
    {"TenCharacterField", "10.00000e7", 1e8},
    {"Infinity", "inf", kInfinity},
    {"MinusInfinity", "-INFINITY", -kInfinity},
    {"PlusInfinity", "+inf", kInfinity},
    {"Hexadecimal", "0x1.8p1", 3.0},
    {"HexadecimalWithSign", "-0XFF", -255.0},
    {"HexadecimalWithoutLeadingDigit", "0x.8", 0.5},
    {"TooLargeIsInfinite", "1e999", kInfinity},
    {"TooLargeNegative", "-1e999", -kInfinity},
    {"TooSmallIsZero", "1e-999", 0.0},
    {"ExponentOutOfAnyRange", "1e99999999999999999999", kInfinity},
    {"ManyDigitsWithoutExponent", std::string(400, '9'), kInfinity},
    {"ManyZerosBehindThePoint", "0." + std::string(400, '0') + "1", 0.0},
    {"LongButInRange", "0." + std::string(400, '0') + "1e401", 1.0},
    {"TooLargeHexadecimal", "0x1p99999", kInfinity},
    {"TooSmallHexadecimal", "0x1p-99999", 0.0},
};

class ParseDoubleTest : public testing::TestWithParam<NumberRow> {};

TEST_P(ParseDoubleTest, IsTheNumber) {
  const auto value = parseDouble(GetParam().text);
  ASSERT_TRUE(value.has_value());
  EXPECT_EQ(*value, GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Numbers, ParseDoubleTest, testing::ValuesIn(kNumbers),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ParseDouble, KeepsTheSignOfZero) {
  EXPECT_TRUE(std::signbit(parseDouble("-0").value()));
  EXPECT_FALSE(std::signbit(parseDouble("0").value()));
}

TEST(ParseDouble, TakesNan) {
  EXPECT_TRUE(std::isnan(parseDouble("nan").value()));
  EXPECT_TRUE(std::isnan(parseDouble(" -NaN ").value()));
}

TEST(ParseDouble, RefusesWhatIsNotExactlyOneNumber) {
  for (const char* text :
       {"",      " ",    "+",   "-",      ".",      "e5",    "abc",   "12.5x", "12,5", "1 2",
        "1.2.3", "+-1",  "--1", "++1",    "- 1",    "1e",    "1e+",   "0x",    "0xg",  "0xinf",
        "0xnan", "0x-1", "0x.", "0x.inf", "0x.nan", "0x.-1", "0x.p1", "infx",  "nanx"}) {
    EXPECT_FALSE(parseDouble(text).has_value()) << '"' << text << '"';
  }
  EXPECT_FALSE(parseDouble(std::string_view("1\0", 2)).has_value());
}

struct LeadingRow {
  const char* name;
  std::string_view text;
  std::size_t length;
  double value;
  std::size_t taken;  // 0: of another form
};

void PrintTo(const LeadingRow& row, std::ostream* out) { *out << row.name; }

const LeadingRow kLeading[] = {
    {"EndsAtAComma", "12.50,3", 7, 12.5, 5},
    {"EndsAtTheLength", "12.50,3", 4, 12.5, 4},
    {"EndsInsideTheDecimals", "12.3456789", 5, 12.34, 5},
    {"EndsInsideTheWhole", "123456789", 3, 123.0, 3},
    {"NegativeEndsInsideTheWhole", "-123456", 3, -12.0, 3},
    {"EndsAtThePoint", "12.5", 3, 12.0, 3},
    {"EndsBeforeThePoint", "12.5", 2, 12.0, 2},
    {"EndsAtAnExponent", "1e5", 3, 1.0, 1},
    {"NegativeNumber", "-7.25 ", 6, -7.25, 5},
    {"EndsAtASecondPoint", "1.2.3", 5, 1.2, 3},
    {"EndsAtAHighByte", "1\xb1\xff", 3, 1.0, 1},
    {"SevenDigitsEach", "9999999.9999999", 15, 9999999.9999999, 15},
    {"EightDigits", "12345678", 8, 0.0, 0},
    {"EightDecimals", "1.12345678", 10, 0.0, 0},
    {"NothingButASign", "-", 1, 0.0, 0},
    {"NoDigitInFront", ".5", 2, 0.0, 0},
    {"PlusSignInFront", "+5", 2, 0.0, 0},
    {"BlankInFront", " 5", 2, 0.0, 0},
    {"NoCharacters", "", 0, 0.0, 0},
    {"NoneOfTheCharacters", "5", 0, 0.0, 0},
};

class LeadingNumberTest : public testing::TestWithParam<LeadingRow> {};

TEST_P(LeadingNumberTest, IsTheNumberInFront) {
  if (!kHasPlainNumbers) GTEST_SKIP() << "std::from_chars reads all numbers here";
  const PlainNumber number = leadingNumber(GetParam().text, GetParam().length);
  EXPECT_EQ(number.length, GetParam().taken);
  EXPECT_EQ(number.value, GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Numbers, LeadingNumberTest, testing::ValuesIn(kLeading),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(LeadingNumber, KeepsTheSignOfZero) {
  if (!kHasPlainNumbers) GTEST_SKIP() << "std::from_chars reads all numbers here";
  EXPECT_TRUE(std::signbit(leadingNumber("-0", 2).value));
  EXPECT_TRUE(std::signbit(leadingNumber("-0.000", 6).value));
  EXPECT_FALSE(std::signbit(leadingNumber("0", 1).value));
}

// Every count of digits before and behind the point, beside the C library.
TEST(LeadingNumber, IsTheNearestDouble) {
  if (!kHasPlainNumbers) GTEST_SKIP() << "std::from_chars reads all numbers here";
  std::mt19937_64 random;
  for (int i = 0; i < 200000; ++i) {
    std::string text = random() % 2 == 0 ? "-" : "";
    const std::uint64_t whole = 1 + random() % 7;
    const std::uint64_t decimals = random() % 8;
    for (std::uint64_t k = 0; k < whole; ++k) text += static_cast<char>('0' + random() % 10);
    if (decimals > 0) text += '.';
    for (std::uint64_t k = 0; k < decimals; ++k) text += static_cast<char>('0' + random() % 10);
    const double expected = std::strtod(text.c_str(), nullptr);
    const std::size_t length = text.size();
    const PlainNumber alone = leadingNumber(text, length);
    ASSERT_EQ(alone.length, length) << text;
    ASSERT_EQ(std::bit_cast<std::uint64_t>(alone.value), std::bit_cast<std::uint64_t>(expected))
        << text;
    const PlainNumber first = leadingNumber(text + ",1234567,", length + 9);
    ASSERT_EQ(first.length, length) << text;
    ASSERT_EQ(first.value, alone.value) << text;
  }
}

}  // namespace
