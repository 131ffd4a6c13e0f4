// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_KINDS_H
#define VESK_TOOLS_KINDS_H

#include <string_view>

#include "select/Kinds.h"

namespace VeskTool {

using Vesk::Kind;
using Vesk::kindNamed;
using Vesk::kindNames;
using Vesk::kindOf;
using Vesk::kKinds;
using Vesk::nameOf;
using Vesk::pluralOf;
using Vesk::wordOf;
using Vesk::wordsOf;

// Stands for the style of a file that has both.
inline constexpr int kMixedStyle = -1;

// "fixed", "token", "mixed", and "none" for 0.
std::string_view styleName(int mode);

// The style of a file of which an element has this one and those before had that, 0 if
// there were none.
int joinedStyle(int before, int mode);

}  // namespace VeskTool

#endif
