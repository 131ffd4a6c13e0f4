// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TILES_TILEELEMENT_H
#define VESK_TOOLS_TILES_TILEELEMENT_H

#include <cstdint>
#include <string>
#include <string_view>

#include "tiles/DetailSum.h"
#include "vesk/Extents.h"
#include "vesk/mesh/Fineness.h"

namespace VeskTool {

// What is known of an element when its tile is made.
struct TileElement {
  Vesk::Extents box;  // of its shapes, in the unit of the file
  ElementDetail detail;
  std::uint64_t line = 0;
  std::uint32_t file = 0;
  std::uint8_t kind = 0;  // a Kind
  std::string header;
  std::string group;
  std::string geo;  // as appendGeo makes it
};

// The middle of the box.
GePoint centreOf(const Vesk::Extents& box);

// As bytes for this process, and back.
std::string bytesOf(const TileElement& element);
TileElement tileElementOf(std::string_view bytes);

// Of coarse shapes.
Vesk::Fineness coarseFineness();

}  // namespace VeskTool

#endif
