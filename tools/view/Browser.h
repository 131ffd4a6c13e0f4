// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_VIEW_BROWSER_H
#define VESK_TOOLS_VIEW_BROWSER_H

#include <string>

namespace VeskTool {

// A new folder for temporary files which nobody else can read.
std::string makePrivateFolder();

// Opens a file with the program that the desktop has for it, and does not wait
// for that. What is wrong if it can't; empty if it could be started.
std::string openOnDesktop(const std::string& file);

}  // namespace VeskTool

#endif
