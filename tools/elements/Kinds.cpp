// SPDX-License-Identifier: MIT
#include "elements/Kinds.h"

#include "output/RecordLayout.h"

namespace VeskTool {

std::string_view styleName(int mode) {
  if (mode == Vesk::kFixedColumns) return "fixed";
  return mode == Vesk::kTokens ? "token" : "none";
}

}  // namespace VeskTool
