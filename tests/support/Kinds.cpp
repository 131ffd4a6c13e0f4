// SPDX-License-Identifier: MIT
#include "support/Kinds.h"

#include <algorithm>
#include <cmath>

#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/Red.h"
#include "vesk/Relb.h"
#include "vesk/Torus.h"
#include "vesk/Txt.h"

namespace VeskTest {

using namespace Vesk;

double Random::between(double low, double high) {
  const double unit = static_cast<double>(engine_() >> 11) * 0x1p-53;
  return low + (high - low) * unit;
}

int Random::below(int n) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(n)); }

GePoint Random::point() {
  const double x = between(-100, 100);
  const double y = between(-100, 100);
  return {x, y, between(-100, 100)};
}

GeVector Random::direction() {
  for (;;) {
    const GeVector v = (point() - GePoint()) / 100;
    if (v.length() > 0.1 && v.length() <= 1) return v / v.length();
  }
}

GeMatrix Random::motion() {
  const GeMatrix frame(direction(), direction());
  GeVector axes[3];
  for (std::size_t i = 0; i < 3; ++i) axes[i] = {frame.columns[i].data()};
  return {axes[0], axes[1], axes[2], point() - GePoint()};
}

namespace {

const double kTwoPi = 2 * std::acos(-1.0);

// A unit vector perpendicular to `v`, by a way of our own.
GeVector sideways(const GeVector& v) {
  const bool flat = std::fabs(v.z) < 0.9 * v.length();
  const GeVector s = cross(v, flat ? GeVector(0, 0, 1) : GeVector(1, 0, 0));
  return s / s.length();
}

// Two vectors with an angle of `sweep` between them.
struct Bend {
  GeVector start;
  GeVector end;
};

// Every third bend starts or ends on a world axis, where an extreme lies exactly
// at the end of the sweep.
Bend makeBend(Random& random, double radius) {
  GeVector from = random.direction();
  if (random.below(3) == 0) {
    const GeVector axes[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {-1, 0, 0}, {0, -1, 0}, {0, 0, -1}};
    from = axes[random.below(6)];
  }
  GeVector across = cross(from, random.direction());
  if (random.below(3) == 0) across = sideways(from);  // often in a plane of two axes
  across = across / across.length();
  const double angle = random.below(4) == 0 ? kTwoPi / 4 : random.between(0.01, 3.13);
  const GeVector to = from * std::cos(angle) + across * std::sin(angle);
  Bend bend{from * radius, to * radius};
  if (random.below(2) == 0) std::swap(bend.start, bend.end);
  return bend;
}

// The unit direction at the part `t` of the way from one vector to another.
GeVector onArc(const GeVector& start, const GeVector& end, double t) {
  const GeVector s = start / start.length();
  const GeVector normal = cross(start, end);
  const GeVector across = cross(normal / normal.length(), s);
  const double sweep = std::atan2(normal.length(), dot(start, end));
  return s * std::cos(sweep * t) + across * std::sin(sweep * t);
}

// On a disk about `axis`: v by the radius, w round it.
GeVector onDisk(const GeVector& axis, double diameter, double v, double w) {
  const GeVector x = sideways(axis);
  const GeVector y = cross(axis / axis.length(), x);
  return (x * std::cos(kTwoPi * w) + y * std::sin(kTwoPi * w)) * (v * diameter / 2);
}

GePoint inCyl(const Geo& geo, double u, double v, double w) {
  const auto& c = dynamic_cast<const Cyl&>(geo);
  return c.origin + c.axis * u + onDisk(c.axis, c.diameter, v, w);
}

GePoint inCone(const Geo& geo, double u, double v, double w) {
  const auto& c = dynamic_cast<const Cone&>(geo);
  const double diameter = c.diameter1 + (c.diameter2 - c.diameter1) * u;
  return c.origin + c.axis * u + onDisk(c.axis, diameter, v, w);
}

GePoint inBox(const Geo& geo, double u, double v, double w) {
  const auto& b = dynamic_cast<const Box&>(geo);
  return b.origin + b.edge1 * u + b.edge2 * v + b.edge3 * w;
}

GePoint inTorus(const Geo& geo, double u, double v, double w) {
  const auto& t = dynamic_cast<const Torus&>(geo);
  const GeVector d = onArc(t.startVector, t.endVector, u);
  const GeVector normal = cross(t.startVector, t.endVector);
  const double radius = (t.startVector.length() + t.endVector.length()) / 2;
  const double half = v * t.diameter / 2;
  return t.centre + d * (radius + half * std::cos(kTwoPi * w)) +
         normal / normal.length() * (half * std::sin(kTwoPi * w));
}

GePoint inRelb(const Geo& geo, double u, double v, double w) {
  const auto& r = dynamic_cast<const Relb&>(geo);
  const GeVector d = onArc(r.startVector, r.endVector, u);
  const double radius = (r.startVector.length() + r.endVector.length()) / 2;
  const GeVector normal = cross(r.startVector, r.endVector);
  return r.centre + d * (radius + r.depth * (v - 0.5)) +
         normal / normal.length() * (r.width * (w - 0.5));
}

// Trilinear between the corners: bit 0 of a corner's number goes with u, bit 1
// with v, bit 2 with w.
GePoint inRed(const Geo& geo, double u, double v, double w) {
  const auto& r = dynamic_cast<const Red&>(geo);
  GePoint p = r.origin;
  for (unsigned k = 1; k < 8; ++k) {
    const double weight =
        ((k & 1U) != 0 ? u : 1 - u) * ((k & 2U) != 0 ? v : 1 - v) * ((k & 4U) != 0 ? w : 1 - w);
    p += r.cornerVectors[k - 1] * weight;
  }
  return p;
}

GePoint onPline(const Geo& geo, double u, double, double) {
  const auto& p = dynamic_cast<const Pline&>(geo).vertices;
  const double along = u * static_cast<double>(p.size() - 1);
  const std::size_t i = std::min(static_cast<std::size_t>(along), p.size() - 2);
  return p[i] + (p[i + 1] - p[i]) * (along - static_cast<double>(i));
}

// From the first vertex to the boundary.
GePoint onPgon(const Geo& geo, double u, double v, double) {
  const auto& p = dynamic_cast<const Pgon&>(geo).vertices;
  const double along = u * static_cast<double>(p.size());
  const std::size_t i = std::min(static_cast<std::size_t>(along), p.size() - 1);
  const GePoint a = p[i].point;
  const GePoint b = p[(i + 1) % p.size()].point;
  const GePoint boundary = a + (b - a) * (along - static_cast<double>(i));
  return p[0].point + (boundary - p[0].point) * v;
}

GePoint onTxt(const Geo& geo, double u, double v, double) {
  const auto& t = dynamic_cast<const Txt&>(geo);
  const double column = (t.alignment - 1) % 3 * 0.5;
  const double row = (t.alignment - 1) / 3 * 0.5;
  const double length = static_cast<double>(t.text.size()) * t.charWidth;
  return t.position + t.direction * (length * (u - column)) +
         t.upDirection * (t.height * (v - row));
}

std::unique_ptr<Geo> makeCyl(Random& random) {
  Cyl c;
  c.origin = random.point();
  c.axis = random.direction() * random.between(1, 50);
  c.diameter = random.between(1, 30);
  return std::make_unique<Cyl>(c);
}

std::unique_ptr<Geo> makeCone(Random& random) {
  Cone c;
  c.origin = random.point();
  c.axis = random.direction() * random.between(1, 50);
  c.diameter1 = random.between(1, 30);
  c.diameter2 = random.below(3) == 0 ? 0 : random.between(1, 30);
  return std::make_unique<Cone>(c);
}

std::unique_ptr<Geo> makeBox(Random& random) {
  Box b;
  const GeMatrix m = random.motion();
  b.origin = m * GePoint();
  b.edge1 = m * GeVector(random.between(1, 50), 0, 0);
  b.edge2 = m * GeVector(0, random.between(1, 50), 0);
  b.edge3 = m * GeVector(0, 0, random.between(1, 50));
  b.edges = {{"left", {}}, {"seam", {{1, 2}, {3, 4}}}};
  return std::make_unique<Box>(b);
}

std::unique_ptr<Geo> makeRelb(Random& random) {
  Relb r;
  const double radius = random.between(10, 50);
  const Bend bend = makeBend(random, radius);
  r.centre = random.point();
  r.startVector = bend.start;
  r.endVector = bend.end;
  r.width = random.between(1, 30);
  r.depth = random.between(1, 1.9 * radius);
  r.flipped = random.below(2) == 0;
  return std::make_unique<Relb>(r);
}

std::unique_ptr<Geo> makeTorus(Random& random) {
  Torus t;
  const double radius = random.between(10, 50);
  const Bend bend = makeBend(random, radius);
  t.centre = random.point();
  t.startVector = bend.start;
  t.endVector = bend.end;
  t.diameter = random.between(1, 1.9 * radius);
  if (random.below(2) == 0) t.bendRadius = radius;
  return std::make_unique<Torus>(t);
}

// Two parallel rectangles that are stretched alike, so that all faces are plane.
std::unique_ptr<Geo> makeRed(Random& random) {
  const GeMatrix m = random.motion();
  const double a = random.between(1, 30);
  const double b = random.between(1, 30);
  const double stretch = random.between(0.2, 3);
  const GeVector offset(random.between(-20, 20), random.between(-20, 20), random.between(1, 50));
  const GeVector base[] = {{0, 0, 0}, {a, 0, 0}, {0, b, 0}, {a, b, 0}};
  Red r;
  r.origin = m * GePoint();
  for (std::size_t k = 1; k < 8; ++k) {
    r.cornerVectors[k - 1] = m * (k < 4 ? base[k] : base[k - 4] * stretch + offset);
  }
  r.tags = {{"left", {}}, {"seam", {{1, 2}, {3, 4}}}};
  return std::make_unique<Red>(r);
}

std::unique_ptr<Geo> makePline(Random& random) {
  Pline p;
  const int pieces[] = {1, 2, 3, 4, 6, 8};
  const int n = 1 + pieces[random.below(6)];
  for (int i = 0; i < n; ++i) p.vertices.push_back(random.point());
  p.pointDirection = {1, 2, 3};
  p.addArc(random.between(1, 30), 0, 1, 2);
  return std::make_unique<Pline>(p);
}

// Convex, in a plane of its own.
std::unique_ptr<Geo> makePgon(Random& random) {
  Pgon p;
  const GeMatrix m = random.motion();
  const int numbers[] = {3, 4, 6, 8};
  const int n = numbers[random.below(4)];
  const double a = random.between(5, 50);
  const double b = random.between(5, 50);
  const bool normals = random.below(2) == 0;
  for (int i = 0; i < n; ++i) {
    const double angle = kTwoPi * (i + random.between(0, 0.7)) / n;
    const GePoint point = m * GePoint(a * std::cos(angle), b * std::sin(angle), 0);
    if (normals) {
      p.addVertex(point, m * GeVector(0, 0, 1));
    } else {
      p.addVertex(point);
    }
  }
  p.arcs = {{random.between(1, 30), {0, 1, 2}}};
  return std::make_unique<Pgon>(p);
}

std::unique_ptr<Geo> makeTxt(Random& random) {
  Txt t;
  t.position = random.point();
  t.direction = random.direction();
  t.upDirection = random.direction();
  t.charWidth = random.between(0.5, 5);
  t.height = random.between(1, 10);
  t.alignment = 1 + random.below(9);
  t.alignmentFlag = random.below(2);
  t.text = std::string(static_cast<std::size_t>(1 + random.below(20)), 'x');
  return std::make_unique<Txt>(t);
}

template <class Primitive>
std::unique_ptr<Geo> copyOf(const Geo& geo) {
  return std::make_unique<Primitive>(dynamic_cast<const Primitive&>(geo));
}

// clang-format off
const Kind kKinds[] = {
    // name   code in 2  in 3  solid movable centroid
    {"Cyl",   1, "CYL", "c ", true,  true,  true,  makeCyl,   copyOf<Cyl>,   inCyl},
    {"Box",   2, "BOX", "b ", true,  true,  true,  makeBox,   copyOf<Box>,   inBox},
    {"Relb",  3, "ELB", "e ", true,  true,  true,  makeRelb,  copyOf<Relb>,  inRelb},
    {"Torus", 4, "TOR", "t ", true,  true,  false, makeTorus, copyOf<Torus>, inTorus},
    {"Red",   5, "RED", "r ", true,  true,  true,  makeRed,   copyOf<Red>,   inRed},
    {"Cone",  6, "CON", "n ", true,  true,  true,  makeCone,  copyOf<Cone>,  inCone},
    {"Pline", 7, "SEG", "l ", false, true,  false, makePline, copyOf<Pline>, onPline},
    {"Pgon",  8, "",    "g ", false, true,  false, makePgon,  copyOf<Pgon>,  onPgon},
    {"Txt",   9, "TXT", "x ", false, false, false, makeTxt,   copyOf<Txt>,   onTxt},
};
// clang-format on

}  // namespace

std::span<const Kind> kinds() { return kKinds; }

}  // namespace VeskTest
