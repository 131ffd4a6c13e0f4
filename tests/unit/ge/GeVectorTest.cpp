// SPDX-License-Identifier: MIT
#include "vesk/GeVector.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "vesk/GeConstants.h"
#include "vesk/GeDirect.h"
#include "vesk/GeEx.h"
#include "vesk/GePoint.h"

using namespace Vesk;

namespace {

// The place text of the exception E that `work` throws; "nothing" if none.
template <class E, class Work>
std::string placeOf(Work work) {
  try {
    work();
  } catch (const E& e) {
    return e.where;
  }
  return "nothing";
}

TEST(GeVectorTest, NullArrayNamesTheRole) {
  const double* none = nullptr;
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { GePoint p(none); }), "GePoint");
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { GeVector v(none); }), "GeVector");
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { GeDirect d(none); }), "GeDirect");
  GeVector v(1, 2, 3);
  EXPECT_EQ(placeOf<GeEx::NullPtr>([&] { v.set(none); }), "GeVector::set");
  EXPECT_EQ(v, GeVector(1, 2, 3));
}

TEST(GeVectorTest, CopiesThreeDoubles) {
  const double xyz[3] = {1.5, -2.0, 3.25};
  EXPECT_EQ(GePoint(xyz), GePoint(1.5, -2.0, 3.25));
  EXPECT_EQ(GeVector(xyz), GeVector(1.5, -2.0, 3.25));
  EXPECT_EQ(GeDirect(xyz), GeVector(1.5, -2.0, 3.25));
  GeVector v;
  v.set(xyz);
  EXPECT_EQ(v, GeVector(1.5, -2.0, 3.25));
}

TEST(GeVectorTest, NormalisingTooShortVectorGivesNull) {
  EXPECT_EQ(GeVector(1e-16, 0, 0).normalised(2.2e-15), kNullVector);
  EXPECT_EQ(GeVector(2.2e-15, 0, 0).normalised(2.2e-15), kNullVector);
}

TEST(GeVectorTest, NormalisingGivesUnitLength) {
  EXPECT_EQ(GeVector(3, 0, 4).normalised(2.2e-15), GeVector(0.6, 0, 0.8));
  GeVector v(0, -5, 0);
  v.normalise(kDirectionTolerance);
  EXPECT_EQ(v, GeVector(0, -1, 0));
}

TEST(GeVectorTest, DivisionByZeroNamesTheOperator) {
  const GeVector v(1, 2, 3);
  GeVector w(1, 2, 3);
  EXPECT_EQ(placeOf<GeEx::DivZero>([&] { (void)(v / 0.0); }), "GeDirect::operator /");
  EXPECT_EQ(placeOf<GeEx::DivZero>([&] { (void)(v / -0.0); }), "GeDirect::operator /");
  EXPECT_EQ(placeOf<GeEx::DivZero>([&] { w /= 0.0; }), "GeDirect::operator /=");
  EXPECT_EQ(w, GeVector(1, 2, 3));
  EXPECT_EQ(placeOf<GeEx::DivZero>([&] { (void)(v / 1e-300); }), "nothing");
}

TEST(GeVectorTest, AngleOfEqualUnitVectorsIsExactlyZero) {
  EXPECT_EQ(GeVector(1, 0, 0).angleTo({1, 0, 0}), 0.0);
  // Rounding lifts this cosine to 1.0000000000000002.
  const GeVector v(1, 1, 1);
  ASSERT_GT(dot(v, v) / (v.length() * v.length()), 1.0);
  EXPECT_EQ(v.angleTo(v), 0.0);
  EXPECT_EQ(v.angleTo(-v), std::acos(-1.0));
}

TEST(GeVectorTest, AngleIsUnsigned) {
  EXPECT_DOUBLE_EQ(GeVector(1, 0, 0).angleTo({0, 7, 0}), kPi / 2);
  EXPECT_DOUBLE_EQ(GeVector(0, 7, 0).angleTo({1, 0, 0}), kPi / 2);
}

TEST(GeVectorTest, AngleWithNullVectorThrows) {
  const auto angle = [](const GeVector& a, const GeVector& b) {
    return placeOf<GeEx::DivZero>([&] { (void)a.angleTo(b); });
  };
  EXPECT_EQ(angle({0, 0, 0}, {1, 0, 0}), "GeDirect::angleTo");
  EXPECT_EQ(angle({1, 0, 0}, {0, 0, 0}), "GeDirect::angleTo");
  // 1e-200 * 1e-200 is 0.0 as a double.
  EXPECT_EQ(angle({1e-200, 0, 0}, {1e-200, 0, 0}), "GeDirect::angleTo");
}

TEST(GeVectorTest, SignedAngleFollowsTheRightHand) {
  EXPECT_DOUBLE_EQ(signedAngle(kUnitZ, kUnitX, kUnitY), kPi / 2);
  EXPECT_DOUBLE_EQ(signedAngle(kUnitZ, kUnitY, kUnitX), -kPi / 2);
  EXPECT_DOUBLE_EQ(signedAngle(-kUnitZ, kUnitX, kUnitY), -kPi / 2);
  EXPECT_DOUBLE_EQ(signedAngle(kUnitZ, kUnitX, {-1, 0, 0}), kPi);
}

