// SPDX-License-Identifier: MIT
#include "pcf/Runs.h"

#include <algorithm>
#include <cmath>

#include "pcf/Joints.h"

namespace Vesk::Pcf {
namespace {

constexpr double kCellSize = 1000;
constexpr double kBeside = 10;  // beyond the surface

// More steps than these (of half a cell) are too many for one pipe.
constexpr double kMostSteps = 2000;

double distanceTo(const Run& run, const GePoint& at) {
  const GeVector axis = run.to - run.from;
  const double square = dot(axis, axis);
  const double part = square > 0 ? std::clamp(dot(at - run.from, axis) / square, 0.0, 1.0) : 0;
  return distance(at, run.from + axis * part);
}

}  // namespace

std::size_t Runs::CellHash::operator()(const Cell& cell) const {
  std::uint64_t hash = 0;
  for (const std::int64_t number : cell) {
    hash = (hash ^ static_cast<std::uint64_t>(number)) * 0x9E3779B97F4A7C15U;
    hash ^= hash >> 29U;
  }
  return static_cast<std::size_t>(hash);
}

Runs::Cell Runs::cellOf(const GePoint& at) {
  return {static_cast<std::int64_t>(std::floor(at.x / kCellSize)),
          static_cast<std::int64_t>(std::floor(at.y / kCellSize)),
          static_cast<std::int64_t>(std::floor(at.z / kCellSize))};
}

Runs::Runs(const Plan& plan) {
  for (std::uint32_t i = 0; i < plan.components.size(); ++i) {
    const Component& component = plan.components[i];
    if (plan.kindOf(component).family != Family::kPipe) continue;
    const Point* ends[2] = {nullptr, nullptr};
    for (const Point& point : plan.pointsOf(component)) {
      if (point.role != Role::kEnd) continue;
      if (ends[0] == nullptr) {
        ends[0] = &point;
      } else if (ends[1] == nullptr) {
        ends[1] = &point;
      }
    }
    if (ends[1] == nullptr) continue;
    runs_.push_back({ends[0]->at, ends[1]->at, ends[0]->outside, i});
    add(static_cast<std::uint32_t>(runs_.size() - 1));
  }
}

void Runs::add(std::uint32_t index) {
  const Run& run = runs_[index];
  const GeVector axis = run.to - run.from;
  const double steps = std::ceil(axis.length() / (kCellSize / 2)) + 1;
  if (steps > kMostSteps) {
    long_.push_back(index);
    return;
  }
  for (double i = 0; i <= steps; ++i) {
    std::vector<std::uint32_t>& cell = cells_[cellOf(run.from + axis * (i / steps))];
    if (cell.empty() || cell.back() != index) cell.push_back(index);
  }
}

// Every pipe that comes within a cell's size of the place, some of them twice.
template <class Visit>
void Runs::visit(const GePoint& at, Visit visit) const {
  const Cell middle = cellOf(at);
  for (std::int64_t i = 0; i < 27; ++i) {
    const auto cell =
        cells_.find({middle[0] + i % 3 - 1, middle[1] + i / 3 % 3 - 1, middle[2] + i / 9 - 1});
    if (cell == cells_.end()) continue;
    for (const std::uint32_t index : cell->second) visit(runs_[index]);
  }
  for (const std::uint32_t index : long_) visit(runs_[index]);
}

std::optional<Run> Runs::runAt(const GePoint& at) const {
  std::optional<Run> nearest;
  double shortest = 0;
  visit(at, [&](const Run& run) {
    const double away = distanceTo(run, at);
    if (away > run.outside / 2 + kBeside || (nearest && away >= shortest)) return;
    nearest = run;
    shortest = away;
  });
  return nearest;
}

bool Runs::isCovered(const GePoint& from, const GePoint& to) const {
  constexpr int kMostPipes = 64;
  GePoint at = from;
  for (int i = 0; i < kMostPipes; ++i) {
    GePoint next = at;
    bool isThere = false;
    visit(at, [&](const Run& run) {
      if (distanceTo(run, at) > kSamePlace) return;
      if (distanceTo(run, to) <= kSamePlace) isThere = true;
      for (const GePoint& end : {run.from, run.to}) {
        const bool isOnTheWay = distanceTo({from, to, 0, 0}, end) <= kSamePlace;
        if (isOnTheWay && distance(end, to) < distance(next, to)) next = end;
      }
    });
    if (isThere) return true;
    if (distance(next, to) > distance(at, to) - kSamePlace) return false;
    at = next;
  }
  return false;
}

}  // namespace Vesk::Pcf
