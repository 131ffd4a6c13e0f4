// SPDX-License-Identifier: MIT
#include "input/ReadFailure.h"

#include <algorithm>
#include <iterator>

namespace Vesk {
namespace {

constexpr std::int32_t kFatal = ExceptionInfo::kFatal;
constexpr std::int32_t kUnknown = ExceptionInfo::kUnknownTag;

constexpr std::string_view kWords = "pt, vn, ar, ft or tk";
constexpr std::string_view kPlineWords = "pt, ar, ft or tk";
constexpr std::string_view kTagWords = "ed, ft or tk";
constexpr std::string_view kFirstLine = "the first line of a record";
constexpr std::string_view kWholeRecord = "a record as it is written";

// clang-format off
constexpr CauseText kTexts[] = {
    {ReadCause::kNoNumber, kFatal, "Input: can't get double from expression \"%\"", "a number"},
    {ReadCause::kNotInt, kFatal, "Input: number out of range", "a whole number of 32 bits"},
    {ReadCause::kNoPoint, kFatal, "Input: can't get double", "a point"},
    {ReadCause::kNoValue, kFatal, "Input: can't get string value", "a further value"},
    {ReadCause::kShortField, kFatal, "Input: can't get string value of specified length", "a field of nine characters"},
    {ReadCause::kNoDirection, kFatal, "%", "points that differ"},
    {ReadCause::kKernel, kFatal, "%", kWholeRecord},
    {ReadCause::kWrongStyle, kFatal, "%: wrong style", kWholeRecord},
    {ReadCause::kWrongPolygonStyle, kFatal, "Can't process this kind of style", kWholeRecord},
    {ReadCause::kNoLine, kFatal, "line \"%\" not found", "line \"%\""},
    {ReadCause::kLineSkipped, kFatal, "line missing", "line \"%\""},
    {ReadCause::kLineMissing, kFatal, "line missing", "a further value"},
    {ReadCause::kBadNames, kFatal, "bad line \"%\"", "names, an asterisk behind each"},
    {ReadCause::kBadValues, kFatal, "bad line \"%\"", "a name, an asterisk and pairs of numbers"},
    {ReadCause::kUnknownMark, kUnknown, "unknown tag %", kTagWords},
    {ReadCause::kUnknownTag, kUnknown, "unknown tag", kTagWords},
    {ReadCause::kUnknownWord, kUnknown, "unknown tag \"%\"", kWords},
    {ReadCause::kUnknownPlineWord, kFatal, "Pline: unknown identifier \"%\"", kPlineWords},
    {ReadCause::kNoWord, kFatal, "identifier expected", kWords},
    {ReadCause::kNoPlineWord, kFatal, "Pline: wrong style", kPlineWords},
    {ReadCause::kTooFewVertices, kFatal, "pgon: less than 3 vertices", "a further point"},
    {ReadCause::kTextLength, kFatal, "text of % characters", "as many characters as its length says"},
    {ReadCause::kNumbersLength, kFatal, "% characters of numbers", "% numbers of nine characters"},
    {ReadCause::kTextBehind, kFatal, "text behind the record", "ft, tk or nothing"},
    {ReadCause::kNulInHeader, kFatal, "NUL character", "a header field"},
    {ReadCause::kNoRecord, kFatal, "no record", kFirstLine},
    {ReadCause::kEmptyLine, kFatal, "empty line", kFirstLine},
    {ReadCause::kNoLineNumber, kFatal, "no line number", kFirstLine},
    {ReadCause::kNoKeyword, kFatal, "no keyword", kFirstLine},
    {ReadCause::kUnknownKeyword, kFatal, "unknown keyword \"%\"", kFirstLine},
    {ReadCause::kStrayLine, kFatal, "line \"%\" without its first line", kFirstLine},
    {ReadCause::kLineTooLong, kFatal, "line too long for a record", kFirstLine},
    {ReadCause::kCutOff, kFatal, "file cut off", "the end of the line"},
};
// clang-format on

constexpr bool isInOrder() {
  for (std::size_t i = 0; i < std::size(kTexts); ++i) {
    if (static_cast<std::size_t>(kTexts[i].cause) != i) return false;
  }
  return std::size(kTexts) == kReadCauses;
}
static_assert(isInOrder(), "a row for each cause, in the order of the enumeration");

}  // namespace

const CauseText& textOf(ReadCause cause) { return kTexts[static_cast<std::size_t>(cause)]; }

std::string withToken(std::string_view text, std::string_view token) {
  const std::size_t mark = std::min(text.find('%'), text.size());
  std::string result(text.substr(0, mark));
  if (mark == text.size()) return result;
  result += token;
  return result += text.substr(mark + 1);
}

ReadFailure::ReadFailure(ReadCause why, TokenPlace where, std::string_view text)
    : ExceptionInfo(withToken(textOf(why).message, text), textOf(why).level),
      cause(why),
      place(where),
      token(text) {}

void ReadFailure::addPrimitive(std::string_view name) {
  primitive = name;
  message += ", primitive ";
  message += name;
}

std::string ReadFailure::expected() const {
  return withToken(textOf(cause).expected, wanted.empty() ? token : wanted);
}

}  // namespace Vesk
