// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "mesh/FlatMesh.h"
#include "mesh/MeshProof.h"
#include "mesh/SceneBuilder.h"
#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/Red.h"
#include "vesk/Relb.h"
#include "vesk/Torus.h"
#include "vesk/Txt.h"

namespace VeskTest {
namespace {

using namespace Vesk;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
const double kPi = std::acos(-1.0);

const Fineness k32 = Fineness::ofSegments(32);

// A primitive of any kind, for as long as the expression that makes it.
struct Any {
  const Geo& geo;
  Any(const Geo& any) : geo(any) {}  // NOLINT(google-explicit-constructor)
};

Scene sceneOf(std::initializer_list<Any> geos, const Fineness& fineness = k32) {
  SceneBuilder builder(fineness);
  builder.addFile("a.dat");
  std::uint64_t line = 0;
  for (const Any& each : geos) {
    builder.add(each.geo, {.kind = 1, .header = builder.headerId("P-1"), .line = ++line});
  }
  return builder.finish();
}

Torus torus(const GeVector& start, const GeVector& end, double d) {
  Torus made({}, start, end, d);
  return made;
}

Relb elbow(const GeVector& start, const GeVector& end, double width, double depth) {
  Relb made;
  made.startVector = start;
  made.endVector = end;
  made.width = width;
  made.depth = depth;
  return made;
}

// Squares of 10 about the z axis, the second one turned by so many corners.
Red turnedReducer(int corners) {
  constexpr int kRound[] = {0, 1, 3, 2};
  constexpr double kSigns[][2] = {{-5, -5}, {5, -5}, {-5, 5}, {5, 5}};
  std::array<GeVector, 8> all;
  for (std::size_t i = 0; i < 4; ++i) {
    const auto from = static_cast<std::size_t>(kRound[i]);
    const auto to = static_cast<std::size_t>(kRound[(i + static_cast<std::size_t>(corners)) % 4]);
    all[from] = {kSigns[from][0], kSigns[from][1], 0};
    all[from + 4] = {kSigns[to][0], kSigns[to][1], 10};
  }
  return Red(all);
}

template <class Primitive>
std::shared_ptr<Geo> shared(const Primitive& primitive) {
  return std::make_shared<Primitive>(primitive);
}

std::shared_ptr<Geo> cyl(const GeVector& a, const GeVector& b, double d) {
  return std::make_shared<Cyl>(a, b, d);
}

std::shared_ptr<Geo> cone(const GeVector& a, const GeVector& b, double d1, double d2) {
  return std::make_shared<Cone>(a, b, d1, d2);
}

std::shared_ptr<Geo> box(const GeVector& a, const GeVector& b, const GeVector& c) {
  return std::make_shared<Box>(GeVector(), a, b, c);
}

std::shared_ptr<Geo> pgon(std::initializer_list<GePoint> points) {
  return std::make_shared<Pgon>(points);
}

struct FailureCase {
  const char* name;
  std::shared_ptr<Geo> geo;
  const char* reason;

