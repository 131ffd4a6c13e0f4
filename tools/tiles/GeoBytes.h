// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TILES_GEOBYTES_H
#define VESK_TOOLS_TILES_GEOBYTES_H

#include <memory>
#include <string>
#include <string_view>

#include "vesk/Geo.h"

namespace VeskTool {

// An element's numbers as bytes, for a file that this process reads back: exactly those
// that it had. Marks, tags and arcs, which have no part in a mesh, are not kept.

// Appends the element; nothing for one of a class that a host has made.
void appendGeo(std::string& to, const Vesk::Geo& geo);

// The element of these bytes, which appendGeo has made.
std::unique_ptr<Vesk::Geo> geoOf(std::string_view bytes);

}  // namespace VeskTool

#endif
