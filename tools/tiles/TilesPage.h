// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TILES_TILESPAGE_H
#define VESK_TOOLS_TILES_TILESPAGE_H

#include <string>

namespace VeskTool {

// The page that shows the tileset beside it; empty in a build without the viewer.
std::string tilesPage();

}  // namespace VeskTool

#endif
