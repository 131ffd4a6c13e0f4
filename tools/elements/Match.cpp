// SPDX-License-Identifier: MIT
#include "elements/Match.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>
#include <unordered_map>

#include "elements/Describe.h"
#include "terminal/Terminal.h"
#include "text/Numbers.h"

namespace VeskTool {
namespace {

using Indices = std::vector<std::size_t>;

// Beyond this many pairs of elements not every one is looked at.
constexpr std::size_t kMostPairs = std::size_t{1} << 22;

constexpr std::size_t kInterruptEvery = 4096;

struct Cell {
  std::int64_t x;
  std::int64_t y;
  std::int64_t z;
  friend bool operator==(const Cell&, const Cell&) = default;
};

struct CellHash {
  std::size_t operator()(const Cell& cell) const {
    std::uint64_t hash = 0;
    for (const std::int64_t part : {cell.x, cell.y, cell.z}) {
      hash = (hash ^ static_cast<std::uint64_t>(part)) * 0x9E3779B97F4A7C15U;
      hash ^= hash >> 29U;
    }
    return static_cast<std::size_t>(hash);
  }
};

// The middles of some elements, to be found by their place.
class Grid {
 public:
  Grid(const Model& model, const Indices& indices, double size) : size_(size) {
    for (const std::size_t i : indices) cells_[cellOf(model[i].middle)].push_back(i);
  }

  // Calls visit with the elements in the cell of the point and around it, until
  // it returns true.
  template <class Visit>
  void around(const GePoint& p, Visit visit) const {
    const Cell middle = cellOf(p);
    for (std::int64_t dx = -1; dx <= 1; ++dx) {
      for (std::int64_t dy = -1; dy <= 1; ++dy) {
        for (std::int64_t dz = -1; dz <= 1; ++dz) {
          const auto found = cells_.find({middle.x + dx, middle.y + dy, middle.z + dz});
          if (found == cells_.end()) continue;
          for (const std::size_t i : found->second) {
            if (visit(i)) return;
          }
        }
      }
    }
  }

 private:
  std::int64_t part(double v) const {
    constexpr double kFar = 4e18;  // what a cell number can hold
    const double cell = std::floor(v / size_);
    return std::isfinite(cell) ? static_cast<std::int64_t>(std::clamp(cell, -kFar, kFar)) : 0;
  }

  Cell cellOf(const GePoint& p) const { return {part(p.x), part(p.y), part(p.z)}; }

  double size_;
  std::unordered_map<Cell, Indices, CellHash> cells_;
};

// Sizes without the place.
std::string signatureOf(const Vesk::Geo& geo) {
  std::string text;
  const GePoint place = placeOf(geo);
  for (const Property& each : propertiesOf(geo)) {
    const bool isPlace = each.type == Property::Type::kPoint;
    const GeVector v = each.value - (isPlace ? place : GePoint());
    for (const double part : {v.x, v.y, v.z}) text += rounded(part, 2) + ' ';
    text += each.text + ';';
  }
  return text;
}

// All values of an element of which one is no finite number; of any other none. No distance tells
// whether two such are the same.
std::string endlessValuesOf(const Vesk::Geo& geo) {
  std::string text;
  bool isFinite = true;
  for (const Property& each : propertiesOf(geo)) {
    for (const double part : {each.value.x, each.value.y, each.value.z}) {
      isFinite = isFinite && std::isfinite(part);
      text += shortest(part) + ' ';
    }
    text += each.text + ';';
  }
  return isFinite ? std::string() : text;
}

double lengthOf(const Vesk::Geo& geo) {
  Vesk::Extents box;
  geo.addExtents(box);
  return box.min.x <= box.max.x ? distance(box.min, box.max) : 0.0;
}

class Matcher {
 public:
  Matcher(const Model& a, const Model& b, double tolerance)
      : a_(a), b_(b), tolerance_(tolerance), takenA_(a.size()), takenB_(b.size()) {}

