// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <ostream>
#include <random>
#include <sstream>
#include <string>
#include <utility>

#include "rvm/Axes.h"
#include "rvm/ReviewReading.h"
#include "rvm/ReviewWriter.h"

namespace {

using VeskTest::kUpright;
using VeskTest::Numbers;
using VeskTest::readReviewText;
using VeskTest::ReviewMatrix;
using VeskTest::ReviewPolygon;
using VeskTest::ReviewReading;
using VeskTest::ReviewWriter;

constexpr double kPi = std::numbers::pi;

// Upright at (1, 2, 3) m, that is at (1000, 2000, 3000) mm.
struct ShapeCase {
  const char* name;
  std::uint32_t kind;
  Numbers parameters;
  Numbers box;
  const char* fate;
  std::string lines;
};

std::ostream& operator<<(std::ostream& out, const ShapeCase& row) { return out << row.name; }

// clang-format off
const ShapeCase kShapes[] = {
    // A frustum of 200 x 100 below and 100 x 50 above, 300 high, its top 20 further along x:
    // centres (-10, 0, -150) and (10, 0, 150), corners -- +- -+ ++ of bottom, then top.
    {"PyramidIsAReducer", 1, {200, 100, 100, 50, 20, 0, 300}, {-110, -50, -150, 90, 50, 150}, "exact",
     "r 890 1950 2850,200 0 0,0 100 0,200 100 0,70 25 300,170 25 300,70 75 300,170 75 300\n"},
    {"BoxIsABox", 2, {200, 100, 50}, {-100, -50, -25, 100, 50, 25}, "exact",
     "b 200 0 0,900 1950 2975,0 100 0,0 0 50\n"},
    // Radii 100 and 300, 50 high, a quarter turn: mean radius 200, depth 200, width 50.
    {"QuarterOfARectangularTorusIsAnElbow", 3, {100, 300, 50, kPi / 2}, {0, 0, -25, 300, 300, 25}, "exact",
     "e 1000 2000 3000,200 0 0,0 200 0,200,50\n"},
    // Half a turn: two bends of a quarter.
    {"HalfOfARectangularTorusIsTwoElbows", 3, {100, 300, 50, kPi}, {-300, 0, -25, 300, 300, 25}, "in pieces",
     "e 1000 2000 3000,200 0 0,0 200 0,200,50\ne 1000 2000 3000,0 200 0,-200 0 0,200,50\n"},
    {"QuarterOfACircularTorusIsABend", 4, {300, 50, kPi / 2}, {0, 0, -50, 350, 350, 50}, "exact",
     "t 1000 2000 3000,300 0 0,0 300 0,100\n"},
    {"HalfOfACircularTorusIsTwoBends", 4, {300, 50, kPi}, {-350, 0, -50, 350, 350, 50}, "in pieces",
     "t 1000 2000 3000,300 0 0,0 300 0,100\nt 1000 2000 3000,0 300 0,-300 0 0,100\n"},
    {"SnoutIsACone", 7, {100, 50, 200, 0, 0, 0, 0, 0, 0}, {-100, -100, -100, 100, 100, 100}, "exact",
     "n 1000 2000 2900,0 0 200,200,100\n"},
    {"SnoutOfEqualRadiiIsACylinder", 7, {100, 100, 200, 0, 0, 0, 0, 0, 0}, {-100, -100, -100, 100, 100, 100},
     "exact", "c 1000 2000 2900,0 0 200,200\n"},
    {"CylinderIsACylinder", 8, {109.55, 1000}, {-109.55, -109.55, -500, 109.55, 109.55, 500}, "exact",
     "c 1000 2000 2500,0 0 1000,219.1\n"},
    {"LineWithItsBoxIsASegment", 10, {-500, 500}, {-500, 0, 0, 500, 0, 0}, "exact",
     "l pt 500 2000 3000,pt 1000 0 0\n"},
    {"LineWithAnotherBoxIsLeftOut", 10, {5, 0}, {-5, -5, -100, 5, 5, 100}, "doubtful", ""},
    {"LineWhoseBoxIsLongerIsLeftOut", 10, {-500, 500}, {-500, 0, 0, 700, 0, 0}, "doubtful", ""},
    {"LineWithABoxBelowYIsLeftOut", 10, {-500, 500}, {-500, -5, 0, 500, 0, 0}, "doubtful", ""},
    {"LineWithABoxAboveYIsLeftOut", 10, {-500, 500}, {-500, 0, 0, 500, 5, 0}, "doubtful", ""},
    {"LineWithABoxBelowZIsLeftOut", 10, {-500, 500}, {-500, 0, -5, 500, 0, 0}, "doubtful", ""},
    {"LineWithABoxAboveZIsLeftOut", 10, {-500, 500}, {-500, 0, 0, 500, 0, 5}, "doubtful", ""},
    {"PyramidOfNegativeBottomXIsRefused", 1, {-1, 100, 100, 50, 0, 0, 9}, {0, 0, 0, 0, 0, 0}, "refused", ""},
    {"PyramidOfNegativeBottomYIsRefused", 1, {100, -1, 100, 50, 0, 0, 9}, {0, 0, 0, 0, 0, 0}, "refused", ""},
    {"PyramidOfNegativeTopXIsRefused", 1, {100, 100, -1, 50, 0, 0, 9}, {0, 0, 0, 0, 0, 0}, "refused", ""},
    {"PyramidOfNegativeTopYIsRefused", 1, {100, 100, 100, -1, 0, 0, 9}, {0, 0, 0, 0, 0, 0}, "refused", ""},
    {"SnoutOfNegativeBottomIsRefused", 7, {-1, 50, 200, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0}, "refused", ""},
    {"SnoutOfNegativeTopIsRefused", 7, {50, -1, 200, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0}, "refused", ""},
    {"SnoutShearedByARightAngleIsRefused", 7, {50, 50, 200, 0, 0, 0, 1.58, 0, 0}, {0, 0, 0, 0, 0, 0}, "refused", ""},
    {"NegativeLengthIsRefused", 2, {200, -100, 50}, {-100, -50, -25, 100, 50, 25}, "refused", ""},
    {"ZeroRadiusIsRefused", 8, {0, 1000}, {0, 0, -500, 0, 0, 500}, "refused", ""},
    {"NoAngleIsRefused", 4, {300, 50, 0}, {0, 0, 0, 0, 0, 0}, "refused", ""},
    {"MoreThanATurnIsRefused", 4, {300, 50, 6.3}, {-350, -350, -50, 350, 350, 50}, "refused", ""},
    {"TubeWiderThanItsBendIsRefused", 4, {49, 50, kPi}, {-99, 0, -50, 99, 99, 50}, "refused", ""},
    {"FlatPyramidIsRefused", 1, {200, 100, 100, 50, 0, 0, 0}, {-100, -50, 0, 100, 50, 0}, "refused", ""},
    {"PyramidWithoutWidthIsRefused", 1, {0, 100, 0, 50, 0, 0, 100}, {0, -50, -50, 0, 50, 50}, "refused", ""},
    {"UnknownKindIsRefused", 12, {}, {0, 0, 0, 0, 0, 0}, "refused", ""},
};
// clang-format on

std::string fileOf(ReviewWriter::Form form, const ShapeCase& row, const ReviewMatrix& matrix) {
  ReviewWriter writer(form);
  writer.group("/PUMP");
  writer.shape(row.kind, matrix, row.box, row.parameters);
  writer.end();
  return writer.finish();
}

class EachShape : public testing::TestWithParam<std::tuple<ShapeCase, ReviewWriter::Form>> {};

TEST_P(EachShape, BecomesTheseRecords) {
  const auto& [row, form] = GetParam();
  const ReviewReading reading = readReviewText(fileOf(form, row, kUpright));
  EXPECT_EQ(reading.fault, "");
  EXPECT_EQ(reading.lines(), row.lines);
  ASSERT_EQ(reading.rows.size(), 1U);
  EXPECT_NE(reading.rows[0].find(row.fate), std::string::npos) << reading.rows[0];
  // What is drawn as it is has the box that stands beside it, and no other.
  if (std::string(row.fate) != "exact") return;
  EXPECT_EQ(reading.counts.boxesDisagree, 0U);
  for (std::size_t i = 0; i < 6; ++i) {
    ShapeCase other = row;
    other.box[i] += i < 3 ? -1.0 : 1.0;
    EXPECT_EQ(readReviewText(fileOf(form, other, kUpright)).counts.boxesDisagree,
              row.kind == 10 ? 0U : 1U)
        << i;
  }
}

INSTANTIATE_TEST_SUITE_P(Of, EachShape,
                         testing::Combine(testing::ValuesIn(kShapes),
                                          testing::Values(ReviewWriter::Form::kBinary,
                                                          ReviewWriter::Form::kText)),
                         [](const auto& row) {
                           return std::string(std::get<0>(row.param).name) +
                                  (std::get<1>(row.param) == ReviewWriter::Form::kBinary ? "Binary"
                                                                                         : "Text");
                         });

// How many bends a sweep becomes: of 120 degrees at most, but for what rounding to
// 32 bits or five decimals adds.
struct BendCase {
  double degrees;
  std::size_t bends;
};

TEST(ReviewBends, AreOf120DegreesAtMost) {
  const BendCase rows[] = {{1, 1},   {90, 1},  {119, 1}, {120, 1}, {121, 2},
                           {180, 2}, {240, 2}, {241, 3}, {359, 3}, {360, 3}};
  for (const BendCase& row : rows) {
    for (const auto form : {ReviewWriter::Form::kBinary, ReviewWriter::Form::kText}) {
      ReviewWriter writer(form);
      const double angle = row.degrees * kPi / 180.0;
      writer.shape(4, kUpright, {0, 0, 0, 0, 0, 0}, {300, 50, angle});
      const ReviewReading reading = readReviewText(writer.finish());
      EXPECT_EQ(reading.elements.size(), row.bends) << row.degrees;
      // Pappus: the section's area times the way of its centre.
      EXPECT_NEAR(reading.volume, kPi * 50 * 50 * 300 * angle, 2e-5 * reading.volume);
    }
  }
}

struct SweepCase {
  const char* name;
  std::uint32_t kind;
  Numbers parameters;
  Numbers box;
};

constexpr double kDegree = kPi / 180.0;

// Of a ring of 50 or a section from 100 to 300 that turns so far from x towards y: it is as wide
// as its ends and the axes that it passes. sin 45 = cos 45 = 0.707107, sin 200 = -0.342020.
const SweepCase kSweeps[] = {
    {"RingOf45", 4, {300, 50, 45 * kDegree}, {176.777, 0, -50, 350, 247.487, 50}},
    {"RingOf120", 4, {300, 50, 120 * kDegree}, {-175, 0, -50, 350, 350, 50}},
    {"RingOf200", 4, {300, 50, 200 * kDegree}, {-350, -119.707, -50, 350, 350, 50}},
    {"RingOf300", 4, {300, 50, 300 * kDegree}, {-350, -350, -50, 350, 350, 50}},
    {"RingOf360", 4, {300, 50, 360 * kDegree}, {-350, -350, -50, 350, 350, 50}},
    {"SectionOf45", 3, {100, 300, 50, 45 * kDegree}, {70.711, 0, -25, 300, 212.132, 25}},
    {"SectionOf120", 3, {100, 300, 50, 120 * kDegree}, {-150, 0, -25, 300, 300, 25}},
    {"SectionOf200", 3, {100, 300, 50, 200 * kDegree}, {-300, -102.606, -25, 300, 300, 25}},
    {"SectionOf300", 3, {100, 300, 50, 300 * kDegree}, {-300, -300, -25, 300, 300, 25}},
    // A bowl of 500 across and 250 high; more than half a sphere: of 300 at its rim and 600 high
    // the sphere has a radius of (300 * 300 + 600 * 600) / 1200 = 375.
    {"EllipticalDish", 5, {500, 250}, {-500, -500, 0, 500, 500, 250}},
    {"SphericalDish", 6, {500, 250}, {-500, -500, 0, 500, 500, 250}},
    {"MoreThanHalfASphere", 6, {300, 600}, {-375, -375, 0, 375, 375, 600}},
    {"SnoutThatLeans", 7, {100, 50, 200, 40, -20, 0, 0, 0, 0}, {-120, -90, -100, 80, 110, 100}},
};

// Each number of the box that stands beside them counts, two millimetres of it.
TEST(ReviewBoxes, AreThoseOfTheShapes) {
  for (const SweepCase& row : kSweeps) {
    for (std::size_t i = 0; i <= 6; ++i) {
      for (const double by : {-2.0, 2.0}) {
        Numbers box = row.box;
        if (i < 6) box[i] += by;
        ReviewWriter writer(ReviewWriter::Form::kBinary);
        writer.shape(row.kind, kUpright, box, row.parameters);
        EXPECT_EQ(readReviewText(writer.finish()).counts.boxesDisagree, i < 6 ? 1U : 0U)
            << row.name << ' ' << i << ' ' << by;
      }
    }
  }
}

// Lengths agree within 0.02 mm and a thousandth.
TEST(ReviewBoxes, AgreeWithinAThousandth) {
  for (const auto& [half, disagree] : {std::pair(500.51, 0U), std::pair(500.54, 1U),
                                       std::pair(499.49, 0U), std::pair(499.46, 1U)}) {
    ReviewWriter writer(ReviewWriter::Form::kBinary);
    writer.shape(8, kUpright, {-50, -50, -500, 50, 50, half}, {50, 1000});
    EXPECT_EQ(readReviewText(writer.finish()).counts.boxesDisagree, disagree) << half;
  }
}

// Volumes of what is sliced or faceted, from formulas.
struct RoundCase {
  const char* name;
  std::uint32_t kind;
  Numbers parameters;
  Numbers box;
  double volume;
  std::size_t fate;
};

const RoundCase kRound[] = {
    {"EllipticalDish",
     5,
     {500, 250},
     {-500, -500, 0, 500, 500, 250},
     2.0 / 3 * kPi * 500 * 500 * 250,
     2},
    {"SphericalDish",
     6,
     {500, 100},
     {-500, -500, 0, 500, 500, 100},
     kPi * 100 * (3 * 250000 + 10000) / 6,
     2},
    {"DishOfMoreThanHalfASphere",
     6,
     {300, 900},
     {-500, -500, 0, 500, 500, 900},
     kPi * 900 * (3 * 90000 + 810000) / 6,
     2},
    {"Sphere", 9, {600}, {-300, -300, -300, 300, 300, 300}, 4.0 / 3 * kPi * 2.7e7, 2},
    {"SphereByItsRadius", 9, {300}, {-300, -300, -300, 300, 300, 300}, 4.0 / 3 * kPi * 2.7e7, 2},
    {"OffsetSnout",
     7,
     {200, 100, 400, 50, 20, 0, 0, 0, 0},
     {-225, -210, -200, 175, 190, 200},
     kPi * 400 / 3 * (40000 + 20000 + 10000),
     3},
    {"SnoutOffsetAside",
     7,
     {200, 100, 400, 0, 20, 0, 0, 0, 0},
     {-200, -210, -200, 200, 190, 200},
     kPi * 400 / 3 * (40000 + 20000 + 10000),
     3},
    // The side leans by 50 in x, and there the lower end is higher by 0.3 rad, the upper
    // lower by 0.2: the integral of height over the side's shadow.
    {"ShearedAndOffsetSnout",
     7,
     {200, 100, 400, 50, 0, 0.3, 0, -0.2, 0},
     {0, 0, 0, 0, 0, 0},
     kPi*(400.0 / 3 * 70000 - std::tan(0.3) * 50 * (40000.0 / 3 + 20000.0 / 6) +
          std::tan(0.2) * 50 * (10000.0 / 3 + 20000.0 / 6)),
     3},
    // Ends sheared about the axis take away what they add.
    {"ConeShearedBelow",
     7,
     {200, 100, 400, 0, 0, 0, 0.3, 0, 0},
     {0, 0, 0, 0, 0, 0},
     kPi * 400 / 3 * 70000,
     3},
    {"ConeShearedAbove",
     7,
     {200, 100, 400, 0, 0, 0, 0, 0, 0.3},
     {0, 0, 0, 0, 0, 0},
     kPi * 400 / 3 * 70000,
     3},
    {"ShearedSnout",
     7,
     {100, 100, 400, 0, 0, 0.3, 0, -0.2, 0.1},
     {0, 0, 0, 0, 0, 0},
     kPi * 1e4 * 400,
     3},
    // Between the ends each line runs aside by (50, 20): over the mean slope of both ends it
    // loses so much of its height.
    {"ShearedSnoutThatLeans",
     7,
     {100, 100, 400, 50, 20, 0.3, 0, -0.2, 0.1},
     {0, 0, 0, 0, 0, 0},
     kPi * 1e4 *
         (400 - 50 * (std::tan(0.3) + std::tan(-0.2)) / 2 -
          20 * (std::tan(0.0) + std::tan(0.1)) / 2),
     3},
};

TEST(ReviewRound, IsSlicedOrFacetedWithinTheTolerance) {
  for (const RoundCase& row : kRound) {
    double before = 1e300;
    for (const double tolerance : {10.0, 1.0, 0.1, 0.01}) {
      ReviewWriter writer(ReviewWriter::Form::kBinary);
      writer.shape(row.kind, kUpright, row.box, row.parameters);
      const ReviewReading reading = readReviewText(writer.finish(), {.tolerance = tolerance});
      const Vesk::ReviewKindCount& kind = reading.counts.kinds[row.kind];
      EXPECT_EQ(kind.fates[row.fate], 1U) << row.name;
      EXPECT_LE(kind.deviation, tolerance) << row.name;
      // What is said to be lost is what is missing.
      EXPECT_NEAR(reading.volume + kind.volumeLost, row.volume, 1e-6 * row.volume) << row.name;
      EXPECT_LT(kind.volumeLost, before) << row.name;
      before = kind.volumeLost;
    }
    EXPECT_LT(before, 1e-3 * row.volume) << row.name;
  }
}

// Of two spheres the one that is further off counts, whichever comes first.
TEST(ReviewRound, DeviationOfAKindIsTheLargest) {
  const auto deviationOf = [](const std::vector<double>& diameters) {
    ReviewWriter writer(ReviewWriter::Form::kBinary);
    for (const double d : diameters) {
      const double r = d / 2;
      writer.shape(9, kUpright, {-r, -r, -r, r, r, r}, {d});
    }
    return readReviewText(writer.finish(), {.tolerance = 1.0}).counts.kinds[9].deviation;
  };
  // Of 4 there are pieces of 45 degrees: 2 (1 - cos 22.5 degrees).
  EXPECT_NEAR(deviationOf({4}), 2 * (1 - std::cos(kPi / 8)), 1e-9);
  EXPECT_GT(deviationOf({4000}), 0.9);
  EXPECT_EQ(deviationOf({4000, 4}), deviationOf({4000}));
  EXPECT_EQ(deviationOf({4, 4000}), deviationOf({4000}));
}

// Axes askew make lengths longer by their squares together at the most: sqrt(1 + 1.04 + 4) of 100
// is 245.8, of which pieces within 1 are of 10.34 degrees: 34.8, so 36, two of them a body.
TEST(ReviewRound, OfAxesAskewIsAsFineAsTheirLengthsTogetherAsk) {
  ReviewWriter writer(ReviewWriter::Form::kBinary);
  writer.shape(8, {0.001, 0, 0, 0.0002, 0.001, 0, 0, 0, 0.002, 0, 0, 0},
               {-100, -100, -5, 100, 100, 5}, {100, 10});
  const ReviewReading reading = readReviewText(writer.finish(), {.tolerance = 1.0});
  EXPECT_EQ(reading.elements.size(), 18U);
}

TEST(ReviewRound, SphereThatItsBoxDoesNotDecideIsDoubtful) {
  ReviewWriter writer(ReviewWriter::Form::kBinary);
  writer.shape(9, kUpright, {-7, -7, -7, 7, 7, 7}, {600});
  const ReviewReading reading = readReviewText(writer.finish());
  EXPECT_EQ(reading.counts.kinds[9].fates[4], 1U);
  EXPECT_FALSE(reading.elements.empty());
}

// Half a turn of radius 300 within a millionth of a millimetre: 0.00016 rad each, 19,238 pieces.
TEST(ReviewRound, OfMoreThan4096PiecesIsRefused) {
  ReviewWriter writer(ReviewWriter::Form::kBinary);
  writer.shape(9, kUpright, {-300, -300, -300, 300, 300, 300}, {600});
  const ReviewReading reading = readReviewText(writer.finish(), {.tolerance = 1e-6});
  EXPECT_EQ(reading.counts.kinds[9].fates[5], 1U);
  EXPECT_TRUE(reading.elements.empty());
}

// Of 0.01 mm: its box is within the rounding of both, and nearer to that of the diameter.
TEST(ReviewRound, TinySphereIsOfTheSizeThatItsBoxIsNearerTo) {
  ReviewWriter writer(ReviewWriter::Form::kBinary);
  writer.shape(9, kUpright, {-0.005, -0.005, -0.005, 0.005, 0.005, 0.005}, {0.01});
  const ReviewReading reading = readReviewText(writer.finish(), {.tolerance = 0.1});
  EXPECT_EQ(reading.counts.kinds[9].fates[2], 1U);
  // A tolerance above the radius: pieces of 45 degrees.
  EXPECT_EQ(reading.elements.size(), 4U);
  EXPECT_NEAR(reading.box.max.z - reading.box.min.z, 0.01, 1e-9);
}

// Ends of different sizes that are sheared have more than one meaning.
TEST(ReviewRound, ShearedSnoutOfTwoSizesIsCounted) {
  for (const double top : {100.0, 50.0}) {
    ReviewWriter writer(ReviewWriter::Form::kBinary);
    writer.shape(7, kUpright, {0, 0, 0, 0, 0, 0}, {100, top, 400, 0, 0, 0.1, 0, 0, 0});
    EXPECT_EQ(readReviewText(writer.finish()).counts.oddSnouts, top == 50.0 ? 1U : 0U);
  }
}

// Every round kind, with axes that are stretched, skew or mirrored: the volume is
// that of the upright one times the determinant.
TEST(ReviewRound, KeepsItsVolumeUnderAnyMatrix) {
  const RoundCase rows[] = {
      {"Cylinder", 8, {100, 400}, {-100, -100, -200, 100, 100, 200}, kPi * 1e4 * 400, 0},
      {"Cone",
       7,
       {100, 50, 400, 0, 0, 0, 0, 0, 0},
       {-100, -100, -200, 100, 100, 200},
       kPi * 400 / 3 * 17500,
       0},
      {"Bend", 4, {300, 100, 4}, {0, 0, 0, 0, 0, 0}, kPi * 1e4 * 300 * 4, 0},
      {"Elbow", 3, {100, 300, 50, 4}, {0, 0, 0, 0, 0, 0}, 80000.0 / 2 * 4 * 50, 0},
      kRound[0],
      kRound[1],
      kRound[2],
      kRound[3],
      kRound[5],
      kRound[6]};
  const ReviewMatrix matrices[] = {
      {0.002, 0, 0, 0, 0.001, 0, 0, 0, 0.001, 0, 0, 0},        // uneven: 2
      {0.001, 0, 0, 0.0005, 0.001, 0, 0, 0, 0.001, 0, 0, 0},   // skew: 1
      {-0.001, 0, 0, 0, 0.001, 0, 0, 0, 0.001, 0, 0, 0},       // mirrored: 1
      {-0.001, 0, 0, 0.0003, 0.002, 0, 0, 0, 0.001, 0, 0, 0},  // both: 2
      {0, 0.001, 0, 0, 0, 0.001, 0.001, 0, 0, 0, 0, 0},        // turned: 1
  };
  const double determinants[] = {2, 1, 1, 2, 1};
  for (const RoundCase& row : rows) {
    for (std::size_t m = 0; m < std::size(matrices); ++m) {
      ReviewWriter writer(ReviewWriter::Form::kBinary);
      writer.shape(row.kind, matrices[m], row.box, row.parameters);
      const ReviewReading reading = readReviewText(writer.finish(), {.tolerance = 0.4});
      const double volume = row.volume * determinants[m];
      const Vesk::ReviewKindCount& kind = reading.counts.kinds[row.kind];
      EXPECT_NEAR(reading.volume + kind.volumeLost, volume, 2e-6 * volume) << row.name << m;
      EXPECT_LT(kind.volumeLost, 2e-2 * volume) << row.name << m;
      EXPECT_LE(kind.deviation, 0.4) << row.name << m;
    }
  }
}

// Turned at random: boxes of rotated shapes against points of the local shape.
TEST(ReviewPlaces, AreWorldTimesAThousand) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> number(-1.0, 1.0);
  for (int i = 0; i < 50; ++i) {
    const GeVector z = GeVector(number(random), number(random), number(random)).normalised(1e-9);
    const GeVector x = z.perpendicular().normalised(1e-9);
    const GeVector y = cross(z, x);
    const GeVector o(number(random), number(random), number(random));
    const ReviewMatrix matrix = {x.x / 1000, x.y / 1000, x.z / 1000, y.x / 1000,
                                 y.y / 1000, y.z / 1000, z.x / 1000, z.y / 1000,
                                 z.z / 1000, o.x,        o.y,        o.z};
    ReviewWriter writer(ReviewWriter::Form::kBinary);
    writer.shape(2, matrix, {-100, -50, -25, 100, 50, 25}, {200, 100, 50});
    const ReviewReading reading = readReviewText(writer.finish());
    Vesk::Extents box;
    for (int k = 0; k < 8; ++k) {
      box.add(GePoint(o * 1000.0 + x * ((k & 1) != 0 ? 100.0 : -100.0) +
                      y * ((k & 2) != 0 ? 50.0 : -50.0) + z * ((k & 4) != 0 ? 25.0 : -25.0)));
    }
    EXPECT_LT(distance(box.min, reading.box.min), 1e-3);
    EXPECT_LT(distance(box.max, reading.box.max), 1e-3);
    EXPECT_NEAR(reading.volume, 1e6, 1.0);
  }
}

