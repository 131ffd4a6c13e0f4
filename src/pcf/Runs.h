// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_RUNS_H
#define VESK_PCF_RUNS_H

#include <array>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "pcf/Plan.h"

namespace Vesk::Pcf {

// A straight piece of pipe.
struct Run {
  GePoint from;
  GePoint to;
  double outside = 0;
  std::uint32_t component = 0;
};

// The pipes of a file, and which of them a place lies in.
class Runs {
 public:
  explicit Runs(const Plan& plan);

  // The pipe whose axis is nearest to the place, which lies inside it or within 10 mm
  // of its surface; none if there is none.
  std::optional<Run> runAt(const GePoint& at) const;

  // Whether pipes that follow each other run through both places on their axis.
  bool isCovered(const GePoint& from, const GePoint& to) const;

 private:
  using Cell = std::array<std::int64_t, 3>;
  struct CellHash {
    std::size_t operator()(const Cell& cell) const;
  };

  static Cell cellOf(const GePoint& at);
  void add(std::uint32_t index);
  template <class Visit>
  void visit(const GePoint& at, Visit visit) const;

  std::vector<Run> runs_;
  std::unordered_map<Cell, std::vector<std::uint32_t>, CellHash> cells_;
  std::vector<std::uint32_t> long_;  // too long for cells
};

}  // namespace Vesk::Pcf

#endif
