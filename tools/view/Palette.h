// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_VIEW_PALETTE_H
#define VESK_TOOLS_VIEW_PALETTE_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "draw/Colour.h"

namespace VeskTool {

// The colours of drawings by Kind, the same as in the page.
std::vector<Vesk::Colour> kindColours();

// "white", "black", "transparent", "#fff" or "#1c2430".
std::optional<Vesk::Colour> readColour(std::string_view text);

// "#1c2430"
std::string hexOf(const Vesk::Colour& colour);

}  // namespace VeskTool

#endif
