// SPDX-License-Identifier: MIT
#include "input/RecordReader.h"

#include <algorithm>
#include <utility>

#include "input/ReadFailure.h"
#include "input/ReaderFrame.h"
#include "output/HeaderPrefix.h"
#include "output/NumberText.h"
#include "prims/TagLines.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/Txt.h"

namespace Vesk {
namespace {

// How many elements of each style are read to decide between both.
constexpr int kTrialElements = 16;

// More than a token of a mode 3 record is usually long.
constexpr std::size_t kTokenRoom = 64;

std::int32_t otherStyle(std::int32_t mode) { return mode == kTokens ? kFixedColumns : kTokens; }

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
  RecordReader file(std::make_unique<TextSource>(text), {mode});
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
  followStyle();
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

// Whether the current line begins an element in the style that the file has not.
bool RecordReader::isOfOtherStyle() const {
  return options_.bothStyles && mode_ != 0 && kind_ == nullptr && !reader_.isTooLong() &&
         kindOfFirstLine(reader_.line(), otherStyle(mode_)) != nullptr;
}

void RecordReader::followStyle() {
  if (!isOfOtherStyle()) return;
  mode_ = otherStyle(mode_);
  kind_ = kindOfFirstLine(reader_.line(), mode_);
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
  } catch (const ReadFailure& e) {
    return report(e);
  }
  element_.ft = in_.ft;
  element_.tk = in_.tk;
  return Found::kElement;
}

// Lines up to the next first line are one fault.
RecordReader::Found RecordReader::skipStray() {
  const HeadingFault heading = reader_.isTooLong() ? HeadingFault{0, ReadCause::kLineTooLong, {}}
                               : mode_ == 0        ? HeadingFault{0, ReadCause::kNoRecord, {}}
                                                   : faultOfHeading(reader_.line(), mode_);
  const ReadFailure failure(heading.cause, {0, heading.column}, heading.token);
  addLine();
  while (advance() && isWhole() && kind_ == nullptr && !isOfOtherStyle())
    element_.lastLine = reader_.number();
  return report(failure, RecordFault::Kind::kStray);
}

// The current line is of the element, but lines before it are missing.
RecordReader::Found RecordReader::skipGap() {
  const std::size_t column = (mode_ == kTokens ? kTokensLayout : kFixedColumnsLayout).lineNumber;
  const ReadFailure failure(
      ReadCause::kLineSkipped,
      {static_cast<std::size_t>(reader_.number() - element_.firstLine), column},
      continuation_.expectedNumber());
  do {
    addLine();
  } while (advance() && isWhole() && kind_ == nullptr && !reader_.isTooLong() &&
           continuation_.follow(reader_.line()) != Continuation::Answer::kNo);
  return report(failure);
}

// The current line is the last one and has no end.
RecordReader::Found RecordReader::reportCutOff() {
  const std::size_t length = reader_.line().size();
  addLine();
  report(ReadFailure(ReadCause::kCutOff,
                     {static_cast<std::size_t>(element_.lastLine - element_.firstLine), length}),
         RecordFault::Kind::kCutOff);
  advance();
  return Found::kFault;
}

RecordReader::Found RecordReader::report(const ReadFailure& failure, RecordFault::Kind kind) {
  fault_.kind = kind;
  fault_.cause = failure.cause;
  fault_.token = failure.token;
  fault_.primitive = failure.primitive;
  fault_.line = element_.firstLine + failure.place.line;
  fault_.column = failure.place.column + 1;
  fault_.message = failure.message;
  fault_.expected = failure.expected();
  fault_.level = failure.level;
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
    throw ReadFailure(ReadCause::kNulInHeader, {0, zero});
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
  ReadFailure failure(ReadCause::kNumbersLength, {last, in_.recs[last].size()}, countText(length));
  failure.wanted = countText(kind.numbers);
  throw failure;
}

void RecordReader::checkTokens(const RecordKind& kind) {
  const std::string_view line = in_.recs.back();
  const std::size_t last = in_.recs.size() - 1;
  const bool attributesOnly = last == attributeLine_ && line.size() == attributeEnd_;
  if (kind.typeCode != Txt::kTypeCode && line.size() > kTokensLayout.data && !attributesOnly &&
      (line.ends_with(',') || line.ends_with(Words::kFt) || line.ends_with(Words::kTk))) {
    throw ReadFailure(ReadCause::kLineMissing, {last, line.size()});
  }
  while (takeClosing(in_)) {
  }
  in_.skipChars(" ", true);
  if (!in_.atEnd()) {
    throw ReadFailure(ReadCause::kTextBehind, {in_.lineIndex, in_.cursor});
  }
  if (kind.typeCode == Pgon::kTypeCode &&
      static_cast<const Pgon*>(element_.geo)->vertices.size() < 3) {
    throw ReadFailure(ReadCause::kTooFewVertices, {last, line.size()});
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
  in_.fail(ReadCause::kTextLength, countText(length));
}

// Whether a line of the element may be missing although it can be read.
bool RecordReader::mayHaveMore(const RecordKind& kind) const {
  const std::size_t size = mode_ == kTokens ? kTokensLineSize : kFixedColumnsLineSize;
  const std::size_t room = mode_ == kTokens ? kTokenRoom : kNumberFieldWidth;
  return !kind.tagWord.empty() || in_.recs.back().size() + room > size;
}

}  // namespace Vesk
