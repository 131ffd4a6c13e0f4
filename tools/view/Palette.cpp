// SPDX-License-Identifier: MIT
#include "view/Palette.h"

#include <charconv>
#include <cstdint>
#include <iterator>

#include "elements/Kinds.h"

namespace VeskTool {

namespace {

// As in viewer/src/view/palette.js.
// clang-format off
constexpr Vesk::Colour kColours[] = {
    {0xc4, 0x56, 0x6a},  // point
    {0xc9, 0x8a, 0x3d},  // segment
    {0xcf, 0x73, 0x50},  // polyline
    {0x7f, 0xa8, 0x86},  // triangle
    {0xa2, 0xae, 0x5f},  // quadrangle
    {0x8f, 0xb0, 0x7a},  // polygon
    {0x7d, 0x87, 0x94},  // text
    {0xc0, 0xa8, 0x78},  // box
    {0xc4, 0x85, 0x5a},  // reducer
    {0x6b, 0x9a, 0xc8},  // cylinder
    {0x4f, 0xb0, 0xa5},  // cone
    {0x4d, 0x7f, 0xb8},  // torus
    {0x95, 0x83, 0xbd},  // elbow
};
// clang-format on
static_assert(std::size(kColours) == kKinds, "a colour for each kind");

}  // namespace

std::vector<Vesk::Colour> kindColours() { return {std::begin(kColours), std::end(kColours)}; }

std::optional<Vesk::Colour> readColour(std::string_view text) {
  if (text == "white") return Vesk::Colour{255, 255, 255};
  if (text == "black") return Vesk::Colour{0, 0, 0};
  if (text == "transparent") return Vesk::Colour{0, 0, 0, 0};
  if (!text.starts_with('#') || (text.size() != 4 && text.size() != 7)) return std::nullopt;
  text.remove_prefix(1);
  std::uint32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  const bool isShort = text.size() == 3;
  const auto part = [&](unsigned place) {
    const std::uint32_t digits =
        isShort ? (value >> (4U * place) & 0xFU) * 0x11U : value >> (8U * place) & 0xFFU;
    return static_cast<std::uint8_t>(digits);
  };
  return Vesk::Colour{part(2), part(1), part(0)};
}

std::string hexOf(const Vesk::Colour& colour) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text = "#";
  for (const unsigned part : {colour.red, colour.green, colour.blue}) {
    text += kDigits[part / 16U];
    text += kDigits[part % 16U];
  }
  return text;
}

}  // namespace VeskTool
