// SPDX-License-Identifier: MIT
#include "prims/EarSearch.h"

#include <algorithm>
#include <utility>

namespace Vesk::Ears {
namespace {

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

std::vector<EarTriangle> searchEars(Ring ring, std::size_t vertexCount,
                                    const std::vector<Index>& order) {
  return EarSearch(std::move(ring), vertexCount, order).cut();
}

}  // namespace Vesk::Ears
