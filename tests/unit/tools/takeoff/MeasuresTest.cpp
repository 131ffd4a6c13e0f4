// SPDX-License-Identifier: MIT
#include "takeoff/Measures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <ostream>
#include <string>

#include "takeoff/Walls.h"
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

using namespace VeskTool;
using std::numbers::pi;

using Element = std::shared_ptr<Vesk::Geo>;

constexpr double kRelative = 1e-9;

Element pipe(double diameter, double length) {
  return std::make_shared<Vesk::Cyl>(GeVector(0, 0, 0), GeVector(0, 0, length), diameter);
}

Element cone(double diameter1, double diameter2, double length) {
  return std::make_shared<Vesk::Cone>(GeVector(0, 0, 0), GeVector(0, 0, length), diameter1,
                                      diameter2);
}

Element bend(const GeVector& start, const GeVector& end, double diameter) {
  return std::make_shared<Vesk::Torus>(GeVector(0, 0, 0), start, end, diameter);
}

Element box(const GeVector& a, const GeVector& b, const GeVector& c) {
  return std::make_shared<Vesk::Box>(GeVector(0, 0, 0), a, b, c);
}

Element duct(const GeVector& start, const GeVector& end, double width, double depth) {
  auto made = std::make_shared<Vesk::Relb>();
  made->startVector = start;
  made->endVector = end;
  made->width = width;
  made->depth = depth;
  return made;
}

// Corners 0 to 3 on z = 0, 4 to 7 on z = height, of a square with this side; the upper one is
// smaller by the factor and turned by the angle.
Element reducer(double side, double height, double factor, double angle) {
  std::array<GeVector, 8> corners;
  for (int k = 0; k < 8; ++k) {
    const double size = (k < 4 ? 1.0 : factor) * side / 2.0;
    const double x = (k & 1) != 0 ? size : -size;
    const double y = (k & 2) != 0 ? size : -size;
    const double turn = k < 4 ? 0.0 : angle;
    corners[static_cast<std::size_t>(k)] =
        GeVector(x * std::cos(turn) - y * std::sin(turn), x * std::sin(turn) + y * std::cos(turn),
                 k < 4 ? 0.0 : height);
  }
  return std::make_shared<Vesk::Red>(corners);
}

Element line(std::initializer_list<GePoint> points) {
  return std::make_shared<Vesk::Pline>(points);
}

Element face(std::initializer_list<GePoint> points) {
  auto made = std::make_shared<Vesk::Pgon>();
  for (const GePoint& point : points) {
    Vesk::PgonVertex vertex;
    vertex.point = point;
    made->vertices.push_back(vertex);
  }
  return made;
}

struct MeasureCase {
  const char* name;
  Element element;
  double length, surface, volume;  // metres, of millimetres
  const char* said = "";           // part of what is said

  friend std::ostream& operator<<(std::ostream& os, const MeasureCase& each) {
    return os << each.name;
  }
};

const double kRoot2 = std::sqrt(2.0);

