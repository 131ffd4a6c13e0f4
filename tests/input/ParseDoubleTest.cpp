#include "input/ParseDouble.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

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
  for (const char* text : {"",    " ",     "+",     "-",    ".",   "e5",   "abc", "12.5x", "12,5",
                           "1 2", "1.2.3", "+-1",   "--1",  "++1", "- 1",  "1e",  "1e+",   "0x",
                           "0xg", "0xinf", "0xnan", "0x-1", "0x.", "infx", "nanx"}) {
    EXPECT_FALSE(parseDouble(text).has_value()) << '"' << text << '"';
  }
  EXPECT_FALSE(parseDouble(std::string_view("1\0", 2)).has_value());
}

}  // namespace
