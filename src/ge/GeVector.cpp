// SPDX-License-Identifier: MIT
#include "vesk/GeVector.h"

#include <cmath>
#include <initializer_list>

#include "vesk/GeConstants.h"
#include "vesk/GeEx.h"

using Vesk::kDirectionTolerance;
using Vesk::kNullVector;
using Vesk::kUnitX;
using Vesk::kUnitY;
using Vesk::kUnitZ;

GeVector::GeVector(const double* xyz) {
  if (xyz == nullptr) throw GeEx::NullPtr("GeVector");
  x = xyz[0];
  y = xyz[1];
  z = xyz[2];
}

void GeVector::set(const double* xyz) {
  if (xyz == nullptr) throw GeEx::NullPtr("GeVector::set");
  x = xyz[0];
  y = xyz[1];
  z = xyz[2];
}

double GeVector::length() const { return std::sqrt(x * x + y * y + z * z); }

bool GeVector::isNull(double tolerance) const { return length() <= tolerance; }

GeVector& GeVector::normalise(double tolerance) {
  const double size = length();
  if (size > tolerance) return *this /= size;
  return *this = kNullVector;
}

GeVector GeVector::normalised(double tolerance) const {
  GeVector copy = *this;
  return copy.normalise(tolerance);
}

bool GeVector::isParallel(const GeVector& other, double tolerance) const {
  const GeVector a = normalised(kDirectionTolerance);
  const GeVector b = other.normalised(kDirectionTolerance);
  return (a - b).length() <= tolerance || (a + b).length() <= tolerance;
}

GeVector GeVector::perpendicular() const {
  if (*this == kNullVector) return kNullVector;
  // What is parallel to x is not parallel to y.
  const GeVector& axis = isParallel(kUnitX, kDirectionTolerance) ? kUnitY : kUnitX;
  return cross(*this, axis).normalised(kDirectionTolerance);
}

double GeVector::angleTo(const GeVector& other) const {
  const double product = length() * other.length();
  if (product == 0.0) throw GeEx::DivZero("GeDirect::angleTo");
  const double cosine = dot(*this, other) / product;
  if (cosine > 1.0) return std::acos(1.0);
  if (cosine < -1.0) return std::acos(-1.0);
  return std::acos(cosine);
}

GeVector GeVector::rotatedAbout(const GeVector& axis, double angle) const {
  const double size = axis.length();
  if (size == 0.0 || angle == 0.0) return *this;
  const GeVector u = axis / size;
  const GeVector parallel = u * dot(u, *this);
  const GeVector sideways = cross(u, *this) * std::sin(angle);
  return parallel + (*this - parallel) * std::cos(angle) + sideways;
}

GeVector& GeVector::operator/=(double divisor) {
  if (divisor == 0.0) throw GeEx::DivZero("GeDirect::operator /=");
  x /= divisor;
  y /= divisor;
  z /= divisor;
  return *this;
}

GeVector Vesk::operator/(const GeVector& v, double divisor) {
  if (divisor == 0.0) throw GeEx::DivZero("GeDirect::operator /");
  return {v.x / divisor, v.y / divisor, v.z / divisor};
}

double Vesk::signedAngle(const GeVector& axis, const GeVector& b, const GeVector& c) {
  const GeVector m = cross(axis, b);
  const double size = m.angleTo(cross(axis, c));
  return dot(m, c) >= 0.0 ? size : -size;
}
