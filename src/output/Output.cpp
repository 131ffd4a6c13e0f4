#include "output/Output.h"

#include <algorithm>
#include <charconv>

#include "ge/ExceptionInfo.h"
#include "output/Base36.h"
#include "output/NumberText.h"
#include "output/RecordWords.h"

namespace Vesk {
namespace {

[[noreturn]] void throwTooBig() {
  throw ExceptionInfo("Output: line too big for output", ExceptionInfo::kFatal);
}

// The number that the text begins with, 0 if none.
int leadingNumber(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  int number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

}  // namespace

void Output::beginRecord(std::string_view word, bool resetNumber) {
  keyword = word.substr(0, 4);
  clearLine();
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
  addText(attributes);
}

void Output::addText(std::string_view text, bool comma) {
  const std::size_t length = text.size() + (comma ? 1 : 0);
  if (lineSize == 0) throw ExceptionInfo("Output: line size is not set", ExceptionInfo::kFatal);
  if (length > lineSize) throwTooBig();
  if (lineLength + length > lineSize) {
    // A copy: the token may be a part of the line or the prefix, which change.
    const std::string token(text);
    nextLine();
    line += token;
  } else {
    line += text;
  }
  if (comma) line += ',';
  lineLength += static_cast<std::uint32_t>(length);
}

void Output::addNumber(double value) {
  number_.clear();
  appendField9(number_, value);
  addText(number_);
}

void Output::addFixed(double value, int decimals, bool comma, int width) {
  number_.clear();
  appendFixed(number_, value, decimals, width);
  addText(number_, comma);
}

void Output::addPoint(double x, double y, double z, int decimals, bool comma, int width) {
  addFixed(x, decimals, false, width);
  if (width == 0) addText(" ");
  addFixed(y, decimals, false, width);
  if (width == 0) addText(" ");
  addFixed(z, decimals, comma, width);
}

void Output::addPoint9(double x, double y, double z) {
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
  if (!line.empty()) recs.push_back(line);
  clearLine();
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
  recs.clear();
  clearLine();
}

void Output::clearLine() {
  line.clear();
  lineLength = 0;
}

// Prefix and keyword. If both together are too long for a line, each new line
// would ask for another.
void Output::addHeading() {
  if (lineSize != 0 && prefix.size() + keyword.size() > lineSize) throwTooBig();
  addText(prefix);
  addText(keyword);
}

// A text that reaches beyond the prefix lengthens it; one that would leave a
// gap is not written.
void Output::overwritePrefix(std::size_t position, std::string_view text) {
  if (position > prefix.size()) return;
  prefix.resize(std::max(prefix.size(), position + text.size()));
  text.copy(prefix.data() + position, text.size());
}

std::size_t Output::counterColumn() const {
  return mode == kTokens ? kTokensLayout.counter : kFixedColumnsLayout.counter;
}

std::string_view Output::prefixPart(std::size_t position, std::size_t length) const {
  if (position > prefix.size()) return {};
  return std::string_view(prefix).substr(position, length);
}

}  // namespace Vesk
