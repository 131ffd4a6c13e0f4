// SPDX-License-Identifier: MIT
#include "output/Utf16.h"

#include <gtest/gtest.h>

#include <ostream>

using namespace Vesk;

namespace {

struct Case {
  const char* name;
  std::string_view utf8;
  const char16_t* utf16;  // nullptr: not valid
};

std::ostream& operator<<(std::ostream& out, const Case& row) { return out << row.name; }

// The bounds of the forms and of the surrogates stand in table 3-7 of the
// Unicode standard.
// clang-format off
constexpr Case kCases[] = {
    {"Empty",                      "",                  u""},
    {"Ascii",                      "pump-1",            u"pump-1"},
    {"LastOfOneByte",              "\x7F",              u"\u007F"},
    {"FirstOfTwoBytes",            "\xC2\x80",          u"\u0080"},
    {"Umlaut",                     "\xC3\xA4x",         u"\u00E4x"},
    {"LastOfTwoBytes",             "\xDF\xBF",          u"\u07FF"},
    {"FirstOfThreeBytes",          "\xE0\xA0\x80",      u"\u0800"},
    {"LastBeforeSurrogates",       "\xED\x9F\xBF",      u"\uD7FF"},
    {"FirstAfterSurrogates",       "\xEE\x80\x80",      u"\uE000"},
    {"LastOfThreeBytes",           "\xEF\xBF\xBF",      u"\uFFFF"},
    {"FirstOfFourBytes",           "\xF0\x90\x80\x80",  u"\U00010000"},
    {"TrebleClef",                 "\xF0\x9D\x84\x9E",  u"\U0001D11E"},
    {"LastOfAll",                  "\xF4\x8F\xBF\xBF",  u"\U0010FFFF"},
    {"Latin1Umlaut",               "\xE4x",             nullptr},
    {"Latin1UmlautAtTheEnd",       "x\xE4",             nullptr},
    {"StrayFollower",              "\x80",              nullptr},
    {"StrayFollowerAfterAscii",    "a\xBF",             nullptr},
    {"OverlongSlash",              "\xC0\xAF",          nullptr},
    {"OverlongTwoBytes",           "\xC1\xBF",          nullptr},
    {"OverlongThreeBytes",         "\xE0\x9F\xBF",      nullptr},
    {"OverlongFourBytes",          "\xF0\x8F\xBF\xBF",  nullptr},
    {"FirstSurrogate",             "\xED\xA0\x80",      nullptr},
    {"LastSurrogate",              "\xED\xBF\xBF",      nullptr},
    {"AboveTheLast",               "\xF4\x90\x80\x80",  nullptr},
    {"FiveBytes",                  "\xF8\x88\x80\x80\x80", nullptr},
    {"NoLead",                     "\xFF",              nullptr},
    {"CutAfterOneOfTwo",           "\xC3",              nullptr},
    {"CutAfterTwoOfThree",         "\xE2\x82",          nullptr},
    {"CutAfterThreeOfFour",        "\xF0\x9D\x84",      nullptr},
    {"LeadWhereAFollowerBelongs",  "\xE2\xC3\xA4",      nullptr},
    {"AsciiWhereAFollowerBelongs", "\xF0\x9D\x84x",     nullptr},
};
// clang-format on

class Utf16Test : public testing::TestWithParam<Case> {};

TEST_P(Utf16Test, TakesValidUtf8Only) {
  const auto& [name, utf8, utf16] = GetParam();
  const std::optional<std::u16string> wide = toUtf16(utf8);
  ASSERT_EQ(wide.has_value(), utf16 != nullptr);
  if (wide) {
    EXPECT_EQ(*wide, utf16);
  }
}

INSTANTIATE_TEST_SUITE_P(Texts, Utf16Test, testing::ValuesIn(kCases),
                         [](const auto& row) { return row.param.name; });

}  // namespace