// Five decimals of turned axes: perpendicular again, and 0.001 long.
TEST(ReviewPlaces, TextAxesAreRepaired) {
  const double c = std::cos(0.4) / 1000;
  const double s = std::sin(0.4) / 1000;
  ReviewWriter writer(ReviewWriter::Form::kText);
  writer.shape(8, {c, s, 0, -s, c, 0, 0, 0, 0.001, 0, 0, 0}, {-50, -50, -500, 50, 50, 500},
               {50, 1000});
  writer.shape(8, kUpright, {-50, -50, -500, 50, 50, 500}, {50, 1000});
  const ReviewReading reading = readReviewText(writer.finish());
  EXPECT_EQ(reading.counts.axesRepaired, 1U);
  EXPECT_NEAR(reading.volume, 2 * kPi * 2500 * 1000, 1e-3);
  EXPECT_EQ(reading.counts.kinds[8].fates[0], 2U);
}

// Turned by 0.4 and twice as large: five decimals leave lengths of 0.0019985, 0.0019985 and
// 0.002, a dish with one scale. Half as wide along y, it has two.
struct ShearCase {
  const char* name;
  std::size_t parameter;
  double x;  // of the lowest or highest corner
  double y;
  bool isTop;
};

// Ends of a cylinder of 100 and 400 that rise with x or y by tan(0.3): their highest and lowest
// corners.
TEST(ReviewRound, ShearsRiseAlongTheirOwnAxis) {
  constexpr ShearCase kShears[] = {{"BottomAlongX", 5, -100, 0, false},
                                   {"BottomAlongY", 6, 0, -100, false},
                                   {"TopAlongX", 7, 100, 0, true},
                                   {"TopAlongY", 8, 0, 100, true}};
  for (const ShearCase& row : kShears) {
    Numbers parameters = {100, 100, 400, 0, 0, 0, 0, 0, 0};
    parameters[row.parameter] = 0.3;
    ReviewWriter writer(ReviewWriter::Form::kBinary);
    writer.shape(7, {0.001, 0, 0, 0, 0.001, 0, 0, 0, 0.001, 0, 0, 0}, {0, 0, 0, 0, 0, 0},
                 parameters);
    const ReviewReading reading = readReviewText(writer.finish(), {.tolerance = 0.1});
    std::array<double, 3> found = {0, 0, 0};
    for (const std::string& record : reading.elements) {
      std::string text = record.substr(2);
      std::replace(text.begin(), text.end(), ',', ' ');
      std::istringstream stream(text);
      std::array<std::array<double, 3>, 8> corners{};
      for (auto& corner : corners) stream >> corner[0] >> corner[1] >> corner[2];
      for (std::size_t k = 0; k < 8; ++k) {
        std::array<double, 3> p = corners[k];
        for (std::size_t i = 0; k > 0 && i < 3; ++i) p[i] += corners[0][i];
        if (row.isTop ? p[2] > found[2] : p[2] < found[2]) found = p;
      }
    }
    EXPECT_NEAR(found[0], row.x, 1e-3) << row.name;
    EXPECT_NEAR(found[1], row.y, 1e-3) << row.name;
    EXPECT_NEAR(found[2], (row.isTop ? 1 : -1) * (200 + 100 * std::tan(0.3)), 1e-3) << row.name;
  }
}

