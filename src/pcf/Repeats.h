// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_REPEATS_H
#define VESK_PCF_REPEATS_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "pcf/Plan.h"

namespace Vesk::Pcf {

// Components by their words, places and diameters: two with the same number are the same.
class SeenComponents {
 public:
  bool has(std::uint64_t number) const;

  // False if it was there.
  bool add(std::uint64_t number);

  // Makes room for so many more.
  void reserve(std::size_t more);

 private:
  // Open addressing, at most half full: of a million components the nodes of a set would
  // outweigh the text. 0 is an empty slot.
  std::size_t slotOf(std::uint64_t number) const;

  std::vector<std::uint64_t> slots_;
  std::size_t count_ = 0;
};

// Marks the components that stand in the file before: of the same word, or as supports of
// the same kind, with the same points in any order. Those that stand in a file before are
// marked too if that is to be known; `before` then learns the components of this file.
void markRepeats(Plan& plan, SeenComponents* before);

}  // namespace Vesk::Pcf

#endif
