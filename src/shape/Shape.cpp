// SPDX-License-Identifier: MIT
#include "shape/Shape.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "prims/BendArc.h"
#include "prims/Visit.h"
#include "shape/QuadSplit.h"
#include "shape/ReducerShape.h"

namespace Vesk {
namespace {

using enum ShapeFault;

// Ratios of volumes, and of areas to the square of the largest extent, that come
// from rounding.
constexpr double kFlat = 1e-12;

// Of the whole area: what lies below comes from rounding.
constexpr double kNothing = 1e-9;

constexpr double kTooWide = 2;  // what checkSize gives

ShapeFault numberFault(std::initializer_list<GePoint> points,
                       std::initializer_list<double> numbers = {}) {
  bool isFinite = true;
  bool isSmall = true;
  const auto look = [&](double v) {
    isFinite = isFinite && std::isfinite(v);
    isSmall = isSmall && std::fabs(v) <= kLargestNumber;
  };
  for (const GePoint& p : points) look(p.x), look(p.y), look(p.z);
  for (const double v : numbers) look(v);
  if (!isFinite) return kNotFinite;
  return isSmall ? kNone : kTooLarge;
}

ShapeFault sizeFault(double size, ShapeFault negative, ShapeFault none) {
  if (size <= -kSmallestSize) return negative;
  return size < kSmallestSize ? none : kNone;
}

ShapeFault lengthFault(double length, ShapeFault none) {
  return length < kSmallestSize ? none : kNone;
}

// The first that is a fault; each is asked in turn.
template <class... Faults>
ShapeFault firstOf(Faults... faults) {
  for (const ShapeFault fault : {faults...}) {
    if (fault != kNone) return fault;
  }
  return kNone;
}

ShapeFault bendFault(const GePoint& centre, const GeVector& start, const GeVector& end) {
  if (std::min(start.length(), end.length()) < kSmallestSize) return kNoBendRadius;
  const BendArc arc(centre, start, end);
  const bool isFlat = cross(arc.startDirection(), arc.endDirection()).length() < kLeastPlane;
  return !arc.hasPlane() || isFlat ? kNoPlane : kNone;
}

ShapeFault faultOf(const Cyl& cyl) {
  return firstOf(numberFault({cyl.origin, GePoint(cyl.axis)}, {cyl.diameter}),
                 sizeFault(cyl.diameter, kNegativeDiameter, kNoDiameter),
                 lengthFault(cyl.axis.length(), kNoLength));
}

ShapeFault faultOf(const Cone& cone) {
  const auto [small, large] = std::minmax(cone.diameter1, cone.diameter2);
  return firstOf(numberFault({cone.origin, GePoint(cone.axis)}, {cone.diameter1, cone.diameter2}),
                 small < 0.0 ? sizeFault(small, kNegativeDiameter, kNoDiameter) : kNone,
                 sizeFault(large, kNegativeDiameter, kNoDiameter),
                 lengthFault(cone.axis.length(), kNoLength));
}

ShapeFault faultOf(const Box& box) {
  const GeVector& a = box.edge1;
  const GeVector& b = box.edge2;
  const GeVector& c = box.edge3;
  const ShapeFault numbers = numberFault({box.origin, GePoint(a), GePoint(b), GePoint(c)});
  if (numbers != kNone) return numbers;
  const double shortest = std::min({a.length(), b.length(), c.length()});
  if (shortest < kSmallestSize) return kNoEdge;
  const double product = a.length() * b.length() * c.length();
  return std::fabs(triple(a, b, c)) <= kFlat * product ? kFlatBox : kNone;
}

ShapeFault faultOf(const Torus& torus) {
  return firstOf(numberFault({torus.centre, GePoint(torus.startVector), GePoint(torus.endVector)},
                             {torus.diameter}),
                 sizeFault(torus.diameter, kNegativeDiameter, kNoDiameter),
                 bendFault(torus.centre, torus.startVector, torus.endVector),
                 torus.checkSize() == kTooWide ? kTubeTooWide : kNone);
}

ShapeFault faultOf(const Relb& relb) {
  return firstOf(numberFault({relb.centre, GePoint(relb.startVector), GePoint(relb.endVector)},
                             {relb.width, relb.depth}),
                 sizeFault(relb.width, kNegativeWidth, kNoWidth),
                 sizeFault(relb.depth, kNegativeDepth, kNoDepth),
                 bendFault(relb.centre, relb.startVector, relb.endVector),
                 relb.checkSize() == kTooWide ? kSectionTooWide : kNone);
}

ShapeFault faultOf(const Red& red) { return reducerShapeOf(red).fault; }

ShapeFault faultOf(const Pline& pline) {
  if (pline.vertices.empty()) return kNoPoints;
  for (const GePoint& p : pline.vertices) {
    const ShapeFault fault = numberFault({p});
    if (fault != kNone) return fault;
  }
  return kNone;
}

ShapeFault faultOf(const Pgon& pgon) { return faceShapeOf(pgon).fault; }

// A text of no size is a text that can't be seen.
ShapeFault faultOf(const Txt& txt) {
  return firstOf(numberFault({txt.position, GePoint(txt.direction), GePoint(txt.upDirection)},
                             {txt.charWidth, txt.height}),
                 sizeFault(txt.height, kNegativeHeight, kNone),
                 sizeFault(txt.charWidth, kNegativeCharWidth, kNone));
}

GeVector areaOf(const std::vector<GePoint>& points, const EarTriangle& t) {
  return cross(points[t[1]] - points[t[0]], points[t[2]] - points[t[0]]);
}

// Twice the area vector of any closed line.
GeVector wholeArea(const std::vector<GePoint>& points) {
  GeVector area;
  for (std::size_t i = 2; i < points.size(); ++i) {
    area += cross(points[i - 1] - points[0], points[i] - points[0]);
  }
  return area;
}

std::vector<EarTriangle> quadTriangles(const std::vector<GePoint>& p) {
  if (splitQuad(p[0], p[1], p[2], p[3]).fromFirst) return {{0, 1, 2}, {0, 2, 3}};
  return {{1, 2, 3}, {1, 3, 0}};
}

// Whether they look the way of the whole and cover as much as it encloses.
bool areWhole(const std::vector<GePoint>& points, const std::vector<EarTriangle>& triangles,
              const GeVector& whole) {
  GeVector sum;
  for (const EarTriangle& t : triangles) {
    const GeVector area = areaOf(points, t);
    if (dot(area, whole) < -kNothing * dot(whole, whole)) return false;
    sum += area;
  }
  return (sum - whole).length() <= kNothing * whole.length();
}

}  // namespace

FaceShape faceShapeOf(const Pgon& pgon) {
  FaceShape shape;
  for (const PgonVertex& vertex : pgon.vertices) {
    shape.fault = numberFault({vertex.point});
    if (shape.fault != kNone) return shape;
  }
  if (pgon.vertices.size() < 3) {
    shape.fault = kTooFewPoints;
    return shape;
  }
  double extent = 0.0;
  for (const PgonVertex& vertex : pgon.vertices) {
    shape.points.emplace_back(vertex.point - pgon.point(0));
    extent = std::max(extent, distance(shape.points.back(), GePoint()));
  }
  const double least = kFlat * extent * extent;
  shape.area = wholeArea(shape.points);
  if (!(shape.area.length() > least)) {
    const std::vector<GePoint>& p = shape.points;
    const bool crosses = p.size() == 4 && isBowTie(p[0], p[1], p[2], p[3], least);
    shape.fault = crosses ? kCrossed : kNoArea;
    return shape;
  }
  shape.triangles = shape.points.size() == 4 ? quadTriangles(shape.points) : clipEars(shape.points);
  if (shape.triangles.empty() || !areWhole(shape.points, shape.triangles, shape.area)) {
    shape.fault = kCrossed;
    return shape;
  }
  std::erase_if(shape.triangles,
                [&](const EarTriangle& t) { return areaOf(shape.points, t).length() <= least; });
  return shape;
}

ShapeFault shapeFaultOf(const Geo& geo) {
  return visit(
      geo, [](const auto& primitive) { return faultOf(primitive); }, [] { return kNoShape; });
}

const char* textOf(ShapeFault fault) {
  switch (fault) {
    case kNone:
      break;
    case kNotFinite:
      return "a number is infinite or NaN";
    case kTooLarge:
      return "a number is beyond 1e12";
    case kNegativeDiameter:
      return "diameter below zero";
    case kNegativeWidth:
      return "width below zero";
    case kNegativeDepth:
      return "depth below zero";
    case kNegativeHeight:
      return "height below zero";
    case kNegativeCharWidth:
      return "character width below zero";
    case kNoDiameter:
      return "diameter of zero";
    case kNoWidth:
      return "width of zero";
    case kNoDepth:
      return "depth of zero";
    case kNoLength:
      return "length of zero";
    case kNoEdge:
      return "edge of zero";
    case kNoBendRadius:
      return "bend radius of zero";
    case kNoExtent:
      return "extent of zero";
    case kFlatBox:
      return "the three edges lie in one plane";
    case kNoPlane:
      return "start and end of the bend lie in one line with its centre";
    case kTubeTooWide:
      return "tube wider than its bend";
    case kSectionTooWide:
      return "section wider than its bend";
    case kFaceCrosses:
      return "reducer is twisted: a face crosses itself";
    case kNoVolume:
      return "reducer without volume";
    case kTurnedInside:
      return "reducer is twisted: it turns inside out";
    case kNoPoints:
      return "line without points";
    case kTooFewPoints:
      return "polygon of fewer than three points";
    case kNoArea:
      return "face without area";
    case kCrossed:
      return "face that crosses itself";
    case kNoShape:
      return "a kind without a shape";
  }
  return "";
}

}  // namespace Vesk