// Of two lengths that rounding has set apart the mean; a third that is another stays.
TEST(ReviewPlaces, AxesThatRoundingSetsApartGetTheirMean) {
  Vesk::Axes axes = {GeVector(0.0005, 0, 0), GeVector(0, 0.000502, 0), GeVector(0, 0, 0.0007)};
  EXPECT_TRUE(Vesk::repairAxes(axes));
  EXPECT_NEAR(axes[0].length(), 0.000501, 1e-12);
  EXPECT_NEAR(axes[1].length(), 0.000501, 1e-12);
  EXPECT_NEAR(axes[2].length(), 0.0007, 1e-12);
}

struct LengthsCase {
  const char* name;
  double x;
  double y;
  double z;
  double xAfter;
  double yAfter;
  double zAfter;
};

// In thousandths: within a hundredth of 1 all are 1. Others are one where they differ by 0.018 and
// a hundredth of the shorter at the most.
const LengthsCase kLengths[] = {
    {"Customary", 1, 1, 1, 1, 1, 1},
    {"AlmostCustomary", 1.0099, 0.9901, 1.005, 1, 1, 1},
    {"NotCustomary", 1.0101, 2, 3, 1.0101, 2, 3},
    {"NotCustomaryBelow", 0.9899, 2, 3, 0.9899, 2, 3},
    {"ShortWithinAHundredth", 0.5, 0.5049, 0.7, 0.50245, 0.50245, 0.7},
    {"ShortBeyondAHundredth", 0.5, 0.5051, 0.7, 0.5, 0.5051, 0.7},
    {"LongWithinTheRounding", 2, 2.0179, 3, 2.00895, 2.00895, 3},
    {"LongBeyondTheRounding", 2, 2.0181, 3, 2, 2.0181, 3},
    {"AllThree", 2, 2.009, 2.0135, 2.0075, 2.0075, 2.0075},
    {"ThirdTooFarFromTheFirst", 2, 2.009, 2.019, 2.0045, 2.0045, 2.019},
    {"ThirdTooFarFromTheSecond", 2.009, 2, 2.019, 2.0045, 2.0045, 2.019},
    {"FirstCustomary", 1, 1.0105, 1.011, 1, 1.0105, 1.011},
};

