#ifndef VESK_MESH_REDUCERMESH_H
#define VESK_MESH_REDUCERMESH_H

#include <string>

#include "mesh/Mesh.h"
#include "prims/Red.h"

namespace Vesk {

struct ReducerMesh {
  Mesh mesh;               // closed, positions from corner 0
  double volume = 0.0;     // of the solid between the bilinear faces, positive
  double deviation = 0.0;  // of the mesh from these faces
};

// Fills `made` and returns why that can't be done; empty if it could. A reducer
// that is inside out is turned round.
//
// The bilinear face of the corners a, b, c, d in its cells of one k-th is apart
// from four triangles about their middles by no more than |a - b + c - d| / (16 k^2),
// and both enclose the same volume.
std::string makeReducer(const Red& red, double tolerance, ReducerMesh& made);

}  // namespace Vesk

#endif
