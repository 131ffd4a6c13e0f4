// SPDX-License-Identifier: MIT
#ifndef VESK_GEPOINT_H
#define VESK_GEPOINT_H

#include <vesk/GeVector.h>

// A position: three doubles and nothing else.
class GePoint : private Vesk::KernelFunctions {
 public:
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  constexpr GePoint() = default;
  constexpr GePoint(double px, double py, double pz) : x(px), y(py), z(pz) {}

  // Copies three doubles; null throws GeEx::NullPtr with place "GePoint".
  // Not explicit: an array of three doubles is how hosts write a point.
  GePoint(const double* xyz);  // NOLINT(google-explicit-constructor)

  // The point that this vector leads to from the origin.
  explicit constexpr GePoint(const GeVector& v) : x(v.x), y(v.y), z(v.z) {}

  GePoint& operator+=(const GeVector& v);

  // Each coordinate is replaced only if the other's is strictly smaller (or
  // larger), so a NaN of the other changes nothing.
  void takeMinimum(const GePoint& other);
  void takeMaximum(const GePoint& other);
};

namespace Vesk {

// Exact comparison of all three coordinates; -0.0 equals 0.0.
constexpr bool operator==(const GePoint& a, const GePoint& b) {
  return a.x == b.x && a.y == b.y && a.z == b.z;
}

inline GePoint operator+(const GePoint& p, const GeVector& v) {
  return {p.x + v.x, p.y + v.y, p.z + v.z};
}
inline GePoint operator-(const GePoint& p, const GeVector& v) {
  return {p.x - v.x, p.y - v.y, p.z - v.z};
}
inline GeVector operator-(const GePoint& a, const GePoint& b) {
  return {a.x - b.x, a.y - b.y, a.z - b.z};
}

double distance(const GePoint& a, const GePoint& b);

}  // namespace Vesk

#endif
