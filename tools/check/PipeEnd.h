// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_CHECK_PIPEEND_H
#define VESK_TOOLS_CHECK_PIPEEND_H

#include <cstdint>

#include "vesk/GePoint.h"

namespace VeskTool {

// Where numbers stand in the lines of their element.
struct NumberSpan {
  std::uint16_t line = 0;    // index of the line
  std::uint16_t column = 0;  // of the first character, from 1, in bytes; 0: unknown
  std::uint16_t last = 0;    // of the last one
  std::uint16_t inside = 0;  // bytes before it that go on with a letter of UTF-8
};

// An end of a cylinder, cone or torus.
struct PipeEnd {
  GePoint point;     // the middle of the face
  GeVector outward;  // unit normal of the face
  double diameter = 0.0;
  std::uint64_t line = 0;     // of the element
  std::uint64_t group = 0;    // of its header, see Solids
  std::uint32_t element = 0;  // the two ends of an element have the same
  bool isFitting = false;     // of something wider than its pipe on purpose
  bool isClosed = false;      // of a cap, a plug or a blind flange: never open
  NumberSpan place;           // the numbers that say where the end is
  NumberSpan width;           // its diameter
};

struct JointOptions {
  double tolerance = 0.1;  // up to here two ends meet
  double reach = 10.0;     // ends further apart have nothing to do with each other
};

// Cosine of the five degrees within which ends face each other.
inline constexpr double kFacingCosine = 0.99619469809174555;

// Lengths that are over a limit by less are within it: less than the last decimal of
// any style.
inline constexpr double kRounding = 1e-6;

// How far ends of these diameters may be apart to face each other.
double facingReach(double diameter, double other, const JointOptions& options);

// The distance of the middles if the two ends face each other, else nothing;
// the whole rule of what a joint may be.
bool areFacing(const PipeEnd& a, const PipeEnd& b, const JointOptions& options, double& distance);

}  // namespace VeskTool

#endif
