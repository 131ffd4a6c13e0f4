// SPDX-License-Identifier: MIT
#include "elements/Kinds.h"

#include "output/RecordLayout.h"

namespace VeskTool {

std::string_view styleName(int mode) {
  if (mode == Vesk::kFixedColumns) return "fixed";
  if (mode == kMixedStyle) return "mixed";
  return mode == Vesk::kTokens ? "token" : "none";
}

int joinedStyle(int before, int mode) { return before == 0 || before == mode ? mode : kMixedStyle; }

}  // namespace VeskTool
