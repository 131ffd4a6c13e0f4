// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_LINEHEADERS_H
#define VESK_PCF_LINEHEADERS_H

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "pcf/Plan.h"

namespace Vesk::Pcf {

// The header fields of a component's elements. No two components of an import have
// the same three.
struct LineHeader {
  std::string f1;  // at most 8 bytes
  std::string f2;  // two characters
  int number = 0;  // 1 to 46655
};

// Gives out headers.
//
//   F1  the first eight bytes of the PIPELINE-REFERENCE, blank without one
//   F2  two digits to base 36: the place of the line among all of the import, 01 for
//       the first; 00 for what stands in the first file without a reference
//   F3  the place of the component in its file
//
// A line that stands in two files has an F2 for each; behind 46,655 components of a
// file F3 starts again at 1, with a new F2. F2 passes over what F1 has used; when
// nothing is left for an F1, it ends in "~" and two digits: "P-100~01".
class LineHeaders {
 public:
  // Gives the lines of a file their F2, in their order.
  void beginFile(const Plan& plan);

  // For the component with this index (from 0) of a line (kNoPipeline: of none).
  LineHeader headerOf(std::size_t index, std::uint32_t pipeline);

  static constexpr std::size_t kLargestNumber = 46655;

 private:
  static constexpr std::size_t kGroups = std::size_t{36} * 36;
  struct Fields {
    std::string f1;
    std::string f2;
  };

  Fields fieldsFor(std::string_view reference, bool isFirstWithout);
  const Fields& fieldsOf(std::uint32_t pipeline);

  std::unordered_map<std::string, std::bitset<kGroups>> used_;  // by F1
  std::size_t next_ = 1;
  bool isFirstFile_ = true;
  std::vector<std::string> references_;
  std::unordered_map<std::uint32_t, Fields> fields_;  // of this block of components
  std::size_t block_ = 0;
};

}  // namespace Vesk::Pcf

#endif
