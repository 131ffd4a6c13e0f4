// SPDX-License-Identifier: MIT
#include "tiles/GeoBytes.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "elements/Describe.h"
#include "support/Kinds.h"
#include "vesk/Box.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/Red.h"
#include "vesk/Relb.h"

namespace VeskTest {
namespace {

// Without what has no part in a mesh.
std::unique_ptr<Vesk::Geo> plain(std::unique_ptr<Vesk::Geo> geo) {
  if (auto* box = dynamic_cast<Vesk::Box*>(geo.get())) box->edges.clear();
  if (auto* red = dynamic_cast<Vesk::Red*>(geo.get())) red->tags.clear();
  if (auto* face = dynamic_cast<Vesk::Pgon*>(geo.get())) face->arcs.clear();
  if (auto* line = dynamic_cast<Vesk::Pline*>(geo.get())) {
    line->arcs.clear();
    line->pointSize = 0;
    line->pointDirection = {};
  }
  return geo;
}

TEST(GeoBytesTest, EveryKindHasTheSameNumbersAgain) {
  Random random(1);
  for (const Kind& kind : kinds()) {
    for (int i = 0; i < 20; ++i) {
      const std::unique_ptr<Vesk::Geo> geo = plain(kind.make(random));
      std::string bytes;
      VeskTool::appendGeo(bytes, *geo);
      const std::unique_ptr<Vesk::Geo> back = VeskTool::geoOf(bytes);
      ASSERT_NE(back, nullptr) << kind;
      EXPECT_EQ(back->typeCode(), kind.typeCode);
      EXPECT_EQ(VeskTool::propertiesOf(*back), VeskTool::propertiesOf(*geo)) << kind;
    }
  }
}

TEST(GeoBytesTest, AnElbowKeepsTheSideOfItsPoints) {
  for (const bool isFlipped : {false, true}) {
    Vesk::Relb elbow;
    elbow.flipped = isFlipped;
    std::string bytes;
    VeskTool::appendGeo(bytes, elbow);
    const std::unique_ptr<Vesk::Geo> back = VeskTool::geoOf(bytes);
    EXPECT_EQ(dynamic_cast<const Vesk::Relb&>(*back).flipped, isFlipped);
  }
}

TEST(GeoBytesTest, OnlyNormalsThatAreGivenAreThereAgain) {
  Vesk::Pgon face;
  face.addVertex({1.0, 2.0, 3.0});
  face.addVertex({4.0, 5.0, 6.0}, {0.0, 0.0, 1.0});
  std::string bytes;
  VeskTool::appendGeo(bytes, face);
  const std::unique_ptr<Vesk::Geo> back = VeskTool::geoOf(bytes);
  const auto& again = dynamic_cast<const Vesk::Pgon&>(*back);
  ASSERT_EQ(again.vertices.size(), 2U);
  EXPECT_FALSE(again.vertices[0].hasNormal);
  EXPECT_TRUE(again.vertices[1].hasNormal);
  EXPECT_EQ(again.vertices[1].normal.z, 1.0);
}

}  // namespace
}  // namespace VeskTest
