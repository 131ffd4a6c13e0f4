// SPDX-License-Identifier: MIT
#include "vesk/GePoint.h"

#include "vesk/GeEx.h"

GePoint::GePoint(const double* xyz) {
  if (xyz == nullptr) throw GeEx::NullPtr("GePoint");
  x = xyz[0];
  y = xyz[1];
  z = xyz[2];
}

GePoint& GePoint::operator+=(const GeVector& v) { return *this = *this + v; }

void GePoint::takeMinimum(const GePoint& other) {
  if (other.x < x) x = other.x;
  if (other.y < y) y = other.y;
  if (other.z < z) z = other.z;
}

void GePoint::takeMaximum(const GePoint& other) {
  if (other.x > x) x = other.x;
  if (other.y > y) y = other.y;
  if (other.z > z) z = other.z;
}

double Vesk::distance(const GePoint& a, const GePoint& b) { return (a - b).length(); }
