// SPDX-License-Identifier: MIT
#include <algorithm>

#include "pcf/shapes/Drawing.h"

namespace Vesk::Pcf {
namespace {

// The body of equipment reaches this far from its centre at most, in diameters.
constexpr double kReach = 0.75;

// A dial where no pipe tells its size, mm.
constexpr double kDialOfItsOwn = 100;

// A circle on a stem, seen from the side of `facing`.
void dial(Builder& out, const GePoint& foot, const GeVector& direction, const GeVector& facing,
          double size) {
  const Frame frame(direction, facing);
  const GePoint centre = foot + frame.along * (1.6 * size);
  out.cylinder(foot, centre, 0.15 * size);
  out.cylinder(centre - frame.up * (0.1 * size), centre + frame.up * (0.1 * size), 1.1 * size);
}

// Where spindles and the like point if nothing tells: up, or to the side of a
// vertical line.
GeVector upOf(const Part& part, const GeVector& run) {
  const GeVector told = unit(part.spindle);
  return told == GeVector() ? Frame(run).up : Frame(run, told).up;
}

// The middle of a straight run and half of what a body there may take.
struct Middle {
  GePoint at;
  GeVector run;
  double half;
};

Middle middleOf(const Part& part) {
  const std::vector<Leg> legs = legsOf(part);
  double half = kReach * widest(part);
  for (const Leg& leg : legs) half = std::min(half, 0.7 * leg.length);
  return {centreOf(part), legs.front().inward, half};
}

// A drum about the run with cones to both sides.
void drum(Builder& out, const Middle& middle, double outside, double wider) {
  const GeVector way = middle.run * middle.half;
  out.cone(middle.at - way, middle.at - way * 0.6, outside, outside * wider);
  out.cylinder(middle.at - way * 0.6, middle.at + way * 0.6, outside * wider);
  out.cone(middle.at + way * 0.6, middle.at + way, outside * wider, outside);
}

// A leg that leans with the flow, closed by a cover.
void yStrainer(Builder& out, const Middle& middle, const GeVector& down, double outside) {
  const GeVector way = unit(middle.run + down);
  out.cylinder(middle.at - middle.run * middle.half, middle.at + middle.run * middle.half,
               outside * 1.2);
  const GePoint foot = middle.at + way * (1.6 * outside);
  out.cylinder(middle.at, foot, outside * 0.8);
  out.cylinder(foot, foot + way * (0.15 * outside), outside * 1.1);
}

// A pot across the run, with a cover.
void basket(Builder& out, const Middle& middle, const GeVector& up, double outside) {
  const GePoint top = middle.at + up * (0.9 * outside);
  out.cylinder(middle.at - up * (1.3 * outside), top, outside * 1.5);
  out.cylinder(top, top + up * (0.15 * outside), outside * 1.8);
}

// A funnel that narrows with the flow.
void funnel(Builder& out, const Middle& middle, double outside) {
  const GeVector way = middle.run * middle.half;
  out.cylinder(middle.at - way, middle.at - way * 0.8, outside * 1.5);
  out.cone(middle.at - way * 0.8, middle.at + way, outside * 1.4, outside);
}

}  // namespace

void drawInstrument(Builder& out, const Part& part) {
  if (part.ends.size() < 2) return drawDial(out, part);
  drawPipe(out, part, 1);
  const Middle middle = middleOf(part);
  const double outside = widest(part);
  if (isStraight(part)) drum(out, middle, outside, 1.3);
  const GeVector up = upOf(part, middle.run);
  dial(out, middle.at, up, cross(up, middle.run), outside);
}

void drawDial(Builder& out, const Part& part) {
  const End& end = part.ends.front();
  GeVector along = unit(part.along);
  const bool onPipe = !(along == GeVector());
  if (!onPipe) along = unit(end.line);
  const double size = end.outside > 0 ? end.outside : kDialOfItsOwn;
  // On a pipe it stands across; at the end of one it goes on from there.
  const Frame frame(onPipe ? along : GeVector(1, 0, 0));
  const GeVector told = unit(part.spindle);
  GeVector direction = told == GeVector() ? frame.up : told;
  if (told == GeVector() && !onPipe && !(along == GeVector())) direction = -along;
  dial(out, end.at, direction, Frame(direction).across, size);
}

void drawFilter(Builder& out, const Part& part) {
  drawPipe(out, part, 1);
  const Middle middle = middleOf(part);
  const double outside = widest(part);
  const GeVector up = upOf(part, middle.run);
  if (!isStraight(part))
    out.ball(middle.at, middle.run, std::min(1.5 * outside, 2 * middle.half));
  else if (part.family == Family::kFilterY)
    yStrainer(out, middle, unit(part.spindle) == GeVector() ? -up : up, outside);
  else if (part.family == Family::kFilterBasket)
    basket(out, middle, up, outside);
  else if (part.family == Family::kFilterCone)
    funnel(out, middle, outside);
  else
    drum(out, middle, outside, 1.5);
}

// A pot that hangs from the run.
void drawTrap(Builder& out, const Part& part) {
  drawPipe(out, part, 1);
  const Middle middle = middleOf(part);
  const double outside = widest(part);
  const GeVector up = upOf(part, middle.run);
  const GePoint base = middle.at - up * (0.9 * outside);
  out.cylinder(base, middle.at + up * (0.6 * outside), outside * 1.3);
  out.dish(base, up * (-0.4 * outside), outside * 1.3);
}

}  // namespace Vesk::Pcf
