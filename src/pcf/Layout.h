// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_LAYOUT_H
#define VESK_PCF_LAYOUT_H

#include <cstddef>
#include <string_view>

namespace Vesk::Pcf {

// How a file tells components from their attributes.
struct Layout {
  // Whether it looks like a piping component file at all: there is a word of one near
  // its beginning.
  bool isPiping = false;

  // Nothing is indented, words are told by their names.
  bool isByName = false;

  // Otherwise: where components begin, and where their points do.
  std::size_t margin = 0;
  std::size_t pointIndent = 1;
};

// By what most of the lines near the beginning say.
Layout layoutOf(std::string_view text);

}  // namespace Vesk::Pcf

#endif
