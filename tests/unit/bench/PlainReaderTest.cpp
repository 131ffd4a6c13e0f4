// SPDX-License-Identifier: MIT
#include "plain/PlainReader.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "PlantFile.h"
#include "PlantModel.h"
#include "support/TempFolder.h"
#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/RecordFile.h"
#include "vesk/Red.h"
#include "vesk/Relb.h"
#include "vesk/Torus.h"
#include "vesk/Txt.h"

using namespace Vesk;
using namespace VeskBench;

namespace {

// All that an element of the plant holds, numbers as their bits.
struct Content {
  std::int32_t typeCode = 0;
  std::vector<std::uint64_t> bits;
  std::string text;

  void add(double v) { bits.push_back(std::bit_cast<std::uint64_t>(v)); }

  template <class Point>
  void addPoint(const Point& p) {
    add(p.x);
    add(p.y);
    add(p.z);
  }

  bool operator==(const Content&) const = default;
};

Content contentOf(const Geo& geo) {
  Content content;
  content.typeCode = geo.typeCode();
  if (const auto* cyl = dynamic_cast<const Cyl*>(&geo)) {
    content.addPoint(cyl->origin);
    content.addPoint(cyl->axis);
    content.add(cyl->diameter);
  } else if (const auto* cone = dynamic_cast<const Cone*>(&geo)) {
    content.addPoint(cone->origin);
    content.addPoint(cone->axis);
    content.add(cone->diameter1);
    content.add(cone->diameter2);
  } else if (const auto* box = dynamic_cast<const Box*>(&geo)) {
    content.addPoint(box->origin);
    content.addPoint(box->edge1);
    content.addPoint(box->edge2);
    content.addPoint(box->edge3);
    content.add(static_cast<double>(box->edges.size()));
  } else if (const auto* torus = dynamic_cast<const Torus*>(&geo)) {
    content.addPoint(torus->centre);
    content.addPoint(torus->startVector);
    content.addPoint(torus->endVector);
    content.add(torus->bendRadius);
    content.add(torus->diameter);
  } else if (const auto* red = dynamic_cast<const Red*>(&geo)) {
    content.addPoint(red->origin);
    for (const GeVector& v : red->cornerVectors) content.addPoint(v);
    content.add(static_cast<double>(red->tags.size()));
  } else if (const auto* relb = dynamic_cast<const Relb*>(&geo)) {
    content.addPoint(relb->centre);
    content.addPoint(relb->startVector);
    content.addPoint(relb->endVector);
    content.add(relb->width);
    content.add(relb->depth);
    content.add(relb->flipped ? 1.0 : 0.0);
  } else if (const auto* pline = dynamic_cast<const Pline*>(&geo)) {
    for (const GePoint& p : pline->vertices) content.addPoint(p);
    content.add(static_cast<double>(pline->arcs.size()));
    content.add(pline->pointSize);
  } else if (const auto* pgon = dynamic_cast<const Pgon*>(&geo)) {
    for (const PgonVertex& vertex : pgon->vertices) {
      content.addPoint(vertex.point);
      content.add(vertex.hasNormal ? 1.0 : 0.0);
    }
    content.add(static_cast<double>(pgon->arcs.size()));
  } else if (const auto* txt = dynamic_cast<const Txt*>(&geo)) {
    content.addPoint(txt->position);
    content.addPoint(txt->direction);
    content.addPoint(txt->upDirection);
    content.add(txt->height);
    content.add(txt->charWidth);
    content.add(txt->alignment);
    content.add(txt->alignmentFlag);
    content.text = txt->text;
  }
  return content;
}

// The rival of the benchmarks must read the same.
class PlainReaderTest : public testing::TestWithParam<int> {
 protected:
  VeskTest::TempFolder folder;
};

TEST_P(PlainReaderTest, ReadsTheElementsOfTheWholeFileReader) {
  const std::vector<Element> model = plantModel(3000);
  const std::string name = writePlant(model, model.size(), GetParam());
  RecordFile file(name);
  PlainReader plain(name, GetParam());
  for (std::size_t i = 0; i < model.size(); ++i) {
    SCOPED_TRACE(i);
    ASSERT_EQ(file.next(), RecordFile::Found::kElement);
    ASSERT_TRUE(plain.next());
    const Content content = contentOf(*file.element().geo);
    ASSERT_GE(content.bits.size() + content.text.size(), 4U);
    ASSERT_EQ(content, contentOf(plain.geo()));
    ASSERT_EQ(file.element().header.f1.view(), plain.a());
    ASSERT_EQ(file.element().header.f2.view(), plain.b());
    ASSERT_EQ(file.element().header.f3.view(), plain.n());
  }
  EXPECT_EQ(file.next(), RecordFile::Found::kEnd);
  EXPECT_FALSE(plain.next());
}

INSTANTIATE_TEST_SUITE_P(Modes, PlainReaderTest, testing::Values(2, 3));

}  // namespace
