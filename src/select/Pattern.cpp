// SPDX-License-Identifier: MIT
#include "select/Pattern.h"

namespace Vesk {
namespace {

std::string_view trimmed(std::string_view field) {
  return field.substr(0, field.find_last_not_of(' ') + 1);
}

}  // namespace

bool matchesPattern(std::string_view name, std::string_view pattern) {
  std::size_t n = 0;
  std::size_t p = 0;
  std::size_t star = std::string_view::npos;  // the last one, and what it may take
  std::size_t taken = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      taken = n;
    } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n])) {
      ++p;
      ++n;
    } else if (star != std::string_view::npos) {
      p = star + 1;
      n = ++taken;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

bool matchesHeader(std::string_view f1, std::string_view f2, std::string_view pattern) {
  return matchesPattern(trimmed(f1), pattern) || matchesPattern(headerName(f1, f2), pattern);
}

std::string headerName(std::string_view f1, std::string_view f2) {
  std::string text(trimmed(f1));
  const std::string_view group = trimmed(f2);
  if (!group.empty()) text.append(text.empty() ? "" : " ").append(group);
  return text;
}

}  // namespace Vesk
