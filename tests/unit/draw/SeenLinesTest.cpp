// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <string>

#include "draw/Drawing.h"
#include "draw/Models.h"
#include "vesk/Torus.h"

namespace VeskTest {
namespace {

using namespace Vesk;

// How far the end of a stroke is from the other strokes, or from its own other end.
double nearestOther(const Drawing& drawing, const Stroke& stroke, const ScreenPoint& end) {
  const auto distanceTo = [&](const ScreenPoint& p) {
    return std::hypot(end.x - p.x, end.y - p.y);
  };
  double nearest = distanceTo(stroke.points.front()) + distanceTo(stroke.points.back());
  for (const Stroke& other : drawing.strokes()) {
    if (&other == &stroke) continue;
    for (std::size_t i = 1; i < other.points.size(); ++i) {
      const ScreenPoint& a = other.points[i - 1];
      const ScreenPoint d = other.points[i] - a;
      const double along = (end.x - a.x) * d.x + (end.y - a.y) * d.y;
      const double t = std::clamp(along / (d.x * d.x + d.y * d.y), 0.0, 1.0);
      nearest = std::min(nearest, distanceTo(a + d * t));
    }
  }
  return nearest;
}

Model cube() { return {box({0, 0, 0}, {1, 1, 1})}; }

// What is seen: straight lines, points and texts.
struct SeenCase {
  const char* name;
  const char* view;
  Model model;
  std::size_t segments;
  std::size_t dots = 0;
  std::size_t labels = 0;
};

const SeenCase kSeen[] = {
    // 12 edges; the three at the farthest corner are hidden.
    {"CubeFromACorner", "iso", cube(), 9},
    {"CubeFromTheFront", "front", cube(), 4},
    {"CubeFromTheTop", "top", cube(), 4},
    {"CubeFromTheBottom", "bottom", cube(), 4},
    {"CubeFromTheLeft", "left", cube(), 4},
    // The left one lacks the far edge and the lower one of the face between; two
    // edges of that face are of both: 7 + 9 - 2.
    {"TwoCubesSideBySide", "iso", {box({0, 0, 0}, {1, 1, 1}), box({1, 0, 0}, {2, 1, 1})}, 14},
    {"SameCubeTwice", "iso", {box({0, 0, 0}, {1, 1, 1}), box({0, 0, 0}, {1, 1, 1})}, 9},
    {"CubeBehindAPlate", "front", {box({0, 5, 0}, {1, 6, 1}), box({-1, 0, -1}, {2, 1, 2})}, 4},
    // A small cube before the middle of the edge between the two sides that are
    // seen, five towards the eye: 9 + 9, and that edge in two.
    {"EdgeBehindACube",
     "iso",
     {box({0, 0, 0}, {10, 10, 10}), box({14.5, -5.5, 9.5}, {15.5, -4.5, 10.5})},
     19},
    {"CubeInACube", "iso", {box({1, 1, 1}, {2, 2, 2}), box({0, 0, 0}, {3, 3, 3})}, 9},
    // Two sides, and two rims from their edges.
    {"CylinderFromTheFront", "front", {cyl({0, 0, 0}, {0, 0, 2}, 1)}, 4},
    {"CylinderFromTheTop", "top", {cyl({0, 0, 0}, {0, 0, 2}, 1)}, 32},
    // 32 of the upper rim, two sides; of the lower rim the half before.
    {"CylinderFromACorner", "iso", {cyl({0, 0, 0}, {0, 0, 2}, 1)}, 32 + 2 + 16},
    {"Triangle", "iso", {face({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}})}, 3},
    {"QuadrangleWithoutDiagonal", "top", {face({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}})}, 4},
    {"PlateFromBelow", "bottom", {face({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}})}, 4},
    {"Polyline", "top", {line({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}})}, 2},
    {"ThreePolylines",
     "top",
     {line({{0, 0, 0}, {1, 0, 0}}), line({{0, 1, 0}, {1, 1, 0}}), line({{0, 2, 0}, {1, 2, 0}})},
     3},
    {"PolylineBehindACube", "front", {line({{0.2, 2, 0.2}, {0.8, 2, 0.8}}), cube()[0]}, 4},
    {"PointBeforeACube", "front", {line({{0.5, -1, 0.5}}), cube()[0]}, 4, 1},
    {"PointBehindACube", "front", {line({{0.5, 2, 0.5}}), cube()[0]}, 4, 0},
    {"PointOnAFace", "front", {line({{0.5, 0, 0.5}}), cube()[0]}, 4, 1},
    {"PointAlone", "iso", {line({{5, 6, 7}})}, 0, 1},
    {"TextBeforeABox", "front", {text({0, -1, 0}, "AB"), box({0, 0, 0}, {300, 1, 300})}, 4, 0, 1},
    {"TextBehindABox", "front", {text({0, 2, 0}, "AB"), box({0, 0, 0}, {300, 1, 300})}, 4, 0, 0},
    // 400 by 100 from the origin on, its middle at (200, 50): what lies over start, middle, or
    // above the middle.
    {"TextWhoseStartIsHidden",
     "front",
     {text({0, 0, 0}, "ABCD"), box({-20, -50, -20}, {20, -40, 20}),
      box({180, -50, 80}, {220, -40, 120})},
     8,
     0,
     1},
    {"TextWhoseMiddleIsHidden",
     "front",
     {text({0, 0, 0}, "ABCD"), box({-20, 40, -20}, {20, 50, 20}),
      box({180, -50, 30}, {220, -40, 70})},
     8,
     0,
     1},
    {"TextWhoseStartAndMiddleAreHidden",
     "front",
     {text({0, 0, 0}, "ABCD"), box({-20, -50, -20}, {20, -40, 20}),
      box({180, -50, 30}, {220, -40, 70})},
     8,
     0,
     0},
    {"TextSeenFromBehind", "back", {text({0, 0, 0}, "AB")}, 0, 0, 1},
    {"Nothing", "iso", {}, 0},
};

