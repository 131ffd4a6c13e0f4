// SPDX-License-Identifier: MIT
#ifndef VESK_INPUT_READERFRAME_H
#define VESK_INPUT_READERFRAME_H

#include <cstdint>
#include <string_view>

#include "input/Input.h"
#include "input/ReadFailure.h"
#include "vesk/GeEx.h"
#include "vesk/GePoint.h"
#include "vesk/GeVector.h"
#include "vesk/TovExWhere.h"

namespace Vesk {

// What the readers of the nine primitives share.
//
// A reader leaves the scanner behind the last value that it took.

// The delimiters before a point, and between single values.
inline constexpr std::string_view kBlankOrComma = " ,";

// The failure of a reader: the scanner's with the name of the primitive, "cylinder", or
// the kernel's as one of the reader.
[[noreturn]] void failNamed(ReadFailure& e, std::string_view primitive);
[[noreturn]] void failNamed(const Input& in, ReadCause cause, const TovExWhere& e,
                            std::string_view primitive);

// Runs the reading steps; what they throw becomes a ReadFailure of the primitive.
// Returns 0.
template <class Steps>
std::int32_t readRecord(const Input& in, std::string_view primitive, Steps steps) {
  try {
    steps();
  } catch (ReadFailure& e) {
    failNamed(e, primitive);
  } catch (const GeEx::NullDir& e) {
    failNamed(in, ReadCause::kNoDirection, e, primitive);
  } catch (const TovExWhere& e) {
    failNamed(in, ReadCause::kKernel, e, primitive);
  }
  return 0;
}

// Goes to the first line and to the data column of the scanner's mode.
void startRecord(Input& in);

// Mode 2: goes to the first line with this number; throws kNoLine.
void needLine(Input& in, std::string_view number);

// Mode 2: goes to the lines of a record's second part, line "61", when the first
// part began on line `firstIndex`. A first part that ran over several lines has
// taken this number; then it is the line behind them.
void needSecondPart(Input& in, std::uint32_t firstIndex);

// Mode 2: three nine-character numbers.
GePoint getPoint9(Input& in);
GeVector getVector9(Input& in);

// Mode 3: three numbers up to a comma.
GeVector getVector(Input& in);

// The vector between two points and the point at a vector, made so that the
// writer's sum or difference is the number that was read, -0.0 with its sign
// too. For that a coordinate may be one unit in its last place lower:
//
//   from 5, to -0.0: not -5, but the next double below, since 5 - 5 is 0.0
//   from 1024.339, to 99999.999: 98975.66 would make 99999.99900000001, which
//   no longer has three decimals
GeVector vectorBetween(const GePoint& from, const GePoint& to);
GePoint pointAt(const GePoint& base, const GeVector& offset);

// Mode 3: takes a closing attribute, "ft 5," or "tk 5,", if the scanner stands
// before one; false if not. A value that is no int is passed over.
bool takeClosing(Input& in);

// The same for a token by itself.
bool takeClosing(Input& in, std::string_view token);

}  // namespace Vesk

#endif
