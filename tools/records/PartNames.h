// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_RECORDS_PARTNAMES_H
#define VESK_TOOLS_RECORDS_PARTNAMES_H

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace VeskTool {

// A value as a part of a file name that every system takes: letters, digits, "-",
// "+", "_" and "." stay, each other byte becomes "_".
//
//   "P-1001 01" -> "P-1001_01"    "8\"/A" -> "8__A"    "" -> "blank"
//   "con.1"     -> "con_.1"       ".x"    -> "_.x"     "a." -> "a._"
std::string safeName(std::string_view value);

// Gives names that no two parts share, not even where a system takes upper and lower
// case for the same.
class PartNames {
 public:
  // safeName, where needed with "-2", "-3" behind it.
  std::string nameFor(std::string_view value);

 private:
  std::unordered_set<std::string> taken_;      // in lower case
  std::unordered_map<std::string, int> next_;  // the number to try behind such a name
};

}  // namespace VeskTool

#endif
