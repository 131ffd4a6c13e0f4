// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TILES_TILECONTENT_H
#define VESK_TOOLS_TILES_TILECONTENT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "mesh/Scene.h"
#include "mesh/SceneBuilder.h"
#include "terminal/Streams.h"
#include "tiles/TileElement.h"
#include "vesk/mesh/Fineness.h"

namespace VeskTool {

// What a tile shows: elements with their fine or their coarse shapes.
class TileContent {
 public:
  explicit TileContent(const Vesk::Fineness& fineness);

  void add(const TileElement& element, bool isCoarse);

  bool isEmpty() const { return count_ == 0; }

  // Writes all as a binary glTF file whose origin is `centre`, in the unit of the
  // elements, which is `millimetres` long; `files` are those that the elements name. The
  // content is empty then.
  void write(const std::vector<std::string>& files, const GePoint& centre, double millimetres,
             TextSink& out);

 private:
  Vesk::SceneBuilder fine_;
  Vesk::SceneBuilder coarse_;
  std::size_t count_ = 0;
};

// The same model about another origin: what was `centre` is the origin then.
void moveOrigin(Vesk::Scene& scene, const GePoint& centre);

}  // namespace VeskTool

#endif
