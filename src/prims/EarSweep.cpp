// SPDX-License-Identifier: MIT
#include "prims/EarSweep.h"

#include <array>
#include <iterator>
#include <set>
#include <utility>

namespace Vesk::Ears {
namespace {

// Triangulates a ring while a line sweeps over it from left to right, after
// Hertel and Mehlhorn.
//
// The part of the line inside the polygon consists of gaps. A gap lies between
// two edges, one below and one above. On its left is a chain of vertices from
// the left end of one edge to the left end of the other; everything to the left
// of the chain is triangulated already. The vertex of the chain that was met
// last is the hub. From there the chain runs to the left on both sides and
// bulges into the gap.
//
//        -------------+-----------         What the line meets next is the
//                      \                   right end of one of the two edges,
//                       \       gap        or a vertex between them. It sees
//                        hub        |      the hub and everything before it,
//                       /           |      and perhaps a few vertices beyond:
//                      /            |      with each two neighbours it makes a
//            ---------+-------------|-     triangle, and the inner ones leave
//                                 line     the chain. It is the new hub.
//
//   right end of one edge, another follows   the gap goes on
//   edges begin, inside between them         a gap begins
//   edges begin, inside around them          a gap is split in two at its hub
//   edges end, inside between them           a gap ends
//   edges end, inside around them            two gaps become one
//
// A vertex enters chains at most three times and leaves each once, and only a
// gap that begins is searched for in their ordered set: n log n altogether.
//
// An edge is named by the vertex at which it starts in the sense of the ring.
// One that leads to the right has a gap above it, one that leads to the left
// has a gap below.
class Sweep {
 public:
  // Both must outlive the sweep; `order` is the sweep order of the ring.
  Sweep(const Ring& ring, std::size_t vertexCount, const std::vector<Index>& order)
      : ring_(ring), gapOfEdge_(vertexCount, kNone), triangleCounts_(vertexCount, 0) {
    nodes_.reserve(order.size() * 2);
    for (std::size_t i = 0; i < order.size() && valid_; ++i) meet(order[i]);
  }
  Sweep(const Sweep&) = delete;
  Sweep& operator=(const Sweep&) = delete;

  // As the function below gives them.
  std::vector<Index> takeTriangleCounts() {
    if (!valid_) triangleCounts_.clear();
    return std::move(triangleCounts_);
  }

 private:
  enum Side : std::size_t { kBelow = 0, kAbove = 1 };
  static Side opposite(Side side) { return side == kBelow ? kAbove : kBelow; }

  // One place in a chain.
  struct Node {
    Index vertex;
    std::array<Index, 2> neighbour;  // by side
  };

  // Gaps are compared only while one of them is put into the set, the newest.
  // Edges that cross can contradict each other; the place is then any.
  struct IsLower {
    const Sweep* sweep;
    bool operator()(Index a, Index b) const {
      return a < b ? sweep->beginsAbove(b, a) : !sweep->beginsAbove(a, b);
    }
  };
  using GapSet = std::multiset<Index, IsLower>;

  struct Gap {
    std::array<Index, 2> edge;      // by side
    std::array<Index, 2> chainEnd;  // by side: a node
    Index hub;                      // a node
    GapSet::iterator place;
  };

  // Whether the gap that begins now lies above the lower edge of another. If
  // the vertex at which it begins lies on that edge, the end of its own lower
  // edge decides; that cannot lie there too, or the gaps would overlap.
  bool beginsAbove(Index newest, Index other) const {
    const Index v = gaps_[newest].edge[kBelow];
    const Index from = gaps_[other].edge[kBelow];
    for (const Index w : {v, ring_.after(v)}) {
      const double side = orientation(ring_.at(from), ring_.at(ring_.after(from)), ring_.at(w));
      if (side != 0.0) return side > 0.0;
    }
    return false;
  }

  void meet(Index v) {
    const bool entersFromLeft = isBefore(ring_.at(ring_.before(v)), ring_.at(v));
    const bool leavesToRight = isBefore(ring_.at(v), ring_.at(ring_.after(v)));
    if (entersFromLeft && leavesToRight) return passAlong(kBelow, ring_.before(v), v, v);
    if (!entersFromLeft && !leavesToRight) return passAlong(kAbove, v, ring_.before(v), v);
    if (leavesToRight) return ring_.turnAt(v) > 0.0 ? beginGap(v) : splitGap(v);
    const Index upper = gapOfEdge_[ring_.before(v)];
    const Index lower = gapOfEdge_[v];
    return upper == lower ? endGap(v, lower) : mergeGaps(v, lower, upper);
  }

  // An edge of a gap ends at v and another one continues it.
  void passAlong(Side side, Index endingEdge, Index nextEdge, Index v) {
    const Index gap = gapOfEdge_[endingEdge];
    setEdge(gap, side, nextEdge);
    append(gap, side, v);
  }

