// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_TOOLS_TOOLRUN_H
#define VESK_TESTS_TOOLS_TOOLRUN_H

#include <ostream>
#include <string>
#include <string_view>

namespace VeskTest {

// What a run of the tool left behind; line ends are "\n" on every system.
struct ToolRun {
  int exit = -1;
  std::string out;
  std::string err;
};

// Runs the tool in the current folder: quote arguments with ". All names are UTF-8. What is to be
// read from standard input stands in `input`.
ToolRun runTool(const std::string& arguments, std::string_view input = "");

// A line of a table: a run of the tool and what it comes to.
struct RunCase {
  const char* name;
  const char* arguments;
  int exit;
  const char* out;  // what stdout holds; "" nothing
  const char* err;  // what stderr holds; "" nothing
};

void PrintTo(const RunCase& each, std::ostream* out);

// Runs it with kPipe on standard input. Whatever it comes to, nothing half is left.
ToolRun expectRun(const RunCase& each);

// No temporary file is left in the current folder.
void expectNothingHalf();

// A record file of one pipe, 1000 long and 100 wide.
inline const std::string kPipe = "P-1     01001    00c 0 0 0,0 0 1000,100\n";

bool contains(const std::string& text, const std::string& part);

// A file of tests/golden, with "/" on every system.
std::string golden(const std::string& name);

// Writes these bytes; the name is UTF-8.
void writeFile(const std::string& name, std::string_view bytes);

}  // namespace VeskTest

#endif
