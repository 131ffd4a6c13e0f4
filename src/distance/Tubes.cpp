// SPDX-License-Identifier: MIT
#include "distance/Tubes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace Vesk {
namespace {

constexpr std::size_t kMostSteps = 50000;

// The centre line of a pipe or bend, from 0 to 1.
class CentreLine {
 public:
  static std::optional<CentreLine> of(const Body& body, const GeVector& shift) {
    CentreLine line;
    line.shift_ = shift;
    if (body.arc()) {
      if (!body.arc()->isRound) return std::nullopt;
      line.arc_ = &*body.arc();
      line.radius_ = line.arc_->halfRadial;
      return line;
    }
    if (body.pieces().size() != 1) return std::nullopt;
    const std::optional<Convex::Pipe> pipe = body.pieces().front().pipe();
    if (!pipe) return std::nullopt;
    line.from_ = pipe->from;
    line.along_ = pipe->to - pipe->from;
    line.radius_ = pipe->radius;
    return line;
  }

  double radius() const { return radius_; }

  GeVector at(double t) const {
    if (arc_ == nullptr) return from_ + along_ * t + shift_;
    return arc_->outward(arc_->sweep * t) * arc_->radius + shift_;
  }

  // Of unit length.
  GeVector tangent(double t) const {
    return arc_ == nullptr ? along_ * (1.0 / along_.length()) : arc_->along(arc_->sweep * t);
  }

  // How far the line between is off its chord.
  double sagitta(double t0, double t1) const {
    if (arc_ == nullptr) return 0.0;
    const double s = std::sin(arc_->sweep * (t1 - t0) / 4.0);
    return arc_->radius * 2.0 * s * s;
  }

  // The point of the flat tube that is nearest to this one among those of the disc at t.
  GeVector onDisc(double t, const GeVector& point) const {
    const GeVector centre = at(t);
    const GeVector along = tangent(t);
    GeVector off = point - centre;
    off = off - along * dot(off, along);
    const double length = off.length();
    return length > radius_ ? centre + off * (radius_ / length) : centre + off;
  }

 private:
  const SweptArc* arc_ = nullptr;
  GeVector from_;
  GeVector along_;
  GeVector shift_;
  double radius_ = 0.0;
};

// Where two segments are nearest to each other, as parts of their lengths.
struct Feet {
  double s = 0.0;
  double t = 0.0;
};

Feet nearestFeet(const GeVector& p, const GeVector& d, const GeVector& q, const GeVector& e) {
  const GeVector r = p - q;
  const double a = dot(d, d);
  const double f = dot(e, e);
  const double c = dot(d, r);
  const double g = dot(e, r);
  const double b = dot(d, e);
  const double det = a * f - b * b;
  Feet feet;
  // Parallel segments have many; from the middle of the first one is found.
  feet.s = det > 1e-14 * a * f ? std::clamp((b * g - c * f) / det, 0.0, 1.0) : 0.5;
  feet.t = f > 0.0 ? std::clamp((b * feet.s + g) / f, 0.0, 1.0) : 0.0;
  feet.s = a > 0.0 ? std::clamp((b * feet.t - c) / a, 0.0, 1.0) : 0.0;
  feet.t = f > 0.0 ? std::clamp((b * feet.s + g) / f, 0.0, 1.0) : 0.0;
  return feet;
}

// A piece of each line, and a bound from below of their distance.
struct Pieces {
  double a0;
  double a1;
  double b0;
  double b1;
  double lower;

  bool operator<(const Pieces& other) const { return lower > other.lower; }
};

struct LineGap {
  double distance = std::numeric_limits<double>::infinity();
  double lower = std::numeric_limits<double>::infinity();
  double s = 0.0;
  double t = 0.0;
};

// By halving where the lines may be nearest, until the bounds meet or nothing is
// below the limit. The lower bound is 0 if that takes too long.
LineGap gapOfLines(const CentreLine& a, const CentreLine& b, double limit, double meeting) {
  LineGap best;
  std::vector<Pieces> open;
  double pruned = std::numeric_limits<double>::infinity();
  const auto offer = [&](double a0, double a1, double b0, double b1) {
    const GeVector p = a.at(a0);
    const GeVector d = a.at(a1) - p;
    const GeVector q = b.at(b0);
    const GeVector e = b.at(b1) - q;
    const Feet feet = nearestFeet(p, d, q, e);
    const double chords = (p + d * feet.s - q - e * feet.t).length();
    const double lower = std::max(0.0, chords - a.sagitta(a0, a1) - b.sagitta(b0, b1));
    const double s = a0 + (a1 - a0) * feet.s;
    const double t = b0 + (b1 - b0) * feet.t;
    const double distance = (a.at(s) - b.at(t)).length();
    if (distance < best.distance) {
      best.distance = distance;
      best.s = s;
      best.t = t;
    }
    if (lower > limit || lower >= best.distance - meeting) {
      pruned = std::min(pruned, lower);
    } else {
      open.push_back({a0, a1, b0, b1, lower});
      std::push_heap(open.begin(), open.end());
    }
  };
  offer(0.0, 1.0, 0.0, 1.0);
  for (std::size_t step = 0; !open.empty(); ++step) {
    std::pop_heap(open.begin(), open.end());
    const Pieces each = open.back();
    open.pop_back();
    if (step == kMostSteps) {
      pruned = 0.0;
      break;
    }
    if (each.lower >= best.distance - meeting) {
      pruned = std::min(pruned, each.lower);
      break;
    }
    if (a.sagitta(each.a0, each.a1) >= b.sagitta(each.b0, each.b1)) {
      const double middle = (each.a0 + each.a1) / 2.0;
      offer(each.a0, middle, each.b0, each.b1);
      offer(middle, each.a1, each.b0, each.b1);
    } else {
      const double middle = (each.b0 + each.b1) / 2.0;
      offer(each.a0, each.a1, each.b0, middle);
      offer(each.a0, each.a1, middle, each.b1);
    }
  }
  best.lower = std::min(pruned, best.distance);
  return best;
}

}  // namespace

std::optional<Gap> gapOfTubes(const Body& a, const Body& b, double limit, double meeting) {
  const std::optional<CentreLine> lineA = CentreLine::of(a, {});
  const std::optional<CentreLine> lineB = CentreLine::of(b, b.origin() - a.origin());
  if (!lineA || !lineB) return std::nullopt;
  const double radii = lineA->radius() + lineB->radius();
  const LineGap lines = gapOfLines(*lineA, *lineB, limit + radii, meeting / 4.0);
  if (lines.lower - radii > limit) {
    return Gap{std::numeric_limits<double>::infinity(), a.origin(), b.origin()};
  }
  const GeVector p = lineA->at(lines.s);
  const GeVector q = lineB->at(lines.t);
  // Where both surfaces are on the way, or a point of both if they overlap.
  const double part = radii > 0.0 ? lineA->radius() / radii : 0.5;
  const GeVector between = p + (q - p) * part;
  const bool isApart = lines.distance > radii;
  const GeVector onA = lineA->onDisc(lines.s, isApart ? q : between);
  const GeVector onB = lineB->onDisc(lines.t, isApart ? p : between);
  const double upper = (onB - onA).length();
  const double lower = std::max(0.0, lines.lower - radii);
  if (upper - lower > meeting) return std::nullopt;
  return Gap{lower == 0.0 ? 0.0 : upper, a.origin() + onA, a.origin() + onB};
}

}  // namespace Vesk
