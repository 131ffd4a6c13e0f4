// SPDX-License-Identifier: MIT
#include "records/Headers.h"

#include <gtest/gtest.h>

#include <ostream>

#include "vesk/RecordStyle.h"

namespace VeskTool {
namespace {

struct KeyCase {
  const char* name;
  const char* text;
  const char* key;  // nullptr: refused
};

void PrintTo(const KeyCase& each, std::ostream* out) { *out << each.text; }

constexpr KeyCase kKeys[] = {
    {"FirstFieldOnly", "P-1001", "P-1001  "},
    {"BothFields", "P-1001 01", "P-1001  01"},
    {"ShortGroup", "P-1001 1", "P-1001  1 "},
    {"BlankInside", "PUMP A 01", "PUMP A  01"},
    {"LongWordBehindABlank", "PUMP ABC", "PUMP ABC"},
    {"FullWidths", "ABCDEFGH XY", "ABCDEFGHXY"},
    {"TooLong", "ABCDEFGHI", nullptr},
    {"TooLongBeforeTheGroup", "ABCDEFGHI 01", nullptr},
    {"Nothing", "", nullptr},
    {"ControlCharacter", "P\x1b", nullptr},
};

class HeaderKeyTest : public testing::TestWithParam<KeyCase> {};

TEST_P(HeaderKeyTest, HasTheWidthsOfItsFields) {
  const auto key = headerKeyOf(GetParam().text);
  EXPECT_EQ(key.has_value(), GetParam().key != nullptr);
  if (key && GetParam().key != nullptr) {
    EXPECT_EQ(*key, GetParam().key);
  }
}

INSTANTIATE_TEST_SUITE_P(Texts, HeaderKeyTest, testing::ValuesIn(kKeys),
                         [](const auto& each) { return std::string(each.param.name); });

// 46655 is ZZZ in base 36.
TEST(Headers, StandInEveryLineOfAnElement) {
  Vesk::HeaderFields header;
  setHeader(header, "NEW     77");
  setCounter(header, 46655);
  std::string lines =
      "P-1     01001    00x 1 2 0\r\n"
      "P-1     01001    01x P-1     01001\r\n";
  putHeader(lines, Vesk::kTokens, header);
  EXPECT_EQ(lines,
            "NEW     77ZZZ    00x 1 2 0\r\n"
            "NEW     77ZZZ    01x P-1     01001\r\n");
  header.f6.assign("zone", false);
  lines = "60zone01  P-1     001PNT\n61zone01  P-1     001PNT\n";
  putHeader(lines, Vesk::kFixedColumns, header);
  EXPECT_EQ(lines, "60zone77  NEW     ZZZPNT\n61zone77  NEW     ZZZPNT\n");
}

TEST(Headers, ShowNoControlCharacters) {
  EXPECT_EQ(shownHeader("A\x1b[2J   01"), "A?[2J 01");
  EXPECT_EQ(shownHeader("          "), "");
}

}  // namespace
}  // namespace VeskTool
