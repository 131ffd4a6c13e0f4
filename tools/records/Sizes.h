// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_RECORDS_SIZES_H
#define VESK_TOOLS_RECORDS_SIZES_H

#include <array>
#include <optional>
#include <string>

#include "vesk/RecordFile.h"

namespace VeskTool {

// What a pipe fitter orders an element by, in the unit of the file: the diameter of
// pipes and bends, the larger one of cones, the larger side of duct elbows; 0 for all
// else.
double sizeOf(const Vesk::Geo& geo);

// The same as a text to a tenth: "219.1", of duct elbows both sides, "400x250"; "none"
// for what has no size.
std::string sizeName(const Vesk::Geo& geo);

// The cell of a grid that holds the middle of an element's box: "x2_y-1" in plan, and
// with three lengths "x2_y-1_z0". Cell x0 goes from 0 to the length of a cell;
// "nowhere" without a box, or too far away to count.
std::string cellName(const Vesk::Geo& geo, const std::array<std::optional<double>, 3>& lengths);

}  // namespace VeskTool

#endif
