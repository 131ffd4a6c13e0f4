// SPDX-License-Identifier: MIT
#ifndef VESK_GEDIRECT_H
#define VESK_GEDIRECT_H

#include <vesk/GeVector.h>

// A direction: a vector that is meant to be of unit length.
class GeDirect : public GeVector {
 public:
  constexpr GeDirect() = default;

  // Takes the three numbers as they are; their length is the caller's concern.
  constexpr GeDirect(double px, double py, double pz) : GeVector(px, py, pz) {}

  // Copies three doubles; null throws GeEx::NullPtr with place "GeDirect".
  GeDirect(const double* xyz);  // NOLINT(google-explicit-constructor)

  // The unit direction of `v`. Throws GeEx::NullDir with place "GeDirect" when
  // v is null within the direction tolerance; infinities and NaN pass and give
  // NaN coordinates.
  explicit GeDirect(const GeVector& v);
};

#endif
