// SPDX-License-Identifier: MIT
// Runs with LOCPATH set to a folder that holds the locales named below.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <locale.h>
#include <vesk.h>

#include <clocale>
#include <cstdio>
#include <functional>
#include <locale>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include "input/ParseDouble.h"
#include "input/RecordTesting.h"
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
    {"de_DE.UTF-8", "1,5"},
    {"az_AZ.UTF-8", "1,5"},
    {"fr_FR.ISO-8859-1", "1,5"},
    {"lt_LT.UTF-8", "1,5"},
    {"pl_PL.UTF-8", "1,5"},
    {"ru_RU.KOI8-R", "1,5"},
    {"tr_TR.UTF-8", "1,5"},  // another upper case of i
    {"de_CH.UTF-8", "1.5"},  // thousands with apostrophes
    {"en_US.UTF-8", "1.5"},
    {"fa_IR.UTF-8", "1.5"},
    {"hi_IN.UTF-8", "1.5"},
    {"ja_JP.EUC-JP", "1.5"},  // letters of several bytes
    {"th_TH.TIS-620", "1.5"},
    {"ps_AF.UTF-8",
     "1\xd9\xab"
     "5"},  // U+066B, two bytes
};

// All that a program can set, in words.
std::string currentLocale() {
  char thread[32];
  std::snprintf(thread, sizeof thread, "%p", static_cast<void*>(uselocale(nullptr)));
  return std::setlocale(LC_ALL, nullptr) + std::string("; ") + thread + "; " + std::locale().name();
}

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

  void TearDown() override { leave(); }

  static void leave() {
    uselocale(LC_GLOBAL_LOCALE);
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

// The shared library, loaded by hand, and its thirteen functions.
class Library {
 public:
  Library() : handle_(dlopen(VESK_LIBRARY, RTLD_NOW | RTLD_LOCAL)) {
    if (handle_ == nullptr) ADD_FAILURE() << dlerror();
  }
  ~Library() {
    if (handle_ != nullptr) dlclose(handle_);
  }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  template <class Function>
  Function* get(const char* name, Function*) const {
    void* const symbol = dlsym(handle_, name);
    if (symbol == nullptr) ADD_FAILURE() << name;
    return reinterpret_cast<Function*>(symbol);
  }

 private:
  void* handle_;
};

// What the library writes; no call of it may change the locale.
std::string fileOf(const Library& library) {
#define CALL(function, ...)                       \
  library.get(#function, &function)(__VA_ARGS__); \
  EXPECT_EQ(currentLocale(), before) << #function
  const std::string before = currentLocale();
  CALL(vk_openVesk, "loaded");
  CALL(vk_setHeader, "P-1", "01", 1234);
  CALL(vk_writePnt, kA);
  CALL(vk_writeSeg, kA, kB);
  CALL(vk_writeTri, kA, kB, kC);
  CALL(vk_writeQua, kA, kB, kC, kD);
  CALL(vk_writeTxt, kA, kB, kC, 0.5, 2.5, 1, 0, "1,5 1.5");
  CALL(vk_writeBox, kA, kB, kC, kD);
  CALL(vk_writeRed, kA, kB, kC, kD, kD, kC, kB, kA);
  CALL(vk_writeCyl, kA, kB, 219.1);
  CALL(vk_writeCon, kA, kB, 219.1, 168.3);
  CALL(vk_writeTor, kA, kB, kC, 0.125);
  CALL(vk_writeElb, kA, kB, kC, kD, 1.5);
  CALL(vk_openVesk, nullptr);
#undef CALL
  return VeskTest::readFile("veskloaded.dat");
}

TEST_P(LocaleTest, TheBytesAreTheSameHoweverTheLocaleIsSetBeforeOrAfterLoading) {
  const std::string name = GetParam().name;
  const locale_t own = newlocale(LC_ALL_MASK, name.c_str(), nullptr);
  ASSERT_NE(own, nullptr);
  const std::function<void()> ways[] = {
      [&] { std::setlocale(LC_ALL, name.c_str()); },
      [&] { uselocale(own); },
      [&] { std::locale::global(std::locale(name)); },
  };
  leave();
  const std::string expected = fileOfAllCalls();
  ASSERT_TRUE(expected.starts_with("P-1     010YA    00l pt 0.5 ")) << expected;
  for (const auto& way : ways) {
    way();
    {
      const Library loadedAfter;
      EXPECT_TEXT(fileOf(loadedAfter), expected);
    }
    leave();
    {
      const Library loadedBefore;
      way();
      EXPECT_TEXT(fileOf(loadedBefore), expected);
      leave();
    }
  }
  freelocale(own);
}

// What is read, written again.
std::string writtenAgain(const std::string& file) {
  std::string text;
  Vesk::RecordFile records(std::make_unique<Vesk::TextSource>(file), "f");
  for (;;) {
    const Vesk::RecordFile::Found found = records.next();
    if (found == Vesk::RecordFile::Found::kEnd) return text;
    text += found == Vesk::RecordFile::Found::kElement
                ? Vesk::writtenText(Vesk::holderOf(records.element()), records.mode())
                : records.textOf(records.fault());
  }
}

TEST_P(LocaleTest, ReadingGivesTheSameValuesAndKeepsTheLocale) {
  const std::string before = currentLocale();
  for (const char* name : {"elements.columns.dat", "elements.tokens.dat"}) {
    const std::string file =
        VeskTest::readFile(std::string(VESK_TEST_SOURCE_DIR "/golden/") + name);
    EXPECT_TEXT(writtenAgain(file), file);
  }
  EXPECT_EQ(Vesk::parseDouble("-1234.5e-1"), -123.45);
  EXPECT_EQ(Vesk::parseDouble("1,5"), std::nullopt);
  EXPECT_EQ(currentLocale(), before);
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
                           return std::string(row.param.name).substr(0, 5);
                         });

}  // namespace
