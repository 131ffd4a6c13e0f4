// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXPORT_WRITERS_H
#define VESK_TOOLS_EXPORT_WRITERS_H

#include <cstddef>
#include <string>

#include "mesh/Scene.h"
#include "terminal/Streams.h"

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

// Wavefront OBJ, an object for each element; positions and normals of 32 bits
// in the unit of the scene. Texts are left out.
LeftOut writeObj(const Vesk::Scene& scene, double millimetres, TextSink& out);

// Binary PLY of the low byte first: corners with the colour of their kind, faces
// of three, edges for lines; numbers of 32 bits in the unit of the scene. Texts are
// left out.
LeftOut writePly(const Vesk::Scene& scene, double millimetres, TextSink& out);

// Binary STL, solids and faces alone, in the unit of the scene.
LeftOut writeStl(const Vesk::Scene& scene, TextSink& out);

}  // namespace VeskTool

#endif
