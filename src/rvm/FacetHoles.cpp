// SPDX-License-Identifier: MIT
#include "rvm/FacetHoles.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace Vesk {
namespace {

constexpr std::size_t kMost = 200'000'000;  // holes times corners

using Way = std::vector<std::size_t>;

class Joiner {
 public:
  explicit Joiner(std::span<const PlanePoint> points) : points_(points) {}

  double areaOf(const Way& way) const {
    double sum = 0.0;
    const PlanePoint& origin = at(way[0]);
    for (std::size_t i = 0; i < way.size(); ++i) {
      const PlanePoint& a = at(way[i]);
      const PlanePoint& b = at(way[(i + 1) % way.size()]);
      sum += (a.x - origin.x) * (b.y - origin.y) - (b.x - origin.x) * (a.y - origin.y);
    }
    return sum;
  }

  // From the corner of the hole that is furthest to the right. False if it sees
  // no edge of the outline there.
  bool join(Way& way, const Way& hole) const {
    const auto right = std::max_element(hole.begin(), hole.end(),
                                        [&](auto a, auto b) { return at(a).x < at(b).x; });
    const std::size_t bridge = bridgeOf(way, at(*right));
    if (bridge == way.size()) return false;
    Way detour(right, hole.end());
    detour.insert(detour.end(), hole.begin(), right + 1);
    detour.push_back(way[bridge]);
    way.insert(way.begin() + static_cast<std::ptrdiff_t>(bridge) + 1, detour.begin(), detour.end());
    return true;
  }

  double furthestRight(const Way& hole) const {
    double x = -std::numeric_limits<double>::infinity();
    for (const std::size_t i : hole) x = std::max(x, at(i).x);
    return x;
  }

 private:
  const PlanePoint& at(std::size_t i) const { return points_[i]; }

  // The place in the way, which turns left, from which `p` is seen.
  std::size_t bridgeOf(const Way& way, const PlanePoint& p) const {
    std::size_t best = way.size();
    double nearest = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < way.size(); ++i) {
      const std::size_t j = (i + 1) % way.size();
      const PlanePoint& a = at(way[i]);
      const PlanePoint& b = at(way[j]);
      // The inside is on the left of an edge that goes up.
      if (!(a.y <= p.y && p.y <= b.y && a.y < b.y)) continue;
      const double x = a.x + (p.y - a.y) * (b.x - a.x) / (b.y - a.y);
      if (x < p.x || x >= nearest) continue;
      nearest = x;
      best = a.x > b.x ? i : j;
    }
    if (best == way.size()) return best;
    return nearestSeen(way, p, {nearest, p.y}, best);
  }

  // Of the corners inside the triangle of p, what the ray hits, and the end of the
  // edge that it hits, the one nearest to the ray; else that end itself.
  std::size_t nearestSeen(const Way& way, const PlanePoint& p, const PlanePoint& hit,
                          std::size_t end) const {
    const PlanePoint& corner = at(way[end]);
    std::size_t best = way.size();
    double bestSlope = std::numeric_limits<double>::infinity();
    double bestX = std::numeric_limits<double>::infinity();
    const bool isBelow = corner.y < p.y;
    for (std::size_t i = 0; i < way.size(); ++i) {
      const PlanePoint& q = at(way[i]);
      if (q.x < p.x || !isInside(q, p, hit, corner, isBelow) || !isLocallyInside(way, i, p)) {
        continue;
      }
      const double run = q.x - p.x;
      const double rise = q.y > p.y ? q.y - p.y : p.y - q.y;
      const double slope = run > 0.0 ? rise / run : rise > 0.0 ? bestSlope : 0.0;
      if (slope < bestSlope || (slope == bestSlope && q.x < bestX)) {
        best = i;
        bestSlope = slope;
        bestX = q.x;
      }
    }
    return best == way.size() ? end : best;
  }

  static bool isInside(const PlanePoint& q, const PlanePoint& p, const PlanePoint& hit,
                       const PlanePoint& corner, bool isBelow) {
    const PlanePoint& second = isBelow ? corner : hit;
    const PlanePoint& third = isBelow ? hit : corner;
    return orientation(p, second, q) >= 0.0 && orientation(second, third, q) >= 0.0 &&
           orientation(third, p, q) >= 0.0;
  }

  // Whether p lies between both edges at this corner, on the inner side.
  bool isLocallyInside(const Way& way, std::size_t i, const PlanePoint& p) const {
    const PlanePoint& before = at(way[(i + way.size() - 1) % way.size()]);
    const PlanePoint& q = at(way[i]);
    const PlanePoint& after = at(way[(i + 1) % way.size()]);
    const bool leftOfBefore = orientation(before, q, p) >= 0.0;
    const bool leftOfAfter = orientation(q, after, p) >= 0.0;
    return orientation(before, q, after) > 0.0 ? leftOfBefore && leftOfAfter
                                               : leftOfBefore || leftOfAfter;
  }

  std::span<const PlanePoint> points_;
};

Way contourOf(std::size_t from, std::size_t to) {
  Way way(to - from);
  std::iota(way.begin(), way.end(), from);
  return way;
}

}  // namespace

std::vector<std::size_t> joinHoles(std::span<const PlanePoint> points,
                                   std::span<const std::size_t> contourEnds) {
  if (contourEnds.empty() || contourEnds[0] == 0) return {};
  const Joiner joiner(points);
  Way way = contourOf(0, contourEnds[0]);
  const bool turnsRight = joiner.areaOf(way) < 0.0;
  if (turnsRight) std::reverse(way.begin(), way.end());
  std::vector<Way> holes;
  for (std::size_t c = 1; c < contourEnds.size(); ++c) {
    Way hole = contourOf(contourEnds[c - 1], contourEnds[c]);
    if (hole.size() < 3) continue;
    if (joiner.areaOf(hole) > 0.0) std::reverse(hole.begin(), hole.end());
    holes.push_back(std::move(hole));
  }
  if (holes.size() > kMost / points.size()) return {};
  std::stable_sort(holes.begin(), holes.end(), [&](const Way& a, const Way& b) {
    return joiner.furthestRight(a) > joiner.furthestRight(b);
  });
  for (const Way& hole : holes) {
    if (!joiner.join(way, hole)) return {};
  }
  if (turnsRight) std::reverse(way.begin(), way.end());
  return way;
}

}  // namespace Vesk
