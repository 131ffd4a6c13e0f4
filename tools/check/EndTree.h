// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_CHECK_ENDTREE_H
#define VESK_TOOLS_CHECK_ENDTREE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "check/PipeEnd.h"

namespace VeskTool {

// Finds for an end the nearest of those that face it, see areFacing.
//
// A tree over six coordinates, place and direction, so that neither many ends at
// one place nor many in one direction make it look at all of them. Built once, in
// n log n; refers to the ends.
class EndTree {
 public:
  static constexpr std::uint32_t kNone = 0xffffffff;

  EndTree(const std::vector<PipeEnd>& ends, const JointOptions& options);

  // The first of equally near ones; kNone if it faces nothing.
  std::uint32_t nearestFacing(std::uint32_t end) const;

 private:
  static constexpr std::size_t kCoordinates = 6;

  using Coordinates = std::array<double, kCoordinates>;

  // A leaf has so many ends from `first` of the order; another has two children
  // from `first` of the nodes.
  struct Node {
    Coordinates low;
    Coordinates high;
    double widest = 0.0;      // largest diameter
    std::uint32_t least = 0;  // lowest index
    std::uint32_t first = 0;
    std::uint32_t count = 0;
  };

  struct Search {
    std::uint32_t end;
    std::uint32_t found;
    double distance;
  };

  static Coordinates coordinatesOf(const PipeEnd& end);
  void measure(Node& node) const;
  void split(std::uint32_t node);
  double distanceTo(const Node& node, const PipeEnd& end) const;
  bool mayFace(const Node& node, const PipeEnd& end, double distance) const;
  void search(std::uint32_t node, Search& search) const;
  void searchLeaf(const Node& node, Search& search) const;

  const std::vector<PipeEnd>& ends_;
  JointOptions options_;
  std::vector<std::uint32_t> order_;
  std::vector<Node> nodes_;
};

}  // namespace VeskTool

#endif
