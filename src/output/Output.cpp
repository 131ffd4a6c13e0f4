// SPDX-License-Identifier: MIT
#include "output/Output.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <utility>

#include "output/Base36.h"
#include "output/NumberText.h"
#include "output/RecordWords.h"
#include "vesk/ExceptionInfo.h"

namespace Vesk {
namespace {

// The number that the text begins with, 0 if none.
int leadingNumber(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  int number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

}  // namespace

// Whether a token, or several at once, can go into the line as it is.
inline bool Output::fits(std::size_t length) const {
  return lineSize != 0 && lineLength + length <= lineSize;
}

// What stands behind the line becomes a part of it.
inline void Output::lengthen(std::size_t length) {
  lineLength += static_cast<std::uint32_t>(length);
}

// The end of the line, where so many characters can be written.
inline char* Output::room(std::size_t count) {
  if (line.size() - lineLength < count) [[unlikely]]
    line.resize(2 * (lineLength + count));
  return line.data() + lineLength;
}

// Adds a text, which may be a part of the line.
inline void Output::append(std::string_view text) {
  if (line.size() - lineLength < text.size()) [[unlikely]]
    return appendToFullText(text);
  lengthen(text.copy(line.data() + lineLength, text.size()));
}

// A text that reaches beyond the prefix lengthens it; one that would leave a
// gap is not written.
inline void Output::overwritePrefix(std::size_t position, std::string_view text) {
  if (position > prefix.size()) return;
  if (prefix.size() - position < text.size()) [[unlikely]]
    prefix.resize(position + text.size());
  text.copy(prefix.data() + position, text.size());
}

void Output::setStyle(std::int32_t style) {
  mode = style;
  format = style;
  valueDecimals = 6;
  pointDecimals = 4;
  lineSize = style == kFixedColumns ? kFixedColumnsLineSize : kTokensLineSize;
}

void Output::beginRecord(std::string_view word, bool resetNumber) {
  keyword = word.substr(0, 4);
  lineLength = 0;
  if (resetNumber) {
    if (mode == kFixedColumns) {
      overwritePrefix(kFixedColumnsLayout.lineNumber, LineNumbers::kFirst);
    }
    if (mode == kTokens) overwritePrefix(kTokensLayout.lineNumber, LineNumbers::kFirstOfTokens);
    if (keyword.starts_with(Keywords::kTxt.fixedColumns)) {
      overwritePrefix(0, LineNumbers::kTextFirst.substr(0, 1));
    }
  }
  addHeading();
  if (!attributes.empty()) addText(attributes);
}

void Output::addText(std::string_view text, bool comma) {
  const std::size_t length = text.size() + (comma ? 1 : 0);
  if (!fits(length)) {
    checkLength(length);
    wrap(text);
  } else {
    append(text);
  }
  if (comma) append(",");
}

void Output::addNumber(double value) { takeToken(writeField9(room(kField9Room), value)); }

void Output::addFixed(double value, int decimals, bool comma, int width) {
  char* end = writeFixed(room(fixedRoom(decimals, width) + 1), value, decimals, width);
  if (comma) *end++ = ',';
  takeToken(end);
}

// The line may break between the tokens of a point, which is rare: all go into
// it together if they fit together.
void Output::addPoint(double x, double y, double z, int decimals, bool comma, int width) {
  if (width == 0) {
    char* const point = room(pointRoom(decimals) + 1);
    char* end = writePoint(point, x, y, z, decimals);
    if (comma) *end++ = ',';
    const std::size_t length = static_cast<std::size_t>(end - point);
    if (fits(length)) {
      lengthen(length);
      return;
    }
  }

  addFixed(x, decimals, false, width);
  if (width == 0) addText(" ");
  addFixed(y, decimals, false, width);
  if (width == 0) addText(" ");
  addFixed(z, decimals, comma, width);
}

void Output::addPointToken(std::string_view word, double x, double y, double z, int decimals,
                           bool comma) {
  char* end = room(word.size() + pointRoom(decimals) + 1);
  end = std::copy(word.begin(), word.end(), end);
  end = writePoint(end, x, y, z, decimals);
  if (comma) *end++ = ',';
  takeToken(end);
}

void Output::addPoint9(double x, double y, double z) {
  char* const point = room(3 * kField9Room);
  const char* const end = writeField9(writeField9(writeField9(point, x), y), z);
  const std::size_t length = static_cast<std::size_t>(end - point);
  if (fits(length)) {
    lengthen(length);
    return;
  }

  addNumber(x);
  addNumber(y);
  addNumber(z);
}

void Output::nextLine() {
  flushLine();
  incrementLineNumber();
  addHeading();
}

void Output::startLine(std::string_view text) {
  flushLine();
  if (mode == kFixedColumns) {
    overwritePrefix(kFixedColumnsLayout.lineNumber, text.substr(0, kLineNumberWidth));
  }
  if (mode == kTokens) keyword = text;
  addHeading();
}

int Output::flushLine() {
  if (!lineText().empty()) {
    if (spareCount_ == 0) {
      recs.emplace_back(lineText());
    } else {
      std::string& spare = spares_[spareCount_ - 1];
      spare = lineText();
      recs.push_back(std::move(spare));
      --spareCount_;
    }
  }
  lineLength = 0;
  return static_cast<int>(recs.size());
}

bool Output::incrementLineNumber() {
  if (mode != kFixedColumns && mode != kTokens) return false;
  const std::size_t column =
      mode == kFixedColumns ? kFixedColumnsLayout.lineNumber : kTokensLayout.lineNumber;
  const int number = leadingNumber(prefixPart(column, kLineNumberWidth)) + 1;
  if (number >= 100) return false;
  std::string digits;
  if (mode == kTokens && number >= 0 && number < 10) digits = "0";
  appendInt(digits, number);
  overwritePrefix(column, std::string_view(digits).substr(0, kLineNumberWidth));
  if (mode == kFixedColumns && digits.size() < kLineNumberWidth) prefix.resize(digits.size());
  return true;
}

int Output::counterValue() const {
  return decodeBase36(prefixPart(counterColumn(), kCounterWidth));
}

bool Output::incrementCounter() {
  const int old = counterValue();
  char digits[kCounterWidth];
  encodeBase36(old + 1, digits);
  overwritePrefix(counterColumn(), std::string_view(digits, kCounterWidth));
  return old < kMaxCounter;
}

void Output::clear() {
  for (std::string& rec : recs) {
    if (spareCount_ == kMostSpareLines) break;
    spares_[spareCount_++] = std::move(rec);
  }
  recs.clear();
  lineLength = 0;
}

void Output::checkLength(std::size_t length) const {
  if (lineSize == 0) throw ExceptionInfo("Output: line size is not set", ExceptionInfo::kFatal);
  if (length > lineSize)
    throw ExceptionInfo("Output: line too big for output", ExceptionInfo::kFatal);
}

// Adds the token that stands behind the line and ends at `end`.
void Output::takeToken(const char* end) {
  const char* const begin = line.data() + lineLength;
  const std::size_t length = static_cast<std::size_t>(end - begin);
  if (fits(length)) {
    lengthen(length);
  } else {
    checkLength(length);
    wrap({begin, length});
  }
}

// Makes room for a text and adds it, which may be a part of the line.
void Output::appendToFullText(std::string_view text) {
  line.resize(lineLength);
  line += text;
  lengthen(text.size());
}

// Adds a token to a new line. It may be a part of the line before or of the
// prefix, which change.
void Output::wrap(std::string_view text) {
  wrapped_ = text;
  nextLine();
  append(wrapped_);
}

// Prefix and keyword, at the beginning of a line. If both together are too long
// for a line, each new line would ask for another.
void Output::addHeading() {
  checkLength(prefix.size() + keyword.size());
  append(prefix);
  append(keyword);
}

std::size_t Output::counterColumn() const {
  return mode == kTokens ? kTokensLayout.counter : kFixedColumnsLayout.counter;
}

std::string_view Output::prefixPart(std::size_t position, std::size_t length) const {
  if (position > prefix.size()) return {};
  return std::string_view(prefix).substr(position, length);
}

}  // namespace Vesk
