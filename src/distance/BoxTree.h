// SPDX-License-Identifier: MIT
#ifndef VESK_DISTANCE_BOXTREE_H
#define VESK_DISTANCE_BOXTREE_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "vesk/Extents.h"

namespace Vesk {

// Finds which of many boxes are near to a box. Built once, in n log n; 48 bytes and
// a half for each box. Boxes without a point (min above max, NaN) are never near.
class BoxTree {
 public:
  BoxTree() = default;
  explicit BoxTree(std::span<const Extents> boxes);

  // Calls visit(index) for the boxes that touch `box` blown up by `margin` to all
  // sides, in no particular order, until it returns false. False if it did.
  template <class Visit>
  bool forEachNear(const Extents& box, double margin, Visit visit) const {
    if (nodes_.empty()) return true;
    const Extents wanted(box.min - GeVector(margin, margin, margin),
                         box.max + GeVector(margin, margin, margin));
    std::vector<std::uint32_t> open{0};
    while (!open.empty()) {
      const Node& node = nodes_[open.back()];
      open.pop_back();
      if (!isNear(node.box, wanted)) continue;
      if (node.count == 0) {
        open.push_back(node.first);
        open.push_back(node.first + 1);
        continue;
      }
      for (std::uint32_t i = node.first; i < node.first + node.count; ++i) {
        if (isNear(boxes_[order_[i]], wanted) && !visit(order_[i])) return false;
      }
    }
    return true;
  }

 private:
  // A leaf has so many boxes from `first` of the order; another has two children
  // from `first` of the nodes.
  struct Node {
    Extents box;
    std::uint32_t first = 0;
    std::uint32_t count = 0;
  };

  static bool isNear(const Extents& a, const Extents& b) {
    return a.min.x <= b.max.x && a.max.x >= b.min.x && a.min.y <= b.max.y && a.max.y >= b.min.y &&
           a.min.z <= b.max.z && a.max.z >= b.min.z;
  }

  void split(std::uint32_t node);

  std::vector<Extents> boxes_;
  std::vector<std::uint32_t> order_;
  std::vector<Node> nodes_;
};

}  // namespace Vesk

#endif
