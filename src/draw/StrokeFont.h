// SPDX-License-Identifier: MIT
#ifndef VESK_DRAW_STROKEFONT_H
#define VESK_DRAW_STROKEFONT_H

#include <string>
#include <string_view>
#include <vector>

namespace Vesk {

// A place in a text: to the right of its start and above its base line, in
// heights of a capital letter.
struct FontPoint {
  double x = 0.0;
  double y = 0.0;
};

// A line of a letter; a dot has one point.
using FontLine = std::vector<FontPoint>;

// Letters made of lines, for pictures: ASCII, the signs for diameter, degree,
// micro, plus or minus, squares and cubes, and the German umlauts. A hollow box
// stands for what is none of these. Malformed UTF-8 counts as Latin-1.
class StrokeFont {
 public:
  // The lines of a text, appended.
  static void append(std::string_view text, std::vector<FontLine>& lines);

  // Its width, without a gap behind the last letter.
  static double widthOf(std::string_view text);
};

// The characters of a text in UTF-8. A byte that is part of no character is one
// by itself, of Latin-1.
std::u32string charactersOf(std::string_view text);

}  // namespace Vesk

#endif
