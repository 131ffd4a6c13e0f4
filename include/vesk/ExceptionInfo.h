// SPDX-License-Identifier: MIT
#ifndef VESK_EXCEPTIONINFO_H
#define VESK_EXCEPTIONINFO_H

#include <cstdint>
#include <string>
#include <utility>

#include <vesk/TovException.h>

namespace Vesk {

// A record could not be written or read.
//
// what() is the standard base text; the reason is in `message`.
class VESK_EXCEPTION ExceptionInfo : public TovException {
 public:
  // The levels in use.
  static constexpr std::int32_t kFatal = 1;       // a missing, malformed or unfitting line
  static constexpr std::int32_t kUnknownTag = 2;  // a reader met a tag that it does not know

  ExceptionInfo(std::string text, std::int32_t gravity)
      : message(std::move(text)), level(gravity) {}

  std::string message;
  std::int32_t level;
};

}  // namespace Vesk

#endif
