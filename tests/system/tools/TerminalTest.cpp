// SPDX-License-Identifier: MIT
// The tool at a real terminal: a pseudo-terminal, whose other end is here.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "support/JsonSchema.h"
#include "support/TempFolder.h"
#include "terminal/Progress.h"
#include "tools/ToolRun.h"

namespace VeskTest {
namespace {

// A run of the tool with a terminal as stdout and stderr, and a pipe as stdin.
class AtTerminal {
 public:
  AtTerminal(const std::vector<std::string>& words, bool inputIsTerminal,
             const char* variable = nullptr) {
    int input[2];
    EXPECT_EQ(pipe(input), 0);
    child_ = forkpty(&terminal_, nullptr, nullptr, nullptr);
    if (child_ == 0) {
      if (!inputIsTerminal) dup2(input[0], 0);
      close(input[0]);
      close(input[1]);
      for (const char* name : {"CI", "NO_COLOR"}) unsetenv(name);
      if (variable != nullptr) setenv(variable, "1", 1);
      std::vector<char*> arguments;
      std::string tool = VESK_TOOL;
      arguments.push_back(tool.data());
      std::vector<std::string> copy = words;
      for (std::string& word : copy) arguments.push_back(word.data());
      arguments.push_back(nullptr);
      execv(VESK_TOOL, arguments.data());
      _exit(127);
    }
    close(input[0]);
    input_ = input[1];
  }

  ~AtTerminal() {
    endInput();
    if (child_ > 0) {
      kill(child_, SIGKILL);
      waitpid(child_, nullptr, 0);
    }
    close(terminal_);
  }
  AtTerminal(const AtTerminal&) = delete;
  AtTerminal& operator=(const AtTerminal&) = delete;

