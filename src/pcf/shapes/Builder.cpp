// SPDX-License-Identifier: MIT
#include "pcf/shapes/Builder.h"

#include <algorithm>
#include <cmath>

#include "pcf/shapes/Ruled.h"
#include <vesk/Box.h>
#include <vesk/Cone.h>
#include <vesk/Cyl.h>
#include <vesk/GeConstants.h>
#include <vesk/Torus.h>

namespace Vesk::Pcf {
namespace {

// What the primitives call degenerate, with a little room for rounding.
constexpr double kThinnest = 0.011;

// The finest ball, by its radius: it is a sign and no surface to measure on.
constexpr double kCoarseBall = 0.03;

constexpr double kVertical = 1e-3;

// A bend is one piece as long as its turn has a sense; half a turn is some.
constexpr double kLargestArc = 0.99 * kPi;
constexpr double kLargestPiece = 2.0 * kPi / 3.0;

constexpr int kMostSlices = 500;

GeVector position(const GePoint& p) { return p - GePoint(); }

GeVector usualUp(const GeVector& along) {
  const GeVector level = kUnitZ - along * along.z;
  if (level.length() > kVertical) return unit(level);
  return unit(kUnitX - along * along.x);
}

// How many equal parts of `angle` keep a circle of this radius within the
// tolerance of its chords.
int parts(double angle, double radius, double tolerance) {
  const double cosine = 1.0 - tolerance / radius;
  const double half = cosine <= 0.0 ? kPi / 4.0 : std::min(kPi / 4.0, std::acos(cosine));
  // Against rounding only: an exact quotient stays what it is.
  const double count = std::ceil(angle / (2.0 * half) * (1.0 - 1e-12));
  return count > kMostSlices ? kMostSlices : std::max(1, static_cast<int>(count));
}

}  // namespace

GeVector unit(const GeVector& v) { return v.normalised(kDirectionTolerance); }

Frame::Frame(const GeVector& axis)
    : along(unit(axis)), up(usualUp(along)), across(cross(along, up)) {}

Frame::Frame(const GeVector& axis, const GeVector& wanted) : Frame(axis) {
  const GeVector direction = unit(wanted);
  const GeVector level = direction - along * dot(direction, along);
  if (level.length() < kVertical) return;
  up = unit(level);
  across = cross(along, up);
}

void Builder::cylinder(const GePoint& from, const GePoint& to, double diameter) {
  if (distance(from, to) < kThinnest || diameter < kThinnest) return;
  drawn_.bodies.push_back(std::make_unique<Cyl>(position(from), position(to), diameter));
}

void Builder::cone(const GePoint& from, const GePoint& to, double diameter1, double diameter2) {
  if (diameter1 == diameter2) return cylinder(from, to, diameter1);
  if (distance(from, to) < kThinnest || std::max(diameter1, diameter2) < kThinnest) return;
  drawn_.bodies.push_back(
      std::make_unique<Cone>(position(from), position(to), diameter1, diameter2));
}

void Builder::box(const GePoint& centre, const Frame& frame, double along, double across,
                  double up) {
  if (std::min({along, across, up}) < kThinnest) return;
  auto body = std::make_unique<Box>();
  body->edge1 = frame.along * along;
  body->edge2 = frame.up * up;
  body->edge3 = frame.across * across;
  body->origin = centre - (body->edge1 + body->edge2 + body->edge3) * 0.5;
  drawn_.bodies.push_back(std::move(body));
}

void Builder::arc(const GePoint& centre, const GePoint& from, const GePoint& to, double diameter) {
  if (diameter < kThinnest) return;
  auto body = std::make_unique<Torus>();
  body->centre = centre;
  body->startVector = from - centre;
  body->endVector = to - centre;
  body->diameter = diameter;
  body->bendRadius = body->startVector.length();
  drawn_.bodies.push_back(std::move(body));
}

void Builder::arc(const GePoint& centre, const GeVector& radius, const GeVector& axis, double sweep,
                  double diameter) {
  if (diameter < kThinnest) return;
  const int pieces =
      sweep < kLargestArc ? 1 : static_cast<int>(std::ceil(sweep / kLargestPiece - 1e-9));
  // Places and not vectors are handed on: of a zero vector's rounding they keep nothing.
  const auto at = [&](int i) { return centre + radius.rotatedAbout(axis, sweep * i / pieces); };
  for (int i = 0; i < pieces; ++i) arc(centre, at(i), at(i + 1), diameter);
}

void Builder::ring(const GePoint& centre, const GeVector& axis, double radius, double tube) {
  if (tube < kThinnest) return;
  const Frame frame(axis);
  arc(centre, frame.up * radius, frame.along, 2.0 * kPi, tube);
}

void Builder::dish(const GePoint& base, const GeVector& depth, double diameter) {
  halfBall(base, depth, diameter, tolerance_);
}

void Builder::halfBall(const GePoint& base, const GeVector& depth, double diameter,
                       double tolerance) {
  const double radius = diameter / 2.0;
  // An ellipse is a circle pressed flat: no chord lies further off than its own.
  const int count = parts(kPi / 2.0, std::max(radius, depth.length()), tolerance);
  const auto height = [&](int i) { return i == count ? 1.0 : std::sin(kPi / 2.0 * i / count); };
  const auto width = [&](int i) {
    return i == count ? 0.0 : diameter * std::cos(kPi / 2.0 * i / count);
  };
  for (int i = 0; i < count; ++i)
    cone(base + depth * height(i), base + depth * height(i + 1), width(i), width(i + 1));
}

void Builder::ball(const GePoint& centre, const GeVector& axis, double diameter) {
  const GeVector depth = unit(axis) * (diameter / 2.0);
  const double coarse = std::max(tolerance_, kCoarseBall * diameter / 2.0);
  halfBall(centre, depth, diameter, coarse);
  halfBall(centre, -depth, diameter, coarse);
}

void Builder::ruled(const GePoint& from, const GeVector& normal1, double diameter1,
                    const GePoint& to, const GeVector& normal2, double diameter2) {
  const RuledBody body{from, unit(normal1), diameter1 / 2.0, to, unit(normal2), diameter2 / 2.0};
  for (Red& wedge : wedges(body, tolerance_))
    drawn_.bodies.push_back(std::make_unique<Red>(std::move(wedge)));
}

}  // namespace Vesk::Pcf
