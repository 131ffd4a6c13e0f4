// SPDX-License-Identifier: MIT
// Whole answers of every command: its text, its JSON, its exit codes, its errors.
#include "tools/Transcript.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "commands/Command.h"
#include "support/TempFolder.h"
#include "tools/ToolRun.h"

namespace VeskTest {
namespace {

const std::string kFolder = VESK_TEST_SOURCE_DIR "/system/tools/transcripts";

class TranscriptTest : public testing::TestWithParam<std::string> {};

TEST_P(TranscriptTest, IsWhatTheToolSays) {
  const TempFolder folder;
  for (const auto& entry : std::filesystem::directory_iterator(kFolder)) {
    if (entry.path().extension() == ".txt") continue;
    writeFile(entry.path().filename().string(), readFile(entry.path()));
  }
  expectTranscript(stepsOf(readFile(kFolder + "/" + GetParam() + ".txt")));
}

// completion has a test of its own, with the shells; version is below.
std::vector<std::string> commandsWithTranscript() {
  std::vector<std::string> names;
  for (const auto& command : VeskTool::makeCommands()) {
    const std::string name(command->text().name);
    if (name != "completion" && name != "version") names.push_back(name);
  }
  return names;
}

INSTANTIATE_TEST_SUITE_P(Commands, TranscriptTest, testing::ValuesIn(commandsWithTranscript()),
                         [](const auto& each) { return each.param; });

TEST(Version, IsThatOfTheProject) {
  const TempFolder folder;
  EXPECT_EQ(runTool("--version").out, "vesk " VESK_VERSION "\n");
  EXPECT_TRUE(runTool("version").out.starts_with("vesk " VESK_VERSION ", under the MIT licence\n"));
  EXPECT_TRUE(
      runTool("version --json")
          .out.starts_with("{\n  \"schema\": \"vesk.version/1\",\n  \"version\": \"" VESK_VERSION
                           "\",\n  \"libraries\": [\n"));
}

}  // namespace
}  // namespace VeskTest
