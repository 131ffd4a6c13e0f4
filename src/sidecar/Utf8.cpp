// SPDX-License-Identifier: MIT
#include "sidecar/Utf8.h"

#include <array>
#include <cstdint>

namespace Vesk {
namespace {

// Windows-1252, 0x80 to 0x9F; its five holes are the control characters of Latin-1.
constexpr std::array<std::uint16_t, 32> kWindows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::uint8_t byteAt(std::string_view text, std::size_t at) {
  return static_cast<std::uint8_t>(text[at]);
}

bool isFollower(std::uint8_t byte) { return (byte & 0xC0U) == 0x80U; }

// The number of bytes of the character at `at`; 0 if it is none.
std::size_t lengthAt(std::string_view text, std::size_t at) {
  const std::uint8_t first = byteAt(text, at);
  if (first < 0x80U) return 1;
  if (first < 0xC2U || first > 0xF4U) return 0;
  const std::size_t length = first < 0xE0U ? 2 : first < 0xF0U ? 3 : 4;
  if (at + length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if (!isFollower(byteAt(text, at + i))) return 0;
  }
  const std::uint8_t second = byteAt(text, at + 1);
  const bool isBad = (first == 0xE0U && second < 0xA0U) || (first == 0xEDU && second > 0x9FU) ||
                     (first == 0xF0U && second < 0x90U) || (first == 0xF4U && second > 0x8FU);
  return isBad ? 0 : length;
}

void append(std::string& text, std::uint16_t code) {
  if (code < 0x80U) {
    text += static_cast<char>(code);
    return;
  }
  if (code >= 0x800U) {
    text += static_cast<char>(0xE0U | (code >> 12U));
    text += static_cast<char>(0x80U | ((code >> 6U) & 0x3FU));
  } else {
    text += static_cast<char>(0xC0U | (code >> 6U));
  }
  text += static_cast<char>(0x80U | (code & 0x3FU));
}

}  // namespace

bool isUtf8(std::string_view bytes) {
  for (std::size_t at = 0; at < bytes.size();) {
    const std::size_t length = lengthAt(bytes, at);
    if (length == 0) return false;
    at += length;
  }
  return true;
}

std::string toUtf8(std::string_view bytes) {
  if (isUtf8(bytes)) return std::string(bytes);
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<std::uint8_t>(c);
    append(text, byte >= 0x80U && byte < 0xA0U ? kWindows1252[byte - 0x80U] : byte);
  }
  return text;
}

std::string_view cutUtf8(std::string_view text, std::size_t most) {
  if (text.size() <= most) return text;
  std::size_t length = most;
  // At most three bytes follow the first of a character; more are no UTF-8.
  while (length > 0 && most - length < 3 && isFollower(byteAt(text, length))) --length;
  return text.substr(0, isFollower(byteAt(text, length)) ? most : length);
}

}  // namespace Vesk
