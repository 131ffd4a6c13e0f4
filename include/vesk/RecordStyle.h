// SPDX-License-Identifier: MIT
#ifndef VESK_RECORDSTYLE_H
#define VESK_RECORDSTYLE_H

#include <cstdint>

namespace Vesk {

// The two styles of a record, as the line assembler and the readers call them.
inline constexpr std::int32_t kFixedColumns = 2;  // line numbers, nine-character fields
inline constexpr std::int32_t kTokens = 3;        // keyword and tokens

}  // namespace Vesk

#endif
