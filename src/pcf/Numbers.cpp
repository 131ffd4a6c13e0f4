// SPDX-License-Identifier: MIT
#include "pcf/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <span>
#include <vector>

#include "pcf/Text.h"

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

bool isDigits(std::string_view word) {
  return !word.empty() && std::all_of(word.begin(), word.end(), isDigit);
}

// How many words behind one of feet alone are its inches: 6", 6.1/2", 6 1/2" or none.
std::size_t inchesBehind(std::span<const std::string_view> words) {
  const auto isInches = [](std::string_view word) {
    return !word.empty() && word.back() == '"' && isDigit(word.front());
  };
  if (words[0].back() != '\'') return 0;
  if (words.size() > 1 && isInches(words[1]) && words[1].find('\'') == std::string_view::npos)
    return 1;
  const bool areTwo =
      words.size() > 2 && isDigits(words[1]) && isInches(words[2]) && isFraction(words[2]);
  return areTwo ? 2 : 0;
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

std::string withFeetJoined(std::string_view words, std::size_t wanted) {
  std::string text(words);
  std::vector<std::string_view> numbers;
  std::string_view rest = words;
  for (std::string_view ahead = rest;; rest = ahead) {
    const std::string_view word = nextWord(ahead);
    std::string_view number = word;
    if (!takeNumber(number)) break;
    numbers.push_back(word);
  }
  if (numbers.size() <= 3) return text;
  const bool isMixedBore = isFraction(numbers.back()) && isDigits(numbers[numbers.size() - 2]);
  const std::size_t count = numbers.size() - (isMixedBore ? 1 : 0);
  const std::optional<Number> last = numberOf(numbers.back());
  if (count <= wanted && !(last && last->value == 0)) return text;
  std::string joined;
  std::size_t left = 0;
  for (std::size_t i = 0; i < numbers.size(); ++left) {
    joined.append(left > 0 ? " " : "").append(numbers[i]);
    const std::size_t taken = inchesBehind(std::span(numbers).subspan(i));
    if (taken > 0) joined.append(numbers[i + 1]);
    if (taken > 1) joined.append(".").append(numbers[i + 2]);
    i += 1 + taken;
  }
  return left < 3 ? text : joined.append(rest);
}

std::string textOf(double number) {
  char digits[40];
  const double rounded = std::round(number * 1000) / 1000;
  return {digits, std::to_chars(digits, digits + sizeof digits, rounded).ptr};
}

}  // namespace Vesk::Pcf
