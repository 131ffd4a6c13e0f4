// SPDX-License-Identifier: MIT
#ifndef VESK_READCAUSE_H
#define VESK_READCAUSE_H

#include <cstddef>

namespace Vesk {

// Why something in a record file can't be read. Beside it stands a token: the text or the
// number that the message names, empty where it names none.
enum class ReadCause {
  // Of a value.
  kNoNumber,     // the token is not exactly one number
  kNotInt,       // a number that no int holds
  kNoPoint,      // the element ends where a point should stand
  kNoValue,      // the element ends where a value should stand
  kShortField,   // a line ends inside a field of fixed width
  kNoDirection,  // two points that give a direction are the same
  kKernel,       // the geometry kernel refuses the values; the token is what it says

  // Of a record.
  kWrongStyle,         // of no style that the kind has; the token is the kind
  kWrongPolygonStyle,  // the same for a polygon
  kNoLine,             // no line with the number that is the token
  kLineSkipped,        // lines before this one are missing
  kLineMissing,        // the record ends where it can't end
  kBadNames,           // tag line with names; the token is its number
  kBadValues,          // tag line with values; the token is its number
  kUnknownMark,        // of a box
  kUnknownTag,         // of a reducer
  kUnknownWord,        // of a polygon
  kUnknownPlineWord,   // of a polyline
  kNoWord,             // a polygon's item without its word
  kNoPlineWord,        // a polyline's
  kTooFewVertices,     // of a polygon
  kTextLength,         // the text is as long as the token says, and that is not its length
  kNumbersLength,      // the numbers have as many characters as the token says
  kTextBehind,         // the line goes on behind the record
  kNulInHeader,

  // Of lines.
  kNoRecord,  // the style is not known yet
  kEmptyLine,
  kNoLineNumber,
  kNoKeyword,
  kUnknownKeyword,  // the token
  kStrayLine,       // a line of a record without its first line; the token is its number
  kLineTooLong,
  kCutOff,  // the file ends inside a line
};

inline constexpr std::size_t kReadCauses = static_cast<std::size_t>(ReadCause::kCutOff) + 1;

}  // namespace Vesk

#endif
