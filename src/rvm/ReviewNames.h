// SPDX-License-Identifier: MIT
#ifndef VESK_RVM_REVIEWNAMES_H
#define VESK_RVM_REVIEWNAMES_H

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

namespace Vesk {

// The header fields of a shape's elements, without blanks at their ends.
struct ReviewHeader {
  std::string f1;
  std::string f2;
  int number = 0;  // F3
};

// Gives shapes their headers by the names of their groups.
//
//   F1  the last 8 bytes of the name, whole characters of UTF-8
//   F2  two base-36 digits: which of the names with that end this is, from "01" on in
//       the order of their first use
//   F3  which shape of that name, from 1 on
//
// A name of more than 46,655 shapes goes on as if it were another one. Of more than
// 1,295 names with the same end the last ones share F2 "ZZ", and their shapes are
// counted together: no two shapes have the same header.
class ReviewNames {
 public:
  // The next shape of this name. Throws std::length_error when all headers of an
  // end are used up, after 60 million shapes.
  ReviewHeader next(std::string_view name);

  // How many names share "ZZ".
  std::size_t crowded() const { return crowded_; }

  // The last characters that fit into 8 bytes; control characters are blanks.
  static std::string endOf(std::string_view name);

 private:
  struct Counter {
    std::string f1;
    int name = 0;    // F2
    int shapes = 0;  // F3 of the last one
  };

  int takeNumber(const std::string& f1);

  std::unordered_map<std::string, Counter> counters_;  // by name
  std::unordered_map<std::string, int> ends_;          // how many names have this F1
  std::unordered_map<std::string, int> last_;          // shapes under "ZZ", by F1
  std::size_t crowded_ = 0;
};

}  // namespace Vesk

#endif
