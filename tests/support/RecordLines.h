// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_SUPPORT_RECORDLINES_H
#define VESK_TESTS_SUPPORT_RECORDLINES_H

#include <cstdint>
#include <initializer_list>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "output/Output.h"
#include "vesk/Geo.h"

namespace VeskTest {

// Lines as tests read and write them: the header text, which says nothing about
// a primitive, is replaced by bars around the counter.
//
//   60|000|CYL    0.000 ...      mode 2: line number, counter, keyword and data
//   00|000|c 0 0 0,0 0 10,2      mode 3: the same
//
// A line whose header text is not the one that the assembler was given starts
// with "header?" and stands whole.
using Lines = std::vector<std::string>;

// An assembler as an open file has it: the mode's line size, a prefix of 21
// characters (mode 2) or 19 (mode 3) with this counter, no attributes.
Vesk::Output assembler(std::int32_t mode, std::string_view counter = "000");

// The lines finished so far, and the line being built.
Lines shown(const Vesk::Output& out);

// What `geo` writes through a fresh assembler.
Lines linesOf(const Vesk::Geo& geo, std::int32_t mode);

// The same through the given assembler.
Lines linesOf(const Vesk::Geo& geo, Vesk::Output& out);

// Numbers in the nine-character form, as the C library prints them. Only for
// values of up to four digits before the point, which have three decimals.
std::string fields(std::initializer_list<double> values);

// The numbers of the nine-character fields after a shown line's keyword of
// three letters.
std::vector<double> numbersOf(const std::string& shownLine);

// The message of the ExceptionInfo that writing throws; "nothing" if none.
std::string writeFailure(const Vesk::Geo& geo, Vesk::Output& out);

// One row of the tables of records: these lines come from this primitive.
template <class Primitive>
struct RecordCase {
  const char* name;
  Primitive primitive;
  std::int32_t mode;
  Lines lines;

  friend std::ostream& operator<<(std::ostream& os, const RecordCase& row) {
    return os << row.name << ", mode " << row.mode;
  }
};

}  // namespace VeskTest

#endif
