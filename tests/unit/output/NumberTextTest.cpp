// SPDX-License-Identifier: MIT
#include "output/NumberText.h"

#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iomanip>
#include <limits>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "support/Text.h"

using namespace Vesk;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const double kNaN = std::numeric_limits<double>::quiet_NaN();

std::string field9(double v) {
  std::string text;
  appendField9(text, v);
  return text;
}

std::string fixed(double v, int decimals, int width = 0) {
  std::string text;
  appendFixed(text, v, decimals, width);
  return text;
}

double above(double v) { return std::nextafter(v, kInfinity); }
double below(double v) { return std::nextafter(v, -kInfinity); }

struct Field9Case {
  const char* name;
  double value;
  const char* text;

  friend std::ostream& operator<<(std::ostream& out, const Field9Case& row) {
    return out << row.name;
  }
};

// Each bound belongs to the range below it.
// clang-format off
const Field9Case kField9[] = {
    {"Zero",                                              0.0,           "    0.000"},
    {"MinusZeroKeepsItsSign",                             -0.0,          "   -0.000"},
    {"TinyNegativeIsMinusZero",                           -0.00001,      "   -0.000"},
    {"ExactHalfGoesToEvenDown",                           0.0625,        "    0.062"},
    {"ExactHalfGoesToEvenUp",                             0.1875,        "    0.188"},

    {"99999999IsNotAboveItsBound",                        99999999.0,    " 99999999"},
    {"99999999Point01GoesToTheExponentForm",              99999999.01,   "10.00000e7"},
    {"AMantissaThatRoundsToTenHasTenCharacters",          99999999.5,    "10.00000e7"},
    {"JustAbove99999999",                                 above(99999999.0), "10.00000e7"},
    {"9999999Point9KeepsOneDecimal",                      9999999.9,     "9999999.9"},
    {"JustAbove9999999Point9HasNone",                     above(9999999.9), " 10000000"},
    {"999999Point99KeepsTwoDecimals",                     999999.99,     "999999.99"},
    {"JustAbove999999Point99HasOne",                      above(999999.99), "1000000.0"},
    {"99999Point999KeepsThreeDecimals",                   99999.999,     "99999.999"},
    {"JustAbove99999Point999HasTwo",                      above(99999.999), "100000.00"},
    {"Minus9999Point998KeepsThree",                       -9999.998,     "-9999.998"},
    {"Minus9999Point999TakesTwoAndRounds",                -9999.999,     "-10000.00"},
    {"JustAboveMinus9999Point999KeepsThree",              above(-9999.999), "-9999.999"},
    {"Minus99999Point99TakesOneAndRounds",                -99999.99,     "-100000.0"},
    {"JustAboveMinus99999Point99KeepsTwo",                above(-99999.99), "-99999.99"},
    {"Minus999999Point9TakesNoneAndRounds",               -999999.9,     " -1000000"},
    {"JustAboveMinus999999Point9KeepsOne",                above(-999999.9), "-999999.9"},
    {"JustAboveMinus9999999HasNoDecimals",                above(-9999999.0), " -9999999"},
    // log10 of 9999999 is 6.99..., so e = 6 and the mantissa -9.999999 rounds to -10.0000.
    {"Minus9999999GoesToTheExponentForm",                 -9999999.0,    "-10.0000e6"},
    {"TheSidesAreNoMirrorImagesPositive",                 50000.5,       "50000.500"},
    {"TheSidesAreNoMirrorImagesNegative",                 -50000.5,      "-50000.50"},

    {"1e8HasFiveDecimalsAndOneExponentDigit",             1.0e8,         "1.00000e8"},
    {"1e10HasFourDecimalsAndTwoExponentDigits",           1.0e10,        "1.0000e10"},
    {"1e100HasThreeDecimalsAndThreeExponentDigits",       1.0e100,       "1.000e100"},
    {"TheLastOneDigitExponent",                           9.5e9,         "9.50000e9"},
    {"TheLastTwoDigitExponent",                           9.5e99,        "9.5000e99"},
    {"Minus1e7",                                          -1.0e7,        "-1.0000e7"},
    {"Minus1e10",                                         -1.0e10,       "-1.000e10"},
    {"Minus1e100",                                        -1.0e100,      "-1.00e100"},
    {"MinusTheLastOneDigitExponent",                      -9.5e9,        "-9.5000e9"},
    {"MinusTheLastTwoDigitExponent",                      -9.5e99,       "-9.500e99"},
    {"TheLargestDouble",                                  1.7976931348623157e308,  "1.798e308"},
    {"MinusTheLargestDouble",                             -1.7976931348623157e308, "-1.80e308"},
    {"MantissaOfTenAtTwoDigits",                          9.99999e10,    "10.0000e10"},
    {"MinusMantissaOfTenAtThreeDigits",                   -9.999e100,    "-10.00e100"},

    {"Infinity",                                          kInfinity,     "      inf"},
    {"MinusInfinity",                                     -kInfinity,    "     -inf"},
    {"NaN",                                               kNaN,          "      nan"},
    {"NaNOfTheOtherSign",                                 -kNaN,         "      nan"},
    {"TheSmallestDouble",                                 5e-324,        "    0.000"},
    {"MinusTheSmallestDouble",                            -5e-324,       "   -0.000"},
};
// clang-format on

