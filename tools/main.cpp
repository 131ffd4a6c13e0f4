// SPDX-License-Identifier: MIT
#include "commands/Tool.h"
#include "terminal/Terminal.h"

int main(int count, char** words) {
  VeskTool::prepareProcess();
  VeskTool::Answer answer;
  const VeskTool::Exit exit = VeskTool::runTool(VeskTool::commandLine(count, words), answer);
  return static_cast<int>(exit);
}
