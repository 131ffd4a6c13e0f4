// SPDX-License-Identifier: MIT
#ifndef VESK_MESH_FACEMESH_H
#define VESK_MESH_FACEMESH_H

#include "shape/Shape.h"
#include "vesk/Pgon.h"
#include "vesk/mesh/Mesh.h"

namespace Vesk {

// The open mesh of a polygon that has a shape, with positions from its first
// vertex. A vertex with a normal of its own keeps it, the others have that of the
// whole.
Mesh makeFace(const Pgon& pgon, const FaceShape& shape);

}  // namespace Vesk

#endif
