// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "mesh/MeshProof.h"
#include "mesh/SceneBuilder.h"
#include "mesh/TrueDistance.h"
#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/Red.h"
#include "vesk/Relb.h"
#include "vesk/Torus.h"

namespace VeskTest {
namespace {

using namespace Vesk;

const double kPi = std::acos(-1.0);

std::shared_ptr<Geo> cyl(const GeVector& from, const GeVector& to, double d) {
  return std::make_shared<Cyl>(from, to, d);
}

std::shared_ptr<Geo> cone(const GeVector& from, const GeVector& to, double d1, double d2) {
  return std::make_shared<Cone>(from, to, d1, d2);
}

std::shared_ptr<Geo> box(const GeVector& at, const GeVector& a, const GeVector& b,
                         const GeVector& c) {
  return std::make_shared<Box>(at, at + a, at + b, at + c);
}

// About (7, 8, 9), starting on x and turning to y.
std::shared_ptr<Geo> torus(double bend, double tube, double sweep) {
  auto made = std::make_shared<Torus>();
  made->centre = {7, 8, 9};
  made->startVector = {bend, 0, 0};
  made->endVector = {bend * std::cos(sweep), bend * std::sin(sweep), 0};
  made->diameter = 2 * tube;
  return made;
}

std::shared_ptr<Geo> elbow(double inner, double outer, double width, double sweep) {
  auto made = std::make_shared<Relb>();
  const double middle = (inner + outer) / 2;
  made->centre = {7, 8, 9};
  made->startVector = {0, middle, 0};
  made->endVector = {0, middle * std::cos(sweep), middle * std::sin(sweep)};
  made->width = width;
  made->depth = outer - inner;
  return made;
}

// Rectangles a by b and c by d about the z axis, h apart, the second one turned.
std::shared_ptr<Geo> reducer(double a, double b, double c, double d, double h, double turnDeg) {
  const double cosine = std::cos(turnDeg * kPi / 180);
  const double sine = std::sin(turnDeg * kPi / 180);
  std::array<GeVector, 8> corners;
  for (unsigned k = 0; k < 4; ++k) {
    const double sx = k % 2 == 0 ? -0.5 : 0.5;
    const double sy = k / 2 == 0 ? -0.5 : 0.5;
    corners[k] = {sx * a, sy * b, 0};
    corners[k + 4] = {sx * c * cosine - sy * d * sine, sx * c * sine + sy * d * cosine, h};
  }
  return std::make_shared<Red>(corners);
}

// The box 10 x 10 x 12 with one of its faces drawn together to the line in its middle
// that runs along the next axis.
std::shared_ptr<Geo> wedge(unsigned axis, int side) {
  const std::array<double, 3> size{10, 10, 12};
  const unsigned across = (axis + 2) % 3;
  std::array<GeVector, 8> corners;
  for (unsigned k = 0; k < 8; ++k) {
    std::array<double, 3> at{};
    for (unsigned i = 0; i < 3; ++i) at[i] = (k >> i & 1U) == 0 ? 0.0 : size[i];
    if ((k >> axis & 1U) == (side < 0 ? 0U : 1U)) at[across] = size[across] / 2;
    corners[k] = {at[0], at[1], at[2]};
  }
  return std::make_shared<Red>(corners);
}

// Straight up by 10 from the corners 0 to 3.
std::shared_ptr<Geo> prism(const GeVector& c0, const GeVector& c1, const GeVector& c2,
                           const GeVector& c3) {
  const GeVector up(0, 0, 10);
  return std::make_shared<Red>(
      std::array<GeVector, 8>{c0, c1, c2, c3, c0 + up, c1 + up, c2 + up, c3 + up});
}

struct SolidCase {
  const char* name;
  std::shared_ptr<Geo> geo;
  Fineness fineness;
  std::size_t triangles;
  double meshVolume;  // by a closed form
  double trueVolume;
  bool extreme = false;  // a million to one

