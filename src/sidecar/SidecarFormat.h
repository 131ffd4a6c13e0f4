// SPDX-License-Identifier: MIT
#ifndef VESK_SIDECAR_SIDECARFORMAT_H
#define VESK_SIDECAR_SIDECARFORMAT_H

#include <cstddef>
#include <string_view>

namespace Vesk {

// What writer and reader of sidecars must agree on.

inline constexpr std::size_t kSidecarKeys = 4;
inline constexpr std::string_view kSidecarKeyNames[kSidecarKeys] = {"f1", "f2", "first", "last"};

// A spreadsheet takes a text for a formula that begins with one of these.
inline constexpr std::string_view kFormulaStarts = "=+-@\t\r";

// Whether the text, behind any apostrophes, begins like a formula: it is written with
// one apostrophe more and read with one less, so that every text comes back.
inline bool isLikeFormula(std::string_view text) {
  const std::size_t start = text.find_first_not_of('\'');
  return start != std::string_view::npos &&
         kFormulaStarts.find(text[start]) != std::string_view::npos;
}

}  // namespace Vesk

#endif
