// What is special on Windows: file names, line ends, consoles and pipes.
#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "support/TempFolder.h"
#include "tools/ToolRun.h"

namespace VeskTest {
namespace {

const std::string kPipe = "P-1     01001    00c 0 0 0,0 0 1000,100\n";

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

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

void PrintTo(const NameCase& each, std::ostream* out) { *out << each.arguments; }

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

// A run of the tool whose standard streams are these handles.
class Started {
 public:
  Started(const std::string& arguments, HANDLE input, HANDLE output) {
    const HANDLE errors = openToInherit("errors");
    for (const HANDLE handle : {input, output}) {
      SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    }
    STARTUPINFOA start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = input;
    start.hStdOutput = output;
    start.hStdError = errors;
    std::string words = "\"" VESK_TOOL "\" " + arguments;
    EXPECT_NE(CreateProcessA(nullptr, words.data(), nullptr, nullptr, TRUE,
                             CREATE_NEW_PROCESS_GROUP, nullptr, nullptr, &start, &process_),
              0)
        << GetLastError();
    CloseHandle(errors);
  }
  ~Started() {
    TerminateProcess(process_.hProcess, 99);
    CloseHandle(process_.hProcess);
    CloseHandle(process_.hThread);
  }
  Started(const Started&) = delete;
  Started& operator=(const Started&) = delete;

  static HANDLE openToInherit(const char* name) {
    SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
    return CreateFileA(name, GENERIC_WRITE | GENERIC_READ, FILE_SHARE_READ, &inherit, OPEN_ALWAYS,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
  }

  DWORD number() const { return process_.dwProcessId; }

  int exitCode() const {
    constexpr DWORD kPatience = 20000;
    EXPECT_EQ(WaitForSingleObject(process_.hProcess, kPatience), WAIT_OBJECT_0);
    DWORD code = 0;
    GetExitCodeProcess(process_.hProcess, &code);
    return static_cast<int>(code);
  }

 private:
  PROCESS_INFORMATION process_{};
};

TEST(WindowsStreams, AClosedPipeEndsQuietly) {
  const TempFolder folder;
  writeFile("pipe.dat", kPipe);
  HANDLE read = nullptr;
  HANDLE write = nullptr;
  ASSERT_NE(CreatePipe(&read, &write, nullptr, 0), 0);
  CloseHandle(read);
  const HANDLE input = Started::openToInherit("input");
  {
    const Started run("list pipe.dat", input, write);
    EXPECT_EQ(run.exitCode(), 0);
  }
  CloseHandle(write);
  CloseHandle(input);
  EXPECT_EQ(bytesOf("errors"), "");
}

bool hasPart() {
  for (const auto& entry : std::filesystem::directory_iterator(".")) {
    if (contains(entry.path().string(), ".part-")) return true;
  }
  return false;
}

// Ctrl-C can't be sent to one group of processes alone, Ctrl-Break can.
TEST(WindowsConsole, CtrlBreakEndsWith130AndLeavesNoFile) {
  const TempFolder folder;
  if (GetConsoleWindow() == nullptr && GetConsoleCP() == 0 && AllocConsole() == 0) {
    GTEST_SKIP() << "there is no console";
  }
  HANDLE read = nullptr;
  HANDLE write = nullptr;
  ASSERT_NE(CreatePipe(&read, &write, nullptr, 0), 0);
  const HANDLE output = Started::openToInherit("output");
  {
    const Started run("convert - out.dat", read, output);
    for (int i = 0; i < 400 && !hasPart(); ++i) Sleep(50);
    EXPECT_TRUE(hasPart());
    ASSERT_NE(GenerateConsoleCtrlEvent(CTRL_BREAK_EVENT, run.number()), 0) << GetLastError();
    EXPECT_EQ(run.exitCode(), 130);
  }
  EXPECT_FALSE(hasPart());
  for (const HANDLE handle : {read, write, output}) CloseHandle(handle);
}

}  // namespace
}  // namespace VeskTest
