// SPDX-License-Identifier: MIT
#ifndef VESK_GEMATRIX_H
#define VESK_GEMATRIX_H

#include <array>

#include <vesk/GePoint.h>
#include <vesk/GeVector.h>

// A rigid or scaling transform: sixteen doubles in four columns of four.
//
// Columns 0, 1 and 2 are the images of the x, y and z axis, column 3 is the
// translation. The fourth number of each column is the homogeneous row, 0 for
// the axes and 1 for the translation; it takes no part in the products.
class GeMatrix : private Vesk::KernelFunctions {
 public:
  std::array<std::array<double, 4>, 4> columns{
      {{1.0, 0.0, 0.0, 0.0}, {0.0, 1.0, 0.0, 0.0}, {0.0, 0.0, 1.0, 0.0}, {0.0, 0.0, 0.0, 1.0}}};

  // The identity.
  GeMatrix() = default;

  // The frame with these axes and this origin.
  GeMatrix(const GeVector& x, const GeVector& y, const GeVector& z, const GeVector& origin);

  // A right-handed frame at the origin with unit axes whose z points along
  // `main` and whose y is perpendicular to z and `reference`. A reference that
  // is null or parallel to `main` is replaced by main's perpendicular. Throws
  // GeEx::NullDir with place "GeMatrix" when `main` is null.
  GeMatrix(const GeVector& main, const GeVector& reference);

  // Multiplies by `factor` about the world origin.
  static GeMatrix scaling(double factor);

  GeVector translation() const;
};

namespace Vesk {

// With the translation.
GePoint operator*(const GeMatrix& m, const GePoint& p);

// Without the translation.
GeVector operator*(const GeMatrix& m, const GeVector& v);

}  // namespace Vesk

#endif
