// SPDX-License-Identifier: MIT
#include "draw/DepthBand.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <ostream>
#include <random>
#include <utility>
#include <vector>

#include "draw/Bands.h"
#include "draw/Models.h"
#include "draw/Projection.h"

namespace VeskTest {
namespace {

using namespace Vesk;

constexpr int kSide = 32;  // pixels
constexpr std::uint64_t kAll = std::uint64_t{kSide} * kSamples * kSide * kSamples;

Projection topOf(const Scene& scene) {
  return Projection::fit(scene, *standardView("top"), {0, 0, kSide, kSide});
}

// Plates from above, each over the whole drawing; one of two triangles.
Model plates(int count, double step) {
  Model model;
  for (int i = 0; i < count; ++i) {
    const double z = i * step;
    model.push_back(face({{0, 0, z}, {100, 0, z}, {100, 100, z}, {0, 100, z}}));
  }
  return model;
}

// How often a sample is compared with a plate: once for the plate that is seen, and for those
// behind it only at the ends of rows, where a tile may have samples that nothing has reached.
struct HeapCase {
  const char* name;
  double step;
  std::uint32_t seen;  // instance
};

const HeapCase kHeaps[] = {
    {"FromTheNearest", -1, 0},
    {"FromTheFarthest", 1, 999},
};

void PrintTo(const HeapCase& c, std::ostream* to) { *to << c.name; }

class DepthBandTest : public testing::TestWithParam<HeapCase> {};

TEST_P(DepthBandTest, LooksAtWhatIsBehindNoSampleTwice) {
  const Scene scene = sceneOf(plates(1000, GetParam().step));
  const Projection projection = topOf(scene);
  const Surfaces surfaces(scene, projection);
  DepthBand band(surfaces, kSide);
  Bands bands({});
  band.draw(0, kSide, 0, bands);
  EXPECT_EQ(band.at(kSide, kSide)->instance, GetParam().seen);
  EXPECT_LE(band.comparisons(), 2 * kAll);
}

INSTANTIATE_TEST_SUITE_P(Heaps, DepthBandTest, testing::ValuesIn(kHeaps),
                         [](const auto& each) { return each.param.name; });

// The first one of a model, whichever other comes nearer to the eye elsewhere.
TEST(DepthBandTest, OfTwoAtOneDepthTheFirstIsTaken) {
  Model model = plates(1, 0);
  model.push_back(face({{0, 0, 0}, {100, 0, 0}, {100, 100, 0}, {0, 100, 0}}));
  model.push_back(face({{0, 0, 0}, {50, 0, 0}, {50, 0, 7}, {0, 0, 7}}));
  model.push_back(box({0, 0, -3}, {100, 100, 0}));
  const Scene scene = sceneOf(model);
  const Projection projection = topOf(scene);
  const Surfaces surfaces(scene, projection);
  DepthBand band(surfaces, kSide);
  Bands bands({});
  band.draw(0, kSide, 0, bands);
  for (int row = 8; row < kSide * kSamples - 8; ++row) {
    EXPECT_EQ(band.at(kSide, row)->instance, 0U) << row;
  }
}

// Where a smaller plate ends within a tile too, whichever of both comes first.
TEST(DepthBandTest, OfTwoAtOneDepthTheFirstIsTakenUpToItsEnd) {
  for (const bool isSmallFirst : {true, false}) {
    Model model{face({{0, 0, 0}, {40, 0, 0}, {40, 100, 0}, {0, 100, 0}}),
                face({{0, 0, 0}, {100, 0, 0}, {100, 100, 0}, {0, 100, 0}})};
    if (!isSmallFirst) std::swap(model[0], model[1]);
    const Scene scene = sceneOf(model);
    const Projection projection = topOf(scene);
    const Surfaces surfaces(scene, projection);
    DepthBand band(surfaces, kSide);
    Bands bands({});
    band.draw(0, kSide, 0, bands);
    for (int row = 0; row < kSide * kSamples; ++row) {
      for (int column = 0; column < kSide * kSamples; ++column) {
        const double x = (column + 0.5) / (kSide * kSamples) * 100;
        ASSERT_EQ(band.at(column, row)->instance, isSmallFirst && x > 40 ? 1U : 0U)
            << x << ' ' << row;
      }
    }
  }
}

// A wall before the half of a plate, and a slope that comes out of the plate: each sample has
// the nearest of the three, by their heights there.
TEST(DepthBandTest, EachSampleHasTheNearest) {
  Model model = plates(1, 0);
  model.push_back(face({{0, 0, -50}, {100, 0, 50}, {100, 100, 50}, {0, 100, -50}}));
  model.push_back(face({{0, 0, 10}, {100, 0, 10}, {100, 50, 10}, {0, 50, 10}}));
  const Scene scene = sceneOf(model);
  const Projection projection = topOf(scene);
  const Surfaces surfaces(scene, projection);
  DepthBand band(surfaces, kSide);
  Bands bands({});
  band.draw(0, kSide, 0, bands);
  for (int row = 0; row < kSide * kSamples; ++row) {
    for (int column = 0; column < kSide * kSamples; ++column) {
      const double x = (column + 0.5) / (kSide * kSamples) * 100;
      const double y = 100 - (row + 0.5) / (kSide * kSamples) * 100;
      const double wall = y < 50 ? 10 : 0;
      EXPECT_EQ(band.at(column, row)->instance, x - 50 > wall ? 1U : (y < 50 ? 2U : 0U))
          << x << ' ' << y;
    }
  }
}

// The same body over and over, each a little aside: their faces slope over tiles by more than
// the bodies lie behind each other, so that no depth of a tile tells what is hidden.
struct JitterCase {
  const char* name;
  std::shared_ptr<Geo> (*body)(const GePoint& at);
  double most;  // of the shift
};

// A place within a cube. Not by a distribution of the library, which each makes in its own way.
GePoint placeIn(double most, std::mt19937& random) {
  const auto shift = [&] { return most * (static_cast<double>(random() % 2001) / 1000.0 - 1.0); };
  const double x = shift();
  const double y = shift();
  return {x, y, shift()};
}

std::shared_ptr<Geo> boxAt(const GePoint& at) { return box(at, at + GeVector(100, 100, 100)); }
std::shared_ptr<Geo> pipeAt(const GePoint& at) { return cyl(at, at + GeVector(90, 60, 80), 70); }
std::shared_ptr<Geo> leafAt(const GePoint& at) {
  return face({at, at + GeVector(99, 5, 40), at + GeVector(90, 95, 10), at + GeVector(4, 90, 60)});
}

const JitterCase kJitters[] = {
    {"Boxes", boxAt, 1.0},   {"BoxesFarAside", boxAt, 60.0},
    {"Pipes", pipeAt, 1.0},  {"PipesFarAside", pipeAt, 60.0},
    {"Leaves", leafAt, 1.0}, {"LeavesFarAside", leafAt, 60.0},
};

void PrintTo(const JitterCase& c, std::ostream* to) { *to << c.name; }

class JitterTest : public testing::TestWithParam<JitterCase> {
 protected:
  Model model(int count) const {
    std::mt19937 random(7);
    Model made;
    for (int i = 0; i < count; ++i) {
      made.push_back(GetParam().body(placeIn(GetParam().most, random)));
    }
    return made;
  }