class SeenLinesTest : public testing::TestWithParam<SeenCase> {};

TEST_P(SeenLinesTest, KeepsWhatIsSeen) {
  const SeenCase& each = GetParam();
  const Scene scene = sceneOf(each.model);
  ASSERT_TRUE(scene.failures.empty());
  const Drawing drawing(scene, plainStyle(each.view, 400, 400));
  EXPECT_EQ(segmentsOf(drawing), each.segments);
  EXPECT_EQ(drawing.dots().size(), each.dots);
  EXPECT_EQ(drawing.labels().size(), each.labels);
}

INSTANTIATE_TEST_SUITE_P(Lines, SeenLinesTest, testing::ValuesIn(kSeen),
                         [](const auto& each) { return std::string(each.param.name); });

void PrintTo(const SeenCase& each, std::ostream* out) { *out << each.view; }

// Far away, tiny, huge, and over many bands of rows.
struct CubeCase {
  const char* name;
  GePoint at;
  double size;
  int pixels;
};

const CubeCase kCubes[] = {
    {"FarAway", {6700000.5, -6700000.5, 123456.25}, 50, 400},
    {"VeryFarAway", {1e11, 1e11, -1e11}, 1000, 400},
    {"Tiny", {0, 0, 0}, 1e-9, 400},
    {"Huge", {0, 0, 0}, 1e11, 400},
    {"SmallPicture", {1, 2, 3}, 1, 16},
    {"LargePicture", {1, 2, 3}, 1, 1500},
};

// Seen from a corner, a cube of edge s is s sqrt(2) wide and 4 s / sqrt(6) high:
// 9 edges of sqrt(2/3) s, and the height fills the area.
TEST(SeenLines, CubesOfAllSizesLookAlike) {
  for (const CubeCase& each : kCubes) {
    const GePoint to = each.at + GeVector(each.size, each.size, each.size);
    const Scene scene = sceneOf({box(each.at, to)});
    const Drawing drawing(scene, plainStyle("iso", each.pixels, each.pixels));
    ASSERT_EQ(segmentsOf(drawing), 9u) << each.name;
    const double unit = std::clamp(each.pixels / 900.0, 0.7, 8.0);
    const double margin = std::min(36.0 * unit, each.pixels / 8.0);
    const double expected =
        (each.pixels - 2 * margin) / (4.0 / std::sqrt(6.0)) * std::sqrt(2.0 / 3.0);
    for (const Stroke& stroke : drawing.strokes()) {
      for (std::size_t i = 1; i < stroke.points.size(); ++i) {
        const ScreenPoint d = stroke.points[i] - stroke.points[i - 1];
        EXPECT_NEAR(std::hypot(d.x, d.y), expected, 1e-4 * expected) << each.name;
      }
    }
  }
}

// A box 1000 wide and 500 high from the front; a line behind it from 500 to the
// left to 500 to the right. 2000 units are 75 pixels: it is seen from 12.5 to
// 31.25 and from 68.75 to 87.5.
TEST(SeenLines, ALineEndsWhereABoxBeginsToHideIt) {
  const Scene scene =
      sceneOf({line({{-500, 200, 250}, {1500, 200, 250}}), box({0, 0, 0}, {1000, 100, 500})});
  const Drawing drawing(scene, plainStyle("front"));
  std::vector<Stroke> lines;
  for (const Stroke& stroke : drawing.strokes()) {
    if (stroke.weight == LineWeight::kLine) lines.push_back(stroke);
  }
  ASSERT_EQ(lines.size(), 2u);
  const double ends[] = {lines[0].points.front().x, lines[0].points.back().x,
                         lines[1].points.front().x, lines[1].points.back().x};
  const double expected[] = {12.5, 31.25, 68.75, 87.5};
  for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(ends[i], expected[i], 1e-4) << i;
  for (const Stroke& each : lines) EXPECT_EQ(each.element, 0u);
}

