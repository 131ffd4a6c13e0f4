// SPDX-License-Identifier: MIT
#ifndef VESK_MESH_SCENE_H
#define VESK_MESH_SCENE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "mesh/Placement.h"
#include "vesk/Extents.h"
#include "vesk/GePoint.h"
#include "vesk/GeVector.h"
#include "vesk/mesh/Mesh.h"

namespace Vesk {

// An element of a record file, whatever became of it.
struct SceneElement {
  std::uint8_t kind = 0;     // as the maker of the scene counts the kinds
  std::uint32_t header = 0;  // into Scene::headers
  std::uint32_t file = 0;    // into Scene::files
  std::uint64_t line = 0;    // its first one, from 1
  std::uint32_t lines = 1;
};

// A mesh in its place. Equal elements, and those that differ only by a stretch
// along the axes, share a mesh.
struct SceneInstance {
  std::uint32_t mesh = 0;     // into Scene::meshes
  std::uint32_t element = 0;  // into Scene::elements
  Placement placement;
  double volume = 0.0;     // of the true solid; 0.0 for an open surface
  double deviation = 0.0;  // the most that mesh and true surface are apart
  double tolerance = 0.0;  // and the most that they might be
};

struct ScenePoint {
  std::uint32_t element = 0;
  GePoint position;
};

// The vertices of a polyline: a range of Scene::lineVertices, two at least.
struct SceneLine {
  std::uint32_t element = 0;
  std::size_t first = 0;
  std::size_t count = 0;
};

struct SceneText {
  std::uint32_t element = 0;
  std::string text;    // bytes in any encoding
  GePoint position;    // start of the base line
  GeVector along;      // writing direction, as the record has it
  GeVector up;         // direction of the height
  double width = 0.0;  // of all characters, in units of `along`
  double height = 0.0;
};

// An element that has no part in the scene.
struct SceneFailure {
  std::uint32_t element = 0;
  std::string reason;
};

// What can be drawn of record files: each mesh once, its places, points, lines
// and texts, all in the unit of the files and in the order of the elements.
//
// Every element stands in just one of instances, points, lines, texts and
// failures.
//
// Coordinates are those of the files less `offset`, which is null unless the
// elements are so far from the origin that 32 bits would not keep their shape.
struct Scene {
  std::vector<std::string> files;
  std::vector<std::string> headers;
  std::vector<std::string> groups;  // of each header
  std::vector<SceneElement> elements;

  std::vector<Mesh> meshes;
  std::vector<SceneInstance> instances;
  std::vector<ScenePoint> points;
  std::vector<SceneLine> lines;
  std::vector<GePoint> lineVertices;
  std::vector<SceneText> texts;
  std::vector<SceneFailure> failures;

  GeVector offset;
  Extents bounds;  // of all vertices, points and corners of texts, less the offset
};

}  // namespace Vesk

#endif
