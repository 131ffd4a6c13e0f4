// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_CHECK_LINERULES_H
#define VESK_TOOLS_CHECK_LINERULES_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "findings/Findings.h"
#include "vesk/Recs.h"

namespace VeskTool {

// Something wrong with the characters of a line, whatever its numbers say.
struct LineFault {
  std::string_view code;
  Severity severity = Severity::kError;
  std::size_t line = 0;    // index in the element
  std::size_t column = 0;  // from 0
  std::size_t length = 1;
  std::string message;
  std::string expected;
};

using TakeLineFault = std::function<void(LineFault)>;

// V018: lines over the size of the style. A continuation line may be longer by
// its heading, because its first token is measured without it.
// V019: characters below 32, and 127. Bytes above belong to names and texts.
// V031: a counter that is not made of 0 to 9 and A to Z; one that is blank was
// never set and is left alone.
// V032: blanks at the end of a line, texts aside.
void checkLines(const Vesk::Recs& lines, std::int32_t mode, const TakeLineFault& take);

}  // namespace VeskTool

#endif
