// SPDX-License-Identifier: MIT
#include "tools/Transcript.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tools/ToolRun.h"

namespace VeskTest {

std::vector<TranscriptStep> stepsOf(const std::string& text) {
  const std::string prompt = "$ vesk ";
  std::vector<TranscriptStep> steps;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with(prompt)) {
      steps.push_back({line.substr(prompt.size()), ""});
    } else if (!steps.empty()) {
      steps.back().shown += line + '\n';
    }
  }
  return steps;
}

void expectTranscript(const std::vector<TranscriptStep>& steps) {
  EXPECT_FALSE(steps.empty());
  for (const TranscriptStep& step : steps) {
    const ToolRun run = runTool(step.arguments);
    std::string shown = run.out + run.err;
    if (run.exit != 0) shown += "[exit " + std::to_string(run.exit) + "]\n";
    EXPECT_EQ(shown, step.shown) << "vesk " << step.arguments;
  }
}

}  // namespace VeskTest
