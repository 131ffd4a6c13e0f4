// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_SHAPES_DRAWING_H
#define VESK_PCF_SHAPES_DRAWING_H

#include "pcf/shapes/Builder.h"
#include "pcf/shapes/Shapes.h"

// The families, by the source that draws them. All take a part that draw() has
// looked through: finite numbers, diameters above 0, the ends that the family
// needs.
namespace Vesk::Pcf {

// Fittings.cpp
void drawBranches(Builder& out, const Part& part);  // from the centre
void drawPipe(Builder& out, const Part& part, double widening);
void drawTee(Builder& out, const Part& part);
void drawYPiece(Builder& out, const Part& part);
void drawOlet(Builder& out, const Part& part);
void drawReducer(Builder& out, const Part& part);
void drawUnion(Builder& out, const Part& part);
void drawBellows(Builder& out, const Part& part);
void drawCap(Builder& out, const Part& part);
void drawPlug(Builder& out, const Part& part);

// Bends.cpp
void drawBend(Builder& out, const Part& part);

// Flanges.cpp
void drawFlange(Builder& out, const Part& part);
void drawBlind(Builder& out, const Part& part);
void drawGasket(Builder& out, const Part& part);

// Valves.cpp
void drawValve(Builder& out, const Part& part);

// Actuators.cpp: on a valve whose body reaches `size` (the widest pipe) about
// `centre`; the run goes along `run`.
void drawActuator(Builder& out, const Part& part, const GePoint& centre, const GeVector& run,
                  double size);
void drawReliefBonnet(Builder& out, const GePoint& centre, const GeVector& direction, double size);

// Equipment.cpp
void drawInstrument(Builder& out, const Part& part);
void drawDial(Builder& out, const Part& part);
void drawFilter(Builder& out, const Part& part);
void drawTrap(Builder& out, const Part& part);

// Supports.cpp
void drawSupport(Builder& out, const Part& part);

// The legs of every component, in Legs.cpp.

// One way from an end of a component to its centre.
struct Leg {
  GePoint end;
  GePoint centre;
  GeVector inward;  // unit vector from the end to the centre
  double length;
  double outside;
  bool flanged;

  // The point so far from the centre towards the end.
  GePoint before(double distance) const { return centre - inward * distance; }
};

// The centre: given, else the middle of two ends.
GePoint centreOf(const Part& part);

// Whether the run passes its centre in a straight line; without a centre it does.
bool isStraight(const Part& part);

// Those of the ends, then those of the branches; none for what lies at the centre.
std::vector<Leg> legsOf(const Part& part);

// The widest pipe at any end.
double widest(const Part& part);

// From what closes a line the direction in which it goes on: from its first end to
// its second, else away from the line. Null, and named as missing, if neither is
// known.
GeVector onward(Builder& out, const Part& part);

}  // namespace Vesk::Pcf

#endif
