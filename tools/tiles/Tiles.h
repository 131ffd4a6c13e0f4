// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TILES_TILES_H
#define VESK_TOOLS_TILES_TILES_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "export/ElementWriter.h"
#include "mesh/SceneBuilder.h"
#include "terminal/Exit.h"
#include "terminal/Session.h"
#include "terminal/Streams.h"
#include "tiles/DetailSum.h"
#include "tiles/TileContent.h"
#include "tiles/TileElement.h"
#include "tiles/TilesFolder.h"
#include "vesk/mesh/Fineness.h"

namespace VeskTool {

struct TilesOptions {
  static constexpr std::uint32_t kTriangles = 50000;
  static constexpr std::uint32_t kLeastTriangles = 5000;
  static constexpr std::uint32_t kMostTriangles = 10000000;

  Vesk::Fineness fineness = Vesk::Fineness::ofSegments(Vesk::Fineness::kNormal);
  double millimetres = 1.0;              // the length of the elements' unit
  std::uint32_t triangles = kTriangles;  // in a tile, at the most
};

// Writes a tileset, 3D Tiles 1.1: `tileset.json`, and in `content` a binary glTF file for
// each tile (see writeGltf for what it says of the elements; each has the middle of its
// tile for origin). Lengths are metres; tiles have z up, their contents y up.
//
// The tiles are a tree: a tile that has more than its triangles is divided in the middle
// of its longer sides, of one if halves are few enough, and its elements go where their
// middles are. Boxes lie in their
// parents'. Every element is in just one leaf, with its fine shape and the error 0. The
// others show what the tiles below replace: they leave out the smallest elements, so
// many as must be, and take coarse shapes where these are no further off than the
// largest element that is left out. That is their error, which is less than their
// parent's. Texts are left out.
//
// Memory does not depend on how many elements there are: they wait in files beside the
// tiles, some 250 bytes for each.
class TilesWriter : public ElementWriter {
 public:
  // Writes into the folder, and what can't be shown to the session (V401). Both have to
  // live as long.
  TilesWriter(const TilesOptions& options, const TilesFolder& folder, Session& session);
  ~TilesWriter() override;

  void beginFile(const std::string& name, const std::string& handedOn) override;
  std::string add(const ExportedElement& element) override;
  void finish() override;

  // kNo if there was an element that can't be shown.
  Exit exit() const { return exit_; }

  std::uint64_t tiles() const { return tiles_; }

 private:
  static constexpr std::size_t kParts = 8;

  // Elements that wait for their tiles, and what they come to.
  struct Part;
  struct Above;

  std::unique_ptr<Part> makePart();
  void addWaiting();
  void say(const TileElement& element, const std::string& reason);
  void writeTile(Part& part, Above& above, std::size_t depth);
  std::array<std::unique_ptr<Part>, kParts> divide(Part& part, bool byPlace, std::size_t level,
                                                   TileContent& content);
  void writeLeaf(Part& part, Above& above);
  void beginTile(const Part& part, double error, Above& above);
  void writeContent(TileContent& content, const GePoint& centre);

  TilesOptions options_;
  const TilesFolder& folder_;
  Session& session_;
  OutputFile tileset_;
  std::string json_;
  std::vector<std::string> files_;  // as they are handed on
  std::string shownFile_;
  std::unique_ptr<Part> all_;
  Vesk::SceneBuilder fine_;
  Vesk::SceneBuilder coarse_;
  std::vector<TileElement> waiting_;  // in the builders
  Exit exit_ = Exit::kDone;
  double pad_ = 0.0;  // metres that boxes are wider than their elements
  std::uint64_t spills_ = 0;
  std::uint64_t tiles_ = 0;
  std::uint64_t contents_ = 0;
};

}  // namespace VeskTool

#endif
