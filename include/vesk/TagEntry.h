// SPDX-License-Identifier: MIT
#ifndef VESK_TAGENTRY_H
#define VESK_TAGENTRY_H

#include <string>
#include <utility>
#include <vector>

namespace Vesk {

// A named list of value pairs: an edge mark of a box, or a tag of a reducer. The
// library stores and writes them but does not interpret them.
struct TagEntry {
  std::string name;
  std::vector<std::pair<double, double>> values;

  friend bool operator==(const TagEntry&, const TagEntry&) = default;
};

}  // namespace Vesk

#endif
