// SPDX-License-Identifier: MIT
#include "distance/Body.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <ostream>
#include <vector>

#include "distance/Tubes.h"
#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/GeConstants.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/Red.h"
#include "vesk/Relb.h"
#include "vesk/Torus.h"
#include "vesk/Txt.h"

namespace VeskTest {
namespace {

using namespace Vesk;
using Shape = std::shared_ptr<Geo>;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
const double kRoot2 = std::sqrt(2.0);
const double kRoot5 = std::sqrt(5.0);

Shape pipe(const GeVector& from, const GeVector& to, double d) {
  return std::make_shared<Cyl>(from, to, d);
}
Shape cone(const GeVector& from, const GeVector& to, double d1, double d2) {
  return std::make_shared<Cone>(from, to, d1, d2);
}
Shape bend(const GeVector& centre, const GeVector& from, const GeVector& to, double d) {
  return std::make_shared<Torus>(centre, from, to, d);
}
Shape box(const GeVector& at, const GeVector& x, const GeVector& y, const GeVector& z) {
  return std::make_shared<Box>(at, at + x, at + y, at + z);
}
Shape cube(const GeVector& at, double size) {
  return box(at, {size, 0, 0}, {0, size, 0}, {0, 0, size});
}
Shape duct(const GePoint& centre, const GeVector& start, const GeVector& end, double depth,
           double width) {
  auto relb = std::make_shared<Relb>();
  relb->centre = centre;
  relb->startVector = start;
  relb->endVector = end;
  relb->depth = depth;
  relb->width = width;
  return relb;
}
// A cube about the origin, its upper end turned by 30 degrees.
Shape twisted(double size = 40) {
  const double half = size / 2;
  std::array<GeVector, 8> c;
  for (unsigned k = 0; k < 8; ++k) {
    const double x = (k & 1U) != 0 ? half : -half;
    const double y = (k & 2U) != 0 ? half : -half;
    const double s = k < 4 ? 0.0 : 0.5;
    const double t = std::sqrt(1 - s * s);
    c[k] = {x * t - y * s, x * s + y * t, k < 4 ? -half : half};
  }
  return std::make_shared<Red>(c);
}
// From z = -20 to 20, with these x and y of the four corners of either end.
Shape reducer(const std::array<std::array<double, 2>, 4>& lower,
              const std::array<std::array<double, 2>, 4>& upper) {
  std::array<GeVector, 8> c;
  for (std::size_t k = 0; k < 4; ++k) {
    c[k] = {lower[k][0], lower[k][1], -20};
    c[k + 4] = {upper[k][0], upper[k][1], 20};
  }
  return std::make_shared<Red>(c);
}
using Corners = std::array<std::array<double, 2>, 4>;
constexpr Corners kSquare = {{{-20, -20}, {20, -20}, {-20, 20}, {20, 20}}};
constexpr Corners kTurnedByHalf = {{{20, 20}, {-20, 20}, {20, -20}, {-20, -20}}};
constexpr Corners kMirrored = {{{-20, 20}, {20, 20}, {-20, -20}, {20, -20}}};
constexpr Corners kRidge = {{{-20, 0}, {20, 0}, {-20, 0}, {20, 0}}};        // along x
constexpr Corners kFoldedRidge = {{{-20, 0}, {20, 0}, {20, 0}, {-20, 0}}};  // to and fro
constexpr Corners kDart = {{{-20, -20}, {20, -20}, {-20, 20}, {-5, -5}}};   // the last turns inward
Shape line(std::initializer_list<GePoint> points) { return std::make_shared<Pline>(points); }
Shape face(std::initializer_list<GePoint> points) { return std::make_shared<Pgon>(points); }
Shape label(const GePoint& at) {
  return std::make_shared<Txt>(at, GeVector(1, 0, 0), GeVector(0, 1, 0), 5, 10, 1, 0, "PUMP");
}

// clang-format off
const Shape kPipe = pipe({0, 0, 0}, {1000, 0, 0}, 100);
// A quarter bend in the xy plane about the origin, centre line radius 300.
const Shape kBend = bend({0, 0, 0}, {300, 0, 0}, {0, 300, 0}, 100);
const Shape kDuct = duct({0, 0, 0}, {300, 0, 0}, {0, 300, 0}, 100, 60);
// A triangle of a plane through (100, 0, 0), (0, 100, 0), (0, 0, 100).
const Shape kTriangle = face({{100, 0, 0}, {0, 100, 0}, {0, 0, 100}});

struct PointCase {
  const char* name;
  Shape shape;
  GePoint point;
  double distance;

