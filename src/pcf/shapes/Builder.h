// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_SHAPES_BUILDER_H
#define VESK_PCF_SHAPES_BUILDER_H

#include <string_view>

#include "pcf/shapes/Shapes.h"
#include <vesk/GePoint.h>
#include <vesk/GeVector.h>

namespace Vesk::Pcf {

// The unit vector of `v`, or null for one without a direction.
GeVector unit(const GeVector& v);

// Three unit vectors at right angles about a line: along it, up (the direction
// nearest to z; on a vertical line that nearest to x), and across, which is
// along x up.
struct Frame {
  GeVector along;
  GeVector up;
  GeVector across;

  // `axis` of any length, not null.
  explicit Frame(const GeVector& axis);

  // As near to `wanted` as being at right angles to the axis allows; the usual
  // frame if that has no direction.
  Frame(const GeVector& axis, const GeVector& wanted);
};

// Collects the bodies of one component. What is too thin to be written is left
// out: details of small things only, as callers give sound sizes for the rest.
class Builder {
 public:
  Builder(Drawn& drawn, double tolerance) : drawn_(drawn), tolerance_(tolerance) {}

  double tolerance() const { return tolerance_; }

  void cylinder(const GePoint& from, const GePoint& to, double diameter);

  // A cylinder if both diameters are the same.
  void cone(const GePoint& from, const GePoint& to, double diameter1, double diameter2);

  // About `centre`; full lengths along the three directions of the frame.
  void box(const GePoint& centre, const Frame& frame, double along, double across, double up);

  // Tube along an arc of less than half a turn between two places.
  void arc(const GePoint& centre, const GePoint& from, const GePoint& to, double diameter);

  // Tube along an arc: from `centre` + `radius` about `axis` (unit, at right
  // angles to it) by `sweep` radians, right hand; half a turn and more in pieces of at
  // most 120 degrees.
  void arc(const GePoint& centre, const GeVector& radius, const GeVector& axis, double sweep,
           double diameter);

  // A whole ring.
  void ring(const GePoint& centre, const GeVector& axis, double radius, double tube);

  // Half of an ellipsoid on the circle about `base`, its tip at `base` + `depth`:
  // stacked cones, nowhere further than the tolerance from it.
  void dish(const GePoint& base, const GeVector& depth, double diameter);

  // A ball that stands for something round; coarser than the tolerance if that
  // is small for its size.
  void ball(const GePoint& centre, const GeVector& axis, double diameter);

  // The body ruled between two circles, of wedges; see Ruled.h.
  void ruled(const GePoint& from, const GeVector& normal1, double diameter1, const GePoint& to,
             const GeVector& normal2, double diameter2);

  void cover(const GePoint& from, const GePoint& to) { drawn_.covered.push_back({from, to}); }
  void miss(std::string_view why) { drawn_.missing.push_back(why); }
  void remark(std::string_view what) { drawn_.remarks.push_back(what); }

 private:
  void halfBall(const GePoint& base, const GeVector& depth, double diameter, double tolerance);

  Drawn& drawn_;
  double tolerance_;
};

}  // namespace Vesk::Pcf

#endif
