// SPDX-License-Identifier: MIT
#include "findings/Findings.h"

#include <algorithm>
#include <iterator>

#include "input/RecordHeading.h"
#include "output/RecordLayout.h"
#include "text/Numbers.h"
#include "text/Words.h"

namespace VeskTool {
namespace {

constexpr std::size_t kShownWidth = 100;
constexpr std::size_t kShownBefore = 40;
constexpr std::string_view kDots = "...";

bool isControl(char c) { return static_cast<unsigned char>(c) < 32 || c == 127; }

// The part of the line that is shown, and how many bytes stand before it.
struct Window {
  std::string text;
  std::size_t dropped = 0;
  bool dotsBefore = false;
};

Window windowOf(std::string_view line, std::size_t column) {
  Window window;
  if (line.size() > kShownWidth && column > kShownWidth - kShownBefore) {
    window.dropped = column - kShownBefore;
    while (window.dropped < line.size() && isContinuationByte(line[window.dropped])) {
      ++window.dropped;
    }
    window.dotsBefore = true;
    window.text = kDots;
  }
  std::string_view shown = line.substr(std::min(window.dropped, line.size()));
  const bool cut = shown.size() > kShownWidth;
  if (cut) {
    std::size_t end = kShownWidth;
    while (end > 0 && isContinuationByte(shown[end])) --end;
    shown = shown.substr(0, end);
  }
  window.text += shown;
  if (cut) window.text += kDots;
  std::replace_if(window.text.begin(), window.text.end(), isControl, '?');
  return window;
}

// "   ^~~~" below the window.
std::string markOf(const Finding& finding, const Window& window) {
  const std::size_t shift = window.dotsBefore ? kDots.size() : 0;
  const std::size_t begin =
      finding.column - 1 - std::min(window.dropped, finding.column - 1) + shift;
  const std::size_t last = std::max(finding.endColumn, finding.column);
  const std::size_t end =
      std::min(last - window.dropped + shift, std::max(window.text.size(), begin + 1));
  std::string mark;
  for (std::size_t i = 0; i < end; ++i) {
    if (i < window.text.size() && isContinuationByte(window.text[i])) continue;
    mark += i < begin ? ' ' : '~';
  }
  const std::size_t caret = mark.find('~');
  if (caret != mark.npos) mark[caret] = '^';
  return mark;
}

Look::Paint paintOf(Severity severity) {
  switch (severity) {
    case Severity::kError:
      return Look::Paint::kError;
    case Severity::kWarning:
      return Look::Paint::kWarning;
    case Severity::kNote:
      break;
  }
  return Look::Paint::kNote;
}

void appendSource(std::string& to, const Finding& finding, const Look& look) {
  const std::string number = std::to_string(finding.line);
  const Window window = windowOf(finding.sourceLine, finding.column);
  to += "  " + number + " | " + window.text + '\n';
  if (finding.column == 0) return;
  to += "  " + std::string(number.size(), ' ') + " | ";
  look.append(to, Look::Paint::kGood, markOf(finding, window));
  to += '\n';
}

struct CodeOfCause {
  Vesk::ReadCause cause;
  std::string_view code;
};

// clang-format off
constexpr CodeOfCause kCodes[] = {
    {Vesk::ReadCause::kNoNumber, "V021"},
    {Vesk::ReadCause::kNotInt, "V022"},
    {Vesk::ReadCause::kNoPoint, "V023"},
    {Vesk::ReadCause::kNoValue, "V023"},
    {Vesk::ReadCause::kShortField, "V023"},
    {Vesk::ReadCause::kNoDirection, "V030"},
    {Vesk::ReadCause::kKernel, "V020"},
    {Vesk::ReadCause::kWrongStyle, "V020"},
    {Vesk::ReadCause::kWrongPolygonStyle, "V020"},
    {Vesk::ReadCause::kNoLine, "V012"},
    {Vesk::ReadCause::kLineSkipped, "V012"},
    {Vesk::ReadCause::kLineMissing, "V012"},
    {Vesk::ReadCause::kBadNames, "V024"},
    {Vesk::ReadCause::kBadValues, "V024"},
    {Vesk::ReadCause::kUnknownMark, "V025"},
    {Vesk::ReadCause::kUnknownTag, "V025"},
    {Vesk::ReadCause::kUnknownWord, "V025"},
    {Vesk::ReadCause::kUnknownPlineWord, "V025"},
    {Vesk::ReadCause::kNoWord, "V025"},
    {Vesk::ReadCause::kNoPlineWord, "V020"},
    {Vesk::ReadCause::kTooFewVertices, "V029"},
    {Vesk::ReadCause::kTextLength, "V028"},
    {Vesk::ReadCause::kNumbersLength, "V023"},
    {Vesk::ReadCause::kTextBehind, "V027"},
    {Vesk::ReadCause::kNulInHeader, "V026"},
    {Vesk::ReadCause::kNoRecord, "V011"},
    {Vesk::ReadCause::kEmptyLine, "V017"},
    {Vesk::ReadCause::kNoLineNumber, "V016"},
    {Vesk::ReadCause::kNoKeyword, "V015"},
    {Vesk::ReadCause::kUnknownKeyword, "V015"},
    {Vesk::ReadCause::kStrayLine, "V012"},
    {Vesk::ReadCause::kLineTooLong, "V013"},
    {Vesk::ReadCause::kCutOff, "V014"},
};
// clang-format on

constexpr bool isInOrder() {
  for (std::size_t i = 0; i < std::size(kCodes); ++i) {
    if (static_cast<std::size_t>(kCodes[i].cause) != i) return false;
  }
  return std::size(kCodes) == Vesk::kReadCauses;
}
static_assert(isInOrder(), "a row for each cause, in the order of the enumeration");

// The last column of what stands at this one: a number of nine characters, or all
// up to the next blank or comma.
std::size_t endOf(std::string_view line, std::size_t column, int mode) {
  const std::size_t begin = column - 1;
  if (begin >= line.size()) return column;
  if (mode == Vesk::kFixedColumns) {
    return std::min(begin + Vesk::kNumberFieldWidth, line.size());
  }
  return std::max(std::min(line.find_first_of(" ,", begin), line.size()), column);
}

// What is no number is told with the kind of its element; the column is that of its
// first character.
void nameText(Finding& finding, const Vesk::RecordFault& fault) {
  if (fault.cause != Vesk::ReadCause::kNoNumber || fault.primitive.empty()) return;
  finding.endColumn = finding.column + std::max<std::size_t>(fault.token.size(), 1) - 1;
  finding.message =
      "not a number in a " + std::string(fault.primitive) + ": '" + fault.token + '\'';
}

// Where the file goes on in the other style, as two that were joined do.
void nameOtherStyle(Finding& finding, const Vesk::RecordFile& file) {
  const Vesk::RecordFault& fault = file.fault();
  if (fault.kind != Vesk::RecordFault::Kind::kStray || file.lines().empty()) return;
  const bool isTokens = file.mode() == Vesk::kTokens;
  const std::int32_t other = isTokens ? Vesk::kFixedColumns : Vesk::kTokens;
  if (file.mode() == 0 || Vesk::kindOfFirstLine(file.lines().front(), other) == nullptr) return;
  finding.code = kOtherStyle;
  finding.column = 0;
  finding.message = "from line " + std::to_string(fault.firstLine) +
                    (isTokens ? " fixed columns, " : " tokens, ") +
                    counted(fault.lastLine - fault.firstLine + 1, "line");
  finding.expected.clear();
  finding.hint = "--mixed reads on in it, and vesk convert --mixed brings the file to one style";
}

}  // namespace

std::string_view codeOfCause(Vesk::ReadCause cause) {
  return kCodes[static_cast<std::size_t>(cause)].code;
}

std::string_view nameOf(Severity severity) {
  switch (severity) {
    case Severity::kError:
      return "error";
    case Severity::kWarning:
      return "warning";
    case Severity::kNote:
      break;
  }
  return "note";
}

void appendText(std::string& to, const Finding& finding, const Look& look) {
  std::string place = finding.file + ':';
  if (finding.line > 0) place += std::to_string(finding.line) + ':';
  if (finding.line > 0 && finding.column > 0) {
    place += std::to_string(finding.column);
    if (finding.endColumn > finding.column) place += '-' + std::to_string(finding.endColumn);
    place += ':';
  }
  look.append(to, Look::Paint::kBold, place);
  to += ' ';
  look.append(to, paintOf(finding.severity), std::string(nameOf(finding.severity)) + ':');
  to += ' ' + finding.message;
  if (!finding.code.empty()) to += " [" + std::string(finding.code) + ']';
  to += '\n';
  if (!finding.sourceLine.empty()) appendSource(to, finding, look);
  if (!finding.expected.empty()) to += "  expected: " + finding.expected + '\n';
  if (!finding.hint.empty()) to += "  hint: " + finding.hint + '\n';
}

void appendJson(JsonWriter& json, const Finding& finding) {
  json.beginObjectRow();
  json.key("code").value(finding.code);
  json.key("severity").value(nameOf(finding.severity));
  json.key("file").value(finding.file);
  if (finding.line > 0) json.key("line").value(finding.line);
  if (finding.column > 0) json.key("column").value(std::uint64_t{finding.column});
  if (finding.endColumn > 0) json.key("endColumn").value(std::uint64_t{finding.endColumn});
  json.key("message").value(finding.message);
  if (!finding.expected.empty()) json.key("expected").value(finding.expected);
  if (!finding.hint.empty()) json.key("hint").value(finding.hint);
  json.endObject();
}

Finding findingOf(const Vesk::RecordFile& file) {
  const Vesk::RecordFault& fault = file.fault();
  Finding finding;
  finding.code = codeOfCause(fault.cause);
  finding.file = file.name();
  finding.line = fault.line;
  finding.column = fault.column;
  finding.message = fault.message;
  finding.expected = fault.expected;
  nameText(finding, fault);
  nameOtherStyle(finding, file);
  const std::uint64_t index = fault.line - fault.firstLine;
  if (fault.line >= fault.firstLine && index < file.lines().size()) {
    finding.sourceLine = file.lines()[index];
    if (fault.cause == Vesk::ReadCause::kNoNumber || fault.cause == Vesk::ReadCause::kNotInt) {
      finding.endColumn = endOf(finding.sourceLine, finding.column, file.mode());
    }
  }
  return finding;
}

}  // namespace VeskTool