// clang-format off
const MeasureCase kMeasures[] = {
    {"Pipe", pipe(200, 3000), 3, pi * 0.2 * 3, pi * 0.01 * 3},
    {"Cone", cone(200, 80, 80), 0.08, pi * 0.14 * 0.1, pi / 3 * (0.01 + 0.004 + 0.0016) * 0.08},
    {"Bend", bend({300, 0, 0}, {0, 300, 0}, 100), pi / 2 * 0.3, pi * 0.1 * pi / 2 * 0.3,
     pi * 0.0025 * pi / 2 * 0.3},
    {"BendOfHalfATurn", bend({300, 0, 0}, {-300, 0, 0}, 100), pi * 0.3, pi * 0.1 * pi * 0.3,
     pi * 0.0025 * pi * 0.3},
    {"DuctElbow", duct({500, 0, 0}, {0, 500, 0}, 400, 300), pi / 2 * 0.5, 1.4 * pi / 2 * 0.5,
     0.12 * pi / 2 * 0.5},
    {"Box", box({1000, 0, 0}, {0, 500, 0}, {0, 0, 200}), 1, 1.6, 0.1},
    // The edge (0, 200, 200) leans by an eighth of a turn: 1 * 0.5 * 0.2, which is 1 / sqrt(2) of
    // the product of the edges. Faces: 1 * 0.5, 0.5 * 0.2, 1 * 0.2 sqrt(2), twice each.
    {"ObliqueBox", box({1000, 0, 0}, {0, 500, 0}, {0, 200, 200}), 1,
     2 * (0.5 + 0.1 + 0.2 * kRoot2), 0.1, "oblique box"},
    // Leaning by 50 on 200 it has 200 / sqrt(200^2 + 50^2) = 0.97 of the product.
    {"SlightlyObliqueBox", box({1000, 0, 0}, {0, 500, 0}, {0, 50, 200}), 1,
     2 * (0.5 + 0.1 + std::hypot(0.2, 0.05)), 0.1, "oblique box"},
    // By 2 on 200 it has 0.99995 of it.
    {"HardlyObliqueBox", box({1000, 0, 0}, {0, 500, 0}, {0, 2, 200}), 1,
     2 * (0.5 + 0.1 + std::hypot(0.2, 0.002)), 0.1},
    {"BoxInsideOut", box({0, 500, 0}, {1000, 0, 0}, {0, 0, 200}), 1, 1.6, 0.1},
    // A frustum: h / 3 (A + sqrt(A B) + B); the sides are trapezia of the height
    // sqrt(0.3^2 + 0.05^2).
    {"Reducer", reducer(200, 300, 0.5, 0), 0, 0.04 + 0.01 + 4 * 0.15 * std::sqrt(0.0925),
     0.1 * (0.04 + 0.02 + 0.01)},
    {"ReducerWithItsEndsExchanged", reducer(200, -300, 0.5, 0), 0,
     0.04 + 0.01 + 4 * 0.15 * std::sqrt(0.0925), 0.1 * (0.04 + 0.02 + 0.01), "ends swapped"},
    // Each section of the height s is a square between both: its side squared is 0.04 times
    // (1 - s)^2 + s^2 + 2 s (1 - s) cos 45, of which the mean is (2 + cos 45) / 3. A side by Gauss's
    // rule in Python.
    {"ReducerTurnedByAnEighth", reducer(200, 300, 1, pi / 4), 0, 0.3106193448604964,
     0.3 * 0.04 * (2 + 1 / kRoot2) / 3},
    {"Triangle", face({{0, 0, 0}, {400, 0, 0}, {0, 300, 0}}), 0, 0.06, 0},
    // By the same rule as in the test of the faces.
    {"WarpedQuadrangle", face({{0, 0, 0}, {1000, 0, 0}, {1000, 600, 250}, {0, 600, 0}}), 0,
     0.622963883549838, 0},
    {"LShapedPolygon",
     face({{0, 0, 0}, {200, 0, 0}, {200, 100, 0}, {100, 100, 0}, {100, 200, 0}, {0, 200, 0}}), 0,
     0.03, 0},
    {"Text", std::make_shared<Vesk::Txt>(), 0, 0, 0},
    {"PipeBelowZero", pipe(-200, 3000), 0, 0, 0, "diameter below zero"},
    {"PipeWithoutLength", pipe(200, 0), 0, 0, 0, "length of zero"},
    {"BendWithoutAngle", bend({300, 0, 0}, {300, 0, 0}, 100), 0, 0, 0, "in one line"},
    {"BendTooWide", bend({30, 0, 0}, {0, 30, 0}, 100), 0, 0, 0, "wider than its bend"},
    {"FlatBox", box({1000, 0, 0}, {0, 500, 0}, {1000, 500, 0}), 0, 0, 0, "in one plane"},
    {"PipeOfNan", pipe(std::nan(""), 3000), 0, 0, 0, "NaN"},
};
// clang-format on

