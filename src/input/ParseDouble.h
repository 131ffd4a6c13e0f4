// SPDX-License-Identifier: MIT
#ifndef VESK_INPUT_PARSEDOUBLE_H
#define VESK_INPUT_PARSEDOUBLE_H

#include <bit>
#include <cfloat>
#include <cstddef>
#include <optional>
#include <string_view>

namespace Vesk {

// The number that `text` consists of; nothing if it is not exactly one. Takes
// what the C library's scanf takes for "%lf", in the "C" locale: white space in
// front, a sign, decimals with or without exponent, "inf", "infinity", "nan" and
// hexadecimal numbers; white space may follow. A number too large for a double
// is infinite, one too small is zero.
//
//   "  12.5 " 12.5, "+1e3" 1000, "0x1.8p1" 3, ".5" 0.5; not "", "12,5", "1e", "- 1"
std::optional<double> parseDouble(std::string_view text);

// Whether leadingNumber serves on this machine: one division rounds once, to a
// double, and the first character of a text is the lowest byte of a word.
inline constexpr bool kHasPlainNumbers =
    FLT_EVAL_METHOD == 0 && std::endian::native == std::endian::little;

// The number that a text begins with, as records have nearly all of them; the
// value that parseDouble has for these characters. With length 0 it is none of
// this form, which says nothing about others.
//
//   a minus sign or none, 1 to 7 digits, a point or none, up to 7 digits
//
// The number lies in the first `length` characters of `text`; the characters
// behind may be read but do not count:
//
//   "12.50,3" 7 -> 12.5, 5 characters; "12.50,3" 4 -> 12.5, 4; "1e5" 3 -> 1, 1
struct PlainNumber {
  double value = 0.0;
  std::size_t length = 0;
};
PlainNumber leadingNumber(std::string_view text, std::size_t length);

}  // namespace Vesk

#endif
