// SPDX-License-Identifier: MIT
#include "records/PartNames.h"

#include <algorithm>
#include <iterator>

namespace VeskTool {
namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isSafe(char c) {
  return isLetter(c) || isDigit(c) || c == '-' || c == '+' || c == '_' || c == '.';
}

std::string lowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

// Names that Windows keeps for devices, whatever stands behind a dot.
bool isDeviceName(std::string_view stem) {
  constexpr std::string_view kDevices[] = {"con", "prn", "aux", "nul"};
  const std::string lower = lowerCase(stem);
  if (std::find(std::begin(kDevices), std::end(kDevices), lower) != std::end(kDevices)) return true;
  return lower.size() == 4 && (lower.starts_with("com") || lower.starts_with("lpt")) &&
         isDigit(lower[3]);
}

}  // namespace

std::string safeName(std::string_view value) {
  if (value.empty()) return "blank";
  std::string name(value);
  std::replace_if(
      name.begin(), name.end(), [](char c) { return !isSafe(c); }, '_');
  const std::size_t dot = std::min(name.find('.'), name.size());
  if (isDeviceName(std::string_view(name).substr(0, dot))) name.insert(dot, 1, '_');
  // A file that is hidden, an option, and a dot that Windows takes away.
  if (name.front() == '.' || name.front() == '-') name.insert(0, 1, '_');
  if (name.back() == '.') name += '_';
  return name;
}

std::string PartNames::nameFor(std::string_view value) {
  const std::string base = safeName(value);
  std::string name = base;
  int& number = next_.try_emplace(lowerCase(base), 2).first->second;
  while (!taken_.insert(lowerCase(name)).second) name = base + '-' + std::to_string(number++);
  return name;
}

}  // namespace VeskTool
