#ifndef VESK_TOOLS_EXPORT_WRITERS_H
#define VESK_TOOLS_EXPORT_WRITERS_H

#include <cstddef>
#include <string>

#include "Streams.h"
#include "mesh/Scene.h"

namespace VeskTool {

// What a written file does not hold of the scene.
struct LeftOut {
  std::size_t points = 0;
  std::size_t lines = 0;
  std::size_t texts = 0;
  std::size_t triangles = 0;  // that have no area in 32 bits
};

// One name for an element, without blanks: "P-101_A1/cylinder:1042".
std::string nameOf(const Vesk::Scene& scene, std::uint32_t element);

// glTF 2.0 in one binary file.
//
// One root node turns z up into y up and makes metres of the unit, which is
// `millimetres` long; its extras are "unit" (in millimetres) and "offset" (what is
// to be added to coordinates, in that unit). Below it is a node for each element
// with the extras "header", "kind", "file" and "line"; equal shapes share a mesh.
// Points and lines are glTF's; a text is a node with the extras "text", "along",
// "up", "width" and "height" at the start of its base line. Only open surfaces
// are double-sided. Throws a Failure with Exit::kOutput for more than 4 GB.
void writeGlb(const Vesk::Scene& scene, double millimetres, TextSink& out);

// Wavefront OBJ, an object for each element; positions and normals of 32 bits
// in the unit of the scene. Texts are left out.
LeftOut writeObj(const Vesk::Scene& scene, double millimetres, TextSink& out);

// Binary STL, solids and faces alone, in the unit of the scene.
LeftOut writeStl(const Vesk::Scene& scene, TextSink& out);

}  // namespace VeskTool

#endif
