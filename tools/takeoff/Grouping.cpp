// SPDX-License-Identifier: MIT
#include "takeoff/Grouping.h"

#include <algorithm>

#include "elements/Describe.h"
#include "terminal/Exit.h"
#include "text/Words.h"

namespace VeskTool {
namespace {

constexpr std::string_view kColumnMark = "column:";

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// The digits from there on, without zeros before them; moves behind them.
std::string_view takeDigits(std::string_view text, std::size_t& at) {
  while (at + 1 < text.size() && text[at] == '0' && isDigit(text[at + 1])) ++at;
  const std::size_t begin = at;
  while (at < text.size() && isDigit(text[at])) ++at;
  return text.substr(begin, at - begin);
}

}  // namespace

Grouping::Grouping(const std::string& words) {
  for (const std::string& word : splitAt(words, ',')) {
    if (word.empty() || word == kColumnMark) {
      throw Failure(Exit::kUsage, "--by " + words + ": a word is missing");
    }
    by_ += (by_.empty() ? "" : ",") + word;
    if (word == "header") {
      parts_.push_back({Source::kHeader, {}});
    } else if (word == "group") {
      parts_.push_back({Source::kGroup, {}});
    } else if (word == "kind") {
      parts_.push_back({Source::kKind, {}});
    } else if (word == "size") {
      parts_.push_back({Source::kSize, {}});
    } else if (word == "item") {
      parts_.push_back({Source::kColumn, "item-code"});
    } else {
      parts_.push_back({Source::kColumn,
                        word.starts_with(kColumnMark) ? word.substr(kColumnMark.size()) : word});
    }
  }
}

bool Grouping::needsSidecar() const {
  return std::any_of(parts_.begin(), parts_.end(),
                     [](const Part& part) { return part.source == Source::kColumn; });
}

bool Grouping::isBill() const {
  return !parts_.empty() && std::all_of(parts_.begin(), parts_.end(), [](const Part& part) {
    return part.source == Source::kColumn;
  });
}

bool Grouping::isItem() const { return parts_.size() == 1 && parts_[0].column == "item-code"; }

GroupValues::GroupValues(const Grouping& grouping, const SidecarColumns* sidecar)
    : grouping_(grouping) {
  for (const Grouping::Part& part : grouping.parts_) {
    const bool isColumn = part.source == Grouping::Source::kColumn;
    columns_.push_back(isColumn ? sidecar->columnOf(part.column) : 0);
  }
}

std::string GroupValues::of(const Vesk::RecordElement& element, const Vesk::SidecarRow* row,
                            const Size& size, const Units& units) const {
  std::string value;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (i > 0) value += ", ";
    switch (grouping_.parts_[i].source) {
      case Grouping::Source::kHeader:
        value += headerText(element.header);
        break;
      case Grouping::Source::kGroup:
        value += trimmedField(element.header.f2);
        break;
      case Grouping::Source::kKind:
        value += wordOf(size.kind);
        break;
      case Grouping::Source::kSize:
        value += units.sizeText(size);
        break;
      case Grouping::Source::kColumn:
        if (row != nullptr) value += row->values[columns_[i]];
        break;
    }
  }
  return value;
}

bool NaturalLess::operator()(std::string_view a, std::string_view b) const {
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < a.size() && j < b.size()) {
    if (isDigit(a[i]) && isDigit(b[j])) {
      const std::string_view one = takeDigits(a, i);
      const std::string_view other = takeDigits(b, j);
      if (one.size() != other.size()) return one.size() < other.size();
      if (one != other) return one < other;
    } else {
      if (a[i] != b[j]) return static_cast<unsigned char>(a[i]) < static_cast<unsigned char>(b[j]);
      ++i;
      ++j;
    }
  }
  if (i < a.size() || j < b.size()) return j < b.size();
  return a < b;
}

}  // namespace VeskTool