  friend std::ostream& operator<<(std::ostream& os, const PointCase& each) { return os << each.name; }
};

const PointCase kPoints[] = {
    {"BesideAPipe", kPipe, {500, 0, 80}, 30},
    {"BehindItsFlatEnd", kPipe, {1020, 0, 40}, 20},
    {"OffItsRim", kPipe, {1030, 90, 0}, 50},                   // 30 along, 40 across
    {"InsideAPipe", kPipe, {500, 10, 10}, 0},
    {"OnItsSurface", kPipe, {500, 50, 0}, 0},
    {"PipeWithoutLengthIsItsStart", pipe({0, 0, 0}, {0, 0, 0}, 100), {0, 0, 80}, 80},
    {"PipeWithoutDiameterIsItsAxis", pipe({0, 0, 0}, {100, 0, 0}, 0), {50, 30, 40}, 50},
    {"DiameterBelowZeroCountsAbsolute", pipe({0, 0, 0}, {100, 0, 0}, -20), {50, 0, 30}, 20},
    {"BesideACone", cone({0, 0, 0}, {100, 0, 0}, 200, 0), {100, 100, 0}, 100 / kRoot2},  // to x + y = 100
    {"BeforeAConesTip", cone({0, 0, 0}, {100, 0, 0}, 200, 0), {130, 0, 0}, 30},
    {"BehindAConesBase", cone({0, 0, 0}, {100, 0, 0}, 200, 0), {-7, 60, 60}, 7},
    {"InsideABend", kBend, {300 / kRoot2, 300 / kRoot2, 20}, 0},
    {"OutsideABend", kBend, {400 / kRoot2, 400 / kRoot2, 0}, 50},
    {"AtTheCentreOfABend", kBend, {0, 0, 0}, 250},
    {"AboveABend", kBend, {300 / kRoot2, 300 / kRoot2, 90}, 40},
    {"BeforeABendsFlatStart", kBend, {320, -11, 10}, 11},
    {"BehindABendsFlatEnd", kBend, {-11, 280, 0}, 11},
    {"OffABendsRim", kBend, {380, -40, 0}, 50},                // 40 before, 30 outside
    {"HalfTurnHasNoPlane", bend({0, 0, 0}, {300, 0, 0}, {-300, 0, 0}, 100), {0, 0, 10}, 10},
    {"TubeWiderThanItsBend", bend({0, 0, 0}, {30, 0, 0}, {0, 30, 0}, 100), {90 / kRoot2, 90 / kRoot2, 0}, 10},
    {"InsideADuct", kDuct, {300 / kRoot2, 300 / kRoot2, 29}, 0},
    {"AboveADuct", kDuct, {340, 10, 50}, 20},
    {"OffADuctsEdge", kDuct, {380 / kRoot2, 380 / kRoot2, 70}, 50},  // 30 outside, 40 above
    {"OffABoxsCorner", cube({0, 0, 0}, 10), {12, 13, 16}, 7},        // 2, 3, 6
    {"InsideABox", cube({0, 0, 0}, 10), {5, 5, 5}, 0},
    // Its side is the plane y = x; 30 along x from the edge on z = 0 to 10.
    {"SkewBox", box({0, 0, 0}, {100, 0, 0}, {100, 100, 0}, {0, 0, 10}), {50, 80, 5}, 30 / kRoot2},
    {"FlatBoxIsItsFace", box({0, 0, 0}, {100, 0, 0}, {0, 100, 0}, {0, 0, 0}), {50, 50, 9}, 9},
    {"PointOfALine", line({{0, 0, 0}, {100, 0, 0}, {100, 100, 0}}), {130, 50, 40}, 50},
    {"SinglePoint", line({{1, 2, 3}}), {4, 6, 15}, 13},
    {"OffATriangle", kTriangle, {100, 100, 100}, 200 / std::sqrt(3.0)},  // x + y + z = 100 against 300
    // An L of three squares of 100; the inner corner is at (100, 100).
    {"InnerCornerOfAFace", face({{0, 0, 0}, {200, 0, 0}, {200, 100, 0}, {100, 100, 0}, {100, 200, 0}, {0, 200, 0}}),
     {130, 140, 0}, 30},
    {"FaceWithoutAreaIsItsEdges", face({{0, 0, 0}, {50, 0, 0}, {100, 0, 0}}), {70, 0, 5}, 5},
    // Its sides cross in the middle; the last goes back to its first corner.
    {"FaceThatCrossesItselfIsItsEdges", face({{0, 0, 0}, {100, 100, 0}, {100, 0, 0}, {0, 100, 0}}), {-10, 50, 0}, 10},
    {"FaceThatCrossesItselfIsOpen", face({{0, 0, 0}, {100, 100, 0}, {100, 0, 0}, {0, 100, 0}}), {110, 50, 0}, 10},
    {"TextIsItsPlace", label({10, 10, 10}), {10, 10, 25}, 15},
    // 25 off the middle of a side, square to it: 40 up while 20 inward.
    {"BesideAReducerToARidge", reducer(kSquare, kRidge), {0, 10 + 50 / kRoot5, 25 / kRoot5}, 25},
    {"AboveAReducerToARidge", reducer(kSquare, kRidge), {0, 0, 33}, 13},
    {"AboveAReducerToAFoldedRidge", reducer(kSquare, kFoldedRidge), {0, 0, 33}, 13},
    // Two pyramids whose tips meet at the origin, with sides on |x| = |z|.
    {"BesideAReducerTurnedByHalf", reducer(kSquare, kTurnedByHalf), {25, 0, 0}, 25 / kRoot2},
    {"InAReducerTurnedByHalf", reducer(kSquare, kTurnedByHalf), {5, 0, 15}, 0},
    // Two wedges whose edges meet in the x axis, with sides on |y| = |z|.
    {"BesideAMirroredReducer", reducer(kSquare, kMirrored), {0, 25, 0}, 25 / kRoot2},
    // Off the side from (20, -20) to (-5, -5): 5 * 25 + 5 * 15 by its length.
    {"InnerCornerOfAReducer", reducer(kDart, kDart), {0, 0, 0}, 200 / std::hypot(25, 15)},
};
// clang-format on

class PointDistance : public testing::TestWithParam<PointCase> {};

TEST_P(PointDistance, IsExact) {
  const std::optional<Body> body = Body::of(*GetParam().shape);
  ASSERT_TRUE(body);
  EXPECT_NEAR(distance(*body, GetParam().point), GetParam().distance, kDistanceError / 2);
}

// Millions of millimetres from the origin, as plants lie in their countries.
TEST_P(PointDistance, IsExactFarAway) {
  const GeVector far(6.7e6, 5.2e6, -1.1e6);
  if (GetParam().shape->typeCode() == Txt::kTypeCode) return;  // does not move
  const Shape shape = GetParam().shape;
  shape->move(far);
  const std::optional<Body> body = Body::of(*shape);
  shape->move(-far);
  ASSERT_TRUE(body);
  EXPECT_NEAR(distance(*body, GetParam().point + far), GetParam().distance, kDistanceError);
}

INSTANTIATE_TEST_SUITE_P(Of, PointDistance, testing::ValuesIn(kPoints),
                         [](const auto& each) { return each.param.name; });

struct GapCase {
  const char* name;
  Shape a;
  Shape b;
  double distance;

