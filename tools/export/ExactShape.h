// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXPORT_EXACTSHAPE_H
#define VESK_TOOLS_EXPORT_EXACTSHAPE_H

#include <array>
#include <string>
#include <variant>
#include <vector>

#include "vesk/Geo.h"

namespace VeskTool {

// The true shape of an element, for formats that know cylinders and tori: in the
// record's unit, every solid right side out.

// A right-handed frame of unit directions.
struct ExactFrame {
  GePoint origin;
  GeVector x;
  GeVector y;
  GeVector z;

  GePoint at(double px, double py, double pz) const { return origin + (x * px + y * py + z * pz); }
};

// A cylinder or cone along z from the frame's origin on, the wider end first: its
// radius, and that of the other end, which may be 0.
struct ExactRound {
  ExactFrame frame;
  double radius = 0.0;
  double endRadius = 0.0;
  double height = 0.0;
};

// A tube bent about z, from x on towards y.
struct ExactBend {
  ExactFrame frame;
  double radius = 0.0;  // of the bend
  double sweep = 0.0;   // radians, below pi
  double tube = 0.0;    // radius of the tube, at most that of the bend
};

// A rectangle bent in the same way: `depth` across and `width` along z.
struct ExactDuct {
  ExactFrame frame;
  double radius = 0.0;  // of the middle
  double sweep = 0.0;
  double depth = 0.0;
  double width = 0.0;

  double inner() const { return radius - depth / 2.0; }  // perhaps 0
  double outer() const { return radius + depth / 2.0; }
};

// Eight corners; 0, 1, 3, 2 run round the first end, counter-clockwise seen from the
// second one, and k + 4 lies opposite k. A face whose corners are not plane is
// ruled: bilinear between them. Corners may be the same.
struct ExactBody {
  std::array<GePoint, 8> corners;
  bool isBox = false;  // three directions of edges
};

// The faces of a body, counter-clockwise from outside.
inline constexpr std::array<std::array<std::size_t, 4>, 6> kBodyFaces = {
    {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4}, {1, 3, 7, 5}, {3, 2, 6, 7}, {2, 0, 4, 6}}};

// The corners of a face, and how triangles fill it.
struct ExactFace {
  std::vector<GePoint> corners;
  GeVector normal;
  double off = 0.0;  // the most that a corner is off the mean plane
  std::vector<std::array<std::size_t, 3>> triangles;
};

struct ExactPolyline {
  std::vector<GePoint> points;  // one is a point
};

// Of a text the exact formats keep nothing.
struct ExactText {};

using ExactShape = std::variant<std::monostate, ExactRound, ExactBend, ExactDuct, ExactBody,
                                ExactFace, ExactPolyline, ExactText>;

// Fills `shape` and returns why that can't be done; empty if it could.
std::string makeExact(const Vesk::Geo& geo, ExactShape& shape);

// The exact volume; 0.0 for what is not solid.
double volumeOf(const ExactShape& shape);

// How far the corners of a body's face are off their mean plane.
double offPlane(const GePoint& a, const GePoint& b, const GePoint& c, const GePoint& d);

}  // namespace VeskTool

#endif