  void beginGap(Index v) {
    const Index node = addNode(v);
    const Index gap = addGap(v, {node, node}, node);
    setEdge(gap, kAbove, ring_.before(v));
  }

  // The chain comes apart at the hub, which stays in both halves.
  void splitGap(Index v) {
    const Index upper = addGap(v, {kNone, kNone}, kNone);
    valid_ = gaps_[upper].place != lowestFirst_.begin();
    if (!valid_) return;
    const Index lower = *std::prev(gaps_[upper].place);
    setEdge(upper, kAbove, gaps_[lower].edge[kAbove]);
    setEdge(lower, kAbove, ring_.before(v));

    const Index hub = gaps_[lower].hub;
    const Index copy = addNode(nodes_[hub].vertex);
    const Index above = nodes_[hub].neighbour[kAbove];
    const Index top = gaps_[lower].chainEnd[kAbove];
    if (above != kNone) link(copy, above);
    gaps_[lower].chainEnd[kAbove] = hub;
    gaps_[upper].chainEnd = {copy, top == hub ? copy : top};
    gaps_[upper].hub = copy;
    append(lower, kAbove, v);
    append(upper, kBelow, v);
  }

  void mergeGaps(Index v, Index lower, Index upper) {
    append(lower, kAbove, v);
    append(upper, kBelow, v);
    const Index hub = gaps_[lower].hub;
    link(hub, nodes_[gaps_[upper].hub].neighbour[kAbove]);
    gaps_[lower].chainEnd[kAbove] = gaps_[upper].chainEnd[kAbove];
    setEdge(lower, kAbove, gaps_[upper].edge[kAbove]);
    lowestFirst_.erase(gaps_[upper].place);
  }

  // Both edges end at v, which sees the whole chain.
  void endGap(Index v, Index gap) {
    gaps_[gap].hub = gaps_[gap].chainEnd[kAbove];
    append(gap, kBelow, v);
    lowestFirst_.erase(gaps_[gap].place);
  }

  // Makes v the end of a gap's chain, and its hub.
  void append(Index gap, Side side, Index v) {
    const Side inward = opposite(side);
    Index end = gaps_[gap].chainEnd[side];
    bool beyondHub = end == gaps_[gap].hub;
    for (Index next = nodes_[end].neighbour[inward]; next != kNone;
         next = nodes_[end].neighbour[inward]) {
      if (beyondHub && !sees(v, side, end, next)) break;
      for (const Index w : {v, nodes_[end].vertex, nodes_[next].vertex}) ++triangleCounts_[w];
      end = next;
      beyondHub = beyondHub || end == gaps_[gap].hub;
    }
    const Index node = addNode(v);
    if (side == kBelow) {
      link(node, end);
    } else {
      link(end, node);
    }
    nodes_[node].neighbour[side] = kNone;
    gaps_[gap].chainEnd[side] = node;
    gaps_[gap].hub = node;
  }

  // Whether v, about to follow `end` on the given side, sees past it to `next`.
  // It does if another vertex at the same place would stand in between.
  bool sees(Index v, Side side, Index end, Index next) const {
    const PlanePoint& here = ring_.at(v);
    const PlanePoint& middle = ring_.at(nodes_[end].vertex);
    const PlanePoint& there = ring_.at(nodes_[next].vertex);
    if (middle == here || middle == there) return true;
    const double turn = orientation(here, there, middle);
    return side == kBelow ? turn > 0.0 : turn < 0.0;
  }

  Index addNode(Index vertex) {
    nodes_.push_back({vertex, {kNone, kNone}});
    return static_cast<Index>(nodes_.size() - 1);
  }

  void link(Index lower, Index upper) {
    nodes_[lower].neighbour[kAbove] = upper;
    nodes_[upper].neighbour[kBelow] = lower;
  }

  // Begins a gap over the edge that starts at v.
  Index addGap(Index v, std::array<Index, 2> chainEnd, Index hub) {
    const Index gap = static_cast<Index>(gaps_.size());
    gaps_.push_back({{v, kNone}, chainEnd, hub, {}});
    setEdge(gap, kBelow, v);
    gaps_[gap].place = lowestFirst_.insert(gap);
    return gap;
  }

  void setEdge(Index gap, Side side, Index edge) {
    gaps_[gap].edge[side] = edge;
    gapOfEdge_[edge] = gap;
  }

  const Ring& ring_;
  std::vector<Index> gapOfEdge_;
  std::vector<Index> triangleCounts_;
  std::vector<Node> nodes_;
  std::vector<Gap> gaps_;
  GapSet lowestFirst_{IsLower{this}};
  bool valid_ = true;
};

}  // namespace

std::vector<Index> triangleCounts(const Ring& ring, std::size_t vertexCount,
                                  const std::vector<Index>& order) {
  return Sweep(ring, vertexCount, order).takeTriangleCounts();
}

}  // namespace Vesk::Ears
