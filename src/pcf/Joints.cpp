// SPDX-License-Identifier: MIT
#include "pcf/Joints.h"

#include <bit>

namespace Vesk::Pcf {

Joints::Joints(const Plan& plan) : plan_(plan) {
  first_.assign(std::bit_ceil(plan.points.size() + 1), kEnd);
  next_.assign(plan.points.size(), kEnd);
  for (std::uint32_t i = 0; i < plan.points.size(); ++i) {
    if (plan.points[i].role == Role::kCentre) continue;
    std::uint32_t& first = first_[bucketOf(cellOf(plan.points[i].at))];
    next_[i] = first;
    first = i;
  }
}

std::size_t Joints::bucketOf(const Cell& cell) const {
  std::uint64_t hash = 0;
  for (const std::int64_t number : cell) {
    hash = (hash ^ static_cast<std::uint64_t>(number)) * 0x9E3779B97F4A7C15U;
    hash ^= hash >> 29U;
  }
  return static_cast<std::size_t>(hash) & (first_.size() - 1);
}

}  // namespace Vesk::Pcf
