// SPDX-License-Identifier: MIT
#include "tools/ToolRun.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "support/TempFolder.h"
#include "terminal/Terminal.h"

#ifdef _WIN32
#include "tools/StartedTool.h"
#else
#include <sys/wait.h>
#endif

namespace VeskTest {

ToolRun runTool(const std::string& arguments, std::string_view input) {
  writeFile("tool.in", input);
  ToolRun run;
#ifdef _WIN32
  const HANDLE in = openForTool("tool.in", true);
  const HANDLE out = openForTool("tool.out", false);
  const HANDLE err = openForTool("tool.err", false);
  run.exit = StartedTool(arguments, in, out, err).exitCode();
  for (const HANDLE handle : {in, out, err}) CloseHandle(handle);
#else
  const std::string command = "\"" VESK_TOOL "\" " + arguments + " <tool.in >tool.out 2>tool.err";
  const int status = std::system(command.c_str());
  run.exit = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
#endif
  run.out = readFile("tool.out");
  run.err = readFile("tool.err");
  return run;
}

void PrintTo(const RunCase& each, std::ostream* out) { *out << each.arguments; }

ToolRun expectRun(const RunCase& each) {
  ToolRun run = runTool(each.arguments, kPipe);
  EXPECT_EQ(run.exit, each.exit) << run.err;
  if (*each.out == '\0') {
    EXPECT_EQ(run.out, "");
  }
  if (*each.err == '\0') {
    EXPECT_EQ(run.err, "");
  }
  EXPECT_TRUE(contains(run.out, each.out)) << run.out.substr(0, 1000);
  EXPECT_TRUE(contains(run.err, each.err)) << run.err;
  expectNothingHalf();
  return run;
}

void expectNothingHalf() {
  for (const auto& entry : std::filesystem::directory_iterator(".")) {
    EXPECT_FALSE(contains(entry.path().string(), ".part-")) << entry.path();
  }
}

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

std::string golden(const std::string& name) {
  return std::string(VESK_TEST_SOURCE_DIR) + "/golden/" + name;
}

void writeFile(const std::string& name, std::string_view bytes) {
  std::ofstream(VeskTool::pathOf(name), std::ios::binary)
      .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace VeskTest
