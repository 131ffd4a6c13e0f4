// SPDX-License-Identifier: MIT
#ifndef VESK_MESH_ELEMENTMESH_H
#define VESK_MESH_ELEMENTMESH_H

#include <string>

#include <vesk/Geo.h>
#include <vesk/mesh/Fineness.h>
#include <vesk/mesh/Mesh.h>

namespace Vesk {

// The surface of one element as triangles.
struct ElementMesh {
  // In the coordinates of the element. Closed for a solid, open for a polygon.
  // Empty if there is none.
  Mesh mesh;

  double volume = 0.0;     // of the true solid; 0.0 for an open surface
  double deviation = 0.0;  // largest distance of mesh and true surface
  double tolerance = 0.0;  // and the largest one allowed

  // Why there is no mesh; empty if there is one. A polyline and a text have no
  // surface; a solid without extent, a bend without a plane and numbers that are
  // not finite or beyond 1e12 give none.
  std::string reason;
};

// Makes the mesh of an element:
//
//   const ElementMesh made = meshOf(Cyl({0, 0, 0}, {0, 0, 500}, 219.1),
//                                   Fineness::ofTolerance(0.1));
//
// The same element and fineness give the same mesh with every compiler, except
// for the last digits of sines and cosines.
ElementMesh meshOf(const Geo& geo, const Fineness& fineness);

}  // namespace Vesk

#endif
