// Runs with LOCPATH set to a folder that holds the locales named below.
#include <gtest/gtest.h>
#include <vesk.h>

#include <clocale>
#include <cstdio>
#include <functional>
#include <locale>
#include <ostream>
#include <string>

#include "output/NumberText.h"
#include "support/ExportsFixture.h"
#include "support/Text.h"

namespace {

struct LocaleCase {
  const char* name;
  const char* onePointFive;  // as the C library prints it

  friend std::ostream& operator<<(std::ostream& out, const LocaleCase& row) {
    return out << row.name;
  }
};

constexpr LocaleCase kLocales[] = {
    {"de_DE.UTF-8", "1,5"},  // decimal comma
    {"ps_AF.UTF-8",
     "1\xd9\xab"
     "5"},  // U+066B, two bytes
};

std::string currentLocale() { return std::setlocale(LC_ALL, nullptr); }

class LocaleTest : public VeskTest::ExportsFixture, public testing::WithParamInterface<LocaleCase> {
 protected:
  void SetUp() override {
    const LocaleCase& row = GetParam();
    ASSERT_NE(std::setlocale(LC_ALL, row.name), nullptr)
        << "the locale " << row.name << " can't be set; LOCPATH must name the folder that holds it";
    char text[16];
    std::snprintf(text, sizeof text, "%.1f", 1.5);
    ASSERT_STREQ(text, row.onePointFive) << "the locale " << row.name << " has another separator";
  }

  void TearDown() override {
    std::locale::global(std::locale::classic());
    std::setlocale(LC_ALL, "C");
  }
};

constexpr double kA[] = {0.5, -1234567.25, 1e9};
constexpr double kB[] = {10.125, 0, -0.00001};
constexpr double kC[] = {1000000.5, 7.75, 3};
constexpr double kD[] = {-2.5, 100.0625, 12};

const std::function<void()> kCalls[] = {
    [] { vk_openVesk("locale"); },
    [] { vk_setHeader("P-1", "01", 1234); },
    [] { vk_writePnt(kA); },
    [] { vk_writeSeg(kA, kB); },
    [] { vk_writeTri(kA, kB, kC); },
    [] { vk_writeQua(kA, kB, kC, kD); },
    [] { vk_writeTxt(kA, kB, kC, 0.5, 2.5, 1, 0, "1,5 1.5"); },
    [] { vk_writeBox(kA, kB, kC, kD); },
    [] { vk_writeRed(kA, kB, kC, kD, kD, kC, kB, kA); },
    [] { vk_writeCyl(kA, kB, 219.1); },
    [] { vk_writeCon(kA, kB, 219.1, 168.3); },
    [] { vk_writeTor(kA, kB, kC, 0.125); },
    [] { vk_writeElb(kA, kB, kC, kD, 1.5); },
    [] { vk_openVesk(nullptr); },
};

std::string fileOfAllCalls() {
  for (const auto& call : kCalls) call();
  return VeskTest::readFile("vesklocale.dat");
}

TEST_P(LocaleTest, TheBytesOfAFileAreThoseOfTheCLocale) {
  const std::string here = fileOfAllCalls();
  std::setlocale(LC_ALL, "C");
  EXPECT_TEXT(here, fileOfAllCalls());
  EXPECT_TRUE(here.starts_with("P-1     010YA    00l pt 0.5 -1234567.25 1000000000\n")) << here;
}

TEST_P(LocaleTest, TheBytesOfAFileDoNotDependOnTheStreamsLocale) {
  std::locale::global(std::locale(GetParam().name));
  const std::string here = fileOfAllCalls();
  std::locale::global(std::locale::classic());
  EXPECT_TEXT(here, fileOfAllCalls());
}

TEST_P(LocaleTest, NoCallChangesTheLocale) {
  const std::string before = currentLocale();
  for (const auto& call : kCalls) {
    call();
    EXPECT_EQ(currentLocale(), before);
  }
}

TEST_P(LocaleTest, NumbersHaveAPointAndTheirWidth) {
  std::string text;
  Vesk::appendField9(text, 1234.5);
  Vesk::appendField9(text, -1e100);
  Vesk::appendFixed(text, 1.5, 4, 0);
  Vesk::appendFixed(text, 1234567.25, 2, 12);
  Vesk::appendInt(text, -1234567);
  EXPECT_TEXT(text, " 1234.500-1.00e1001.5  1234567.25-1234567");
}

INSTANTIATE_TEST_SUITE_P(Locales, LocaleTest, testing::ValuesIn(kLocales),
                         [](const testing::TestParamInfo<LocaleCase>& row) {
                           return std::string(row.param.name).substr(0, 2);
                         });

}  // namespace
