// SPDX-License-Identifier: MIT
#ifndef VESK_MESH_UNITMESHES_H
#define VESK_MESH_UNITMESHES_H

#include <cstdint>

#include "vesk/mesh/Mesh.h"

namespace Vesk {

// Solids of unit size that a placement stretches to their true one. All are
// closed.

// A truncated cone about z, from the circle of radius 1 at z = 0 to that of radius
// `ratio`, 0..1, at z = 1: a cylinder for 1, an apex for 0. `segments`, a multiple
// of four, go round; the first corner is on x. Volume
//
//     1/3 * segments/2 * sin(2 pi / segments) * (1 + ratio + ratio^2)
Mesh unitCone(std::uint32_t segments, double ratio);

// A segment of a torus about z: a circle of radius `ratio`, 0..1, about (1, 0, 0)
// in the plane of x and z, swept from x to y by `sweep` radians in `along` pieces.
// `around`, a multiple of four, go round the tube, from the outside. With a ratio
// of 1 the tube touches the axis of the bend in one corner. Volume
//
//     along * sin(sweep / along) * around/2 * ratio^2 * sin(2 pi / around)
Mesh unitTorus(std::uint32_t along, std::uint32_t around, double ratio, double sweep);

// A rectangle of the size `depth`, 0..2, about (1, 0, 0) on x and from -1/2 to 1/2
// on z, swept as the torus is. With a depth of 2 it turns about one edge. Volume
//
//     along * sin(sweep / along) * depth
Mesh unitElbow(std::uint32_t along, double depth, double sweep);

// From the origin to (1, 1, 1), in 12 triangles.
Mesh unitCube();

}  // namespace Vesk

#endif
