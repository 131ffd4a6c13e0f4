// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_JOINTS_H
#define VESK_PCF_JOINTS_H

#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

#include "pcf/Plan.h"

namespace Vesk::Pcf {

// Two places within this distance (millimetres) are one.
inline constexpr double kSamePlace = 1;

// Which points of a file lie near a place: all but centres.
class Joints {
 public:
  // The plan outlives it and keeps its points where they are.
  explicit Joints(const Plan& plan);

  // Calls visit(point) for every point within the radius (at most 20 mm), in no order.
  template <class Visit>
  void visit(const GePoint& at, double radius, Visit visit) const {
    const Cell low = cellOf({at.x - radius, at.y - radius, at.z - radius});
    const Cell high = cellOf({at.x + radius, at.y + radius, at.z + radius});
    for (std::int64_t x = low[0]; x <= high[0]; ++x) {
      for (std::int64_t y = low[1]; y <= high[1]; ++y) {
        for (std::int64_t z = low[2]; z <= high[2]; ++z) visitCell({x, y, z}, at, radius, visit);
      }
    }
  }

 private:
  using Cell = std::array<std::int64_t, 3>;
  static constexpr double kCellSize = 20;
  static constexpr std::uint32_t kEnd = 0xFFFFFFFFU;

  static Cell cellOf(const GePoint& at) {
    return {static_cast<std::int64_t>(std::floor(at.x / kCellSize)),
            static_cast<std::int64_t>(std::floor(at.y / kCellSize)),
            static_cast<std::int64_t>(std::floor(at.z / kCellSize))};
  }
  std::size_t bucketOf(const Cell& cell) const;

  template <class Visit>
  void visitCell(const Cell& cell, const GePoint& at, double radius, Visit& visit) const {
    for (std::uint32_t i = first_[bucketOf(cell)]; i != kEnd; i = next_[i]) {
      const Point& point = plan_.points[i];
      // Other cells share the bucket.
      if (distance(point.at, at) <= radius && cellOf(point.at) == cell) visit(point);
    }
  }

  const Plan& plan_;
  std::vector<std::uint32_t> first_;  // by bucket
  std::vector<std::uint32_t> next_;   // by point
};

}  // namespace Vesk::Pcf

#endif
