#ifndef VESK_PRIMS_EARCLIPPER_H
#define VESK_PRIMS_EARCLIPPER_H

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "ge/GePoint.h"

namespace Vesk {

// Three indices into the vertices of a polygon.
using EarTriangle = std::array<std::uint32_t, 3>;

// Splits a polygon into triangles by cutting off one ear after the other.
std::vector<EarTriangle> clipEars(std::span<const GePoint> polygon);

}  // namespace Vesk

#endif
