// SPDX-License-Identifier: MIT
#include "input/Input.h"

#include <algorithm>

#include "input/ParseDouble.h"
#include "output/RecordWords.h"

namespace Vesk {
namespace {

constexpr std::string_view kBlank = " ";
constexpr std::string_view kComma = ",";

// The sets have one or two characters.
bool contains(std::string_view set, char c) {
  return std::any_of(set.begin(), set.end(), [c](char each) { return each == c; });
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Whether a plain number may have this character.
bool isNumberPart(char c) { return isDigit(c) || c == '.' || c == '-'; }

}  // namespace

void Input::rewind() {
  hold.clear();
  ft.reset();
  tk.reset();
  textLength.reset();
  tokenLine = 0;
  tokenColumn = 0;
  loadLine(0);
  cursor = 0;
}

void Input::startAt(std::uint32_t column) {
  startColumn = column;
  cursor = column;
  skipAttributes();
}

void Input::setCursor(std::uint32_t column) {
  if (column <= lineLength) cursor = column;
}

bool Input::findLine(std::string_view number, int occurrence) {
  if (mode == kTokens) hold.clear();
  if (mode != kFixedColumns) return false;
  for (std::size_t i = 0; i < recs.size(); ++i) {
    if (!recs[i].starts_with(number) || occurrence-- > 0) continue;
    loadLine(i);
    return true;
  }
  return false;
}

int Input::countLines(std::string_view number) const {
  if (mode != kFixedColumns) return 0;
  return static_cast<int>(
      std::count_if(recs.begin(), recs.end(),
                    [number](const std::string& each) { return each.starts_with(number); }));
}

bool Input::nextLine() {
  if (!nextLineVerbatim()) return false;
  skipAttributes();
  return true;
}

bool Input::nextLineVerbatim() {
  if (lineIndex < recs.size()) ++lineIndex;
  if (!hold.empty()) return false;
  if (lineIndex < recs.size()) {
    loadLine(lineIndex);
    return true;
  }
  cursor = lineLength;
  return false;
}

bool Input::atEnd() {
  while (cursor >= lineLength) {
    if (!nextLine()) return true;
  }
  return false;
}

void Input::skipChars(std::string_view set, bool advance) {
  do {
    while (cursor < lineLength && contains(set, line[cursor])) ++cursor;
  } while (advance && cursor >= lineLength && nextLine());
}

void Input::skipChar(std::string_view set, bool advance) {
  if (cursor >= lineLength || !contains(set, line[cursor])) return;
  ++cursor;
  if (advance && cursor >= lineLength) nextLine();
}

void Input::setDelimiters(std::string_view set) {
  delimiters.clear();
  delimiters += set;
}

void Input::peekToken(std::string& token) { peekTokenN(token, std::string::npos); }

void Input::peekTokenN(std::string& token, std::size_t longest) {
  token.clear();
  if (!atEnd()) token = tokenAt().substr(0, longest);
}

void Input::getToken(std::string& token) {
  token.clear();
  token = takeToken();
}

void Input::getFixedString(std::string& text, std::size_t length) {
  text.clear();
  text = takeFixed(length);
}

double Input::getDouble() {
  skipChars(kBlank, true);
  double plain = 0.0;
  if (takePlainNumber(plain)) {
    skipChars(delimiters, true);
    return plain;
  }
  const std::string_view token = takeToken();
  const auto value = parseDouble(token);
  // Skipping may load another line over the token.
  if (!value) failed_ = token;
  skipChars(delimiters, true);
  if (!value) fail(ReadCause::kNoNumber, failed_);
  return *value;
}

double Input::getLastDouble() {
  skipChars(kBlank, true);
  const std::string_view token = takeToken();
  const auto value = parseDouble(token);
  if (!value) fail(ReadCause::kNoNumber, token);
  return *value;
}

double Input::getFixedDouble(std::size_t width) {
  double plain = 0.0;
  if (takePlainField(width, plain)) return plain;
  const std::string_view field = takeFixed(width);
  const auto value = parseDouble(field);
  if (!value) fail(ReadCause::kNoNumber, field);
  return *value;
}

void Input::getFixedDoubles(std::size_t count, double* values, std::size_t width) {
  for (std::size_t i = 0; i < count; ++i) values[i] = getFixedDouble(width);
}

void Input::getPoint(GePoint& point) {
  skipChars(kBlank, true);
  if (takePlainPoint(point)) return skipChars(delimiters, true);
  if (atEnd()) {
    markToken();
    fail(ReadCause::kNoPoint);
  }
  setDelimiters(kBlank);
  point.x = getDouble();
  point.y = getDouble();
  setDelimiters(kComma);
  point.z = getDouble();
}

bool Input::atDigit() {
  skipChars(kBlank, true);
  return !atEnd() && isDigit(line[cursor]);
}

bool Input::atNonDigit() {
  skipChars(kBlank, true);
  return !atEnd() && !isDigit(line[cursor]);
}

void Input::pushPoint(const GePoint& point) {
  if (pointCount < points.size()) {
    points[pointCount] = point;
  } else {
    points.push_back(point);
  }
  ++pointCount;
}

std::string_view Input::getRest() {
  markToken();
  if (atLineEnd()) return {};
  const std::string_view rest = std::string_view(line).substr(cursor);
  cursor = lineLength;
  return rest;
}

void Input::markToken() { markToken(lineIndex, cursor); }

// Behind the last line the cursor is still at the end of that one.
void Input::markToken(std::size_t index, std::size_t column) {
  const std::size_t last = recs.empty() ? 0 : recs.size() - 1;
  tokenLine = static_cast<std::uint32_t>(std::min(index, last));
  tokenColumn = static_cast<std::uint32_t>(column);
}

void Input::fail(ReadCause cause, std::string_view token) const {
  throw ReadFailure(cause, {tokenLine, tokenColumn}, token);
}

std::int32_t Input::toInt(double value) const {
  if (!isInt(value)) fail(ReadCause::kNotInt);
  return static_cast<std::int32_t>(value);
}

bool Input::isInt(double value) {
  // One more than the largest int; a double holds it and its neighbours.
  constexpr double kAbove = 2147483648.0;
  return value > -kAbove - 1.0 && value < kAbove;
}

// `cursor` is at startColumn then; an index without a line gives an empty one.
void Input::loadLine(std::size_t index) {
  lineIndex = static_cast<std::uint32_t>(index);
  if (index < recs.size()) {
    line = recs[index];
  } else {
    line.clear();
  }
  lineLength = static_cast<std::uint32_t>(line.size());
  cursor = startColumn;
}

// Loads lines by itself where nextLine would come back here: a thousand blank
// lines are a loop, not a thousand calls deep.
void Input::skipAttributes() {
  if (mode != kTokens) return;
  for (;;) {
    while (cursor < lineLength && line[cursor] == ' ') ++cursor;
    if (cursor >= lineLength) {
      if (!nextLineVerbatim()) return;
      continue;
    }
    const std::string_view rest = std::string_view(line).substr(cursor);
    if (!rest.starts_with(tagOf(Words::kCs)) && !rest.starts_with(tagOf(Words::kSp))) return;
    const std::size_t comma = rest.find(',');
    cursor = comma == std::string_view::npos ? lineLength
                                             : cursor + static_cast<std::uint32_t>(comma) + 1;
  }
}

// The cursor must be inside the line.
std::string_view Input::tokenAt() const {
  std::uint32_t end = cursor;
  while (end < lineLength && !contains(delimiters, line[end])) ++end;
  return std::string_view(line).substr(cursor, end - cursor);
}

std::string_view Input::takeToken() {
  const bool end = atEnd();
  markToken();
  if (end) fail(ReadCause::kNoValue);
  const std::string_view token = tokenAt();
  cursor += static_cast<std::uint32_t>(token.size());
  return token;
}

// Takes the token if it is a plain number and nothing else.
bool Input::takePlainNumber(double& value) {
  if (std::any_of(delimiters.begin(), delimiters.end(), isNumberPart)) return false;
  const std::string_view rest = std::string_view(line).substr(std::min(cursor, lineLength));
  const PlainNumber number = leadingNumber(rest, rest.size());
  if (number.length == 0) return false;
  if (number.length < rest.size() && !contains(delimiters, rest[number.length])) return false;
  markToken();
  cursor += static_cast<std::uint32_t>(number.length);
  value = number.value;
  return true;
}

// Takes "x y z" if all three are plain numbers of this line, one blank between
// them, up to a comma or the line's end.
bool Input::takePlainPoint(GePoint& point) {
  if (cursor >= lineLength) return false;
  const std::string_view rest = std::string_view(line).substr(cursor);
  double* const values[] = {&point.x, &point.y, &point.z};
  std::size_t begin = 0;
  std::size_t end = 0;
  for (double* const value : values) {
    const PlainNumber number = leadingNumber(rest.substr(begin), rest.size() - begin);
    if (number.length == 0) return false;
    *value = number.value;
    end = begin + number.length;
    if (value == &point.z) break;
    if (end == rest.size() || rest[end] != ' ') return false;
    begin = end + 1;
  }
  if (end < rest.size() && rest[end] != ',') return false;
  setDelimiters(kComma);
  markToken(lineIndex, cursor + begin);
  cursor += static_cast<std::uint32_t>(end);
  return true;
}

// Takes the field if it is a plain number, blanks before it.
bool Input::takePlainField(std::size_t width, double& value) {
  if (cursor >= lineLength || lineLength - cursor < width) return false;
  const std::string_view rest = std::string_view(line).substr(cursor);
  std::size_t first = 0;
  while (first < width && rest[first] == ' ') ++first;
  const PlainNumber number = leadingNumber(rest.substr(first), width - first);
  if (number.length == 0 || first + number.length != width) return false;
  markToken();
  cursor += static_cast<std::uint32_t>(width);
  value = number.value;
  return true;
}

std::string_view Input::takeFixed(std::size_t length) {
  const bool end = atEnd();
  markToken();
  if (end) return {};
  if (static_cast<std::size_t>(lineLength - cursor) + 1 < length) {
    fail(ReadCause::kShortField);
  }
  const std::string_view text = std::string_view(line).substr(cursor, length);
  cursor += static_cast<std::uint32_t>(text.size());
  return text;
}

}  // namespace Vesk
