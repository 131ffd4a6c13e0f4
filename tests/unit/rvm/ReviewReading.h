// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_RVM_REVIEWREADING_H
#define VESK_TESTS_RVM_REVIEWREADING_H

#include <string>
#include <string_view>
#include <vector>

#include "rvm/ReviewImport.h"

namespace VeskTest {

// What an import has made, as text.
struct ReviewReading {
  std::vector<std::string> elements;  // records in the token style, without headers
  std::vector<std::string> headers;   // "F1 F2 F3" of each element
  std::vector<std::string> rows;      // "F1 F2 F3 path kind fate elements"
  std::vector<std::string> values;    // of each row: "key=value key=value"
  double volume = 0.0;                // of all elements, sizes without signs
  double area = 0.0;                  // of all faces
  Vesk::Extents box;
  Vesk::ReviewCounts counts;
  std::string fault;  // empty if there was none

  std::string lines() const;  // of the elements, each with a line end
};

// Gives the bytes in pieces of this size.
Vesk::ReadBytes bytesOf(std::string_view text, std::size_t piece = 1 << 16);

ReviewReading readReviewText(std::string_view bytes, const Vesk::ReviewOptions& options = {},
                             std::string_view attributes = {}, std::size_t piece = 1 << 16);

}  // namespace VeskTest

#endif
