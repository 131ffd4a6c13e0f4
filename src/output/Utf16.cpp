// SPDX-License-Identifier: MIT
#include "output/Utf16.h"

#include <cstddef>
#include <cstdint>

namespace Vesk {
namespace {

// The forms of a character: how its first byte begins, how many bytes follow
// and the least character that needs so many.
struct Form {
  unsigned char mask;
  unsigned char lead;
  std::size_t following;
  char32_t least;
};

constexpr Form kForms[] = {
    {0x80, 0x00, 0, 0x0},
    {0xE0, 0xC0, 1, 0x80},
    {0xF0, 0xE0, 2, 0x800},
    {0xF8, 0xF0, 3, 0x10000},
};

constexpr char32_t kLast = 0x10FFFF;

bool isSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDFFF; }

// Takes the first character off `text`; nothing if there is no valid one.
std::optional<char32_t> takeCharacter(std::string_view& text) {
  const auto byte = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  for (const Form& form : kForms) {
    if ((byte(0) & form.mask) != form.lead) continue;
    if (text.size() <= form.following) return std::nullopt;
    char32_t c = byte(0) & static_cast<unsigned char>(~form.mask);
    for (std::size_t i = 1; i <= form.following; ++i) {
      if ((byte(i) & 0xC0) != 0x80) return std::nullopt;
      c = c << 6 | (byte(i) & 0x3F);
    }
    if (c < form.least || c > kLast || isSurrogate(c)) return std::nullopt;
    text.remove_prefix(form.following + 1);
    return c;
  }
  return std::nullopt;
}

void append(std::u16string& text, char32_t c) {
  if (c < 0x10000) {
    text += static_cast<char16_t>(c);
    return;
  }
  text += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
  text += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
}

}  // namespace

std::optional<std::u16string> toUtf16(std::string_view text) {
  std::u16string wide;
  while (!text.empty()) {
    const std::optional<char32_t> c = takeCharacter(text);
    if (!c) return std::nullopt;
    append(wide, *c);
  }
  return wide;
}

}  // namespace Vesk
