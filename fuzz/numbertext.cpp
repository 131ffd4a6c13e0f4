// SPDX-License-Identifier: MIT
// Number text: any double, any number of decimals, any width, beside the C
// library's formatted print, and read back.
//
//   8 bytes the double, 1 the decimals, 1 the width
#include "output/NumberText.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>

#include "Fuzz.h"

using VeskFuzz::check;

namespace {

std::string printed(double v, int decimals, int width) {
  if (std::isnan(v))
    return std::string(static_cast<std::size_t>(std::max(width - 3, 0)), ' ') + "nan";
  char text[700];
  const int length = std::snprintf(text, sizeof text, "%*.*f", width, decimals, v);
  return {text, static_cast<std::size_t>(length)};
}

std::string trimmed(std::string text) {
  if (text.find('.') == text.npos) return text;
  text.resize(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

double valueOf(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  double value = std::nan("");
  const auto end = std::from_chars(text.data(), text.data() + text.size(), value);
  const double infinity = std::numeric_limits<double>::infinity();
  if (end.ec == std::errc::result_out_of_range) return text.front() == '-' ? -infinity : infinity;
  return value;
}

void checkFixed(double v, int decimals, int width) {
  std::string text = "x";
  Vesk::appendFixed(text, v, decimals, width);
  check(text.front() == 'x', "the text before stays");
  text.erase(0, 1);
  std::string expected = printed(v, decimals, width);
  if (decimals > 0 && std::isfinite(v)) expected = trimmed(std::move(expected));
  check(text == expected, "the digits are those of printf", text + " for " + expected);

  std::string portable(Vesk::fixedRoom(decimals, width), '#');
  portable.resize(static_cast<std::size_t>(
      Vesk::Portable::writeFixed(portable.data(), v, decimals, width) - portable.data()));
  check(portable == text, "both ways agree", portable + " for " + text);

  if (std::isnan(v)) return;
  std::string again;
  Vesk::appendFixed(again, valueOf(text), decimals, width);
  check(again == text, "what was read is written the same", again + " for " + text);
}

void checkField9(double v) {
  std::string text;
  Vesk::appendField9(text, v);
  check(text.size() == 9 || text.size() == 10, "nine characters, or ten", text);

  std::string portable(Vesk::kField9Room, '#');
  portable.resize(
      static_cast<std::size_t>(Vesk::Portable::writeField9(portable.data(), v) - portable.data()));
  check(portable == text, "both ways agree", portable + " for " + text);
  if (std::isnan(v) || std::isinf(v)) {
    check(text == printed(v, 0, 9), "nan and inf fill nine columns", text);
    return;
  }

  const double back = valueOf(text);
  if (v <= 99999999.0 && v > -9999999.0) {
    int decimals = 3;
    if (v > 9999999.9 || v <= -999999.9) {
      decimals = 0;
    } else if (v > 999999.99 || v <= -99999.99) {
      decimals = 1;
    } else if (v > 99999.999 || v <= -9999.999) {
      decimals = 2;
    }
    check(text == printed(v, decimals, 9), "the digits are those of printf", text);
    check(text.size() == 9, "nine characters", text);
    check(std::abs(back - v) <= 0.5000001 * std::pow(10.0, -decimals), "half a unit at most", text);
  } else {
    check(text.find('e') != text.npos, "an exponent", text);
    // The text of the largest ones is that of more than a double can be.
    if (std::isinf(back)) {
      check(std::abs(v) >= 1.79e308, "about the value", text);
      return;
    }
    // Of the mantissa three decimals at least, two beside a sign.
    check(std::abs(back / 2 - v / 2) <= std::abs(v / 2) * 0.0051, "about the value", text);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  VeskFuzz::Bytes bytes(data, size);
  const double v = std::bit_cast<double>(bytes.bits());
  const int decimals = bytes.below(21);
  checkFixed(v, decimals, 0);
  checkFixed(v, decimals, bytes.below(33));
  checkField9(v);
  return 0;
}
