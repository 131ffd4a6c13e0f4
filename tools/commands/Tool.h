// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TOOL_H
#define VESK_TOOLS_TOOL_H

#include <string>
#include <vector>

#include "terminal/Exit.h"
#include "terminal/Streams.h"

namespace VeskTool {

// Does what the words of a command line ask for, without the program's name, and tells the exit
// code. Throws nothing. The messages go to the standard error, or to `messages` if it is given.
Exit runTool(const std::vector<std::string>& words, TextSink& answer, TextSink* messages = nullptr);

}  // namespace VeskTool

#endif
