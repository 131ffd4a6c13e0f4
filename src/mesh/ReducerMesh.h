// SPDX-License-Identifier: MIT
#ifndef VESK_MESH_REDUCERMESH_H
#define VESK_MESH_REDUCERMESH_H

#include <optional>

#include "shape/ReducerShape.h"
#include "vesk/mesh/Mesh.h"

namespace Vesk {

struct ReducerMesh {
  Mesh mesh;               // closed, positions from corner 0
  double volume = 0.0;     // of the solid between the bilinear faces, positive
  double deviation = 0.0;  // of the mesh from these faces
};

// The mesh of a reducer that has a shape; one that is inside out is turned round.
// Nothing if that takes too many triangles at this tolerance.
//
// The bilinear face of the corners a, b, c, d in its cells of one k-th is apart
// from four triangles about their middles by no more than |a - b + c - d| / (16 k^2),
// and both enclose the same volume.
std::optional<ReducerMesh> makeReducer(const ReducerShape& shape, double tolerance);

}  // namespace Vesk

#endif
