// SPDX-License-Identifier: MIT
// What the documents show is what the tool does.
#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "commands/Command.h"
#include "export/Formats.h"
#include "files/SelectionOptions.h"
#include "support/TempFolder.h"
#include "tools/ToolRun.h"
#include "tools/Transcript.h"

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
  const std::vector<TranscriptStep> steps = stepsOf(blockOf(readme, "console"));
  EXPECT_EQ(steps.size(), 4u);
  expectTranscript(steps);
}

// "\-\-dry\-run", as a whole word, as a pattern.
std::string escaped(const std::string& option) {
  std::string text = R"(\\-\\-)";
  for (const char c : option) text += c == '-' ? R"(\\-)" : std::string(1, c);
  return text + R"((?![a-z]|\\-))";
}

// The table on the page is that of the help, but for its marks of code.
TEST(Documents, FormatsKeepWhatThePageSays) {
  std::string page = document("docs/formats.md");
  std::erase(page, '`');
  const std::string help = runTool("help formats").out;
  for (const VeskTool::FormatText& each : VeskTool::exportFormats()) {
    std::string row = "\n|";
    for (const std::string_view cell :
         {each.names, each.keeps, each.loses, each.exact, each.memory, each.opened}) {
      row.append(" ").append(cell).append(" |");
    }
    EXPECT_NE(page.find(row + '\n'), std::string::npos) << row;
    EXPECT_NE(help.find("\n  " + std::string(each.names) + '\n'), std::string::npos);
  }
}

TEST(Documents, TheManPageAndTheHelpNameEveryCommand) {
  const TempFolder folder;
  const std::string page = document("docs/vesk.1");
  const std::string help = runTool("--help").out;
  const std::size_t beginOfSelection = page.find(".SH SELECTION");
  const std::string selection =
      page.substr(beginOfSelection, page.find(".SH OPTIONS") - beginOfSelection);
  for (const auto& command : VeskTool::makeCommands()) {
    const std::string name(command->text().name);
    const std::size_t begin = page.find(".BR \"vesk " + name + "\"");
    ASSERT_NE(begin, std::string::npos) << name;
    const std::string part = page.substr(begin, page.find(".TP", begin) - begin);
    CLI::App app;
    command->define(app);
    for (const CLI::Option* option : app.get_options()) {
      // Explained once for all.
      const bool isShared = option->get_group() == VeskTool::SelectionOptions::kGroup;
      const std::string& where = isShared ? selection : part;
      if (isShared) {
        EXPECT_NE(part.find("SELECTION"), std::string::npos) << name;
      }
      for (const std::string& word : option->get_lnames()) {
        if (word == "help") continue;
        EXPECT_TRUE(std::regex_search(where, std::regex(escaped(word)))) << name << " --" << word;
      }
    }
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
