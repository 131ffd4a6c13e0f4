// SPDX-License-Identifier: MIT
// The search for the distance of two bodies, see Body.h.

#include <algorithm>
#include <cmath>
#include <queue>

#include "distance/Body.h"
#include "distance/Tubes.h"
#include "vesk/GeConstants.h"

namespace Vesk {
namespace {

constexpr double kMeeting = 0.0005;  // bounds this near to each other have met
constexpr double kRelative = 5e-9;   // of the size of what is large
constexpr double kSamePlace = 0.01;  // of the bounds' meeting: only rounding apart
constexpr std::size_t kMostPairs = 200000;
constexpr double kPlaneFace = 1e-9;

// A part of a body between two bounds: it lies in the hull, blown up by
// `bulge` in the directions between from and to of an arc; no point of the hull is
// further than `slack` from the part.
struct Part {
  Convex hull;
  double bulge = 0.0;
  double slack = 0.0;
  std::size_t face = 0;
  double from = 0.0;  // angles of an arc; u of a face
  double to = 0.0;
  double v0 = 0.0;
  double v1 = 0.0;
};

Part arcPart(const SweptArc& arc, double from, double to) {
  Part part;
  part.from = from;
  part.to = to;
  if (arc.isRound) {
    part.hull.addDisc(arc.outward(from) * arc.radius, arc.along(from), arc.halfRadial);
    part.hull.addDisc(arc.outward(to) * arc.radius, arc.along(to), arc.halfRadial);
  } else {
    for (const double angle : {from, to}) {
      for (const double r : {-arc.halfRadial, arc.halfRadial}) {
        for (const double w : {-arc.halfAxial, arc.halfAxial}) {
          part.hull.addPoint(arc.outward(angle) * (arc.radius + r) + arc.z * w);
        }
      }
    }
  }
  // 1 - cos of half the angle without losing its digits.
  const double s = std::sin((to - from) / 4.0);
  part.bulge = part.slack = arc.outer() * 2.0 * s * s;
  return part;
}

GeVector onFace(const BilinearFace& f, double u, double v) {
  return f[0] * ((1 - u) * (1 - v)) + f[1] * (u * (1 - v)) + f[2] * ((1 - u) * v) + f[3] * (u * v);
}

// How far the hull of the four corners is off the face between them.
double slackOf(const BilinearFace& c) {
  const GeVector one = c[3] - c[0];
  const GeVector other = c[2] - c[1];
  const GeVector normal = cross(one, other);
  const double length = normal.length();
  const double size = one.length() + other.length();
  const GeVector twist = c[0] - c[1] - c[2] + c[3];
  if (!(length > kPlaneFace * size * size)) return twist.length() / 4.0;
  const double thick = std::fabs(dot(normal, c[1] - c[0])) / length;
  if (thick > kPlaneFace * size) return twist.length() / 4.0 + thick;
  const auto turns = [&](std::size_t a, std::size_t b, std::size_t d) {
    return dot(cross(c[b] - c[a], c[d] - c[b]), normal) >= 0.0;
  };
  const bool isConvex = turns(0, 1, 3) && turns(1, 3, 2) && turns(3, 2, 0) && turns(2, 0, 1);
  return isConvex ? 0.0 : twist.length() / 4.0;
}

Part facePart(const Body& body, std::size_t face, double u0, double u1, double v0, double v1) {
  const BilinearFace& f = body.faces()[face];
  const BilinearFace corners = {onFace(f, u0, v0), onFace(f, u1, v0), onFace(f, u0, v1),
                                onFace(f, u1, v1)};
  Part part;
  for (const GeVector& corner : corners) part.hull.addPoint(corner);
  part.slack = slackOf(corners);
  part.face = face;
  part.from = u0;
  part.to = u1;
  part.v0 = v0;
  part.v1 = v1;
  return part;
}

std::vector<Part> partsOf(const Body& body) {
  std::vector<Part> parts;
  if (body.arc()) parts.push_back(arcPart(*body.arc(), 0.0, body.arc()->sweep));
  for (std::size_t i = 0; i < body.faces().size(); ++i) {
    parts.push_back(facePart(body, i, 0.0, 1.0, 0.0, 1.0));
  }
  parts.reserve(parts.size() + body.pieces().size());
  for (const Convex& piece : body.pieces()) parts.emplace_back().hull = piece;
  return parts;
}

std::vector<Part> halvesOf(const Body& body, const Part& part) {
  const double middle = (part.from + part.to) / 2.0;
  if (body.arc()) {
    return {arcPart(*body.arc(), part.from, middle), arcPart(*body.arc(), middle, part.to)};
  }
  const double v = (part.v0 + part.v1) / 2.0;
  return {facePart(body, part.face, part.from, middle, part.v0, v),
          facePart(body, part.face, middle, part.to, part.v0, v),
          facePart(body, part.face, part.from, middle, v, part.v1),
          facePart(body, part.face, middle, part.to, v, part.v1)};
}

// The angle of the part's arc that is nearest to a point.
double angleNear(const SweptArc& arc, const Part& part, const GeVector& point) {
  const double angle = std::atan2(dot(point, arc.y), dot(point, arc.x));
  const double middle = (part.from + part.to) / 2.0;
  // Of the angles that stand for the same direction the one near the part.
  const double turns = std::round((middle - angle) / (2.0 * kPi));
  return std::clamp(angle + turns * 2.0 * kPi, part.from, part.to);
}

GeVector arcPointNear(const SweptArc& arc, const Part& part, const GeVector& point) {
  const double angle = angleNear(arc, part, point);
  const GeVector out = arc.outward(angle);
  const GeVector centre = out * arc.radius;
  double r = dot(point - centre, out);
  double w = dot(point - centre, arc.z);
  if (arc.isRound) {
    const double off = std::hypot(r, w);
    if (off > arc.halfRadial) {
      r *= arc.halfRadial / off;
      w *= arc.halfRadial / off;
    }
  } else {
    r = std::clamp(r, -arc.halfRadial, arc.halfRadial);
    w = std::clamp(w, -arc.halfAxial, arc.halfAxial);
  }
  return centre + out * r + arc.z * w;
}

// A point of the face's part near to this one, by a few steps of least squares.
GeVector facePointNear(const BilinearFace& f, const Part& part, const GeVector& point) {
  constexpr int kSteps = 4;
  double u = (part.from + part.to) / 2.0;
  double v = (part.v0 + part.v1) / 2.0;
  for (int step = 0; step < kSteps; ++step) {
    const GeVector du = (f[1] - f[0]) * (1 - v) + (f[3] - f[2]) * v;
    const GeVector dv = (f[2] - f[0]) * (1 - u) + (f[3] - f[1]) * u;
    const GeVector off = point - onFace(f, u, v);
    const double a = dot(du, du);
    const double b = dot(du, dv);
    const double c = dot(dv, dv);
    const double det = a * c - b * b;
    if (!(det > 0.0)) break;
    u = std::clamp(u + (c * dot(du, off) - b * dot(dv, off)) / det, part.from, part.to);
    v = std::clamp(v + (a * dot(dv, off) - b * dot(du, off)) / det, part.v0, part.v1);
  }
  return onFace(f, u, v);
}

GeVector pointNear(const Body& body, const Part& part, const GeVector& point) {
  if (part.slack == 0.0) return point;
  if (body.arc()) return arcPointNear(*body.arc(), part, point);
  return facePointNear(body.faces()[part.face], part, point);
}

// The largest value of dot(direction, outward) over the part's angles, if above 0.
double mostOutward(const SweptArc& arc, const Part& part, const GeVector& direction) {
  const double x = dot(direction, arc.x);
  const double y = dot(direction, arc.y);
  const double best = angleNear(arc, part, arc.x * x + arc.y * y);
  double most = 0.0;
  for (const double angle : {part.from, best, part.to}) {
    most = std::max(most, x * std::cos(angle) + y * std::sin(angle));
  }
  return most;
}

// The search from below and above: pairs of parts, those first that may be nearest.
class Search {
 public:
  Search(const Body& a, const Body& b, double limit)
      : a_(a), b_(b), shift_(b.origin() - a.origin()) {
    double size = shift_.length();
    if (a.arc()) size += a.arc()->outer();
    if (b.arc()) size += b.arc()->outer();
    meeting_ = kMeeting + kRelative * size;
    best_.distance = limit + meeting_;
  }

