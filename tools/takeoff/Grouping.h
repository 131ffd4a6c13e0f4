// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TAKEOFF_GROUPING_H
#define VESK_TOOLS_TAKEOFF_GROUPING_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "files/SidecarFile.h"
#include "takeoff/Measures.h"
#include "takeoff/Units.h"
#include "vesk/RecordFile.h"

namespace VeskTool {

// What a take-off is grouped by: one word or several with commas between, then a group
// for each of their combinations.
//
//   header group kind size     of the records; these come first
//   item spec                  the columns item-code and spec of the sidecar
//   any other, column:NAME     the column NAME of the sidecar
class Grouping {
 public:
  // Throws a Failure with Exit::kUsage for an empty word.
  explicit Grouping(const std::string& words);

  const std::string& by() const { return by_; }

  bool needsSidecar() const;

  // Of the sidecar alone: then a group is a line of a bill of materials, without rows of
  // kinds and sizes.
  bool isBill() const;

  bool isItem() const;

 private:
  friend class GroupValues;

  enum class Source { kHeader, kGroup, kKind, kSize, kColumn };
  struct Part {
    Source source;
    std::string column;
  };

  std::string by_;
  std::vector<Part> parts_;
};

// The group of each element of one file.
class GroupValues {
 public:
  // `sidecar` may be null if the grouping needs none; throws a Failure with Exit::kUsage
  // for a column that it does not have.
  GroupValues(const Grouping& grouping, const SidecarColumns* sidecar);

  // `row` is null for an element without one.
  std::string of(const Vesk::RecordElement& element, const Vesk::SidecarRow* row, const Size& size,
                 const Units& units) const;

 private:
  const Grouping& grouping_;
  std::vector<std::size_t> columns_;  // of each part
};

// Numbers in texts by their value: "60.3" before "114.3", "DN 80" before "DN 100".
struct NaturalLess {
  bool operator()(std::string_view a, std::string_view b) const;
};

}  // namespace VeskTool

#endif
