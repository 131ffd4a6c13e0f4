// SPDX-License-Identifier: MIT
#ifndef VESK_OUTPUT_BASE36_H
#define VESK_OUTPUT_BASE36_H

#include <span>
#include <string_view>

namespace Vesk {

// The element counter's digits: "0" to "9" for 0 to 9, "A" to "Z" for 10 to
// 35, most significant first.

// The largest counter, three Z digits.
inline constexpr int kMaxCounter = 46655;

// Fills all of `digits` from the right, each with the remainder by 36; returns
// whether the value fitted, that is whether the last quotient is 0. The high
// digits of a value that is too large are lost. A negative value is not
// rejected: its remainders give characters below '0'.
bool encodeBase36(int value, std::span<char> digits);

// The value of at most four digits. Other characters count by their distance
// from '0' or, above '9', from 'A'; so what encodeBase36 made of a negative
// value comes back.
int decodeBase36(std::string_view digits);

}  // namespace Vesk

#endif