  void give(const std::string& text) {
    EXPECT_EQ(write(input_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }

  void type(const std::string& keys) {
    EXPECT_EQ(write(terminal_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
  }

  void endInput() {
    if (input_ >= 0) close(input_);
    input_ = -1;
  }

  // What the screen has got, after waiting for more at most so long.
  const std::string& screen(int milliseconds) {
    pollfd ready{terminal_, POLLIN, 0};
    while (poll(&ready, 1, milliseconds) > 0) {
      char bytes[4096];
      const ssize_t count = read(terminal_, bytes, sizeof bytes);
      if (count <= 0) break;
      screen_.append(bytes, static_cast<std::size_t>(count));
      milliseconds = 0;
    }
    return screen_;
  }

  // Until the end of the run.
  int exitCode() {
    constexpr int kPatience = 10000;
    for (;;) {
      const std::size_t before = screen_.size();
      if (screen(kPatience).size() == before) break;
    }
    int status = 0;
    waitpid(child_, &status, 0);
    child_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  pid_t child_ = -1;
  int terminal_ = -1;
  int input_ = -1;
  std::string screen_;
};

// More than the tool reads at a time.
std::string manyPipes() {
  std::string text;
  for (int i = 0; i < 8000; ++i) text += kPipe;
  return text;
}

// Gives more and more until the text is on the screen, for ten seconds at most.
bool appears(AtTerminal& run, const std::string& text) {
  const std::string more = manyPipes();
  for (int i = 0; i < 200; ++i) {
    if (contains(run.screen(50), text)) return true;
    run.give(more);
  }
  return false;
}

TEST(Terminal, ProgressIsShownAndCleared) {
  AtTerminal run({"info", "-"}, false);
  EXPECT_TRUE(appears(run, "vesk info: "));
  run.endInput();
  EXPECT_EQ(run.exitCode(), 0);
  const std::string screen = run.screen(0);
  const std::size_t answer = screen.find("<stdin>");
  ASSERT_NE(answer, std::string::npos) << screen;
  // The line is drawn over with blanks before the answer.
  const std::size_t blanks = screen.rfind("\r          ");
  EXPECT_LT(screen.rfind("vesk info: "), blanks);
  EXPECT_EQ(screen.find("vesk info: ", answer), std::string::npos);
}

// The numbers of one line belong together, whatever the clock says: 10 of 40 MB are a quarter, and
// three quarters at this speed take the seconds that are left.
TEST(Terminal, ProgressIsAQuarterOfTheWay) {
  constexpr std::uint64_t kAll = 40000000;
  for (const bool isLine : {false, true}) {
    using VeskTool::Progress;
    Progress progress("vesk info", isLine ? Progress::Mode::kLine : Progress::Mode::kJson);
    progress.expect(kAll);
    usleep(220000);
    testing::internal::CaptureStderr();
    progress.advance(kAll / 4);
    const std::string text = testing::internal::GetCapturedStderr();
    if (isLine) {
      EXPECT_TRUE(text.starts_with("\rvesk info: 25 %, 10.0 of 40.0 MB, ")) << text;
      EXPECT_TRUE(contains(text, " MB/s, ")) << text;
      continue;
    }
    const auto json = nlohmann::json::parse(text);
    EXPECT_EQ(json["bytes"], kAll / 4);
    EXPECT_EQ(json["total"], kAll);
    const double left = json["secondsLeft"].get<double>();
    const double seconds = kAll / 4 / json["bytesPerSecond"].get<double>();
    EXPECT_NEAR(left, 3 * seconds, 0.05 + 1e-3);
  }
}

// Of a file that grows while it is read no end is known.
TEST(Terminal, ProgressBeyondTheEndHasNone) {
  VeskTool::Progress progress("vesk info", VeskTool::Progress::Mode::kJson);
  progress.expect(999);
  usleep(120000);
  testing::internal::CaptureStderr();
  progress.advance(1000);
  const auto json = nlohmann::json::parse(testing::internal::GetCapturedStderr());
  EXPECT_EQ(json["bytes"], 1000);
  EXPECT_FALSE(json.contains("total")) << json;
  EXPECT_FALSE(json.contains("secondsLeft")) << json;
}

// Text of a header that would set a colour.
TEST(Terminal, CsvHasNoControlCharacters) {
  for (const char* form : {"--csv", "--limit=0"}) {
    AtTerminal run({"list", "-", form, "--color", "never"}, false);
    run.give("P\x1b[31m  01001    00c 0 0 0,0 0 1000,100\n");
    run.endInput();
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(contains(run.screen(0), "P?[31m")) << run.screen(0);
  }
}

TEST(Terminal, NoProgressForWhatIsQuick) {
  AtTerminal run({"info", "-", "--color", "never"}, false);
  run.give(manyPipes());
  run.endInput();
  EXPECT_EQ(run.exitCode(), 0);
  EXPECT_FALSE(contains(run.screen(0), "vesk info")) << run.screen(0);
}

TEST(Terminal, NoProgressUnderCi) {
  AtTerminal run({"info", "-", "--color", "never"}, false, "CI");
  EXPECT_FALSE([&] {
    for (int i = 0; i < 14; ++i) {
      if (contains(run.screen(50), "vesk info")) return true;
      run.give(manyPipes());
    }
    return false;
  }());
  run.endInput();
  EXPECT_EQ(run.exitCode(), 0);
  EXPECT_TRUE(run.screen(0).starts_with("<stdin>")) << run.screen(0);
}

TEST(Terminal, ColourIsThereAndNoColorTakesItAway) {
  {
    AtTerminal run({"info", "-"}, false);
    run.give(kPipe);
    run.endInput();
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(contains(run.screen(0), "\x1b[1m<stdin>\x1b[0m"));
  }
  {
    AtTerminal run({"info", "-"}, false, "NO_COLOR");
    run.give(kPipe);
    run.endInput();
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_FALSE(contains(run.screen(0), "\x1b["));
    EXPECT_TRUE(contains(run.screen(0), "<stdin>"));
  }
}

TEST(Terminal, ColourIsNotForPipesUnlessAskedFor) {
  const TempFolder folder;
  EXPECT_FALSE(contains(runTool("info -", kPipe).out, "\x1b["));
  EXPECT_TRUE(contains(runTool("info - --color always", kPipe).out, "\x1b[1m<stdin>"));
}

// Where a line for people is not wanted, under CI, one for programs may be.
TEST(Terminal, ProgressAsJson) {
  AtTerminal run({"info", "-", "--progress", "json", "--color", "never"}, false, "CI");
  EXPECT_TRUE(appears(run, "{\"schema\":\"vesk.progress/1\",\"bytes\":"));
  run.endInput();
  EXPECT_EQ(run.exitCode(), 0);
  const std::string line = run.screen(0).substr(0, run.screen(0).find('\r'));
  std::ifstream schema(VESK_SCHEMA_FOLDER "/progress.json");
  EXPECT_EQ(schemaFault(nlohmann::json::parse(line), nlohmann::json::parse(schema)), "") << line;
}

TEST(Terminal, CtrlCEndsWith130AndLeavesNoFile) {
  const TempFolder folder;
  AtTerminal run({"convert", "-", "out.dat"}, true);
  run.type(kPipe);
  // It has begun once its temporary file is there.
  const auto hasPart = [] { return !std::filesystem::is_empty("."); };
  for (int i = 0; i < 200 && !hasPart(); ++i) run.screen(50);
  EXPECT_TRUE(hasPart());
  run.type("\x03");
  EXPECT_EQ(run.exitCode(), 130);
  EXPECT_FALSE(hasPart());
}

// Runs with these as stdout; returns the exit code and what stderr has got.
int exitWithOutput(const std::string& arguments, int output) {
  const pid_t child = fork();
  if (child == 0) {
    dup2(output, 1);
    const int errors = open("errors", O_WRONLY | O_CREAT, 0600);
    dup2(errors, 2);
    const std::string command = "exec \"" VESK_TOOL "\" " + arguments;
    execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
    _exit(127);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// Not with what says "nothing found".
TEST(Streams, AClosedPipeEndsQuietlyWithACodeOfItsOwn) {
  const TempFolder folder;
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  close(ends[0]);
  EXPECT_EQ(exitWithOutput("list \"" + golden("pump.dat") + "\"", ends[1]), 141);
  close(ends[1]);
  EXPECT_EQ(readFile("errors"), "");
}

// ESC [ 2 J clears the screen; 0x9B is ESC [ in one character.
TEST(Terminal, NoTextOfAFileReachesItRaw) {
  const TempFolder folder;
  const std::string header = "P\x1b[2J\xC2\x9b ";
  writeFile("evil.dat", header + kPipe.substr(8));
  for (const std::vector<std::string>& words : {std::vector<std::string>{"list", "evil.dat"},
                                                {"list", "--csv", "evil.dat"},
                                                {"show", "evil.dat:1"},
                                                {"info", "--headers", "evil.dat"},
                                                {"measure", "evil.dat"},
                                                {"show", "evil.dat:1", "--color", "always"}}) {
    AtTerminal run(words, false);
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_FALSE(contains(run.screen(0), "\x1b[2J")) << words[0];
    EXPECT_FALSE(contains(run.screen(0), "\xC2\x9b")) << words[0];
  }
  AtTerminal run({"list", "evil.dat", "--color", "never"}, false);
  EXPECT_EQ(run.exitCode(), 0);
  EXPECT_TRUE(contains(run.screen(0), "P?[2J?")) << run.screen(0);
}

// Colours are ours alone where the text of a file is shown.
TEST(Terminal, NoTextOfAFileColoursIt) {
  const TempFolder folder;
  writeFile("evil.dat", "P\x1b[31m  " + kPipe.substr(8));
  for (const std::vector<std::string>& words :
       {std::vector<std::string>{"list", "evil.dat"}, {"show", "evil.dat:1"}}) {
    AtTerminal run(words, false);
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(contains(run.screen(0), "P?[31m")) << run.screen(0);
    EXPECT_FALSE(contains(run.screen(0), "\x1b[31m")) << words[0];
  }
}

TEST(Terminal, APipeGetsTheBytesOfAFileAsTheyAre) {
  const TempFolder folder;
  const std::string header = "P\x1b[31m  ";
  writeFile("evil.dat", header + kPipe.substr(8));
  EXPECT_TRUE(contains(runTool("list evil.dat --color never").out, "P\x1b[31m"));
  EXPECT_TRUE(contains(runTool("show evil.dat:1 --color never").out, header + kPipe.substr(8)));
}

TEST(Terminal, WatchChecksAgainAndEndsByCtrlC) {
  const TempFolder folder;
  writeFile("plant.dat", kPipe);
  AtTerminal run({"check", "--watch", "plant.dat", "--color", "never"}, true);
  const auto shows = [&](const std::string& text) {
    for (int i = 0; i < 200 && !contains(run.screen(50), text); ++i) continue;
    return contains(run.screen(0), text);
  };
  EXPECT_TRUE(shows("in 1 element")) << run.screen(0);
  writeFile("plant.dat", kPipe + "P-1     01002    00c 0 0 2000,0 0 1000,100\n");
  EXPECT_TRUE(shows("in 2 elements")) << run.screen(0);
  run.type("\x03");
  EXPECT_EQ(run.exitCode(), 130);
}

struct ShellCase {
  const char* name;
  const char* command;  // @ is the tool
  int exit;
  const char* err;
};

// With pipe.dat, a pipe, and old.dat, which is not one. The limit of ulimit is
// in kilobytes.
constexpr ShellCase kShells[] = {
    {"InputIsClosed", "@ info - <&-", 3, "vesk: error: <stdin>: Bad file descriptor\n"},
    {"OutputIsClosed", "@ info pipe.dat >&-", 4,
     "vesk: error: standard output: Bad file descriptor\n"},
    // What is said must not get into the file that is written.
    {"ErrorsAreClosed", "@ convert wide.dat wide2.dat --style fixed 2>&- && cat wide2.dat", 1, ""},
    {"FileOfTheLimitedSize", "ulimit -f 1; @ convert -f large.dat old.dat", 4,
     "vesk: error: old.dat: File too large\n"},
    {"ReaderOfThePipeDies", "@ list --csv large.dat | head -n 1", 141, ""},
    // What is found is not "nothing", whoever reads it.
    {"ReaderOfCheckDies", "@ check --max 0 large.dat | head -n 1", 141, ""},
    {"ReaderOfDiffDies", "@ diff large.dat pipe.dat | head -n 1", 141, ""},
    // Another file behind a named pipe: the third element is the second of those that were chosen.
    {"VerifySaysWhatDiffersAndWhatIsMore",
     "mkfifo way; { cat way >/dev/null; cat other.dat >way; } & "
     "@ convert three.dat way -f --lines 2-3 --verify",
     1,
     "three.dat:3: error: differs in line 2 of way [V311]\n"
     "three.dat:3: error: more elements in way [V311]\n"
     "vesk: verified 2 elements, 2 differ\n"},
    {"VerifySaysWhatIsMissing",
     "mkfifo way; { cat way >/dev/null; cat pipe.dat >way; } & "
     "@ convert three.dat way -f --lines 1-2 --verify",
     1,
     "three.dat:2: error: missing or damaged in way [V311]\n"
     "vesk: verified 2 elements, 1 differ\n"},
    {"AReplacedFileKeepsItsRights",
     "cp pipe.dat mine.dat; chmod 604 mine.dat; @ convert -f pipe.dat mine.dat && "
     "test $(stat -c %a mine.dat) = 604",
     0, ""},
#ifndef VESK_SANITIZED  // which takes much memory
    // 320,000 elements, 13 MB, through 1.5 MB beside what the program takes for one.
    {"MemoryOfInfoIsConstant", "limited; many | @ info -", 0, ""},
    {"MemoryOfListIsConstant", "limited; many | @ list -", 0, ""},
    {"MemoryOfCheckIsConstant", "limited; many | @ check --ignore V204 -", 0, ""},
    {"TooLittleMemoryIsSaid", "limited; many | @ diff - pipe.dat", 70,
     "vesk: error: there is not enough memory\n"},
#endif
};

class ShellTest : public testing::TestWithParam<ShellCase> {};

TEST_P(ShellTest, Runs) {
  const TempFolder folder;
  writeFile("pipe.dat", kPipe);
  writeFile("old.dat", "an older file\n");
  writeFile("three.dat", kPipe + kPipe + kPipe);
  writeFile("other.dat", kPipe + "P-1     01001    00c 0 0 0,0 0 1001,100\n" + kPipe);
  writeFile("large.dat", manyPipes());
  writeFile("wide.dat", "P-1     01001    00l pt 99999999.5 0 0\n");
  std::string text =
      "set -o pipefail; many() { for i in $(seq 40); do cat large.dat; done; }; "
      "takesOne() { (ulimit -v $1; @ info pipe.dat) >/dev/null 2>&1; }; "
      "least() { for kb in $(seq 4000 250 99000); do takesOne $kb && echo $kb && return; done; "
      "}; "
      "limited() { ulimit -v $(($(least) + 1250)); }; ";
  text += GetParam().command;
  std::string command;
  for (const char c : text) {
    command += c == '@' ? std::string("\"" VESK_TOOL "\"") : std::string(1, c);
  }
  writeFile("run", command + '\n');
  const int status = std::system("bash run >out 2>err");
  EXPECT_EQ(WIFEXITED(status) ? WEXITSTATUS(status) : -1, GetParam().exit);
  EXPECT_EQ(readFile("err"), GetParam().err);
  EXPECT_EQ(readFile("old.dat"), "an older file\n");
  // An element of one line and nothing said.
  if (std::filesystem::exists("wide2.dat")) {
    EXPECT_EQ(readFile("wide2.dat").find('\n'), readFile("wide2.dat").size() - 1);
  }
  expectNothingHalf();
}

INSTANTIATE_TEST_SUITE_P(Streams, ShellTest, testing::ValuesIn(kShells),
                         [](const auto& each) { return std::string(each.param.name); });

void PrintTo(const ShellCase& each, std::ostream* out) { *out << each.command; }

TEST(Streams, AFullDiskIsSaidAndLeavesNoHalfFile) {
  const TempFolder folder;
  const int full = open("/dev/full", O_WRONLY);
  if (full < 0) GTEST_SKIP() << "there is no /dev/full";
  EXPECT_EQ(exitWithOutput("list \"" + golden("pump.dat") + "\"", full), 4);
  close(full);
  EXPECT_EQ(readFile("errors"), "vesk: error: standard output: No space left on device\n");

  const ToolRun run = runTool("convert -f \"" + golden("pump.dat") + "\" /dev/full");
  EXPECT_EQ(run.exit, 4);
  EXPECT_EQ(run.err, "vesk: error: /dev/full: No space left on device\n");
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

}  // namespace
}  // namespace VeskTest
