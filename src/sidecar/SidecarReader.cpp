// SPDX-License-Identifier: MIT
#include <algorithm>
#include <charconv>
#include <utility>

#include "sidecar/Sidecar.h"

namespace Vesk {
namespace {

constexpr int kLargestCounter = 46655;
constexpr int kEnd = std::char_traits<char>::eof();

std::string lowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

void takeApostrophe(std::string& field) {
  if (field.size() > 1 && field[0] == '\'' && isLikeFormula(field)) field.erase(0, 1);
}

}  // namespace

SidecarReader::SidecarReader(std::istream& in, std::string name) : in_(in), name_(std::move(name)) {
  line_ = 1;
  if (!readRecord()) {
    if (fault_.empty()) fail("the file is empty; expected the names of the columns");
    return;
  }
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (fields_[0].compare(0, kMark.size(), kMark) == 0) fields_[0].erase(0, kMark.size());
  width_ = fields_.size();
  bool found[kSidecarKeys] = {};
  for (std::size_t i = 0; i < width_; ++i) {
    const std::string column = lowerCase(fields_[i]);
    const auto key = std::find(std::begin(kSidecarKeyNames), std::end(kSidecarKeyNames), column);
    if (key == std::end(kSidecarKeyNames)) {
      columns_.push_back(column);
      places_.push_back(i);
      continue;
    }
    const auto place = static_cast<std::size_t>(key - std::begin(kSidecarKeyNames));
    found[place] = true;
    key_[place] = i;
  }
  for (std::size_t i = 0; i < kSidecarKeys; ++i) {
    if (found[i]) continue;
    fail("there is no column \"" + std::string(kSidecarKeyNames[i]) +
         "\"; expected f1, f2, first and last");
    return;
  }
}

int SidecarReader::columnOf(std::string_view name) const {
  const auto place = std::find(columns_.begin(), columns_.end(), name);
  return place == columns_.end() ? -1 : static_cast<int>(place - columns_.begin());
}

bool SidecarReader::fail(std::string_view what) {
  char digits[24];
  const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, line_);
  fault_ = name_ + ':' + std::string(digits, end.ptr) + ": " + std::string(what);
  return false;
}

int SidecarReader::get() {
  const int c = in_.rdbuf()->sbumpc();
  if (c == '\n') ++nextLine_;
  return c;
}

// Reads one field and what ends it.
bool SidecarReader::readField(bool& isLast) {
  std::string& field = fields_.emplace_back();
  int c = get();
  const bool isQuoted = c == '"';
  if (isQuoted) {
    for (c = get();; c = get()) {
      if (c == '"') {
        c = get();
        if (c != '"') break;
      }
      if (c == kEnd) return fail("a quoted field has no end");
      if (field.size() >= kLongestField) return fail("a field is longer than 1 MiB");
      field += static_cast<char>(c);
    }
  }
  for (; c != ',' && c != '\n' && c != kEnd; c = get()) {
    if (c == '\r' && in_.rdbuf()->sgetc() == '\n') continue;
    if (isQuoted) return fail("there is something after the end of a quoted field");
    if (field.size() >= kLongestField) return fail("a field is longer than 1 MiB");
    field += static_cast<char>(c);
  }
  takeApostrophe(field);
  isLast = c != ',';
  return true;
}

bool SidecarReader::readRecord() {
  fields_.clear();
  // Empty lines, one behind the last row for example, hold no row.
  for (int c = in_.rdbuf()->sgetc(); c == '\n' || c == '\r'; c = in_.rdbuf()->sgetc()) get();
  line_ = nextLine_;
  if (in_.rdbuf()->sgetc() == kEnd) return false;
  for (bool isLast = false; !isLast;) {
    if (width_ > 0 && fields_.size() == width_)
      return fail("the row has more fields than the first line");
    if (!readField(isLast)) return false;
  }
  if (width_ > 0 && fields_.size() < width_)
    return fail("the row has fewer fields than the first line");
  return true;
}

bool SidecarReader::readNumber(std::size_t field, std::string_view column, int& number) {
  const std::string& text = fields_[field];
  const std::from_chars_result end =
      std::from_chars(text.data(), text.data() + text.size(), number);
  if (!text.empty() && end.ec == std::errc() && end.ptr == text.data() + text.size() &&
      number >= 0 && number <= kLargestCounter)
    return true;
  return fail("\"" + std::string(column) + "\" is not a number from 0 to 46655");
}

bool SidecarReader::takeKey(SidecarRow& row) {
  if (!readNumber(key_[2], kSidecarKeyNames[2], row.first)) return false;
  if (!readNumber(key_[3], kSidecarKeyNames[3], row.last)) return false;
  if (row.last < row.first) return fail("\"last\" is smaller than \"first\"");
  row.f1 = std::move(fields_[key_[0]]);
  row.f2 = std::move(fields_[key_[1]]);
  return true;
}

bool SidecarReader::next(SidecarRow& row) {
  if (!fault_.empty() || !readRecord() || !takeKey(row)) return false;
  row.values.resize(places_.size());
  for (std::size_t i = 0; i < places_.size(); ++i) row.values[i] = std::move(fields_[places_[i]]);
  return true;
}

}  // namespace Vesk
