// SPDX-License-Identifier: MIT
#include "text/Numbers.h"

#include <charconv>
#include <cmath>

#include "output/NumberText.h"

namespace VeskTool {

void appendShortest(std::string& to, double value) {
  if (std::isnan(value)) {
    to += "nan";
    return;
  }
  const double size = std::fabs(value);
  const bool plain = size == 0.0 || (size >= 1e-5 && size < 1e16) || std::isinf(value);
  char text[64];
  const std::to_chars_result end =
      plain ? std::to_chars(text, text + sizeof text, value, std::chars_format::fixed)
            : std::to_chars(text, text + sizeof text, value, std::chars_format::scientific);
  to.append(text, end.ptr);
}

std::string shortest(double value) {
  std::string text;
  appendShortest(text, value);
  return text;
}

void appendRounded(std::string& to, double value, int decimals) {
  if (!std::isfinite(value)) {
    appendShortest(to, value);
    return;
  }
  const std::size_t begin = to.size();
  appendTrimmed(to, value, decimals);
  if (decimals <= 0) return;
  const std::size_t point = to.find('.', begin);
  if (point == to.npos) to += '.';
  const std::size_t kept = point == to.npos ? 0 : to.size() - point - 1;
  to.append(static_cast<std::size_t>(decimals) - kept, '0');
}

void appendTrimmed(std::string& to, double value, int decimals) {
  const std::size_t begin = to.size();
  Vesk::appendFixed(to, value, decimals, 0);
  if (to.compare(begin, to.npos, "-0") == 0) to.erase(begin, 1);
}

std::string rounded(double value, int decimals) {
  std::string text;
  appendRounded(text, value, decimals);
  return text;
}

std::string trimmedNumber(double value, int decimals) {
  std::string text;
  appendTrimmed(text, value, decimals);
  return text;
}

std::string pointText(const GePoint& p) {
  return shortest(p.x) + ' ' + shortest(p.y) + ' ' + shortest(p.z);
}

std::string grouped(std::uint64_t value) {
  std::string text = std::to_string(value);
  for (std::size_t i = text.size(); i > 3; i -= 3) text.insert(i - 3, 1, ' ');
  return text;
}

std::string counted(std::uint64_t count, const char* one) {
  return grouped(count) + ' ' + one + (count == 1 ? "" : "s");
}

bool readNumber(std::string_view text, double& value) {
  if (text.starts_with('+')) text.remove_prefix(1);
  const std::from_chars_result end = std::from_chars(text.data(), text.data() + text.size(), value);
  return end.ec == std::errc() && end.ptr == text.data() + text.size() && !text.empty();
}

bool readNumbers(std::string_view text, std::size_t count, double* values) {
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t end = text.find_first_of(", ");
    if ((end == text.npos) != (i + 1 == count)) return false;
    if (!readNumber(text.substr(0, end), values[i]) || !std::isfinite(values[i])) return false;
    if (end == text.npos) return true;
    text.remove_prefix(end + 1);
  }
  return false;
}

}  // namespace VeskTool
