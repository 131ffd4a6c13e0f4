// SPDX-License-Identifier: MIT
#ifndef VESK_SELECT_PATTERN_H
#define VESK_SELECT_PATTERN_H

#include <string>
#include <string_view>

namespace Vesk {

// Whether the name matches the pattern: * any characters, ? one byte. Time is at
// most the product of both lengths.
bool matchesPattern(std::string_view name, std::string_view pattern);

// Whether a header is meant by a pattern: by its first field alone or, with a
// blank between, by both. Blanks at the end of a field don't count.
//
//   "P-1001", "01": "P-1001", "P-1001 01", "P-10*", "* 01"; not "P-10", "01"
bool matchesHeader(std::string_view f1, std::string_view f2, std::string_view pattern);

// "P-1001 01": both fields as people see and write them.
std::string headerName(std::string_view f1, std::string_view f2);

}  // namespace Vesk

#endif
