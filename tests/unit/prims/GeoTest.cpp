// SPDX-License-Identifier: MIT
#include "vesk/Geo.h"

#include <gtest/gtest.h>

#include <limits>

#include "input/Input.h"
#include "support/RecordLines.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/Pline.h"

using namespace Vesk;
using namespace VeskTest;

namespace {

// A kind that overrides no more than it must.
class Bare : public Geo {
 public:
  explicit Bare(std::int32_t typeCode) : typeCode_(typeCode) {}
  std::int32_t typeCode() const override { return typeCode_; }
  Extents& addExtents(Extents& box) const override { return box; }
  std::int32_t checkSize() const override { return 0; }
  bool isSolid() const override { return false; }
  GePoint& centroid(GePoint& p) const override { return p; }

 private:
  std::int32_t typeCode_;
};

// What `work` prints on standard output.
template <class Work>
std::string printedBy(Work work) {
  testing::internal::CaptureStdout();
  work();
  return testing::internal::GetCapturedStdout();
}

TEST(GeoTest, MoveIsNotSupportedUnlessOverridden) {
  Bare bare(8);
  EXPECT_EQ(printedBy([&] { bare.move({1, 2, 3}); }), "  Vesk::Geo::move not supported for 8\n");
}

TEST(GeoTest, RotIsNotSupportedUnlessOverridden) {
  Bare bare(8);
  EXPECT_EQ(printedBy([&] { bare.rot(GeMatrix()); }), "  Vesk::Geo::rot not supported for 8\n");
}

TEST(GeoTest, ScaleIsNotSupportedUnlessOverridden) {
  Bare bare(8);
  EXPECT_EQ(printedBy([&] { bare.scale(2.0); }), "  Vesk::Geo::scale not supported for 8\n");
}

TEST(GeoTest, EqualIsNotSupportedUnlessOverriddenAndFalse) {
  const Bare bare(-12);
  bool equal = true;
  EXPECT_EQ(printedBy([&] { equal = bare.equal(bare, 1.0); }),
            "  Vesk::Geo::equal not supported for -12\n");
  EXPECT_FALSE(equal);
}

TEST(GeoTest, OverriddenOperationsPrintNothing) {
  EXPECT_EQ(printedBy([] {
              Cyl c({0, 0, 0}, {0, 0, 1}, 2);
              c.move({1, 2, 3});
              c.rot(GeMatrix());
              c.scale(2.0);
              (void)c.equal(Bare(1), 1.0);
            }),
            "");
}

TEST(GeoTest, ReadsAndWritesNothingUnlessOverridden) {
  Bare bare(8);
  Input in({"a line"}, 3);
  EXPECT_EQ(bare.read(in), 0);
  EXPECT_EQ(in.cursor, 0u);
  Output out = assembler(2);
  EXPECT_EQ(bare.write(out), 0);
  EXPECT_EQ(shown(out), Lines{});
}

TEST(GeoTest, DefaultsAreOnePieceAndNoVolume) {
  EXPECT_EQ(Bare(8).pieceCount(), 1);
  EXPECT_EQ(Bare(8).volume(), 0.0);
}

TEST(GeoTest, CylinderNeverEqualsACone) {
  const Cyl cyl({0, 0, 0}, {0, 0, 1}, 2);
  const Cone cone({0, 0, 0}, {0, 0, 1}, 2, 2);
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_FALSE(cyl.equal(cone, infinity));
  EXPECT_FALSE(cone.equal(cyl, infinity));
}

TEST(GeoTest, AnotherClassWithTheSameCodeIsNotEqual) {
  EXPECT_FALSE(Cyl().equal(Bare(Cyl::kTypeCode), 1.0));
}

TEST(GeoTest, PolylineHasNoVolumeAndIsNotSolid) {
  const Pline pline{{0, 0, 0}, {1, 0, 0}, {1, 1, 1}};
  EXPECT_EQ(pline.volume(), 0.0);
  EXPECT_FALSE(pline.isSolid());
}

}  // namespace
