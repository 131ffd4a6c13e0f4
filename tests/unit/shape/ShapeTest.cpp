// SPDX-License-Identifier: MIT
#include "shape/Shape.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "shape/ReducerShape.h"
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

using enum ShapeFault;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

const GeVector kX(1, 0, 0);
const GeVector kY(0, 1, 0);
const GeVector kZ(0, 0, 1);
const GeVector kO(0, 0, 0);

using Element = std::shared_ptr<Geo>;

Element cyl(const GeVector& axis, double diameter) {
  auto cyl = std::make_shared<Cyl>();
  cyl->axis = axis;
  cyl->diameter = diameter;
  return cyl;
}

Element cone(const GeVector& axis, double diameter1, double diameter2) {
  auto cone = std::make_shared<Cone>();
  cone->axis = axis;
  cone->diameter1 = diameter1;
  cone->diameter2 = diameter2;
  return cone;
}

Element box(const GeVector& a, const GeVector& b, const GeVector& c) {
  return std::make_shared<Box>(kO, a, b, c);
}

Element torus(const GeVector& start, const GeVector& end, double diameter) {
  auto torus = std::make_shared<Torus>();
  torus->startVector = start;
  torus->endVector = end;
  torus->diameter = diameter;
  return torus;
}

Element relb(const GeVector& start, const GeVector& end, double width, double depth) {
  auto relb = std::make_shared<Relb>();
  relb->startVector = start;
  relb->endVector = end;
  relb->width = width;
  relb->depth = depth;
  return relb;
}

// The corners that the bits of 0 to 7 name: 1 along x, 2 along y, 4 along z.
std::vector<GeVector> cube() {
  std::vector<GeVector> corners;
  for (int k = 0; k < 8; ++k) corners.emplace_back(k & 1, k >> 1 & 1, k >> 2);
  return corners;
}

Element red(const std::vector<GeVector>& corners) {
  auto red = std::make_shared<Red>();
  for (std::size_t k = 1; k < 8; ++k) red->cornerVectors[k - 1] = corners[k];
  return red;
}

// A cube whose lid crosses itself: two of its corners in each other's place, and
// one drawn out, so that the wings differ.
Element crossedCube() {
  std::vector<GeVector> corners = cube();
  std::swap(corners[4], corners[5]);
  corners[4] = corners[4] * 2.0;
  return red(corners);
}

Element scaledCube(double x, double y, double z) {
  std::vector<GeVector> corners = cube();
  for (GeVector& c : corners) c = GeVector(c.x * x, c.y * y, c.z * z);
  return red(corners);
}

// A cube whose lid is turned by half a turn: half-way up its edges meet.
Element turnedCube() {
  std::vector<GeVector> corners = cube();
  std::swap(corners[4], corners[7]);
  std::swap(corners[5], corners[6]);
  return red(corners);
}

Element pline(const std::vector<GePoint>& points) {
  auto pline = std::make_shared<Pline>();
  pline->vertices = points;
  return pline;
}

Element pgon(const std::vector<GePoint>& points) {
  auto pgon = std::make_shared<Pgon>();
  for (const GePoint& p : points) pgon->vertices.push_back(PgonVertex{p, {}, false});
  return pgon;
}

Element txt(double charWidth, double height) {
  auto txt = std::make_shared<Txt>();
  txt->charWidth = charWidth;
  txt->height = height;
  return txt;
}

// A class that a host has made.
class OfAHost : public Cyl {
 public:
  std::int32_t typeCode() const override { return 99; }
};

struct ShapeCase {
  const char* name;
  Element element;
  ShapeFault fault;
  const char* words;

  friend std::ostream& operator<<(std::ostream& os, const ShapeCase& each) {
    return os << each.name;
  }
};

