// SPDX-License-Identifier: MIT
#include "commands/Command.h"

namespace VeskTool {

std::vector<std::unique_ptr<Command>> makeCommands() {
  std::vector<std::unique_ptr<Command>> commands;
  commands.push_back(makeInfo());
  commands.push_back(makeList());
  commands.push_back(makeShow());
  commands.push_back(makeMeasure());
  commands.push_back(makeCheck());
  commands.push_back(makeDiff());
  commands.push_back(makeClash());
  commands.push_back(makeConvert());
  commands.push_back(makeExtract());
  commands.push_back(makeSplit());
  commands.push_back(makeMerge());
  commands.push_back(makeEdit());
  commands.push_back(makeExport());
  commands.push_back(makeImport());
  commands.push_back(makeView());
  commands.push_back(makeExplain());
  commands.push_back(makeCompletion());
  commands.push_back(makeVersion());
  return commands;
}

}  // namespace VeskTool