  friend std::ostream& operator<<(std::ostream& os, const FailureCase& each) {
    return os << each.name;
  }
};

const GeVector kX(1, 0, 0);
const GeVector kY(0, 1, 0);
const GeVector kZ(0, 0, 1);

// clang-format off
const FailureCase kFailures[] = {
    {"PipeOfZeroDiameter", cyl({}, kZ, 0), "diameter of zero"},
    {"PipeOfNegativeDiameter", cyl({}, kZ, -1), "diameter below zero"},
    {"PipeWithoutLength", cyl(kZ, kZ, 1), "length of zero"},
    {"PipeThatIsNaN", cyl({}, kZ, kNaN), "a number is infinite or NaN"},
    {"PipeToInfinity", cyl({}, {0, kInfinity, 0}, 1), "a number is infinite or NaN"},
    {"PipeBeyondFloats", cyl({}, {0, 1e300, 0}, 1), "a number is beyond 1e12"},
    {"ConeOfNegativeDiameter", cone({}, kZ, 2, -1), "diameter below zero"},
    {"ConeOfTwoApexes", cone({}, kZ, 0, 0), "diameter of zero"},
    {"ConeWithoutLength", cone({}, {}, 1, 2), "length of zero"},
    {"BoxWithoutAnEdge", box(kX, kY, {}), "edge of zero"},
    {"BoxInAPlane", box(kX, kY, kX + kY), "the three edges lie in one plane"},
    {"BoxThatIsNaN", box(kX, kY, {0, 0, kNaN}), "a number is infinite or NaN"},
    {"BendWithoutDiameter", shared(torus(kX * 10, kY * 10, 0)), "diameter of zero"},
    {"BendOfNegativeDiameter", shared(torus(kX * 10, kY * 10, -2)), "diameter below zero"},
    {"BendOfNoSweep", shared(torus(kX * 10, kX * 10, 2)), "start and end of the bend lie in one line with its centre"},
    {"BendOfAHalfTurn", shared(torus(kX * 10, -kX * 10, 2)), "start and end of the bend lie in one line with its centre"},
    {"BendWithoutRadius", shared(torus({}, kY * 10, 2)), "bend radius of zero"},
    {"BendNarrowerThanItsTube", shared(torus(kX * 10, kY * 10, 22)), "tube wider than its bend"},
    {"ElbowWithoutWidth", shared(elbow(kX * 10, kY * 10, 0, 5)), "width of zero"},
    {"ElbowOfNegativeDepth", shared(elbow(kX * 10, kY * 10, 5, -5)), "depth below zero"},
    {"ElbowDeeperThanItsBend", shared(elbow(kX * 10, kY * 10, 5, 22)), "section wider than its bend"},
    {"ElbowOfNoSweep", shared(elbow(kX * 10, kX * 10, 5, 5)), "start and end of the bend lie in one line with its centre"},
    {"ReducerOfAPoint", shared(Red()), "extent of zero"},
    {"ReducerTurnedByAHalf", shared(turnedReducer(2)), "reducer is twisted: it turns inside out"},
    {"ReducerWithCrossedEnds", shared(Red({GeVector(), kX, kX + kY, kY, kZ, kX + kZ, kX + kY + kZ, kY + kZ})), "reducer is twisted: a face crosses itself"},
    {"ReducerWithACrossedSide", shared(Red({GeVector(), kX * 4, kY * 4, (kX + kY) * 4, kZ * 4 + kX * 5, kZ * 4 - kX, kZ * 4 + kY * 4, (kX + kY + kZ) * 4})), "reducer is twisted: a face crosses itself"},
    {"ReducerInAPlane", shared(Red({kX, kX + kY, kX + kZ, kX + kY + kZ, kX, kX + kY, kX + kZ, kX + kY + kZ})), "reducer without volume"},
    {"TriangleOnALine", pgon({{0, 0, 0}, {1, 1, 1}, {3, 3, 3}}), "face without area"},
    {"PolygonOfTwoPoints", pgon({{0, 0, 0}, {1, 1, 1}}), "polygon of fewer than three points"},
    {"TriangleThatIsNaN", pgon({{0, 0, 0}, {1, 0, 0}, {0, kNaN, 0}}), "a number is infinite or NaN"},
    {"QuadrangleThatCrossesItself", pgon({{0, 0, 0}, {4, 4, 0}, {4, 0, 0}, {0, 3, 0}}), "face that crosses itself"},
    {"BowTie", pgon({{0, 0, 0}, {1, 1, 0}, {1, 0, 0}, {0, 1, 0}}), "face that crosses itself"},
    {"PolygonThatCrossesItself", pgon({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {2, -2, 0}, {0, 4, 0}}), "face that crosses itself"},
    {"LineWithoutPoints", std::make_shared<Pline>(), "line without points"},
    {"LineToInfinity", shared(Pline({{0, 0, 0}, {0, 0, kInfinity}})), "a number is infinite or NaN"},
    {"TextThatIsNaN", shared(Txt({0, 0, kNaN}, kX, kY, 1, 1, 1, 0, "A")), "a number is infinite or NaN"},
};
// clang-format on

class FailuresTest : public testing::TestWithParam<FailureCase> {};

TEST_P(FailuresTest, IsReportedAndNothingIsShown) {
  const Scene scene = sceneOf({*GetParam().geo});
  ASSERT_EQ(scene.failures.size(), 1U);
  EXPECT_EQ(scene.failures[0].reason, GetParam().reason);
  EXPECT_EQ(scene.failures[0].element, 0U);
  EXPECT_TRUE(scene.instances.empty() && scene.points.empty() && scene.lines.empty() &&
              scene.texts.empty());
}

INSTANTIATE_TEST_SUITE_P(Failures, FailuresTest, testing::ValuesIn(kFailures),
                         [](const auto& each) { return std::string(each.param.name); });

// A primitive of a caller's own.
class Blob : public Geo {
 public:
  std::int32_t typeCode() const override { return 77; }
  Extents& addExtents(Extents& box) const override { return box; }
  std::int32_t checkSize() const override { return 0; }
  bool isSolid() const override { return true; }
  GePoint& centroid(GePoint& p) const override { return p; }
};

TEST(Failures, UnknownKind) {
  const Scene scene = sceneOf({Blob()});
  ASSERT_EQ(scene.failures.size(), 1U);
  EXPECT_EQ(scene.failures[0].reason, "a kind without a shape");
}

TEST(Failures, TooFineATolerance) {
  const Scene scene = sceneOf({Cyl({}, kZ, 2)}, Fineness::ofTolerance(1e-13));
  ASSERT_EQ(scene.failures.size(), 1U);
  EXPECT_EQ(scene.failures[0].reason, "more than 1048576 segments for a circle at this tolerance");
}

TEST(Failures, KeepsTheOtherElements) {
  const Scene scene = sceneOf({Cyl({}, kZ, 2), Cyl({}, kZ, -2), Cyl({}, kY, 2)});
  ASSERT_EQ(scene.failures.size(), 1U);
  EXPECT_EQ(scene.elements[scene.failures[0].element].line, 2U);
  ASSERT_EQ(scene.instances.size(), 2U);
  EXPECT_EQ(scene.instances[1].element, 2U);
}

struct FaceCase {
  const char* name;
  std::vector<GePoint> points;
  std::size_t triangles;
  double area;  // twice

