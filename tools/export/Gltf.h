// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXPORT_GLTF_H
#define VESK_TOOLS_EXPORT_GLTF_H

#include <cstdint>

#include "export/MeshPacker.h"
#include "mesh/Scene.h"
#include "terminal/Streams.h"

namespace VeskTool {

struct GltfOptions {
  enum class Grouping {
    kElements,   // a node for each element
    kInstances,  // a node for each shape: EXT_mesh_gpu_instancing
    kMerged,     // a mesh for each kind of a header
  };

  bool isBinary = true;  // one .glb, or one .gltf with its data inside
  Grouping grouping = Grouping::kElements;
  const MeshPacker* packer = nullptr;  // compresses the file; must live as long as the call
};

// glTF 2.0 in one file.
//
// One root node turns z up into y up and makes metres of the unit, which is
// `millimetres` long; its extras are "unit" (in millimetres) and "offset" (what is
// to be added to coordinates, in that unit). Below it is a node for each group (the
// header's second field), below that one for each header, below that one for each
// element with the extras "header", "kind", "file" and "line"; equal shapes share a
// mesh, and colours are by kind. Points and lines are glTF's; a text is a node with
// the extras "text", "along", "up", "width" and "height" at the start of its base
// line. Only open surfaces are double-sided.
//
// kInstances: shapes that occur more than once are instances below the root; each
// has its element's index as `_FEATURE_ID_0` (EXT_instance_features), and the
// root's extras "elements" tell header, kind, file and line by that index.
//
// kMerged: the solids of a header and kind are one mesh, whose node's extras
// "lines" and "firstTriangles" tell the elements in it.
//
// Compressed, no point is further than a tenth of its element's tolerance, or than
// 32-bit numbers are apart, from where it would be otherwise; normals of merged
// meshes have 8 bits a number. Triangles keep their order, not their first corners.
//
// Throws a Failure with Exit::kOutput for more than 4 GB. Memory: the file's JSON,
// about 270 bytes for an element, and each shape once.
void writeGltf(const Vesk::Scene& scene, double millimetres, const GltfOptions& options,
               TextSink& out);

// How many bytes of vertices and indices kMerged writes, at the most.
std::uint64_t mergedBytes(const Vesk::Scene& scene);

}  // namespace VeskTool

#endif
