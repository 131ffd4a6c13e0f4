// SPDX-License-Identifier: MIT
#include "pcf/Numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

namespace Vesk::Pcf {
namespace {

struct NumberCase {
  const char* name;
  const char* text;
  double value;  // NaN: no number
  bool isInches;
  const char* rest;  // what is left behind it
};

void PrintTo(const NumberCase& row, std::ostream* out) { *out << row.name; }

// clang-format off
const NumberCase kNumbers[] = {
    {"Integer",              "12",           12,      false, ""},
    {"MinusZero",            "-0.0000",      0,       false, ""},
    {"Plus",                 "+7",           7,       false, ""},
    {"Decimal",              "1042.8",       1042.8,  false, ""},
    {"PointAtTheEnd",        "5.",           5,       false, ""},
    {"PointAtTheStart",      ".5",           0.5,     false, ""},
    {"Exponent",             "1E2",          100,     false, ""},
    {"Fraction",             "3/4",          0.75,    false, ""},
    {"MixedByAPoint",        "1.1/2",        1.5,     false, ""},
    {"MixedByADash",         "1-1/2",        1.5,     false, ""},
    {"NegativeMixed",        "-2.1/4",       -2.25,   false, ""},
    {"Inches",               "6\"",          6,       true,  ""},
    {"MixedInches",          "1.1/2\"",      1.5,     true,  ""},
    {"Feet",                 "10'",          120,     true,  ""},
    {"FeetAndInches",        "12'6\"",       150,     true,  ""},
    {"FeetDashInches",       "10'-6\"",      126,     true,  ""},
    {"FeetAndAMixedNumber",  "12'6.1/2\"",   150.5,   true,  ""},
    {"FeetDashAMixedNumber", "10'-6.1/2\"",  126.5,   true,  ""},
    {"FeetAndAFraction",     "3'1/2\"",      36.5,    true,  ""},
    {"FeetWithoutTheMark",   "3'6",          42,      true,  ""},
    {"NegativeFeet",         "-3'6\"",       -42,     true,  ""},
    {"GluedEnd",             "6BW",          6,       false, "BW"},
    {"GluedEndBehindInches", "6\"BW",        6,       true,  "BW"},
    {"GluedEndWithAnE",      "6EN",          6,       false, "EN"},
    {"MixedWithGluedEnd",    "1.1/2SW",      1.5,     false, "SW"},
    {"DecimalComma",         "1,5",          1,       false, ",5"},
    {"OverNothing",          "3/0",          3,       false, "/0"},
    {"FractionWithoutAnUnder", "1/",           1,       false, "/"},
    {"MixedWithoutAnUnder",  "1.1/",         1.1,     false, "/"},
    {"MixedOfMoreThanOne",   "1.3/2",        1.3,     false, "/2"},
    {"MixedOverNothing",     "1-2/0",        1,       false, "-2/0"},
    {"SlashFarBehind",       "1234567890.1234567/2", 1234567890.1234567, false, "/2"},
    {"FractionOfManyDigits", "1234/5",       246.8,   false, ""},
    {"NineDigitsOverThree",  "123456789/3",  41152263, false, ""},
    {"SlashAtTheSeventh",    "123456/8",     15432,   false, ""},
    {"SlashAtTheSixteenth",  "123456789.12345/50000", 123456789.2469, false, ""},
    {"SlashAtTheSeventeenth", "123456789.123456/500000", 123456789.123456, false, "/500000"},
    {"MoreThanNineDigits",   "1234567890/2", 1234567890, false, "/2"},
    {"NoNumber",             "nan",          NAN,     false, "nan"},
    {"Infinity",             "inf",          NAN,     false, "inf"},
    {"TooLarge",             "1e999",        NAN,     false, "1e999"},
    {"Word",                 "BW",           NAN,     false, "BW"},
    {"SignAlone",            "-",            NAN,     false, "-"},
    {"Empty",                "",             NAN,     false, ""},
};
// clang-format on

class Numbers : public testing::TestWithParam<NumberCase> {};

TEST_P(Numbers, AreTakenSo) {
  const NumberCase& row = GetParam();
  std::string_view text = row.text;
  const std::optional<Number> number = takeNumber(text);
  EXPECT_EQ(number.has_value(), !std::isnan(row.value));
  EXPECT_EQ(text, row.rest);
  if (!number) return;
  EXPECT_DOUBLE_EQ(number->value, row.value);
  EXPECT_EQ(number->isInches, row.isInches);
}

INSTANTIATE_TEST_SUITE_P(Pcf, Numbers, testing::ValuesIn(kNumbers),
                         [](const auto& row) { return std::string(row.param.name); });

struct TextCase {
  double number;
  const char* text;
};

TEST(Numbers, AreShownToAThousandth) {
  static constexpr TextCase kRows[] = {
      {168.3, "168.3"}, {1.0 / 3, "0.333"}, {2.0 / 3, "0.667"},
      {0.0004, "0"},    {0.0006, "0.001"},  {1234567.0625, "1234567.063"},
      {-5.5, "-5.5"},   {100, "100"},
  };
  for (const TextCase& row : kRows) EXPECT_EQ(textOf(row.number), row.text) << row.number;
}

struct FeetCase {
  const char* name;
  const char* words;
  std::size_t wanted;
  const char* joined;
};

void PrintTo(const FeetCase& row, std::ostream* out) { *out << row.name; }

// clang-format off
const FeetCase kFeet[] = {
    {"NoBlank",            "12'6\" 0 0 6",              4, "12'6\" 0 0 6"},
    {"Inches",             "12' 6\" 0 0 6 BW",          4, "12'6\" 0 0 6 BW"},
    {"MixedInches",        "12' 6.1/2\" 0 0 6",         4, "12'6.1/2\" 0 0 6"},
    {"MixedInchesApart",   "12' 6 1/2\" 0 0 6",         4, "12'6.1/2\" 0 0 6"},
    {"All",                "1' 6\" -3' 0\" 0' 1/2\" 6", 4, "1'6\" -3'0\" 0'1/2\" 6"},
    {"FeetAlone",          "12' 3' 0 6",                4, "12' 3' 0 6"},
    {"InchesOfTheirOwn",   "12' 6\" 3' 4\"",            4, "12' 6\" 3' 4\""},
    {"WithAMixedBore",     "12' 6\" 3' 1 1/2",          4, "12' 6\" 3' 1 1/2"},
    {"WithoutABore",       "12' 6\" 0 0",               3, "12'6\" 0 0"},
    {"BoresAreNotZero",    "12' 6\" 0 0",               4, "12'6\" 0 0"},
    {"InchesWithoutAMark", "12' 6 7 0 6",               4, "12' 6 7 0 6"},
    {"InchesThatAreNoFraction", "12' 6 5\" 0 6",        4, "12' 6 5\" 0 6"},
    {"DecimalInchesAndAFraction", "12' 6.5 1/2\" 0 6",  4, "12' 6.5 1/2\" 0 6"},
    {"FeetBehindFeet",     "12' 3'6\" 0 6 7",           4, "12' 3'6\" 0 6 7"},
    {"TooFew",             "12' 6\" 0",                 4, "12' 6\" 0"},
};
// clang-format on

class Feet : public testing::TestWithParam<FeetCase> {};

TEST_P(Feet, AreJoinedWithTheirInches) {
  EXPECT_EQ(withFeetJoined(GetParam().words, GetParam().wanted), GetParam().joined);
}

INSTANTIATE_TEST_SUITE_P(Pcf, Feet, testing::ValuesIn(kFeet),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace Vesk::Pcf
