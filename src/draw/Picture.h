// SPDX-License-Identifier: MIT
#ifndef VESK_DRAW_PICTURE_H
#define VESK_DRAW_PICTURE_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "draw/Colour.h"

namespace Vesk {

// Pixels in rows from the top; red, green, blue and alpha of each.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> bytes;

  Colour at(int x, int y) const {
    const std::size_t i = 4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                               static_cast<std::size_t>(x));
    return {bytes[i], bytes[i + 1], bytes[i + 2], bytes[i + 3]};
  }
};

}  // namespace Vesk

#endif
