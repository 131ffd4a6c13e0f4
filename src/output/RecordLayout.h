// SPDX-License-Identifier: MIT
#ifndef VESK_OUTPUT_RECORDLAYOUT_H
#define VESK_OUTPUT_RECORDLAYOUT_H

#include <cstddef>
#include <cstdint>

#include "vesk/RecordStyle.h"

namespace Vesk {

// Where the parts of a record line stand; columns count from 0. A line is a
// prefix, a keyword and the data.
struct RecordLayout {
  std::size_t lineNumber;  // two digits
  std::size_t counter;     // three base-36 digits
  std::size_t keyword;     // the prefix ends before it
  std::size_t data;
};

inline constexpr RecordLayout kFixedColumnsLayout{0, 18, 21, 24};
inline constexpr RecordLayout kTokensLayout{17, 10, 19, 21};

inline constexpr std::size_t kLineNumberWidth = 2;
inline constexpr std::size_t kCounterWidth = 3;
inline constexpr std::size_t kNumberFieldWidth = 9;

// The longest line by style, not counting what a continuation line may be
// longer by (see Output::addText).
inline constexpr std::uint32_t kFixedColumnsLineSize = 256;
inline constexpr std::uint32_t kTokensLineSize = 512;

}  // namespace Vesk

#endif
