// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

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

using Shared = std::shared_ptr<Geo>;

const double kPi = std::acos(-1.0);
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

const GeVector kX(1, 0, 0);
const GeVector kY(0, 1, 0);
const GeVector kZ(0, 0, 1);

const Fineness k16 = Fineness::ofSegments(16);
const Fineness k32 = Fineness::ofSegments(32);

Scene sceneOf(const std::vector<Shared>& geos, const Fineness& fineness = k32) {
  SceneBuilder builder(fineness);
  for (const Shared& each : geos) builder.add(*each, {});
  return builder.finish();
}

Shared cyl(const GeVector& from, const GeVector& to, double d) {
  return std::make_shared<Cyl>(from, to, d);
}

Shared cone(double d1, double d2) { return std::make_shared<Cone>(GeVector(), kZ * 9, d1, d2); }

Shared box(const GeVector& a, const GeVector& b, const GeVector& c) {
  return std::make_shared<Box>(GeVector(), a, b, c);
}

Shared bend(double radius, double tube, double sweep) {
  return std::make_shared<Torus>(GeVector(), kX * radius,
                                 (kX * std::cos(sweep) + kY * std::sin(sweep)) * radius, 2 * tube);
}

Shared elbow(double radius, double depth, double sweep) {
  auto made = std::make_shared<Relb>();
  made->startVector = kX * radius;
  made->endVector = (kX * std::cos(sweep) + kY * std::sin(sweep)) * radius;
  made->width = 1;
  made->depth = depth;
  return made;
}

// A box with these edges.
Shared reducer(const GeVector& a, const GeVector& b, const GeVector& c) {
  const GeVector null;
  std::array<GeVector, 8> corners;
  for (unsigned k = 0; k < 8; ++k) {
    corners[k] =
        ((k & 1U) != 0 ? a : null) + ((k & 2U) != 0 ? b : null) + ((k & 4U) != 0 ? c : null);
  }
  return std::make_shared<Red>(corners);
}

// A cube of 32 with its last corner so much higher: the top is bent by that, and the
// sides stay plane.
Shared raised(double h) {
  std::array<GeVector, 8> corners;
  for (unsigned k = 0; k < 8; ++k) {
    corners[k] = {(k & 1U) != 0 ? 32.0 : 0.0, (k & 2U) != 0 ? 32.0 : 0.0,
                  (k & 4U) != 0 ? 32.0 : 0.0};
  }
  corners[7].z += h;
  return std::make_shared<Red>(corners);
}

Shared pgon(std::initializer_list<GePoint> points) { return std::make_shared<Pgon>(points); }

Shared pline(std::initializer_list<GePoint> points) { return std::make_shared<Pline>(points); }

struct LimitCase {
  const char* name;
  Shared good;
  Shared bad;
  const char* reason;

  friend std::ostream& operator<<(std::ostream& os, const LimitCase& each) {
    return os << each.name;
  }
};

