// SPDX-License-Identifier: MIT
#include "distance/Convex.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "vesk/GeConstants.h"

namespace Vesk {
namespace {

constexpr int kMostSteps = 128;
constexpr double kExact = 1e-7;      // millimetres
constexpr double kRelative = 1e-13;  // of the sizes
constexpr int kMostBeginnings = 4;
constexpr double kSlender = 1e-8;  // square of the sine of a triangle's angle
constexpr double kFlat = 1e-14;    // of the product of edges: without area or volume

// A vertex of the difference of two bodies, and where it comes from.
struct Vertex {
  GeVector at;
  GeVector onA;
  GeVector onB;
};

// The point of a simplex that is nearest to the origin, and the vertices that
// carry it with their weights.
struct Nearest {
  std::array<std::size_t, 4> vertices{};
  std::array<double, 4> weights{};
  std::size_t count = 0;
  GeVector at;
  double square = std::numeric_limits<double>::infinity();

  void offer(const Nearest& other) {
    if (other.square < square) *this = other;
  }
};

using Simplex = std::array<Vertex, 4>;

Nearest nearestOn(const Simplex& s, std::size_t a) {
  return {{a}, {1.0}, 1, s[a].at, dot(s[a].at, s[a].at)};
}

Nearest nearestOn(const Simplex& s, std::size_t a, std::size_t b) {
  const GeVector edge = s[b].at - s[a].at;
  const double square = dot(edge, edge);
  const double t = square > 0.0 ? -dot(s[a].at, edge) / square : 0.0;
  if (!(t > 0.0)) return nearestOn(s, a);
  if (t >= 1.0) return nearestOn(s, b);
  const GeVector at = s[a].at + edge * t;
  return {{a, b}, {1.0 - t, t}, 2, at, dot(at, at)};
}

Nearest nearestOn(const Simplex& s, std::size_t a, std::size_t b, std::size_t c) {
  const GeVector ab = s[b].at - s[a].at;
  const GeVector ac = s[c].at - s[a].at;
  const GeVector normal = cross(ab, ac);
  const double square = dot(normal, normal);
  Nearest best;
  if (square > kFlat * kFlat * dot(ab, ab) * dot(ac, ac)) {
    const double wb = dot(cross(s[c].at, s[a].at), normal) / square;
    const double wc = dot(cross(s[a].at, s[b].at), normal) / square;
    const double wa = 1.0 - wb - wc;
    if (wa > 0.0 && wb > 0.0 && wc > 0.0) {
      // By the weights, so that it is a point of the triangle, however slender.
      const GeVector at = s[a].at * wa + s[b].at * wb + s[c].at * wc;
      best = {{a, b, c}, {wa, wb, wc}, 3, at, dot(at, at)};
      if (square > kSlender * dot(ab, ab) * dot(ac, ac)) return best;
    }
  }
  best.offer(nearestOn(s, a, b));
  best.offer(nearestOn(s, b, c));
  best.offer(nearestOn(s, a, c));
  return best;
}

// Of all four; a count of 4 if the origin is inside, and then it is the vertices
// with these weights.
Nearest nearestOn(const Simplex& s) {
  constexpr std::size_t kFaces[4][4] = {{0, 1, 2, 3}, {0, 1, 3, 2}, {0, 2, 3, 1}, {1, 2, 3, 0}};
  bool isInside = true;
  std::array<double, 4> weights{};
  Nearest best;
  for (const auto& f : kFaces) {
    const GeVector& a = s[f[0]].at;
    const GeVector normal = cross(s[f[1]].at - a, s[f[2]].at - a);
    const double tip = dot(normal, s[f[3]].at - a);
    const double origin = -dot(normal, a);
    const bool isFlat = !(std::fabs(tip) > kFlat * normal.length() * (s[f[3]].at - a).length());
    if (isFlat || origin * tip < 0.0) {
      isInside = false;
      best.offer(nearestOn(s, f[0], f[1], f[2]));
    } else {
      weights[f[3]] = origin / tip;
    }
  }
  if (!isInside) return best;
  return {{0, 1, 2, 3}, weights, 4, {}, 0.0};
}

Nearest nearestOfFirst(const Simplex& s, std::size_t count) {
  switch (count) {
    case 1:
      return nearestOn(s, 0);
    case 2:
      return nearestOn(s, 0, 1);
    case 3:
      return nearestOn(s, 0, 1, 2);
    default:
      return nearestOn(s);
  }
}

// Keeps the vertices that carry the nearest point.
std::size_t reduce(Simplex& s, Nearest& nearest) {
  Simplex kept;
  for (std::size_t i = 0; i < nearest.count; ++i) {
    kept[i] = s[nearest.vertices[i]];
    nearest.vertices[i] = i;
  }
  s = kept;
  return nearest.count;
}

Vertex vertexOf(const Convex& a, const Convex& b, const GeVector& shift, const GeVector& along) {
  Vertex v;
  v.onA = a.support(along);
  v.onB = b.support(-along) + shift;
  v.at = v.onA - v.onB;
  return v;
}

double exactness(const Convex& a, const Convex& b, const GeVector& shift) {
  return kExact + kRelative * (a.reach() + b.reach() + shift.length());
}

// A face of the growing polytope: its vertices, outward unit normal and distance.
struct Face {
  std::array<std::size_t, 3> corners{};
  GeVector normal;
  double distance = 0.0;
};

// A polytope inside the difference of two bodies, with the origin inside.
class Polytope {
 public:
  Polytope(const Convex& a, const Convex& b, const GeVector& shift) : a_(a), b_(b), shift_(shift) {}

