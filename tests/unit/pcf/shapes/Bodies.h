// SPDX-License-Identifier: MIT
#ifndef TESTS_PCF_SHAPES_BODIES_H
#define TESTS_PCF_SHAPES_BODIES_H

#include <string>

#include "pcf/shapes/Shapes.h"
#include <vesk/Geo.h>

namespace Vesk::Pcf {

// "cylinder 0 0 0 > 100 0 0 d 60.3": points, diameters and sizes to three decimals
// without trailing zeros. A torus is told by centre, ends and tube, a box by its
// middle and lengths of its edges, a reducer by its first and second corner 0.
std::string textOf(const Geo& body);

// Whether a point lies in the body or no further than `tolerance` outside.
bool contains(const Geo& body, const GePoint& p, double tolerance);

// Whether any of the bodies contains it.
bool contains(const Drawn& drawn, const GePoint& p, double tolerance);

}  // namespace Vesk::Pcf

#endif
