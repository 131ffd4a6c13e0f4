// SPDX-License-Identifier: MIT
#include "export/StepText.h"

#include "text/Json.h"

namespace VeskTool {
namespace {

void appendHex(std::string& to, std::uint32_t value, int digits) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
    to += kDigits[value >> shift & 0xFU];
  }
}

}  // namespace

// ASCII as it is, quotes and backslashes twice, others as \X2\ or \X4\ groups.
void StepText::text(std::string_view characters) {
  text_ += '\'';
  const std::string valid = validUtf8(characters);
  for (std::size_t i = 0; i < valid.size();) {
    const auto byte = static_cast<unsigned char>(valid[i]);
    if (byte < 0x80) {
      if (byte == '\'' || byte == '\\') text_ += valid[i];
      text_ += byte < 0x20 || byte == 0x7F ? ' ' : valid[i];
      ++i;
      continue;
    }
    const std::size_t length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : 2;
    std::uint32_t point = byte & (0xFFU >> (length + 1));
    for (std::size_t k = 1; k < length; ++k) {
      point = point << 6 | (static_cast<unsigned char>(valid[i + k]) & 0x3FU);
    }
    i += length;
    text_ += point > 0xFFFF ? "\\X4\\" : "\\X2\\";
    appendHex(text_, point, point > 0xFFFF ? 8 : 4);
    text_ += "\\X0\\";
  }
  text_ += '\'';
}

}  // namespace VeskTool
