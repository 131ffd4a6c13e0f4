// SPDX-License-Identifier: MIT
#ifndef VESK_RVM_AXES_H
#define VESK_RVM_AXES_H

#include <array>

#include "vesk/GeVector.h"

namespace Vesk {

// The axes of a shape's frame: the images of local x, y and z.
using Axes = std::array<GeVector, 3>;

// Directions whose cosine is below this count as perpendicular, lengths whose
// ratio is as near to 1 as equal: what 32 bits leave after a chain of turns.
inline constexpr double kAxesTolerance = 1e-4;

bool isPerpendicular(const Axes& axes);

// Whether the axes have lengths, about equal ones, and are perpendicular.
bool isFrame(const Axes& axes);

// Axes that were rounded to a few decimals: those that are nearly perpendicular
// become so, each by as little as possible, and a length within 1 % of 0.001
// becomes 0.001. Returns whether anything has changed.
bool repairAxes(Axes& axes);

}  // namespace Vesk

#endif
