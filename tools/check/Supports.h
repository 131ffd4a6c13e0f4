// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_CHECK_SUPPORTS_H
#define VESK_TOOLS_CHECK_SUPPORTS_H

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "vesk/GePoint.h"
#include "vesk/Geo.h"

namespace VeskTool {

// A support that stands where one of the same kind stood before.
struct SupportFault {
  GePoint at;
  std::uint64_t line = 0;   // of its first element
  std::uint64_t other = 0;  // and of that of the other
  std::string kind;
  double distance = 0.0;
};

// The supports of a file, as its sidecar tells them; each by the centre of gravity
// of its first element.
class Supports {
 public:
  void add(const Vesk::Geo& first, const std::string& kind, std::uint64_t line);

  // Calls take for those no further than `reach` from an earlier one, in the order
  // of lines.
  void find(double reach, const std::function<void(const SupportFault&)>& take) const;

 private:
  struct Support {
    GePoint at;
    std::uint64_t line;
    std::string kind;
  };

  std::vector<Support> supports_;
};

}  // namespace VeskTool

#endif
