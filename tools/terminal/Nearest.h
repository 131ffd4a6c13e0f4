// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_NEAREST_H
#define VESK_TOOLS_NEAREST_H

#include <string>
#include <string_view>
#include <vector>

namespace VeskTool {

// "did you mean "check"?" for the name that is nearest to the word, by letters
// that are wrong, missing, too many or exchanged; empty if none is near.
std::string didYouMean(std::string_view word, const std::vector<std::string>& names);

}  // namespace VeskTool

#endif
