// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TAKEOFF_MEASURES_H
#define VESK_TOOLS_TAKEOFF_MEASURES_H

#include <string>

#include "elements/Kinds.h"
#include "vesk/Geo.h"

namespace VeskTool {

// What tells one row of a take-off from another: kind and sizes, millimetres and
// degrees, to a hundredth. What a kind does not have is 0.
struct Size {
  Kind kind = Kind::kPoint;
  double diameter1 = 0.0;  // of a cone the larger one
  double diameter2 = 0.0;  // and the smaller
  double width = 0.0;      // of the section of a duct; of a box its middle edge
  double depth = 0.0;      // and its shortest
  double angle = 0.0;      // of a bend of pipe or duct
  double radius = 0.0;     // the same, of the centre line

  friend bool operator<(const Size& a, const Size& b);
};

// How a body may be hollow, or wrapped.
enum class Section {
  kNone,  // not at all: lines, faces, texts, reducers, oblique boxes
  kRound,
  kDuct,  // width and depth, all along its length
};

// What one element measures: lengths, areas and volumes in metres, of the body that is
// drawn, whatever its operations say.
struct Measures {
  Size size;
  Section section = Section::kNone;
  bool isSolid = false;
  double diameter1 = 0.0;  // m, as exact as the element has them; both the same but for
  double diameter2 = 0.0;  // a cone
  double width = 0.0;      // m, the same
  double depth = 0.0;
  double length = 0.0;   // of the centre line of what is round or a duct
  double lines = 0.0;    // of segments and polylines
  double surface = 0.0;  // outside; of what is round or a duct elbow without the ends
  double volume = 0.0;

  std::string fault;   // why nothing was measured, for people
  std::string remark;  // what is measured otherwise than its numbers say
};

// `unit` is the length of the file's unit in metres.
Measures measure(const Vesk::Geo& geo, double unit);

}  // namespace VeskTool

#endif
