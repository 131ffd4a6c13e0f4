// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_NUMBERS_H
#define VESK_PCF_NUMBERS_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Vesk::Pcf {

// A number as such files write it.
//
//   12, -0.0000, 1e3       decimal, with a point
//   3/4                    a fraction
//   1.1/2, 1-1/2           one and a half
//   6"                     inches
//   12'6.1/2", 10'-6"      feet and inches
struct Number {
  double value = 0;       // in the file's unit, or in inches
  bool isInches = false;  // marked with " or '
};

// Takes a number from the front of the text; nothing if there is none, or if it is not
// finite. What follows stays in the text: of "6BW" it is "BW".
std::optional<Number> takeNumber(std::string_view& text);

// The number that this word is, and nothing else.
std::optional<Number> numberOf(std::string_view word);

// Whether the word is a fraction and nothing else: "1/2".
bool isFraction(std::string_view word);

// The words of a point with feet and inches as one word where a blank stands between them:
// 12' 6.1/2" 0 0 6" has four numbers. Only if there are more than `wanted` (co-ordinates
// and bore) as they stand, or the last of them is 0 and so no bore.
std::string withFeetJoined(std::string_view words, std::size_t wanted);

// A number in messages, with up to three decimals.
std::string textOf(double number);

}  // namespace Vesk::Pcf

#endif