  friend std::ostream& operator<<(std::ostream& os, const GapCase& each) { return os << each.name; }
};

// clang-format off
const GapCase kGaps[] = {
    {"ParallelPipes", kPipe, pipe({0, 0, 200}, {1000, 0, 200}, 60), 120},
    {"CoaxialPipesEndToEnd", kPipe, pipe({1000, 0, 0}, {2000, 0, 0}, 100), 0},
    {"CoaxialPipesApart", kPipe, pipe({1000.5, 0, 0}, {2000, 0, 0}, 60), 0.5},
    {"CoaxialPipesOverlapping", kPipe, pipe({500, 0, 0}, {2000, 0, 0}, 60), 0},
    {"PipeInsideAPipe", kPipe, pipe({100, 0, 0}, {900, 0, 0}, 20), 0},
    {"CrossingPipes", kPipe, pipe({500, -500, 130}, {500, 500, 130}, 60), 50},
    {"TangentPipes", kPipe, pipe({500, -500, 80}, {500, 500, 80}, 60), 0},
    {"NearlyTangentPipes", kPipe, pipe({500, -500, 80.01}, {500, 500, 80.01}, 60), 0.01},
    {"SamePipe", kPipe, kPipe, 0},
    {"TeeOnTheSurface", kPipe, pipe({500, 0, 50.25}, {500, 0, 500}, 60), 0.25},
    // Rims: 30 along, and 130 - 50 - 40 = 40 across.
    {"RimToRim", kPipe, pipe({1030, 0, 130}, {2000, 0, 130}, 80), 50},
    {"PipeOnAPlate", kPipe, cube({0, -5000, -10056}, 10000), 6},
    {"PipeOverAnEdge", pipe({0, -100, 190}, {0, 190, -100}, 100), cube({-5000, -10000, -10000}, 10000), 90 / kRoot2 - 50},
    {"BoxCornerToCorner", cube({0, 0, 0}, 10), cube({12, 13, 16}, 10), 7},
    {"BoxInsideABox", cube({0, 0, 0}, 10), cube({4, 4, 4}, 1), 0},
    {"ConcentricBends", kBend, bend({0, 0, 0}, {500, 0, 0}, {0, 500, 0}, 60), 120},
    {"BendsOneAboveTheOther", kBend, bend({0, 0, 130}, {300, 0, 130}, {0, 300, 130}, 60), 50},
    {"SameBend", kBend, kBend, 0},
    {"BendOnItsPipe", kBend, pipe({300, 0, 0}, {300, -500, 0}, 100), 0},
    {"PipeInsideABend", kBend, pipe({0, 0, -500}, {0, 0, 500}, 100), 200},
    {"PipeOutsideABend", kBend, pipe({400, 400, -500}, {400, 400, 500}, 100), 400 * kRoot2 - 400},
    {"PipeTouchesABendAlongItsArc", kBend, pipe({0, 0, -20}, {0, 0, 90}, 500), 0},
    // From the middle of the section 50 across and 20 up.
    {"RimInsideABend", kBend, pipe({0, 0, 20}, {0, 0, 90}, 500), std::hypot(50, 20) - 50},
    {"LineThroughABend", kBend, line({{300 / kRoot2, 300 / kRoot2, -100}, {300 / kRoot2, 300 / kRoot2, 100}}), 0},
    {"DuctAndItsLining", kDuct, duct({0, 0, 0}, {300, 0, 0}, {0, 300, 0}, 90, 50), 0},
    {"DuctOnAPlate", kDuct, cube({0, 0, -1035}, 1000), 5},
    {"TriangleAndPipe", kTriangle, pipe({100, 100, 100}, {200, 200, 200}, 10), 200 / std::sqrt(3.0)},
    {"TextInAPipe", label({500, 0, 0}), kPipe, 0},
    {"PipesWithoutDiameter", pipe({0, 0, 0}, {100, 0, 0}, 0), pipe({50, -50, 30}, {50, 50, 30}, 0), 30},
    {"PipeThroughTheSidesOfATwistedReducer", pipe({-100, 0, 0}, {100, 0, 0}, 10), twisted(), 0},
    {"CubeInATwistedReducer", cube({-1, -1, -1}, 2), twisted(), 0},
    {"BendInATwistedReducer", bend({0, 0, 0}, {5, 0, 0}, {0, 5, 0}, 2), twisted(), 0},
    {"TwistedReducerInATwistedReducer", twisted(10), twisted(), 0},
    {"PinOverAWholePlant", pipe({0, 0, 0}, {0, 0, 2}, 2), cube({-1e6, -1e6, -2e6 - 7}, 2e6), 7},
    {"PinOverAWholePlantOffItsMiddle", pipe({0, 0, 0}, {0, 0, 2}, 2), cube({-1.5e6, -1.15e6, -2e6 - 7}, 2e6), 7},
    {"HugeAndSmall", cube({-1e9, -1e9, -2e9}, 1e9), cube({-5e8, -5e8, -1e9 + 7}, 1), 7},
    {"HugeBend", bend({0, 0, 0}, {1e7, 0, 0}, {0, 1e7, 0}, 1e6), pipe({0, 0, 0}, {0, 0, 100}, 100), 9.5e6 - 50},
};
// clang-format on

class BodyGap : public testing::TestWithParam<GapCase> {};

TEST_P(BodyGap, IsExactBothWays) {
  const std::optional<Body> a = Body::of(*GetParam().a);
  const std::optional<Body> b = Body::of(*GetParam().b);
  ASSERT_TRUE(a && b);
  const double error = kDistanceError + 1e-8 * std::max(a->box().max.x, b->box().max.x);
  EXPECT_NEAR(gapOf(*a, *b).distance, GetParam().distance, error);
  EXPECT_NEAR(gapOf(*b, *a).distance, GetParam().distance, error);
}

TEST_P(BodyGap, IsExactFarAway) {
  const GeVector far(6.7e6, 5.2e6, -1.1e6);
  if (GetParam().a->typeCode() == Txt::kTypeCode) return;
  GetParam().a->move(far);
  if (GetParam().a != GetParam().b) GetParam().b->move(far);
  const std::optional<Body> a = Body::of(*GetParam().a);
  const std::optional<Body> b = Body::of(*GetParam().b);
  GetParam().a->move(-far);
  if (GetParam().a != GetParam().b) GetParam().b->move(-far);
  ASSERT_TRUE(a && b);
  const double error = kDistanceError + 1e-8 * std::max(a->box().max.x, b->box().max.x);
  EXPECT_NEAR(gapOf(*a, *b).distance, GetParam().distance, error);
}

INSTANTIATE_TEST_SUITE_P(Of, BodyGap, testing::ValuesIn(kGaps),
                         [](const auto& each) { return each.param.name; });

struct TubesCase {
  const char* name;
  Shape a;
  Shape b;
  double limit;
  double meeting;
  std::optional<double> distance;  // nothing where the centre lines do not tell

