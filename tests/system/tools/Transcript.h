// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_TOOLS_TRANSCRIPT_H
#define VESK_TESTS_TOOLS_TRANSCRIPT_H

#include <string>
#include <vector>

namespace VeskTest {

// A run of the tool as a document shows it: behind "$ vesk ARGUMENTS" stdout, then
// stderr, then "[exit N]" unless N is 0.
struct TranscriptStep {
  std::string arguments;
  std::string shown;
};

// The runs of a text that begins with the first "$ vesk".
std::vector<TranscriptStep> stepsOf(const std::string& text);

// Runs each in the current folder, and expects what is shown.
void expectTranscript(const std::vector<TranscriptStep>& steps);

}  // namespace VeskTest

#endif
