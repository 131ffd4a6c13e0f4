// SPDX-License-Identifier: MIT
#ifndef VESK_OUTPUT_NUMBERTEXT_H
#define VESK_OUTPUT_NUMBERTEXT_H

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>

namespace Vesk {

// The text of numbers in records. The digits are those of the C library's
// formatted print in the "C" locale (correctly rounded, exact halves to even),
// whatever the locale of the process.
//
// The append functions add to `text`. The write functions are for inner loops:
// they write from `to` on, without a terminator, and return the end of the
// text; behind it they may use what remains of the room they ask for.

// The nine-character form:
//
//       v > 99999999      mantissa "e" exponent: 123456789.0 -> "1.23457e8"
//   9999999.9  < v        no decimals            12345678.5  -> " 12345678"
//    999999.99 < v        one                    1234567.25  -> "1234567.2"
//     99999.999 < v       two                    123456.5    -> "123456.50"
//     -9999.999 < v       three                  1.5         -> "    1.500"
//    -99999.99 < v        two                    -12345.5    -> "-12345.50"
//   -999999.9  < v        one                    -123456.5   -> "-123456.5"
//  -9999999    < v        no decimals            -1234567.0  -> " -1234567"
//       v <= -9999999     mantissa "e" exponent: -1e8        -> "-1.0000e8"
//
// The two sides are no mirror images, since the sign takes a column. In the
// exponent form the exponent is log10 of the absolute value truncated, the
// mantissa keeps as many decimals as nine characters hold; one that rounds up
// to 10 makes ten characters: 99999999.5 -> "10.00000e7". The infinities are
// "inf" and "-inf", every NaN is "nan", right-aligned in nine.
void appendField9(std::string& text, double v);

// Writes the same; needs this room.
char* writeField9(char* to, double v);
inline constexpr std::size_t kField9Room = 24;

// The trimmed fixed form: `decimals` decimals (none if not positive), then
// trailing zeros and a bare point removed, right-aligned in `width` characters
// before the trimming if width is positive.
//
//   4 decimals: 10.0 -> "10", 1.5 -> "1.5", 0.0 -> "0", -0.00001 -> "-0"
//
// The infinities are "inf" and "-inf", every NaN is "nan".
void appendFixed(std::string& text, double v, int decimals, int width);

// Writes the same; needs fixedRoom(decimals, width). Below 2^52, up to seven
// decimals and without a width it takes a thirtieth of the C library's time.
char* writeFixed(char* to, double v, int decimals, int width = 0);

// Writes three numbers in that form without a width, a blank between each two;
// needs pointRoom(decimals).
char* writePoint(char* to, double x, double y, double z, int decimals);

// Room for every double: sign, digits, point and decimals, or the width, and
// the eight bytes that are written at a time.
constexpr std::size_t fixedRoom(int decimals, int width = 0) {
  constexpr std::size_t kWhole = 1 + std::numeric_limits<double>::max_exponent10 + 1;
  const std::size_t text = kWhole + 1 + static_cast<std::size_t>(decimals > 0 ? decimals : 0);
  const std::size_t field = static_cast<std::size_t>(width > 0 ? width : 0);
  return (text < field ? field : text) + sizeof(std::uint64_t);
}

constexpr std::size_t pointRoom(int decimals) { return 3 * (fixedRoom(decimals) + 1); }

// The decimal text of an int.
void appendInt(std::string& text, int v);

// The decimal text of a count.
std::string countText(std::uint64_t v);

// What the write functions do outside the range of their fast way and on
// machines without it, for any value: the same text by std::to_chars.
namespace Portable {
char* writeField9(char* to, double v);
char* writeFixed(char* to, double v, int decimals, int width = 0);
}  // namespace Portable

}  // namespace Vesk

#endif