// clang-format off
const LimitCase kLimits[] = {
    {"Diameter", cyl({}, kZ, 1e-12), cyl({}, kZ, 0.99e-12), "diameter of zero"},
    {"NegativeDiameter", cyl({}, kZ, 1), cyl({}, kZ, -1e-12), "diameter below zero"},
    {"HardlyNegativeDiameter", cyl({}, kZ, 1), cyl({}, kZ, -0.99e-12), "diameter of zero"},
    {"Length", cyl({}, kZ * 1e-12, 1), cyl({}, kZ * 0.99e-12, 1), "length of zero"},
    {"Far", cyl({}, kX * 1e12, 1), cyl({}, kX * 1.001e12, 1), "a number is beyond 1e12"},
    {"FarBelow", cyl({}, kY * -1e12, 1), cyl({}, kY * -1.001e12, 1), "a number is beyond 1e12"},
    {"Wide", cyl({}, kZ, 1e12), cyl({}, kZ, 1.001e12), "a number is beyond 1e12"},
    {"Cone", cone(1e-12, 0), cone(0.99e-12, 0), "diameter of zero"},
    {"ConeBelowZero", cone(2, 0), cone(2, -1e-12), "diameter below zero"},
    {"ConeHardlyBelowZero", cone(2, 0), cone(2, -0.99e-12), "diameter of zero"},
    {"Edge", box(kX, kY, kZ * 1e-12), box(kX, kY, kZ * 0.99e-12), "edge of zero"},
    {"FirstEdge", box(kX * 1e-12, kY, kZ), box(kX * 0.99e-12, kY, kZ), "edge of zero"},
    {"SecondEdge", box(kX, kY * 1e-12, kZ), box(kX, kY * 0.99e-12, kZ), "edge of zero"},
    // 1e-12 of the product of the edges, which is the square root of 2.
    {"FlatBox", box(kX, kY, {1, 1, 1.42e-12}), box(kX, kY, {1, 1, 1.41e-12}), "the three edges lie in one plane"},
    {"FlatBoxLeftHanded", box(kY, kX, {1, 1, 1.42e-12}), box(kY, kX, {1, 1, 1.41e-12}), "the three edges lie in one plane"},
    {"Sweep", bend(10, 1, 1.01e-9), bend(10, 1, 0.99e-9), "start and end of the bend lie in one line with its centre"},
    {"HalfTurn", bend(10, 1, kPi - 1.01e-9), bend(10, 1, kPi - 0.99e-9), "start and end of the bend lie in one line with its centre"},
    {"BendRadius", bend(1.01e-12, 0.6e-12, 1), bend(0.99e-12, 0.6e-12, 1), "bend radius of zero"},
    {"Tube", bend(10, 10.0099, 1), bend(10, 10.0101, 1), "tube wider than its bend"},
    {"Section", elbow(10, 20.0199, 1), elbow(10, 20.0201, 1), "section wider than its bend"},
    {"Reducer", reducer(kX * 1e-12, kY * 1e-13, kZ * 1e-13), reducer(kX * 9e-13, kY * 1e-13, kZ * 1e-13), "extent of zero"},
    // 1e-10 of the product of the edges, which is 1000 times the square root of 2, is
    // the height of 1.414e-9 over 100.
    {"FlatReducer", reducer(kX * 10, kY * 10, {10, 10, 1.42e-9}), reducer(kX * 10, kY * 10, {10, 10, 1.41e-9}), "reducer without volume"},
    {"FlatReducerLeftHanded", reducer(kY * 10, kX * 10, {10, 10, 1.42e-9}), reducer(kY * 10, kX * 10, {10, 10, 1.41e-9}), "reducer without volume"},
    {"FlatReducerOnX", reducer({1.42e-9, 10, 10}, kY * 10, kZ * 10), reducer({1.41e-9, 10, 10}, kY * 10, kZ * 10), "reducer without volume"},
    {"FlatReducerOnY", reducer(kX * 10, {10, 1.42e-9, 10}, kZ * 10), reducer(kX * 10, {10, 1.41e-9, 10}, kZ * 10), "reducer without volume"},
    // 1e-12 of the square of the extent.
    {"Needle", pgon({{0, 0, 0}, {1e6, 0, 0}, {0, 1.01e-6, 0}}), pgon({{0, 0, 0}, {1e6, 0, 0}, {0, 0.99e-6, 0}}), "face without area"},
};
// clang-format on

class LimitsTest : public testing::TestWithParam<LimitCase> {};

TEST_P(LimitsTest, IsWhereItIs) {
  const Scene good = sceneOf({GetParam().good});
  EXPECT_EQ(good.instances.size(), 1U) << good.failures.at(0).reason;
  const Scene bad = sceneOf({GetParam().bad});
  EXPECT_TRUE(bad.instances.empty());
  ASSERT_EQ(bad.failures.size(), 1U);
  EXPECT_EQ(bad.failures[0].reason, GetParam().reason);
}

INSTANTIATE_TEST_SUITE_P(Limits, LimitsTest, testing::ValuesIn(kLimits),
                         [](const auto& each) { return std::string(each.param.name); });

template <class Primitive>
void expectEachNumberIsLookedAt(const Primitive& good,
                                const std::vector<std::function<double&(Primitive&)>>& numbers) {
  EXPECT_TRUE(sceneOf({std::make_shared<Primitive>(good)}).failures.empty());
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    auto bad = std::make_shared<Primitive>(good);
    numbers[i](*bad) = kNaN;
    const Scene scene = sceneOf({bad});
    ASSERT_EQ(scene.failures.size(), 1U) << i;
    EXPECT_EQ(scene.failures[0].reason, "a number is infinite or NaN") << i;
  }
}

