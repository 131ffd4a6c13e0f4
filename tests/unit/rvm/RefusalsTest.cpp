// SPDX-License-Identifier: MIT
// Why shapes are refused or doubtful, on both sides of each limit.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <string>
#include <vector>

#include "rvm/ShapeMapper.h"

namespace {

using Vesk::ReviewKind;
using Vesk::ReviewShape;
using Vesk::ShapeOutcome;

constexpr double kPi = std::numbers::pi;

// Upright at the origin, a unit for each millimetre.
ReviewShape shapeOf(ReviewKind kind, const std::vector<double>& parameters) {
  ReviewShape shape;
  shape.kind = kind;
  shape.axes = {GeVector(0.001, 0, 0), GeVector(0, 0.001, 0), GeVector(0, 0, 0.001)};
  for (std::size_t i = 0; i < parameters.size(); ++i) shape.parameters[i] = parameters[i];
  return shape;
}

ShapeOutcome outcomeOf(const ReviewShape& shape, double tolerance = 1.0) {
  return Vesk::ShapeMapper(tolerance).map(shape, [](const Vesk::Geo&) {});
}

struct RefusalCase {
  const char* name;
  ReviewKind kind;
  std::vector<double> good;
  std::vector<double> bad;
  const char* reason;
};

constexpr const char* kZero = "a size is zero or below";
constexpr const char* kSmall = "a size is too small for the records";
constexpr const char* kBelow = "a size is below zero";
constexpr const char* kRadius = "a radius is below zero";
constexpr const char* kSheared = "an end is sheared by a right angle or more";

// clang-format off
const RefusalCase kRefusals[] = {
    {"BoxAlongX", ReviewKind::kBox, {1, 1, 1}, {0, 1, 1}, kZero},
    {"BoxAlongY", ReviewKind::kBox, {1, 1, 1}, {1, 0, 1}, kZero},
    {"BoxAlongZ", ReviewKind::kBox, {1, 1, 1}, {1, 1, -1}, kZero},
    {"SmallBoxAlongX", ReviewKind::kBox, {1.01e-6, 1, 1}, {0.99e-6, 1, 1}, kSmall},
    {"SmallBoxAlongY", ReviewKind::kBox, {1, 1.01e-6, 1}, {1, 0.99e-6, 1}, kSmall},
    {"SmallBoxAlongZ", ReviewKind::kBox, {1, 1, 1.01e-6}, {1, 1, 0.99e-6}, kSmall},
    {"PyramidBelowAlongX", ReviewKind::kPyramid, {0, 1, 1, 1, 0, 0, 1}, {-0.1, 1, 1, 1, 0, 0, 1}, kBelow},
    {"PyramidBelowAlongY", ReviewKind::kPyramid, {1, 0, 1, 1, 0, 0, 1}, {1, -0.1, 1, 1, 0, 0, 1}, kBelow},
    {"PyramidAboveAlongX", ReviewKind::kPyramid, {1, 1, 0, 1, 0, 0, 1}, {1, 1, -0.1, 1, 0, 0, 1}, kBelow},
    {"PyramidAboveAlongY", ReviewKind::kPyramid, {1, 1, 1, 0, 0, 0, 1}, {1, 1, 1, -0.1, 0, 0, 1}, kBelow},
    {"PyramidOfNoWidth", ReviewKind::kPyramid, {1, 1, 0, 1, 0, 0, 1}, {0, 1, 0, 1, 0, 0, 1}, kZero},
    {"PyramidOfNoDepth", ReviewKind::kPyramid, {1, 1, 1, 0, 0, 0, 1}, {1, 0, 1, 0, 0, 0, 1}, kZero},
    {"PyramidOfNoHeight", ReviewKind::kPyramid, {1, 1, 1, 1, 0, 0, 1}, {1, 1, 1, 1, 0, 0, 0}, kZero},
    {"InnerRadius", ReviewKind::kRectangularTorus, {0, 2, 1, 1}, {-0.1, 2, 1, 1}, kRadius},
    {"NoThickness", ReviewKind::kRectangularTorus, {1, 1.1, 1, 1}, {1, 1, 1, 1}, kZero},
    {"NoHeightOfATorus", ReviewKind::kRectangularTorus, {1, 2, 0.1, 1}, {1, 2, 0, 1}, kZero},
    {"NoAngle", ReviewKind::kRectangularTorus, {1, 2, 1, 0.01}, {1, 2, 1, 0}, "an angle is zero or below"},
    // A hundred thousandth more than a turn is rounding.
    {"MoreThanATurn", ReviewKind::kRectangularTorus, {1, 2, 1, 2 * kPi * 1.000009}, {1, 2, 1, 2 * kPi * 1.000011}, "an angle is more than a full turn"},
    {"NoAngleOfARing", ReviewKind::kCircularTorus, {2, 1, 0.01}, {2, 1, -0.01}, "an angle is zero or below"},
    {"MoreThanATurnOfARing", ReviewKind::kCircularTorus, {2, 1, 2 * kPi * 1.000009}, {2, 1, 2 * kPi * 1.000011}, "an angle is more than a full turn"},
    {"TubeAndBend", ReviewKind::kCircularTorus, {1, 1, 1}, {0.999, 1, 1}, "the tube is wider than its bend"},
    {"NoTube", ReviewKind::kCircularTorus, {1, 0.1, 1}, {1, 0, 1}, kZero},
    {"DishOfNoRadius", ReviewKind::kEllipticalDish, {1, 1}, {0, 1}, kZero},
    {"DishOfNoHeight", ReviewKind::kEllipticalDish, {1, 1}, {1, 0}, kZero},
    {"CapOfNoRadius", ReviewKind::kSphericalDish, {1, 1}, {0, 1}, kZero},
    {"CapOfNoHeight", ReviewKind::kSphericalDish, {1, 1}, {1, 0}, kZero},
    {"SnoutBelow", ReviewKind::kSnout, {0, 1, 1}, {-0.1, 1, 1}, kRadius},
    {"SnoutAbove", ReviewKind::kSnout, {1, 0, 1}, {1, -0.1, 1}, kRadius},
    {"SnoutOfTwoPoints", ReviewKind::kSnout, {1, 0, 1}, {0, 0, 1}, kZero},
    {"SnoutOfNoHeight", ReviewKind::kSnout, {1, 1, 1}, {1, 1, 0}, kZero},
    {"ShearedBelowAlongX", ReviewKind::kSnout, {1, 1, 9, 0, 0, 1.57}, {1, 1, 9, 0, 0, 1.5708}, kSheared},
    {"ShearedBelowAlongY", ReviewKind::kSnout, {1, 1, 9, 0, 0, 0, -1.57}, {1, 1, 9, 0, 0, 0, -1.5708}, kSheared},
    {"ShearedAboveAlongX", ReviewKind::kSnout, {1, 1, 9, 0, 0, 0, 0, -1.57}, {1, 1, 9, 0, 0, 0, 0, -1.5708}, kSheared},
    {"ShearedAboveAlongY", ReviewKind::kSnout, {1, 1, 9, 0, 0, 0, 0, 0, 1.57}, {1, 1, 9, 0, 0, 0, 0, 0, 1.5708}, kSheared},
    {"CylinderOfNoRadius", ReviewKind::kCylinder, {1, 1}, {0, 1}, kZero},
    {"CylinderOfNoHeight", ReviewKind::kCylinder, {1, 1}, {1, 0}, kZero},
    {"SmallCylinder", ReviewKind::kCylinder, {1.01e-6, 1}, {0.99e-6, 1}, kSmall},
    {"CylinderThatIsTooLong", ReviewKind::kCylinder, {1, 9.9e11}, {1, 1.01e12}, "it is too large or too far away"},
    {"CylinderThatIsTooWide", ReviewKind::kCylinder, {4.9e11, 1}, {5.1e11, 1}, "it is too large or too far away"},
    {"NotFinite", ReviewKind::kCylinder, {1, 1}, {1, std::numeric_limits<double>::infinity()}, "a number is not finite"},
    {"OfNoKind", ReviewKind::kCylinder, {1, 1}, {}, kZero},
};
// clang-format on

TEST(ReviewRefusals, HaveTheirReasonOnOneSideOfALimit) {
  for (const RefusalCase& row : kRefusals) {
    const ShapeOutcome good = outcomeOf(shapeOf(row.kind, row.good));
    EXPECT_STREQ(good.reason, "") << row.name;
    EXPECT_NE(good.fate, Vesk::ShapeFate::kRefused) << row.name;
    const ShapeOutcome bad = outcomeOf(shapeOf(row.kind, row.bad));
    EXPECT_STREQ(bad.reason, row.reason) << row.name;
    EXPECT_EQ(bad.fate, Vesk::ShapeFate::kRefused) << row.name;
    EXPECT_EQ(bad.elements, 0U) << row.name;
  }
  EXPECT_STREQ(outcomeOf(shapeOf(ReviewKind::kUnknown, {})).reason,
               "there is no such kind of shape");
  EXPECT_STREQ(outcomeOf(shapeOf(ReviewKind::kFacets, {})).reason,
               "none of its facets has an area");
}

// A million kilometres to any side.
TEST(ReviewRefusals, AreForWhatIsTooFarAway) {
  for (std::size_t axis = 0; axis < 3; ++axis) {
    for (const double metres : {9.99e8, -9.99e8, 1.001e9, -1.001e9}) {
      ReviewShape shape = shapeOf(ReviewKind::kCylinder, {1, 1});
      (axis == 0 ? shape.origin.x : axis == 1 ? shape.origin.y : shape.origin.z) = metres;
      EXPECT_STREQ(outcomeOf(shape).reason,
                   std::fabs(metres) < 1e9 ? "" : "it is too large or too far away")
          << axis << ' ' << metres;
    }
  }
}

TEST(ReviewRefusals, AreForAxesThatSpanNoSpace) {
  for (std::size_t axis = 0; axis < 3; ++axis) {
    ReviewShape shape = shapeOf(ReviewKind::kBox, {1, 1, 1});
    shape.axes[axis] = shape.axes[(axis + 1) % 3] + shape.axes[axis] * 1e-8;
    EXPECT_STREQ(outcomeOf(shape).reason, "") << axis;
    shape.axes[axis] = shape.axes[(axis + 1) % 3];
    EXPECT_STREQ(outcomeOf(shape).reason, "its axes span no space") << axis;
  }
}

// Half a turn in 4096 pieces of 4 asin(sqrt(t / 2)) = pi / 4096: t is 7.3534e-8.
TEST(ReviewRefusals, AreForTolerancesThatAskForTooMuch) {
  ReviewShape sphere = shapeOf(ReviewKind::kSphere, {2});
  sphere.box = Vesk::Extents(GePoint(-1, -1, -1), GePoint(1, 1, 1));
  EXPECT_EQ(outcomeOf(sphere, 7.354e-8).elements, 4096U);
  EXPECT_STREQ(outcomeOf(sphere, 7.353e-8).reason,
               "the tolerance asks for more than 4096 pieces of a circle");
  // Some 2000 steps of some 3000 pieces, two of them a body.
  ReviewShape ring = shapeOf(ReviewKind::kCircularTorus, {300, 50, kPi / 2});
  ring.axes[2] = ring.axes[2] * 2;
  EXPECT_STREQ(outcomeOf(ring, 1.0).reason, "");
  EXPECT_STREQ(outcomeOf(ring, 1e-4).reason, "the tolerance asks for more than 16384 bodies");
}

struct BallCase {
  double height;  // of the box of a sphere of 600
  const char* reason;
  double diameter;  // of its widest section, and 0 for none
};

TEST(ReviewRefusals, AreDoubtsWhereTheBoxDoesNotDecide) {
  constexpr const char* kDoubt =
      "its box fits neither the diameter nor the radius; drawn as the diameter";
  // Within 0.02 and a thousandth of 600 or of 1200.
  const BallCase rows[] = {{600, "", 600},         {600.61, "", 600},      {600.63, kDoubt, 600},
                           {599.39, "", 600},      {599.37, kDoubt, 600},  {1200, "", 1200},
                           {1201.2, "", 1200},     {1201.24, kDoubt, 600}, {1198.8, "", 1200},
                           {1198.76, kDoubt, 600}, {0, kDoubt, 600}};
  for (const BallCase& row : rows) {
    ReviewShape sphere = shapeOf(ReviewKind::kSphere, {600});
    const double half = row.height / 2;
    sphere.box = Vesk::Extents(GePoint(-half, -half, -half), GePoint(half, half, half));
    Vesk::Extents box;
    const ShapeOutcome outcome =
        Vesk::ShapeMapper(1.0).map(sphere, [&](const Vesk::Geo& geo) { geo.addExtents(box); });
    EXPECT_STREQ(outcome.reason, row.reason) << row.height;
    EXPECT_NEAR(box.max.z - box.min.z, row.diameter, 1e-9) << row.height;
  }
  ReviewShape line = shapeOf(ReviewKind::kLine, {0, 5});
  line.box = Vesk::Extents(GePoint(0, 0, 0), GePoint(9, 0, 0));
  EXPECT_STREQ(outcomeOf(line).reason, "its box is not that of a line; left out");
  EXPECT_EQ(outcomeOf(line).fate, Vesk::ShapeFate::kDoubtful);
}

}  // namespace
