// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_CHECK_ELEMENTFAULT_H
#define VESK_TOOLS_CHECK_ELEMENTFAULT_H

#include <string>
#include <string_view>

#include "findings/Findings.h"

namespace VeskTool {

// Something wrong with an element that was read, told by its numbers. The
// numbers of a record count from 0 in the order in which they are written; see
// numberPlaces for where they stand.
struct ElementFault {
  static constexpr int kWholeElement = -1;
  static constexpr int kLargest = -2;  // the one of the largest absolute value, NaN before all

  std::string_view code;
  Severity severity = Severity::kError;
  std::string message;
  std::string expected;
  int firstNumber = kWholeElement;
  int lastNumber = kWholeElement;
};

}  // namespace VeskTool

#endif
