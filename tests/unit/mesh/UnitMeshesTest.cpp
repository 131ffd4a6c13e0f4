// SPDX-License-Identifier: MIT
#include "mesh/UnitMeshes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <ostream>
#include <string>
#include <vector>

#include "mesh/FlatMesh.h"

namespace VeskTest {
namespace {

using namespace Vesk;

struct UnitCase {
  const char* name;
  Mesh mesh;
  std::size_t edges;     // sharp ones
  std::size_t vertices;  // pairs of a position and a normal

  friend std::ostream& operator<<(std::ostream& os, const UnitCase& each) {
    return os << each.name;
  }
};

// Round an end every corner has the end's normal and that of the side.
const UnitCase kUnits[] = {
    {"Cylinder", unitCone(16, 1), 2 * 16, 4 * 16},
    {"Frustum", unitCone(12, 0.5), 2 * 12, 4 * 12},
    // The apex has a normal for each of its triangles.
    {"Apex", unitCone(16, 0), 16, 3 * 16},
    // Five rings, and both ends.
    {"Bend", unitTorus(4, 8, 0.2, 1), 2 * 8, 7 * 8},
    // Two ends of four edges and four lines of three pieces; four sides of 2 * 4
    // vertices and two ends of four.
    {"Elbow", unitElbow(3, 0.5, 1), 2 * 4 + 4 * 3, 4 * 8 + 2 * 4},
    // Its inner side is one edge: 7 at the ends, two lines; one side less and of two
    // others each only one vertex inside.
    {"ElbowAboutItsEdge", unitElbow(3, 2, 1), 7 + 2 * 3, 8 + 2 * (4 + 1) + 2 * 4},
    {"Cube", unitCube(), 12, 6 * 4},
};

class UnitMeshesTest : public testing::TestWithParam<UnitCase> {};

TEST_P(UnitMeshesTest, HasTheSharpEdges) {
  EXPECT_EQ(GetParam().mesh.edges.size(), GetParam().edges);
}

TEST_P(UnitMeshesTest, FlatHasEveryPairOnce) {
  const Mesh& mesh = GetParam().mesh;
  const FlatMesh flat = flattened(mesh);
  EXPECT_EQ(flat.positions.size(), 3 * GetParam().vertices);
  EXPECT_EQ(flat.normals.size(), 3 * GetParam().vertices);
  ASSERT_EQ(flat.indices.size(), 3 * mesh.triangles.size());
  for (std::size_t i = 0; i < flat.indices.size(); ++i) {
    const float* position = &flat.positions.at(3 * flat.indices[i]);
    const float* normal = &flat.normals.at(3 * flat.indices[i]);
    const GePoint& p = mesh.positions[mesh.triangles[i / 3][i % 3]];
    const GeVector& n = mesh.normals[mesh.triangleNormals[i / 3][i % 3]];
    EXPECT_EQ(GePoint(position[0], position[1], position[2]),
              GePoint(static_cast<float>(p.x), static_cast<float>(p.y), static_cast<float>(p.z)));
    EXPECT_EQ(GeVector(normal[0], normal[1], normal[2]),
              GeVector(static_cast<float>(n.x), static_cast<float>(n.y), static_cast<float>(n.z)));
  }
}

INSTANTIATE_TEST_SUITE_P(Units, UnitMeshesTest, testing::ValuesIn(kUnits),
                         [](const auto& each) { return std::string(each.param.name); });

// So that pipes given from either end meet in the same numbers.
TEST(UnitMeshes, CircleIsTheSameBitForBitFromEverySide) {
  for (std::uint32_t segments = 8; segments <= 128; segments += 4) {
    std::vector<std::array<double, 2>> points;
    for (const GePoint& p : unitCone(segments, 0).positions) {
      if (p.z == 0.0) points.push_back({p.x, p.y});
    }
    ASSERT_EQ(points.size(), segments);
    EXPECT_EQ(points[0], (std::array<double, 2>{1, 0}));
    for (const auto& [x, y] : points) {
      EXPECT_NEAR(std::hypot(x, y), 1.0, 1e-15);
      for (const auto& mirrored : {std::array{x, -y}, std::array{-x, y}, std::array{y, x}}) {
        EXPECT_EQ(std::count(points.begin(), points.end(), mirrored), 1) << segments;
      }
    }
  }
}

// The side of a frustum rises by 1 while it goes in by 1 - ratio.
TEST(UnitMeshes, NormalsAreThoseOfTheTrueSurface) {
  const Mesh frustum = unitCone(16, 0.25);
  for (std::size_t i = 0; i < 2 * 16; ++i) {
    const GePoint& p = frustum.positions[frustum.triangles[i][0]];
    const GeVector& n = frustum.normals[frustum.triangleNormals[i][0]];
    const double radius = std::hypot(p.x, p.y);
    EXPECT_NEAR(n.x, p.x / radius / 1.25, 1e-12);  // hypot(1, 0.75) = 1.25
    EXPECT_NEAR(n.y, p.y / radius / 1.25, 1e-12);
    EXPECT_NEAR(n.z, 0.75 / 1.25, 1e-12);
  }
  // At the apex each side has the direction of its middle, 22.5 degrees further on.
  const Mesh tip = unitCone(8, 0);
  for (std::size_t i = 0; i < 8; ++i) {
    const double angle = (static_cast<double>(i) + 0.5) * std::acos(-1.0) / 4;
    const GeVector& n = tip.normals[tip.triangleNormals[i][2]];
    EXPECT_EQ(tip.positions[tip.triangles[i][2]], GePoint(0, 0, 1)) << i;
    EXPECT_NEAR(n.x, std::cos(angle) / std::sqrt(2.0), 1e-12) << i;
    EXPECT_NEAR(n.y, std::sin(angle) / std::sqrt(2.0), 1e-12) << i;
    EXPECT_NEAR(n.z, 1 / std::sqrt(2.0), 1e-12) << i;
  }
  // Away from the middle of the tube.
  const Mesh bend = unitTorus(4, 8, 0.25, 1);
  for (std::size_t i = 0; i < std::size_t{4 * 8 * 2}; ++i) {
    for (std::size_t k = 0; k < 3; ++k) {
      const GePoint& p = bend.positions[bend.triangles[i][k]];
      const GeVector& n = bend.normals[bend.triangleNormals[i][k]];
      const double radius = std::hypot(p.x, p.y);
      EXPECT_NEAR(n.x, (p.x - p.x / radius) * 4, 1e-12);
      EXPECT_NEAR(n.y, (p.y - p.y / radius) * 4, 1e-12);
      EXPECT_NEAR(n.z, p.z * 4, 1e-12);
    }
  }
}

}  // namespace
}  // namespace VeskTest
