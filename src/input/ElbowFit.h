// SPDX-License-Identifier: MIT
#ifndef VESK_INPUT_ELBOWFIT_H
#define VESK_INPUT_ELBOWFIT_H

#include "input/Input.h"
#include "prims/ElbowCorners.h"
#include "vesk/Relb.h"

namespace Vesk {

// The elbow that a mode 2 record stands for.
//
// A record has thirteen rounded numbers, an elbow eleven: rounding puts the four
// points out of square, and an elbow taken from them as they are writes others,
// the further off the longer it is. So each point may lie anywhere inside its
// last decimal, and of these elbows one is chosen that writes the same numbers:
//
// 1. that of the points as they are,
// 2. that of points in square whose steps, counted in last decimals, have the
//    least sum of squares,
// 3. that of points in square whose greatest step is least. It stays inside the
//    last decimals whenever that can be done.
//
// Where no elbow writes these numbers the result is that of 3, whose own record
// comes back as it is.
//
// Points in a line, as of half a turn, leave the plane of the bend to the axis:
// the end vector is turned about it by a hair, enough for the record to be written
// again.
//
// Throws GeEx::NullDir for an outer point at the first end of the axis.
Relb fitElbow(const ElbowCorners& record);

// Whether the elbow writes the same thirteen numbers.
bool writesCorners(const Relb& relb, const ElbowCorners& record);

// How far the elbow's points are from the record's, the furthest of the four.
// Throws GeEx::NullDir when the elbow has no plane.
double stepOf(const Relb& relb, const ElbowCorners& record);

// What a mode 2 record of an elbow holds. Throws what Relb::read throws.
ElbowCorners readCorners(Input& in);

}  // namespace Vesk

#endif
