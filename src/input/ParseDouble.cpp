// SPDX-License-Identifier: MIT
#include "input/ParseDouble.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <limits>

namespace Vesk {
namespace {

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool isDigit(char c, bool hexadecimal) {
  return (c >= '0' && c <= '9') ||
         (hexadecimal && ((c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F')));
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
  return text;
}

constexpr std::size_t kMostDigits = 7;  // of each part of a plain number

constexpr std::array<std::int64_t, kMostDigits + 1> kPowersOfTen{1,     10,     100,     1000,
                                                                 10000, 100000, 1000000, 10000000};

struct Digits {
  std::int64_t value = 0;
  std::size_t count = 0;  // more than kMostDigits: too many, and no value
};

// The digits with which the first `length` characters begin; `readable` of them
// and of those behind may be read.
//
// Eight characters are one word. A byte that is no digit is 10 or more once the
// bits of '0' are taken away; adding 0x76 carries that into its highest bit, and
// what it spills over goes to later characters only. The digits move to the
// upper end, with zeros before them, and are joined to pairs, fours and eight,
// all in the word at once: n times (10 * 2^8 + 1) has ten times the lower byte
// plus the upper one in its upper byte.
Digits leadingDigits(const char* text, std::size_t length, std::size_t readable) {
  std::uint64_t word = 0;
  if (readable >= sizeof word) {
    std::memcpy(&word, text, sizeof word);
  } else {
    for (std::size_t i = readable; i-- > 0;) word = word << 8 | static_cast<unsigned char>(text[i]);
  }
  word |= length < sizeof word ? ~std::uint64_t{0} << (8 * length) : 0;
  const std::uint64_t values = word ^ 0x3030303030303030;
  const std::uint64_t others = ((values + 0x7676767676767676) | values) & 0x8080808080808080;
  const std::size_t count = static_cast<std::size_t>(std::countr_zero(others)) / 8;
  if (count > kMostDigits) return {0, count};

  std::uint64_t n = values << (8 * (kMostDigits - count)) << 8;
  n = (n * (10 * 0x100 + 1) >> 8) & 0x00ff00ff00ff00ff;
  n = (n * (100 * 0x10000 + 1) >> 16) & 0x0000ffff0000ffff;
  n = n * (10000 * 0x100000000 + 1) >> 32;
  return {static_cast<std::int64_t>(n), count};
}

// Whether a number without sign that no double can hold is too large, not too
// small: whether its first digit that is not 0 stands before the point once the
// exponent has moved it.
bool isTooLarge(std::string_view number, bool hexadecimal) {
  const std::size_t mark = std::min(number.find_first_of(hexadecimal ? "pP" : "eE"), number.size());
  const std::string_view digits = number.substr(0, mark);
  const std::size_t point = std::min(digits.find('.'), digits.size());
  const std::size_t first = digits.find_first_not_of("0.");
  const long long place = static_cast<long long>(point) - static_cast<long long>(first);
  std::string_view exponentText = number.substr(std::min(mark + 1, number.size()));
  if (exponentText.starts_with('+')) exponentText.remove_prefix(1);
  long long exponent = 0;
  const auto end =
      std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
  if (end.ec == std::errc::result_out_of_range) return !exponentText.starts_with('-');
  return (hexadecimal ? 4 * place : place) + exponent > 0;
}

}  // namespace

// A double holds 14 digits as a whole number and their power of ten, both
// exactly, so that the division rounds to the nearest double.
PlainNumber leadingNumber(std::string_view text, std::size_t length) {
  if (!kHasPlainNumbers) return {};

  const std::size_t sign = length > 0 && text[0] == '-' ? 1 : 0;
  const Digits whole = leadingDigits(text.data() + sign, length - sign, text.size() - sign);
  if (whole.count == 0 || whole.count > kMostDigits) return {};
  std::size_t end = sign + whole.count;
  // Without a point there are no decimals, which costs less than not to look.
  const bool point = end < length && text[end] == '.';
  end += point ? 1 : 0;
  const Digits decimals =
      leadingDigits(text.data() + end, point ? length - end : 0, text.size() - end);
  if (decimals.count > kMostDigits) return {};
  const std::int64_t power = kPowersOfTen[decimals.count];
  const double value =
      static_cast<double>(whole.value * power + decimals.value) / static_cast<double>(power);
  return {sign != 0 ? -value : value, end + decimals.count};
}

std::optional<double> parseDouble(std::string_view text) {
  text = trimmed(text);
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  // A second sign would be taken by from_chars.
  if (text.empty() || text.front() == '-') return std::nullopt;

  const bool hexadecimal = text.size() > 2 && text[0] == '0' &&
                           (text[1] == 'x' || text[1] == 'X') &&
                           (isDigit(text[2], true) || text[2] == '.');
  if (hexadecimal) text.remove_prefix(2);
  double value = 0.0;
  const char* last = text.data() + text.size();
  const auto end = std::from_chars(
      text.data(), last, value, hexadecimal ? std::chars_format::hex : std::chars_format::general);
  if (end.ptr != last || end.ec == std::errc::invalid_argument) return std::nullopt;
  if (end.ec == std::errc::result_out_of_range) {
    value = isTooLarge(text, hexadecimal) ? std::numeric_limits<double>::infinity() : 0.0;
  }
  return negative ? -value : value;
}

}  // namespace Vesk