  // False if the difference is flat, or too flat to tell.
  bool begin() {
    constexpr GeVector kDirections[] = {{1, 0, 0},  {-1, 0, 0}, {0, 1, 0},
                                        {0, -1, 0}, {0, 0, 1},  {0, 0, -1}};
    for (const GeVector& d : kDirections) points_.push_back(pointAlong(d));
    std::size_t i = 1;
    for (std::size_t k = 1; k < 6; ++k) {
      if ((points_[k] - points_[0]).length() > (points_[i] - points_[0]).length()) i = k;
    }
    const GeVector edge = points_[i] - points_[0];
    if (!(edge.length() > kExact)) return false;
    const GeVector side = edge.perpendicular();
    const GeVector first = furthestFrom(points_[0], side, edge);
    const GeVector normal = cross(edge, first - points_[0]);
    if (!(normal.length() > kExact * edge.length())) return false;
    const GeVector unit = normal / normal.length();
    const GeVector up = pointAlong(unit);
    const GeVector down = pointAlong(-unit);
    const bool isUp = dot(unit, up - points_[0]) > -dot(unit, down - points_[0]);
    const GeVector tip = isUp ? up : down;
    if (!(std::fabs(dot(unit, tip - points_[0])) > kExact)) return false;
    points_ = {points_[0], points_[i], first, tip};
    constexpr std::size_t kFaces[4][4] = {{0, 1, 2, 3}, {0, 1, 3, 2}, {0, 2, 3, 1}, {1, 2, 3, 0}};
    for (const auto& f : kFaces) {
      if (!addFace(f[0], f[1], f[2], points_[f[3]])) return false;
    }
    return true;
  }

  // Grows until the bound is `within` of the truth or above `enough`; the bound.
  double grow(double within, double enough) {
    double bound = 0.0;
    for (int step = 0; step < 4 * kMostSteps; ++step) {
      const auto nearest =
          std::min_element(faces_.begin(), faces_.end(),
                           [](const Face& x, const Face& y) { return x.distance < y.distance; });
      if (nearest == faces_.end()) break;
      bound = std::max(bound, nearest->distance);
      if (bound > enough) break;
      const GeVector point = pointAlong(nearest->normal);
      if (dot(point, nearest->normal) - nearest->distance <= within) break;
      if (!addPoint(point)) break;
    }
    return bound;
  }