  friend std::ostream& operator<<(std::ostream& os, const TubesCase& each) {
    return os << each.name;
  }
};

// clang-format off
// As kBend, 200 further out: 500 - 300 - 50 - 30 between the surfaces, everywhere.
const Shape kOuterBend = bend({0, 0, 0}, {500, 0, 0}, {0, 500, 0}, 60);

const TubesCase kTubes[] = {
    {"ConcentricBends", kBend, kOuterBend, kInf, 0.001, 120},
    // 600 - 300 - 50 - 10, at 20 degrees of the bend's 90
    {"PipeOffTheMiddleOfABend", kBend, pipe({600 * std::cos(kPi / 9), 600 * std::sin(kPi / 9), -470}, {600 * std::cos(kPi / 9), 600 * std::sin(kPi / 9), 500}, 20), kInf, 0.001, 240},
    {"BoundsThatWouldNeedMillionsOfPieces", kBend, kOuterBend, kInf, 1e-9, std::nullopt},
    {"AboveTheLimit", kBend, kOuterBend, 100, 0.001, kInf},
    {"PipesAboveTheLimit", kPipe, pipe({0, 0, 200}, {1000, 0, 200}, 60), 100, 0.001, kInf},
    {"ShortestWayFromAFlatEnd", kPipe, pipe({1030, 0, 130}, {2000, 0, 130}, 80), kInf, 0.001, std::nullopt},
    {"ADuctIsNoTube", kDuct, kPipe, kInf, 0.001, std::nullopt},
    {"AConeIsNoTube", kPipe, cone({0, 0, 0}, {100, 0, 0}, 200, 0), kInf, 0.001, std::nullopt},
    {"ALineOfTwoPiecesIsNoTube", kPipe, line({{0, 0, 0}, {100, 0, 0}, {100, 100, 0}}), kInf, 0.001, std::nullopt},
};
// clang-format on

class TubeGap : public testing::TestWithParam<TubesCase> {};

TEST_P(TubeGap, IsToldByTheCentreLinesOrNotAtAll) {
  const std::optional<Body> a = Body::of(*GetParam().a);
  const std::optional<Body> b = Body::of(*GetParam().b);
  ASSERT_TRUE(a && b);
  const std::optional<Gap> gap = gapOfTubes(*a, *b, GetParam().limit, GetParam().meeting);
  ASSERT_EQ(gap.has_value(), GetParam().distance.has_value());
  if (!gap) return;
  if (std::isinf(*GetParam().distance)) {
    EXPECT_EQ(gap->distance, kInf);
  } else {
    EXPECT_NEAR(gap->distance, *GetParam().distance, GetParam().meeting);
  }
}

INSTANTIATE_TEST_SUITE_P(Of, TubeGap, testing::ValuesIn(kTubes),
                         [](const auto& each) { return each.param.name; });

struct BoxCase {
  const char* name;
  Shape shape;
  Extents box;
  bool touches;