TEST(ReviewPlaces, AxesHaveOneLengthWhereRoundingSetsThemApart) {
  for (const LengthsCase& row : kLengths) {
    Vesk::Axes axes = {GeVector(row.x * 1e-3, 0, 0), GeVector(0, row.y * 1e-3, 0),
                       GeVector(0, 0, row.z * 1e-3)};
    Vesk::repairAxes(axes);
    EXPECT_NEAR(axes[0].length(), row.xAfter * 1e-3, 1e-9) << row.name;
    EXPECT_NEAR(axes[1].length(), row.yAfter * 1e-3, 1e-9) << row.name;
    EXPECT_NEAR(axes[2].length(), row.zAfter * 1e-3, 1e-9) << row.name;
  }
}

// Up to a cosine of 0.025 from a right angle, between any two; then they stay as they are.
TEST(ReviewPlaces, AxesFarFromRightAnglesStay) {
  for (std::size_t which = 0; which < 3; ++which) {
    for (const auto& [cosine, isRepaired] : {std::pair(0.0249, true), std::pair(0.0251, false)}) {
      Vesk::Axes axes = {GeVector(0.001, 0, 0), GeVector(0, 0.001, 0), GeVector(0, 0, 0.001)};
      const GeVector toward = axes[(which + 1) % 3];
      axes[which] = axes[which] * std::sqrt(1 - cosine * cosine) + toward * cosine;
      EXPECT_EQ(Vesk::isFrame(axes), isRepaired) << which;
      EXPECT_EQ(Vesk::repairAxes(axes), isRepaired) << which;
      const double left = std::fabs(dot(axes[which], toward)) / 1e-6;
      EXPECT_NEAR(left, isRepaired ? cosine / 2 : cosine, 1e-3) << which;
      for (std::size_t i = 0; i < 3 && isRepaired; ++i) {
        EXPECT_NEAR(dot(axes[i], axes[(i + 1) % 3]), 0, 1e-15) << which;
      }
    }
  }
}

