// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>

#include "pcf/shapes/Drawing.h"

namespace Vesk::Pcf {
namespace {

// A round end may stand off from its neighbour's circle by this much at the rim
// before a straight cone is given up for wedges.
constexpr double kSquare = 0.05;

// A neighbour that comes from so far aside is no neighbour to be square to: the
// cosine of 75 degrees.
constexpr double kAside = 0.26;

// 2:1 ellipsoids: the dish is a quarter of the diameter deep.
constexpr double kDishDepth = 0.25;

// Lengths, in diameters, of what closes a line with one END-POINT.
constexpr double kCapLength = 0.5;
constexpr double kPlugLength = 0.4;

constexpr int kConvolutions = 5;

void cylinderLeg(Builder& out, const GePoint& from, const End& end) {
  if (distance(from, end.at) < kShortest) {
    out.remark("a branch has no length");
    return;
  }
  out.cylinder(from, end.at, end.outside);
  out.cover(from, end.at);
}

void run(Builder& out, const Part& part, double widening) {
  const End& first = part.ends[0];
  const End& second = part.ends[1];
  if (isStraight(part)) {
    out.cone(first.at, second.at, first.outside * widening, second.outside * widening);
    out.cover(first.at, second.at);
    return;
  }
  out.cylinder(first.at, *part.centre, first.outside * widening);
  out.cylinder(*part.centre, second.at, second.outside * widening);
  out.cover(first.at, *part.centre);
  out.cover(*part.centre, second.at);
}

// The direction to which an end's circle is square, along the chord.
GeVector normalAt(const GeVector& line, const GeVector& other, const GeVector& chord) {
  for (const GeVector& candidate : {unit(line), -unit(other)})
    if (dot(candidate, chord) > kAside) return candidate;
  return chord;
}

bool isSquare(const GeVector& normal, const GeVector& chord, double outside) {
  return cross(normal, chord).length() * outside / 2.0 <= kSquare;
}

}  // namespace

void drawBranches(Builder& out, const Part& part) {
  for (const End& branch : part.branches) cylinderLeg(out, centreOf(part), branch);
}

void drawPipe(Builder& out, const Part& part, double widening) {
  run(out, part, widening);
  drawBranches(out, part);
}

void drawTee(Builder& out, const Part& part) {
  if (part.ends.size() >= 2)
    run(out, part, 1);
  else
    for (const End& end : part.ends) cylinderLeg(out, centreOf(part), end);
  if (part.branches.empty()) out.remark("has no branch");
  drawBranches(out, part);
}

void drawYPiece(Builder& out, const Part& part) {
  if (part.branches.empty() && part.ends.size() < 2) out.remark("has no branch");
  for (const End& end : part.ends) cylinderLeg(out, centreOf(part), end);
  drawBranches(out, part);
}

// With two ends its run; with one, which lies on the header, the way from there.
void drawOlet(Builder& out, const Part& part) {
  if (part.ends.size() == 1 && !part.branches.empty()) {
    const GePoint from = part.centre ? *part.centre : part.ends[0].at;
    for (const End& branch : part.branches) cylinderLeg(out, from, branch);
    // The end on the header's surface is passed on the way; on its axis it is
    // a leg of its own unless it is the centre.
    if (part.centre && distance(from, part.ends[0].at) >= kShortest) {
      const Leg way{part.branches[0].at,
                    from,
                    unit(from - part.branches[0].at),
                    distance(from, part.branches[0].at),
                    part.branches[0].outside,
                    false};
      const GeVector aside = part.ends[0].at - from;
      const double along = -dot(aside, way.inward);
      if (along < 0 || along > way.length || (aside + way.inward * along).length() > 1)
        cylinderLeg(out, from, part.ends[0]);
    }
    return;
  }
  if (part.ends.size() == 1) {
    cylinderLeg(out, centreOf(part), part.ends[0]);
    return;
  }
  if (part.ends.size() >= 2) run(out, part, 1);
  drawBranches(out, part);
}

void drawReducer(Builder& out, const Part& part) {
  const End& first = part.ends[0];
  const End& second = part.ends[1];
  const GeVector chord = unit(second.at - first.at);
  const GeVector normal1 = -normalAt(first.line, second.line, -chord);
  const GeVector normal2 = normalAt(second.line, first.line, chord);
  if (isSquare(normal1, chord, first.outside) && isSquare(normal2, chord, second.outside))
    out.cone(first.at, second.at, first.outside, second.outside);
  else
    out.ruled(first.at, normal1, first.outside, second.at, normal2, second.outside);
  out.cover(first.at, second.at);
  drawBranches(out, part);
}

// A nut in the middle third.
void drawUnion(Builder& out, const Part& part) {
  drawPipe(out, part, 1.2);
  if (!isStraight(part)) return;
  const GePoint& from = part.ends[0].at;
  const GeVector way = part.ends[1].at - from;
  out.cylinder(from + way * (1.0 / 3), from + way * (2.0 / 3), widest(part) * 1.5);
}

// Convolutions between two collars of 15 parts in a hundred.
void drawBellows(Builder& out, const Part& part) {
  drawPipe(out, part, 1);
  if (!isStraight(part)) return;
  const GeVector way = part.ends[1].at - part.ends[0].at;
  const double narrow = widest(part);
  const double wide = narrow * 1.3;
  const GeVector step = way * (0.7 / (2 * kConvolutions));
  GePoint at = part.ends[0].at + way * 0.15;
  for (int i = 0; i < kConvolutions; ++i) {
    out.cone(at, at + step, narrow, wide);
    out.cone(at + step, at + step * 2, wide, narrow);
    at += step * 2;
  }
}

void drawCap(Builder& out, const Part& part) {
  const End& end = part.ends[part.face];
  const GeVector direction = onward(out, part);
  if (direction == GeVector()) return;
  const bool twoEnds = part.ends.size() == 2;
  const double length = twoEnds ? direction.length() : kCapLength * end.outside;
  const double usual = kDishDepth * end.outside;
  const double depth = length - usual < kShortest ? length : usual;
  const GeVector way = unit(direction);
  const GePoint base = end.at + way * (length - depth);
  out.cylinder(end.at, base, end.outside);
  out.dish(base, way * depth, end.outside);
  out.cover(end.at, end.at + way * length);
}

// A shank as wide as the pipe and a narrower head.
void drawPlug(Builder& out, const Part& part) {
  const End& end = part.ends[part.face];
  const GeVector direction = onward(out, part);
  if (direction == GeVector()) return;
  const double length = part.ends.size() == 2 ? direction.length() : kPlugLength * end.outside;
  const GeVector way = unit(direction) * length;
  out.cylinder(end.at, end.at + way * 0.6, end.outside);
  out.cylinder(end.at + way * 0.6, end.at + way, end.outside * 0.6);
  out.cover(end.at, end.at + way);
}

}  // namespace Vesk::Pcf
