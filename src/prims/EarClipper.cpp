#include "prims/EarClipper.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <set>
#include <utility>

#include "prims/Orientation.h"

namespace Vesk {

namespace {

using Index = std::uint32_t;
constexpr Index kNone = 0xffffffff;

// Coordinates carry half a unit of the last place each; a few of them count as
// nothing. Relative to coordinates below 1.
constexpr double kRounding = 0x1p-48;

// The part of the area that triangles may cover twice or beside the polygon.
constexpr double kMaxInverted = 0x1p-10;

// The order in which the sweep line meets points: by x, and by y where x is
// equal, as if the line were a little tilted.
bool isBefore(const PlanePoint& a, const PlanePoint& b) {
  return a.x < b.x || (a.x == b.x && a.y < b.y);
}

// ---------------------------------------------------------------------------
// From space to the plane

// The largest absolute coordinate, or one that is NaN or infinite.
double largestCoordinate(std::span<const GePoint> polygon) {
  double largest = 0.0;
  for (const GePoint& p : polygon) {
    for (const double c : {p.x, p.y, p.z}) {
      if (!std::isfinite(c)) return c;
      largest = std::max(largest, std::abs(c));
    }
  }
  return largest;
}

// The power of two that brings the coordinates below 1 without rounding.
double scaleFor(double largest) {
  int exponent = 0;
  (void)std::frexp(largest, &exponent);
  return std::ldexp(1.0, std::clamp(-exponent, -1000, 1000));
}

// Looks at the polygon along the axis nearest to its normal, from the side on
// which it turns to the left. Leaving out a coordinate moves no point: points
// on a line stay on it and points that coincide go on doing so, which a turn
// into the plane would spoil by rounding. Empty if there is no area to speak
// of.
std::vector<PlanePoint> flatten(std::span<const GePoint> polygon) {
  const double largest = largestCoordinate(polygon);
  if (!std::isfinite(largest)) return {};
  const double scale = scaleFor(largest);
  const auto scaled = [&](const GePoint& p) {
    return GePoint(p.x * scale, p.y * scale, p.z * scale);
  };

  const GePoint origin = scaled(polygon.front());
  GeVector normal;
  double perimeter = 0.0;
  GeVector last = scaled(polygon.back()) - origin;
  for (const GePoint& p : polygon) {
    const GeVector v = scaled(p) - origin;
    normal += cross(last, v);
    perimeter += (v - last).length();
    last = v;
  }
  if (!(normal.length() > kRounding * perimeter)) return {};

  const double sizeX = std::abs(normal.x);
  const double sizeY = std::abs(normal.y);
  const double sizeZ = std::abs(normal.z);
  const bool alongZ = sizeZ >= sizeX && sizeZ >= sizeY;
  const bool alongY = !alongZ && sizeY >= sizeX;
  const double along = alongZ ? normal.z : alongY ? normal.y : normal.x;
  std::vector<PlanePoint> points;
  points.reserve(polygon.size());
  for (const GePoint& p : polygon) {
    const GePoint s = scaled(p);
    PlanePoint flat = alongZ   ? PlanePoint{s.x, s.y}
                      : alongY ? PlanePoint{s.z, s.x}
                               : PlanePoint{s.y, s.z};
    if (along < 0.0) std::swap(flat.x, flat.y);
    points.push_back(flat);
  }
  return points;
}

// ---------------------------------------------------------------------------
// The working polygon

// A polygon that turns to the left, as a ring from which vertices are removed.
class Ring {
 public:
  // The points must outlive the ring.
  explicit Ring(const std::vector<PlanePoint>& points)
      : points_(&points), before_(points.size()), after_(points.size()), size_(points.size()) {
    for (Index v = 0; v < points.size(); ++v) {
      before_[v] = v == 0 ? last() : v - 1;
      after_[v] = v == last() ? 0 : v + 1;
    }
  }

  const PlanePoint& at(Index v) const { return (*points_)[v]; }
  Index before(Index v) const { return before_[v]; }
  Index after(Index v) const { return after_[v]; }
  std::size_t size() const { return size_; }
  bool contains(Index v) const { return after_[v] != kNone; }

  // The vertices that are left, in the order of the polygon.
  std::vector<Index> vertices() const {
    std::vector<Index> left;
    left.reserve(size_);
    for (Index v = 0; v <= last(); ++v) {
      if (contains(v)) left.push_back(v);
    }
    return left;
  }

