// SPDX-License-Identifier: MIT
#include "input/ElbowFit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

#include "input/ReaderTesting.h"
#include "vesk/GeConstants.h"
#include "vesk/Relb.h"

using namespace Vesk;

namespace {

// Reads the elbow of these lines and writes it again.
Recs again(const Recs& lines) {
  return linesOf(readFrom<Relb>(kFixedColumns, lines), kFixedColumns);
}

struct SameCase {
  const char* name;
  const char* points;
  const char* radius;
};

// clang-format off
const SameCase kSame[] = {
    {"MinusZeroInAPlane",
     "-0.000 3.000 10.000 -0.000 3.000 0.000 50.000 3.000 10.000 -0.000 53.000 10.000", "30.000"},
    {"RadiusOfZero",   "0.000 0.000 10.000 0.000 0.000 0.000 30.100 40.700 10.000 -40.700 30.100 10.000", "0.000"},
    {"RadiusOfMinusZero", "0.000 0.000 10.000 0.000 0.000 0.000 50.000 0.000 10.000 0.000 50.000 10.000", "-0.000"},
    {"WithoutWidth",   "1.000 2.000 3.000 1.000 2.000 3.000 51.000 2.000 3.000 1.000 52.000 3.000", "30.000"},
    // The plane of half a turn is the axis' alone.
    {"HalfATurn",      "0.000 0.000 10.000 0.000 0.000 0.000 50.000 0.000 10.000 -50.000 0.000 10.000", "30.000"},
    {"HalfATurnBelow", "0.000 0.000 0.000 0.000 0.000 10.000 50.000 0.000 0.000 -50.000 0.000 0.000", "30.000"},
    {"HalfATurnAskew", "100.333 7.000 9.000 90.333 7.000 19.000 135.688 57.000 44.355 64.978 -43.000 -26.355", "30.000"},
    {"NearTheUpperBound",
     "99999.999 0.000 10.000 99999.999 0.000 0.000 99949.999 0.000 10.000 99999.999 -50.000 10.000", "30.000"},
    {"FarAway",
     "123456.50 0.000 10.000 123456.50 0.000 0.000 123506.50 0.000 10.000 123456.50 50.000 10.000", "30.000"},
};
// clang-format on

TEST(ElbowFitTest, NumbersComeBack) {
  for (const SameCase& row : kSame) {
    const Recs lines{fixedLine("60", "ELB", fields(row.points)),
                     fixedLine("61", "ELB", fields(row.radius))};
    EXPECT_EQ(again(lines), lines) << row.name;
  }
}

class RandomElbow {
 public:
  explicit RandomElbow(unsigned seed) : random_(seed) {}

  double number(double from, double to) {
    return std::uniform_real_distribution(from, to)(random_);
  }
  GeVector direction() {
    for (;;) {
      const GeVector v(number(-1, 1), number(-1, 1), number(-1, 1));
      if (v.length() > 0.1 && v.length() <= 1) return v.normalised(0);
    }
  }

  // Of sizes from a centimetre to ten metres, up to a hundred metres away, bent by up to half a
  // turn, one in four by nearly that.
  Relb next() {
    const double size = std::pow(10.0, number(1, 4));
    Relb relb;
    relb.centre = GePoint() + direction() * std::pow(10.0, number(0, 5));
    const GeVector axis = direction();
    const GeVector start = axis.perpendicular().rotatedAbout(axis, number(0, 6));
    const double sweep =
        number(0, 4) < 1 ? kPi - std::pow(10.0, number(-9, -1)) : number(0.01, kPi);
    relb.startVector = start * size;
    relb.endVector = start.rotatedAbout(axis, sweep) * (number(0, 4) < 1 ? size * 1.1 : size);
    relb.width = size * std::pow(10.0, number(-1, 1));
    relb.depth = size * number(0.01, 2);
    relb.flipped = number(0, 2) < 1;
    return relb;
  }

 private:
  std::mt19937 random_;
};

TEST(ElbowFitTest, WhatWasWrittenIsWrittenAgain) {
  RandomElbow random(1);
  int changed = 0;
  for (int i = 0; i < 5000; ++i) {
    const Recs lines = linesOf(random.next(), kFixedColumns);
    const Recs second = again(lines);
    if (second == lines) continue;
    ++changed;
    EXPECT_TRUE(changed > 3) << i << '\n' << lines[0] << '\n' << second[0];
  }
  EXPECT_EQ(changed, 0);
}

// Numbers so large that nine characters hold them with an exponent only.
TEST(ElbowFitTest, ElbowsOfMillionsOfKilometresStayFromTheFirstRewriteOn) {
  RandomElbow random(3);
  for (int i = 0; i < 500; ++i) {
    Relb relb = random.next();
    relb.scale(1e8);
    const Recs first = again(linesOf(relb, kFixedColumns));
    EXPECT_EQ(again(first), first) << i;
  }
}

// Of sections so narrow that rounding turns the axis.
TEST(ElbowFitTest, NarrowSectionsStayFromTheFirstRewriteOn) {
  RandomElbow random(4);
  for (int i = 0; i < 500; ++i) {
    Relb relb = random.next();
    relb.width = random.number(0, 0.05);
    const Recs first = again(linesOf(relb, kFixedColumns));
    EXPECT_EQ(again(first), first) << i;
  }
}

// Half a turn without a width: the two right angles ask for the same.
TEST(ElbowFitTest, HalfTurnsWithoutWidthStayFromTheFirstRewriteOn) {
  RandomElbow random(5);
  for (int i = 0; i < 500; ++i) {
    const GeVector reach = random.direction() * random.number(10, 1000);
    const ElbowCorners corners{
        {0, 0, 0}, {0, 0, 0.001}, GePoint(reach), GePoint(reach * -1.0), random.number(1, 5)};
    const Recs first = linesOf(fitElbow(corners), kFixedColumns);
    EXPECT_EQ(again(first), first) << i;
  }
}

TEST(ElbowFitTest, AnElbowWithoutVectorsWritesNoCorners) {
  EXPECT_FALSE(writesCorners(Relb(), ElbowCorners()));
}

TEST(ElbowFitTest, StepIsThatOfTheFurthestPoint) {
  const Relb relb = RandomElbow(6).next();
  ElbowCorners record = cornersOf(relb);
  record.a.x += 3;
  record.e.y -= 4;
  EXPECT_NEAR(stepOf(relb, record), 4, 1e-9);
}

// Points that no elbow has: each is off by up to fifty last decimals.
TEST(ElbowFitTest, PointsOutOfSquareStayFromTheFirstRewriteOn) {
  RandomElbow random(2);
  int none = 0;
  for (int i = 0; i < 2000; ++i) {
    ElbowCorners corners = cornersOf(random.next());
    for (GePoint* p : {&corners.a, &corners.b, &corners.c, &corners.e}) {
      *p += random.direction() * 0.05;
    }
    Relb relb = fitElbow(corners);
    if (!writesCorners(relb, corners)) ++none;
    const Recs lines = linesOf(relb, kFixedColumns);
    EXPECT_EQ(again(lines), lines) << i;
  }
  EXPECT_GT(none, 500);
}

}  // namespace
