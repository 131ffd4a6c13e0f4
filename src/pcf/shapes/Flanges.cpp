// SPDX-License-Identifier: MIT
#include <algorithm>
#include <iterator>

#include "pcf/shapes/Drawing.h"

namespace Vesk::Pcf {
namespace {

struct FlangeRow {
  double outside;   // of the pipe, ASME B36.10M, mm
  double diameter;  // ASME B16.5, class 150, mm
};

// clang-format off
constexpr FlangeRow kFlanges[] = {
    { 21.3,  90}, { 26.7, 100}, { 33.4, 110}, { 42.2, 115}, { 48.3, 125}, { 60.3, 150},
    { 73.0, 180}, { 88.9, 190}, {101.6, 215}, {114.3, 230}, {141.3, 255}, {168.3, 280},
    {219.1, 345}, {273.0, 405}, {323.8, 485}, {355.6, 535}, {406.4, 595}, {457.0, 635},
    {508.0, 700}, {610.0, 815},
};
// clang-format on

// How much wider a flange grows with its pipe beyond the table.
constexpr double kGrowth = 1.3;

// A flange as parts of its length from the face on: a disc, and a hub whose
// diameters lie this part of the way from the pipe to the rim of the disc.
struct FlangeForm {
  Family family;
  double disc;
  double hubAtDisc;
  double hubAtPipe;
};

// clang-format off
constexpr FlangeForm kForms[] = {
    {Family::kFlangeWeldNeck, 0.4, 0.4,  0},     // tapers to the pipe
    {Family::kFlangeReducing, 0.4, 0.4,  0},
    {Family::kFlangeOrifice,  0.5, 0.4,  0},
    {Family::kFlangeSlipOn,   0.6, 0.25, 0.2},   // a low ring about the pipe
    {Family::kFlangeSocket,   0.5, 0.4,  0.4},   // a step
    {Family::kFlangeScrewed,  0.5, 0.45, 0.3},   // a blunt taper
    {Family::kFlangeLapJoint, 0.5, 0.25, 0.25},  // loose behind its collar
};
// clang-format on

// Neither the disc nor the hub of a long piece grows without bound; what is left is
// pipe. In diameters of the flange.
constexpr double kThickestDisc = 0.3;
constexpr double kLongestHub = 0.45;

// Of a collar, by its length and by the pipe.
constexpr double kCollar = 0.1;
constexpr double kThickestCollar = 0.15;

// Pipes further aside than this are none to be square to: the cosine of 75 degrees.
constexpr double kAside = 0.26;

// The ends of a flange lie on one line if they are nearer to it than this.
constexpr double kOnLine = 0.5;

// Without a second END-POINT.
constexpr double kBlindThickness = 0.2;
constexpr double kGasketThickness = 3;

double between(double outside, double flange, double part) {
  return outside + (flange - outside) * part;
}

const FlangeForm& formOf(Family family) {
  const auto* row = std::find_if(std::begin(kForms), std::end(kForms),
                                 [&](const FlangeForm& form) { return form.family == family; });
  return row == std::end(kForms) ? kForms[0] : *row;
}

// A nipple for the pressure on each side, through the rim of the disc.
void tappings(Builder& out, const GePoint& face, const GeVector& way, double disc,
              double diameter) {
  const Frame frame(way);
  const GePoint middle = face + way * (disc / 2);
  const double width = std::min(disc * 0.6, diameter * 0.1);
  for (const double side : {-1.0, 1.0})
    out.cylinder(middle + frame.up * (side * diameter * 0.4),
                 middle + frame.up * (side * diameter * 0.62), width);
}

void stubEnd(Builder& out, const Part& part) {
  const End& face = part.ends[part.face];
  const End& pipe = part.ends[1 - part.face];
  const GeVector chord = pipe.at - face.at;
  double collar = std::min(kCollar * chord.length(), kThickestCollar * face.outside);
  if (collar < kShortest) collar = 0;
  const GePoint back = face.at + unit(chord) * collar;
  out.cylinder(face.at, back, between(face.outside, flangeDiameter(face.outside), 0.5));
  out.cylinder(back, pipe.at, pipe.outside);
}

// The axis of a flange, from its face on: an eccentric one is square
// to the pipes that it joins.
GeVector axisOf(const End& face, const End& pipe) {
  const GeVector chord = unit(pipe.at - face.at);
  for (const GeVector& axis : {unit(pipe.line), -unit(face.line)})
    if (dot(axis, chord) > kAside) return axis;
  return chord;
}

// Square to its pipes, with centre lines that lie apart.
void eccentricFlange(Builder& out, const End& face, const End& pipe, const GeVector& axis) {
  const FlangeForm& form = formOf(Family::kFlangeReducing);
  const double diameter = flangeDiameter(std::max(face.outside, pipe.outside));
  const double length = dot(pipe.at - face.at, axis);
  const GePoint back = face.at + axis * std::min(form.disc * length, kThickestDisc * diameter);
  out.cylinder(face.at, back, diameter);
  out.ruled(back, axis, between(pipe.outside, diameter, form.hubAtDisc), pipe.at, axis,
            pipe.outside);
}

void disc(Builder& out, const GePoint& from, const GePoint& to, double diameter) {
  out.cylinder(from, to, diameter);
  out.cover(from, to);
}

}  // namespace

double flangeDiameter(double outside) {
  const FlangeRow* next =
      std::find_if(std::begin(kFlanges), std::end(kFlanges),
                   [&](const FlangeRow& row) { return outside <= row.outside; });
  if (next == std::begin(kFlanges)) return outside * next->diameter / next->outside;
  const FlangeRow& last = *(next - 1);
  if (next == std::end(kFlanges)) return last.diameter + (outside - last.outside) * kGrowth;
  const double part = (outside - last.outside) / (next->outside - last.outside);
  return last.diameter + (next->diameter - last.diameter) * part;
}

void drawFlange(Builder& out, const Part& part) {
  const End& face = part.ends[part.face];
  const End& pipe = part.ends[1 - part.face];
  out.cover(face.at, pipe.at);
  if (part.family == Family::kStubEnd) return stubEnd(out, part);

  const GeVector chord = pipe.at - face.at;
  const GeVector axis = axisOf(face, pipe);
  if (part.family == Family::kFlangeReducing && cross(axis, chord).length() > kOnLine)
    return eccentricFlange(out, face, pipe, axis);
  const FlangeForm& form = formOf(part.family);
  const GeVector way = unit(chord);
  const double length = chord.length();
  const double diameter = flangeDiameter(std::max(face.outside, pipe.outside));
  double thick = std::min(form.disc * length, kThickestDisc * diameter);
  if (std::min(thick, length - thick) < kShortest) thick = length;
  const double hub = std::min(length - thick, kLongestHub * diameter);
  const GePoint back = face.at + way * thick;
  const GePoint neck = length - thick - hub < kShortest ? pipe.at : back + way * hub;

  out.cylinder(face.at, back, diameter);
  out.cone(back, neck, between(pipe.outside, diameter, form.hubAtDisc),
           between(pipe.outside, diameter, form.hubAtPipe));
  out.cylinder(neck, pipe.at, pipe.outside);
  if (part.family == Family::kFlangeOrifice) tappings(out, face.at, way, thick, diameter);
}

// Discs as wide as a flange: what closes a line, and the loose ring of a lap joint.
void drawBlind(Builder& out, const Part& part) {
  const End& end = part.ends[part.face];
  const GeVector direction = onward(out, part);
  if (direction == GeVector()) return;
  const GeVector way =
      part.ends.size() == 2 ? direction : unit(direction) * (kBlindThickness * end.outside);
  disc(out, end.at, end.at + way, flangeDiameter(end.outside));
}

// Discs that reach half of the way from the pipe to the rim of the flange. At one
// point they lie about it, across the line.
void drawGasket(Builder& out, const Part& part) {
  const double outside = widest(part);
  const double flange = flangeDiameter(outside);
  const double diameter = between(outside, flange, 0.5);
  GePoint from = part.ends.front().at;
  GePoint to = part.ends.back().at;
  if (part.ends.size() == 1) {
    const GeVector line = part.along == GeVector() ? part.ends.front().line : part.along;
    if (unit(line) == GeVector()) return out.miss("nothing shows in which direction it lies");
    const double thickness = std::min(kGasketThickness, kBlindThickness * outside);
    to = from + unit(line) * (thickness / 2);
    from = from - unit(line) * (thickness / 2);
  }
  disc(out, from, to, diameter);
  if (part.family == Family::kGasket) return;

  // What can be pulled shows at the rim: the second disc of a spectacle, or a handle.
  const Frame frame(to - from);
  const GePoint middle = from + (to - from) * 0.5;
  const double thickness = distance(from, to);
  if (part.family == Family::kSpectacleBlind) {
    const GeVector aside = frame.up * (diameter * 1.1);
    out.cylinder(from + aside, to + aside, diameter);
    out.box(middle + aside * 0.5, frame, thickness, diameter * 0.2, diameter * 0.3);
  } else {
    out.box(middle + frame.up * (diameter * 0.5 + flange * 0.15), frame, thickness, flange * 0.12,
            flange * 0.3);
  }
}

}  // namespace Vesk::Pcf