class MeasuresTest : public testing::TestWithParam<MeasureCase> {};

TEST_P(MeasuresTest, AreThoseOfTheBodyThatIsDrawn) {
  const MeasureCase& each = GetParam();
  const Measures measures = measure(*each.element, 1e-3);
  EXPECT_NEAR(measures.length, each.length, kRelative * each.length);
  EXPECT_NEAR(measures.surface, each.surface, kRelative * each.surface);
  EXPECT_NEAR(measures.volume, each.volume, kRelative * each.volume);
  EXPECT_EQ(measures.lines, 0.0);
  const std::string said = measures.fault + measures.remark;
  EXPECT_EQ(said.empty(), std::string(each.said).empty()) << said;
  EXPECT_NE(said.find(each.said), std::string::npos) << said;
}

// In metres, the same element has a thousandth of the numbers.
TEST_P(MeasuresTest, GoByTheUnit) {
  const MeasureCase& each = GetParam();
  const Measures ofMillimetres = measure(*each.element, 1e-3);
  each.element->scale(1e-3);
  const Measures ofMetres = measure(*each.element, 1.0);
  each.element->scale(1e3);
  EXPECT_NEAR(ofMetres.volume, ofMillimetres.volume, kRelative * each.volume);
  EXPECT_NEAR(ofMetres.surface, ofMillimetres.surface, kRelative * each.surface);
  EXPECT_FALSE(ofMetres.size < ofMillimetres.size);
  EXPECT_FALSE(ofMillimetres.size < ofMetres.size);
}

INSTANTIATE_TEST_SUITE_P(Elements, MeasuresTest, testing::ValuesIn(kMeasures),
                         [](const auto& each) { return each.param.name; });

// 3, 4, 5 and 12: 5 + 12.
TEST(Measures, OfLinesAreTheirLengths) {
  EXPECT_DOUBLE_EQ(measure(*line({{0, 0, 0}, {3, 4, 0}}), 1.0).lines, 5.0);
  EXPECT_DOUBLE_EQ(measure(*line({{0, 0, 0}, {3, 4, 0}, {3, 4, 12}}), 1.0).lines, 17.0);
  EXPECT_EQ(measure(*line({{0, 0, 0}}), 1.0).lines, 0.0);
  EXPECT_EQ(measure(*line({{0, 0, 0}, {3, 4, 0}}), 1.0).length, 0.0);
}

TEST(Sizes, OfAConeDoNotTellItsDirection) {
  const Size one = measure(*cone(200, 80, 80), 1e-3).size;
  const Size other = measure(*cone(80, 200, 80), 1e-3).size;
  EXPECT_EQ(one.diameter1, 200.0);
  EXPECT_EQ(one.diameter2, 80.0);
  EXPECT_FALSE(one < other || other < one);
}

TEST(Sizes, OfBendsTellTheirRadii) {
  const Size one = measure(*bend({150, 0, 0}, {0, 150, 0}, 100), 1e-3).size;
  const Size other = measure(*bend({500, 0, 0}, {0, 500, 0}, 100), 1e-3).size;
  EXPECT_EQ(one.radius, 150.0);
  EXPECT_EQ(one.angle, 90.0);
  EXPECT_TRUE(one < other);
}

TEST(Sizes, OfABoxAreTheSectionOfADuctAlongItsLongestEdge) {
  const Size size = measure(*box({0, 0, 200}, {1000, 0, 0}, {0, 500, 0}), 1e-3).size;
  EXPECT_EQ(size.width, 500.0);
  EXPECT_EQ(size.depth, 200.0);
}

