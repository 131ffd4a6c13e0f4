// SPDX-License-Identifier: MIT
#ifndef VESK_PRIMS_TAGLINES_H
#define VESK_PRIMS_TAGLINES_H

#include <string>
#include <utility>
#include <vector>

#include "output/Output.h"
#include "vesk/TagEntry.h"

namespace Vesk {

// The words of the tag lines, for writer and reader.
namespace TagWords {
inline constexpr const char* kNamesLine = "63";   // mode 2: all tags without values
inline constexpr const char* kValuesLine = "64";  // mode 2: one tag with its values
inline constexpr const char* kOpening = "    *";  // mode 2: before the first name
inline constexpr const char* kClosing = "*";      // mode 2: after each name
inline constexpr const char* kEntry = "ed ";      // mode 3: before a name
}  // namespace TagWords

// Writes the mode 2 tag lines: one line "63" with the names of all tags without
// values, if there are any, then a line "64" for each tag with values. Nothing
// when the assembler's writeTags is off.
//
//   63...    *left*right*
//   64...    *seam*    1.000    2.500
void writeTagLines(Output& out, const std::vector<TagEntry>& tags);

// The mode 3 token of a tag without its values: "ed " and the name.
std::string tagToken(const TagEntry& tag);

// Appends a value pair to it: " 1 2.5", each with the assembler's pointDecimals.
void appendTagValues(std::string& token, const std::pair<double, double>& values,
                     const Output& out);

}  // namespace Vesk

#endif