  friend std::ostream& operator<<(std::ostream& os, const SolidCase& each) {
    return os << each.name;
  }
};

// The area of a regular polygon of n corners on the unit circle; pi for a circle.
double polygon(double n) { return n / 2 * std::sin(2 * kPi / n); }

// The part of a unit arc that n chords turn about.
double chords(double n, double sweep) { return n * std::sin(sweep / n); }

const Fineness k16 = Fineness::ofSegments(16);
const Fineness k32 = Fineness::ofSegments(32);

double tube(double n, double r2) { return polygon(n) * r2; }

// clang-format off
const SolidCase kSolids[] = {
    // A cylinder of n segments has 2 n triangles round it and n - 2 at each end.
    {"Pipe", cyl({1, 2, 3}, {1, 2, 13}, 4), k16, 60, polygon(16) * 4 * 10, kPi * 4 * 10},
    {"PipeInAnyDirection", cyl({1, 2, 3}, {4, -2, 15}, 4), k32, 124, polygon(32) * 4 * 13, kPi * 4 * 13},
    {"PipeTheOtherWay", cyl({4, -2, 15}, {1, 2, 3}, 4), k32, 124, polygon(32) * 4 * 13, kPi * 4 * 13},
    {"ThinPipe", cyl({0, 0, 0}, {0, 0, 1e6}, 2), k32, 124, polygon(32) * 1e6, kPi * 1e6, true},
    {"SkewThinPipe", cyl({0, 0, 0}, {2e5, 3e5, 6e5}, 1.4), k32, 124, polygon(32) * 0.49 * 7e5, kPi * 0.49 * 7e5, true},
    {"FlatDisk", cyl({0, 0, 0}, {0, 0, 1}, 2e6), k32, 124, polygon(32) * 1e12, kPi * 1e12, true},
    // Frustum: h / 3 (r1^2 + r1 r2 + r2^2) times the polygon, here 9/3 (16 + 8 + 4).
    {"Cone", cone({0, 0, 0}, {0, 0, 9}, 8, 4), k16, 60, polygon(16) * 84, kPi * 84},
    {"ConeTheOtherWay", cone({0, 0, 9}, {0, 0, 0}, 4, 8), k16, 60, polygon(16) * 84, kPi * 84},
    // An apex instead of a ring: n triangles round it, n - 2 at the end.
    {"PointedCone", cone({0, 0, 0}, {0, 9, 0}, 4, 0), k16, 30, polygon(16) * 12, kPi * 12},
    {"PointedConeTheOtherWay", cone({0, 0, 0}, {9, 0, 0}, 0, 4), k16, 30, polygon(16) * 12, kPi * 12},
    {"NearlyPointedCone", cone({0, 0, 0}, {0, 0, 3}, 2, 2e-6), k16, 60, polygon(16) * (1 + 1e-6 + 1e-12), kPi * (1 + 1e-6 + 1e-12), true},
    // The bend has 16 segments a circle, so 4 for a quarter: 4 * 16 * 2 + 2 * 14 triangles.
    {"Bend", torus(100, 20, kPi / 2), k16, 156, chords(4, kPi / 2) * 100 * tube(16, 400), kPi / 2 * 100 * kPi * 400},
    {"TinySweep", torus(100, 20, 1e-6), k16, 60, chords(1, 1e-6) * 100 * tube(16, 400), 1e-6 * 100 * kPi * 400, true},
    {"NearlyHalfTurn", torus(100, 20, kPi - 1e-6), k16, 284, chords(8, kPi - 1e-6) * 100 * tube(16, 400), (kPi - 1e-6) * 100 * kPi * 400, true},
    {"ThinTube", torus(1e6, 1, 1), k16, 124, chords(3, 1) * 1e6 * tube(16, 1), 1e6 * kPi, true},
    // The inner corner of all rings is one: it takes a triangle of each of two quads
    // of each of the 4 pieces.
    {"TubeThatTouchesItself", torus(20, 20, kPi / 2), k16, 148, chords(4, kPi / 2) * 20 * tube(16, 400), kPi / 2 * 20 * kPi * 400},
    // A tube or a section may be wider than its bend by 0.01; it is cut there.
    {"TubeHardlyTooWide", torus(20, 20.005, kPi / 2), k16, 148, chords(4, kPi / 2) * 20 * tube(16, 400), kPi / 2 * 20 * kPi * 400},
    {"ElbowHardlyTooDeep", elbow(-0.005, 50.005, 10, kPi / 2), k16, 20, chords(4, kPi / 2) * 25 * 500, kPi / 2 * 25 * 500},
    // Half of the tolerance for each direction. Bend: 90 deg / (4 asin(sqrt(0.5 / 240)))
    // = 8.6; tube: 360 deg / (4 asin(sqrt(0.5 / 40))) = 14.02; 9 * 16 * 2 + 2 * 14.
    {"BendWithinATolerance", torus(100, 20, kPi / 2), Fineness::ofTolerance(1), 316, chords(9, kPi / 2) * 100 * tube(16, 400), kPi / 2 * 100 * kPi * 400},
    // By the outer side: 90 deg / (4 asin(sqrt(0.1 / 100))) = 12.4; 13 * 8 + 4.
    {"ElbowWithinATolerance", elbow(30, 50, 10, kPi / 2), Fineness::ofTolerance(0.1), 108, chords(13, kPi / 2) * 40 * 200, kPi / 2 * 40 * 200},
    // By the wider end: 360 deg / (4 asin(sqrt(0.05 / 8))) = 19.8.
    {"ConeWithinATolerance", cone({0, 0, 9}, {0, 0, 0}, 4, 8), Fineness::ofTolerance(0.05), 76, polygon(20) * 84, kPi * 84},
    // Eight triangles for each piece and two at each end.
    {"Elbow", elbow(30, 50, 10, kPi / 2), k16, 36, chords(4, kPi / 2) * 40 * 200, kPi / 2 * 40 * 200},
    {"ElbowAboutItsEdge", elbow(0, 50, 10, kPi / 2), k16, 20, chords(4, kPi / 2) * 25 * 500, kPi / 2 * 25 * 500},
    {"FlatElbow", elbow(10, 20, 1e-5, 1), k16, 28, chords(3, 1) * 15e-5 * 10, 15e-5 * 10, true},
    {"ThinElbow", elbow(1e6 - 1, 1e6, 1, 1), k16, 28, chords(3, 1) * (1e6 - 0.5), 1e6 - 0.5, true},
    {"ElbowOfTinySweep", elbow(30, 50, 10, 1e-6), k16, 12, chords(1, 1e-6) * 40 * 200, 1e-6 * 40 * 200, true},
    {"Box", box({1, 2, 3}, {10, 0, 0}, {0, 20, 0}, {0, 0, 30}), k16, 12, 6000, 6000},
    {"BoxLeftHanded", box({1, 2, 3}, {0, 20, 0}, {10, 0, 0}, {0, 0, 30}), k16, 12, 6000, 6000},
    {"BoxTurned", box({1, 2, 3}, {3, 4, 0}, {-8, 6, 0}, {0, 0, 2}), k16, 12, 100, 100},
    // A shear keeps the volume.
    {"BoxSkew", box({1, 2, 3}, {10, 0, 0}, {5, 20, 0}, {1, 2, 30}), k16, 12, 6000, 6000},
    {"BoxSkewLeftHanded", box({1, 2, 3}, {5, 20, 0}, {10, 0, 0}, {1, 2, 30}), k16, 12, 6000, 6000},
    {"Plate", box({0, 0, 0}, {1e6, 0, 0}, {0, 1e6, 0}, {0, 0, 1}), k16, 12, 1e12, 1e12, true},
    {"SkewNeedle", box({0, 0, 0}, {1e6, 0, 0}, {1, 1, 0}, {1, 1, 1}), k16, 12, 1e6, 1e6, true},
    // Like ends: h / 3 (A + sqrt(A B) + B), here 12/3 (100 + 50 + 25).
    {"Reducer", reducer(10, 10, 5, 5, 12, 0), k16, 12, 700, 700},
    {"ReducerInsideOut", reducer(10, 10, 5, 5, -12, 0), k16, 12, 700, 700},
    {"Pyramid", reducer(10, 10, 0, 0, 12, 0), k16, 6, 400, 400},
    // A roof: h b / 6 (2 a + c), here 12 * 10 / 6 * (20 + 4).
    {"Wedge", reducer(10, 10, 4, 0, 12, 0), k16, 8, 480, 480},
    // Each face in turn is the line in its middle: half of the box 10 x 10 x 12.
    {"WedgeToTheFront", wedge(1, -1), k16, 8, 600, 600},
    {"WedgeToTheBack", wedge(1, 1), k16, 8, 600, 600},
    {"WedgeToTheLeft", wedge(0, -1), k16, 8, 600, 600},
    {"WedgeToTheRight", wedge(0, 1), k16, 8, 600, 600},
    {"WedgeDown", wedge(2, -1), k16, 8, 600, 600},
    {"WedgeUp", wedge(2, 1), k16, 8, 600, 600},
    // The ends are dented at one of their corners: 10 times 6, and the diagonal is that
    // from the dent.
    {"DentedAtCorner2", prism({0, 0, 0}, {1, 4, 0}, {1, 1, 0}, {4, 0, 0}), k16, 12, 60, 60},
    {"DentedAtCorner3", prism({1, 4, 0}, {4, 0, 0}, {0, 0, 0}, {1, 1, 0}), k16, 12, 60, 60},
    {"ThinReducer", reducer(1, 1, 2, 2, 1e6, 0), k16, 12, 7e6 / 3, 7e6 / 3, true},
    // Prismatoid: h / 6 (A1 + 4 M + A2). Turned by t the middle section of two squares
    // of side s has the side s cos(t / 2); here 6/6 (100 + 4 * 100 (1 + cos 30) / 2 + 100).
    // A side is off its two triangles by 10 * 2 sin(15) / 16 = 0.32, and 16 segments allow
    // about 0.02 of half the extent, 7.7: two cells each way, of four triangles on the
    // sides and of two at the ends.
    {"TwistedReducer", reducer(10, 10, 10, 10, 6, 30), k16, 80, 400 + 100 * std::sqrt(3.0), 400 + 100 * std::sqrt(3.0)},
    {"TwistedReducerInCells", reducer(10, 10, 10, 10, 6, 30), Fineness::ofTolerance(0.05), 0, 400 + 100 * std::sqrt(3.0), 400 + 100 * std::sqrt(3.0)},
    {"ReducerTwistedTheOtherWay", reducer(10, 10, 10, 10, 6, -30), Fineness::ofTolerance(0.05), 0, 400 + 100 * std::sqrt(3.0), 400 + 100 * std::sqrt(3.0)},
    // The middle section of a quarter turn has half the area: 10/6 (100 + 4 * 50 + 100).
    {"ReducerTurnedByAQuarter", reducer(10, 10, 10, 10, 10, 90), Fineness::ofTolerance(0.1), 0, 2000.0 / 3, 2000.0 / 3},
    {"TwistedWedge", reducer(10, 10, 4, 0, 12, 20), Fineness::ofTolerance(0.05), 0, 0, 0},
};
// clang-format on

class SolidsTest : public testing::TestWithParam<SolidCase> {
 protected:
  void SetUp() override {
    SceneBuilder builder(GetParam().fineness);
    builder.addFile("a.dat");
    builder.add(*GetParam().geo, {});
    scene_ = builder.finish();
    ASSERT_TRUE(scene_.failures.empty()) << scene_.failures[0].reason;
    ASSERT_EQ(scene_.instances.size(), 1U);
  }

