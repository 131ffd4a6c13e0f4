// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_SHAPES_SHAPES_H
#define VESK_PCF_SHAPES_SHAPES_H

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "pcf/shapes/Families.h"
#include <vesk/Geo.h>

namespace Vesk::Pcf {

// How a component ends: by the code behind the bore, else by its SKEY.
enum class EndKind { kNotTold, kButt, kSocket, kScrewed, kFlanged, kPlain, kCompression, kPushFit };

// By the two letters; kNotTold for any others.
EndKind endKindOf(std::string_view code);

// By a SKEY, whose third and fourth letters may be such a code.
EndKind endKindOfSkey(std::string_view skey);

// Where a component meets the line. Lengths are millimetres.
struct End {
  GePoint at;
  double outside = 0;  // diameter of the pipe that fits, > 0
  EndKind kind = EndKind::kNotTold;

  // The direction, of any length, in which the line leaves the component here:
  // from `at` into what meets it. Null if that is not known. Reducers need it to
  // meet both neighbours, what closes a line points the other way.
  GeVector line = {};
};

enum class Actuator {
  kNotTold,  // the one that is usual for the kind of valve
  kNone,
  kHandwheel,
  kLever,
  kDiaphragm,
  kPiston,
  kMotor,
  kSolenoid,
  kSpring,
};

// By a word or a key of a spindle ("MOTOR", "LEVER"); kNotTold for any other.
Actuator actuatorOf(std::string_view word);

// A component on its way to bodies: everything is resolved, nothing is text.
struct Part {
  Family family = Family::kUnknown;

  // The ends of the run: one or two. A bend turns from the first to the second;
  // a valve lets flow from the first to the second. Further ones count as branches.
  std::vector<End> ends;

  // Further ends, each with a leg from the centre.
  std::vector<End> branches;

  // CENTRE-POINT; without it the middle of two ends.
  std::optional<GePoint> centre;

  // Which of two ends is the face of a flange, or where the line arrives at what
  // closes it; see closesLine.
  std::size_t face = 0;

  // The turn of a bend of half a circle: from the middle of its ends to the
  // farthest point of its centre line, of any length. Null for all other bends,
  // whose centre is where the tangents meet.
  GeVector halfTurn = {};

  // The direction of the spindle, of any length; null draws no actuator.
  GeVector spindle = {};
  Actuator actuator = Actuator::kNotTold;

  // For what sits on a pipe at one point (supports, dials): the direction of
  // that pipe, null if none is known. Its diameter is that of the one end.
  GeVector along = {};

  // How far faces may lie from the true round body where that cannot be written
  // as one, > 0.
  double tolerance = 1;
};

// A straight piece of centre line that the bodies cover. That of a bend's arc is
// given by its two tangents.
struct Stretch {
  GePoint from;
  GePoint to;
};

// What a component has become.
struct Drawn {
  std::vector<std::unique_ptr<Geo>> bodies;

  // The whole centre line that was covered: what a component has and does not
  // stand here is not drawn.
  std::vector<Stretch> covered;

  // Why something is missing, in words that fit behind the component's name;
  // empty if the whole centre line is covered. Literals.
  std::vector<std::string_view> missing;

  // What is drawn otherwise than the points say, or was guessed; literals.
  std::vector<std::string_view> remarks;
};

// Two places nearer than this (millimetres) have no length between them.
inline constexpr double kShortest = 0.05;

// The bodies of a component. Never throws but for memory; numbers that are not
// finite and diameters that are not above 0 are named as missing. Every body
// passes its checkSize() and has a volume above 0.
Drawn draw(const Part& part);

// The diameter of a flange for a pipe, millimetres: class 150 of ASME B16.5,
// between and beyond its sizes in proportion.
double flangeDiameter(double outside);

}  // namespace Vesk::Pcf

#endif
