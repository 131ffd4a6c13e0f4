// SPDX-License-Identifier: MIT
#include "vesk/GeDirect.h"

#include "vesk/GeConstants.h"
#include "vesk/GeEx.h"

using Vesk::kDirectionTolerance;

namespace {

const double* checked(const double* xyz) {
  if (xyz == nullptr) throw GeEx::NullPtr("GeDirect");
  return xyz;
}

GeVector unit(const GeVector& v) {
  if (v.isNull(kDirectionTolerance)) throw GeEx::NullDir("GeDirect");
  return v / v.length();
}

}  // namespace

GeDirect::GeDirect(const double* xyz) : GeVector(checked(xyz)) {}

GeDirect::GeDirect(const GeVector& v) : GeVector(unit(v)) {}
