// SPDX-License-Identifier: MIT
#include "rvm/Axes.h"

#include <algorithm>
#include <cmath>

namespace Vesk {
namespace {

constexpr double kCustomaryLength = 0.001;  // metres in a millimetre
constexpr double kLengthTolerance = 0.01;   // as a part of it
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
  for (std::size_t k = 0; k < 3; ++k) {
    double length = axes[k].length();
    if (std::fabs(length - kCustomaryLength) <= kLengthTolerance * kCustomaryLength) {
      length = kCustomaryLength;
    }
    const GeVector repaired = units[k] * length;
    changed = changed || (repaired - axes[k]).length() > 1e-9 * length;
    axes[k] = repaired;
  }
  return changed;
}

}  // namespace Vesk
