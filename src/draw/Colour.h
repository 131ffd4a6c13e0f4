// SPDX-License-Identifier: MIT
#ifndef VESK_DRAW_COLOUR_H
#define VESK_DRAW_COLOUR_H

#include <cstdint>

namespace Vesk {

// Red, green, blue and how opaque, 0..255 each.
struct Colour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  std::uint8_t alpha = 255;

  friend bool operator==(const Colour&, const Colour&) = default;
};

// How light a colour is, 0..1: what has no alpha counts as white paper.
inline double lightnessOf(const Colour& c) {
  if (c.alpha == 0) return 1.0;
  return (0.299 * c.red + 0.587 * c.green + 0.114 * c.blue) / 255.0;
}

}  // namespace Vesk

#endif