// Lengths of a frame differ by a fiftieth at the most.
TEST(ReviewPlaces, AxesOfAFrameAreOfOneLength) {
  for (std::size_t which = 1; which < 3; ++which) {
    for (const auto& [length, isOne] : {std::pair(1.019, true), std::pair(1.021, false),
                                        std::pair(0.981, true), std::pair(0.979, false)}) {
      Vesk::Axes axes = {GeVector(1, 0, 0), GeVector(0, 1, 0), GeVector(0, 0, 1)};
      axes[which] = axes[which] * length;
      EXPECT_EQ(Vesk::isFrame(axes), isOne) << which << ' ' << length;
    }
  }
}

TEST(ReviewPlaces, TextAxesThatRoundingSetsApartHaveOneScale) {
  const double c = std::cos(0.4) / 500;
  const double s = std::sin(0.4) / 500;
  const Numbers box = {-500, -500, 0, 500, 500, 250};
  ReviewWriter writer(ReviewWriter::Form::kText);
  writer.shape(5, {c, s, 0, -s, c, 0, 0, 0, 0.002, 0, 0, 0}, box, {500, 250});
  const ReviewReading even = readReviewText(writer.finish(), {.tolerance = 0.01});
  EXPECT_EQ(even.counts.kinds[5].fates[2], 1U);
  EXPECT_NEAR(even.volume, 8 * 2.0 / 3 * kPi * 500 * 500 * 250, 0.003 * even.volume);
  ReviewWriter narrow(ReviewWriter::Form::kText);
  narrow.shape(5, {c, s, 0, -s / 2, c / 2, 0, 0, 0, 0.002, 0, 0, 0}, box, {500, 250});
  EXPECT_EQ(readReviewText(narrow.finish()).counts.kinds[5].fates[3], 1U);
}

