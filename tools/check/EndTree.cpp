// SPDX-License-Identifier: MIT
#include "check/EndTree.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

namespace VeskTool {
namespace {

constexpr std::uint32_t kLeaf = 8;

// So wide a box of directions counts as much as a box one reach wide: the sine of
// the angle within which ends face each other.
constexpr double kDirectionScale = 0.087;

// More than rounding can make of the product of two unit vectors.
constexpr double kSlack = 1e-12;

// How far `v` is below `low` or above `high`.
double outside(double v, double low, double high) {
  if (v < low) return low - v;
  return v > high ? v - high : 0.0;
}

}  // namespace

EndTree::EndTree(const std::vector<PipeEnd>& ends, const JointOptions& options)
    : ends_(ends), options_(options), order_(ends.size()) {
  std::iota(order_.begin(), order_.end(), 0);
  if (ends.empty()) return;
  nodes_.reserve(ends.size() / 2);
  nodes_.push_back({});
  nodes_[0].count = static_cast<std::uint32_t>(ends.size());
  // Children stand behind their parents, so that the list is its own stack.
  for (std::uint32_t i = 0; i < nodes_.size(); ++i) split(i);
}

EndTree::Coordinates EndTree::coordinatesOf(const PipeEnd& end) {
  return {end.point.x, end.point.y, end.point.z, end.outward.x, end.outward.y, end.outward.z};
}

void EndTree::measure(Node& node) const {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  node.low.fill(kInfinity);
  node.high.fill(-kInfinity);
  node.least = kNone;
  for (std::uint32_t i = node.first; i < node.first + node.count; ++i) {
    const Coordinates at = coordinatesOf(ends_[order_[i]]);
    for (std::size_t k = 0; k < kCoordinates; ++k) {
      node.low[k] = std::min(node.low[k], at[k]);
      node.high[k] = std::max(node.high[k], at[k]);
    }
    node.widest = std::max(node.widest, ends_[order_[i]].diameter);
    node.least = std::min(node.least, order_[i]);
  }
}

// In two halves across the coordinate in which the node is widest.
void EndTree::split(std::uint32_t index) {
  measure(nodes_[index]);
  Node node = nodes_[index];
  if (node.count <= kLeaf) return;
  std::size_t widest = 0;
  double most = -1.0;
  for (std::size_t k = 0; k < kCoordinates; ++k) {
    const double scale = k < 3 ? options_.reach : kDirectionScale;
    const double width = (node.high[k] - node.low[k]) / scale;
    if (width > most) {
      most = width;
      widest = k;
    }
  }
  const auto begin = order_.begin() + node.first;
  const std::uint32_t half = node.count / 2;
  std::nth_element(begin, begin + half, begin + node.count, [&](std::uint32_t a, std::uint32_t b) {
    return std::pair(coordinatesOf(ends_[a])[widest], a) <
           std::pair(coordinatesOf(ends_[b])[widest], b);
  });
  Node left;
  left.first = node.first;
  left.count = half;
  Node right;
  right.first = node.first + half;
  right.count = node.count - half;
  nodes_[index].first = static_cast<std::uint32_t>(nodes_.size());
  nodes_[index].count = 0;
  nodes_.push_back(left);
  nodes_.push_back(right);
}

// Never above that of an end inside: each step rounds upwards no more than the same
// step for such an end.
double EndTree::distanceTo(const Node& node, const PipeEnd& end) const {
  return GeVector(outside(end.point.x, node.low[0], node.high[0]),
                  outside(end.point.y, node.low[1], node.high[1]),
                  outside(end.point.z, node.low[2], node.high[2]))
      .length();
}

bool EndTree::mayFace(const Node& node, const PipeEnd& end, double distance) const {
  if (distance > facingReach(end.diameter, node.widest, options_)) return false;
  const Coordinates own = coordinatesOf(end);
  double least = 0.0;
  for (std::size_t k = 3; k < kCoordinates; ++k)
    least += std::min(own[k] * node.low[k], own[k] * node.high[k]);
  return least <= -kFacingCosine + kSlack;
}

std::uint32_t EndTree::nearestFacing(std::uint32_t end) const {
  Search state{end, kNone, std::numeric_limits<double>::infinity()};
  if (!nodes_.empty()) search(0, state);
  return state.found;
}

// As deep as the logarithm of the number of ends.
void EndTree::search(std::uint32_t index, Search& state) const {
  const Node& node = nodes_[index];
  if (node.count > 0) return searchLeaf(node, state);
  const PipeEnd& end = ends_[state.end];
  std::array<std::pair<double, std::uint32_t>, 2> children;
  for (std::uint32_t k = 0; k < 2; ++k)
    children[k] = {distanceTo(nodes_[node.first + k], end), node.first + k};
  const auto isSooner = [&](const auto& a, const auto& b) {
    return std::pair(a.first, nodes_[a.second].least) < std::pair(b.first, nodes_[b.second].least);
  };
  if (isSooner(children[1], children[0])) std::swap(children[0], children[1]);
  for (const auto& [distance, child] : children) {
    const bool isLater = distance > state.distance ||
                         (distance == state.distance && nodes_[child].least > state.found);
    if (!isLater && mayFace(nodes_[child], end, distance)) search(child, state);
  }
}

void EndTree::searchLeaf(const Node& node, Search& state) const {
  for (std::uint32_t i = node.first; i < node.first + node.count; ++i) {
    const std::uint32_t other = order_[i];
    double distance = 0.0;
    if (!areFacing(ends_[state.end], ends_[other], options_, distance)) continue;
    if (distance > state.distance || (distance == state.distance && other > state.found)) continue;
    state.distance = distance;
    state.found = other;
  }
}

}  // namespace VeskTool
