// SPDX-License-Identifier: MIT
#ifndef VESK_GEEX_H
#define VESK_GEEX_H

#include <vesk/TovExWhere.h>

// The three failures of the geometry kernel.
namespace GeEx {

// A unit direction was requested from a vector that is too short to have one.
class VESK_EXCEPTION NullDir : public Vesk::TovExWhere {
 public:
  using Vesk::TovExWhere::TovExWhere;
  const char* what() const noexcept override { return "Direction should not be Null or Infinity"; }
};

// A null pointer was passed instead of an array of three doubles.
class VESK_EXCEPTION NullPtr : public Vesk::TovExWhere {
 public:
  using Vesk::TovExWhere::TovExWhere;
  const char* what() const noexcept override { return "Pointer to array should not be NULL"; }
};

// A vector was divided by exactly 0.0, or an angle was requested from a vector
// whose length is 0.0.
class VESK_EXCEPTION DivZero : public Vesk::TovExWhere {
 public:
  using Vesk::TovExWhere::TovExWhere;
  const char* what() const noexcept override { return "Division by zero"; }
};

}  // namespace GeEx

#endif
