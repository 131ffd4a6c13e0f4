// SPDX-License-Identifier: MIT
#include "export/ExactShape.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "prims/BendArc.h"
#include "prims/EarClipper.h"
#include "prims/Visit.h"
#include "shape/Shape.h"

namespace VeskTool {
namespace {

using Vesk::Geo;

constexpr double kPi = std::numbers::pi;

// Tiny parts of unit directions that come from rounding are none.
GeVector cleaned(GeVector v) {
  for (double* each : {&v.x, &v.y, &v.z}) {
    if (std::fabs(*each) < 1e-15) *each = 0.0;
  }
  return v;
}

GeVector unit(const GeVector& v) { return cleaned(v / v.length()); }

// A frame along a unit direction.
ExactFrame frameAlong(const GePoint& origin, const GeVector& z) {
  const GeVector side = std::fabs(z.z) < 0.9 ? GeVector(0, 0, 1) : GeVector(1, 0, 0);
  const GeVector x = unit(cross(side, z));
  return {origin, x, cleaned(cross(z, x)), z};
}

std::string makeRound(const GePoint& origin, const GeVector& axis, double diameter1,
                      double diameter2, ExactShape& shape) {
  const double height = axis.length();
  const bool isTurned = diameter2 > diameter1;
  ExactRound round;
  round.frame = isTurned ? frameAlong(origin + axis, unit(-axis)) : frameAlong(origin, unit(axis));
  round.radius = std::max(diameter1, diameter2) / 2.0;
  round.endRadius = std::min(diameter1, diameter2) / 2.0;
  round.height = height;
  shape = round;
  return {};
}

std::string make(const Vesk::Cyl& cyl, ExactShape& shape) {
  return makeRound(cyl.origin, cyl.axis, cyl.diameter, cyl.diameter, shape);
}

std::string make(const Vesk::Cone& cone, ExactShape& shape) {
  return makeRound(cone.origin, cone.axis, cone.diameter1, cone.diameter2, shape);
}

struct BendFrame {
  ExactFrame frame;
  double radius = 0.0;
  double sweep = 0.0;
};

BendFrame bendFrame(const GePoint& centre, const GeVector& start, const GeVector& end) {
  BendFrame made;
  const Vesk::BendArc arc(centre, start, end);
  const GeVector across = cross(arc.startDirection(), arc.endDirection());
  const GeVector x = unit(start);
  const GeVector z = unit(across);
  made.frame = {centre, x, unit(cross(z, x)), z};
  made.radius = arc.meanRadius();
  made.sweep = std::atan2(across.length(), dot(arc.startDirection(), arc.endDirection()));
  return made;
}

std::string make(const Vesk::Torus& torus, ExactShape& shape) {
  const BendFrame bend = bendFrame(torus.centre, torus.startVector, torus.endVector);
  // Wider by rounding alone.
  shape =
      ExactBend{bend.frame, bend.radius, bend.sweep, std::min(torus.diameter / 2.0, bend.radius)};
  return {};
}

std::string make(const Vesk::Relb& relb, ExactShape& shape) {
  const BendFrame bend = bendFrame(relb.centre, relb.startVector, relb.endVector);
  shape = ExactDuct{bend.frame, bend.radius, bend.sweep, std::min(relb.depth, 2.0 * bend.radius),
                    relb.width};
  return {};
}

std::string make(const Vesk::Box& box, ExactShape& shape) {
  GeVector e1 = box.edge1;
  GeVector e2 = box.edge2;
  const GeVector& e3 = box.edge3;
  const double volume = triple(e1, e2, e3);
  if (volume < 0.0) std::swap(e1, e2);
  ExactBody body;
  body.isBox = true;
  for (std::size_t k = 0; k < 8; ++k) {
    GePoint corner = box.origin;
    if ((k & 1U) != 0) corner += e1;
    if ((k & 2U) != 0) corner += e2;
    if ((k & 4U) != 0) corner += e3;
    body.corners[k] = corner;
  }
  shape = body;
  return {};
}

std::string make(const Vesk::Red& red, ExactShape& shape) {
  ExactBody body;
  for (int k = 0; k < 8; ++k) body.corners[static_cast<std::size_t>(k)] = red.corner(k);
  if (red.volume() < 0.0) {
    for (const std::size_t k : {1U, 5U}) std::swap(body.corners[k], body.corners[k + 1]);
  }
  shape = body;
  return {};
}

std::string make(const Vesk::Pgon& pgon, ExactShape& shape) {
  ExactFace face;
  const GePoint& first = pgon.point(0);
  for (const Vesk::PgonVertex& vertex : pgon.vertices) {
    if (face.corners.empty() || !(face.corners.back() == vertex.point)) {
      face.corners.push_back(vertex.point);
    }
  }
  if (face.corners.size() > 1 && face.corners.back() == face.corners.front()) {
    face.corners.pop_back();
  }
  GeVector area;
  GeVector sum;
  for (std::size_t i = 0; i < face.corners.size(); ++i) {
    const GePoint& a = face.corners[i];
    const GePoint& b = face.corners[(i + 1) % face.corners.size()];
    area += cross(a - first, b - first);
    sum += a - first;
  }
  if (!(area.length() > 0.0)) return "no area";
  face.normal = unit(area);
  const GePoint middle = first + sum * (1.0 / static_cast<double>(face.corners.size()));
  for (const GePoint& c : face.corners) {
    face.off = std::max(face.off, std::fabs(dot(c - middle, face.normal)));
  }
  for (const Vesk::EarTriangle& ear : Vesk::clipEars(face.corners)) {
    face.triangles.push_back({ear[0], ear[1], ear[2]});
  }
  if (face.triangles.empty()) return "no area";
  shape = std::move(face);
  return {};
}

std::string make(const Vesk::Pline& pline, ExactShape& shape) {
  ExactPolyline line;
  for (const GePoint& p : pline.vertices) {
    if (line.points.empty() || !(line.points.back() == p)) line.points.push_back(p);
  }
  shape = std::move(line);
  return {};
}

std::string make(const Vesk::Txt& /*txt*/, ExactShape& shape) {
  shape = ExactText{};
  return {};
}

double bodyVolume(const ExactBody& body) {
  const auto& c = body.corners;
  double six = 0.0;
  for (const auto& f : kBodyFaces) {
    const GeVector a = c[f[0]] - c[0];
    const GeVector b = c[f[1]] - c[0];
    const GeVector d = c[f[2]] - c[0];
    const GeVector e = c[f[3]] - c[0];
    // The mean of both triangulations is that of the bilinear face.
    six += (triple(a, b, d) + triple(a, d, e) + triple(b, d, e) + triple(a, b, e)) / 2.0;
  }
  return six / 6.0;
}

}  // namespace

std::string makeExact(const Geo& geo, ExactShape& shape) {
  const Vesk::ShapeFault fault = Vesk::shapeFaultOf(geo);
  if (fault != Vesk::ShapeFault::kNone) return textOf(fault);
  return visit(
      geo, [&](const auto& primitive) { return make(primitive, shape); },
      [] { return std::string(textOf(Vesk::ShapeFault::kNoShape)); });
}

double volumeOf(const ExactShape& shape) {
  if (const auto* round = std::get_if<ExactRound>(&shape)) {
    return kPi / 3.0 * round->height *
           (round->radius * round->radius + round->radius * round->endRadius +
            round->endRadius * round->endRadius);
  }
  if (const auto* bend = std::get_if<ExactBend>(&shape)) {
    return bend->sweep * bend->radius * kPi * bend->tube * bend->tube;
  }
  if (const auto* duct = std::get_if<ExactDuct>(&shape)) {
    return duct->sweep * duct->radius * duct->depth * duct->width;
  }
  const auto* body = std::get_if<ExactBody>(&shape);
  return body == nullptr ? 0.0 : bodyVolume(*body);
}

double offPlane(const GePoint& a, const GePoint& b, const GePoint& c, const GePoint& d) {
  const GeVector across = cross(c - a, d - b);
  const double length = across.length();
  return length > 0.0 ? std::fabs(dot(b - a, across)) / length : 0.0;
}

}  // namespace VeskTool
