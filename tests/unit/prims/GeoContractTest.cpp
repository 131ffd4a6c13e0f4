// SPDX-License-Identifier: MIT
// What all nine kinds promise, asked through the base class alone.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <regex>
#include <vector>

#include "support/Kinds.h"
#include "support/RecordLines.h"
#include "vesk/Box.h"
#include "vesk/GeConstants.h"
#include "vesk/Red.h"
#include "vesk/Relb.h"
#include "vesk/Torus.h"

using namespace Vesk;
using namespace VeskTest;

namespace {

constexpr int kSamples = 40;
constexpr double kNear = 1e-9;  // rounding at co-ordinates of a few hundred
constexpr double kInf = std::numeric_limits<double>::infinity();

class GeoContractTest : public testing::TestWithParam<Kind> {
 protected:
  // Calls check(geo, random) with random primitives of the kind.
  template <class Check>
  void forEachSample(Check check) {
    Random random(static_cast<std::uint64_t>(GetParam().typeCode));
    for (int i = 0; i < kSamples; ++i) {
      SCOPED_TRACE(i);
      check(*GetParam().make(random), random);
      if (HasFatalFailure()) return;
    }
  }

  std::unique_ptr<Geo> copyOf(const Geo& geo) const { return GetParam().copy(geo); }