  static Projection isoOf(const Scene& scene) {
    return Projection::fit(scene, *standardView("iso"), {2, 2, kSide - 2, kSide - 2});
  }
};

// What a sample has when each body is drawn by itself: the nearest, of equal ones the first.
TEST_P(JitterTest, EachSampleHasWhatTheBodiesAloneGiveIt) {
  const Scene scene = sceneOf(model(60));
  const Projection projection = isoOf(scene);
  const Surfaces surfaces(scene, projection);
  Bands bands({});
  DepthBand all(surfaces, kSide);
  all.draw(0, kSide, 0, bands);
  std::vector<DepthSample> nearest(kAll);
  DepthBand one(surfaces, kSide);
  for (std::uint32_t i = 0; i < surfaces.count(); ++i) {
    one.draw(0, kSide, 0, {i}, bands);
    for (std::size_t k = 0; k < kAll; ++k) {
      const DepthSample& sample = *one.at(static_cast<int>(k) % (kSide * kSamples),
                                          static_cast<int>(k) / (kSide * kSamples));
      if (sample.depth > nearest[k].depth) nearest[k] = sample;
    }
  }
  for (std::size_t k = 0; k < kAll; ++k) {
    const DepthSample& sample =
        *all.at(static_cast<int>(k) % (kSide * kSamples), static_cast<int>(k) / (kSide * kSamples));
    ASSERT_EQ(sample.depth, nearest[k].depth) << k;
    ASSERT_EQ(sample.isEmpty(), nearest[k].isEmpty()) << k;
    if (sample.isEmpty()) continue;
    ASSERT_EQ(sample.instance, nearest[k].instance) << k;
    ASSERT_EQ(sample.triangle, nearest[k].triangle) << k;
  }
}

// Drawn again with these alone, a band is the same.
TEST_P(JitterTest, ItsInstancesAreAllThatABandNeeds) {
  const Scene scene = sceneOf(model(60));
  const Projection projection = isoOf(scene);
  const Surfaces surfaces(scene, projection);
  Bands bands({});
  DepthBand all(surfaces, kSide);
  all.draw(8, 24, 16, bands);
  const std::vector<std::uint32_t> seen = all.instancesIn(8, 24);
  DepthBand again(surfaces, kSide);
  again.draw(8, 24, 0, seen, bands);
  for (int row = 8 * kSamples; row < 24 * kSamples; ++row) {
    for (int column = 0; column < kSide * kSamples; ++column) {
      const DepthSample& first = *all.at(column, row);
      const DepthSample& second = *again.at(column, row);
      ASSERT_EQ(first.depth, second.depth) << column << ' ' << row;
      ASSERT_EQ(first.triangle, second.triangle) << column << ' ' << row;
      ASSERT_EQ(first.instance, second.instance) << column << ' ' << row;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Bodies, JitterTest, testing::ValuesIn(kJitters),
                         [](const auto& each) { return each.param.name; });

// Of bodies that lie less behind each other than their faces slope over a tile, few are compared
// with a sample: by chance the n-th is nearer than all before it once in n times. The most are at
// edges, in tiles that no face covers.
TEST(DepthBandTest, BodiesAlmostInOnePlaceAreComparedSeldom) {
  std::mt19937 random(7);
  Model model;
  constexpr std::uint64_t kBodies = 400;
  for (std::uint64_t i = 0; i < kBodies; ++i) model.push_back(boxAt(placeIn(1.0, random)));
  constexpr int kWide = 256;
  const Scene scene = sceneOf(model);
  const Projection projection = Projection::fit(scene, *standardView("iso"), {0, 0, kWide, kWide});
  const Surfaces surfaces(scene, projection);
  DepthBand band(surfaces, kWide);
  Bands bands({});
  band.draw(0, kWide, 0, bands);
  EXPECT_LE(band.comparisons(), kBodies / 10 * (kWide * kSamples) * (kWide * kSamples));
}

// A line behind a slope: hidden where it is far enough behind it, and never beyond its end.
TEST(DepthBandTest, KnowsWhichLinesAreBehindASlope) {
  struct Case {
    const char* name;
    ScreenPoint a;  // behind the slope by z
    ScreenPoint b;
    bool isBehind;
  };
  // From above the slope is as high as x, and the drawing is the whole of it. Its two triangles
  // meet at x = y or x = 32 - y.
  const Scene scene = sceneOf({face({{0, 0, 0}, {32, 0, 32}, {32, 32, 32}, {0, 32, 0}})});
  const Projection projection = topOf(scene);
  const Surfaces surfaces(scene, projection);
  const Case kCases[] = {
      {"OnIt", {12, 6, 0}, {20, 6, 0}, false},
      {"HalfAPixelBehind", {12, 6, -0.5}, {20, 6, -0.5}, false},
      {"TwoPixelsBehind", {12, 6, -2}, {20, 6, -2}, true},
      {"AtOneEndOnly", {12, 6, -2}, {20, 6, 0}, false},
      {"BeforeIt", {12, 6, 3}, {20, 6, 3}, false},
      {"FarBehind", {12, 6, -40}, {20, 16, -40}, true},
      {"OutOfTheDrawing", {12, 6, -40}, {34, 6, -40}, false},
      {"AboveTheBand", {16, -3, -40}, {16, 6, -40}, false},
  };
  DepthBand band(surfaces, kSide);
  Bands bands({});
  band.draw(0, kSide, 0, bands);
  // The middle of the slope is at depth 0.
  const auto placed = [](const ScreenPoint& p) { return ScreenPoint{p.x, p.y, p.x - 16.0 + p.z}; };
  for (const Case& c : kCases) {
    EXPECT_EQ(band.isBehind(placed(c.a), placed(c.b), 1.0), c.isBehind) << c.name;
  }
}

// Slopes that come out of a plate within a tile, whichever way they rise: each sample has the
// nearer of both, by their heights there.
TEST(DepthBandTest, SlopesComeOutOfAPlateInAnyDirection) {
  struct Row {
    const char* name;
    double perX;
    double perY;
    double constant;
  };
  // Where they cross the plate they are in the midst of a tile of 25 by 6.25.
  const Row rows[] = {
      {"RisingToTheRight", 1, 0, -40}, {"RisingToTheLeft", -1, 0, 60},
      {"RisingUpwards", 0, 1, -47},    {"RisingDownwards", 0, -1, 53},
      {"RisingAslant", 1, 1, -97},     {"RisingAslantToTheLeft", -1, 1, 3},
      {"FallingAslant", -1, -1, 97},   {"FallingAslantToTheRight", 1, -1, -3},
  };
  for (const Row& row : rows) {
    const auto heightAt = [&](double x, double y) {
      return row.perX * x + row.perY * y + row.constant;
    };
    std::vector<GePoint> corners;
    for (const auto& [x, y] :
         {std::pair(0, 0), std::pair(100, 0), std::pair(100, 100), std::pair(0, 100)}) {
      corners.emplace_back(x, y, heightAt(x, y));
    }
    Model model = plates(1, 0);
    model.push_back(face(corners));
    const Scene scene = sceneOf(model);
    const Projection projection = topOf(scene);
    const Surfaces surfaces(scene, projection);
    DepthBand band(surfaces, kSide);
    Bands bands({});
    band.draw(0, kSide, 0, surfaces.nearestFirst(), bands);
    for (int y = 0; y < kSide * kSamples; ++y) {
      for (int x = 0; x < kSide * kSamples; ++x) {
        const double height = heightAt((x + 0.5) / (kSide * kSamples) * 100,
                                       100 - (y + 0.5) / (kSide * kSamples) * 100);
        if (std::fabs(height) < 1e-3) continue;
        ASSERT_EQ(band.at(x, y)->instance, height > 0 ? 1U : 0U)
            << row.name << ' ' << x << ' ' << y;
      }
    }
  }
}

}  // namespace
}  // namespace VeskTest
