// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TILES_DETAILSUM_H
#define VESK_TOOLS_TILES_DETAILSUM_H

#include <array>
#include <cstddef>
#include <cstdint>

namespace VeskTool {

// What it takes to draw one element. A segment of a line and a point count as a triangle.
struct ElementDetail {
  double size = 0.0;       // the diagonal of its box
  double deviation = 0.0;  // of its coarse shape from the true one, at the most
  std::uint32_t fine = 0;  // triangles
  std::uint32_t coarse = 0;
};

// How many triangles a set of elements takes for each error that a drawing of them may
// have. With an error of e, elements up to the size e are left out, and of the others
// those are coarse whose coarse shape is no more than e off.
//
// Errors are powers of the square root of two, each a level: a subset never needs a
// higher one for as many triangles.
class DetailSum {
 public:
  static constexpr std::size_t kLevels = 256;

  // The error of a level, in the unit of the sizes.
  static double errorOf(std::size_t level);

  // The lowest level with an error of at least `length`.
  static std::size_t levelOf(double length);

  void add(const ElementDetail& detail);

  // All elements with their fine shapes.
  std::uint64_t fine() const { return fine_; }

  // The lowest level that takes no more than `most` triangles.
  std::size_t levelFor(std::uint64_t most) const;

  // At this level: how many, and how many more with the largest of those left out.
  std::uint64_t triangles(std::size_t level) const;
  std::uint64_t leftOut(std::size_t level) const { return leftOut_[level]; }

 private:
  std::uint64_t fine_ = 0;
  std::array<std::int64_t, kLevels> change_{};  // from the level below
  std::array<std::uint64_t, kLevels> leftOut_{};
};

}  // namespace VeskTool

#endif
