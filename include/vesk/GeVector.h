// SPDX-License-Identifier: MIT
#ifndef VESK_GEVECTOR_H
#define VESK_GEVECTOR_H

namespace Vesk {

// An empty base of points, vectors and matrices. A call also finds functions in
// the namespaces of its arguments' bases: so dot(a, b), a + b and the others
// below are in Vesk, where they disturb no host, and need no "Vesk::".
struct KernelFunctions {};

}  // namespace Vesk

// A displacement or an axis of any length: three doubles and nothing else.
//
// Arithmetic works component by component, has no tolerance and passes NaN and
// the infinities through; only functions whose comment says so throw.
class GeVector : private Vesk::KernelFunctions {
 public:
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  constexpr GeVector() = default;
  constexpr GeVector(double px, double py, double pz) : x(px), y(py), z(pz) {}

  // Copies three doubles; null throws GeEx::NullPtr with place "GeVector".
  // Not explicit: an array of three doubles is how hosts write a vector.
  GeVector(const double* xyz);  // NOLINT(google-explicit-constructor)

  // The same copy into an existing vector, with place "GeVector::set".
  void set(const double* xyz);

  double length() const;

  // Whether the length is at most `tolerance`. False for a NaN length.
  bool isNull(double tolerance) const;

  // Divides by the length if that is greater than `tolerance`; a shorter
  // vector, or one with a NaN, becomes the null vector. Never throws.
  GeVector& normalise(double tolerance);
  GeVector normalised(double tolerance) const;

  // Whether both point the same or the opposite way: their unit vectors differ,
  // or add up to, no more than `tolerance`.
  bool isParallel(const GeVector& other, double tolerance) const;

  // A unit vector perpendicular to this one, or null for the null vector: this
  // x unit x, or unit y if it is parallel to unit x.
  GeVector perpendicular() const;

  // The unsigned angle in radians, 0..pi. Throws GeEx::DivZero with place
  // "GeDirect::angleTo" when the product of the two lengths is 0.0. A cosine
  // that rounding pushed outside -1..1 counts as -1 or 1.
  double angleTo(const GeVector& other) const;

  // Turns this vector about `axis` (any length) by `angle` radians, right-handed.
  // A null axis or an angle of 0.0 gives this vector bit for bit.
  GeVector rotatedAbout(const GeVector& axis, double angle) const;

  // Divides by a scalar; exactly 0.0 throws GeEx::DivZero with place
  // "GeDirect::operator /=".
  GeVector& operator/=(double divisor);

  GeVector& operator+=(const GeVector& other) {
    return *this = GeVector(x + other.x, y + other.y, z + other.z);
  }
  GeVector operator-() const { return {-x, -y, -z}; }
};

namespace Vesk {

// Exact comparison of all three coordinates; -0.0 equals 0.0.
constexpr bool operator==(const GeVector& a, const GeVector& b) {
  return a.x == b.x && a.y == b.y && a.z == b.z;
}

inline GeVector operator+(const GeVector& a, const GeVector& b) {
  return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline GeVector operator-(const GeVector& a, const GeVector& b) {
  return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline GeVector operator*(const GeVector& v, double s) { return {v.x * s, v.y * s, v.z * s}; }
inline GeVector operator*(double s, const GeVector& v) { return v * s; }

// Divides by a scalar; exactly 0.0 throws GeEx::DivZero with place
// "GeDirect::operator /".
GeVector operator/(const GeVector& v, double divisor);

inline double dot(const GeVector& a, const GeVector& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline GeVector cross(const GeVector& a, const GeVector& b) {
  return {a.y * b.z - b.y * a.z, a.z * b.x - b.z * a.x, b.y * a.x - a.y * b.x};
}

// a . (b x c)
inline double triple(const GeVector& a, const GeVector& b, const GeVector& c) {
  return dot(a, cross(b, c));
}

// The angle about `axis` from b to c in radians, -pi..pi: the angle between
// axis x b and axis x c, positive when (axis x b) . c >= 0. Throws as angleTo
// does when b or c is parallel to the axis.
double signedAngle(const GeVector& axis, const GeVector& b, const GeVector& c);

}  // namespace Vesk

#endif
