// SPDX-License-Identifier: MIT
#ifndef VESK_RVM_SHAPEBOX_H
#define VESK_RVM_SHAPEBOX_H

#include "rvm/ReviewModel.h"

namespace Vesk {

// Whether the local box that the file gives for a shape is about that of its
// parameters. True for kinds whose box is not calculated here: spheres and lines,
// of which the box itself decides, and sheared snouts.
bool boxAgrees(const ReviewShape& shape);

// Whether two lengths are the same but for the few decimals that a text form has.
bool sameLength(double a, double b);

}  // namespace Vesk

#endif
