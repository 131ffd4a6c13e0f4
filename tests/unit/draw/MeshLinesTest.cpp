// SPDX-License-Identifier: MIT
#include "draw/MeshLines.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace VeskTest {
namespace {

using namespace Vesk;

// "a-b first second !" of each line; ! for a sharp one, . for no triangle.
std::string textOf(const Mesh& mesh) {
  const auto numberOf = [](std::uint32_t triangle) {
    return triangle == kNoTriangle ? std::string(".") : std::to_string(triangle);
  };
  std::string text;
  for (const MeshLine& line : linesOf(mesh)) {
    text += std::to_string(line.a) + '-' + std::to_string(line.b) + ' ' + numberOf(line.triangle1) +
            ' ' + numberOf(line.triangle2) + (line.isSharp ? " !" : "") + ';';
  }
  return text;
}

struct MeshCase {
  const char* name;
  std::vector<MeshTriangle> triangles;
  std::vector<MeshEdge> edges;
  const char* lines;
};

const MeshCase kMeshes[] = {
    // Every edge of a tetrahedron is of two triangles.
    {"Tetrahedron",
     {{0, 2, 1}, {0, 1, 3}, {1, 2, 3}, {2, 0, 3}},
     {},
     "0-1 0 1;0-2 0 3;0-3 1 3;1-2 0 2;1-3 1 2;2-3 2 3;"},
    {"SharpEdgesEitherWayRound",
     {{0, 2, 1}, {0, 1, 3}, {1, 2, 3}, {2, 0, 3}},
     {{0, 1}, {3, 2}},
     "0-1 0 1 !;0-2 0 3;0-3 1 3;1-2 0 2;1-3 1 2;2-3 2 3 !;"},
    {"EndsOfAnOpenSurfaceAreSharp", {{0, 1, 2}}, {}, "0-1 0 . !;0-2 0 . !;1-2 0 . !;"},
    {"ButNotTheDiagonal",
     {{0, 1, 2}, {0, 2, 3}},
     {},
     "0-1 0 . !;0-2 0 1;0-3 1 . !;1-2 0 . !;2-3 1 . !;"},
    {"EqualCornersHaveNoEdge", {{0, 0, 1}}, {}, "0-1 0 0;"},
    {"OfThreeTrianglesTheFirstTwo",
     {{0, 1, 2}, {0, 1, 3}, {0, 1, 4}},
     {},
     "0-1 0 1;0-2 0 . !;0-3 1 . !;0-4 2 . !;1-2 0 . !;1-3 1 . !;1-4 2 . !;"},
    {"Nothing", {}, {}, ""},
};

TEST(MeshLines, HaveTheTrianglesOnTheirSides) {
  for (const MeshCase& each : kMeshes) {
    Mesh mesh;
    mesh.triangles = each.triangles;
    mesh.edges = each.edges;
    EXPECT_EQ(textOf(mesh), each.lines) << each.name;
  }
}

}  // namespace
}  // namespace VeskTest