TEST(Limits, NoNumberIsNaN) {
  expectEachNumberIsLookedAt<Cyl>(
      Cyl({}, kZ, 1),
      {[](Cyl& c) -> double& { return c.origin.x; }, [](Cyl& c) -> double& { return c.origin.y; },
       [](Cyl& c) -> double& { return c.origin.z; }, [](Cyl& c) -> double& { return c.axis.z; },
       [](Cyl& c) -> double& { return c.diameter; }});
  expectEachNumberIsLookedAt<Cone>(
      Cone({}, kZ, 1, 2),
      {[](Cone& c) -> double& { return c.origin.y; }, [](Cone& c) -> double& { return c.axis.x; },
       [](Cone& c) -> double& { return c.diameter1; },
       [](Cone& c) -> double& { return c.diameter2; }});
  expectEachNumberIsLookedAt<Box>(
      Box({}, kX, kY, kZ),
      {[](Box& b) -> double& { return b.origin.z; }, [](Box& b) -> double& { return b.edge1.x; },
       [](Box& b) -> double& { return b.edge2.x; }, [](Box& b) -> double& { return b.edge3.x; }});
  expectEachNumberIsLookedAt<Torus>(Torus({}, kX * 10, kY * 10, 2),
                                    {[](Torus& t) -> double& { return t.centre.z; },
                                     [](Torus& t) -> double& { return t.startVector.z; },
                                     [](Torus& t) -> double& { return t.endVector.z; },
                                     [](Torus& t) -> double& { return t.diameter; }});
  expectEachNumberIsLookedAt<Relb>(
      dynamic_cast<const Relb&>(*elbow(10, 1, 1)),
      {[](Relb& e) -> double& { return e.centre.z; },
       [](Relb& e) -> double& { return e.startVector.z; },
       [](Relb& e) -> double& { return e.endVector.z; }, [](Relb& e) -> double& { return e.width; },
       [](Relb& e) -> double& { return e.depth; }});
  expectEachNumberIsLookedAt<Red>(dynamic_cast<const Red&>(*raised(0)),
                                  {[](Red& r) -> double& { return r.origin.z; },
                                   [](Red& r) -> double& { return r.cornerVectors[0].z; },
                                   [](Red& r) -> double& { return r.cornerVectors[6].z; }});
  expectEachNumberIsLookedAt<Pgon>(Pgon({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}),
                                   {[](Pgon& p) -> double& { return p.vertices[0].point.z; },
                                    [](Pgon& p) -> double& { return p.vertices[2].point.z; }});
  expectEachNumberIsLookedAt<Pline>(Pline({{0, 0, 0}, {1, 0, 0}}),
                                    {[](Pline& p) -> double& { return p.vertices[0].z; },
                                     [](Pline& p) -> double& { return p.vertices[1].z; }});
  expectEachNumberIsLookedAt<Txt>(
      Txt({}, kX, kY, 1, 1, 1, 0, "A"),
      {[](Txt& t) -> double& { return t.position.x; },
       [](Txt& t) -> double& { return t.direction.x; },
       [](Txt& t) -> double& { return t.upDirection.x; },
       [](Txt& t) -> double& { return t.charWidth; }, [](Txt& t) -> double& { return t.height; }});
}

// A chord of this part of a turn on the unit circle is so far from it.
double chord(double parts) { return 1 - std::cos(kPi / parts); }

struct ToleranceCase {
  const char* name;
  Shared geo;
  Fineness fineness;
  double tolerance;
  double deviation;

  friend std::ostream& operator<<(std::ostream& os, const ToleranceCase& each) {
    return os << each.name;
  }
};

// An arc of one radian in three pieces is 6 pi of them to a turn.
const double kThird = 6 * kPi;

