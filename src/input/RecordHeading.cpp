// SPDX-License-Identifier: MIT
#include "input/RecordHeading.h"

#include <algorithm>
#include <iterator>

#include "output/RecordFields.h"
#include "output/RecordLayout.h"
#include "prims/TagLines.h"
#include "prims/Visit.h"

namespace Vesk {
namespace {

constexpr RecordKind kindOf(const RecordShape& shape, std::int32_t typeCode) {
  const auto numbers = static_cast<std::size_t>(shape.numbers(kFixedColumns));
  const auto most = static_cast<std::size_t>(shape.mostNumbers(kFixedColumns));
  const auto alone = static_cast<std::size_t>(shape.sizeAlone);
  return {shape.keyword,
          typeCode,
          numbers,
          shape.tagWord,
          alone > 0 ? numbers + alone : 0,
          most > numbers ? most : 0};
}

constexpr RecordKind kKinds[] = {
    kindOf(Records::kCyl, Cyl::kTypeCode),
    kindOf(Records::kCone, Cone::kTypeCode),
    kindOf(Records::kBox, Box::kTypeCode),
    kindOf(Records::kTorus, Torus::kTypeCode),
    kindOf(Records::kRed, Red::kTypeCode),
    kindOf(Records::kRelb, Relb::kTypeCode),
    kindOf(Records::kPoint, Pline::kTypeCode),
    kindOf(Records::kSegment, Pline::kTypeCode),
    kindOf(Records::kTriangle, Pgon::kTypeCode),
    kindOf(Records::kTriangleWithNormals, Pgon::kTypeCode),
    kindOf(Records::kQuadrangle, Pgon::kTypeCode),
    kindOf(Records::kQuadrangleWithNormals, Pgon::kTypeCode),
    kindOf(Records::kTxt, Txt::kTypeCode),
};

constexpr bool hasRecord(std::int32_t typeCode) {
  return std::any_of(std::begin(kKinds), std::end(kKinds),
                     [typeCode](const RecordKind& kind) { return kind.typeCode == typeCode; });
}

constexpr bool hasRecords() {
  for (std::int32_t code = 1; code <= kLastTypeCode; ++code) {
    if (!hasRecord(code)) return false;
  }
  return true;
}
static_assert(hasRecords(), "a record for each kind of primitive");
static_assert(std::size(kKinds) == std::size(Records::kAll), "all records have a kind");

const RecordLayout& layoutOf(std::int32_t mode) {
  return mode == kTokens ? kTokensLayout : kFixedColumnsLayout;
}

std::string_view keywordOf(const RecordKind& kind, std::int32_t mode) {
  return mode == kTokens ? kind.keyword.tokens : kind.keyword.fixedColumns;
}

std::string_view firstNumberOf(const RecordKind& kind, std::int32_t mode) {
  if (mode == kTokens) return LineNumbers::kFirstOfTokens;
  return kind.typeCode == Txt::kTypeCode ? LineNumbers::kTextFirst : LineNumbers::kFirst;
}

// Compares without the call that comparing two ranges of any length is.
bool isSame(const char* text, std::string_view word) {
  for (const char c : word) {
    if (*text++ != c) return false;
  }
  return true;
}

std::string_view numberOf(std::string_view line, std::int32_t mode) {
  const std::size_t column = layoutOf(mode).lineNumber;
  return line.size() <= column ? std::string_view() : line.substr(column, kLineNumberWidth);
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isNumber(std::string_view text) {
  return text.size() == kLineNumberWidth && isDigit(text[0]) && isDigit(text[1]);
}

// Whether the texts are the same as far as both reach.
bool agree(std::string_view a, std::string_view b) {
  const std::size_t length = std::min(a.size(), b.size());
  return a.substr(0, length) == b.substr(0, length);
}

}  // namespace

std::unique_ptr<Geo> makeGeo(std::int32_t typeCode) {
  return visitKind(
      typeCode,
      [](auto kind) -> std::unique_ptr<Geo> {
        return std::make_unique<typename decltype(kind)::Class>();
      },
      []() -> std::unique_ptr<Geo> { return nullptr; });
}

const RecordKind* kindOfFirstLine(std::string_view line, std::int32_t mode) {
  const RecordLayout& layout = layoutOf(mode);
  if (line.size() < layout.data) return nullptr;
  for (const RecordKind& kind : kKinds) {
    if (isSame(line.data() + layout.keyword, keywordOf(kind, mode))) {
      return isSame(line.data() + layout.lineNumber, firstNumberOf(kind, mode)) ? &kind : nullptr;
    }
  }
  return nullptr;
}

bool mayBeFirstLine(std::string_view cutLine, std::int32_t mode) {
  const RecordLayout& layout = layoutOf(mode);
  const auto part = [&](std::size_t column) {
    return cutLine.substr(std::min(column, cutLine.size()));
  };
  return std::any_of(std::begin(kKinds), std::end(kKinds), [&](const RecordKind& kind) {
    return agree(part(layout.lineNumber), firstNumberOf(kind, mode)) &&
           agree(part(layout.keyword), keywordOf(kind, mode));
  });
}

HeadingFault faultOfHeading(std::string_view line, std::int32_t mode) {
  const RecordLayout& layout = layoutOf(mode);
  if (line.empty()) return {0, ReadCause::kEmptyLine, {}};
  const std::string_view number = numberOf(line, mode);
  if (!isNumber(number)) {
    return {std::min(layout.lineNumber, line.size()), ReadCause::kNoLineNumber, {}};
  }
  if (line.size() < layout.data) return {line.size(), ReadCause::kNoKeyword, {}};
  const std::string_view keyword = line.substr(layout.keyword, layout.data - layout.keyword);
  const bool known =
      std::any_of(std::begin(kKinds), std::end(kKinds), [keyword, mode](const RecordKind& kind) {
        return keyword == keywordOf(kind, mode) || (mode == kTokens && keyword == kind.tagWord);
      });
  if (!known) return {layout.keyword, ReadCause::kUnknownKeyword, keyword};
  return {layout.lineNumber, ReadCause::kStrayLine, number};
}

void Continuation::start(const RecordKind& kind, std::string_view firstLine, std::int32_t mode) {
  kind_ = &kind;
  mode_ = mode;
  const RecordLayout& layout = layoutOf(mode);
  first_ = firstLine.substr(0, layout.data);
  keyword_ = firstLine.substr(layout.keyword, layout.data - layout.keyword);
  countFrom(numberOf(firstLine, mode));
}

Continuation::Answer Continuation::follow(std::string_view line) {
  if (isHeading(line, next_, keyword_)) {
    countFrom(std::string(next_));
    return Answer::kYes;
  }
  if (opensTags(line)) {
    if (mode_ == kTokens) keyword_ = kind_->tagWord;
    countFrom(numberOf(line, mode_));
    return Answer::kYes;
  }
  const std::string_view number = numberOf(line, mode_);
  if (kind_->typeCode == Txt::kTypeCode && mode_ == kFixedColumns &&
      (number == LineNumbers::kTextSecond || number == LineNumbers::kTextThird) &&
      isHeading(line, number, keyword_)) {
    countFrom(number);
    return Answer::kYes;
  }
  // Numbers only grow; a lower one is the rest of another record.
  const bool skips = isNumber(number) && number > next_ && isHeading(line, number, keyword_);
  const bool skipsToTags = mode_ == kTokens && !kind_->tagWord.empty() && isNumber(number) &&
                           number > number_ && isHeading(line, number, kind_->tagWord);
  return skips || skipsToTags ? Answer::kWrongLine : Answer::kNo;
}

bool Continuation::mayFollow(std::string_view cutLine) const {
  if (agree(cutLine, heading(next_, keyword_))) return true;
  if (mode_ == kTokens) {
    return !kind_->tagWord.empty() && keyword_ != kind_->tagWord &&
           agree(cutLine, heading(number_, kind_->tagWord));
  }
  const auto agrees = [&](std::string_view number) {
    return agree(cutLine, heading(number, keyword_));
  };
  if (kind_->typeCode == Txt::kTypeCode) {
    return agrees(LineNumbers::kTextSecond) || agrees(LineNumbers::kTextThird);
  }
  return !kind_->tagWord.empty() && (agrees(TagWords::kNamesLine) || agrees(TagWords::kValuesLine));
}

std::string Continuation::heading(std::string_view number, std::string_view keyword) const {
  const RecordLayout& layout = layoutOf(mode_);
  std::string text = first_;
  text.replace(layout.lineNumber, kLineNumberWidth, number);
  text.replace(layout.keyword, keyword.size(), keyword);
  return text;
}

bool Continuation::isHeading(std::string_view line, std::string_view number,
                             std::string_view keyword) const {
  const RecordLayout& layout = layoutOf(mode_);
  if (line.size() < layout.data) return false;
  const std::size_t behind = layout.lineNumber + kLineNumberWidth;
  return line.substr(layout.lineNumber, kLineNumberWidth) == number &&
         line.substr(layout.keyword, layout.data - layout.keyword) == keyword &&
         line.substr(0, layout.lineNumber) == first_.substr(0, layout.lineNumber) &&
         line.substr(behind, layout.keyword - behind) ==
             std::string_view(first_).substr(behind, layout.keyword - behind);
}

// Tag lines have numbers of their own in mode 2; in mode 3 the first one repeats
// the number of the line before.
bool Continuation::opensTags(std::string_view line) const {
  if (kind_->tagWord.empty()) return false;
  if (mode_ == kTokens) {
    return keyword_ != kind_->tagWord && isHeading(line, number_, kind_->tagWord);
  }
  const std::string_view number = numberOf(line, mode_);
  return (number == TagWords::kNamesLine || number == TagWords::kValuesLine) &&
         isHeading(line, number, keyword_) &&
         line.substr(kFixedColumnsLayout.data).starts_with(TagWords::kOpening);
}

void Continuation::countFrom(std::string_view number) {
  number_ = number;
  next_ = number_;
  if (next_ == "99" || !isNumber(next_)) return;
  if (next_[1] != '9') {
    ++next_[1];
  } else {
    next_[1] = '0';
    ++next_[0];
  }
}

}  // namespace Vesk
