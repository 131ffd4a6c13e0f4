// SPDX-License-Identifier: MIT
#ifndef VESK_TOVEXWHERE_H
#define VESK_TOVEXWHERE_H

#include <string>

#include <vesk/TovException.h>

namespace Vesk {

// A failure of the geometry kernel, with the place where it happened.
//
// what() is a fixed text without the place; a handler that wants the place
// reads `where`.
class VESK_EXCEPTION TovExWhere : public TovException {
 public:
  // place: zero-terminated name of an operation or a type; copied.
  explicit TovExWhere(const char* place) : where(place) {}

  const char* what() const noexcept override { return "General error"; }

  std::string where;
};

}  // namespace Vesk

#endif
