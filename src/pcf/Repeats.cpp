// SPDX-License-Identifier: MIT
#include "pcf/Repeats.h"

#include <bit>
#include <cmath>
#include <functional>
#include <string>

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

std::size_t SeenComponents::slotOf(std::uint64_t number) const {
  std::size_t slot = static_cast<std::size_t>(number >> 7U) & (slots_.size() - 1);
  while (slots_[slot] != 0 && slots_[slot] != number) slot = (slot + 1) & (slots_.size() - 1);
  return slot;
}

bool SeenComponents::has(std::uint64_t number) const {
  return !slots_.empty() && slots_[slotOf(number)] == number;
}

void SeenComponents::reserve(std::size_t more) {
  const std::size_t size = std::bit_ceil((count_ + more) * 2 + 2);
  if (size <= slots_.size()) return;
  std::vector<std::uint64_t> old(size, 0);
  old.swap(slots_);
  for (const std::uint64_t number : old) {
    if (number != 0) slots_[slotOf(number)] = number;
  }
}

bool SeenComponents::add(std::uint64_t number) {
  reserve(1);
  std::uint64_t& slot = slots_[slotOf(number)];
  if (slot == number) return false;
  slot = number;
  ++count_;
  return true;
}

void markRepeats(Plan& plan, SeenComponents* before) {
  SeenComponents here;
  here.reserve(plan.components.size());
  for (Component& component : plan.components) {
    if (!mayRepeat(plan, component)) continue;
    const std::uint64_t number = hashOf(plan, component);
    component.isRepeated = !here.add(number);
    component.isInAFileBefore = before != nullptr && before->has(number);
  }
  if (before == nullptr) return;
  for (const Component& component : plan.components) {
    if (mayRepeat(plan, component)) before->add(hashOf(plan, component));
  }
}

}  // namespace Vesk::Pcf
