// SPDX-License-Identifier: MIT
#include "ge/PointMatch.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace Vesk {
namespace {

constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

// All distances between two lists of n points.
class Distances {
 public:
  Distances(std::span<const GePoint> first, std::span<const GePoint> second) : n_(first.size()) {
    values_.reserve(n_ * n_);
    for (const GePoint& a : first) {
      for (const GePoint& b : second) {
        const double d = distance(a, b);
        values_.push_back(std::isnan(d) ? std::numeric_limits<double>::infinity() : d);
      }
    }
  }

  std::size_t size() const { return n_; }
  double operator()(std::size_t i, std::size_t j) const { return values_[i * n_ + j]; }

  std::vector<double> sorted() const {
    std::vector<double> values = values_;
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
    return values;
  }

 private:
  std::size_t n_;
  std::vector<double> values_;
};

// Gives point `start` of the first list a partner no further than `limit`, by a
// breadth-first search for an augmenting path. The partners of the second list's
// points are in `owners`.
bool augment(const Distances& distances, double limit, std::size_t start,
             std::vector<std::size_t>& partners, std::vector<std::size_t>& owners) {
  const std::size_t n = distances.size();
  std::vector<std::size_t> cameFrom(n, kNone);
  std::vector<std::size_t> queue{start};
  for (std::size_t head = 0; head < queue.size(); ++head) {
    const std::size_t i = queue[head];
    for (std::size_t j = 0; j < n; ++j) {
      if (cameFrom[j] != kNone || distances(i, j) > limit) continue;
      cameFrom[j] = i;
      if (owners[j] != kNone) {
        queue.push_back(owners[j]);
        continue;
      }
      for (std::size_t free = j; free != kNone;) {
        const std::size_t from = cameFrom[free];
        owners[free] = from;
        std::swap(partners[from], free);
      }
      return true;
    }
  }
  return false;
}

// A pairing within `limit`; empty if there is none.
std::vector<std::size_t> pairWithin(const Distances& distances, double limit) {
  const std::size_t n = distances.size();
  std::vector<std::size_t> partners(n, kNone);
  std::vector<std::size_t> owners(n, kNone);
  for (std::size_t i = 0; i < n; ++i) {
    if (!augment(distances, limit, i, partners, owners)) return {};
  }
  return partners;
}

}  // namespace

std::optional<PointMatch> matchPoints(std::span<const GePoint> first,
                                      std::span<const GePoint> second, double limit) {
  const std::size_t n = first.size();
  if (n != second.size()) return std::nullopt;
  if (n == 0) return PointMatch{};
  const Distances distances(first, second);
  const std::vector<double> candidates = distances.sorted();

  // The largest candidate always allows a pairing.
  const auto best =
      std::partition_point(candidates.begin(), candidates.end() - 1,
                           [&distances](double d) { return pairWithin(distances, d).empty(); });
  if (*best > limit) return std::nullopt;

  PointMatch match{*best, std::vector<std::size_t>(n)};
  std::iota(match.partners.begin(), match.partners.end(), std::size_t{0});
  const bool inOrder = std::all_of(match.partners.begin(), match.partners.end(),
                                   [&](std::size_t i) { return distances(i, i) <= *best; });
  if (!inOrder) match.partners = pairWithin(distances, *best);
  return match;
}

bool pointsCoincide(std::span<const GePoint> first, std::span<const GePoint> second,
                    double tolerance) {
  const auto match = matchPoints(first, second);
  return match && match->largestDistance <= tolerance;
}

}  // namespace Vesk