  friend std::ostream& operator<<(std::ostream& os, const BoxCase& each) { return os << each.name; }
};

// A pipe along the diagonal of the xy plane: what lies beside it is in its own box.
const Shape kDiagonal = pipe({0, 0, 0}, {1000, 1000, 0}, 100);

// clang-format off
const BoxCase kBoxes[] = {
    {"DiagonalPipeOnly", kDiagonal, {{400, 400, -10}, {600, 600, 10}}, true},
    {"NotTheBoxOfADiagonalPipe", kDiagonal, {{0, 800, -10}, {100, 1000, 10}}, false},
    // Its corner (400, 480) is 80 / root 2 = 56.57 off the axis, radius 50.
    {"BesideADiagonalPipe", kDiagonal, {{300, 480, 0}, {400, 500, 0}}, false},
    // (400, 470): 70 / root 2 = 49.497
    {"CornerInADiagonalPipe", kDiagonal, {{300, 470, 0}, {400, 500, 0}}, true},
    {"InsideThePipe", kDiagonal, {{500, 500, 0}, {501, 501, 1}}, true},
    {"AroundThePipe", kDiagonal, {{-1e6, -1e6, -1e6}, {1e6, 1e6, 1e6}}, true},
    {"OnTheSurface", kPipe, {{0, 0, 50}, {1000, 10, 60}}, true},
    {"AThousandthOff", kPipe, {{0, 0, 50.001}, {1000, 10, 60}}, false},
    {"InTheMiddleOfABend", kBend, {{-10, -10, -10}, {240 / kRoot2, 240 / kRoot2, 10}}, false},
    {"AtTheInnerSideOfABend", kBend, {{-10, -10, -10}, {251 / kRoot2, 251 / kRoot2, 10}}, true},
    {"BeyondTheOuterSideOfABend", kBend, {{351 / kRoot2, 351 / kRoot2, -10}, {400, 400, 10}}, false},
    {"BesideATriangle", kTriangle, {{40, 40, 40}, {90, 90, 90}}, false},
    {"ThroughATriangle", kTriangle, {{30, 30, 30}, {90, 90, 90}}, true},
    {"BesideADiagonalLine", line({{0, 0, 0}, {100, 100, 100}}), {{0, 60, 0}, {30, 100, 100}}, false},
    {"FlatBoxThroughAPipe", kPipe, {{-10, -100, 5}, {2000, 100, 5}}, true},
    {"PointBoxOfAText", label({10, 10, 10}), {{10, 10, 10}, {10, 10, 10}}, true},
    {"LettersDontCount", label({10, 10, 10}), {{15, 10, 10}, {20, 20, 20}}, false},
};
// clang-format on

class BoxTouch : public testing::TestWithParam<BoxCase> {};

TEST_P(BoxTouch, IsThatOfTheTrueShape) {
  const std::optional<Body> body = Body::of(*GetParam().shape);
  ASSERT_TRUE(body);
  EXPECT_EQ(touches(*body, GetParam().box), GetParam().touches);
}

INSTANTIATE_TEST_SUITE_P(Of, BoxTouch, testing::ValuesIn(kBoxes),
                         [](const auto& each) { return each.param.name; });

struct NoBodyCase {
  const char* name;
  Shape shape;

