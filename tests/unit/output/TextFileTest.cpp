// SPDX-License-Identifier: MIT
#include "output/TextFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>

#include "output/OutFile.h"

using namespace Vesk;

namespace {

namespace fs = std::filesystem;

std::string textOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

#ifdef _WIN32
constexpr const char* kLineEnd = "\r\n";
#else
constexpr const char* kLineEnd = "\n";
#endif

std::string nameOfTest() {
  std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
  std::replace(name.begin(), name.end(), '/', '-');
  return "vesk-" + name;
}

struct NameCase {
  const char* name;
  const char* bytes;
  const char32_t* meant;  // on Windows
};

std::ostream& operator<<(std::ostream& out, const NameCase& row) { return out << row.name; }

// On Windows the last row is not valid UTF-8 and is taken in the code page 1252,
// where E4 is U+00E4 as well.
// clang-format off
constexpr NameCase kNames[] = {
    {"Ascii",        "pump.dat",                         U"pump.dat"},
    {"Umlaut",       "P\xC3\xBCmpe.dat",                 U"P\u00FCmpe.dat"},
    {"Japanese",     "\xE9\x85\x8D\xE7\xAE\xA1.dat",     U"\u914D\u7BA1.dat"},
    {"AboveFFFF",    "\xF0\x9D\x84\x9E.dat",             U"\U0001D11E.dat"},
    {"Latin1",       "K\xE4lte.dat",                     U"K\u00E4lte.dat"},
};
// clang-format on

class TextFileTest : public testing::TestWithParam<NameCase> {
 protected:
  TextFileTest() { fs::create_directories(folder_); }
  ~TextFileTest() override { fs::remove_all(folder_); }

  // The file that the name means, found without openTextFile.
  fs::path meant() const {
#ifdef _WIN32
    return folder_ / fs::path(GetParam().meant);
#else
    return folder_ / GetParam().bytes;
#endif
  }

  std::string given() const { return folder_.string() + "/" + GetParam().bytes; }

  // One for each test: they may run at the same time.
  fs::path folder_ = fs::path(testing::TempDir()) / nameOfTest();
};

TEST_P(TextFileTest, OpensTheFileThatTheNameMeans) {
  std::FILE* file = openTextFile(given().c_str(), false);
  ASSERT_NE(file, nullptr);
  std::fputs("one\n", file);
  std::fclose(file);
  EXPECT_EQ(textOf(meant()), std::string("one") + kLineEnd);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 1);

  file = openTextFile(given().c_str(), true);
  ASSERT_NE(file, nullptr);
  std::fputs("two\n", file);
  std::fclose(file);
  EXPECT_EQ(textOf(meant()), std::string("one") + kLineEnd + "two" + kLineEnd);

  file = openTextFile(given().c_str(), false);
  ASSERT_NE(file, nullptr);
  std::fclose(file);
  EXPECT_EQ(textOf(meant()), "");
}

TEST_P(TextFileTest, TheOutputFileOpensIt) {
  OutFile file;
  ASSERT_TRUE(file.open(given().c_str(), kTokens));
  EXPECT_TRUE(fs::exists(meant()));
}

TEST_P(TextFileTest, NoFolderIsNull) {
  errno = 0;
  EXPECT_EQ(openTextFile((folder_.string() + "/none/" + GetParam().bytes).c_str(), false), nullptr);
  EXPECT_EQ(errno, ENOENT);
}

INSTANTIATE_TEST_SUITE_P(Names, TextFileTest, testing::ValuesIn(kNames),
                         [](const auto& row) { return row.param.name; });

}  // namespace
