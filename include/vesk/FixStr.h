// SPDX-License-Identifier: MIT
#ifndef VESK_FIXSTR_H
#define VESK_FIXSTR_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>

#include <vesk/FixStrB.h>

namespace Vesk {

// A text field of exactly N characters, padded with Pad and always terminated
// after the N-th. A new field is blank.
template <std::size_t N, char Pad = ' '>
class FixStr : public FixStrB {
 public:
  FixStr() { FixStr::assign(nullptr, false); }
  FixStr(const FixStr&) = default;
  FixStr& operator=(const FixStr&) = default;

  const char* data() const override { return chars_.data(); }

  void assign(const char* text, bool blankControls) override {
    const std::size_t length = text == nullptr ? 0 : boundedLength(text, N);
    std::copy_n(text, length, chars_.data());
    std::fill_n(chars_.data() + length, N - length, Pad);
    chars_[N] = '\0';
    if (!blankControls) return;
    std::replace_if(
        chars_.data(), chars_.data() + N, [](char c) { return static_cast<unsigned char>(c) < 32; },
        Pad);
  }

  std::size_t width() const override { return N; }
  char padChar() const override { return Pad; }

  // The N characters, for loops that know the width.
  std::string_view view() const { return {chars_.data(), N}; }

  virtual ~FixStr() = default;

  // The terminated text.
  virtual const char* text() const { return data(); }

  // Replaces `count` characters from `position` (all that remain if count is
  // below 0 or too large) by those of `text`, blanks after its end. A position
  // outside the field changes nothing.
  virtual void put(int position, int count, const char* text) {
    const std::size_t n = room(position, count < 0 ? static_cast<int>(N) : count);
    if (n == 0) return;
    const std::size_t length = text == nullptr ? 0 : boundedLength(text, n);
    char* target = chars_.data() + position;
    std::copy_n(text, length, target);
    std::fill_n(target + length, n - length, Pad);
  }

  // Writes at most `count` characters of `text` over those from `position`, cut
  // at the end of the field and without padding.
  virtual void overlay(int position, int count, const char* text) {
    if (text == nullptr) return;
    const std::size_t n = room(position, count);
    std::copy_n(text, boundedLength(text, n), chars_.data() + (n == 0 ? 0 : position));
  }

  // Copies the first `length` characters into the caller's buffer of at least
  // that size; beyond the field's end the buffer gets blanks. No terminator.
  virtual void copyOut(char* buffer, int length) const {
    if (length <= 0) return;
    const std::size_t wanted = static_cast<std::size_t>(length);
    const std::size_t n = std::min(wanted, N);
    std::copy_n(chars_.data(), n, buffer);
    std::fill_n(buffer + n, wanted - n, Pad);
  }

 private:
  // How many of `count` characters from `position` lie inside the field.
  static std::size_t room(int position, int count) {
    if (position < 0 || count <= 0 || static_cast<std::size_t>(position) >= N) return 0;
    return std::min(N - static_cast<std::size_t>(position), static_cast<std::size_t>(count));
  }

  static std::size_t boundedLength(const char* text, std::size_t limit) {
    const void* end = std::memchr(text, '\0', limit);
    return end == nullptr ? limit : static_cast<std::size_t>(static_cast<const char*>(end) - text);
  }

  std::array<char, N + 1> chars_;
};

}  // namespace Vesk

#endif
