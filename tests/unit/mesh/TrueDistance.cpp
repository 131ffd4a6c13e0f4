// SPDX-License-Identifier: MIT
#include "mesh/TrueDistance.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/Red.h"
#include "vesk/Relb.h"
#include "vesk/Torus.h"

namespace VeskTest {
namespace {

using namespace Vesk;

struct Flat {
  double x;
  double y;
};

double toSegment(const Flat& p, const Flat& a, const Flat& b) {
  const Flat d{b.x - a.x, b.y - a.y};
  const double square = d.x * d.x + d.y * d.y;
  const double along = square == 0 ? 0 : ((p.x - a.x) * d.x + (p.y - a.y) * d.y) / square;
  const double t = std::clamp(along, 0.0, 1.0);
  return std::hypot(p.x - a.x - t * d.x, p.y - a.y - t * d.y);
}

// To the lines of a section, from one point to the next.
double toLines(const Flat& p, const std::vector<Flat>& lines) {
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t i = 1; i < lines.size(); ++i) {
    least = std::min(least, toSegment(p, lines[i - 1], lines[i]));
  }
  return least;
}

// A frustum is its section turned about the axis.
double toRound(const GePoint& origin, const GeVector& axis, double r1, double r2,
               const GePoint& p) {
  const double height = axis.length();
  const GeVector v = p - origin;
  const double z = dot(v, axis) / height;
  const double radius = cross(v, axis).length() / height;
  return toLines({radius, z}, {{0, 0}, {r1, 0}, {r2, height}, {0, height}});
}

// A bend: the section's lines while the point is inside the sweep; and both ends,
// full ones.
template <class Inside, class Lines>
double toBend(const GePoint& centre, const GeVector& start, const GeVector& end, const GePoint& p,
              Inside inside, Lines lines) {
  const GeVector x = start / start.length();
  GeVector z = cross(start, end);
  z = z / z.length();
  const GeVector y = cross(z, x);
  const double sweep = std::atan2(dot(end, y), dot(end, x));
  const GeVector v = p - centre;
  const double height = dot(v, z);
  const double u = dot(v, x);
  const double w = dot(v, y);
  const double angle = std::atan2(w, u);
  double least = std::numeric_limits<double>::infinity();
  const double slack = 1e-9;
  if (angle > -slack && angle < sweep + slack) least = lines(Flat{std::hypot(u, w), height});
  for (const double at : {0.0, sweep}) {
    const Flat onEnd{u * std::cos(at) + w * std::sin(at), height};
    const double off = std::fabs(w * std::cos(at) - u * std::sin(at));
    least = std::min(least, std::hypot(off, inside(onEnd) ? 0.0 : lines(onEnd)));
  }
  return least;
}

double toTorus(const Torus& t, const GePoint& p) {
  const double bend = (t.startVector.length() + t.endVector.length()) / 2;
  const double tube = t.diameter / 2;
  const auto fromMiddle = [&](const Flat& q) { return std::hypot(q.x - bend, q.y) - tube; };
  return toBend(
      t.centre, t.startVector, t.endVector, p, [&](const Flat& q) { return fromMiddle(q) < 0; },
      [&](const Flat& q) { return std::fabs(fromMiddle(q)); });
}

double toElbow(const Relb& e, const GePoint& p) {
  const double bend = (e.startVector.length() + e.endVector.length()) / 2;
  const double a = bend - e.depth / 2;
  const double b = bend + e.depth / 2;
  const double h = e.width / 2;
  return toBend(
      e.centre, e.startVector, e.endVector, p,
      [&](const Flat& q) { return q.x > a && q.x < b && std::fabs(q.y) < h; },
      [&](const Flat& q) {
        return toLines(q, {{a, -h}, {b, -h}, {b, h}, {a, h}, {a, -h}});
      });
}

// With one parameter fixed the face is a segment; the other one is found by cutting
// its range smaller about the best.
double toBilinear(const std::array<GePoint, 4>& c, const GePoint& p) {
  constexpr int kSteps = 3;
  double middle = 0.5;
  double half = 0.5;
  double least = std::numeric_limits<double>::infinity();
  for (int round = 0; round < 24; ++round) {
    double best = middle;
    for (int i = -kSteps; i <= kSteps; ++i) {
      const double u = std::clamp(middle + half * i / kSteps, 0.0, 1.0);
      const GeVector from = (c[0] - p) * (1 - u) + (c[1] - p) * u;
      const GeVector along = (c[3] - p) * (1 - u) + (c[2] - p) * u - from;
      const double square = dot(along, along);
      const double v = square == 0 ? 0 : std::clamp(-dot(from, along) / square, 0.0, 1.0);
      const double apart = (from + along * v).length();
      if (apart < least) {
        least = apart;
        best = u;
      }
    }
    middle = best;
    half /= 2;
  }
  return least;
}

// To the nearest of the six planes, and further for a point outside.
double toBox(const Box& b, const GePoint& p) {
  const GeVector edges[] = {b.edge1, b.edge2, b.edge3};
  double least = std::numeric_limits<double>::infinity();
  double outside = 0.0;
  for (std::size_t i = 0; i < 3; ++i) {
    const GeVector across = cross(edges[(i + 1) % 3], edges[(i + 2) % 3]);
    const double low = dot(p - b.origin, across) / across.length();
    const double high = dot(p - b.origin - edges[i], across) / across.length();
    least = std::min({least, std::fabs(low), std::fabs(high)});
    if (low * high > 0) outside = std::max(outside, std::min(std::fabs(low), std::fabs(high)));
  }
  return std::max(least, outside);
}

double toHexahedron(const std::array<GePoint, 8>& c, const GePoint& p) {
  constexpr std::size_t kFaces[6][4] = {{0, 1, 3, 2}, {4, 5, 7, 6}, {0, 1, 5, 4},
                                        {2, 3, 7, 6}, {0, 2, 6, 4}, {1, 3, 7, 5}};
  double least = std::numeric_limits<double>::infinity();
  for (const auto& f : kFaces) {
    least = std::min(least, toBilinear({c[f[0]], c[f[1]], c[f[2]], c[f[3]]}, p));
  }
  return least;
}

}  // namespace

double distanceToSurface(const Geo& geo, const GePoint& p) {
  if (const auto* c = dynamic_cast<const Cyl*>(&geo)) {
    return toRound(c->origin, c->axis, c->diameter / 2, c->diameter / 2, p);
  }
  if (const auto* c = dynamic_cast<const Cone*>(&geo)) {
    return toRound(c->origin, c->axis, c->diameter1 / 2, c->diameter2 / 2, p);
  }
  if (const auto* t = dynamic_cast<const Torus*>(&geo)) return toTorus(*t, p);
  if (const auto* e = dynamic_cast<const Relb*>(&geo)) return toElbow(*e, p);
  if (const auto* b = dynamic_cast<const Box*>(&geo)) return toBox(*b, p);
  const auto& r = dynamic_cast<const Red&>(geo);
  std::array<GePoint, 8> corners;
  for (int k = 0; k < 8; ++k) corners[static_cast<std::size_t>(k)] = r.corner(k);
  return toHexahedron(corners, p);
}

}  // namespace VeskTest
