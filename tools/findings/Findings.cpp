// SPDX-License-Identifier: MIT
#include "findings/Findings.h"

#include <algorithm>

#include "output/RecordLayout.h"
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

struct CodeOfMessage {
  std::string_view begin;  // of the reader's message
  std::string_view code;
};

// The first that fits.
constexpr CodeOfMessage kCodes[] = {
    {"Input: can't get double from", "V021"},
    {"Input: number out of range", "V022"},
    {"Input: can't get", "V023"},
    {"unknown keyword", "V015"},
    {"no keyword", "V015"},
    {"no line number", "V016"},
    {"empty line", "V017"},
    {"line missing", "V012"},
    {"line \"", "V012"},
    {"line too long", "V013"},
    {"bad line \"", "V024"},
    {"unknown tag", "V025"},
    {"identifier expected", "V025"},
    {"Pline: unknown identifier", "V025"},
    {"NUL character", "V026"},
    {"text behind the record", "V027"},
    {"text of ", "V028"},
    {"pgon: less than 3 vertices", "V029"},
    {"Direction", "V030"},
};

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

std::string_view codeOf(const Vesk::RecordFault& fault) {
  if (fault.kind == Vesk::RecordFault::Kind::kCutOff) return "V014";
  for (const CodeOfMessage& each : kCodes) {
    if (fault.message.starts_with(each.begin)) return each.code;
  }
  if (fault.message.find("characters of numbers") != fault.message.npos) return "V023";
  return fault.kind == Vesk::RecordFault::Kind::kStray ? "V011" : "V020";
}

// "Input: can't get double from expression "12,5", primitive cone" tells the text
// that is no number; the column is that of its first character.
void nameText(Finding& finding) {
  constexpr std::string_view kOpening = "expression \"";
  constexpr std::string_view kClosing = "\", primitive ";
  const std::size_t begin = finding.message.find(kOpening);
  const std::size_t end = finding.message.rfind(kClosing);
  if (finding.code != "V021" || begin == finding.message.npos || end == finding.message.npos) {
    return;
  }
  const std::size_t from = begin + kOpening.size();
  const std::string text = finding.message.substr(from, end - from);
  const std::string kind = finding.message.substr(end + kClosing.size());
  finding.endColumn = finding.column + std::max<std::size_t>(text.size(), 1) - 1;
  finding.message = "not a number in a " + kind + ": '" + text + '\'';
}

}  // namespace

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
  finding.code = codeOf(fault);
  finding.file = file.name();
  finding.line = fault.line;
  finding.column = fault.column;
  finding.message = fault.message;
  finding.expected = fault.expected;
  nameText(finding);
  const std::uint64_t index = fault.line - fault.firstLine;
  if (fault.line >= fault.firstLine && index < file.lines().size()) {
    finding.sourceLine = file.lines()[index];
    if (finding.code == "V021" || finding.code == "V022") {
      finding.endColumn = endOf(finding.sourceLine, finding.column, file.mode());
    }
  }
  return finding;
}

}  // namespace VeskTool
