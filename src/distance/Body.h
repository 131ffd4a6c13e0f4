// SPDX-License-Identifier: MIT
#ifndef VESK_DISTANCE_BODY_H
#define VESK_DISTANCE_BODY_H

#include <array>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

#include "distance/Convex.h"
#include "vesk/Extents.h"
#include "vesk/GePoint.h"
#include "vesk/Geo.h"

namespace Vesk {

// Distances are exact to this, in the unit of the file, for bodies of up to 100
// metres; of larger ones to a 1e-8th of their size.
inline constexpr double kDistanceError = 0.001;

// Bodies up to this far apart touch.
inline constexpr double kTouchDistance = 0.0005;

// The arc that a disc or a rectangle is swept along, about the body's origin.
struct SweptArc {
  GeVector x;  // unit directions: towards the start,
  GeVector y;  // across it in the plane of the bend,
  GeVector z;  // and of the bend's axis
  double radius = 0.0;
  double sweep = 0.0;
  double halfRadial = 0.0;  // half of the section's size in the plane of the bend
  double halfAxial = 0.0;   // and along the axis; the same for a disc
  bool isRound = true;

  // Radius plus half the section.
  double outer() const { return radius + halfRadial; }
  GeVector outward(double angle) const;
  GeVector along(double angle) const;
  Convex section(double angle) const;
};

// A face between four corners, straight along both pairs of sides: (0, 0), (1, 0),
// (0, 1), (1, 1).
using BilinearFace = std::array<GeVector, 4>;

// An element as a set of points, for distances: the solid with flat ends as its
// fields describe it, not its mesh.
//
//   cylinder, cone   the solid; without length the point of its start, as its box
//   torus, elbow     the section swept along the arc; without a plane the centre
//   box              the solid, skew or flat
//   reducer          the solid between its faces, which may be bilinear
//   polyline         its pieces; one vertex is a point
//   polygon          its face; its edges if it encloses nothing
//   text             its position
//
// Sizes below zero count by their absolute value. Arcs of polylines and polygons
// are not drawn and do not count.
class Body {
 public:
  // Nothing for an element without points, or with a number that is NaN, infinite
  // or beyond 1e12.
  static std::optional<Body> of(const Geo& geo);

  // A single point, and an axis-aligned box.
  explicit Body(const GePoint& point);
  explicit Body(const Extents& box);

  const GePoint& origin() const { return origin_; }
  const Extents& box() const { return box_; }

  // From the origin. Either pieces, faces or an arc.
  const std::vector<Convex>& pieces() const { return pieces_; }
  const std::vector<BilinearFace>& faces() const { return faces_; }
  const std::optional<SweptArc>& arc() const { return arc_; }

  // Whether the point, from the origin, is inside of the faces.
  bool encloses(const GeVector& point) const;

  // Some point of the body, from the origin.
  GeVector anyPoint() const;

 private:
  struct Maker;
  Body() = default;

  GePoint origin_;
  Extents box_;
  std::vector<Convex> pieces_;
  std::vector<BilinearFace> faces_;
  std::optional<SweptArc> arc_;
};

// How far two bodies are apart, and where.
struct Gap {
  double distance = 0.0;  // 0 if they touch or overlap
  GePoint onA;
  GePoint onB;  // if they overlap both are a point of both, about
};

// The distance of two bodies. Above `limit` no more is said than that it is above:
// the distance is infinite then.
//
// Convex bodies: see gapOf in Convex.h. Arcs and bilinear faces are halved where
// they may be nearest until the bounds from below and from above meet.
Gap gapOf(const Body& a, const Body& b, double limit = std::numeric_limits<double>::infinity());

double distance(const Body& body, const GePoint& point);

// Whether any point of the body is in the box or within kTouchDistance of it.
bool touches(const Body& body, const Extents& box);

// A lower bound of how deep two bodies are in each other: no shorter shift takes
// them apart. Of convex bodies within 1 of the truth; of others that of their
// pieces. 0 if they do not overlap. What is more than `enough` is not measured to
// its end; above 0.
double depthOf(const Body& a, const Body& b,
               double enough = std::numeric_limits<double>::infinity());

// How far the two boxes are apart; 0 if they touch.
double gapOf(const Extents& a, const Extents& b);

}  // namespace Vesk

#endif
