// SPDX-License-Identifier: MIT
#include "takeoff/Measures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numbers>
#include <tuple>

#include "prims/Visit.h"
#include "shape/FaceArea.h"
#include "shape/ReducerShape.h"
#include "shape/Shape.h"

namespace VeskTool {
namespace {

using std::numbers::pi;

constexpr double kMillimetre = 1e-3;  // metres

// Of the product of its edges: how much less a box may enclose and still count as right.
constexpr double kOblique = 1e-4;

// A turn below this is none.
constexpr double kNoAngle = 1e-9;

double hundredths(double value) { return std::round(value * 100.0) / 100.0; }

class Measurer {
 public:
  Measurer(Measures& to, double unit) : to_(to), unit_(unit) {}

  void operator()(const Vesk::Cyl& cyl) {
    round(cyl.diameter, cyl.diameter, cyl.axis.length());
    to_.surface = pi * to_.diameter1 * to_.length;
    to_.volume = pi / 4.0 * to_.diameter1 * to_.diameter1 * to_.length;
  }

  void operator()(const Vesk::Cone& cone) {
    const double r1 = unit_ * cone.diameter1 / 2.0;
    const double r2 = unit_ * cone.diameter2 / 2.0;
    round(std::max(cone.diameter1, cone.diameter2), std::min(cone.diameter1, cone.diameter2),
          cone.axis.length());
    to_.size.diameter2 = millimetres(to_.diameter2);
    to_.surface = pi * (r1 + r2) * std::hypot(to_.length, r1 - r2);
    to_.volume = pi / 3.0 * (r1 * r1 + r1 * r2 + r2 * r2) * to_.length;
  }

  // By Pappus: the section, or what is round it, times the way of its middle.
  void operator()(const Vesk::Torus& torus) {
    round(torus.diameter, torus.diameter, bend(torus.startVector, torus.endVector));
    to_.surface = pi * to_.diameter1 * to_.length;
    to_.volume = pi / 4.0 * to_.diameter1 * to_.diameter1 * to_.length;
  }

  void operator()(const Vesk::Relb& relb) {
    duct(relb.width, relb.depth, bend(relb.startVector, relb.endVector));
    to_.surface = 2.0 * (to_.width + to_.depth) * to_.length;
    to_.volume = to_.width * to_.depth * to_.length;
  }

  void operator()(const Vesk::Box& box) {
    std::array<double, 3> edges = {box.edge1.length(), box.edge2.length(), box.edge3.length()};
    std::sort(edges.begin(), edges.end(), std::greater<>());
    const double product = edges[0] * edges[1] * edges[2];
    const double volume = std::fabs(triple(box.edge1, box.edge2, box.edge3));
    duct(edges[1], edges[2], edges[0]);
    to_.surface =
        area(2.0 * (cross(box.edge1, box.edge2).length() + cross(box.edge2, box.edge3).length() +
                    cross(box.edge3, box.edge1).length()));
    to_.volume = area(volume) * unit_;
    if (volume >= (1.0 - kOblique) * product) return;
    to_.section = Section::kNone;
    to_.remark = "oblique box: measured as it is drawn, not as the product of its edges";
  }

  void operator()(const Vesk::Red& red) {
    const Vesk::ReducerShape shape = Vesk::reducerShapeOf(red);
    double surface = 0.0;
    for (const auto& f : Vesk::kReducerFaces) {
      surface += Vesk::bilinearArea(shape.corners[f[0]], shape.corners[f[1]], shape.corners[f[2]],
                                    shape.corners[f[3]]);
    }
    to_.surface = area(surface);
    to_.volume = area(std::fabs(shape.volume)) * unit_;
    if (shape.volume < 0.0) {
      to_.remark =
          "reducer with its ends swapped: measured as it is drawn, not as a negative volume";
    }
  }

  void operator()(const Vesk::Pgon& pgon) {
    const Vesk::FaceShape face = Vesk::faceShapeOf(pgon);
    const auto& p = face.points;
    if (p.size() == 4) {
      to_.surface = area(Vesk::quadrangleArea(p[0], p[1], p[2], p[3]));
      return;
    }
    double surface = 0.0;
    for (const auto& t : face.triangles) {
      surface += cross(p[t[1]] - p[t[0]], p[t[2]] - p[t[0]]).length() / 2.0;
    }
    to_.surface = area(surface);
  }

  void operator()(const Vesk::Pline& line) {
    double length = 0.0;
    for (std::size_t i = 1; i < line.vertices.size(); ++i) {
      length += distance(line.vertices[i - 1], line.vertices[i]);
    }
    to_.lines = length * unit_;
  }

  void operator()(const Vesk::Txt&) {}

 private:
  double area(double inFile) const { return inFile * unit_ * unit_; }
  static double millimetres(double metres) { return hundredths(metres / kMillimetre); }

  void round(double diameter1, double diameter2, double length) {
    to_.section = Section::kRound;
    to_.diameter1 = diameter1 * unit_;
    to_.diameter2 = diameter2 * unit_;
    to_.length = length * unit_;
    to_.size.diameter1 = millimetres(to_.diameter1);
  }

  void duct(double width, double depth, double length) {
    to_.section = Section::kDuct;
    to_.width = width * unit_;
    to_.depth = depth * unit_;
    to_.length = length * unit_;
    to_.size.width = millimetres(to_.width);
    to_.size.depth = millimetres(to_.depth);
  }

  // The length of the arc.
  double bend(const GeVector& start, const GeVector& end) {
    const double angle = start.angleTo(end);
    const double radius = (start.length() + end.length()) / 2.0;
    to_.size.angle = hundredths(angle * 180.0 / pi);
    to_.size.radius = millimetres(radius * unit_);
    return angle * radius;
  }

  Measures& to_;
  double unit_;
};

// Half a turn has no plane, and is measured without one.
bool isHalfTurn(const Vesk::Geo& geo) {
  const auto turns = [](const auto& bend) {
    return bend.startVector.angleTo(bend.endVector) > kNoAngle;
  };
  switch (kindOf(geo)) {
    case Kind::kTorus:
      return turns(static_cast<const Vesk::Torus&>(geo));
    case Kind::kElbow:
      return turns(static_cast<const Vesk::Relb&>(geo));
    case Kind::kPoint:
    case Kind::kSegment:
    case Kind::kPolyline:
    case Kind::kTriangle:
    case Kind::kQuadrangle:
    case Kind::kPolygon:
    case Kind::kText:
    case Kind::kBox:
    case Kind::kReducer:
    case Kind::kCylinder:
    case Kind::kCone:
      break;
  }
  return false;
}

}  // namespace

bool operator<(const Size& a, const Size& b) {
  const auto key = [](const Size& s) {
    return std::tie(s.kind, s.diameter1, s.diameter2, s.width, s.depth, s.angle, s.radius);
  };
  return key(a) < key(b);
}

Measures measure(const Vesk::Geo& geo, double unit) {
  Measures measures;
  measures.size.kind = kindOf(geo);
  measures.isSolid = geo.isSolid();
  const Vesk::ShapeFault fault = Vesk::shapeFaultOf(geo);
  if (fault != Vesk::ShapeFault::kNone &&
      !(fault == Vesk::ShapeFault::kNoPlane && isHalfTurn(geo))) {
    measures.fault = Vesk::textOf(fault);
    return measures;
  }
  Vesk::visit(geo, Measurer(measures, unit), [] {});
  return measures;
}

}  // namespace VeskTool