  double turnAt(Index v) const { return orientation(at(before(v)), at(v), at(after(v))); }

  EarTriangle earAt(Index v) const { return {before(v), v, after(v)}; }

  void remove(Index v) {
    after_[before_[v]] = after_[v];
    before_[after_[v]] = before_[v];
    after_[v] = kNone;
    --size_;
  }

  // Removes vertices that enclose nothing with their neighbours. Removing one
  // can make a new one of the vertex before or after it.
  void removeSpikes() {
    Index v = 0;
    for (std::size_t inOrder = 0; inOrder <= size_ && size_ > 2;) {
      if (!isSpike(v)) {
        ++inOrder;
        v = after(v);
        continue;
      }
      const Index previous = before(v);
      remove(v);
      v = previous;
      inOrder -= std::min<std::size_t>(inOrder, 2);
    }
  }

 private:
  Index last() const { return static_cast<Index>(points_->size() - 1); }

  bool isSpike(Index v) const {
    const PlanePoint& p = at(before(v));
    const PlanePoint& q = at(after(v));
    if (at(v) == p || at(v) == q) return true;
    return isBefore(p, at(v)) == isBefore(q, at(v)) && turnAt(v) == 0.0;
  }

  const std::vector<PlanePoint>* points_;
  std::vector<Index> before_;
  std::vector<Index> after_;  // kNone for a vertex that was removed
  std::size_t size_;
};

// How many neighbours of v the sweep line meets after v. At one and the same
// place edges end (0) before they are continued (1) and before others begin (2).
int countEdgesAhead(const Ring& ring, Index v) {
  return (isBefore(ring.at(v), ring.at(ring.before(v))) ? 1 : 0) +
         (isBefore(ring.at(v), ring.at(ring.after(v))) ? 1 : 0);
}

std::vector<Index> sweepOrder(const Ring& ring) {
  struct Event {
    PlanePoint at;
    int edgesAhead;
    Index vertex;
  };
  std::vector<Event> events;
  events.reserve(ring.size());
  for (const Index v : ring.vertices()) {
    events.push_back({ring.at(v), countEdgesAhead(ring, v), v});
  }
  std::sort(events.begin(), events.end(), [](const Event& a, const Event& b) {
    if (!(a.at == b.at)) return isBefore(a.at, b.at);
    if (a.edgesAhead != b.edgesAhead) return a.edgesAhead < b.edgesAhead;
    return a.vertex < b.vertex;
  });
  std::vector<Index> order;
  order.reserve(events.size());
  for (const Event& e : events) order.push_back(e.vertex);
  return order;
}

// ---------------------------------------------------------------------------
// The sweep

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

  // For each vertex the number of triangles it is in; empty if the line met
  // something that a polygon that does not cross itself cannot have. Where it
  // does cross itself, the numbers need not fit together.
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

// ---------------------------------------------------------------------------
// Cutting

// Cuts the ears of a known triangulation: a vertex that is in one triangle
// only is the tip of an ear. No ears if the triangles do not fit together.
//
// If all of them turn to the left, they cover each point as many times as the
// polygon winds around it, which is once inside a polygon that does not cross
// itself: they are right, however they were found. The area of those that turn
// to the right is the most that the others can cover in excess; a little of it
// comes from a crossing without weight, or from vertices that touched an edge
// before their coordinates were rounded.
std::vector<EarTriangle> cutKnownEars(Ring ring, std::vector<Index> triangleCounts) {
  if (triangleCounts.empty()) return {};
  std::vector<EarTriangle> ears;
  ears.reserve(ring.size() - 2);
  double area = 0.0;
  double invertedArea = 0.0;
  std::vector<Index> tips = ring.vertices();
  std::erase_if(tips, [&](Index v) { return triangleCounts[v] != 1; });
  for (std::size_t i = 0; i < tips.size() && ring.size() > 2; ++i) {
    const Index v = tips[i];
    const double turn = ring.turnAt(v);
    if (turn > 0.0) ears.push_back(ring.earAt(v));
    (turn > 0.0 ? area : invertedArea) += std::abs(turn);
    for (const Index w : {ring.before(v), ring.after(v)}) {
      if (triangleCounts[w] == 0) return {};
      if (--triangleCounts[w] == 1) tips.push_back(w);
    }
    ring.remove(v);
  }
  const bool isRight = ring.size() == 2 && invertedArea <= kMaxInverted * area;
  return isRight ? std::move(ears) : std::vector<EarTriangle>();
}

// Searches a polygon that may cross itself for ears, each of which is compared
// with the vertices that the sweep line meets between its corners.
class EarSearch {
 public:
  EarSearch(Ring ring, std::size_t vertexCount, const std::vector<Index>& order)
      : ring_(std::move(ring)), nextInOrder_(vertexCount, kNone), previousInOrder_(nextInOrder_) {
    for (std::size_t i = 1; i < order.size(); ++i) {
      nextInOrder_[order[i - 1]] = order[i];
      previousInOrder_[order[i]] = order[i - 1];
    }
  }

