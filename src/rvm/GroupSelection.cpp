// SPDX-License-Identifier: MIT
#include "rvm/GroupSelection.h"

#include "sidecar/Utf8.h"

namespace Vesk {
namespace {

bool matchesPattern(std::string_view text, std::string_view pattern) {
  std::size_t t = 0;
  std::size_t p = 0;
  std::size_t star = pattern.npos;
  std::size_t starText = 0;
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      starText = t;
    } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == text[t])) {
      ++p;
      ++t;
    } else if (star != pattern.npos) {
      p = star + 1;
      t = ++starText;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

}  // namespace

GroupSelection::GroupSelection(const std::vector<std::string>& patterns) : found_(patterns.size()) {
  for (const std::string& pattern : patterns) {
    // The first may end any path.
    const bool isAnywhere = pattern.starts_with('/') || pattern.starts_with('*');
    patterns_.push_back(toUtf8(isAnywhere ? pattern : '/' + pattern));
  }
}

bool GroupSelection::matches(std::string_view path) {
  const std::string text = toUtf8(path);
  bool any = false;
  for (std::size_t i = 0; i < patterns_.size(); ++i) {
    const bool hit = matchesPattern(text, patterns_[i]) || matchesPattern(text, '*' + patterns_[i]);
    found_[i] = found_[i] || hit;
    any = any || hit;
  }
  return any;
}

void appendToPath(std::string& path, std::string_view name) {
  if (!name.starts_with('/')) path += '/';
  path += name;
}

}  // namespace Vesk