TEST(NumberTextTest, NineCharacterForm) {
  for (const Field9Case& row : kField9) {
    SCOPED_TRACE(row);
    EXPECT_TEXT(field9(row.value), row.text);
  }
}

struct FixedCase {
  const char* name;
  double value;
  int decimals;
  int width;
  const char* text;

  friend std::ostream& operator<<(std::ostream& out, const FixedCase& row) {
    return out << row.name;
  }
};

// clang-format off
const FixedCase kFixed[] = {
    {"TenWithFourDecimalsIs10",               10.0,      4,  0, "10"},
    {"HundredWithNoDecimalsKeepsItsZeros",    100.0,     0,  0, "100"},
    {"OnePointFive",                          1.5,       4,  0, "1.5"},
    {"Zero",                                  0.0,       4,  0, "0"},
    {"TinyNegativeIsMinusZeroWithItsSign",    -0.00001,  4,  0, "-0"},
    {"MinusZero",                             -0.0,      4,  0, "-0"},
    {"MinusZeroWithNoDecimals",               -0.0,      0,  0, "-0"},
    {"ZerosBetweenDigitsStay",                100.0501,  4,  0, "100.0501"},
    {"OnlyTrailingZerosGo",                   100.0500,  4,  0, "100.05"},
    {"AllDecimalsKept",                       0.1234,    4,  0, "0.1234"},
    {"SixDecimals",                           0.125,     6,  0, "0.125"},
    {"RoundedUpToAWhole",                     0.99999,   4,  0, "1"},
    {"ExactHalfGoesToEvenDown",               0.03125,   4,  0, "0.0312"},
    {"ExactHalfGoesToEvenUp",                 0.09375,   4,  0, "0.0938"},
    {"HalfWithNoDecimalsGoesToEven",          2.5,       0,  0, "2"},
    {"HalfWithNoDecimalsGoesToEvenUp",        3.5,       0,  0, "4"},
    {"NegativeDecimalsPrintNone",             2.75,      -1, 0, "3"},
    {"NegativeDecimalsKeepZeros",             1000.0,    -7, 0, "1000"},
    {"LeadingBlanksFromAWidthStay",           1.5,       4,  9, "   1.5"},        // "   1.5000" cut
    {"WidthWithNoDecimals",                   5.0,       0,  3, "  5"},
    {"AWidthTooSmallChangesNothing",          12345.0,   0,  3, "12345"},
    {"WidthBelowZeroIsNone",                  1.5,       2, -9, "1.5"},
    {"ZeroWithAWidthKeepsOneDigit",           0.0,       2,  6, "  0"},           // "  0.00" cut
    {"NineDigitsAndNoPoint",                  1e9,       0,  0, "1000000000"},
    {"Infinity",                              kInfinity, 4,  0, "inf"},
    {"MinusInfinity",                         -kInfinity, 4, 0, "-inf"},
    {"InfinityWithAWidth",                    kInfinity, 4,  6, "   inf"},
    {"MinusInfinityWithNoDecimals",           -kInfinity, 0, 6, "  -inf"},
    {"NaN",                                   kNaN,      4,  0, "nan"},
    {"NaNOfTheOtherSign",                     -kNaN,     4,  0, "nan"},
    {"NaNWithAWidth",                         -kNaN,     0,  6, "   nan"},
};
// clang-format on

