// SPDX-License-Identifier: MIT
#ifndef VESK_PRIMS_BENDARC_H
#define VESK_PRIMS_BENDARC_H

#include <vector>

#include "vesk/GePoint.h"
#include "vesk/GeVector.h"

namespace Vesk {

// The arc about which a torus and a rectangular elbow are swept: from the start
// to the end vector about the centre, by the angle between them.
class BendArc {
 public:
  BendArc(const GePoint& centre, const GeVector& start, const GeVector& end);

  // The mean length of the two vectors.
  double meanRadius() const;

  // Whether both vectors have a length; without it there is no volume.
  bool hasLength() const;

  // Sweep times mean radius; needs a length.
  double length() const;

  // The point in the direction of the bisector at this distance times
  // sin(half the sweep) / half the sweep, which is how a centre of gravity lies
  // on an arc. Throws GeEx::NullDir when a direction is null; a sweep of 0
  // gives NaN.
  GePoint onBisector(double distance) const;

  // 2 for half the section's radial size above the mean radius by more than
  // 0.01, 1 for a vector shorter than 1e-7, else 0.
  int checkSize(double radialSize) const;

  // Whether centres, middles and, in either order, ends are within `tolerance`.
  bool equal(const BendArc& other, double tolerance) const;

  // Whether the vectors span a plane: not if they are collinear, and not if one is
  // null, infinite or no number.
  bool hasPlane() const { return hasPlane_; }

  // The rest needs a plane.

  // The unit normal, right-handed from start to end.
  const GeVector& normal() const { return normal_; }

  // The unit directions, seen from the centre, of the arc's ends.
  const GeVector& startDirection() const { return startDirection_; }
  const GeVector& endDirection() const { return endDirection_; }

  // The unit directions in which the arc reaches furthest along `axis` and
  // against it, those that lie inside the sweep, ends included. None when the
  // axis is perpendicular to the plane.
  std::vector<GeVector> furthest(const GeVector& axis) const;

 private:
  GePoint middle() const;

  GePoint centre_;
  GeVector start_;
  GeVector end_;
  GeVector startDirection_;
  GeVector endDirection_;
  GeVector normal_;
  bool hasPlane_ = false;
};

}  // namespace Vesk

#endif
