// SPDX-License-Identifier: MIT
#include "input/RecordReader.h"

#include <algorithm>
#include <utility>

#include "input/ReaderFrame.h"
#include "output/HeaderPrefix.h"
#include "output/NumberText.h"
#include "prims/TagLines.h"
#include "vesk/ExceptionInfo.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/Txt.h"

namespace Vesk {
namespace {

// How many elements of each style are read to decide between both.
constexpr int kTrialElements = 16;

// More than a token of a mode 3 record is usually long.
constexpr std::size_t kTokenRoom = 64;

struct Expectation {
  std::string_view message;  // what the message begins with
  const char* expected;
};

constexpr Expectation kExpectations[] = {
    {"Input: can't get double from", "a number"},
    {"Input: can't get double", "a point"},
    {"Input: can't get string value of", "a field of nine characters"},
    {"Input: can't get string value", "a further value"},
    {"Input: number out of range", "a whole number of 32 bits"},
    {"line \"60\"", "line \"60\""},
    {"line \"61\"", "line \"61\""},
    {"line \"70\"", "line \"70\""},
    {"line \"72\"", "line \"72\""},
    {"bad line \"63\"", "names, an asterisk behind each"},
    {"bad line \"64\"", "a name, an asterisk and pairs of numbers"},
    {"unknown tag \"", "pt, vn, ar, ft or tk"},
    {"unknown tag", "ed, ft or tk"},
    {"identifier expected", "pt, vn, ar, ft or tk"},
    {"Pline: ", "pt, ar, ft or tk"},
    {"Direction", "points that differ"},
    {"", "a record as it is written"},  // any other
};

const char* expectationOf(std::string_view message) {
  const auto begins = [message](const Expectation& each) {
    return message.starts_with(each.message);
  };
  return std::find_if(std::begin(kExpectations), std::end(kExpectations), begins)->expected;
}

// A failure of the checks behind a reader: what was expected stands behind the
// message.
struct CheckFailure {
  std::size_t line;    // index
  std::size_t column;  // from 0
  std::string message;
  std::string expected;
};

std::size_t dataLength(const std::string& line) {
  return line.size() - std::min(line.size(), kFixedColumnsLayout.data);
}

// Whether it is a polyline of which nothing was read: its first line is whole by
// itself and may still be the beginning of a longer record.
bool hasNothing(const Geo& geo) {
  if (geo.typeCode() != Pline::kTypeCode) return false;
  const auto& pline = static_cast<const Pline&>(geo);
  return pline.vertices.empty() && pline.arcs.empty();
}

// How many elements of this style the text begins with, as far as is looked.
int countElements(std::string_view text, std::int32_t mode) {
  RecordReader file(std::make_unique<TextSource>(text), {mode, false});
  int count = 0;
  for (int i = 0; i < kTrialElements; ++i) {
    const RecordReader::Found found = file.next();
    if (found == RecordReader::Found::kEnd) break;
    if (found == RecordReader::Found::kElement) ++count;
  }
  return count;
}

}  // namespace

RecordReader::Found RecordReader::next() {
  if (!started_) advance();
  started_ = true;
  clearLines();
  if (!hasLine_) return Found::kEnd;
  element_.firstLine = reader_.number();
  element_.offset = reader_.offset();
  if (!isWhole()) return reportCutOff();
  return kind_ == nullptr ? skipStray() : readElement(*kind_);
}

bool RecordReader::advance() {
  hasLine_ = reader_.next();
  kind_ = nullptr;
  if (!hasLine_) return false;
  if (mode_ == 0) findMode();
  if (mode_ != 0 && !reader_.isTooLong()) kind_ = kindOfFirstLine(reader_.line(), mode_);
  return true;
}

// A line that begins a record in one style, or a text in it, may look like one
// of the other style; then that one counts of which more elements can be read.
void RecordReader::findMode() {
  const bool columns = kindOfFirstLine(reader_.line(), kFixedColumns) != nullptr;
  const bool tokens = kindOfFirstLine(reader_.line(), kTokens) != nullptr;
  if (!columns && !tokens) return;
  const std::string_view text = reader_.window();
  const int columnElements = countElements(text, kFixedColumns);
  const int tokenElements = countElements(text, kTokens);
  const bool moreTokens =
      columnElements == tokenElements ? !columns : tokenElements > columnElements;
  mode_ = moreTokens ? kTokens : kFixedColumns;
}

// The first line is the current one.
RecordReader::Found RecordReader::readElement(const RecordKind& kind) {
  addLine();
  while (advance() && kind_ == nullptr && !reader_.isTooLong()) {
    if (in_.recs.size() == 1) continuation_.start(kind, in_.recs.front(), mode_);
    if (!isWhole()) return readLastElement(kind);
    const Continuation::Answer answer = continuation_.follow(reader_.line());
    if (answer == Continuation::Answer::kWrongLine) return skipGap();
    if (answer == Continuation::Answer::kNo) break;
    addLine();
  }
  return readPrimitive(kind);
}

// The file ends with the current line, which is cut short: of this element, of
// the next one, or of neither.
RecordReader::Found RecordReader::readLastElement(const RecordKind& kind) {
  const bool mayFollow = continuation_.mayFollow(reader_.line());
  const bool mayBeFirst = mayBeFirstLine(reader_.line(), mode_);
  if (!mayFollow) return readPrimitive(kind);
  if (mayBeFirst && !mayHaveMore(kind) && readPrimitive(kind) == Found::kElement &&
      !hasNothing(*element_.geo)) {
    return Found::kElement;
  }
  return reportCutOff();
}

RecordReader::Found RecordReader::readPrimitive(const RecordKind& kind) {
  std::unique_ptr<Geo>& geo = geos_[static_cast<std::size_t>(kind.typeCode)];
  if (geo == nullptr) geo = makeGeo(kind.typeCode);
  element_.geo = geo.get();
  element_.keyword = mode_ == kTokens ? kind.keyword.tokens : kind.keyword.fixedColumns;
  in_.mode = mode_;
  try {
    readHeader();
    if (mode_ == kFixedColumns) checkFixedColumns(kind);
    geo->read(in_);
    if (mode_ == kTokens) checkTokens(kind);
    if (kind.typeCode == Txt::kTypeCode) checkText();
  } catch (const CheckFailure& e) {
    report(RecordFault::Kind::kDamaged, e.message, e.expected);
    fault_.line = element_.firstLine + e.line;
    fault_.column = e.column + 1;
    return Found::kFault;
  } catch (const ExceptionInfo& e) {
    report(RecordFault::Kind::kDamaged, e.message, expectationOf(e.message));
    fault_.level = e.level;
    fault_.line = element_.firstLine + std::min<std::size_t>(in_.tokenLine, in_.recs.size() - 1);
    fault_.column = std::size_t{in_.tokenColumn} + 1;
    return Found::kFault;
  }
  element_.ft = in_.ft;
  element_.tk = in_.tk;
  return Found::kElement;
}

// Lines up to the next first line are one fault.
RecordReader::Found RecordReader::skipStray() {
  HeadingFault heading =
      mode_ == 0 ? HeadingFault{0, "no record"} : faultOfHeading(reader_.line(), mode_);
  if (reader_.isTooLong()) heading = {0, "line too long for a record"};
  addLine();
  while (advance() && isWhole() && kind_ == nullptr) element_.lastLine = reader_.number();
  report(RecordFault::Kind::kStray, std::move(heading.message), "the first line of a record");
  fault_.column = heading.column + 1;
  return Found::kFault;
}

// The current line is of the element, but lines before it are missing.
RecordReader::Found RecordReader::skipGap() {
  const std::string expected = "line \"" + std::string(continuation_.expectedNumber()) + '"';
  const std::uint64_t line = reader_.number();
  do {
    addLine();
  } while (advance() && isWhole() && kind_ == nullptr && !reader_.isTooLong() &&
           continuation_.follow(reader_.line()) != Continuation::Answer::kNo);
  report(RecordFault::Kind::kDamaged, "line missing", expected);
  fault_.line = line;
  fault_.column = (mode_ == kTokens ? kTokensLayout : kFixedColumnsLayout).lineNumber + 1;
  return Found::kFault;
}

// The current line is the last one and has no end.
RecordReader::Found RecordReader::reportCutOff() {
  const std::size_t length = reader_.line().size();
  addLine();
  report(RecordFault::Kind::kCutOff, "file cut off", "the end of the line");
  fault_.line = element_.lastLine;
  fault_.column = length + 1;
  advance();
  return Found::kFault;
}

RecordReader::Found RecordReader::report(RecordFault::Kind kind, std::string message,
                                         std::string expected) {
  fault_.kind = kind;
  fault_.line = element_.firstLine;
  fault_.column = 1;
  fault_.message = std::move(message);
  fault_.expected = std::move(expected);
  fault_.level = ExceptionInfo::kFatal;
  fault_.firstLine = element_.firstLine;
  fault_.lastLine = element_.lastLine;
  fault_.offset = element_.offset;
  return Found::kFault;
}

void RecordReader::addLine() {
  if (spareLines_.empty()) {
    in_.recs.emplace_back();
  } else {
    in_.recs.push_back(std::move(spareLines_.back()));
    spareLines_.pop_back();
  }
  in_.recs.back() = reader_.line();
  lastHasReturn_ = reader_.hasReturn();
  if (in_.recs.size() == 1) firstHasReturn_ = lastHasReturn_;
  element_.lastLine = reader_.number();
  element_.isCutOff = !reader_.isTerminated();
}

// Keeps the strings for further lines.
void RecordReader::clearLines() {
  for (std::string& line : in_.recs) spareLines_.push_back(std::move(line));
  in_.recs.clear();
}

void RecordReader::readHeader() {
  const std::string& line = in_.recs.front();
  HeaderFields& header = element_.header;
  header.f5.assign(nullptr, false);
  header.f6.assign(nullptr, false);
  header.f7.assign(nullptr, false);
  std::size_t column = mode_ == kTokens ? 0 : kLineNumberWidth;
  visitPrefix(header, mode_, [&](auto& field) {
    field.assign(line.data() + column, false);
    column += field.width();
  });
  const std::size_t zero = std::string_view(line).substr(0, column).find('\0');
  if (zero != std::string_view::npos) {
    throw CheckFailure{0, zero, "NUL character", "a header field"};
  }
  attributeLine_ = 0;
  attributeEnd_ = 0;
  if (mode_ == kTokens) readAttributes();
}

// They stand in front of everything else, on the first line with data.
void RecordReader::readAttributes() {
  const auto hasData = [](const std::string& line) { return line.size() > kTokensLayout.data; };
  const auto found = std::find_if(in_.recs.begin(), in_.recs.end(), hasData);
  if (found == in_.recs.end()) return;
  const std::string_view line = *found;
  std::size_t column = kTokensLayout.data;
  for (;;) {
    column = std::min(line.find_first_not_of(' ', column), line.size());
    const std::string_view rest = line.substr(column);
    const bool isCs = rest.starts_with(tagOf(Words::kCs));
    if (!isCs && !rest.starts_with(tagOf(Words::kSp))) return;
    const std::size_t comma = rest.find(',');
    std::string text(rest.substr(kTagWidth, comma - std::min(comma, kTagWidth)));
    if (text.starts_with(' ')) text.erase(0, 1);
    if (isCs) {
      element_.header.f6.assign(text.c_str(), false);
    } else {
      element_.header.f7.assign(text.c_str(), false);
    }
    column += comma == std::string_view::npos ? rest.size() : comma + 1;
    attributeLine_ = static_cast<std::size_t>(found - in_.recs.begin());
    attributeEnd_ = column;
  }
}

// Without a number, or with one that is too long for its field, the others
// would be taken for each other.
void RecordReader::checkFixedColumns(const RecordKind& kind) const {
  const auto isWholeRecord = [&kind](std::size_t length) {
    return length == kind.numbers * kNumberFieldWidth ||
           (length != 0 && (length == kind.moreNumbers * kNumberFieldWidth ||
                            length == kind.mostNumbers * kNumberFieldWidth));
  };
  std::size_t length = 0;
  std::size_t i = 0;
  for (; i < in_.recs.size(); ++i) {
    const std::string& line = in_.recs[i];
    // Tag lines; a text's lines "71" and "72".
    if (!kind.tagWord.empty() && length != 0 &&
        std::string_view(line).substr(kFixedColumnsLayout.data).starts_with(TagWords::kOpening)) {
      break;
    }
    if (kind.typeCode == Txt::kTypeCode && isWholeRecord(length)) break;
    length += dataLength(line);
  }
  if (isWholeRecord(length)) return;
  const std::size_t last = i - 1;
  throw CheckFailure{last, in_.recs[last].size(), countText(length) + " characters of numbers",
                     countText(kind.numbers) + " numbers of nine characters"};
}

void RecordReader::checkTokens(const RecordKind& kind) {
  const std::string_view line = in_.recs.back();
  const std::size_t last = in_.recs.size() - 1;
  const bool attributesOnly = last == attributeLine_ && line.size() == attributeEnd_;
  if (kind.typeCode != Txt::kTypeCode && line.size() > kTokensLayout.data && !attributesOnly &&
      (line.ends_with(',') || line.ends_with(Words::kFt) || line.ends_with(Words::kTk))) {
    throw CheckFailure{last, line.size(), "line missing", "a further value"};
  }
  while (takeClosing(in_)) {
  }
  in_.skipChars(" ", true);
  if (!in_.atEnd()) {
    throw CheckFailure{in_.lineIndex, in_.cursor, "text behind the record", "ft, tk or nothing"};
  }
  if (kind.typeCode == Pgon::kTypeCode &&
      static_cast<const Pgon*>(element_.geo)->vertices.size() < 3) {
    throw CheckFailure{last, line.size(), "pgon: less than 3 vertices", "a further point"};
  }
}

void RecordReader::checkText() {
  std::string& text = static_cast<Txt*>(element_.geo)->text;
  if (lastHasReturn_ && !firstHasReturn_ &&
      in_.textLength == static_cast<double>(text.size() + 1)) {
    text += '\r';
    in_.recs.back() += '\r';
  }
  const std::size_t length = text.size();
  if (in_.textLength == static_cast<double>(length)) return;
  throw CheckFailure{in_.tokenLine, in_.tokenColumn, "text of " + countText(length) + " characters",
                     "as many characters as its length says"};
}

// Whether a line of the element may be missing although it can be read.
bool RecordReader::mayHaveMore(const RecordKind& kind) const {
  const std::size_t size = mode_ == kTokens ? kTokensLineSize : kFixedColumnsLineSize;
  const std::size_t room = mode_ == kTokens ? kTokenRoom : kNumberFieldWidth;
  return !kind.tagWord.empty() || in_.recs.back().size() + room > size;
}

}  // namespace Vesk
