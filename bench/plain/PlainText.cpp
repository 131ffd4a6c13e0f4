// SPDX-License-Identifier: MIT
#include "plain/PlainText.h"

#include <cmath>
#include <cstdio>
#include <vector>

namespace VeskBench {
namespace {

#pragma GCC diagnostic ignored "-Wformat-nonliteral"

// Printed twice where 64 characters are too few.
std::string printed(const char* format, double v) {
  char buffer[64];
  const int length = std::snprintf(buffer, sizeof buffer, format, v);
  if (length < static_cast<int>(sizeof buffer)) return buffer;
  std::vector<char> longer(static_cast<std::size_t>(length) + 1);
  std::snprintf(longer.data(), longer.size(), format, v);
  return longer.data();
}

std::string exponentForm(double v, const char* two, const char* one, const char* three) {
  const int exponent = static_cast<int>(std::log10(std::fabs(v)));
  const char* format = exponent < 10 ? one : exponent < 100 ? two : three;
  return printed(format, v / std::pow(10.0, exponent)) + "e" + std::to_string(exponent);
}

}  // namespace

std::string plainField9(double v) {
  if (v > 99999999.0) return exponentForm(v, "%6.4f", "%7.5f", "%5.3f");
  if (v > 9999999.9) return printed("%9.0f", v);
  if (v > 999999.99) return printed("%9.1f", v);
  if (v > 99999.999) return printed("%9.2f", v);
  if (v > -9999.999) return printed("%9.3f", v);
  if (v > -99999.99) return printed("%9.2f", v);
  if (v > -999999.9) return printed("%9.1f", v);
  if (v > -9999999.0) return printed("%9.0f", v);
  return exponentForm(v, "%6.3f", "%7.4f", "%5.2f");
}

std::string plainFixed(double v, int decimals, int width) {
  std::string format = "%";
  if (width > 0) format += std::to_string(width);
  format += ".";
  if (decimals > 0) format += std::to_string(decimals);
  format += "f";
  std::string text = printed(format.c_str(), v);
  if (text.find('.') == std::string::npos) return text;
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

}  // namespace VeskBench