TEST(NumberTextTest, TrimmedFixedForm) {
  for (const FixedCase& row : kFixed) {
    SCOPED_TRACE(row);
    EXPECT_TEXT(fixed(row.value, row.decimals, row.width), row.text);
  }
}

TEST(NumberTextTest, TheLargestDoubleIsWrittenInFull) {
  // 2^1024 - 2^971 has 309 digits, of which 17976931348623157 are the first.
  const std::string text = fixed(std::numeric_limits<double>::lowest(), 6);
  EXPECT_EQ(text.size(), 310u);
  EXPECT_TRUE(text.starts_with("-17976931348623157"));
  EXPECT_EQ(std::strtod(text.c_str(), nullptr), std::numeric_limits<double>::lowest());
}

TEST(NumberTextTest, EachFormAppendsToWhatIsThere) {
  std::string text = "100,";
  appendField9(text, 1.5);
  appendFixed(text, 0.0, 4, 0);
  appendFixed(text, 7.0, 0, 3);
  appendInt(text, -42);
  EXPECT_TEXT(text, "100,    1.5000  7-42");
}

TEST(NumberTextTest, IntIsItsDecimalText) {
  for (const int value : {0, 1, -1, 9, 10, 99, 100, -100, INT_MAX, INT_MIN}) {
    std::string text;
    appendInt(text, value);
    EXPECT_EQ(text, std::to_string(value));
  }
}

// The C library as an independent judge, in the "C" locale that a process starts
// with.

std::string printed(int width, int decimals, double v) {
  char buffer[512];
  const int length = std::snprintf(buffer, sizeof buffer, "%*.*f", width, decimals, v);
  return {buffer, static_cast<std::size_t>(length)};
}

// The nine-character form as a table of exclusive lower bounds.
struct Range {
  double greaterThan;
  int decimals;  // -1: exponent form
};

constexpr Range kRanges[] = {
    {99999999.0, -1}, {9999999.9, 0}, {999999.99, 1}, {99999.999, 2},
    {-9999.999, 3},   {-99999.99, 2}, {-999999.9, 1}, {-9999999.0, 0},
};

std::string modelExponentForm(double v) {
  const int e = static_cast<int>(std::log10(v < 0 ? -v : v));
  double ten = 1;
  double factor = 10;
  for (int n = e; n > 0; n /= 2) {
    if (n % 2 == 1) ten *= factor;
    factor *= factor;
  }
  int mantissaWidth = 5;
  int decimals = v > 0 ? 3 : 2;
  int exponentWidth = 3;
  if (e < 10) {
    mantissaWidth = 7;
    decimals = v > 0 ? 5 : 4;
    exponentWidth = 1;
  } else if (e < 100) {
    mantissaWidth = 6;
    decimals = v > 0 ? 4 : 3;
    exponentWidth = 2;
  }
  char exponent[16];
  std::snprintf(exponent, sizeof exponent, "e%*d", exponentWidth, e);
  return printed(mantissaWidth, decimals, v / ten) + exponent;
}

std::string modelField9(double v) {
  if (std::isnan(v)) return "      nan";
  if (std::isinf(v)) return v > 0 ? "      inf" : "     -inf";
  for (const Range& range : kRanges) {
    if (!(v > range.greaterThan)) continue;
    return range.decimals < 0 ? modelExponentForm(v) : printed(9, range.decimals, v);
  }
  return modelExponentForm(v);
}

std::string modelFixed(double v, int decimals, int width) {
  std::string text;
  if (std::isnan(v)) {
    text = "nan";
    while (static_cast<int>(text.size()) < width) text = " " + text;
    return text;
  }
  text = printed(width > 0 ? width : 0, decimals > 0 ? decimals : 0, v);
  if (text.find('.') == std::string::npos) return text;
  std::size_t last = text.size() - 1;
  while (last > 0 && text[last] == '0') --last;
  return text.substr(0, text[last] == '.' ? last : last + 1);
}

// Compares both forms with the models; true if all texts agree.
bool agrees(double v) {
  bool same = field9(v) == modelField9(v);
  for (const int decimals : {0, 2, 4, 6, 15}) {
    same = same && fixed(v, decimals) == modelFixed(v, decimals, 0);
  }
  return same && fixed(v, 3, 12) == modelFixed(v, 3, 12);
}