// clang-format off
const ToleranceCase kTolerances[] = {
    {"Pipe", cyl({}, kZ * 9, 4), k16, 2 * chord(16), 2 * chord(16)},
    // 360 deg / (4 asin(sqrt(0.05 / 4))) = 14.02
    {"PipeWithin", cyl({}, kZ * 9, 4), Fineness::ofTolerance(0.05), 0.05, 2 * chord(16)},
    {"Cone", cone(4, 8), k16, 4 * chord(16), 4 * chord(16)},
    {"ConeTheOtherWay", cone(8, 4), k16, 4 * chord(16), 4 * chord(16)},
    // Half of a diagonal of 30.
    {"Box", box(kX * 10, kY * 20, kZ * 20), k16, 15 * chord(16), 0},
    {"BoxLeftHanded", box(kY * 20, kX * 10, kZ * 20), k16, 15 * chord(16), 0},
    {"BoxSkew", box(kX * 10, {0, 20, 10}, kZ * 10), k16, 15 * chord(16), 0},
    {"Bend", bend(100, 20, kPi / 2), k16, 120 * chord(16) + 20 * chord(16), 120 * chord(16) + 20 * chord(16)},
    {"BendOfOneRadian", bend(100, 20, 1), k16, 120 * chord(16) + 20 * chord(16), 120 * chord(kThird) + 20 * chord(16)},
    // 1 rad / (4 asin(sqrt(1 / 240))) = 3.9; 360 deg / (4 asin(sqrt(1 / 40))) = 9.9
    {"BendWithin", bend(100, 20, 1), Fineness::ofTolerance(2), 2, 120 * chord(8 * kPi) + 20 * chord(12)},
    {"Elbow", elbow(40, 20, kPi / 2), k16, 50 * chord(16), 50 * chord(16)},
    {"ElbowOfOneRadian", elbow(40, 20, 1), k16, 50 * chord(16), 50 * chord(kThird)},
    // 1 rad / (4 asin(sqrt(1 / 100))) = 2.5
    {"ElbowWithin", elbow(40, 20, 1), Fineness::ofTolerance(1), 1, 50 * chord(kThird)},
    {"Reducer", reducer(kX * 10, kY * 20, kZ * 20), k16, 15 * chord(16), 0},
    // Half of the longest way from the first point.
    {"Polygon", pgon({{5, 5, 5}, {11, 13, 5}, {6, 13, 5}}), k16, 5 * chord(16), 0},
};
// clang-format on

class TolerancesTest : public testing::TestWithParam<ToleranceCase> {};

TEST_P(TolerancesTest, IsThatOfTheSize) {
  const Scene scene = sceneOf({GetParam().geo}, GetParam().fineness);
  ASSERT_EQ(scene.instances.size(), 1U);
  EXPECT_NEAR(scene.instances[0].tolerance, GetParam().tolerance, 1e-12);
  EXPECT_NEAR(scene.instances[0].deviation, GetParam().deviation, 1e-12);
}

INSTANTIATE_TEST_SUITE_P(Tolerances, TolerancesTest, testing::ValuesIn(kTolerances),
                         [](const auto& each) { return std::string(each.param.name); });

struct BentCase {
  const char* name;
  double height;  // of the raised corner
  double tolerance;
  std::size_t triangles;
  double deviation;

  friend std::ostream& operator<<(std::ostream& os, const BentCase& each) {
    return os << each.name;
  }
};

// The diagonals of the top pass each other by h / 2 / sqrt(1 + h^2 / 2048). A cell has
// 14 triangles: four on the top and two on the other faces. In k by k cells the top is
// off by h / (16 k^2).
const BentCase kBents[] = {
    {"PlaneWithinATenth", 0.19, 1, 12, 0.095 / std::sqrt(1 + 0.19 * 0.19 / 2048)},
    {"JustBent", 0.21, 1, 14, 0.21 / 16},
    {"JustInFourCells", 1, 1.0 / 64, 4 * 14, 1.0 / 64},
    {"NoLongerInFourCells", 1, 0.999 / 64, 9 * 14, 1.0 / 144},
    {"MostCells", 16, 0x1p-14, std::size_t{128 * 128 * 14}, 0x1p-14},
};

class BentReducersTest : public testing::TestWithParam<BentCase> {};

