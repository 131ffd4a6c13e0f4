// SPDX-License-Identifier: MIT
#ifndef VESK_MESH_MESHPROOF_H
#define VESK_MESH_MESHPROOF_H

#include <cstddef>
#include <string>

#include "vesk/mesh/Mesh.h"

namespace Vesk {

// Why the surface is not closed; empty if it is: each directed edge once and its
// reverse once, no vertex without a triangle, every corner there, and as many
// vertices and triangles as the surface of one solid without a hole has (V - E +
// F = 2).
std::string closureFault(const Mesh& mesh);

// The mesh as readers of 32-bit triangles see it: positions rounded to floats,
// those that are equal then are one, and triangles that vanish by that are left
// out. `dropped` counts these.
Mesh roundedMesh(const Mesh& mesh, std::size_t& dropped);

// The volume that a closed mesh encloses, positive when its triangles look
// outward.
double enclosedVolume(const Mesh& mesh);

}  // namespace Vesk

#endif
