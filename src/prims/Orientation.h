// SPDX-License-Identifier: MIT
#ifndef VESK_PRIMS_ORIENTATION_H
#define VESK_PRIMS_ORIENTATION_H

namespace Vesk {

// A point of a plane.
struct PlanePoint {
  double x = 0.0;
  double y = 0.0;

  friend constexpr bool operator==(const PlanePoint& a, const PlanePoint& b) {
    return a.x == b.x && a.y == b.y;
  }
};

// Twice the signed area of the triangle a, b, c: positive when a, b, c turn to
// the left, negative when they turn to the right, 0.0 when they lie on a line.
//
// The sign is that of the exact area of the given coordinates, the size is
// rounded. Coordinates are finite, and those that are not 0 have sizes of
// 1e-140 to 1e140, so that no product leaves the range of a double.
//
// Most calls end after the plain formula: its error is at most kFilter times
// the sum of the two products. Only a result below that bound, of three points
// that are nearly on a line, is summed again without any rounding.
double orientation(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c);

}  // namespace Vesk

#endif
