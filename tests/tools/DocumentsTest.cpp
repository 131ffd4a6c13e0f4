// What the documents show is what the tool does.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Command.h"
#include "support/TempFolder.h"
#include "tools/ToolRun.h"

namespace VeskTest {
namespace {

std::string document(const std::string& name) {
  return readFile(std::string(VESK_PROJECT_FOLDER) + "/" + name);
}

// The first block of this language.
std::string blockOf(const std::string& text, const std::string& language) {
  const std::string opening = "\n```" + language + "\n";
  const std::size_t begin = text.find(opening) + opening.size();
  return text.substr(begin, text.find("```\n", begin) - begin);
}

TEST(Documents, ReadmeShowsWhatTheToolSays) {
  const TempFolder folder;
  const std::string readme = document("README.md");
  writeFile("veskpump.dat", blockOf(readme, "text"));
  std::string rest = blockOf(readme, "console");
  ASSERT_TRUE(rest.starts_with("$ vesk "));
  int commands = 0;
  while (!rest.empty()) {
    const std::size_t lineEnd = rest.find('\n');
    const std::string arguments = rest.substr(7, lineEnd - 7);
    const std::size_t next = std::min(rest.find("\n$ vesk ", lineEnd), rest.size() - 1);
    const std::string shown = rest.substr(lineEnd + 1, next - lineEnd);
    const ToolRun run = runTool(arguments);
    EXPECT_EQ(run.exit, 0) << arguments;
    EXPECT_EQ(run.out + run.err, shown) << arguments;
    rest.erase(0, next + 1);
    ++commands;
  }
  EXPECT_EQ(commands, 4);
}

TEST(Documents, TheManPageAndTheHelpNameEveryCommand) {
  const TempFolder folder;
  const std::string page = document("docs/vesk.1");
  const std::string help = runTool("--help").out;
  for (const auto& command : VeskTool::makeCommands()) {
    const std::string name(command->text().name);
    EXPECT_NE(page.find(".BR \"vesk " + name + "\""), std::string::npos) << name;
    EXPECT_NE(help.find(' ' + name + ' '), std::string::npos) << name;
    EXPECT_FALSE(command->text().examples.empty()) << name;
  }
}

TEST(Documents, EveryCommandExplainsItself) {
  const TempFolder folder;
  for (const auto& command : VeskTool::makeCommands()) {
    const ToolRun run = runTool(std::string(command->text().name) + " --help");
    EXPECT_EQ(run.exit, 0);
    EXPECT_TRUE(run.out.starts_with("Examples:\n  ")) << run.out;
  }
}

}  // namespace
}  // namespace VeskTest
