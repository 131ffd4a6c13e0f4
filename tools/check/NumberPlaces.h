// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_CHECK_NUMBERPLACES_H
#define VESK_TOOLS_CHECK_NUMBERPLACES_H

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "input/RecordHeading.h"
#include "output/RecordLayout.h"
#include "vesk/RecordFile.h"

namespace VeskTool {

// Where a number of a record stands.
struct NumberPlace {
  std::size_t line = 0;    // index of the line in the element
  std::size_t column = 0;  // of its first character, from 0
  std::string_view text;   // without the blanks of its field
};

// The numbers of an element in the order in which they are written, tags, texts
// and attributes aside. `lines` are the element's, and outlive the result.
std::vector<NumberPlace> numberPlaces(const Vesk::Recs& lines, std::int32_t mode);

// Calls visit(line index, column from 0, field) for the nine-character fields of
// a mode 2 element, tags and texts aside.
template <class Visit>
void forEachField9(const Vesk::Recs& lines, Visit visit) {
  using Vesk::kNumberFieldWidth;
  std::size_t left = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string_view line = lines[i];
    if (i == 0) {
      const Vesk::RecordKind* kind = Vesk::kindOfFirstLine(line, Vesk::kFixedColumns);
      if (kind == nullptr) return;
      left = kind->mostNumbers > 0 ? kind->mostNumbers : kind->numbers;
    }
    for (std::size_t column = Vesk::kFixedColumnsLayout.data;
         left > 0 && column + kNumberFieldWidth <= line.size(); column += kNumberFieldWidth) {
      visit(i, column, line.substr(column, kNumberFieldWidth));
      --left;
    }
  }
}

}  // namespace VeskTool

#endif
