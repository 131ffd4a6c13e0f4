#ifndef VESK_INPUT_PARSEDOUBLE_H
#define VESK_INPUT_PARSEDOUBLE_H

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

}  // namespace Vesk

#endif
