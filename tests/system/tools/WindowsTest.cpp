// SPDX-License-Identifier: MIT
// What is special on Windows: file names, line ends and pipes.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "support/TempFolder.h"
#include "tools/StartedTool.h"
#include "tools/ToolRun.h"

namespace VeskTest {
namespace {

struct NameCase {
  const char* name;
  const char* arguments;  // F is the current folder with its drive
  const char* out;
};

constexpr NameCase kNames[] = {
    {"Backslashes", "info .\\sub\\pipe.dat", ".\\sub\\pipe.dat\n"},
    {"BothSlashes", "info sub/..\\sub/pipe.dat", "elements  1\n"},
    {"Drive", "info F\\sub\\pipe.dat", "elements  1\n"},
    {"PlaceBehindADrive", "show F\\sub\\pipe.dat:1", "cylinder, token style\n"},
    {"FindingBehindADrive", "show F\\sub\\pipe.dat:1:31-40:", "cylinder, token style\n"},
    {"Folder", "info sub", "elements  1\n"},
    {"FolderWithABackslash", "info sub\\", "elements  1\n"},
    {"PatternBehindABackslash", "info sub\\*.dat", "elements  1\n"},
    {"NamesAreUtf8", "info \"sub\\K\xC3\xBChlung.txt\"", "sub\\K\xC3\xBChlung.txt\n"},
    {"SlashBeginsAFileAndNoOption", "convert sub/pipe.dat /nofolder/x.dat", ""},
    {"NulTakesEverything", "convert -f sub\\pipe.dat NUL", ""},
};

class WindowsNames : public testing::TestWithParam<NameCase> {};

TEST_P(WindowsNames, AreUnderstood) {
  const TempFolder folder;
  std::filesystem::create_directory("sub");
  writeFile("sub\\pipe.dat", kPipe);
  writeFile("sub\\K\xC3\xBChlung.txt", kPipe);
  std::string arguments;
  for (const char* c = GetParam().arguments; *c != '\0'; ++c) {
    if (*c == 'F') {
      arguments += std::filesystem::current_path().string();
    } else {
      arguments += *c;
    }
  }
  const ToolRun run = runTool(arguments);
  const bool isRefused = contains(arguments, "/nofolder");
  EXPECT_EQ(run.exit, isRefused ? 4 : 0) << run.err;
  EXPECT_TRUE(contains(run.out, GetParam().out)) << run.out;
}

INSTANTIATE_TEST_SUITE_P(Windows, WindowsNames, testing::ValuesIn(kNames),
                         [](const auto& each) { return std::string(each.param.name); });

// Ends with a quote: CTest takes a backslash at the end for its own.
void PrintTo(const NameCase& each, std::ostream* out) { *out << '"' << each.arguments << '"'; }

std::string bytesOf(const char* name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(WindowsStreams, KeepTheirBytes) {
  const TempFolder folder;
  writeFile("pipe.dat", kPipe);
  runTool("convert pipe.dat -");
  EXPECT_EQ(bytesOf("tool.out"), kPipe);
  runTool("list pipe.dat --csv");
  EXPECT_FALSE(contains(bytesOf("tool.out"), "\r"));
}

TEST(WindowsFiles, AnExistingTargetIsReplaced) {
  const TempFolder folder;
  writeFile("pipe.dat", kPipe);
  writeFile("old.dat", "an older file\n");
  EXPECT_EQ(runTool("convert -f pipe.dat old.dat").exit, 0);
  EXPECT_EQ(bytesOf("old.dat"), kPipe);
}

TEST(WindowsStreams, AClosedPipeEndsQuietly) {
  const TempFolder folder;
  writeFile("pipe.dat", kPipe);
  HANDLE read = nullptr;
  HANDLE write = nullptr;
  ASSERT_NE(CreatePipe(&read, &write, nullptr, 0), 0);
  CloseHandle(read);
  const HANDLE input = openForTool("pipe.dat", true);
  const HANDLE errors = openForTool("errors", false);
  EXPECT_EQ(StartedTool("list pipe.dat", input, write, errors).exitCode(), 141);
  for (const HANDLE handle : {write, input, errors}) CloseHandle(handle);
  EXPECT_EQ(bytesOf("errors"), "");
}

}  // namespace
}  // namespace VeskTest
