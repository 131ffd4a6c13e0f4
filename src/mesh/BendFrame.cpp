// SPDX-License-Identifier: MIT
#include "mesh/BendFrame.h"

#include <cmath>

#include "prims/BendArc.h"

namespace Vesk {

BendFrame bendFrame(const GePoint& centre, const GeVector& start, const GeVector& end) {
  BendFrame frame;
  const BendArc arc(centre, start, end);
  const GeVector& from = arc.startDirection();
  const GeVector& to = arc.endDirection();
  frame.x = from;
  frame.y = cross(arc.normal(), from);
  frame.y /= frame.y.length();
  frame.z = cross(frame.x, frame.y);
  frame.radius = arc.meanRadius();
  frame.sweep = std::atan2(cross(from, to).length(), dot(from, to));
  return frame;
}

}  // namespace Vesk
