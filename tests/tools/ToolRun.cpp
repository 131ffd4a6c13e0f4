#include "tools/ToolRun.h"

#include <cstdlib>
#include <fstream>

#include "Terminal.h"
#include "support/TempFolder.h"

#ifndef _WIN32
#include <sys/wait.h>
#endif

namespace VeskTest {

ToolRun runTool(const std::string& arguments, std::string_view input) {
  writeFile("tool.in", input);
  std::string command = "\"" VESK_TOOL "\" " + arguments + " <tool.in >tool.out 2>tool.err";
#ifdef _WIN32
  // The shell takes the outer quotes away.
  command = '"' + command + '"';
#endif
  ToolRun run;
#ifdef _WIN32
  run.exit = _wsystem(VeskTool::pathOf(command).c_str());
#else
  const int status = std::system(command.c_str());
  run.exit = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
#endif
  run.out = readFile("tool.out");
  run.err = readFile("tool.err");
  return run;
}

std::string golden(const std::string& name) {
  return std::string(VESK_TEST_SOURCE_DIR) + "/golden/" + name;
}

void writeFile(const std::string& name, std::string_view bytes) {
  std::ofstream(VeskTool::pathOf(name), std::ios::binary)
      .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace VeskTest