 private:
  GeVector pointAlong(const GeVector& direction) const {
    return vertexOf(a_, b_, shift_, direction).at;
  }

  // The point furthest off the line through `from` along `edge`, of eight directions.
  GeVector furthestFrom(const GeVector& from, const GeVector& side, const GeVector& edge) const {
    GeVector best = from;
    double most = 0.0;
    const GeVector unit = edge / edge.length();
    for (int k = 0; k < 8; ++k) {
      const GeVector point = pointAlong(side.rotatedAbout(unit, kPi / 4.0 * k));
      const double off = cross(point - from, unit).length();
      if (off <= most) continue;
      most = off;
      best = point;
    }
    return best;
  }

  // A face that looks away from `inside`.
  bool addFace(std::size_t i, std::size_t j, std::size_t k, const GeVector& inside) {
    GeVector normal = cross(points_[j] - points_[i], points_[k] - points_[i]);
    const double length = normal.length();
    if (!(length > 0.0)) return false;
    normal /= length;
    Face face{{i, j, k}, normal, dot(normal, points_[i])};
    if (dot(normal, inside - points_[i]) > 0.0) {
      std::swap(face.corners[1], face.corners[2]);
      face.normal = -normal;
      face.distance = -face.distance;
    }
    faces_.push_back(face);
    return true;
  }

  // Takes away the faces that see the point and closes the hole with it.
  bool addPoint(const GeVector& point) {
    std::vector<std::pair<std::size_t, std::size_t>> rim;
    std::vector<Face> kept;
    for (const Face& face : faces_) {
      if (dot(face.normal, point) - face.distance <= kExact / 16.0) {
        kept.push_back(face);
        continue;
      }
      for (std::size_t k = 0; k < 3; ++k) {
        const std::pair edge(face.corners[k], face.corners[(k + 1) % 3]);
        const std::pair back(edge.second, edge.first);
        const auto found = std::find(rim.begin(), rim.end(), back);
        if (found == rim.end()) {
          rim.push_back(edge);
        } else {
          rim.erase(found);
        }
      }
    }
    if (kept.size() == faces_.size()) return false;
    faces_ = std::move(kept);
    points_.push_back(point);
    for (const auto& [from, to] : rim) {
      GeVector normal = cross(points_[to] - points_[from], point - points_[from]);
      const double length = normal.length();
      if (!(length > 0.0)) return false;
      normal /= length;
      faces_.push_back({{from, to, points_.size() - 1}, normal, dot(normal, point)});
    }
    return true;
  }

