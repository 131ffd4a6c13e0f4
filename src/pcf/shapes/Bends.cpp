// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>

#include "pcf/shapes/Drawing.h"
#include <vesk/GeConstants.h>

namespace Vesk::Pcf {
namespace {

// Below this angle between its ends a bend is straight or turns back on itself.
constexpr double kCollinear = 1e-4;

// Legs that differ by less are equal: their ends are those of the arc.
constexpr double kEqualLegs = 0.5;

// A branch this near to the line of a leg goes on along it.
constexpr double kBeside = 1;

// The arc between two legs that meet at `corner`.
struct Turn {
  GePoint corner;
  GeVector first;  // unit vectors from the corner to the ends
  GeVector second;
  double leg;  // from the corner to where the arc begins
  double radius;
  GePoint centre;
  GeVector axis;  // about which it turns, right hand from the first end
  double sweep;

  GePoint from;  // the ends of the arc
  GePoint to;

  GePoint start() const { return from; }
  GePoint end() const { return to; }
  GeVector startRadius() const { return start() - centre; }
  GePoint middle() const { return centre + startRadius().rotatedAbout(axis, sweep / 2); }
};

Turn turnOf(const GePoint& corner, const GePoint& from, const GePoint& to) {
  const GeVector u = unit(from - corner);
  const GeVector v = unit(to - corner);
  const double leg1 = distance(from, corner);
  const double leg2 = distance(to, corner);
  const bool areEqual = std::abs(leg1 - leg2) <= kEqualLegs;
  const double leg = areEqual ? (leg1 + leg2) / 2 : std::min(leg1, leg2);
  const double angle = u.angleTo(v);
  return {corner,
          u,
          v,
          leg,
          leg * std::tan(angle / 2),
          corner + (u + v) * (leg / (1 + dot(u, v))),
          unit(cross(v, u)),
          kPi - angle,
          areEqual || leg1 < leg2 ? from : corner + u * leg,
          areEqual || leg2 < leg1 ? to : corner + v * leg};
}

void straight(Builder& out, const Part& part) {
  const End& from = part.ends[0];
  const End& to = part.ends[1];
  const GePoint corner = centreOf(part);
  if (isStraight(part)) {
    out.cone(from.at, to.at, from.outside, to.outside);
  } else {
    out.cylinder(from.at, corner, from.outside);
    out.cylinder(corner, to.at, to.outside);
  }
  for (const End& branch : part.branches) {
    out.cylinder(corner, branch.at, branch.outside);
    out.cover(corner, branch.at);
  }
}

// Rings square to the arc, ruled between neighbours, growing from end to end.
void taperedArc(Builder& out, const Turn& turn, double outside1, double outside2) {
  const double widest = std::max(outside1, outside2);
  const double cosine = 1 - out.tolerance() / (turn.radius + widest / 2);
  const double step = cosine <= 0 ? kPi / 6 : std::min(kPi / 6, 2 * std::acos(cosine));
  const int count = std::clamp(static_cast<int>(std::ceil(turn.sweep / step)), 1, 100);
  const GeVector tangent = cross(turn.axis, unit(turn.startRadius()));
  const auto angle = [&](int i) { return turn.sweep * i / count; };
  const auto centre = [&](int i) {
    return turn.centre + turn.startRadius().rotatedAbout(turn.axis, angle(i));
  };
  const auto normal = [&](int i) { return tangent.rotatedAbout(turn.axis, angle(i)); };
  const auto width = [&](int i) { return outside1 + (outside2 - outside1) * i / count; };
  for (int i = 0; i < count; ++i)
    out.ruled(centre(i), normal(i), width(i), centre(i + 1), normal(i + 1), width(i + 1));
}

// Where a branch leaves the centre line: it goes on along one of the legs, or starts at the
// middle of the arc, or else where the tangents meet.
GePoint branchStart(const Turn& turn, const GePoint& branch) {
  const GeVector way = branch - turn.corner;
  const auto goesOn = [&](const GeVector& back) {
    return dot(way, back) < 0 && cross(way, back).length() < kBeside;
  };
  for (const GeVector& leg : {turn.first, turn.second})
    if (goesOn(leg)) return turn.corner + leg * turn.leg;
  return goesOn(unit(turn.middle() - turn.corner)) ? turn.middle() : turn.corner;
}

void branches(Builder& out, const Part& part, const Turn& turn) {
  for (const End& branch : part.branches) {
    const GePoint start = branchStart(turn, branch.at);
    if (start == turn.corner) out.cylinder(turn.middle(), start, branch.outside);
    out.cylinder(start, branch.at, branch.outside);
    out.cover(turn.corner, branch.at);
  }
}

void halfTurn(Builder& out, const Part& part) {
  const End& from = part.ends[0];
  const End& to = part.ends[1];
  const GePoint centre = from.at + (to.at - from.at) * 0.5;
  const GeVector start = from.at - centre;
  const Frame frame(start, part.halfTurn);
  const GeVector axis = cross(frame.along, frame.up);
  out.arc(centre, start, axis, kPi, from.outside);
  const GeVector out1 = frame.up * start.length();
  out.cover(from.at, from.at + out1);
  out.cover(from.at + out1, to.at + out1);
  out.cover(to.at + out1, to.at);
}

}  // namespace

void drawBend(Builder& out, const Part& part) {
  const End& from = part.ends[0];
  const End& to = part.ends[1];
  if (!(unit(part.halfTurn) == GeVector())) {
    if (distance(from.at, to.at) >= from.outside) return halfTurn(out, part);
    out.miss("its half turn is tighter than its pipe");
    return;
  }
  const GePoint corner = centreOf(part);
  out.cover(from.at, corner);
  out.cover(corner, to.at);
  if (std::min(distance(from.at, corner), distance(to.at, corner)) < kShortest) {
    out.remark("its centre lies at an end; drawn straight");
    return straight(out, part);
  }
  const Turn turn = turnOf(corner, from.at, to.at);
  if (std::abs(turn.sweep) < kCollinear || turn.sweep > kPi - kCollinear) {
    out.remark(turn.sweep > 1 ? "turns back on its own line; drawn straight"
                              : "has its points on one line; drawn straight");
    return straight(out, part);
  }
  if (turn.radius < std::max(from.outside, to.outside) / 2) {
    out.remark("its arc is tighter than its pipe; drawn with a corner");
    return straight(out, part);
  }
  out.cylinder(from.at, turn.start(), from.outside);
  if (from.outside == to.outside)
    out.arc(turn.centre, turn.start(), turn.end(), from.outside);
  else
    taperedArc(out, turn, from.outside, to.outside);
  out.cylinder(turn.end(), to.at, to.outside);
  branches(out, part, turn);
}

}  // namespace Vesk::Pcf
