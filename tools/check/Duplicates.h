// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_CHECK_DUPLICATES_H
#define VESK_TOOLS_CHECK_DUPLICATES_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "vesk/Geo.h"

namespace VeskTool {

// 128 bits that two elements share if they are the same shape, to a thousandth
// of the unit. Different shapes share them by chance once in 10^26 pairs.
struct ShapeKey {
  std::uint64_t high = 0;
  std::uint64_t low = 0;
};

// The key of what Geo::equal compares: a cylinder or cone given from either end,
// a bend from either end, a box from any of its corners. Points that differ in
// rounding at half a thousandth are different.
ShapeKey shapeKey(const Vesk::Geo& geo);

// Whether drawing it twice is a mistake: not for single points, which mark
// joints and belong to both sides, and not for elements that show nothing.
bool countsAsDuplicate(const Vesk::Geo& geo);

// The shapes seen so far, and where. A slot has 16 bytes, three eighths to three
// quarters of them are in use: 21 to 43 bytes for each shape, 64 while it grows.
class ShapeSet {
 public:
  static constexpr std::uint64_t kLastLine = (std::uint64_t{1} << 40) - 1;

  // The line at which this shape was first seen; 0, and it is kept now, if it was
  // not. A line beyond kLastLine is kept as that one.
  std::uint64_t insert(const ShapeKey& key, std::uint64_t line);

  // Asks for the memory that insert will look at, which takes as long as several
  // other rules.
  void prefetch(const ShapeKey& key) const;

  std::size_t size() const { return count_; }

 private:
  // The key's first 64 bits; 24 more and the line. All zero: empty.
  struct Slot {
    std::uint64_t high = 0;
    std::uint64_t lowAndLine = 0;
  };

  Slot& find(std::uint64_t high, std::uint64_t low);
  void grow();

  std::vector<Slot> slots_;
  std::size_t count_ = 0;
};

}  // namespace VeskTool

#endif
