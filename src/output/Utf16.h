// SPDX-License-Identifier: MIT
#ifndef VESK_OUTPUT_UTF16_H
#define VESK_OUTPUT_UTF16_H

#include <optional>
#include <string>
#include <string_view>

namespace Vesk {

// The text in UTF-16 of a text in UTF-8; nothing if `text` is not valid UTF-8.
//
// Valid is what the Unicode standard calls well-formed: no overlong form, no
// surrogate, nothing above U+10FFFF, no sequence cut short.
//
//   "ä"  C3 A4        -> 00E4
//   "𝄞"  F0 9D 84 9E  -> D834 DD1E
std::optional<std::u16string> toUtf16(std::string_view text);

}  // namespace Vesk

#endif
