// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_CHECK_SHAPERULES_H
#define VESK_TOOLS_CHECK_SHAPERULES_H

#include <cstdint>
#include <vector>

#include "check/ElementFault.h"
#include "vesk/Geo.h"

namespace VeskTool {

// What is wrong with the shape of one element that was read in this mode,
// appended to `faults`. An element with a number that is not finite has only
// that said of it. What has no shape is told in any case: whatever `vesk export`
// leaves out has a finding, and whatever it makes has none that is an error.
//
//   V101  a size below zero
//   V102  a tube or section wider than its bend
//   V103  an element without extent: no length, no width, flat, all points one
//   V105  a number that is not finite
//   V106  a reducer whose corners are in the wrong order
//   V107  a reducer that is inside out
//   V108  a quadrangle that crosses itself
//   V110  a bend whose start and end are not at the same distance
//   V111  a torus whose stated bend radius is not the distance of its ends
//   V112  a bend that has no plane: its start and end are in line with the centre
//   V113  a bend so near to half a turn that rounding decides on its side
//   V121  mode 3: a number so large that a double can't hold its decimals
void checkShape(const Vesk::Geo& geo, std::int32_t mode, std::vector<ElementFault>& faults);

// Numbers of a mode 2 element that keep fewer than three decimals because they
// are large: V120 with one or two decimals left, V121 with none.
void checkFields(const Vesk::Recs& lines, std::vector<ElementFault>& faults);

// The smallest size of a drawn element, in the file's unit.
inline constexpr double kLeastSize = 0.01;

// How much the two radii of a bend may differ, at least; coordinates with few
// decimals allow more.
inline constexpr double kRadiusSlack = 0.01;

// From here on four decimals of a number are not all kept by a double: 2^53 / 10^4.
inline constexpr double kLastExact = 900719925474.0992;

}  // namespace VeskTool

#endif
