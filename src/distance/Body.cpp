// SPDX-License-Identifier: MIT
#include "distance/Body.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "prims/BendArc.h"
#include "prims/EarClipper.h"
#include "prims/Visit.h"
#include "vesk/GeConstants.h"

namespace Vesk {
namespace {

constexpr double kLargest = 1e12;
constexpr double kPlane = 1e-9;    // of the size: corners this far off a plane lie in it
constexpr double kNoPlane = 1e-9;  // sine of the angle of a bend that has no plane
constexpr int kCellsOfFace = 12;   // along a side, to tell inside from outside

bool isUsable(double v) { return std::fabs(v) <= kLargest; }
bool isUsable(const GeVector& v) { return isUsable(v.x) && isUsable(v.y) && isUsable(v.z); }
bool isUsable(const GePoint& p) { return isUsable(GeVector(p.x, p.y, p.z)); }

GePoint middleOf(const Extents& box) { return box.min + (box.max - box.min) * 0.5; }

// The reducer's faces, each in the order of BilinearFace, looking outward if its
// corners are in their usual order.
constexpr std::size_t kReducerFaces[6][4] = {{0, 2, 1, 3}, {4, 5, 6, 7}, {0, 1, 4, 5},
                                             {1, 3, 5, 7}, {3, 2, 7, 6}, {2, 0, 6, 4}};

// Whether the four corners lie on a line or in a point. A face without a normal whose
// corners do not has sides that cross.
bool isLine(const std::array<GeVector, 8>& corners, const std::size_t (&f)[4], double size) {
  const GeVector one = corners[f[1]] - corners[f[0]];
  const GeVector other = corners[f[2]] - corners[f[0]];
  const GeVector last = corners[f[3]] - corners[f[0]];
  return std::max({cross(one, other).length(), cross(other, last).length(),
                   cross(last, one).length()}) <= kPlane * size * size;
}

// Whether the eight corners are those of a convex body with plane faces.
bool isConvex(const std::array<GeVector, 8>& corners) {
  double size = 0.0;
  for (const GeVector& c : corners) size = std::max(size, (c - corners[0]).length());
  double sense = 0.0;
  for (const auto& f : kReducerFaces) {
    const GeVector& a = corners[f[0]];
    const GeVector normal = cross(corners[f[3]] - a, corners[f[2]] - corners[f[1]]);
    const double length = normal.length();
    if (!(length > kPlane * size * size)) {
      if (!isLine(corners, f, size)) return false;
      continue;
    }
    for (std::size_t k = 0; k < 8; ++k) {
      const double height = dot(normal, corners[k] - a) / length;
      const bool isOfFace = std::find(std::begin(f), std::end(f), k) != std::end(f);
      if (std::fabs(height) <= kPlane * size) continue;
      if (isOfFace || height * sense < 0.0) return false;
      sense = height;
    }
    // Its four corners must turn one way.
    const std::size_t ring[4] = {f[0], f[1], f[3], f[2]};
    for (std::size_t k = 0; k < 4; ++k) {
      const GeVector& p = corners[ring[k]];
      const GeVector& q = corners[ring[(k + 1) % 4]];
      const GeVector& r = corners[ring[(k + 2) % 4]];
      if (dot(cross(q - p, r - q), normal) < -kPlane * size * length) return false;
    }
    sense = 0.0;
  }
  return true;
}

GeVector onFace(const BilinearFace& face, double u, double v) {
  return face[0] * ((1 - u) * (1 - v)) + face[1] * (u * (1 - v)) + face[2] * ((1 - u) * v) +
         face[3] * (u * v);
}

// The solid angle of a triangle seen from the origin, with its sense.
double solidAngle(const GeVector& a, const GeVector& b, const GeVector& c) {
  const double la = a.length();
  const double lb = b.length();
  const double lc = c.length();
  const double below = la * lb * lc + dot(a, b) * lc + dot(b, c) * la + dot(c, a) * lb;
  return 2.0 * std::atan2(triple(a, b, c), below);
}

}  // namespace

GeVector SweptArc::outward(double angle) const { return x * std::cos(angle) + y * std::sin(angle); }

GeVector SweptArc::along(double angle) const { return y * std::cos(angle) - x * std::sin(angle); }

Convex SweptArc::section(double angle) const {
  Convex convex;
  const GeVector out = outward(angle);
  if (isRound) {
    convex.addDisc(out * radius, along(angle), halfRadial);
  } else {
    for (const double r : {-halfRadial, halfRadial}) {
      for (const double w : {-halfAxial, halfAxial}) convex.addPoint(out * (radius + r) + z * w);
    }
  }
  return convex;
}

// Fills a body from the fields of an element; false for one without a body.
struct Body::Maker {
  Body& body;

