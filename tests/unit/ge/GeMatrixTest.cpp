// SPDX-License-Identifier: MIT
#include "vesk/GeMatrix.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>
#include <random>
#include <string>

#include "vesk/GeConstants.h"
#include "vesk/GeEx.h"

using namespace Vesk;

namespace {

GeVector column(const GeMatrix& m, std::size_t i) {
  return {m.columns[i][0], m.columns[i][1], m.columns[i][2]};
}

void expectHomogeneousRow(const GeMatrix& m) {
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(m.columns[i][3], i == 3 ? 1.0 : 0.0);
}

TEST(GeMatrixTest, ADefaultMatrixIsTheIdentity) {
  const GeMatrix m;
  for (std::size_t c = 0; c < 4; ++c) {
    for (std::size_t r = 0; r < 4; ++r) EXPECT_EQ(m.columns[c][r], c == r ? 1.0 : 0.0);
  }
  EXPECT_EQ(m * GePoint(1, -2, 3.5), GePoint(1, -2, 3.5));
  EXPECT_EQ(m * GeVector(1, -2, 3.5), GeVector(1, -2, 3.5));
}

TEST(GeMatrixTest, SixteenDoublesAndNothingElse) {
  EXPECT_EQ(sizeof(GeMatrix), 16 * sizeof(double));
  EXPECT_EQ(sizeof(GePoint), 3 * sizeof(double));
  EXPECT_EQ(sizeof(GeVector), 3 * sizeof(double));
}

TEST(GeMatrixTest, TheFrameHasItsColumnsAndTheHomogeneousRow) {
  const GeMatrix m({1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12});
  EXPECT_EQ(column(m, 0), GeVector(1, 2, 3));
  EXPECT_EQ(column(m, 1), GeVector(4, 5, 6));
  EXPECT_EQ(column(m, 2), GeVector(7, 8, 9));
  EXPECT_EQ(m.translation(), GeVector(10, 11, 12));
  expectHomogeneousRow(m);
}

TEST(GeMatrixTest, APointIsMovedAndAVectorIsNot) {
  const GeMatrix m({1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12});
  // column0 * 1 + column1 * 10 + column2 * 100 = (741, 852, 963)
  EXPECT_EQ(m * GeVector(1, 10, 100), GeVector(741, 852, 963));
  EXPECT_EQ(m * GePoint(1, 10, 100), GePoint(751, 863, 975));
}

TEST(GeMatrixTest, ScalingHasNoTranslation) {
  const GeMatrix m = GeMatrix::scaling(-2.5);
  EXPECT_EQ(m * GePoint(1, 2, 4), GePoint(-2.5, -5, -10));
  EXPECT_EQ(m * GeVector(1, 2, 4), GeVector(-2.5, -5, -10));
  EXPECT_EQ(m.translation(), kNullVector);
  expectHomogeneousRow(m);
}

struct FrameCase {
  const char* name;
  GeVector main;
  GeVector reference;
  GeVector x;
  GeVector y;
  GeVector z;

  friend std::ostream& operator<<(std::ostream& out, const FrameCase& row) {
    return out << row.name;
  }
};

// clang-format off
const FrameCase kFrames[] = {
    // z x unit x = (0, 1, 0) is the reference, y = z x (0, 1, 0), x = y x z
    {"NoReferenceTakesThePerpendicular",         {0, 0, 5},  {0, 0, 0},  {0, 1, 0},  {-1, 0, 0}, {0, 0, 1}},
    {"AReferenceWithinToleranceIsNone",          {0, 0, 5},  {2e-15, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}},
    {"ThePerpendicularReferenceIsTheXAxis",      {0, 0, 5},  {7, 0, 0},  {1, 0, 0},  {0, 1, 0},  {0, 0, 1}},
    {"OnlyTheAcrossPartOfTheReferenceCounts",    {0, 0, 5},  {3, 0, -8}, {1, 0, 0},  {0, 1, 0},  {0, 0, 1}},
    // y = the perpendicular of z = z x unit x, x = y x z
    {"AReferenceAlongTheMainDirection",          {0, 0, 5},  {0, 0, 2},  {1, 0, 0},  {0, 1, 0},  {0, 0, 1}},
    {"AReferenceAgainstTheMainDirection",        {0, 0, 5},  {0, 0, -2}, {1, 0, 0},  {0, 1, 0},  {0, 0, 1}},
    // the perpendicular of unit x is x x unit y = unit z; y = x x z = -y; x = -y x x = z
    {"MainAlongUnitXTakesUnitY",                 {4, 0, 0},  {0, 0, 0},  {0, 0, 1},  {0, -1, 0}, {1, 0, 0}},
};
// clang-format on

TEST(GeMatrixTest, FrameOfAMainDirectionAndAReference) {
  for (const FrameCase& row : kFrames) {
    SCOPED_TRACE(row);
    const GeMatrix m(row.main, row.reference);
    EXPECT_EQ(column(m, 0), row.x);
    EXPECT_EQ(column(m, 1), row.y);
    EXPECT_EQ(column(m, 2), row.z);
    EXPECT_EQ(m.translation(), kNullVector);
    expectHomogeneousRow(m);
  }
}

TEST(GeMatrixTest, ANullMainDirectionThrows) {
  for (const GeVector& main : {GeVector(0, 0, 0), GeVector(0, 2.2e-15, 0)}) {
    std::string place;
    try {
      const GeMatrix m(main, kUnitX);
    } catch (const GeEx::NullDir& e) {
      place = e.where;
    }
    EXPECT_EQ(place, "GeMatrix");
  }
  EXPECT_NO_THROW(GeMatrix({0, 2.3e-15, 0}, kUnitX));
}

TEST(GeMatrixTest, InfinitiesPassWithoutAnException) {
  EXPECT_NO_THROW(GeMatrix({INFINITY, 0, 0}, kUnitX));
  EXPECT_NO_THROW(GeMatrix({NAN, 0, 0}, kUnitX));
  EXPECT_NO_THROW(GeMatrix(kUnitX, {0, NAN, 0}));
}

TEST(GeMatrixTest, EveryFrameIsRightHandedAndOrthonormal) {
  std::mt19937 random(11);
  std::uniform_real_distribution<double> coordinate(-1.0, 1.0);
  const auto vector = [&] {
    return GeVector(coordinate(random), coordinate(random), coordinate(random));
  };
  for (int i = 0; i < 2000; ++i) {
    const GeVector main = vector() * 1e3;
    const GeVector reference = i % 3 == 0 ? kNullVector : i % 3 == 1 ? main * -2.0 : vector();
    const GeMatrix m(main, reference);
    const GeVector x = column(m, 0);
    const GeVector y = column(m, 1);
    const GeVector z = column(m, 2);
    for (const GeVector& axis : {x, y, z}) EXPECT_NEAR(axis.length(), 1.0, 1e-14);
    EXPECT_NEAR(triple(x, y, z), 1.0, 1e-13);
    EXPECT_NEAR(dot(z, main), main.length(), 1e-9);
    // A null or parallel reference has no component across the main direction.
    EXPECT_NEAR(dot(y, reference), 0.0, 1e-9);
  }
}

}  // namespace
