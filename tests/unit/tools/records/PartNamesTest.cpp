// SPDX-License-Identifier: MIT
#include "records/PartNames.h"

#include <gtest/gtest.h>

#include <ostream>
#include <set>

namespace VeskTool {
namespace {

struct NameCase {
  const char* name;
  const char* value;
  const char* safe;
};

void PrintTo(const NameCase& each, std::ostream* out) { *out << each.value; }

constexpr NameCase kNames[] = {
    {"PlainNameStays", "P-1001.a+b_C", "P-1001.a+b_C"},
    {"BlankBecomesALine", "P-1001 01", "P-1001_01"},
    {"FoldersAreNone", "../..\\x", "_.._.._x"},
    {"QuotesAndStars", "8\"*?<>|:", "8_______"},
    {"BytesOfOtherLetters", "\xC3\xA4", "__"},
    {"ControlCharacters", "a\tb\x1b", "a_b_"},
    {"Nothing", "", "blank"},
    {"Device", "con", "con_"},
    {"DeviceWithAnEnding", "Com1.x", "Com1_.x"},
    {"NoDevice", "com", "com"},
    {"NoDeviceByALongerName", "CON1", "CON1"},
    {"HiddenFile", ".x", "_.x"},
    {"Option", "-f", "_-f"},
    {"DotAtTheEnd", "a.", "a._"},
};

class SafeNameTest : public testing::TestWithParam<NameCase> {};

TEST_P(SafeNameTest, IsTakenByEverySystem) {
  EXPECT_EQ(safeName(GetParam().value), GetParam().safe);
}

INSTANTIATE_TEST_SUITE_P(Values, SafeNameTest, testing::ValuesIn(kNames),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(PartNames, DifferInMoreThanTheirCase) {
  PartNames names;
  EXPECT_EQ(names.nameFor("A/b"), "A_b");
  EXPECT_EQ(names.nameFor("a_B"), "a_B-2");
  EXPECT_EQ(names.nameFor("a_b-3"), "a_b-3");
  EXPECT_EQ(names.nameFor("a?b"), "a_b-4");
}

TEST(PartNames, AreFoundAtOnceForManyThatAreTheSame) {
  PartNames names;
  std::set<std::string> all;
  for (int i = 0; i < 100000; ++i) all.insert(names.nameFor("?"));
  EXPECT_EQ(all.size(), 100000u);
}

}  // namespace
}  // namespace VeskTool