  Convex& piece() { return body.pieces_.emplace_back(); }

  bool pointAt(const GePoint& p) {
    body.origin_ = p;
    piece().addPoint({});
    return isUsable(p);
  }

  bool round(const GePoint& origin, const GeVector& axis, double radius1, double radius2) {
    if (!isUsable(origin) || !isUsable(axis) || !isUsable(radius1) || !isUsable(radius2)) {
      return false;
    }
    const GeVector unit = axis.normalised(kDirectionTolerance);
    if (unit.isNull(0.5)) return pointAt(origin);
    const GeVector half = axis * 0.5;
    body.origin_ = origin + half;
    Convex& solid = piece();
    solid.addDisc(-half, unit, std::fabs(radius1));
    solid.addDisc(half, unit, std::fabs(radius2));
    return true;
  }

  bool bend(const GePoint& centre, const GeVector& start, const GeVector& end, double radial,
            double axial, bool isRound) {
    if (!isUsable(centre) || !isUsable(start) || !isUsable(end) || !isUsable(radial) ||
        !isUsable(axial)) {
      return false;
    }
    const BendArc arc(centre, start, end);
    if (!arc.hasPlane()) return pointAt(centre);
    SweptArc swept;
    swept.x = arc.startDirection();
    const GeVector across = cross(swept.x, arc.endDirection());
    if (!(across.length() > kNoPlane)) return pointAt(centre);
    swept.z = across / across.length();
    swept.y = cross(swept.z, swept.x);
    swept.sweep = std::atan2(across.length(), dot(swept.x, arc.endDirection()));
    swept.radius = arc.meanRadius();
    swept.halfRadial = std::fabs(radial) / 2.0;
    swept.halfAxial = std::fabs(axial) / 2.0;
    swept.isRound = isRound;
    body.origin_ = centre;
    body.arc_ = swept;
    return true;
  }

  bool chain(std::span<const GePoint> points) {
    if (points.empty() ||
        !std::all_of(points.begin(), points.end(), [](const GePoint& p) { return isUsable(p); })) {
      return false;
    }
    if (points.size() == 1) return pointAt(points[0]);
    body.origin_ = points[0];
    body.pieces_.reserve(points.size() - 1);
    for (std::size_t i = 1; i < points.size(); ++i) {
      Convex& segment = piece();
      segment.addPoint(points[i - 1] - body.origin_);
      segment.addPoint(points[i] - body.origin_);
    }
    return true;
  }

  bool makeBody(const Cyl& cyl) {
    return round(cyl.origin, cyl.axis, cyl.diameter / 2.0, cyl.diameter / 2.0);
  }

  bool makeBody(const Cone& cone) {
    return round(cone.origin, cone.axis, cone.diameter1 / 2.0, cone.diameter2 / 2.0);
  }

  bool makeBody(const Box& box) {
    if (!isUsable(box.origin) || !isUsable(box.edge1) || !isUsable(box.edge2) ||
        !isUsable(box.edge3)) {
      return false;
    }
    body.origin_ = box.origin + (box.edge1 + box.edge2 + box.edge3) * 0.5;
    Convex& solid = piece();
    for (unsigned k = 0; k < 8; ++k) {
      solid.addPoint(box.edge1 * ((k & 1U) != 0 ? 0.5 : -0.5) +
                     box.edge2 * ((k & 2U) != 0 ? 0.5 : -0.5) +
                     box.edge3 * ((k & 4U) != 0 ? 0.5 : -0.5));
    }
    return true;
  }

  bool makeBody(const Torus& torus) {
    return bend(torus.centre, torus.startVector, torus.endVector, torus.diameter, torus.diameter,
                true);
  }

  bool makeBody(const Relb& relb) {
    return bend(relb.centre, relb.startVector, relb.endVector, relb.depth, relb.width, false);
  }

  bool makeBody(const Red& red) {
    std::array<GeVector, 8> corners;
    body.origin_ = red.origin;
    for (std::size_t k = 1; k < 8; ++k) corners[k] = red.cornerVectors[k - 1];
    if (!isUsable(red.origin) || !std::all_of(corners.begin(), corners.end(),
                                              [](const GeVector& v) { return isUsable(v); })) {
      return false;
    }
    if (isConvex(corners)) {
      Convex& solid = piece();
      for (const GeVector& corner : corners) solid.addPoint(corner);
      return true;
    }
    for (const auto& f : kReducerFaces) {
      body.faces_.push_back({corners[f[0]], corners[f[1]], corners[f[2]], corners[f[3]]});
    }
    return true;
  }

