// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXPORT_GLOBALIDS_H
#define VESK_TOOLS_EXPORT_GLOBALIDS_H

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>

#include "vesk/RecordFile.h"

namespace VeskTool {

// The GlobalId for this content, 22 characters: the same for the same text.
std::string ifcGlobalId(std::string_view content);

// The GlobalIds of elements, the same in each format that names them as long as the
// elements come in the same order. Eight bytes for each element.
class GlobalIds {
 public:
  // What the GlobalId of the element is made of: header fields, counter, kind and
  // values; more for one that was there before, since no GlobalId may be there twice.
  std::string contentOf(const Vesk::RecordElement& record);

 private:
  std::unordered_set<std::uint64_t> seen_;
};

}  // namespace VeskTool

#endif
