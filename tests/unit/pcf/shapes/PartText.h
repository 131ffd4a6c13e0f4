// SPDX-License-Identifier: MIT
#ifndef TESTS_PCF_SHAPES_PARTTEXT_H
#define TESTS_PCF_SHAPES_PARTTEXT_H

#include <string>

#include "pcf/shapes/Shapes.h"

namespace Vesk::Pcf {

// A part from words: `e x y z d` an end, `b x y z d` a branch, `kind FL` and
// `line x y z` of the one before, `c x y z`, `face n`, `turn x y z`, `spindle x y z`,
// `by LEVER`, `along x y z`, `tol t`.
Part partOf(Family family, const std::string& words);

}  // namespace Vesk::Pcf

#endif
