// SPDX-License-Identifier: MIT
#ifndef VESK_MESH_FINENESS_H
#define VESK_MESH_FINENESS_H

#include <cstdint>

namespace Vesk {

// How many straight pieces approximate a circle: from the distance that chord
// and circle may be apart, or a fixed number whatever the size.
//
// A chord over the angle a on radius r lies up to r (1 - cos(a / 2)), its
// sagitta, from the circle. So a tolerance gives a = 4 asin(sqrt(tolerance /
// (2 r))), at most 30 degrees. A full circle has a multiple of four pieces, so
// that its extent along its own axes is exact, and it has the same corners seen
// from either end.
class Fineness {
 public:
  static constexpr std::uint32_t kDraft = 16;
  static constexpr std::uint32_t kNormal = 32;
  static constexpr std::uint32_t kFine = 64;

  // The largest number of pieces of a circle.
  static constexpr std::uint32_t kMostSegments = 1U << 20;

  // This many segments for each circle: a multiple of four, 8 or more.
  static Fineness ofSegments(std::uint32_t perCircle);

  // By the tolerance, above zero, in the unit of the elements.
  static Fineness ofTolerance(double tolerance);

  // The pieces of a full circle; 0 if there would be more than kMostSegments.
  std::uint32_t circle(double radius) const { return circle(radius, tolerance(radius)); }
  std::uint32_t circle(double radius, double within) const;

  // The pieces of an arc of this many radians, at least 1; 0 as for a circle.
  std::uint32_t arc(double radius, double sweep, double within) const;

  // How far a shape with this radius may be from its mesh: the given tolerance,
  // or the sagitta of a circle with this radius in that many segments.
  double tolerance(double radius) const;

  // Whether a tolerance was given.
  bool isAbsolute() const { return perCircle_ == 0; }

 private:
  double angle(double radius, double within) const;

  double tolerance_ = 0.0;
  std::uint32_t perCircle_ = 0;
};

// The distance between a chord of this angle and its circle.
double sagitta(double radius, double angle);

}  // namespace Vesk

#endif
