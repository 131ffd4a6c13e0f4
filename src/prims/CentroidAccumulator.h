// SPDX-License-Identifier: MIT
#ifndef VESK_PRIMS_CENTROIDACCUMULATOR_H
#define VESK_PRIMS_CENTROIDACCUMULATOR_H

#include "vesk/GePoint.h"

namespace Vesk {

// A running weighted mean of points. Since the mean is renormalised at every
// step, a factor common to all weights does not change it.
class CentroidAccumulator {
 public:
  // Adds q with weight w. While the total weight is 0 the mean stays as it is.
  void add(const GePoint& q, double w);

  // (0, 0, 0) before the first weight.
  const GePoint& point() const { return point_; }

 private:
  GePoint point_;
  double weight_ = 0.0;
};

}  // namespace Vesk

#endif
