// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_SELECTIONOPTIONS_H
#define VESK_TOOLS_SELECTIONOPTIONS_H

#include <CLI/CLI.hpp>
#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "select/Selection.h"
#include "terminal/Exit.h"
#include "terminal/Session.h"
#include "vesk/RecordFile.h"

namespace VeskTool {

// What else a command takes under a name of the selection's.
enum class Beside {
  kNothing,
  kTolerance,          // a --tolerance of its own
  kToleranceAndCodes,  // and codes of findings in --only
};

// The options that say which elements a command is about, the same for all that
// read records: those of Vesk::Selection, --not before any of them, and
// --touch-tolerance, which is --tolerance too where the command has none.
class SelectionOptions {
 public:
  static constexpr const char* kGroup = "Which elements (vesk help selection)";

  void define(CLI::App& app, Beside beside = Beside::kNothing);

  // Whether any element may be left out.
  bool isGiven() const;

  // Throws a Failure with Exit::kUsage for a text that means nothing.
  Vesk::Selection selection() const;

  // The codes among the words of --only, with kToleranceAndCodes.
  std::vector<std::string> codes() const;

 private:
  // Calls take(criterion, text, isNegated) in the order of the command line.
  template <class Take>
  void forEachText(Take take) const;
  bool isCode(std::string_view word) const;

  const CLI::App* app_ = nullptr;
  std::vector<std::vector<std::string>> texts_;  // by criterion
  std::vector<const CLI::Option*> options_;      // the same
  const CLI::Option* not_ = nullptr;
  bool negates_ = false;
  double tolerance_ = 0.0;
  Beside beside_ = Beside::kNothing;
};

// Which elements of some files are chosen, while these are read.
class Choice {
 public:
  // With --touching the files are read once beforehand, and of what it names each
  // element is in memory; throws a Failure with Exit::kUsage for stdin then. What
  // can't be read is left for the reading itself to say.
  Choice(const SelectionOptions& options, const std::vector<std::string>& files, Session& session);

  bool isGiven() const { return isGiven_; }

  // Counts. May be called on several threads.
  bool takes(const Vesk::RecordElement& element);

  bool isNothing() const { return isGiven_ && taken_ == 0; }

  // kNo and a message if elements could be chosen and none was.
  Exit finish(Session& session) const;

 private:
  Vesk::Selection selection_;
  bool isGiven_ = false;
  std::atomic<std::uint64_t> taken_ = 0;
};

// What the options mean for each command, as `vesk help selection` prints it.
std::string selectionHelp();

}  // namespace VeskTool

#endif
