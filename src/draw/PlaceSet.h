// SPDX-License-Identifier: MIT
#ifndef VESK_DRAW_PLACESET_H
#define VESK_DRAW_PLACESET_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace Vesk {

// Places of lines, each once, side by side in memory: a drawing has millions of them,
// and a node for each would take three times as much.
class PlaceSet {
 public:
  // Two ends; no number is the least that there is.
  using Place = std::array<std::int32_t, 4>;

  // For so many places at the most.
  explicit PlaceSet(std::size_t most) : slots_(most + most / 4 + 1, kEmpty) {}

  // False if it is there already.
  bool insert(const Place& place) {
    std::size_t i = static_cast<std::size_t>(hashOf(place) % slots_.size());
    for (; slots_[i] != kEmpty; i = i + 1 < slots_.size() ? i + 1 : 0) {
      if (slots_[i] == place) return false;
    }
    slots_[i] = place;
    return true;
  }

 private:
  static constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
  static constexpr Place kEmpty{kLeast, kLeast, kLeast, kLeast};

  static std::uint64_t hashOf(const Place& place) {
    std::uint64_t hash = 0;
    for (const std::int32_t part : place) {
      hash = (hash ^ static_cast<std::uint32_t>(part)) * 0x9E3779B97F4A7C15U;
      hash ^= hash >> 32U;
    }
    return hash;
  }

  std::vector<Place> slots_;  // a fifth of them stays empty
};

}  // namespace Vesk

#endif
