// SPDX-License-Identifier: MIT
#include "draw/DepthBand.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>

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

}  // namespace
}  // namespace VeskTest