TEST(GeVectorTest, SignedAngleOfVectorAlongTheAxisThrows) {
  EXPECT_EQ(placeOf<GeEx::DivZero>([] { (void)signedAngle(kUnitZ, kUnitZ, kUnitX); }),
            "GeDirect::angleTo");
  EXPECT_EQ(placeOf<GeEx::DivZero>([] { (void)signedAngle(kUnitZ, kUnitX, -kUnitZ); }),
            "GeDirect::angleTo");
}

TEST(GeVectorTest, RotatesRightHanded) {
  const GeVector v = GeVector(1, 0, 0).rotatedAbout({0, 0, 2}, kPi / 2);
  EXPECT_NEAR(v.x, 0.0, 1e-15);
  EXPECT_NEAR(v.y, 1.0, 1e-15);
  EXPECT_EQ(v.z, 0.0);
}

TEST(GeVectorTest, RotatingByZeroOrAboutNullChangesNoBit) {
  const GeVector v(0.1, -0.0, 1e-310);
  for (const GeVector& r : {v.rotatedAbout({1, 2, 3}, 0.0), v.rotatedAbout(kNullVector, 1.0)}) {
    EXPECT_EQ(r, v);
    EXPECT_TRUE(std::signbit(r.y));
  }
}

TEST(GeVectorTest, ParallelInEitherSense) {
  EXPECT_TRUE(GeVector(1, 2, 3).isParallel({2, 4, 6}, kDirectionTolerance));
  EXPECT_TRUE(GeVector(1, 2, 3).isParallel({-1, -2, -3}, kDirectionTolerance));
  EXPECT_FALSE(GeVector(1, 2, 3).isParallel({1, 2, 3.001}, kDirectionTolerance));
  EXPECT_TRUE(GeVector(1, 0, 0).isParallel({1, 0.5, 0}, 0.5));
}

TEST(GeVectorTest, PerpendicularTakesTheFirstAxisThatIsNotParallel) {
  EXPECT_EQ(GeVector(0, 0, 5).perpendicular(), GeVector(0, 1, 0));    // z x unit x
  EXPECT_EQ(GeVector(0, 2, 0).perpendicular(), GeVector(0, 0, -1));   // y x unit x
  EXPECT_EQ(GeVector(-3, 0, 0).perpendicular(), GeVector(0, 0, -1));  // -x x unit y
  EXPECT_EQ(kNullVector.perpendicular(), kNullVector);
}

TEST(GeVectorTest, NullTestCountsTheTolerance) {
  EXPECT_TRUE(GeVector(0, 2.2e-15, 0).isNull(2.2e-15));
  EXPECT_FALSE(GeVector(0, 2.3e-15, 0).isNull(2.2e-15));
  EXPECT_FALSE(GeVector(0, NAN, 0).isNull(2.2e-15));
}

TEST(GeVectorTest, CrossAndTripleAreRightHanded) {
  EXPECT_EQ(cross(kUnitX, kUnitY), kUnitZ);
  EXPECT_EQ(cross(kUnitY, kUnitZ), kUnitX);
  EXPECT_EQ(cross(kUnitZ, kUnitX), kUnitY);
  // (1,2,3) . ((4,5,6) x (7,8,10)) = (1,2,3) . (2,2,-3) = -3
  EXPECT_EQ(triple({1, 2, 3}, {4, 5, 6}, {7, 8, 10}), -3.0);
}

TEST(GeVectorTest, UnitDirectionRefusesTheNullVectorOnly) {
  EXPECT_EQ(placeOf<GeEx::NullDir>([] { GeDirect d(GeVector(2.2e-15, 0, 0)); }), "GeDirect");
  EXPECT_EQ(GeDirect(GeVector(0, 0, -4)), GeVector(0, 0, -1));
  const GeDirect infinite(GeVector(INFINITY, 0, 0));
  EXPECT_TRUE(std::isnan(infinite.x));
}

TEST(GeConstantsTest, ConstantsHaveTheirValues) {
  EXPECT_EQ(kPi, std::acos(-1.0));
  EXPECT_EQ(kDirectionTolerance, 2.2e-15);
  EXPECT_EQ(kCoarseTolerance, 1e-10);
  EXPECT_EQ(kNullVector, GeVector(0, 0, 0));
  EXPECT_EQ(kUndefinedPoint, GePoint(INFINITY, INFINITY, INFINITY));
  EXPECT_EQ(kUndefinedVector, GeVector(INFINITY, INFINITY, INFINITY));
}

TEST(GePointTest, MinimumAndMaximumNeedAStrictlyBetterCoordinate) {
  GePoint p(1, 2, 0.0);
  p.takeMinimum({0, 3, -0.0});
  EXPECT_EQ(p, GePoint(0, 2, 0));
  EXPECT_FALSE(std::signbit(p.z));
  p.takeMaximum({5, NAN, 1});
  EXPECT_EQ(p, GePoint(5, 2, 1));
}

TEST(GePointTest, DifferenceAndDistance) {
  EXPECT_EQ(GePoint(1, 2, 3) - GePoint(1, 1, 1), GeVector(0, 1, 2));
  EXPECT_EQ(GePoint(1, 2, 3) - GeVector(1, 1, 1), GePoint(0, 1, 2));
  EXPECT_EQ(GePoint(1, 2, 3) + GeVector(1, 1, 1), GePoint(2, 3, 4));
  EXPECT_EQ(distance({0, 0, 0}, {3, 4, 12}), 13.0);
}

}  // namespace
