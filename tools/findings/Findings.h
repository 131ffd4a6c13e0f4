// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_FINDINGS_H
#define VESK_TOOLS_FINDINGS_H

#include <cstdint>
#include <string>
#include <string_view>

#include "terminal/Look.h"
#include "text/Json.h"
#include "vesk/RecordFile.h"

namespace VeskTool {

enum class Severity { kError, kWarning, kNote };

std::string_view nameOf(Severity severity);

// Something that is to be said about a place in a file.
struct Finding {
  std::string_view code;  // of the catalogue: "V021"; empty for what is no finding of check
  Severity severity = Severity::kError;
  std::string file;
  std::uint64_t line = 0;     // from 1; 0: the file as a whole
  std::size_t column = 0;     // from 1, in bytes; 0: the line as a whole
  std::size_t endColumn = 0;  // the last one; 0: the same as `column`
  std::string message;        // what was found
  std::string expected;       // what was expected there; may be empty
  std::string hint;           // what to do; may be empty
  std::string sourceLine;     // the line itself, if it is to be shown

  // Bytes before `column` that go on with a letter of UTF-8, where the line
  // itself is not at hand any more.
  std::size_t insideBytes = 0;
};

// Appends the finding as text:
//
//   plant.dat:1042:31-40: error: radius is not a number: '  12,5000' [V021]
//     1042 | 60    ...  12,5000
//          |          ^~~~~~~~~~
//     expected: a number in nine characters
//     hint: ...
//
// Of a long line only what is around the columns is shown; control characters
// are shown as "?".
void appendText(std::string& to, const Finding& finding, const Look& look);

// Appends the same as one JSON object on a line: code, severity, file, line,
// column, endColumn, message, expected, hint; what is 0 or empty is left out.
void appendJson(JsonWriter& json, const Finding& finding);

// The code of what can't be read.
std::string_view codeOfCause(Vesk::ReadCause cause);

// The code of lines in the other style, which tells how many they are.
inline constexpr std::string_view kOtherStyle = "V011";

// What the file's reader has found wrong; file.next() gave kFault.
Finding findingOf(const Vesk::RecordFile& file);

}  // namespace VeskTool

#endif