  Matching run();

 private:
  struct Group {
    Indices a;
    Indices b;
  };

  void takeOwn(const Group& group, bool areSame);
  double cellSize(const Indices& indices) const;
  void takeEqual(const Group& group, bool areSame);
  void takeEndless(const Group& group);
  void takeByCounter(const Group& group);
  void takeBySizes(const Group& group);
  void takeNearest(const Indices& as, const Indices& bs, bool anyDistance);
  void take(std::size_t i, std::size_t k, bool areSame);
  void dropTaken(Group& group) const;

  const Model& a_;
  const Model& b_;
  double tolerance_;
  std::vector<bool> takenA_;
  std::vector<bool> takenB_;
  Matching result_;
};

void Matcher::take(std::size_t i, std::size_t k, bool areSame) {
  takenA_[i] = true;
  takenB_[k] = true;
  (areSame ? result_.same : result_.changed).emplace_back(i, k);
}

void Matcher::dropTaken(Group& group) const {
  std::erase_if(group.a, [&](std::size_t i) { return takenA_[i]; });
  std::erase_if(group.b, [&](std::size_t k) { return takenB_[k]; });
}

// What has kept its counter is found without looking around.
void Matcher::takeOwn(const Group& group, bool areSame) {
  std::unordered_map<int, std::size_t> first;
  for (const std::size_t k : group.b) {
    if (!takenB_[k]) first.try_emplace(b_[k].counter, k);
  }
  for (const std::size_t i : group.a) {
    const auto own = first.find(a_[i].counter);
    if (own == first.end() || takenB_[own->second]) continue;
    if (a_[i].geo->equal(*b_[own->second].geo, tolerance_)) take(i, own->second, areSame);
  }
}

// Not larger than 1, and so that few share a cell where many are in a small place.
double Matcher::cellSize(const Indices& indices) const {
  Vesk::Extents box;
  for (const std::size_t k : indices) box.add(b_[k].middle);
  const GeVector size = box.max - box.min;
  const double largest = std::max({size.x, size.y, size.z, 0.0});
  const double even = largest / std::cbrt(static_cast<double>(indices.size() + 1));
  return std::max({std::isfinite(even) ? std::min(even, 1.0) : 1.0, 8.0 * tolerance_, 1e-9});
}

void Matcher::takeEqual(const Group& group, bool areSame) {
  takeOwn(group, areSame);
  const Grid grid(b_, group.b, cellSize(group.b));
  std::size_t seen = 0;
  for (const std::size_t i : group.a) {
    if (takenA_[i]) continue;
    checkInterrupt();
    std::size_t best = b_.size();
    grid.around(a_[i].middle, [&](std::size_t k) {
      if (++seen % kInterruptEvery == 0) checkInterrupt();
      if (takenB_[k] || !a_[i].geo->equal(*b_[k].geo, tolerance_)) return false;
      best = std::min(best, k);
      return false;
    });
    if (best < b_.size()) take(i, best, areSame);
  }
}

// Those without a place are the same where all their values are, in the order of the models.
void Matcher::takeEndless(const Group& group) {
  std::unordered_map<std::string, Indices> found;
  for (auto k = group.b.rbegin(); k != group.b.rend(); ++k) {
    const std::string values = endlessValuesOf(*b_[*k].geo);
    if (!values.empty()) found[values].push_back(*k);
  }
  if (found.empty()) return;
  for (const std::size_t i : group.a) {
    const auto same = found.find(endlessValuesOf(*a_[i].geo));
    if (same == found.end() || same->second.empty()) continue;
    take(i, same->second.back(), true);
    same->second.pop_back();
  }
}

// Only where the counter names one element on each side.
void Matcher::takeByCounter(const Group& group) {
  std::unordered_map<int, Indices> left;
  std::unordered_map<int, Indices> right;
  for (const std::size_t i : group.a) left[a_[i].counter].push_back(i);
  for (const std::size_t k : group.b) right[b_[k].counter].push_back(k);
  for (const std::size_t i : group.a) {
    const auto found = right.find(a_[i].counter);
    if (found == right.end() || found->second.size() != 1) continue;
    if (left[a_[i].counter].size() == 1) take(i, found->second.front(), false);
  }
}

void Matcher::takeBySizes(const Group& group) {
  std::map<std::string, Group> bySizes;
  for (const std::size_t i : group.a) bySizes[signatureOf(*a_[i].geo)].a.push_back(i);
  for (const std::size_t k : group.b) bySizes[signatureOf(*b_[k].geo)].b.push_back(k);
  for (const auto& [signature, alike] : bySizes) takeNearest(alike.a, alike.b, true);
}

void Matcher::takeNearest(const Indices& as, const Indices& bs, bool anyDistance) {
  if (as.empty() || bs.empty()) return;
  if (as.size() > kMostPairs / bs.size()) {
    for (std::size_t n = 0; anyDistance && n < std::min(as.size(), bs.size()); ++n) {
      take(as[n], bs[n], false);
    }
    return;
  }
  struct Pair {
    double distance;
    std::size_t i;
    std::size_t k;
  };
  std::vector<Pair> pairs;
  std::vector<double> lengths;  // of bs
  for (const std::size_t k : bs) lengths.push_back(anyDistance ? 0.0 : lengthOf(*b_[k].geo));
  for (const std::size_t i : as) {
    checkInterrupt();
    const double length = anyDistance ? 0.0 : lengthOf(*a_[i].geo);
    for (std::size_t n = 0; n < bs.size(); ++n) {
      const std::size_t k = bs[n];
      const double apart = distance(a_[i].middle, b_[k].middle);
      const bool near = anyDistance || apart <= std::max(length, lengths[n]);
      if (near) pairs.push_back({apart, i, k});
    }
  }
  std::sort(pairs.begin(), pairs.end(), [](const Pair& p, const Pair& q) {
    return std::tie(p.distance, p.i, p.k) < std::tie(q.distance, q.i, q.k);
  });
  for (const Pair& pair : pairs) {
    if (!takenA_[pair.i] && !takenB_[pair.k]) take(pair.i, pair.k, false);
  }
}

Matching Matcher::run() {
  std::map<std::pair<std::string, Kind>, Group> groups;
  for (std::size_t i = 0; i < a_.size(); ++i) groups[{a_[i].header, a_[i].kind}].a.push_back(i);
  for (std::size_t k = 0; k < b_.size(); ++k) groups[{b_[k].header, b_[k].kind}].b.push_back(k);
  std::map<Kind, Group> rest;
  for (auto& [key, group] : groups) {
    takeEqual(group, true);
    dropTaken(group);
    takeEndless(group);
    dropTaken(group);
    takeByCounter(group);
    dropTaken(group);
    takeBySizes(group);
    dropTaken(group);
    takeNearest(group.a, group.b, false);
    dropTaken(group);
    Group& left = rest[key.second];
    left.a.insert(left.a.end(), group.a.begin(), group.a.end());
    left.b.insert(left.b.end(), group.b.begin(), group.b.end());
  }
  for (auto& [kind, group] : rest) takeEqual(group, false);
  for (std::size_t i = 0; i < a_.size(); ++i) {
    if (!takenA_[i]) result_.removed.push_back(i);
  }
  for (std::size_t k = 0; k < b_.size(); ++k) {
    if (!takenB_[k]) result_.added.push_back(k);
  }
  std::sort(result_.same.begin(), result_.same.end());
  std::sort(result_.changed.begin(), result_.changed.end());
  return std::move(result_);
}

}  // namespace

Matching matchModels(const Model& a, const Model& b, double tolerance) {
  return Matcher(a, b, tolerance).run();
}

}  // namespace VeskTool
