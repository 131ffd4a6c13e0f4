// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TERMINAL_LIBRARIES_H
#define VESK_TOOLS_TERMINAL_LIBRARIES_H

#include <span>
#include <string_view>

namespace VeskTool {

// A library of others that the tool is built on. tools/CMakeLists.txt holds the
// table.
struct Library {
  const char* name;
  const char* package;  // Debian's, that brings it
  const char* licence;  // SPDX identifier
  const char* use;      // what needs it, as in "vesk export -o x.sqlite"
  bool isIn;            // false: this build was made without it
};

std::span<const Library> libraries();

// Throws Failure (Exit::kUsage) with the library's name, what needs it and the
// package that brings it, unless this build has it. The name is one of the table.
void requireLibrary(std::string_view name);

}  // namespace VeskTool

#endif
