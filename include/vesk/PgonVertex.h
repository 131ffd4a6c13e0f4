// SPDX-License-Identifier: MIT
#ifndef VESK_PGONVERTEX_H
#define VESK_PGONVERTEX_H

#include <vesk/GePoint.h>
#include <vesk/GeVector.h>

namespace Vesk {

// A corner of a polygon, with or without a normal.
struct PgonVertex {
  GePoint point;
  GeVector normal;
  bool hasNormal = false;
};

}  // namespace Vesk

#endif