  const Mesh& mesh() const { return scene_.meshes[0]; }
  const SceneInstance& instance() const { return scene_.instances[0]; }

  // As it stands in space.
  Mesh placed() const {
    Mesh placed = mesh();
    for (GePoint& p : placed.positions) p = instance().placement.point(p);
    return placed;
  }

  Scene scene_;
};

TEST_P(SolidsTest, IsClosed) {
  EXPECT_TRUE(mesh().closed);
  EXPECT_EQ(closureFault(mesh()), "");
}

TEST_P(SolidsTest, IsClosedIn32Bits) {
  std::size_t dropped = 0;
  EXPECT_EQ(closureFault(roundedMesh(mesh(), dropped)), "");
  EXPECT_EQ(dropped, 0U);
}

TEST_P(SolidsTest, HasTheTriangles) {
  if (GetParam().triangles != 0) {
    EXPECT_EQ(mesh().triangles.size(), GetParam().triangles);
  }
}

TEST_P(SolidsTest, EnclosesTheVolumeOfItsPolygons) {
  const double volume = enclosedVolume(mesh()) * instance().placement.volumeFactor();
  const double expected = GetParam().meshVolume != 0.0 ? GetParam().meshVolume : instance().volume;
  EXPECT_GT(volume, 0.0);
  // A part in a million of a bend loses six digits: it lies between two of its radii.
  EXPECT_NEAR(volume / expected, 1.0, GetParam().extreme ? 1e-9 : 1e-12);
  EXPECT_NEAR(enclosedVolume(placed()) / expected, 1.0, GetParam().extreme ? 1e-5 : 1e-12);
}

TEST_P(SolidsTest, TellsTheTrueVolume) {
  if (GetParam().trueVolume != 0.0) {
    EXPECT_NEAR(instance().volume / GetParam().trueVolume, 1.0, 1e-9);
  }
}

// Ten points of each triangle.
TEST_P(SolidsTest, IsWithinItsDeviation) {
  const Mesh in = placed();
  double furthest = 0.0;
  double extent = 0.0;
  for (const MeshTriangle& t : in.triangles) {
    const GePoint& a = in.positions[t[0]];
    const GeVector ab = in.positions[t[1]] - a;
    const GeVector ac = in.positions[t[2]] - a;
    for (int i = 0; i <= 3; ++i) {
      for (int k = 0; i + k <= 3; ++k) {
        const GePoint p = a + ab * (i / 3.0) + ac * (k / 3.0);
        furthest = std::max(furthest, distanceToSurface(*GetParam().geo, p));
        extent = std::max(extent, distance(p, in.positions[0]));
      }
    }
  }
  EXPECT_LE(furthest, instance().deviation + 1e-8 * extent);
  EXPECT_LE(instance().deviation, instance().tolerance * (1 + 1e-8));
}

// The part of the volume that is lost to the chords: (1 - cos(half of their angle))
// of each direction is more than they take.
TEST_P(SolidsTest, TrueVolumeIsWithinTheBoundOfThePieces) {
  const double volume = enclosedVolume(mesh()) * instance().placement.volumeFactor();
  EXPECT_LE(volume, instance().volume * (1 + 1e-9));
  EXPECT_GE(volume, instance().volume * (1 - 4 * (1 - std::cos(kPi / 16))));
}

// Every side of every triangle looks away from where its normals point.
TEST_P(SolidsTest, NormalsLookOutward) {
  const Mesh in = placed();
  for (std::size_t i = 0; i < in.triangles.size(); ++i) {
    const MeshTriangle& t = in.triangles[i];
    const GePoint& a = in.positions[t[0]];
    const GeVector across = cross(in.positions[t[1]] - a, in.positions[t[2]] - a);
    for (const std::uint32_t n : in.triangleNormals[i]) {
      const GeVector normal = instance().placement.normal(in.normals[n]);
      ASSERT_NEAR(normal.length(), 1.0, 1e-9);
      ASSERT_GE(dot(normal, across), 0.0) << i;
    }
  }
}

// An edge is sharp where neither of its ends has one normal for both triangles.
TEST_P(SolidsTest, SharpEdgesAreWhereNormalsBreak) {
  using End = std::pair<std::uint32_t, std::uint32_t>;  // a position and its normal
  std::map<MeshEdge, std::set<End>> ends;
  for (std::size_t i = 0; i < mesh().triangles.size(); ++i) {
    for (std::size_t k = 0; k < 3; ++k) {
      const std::size_t n = (k + 1) % 3;
      const End one(mesh().triangles[i][k], mesh().triangleNormals[i][k]);
      const End other(mesh().triangles[i][n], mesh().triangleNormals[i][n]);
      const auto [low, high] = std::minmax(one.first, other.first);
      ends[{low, high}].insert({one, other});
    }
  }
  std::vector<MeshEdge> expected;
  for (const auto& [edge, all] : ends) {
    if (all.size() == 4) expected.push_back(edge);
  }
  std::vector<MeshEdge> edges = mesh().edges;
  for (MeshEdge& edge : edges) std::sort(edge.begin(), edge.end());
  std::sort(edges.begin(), edges.end());
  EXPECT_EQ(edges, expected);
}

// Bits of a corner's number stand for directions: they may change their places and
// their signs.
TEST(TwistedReducers, AreTheSameWhicheverCornerIsFirst) {
  // The volume as in TwistedReducerInCells.
  const double expected = 400 + 100 * std::sqrt(3.0);
  const auto twisted = reducer(10, 10, 10, 10, 6, 30);
  const auto& red = dynamic_cast<const Red&>(*twisted);
  std::array<unsigned, 3> bits{0, 1, 2};
  std::set<std::size_t> counts;
  do {
    for (unsigned signs = 0; signs < 8; ++signs) {
      std::array<GeVector, 8> corners;
      for (unsigned k = 0; k < 8; ++k) {
        unsigned from = 0;
        for (unsigned i = 0; i < 3; ++i) from |= (k >> i & 1U) << bits[i];
        corners[k] = red.corner(static_cast<int>(from ^ signs)) - GePoint();
      }
      SceneBuilder builder(Fineness::ofTolerance(0.05));
      builder.addFile("a.dat");
      builder.add(Red(corners), {});
      const Scene scene = builder.finish();
      ASSERT_EQ(scene.instances.size(), 1U) << bits[0] << bits[1] << bits[2] << ' ' << signs;
      EXPECT_EQ(closureFault(scene.meshes[0]), "");
      EXPECT_NEAR(enclosedVolume(scene.meshes[0]) / expected, 1.0, 1e-12);
      counts.insert(scene.meshes[0].triangles.size());
    }
  } while (std::next_permutation(bits.begin(), bits.end()));
  EXPECT_EQ(counts.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Solids, SolidsTest, testing::ValuesIn(kSolids),
                         [](const auto& each) { return std::string(each.param.name); });

// A square of 100 and one that is turned by 40 degrees and smaller, 80 apart: its sides are bent
// faces, whose normals turn from one end to the other as the triangles do.
TEST(BentFaces, HaveTheNormalsOfTheirTriangles) {
  const std::shared_ptr<Geo> geo = reducer(100, 100, 60, 60, 80, 40);
  SceneBuilder builder(Fineness::ofTolerance(0.05));
  builder.add(*geo, {});
  const Scene scene = builder.finish();
  const Mesh& mesh = scene.meshes.at(0);
  ASSERT_GT(mesh.triangles.size(), 100U);
  for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
    const MeshTriangle& t = mesh.triangles[i];
    const GeVector across = cross(mesh.positions[t[1]] - mesh.positions[t[0]],
                                  mesh.positions[t[2]] - mesh.positions[t[0]]);
    for (const std::uint32_t normal : mesh.triangleNormals[i]) {
      EXPECT_LT(across.angleTo(mesh.normals[normal]) * 180 / kPi, 6.0) << i;
    }
  }
}

}  // namespace
}  // namespace VeskTest