  friend std::ostream& operator<<(std::ostream& os, const NoBodyCase& each) {
    return os << each.name;
  }
};

// clang-format off
const NoBodyCase kNoBodies[] = {
    {"PipeWithANan", pipe({0, 0, 0}, {kNan, 0, 0}, 10)},
    {"PipeOfInfiniteDiameter", pipe({0, 0, 0}, {10, 0, 0}, kInf)},
    {"ConeWithANan", cone({0, 0, 0}, {10, 0, 0}, 10, kNan)},
    {"BendInfinitelyFar", bend({kInf, 0, 0}, {kInf, 0, 0}, {0, 10, 0}, 10)},
    {"BoxBeyondATrillion", cube({0, 0, 0}, 1e13)},
    {"DuctWithANan", duct({0, 0, 0}, {10, 0, 0}, {0, 10, 0}, kNan, 5)},
    {"PipeFromNowhere", pipe({kNan, 0, 0}, {10, 0, 0}, 10)},
    {"ConeOfInfiniteDiameter", cone({0, 0, 0}, {10, 0, 0}, kInf, 10)},
    {"BendStartingNowhere", bend({0, 0, 0}, {kNan, 0, 0}, {0, 10, 0}, 10)},
    {"BendEndingNowhere", bend({0, 0, 0}, {10, 0, 0}, {0, kNan, 0}, 10)},
    {"BendOfInfiniteDiameter", bend({0, 0, 0}, {10, 0, 0}, {0, 10, 0}, kInf)},
    {"DuctOfInfiniteWidth", duct({0, 0, 0}, {10, 0, 0}, {0, 10, 0}, 5, kInf)},
    {"BoxNowhere", box({kNan, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1})},
    {"BoxOfInfiniteWidth", box({0, 0, 0}, {1, 0, 0}, {0, kInf, 0}, {0, 0, 1})},
    {"BoxOfInfiniteHeight", box({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, kInf})},
    {"ReducerWithANan", reducer(kSquare, {{{kNan, 0}, {1, 0}, {0, 1}, {1, 1}}})},
    {"ReducerNowhere", reducer({{{kInf, 0}, {1, 0}, {0, 1}, {1, 1}}}, kSquare)},
    {"FaceBeyondATrillion", face({{0, 0, 0}, {1e13, 0, 0}, {0, 1e13, 0}})},
    {"LineWithoutPoints", line({})},
    {"LineWithANan", line({{0, 0, 0}, {0, kNan, 0}})},
    {"FaceWithoutPoints", face({})},
    {"FaceWithANan", face({{0, 0, 0}, {10, 0, 0}, {0, kNan, 0}})},
    {"TextNowhere", label({kNan, 0, 0})},
};
// clang-format on

class NoBody : public testing::TestWithParam<NoBodyCase> {};

TEST_P(NoBody, IsNowhere) { EXPECT_FALSE(Body::of(*GetParam().shape)); }

INSTANTIATE_TEST_SUITE_P(Of, NoBody, testing::ValuesIn(kNoBodies),
                         [](const auto& each) { return each.param.name; });

struct DepthCase {
  const char* name;
  Shape a;
  Shape b;
  double depth;