  std::unique_ptr<Geo> scaled(const Geo& geo, double factor) const {
    auto copy = copyOf(geo);
    copy->scale(factor);
    return copy;
  }
};

// Both records of a primitive, which show all of its fields. A zero's sign, which
// products with a matrix do not keep, is left out.
Lines recordsOf(const Geo& geo) {
  static const std::regex minusZero2("-0\\.000");
  static const std::regex minusZero3("([ ,|])-0(?=[ ,]|$)");
  Lines lines;
  for (const std::string& line : linesOf(geo, 2)) {
    lines.push_back(std::regex_replace(line, minusZero2, " 0.000"));
  }
  for (const std::string& line : linesOf(geo, 3)) {
    lines.push_back(std::regex_replace(line, minusZero3, "$010"));
  }
  return lines;
}

GePoint centroidOf(const Geo& geo) {
  GePoint p;
  return geo.centroid(p);
}

Extents extentsOf(const Geo& geo) {
  Extents box;
  return geo.addExtents(box);
}

TEST_P(GeoContractTest, TypeCodeAndKeywordsNameTheKind) {
  const Kind& kind = GetParam();
  forEachSample([&](const Geo& geo, Random&) {
    EXPECT_EQ(geo.typeCode(), kind.typeCode);
    std::string keyword = kind.keyword2;
    if (keyword.empty()) keyword = linesOf(geo, 2)[0].substr(7, 2) == "QU" ? "QU" : "TR";
    EXPECT_EQ(linesOf(geo, 2)[0].substr(7, keyword.size()), keyword);
    EXPECT_EQ(linesOf(geo, 3)[0].substr(7, 2), kind.keyword3);
  });
}

TEST_P(GeoContractTest, UsableSamplesAreSolidOrNotAndOnePieceOrMore) {
  forEachSample([&](const Geo& geo, Random&) {
    EXPECT_EQ(geo.checkSize(), 0);
    EXPECT_EQ(geo.isSolid(), GetParam().solid);
    EXPECT_GE(geo.pieceCount(), 1);
    if (GetParam().solid) {
      EXPECT_GT(geo.volume(), 0.0);
      EXPECT_EQ(geo.pieceCount(), 1);
    } else {
      EXPECT_EQ(geo.volume(), 0.0);
    }
  });
}

TEST_P(GeoContractTest, CopyEqualsAndIsIndependent) {
  forEachSample([&](const Geo& geo, Random&) {
    const auto copy = copyOf(geo);
    EXPECT_TRUE(copy->equal(geo, 0));
    EXPECT_EQ(recordsOf(*copy), recordsOf(geo));
    const Lines before = recordsOf(geo);
    copy->scale(2);
    EXPECT_FALSE(copy->equal(geo, 1e-3));
    EXPECT_EQ(recordsOf(geo), before);
  });
}

TEST_P(GeoContractTest, EqualIsReflexiveAndSymmetric) {
  forEachSample([&](const Geo& geo, Random& random) {
    EXPECT_TRUE(geo.equal(geo, 0));
    const auto other = GetParam().make(random);
    EXPECT_FALSE(geo.equal(*other, kNear));
    EXPECT_FALSE(other->equal(geo, kNear));
    // Now and then within, now and then beyond the tolerance.
    const auto close = scaled(geo, 1 + random.between(0, 0.01));
    for (const double tolerance : {0.01, 0.1, 0.3, 1.0, 3.0}) {
      EXPECT_EQ(geo.equal(*close, tolerance), close->equal(geo, tolerance)) << tolerance;
    }
    EXPECT_TRUE(geo.equal(*close, 10));
  });
}

TEST_P(GeoContractTest, ADifferentKindIsNeverEqual) {
  Random random(1);
  const auto geo = GetParam().make(random);
  for (const Kind& kind : kinds()) {
    if (kind.typeCode == GetParam().typeCode) continue;
    const auto other = kind.make(random);
    EXPECT_FALSE(geo->equal(*other, kInf)) << kind;
  }
}

TEST_P(GeoContractTest, MoveAndItsInverse) {
  forEachSample([&](const Geo& geo, Random& random) {
    const GeVector v = random.direction() * random.between(1, 100);
    const auto moved = copyOf(geo);
    moved->move(v);
    EXPECT_EQ(moved->equal(geo, 0.5), !GetParam().movable);
    const GeVector shift = GetParam().movable ? v : GeVector();
    EXPECT_LE(distance(extentsOf(*moved).min, extentsOf(geo).min + shift), kNear);
    EXPECT_LE(distance(extentsOf(*moved).max, extentsOf(geo).max + shift), kNear);
    moved->move(-v);
    EXPECT_TRUE(moved->equal(geo, kNear));
  });
}

TEST_P(GeoContractTest, FourQuarterTurnsAreNone) {
  const GeMatrix turns[] = {
      {kUnitY, -kUnitX, kUnitZ, kNullVector},
      {kUnitX, kUnitZ, -kUnitY, kNullVector},
      {-kUnitZ, kUnitY, kUnitX, kNullVector},
  };
  forEachSample([&](const Geo& geo, Random&) {
    for (const GeMatrix& turn : turns) {
      const auto turned = copyOf(geo);
      turned->rot(turn);
      EXPECT_FALSE(turned->equal(geo, 1e-3));
      for (int i = 0; i < 3; ++i) turned->rot(turn);
      EXPECT_TRUE(turned->equal(geo, kNear));
      EXPECT_EQ(recordsOf(*turned), recordsOf(geo));
    }
  });
}

TEST_P(GeoContractTest, MotionCarriesVolumeCentroidAndSize) {
  forEachSample([&](const Geo& geo, Random& random) {
    const GeMatrix motion = random.motion();
    const auto moved = copyOf(geo);
    moved->rot(motion);
    EXPECT_NEAR(moved->volume(), geo.volume(), kNear * geo.volume());
    EXPECT_LE(distance(centroidOf(*moved), motion * centroidOf(geo)), kNear);
    EXPECT_EQ(moved->checkSize(), 0);
  });
}

TEST_P(GeoContractTest, ScaleAndItsInverse) {
  forEachSample([&](const Geo& geo, Random&) {
    // Powers of two change no digit.
    for (const double factor : {2.0, -4.0, 0.5}) {
      const auto changed = scaled(geo, factor);
      EXPECT_FALSE(changed->equal(geo, 1e-3));
      // Two of three sizes of a negative scale are sizes below zero; length
      // times section and the corners' own sense keep or turn the sign.
      EXPECT_NEAR(std::fabs(changed->volume()), std::fabs(factor * factor * factor) * geo.volume(),
                  kNear * geo.volume());
      const GePoint c = centroidOf(geo);
      EXPECT_LE(distance(centroidOf(*changed), {factor * c.x, factor * c.y, factor * c.z}), kNear);
      changed->scale(1 / factor);
      EXPECT_TRUE(changed->equal(geo, 0));
      EXPECT_EQ(recordsOf(*changed), recordsOf(geo));
    }
  });
}

TEST_P(GeoContractTest, ModesOtherThanTwoAndThreeWriteNothing) {
  Random random(2);
  const auto geo = GetParam().make(random);
  for (const int mode : {-1, 0, 1, 4, 5}) {
    Output out = assembler(2);
    out.beginRecord("XYZ", true);
    out.nextLine();
    const Lines before = shown(out);
    out.mode = mode;
    EXPECT_EQ(geo->write(out), 1) << mode << ": the lines held before";
    out.mode = 2;
    EXPECT_EQ(shown(out), before) << mode;
  }
}

TEST_P(GeoContractTest, WriteReturnsTheNumberOfFinishedLines) {
  forEachSample([&](const Geo& geo, Random&) {
    for (const int mode : {2, 3}) {
      Output out = assembler(mode);
      const int count = geo.write(out);
      EXPECT_EQ(count, static_cast<int>(out.recs.size()));
      EXPECT_NE(out.lineText(), "") << "the last line is not finished yet";
      const int both = geo.write(out);
      EXPECT_EQ(both, static_cast<int>(out.recs.size()));
      EXPECT_EQ(both, 2 * count) << "a new record drops the open line";
    }
  });
}

TEST_P(GeoContractTest, EachRecordCountsItsLinesFromTheFirst) {
  Random random(6);
  const auto geo = GetParam().make(random);
  for (const int mode : {2, 3}) {
    Output out = assembler(mode);
    out.beginRecord("XYZ", true);
    out.nextLine();
    out.nextLine();
    out.clear();
    EXPECT_EQ(linesOf(*geo, out), linesOf(*geo, mode)) << mode;
  }
}

TEST_P(GeoContractTest, CentroidWritesIntoItsArgumentAndReturnsIt) {
  Random random(3);
  const auto geo = GetParam().make(random);
  GePoint p(7e77, 7e77, 7e77);
  EXPECT_EQ(&geo->centroid(p), &p);
  EXPECT_LT(distance(p, {0, 0, 0}), 1e4);
}

TEST_P(GeoContractTest, ExtentsOnlyEnlargeTheBoxAndReturnIt) {
  forEachSample([&](const Geo& geo, Random&) {
    Extents large({-1e4, -1e4, -1e4}, {1e4, 1e4, 1e4});
    EXPECT_EQ(&geo.addExtents(large), &large);
    EXPECT_EQ(large.min, GePoint(-1e4, -1e4, -1e4));
    EXPECT_EQ(large.max, GePoint(1e4, 1e4, 1e4));
    const Extents own = extentsOf(geo);
    Extents far({2e4, 2e4, 2e4}, {2e4, 2e4, 2e4});
    geo.addExtents(far);
    EXPECT_EQ(far.min, own.min);
    EXPECT_EQ(far.max, GePoint(2e4, 2e4, 2e4));
  });
}

// How far a shape reaches along a direction, and where.
struct Reach {
  double value = -kInf;
  std::array<double, 3> at{};