  const Convex& a_;
  const Convex& b_;
  GeVector shift_;
  std::vector<GeVector> points_;
  std::vector<Face> faces_;
};

}  // namespace

void Convex::addPoint(const GeVector& point) { points_[pointCount_++] = point; }

void Convex::addDisc(const GeVector& centre, const GeVector& normal, double radius) {
  radii_[discCount_] = radius;
  points_[std::size_t{2} * discCount_] = centre;
  points_[std::size_t{2} * discCount_ + 1U] = normal;
  ++discCount_;
}

GeVector Convex::discSupport(std::size_t disc, const GeVector& direction) const {
  const GeVector& normal = points_[2 * disc + 1];
  GeVector across = direction - normal * dot(direction, normal);
  // Nearly straight at the disc little is left, and of that the rest of the normal
  // would be a large part.
  across = across - normal * dot(across, normal);
  const double length = across.length();
  // Straight at the disc all its points are as far; rounding has no say.
  if (!(length > 1e-14 * direction.length())) return points_[2 * disc];
  return points_[2 * disc] + across * (radii_[disc] / length);
}

GeVector Convex::support(const GeVector& direction) const {
  if (discCount_ > 0) {
    GeVector best = discSupport(0, direction);
    if (discCount_ == 1) return best;
    const GeVector other = discSupport(1, direction);
    return dot(other, direction) > dot(best, direction) ? other : best;
  }
  std::size_t best = 0;
  double furthest = dot(points_[0], direction);
  for (std::size_t i = 1; i < pointCount_; ++i) {
    const double far = dot(points_[i], direction);
    if (far <= furthest) continue;
    furthest = far;
    best = i;
  }
  return points_[best];
}

std::optional<Convex::Pipe> Convex::pipe() const {
  constexpr double kSquare = 1e-12;
  if (discCount_ != 2 || radii_[0] != radii_[1]) return std::nullopt;
  const GeVector along = points_[2] - points_[0];
  const double length = along.length();
  if (cross(along, points_[1]).length() > kSquare * length ||
      cross(along, points_[3]).length() > kSquare * length || !(length > 0.0)) {
    return std::nullopt;
  }
  return Pipe{points_[0], points_[2], radii_[0]};
}

GeVector Convex::middle() const {
  GeVector sum;
  const std::size_t count = discCount_ > 0 ? discCount_ : pointCount_;
  for (std::size_t i = 0; i < count; ++i) sum += points_[discCount_ > 0 ? 2 * i : i];
  return sum * (1.0 / static_cast<double>(count));
}

double Convex::reach() const {
  double most = 0.0;
  for (std::size_t i = 0; i < discCount_; ++i) {
    most = std::max(most, points_[2 * i].length() + radii_[i]);
  }
  for (std::size_t i = 0; i < pointCount_; ++i) most = std::max(most, points_[i].length());
  return most;
}

ConvexGap gapOf(const Convex& a, const Convex& b, const GeVector& shift) {
  const double exact = exactness(a, b, shift);
  Simplex simplex;
  GeVector towards = b.middle() + shift - a.middle();
  if (!(towards.length() > exact)) towards = kUnitX;
  simplex[0] = vertexOf(a, b, shift, towards);
  std::size_t count = 1;
  Nearest nearest = nearestOfFirst(simplex, count);
  ConvexGap best;
  best.distance = std::numeric_limits<double>::infinity();
  const auto take = [&](double distance) {
    if (distance >= best.distance) return;
    best = {distance, {}, {}};
    for (std::size_t i = 0; i < count; ++i) {
      best.onA += simplex[i].onA * nearest.weights[i];
      best.onB += simplex[i].onB * nearest.weights[i];
    }
  };
  double bound = 0.0;
  int beginnings = 1;
  for (int step = 0; step < kMostSteps; ++step) {
    const double distance = std::sqrt(nearest.square);
    take(distance <= exact ? 0.0 : distance);
    if (best.distance == 0.0) break;
    const Vertex next = vertexOf(a, b, shift, -nearest.at);
    bound = std::max(bound, dot(next.at, nearest.at) / distance);
    if (best.distance - bound <= exact) break;
    simplex[count] = next;
    Nearest better = nearestOfFirst(simplex, count + 1);
    if (better.count == 4) {
      nearest = better;
      count = 4;
      take(0.0);
      break;
    }
    if (better.square < nearest.square) {
      nearest = better;
      count = reduce(simplex, nearest);
      continue;
    }
    // Rounding allows no more from here: begin again at this vertex.
    if (beginnings++ == kMostBeginnings) break;
    simplex[0] = next;
    count = 1;
    nearest = nearestOfFirst(simplex, count);
  }
  return best;
}

double depthOf(const Convex& a, const Convex& b, const GeVector& shift, double within,
               double enough) {
  if (gapOf(a, b, shift).distance > 0.0) return 0.0;
  Polytope polytope(a, b, shift);
  return polytope.begin() ? std::max(0.0, polytope.grow(within, enough)) : 0.0;
}

}  // namespace Vesk
