// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_HELP_H
#define VESK_TOOLS_HELP_H

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "commands/Command.h"

namespace VeskTool {

// "vesk --help": the commands by group, on one screen of 24 lines and 80 columns.
std::string helpOfTool(const std::vector<std::unique_ptr<Command>>& commands);

// "vesk info --help": examples, then arguments and options with unit and default.
std::string helpOfCommand(const CommandText& text, const CLI::App& app);

std::string_view nameOf(Group group);

}  // namespace VeskTool

#endif
