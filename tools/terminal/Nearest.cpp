// SPDX-License-Identifier: MIT
#include "terminal/Nearest.h"

#include <algorithm>

namespace VeskTool {
namespace {

// How many letters must be changed, exchanged with the next, put in or taken out.
std::size_t editsBetween(std::string_view a, std::string_view b) {
  std::vector<std::vector<std::size_t>> d(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t k = 0; k <= b.size(); ++k) {
      if (i == 0 || k == 0) {
        d[i][k] = i + k;
        continue;
      }
      const std::size_t change = d[i - 1][k - 1] + (a[i - 1] == b[k - 1] ? 0 : 1);
      d[i][k] = std::min({change, d[i - 1][k] + 1, d[i][k - 1] + 1});
      if (i > 1 && k > 1 && a[i - 1] == b[k - 2] && a[i - 2] == b[k - 1]) {
        d[i][k] = std::min(d[i][k], d[i - 2][k - 2] + 1);
      }
    }
  }
  return d[a.size()][b.size()];
}

}  // namespace

std::string didYouMean(std::string_view word, const std::vector<std::string>& names) {
  constexpr std::size_t kLongestWord = 64;
  const std::string* best = nullptr;
  std::size_t bestEdits = 0;
  for (const std::string& name : names) {
    const std::size_t edits = editsBetween(word.substr(0, kLongestWord), name);
    if (best == nullptr || edits < bestEdits) {
      best = &name;
      bestEdits = edits;
    }
  }
  if (best == nullptr || bestEdits > std::max<std::size_t>(1, best->size() / 3)) return {};
  return "did you mean \"" + *best + "\"?";
}

}  // namespace VeskTool
