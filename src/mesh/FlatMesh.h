// SPDX-License-Identifier: MIT
#ifndef VESK_MESH_FLATMESH_H
#define VESK_MESH_FLATMESH_H

#include <cstdint>
#include <vector>

#include "vesk/mesh/Mesh.h"

namespace Vesk {

// A mesh as graphics hardware takes it: 32-bit numbers, and a vertex for every
// pair of a position and a normal that occurs, so that a sharp edge has its
// vertices twice. The triangles are those of the mesh, in their order.
struct FlatMesh {
  std::vector<float> positions;  // x, y, z of each vertex
  std::vector<float> normals;
  std::vector<std::uint32_t> indices;  // three for each triangle
};

FlatMesh flattened(const Mesh& mesh);

}  // namespace Vesk

#endif
