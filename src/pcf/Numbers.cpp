// SPDX-License-Identifier: MIT
#include "pcf/Numbers.h"

#include <charconv>
#include <cmath>

namespace Vesk::Pcf {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Takes up to nine digits.
std::optional<double> takeInteger(std::string_view& text) {
  std::size_t length = 0;
  double value = 0;
  while (length < text.size() && length < 9 && isDigit(text[length])) {
    value = value * 10 + (text[length] - '0');
    ++length;
  }
  if (length == 0) return std::nullopt;
  text.remove_prefix(length);
  return value;
}

bool take(std::string_view& text, char c) {
  if (text.empty() || text.front() != c) return false;
  text.remove_prefix(1);
  return true;
}

// "3/4"
std::optional<double> takeFraction(std::string_view& text) {
  std::string_view rest = text;
  const std::optional<double> over = takeInteger(rest);
  if (!over || !take(rest, '/')) return std::nullopt;
  const std::optional<double> under = takeInteger(rest);
  if (!under || *under == 0) return std::nullopt;
  text = rest;
  return *over / *under;
}

// "3/4", "1.1/2" or "1-1/2"
std::optional<double> takeMixed(std::string_view& text) {
  if (const std::optional<double> fraction = takeFraction(text)) return fraction;
  std::string_view rest = text;
  const std::optional<double> whole = takeInteger(rest);
  if (!whole || !(take(rest, '.') || take(rest, '-'))) return std::nullopt;
  const std::optional<double> fraction = takeFraction(rest);
  if (!fraction || *fraction >= 1) return std::nullopt;
  text = rest;
  return *whole + *fraction;
}

std::optional<double> takeDecimal(std::string_view& text) {
  // What from_chars would take beside digits: "inf", "nan".
  if (text.empty() || !(isDigit(text[0]) || text[0] == '.')) return std::nullopt;
  double value = 0;
  const std::from_chars_result end = std::from_chars(text.data(), text.data() + text.size(), value);
  if (end.ec != std::errc() || !std::isfinite(value)) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(end.ptr - text.data()));
  return value;
}

std::optional<double> takeUnsigned(std::string_view& text) {
  // A slash tells fractions from the many numbers that are none.
  const std::size_t slash = text.find('/');
  if (slash != std::string_view::npos && slash < 16) {
    if (const std::optional<double> mixed = takeMixed(text)) return mixed;
  }
  return takeDecimal(text);
}

// Behind "10'": "6.1/2\"", "-6\"" or nothing.
double takeInches(std::string_view& text) {
  std::string_view rest = text;
  take(rest, '-');
  const std::optional<double> inches = takeUnsigned(rest);
  if (!inches) return 0;
  take(rest, '"');
  text = rest;
  return *inches;
}

}  // namespace

std::optional<Number> takeNumber(std::string_view& text) {
  std::string_view rest = text;
  const bool isNegative = take(rest, '-');
  if (!isNegative) take(rest, '+');
  const std::optional<double> value = takeUnsigned(rest);
  if (!value) return std::nullopt;
  Number number{*value, false};
  if (take(rest, '\'')) {
    number = {*value * 12 + takeInches(rest), true};
  } else if (take(rest, '"')) {
    number.isInches = true;
  }
  if (isNegative) number.value = -number.value;
  text = rest;
  return number;
}

std::optional<Number> numberOf(std::string_view word) {
  const std::optional<Number> number = takeNumber(word);
  return word.empty() ? number : std::nullopt;
}

bool isFraction(std::string_view word) {
  if (!word.empty() && word.back() == '"') word.remove_suffix(1);
  return takeFraction(word).has_value() && word.empty();
}

}  // namespace Vesk::Pcf
