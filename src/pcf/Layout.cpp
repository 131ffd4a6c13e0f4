// SPDX-License-Identifier: MIT
#include "pcf/Layout.h"

#include <algorithm>
#include <map>
#include <string>

#include "pcf/Text.h"
#include "pcf/Words.h"

namespace Vesk::Pcf {
namespace {

constexpr std::size_t kSample = 20000;  // lines
constexpr std::size_t kEnough = 500;    // components that say where they begin
constexpr std::size_t kPatience = 100;  // lines without any word of such a file
constexpr std::size_t kLongestWord = 64;

using Indents = std::map<std::size_t, std::size_t>;

// The indentation that occurs most, of equals the smallest.
std::size_t mostFrequent(const Indents& indents, std::size_t other) {
  const auto most =
      std::max_element(indents.begin(), indents.end(),
                       [](const auto& a, const auto& b) { return a.second < b.second; });
  return most == indents.end() ? other : most->first;
}

// Words that no letter begins a line with count more than those that one may.
bool isTelling(Word word, std::string_view key) {
  return isComponent(word) || word == Word::kPoint || word == Word::kMaterials ||
         (word == Word::kHeader &&
          (key.starts_with("UNITS-") || key.starts_with("PIPELINE-") || key.ends_with("-FILES")));
}

}  // namespace

Layout layoutOf(std::string_view text) {
  Layout layout;
  Indents components;
  Indents points;
  std::size_t count = 0;
  std::size_t told = 0;
  for (Lines lines(text); count < kSample && lines.next();) {
    const KeyValue entry = keyValueOf(lines.line());
    if (entry.key.empty() || isComment(entry.key)) continue;
    if (++count > kPatience && !layout.isPiping) break;
    if (entry.key.size() > kLongestWord) continue;
    const std::string key = capitals(entry.key);
    const Word word = wordOf(key);
    if (isTelling(word, key)) layout.isPiping = true;
    if (word == Word::kMaterials) break;
    if (isComponent(word) && entry.value.empty()) {
      ++components[indentOf(lines.line())];
      if (++told == kEnough) break;
    }
    if (word == Word::kPoint) ++points[indentOf(lines.line())];
  }
  layout.margin = mostFrequent(components, 0);
  layout.pointIndent = mostFrequent(points, layout.margin + 1);
  layout.isByName = layout.pointIndent <= layout.margin;
  return layout;
}

}  // namespace Vesk::Pcf