  Gap run(double limit) {
    const std::optional<Gap> tubes = gapOfTubes(a_, b_, limit, meeting_);
    if (tubes) {
      isFound_ = true;
      return *tubes;
    }
    if (isInside(a_, b_, -shift_) || isInside(b_, a_, shift_)) return best_;
    const std::vector<Part> ofA = partsOf(a_);
    const std::vector<Part> ofB = partsOf(b_);
    for (const Part& a : ofA) {
      for (const Part& b : ofB) offer(a, b);
    }
    for (std::size_t n = 0; !pairs_.empty() && n < kMostPairs; ++n) {
      const Pair pair = pairs_.top();
      pairs_.pop();
      if (isDone(pair.lower)) break;
      if (pair.a.slack >= pair.b.slack) {
        for (const Part& half : halvesOf(a_, pair.a)) offer(half, pair.b);
      } else {
        for (const Part& half : halvesOf(b_, pair.b)) offer(pair.a, half);
      }
    }
    return best_;
  }

  bool isFound() const { return isFound_; }

 private:
  struct Pair {
    Part a;
    Part b;
    double lower = 0.0;

    bool operator<(const Pair& other) const { return lower > other.lower; }
  };

  bool isDone(double lower) const {
    return best_.distance == 0.0 || lower >= best_.distance - meeting_;
  }

  // A point of `inner` lies inside the faces of `outer`.
  bool isInside(const Body& inner, const Body& outer, const GeVector& shift) {
    if (outer.faces().empty() || gapOf(inner.box(), outer.box()) > 0.0) return false;
    const GeVector point = inner.anyPoint();
    if (!outer.encloses(point + shift)) return false;
    best_ = {0.0, inner.origin() + point, inner.origin() + point};
    isFound_ = true;
    return true;
  }

