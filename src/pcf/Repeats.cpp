// SPDX-License-Identifier: MIT
#include "pcf/Repeats.h"

#include <bit>
#include <cmath>
#include <functional>

namespace Vesk::Pcf {
namespace {

std::uint64_t mixed(std::uint64_t hash, std::uint64_t number) {
  hash = (hash ^ number) * 0x9E3779B97F4A7C15U;
  return hash ^ (hash >> 31U);
}

// To a hundredth of a millimetre.
std::uint64_t rounded(double number) {
  return static_cast<std::uint64_t>(static_cast<std::int64_t>(std::llround(number * 100)));
}

std::uint64_t hashOf(const Point& point, bool withBore) {
  std::uint64_t hash = mixed(1, static_cast<std::uint64_t>(point.role));
  for (const double number : {point.at.x, point.at.y, point.at.z})
    hash = mixed(hash, rounded(number));
  return withBore ? mixed(hash, rounded(point.bore)) : hash;
}

std::uint64_t hashOf(const Plan& plan, const Component& component) {
  const Kind& kind = plan.kindOf(component);
  const bool isPlaced = isSupport(kind.family);
  std::uint64_t hash =
      isPlaced ? static_cast<std::uint64_t>(kind.family) : std::hash<std::string>()(kind.word);
  // A sum does not know the order of the points.
  for (const Point& point : plan.pointsOf(component)) hash += hashOf(point, !isPlaced);
  return mixed(hash, component.points) | 1U;
}

bool mayRepeat(const Plan& plan, const Component& component) {
  const Word meaning = plan.kindOf(component).meaning;
  const bool isDrawn =
      meaning == Word::kBody || meaning == Word::kUnknown || meaning == Word::kWeld;
  return isDrawn && component.points > 0;
}

}  // namespace

void markRepeats(Plan& plan) {
  // Open addressing: of a million components the nodes of a set would outweigh the text.
  std::vector<std::uint64_t> seen(std::bit_ceil(plan.components.size() * 2 + 2), 0);
  for (Component& component : plan.components) {
    if (!mayRepeat(plan, component)) continue;
    const std::uint64_t hash = hashOf(plan, component);
    std::size_t slot = static_cast<std::size_t>(hash >> 7U) & (seen.size() - 1);
    while (seen[slot] != 0 && seen[slot] != hash) slot = (slot + 1) & (seen.size() - 1);
    component.isRepeated = seen[slot] == hash;
    seen[slot] = hash;
  }
}

}  // namespace Vesk::Pcf
