// SPDX-License-Identifier: MIT
#include "mesh/Placement.h"

namespace Vesk {

GeVector Placement::normal(const GeVector& n) const {
  // By the inverse transposed, which for perpendicular axes divides each image by
  // the square of its length. One division after the other: squares may underflow.
  const auto divided = [](const GeVector& axis) {
    const double length = axis.length();
    return axis / length / length;
  };
  const GeVector turned = divided(x) * n.x + divided(y) * n.y + divided(z) * n.z;
  return turned / turned.length();
}

}  // namespace Vesk
