// SPDX-License-Identifier: MIT
#ifndef VESK_DRAW_MESHLINES_H
#define VESK_DRAW_MESHLINES_H

#include <cstdint>
#include <limits>
#include <vector>

#include "vesk/mesh/Mesh.h"

namespace Vesk {

inline constexpr std::uint32_t kNoTriangle = std::numeric_limits<std::uint32_t>::max();

// An edge of a mesh with the triangles on its sides; of more than two the first
// two, of one the second is kNoTriangle.
struct MeshLine {
  std::uint32_t a = 0;
  std::uint32_t b = 0;
  std::uint32_t triangle1 = kNoTriangle;
  std::uint32_t triangle2 = kNoTriangle;
  bool isSharp = false;  // drawn from wherever it is seen
};

// All edges of the triangles, each once; ends of an open surface are sharp.
std::vector<MeshLine> linesOf(const Mesh& mesh);

}  // namespace Vesk

#endif
