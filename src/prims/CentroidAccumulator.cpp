// SPDX-License-Identifier: MIT
#include "prims/CentroidAccumulator.h"

namespace Vesk {

void CentroidAccumulator::add(const GePoint& q, double w) {
  const double total = weight_ + w;
  if (total != 0.0) {
    const double a = weight_ / total;
    const double b = w / total;
    point_ = {point_.x * a + q.x * b, point_.y * a + q.y * b, point_.z * a + q.z * b};
  }
  weight_ = total;
}

}  // namespace Vesk
