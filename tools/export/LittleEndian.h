// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXPORT_LITTLEENDIAN_H
#define VESK_TOOLS_EXPORT_LITTLEENDIAN_H

#include <bit>
#include <cstdint>

namespace VeskTool {

// Appends a number to a string or vector of bytes, the low byte first on every
// machine.
template <class Bytes>
void appendU16(Bytes& to, std::uint16_t value) {
  using Byte = typename Bytes::value_type;
  to.push_back(static_cast<Byte>(value & 0xFFU));
  to.push_back(static_cast<Byte>(value >> 8U));
}

template <class Bytes>
void appendU32(Bytes& to, std::uint32_t value) {
  appendU16(to, static_cast<std::uint16_t>(value & 0xFFFFU));
  appendU16(to, static_cast<std::uint16_t>(value >> 16U));
}

template <class Bytes>
void appendF32(Bytes& to, float value) {
  appendU32(to, std::bit_cast<std::uint32_t>(value));
}

}  // namespace VeskTool

#endif
