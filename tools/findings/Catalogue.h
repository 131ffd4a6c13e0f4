// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_CATALOGUE_H
#define VESK_TOOLS_CATALOGUE_H

#include <span>
#include <string_view>

namespace VeskTool {

// What stands behind the code of a finding. A code never changes its meaning and
// is never used again.
//
//   V011 to V039  the form of the records
//   V101 to V199  the geometry of single elements
//   V201 to V299  elements beside each other
//   V301 to V399  what a conversion can't keep
//   V401 to V499  what can't be shown
//   V501 to V599  elements in each other's way
struct CodeText {
  std::string_view code;
  std::string_view title;    // one line
  std::string_view meaning;  // what it means and why it matters
  std::string_view remedy;   // what to do
};

// All codes in ascending order.
std::span<const CodeText> catalogue();

// Null if there is no such code. Case does not matter.
const CodeText* findCode(std::string_view code);

}  // namespace VeskTool

#endif