  // Cutting an ear can make ears of its neighbours, and of others only where
  // the polygon crosses itself: those are left for another round.
  std::vector<EarTriangle> cut() {
    std::vector<EarTriangle> ears;
    for (bool cutSome = true; cutSome && ring_.size() > 2;) {
      cutSome = false;
      std::vector<Index> candidates = ring_.vertices();
      for (std::size_t i = 0; i < candidates.size() && ring_.size() > 2; ++i) {
        const Index v = candidates[i];
        if (!ring_.contains(v) || !isEar(v)) continue;
        ears.push_back(ring_.earAt(v));
        candidates.push_back(ring_.before(v));
        candidates.push_back(ring_.after(v));
        remove(v);
        cutSome = true;
      }
    }
    return ears;
  }

 private:
  // Keeps the time of a wild polygon of a million vertices to a few seconds.
  static constexpr std::size_t kMaxComparisons = std::size_t{1} << 25;

  bool isEar(Index v) {
    if (++comparisons_ > kMaxComparisons || !(ring_.turnAt(v) > 0.0)) return false;
    const EarTriangle corners = ring_.earAt(v);
    const auto [first, last] = std::minmax_element(
        corners.begin(), corners.end(),
        [this](Index a, Index b) { return isBefore(ring_.at(a), ring_.at(b)); });
    for (Index w = nextInOrder_[*first]; w != kNone && w != *last; w = nextInOrder_[w]) {
      if (++comparisons_ > kMaxComparisons || isBlockedBy(v, w)) return false;
    }
    return true;
  }

  bool isBlockedBy(Index v, Index w) const {
    const PlanePoint& p = ring_.at(ring_.before(v));
    const PlanePoint& tip = ring_.at(v);
    const PlanePoint& q = ring_.at(ring_.after(v));
    const PlanePoint& other = ring_.at(w);
    if (other == p || other == tip || other == q) return false;
    if (other.y < std::min({p.y, tip.y, q.y}) || other.y > std::max({p.y, tip.y, q.y})) {
      return false;
    }
    return orientation(p, tip, other) >= 0.0 && orientation(tip, q, other) >= 0.0 &&
           orientation(q, p, other) >= 0.0;
  }

  void remove(Index v) {
    const Index previous = previousInOrder_[v];
    const Index next = nextInOrder_[v];
    if (previous != kNone) nextInOrder_[previous] = next;
    if (next != kNone) previousInOrder_[next] = previous;
    ring_.remove(v);
  }

  Ring ring_;
  std::vector<Index> nextInOrder_;
  std::vector<Index> previousInOrder_;
  std::size_t comparisons_ = 0;
};

}  // namespace

std::vector<EarTriangle> clipEars(std::span<const GePoint> polygon) {
  if (polygon.size() < 3) return {};
  if (polygon.size() == 3) {
    if (!std::isfinite(largestCoordinate(polygon))) return {};
    return {{0, 1, 2}};
  }
  const std::vector<PlanePoint> points = flatten(polygon);
  if (points.empty()) return {};

  Ring ring(points);
  ring.removeSpikes();
  if (ring.size() < 3) return {};
  const std::vector<Index> order = sweepOrder(ring);
  Sweep sweep(ring, points.size(), order);
  std::vector<EarTriangle> ears = cutKnownEars(ring, sweep.takeTriangleCounts());
  if (!ears.empty()) return ears;
  return EarSearch(std::move(ring), points.size(), order).cut();
}

}  // namespace Vesk
