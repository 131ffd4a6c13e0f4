// SPDX-License-Identifier: MIT
#ifndef VESK_SIDECAR_UTF8_H
#define VESK_SIDECAR_UTF8_H

#include <cstddef>
#include <string>
#include <string_view>

namespace Vesk {

// Whether the bytes are well-formed UTF-8.
bool isUtf8(std::string_view bytes);

// The same text in UTF-8: as it is if it is well formed, else every byte taken for a
// character of Windows-1252 (and so of Latin-1), the usual 8-bit code page of plant data.
std::string toUtf8(std::string_view bytes);

// The first `most` bytes, or fewer, so that no character is cut.
std::string_view cutUtf8(std::string_view text, std::size_t most);

}  // namespace Vesk

#endif
