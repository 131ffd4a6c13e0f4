// SPDX-License-Identifier: MIT
#ifndef VESK_SHAPE_SHAPE_H
#define VESK_SHAPE_SHAPE_H

#include <vector>

#include "prims/EarClipper.h"
#include "vesk/GeVector.h"
#include "vesk/Geo.h"

namespace Vesk {

class Pgon;

// Why an element has no shape: no solid, face, line or text follows from its
// numbers. Whoever judges elements or makes something of them asks here, so that
// all give the same answer.
enum class ShapeFault {
  kNone,
  kNotFinite,         // a number is infinite or NaN
  kTooLarge,          // or beyond kLargestNumber
  kNegativeDiameter,  // by kSmallestSize at least; a lesser one counts as zero
  kNegativeWidth,
  kNegativeDepth,
  kNegativeHeight,  // of a text
  kNegativeCharWidth,
  kNoDiameter,  // below kSmallestSize
  kNoWidth,
  kNoDepth,
  kNoLength,
  kNoEdge,
  kNoBendRadius,
  kNoExtent,
  kFlatBox,      // its edges lie in a plane
  kNoPlane,      // start and end of a bend lie in a line with its centre
  kTubeTooWide,  // for its bend
  kSectionTooWide,
  kFaceCrosses,  // a face of a reducer crosses itself
  kNoVolume,
  kTurnedInside,  // somewhere between two faces a reducer turns inside out
  kNoPoints,
  kTooFewPoints,  // less than the three of a face
  kNoArea,
  kCrossed,  // a face crosses itself
  kNoShape,  // of a kind that has none
};

// Squares and cubes of larger or smaller numbers would leave the range of floats.
inline constexpr double kLargestNumber = 1e12;
inline constexpr double kSmallestSize = 1e-12;

// Ends of a bend whose directions have a smaller cross product have no plane.
inline constexpr double kLeastPlane = 1e-9;

// What is wrong, for people: "diameter below zero"; "" for kNone.
const char* textOf(ShapeFault fault);

// The first fault of the element, in the order of the enumeration as far as it
// concerns this kind.
ShapeFault shapeFaultOf(const Geo& geo);

// A polygon as a face. What is known of it after the fault is left empty.
struct FaceShape {
  ShapeFault fault = ShapeFault::kNone;
  std::vector<GePoint> points;         // from the first one
  GeVector area;                       // twice the area, along the normal
  std::vector<EarTriangle> triangles;  // of these points, those without area left out
};

FaceShape faceShapeOf(const Pgon& pgon);

}  // namespace Vesk

#endif
