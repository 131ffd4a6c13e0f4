// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXIT_H
#define VESK_TOOLS_EXIT_H

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>

namespace VeskTool {

// What the program tells its caller. With several files the highest wins.
enum class Exit {
  kDone = 0,
  kNo = 1,      // done, and the answer is no: errors, differences, something skipped
  kUsage = 2,   // wrong usage
  kInput = 3,   // an input can't be read or is no record file
  kOutput = 4,  // an output can't be written
  kFault = 70,  // our own mistake
  kInterrupted = 130,
};

inline Exit worst(Exit a, Exit b) { return std::max(a, b); }

// Ends a command, or the work on one file, with a message and an exit code.
class Failure : public std::runtime_error {
 public:
  Failure(Exit code, const std::string& message, std::string advice = "")
      : std::runtime_error(message), exit(code), hint(std::move(advice)) {}

  Exit exit;
  std::string hint;  // what to do; may be empty
};

// Whoever read our standard output has gone away. Nobody is told.
struct ClosedPipe {};

// Somebody pressed Ctrl-C.
struct Interrupted {};

}  // namespace VeskTool

#endif
