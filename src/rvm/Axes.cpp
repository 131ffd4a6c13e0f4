// SPDX-License-Identifier: MIT
#include "rvm/Axes.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Vesk {
namespace {

constexpr double kCustomaryLength = 0.001;  // metres in a millimetre
constexpr double kLengthTolerance = 0.01;   // as a part of it
constexpr double kRoundedLength = 1.8e-5;   // that five decimals set two axes apart: 2 sqrt(3) 5e-6
constexpr double kRoundedCosine = 0.025;    // that five decimals of 0.001 make of a right angle

double largestCosine(const Axes& axes) {
  double largest = 0.0;
  for (std::size_t i = 0; i < 3; ++i) {
    const GeVector& a = axes[i];
    const GeVector& b = axes[(i + 1) % 3];
    const double lengths = a.length() * b.length();
    const double cosine = std::fabs(dot(a, b)) / lengths;
    if (!(lengths > 0.0) || !std::isfinite(cosine)) return 1.0;
    largest = std::max(largest, cosine);
  }
  return largest;
}

// The nearest perpendicular directions: Newton's iteration towards the
// orthogonal factor, whose inverse transposed has the cross products as columns.
void makePerpendicular(Axes& units) {
  for (int i = 0; i < 8; ++i) {
    const double determinant = triple(units[0], units[1], units[2]);
    const Axes inverse = {cross(units[1], units[2]), cross(units[2], units[0]),
                          cross(units[0], units[1])};
    for (std::size_t k = 0; k < 3; ++k) {
      units[k] = (units[k] + inverse[k] * (1.0 / determinant)) * 0.5;
    }
  }
}

bool isRoundedFrom(double a, double b) {
  return std::fabs(a - b) <= std::min(kRoundedLength, kLengthTolerance * std::min(a, b));
}

// The customary length, or else one length for those that rounding has set apart.
std::array<double, 3> repairedLengths(const Axes& axes) {
  std::array<double, 3> lengths;
  for (std::size_t k = 0; k < 3; ++k) {
    lengths[k] = axes[k].length();
    if (std::fabs(lengths[k] - kCustomaryLength) <= kLengthTolerance * kCustomaryLength) {
      lengths[k] = kCustomaryLength;
    }
  }
  auto& [x, y, z] = lengths;
  if (x == kCustomaryLength || y == kCustomaryLength || !isRoundedFrom(x, y)) return lengths;
  if (isRoundedFrom(x, z) && isRoundedFrom(y, z)) {
    x = y = z = (x + y + z) / 3.0;
  } else {
    x = y = (x + y) / 2.0;
  }
  return lengths;
}

}  // namespace

bool isPerpendicular(const Axes& axes) { return largestCosine(axes) <= kAxesTolerance; }

bool isFrame(const Axes& axes) {
  const double length = axes[0].length();
  for (const GeVector& axis : axes) {
    if (!(std::fabs(axis.length() - length) <= 0.02 * length)) return false;
  }
  return largestCosine(axes) <= kRoundedCosine;
}

bool repairAxes(Axes& axes) {
  if (!(largestCosine(axes) <= kRoundedCosine)) return false;
  Axes units;
  for (std::size_t k = 0; k < 3; ++k) units[k] = axes[k] * (1.0 / axes[k].length());
  makePerpendicular(units);
  bool changed = false;
  const std::array<double, 3> lengths = repairedLengths(axes);
  for (std::size_t k = 0; k < 3; ++k) {
    const GeVector repaired = units[k] * lengths[k];
    changed = changed || (repaired - axes[k]).length() > 1e-9 * lengths[k];
    axes[k] = repaired;
  }
  return changed;
}

}  // namespace Vesk