  void offer(const Part& a, const Part& b) {
    if (best_.distance == 0.0) return;
    const ConvexGap gap = gapOf(a.hull, b.hull, shift_);
    const double lower = gap.distance - bulge(a_, a, gap.onB - gap.onA, gap.distance) -
                         bulge(b_, b, gap.onA - gap.onB, gap.distance);
    if (isDone(lower)) return;
    take(pointNear(a_, a, gap.onA), pointNear(b_, b, gap.onB - shift_));
    if (a.slack == 0.0 && b.slack == 0.0) return;
    if (gap.distance == 0.0) tryCores(a, b);
    if (!isDone(lower)) pairs_.push({a, b, std::max(0.0, lower)});
  }

  // How far the part may reach out of its hull in the direction, of this length.
  static double bulge(const Body& body, const Part& part, const GeVector& direction,
                      double length) {
    if (part.bulge == 0.0 || length == 0.0) return part.bulge;
    return part.bulge * mostOutward(*body.arc(), part, direction) / length;
  }

  // Convex bodies inside the parts; when the hulls overlap these often do.
  void tryCores(const Part& a, const Part& b) {
    const Convex coreA = coreOf(a_, a);
    const Convex coreB = coreOf(b_, b);
    const ConvexGap gap = gapOf(coreA, coreB, shift_);
    take(gap.onA, gap.onB - shift_);
  }

  static Convex coreOf(const Body& body, const Part& part) {
    if (part.slack == 0.0) return part.hull;
    if (body.arc()) return body.arc()->section((part.from + part.to) / 2.0);
    Convex line;
    const double u = (part.from + part.to) / 2.0;
    line.addPoint(onFace(body.faces()[part.face], u, part.v0));
    line.addPoint(onFace(body.faces()[part.face], u, part.v1));
    return line;
  }

  void take(const GeVector& onA, const GeVector& onB) {
    double distance = (onB + shift_ - onA).length();
    if (distance <= kSamePlace * meeting_) distance = 0.0;
    if (distance >= best_.distance) return;
    best_ = {distance, a_.origin() + onA, b_.origin() + onB};
    isFound_ = true;
  }

  const Body& a_;
  const Body& b_;
  GeVector shift_;
  double meeting_ = kMeeting;
  Gap best_;
  bool isFound_ = false;
  std::priority_queue<Pair> pairs_;
};

// Parts of a body whose hulls are inside it but for `most`.
std::vector<Part> innerParts(const Body& body, double most) {
  constexpr std::size_t kMostParts = 256;
  std::vector<Part> parts = partsOf(body);
  for (std::size_t i = 0; i < parts.size() && parts.size() < kMostParts;) {
    if (parts[i].slack <= most) {
      ++i;
      continue;
    }
    const std::vector<Part> halves = halvesOf(body, parts[i]);
    parts[i] = halves.front();
    parts.insert(parts.end(), halves.begin() + 1, halves.end());
  }
  return parts;
}

// How far a point of `inner` is below the faces of `outer`; 0 if it is not.
double depthInside(const Body& inner, const Body& outer) {
  if (outer.faces().empty() || gapOf(inner.box(), outer.box()) > 0.0) return 0.0;
  const GeVector point = inner.anyPoint() + (inner.origin() - outer.origin());
  if (!outer.encloses(point)) return 0.0;
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < outer.faces().size(); ++i) {
    const Part whole = facePart(outer, i, 0.0, 1.0, 0.0, 1.0);
    Convex single;
    single.addPoint(point);
    least = std::min(least, gapOf(whole.hull, single, {}).distance);
  }
  return least;
}

}  // namespace

Gap gapOf(const Body& a, const Body& b, double limit) {
  Search search(a, b, limit);
  Gap gap = search.run(limit);
  if (!search.isFound() || gap.distance > limit) {
    gap.distance = std::numeric_limits<double>::infinity();
  }
  return gap;
}

double distance(const Body& body, const GePoint& point) {
  return gapOf(body, Body(point)).distance;
}

bool touches(const Body& body, const Extents& box) {
  if (gapOf(body.box(), box) > kTouchDistance) return false;
  return gapOf(body, Body(box), kTouchDistance).distance <= kTouchDistance;
}

double depthOf(const Body& a, const Body& b, double enough) {
  constexpr double kWithin = 0.25;
  const double within = std::min(kWithin, enough / 8.0);
  const GeVector shift = b.origin() - a.origin();
  double most = std::max(depthInside(a, b), depthInside(b, a));
  const std::vector<Part> ofB = innerParts(b, within);
  for (const Part& x : innerParts(a, within)) {
    for (const Part& y : ofB) {
      if (most > enough) return most;
      const double slack = x.slack + y.slack;
      most = std::max(most, depthOf(x.hull, y.hull, shift, within, enough + slack) - slack);
    }
  }
  return most;
}

}  // namespace Vesk
