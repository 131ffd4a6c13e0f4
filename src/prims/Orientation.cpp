// SPDX-License-Identifier: MIT
#include "prims/Orientation.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace Vesk {

namespace {

constexpr double kHalfUlp = 0x1p-53;
// Three roundings in a row (difference, product, difference) and a little for
// the rounding of the bound itself.
constexpr double kFilter = (3.0 + 16.0 * kHalfUlp) * kHalfUlp;

// The exact sum of doubles as a list of doubles that do not overlap, smallest
// first; its largest part has the sign of the sum.
class ExactSum {
 public:
  // Adds x * y, which is the rounded product and its exact error. The error
  // comes from halves of 26 bits, whose products are exact; std::fma is not
  // correctly rounded in every C library.
  void addProduct(double x, double y) {
    const double product = x * y;
    const Halves a = split(x);
    const Halves b = split(y);
    add(a.low * b.low - (((product - a.high * b.high) - a.low * b.high) - a.high * b.low));
    add(product);
  }

  double largestPart() const {
    for (std::size_t i = size_; i > 0; --i) {
      if (parts_[i - 1] != 0.0) return parts_[i - 1];
    }
    return 0.0;
  }

 private:
  struct Halves {
    double high;
    double low;
  };

  static Halves split(double x) {
    const double shifted = 134217729.0 * x;  // 2^27 + 1
    const double high = shifted - (shifted - x);
    return {high, x - high};
  }

  // Runs the number up through the parts, each time leaving behind what the
  // rounded sum lost.
  void add(double number) {
    for (std::size_t i = 0; i < size_; ++i) {
      const double sum = number + parts_[i];
      const double taken = sum - number;
      parts_[i] = (number - (sum - taken)) + (parts_[i] - taken);
      number = sum;
    }
    parts_[size_++] = number;
  }

  std::array<double, 12> parts_{};  // six products, two parts each
  std::size_t size_ = 0;
};

// The area formula multiplied out: products of coordinates, no differences,
// which would round.
double exactOrientation(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c) {
  ExactSum sum;
  sum.addProduct(a.x, b.y);
  sum.addProduct(-a.y, b.x);
  sum.addProduct(b.x, c.y);
  sum.addProduct(-b.y, c.x);
  sum.addProduct(c.x, a.y);
  sum.addProduct(-c.y, a.x);
  return sum.largestPart();
}

}  // namespace

double orientation(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c) {
  const double left = (a.x - c.x) * (b.y - c.y);
  const double right = (a.y - c.y) * (b.x - c.x);
  const double area = left - right;
  const double bound = kFilter * (std::abs(left) + std::abs(right));
  if (area > bound || -area > bound || bound == 0.0) return area;
  return exactOrientation(a, b, c);
}

}  // namespace Vesk
