// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TILES_TILESMERGE_H
#define VESK_TOOLS_TILES_TILESMERGE_H

#include <string>
#include <vector>

namespace VeskTool {

// Whether this is the folder of a tileset.
bool isTileset(const std::string& folder);

// The text of a `tileset.json` in the folder `into` that shows several tilesets as one: a
// root without content, and below it each of them as it stands in its own folder, by its
// path from `into`. Throws a Failure with Exit::kUsage for a folder that is not below
// `into`, with Exit::kInput for a tileset that can't be read.
std::string mergedTileset(const std::vector<std::string>& folders, const std::string& into);

}  // namespace VeskTool

#endif
