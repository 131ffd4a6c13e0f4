#ifndef VESK_PRIMS_PGONVERTEX_H
#define VESK_PRIMS_PGONVERTEX_H

#include "ge/GePoint.h"
#include "ge/GeVector.h"

namespace Vesk {

// A corner of a polygon, with or without a normal.
struct PgonVertex {
  GePoint point;
  GeVector normal;
  bool hasNormal = false;
};

}  // namespace Vesk

#endif
