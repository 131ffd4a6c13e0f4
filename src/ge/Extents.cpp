// SPDX-License-Identifier: MIT
#include "vesk/Extents.h"

#include <initializer_list>

#include "vesk/GeConstants.h"

namespace Vesk {

Extents& Extents::add(const GePoint& p) {
  min.takeMinimum(p);
  max.takeMaximum(p);
  return *this;
}

Extents& Extents::addCircle(const GePoint& centre, const GeVector& normal, double radius) {
  const double length = normal.length();
  if (length <= kCoarseTolerance) return add(centre);
  const GeVector u = normal / length;
  for (const GeVector& axis : {kUnitX, kUnitY, kUnitZ}) {
    const GeVector inPlane = axis - u * dot(axis, u);
    const double m = inPlane.length();
    if (m <= kCoarseTolerance) continue;
    const GeVector furthest = inPlane * (radius / m);
    add(centre + furthest).add(centre - furthest);
  }
  return *this;
}

}  // namespace Vesk