// Twice as wide and five times as high: only the axes across have one scale.
TEST(ReviewPlaces, TextAxesAcrossHaveOneScaleAndTheThirdItsOwn) {
  const double c = std::cos(0.4) / 500;
  const double s = std::sin(0.4) / 500;
  ReviewWriter writer(ReviewWriter::Form::kText);
  writer.shape(8, {c, s, 0, -s, c, 0, 0, 0, 0.005, 0, 0, 0}, {-50, -50, -500, 50, 50, 500},
               {50, 1000});
  const ReviewReading reading = readReviewText(writer.finish());
  EXPECT_EQ(reading.counts.kinds[8].fates[0], 1U);
  EXPECT_NEAR(reading.volume, 20 * kPi * 2500 * 1000, 0.003 * reading.volume);
}

TEST(ReviewPlaces, AxesThatSpanNoSpaceAreRefused) {
  const ReviewMatrix flat[] = {
      {0.001, 0, 0, 0, 0.001, 0, 0, 0, 0, 0, 0, 0},
      {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0},
      {0.001, 0, 0, 0, 0.001, 0, 0.001, 0.001, 0, 0, 0, 0},
  };
  for (const ReviewMatrix& matrix : flat) {
    for (const auto form : {ReviewWriter::Form::kBinary, ReviewWriter::Form::kText}) {
      ReviewWriter writer(form);
      writer.shape(2, matrix, {-50, -50, -50, 50, 50, 50}, {100, 100, 100});
      const ReviewReading reading = readReviewText(writer.finish());
      EXPECT_EQ(reading.counts.kinds[2].fates[5], 1U);
      EXPECT_TRUE(reading.elements.empty());
    }
  }
}

