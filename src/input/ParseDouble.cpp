#include "input/ParseDouble.h"

#include <algorithm>
#include <charconv>
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
  // Hexadecimal digits only: from_chars would take "0xinf" for an infinity.
  if (hexadecimal && !isDigit(text[0], true) && !(text.size() > 1 && isDigit(text[1], true))) {
    return std::nullopt;
  }
  if (end.ec == std::errc::result_out_of_range) {
    value = isTooLarge(text, hexadecimal) ? std::numeric_limits<double>::infinity() : 0.0;
  }
  return negative ? -value : value;
}

}  // namespace Vesk
