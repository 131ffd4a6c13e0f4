// SPDX-License-Identifier: MIT
#include "tiles/TilesPage.h"

namespace VeskTool {

// For a build without the viewer.
std::string tilesPage() { return {}; }

}  // namespace VeskTool