// clang-format off
const ShapeCase kShapes[] = {
    {"Pipe", cyl(kX, 1), kNone, ""},
    {"PipeOfNaN", cyl(kX, kNaN), kNotFinite, "a number is infinite or NaN"},
    {"PipeWithoutEnd", cyl(kX * kInf, 1), kNotFinite, "a number is infinite or NaN"},
    {"PipeOfATrillion", cyl(kX, 1e12), kNone, ""},
    {"PipeBeyondATrillion", cyl(kX, 1.001e12), kTooLarge, "a number is beyond 1e12"},
    {"PipeOfDiameterBelowZero", cyl(kX, -1), kNegativeDiameter, "diameter below zero"},
    {"PipeALittleBelowZeroHasNone", cyl(kX, -1e-13), kNoDiameter, "diameter of zero"},
    {"PipeWithoutDiameter", cyl(kX, 0), kNoDiameter, "diameter of zero"},
    {"PipeWithoutLength", cyl(kO, 1), kNoLength, "length of zero"},
    {"Cone", cone(kX, 1, 0), kNone, ""},
    {"ConeOfTwoPoints", cone(kX, 0, 0), kNoDiameter, "diameter of zero"},
    {"ConeOfOneDiameterBelowZero", cone(kX, 2, -1), kNegativeDiameter, "diameter below zero"},
    {"ConeWithoutLength", cone(kO, 1, 2), kNoLength, "length of zero"},
    {"Box", box(kX, kY, kZ), kNone, ""},
    {"BoxWithoutEdge", box(kX, kY, kO), kNoEdge, "edge of zero"},
    {"BoxInAPlane", box(kX, kY, kX + kY), kFlatBox, "the three edges lie in one plane"},
    {"BoxOfNaN", box(kX, kY, kZ * kNaN), kNotFinite, "a number is infinite or NaN"},
    {"Bend", torus(kX, kY, 1), kNone, ""},
    {"BendWithoutRadius", torus(kX, kO, 1), kNoBendRadius, "bend radius of zero"},
    {"BendOfHalfATurn", torus(kX, -kX, 1), kNoPlane, "start and end of the bend lie in one line with its centre"},
    {"BendWiderThanItself", torus(kX, kY, 3), kTubeTooWide, "tube wider than its bend"},
    {"DuctElbow", relb(kX, kY, 1, 1), kNone, ""},
    {"DuctElbowOfWidthBelowZero", relb(kX, kY, -1, 1), kNegativeWidth, "width below zero"},
    {"DuctElbowOfDepthBelowZero", relb(kX, kY, 1, -1), kNegativeDepth, "depth below zero"},
    {"DuctElbowWithoutWidth", relb(kX, kY, 0, 1), kNoWidth, "width of zero"},
    {"DuctElbowWithoutDepth", relb(kX, kY, 1, 0), kNoDepth, "depth of zero"},
    {"DuctElbowWiderThanItself", relb(kX, kY, 1, 3), kSectionTooWide, "section wider than its bend"},
    {"Reducer", red(cube()), kNone, ""},
    {"ReducerInAPoint", scaledCube(0, 0, 0), kNoExtent, "extent of zero"},
    {"ReducerOfNaN", scaledCube(1, 1, kNaN), kNotFinite, "a number is infinite or NaN"},
    {"ReducerBeyondATrillion", scaledCube(1, 1, 2e12), kTooLarge, "a number is beyond 1e12"},
    {"ReducerInAPlane", scaledCube(1, 1, 0), kNoVolume, "reducer without volume"},
    {"ReducerWithALidOfTwistedCorners", crossedCube(), kFaceCrosses, "reducer is twisted: a face crosses itself"},
    {"ReducerTurnedByHalfATurn", turnedCube(), kTurnedInside, "reducer is twisted: it turns inside out"},
    {"Line", pline({{0, 0, 0}, {1, 0, 0}}), kNone, ""},
    {"LineWithoutPoints", pline({}), kNoPoints, "line without points"},
    {"LineOfNaN", pline({{0, 0, 0}, {1, kNaN, 0}}), kNotFinite, "a number is infinite or NaN"},
    {"Face", pgon({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}), kNone, ""},
    {"FaceOfNaN", pgon({{0, 0, 0}, {1, 0, 0}, {0, kNaN, 0}}), kNotFinite, "a number is infinite or NaN"},
    {"FaceOfTwoPoints", pgon({{0, 0, 0}, {1, 0, 0}}), kTooFewPoints, "polygon of fewer than three points"},
    {"FaceInALine", pgon({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}), kNoArea, "face without area"},
    {"BowTieOfEqualWings", pgon({{0, 0, 0}, {1, 1, 0}, {1, 0, 0}, {0, 1, 0}}), kCrossed, "face that crosses itself"},
    {"BowTieOfUnequalWings", pgon({{0, 0, 0}, {4, 4, 0}, {4, 0, 0}, {0, 3, 0}}), kCrossed, "face that crosses itself"},
    {"Text", txt(1, 1), kNone, ""},
    {"TextOfNoSize", txt(0, 0), kNone, ""},
    {"TextOfHeightBelowZero", txt(1, -1), kNegativeHeight, "height below zero"},
    {"TextOfCharacterWidthBelowZero", txt(-1, 1), kNegativeCharWidth, "character width below zero"},
};
// clang-format on

class ShapeTest : public testing::TestWithParam<ShapeCase> {};

TEST_P(ShapeTest, TellsTheFault) {
  const ShapeCase& each = GetParam();
  EXPECT_EQ(shapeFaultOf(*each.element), each.fault);
  EXPECT_STREQ(textOf(shapeFaultOf(*each.element)), each.words);
}

INSTANTIATE_TEST_SUITE_P(Elements, ShapeTest, testing::ValuesIn(kShapes),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ShapesTest, KindsOfOthersHaveNone) {
  EXPECT_EQ(shapeFaultOf(OfAHost()), kNoShape);
  EXPECT_STREQ(textOf(kNoShape), "a kind without a shape");
}

// The inner corner of an arrow is its second: it is split from there.
TEST(ShapesTest, FaceOfFourIsSplitFromItsInnerCorner) {
  const auto arrow = pgon({{0, 4, 0}, {1, 1, 0}, {4, 0, 0}, {0, 0, 0}});
  const FaceShape face = faceShapeOf(static_cast<const Pgon&>(*arrow));
  EXPECT_EQ(face.triangles, (std::vector<EarTriangle>{{1, 2, 3}, {1, 3, 0}}));
}

TEST(ShapesTest, VolumeOfAReducerIsThatOfItsBilinearFaces) {
  EXPECT_DOUBLE_EQ(reducerShapeOf(static_cast<const Red&>(*scaledCube(2, 3, 4))).volume, 24.0);
  EXPECT_DOUBLE_EQ(reducerShapeOf(static_cast<const Red&>(*scaledCube(2, 3, -4))).volume, -24.0);
}

}  // namespace
}  // namespace VeskTest