  friend std::ostream& operator<<(std::ostream& os, const FaceCase& each) {
    return os << each.name;
  }
};

// clang-format off
const FaceCase kFaces[] = {
    {"Triangle", {{0, 0, 0}, {4, 0, 0}, {0, 3, 0}}, 1, 12},
    {"Needle", {{0, 0, 0}, {1e6, 0, 0}, {0, 1, 0}}, 1, 1e6},
    {"Square", {{0, 0, 5}, {2, 0, 5}, {2, 2, 5}, {0, 2, 5}}, 2, 8},
    {"Clockwise", {{0, 0, 5}, {0, 2, 5}, {2, 2, 5}, {2, 0, 5}}, 2, 8},
    // The inner corner is b, then c: only the diagonal from it is inside.
    {"ConcaveAtB", {{0, 0, 0}, {1, 1, 0}, {4, 0, 0}, {1, 4, 0}}, 2, 12},
    {"ConcaveAtC", {{1, 4, 0}, {0, 0, 0}, {1, 1, 0}, {4, 0, 0}}, 2, 12},
    {"CornerOnASide", {{0, 0, 0}, {2, 0, 0}, {4, 0, 0}, {0, 4, 0}}, 2, 16},
    {"RepeatedFirstPoint", {{0, 0, 0}, {4, 0, 0}, {0, 4, 0}, {0, 0, 0}}, 1, 16},
    {"Pentagon", {{0, 0, 0}, {4, 0, 0}, {4, 2, 0}, {2, 4, 0}, {0, 2, 0}}, 3, 24},
    // A square of 4 less a notch of 2 by 2.
    {"Notched", {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {3, 4, 0}, {3, 2, 0}, {1, 2, 0}, {1, 4, 0}, {0, 4, 0}}, 6, 24},
    {"NotchedUpright", {{0, 0, 0}, {0, 4, 0}, {0, 4, 4}, {0, 3, 4}, {0, 3, 2}, {0, 1, 2}, {0, 1, 4}, {0, 0, 4}}, 6, 24},
};
// clang-format on

class FacesTest : public testing::TestWithParam<FaceCase> {};

TEST_P(FacesTest, IsCovered) {
  Pgon pgon;
  for (const GePoint& p : GetParam().points) pgon.addVertex(p);
  const Scene scene = sceneOf({pgon});
  ASSERT_EQ(scene.instances.size(), 1U);
  const Mesh& mesh = scene.meshes[0];
  EXPECT_FALSE(mesh.closed);
  EXPECT_EQ(mesh.triangles.size(), GetParam().triangles);
  double area = 0.0;
  GeVector sum;
  for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
    const MeshTriangle& t = mesh.triangles[i];
    const GePoint& a = mesh.positions[t[0]];
    const GeVector across = cross(mesh.positions[t[1]] - a, mesh.positions[t[2]] - a);
    area += across.length();
    sum += across;
    EXPECT_GT(dot(across, mesh.normals[mesh.triangleNormals[i][0]]), 0.0);
  }
  // All look the same way, and none lies over another.
  EXPECT_NEAR(area, GetParam().area, 1e-9);
  EXPECT_NEAR(sum.length(), GetParam().area, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(Faces, FacesTest, testing::ValuesIn(kFaces),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(Faces, KeepTheirNormals) {
  Pgon pgon;
  pgon.addVertex({0, 0, 0}, {0, 3, 4});
  pgon.addVertex({1, 0, 0}, {0, 0, 0});  // no direction: that of the face
  pgon.addVertex({0, 1, 0});
  const Scene scene = sceneOf({pgon});
  const FlatMesh flat = flattened(scene.meshes.at(0));
  const std::vector<float> expected{0, 0.6F, 0.8F, 0, 0, 1, 0, 0, 1};
  EXPECT_EQ(flat.normals, expected);
}

TEST(Faces, HaveTheirOwnNormalForOneThatIsNaN) {
  Pgon pgon;
  pgon.addVertex({0, 0, 0}, {0, 0, kNaN});
  pgon.addVertex({1, 0, 0}, {kInfinity, 0, 0});
  pgon.addVertex({0, 1, 0});
  const Scene scene = sceneOf({pgon});
  const std::vector<float> expected{0, 0, 1, 0, 0, 1, 0, 0, 1};
  EXPECT_EQ(flattened(scene.meshes.at(0)).normals, expected);
}

TEST(Faces, HaveTheirBoundaryForEdges) {
  const Scene scene = sceneOf({Pgon({{0, 0, 0}, {4, 0, 0}, {4, 2, 0}, {2, 4, 0}, {0, 2, 0}})});
  const std::vector<MeshEdge> expected{{0, 1}, {1, 2}, {2, 3}, {3, 4}, {4, 0}};
  EXPECT_EQ(scene.meshes.at(0).edges, expected);
}

TEST(Scene, PipesInLineMeetCornerToCorner) {
  const GeVector a(100, 200, 300);
  for (const GeVector& along : {GeVector(3, 0, 0), GeVector(0, -5, 0), GeVector(0, 0, 7),
                                GeVector(1, 2, 3), GeVector(-3, 1, 0.5), GeVector(1, 1e-9, 8)}) {
    // The second one is given from its far end.
    const Scene scene = sceneOf({Cyl(a, a + along, 2), Cyl(a + along + along, a + along, 2)});
    ASSERT_EQ(scene.meshes.size(), 1U);
    const auto ringAt = [&](std::size_t i, const GePoint& end) {
      std::vector<GePoint> ring;
      for (const GePoint& p : scene.meshes[0].positions) {
        const GePoint at = scene.instances[i].placement.point(p);
        if (distance(at, end) < 1.001) ring.push_back(at);
      }
      return ring;
    };
    const std::vector<GePoint> first = ringAt(0, GePoint(a + along));
    const std::vector<GePoint> second = ringAt(1, GePoint(a + along));
    ASSERT_EQ(first.size(), 32U);
    ASSERT_EQ(second.size(), 32U);
    for (const GePoint& p : first) {
      EXPECT_TRUE(std::any_of(second.begin(), second.end(),
                              [&](const GePoint& q) { return distance(p, q) < 1e-12; }));
    }
  }
}

TEST(Scene, EqualShapesShareAMesh) {
  const Scene scene = sceneOf({
      Cyl({}, kZ, 2),
      Cyl({1, 2, 3}, {-4, 9, 1}, 700),  // one
      Cone({}, kZ, 2, 1),
      Cone(kX, {9, 9, 9}, 300, 600),  // ratio 1/2
      torus(kX * 10, kY * 10, 4),
      torus(kZ * -35, kX * 35, 14),  // r/R = 1/5
      elbow(kX * 10, kY * 10, 3, 4),
      elbow(kZ * 50, kY * 50, 1, 20),  // 2/5
      Box({}, kX, kY, kZ),
      Box({}, kY * 3, kX * -4, kZ * 5),  // the cube
      turnedReducer(0),
      turnedReducer(0),  // its own
      Pgon({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}),
      Pgon({{5, 5, 5}, {6, 5, 5}, {5, 6, 5}}),
  });
  EXPECT_EQ(scene.instances.size(), 14U);
  EXPECT_EQ(scene.meshes.size(), 7U);
}

TEST(Scene, PointsAndLinesStayWhatTheyAre) {
  const Scene scene = sceneOf({Pline({{1, 2, 3}}), Pline({{0, 0, 0}, {1, 0, 0}}),
                               Pline({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}})});
  ASSERT_EQ(scene.points.size(), 1U);
  EXPECT_EQ(scene.points[0].position, GePoint(1, 2, 3));
  ASSERT_EQ(scene.lines.size(), 2U);
  EXPECT_EQ(scene.lines[1].element, 2U);
  EXPECT_EQ(scene.lines[1].first, 2U);
  EXPECT_EQ(scene.lines[1].count, 3U);
  EXPECT_EQ(scene.lineVertices[4], GePoint(1, 1, 0));
}

struct TextCase {
  int alignment;
  GePoint start;
};

// A text of 4 characters of 0.5 by 2.5 at (10, 20, 30): it is 2 long and 2.5 high.
TEST(Scene, TextsBeginAtTheirBaseLine) {
  const TextCase cases[] = {
      {1, {10, 20, 30}},   {2, {9, 20, 30}},    {3, {8, 20, 30}},    {4, {10, 18.75, 30}},
      {5, {9, 18.75, 30}}, {6, {8, 18.75, 30}}, {7, {10, 17.5, 30}}, {8, {9, 17.5, 30}},
      {9, {8, 17.5, 30}},  {0, {10, 20, 30}},   {10, {10, 20, 30}},
  };
  for (const TextCase& each : cases) {
    const Scene scene = sceneOf({Txt({10, 20, 30}, kX, kY, 0.5, 2.5, each.alignment, 0, "ABCD")});
    ASSERT_EQ(scene.texts.size(), 1U);
    EXPECT_EQ(scene.texts[0].position, each.start) << each.alignment;
    EXPECT_EQ(scene.texts[0].width, 2.0);
    EXPECT_EQ(scene.texts[0].height, 2.5);
    EXPECT_EQ(scene.bounds.max.x, each.start.x + 2);
  }
}

TEST(Scene, BoundsOfAnUprightPipeAreThoseOfThePipe) {
  const Scene scene = sceneOf({Cyl({1, 2, 3}, {1, 2, 13}, 4)});
  EXPECT_EQ(scene.bounds.min, GePoint(-1, 0, 3));
  EXPECT_EQ(scene.bounds.max, GePoint(3, 4, 13));
}

struct SecondBox {
  const char* name;
  GePoint origin;
  GeVector edges[3];
  GePoint min;
  GePoint max;
};

// Beside a cube from (0, 0, 0) to (100, 100, 100).
TEST(Scene, BoundsGrowByWhatIsBeyondThemAlone) {
  constexpr double kHair = 0x1p-30;
  const SecondBox cases[] = {
      {"well inside",
       {10, 10, 10},
       {{80, 0, 0}, {0, 80, 0}, {0, 0, 80}},
       {0, 0, 0},
       {100, 100, 100}},
      {"the same", {0, 0, 0}, {{100, 0, 0}, {0, 100, 0}, {0, 0, 100}}, {0, 0, 0}, {100, 100, 100}},
      {"a hair above",
       {50, 50, 50},
       {{50 + kHair, 0, 0}, {0, 50, 0}, {0, 0, 50}},
       {0, 0, 0},
       {100 + kHair, 100, 100}},
      {"a hair below",
       {50, 50, -kHair},
       {{9, 0, 0}, {0, 9, 0}, {0, 0, 9}},
       {0, 0, -kHair},
       {100, 100, 100}},
      {"one corner out",
       {50, 40, 50},
       {{60, 60, 0}, {-3, 3, 0}, {0, 0, 9}},
       {0, 0, 0},
       {110, 103, 100}},
  };
  const Box cube({0, 0, 0}, {100, 0, 0}, {0, 100, 0}, {0, 0, 100});
  for (const SecondBox& each : cases) {
    Box second;
    second.origin = each.origin;
    second.edge1 = each.edges[0];
    second.edge2 = each.edges[1];
    second.edge3 = each.edges[2];
    const Scene scene = sceneOf({cube, second});
    EXPECT_EQ(scene.bounds.min, each.min) << each.name;
    EXPECT_EQ(scene.bounds.max, each.max) << each.name;
  }
}

TEST(Scene, StaysWhereItIsNearTheOrigin) {
  // 2^23 * 0.1 / 4 is 209715.2.
  const Scene scene =
      sceneOf({Cyl({209000, 0, 0}, {209700, 0, 0}, 50)}, Fineness::ofTolerance(0.1));
  EXPECT_EQ(scene.offset, GeVector());
}

TEST(Scene, IsMovedFromAfar) {
  const Scene scene =
      sceneOf({Cyl({6700000, 5e6, 10}, {6701000, 5e6, 10}, 50), Pline({{6700000, 5e6, 0}}),
               Pline({{6700000, 5e6, 0}, {6700001, 5e6, 0}}),
               Txt({6700000, 5e6, 0}, kX, kY, 1, 1, 1, 0, "A")},
              Fineness::ofTolerance(0.1));
  EXPECT_EQ(scene.offset, GeVector(6700500, 5e6, 10));
  EXPECT_EQ(scene.bounds.min, GePoint(-500, -25, -25));
  EXPECT_EQ(scene.bounds.max, GePoint(500, 25, 25));
  EXPECT_EQ(scene.points[0].position, GePoint(-500, 0, -10));
  EXPECT_EQ(scene.lineVertices[1], GePoint(-499, 0, -10));
  EXPECT_EQ(scene.texts[0].position, GePoint(-500, 0, -10));
  // What is read back is where it was.
  EXPECT_EQ(scene.instances[0].placement.origin.x + scene.offset.x, 6700000);
}

TEST(Scene, IsNotMovedWhenThatIsOfNoUse) {
  const Scene scene =
      sceneOf({Cyl({-6700000, 0, 0}, {6700000, 0, 0}, 50)}, Fineness::ofTolerance(0.1));
  EXPECT_EQ(scene.offset, GeVector());
}

TEST(Scene, HeadersAreKeptOnce) {
  SceneBuilder builder(k32);
  EXPECT_EQ(builder.headerId("A"), 0U);
  EXPECT_EQ(builder.headerId("B"), 1U);
  EXPECT_EQ(builder.headerId("A"), 0U);
  EXPECT_EQ(builder.finish().headers, (std::vector<std::string>{"A", "B"}));
  EXPECT_EQ(builder.headerId("C"), 0U);  // as new
}

// Both fields tell headers apart, wherever one ends and the other begins.
TEST(Scene, HeadersAreOfBothFields) {
  SceneBuilder builder(k32);
  EXPECT_EQ(builder.headerId("A", "BC"), 0U);
  EXPECT_EQ(builder.headerId("AB", "C"), 1U);
  EXPECT_EQ(builder.headerId("ABC", ""), 2U);
  EXPECT_EQ(builder.headerId("ABC"), 2U);
  EXPECT_EQ(builder.headerId("A", "BC"), 0U);
  const Scene scene = builder.finish();
  EXPECT_EQ(scene.headers, (std::vector<std::string>{"A", "AB", "ABC"}));
  EXPECT_EQ(scene.groups, (std::vector<std::string>{"BC", "C", ""}));
}

// The same corners, with a normal of its own at the first or at the second.
TEST(Scene, FacesOfOtherNormalsAreOtherMeshes) {
  const auto triangle = [](std::size_t which) {
    auto made = std::make_shared<Pgon>();
    const GePoint corners[] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    for (std::size_t i = 0; i < 3; ++i) {
      if (i == which) {
        made->addVertex(corners[i], {0, 3, 4});
      } else {
        made->addVertex(corners[i]);
      }
    }
    return made;
  };
  EXPECT_EQ(sceneOf({*triangle(0), *triangle(1)}).meshes.size(), 2U);
  EXPECT_EQ(sceneOf({*triangle(0), *triangle(0)}).meshes.size(), 1U);
}

struct SegmentCase {
  const char* name;
  double radius;
  double tolerance;
  std::uint32_t segments;
};

// The angle of a chord is 4 asin(sqrt(tolerance / (2 r))); full circles have a
// multiple of four.
TEST(Fineness, SegmentsOfACircle) {
  const SegmentCase cases[] = {
      // 360 / 16.22 deg = 22.2
      {"One in a hundred", 100, 1, 24},
      // 360 / 5.126 deg = 70.2
      {"One in a thousand", 1000, 1, 72},
      // 30 degrees at the most
      {"Coarse", 1, 1, 12},
      {"Coarser than the circle", 1, 100, 12},
      // pi / sqrt(2e-6 ) = 2221.4...
      {"A millionth", 1e6, 1, 2224},
  };
  for (const SegmentCase& each : cases) {
    EXPECT_EQ(Fineness::ofTolerance(each.tolerance).circle(each.radius), each.segments)
        << each.name;
  }
}

TEST(Fineness, SegmentsNeverExceedTheTolerance) {
  for (double radius = 0.01; radius < 1e7; radius *= 1.37) {
    for (double tolerance = 1e-3; tolerance < 100; tolerance *= 2.3) {
      const Fineness fineness = Fineness::ofTolerance(tolerance);
      const std::uint32_t n = fineness.circle(radius);
      ASSERT_GE(n, 12U);
      EXPECT_EQ(n % 4, 0U);
      EXPECT_LE(radius * (1 - std::cos(kPi / n)), tolerance * (1 + 1e-6));
      const std::uint32_t arc = fineness.arc(radius, 0.7, tolerance);
      EXPECT_LE(radius * (1 - std::cos(0.35 / arc)), tolerance * (1 + 1e-6));
      // One less would be too few, but for the 30 degrees and the four.
      if (n > 16) {
        EXPECT_GT(radius * (1 - std::cos(kPi / (n - 4))), tolerance * (1 - 1e-6));
      }
    }
  }
}

TEST(Fineness, QualityIsTheSameForEverySize) {
  for (const double radius : {1e-6, 1.0, 1e9}) {
    EXPECT_EQ(Fineness::ofSegments(Fineness::kDraft).circle(radius), 16U);
    EXPECT_EQ(Fineness::ofSegments(Fineness::kNormal).circle(radius), 32U);
    EXPECT_EQ(Fineness::ofSegments(Fineness::kFine).circle(radius), 64U);
    // A quarter of 32.
    EXPECT_EQ(k32.arc(radius, kPi / 2, 0), 8U);
    EXPECT_EQ(k32.arc(radius, 1e-6, 0), 1U);
  }
}

// A tetrahedron, and what can be wrong with one.
Mesh tetrahedron() {
  Mesh mesh;
  mesh.positions = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  mesh.triangles = {{0, 2, 1}, {0, 1, 3}, {1, 2, 3}, {2, 0, 3}};
  mesh.closed = true;
  return mesh;
}

struct FaultCase {
  const char* name;
  std::function<void(Mesh&)> spoil;
  const char* fault;

  friend std::ostream& operator<<(std::ostream& os, const FaultCase& each) {
    return os << each.name;
  }
};

const FaultCase kFaults[] = {
    {"Good", [](Mesh&) {}, ""},
    {"Hole", [](Mesh& m) { m.triangles.pop_back(); }, "an open edge"},
    {"TurnedTriangle", [](Mesh& m) { std::swap(m.triangles[0][0], m.triangles[0][1]); },
     "an edge that two triangles run along the same way"},
    {"Twice", [](Mesh& m) { m.triangles.push_back(m.triangles[0]); },
     "an edge that two triangles run along the same way"},
    {"UnusedVertex", [](Mesh& m) { m.positions.emplace_back(9, 9, 9); }, "an unused vertex"},
    {"NoSuchVertex", [](Mesh& m) { m.triangles[2][2] = 4; }, "a corner that is no vertex"},
    {"TwoEqualCorners", [](Mesh& m) { m.triangles[2][2] = 1; },
     "a triangle with two equal corners"},
    {"TwoSolids",
     [](Mesh& m) {
       const Mesh other = m;
       for (const GePoint& p : other.positions) m.positions.push_back(p + kX * 5);
       for (const MeshTriangle& t : other.triangles) {
         m.triangles.push_back({t[0] + 4, t[1] + 4, t[2] + 4});
       }
     },
     "not the surface of one solid"},
};

class FaultsTest : public testing::TestWithParam<FaultCase> {};

TEST_P(FaultsTest, IsFound) {
  Mesh mesh = tetrahedron();
  GetParam().spoil(mesh);
  EXPECT_EQ(closureFault(mesh), GetParam().fault);
}

INSTANTIATE_TEST_SUITE_P(Faults, FaultsTest, testing::ValuesIn(kFaults),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(Proof, VolumeOfATetrahedron) {
  EXPECT_NEAR(enclosedVolume(tetrahedron()), 1.0 / 6.0, 1e-15);
  Mesh inside = tetrahedron();
  for (MeshTriangle& t : inside.triangles) std::swap(t[0], t[1]);
  EXPECT_NEAR(enclosedVolume(inside), -1.0 / 6.0, 1e-15);
}

TEST(Proof, PointsThatFallTogetherIn32BitsAreOne) {
  Mesh mesh = tetrahedron();
  // The corner 1 goes to the corner 0: two triangles vanish, two lie on each other.
  mesh.positions[1] = {1e-60, 0, 0};
  std::size_t dropped = 0;
  const Mesh rounded = roundedMesh(mesh, dropped);
  EXPECT_EQ(dropped, 2U);
  EXPECT_EQ(rounded.positions.size(), 3U);
  EXPECT_EQ(rounded.triangles.size(), 2U);
}

}  // namespace
}  // namespace VeskTest
