// SPDX-License-Identifier: MIT
#include "vesk/FixStrB.h"

#include <cstring>
#include <string_view>

namespace Vesk {

bool FixStrB::isBlank() const {
  return std::string_view(data(), width()).find_first_not_of(padChar()) == std::string_view::npos;
}

bool operator==(const FixStrB& a, const FixStrB& b) { return std::strcmp(a.data(), b.data()) == 0; }

}  // namespace Vesk
