// SPDX-License-Identifier: MIT
#include "prims/TagLines.h"

#include <algorithm>

#include "output/NumberText.h"

namespace Vesk {
namespace {

void addName(Output& out, const TagEntry& tag) {
  out.addText(tag.name);
  out.addText(TagWords::kClosing);
}

}  // namespace

void writeTagLines(Output& out, const std::vector<TagEntry>& tags) {
  if (!out.writeTags) return;
  const auto isBare = [](const TagEntry& tag) { return tag.values.empty(); };
  if (std::any_of(tags.begin(), tags.end(), isBare)) {
    out.startLine(TagWords::kNamesLine);
    out.addText(TagWords::kOpening);
    for (const TagEntry& tag : tags) {
      if (isBare(tag)) addName(out, tag);
    }
  }
  for (const TagEntry& tag : tags) {
    if (isBare(tag)) continue;
    out.startLine(TagWords::kValuesLine);
    out.addText(TagWords::kOpening);
    addName(out, tag);
    for (const auto& [first, second] : tag.values) {
      out.addNumber(first);
      out.addNumber(second);
    }
  }
}

std::string tagToken(const TagEntry& tag) { return TagWords::kEntry + tag.name; }

void appendTagValues(std::string& token, const std::pair<double, double>& values,
                     const Output& out) {
  for (const double value : {values.first, values.second}) {
    token += ' ';
    appendFixed(token, value, out.pointDecimals, 0);
  }
}

}  // namespace Vesk
