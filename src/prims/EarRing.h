// SPDX-License-Identifier: MIT
#ifndef VESK_PRIMS_EARRING_H
#define VESK_PRIMS_EARRING_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "prims/EarClipper.h"
#include "prims/Orientation.h"

namespace Vesk::Ears {

// Of a vertex of the polygon.
using Index = std::uint32_t;
inline constexpr Index kNone = 0xffffffff;

// The order in which the sweep line meets points: by x, and by y where x is
// equal, as if the line were a little tilted.
inline bool isBefore(const PlanePoint& a, const PlanePoint& b) {
  return a.x < b.x || (a.x == b.x && a.y < b.y);
}

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

// The order in which the sweep line meets the vertices. At one and the same place
// edges end before they are continued and before others begin.
std::vector<Index> sweepOrder(const Ring& ring);

}  // namespace Vesk::Ears

#endif
