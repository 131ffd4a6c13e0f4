// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_RECORDS_COUNTERSET_H
#define VESK_TOOLS_RECORDS_COUNTERSET_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "output/Base36.h"

namespace VeskTool {

// Counters (field F3) of the elements of a header. What is no counter, below 0 or
// above 46655, is never in it. One bit for each counter up to the largest.
class CounterSet {
 public:
  void add(int first, int last) {
    first = std::max(first, 0);
    last = std::min(last, Vesk::kMaxCounter);
    if (first > last) return;
    if (bits_.size() <= static_cast<std::size_t>(last))
      bits_.resize(static_cast<std::size_t>(last) + 1);
    std::fill(bits_.begin() + first, bits_.begin() + last + 1, true);
  }
  void add(int counter) { add(counter, counter); }
  void add(const CounterSet& other) {
    if (bits_.size() < other.bits_.size()) bits_.resize(other.bits_.size());
    for (std::size_t i = 0; i < other.bits_.size(); ++i) {
      if (other.bits_[i]) bits_[i] = true;
    }
  }

  bool hasAny(int first, int last) const {
    first = std::max(first, 0);
    last = std::min(last, static_cast<int>(bits_.size()) - 1);
    for (int i = first; i <= last; ++i) {
      if (bits_[static_cast<std::size_t>(i)]) return true;
    }
    return false;
  }
  bool has(int counter) const { return hasAny(counter, counter); }
  bool meets(const CounterSet& other) const {
    const std::size_t both = std::min(bits_.size(), other.bits_.size());
    for (std::size_t i = 0; i < both; ++i) {
      if (bits_[i] && other.bits_[i]) return true;
    }
    return false;
  }

  bool isEmpty() const { return bits_.empty(); }

  // -1 without any.
  int largest() const { return static_cast<int>(bits_.size()) - 1; }
  int smallest() const {
    const auto found = std::find(bits_.begin(), bits_.end(), true);
    return found == bits_.end() ? -1 : static_cast<int>(found - bits_.begin());
  }

 private:
  std::vector<bool> bits_;  // the last one is set
};

}  // namespace VeskTool

#endif
