// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_TOOLS_STARTEDTOOL_H
#define VESK_TESTS_TOOLS_STARTEDTOOL_H

#include <windows.h>

#include <string>

namespace VeskTest {

// A run of the tool on Windows, without a shell; its standard streams are these
// handles, which it inherits.
class StartedTool {
 public:
  StartedTool(const std::string& arguments, HANDLE input, HANDLE output, HANDLE errors);
  ~StartedTool();
  StartedTool(const StartedTool&) = delete;
  StartedTool& operator=(const StartedTool&) = delete;

  // Waits for the end.
  int exitCode() const;

 private:
  PROCESS_INFORMATION process_{};
};

// A file in the current folder, for reading or anew for writing.
HANDLE openForTool(const char* name, bool isInput);

}  // namespace VeskTest

#endif