  bool makeBody(const Pline& pline) { return chain(pline.vertices); }

  bool makeBody(const Pgon& pgon) {
    std::vector<GePoint> points;
    points.reserve(pgon.vertices.size() + 1);
    for (const PgonVertex& vertex : pgon.vertices) points.push_back(vertex.point);
    const std::vector<EarTriangle> triangles = clipEars(points);
    if (triangles.empty()) {
      if (points.size() > 1) points.push_back(points.front());
      return chain(points);
    }
    body.origin_ = points[0];
    body.pieces_.reserve(triangles.size());
    for (const EarTriangle& triangle : triangles) {
      Convex& face = piece();
      for (const std::uint32_t k : triangle) {
        if (!isUsable(points[k])) return false;
        face.addPoint(points[k] - body.origin_);
      }
    }
    return true;
  }

  bool makeBody(const Txt& txt) { return pointAt(txt.position); }

  bool make(const Geo& geo) {
    return visit(
        geo, [this](const auto& primitive) { return makeBody(primitive); }, [] { return false; });
  }

  // What the pieces, faces and arc take up.
  void findBox(const Geo& geo) {
    if (body.arc_) {
      geo.addExtents(body.box_);
      return;
    }
    for (const BilinearFace& face : body.faces_) {
      for (const GeVector& corner : face) body.box_.add(body.origin_ + corner);
    }
    for (const Convex& convex : body.pieces_) {
      GeVector low;
      GeVector high;
      low = {convex.support(-kUnitX).x, convex.support(-kUnitY).y, convex.support(-kUnitZ).z};
      high = {convex.support(kUnitX).x, convex.support(kUnitY).y, convex.support(kUnitZ).z};
      body.box_.add(body.origin_ + low).add(body.origin_ + high);
    }
  }
};

std::optional<Body> Body::of(const Geo& geo) {
  std::optional<Body> body(Body{});
  Maker maker{*body};
  if (!maker.make(geo)) return std::nullopt;
  maker.findBox(geo);
  return body;
}

Body::Body(const GePoint& point) : origin_(point), box_(point, point) {
  pieces_.emplace_back().addPoint({});
}

Body::Body(const Extents& box) : origin_(middleOf(box)), box_(box) {
  const GeVector half = (box.max - box.min) * 0.5;
  Convex& solid = pieces_.emplace_back();
  for (unsigned k = 0; k < 8; ++k) {
    solid.addPoint({(k & 1U) != 0 ? half.x : -half.x, (k & 2U) != 0 ? half.y : -half.y,
                    (k & 4U) != 0 ? half.z : -half.z});
  }
}

GeVector Body::anyPoint() const {
  if (arc_) return arc_->outward(0.0) * arc_->radius;
  return faces_.empty() ? pieces_.front().support(kUnitX) : faces_.front().front();
}

bool Body::encloses(const GeVector& point) const {
  double angle = 0.0;
  for (const BilinearFace& face : faces_) {
    constexpr double kStep = 1.0 / kCellsOfFace;
    for (int i = 0; i < kCellsOfFace; ++i) {
      for (int k = 0; k < kCellsOfFace; ++k) {
        const GeVector a = onFace(face, i * kStep, k * kStep) - point;
        const GeVector b = onFace(face, (i + 1) * kStep, k * kStep) - point;
        const GeVector c = onFace(face, i * kStep, (k + 1) * kStep) - point;
        const GeVector d = onFace(face, (i + 1) * kStep, (k + 1) * kStep) - point;
        angle += solidAngle(a, b, d) + solidAngle(a, d, c);
      }
    }
  }
  return std::fabs(angle) > 2.0 * kPi;
}

double gapOf(const Extents& a, const Extents& b) {
  const auto along = [](double amin, double amax, double bmin, double bmax) {
    return std::max({0.0, bmin - amax, amin - bmax});
  };
  return GeVector(along(a.min.x, a.max.x, b.min.x, b.max.x),
                  along(a.min.y, a.max.y, b.min.y, b.max.y),
                  along(a.min.z, a.max.z, b.min.z, b.max.z))
      .length();
}

}  // namespace Vesk
