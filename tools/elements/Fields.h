// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_FIELDS_H
#define VESK_TOOLS_FIELDS_H

#include <cstddef>
#include <string>
#include <vector>

#include "vesk/Recs.h"

namespace VeskTool {

// A piece of a record line and what it stands for.
struct Field {
  std::size_t line;    // index into the lines
  std::size_t column;  // from 1, in bytes
  std::string text;    // with its blanks; never empty
  std::string meaning;
};

// Takes the lines of one element apart, also of one that can't be read.
//
//   60    A1  DUCT-7  008CYL    1.000    2.000 ...
//   1-2 '60' line number, 3-6 '    ' F6, ... 25-33 '    1.000' start x
//
// Separators are in no field. Numbers that no name is left for are "further".
std::vector<Field> fieldsOf(const Vesk::Recs& lines, int mode);

}  // namespace VeskTool

#endif
