// SPDX-License-Identifier: MIT
#ifndef VESK_INPUT_READFAILURE_H
#define VESK_INPUT_READFAILURE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "vesk/ExceptionInfo.h"
#include "vesk/ReadCause.h"

namespace Vesk {

// Where a token of an element begins, or where one is missing.
struct TokenPlace {
  std::size_t line = 0;    // index of the line in the element
  std::size_t column = 0;  // from 0
};

// What is said of a cause; the token stands in the place of the character %.
struct CauseText {
  ReadCause cause;
  std::int32_t level;         // as in ExceptionInfo
  std::string_view message;   // what was found
  std::string_view expected;  // what was expected there; % as in `message`
};

const CauseText& textOf(ReadCause cause);

// "line "%" not found", "61" -> "line "61" not found"
std::string withToken(std::string_view text, std::string_view token);

// What the scanner, the readers and the checks behind them throw: why an element can't be
// read, and where. The message of the ExceptionInfo is made from these.
class ReadFailure : public ExceptionInfo {
 public:
  explicit ReadFailure(ReadCause why, TokenPlace where = {}, std::string_view text = {});

  // Adds ", primitive cylinder" to the message. `name` stays valid.
  void addPrimitive(std::string_view name);

  // What was expected at the place.
  std::string expected() const;

  ReadCause cause;
  TokenPlace place;
  std::string token;
  std::string wanted;          // the token of what was expected, where it is another one
  std::string_view primitive;  // "cylinder"; empty before the reader has named it
};

}  // namespace Vesk

#endif
