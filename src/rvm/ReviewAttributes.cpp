// SPDX-License-Identifier: MIT
#include "rvm/ReviewAttributes.h"

#include <algorithm>

#include "output/NumberText.h"
#include "rvm/ReviewFault.h"
#include "rvm/WordStream.h"
#include "sidecar/Utf8.h"

namespace Vesk {
namespace {

constexpr std::string_view kBlanks = " \t\r";
constexpr std::string_view kFileMark = "CADC_Attributes_File";
constexpr std::string_view kNoGroup = "Header Information";

std::string_view trimmed(std::string_view text) {
  const std::size_t from = text.find_first_not_of(kBlanks);
  if (from == std::string_view::npos) return {};
  return text.substr(from, text.find_last_not_of(kBlanks) + 1 - from);
}

// Without one pair of quotes.
std::string_view unquoted(std::string_view text) {
  if (text.size() < 2 || text.front() != text.back()) return text;
  if (text.front() != '"' && text.front() != '\'') return text;
  return text.substr(1, text.size() - 2);
}

// What the first line says behind "name:", up to the comma with a blank before it.
std::string declared(std::string_view line, std::string_view name, std::string_view otherwise) {
  const std::size_t found = line.find(name);
  if (found == std::string_view::npos) return std::string(otherwise);
  std::string_view rest = line.substr(found + name.size());
  rest = trimmed(rest.substr(0, rest.find(" ,")));
  return std::string(rest.empty() ? otherwise : rest);
}

// The model may be in another encoding.
std::string keyText(std::size_t parent, std::string_view name) {
  return countText(parent) + ' ' + toUtf8(name);
}

}  // namespace

class AttributeReader {
 public:
  AttributeReader(ReviewAttributes& to, const ReadBytes& bytes) : to_(to), stream_(bytes) {}

  void read() {
    if (!advance()) throw ReviewFault(1, true, "the file of attributes is empty");
    readMarks();
    while (advance()) readLine();
    if (!open_.empty()) {
      throw ReviewFault(line_, true,
                        "the file of attributes is cut off: " + countText(open_.size()) +
                            " blocks have no " + end_);
    }
  }

 private:
  struct Open {
    ReviewAttributes::Block block = ReviewAttributes::kNone;
    std::unordered_map<std::size_t, std::size_t> places;  // among its values, by key
  };

  bool advance() {
    if (!stream_.has(1)) return false;
    ++line_;
    text_.clear();
    while (stream_.has(1)) {
      const char c = static_cast<char>(stream_.peek(0));
      stream_.skip(1);
      if (c == '\n') break;
      if (text_.size() == ReviewLimits::kTextBytes) {
        throw ReviewFault(line_, true,
                          "a line of more than " + countText(ReviewLimits::kTextBytes) + " bytes");
      }
      text_ += c;
    }
    return true;
  }

  void readMarks() {
    std::string_view line = text_;
    if (line.starts_with("\xEF\xBB\xBF")) line.remove_prefix(3);
    line = trimmed(line);
    if (!line.starts_with(kFileMark)) {
      throw ReviewFault(
          1, true,
          "this is not a file of attributes: it doesn't begin with " + std::string(kFileMark));
    }
    // Behind a blank or comma: "end:" stands in "name_end:" too.
    start_ = declared(line, " start:", "NEW");
    end_ = declared(line, " end:", "END");
    nameEnd_ = declared(line, " name_end:", ":=");
    separator_ = declared(line, " sep:", "&end&");
  }

  void readLine() {
    std::string_view line = trimmed(text_);
    if (line.empty()) return;
    if (line == end_) {
      if (open_.empty()) {
        ++to_.stray_;
      } else {
        open_.pop_back();
      }
      return;
    }
    if (line.starts_with(start_) &&
        (line.size() == start_.size() || kBlanks.find(line[start_.size()]) != kBlanks.npos)) {
      return openBlock(trimmed(line.substr(start_.size())));
    }
    while (!line.empty()) {
      const std::size_t end = line.find(separator_);
      readValue(trimmed(line.substr(0, end)));
      line = end == line.npos ? std::string_view() : line.substr(end + separator_.size());
    }
  }

  void openBlock(std::string_view name) {
    if (open_.size() == ReviewLimits::kDepth) {
      throw ReviewFault(line_, true,
                        "more than " + countText(ReviewLimits::kDepth) + " nested blocks");
    }
    const bool isHeading = isFirst_ && name == kNoGroup;
    isFirst_ = false;
    const ReviewAttributes::Block parent =
        open_.empty() ? ReviewAttributes::kTop : open_.back().block;
    const bool isNone = isHeading || parent == ReviewAttributes::kNone;
    open_.push_back({isNone ? ReviewAttributes::kNone : to_.add(parent, name), {}});
  }

  void readValue(std::string_view text) {
    if (text.empty()) return;
    const std::size_t mark = text.find(nameEnd_);
    const std::string_view key = trimmed(text.substr(0, mark));
    if (mark == text.npos || key.empty() || open_.empty()) {
      ++to_.stray_;
      return;
    }
    if (open_.back().block == ReviewAttributes::kNone) return;
    const std::string_view value = unquoted(trimmed(text.substr(mark + nameEnd_.size())));
    putValue(open_.back(), to_.keyOf(key), value);
    if (to_.keys_.size() > ReviewLimits::kKeys) {
      throw ReviewFault(line_, true,
                        "more than " + countText(ReviewLimits::kKeys) + " different attributes");
    }
  }

  void putValue(Open& open, std::size_t key, std::string_view value) {
    ReviewAttributes::Values& values = to_.blocks_[open.block].values;
    const auto [found, isNew] = open.places.try_emplace(key, values.size());
    if (isNew) {
      values.emplace_back(key, value);
    } else {
      values[found->second].second = value;
      ++to_.replaced_;
    }
  }

  ReviewAttributes& to_;
  WordStream stream_;
  std::string text_;
  std::uint64_t line_ = 0;
  std::string start_;
  std::string end_;
  std::string nameEnd_;
  std::string separator_;
  bool isFirst_ = true;
  std::vector<Open> open_;
};

void ReviewAttributes::read(const ReadBytes& bytes) { AttributeReader(*this, bytes).read(); }

ReviewAttributes::Block ReviewAttributes::add(Block parent, std::string_view name) {
  blocks_.emplace_back();
  byName_[keyText(parent, name)].blocks.push_back(blocks_.size() - 1);
  return blocks_.size() - 1;
}

std::size_t ReviewAttributes::keyOf(std::string_view key) {
  const auto [found, isNew] = keyNumbers_.try_emplace(std::string(key), keys_.size());
  if (isNew) keys_.emplace_back(key);
  return found->second;
}

ReviewAttributes::Block ReviewAttributes::find(Block parent, std::string_view name) {
  if (parent == kNone) return kNone;
  // The file of attributes has no blanks around names either.
  const auto found = byName_.find(keyText(parent, trimmed(name)));
  if (found == byName_.end()) return kNone;
  Namesakes& namesakes = found->second;
  if (namesakes.asked == namesakes.blocks.size()) return namesakes.blocks.back();
  const Block block = namesakes.blocks[namesakes.asked++];
  blocks_[block].isUsed = true;
  return block;
}

std::size_t ReviewAttributes::unusedCount() const {
  return static_cast<std::size_t>(std::count_if(blocks_.begin() + 1, blocks_.end(),
                                                [](const Data& block) { return !block.isUsed; }));
}

}  // namespace Vesk
