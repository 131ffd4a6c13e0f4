#ifndef VESK_MESH_FACEMESH_H
#define VESK_MESH_FACEMESH_H

#include <string>

#include "mesh/Mesh.h"
#include "prims/Pgon.h"

namespace Vesk {

// Makes an open mesh of a polygon, with positions from its first vertex. A vertex
// with a normal of its own keeps it, the others have that of the whole.
//
// Returns why that can't be done; empty if it could.
std::string makeFace(const Pgon& pgon, Mesh& mesh);

}  // namespace Vesk

#endif
