#ifndef VESK_TESTS_TOOLS_TOOLRUN_H
#define VESK_TESTS_TOOLS_TOOLRUN_H

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

// A file of tests/golden, with "/" on every system.
std::string golden(const std::string& name);

// Writes these bytes; the name is UTF-8.
void writeFile(const std::string& name, std::string_view bytes);

}  // namespace VeskTest

#endif
