// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>

#include "pcf/shapes/Drawing.h"

namespace Vesk::Pcf {
namespace {

// The body of a valve reaches this far from its centre at most, in diameters of
// the pipe: longer legs begin with pipe.
constexpr double kLongestCore = 1.5;

// The disc of a flanged end, in diameters of the pipe and parts of the leg.
constexpr double kDisc = 0.15;
constexpr double kLargestDisc = 0.25;

// What tells a kind of valve by its body, in diameters of the pipe.
struct ValveForm {
  Family family;
  double waist;  // where the cones of all legs meet
  double ball;   // about the centre
  double plate;  // a disc across the run, at the centre
  double plateLength;
};

// clang-format off
constexpr ValveForm kForms[] = {
    {Family::kValve,          0,    0,    0,    0},     // two cones, point to point
    {Family::kValveGate,      0.3,  0,    0,    0},
    {Family::kValveGlobe,     0.3,  0.9,  0,    0},
    {Family::kValveBall,      1,    1.4,  0,    0},
    {Family::kValveControl,   0.3,  0,    1.3,  0.5},
    {Family::kValveRelief,    0.3,  0.6,  0,    0},
    {Family::kValvePlug,      1.5,  0,    0,    0},     // widest in the middle
    {Family::kValveDiaphragm, 0.4,  0,    1.4,  0.12},
    {Family::kValveAngle,     0.3,  0.75, 0,    0},
    {Family::kValve3Way,      0.3,  0.75, 0,    0},
    {Family::kValve4Way,      0.3,  0.75, 0,    0},
};
// clang-format on

const ValveForm& formOf(Family family) {
  const auto* row = std::find_if(std::begin(kForms), std::end(kForms),
                                 [&](const ValveForm& form) { return form.family == family; });
  return row == std::end(kForms) ? kForms[0] : *row;
}

// At most `part` of the length; all of it if next to nothing would be left.
double unlessShort(double length, double part) { return length - part < kShortest ? length : part; }

// The disc of a flanged end and the pipe of a long leg; what is left of the leg up
// to its centre.
double core(Builder& out, const Leg& leg) {
  double rest = leg.length;
  if (leg.flanged) {
    const double disc = std::min(kDisc * leg.outside, kLargestDisc * leg.length);
    out.cylinder(leg.end, leg.end + leg.inward * disc, flangeDiameter(leg.outside));
    rest -= disc;
  }
  const double body = unlessShort(rest, kLongestCore * leg.outside);
  out.cylinder(leg.before(rest), leg.before(body), leg.outside);
  return body;
}

// How far a body about the centre may reach without passing an end.
double room(const std::vector<Leg>& legs) {
  double shortest = legs.front().length;
  for (const Leg& leg : legs) shortest = std::min(shortest, leg.length);
  return shortest;
}

// A thin disc across the run, as a wafer between two flanges is.
void butterfly(Builder& out, const std::vector<Leg>& legs) {
  for (const Leg& leg : legs) {
    const double body = core(out, leg);
    const double wafer = unlessShort(body, 0.25 * leg.outside);
    out.cylinder(leg.before(body), leg.before(wafer), leg.outside);
    out.cylinder(leg.before(wafer), leg.centre, (leg.outside + flangeDiameter(leg.outside)) / 2);
  }
}

// A cone that points with the flow at a drum as wide as the pipe.
void check(Builder& out, const std::vector<Leg>& legs) {
  bool inlet = true;
  for (const Leg& leg : legs) {
    const double body = core(out, leg);
    out.cone(leg.before(body), leg.centre, leg.outside, leg.outside * (inlet ? 0.3 : 1.0));
    if (!inlet) {
      const double bar = std::min(body, 0.2 * leg.outside);
      out.cylinder(leg.before(bar), leg.centre, leg.outside * 1.25);
    }
    inlet = false;
  }
}

// Thin rods between short cones.
void needle(Builder& out, const std::vector<Leg>& legs) {
  for (const Leg& leg : legs) {
    const double body = core(out, leg);
    out.cone(leg.before(body), leg.before(body * 0.6), leg.outside, leg.outside * 0.25);
    out.cylinder(leg.before(body * 0.6), leg.centre, leg.outside * 0.25);
  }
}

void byForm(Builder& out, const std::vector<Leg>& legs, const ValveForm& form) {
  double size = 0;
  for (const Leg& leg : legs) size = std::max(size, leg.outside);
  for (const Leg& leg : legs) {
    const double body = core(out, leg);
    out.cone(leg.before(body), leg.centre, leg.outside, leg.outside * form.waist);
    const double plate = std::min(body, form.plateLength / 2 * leg.outside);
    if (form.plate > 0) out.cylinder(leg.before(plate), leg.centre, leg.outside * form.plate);
  }
  const double ball = std::min(form.ball * size, 1.9 * room(legs));
  if (ball > 0) out.ball(legs.front().centre, legs.front().inward, ball);
}

// Outlets of relief valves lie across their inlets, or go on in its line with a
// wider mouth.
void relief(Builder& out, const Part& part, const std::vector<Leg>& legs) {
  const bool across = legs.size() == 2 && std::abs(dot(legs[0].inward, legs[1].inward)) < 0.9;
  if (across || legs.size() != 2) {
    byForm(out, legs, formOf(Family::kValveRelief));
  } else {
    const double inlet = core(out, legs[0]);
    const double outlet = core(out, legs[1]);
    out.cone(legs[0].before(inlet), legs[0].centre, legs[0].outside, legs[0].outside * 0.3);
    out.cylinder(legs[1].before(outlet / 2), legs[1].centre, legs[1].outside * 0.6);
    out.cone(legs[1].before(outlet), legs[1].before(outlet / 2), legs[1].outside,
             legs[1].outside * 0.6);
  }
  // The spring stands over the inlet, which the legs tell if they make an angle.
  if (across && unit(part.spindle) == GeVector())
    drawReliefBonnet(out, legs[0].centre, legs[0].inward, widest(part));
}

}  // namespace

void drawValve(Builder& out, const Part& part) {
  const std::vector<Leg> legs = legsOf(part);
  if (legs.empty()) return out.miss("has no length");
  for (const Leg& leg : legs) out.cover(leg.end, leg.centre);
  if (legs.size() < part.ends.size() + part.branches.size())
    out.remark("one of its ends lies in its centre");
  switch (part.family) {
    case Family::kValveButterfly:
      butterfly(out, legs);
      break;
    case Family::kValveCheck:
      check(out, legs);
      break;
    case Family::kValveNeedle:
      needle(out, legs);
      break;
    case Family::kValveRelief:
      relief(out, part, legs);
      break;
    default:
      byForm(out, legs, formOf(part.family));
  }
  drawActuator(out, part, legs.front().centre, legs.front().inward, widest(part));
}

}  // namespace Vesk::Pcf