TEST_P(BentReducersTest, HasTheCells) {
  const BentCase& each = GetParam();
  const Scene scene = sceneOf({raised(each.height)}, Fineness::ofTolerance(each.tolerance));
  ASSERT_EQ(scene.instances.size(), 1U);
  EXPECT_EQ(scene.meshes[0].triangles.size(), each.triangles);
  EXPECT_NEAR(scene.instances[0].deviation, each.deviation, 1e-12);
}

INSTANTIATE_TEST_SUITE_P(BentReducers, BentReducersTest, testing::ValuesIn(kBents),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(BentReducers, NoMoreCells) {
  const Scene scene = sceneOf({raised(16)}, Fineness::ofTolerance(0.999 * 0x1p-14));
  ASSERT_EQ(scene.failures.size(), 1U);
  EXPECT_EQ(scene.failures[0].reason, "reducer needs too many triangles at this tolerance");
}

// So fine that a turn has 2^20 pieces, or one too many.
TEST(Fineness, MostSegments) {
  const double finest = sagitta(1, 2 * kPi * 0x1p-20);
  const Fineness fineness = Fineness::ofTolerance(1);
  EXPECT_EQ(fineness.circle(1, finest), 1U << 20U);
  EXPECT_EQ(fineness.circle(1, finest * (1 - 1e-6)), 0U);
  EXPECT_EQ(fineness.arc(1, 2 * kPi, finest), 1U << 20U);
  EXPECT_EQ(fineness.arc(1, kPi, finest), 1U << 19U);
  EXPECT_EQ(fineness.arc(1, 2 * kPi, finest * (1 - 1e-6)), 0U);
}

TEST(Fineness, SegmentsAreAMultipleOfFour) {
  constexpr std::uint32_t kSegments[][2] = {{0, 8}, {8, 8}, {9, 12}, {12, 12}, {13, 16}, {30, 32}};
  for (const auto& [wanted, made] : kSegments) {
    EXPECT_EQ(Fineness::ofSegments(wanted).circle(1), made) << wanted;
  }
}

TEST(Fineness, TooFineForABend) {
  // The tube alone, and the arc alone: 0.1 is coarse for the other one.
  for (const Shared& geo : {bend(1e12, 1, 3), bend(3e11, 2e11, 0.1), elbow(1e12, 1, 3)}) {
    const Scene scene = sceneOf({geo}, Fineness::ofTolerance(0.1));
    ASSERT_EQ(scene.failures.size(), 1U);
    EXPECT_EQ(scene.failures[0].reason,
              "more than 1048576 segments for a circle at this tolerance");
  }
}

// A half of the tolerance is for the tube, the other half for the outer arc:
// at 1e-4 2 pi / (4 asin(sqrt(5e-5 / 1800))) = 9,425 pieces by pi / 2 / (4 asin(sqrt(
// 5e-5 / 3800))) = 3,424, two triangles each, are 64.5 million; at 1e-2 a hundredth of that.
TEST(Fineness, TooManyTrianglesForABend) {
  const Scene bad = sceneOf({bend(1000, 900, kPi / 2)}, Fineness::ofTolerance(1e-4));
  ASSERT_EQ(bad.failures.size(), 1U);
  EXPECT_EQ(bad.failures[0].reason, "bend needs more than 4194304 triangles at this tolerance");
  EXPECT_TRUE(bad.meshes.empty());
  const Scene good = sceneOf({bend(1000, 900, kPi / 2)}, Fineness::ofTolerance(1e-2));
  EXPECT_EQ(good.instances.size(), 1U);
}

struct SharedCase {
  const char* name;
  std::vector<Shared> geos;
  std::size_t meshes;

  friend std::ostream& operator<<(std::ostream& os, const SharedCase& each) {
    return os << each.name;
  }
};

// clang-format off
const SharedCase kShareds[] = {
    {"RightAngles", {box(kX, kY, kZ), box(kX, {0.9e-12, 1, 0}, kZ), box(kX, kY, {0, 0.9e-12, 1}), box(kX, kY, {0.9e-12, 0, 1})}, 1},
    {"NoRightAngleOnXY", {box(kX, kY, kZ), box(kX, {1.1e-12, 1, 0}, kZ)}, 2},
    {"NoRightAngleOnYZ", {box(kX, kY, kZ), box(kX, kY, {0, 1.1e-12, 1})}, 2},
    {"NoRightAngleOnZX", {box(kX, kY, kZ), box(kX, kY, {1.1e-12, 0, 1})}, 2},
    {"ObtuseAngle", {box(kX, kY, kZ), box(kX, {-1.1e-12, 1, 0}, kZ)}, 2},
    // 0.1 / 0.3 is 1 / 3 but for its last digit.
    {"RatiosInTheirLastDigits", {cone(1, 3), cone(0.1, 0.3), cone(0.6, 0.2)}, 1},
    {"OtherRatios", {cone(1, 3), cone(1.0000001, 3)}, 2},
    {"OtherTubes", {bend(10, 2, 1), bend(10, 2.000001, 1)}, 2},
    {"OtherSweeps", {bend(10, 2, 1), bend(10, 2, 1.000001)}, 2},
    {"OtherDepths", {elbow(10, 2, 1), elbow(10, 2.000001, 1)}, 2},
    {"OtherArcs", {elbow(10, 2, 1), elbow(10, 2, 1.000001)}, 2},
    {"OtherReducers", {raised(1), raised(1.0000001)}, 2},
};
// clang-format on

class SharedMeshesTest : public testing::TestWithParam<SharedCase> {};

TEST_P(SharedMeshesTest, AreSoMany) {
  EXPECT_EQ(sceneOf(GetParam().geos).meshes.size(), GetParam().meshes);
}

INSTANTIATE_TEST_SUITE_P(SharedMeshes, SharedMeshesTest, testing::ValuesIn(kShareds),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(SharedMeshes, AreNotSharedWithTheSceneBefore) {
  SceneBuilder builder(k32);
  for (int i = 0; i < 2; ++i) {
    builder.add(*cyl({}, kZ, 1), {});
    builder.add(*raised(1), {});
    const Scene scene = builder.finish();
    EXPECT_EQ(scene.meshes.size(), 2U);
    EXPECT_EQ(scene.elements.size(), 2U);
  }
}

struct BoundsCase {
  const char* name;
  std::vector<Shared> geos;
  GePoint min;
  GePoint max;

  friend std::ostream& operator<<(std::ostream& os, const BoundsCase& each) {
    return os << each.name;
  }
};

Shared txt(const GePoint& at, const GeVector& along, const GeVector& up) {
  return std::make_shared<Txt>(at, along, up, 1, 3, 1, 0, "AB");
}

// clang-format off
const BoundsCase kBounds[] = {
    {"Points", {pline({{1, 2, 3}}), pline({{-4, 5, -6}})}, {-4, 2, -6}, {1, 5, 3}},
    {"Lines", {pline({{1, 2, 3}, {7, 8, 9}, {-4, 5, -6}})}, {-4, 2, -6}, {7, 8, 9}},
    // Its corners are (0, 0), (2, 2), (-3, 3) and (-1, 5).
    {"SlantedText", {txt({}, {1, 1, 0}, {-1, 1, 0})}, {-3, 0, 0}, {2, 5, 0}},
    {"UprightText", {txt({}, {0, 0, 1}, {0, -1, 0})}, {0, -3, 0}, {0, 0, 2}},
    {"Solid", {box(kX * 2, kY * -3, kZ * 4)}, {0, -3, 0}, {2, 0, 4}},
    {"All", {box(kX, kY, kZ), pline({{0, 0, -9}}), pline({{0, 0, 0}, {-8, 0, 0}}), txt({0, 7, 0}, kX, kY)}, {-8, 0, -9}, {2, 10, 1}},
};
// clang-format on

class BoundsTest : public testing::TestWithParam<BoundsCase> {};

TEST_P(BoundsTest, AreThoseOfAllThatIsShown) {
  const Scene scene = sceneOf(GetParam().geos);
  EXPECT_EQ(scene.bounds.min, GetParam().min);
  EXPECT_EQ(scene.bounds.max, GetParam().max);
}

INSTANTIATE_TEST_SUITE_P(Bounds, BoundsTest, testing::ValuesIn(kBounds),
                         [](const auto& each) { return std::string(each.param.name); });

struct OffsetCase {
  const char* name;
  std::vector<Shared> geos;
  Fineness fineness;
  GeVector offset;

  friend std::ostream& operator<<(std::ostream& os, const OffsetCase& each) {
    return os << each.name;
  }
};

Shared upright(double radius) { return cyl({0, 0, 1e6}, {0, 0, 1e6 + 100}, 2 * radius); }

const Fineness kEighth = Fineness::ofTolerance(0.125);

// clang-format off
const OffsetCase kOffsets[] = {
    {"FarOnX", {pline({{1e9, 0, 0}})}, k32, {1e9, 0, 0}},
    {"FarOnY", {pline({{0, 1e9, 0}})}, k32, {0, 1e9, 0}},
    {"FarOnZ", {pline({{0, 0, 1e9}})}, k32, {0, 0, 1e9}},
    {"FarBelowX", {pline({{-1e9, 0, 0}})}, k32, {-1e9, 0, 0}},
    {"FarBelowY", {pline({{0, -1e9, 0}})}, k32, {0, -1e9, 0}},
    {"FarBelowZ", {pline({{0, 0, -1e9}})}, k32, {0, 0, -1e9}},
    {"ToWholeNumbers", {pline({{1e9 + 0.4, 1e9 + 0.6, -1e9 - 0.6}})}, k32, {1e9, 1e9 + 1, -1e9 - 1}},
    // 2^23 / 4 * 2^-3 is 262144.
    {"AtTheBound", {pline({{262142, 0, 0}, {262144, 0, 0}})}, kEighth, {}},
    {"PastTheBound", {pline({{262143, 0, 0}, {262145, 0, 0}})}, kEighth, {262144, 0, 0}},
    // The furthest is four times half the size, and a little less.
    {"JustNearerOnX", {pline({{5e5, 0, 0}, {1e6, 0, 0}})}, kEighth, {7.5e5, 0, 0}},
    {"JustNearerOnY", {pline({{0, 5e5, 0}, {0, 1e6, 0}})}, kEighth, {0, 7.5e5, 0}},
    {"JustNearerOnZ", {pline({{0, 0, 5e5}, {0, 0, 1e6}})}, kEighth, {0, 0, 7.5e5}},
    {"NotNearerOnX", {pline({{499999, 0, 0}, {1e6, 0, 0}})}, kEighth, {}},
    {"NotNearerOnY", {pline({{0, 499999, 0}, {0, 1e6, 0}})}, kEighth, {}},
    {"NotNearerOnZ", {pline({{0, 0, 499999}, {0, 0, 1e6}})}, kEighth, {}},
    // Without round shapes the size counts: 8 * (1 - cos(pi / 32)) is 0.0385, and 2^21
    // of that are 80782. Half of the diagonal of 16 is 8.
    {"AtTheBoundOfItsSize", {pline({{80700, 0, 0}, {80716, 0, 0}})}, k32, {}},
    {"PastTheBoundOfItsSize", {pline({{80800, 0, 0}, {80816, 0, 0}})}, k32, {80808, 0, 0}},
    // A pipe of 25 asks for 0.12, which is kept up to 252000; one of 100000 for 481.
    {"APipeCounts", {box(kX, kY, kZ), upright(25)}, k32, {}},
    {"APipeCountsBesideALargeBox", {std::make_shared<Box>(GeVector(0, 0, 1e6), GeVector(1e5, 0, 1e6), GeVector(0, 1e5, 1e6), GeVector(0, 0, 1.1e6)), cyl({0, 5e4, 1e6}, {0, 5e4, 1.1e6}, 50)}, k32, {49988, 5e4, 1.05e6}},
    {"MostPipesAreThin", {upright(25), upright(1e5), upright(25)}, k32, {0, 0, 1e6 + 50}},
    {"MostPipesAreWide", {upright(1e5), upright(25), upright(1e5)}, k32, {}},
};
// clang-format on

class OffsetsTest : public testing::TestWithParam<OffsetCase> {};

TEST_P(OffsetsTest, IsOfUse) {
  EXPECT_EQ(sceneOf(GetParam().geos, GetParam().fineness).offset, GetParam().offset);
}

INSTANTIATE_TEST_SUITE_P(Offsets, OffsetsTest, testing::ValuesIn(kOffsets),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace VeskTest