// clang-format off
struct FacetCase {
  const char* name;
  std::vector<ReviewPolygon> polygons;
  std::string kinds;  // the first letter of each record, g for faces
  double area;
  std::size_t fate;
  std::size_t refused;
};
// clang-format on

TEST(ReviewFacets, BecomeFaces) {
  const VeskTest::ReviewContour square = {{0, 0, 0}, {100, 0, 0}, {100, 100, 0}, {0, 100, 0}};
  const VeskTest::ReviewContour hole = {{20, 20, 0}, {20, 40, 0}, {40, 40, 0}, {40, 20, 0}};
  const VeskTest::ReviewContour other = {{60, 60, 0}, {60, 80, 0}, {80, 80, 0}, {80, 60, 0}};
  const FacetCase rows[] = {
      {"Triangle", {{{{0, 0, 0}, {100, 0, 0}, {0, 100, 0}}}}, "g", 5000, 0, 0},
      {"Square", {{square}}, "g", 10000, 0, 0},
      {"ConcaveQuadrangle",
       {{{{0, 0, 0}, {100, 0, 0}, {20, 20, 0}, {0, 100, 0}}}},
       "gg",
       2000,
       0,
       0},
      {"Pentagon",
       {{{{0, 0, 0}, {100, 0, 0}, {100, 100, 0}, {50, 150, 0}, {0, 100, 0}}}},
       "ggg",
       12500,
       0,
       0},
      {"SquareWithAHole", {{square, hole}}, "gggggggg", 10000 - 400, 0, 0},
      {"SquareWithTwoHoles", {{square, hole, other}}, "gggggggggggggg", 10000 - 800, 0, 0},
      {"TwoPolygons", {{square}, {{{0, 0, 9}, {100, 0, 9}, {0, 100, 9}}}}, "gg", 15000, 0, 0},
      {"NoPolygon", {}, "", 0, 5, 0},
      {"PolygonWithoutContour", {{}}, "", 0, 5, 1},
      {"LineOfThree", {{{{0, 0, 0}, {50, 0, 0}, {100, 0, 0}}}}, "", 0, 5, 1},
      {"TwoCorners", {{{{0, 0, 0}, {50, 0, 0}}}, {square}}, "g", 10000, 0, 1},
      {"Crossing",
       {{{{0, 0, 0}, {100, 100, 0}, {100, 0, 0}, {0, 90, 0}, {-50, 45, 0}}}, {square}},
       "g",
       10000,
       0,
       1},
      {"RepeatedCorner",
       {{{{0, 0, 0}, {0, 0, 0}, {100, 0, 0}, {0, 100, 0}, {0, 0, 0}}}},
       "g",
       5000,
       0,
       0},
  };
  for (const FacetCase& row : rows) {
    for (const auto form : {ReviewWriter::Form::kBinary, ReviewWriter::Form::kText}) {
      ReviewWriter writer(form);
      writer.facets(kUpright, {0, 0, 0, 100, 100, 0}, row.polygons);
      const ReviewReading reading = readReviewText(writer.finish());
      std::string kinds;
      for (const std::string& each : reading.elements) kinds += each[0];
      EXPECT_EQ(kinds, row.kinds) << row.name;
      EXPECT_NEAR(reading.area, row.area, 1e-6) << row.name;
      EXPECT_EQ(reading.counts.kinds[11].fates[row.fate], 1U) << row.name;
      if (row.fate != 5) {
        EXPECT_EQ(reading.counts.facetsRefused, row.refused) << row.name;
      }
    }
  }
}