testing::AssertionResult allAgree(const std::vector<double>& values) {
  for (const double v : values) {
    if (agrees(v)) continue;
    return testing::AssertionFailure()
           << std::setprecision(17) << v << ": field9 '" << field9(v) << "' should be '"
           << modelField9(v) << "', fixed '" << fixed(v, 4) << "' '" << modelFixed(v, 4, 0) << "'";
  }
  return testing::AssertionSuccess();
}

TEST(NumberTextTest, RandomBitPatternsReadAsTheCLibraryPrintsThem) {
  std::mt19937_64 random(20240501);
  std::vector<double> values;
  for (int i = 0; i < 60000; ++i) values.push_back(std::bit_cast<double>(random()));
  EXPECT_TRUE(allAgree(values));
}

TEST(NumberTextTest, PlantLikeDecimalsReadAsTheCLibraryPrintsThem) {
  std::mt19937_64 random(7);
  std::vector<double> values;
  for (const double unit : {1.0, 10.0, 1e2, 1e3, 1e4, 1e5, 1e6}) {
    for (int i = 0; i < 20000; ++i) {
      const auto whole = static_cast<std::int64_t>(random() % 2000000001) - 1000000000;
      values.push_back(static_cast<double>(whole) / unit);
    }
  }
  EXPECT_TRUE(allAgree(values));
}

TEST(NumberTextTest, ExactTiesReadAsTheCLibraryPrintsThem) {
  // An odd multiple of 2^-(d+1) lies half-way between two texts of d decimals.
  std::vector<double> values;
  for (int d = 0; d <= 6; ++d) {
    for (int odd = 1; odd < 6000; odd += 2) {
      const double tie = std::ldexp(odd, -(d + 1));
      values.insert(values.end(), {tie, -tie, 1000 + tie, -1000 - tie, 65536 + tie, -65536 - tie});
    }
  }
  EXPECT_TRUE(allAgree(values));
}

TEST(NumberTextTest, NeighboursOfEveryBoundReadAsTheCLibraryPrintsThem) {
  std::vector<double> values;
  const auto addNeighbours = [&values](double bound, int count) {
    double up = bound;
    double down = bound;
    for (int i = 0; i < count; ++i) {
      values.insert(values.end(), {up, down, -up, -down});
      up = above(up);
      down = below(down);
    }
  };
  for (const Range& range : kRanges) addNeighbours(range.greaterThan, 2000);
  // Where the exponent or the number of digits changes.
  for (int e = -7; e <= 308; ++e) {
    addNeighbours(std::strtod(("1e" + std::to_string(e)).c_str(), nullptr), e < 12 ? 200 : 5);
  }
  for (int e = -1074; e <= 1023; ++e) values.push_back(std::ldexp(1.0, e));
  for (int e = -1074; e <= 1023; ++e) values.push_back(-std::ldexp(1.0, e));
  addNeighbours(0.0, 3);
  values.push_back(std::numeric_limits<double>::max());
  values.push_back(std::numeric_limits<double>::lowest());
  EXPECT_TRUE(allAgree(values));
}

TEST(NumberTextTest, EveryFieldHasNineCharactersUnlessTheMantissaRoundsToTen) {
  std::mt19937_64 random(99);
  for (int i = 0; i < 200000; ++i) {
    const double v = std::bit_cast<double>(random());
    const std::string text = field9(v);
    const bool roundedToTen = text.starts_with("10.") || text.starts_with("-10.");
    const bool exponentForm = text.find('e') != std::string::npos;
    ASSERT_EQ(text.size(), exponentForm && roundedToTen ? 10u : 9u) << text;
  }
}

TEST(NumberTextTest, TheTextOfAValueReadBackFromItsTextIsTheSameText) {
  std::mt19937_64 random(5);
  for (int i = 0; i < 50000; ++i) {
    const double v =
        static_cast<double>(static_cast<std::int64_t>(random() % 20000000) - 10000000) /
        static_cast<double>(1 + random() % 7919);
    for (const int decimals : {0, 4, 6}) {
      const std::string text = fixed(v, decimals);
      ASSERT_EQ(fixed(std::strtod(text.c_str(), nullptr), decimals), text);
    }
  }
}

TEST(NumberTextTest, CountsKeepAllTheirDigits) {
  EXPECT_EQ(Vesk::countText(0), "0");
  EXPECT_EQ(Vesk::countText(18446744073709551615U), "18446744073709551615");
}

}  // namespace
