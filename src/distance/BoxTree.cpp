// SPDX-License-Identifier: MIT
#include "distance/BoxTree.h"

#include <algorithm>
#include <array>

namespace Vesk {
namespace {

constexpr std::uint32_t kMostInLeaf = 4;

std::array<double, 3> middleOf(const Extents& box) {
  return {box.min.x / 2.0 + box.max.x / 2.0, box.min.y / 2.0 + box.max.y / 2.0,
          box.min.z / 2.0 + box.max.z / 2.0};
}

bool hasPoint(const Extents& box) {
  return box.min.x <= box.max.x && box.min.y <= box.max.y && box.min.z <= box.max.z;
}

}  // namespace

BoxTree::BoxTree(std::span<const Extents> boxes) : boxes_(boxes.begin(), boxes.end()) {
  for (std::uint32_t i = 0; i < boxes_.size(); ++i) {
    if (hasPoint(boxes_[i])) order_.push_back(i);
  }
  if (order_.empty()) return;
  nodes_.reserve(order_.size());
  nodes_.push_back({{}, 0, static_cast<std::uint32_t>(order_.size())});
  for (std::uint32_t i = 0; i < nodes_.size(); ++i) split(i);
}

// Halves the boxes of a node where their middles spread most.
void BoxTree::split(std::uint32_t node) {
  const std::uint32_t first = nodes_[node].first;
  const std::uint32_t count = nodes_[node].count;
  Extents box;
  std::array<double, 3> low{};
  std::array<double, 3> high{};
  for (std::uint32_t i = first; i < first + count; ++i) {
    const Extents& each = boxes_[order_[i]];
    box.add(each.min).add(each.max);
    const std::array<double, 3> middle = middleOf(each);
    for (std::size_t k = 0; k < 3; ++k) {
      low[k] = i == first ? middle[k] : std::min(low[k], middle[k]);
      high[k] = i == first ? middle[k] : std::max(high[k], middle[k]);
    }
  }
  nodes_[node].box = box;
  if (count <= kMostInLeaf) return;
  std::size_t axis = 0;
  for (std::size_t k = 1; k < 3; ++k) {
    if (high[k] - low[k] > high[axis] - low[axis]) axis = k;
  }
  const auto begin = order_.begin() + first;
  const std::uint32_t half = count / 2;
  std::nth_element(begin, begin + half, begin + count, [&](std::uint32_t a, std::uint32_t b) {
    const double x = middleOf(boxes_[a])[axis];
    const double y = middleOf(boxes_[b])[axis];
    return x < y || (x == y && a < b);
  });
  const auto child = static_cast<std::uint32_t>(nodes_.size());
  nodes_.push_back({{}, first, half});
  nodes_.push_back({{}, first + half, count - half});
  nodes_[node].first = child;
  nodes_[node].count = 0;
}

}  // namespace Vesk
