// SPDX-License-Identifier: MIT
#include "draw/MeshLines.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace Vesk {

std::vector<MeshLine> linesOf(const Mesh& mesh) {
  std::vector<MeshLine> sides;
  sides.reserve(mesh.triangles.size() * 3 + mesh.edges.size());
  for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
    const MeshTriangle& t = mesh.triangles[i];
    for (std::size_t k = 0; k < 3; ++k) {
      const auto [a, b] = std::minmax(t[k], t[(k + 1) % 3]);
      if (a != b) sides.push_back({a, b, static_cast<std::uint32_t>(i), kNoTriangle, false});
    }
  }
  for (const MeshEdge& edge : mesh.edges) {
    const auto [a, b] = std::minmax(edge[0], edge[1]);
    sides.push_back({a, b, kNoTriangle, kNoTriangle, true});
  }
  std::sort(sides.begin(), sides.end(), [](const MeshLine& x, const MeshLine& y) {
    return std::tie(x.a, x.b, x.triangle1) < std::tie(y.a, y.b, y.triangle1);
  });
  std::vector<MeshLine> lines;
  for (const MeshLine& side : sides) {
    if (lines.empty() || lines.back().a != side.a || lines.back().b != side.b) {
      lines.push_back(side);
      continue;
    }
    MeshLine& line = lines.back();
    if (line.triangle2 == kNoTriangle) line.triangle2 = side.triangle1;
    line.isSharp = line.isSharp || side.isSharp;
  }
  for (MeshLine& line : lines) line.isSharp = line.isSharp || line.triangle2 == kNoTriangle;
  return lines;
}

}  // namespace Vesk