  friend std::ostream& operator<<(std::ostream& os, const DepthCase& each) {
    return os << each.name;
  }
};

// clang-format off
const DepthCase kDepths[] = {
    {"Apart", kPipe, pipe({0, 0, 200}, {1000, 0, 200}, 60), 0},
    {"ParallelPipes", kPipe, pipe({0, 0, 70}, {1000, 0, 70}, 60), 10},    // 50 + 30 - 70
    {"CrossingPipes", kPipe, pipe({500, -500, 70}, {500, 500, 70}, 60), 10},
    {"CrossingAxes", kPipe, pipe({500, -500, 0}, {500, 500, 0}, 60), 80},
    {"BoxesByTheirShortestWay", cube({0, 0, 0}, 100), cube({60, 90, 30}, 100), 10},
    {"BendThroughAPlate", kBend, cube({0, 0, -1030}, 1000), 20},   // from -50 to -30
    {"EndToEnd", kPipe, pipe({1000, 0, 0}, {2000, 0, 0}, 100), 0},
    {"GrazingABend", kBend, pipe({349.5, 349.5, 0}, {600, 600, 0}, 20), 0},
    {"FacesInOnePlane", face({{0, 0, 0}, {100, 0, 0}, {0, 100, 0}}), face({{10, 10, 0}, {90, 10, 0}, {10, 90, 0}}), 0},
    {"LinesAlongEachOther", line({{0, 0, 0}, {100, 0, 0}}), line({{50, 0, 0}, {150, 0, 0}}), 0},
    {"TextsInOnePlace", label({10, 10, 10}), label({10, 10, 10}), 0},
    {"ApartFromATwistedReducer", cube({100, 100, 100}, 10), twisted(), 0},
    // Its lower end reaches to 20, its upper to 20 * (sin 30 + cos 30) = 27.3.
    {"BesideATwistedReducer", cube({22, 22, -19}, 1), twisted(), 0},
    {"GrazingABendByALittle", kBend, pipe({0, 0, 79.6}, {1000, 1000, 79.6}, 60), 0.4},
    {"OverlapOfEnds", kPipe, pipe({995, 0, 0}, {2000, 0, 0}, 100), 5},
};
// clang-format on

class DepthOf : public testing::TestWithParam<DepthCase> {};

TEST_P(DepthOf, IsALowerBoundWithinOne) {
  const std::optional<Body> a = Body::of(*GetParam().a);
  const std::optional<Body> b = Body::of(*GetParam().b);
  ASSERT_TRUE(a && b);
  for (const double depth : {depthOf(*a, *b), depthOf(*b, *a)}) {
    EXPECT_LE(depth, GetParam().depth + kDistanceError);
    EXPECT_GE(depth, GetParam().depth - 1.0);
  }
}

TEST_P(DepthOf, IsMeasuredUntilItIsEnough) {
  const std::optional<Body> a = Body::of(*GetParam().a);
  const std::optional<Body> b = Body::of(*GetParam().b);
  ASSERT_TRUE(a && b);
  EXPECT_EQ(depthOf(*a, *b, 0.1) > 0.1, GetParam().depth > 0.1);
  EXPECT_LE(depthOf(*a, *b, 0.1), GetParam().depth + kDistanceError);
}

// Short of what would be enough it is as exact as without a limit.
TEST_P(DepthOf, IsMeasuredUpToWhatIsEnough) {
  const std::optional<Body> a = Body::of(*GetParam().a);
  const std::optional<Body> b = Body::of(*GetParam().b);
  ASSERT_TRUE(a && b);
  if (GetParam().depth < 1) return;
  EXPECT_GE(depthOf(*a, *b, GetParam().depth * 1.2), GetParam().depth - 1.0);
  EXPECT_GE(depthOf(*b, *a, GetParam().depth * 1.2), GetParam().depth - 1.0);
}

// The point that an overlap is named by is in both.
TEST_P(DepthOf, HasAPlaceInBoth) {
  const std::optional<Body> a = Body::of(*GetParam().a);
  const std::optional<Body> b = Body::of(*GetParam().b);
  ASSERT_TRUE(a && b);
  const Gap gap = gapOf(*a, *b);
  if (gap.distance > 0.0) return;
  EXPECT_LE(distance(*a, gap.onA), kDistanceError);
  EXPECT_LE(distance(*b, gap.onA), kDistanceError);
}

// Its nearest face is 20 away from the middle of the solid.
TEST(Depth, OfABodyInsideATwistedReducerIsBoundByItsFaces) {
  const std::optional<Body> a = Body::of(*cube({-1, -1, -1}, 2));
  const std::optional<Body> b = Body::of(*twisted());
  ASSERT_TRUE(a && b);
  EXPECT_GT(depthOf(*a, *b), 10);
  EXPECT_LT(depthOf(*b, *a), 21);
  EXPECT_EQ(gapOf(*a, *b).distance, 0.0);
}

INSTANTIATE_TEST_SUITE_P(Two, DepthOf, testing::ValuesIn(kDepths),
                         [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace VeskTest
