// SPDX-License-Identifier: MIT
// What the tests read of a tileset.
#ifndef VESK_TESTS_TOOLS_TILESET_H
#define VESK_TESTS_TOOLS_TILESET_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace VeskTest {

// An element where a tile shows it.
struct ShownElement {
  std::string header;
  std::string kind;
  std::string file;
  std::uint64_t line = 0;
  std::size_t triangles = 0;  // or segments or points

  // In metres, z up, in the frame of the whole.
  std::vector<std::array<double, 3>> points;
};

struct ReadTile {
  std::size_t depth = 0;
  std::size_t parent = 0;  // of all that were read; the root's is itself
  std::array<double, 3> low{};
  std::array<double, 3> high{};
  double error = 0.0;
  bool isLeaf = false;
  std::vector<ShownElement> elements;

  std::size_t triangles() const;
};

// All tiles of a tileset and of those that it names, parents first, as the format says: by
// the transforms of tiles, the turn of contents from y up to z up, and their nodes. Fails
// the test where something needed is not there.
// Without points where they are not wanted, which is quicker.
enum class Points { kRead, kLeft };
std::vector<ReadTile> readTileset(const std::string& file, Points points = Points::kRead);

// File and line of what leaves show, sorted.
std::vector<std::pair<std::string, std::uint64_t>> shownInLeaves(
    const std::vector<ReadTile>& tiles);

}  // namespace VeskTest

#endif
