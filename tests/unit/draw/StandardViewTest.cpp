// SPDX-License-Identifier: MIT
#include "draw/StandardView.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "draw/Models.h"
#include "draw/Projection.h"

namespace VeskTest {
namespace {

using namespace Vesk;

// Where x, y and z of the model go in the drawing: to the right, left, up, down,
// towards the eye (near) or away from it (far).
struct ViewCase {
  const char* name;
  const char* x;
  const char* y;
  const char* z;
};

constexpr ViewCase kViews[] = {
    {"top", "right", "up", "near"},  {"bottom", "right", "down", "far"},
    {"front", "right", "far", "up"}, {"back", "left", "near", "up"},
    {"left", "far", "left", "up"},   {"right", "near", "right", "up"},
};

// Of a vector along an axis of the drawing.
std::string sideOf(const ScreenPoint& p) {
  const double most = std::max({std::fabs(p.x), std::fabs(p.y), std::fabs(p.z)});
  if (std::fabs(p.x) == most) return p.x > 0 ? "right" : "left";
  if (std::fabs(p.y) == most) return p.y > 0 ? "down" : "up";
  return p.z > 0 ? "near" : "far";
}

TEST(StandardView, LaysTheAxesAsItsNameSays) {
  const Scene scene = sceneOf({box({-1, -1, -1}, {1, 1, 1})});
  for (const ViewCase& each : kViews) {
    const Projection p = Projection::fit(scene, *standardView(each.name), {0, 0, 100, 100});
    EXPECT_EQ(sideOf(p.vector({1, 0, 0})), each.x) << each.name;
    EXPECT_EQ(sideOf(p.vector({0, 1, 0})), each.y) << each.name;
    EXPECT_EQ(sideOf(p.vector({0, 0, 1})), each.z) << each.name;
    EXPECT_DOUBLE_EQ(p.scale(), 50.0) << each.name;
  }
}

// All axes come towards the eye alike, 120 degrees apart: cos = sqrt(2/3) long, x
// 30 degrees downwards to the right, y 30 upwards, both with y of the drawing down.
TEST(StandardView, IsometricTreatsAllAxesAlike) {
  const Scene scene = sceneOf({box({-1, -1, -1}, {1, 1, 1})});
  const Projection p = Projection::fit(scene, *standardView("iso"), {0, 0, 100, 100});
  const double cosine = std::sqrt(2.0 / 3.0) * p.scale();
  const double half = cosine / 2.0;
  const double wide = cosine * std::sqrt(3.0) / 2.0;
  const ScreenPoint expected[] = {{wide, half, 0}, {wide, -half, 0}, {0, -cosine, 0}};
  const GeVector axes[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  const double depth = p.scale() / std::sqrt(3.0);
  const double depths[] = {depth, -depth, depth};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(p.vector(axes[i]).x, expected[i].x, 1e-9) << i;
    EXPECT_NEAR(p.vector(axes[i]).y, expected[i].y, 1e-9) << i;
    EXPECT_NEAR(p.vector(axes[i]).z, depths[i], 1e-9) << i;
  }
}

TEST(StandardView, IsRightHandedAndOfUnitLength) {
  for (const StandardView& view : standardViews()) {
    EXPECT_NEAR(triple(view.right, view.up, view.toEye), 1.0, 1e-15) << view.name;
    for (const GeVector& v : {view.right, view.up, view.toEye}) {
      EXPECT_NEAR(v.length(), 1.0, 1e-15) << view.name;
    }
    EXPECT_NEAR(dot(view.right, view.up), 0.0, 1e-15) << view.name;
  }
  EXPECT_FALSE(standardView("behind"));
}

}  // namespace
}  // namespace VeskTest
