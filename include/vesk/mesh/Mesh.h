// SPDX-License-Identifier: MIT
#ifndef VESK_MESH_MESH_H
#define VESK_MESH_MESH_H

#include <array>
#include <cstdint>
#include <vector>

#include "vesk/GePoint.h"
#include "vesk/GeVector.h"

namespace Vesk {

using MeshTriangle = std::array<std::uint32_t, 3>;
using MeshEdge = std::array<std::uint32_t, 2>;

// A surface of triangles that share their corners.
//
// The corners of a triangle run counter-clockwise seen from outside; for an open
// surface, seen from the side where its boundary runs counter-clockwise. Shading
// normals are kept apart from the positions, so that a sharp edge needs no
// second copy of its corners and a closed surface is closed by its indices.
struct Mesh {
  std::vector<GePoint> positions;
  std::vector<GeVector> normals;              // of unit length, outward
  std::vector<MeshTriangle> triangles;        // into positions
  std::vector<MeshTriangle> triangleNormals;  // into normals, corner by corner
  std::vector<MeshEdge> edges;                // sharp edges, into positions; for drawings
  bool closed = false;                        // a solid: every edge has two triangles
};

}  // namespace Vesk

#endif
