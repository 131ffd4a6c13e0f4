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

// "fixed", "token", and "none" for 0.
std::string_view styleName(int mode);

}  // namespace VeskTool

#endif
