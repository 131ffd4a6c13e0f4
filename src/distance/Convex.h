// SPDX-License-Identifier: MIT
#ifndef VESK_DISTANCE_CONVEX_H
#define VESK_DISTANCE_CONVEX_H

#include <array>
#include <cstddef>
#include <optional>

#include "vesk/GeVector.h"

namespace Vesk {

// The convex hull of up to eight points, or of up to two discs in space: a
// straight pipe is the hull of its two ends, a box that of its corners.
//
// Coordinates are from an origin that its owner knows and that is near: what is
// far away has no digits left for small distances. All numbers are finite.
class Convex {
 public:
  static constexpr std::size_t kMostPoints = 8;
  static constexpr std::size_t kMostDiscs = 2;

  void addPoint(const GeVector& point);

  // The normal is of unit length; a radius of 0 is a point. A hull has discs or
  // points, not both.
  void addDisc(const GeVector& centre, const GeVector& normal, double radius);

  // The point of the hull that lies furthest along `direction`, which need not be
  // of unit length.
  GeVector support(const GeVector& direction) const;

  // The ends' centres and the radius, for a hull of two discs of the same size that
  // face each other; nothing for any other.
  struct Pipe {
    GeVector from;
    GeVector to;
    double radius = 0.0;
  };
  std::optional<Pipe> pipe() const;

  // Any point inside.
  GeVector middle() const;

  // An upper bound of the distance from the owner's origin.
  double reach() const;

 private:
  GeVector discSupport(std::size_t disc, const GeVector& direction) const;

  // Points, or centre and normal of each disc in turn.
  std::array<GeVector, kMostPoints> points_;
  std::array<double, kMostDiscs> radii_{};
  unsigned char pointCount_ = 0;
  unsigned char discCount_ = 0;
};

// How far two convex bodies are apart, and where.
struct ConvexGap {
  double distance = 0.0;  // 0 if they touch or overlap
  GeVector onA;           // the nearest points, from the origin of a; if the
  GeVector onB;           // bodies overlap, a point of both
};

// The distance of two convex bodies. `shift` leads from the origin of `a` to that
// of `b`. The error is below 1e-6 and a 1e-12th of their sizes and shift.
//
// Method: Gilbert, Johnson, Keerthi. The nearest point to the origin of a simplex
// of the bodies' difference is improved by the support opposite to it, until the
// bound from below, which that support gives, meets the distance.
ConvexGap gapOf(const Convex& a, const Convex& b, const GeVector& shift);

// How deep two overlapping convex bodies are in each other: the length of the
// shortest shift that takes them apart, from below, `within` of the truth; or, if
// that is more than `enough`, something between. 0 if they do not overlap.
//
// Method: a polytope inside the bodies' difference grows at the face that is
// nearest to the origin, whose distance is the bound.
double depthOf(const Convex& a, const Convex& b, const GeVector& shift, double within,
               double enough);

}  // namespace Vesk

#endif