// 114.3 x 6.02 x 1 m: pi * 0.10828 * 0.00602 of steel, pi / 4 * 0.10226^2 inside.
TEST(Hollow, PipeHasARingOfSteel) {
  const Hollow hollow = hollowOf(measure(*pipe(114.3, 1000), 1e-3), {6.02, 6.02});
  EXPECT_NEAR(hollow.steel, pi * 0.10828 * 0.00602, 1e-15);
  EXPECT_NEAR(hollow.content, pi / 4 * 0.10226 * 0.10226, 1e-15);
}

// Inside 100 and 60 in place of 112 and 68: pi / 12 * 0.1 * (the sums of squares and product).
TEST(Hollow, ConeIsTheDifferenceOfTwoCones) {
  const Hollow hollow = hollowOf(measure(*cone(112, 68, 100), 1e-3), {6, 4});
  const double inside = pi / 12 * 0.1 * (0.01 + 0.006 + 0.0036);
  const double outside = pi / 12 * 0.1 * (0.112 * 0.112 + 0.112 * 0.068 + 0.068 * 0.068);
  EXPECT_NEAR(hollow.content, inside, 1e-15);
  EXPECT_NEAR(hollow.steel, outside - inside, 1e-15);
}

// 2 m of 400 x 300 of 1 mm: 0.12 - 0.398 * 0.298 of steel in the section.
TEST(Hollow, DuctHasASheetAround) {
  const Hollow hollow =
      hollowOf(measure(*box({2000, 0, 0}, {0, 400, 0}, {0, 0, 300}), 1e-3), {1, 1});
  EXPECT_NEAR(hollow.content, 0.398 * 0.298 * 2, 1e-15);
  EXPECT_NEAR(hollow.steel, (0.12 - 0.398 * 0.298) * 2, 1e-15);
}

TEST(Hollow, NothingWithoutAWall) {
  const Hollow hollow = hollowOf(measure(*pipe(114.3, 1000), 1e-3), {0, 0});
  EXPECT_EQ(hollow.steel, 0.0);
  EXPECT_EQ(hollow.content, 0.0);
}

// 50 mm round 100 mm: pi / 4 (0.2^2 - 0.1^2) = 0.0075 pi; outside pi * 0.2 m2 for 1 m.
TEST(Insulation, OfPipeIsARing) {
  const Insulation insulation = insulationOf(measure(*pipe(100, 1000), 1e-3), 50);
  EXPECT_NEAR(insulation.volume, 0.0075 * pi, 1e-15);
  EXPECT_NEAR(insulation.surface, 0.2 * pi, 1e-15);
}

// 100 and 40 become 200 and 140: the slant over 0.04 m is 0.05 m; pi * 0.17 * 0.05.
TEST(Insulation, OfAConeIsTheDifferenceOfTwoCones) {
  const Insulation insulation = insulationOf(measure(*cone(40, 100, 40), 1e-3), 50);
  EXPECT_NEAR(insulation.volume, pi / 12 * 0.04 * (0.04 + 0.028 + 0.0196 - 0.01 - 0.004 - 0.0016),
              1e-15);
  EXPECT_NEAR(insulation.surface, pi * 0.17 * 0.05, 1e-15);
}

// 400 x 300 becomes 500 x 400: 0.2 - 0.12, and 1.8 m round.
TEST(Insulation, OfADuctGoesRound) {
  const Insulation insulation =
      insulationOf(measure(*box({1000, 0, 0}, {0, 400, 0}, {0, 0, 300}), 1e-3), 50);
  EXPECT_NEAR(insulation.volume, 0.08, 1e-15);
  EXPECT_NEAR(insulation.surface, 1.8, 1e-15);
}

TEST(Insulation, OfAnObliqueBoxIsNone) {
  const Insulation insulation =
      insulationOf(measure(*box({1000, 0, 0}, {0, 500, 0}, {0, 200, 200}), 1e-3), 50);
  EXPECT_EQ(insulation.volume, 0.0);
  EXPECT_EQ(insulation.surface, 0.0);
}

}  // namespace
}  // namespace VeskTest
