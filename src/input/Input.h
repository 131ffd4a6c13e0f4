// SPDX-License-Identifier: MIT
#ifndef VESK_INPUT_INPUT_H
#define VESK_INPUT_INPUT_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "input/ReadFailure.h"
#include "output/RecordLayout.h"
#include "vesk/GePoint.h"
#include "vesk/Recs.h"

namespace Vesk {

// The record scanner: walks the lines of one element and hands out numbers,
// fixed-width fields, tokens and points. The reading side of Output.
//
// It stands at a character of one line. A token ends before the first of the
// `delimiters`, or at the end of its line; the next read goes on at startColumn
// of the next line that holds something there. Columns count from 0. In mode 3
// attribute tokens ("cs " and "sp ") at the start of a line are passed over.
//
// The state is open to its owner; `line` and lineLength belong to lineIndex, so
// who changes that one calls rewind, findLine or nextLine. Lines may be of any
// length and hold any bytes.
//
// Every failure throws ReadFailure with the token's place, and the cursor stays where
// the failing read left it:
//
//   kNoNumber     "Input: can't get double from expression "12,5x""
//   kShortField   "Input: can't get string value of specified length"
//   kNoValue      "Input: can't get string value"   token at the end of input
//   kNoPoint      "Input: can't get double"         point at the end of input
//   kNotInt       "Input: number out of range"      see getInt
class Input {
 public:
  Recs recs;                     // the lines to read
  std::uint32_t lineLength = 0;  // of `line`
  std::uint32_t cursor = 0;      // the next character; may lie beyond the line
  std::string line;              // the current line
  std::string hold;              // while not empty no further line is loaded
  std::string delimiters;        // the characters that end a token
  std::uint32_t lineIndex = 0;   // of the current line in `recs`
  std::uint32_t startColumn = 0;
  std::int32_t mode = 0;         // kFixedColumns, kTokens
  std::uint32_t pointCount = 0;  // how many of `points` are in use
  std::vector<GePoint> points;   // for readers; see pushPoint

  // What readers meet beside the values of their primitive. rewind clears it.
  std::optional<std::int32_t> ft;    // closing attribute
  std::optional<std::int32_t> tk;    // closing attribute
  std::optional<double> textLength;  // the length that a text record gives

  // Where the token or field read last began, or where one was missing; for
  // reports.
  std::uint32_t tokenLine = 0;
  std::uint32_t tokenColumn = 0;

  Input() = default;

  // Stands nowhere yet: call rewind and startAt.
  Input(Recs lines, std::int32_t style) : recs(std::move(lines)), mode(style) {}

  // Back to column 0 of the first line. Without any line, an empty one.
  void rewind();

  // Reading starts at this column, on this line and all that follow.
  void startAt(std::uint32_t column);

  // Moves within the line; a column beyond its end changes nothing.
  void setCursor(std::uint32_t column);

  // Mode 2: goes to startColumn of the line with this two-character number, the
  // first one (0) or a later one; false, and nothing changed, if there is none.
  // Mode 3 has no such numbers: clears `hold` and returns false.
  bool findLine(std::string_view number, int occurrence);

  // Mode 2: how many lines have this number. Other modes: 0.
  int countLines(std::string_view number) const;

  // Goes to startColumn of the next line. False if there is none, and then the
  // cursor is at the end of the line, or if `hold` is not empty, and then only
  // lineIndex has moved.
  bool nextLine();

  // Whether nothing is left. Goes to the next line with characters from
  // startColumn on when this one is used up.
  bool atEnd();

  // Whether the line is used up; never moves.
  bool atLineEnd() const { return cursor >= lineLength; }

  // Skips all characters of the set, with `advance` also over line ends.
  void skipChars(std::string_view set, bool advance);

  // Skips one character of the set if there is one; with `advance` goes to the
  // next line if it was the line's last.
  void skipChar(std::string_view set, bool advance);

  void setDelimiters(std::string_view set);

  // The characters up to the next delimiter; empty at the end of input.
  void peekToken(std::string& token);
  void peekTokenN(std::string& token, std::size_t longest);

  // The same and moves behind it. Throws at the end of input.
  void getToken(std::string& token);

  // Takes exactly `length` characters, one less if the line ends just before
  // the last of them; throws if even that is too much. Empty at the end of
  // input.
  void getFixedString(std::string& text, std::size_t length);

  // Reads a number: skips blanks, takes a token, skips delimiters. See
  // parseDouble for what is a number.
  double getDouble();

  // The same, but stays right behind the token.
  double getLastDouble();

  // Reads a number from exactly `width` characters.
  double getFixedDouble(std::size_t width);
  void getFixedDoubles(std::size_t count, double* values, std::size_t width);

  // Reads "x y z", z up to the next comma, and leaves the comma as the
  // delimiter.
  void getPoint(GePoint& point);

  // Reads a number and drops its decimals. Throws when no int can hold it.
  std::int32_t getInt() { return toInt(getDouble()); }

  // Skip blanks, over line ends too; whether a digit, or something else, follows.
  bool atDigit();
  bool atNonDigit();

  // Puts a point behind those in use, over an old one if there is one.
  void pushPoint(const GePoint& point);

  // Takes the rest of this line as it stands.
  std::string_view getRest();

  // Loads the next line as it stands: no attribute is passed over. False if
  // there is none.
  bool nextLineVerbatim();

  // Notes the cursor, or this place, for tokenLine and tokenColumn.
  void markToken();
  void markToken(std::size_t index, std::size_t column);

  // Drops the decimals; throws kNotInt for what no int can hold.
  std::int32_t toInt(double value) const;

  // Throws; the place is that of the token read last.
  [[noreturn]] void fail(ReadCause cause, std::string_view token = {}) const;

  // Whether an int can hold it without its decimals.
  static bool isInt(double value);

 private:
  void loadLine(std::size_t index);
  void skipAttributes();
  std::string_view tokenAt() const;
  std::string_view takeToken();
  std::string_view takeFixed(std::size_t length);
  bool takePlainNumber(double& value);
  bool takePlainPoint(GePoint& point);
  bool takePlainField(std::size_t width, double& value);

  std::string failed_;  // the token of a failing read
};

}  // namespace Vesk

#endif
