// SPDX-License-Identifier: MIT
#include "shape/QuadSplit.h"

#include <algorithm>

namespace Vesk {
namespace {

// Of the squared area: what lies below comes from rounding.
constexpr double kNothing = 1e-9;

double worse(const GeVector& whole, const GeVector& one, const GeVector& other) {
  return std::min(dot(whole, one), dot(whole, other));
}

}  // namespace

QuadSplit splitQuad(const GePoint& a, const GePoint& b, const GePoint& c, const GePoint& d) {
  const GeVector whole = quadArea(a, b, c, d);
  const double fromFirst = worse(whole, cross(b - a, c - a), cross(c - a, d - a));
  const double fromSecond = worse(whole, cross(c - b, d - b), cross(d - b, a - b));
  return {fromFirst >= fromSecond, std::max(fromFirst, fromSecond) < -kNothing * dot(whole, whole)};
}

bool isBowTie(const GePoint& a, const GePoint& b, const GePoint& c, const GePoint& d,
              double least) {
  const auto areOpposite = [least](const GeVector& one, const GeVector& other) {
    return one.length() > least && other.length() > least && dot(one, other) < 0.0;
  };
  return areOpposite(cross(b - a, c - a), cross(c - a, d - a)) &&
         areOpposite(cross(c - b, d - b), cross(d - b, a - b));
}

}  // namespace Vesk
