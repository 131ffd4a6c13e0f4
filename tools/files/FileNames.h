// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_FILES_FILENAMES_H
#define VESK_TOOLS_FILES_FILENAMES_H

#include <string>
#include <vector>

namespace VeskTool {

// What files are called in a file or page that is handed on, in their order: no more of
// their paths than tells them apart, and so no folder of this machine.
std::vector<std::string> handedOnNames(const std::vector<std::string>& files);

}  // namespace VeskTool

#endif