// Through the front face of a box, from 500 before it to 500 behind that face;
// from a corner the half of the line before the face is seen.
TEST(SeenLines, ALineEndsWhereItEntersABox) {
  const Scene scene =
      sceneOf({line({{500, -500, 500}, {500, 500, 500}}), box({0, 0, 0}, {1000, 1000, 1000})});
  const Drawing drawing(scene, plainStyle("iso", 400, 400));
  for (const Stroke& stroke : drawing.strokes()) {
    if (stroke.weight != LineWeight::kLine) continue;
    const ScreenPoint d = stroke.points.back() - stroke.points.front();
    const double half = 500 * std::sqrt(2.0 / 3.0) * drawing.projection().scale();
    // Hidden is what is a twentieth of a pixel behind the face.
    EXPECT_NEAR(std::hypot(d.x, d.y), half, 0.2);
    return;
  }
  ADD_FAILURE() << "no line";
}

// The silhouette of a cube from a corner is a hexagon; three edges lie within.
TEST(SeenLines, OutlinesAreHeavierThanEdgesBetweenFaces) {
  const Scene scene = sceneOf(cube());
  const Drawing drawing(scene, plainStyle("iso", 400, 400));
  std::size_t outlines = 0;
  for (const Stroke& stroke : drawing.strokes()) {
    if (stroke.weight == LineWeight::kOutline) outlines += stroke.points.size() - 1;
  }
  EXPECT_EQ(outlines, 6u);
}

// However steep the faces of a bent pipe are beside its outline, that has no gaps:
// every end of a stroke is where another one is. Coarse pipes have folds on the inner
// side of the bend, whose lines end on a face.
TEST(SeenLines, OutlinesOfBendsHaveNoGaps) {
  auto bend = std::make_shared<Torus>();
  bend->startVector = {600, 0, 0};
  bend->endVector = {0, 600, 0};
  bend->diameter = 250;
  for (const int segments : {128, 256}) {
    SceneBuilder builder(Fineness::ofSegments(static_cast<std::uint32_t>(segments)));
    builder.addFile("bend.dat");
    builder.add(*bend, {});
    const Scene scene = builder.finish();
    for (const StandardView& view : standardViews()) {
      const Drawing drawing(scene, plainStyle(view.name, 400, 300));
      for (const Stroke& stroke : drawing.strokes()) {
        for (const ScreenPoint& end : {stroke.points.front(), stroke.points.back()}) {
          EXPECT_LT(nearestOther(drawing, stroke, end), 0.5)
              << view.name << ' ' << segments << ": " << end.x << ' ' << end.y;
        }
      }
    }
  }
}

// Points on the axes of pipes, also where they meet, and a line along, behind faces
// smaller than samples.
TEST(SeenLines, WhatLiesWithinFinePipesIsHidden) {
  SceneBuilder builder(Fineness::ofSegments(512));
  builder.addFile("pipes.dat");
  Model model{cyl({0, 0, 0}, {1000, 0, 0}, 100), cyl({1000, 0, 0}, {2000, 0, 0}, 100)};
  for (int i = 1; i < 20; ++i) model.push_back(line({{i * 100.0, 0, 0}}));
  model.push_back(line({{200, 0, 0}, {1800, 0, 0}}));
  for (const auto& geo : model) builder.add(*geo, {});
  const Scene scene = builder.finish();
  for (const int pixels : {60, 100, 400}) {
    for (const StandardView& view : standardViews()) {
      if (view.name == "left" || view.name == "right") continue;  // one behind the other
      const Drawing drawing(scene, plainStyle(view.name, pixels, pixels));
      EXPECT_TRUE(drawing.dots().empty()) << view.name << ' ' << pixels;
      for (const Stroke& stroke : drawing.strokes()) {
        EXPECT_NE(stroke.weight, LineWeight::kLine) << view.name << ' ' << pixels;
      }
    }
  }
}

TEST(SeenLines, LevelTextsDoNotLieOverEachOther) {
  const Scene scene =
      sceneOf({text({0, 0, 0}, "ONE"), text({1, 0, 0}, "TWO"), text({0, 0, 90000}, "THREE")});
  const Drawing drawing(scene, plainStyle("front", 400, 400));
  ASSERT_EQ(drawing.labels().size(), 2u);
  EXPECT_EQ(drawing.labels()[0].text, "ONE");
  EXPECT_EQ(drawing.labels()[1].text, "THREE");
}

}  // namespace
}  // namespace VeskTest