  // Takes another point of the shape if that reaches further.
  bool take(const Kind& kind, const Geo& geo, const GeVector& along, std::array<double, 3> uvw) {
    for (double& t : uvw) t = std::clamp(t, 0.0, 1.0);
    const double reached = dot(kind.at(geo, uvw[0], uvw[1], uvw[2]) - GePoint(), along);
    if (!(reached > value)) return false;
    *this = {reached, uvw};
    return true;
  }
};

// The points of a grid over the shape's surface, those first that reach furthest.
// The vertices of the polylines and polygons lie on it: kU is a multiple of their
// numbers of pieces.
std::vector<Reach> gridOf(const Kind& kind, const Geo& geo, const GeVector& along) {
  constexpr int kU = 24;
  constexpr int kW = 24;
  std::vector<Reach> grid;
  for (int i = 0; i <= kU; ++i) {
    for (int k = 0; k <= kW; ++k) {
      for (const double v : {0.0, 1.0}) {
        grid.emplace_back().take(kind, geo, along, {1.0 * i / kU, v, 1.0 * k / kW});
      }
    }
  }
  std::sort(grid.begin(), grid.end(),
            [](const Reach& a, const Reach& b) { return a.value > b.value; });
  return grid;
}

// Climbs from there in ever smaller steps. They end below 1e-8 of a parameter,
// and at an extreme the shape falls off with their square.
Reach climb(const Kind& kind, const Geo& geo, const GeVector& along, Reach best) {
  for (double step = 1.0 / 24; step > 1e-8;) {
    const std::array<double, 3> middle = best.at;
    bool better = false;
    for (int i = 0; i < 27; ++i) {
      better |= best.take(kind, geo, along,
                          {middle[0] + step * (i % 3 - 1), middle[1] + step * (i / 3 % 3 - 1),
                           middle[2] + step * (i / 9 - 1)});
    }
    if (!better) step /= 2;
  }
  return best;
}

// The best of a few climbs, which start far enough from each other to end on
// different hills.
double reachOf(const Kind& kind, const Geo& geo, const GeVector& along) {
  Reach best;
  std::vector<Reach> starts;
  for (const Reach& start : gridOf(kind, geo, along)) {
    const bool near = std::any_of(starts.begin(), starts.end(), [&start](const Reach& other) {
      return std::hypot(start.at[0] - other.at[0], start.at[1] - other.at[1],
                        start.at[2] - other.at[2]) < 0.3;
    });
    if (near) continue;
    starts.push_back(start);
    const Reach top = climb(kind, geo, along, start);
    if (top.value > best.value) best = top;
    if (starts.size() == 3) break;
  }
  return best.value;
}

void expectExactExtents(const Kind& kind, const Geo& geo) {
  const Extents box = extentsOf(geo);
  const double tolerance = 1e-8 * (1 + distance(box.min, box.max));
  EXPECT_NEAR(box.max.x, reachOf(kind, geo, {1, 0, 0}), tolerance);
  EXPECT_NEAR(box.max.y, reachOf(kind, geo, {0, 1, 0}), tolerance);
  EXPECT_NEAR(box.max.z, reachOf(kind, geo, {0, 0, 1}), tolerance);
  EXPECT_NEAR(-box.min.x, reachOf(kind, geo, {-1, 0, 0}), tolerance);
  EXPECT_NEAR(-box.min.y, reachOf(kind, geo, {0, -1, 0}), tolerance);
  EXPECT_NEAR(-box.min.z, reachOf(kind, geo, {0, 0, -1}), tolerance);
}

TEST_P(GeoContractTest, ExtentsContainTheShapeAndTouchIt) {
  forEachSample([&](const Geo& geo, Random&) { expectExactExtents(GetParam(), geo); });
}

TEST_P(GeoContractTest, ExtentsOfTheShapeTurnedOntoTheAxes) {
  const GeMatrix turns[] = {
      {kUnitY, -kUnitX, kUnitZ, kNullVector},
      {kUnitX, kUnitZ, -kUnitY, kNullVector},
      {-kUnitZ, kUnitY, kUnitX, kNullVector},
  };
  Random random(4);
  for (int i = 0; i < 10; ++i) {
    const auto geo = GetParam().make(random);
    for (const GeMatrix& turn : turns) {
      geo->rot(turn);
      expectExactExtents(GetParam(), *geo);
    }
  }
}

// Volume and first moment of the shape by the midpoint rule over the unit cube
// of its parameters, the volume of each cell by central differences.
struct Measure {
  double volume = 0.0;
  GePoint centroid;
};

Measure measure(const Kind& kind, const Geo& geo) {
  constexpr int kCells = 24;
  constexpr double kStep = 0.5 / kCells;
  GeVector moment;
  double volume = 0.0;
  const GePoint reference = kind.at(geo, 0.5, 0.5, 0.5);
  for (int i = 0; i < kCells; ++i) {
    for (int j = 0; j < kCells; ++j) {
      for (int k = 0; k < kCells; ++k) {
        const double u = (2 * i + 1) * kStep;
        const double v = (2 * j + 1) * kStep;
        const double w = (2 * k + 1) * kStep;
        const auto difference = [&](double a, double b, double c) {
          return kind.at(geo, u + a, v + b, w + c) - kind.at(geo, u - a, v - b, w - c);
        };
        const double cell = std::fabs(
            triple(difference(kStep, 0, 0), difference(0, kStep, 0), difference(0, 0, kStep)));
        moment += (kind.at(geo, u, v, w) - reference) * cell;
        volume += cell;
      }
    }
  }
  return {volume, reference + moment / volume};
}

// The steps are a 24th of each parameter: a full turn in 24 steps loses (2 pi /
// 24)^2 / 6, about 1.2 %, of the volume, evenly, so that the centroid, which the
// same factor does not change, is known much better.
TEST_P(GeoContractTest, VolumeAndCentroidAreThoseOfTheShape) {
  const Kind& kind = GetParam();
  Random random(5);
  if (!kind.solid) {
    EXPECT_EQ(kind.make(random)->volume(), 0.0);
    return;
  }
  for (int i = 0; i < 10; ++i) {
    const auto geo = kind.make(random);
    const Measure expected = measure(kind, *geo);
    const double size = distance(extentsOf(*geo).min, extentsOf(*geo).max);
    EXPECT_NEAR(geo->volume(), expected.volume, 0.015 * expected.volume) << i;
    if (kind.exactCentroid) {
      EXPECT_LE(distance(centroidOf(*geo), expected.centroid), 0.002 * size) << i;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(AllKinds, GeoContractTest,
                         testing::ValuesIn(kinds().begin(), kinds().end()),
                         [](const testing::TestParamInfo<Kind>& kind) { return kind.param.name; });

const Kind& kindOf(std::int32_t typeCode) {
  return kinds()[static_cast<std::size_t>(typeCode - 1)];
}

// Where the faces of a reducer are not plane, they count as the mean of their
// two triangulations; that is what the ruled face between the edges encloses.
TEST(ShapeTest, BentReducerHasTheVolumeBetweenRuledFaces) {
  Random random(6);
  for (int i = 0; i < 10; ++i) {
    Red red;
    for (unsigned k = 1; k < 8; ++k) {
      const GeVector corner(k & 1U ? 20 : 0, k & 2U ? 20 : 0, k & 4U ? 20 : 0);
      red.cornerVectors[k - 1] = corner + random.direction() * random.between(0, 4);
    }
    const double expected = measure(kindOf(Red::kTypeCode), red).volume;
    EXPECT_NEAR(red.volume(), expected, 1e-3 * expected) << i;
  }
}

TEST(ShapeTest, TorusCentroidIsTrueBeyondTheEightOnly) {
  Random random(7);
  for (int i = 0; i < 10; ++i) {
    const auto geo = kindOf(Torus::kTypeCode).make(random);
    const auto& torus = dynamic_cast<const Torus&>(*geo);
    const Measure expected = measure(kindOf(Torus::kTypeCode), torus);
    const double radius = torus.startVector.length();
    const double half = torus.diameter / 2;
    // The solid's own has 4 where the record system has 8.
    const double factor = (radius * radius + half * half / 8) / (radius * radius + half * half / 4);
    const GePoint own = torus.centre + (expected.centroid - torus.centre) * factor;
    EXPECT_LE(distance(centroidOf(torus), own), 0.004 * radius) << i;
  }
}

TEST(ShapeTest, ShearedBoxReportsMoreThanItHolds) {
  Random random(8);
  for (int i = 0; i < 10; ++i) {
    Box box;
    box.edge1 = random.direction() * random.between(1, 50);
    box.edge2 = random.direction() * random.between(1, 50);
    box.edge3 = random.direction() * random.between(1, 50);
    const double held = measure(kindOf(Box::kTypeCode), box).volume;
    EXPECT_NEAR(held, std::fabs(triple(box.edge1, box.edge2, box.edge3)), 1e-6 * held);
    EXPECT_GT(box.volume(), held);
    EXPECT_DOUBLE_EQ(box.volume(), box.edge1.length() * box.edge2.length() * box.edge3.length());
    EXPECT_LE(distance(centroidOf(box), measure(kindOf(Box::kTypeCode), box).centroid), 1e-9);
  }
}

// A tube or section so wide that the solid cuts itself, and one of almost half a
// turn: the extents are still exact.
TEST(ShapeTest, ExtentsOfExtremeBends) {
  Random random(9);
  for (int i = 0; i < 15; ++i) {
    SCOPED_TRACE(i);
    const auto geo = kindOf(Torus::kTypeCode).make(random);
    auto torus = dynamic_cast<const Torus&>(*geo);
    torus.diameter *= random.between(-4, 4);
    expectExactExtents(kindOf(Torus::kTypeCode), torus);
    torus.endVector = torus.endVector * 1e-3 - torus.startVector;
    expectExactExtents(kindOf(Torus::kTypeCode), torus);

    const auto other = kindOf(Relb::kTypeCode).make(random);
    auto relb = dynamic_cast<const Relb&>(*other);
    relb.depth *= random.between(-4, 4);
    relb.width *= random.between(-4, 4);
    expectExactExtents(kindOf(Relb::kTypeCode), relb);
    relb.endVector = relb.endVector * 1e-3 - relb.startVector;
    expectExactExtents(kindOf(Relb::kTypeCode), relb);
  }
}

}  // namespace