// In the planes across x, y and z and askew, both ways round: 100 x 100 less 20 x 20, and 8
// triangles for 8 corners and a bridge. 3 4 0, 0 3 4 by 5 are two directions square to nothing.
TEST(ReviewFacets, WithAHoleLieInAnyPlane) {
  using Direction = std::array<double, 3>;
  const std::pair<Direction, Direction> planes[] = {
      {{0, 1, 0}, {0, 0, 1}},     {{0, 0, 1}, {1, 0, 0}},     {{1, 0, 0}, {0, 1, 0}},
      {{0, 0, 1}, {0, 1, 0}},     {{1, 0, 0}, {0, 0, 1}},     {{0, 1, 0}, {1, 0, 0}},
      {{0, 0, 1}, {0.6, 0.8, 0}}, {{0.8, 0.6, 0}, {0, 0, 1}}, {{0.6, 0, 0.8}, {0, 1, 0}},
  };
  const std::array<double, 2> square[] = {{0, 0}, {100, 0}, {100, 100}, {0, 100}};
  const std::array<double, 2> hole[] = {{20, 20}, {20, 40}, {40, 40}, {40, 20}};
  for (const auto& [u, v] : planes) {
    const auto at = [&u = u, &v = v](const std::array<double, 2>& p) {
      return std::array<double, 3>{p[0] * u[0] + p[1] * v[0], p[0] * u[1] + p[1] * v[1],
                                   p[0] * u[2] + p[1] * v[2]};
    };
    ReviewPolygon polygon(2);
    for (const auto& p : square) polygon[0].push_back(at(p));
    for (const auto& p : hole) polygon[1].push_back(at(p));
    ReviewWriter writer(ReviewWriter::Form::kBinary);
    writer.facets(kUpright, {0, 0, 0, 100, 100, 100}, {polygon});
    const ReviewReading reading = readReviewText(writer.finish());
    EXPECT_EQ(reading.elements.size(), 8U);
    EXPECT_NEAR(reading.area, 10000 - 400, 0.01);
  }
}

TEST(ReviewFacets, WithAHoleOutsideAreRefused) {
  const VeskTest::ReviewContour square = {{0, 0, 0}, {100, 0, 0}, {100, 100, 0}, {0, 100, 0}};
  for (const double x : {200.0, -300.0, 90.0}) {
    const VeskTest::ReviewContour hole = {{x, 20, 0}, {x, 40, 0}, {x + 20, 40, 0}, {x + 20, 20, 0}};
    ReviewWriter writer(ReviewWriter::Form::kBinary);
    writer.facets(kUpright, {0, 0, 0, 100, 100, 0}, {{square, hole}, {square}});
    const ReviewReading reading = readReviewText(writer.finish());
    EXPECT_EQ(reading.counts.facetsRefused, 1U) << x;
    EXPECT_NEAR(reading.area, 10000, 1e-6) << x;
  }
}

// One corner 8 mm above the others' plane: the mean plane is 2 mm off it, at 400.
TEST(ReviewFacets, ThatAreNotPlaneAreFacetedWithTheirDeviation) {
  ReviewWriter writer(ReviewWriter::Form::kBinary);
  writer.facets(kUpright, {0, 0, 0, 400, 400, 8},
                {{{{0, 0, 0}, {400, 0, 0}, {400, 400, 8}, {0, 400, 0}}}});
  const ReviewReading reading = readReviewText(writer.finish());
  EXPECT_EQ(reading.elements.size(), 2U);
  EXPECT_EQ(reading.counts.kinds[11].fates[3], 1U);
  EXPECT_NEAR(reading.counts.kinds[11].deviation, 2.0, 0.01);
}

// A hundredth of a millimetre and a millionth of the girth are rounding.
TEST(ReviewFacets, ThatAreAlmostPlaneAreFaces) {
  for (const auto& [height, fate] : {std::pair(0.0095, 0), std::pair(0.0110, 3)}) {
    ReviewWriter writer(ReviewWriter::Form::kBinary);
    writer.facets(kUpright, {0, 0, 0, 100, 100, 0},
                  {{{{0, 0, height}, {100, 0, -height}, {100, 100, height}, {0, 100, -height}}}});
    const ReviewReading reading = readReviewText(writer.finish());
    const Vesk::ReviewKindCount& kind = reading.counts.kinds[11];
    EXPECT_EQ(kind.fates[static_cast<std::size_t>(fate)], 1U) << height;
    EXPECT_EQ(reading.elements.size(), fate == 0 ? 1U : 2U) << height;
    EXPECT_NEAR(kind.deviation, fate == 0 ? 0 : height, 1e-6) << height;
  }
}

TEST(ReviewFacets, AreTurnedRoundInAMirroredFrame) {
  ReviewWriter writer(ReviewWriter::Form::kText);
  writer.facets({-0.001, 0, 0, 0, 0.001, 0, 0, 0, 0.001, 0, 0, 0}, {0, 0, 0, 100, 100, 0},
                {{{{0, 0, 0}, {100, 0, 0}, {0, 100, 0}}}});
  EXPECT_EQ(readReviewText(writer.finish()).lines(), "g pt 0 100 0,pt -100 -100 0,pt 0 -100 0\n");
}

TEST(ReviewNumbers, ThatAreNotFiniteAreRefused) {
  const double bad[] = {std::nan(""), INFINITY, -INFINITY};
  for (const double number : bad) {
    for (std::size_t i = 0; i < 14; ++i) {
      ReviewMatrix matrix = kUpright;
      Numbers parameters = {100, 500};
      (i < 12 ? matrix[i] : parameters[i - 12]) = number;
      ReviewWriter writer(ReviewWriter::Form::kBinary);
      writer.shape(8, matrix, {-100, -100, -250, 100, 100, 250}, parameters);
      const ReviewReading reading = readReviewText(writer.finish());
      EXPECT_EQ(reading.counts.kinds[8].fates[5], 1U) << i;
      EXPECT_TRUE(reading.elements.empty());
    }
  }
}

// 3.4e38 in every place: refused, in no time.
TEST(ReviewNumbers, ThatAreHugeAreRefused) {
  for (std::uint32_t kind = 1; kind <= 9; ++kind) {
    ReviewWriter writer(ReviewWriter::Form::kBinary);
    writer.shape(kind, kUpright, {0, 0, 0, 1, 1, 1}, Numbers(9, 3.4e38));
    const ReviewReading reading = readReviewText(writer.finish());
    EXPECT_EQ(reading.elements.size(), 0U) << kind;
  }
}

}  // namespace
