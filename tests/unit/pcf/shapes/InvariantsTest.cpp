// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "Bodies.h"
#include "pcf/shapes/Shapes.h"
#include <vesk/Box.h>
#include <vesk/GeConstants.h>

// What holds for every family, whatever its size, place and direction.
namespace Vesk::Pcf {
namespace {

class Sample {
 public:
  explicit Sample(unsigned seed) : random_(seed) {}

  double between(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random_);
  }
  bool often() { return between(0, 1) < 0.7; }

  GeVector direction() {
    for (;;) {
      const GeVector v(between(-1, 1), between(-1, 1), between(-1, 1));
      const int axis = static_cast<int>(between(0, 6));
      if (axis == 0) return {0, 0, between(0, 1) < 0.5 ? 1.0 : -1.0};
      if (axis == 1) return {1, 0, 0};
      if (v.length() > 0.1) return v.normalised(1e-3);
    }
  }

  // 1 mm to 10 m across, up to a kilometre away, short and long.
  Part part(Family family) {
    Part part;
    part.family = family;
    const double size = std::pow(10, between(0, 4));
    const GeVector along = direction();
    const GeVector aside = along.perpendicular();
    const double length = size * std::pow(10, between(-1, 1));
    const GePoint from(between(-1e6, 1e6), between(-1e6, 1e6), between(-1e6, 1e6));
    const GePoint to = from + along * length;
    part.ends = {
        {from, size, EndKind::kNotTold, often() ? -along : GeVector()},
        {to, often() ? size : size * 0.7, EndKind::kNotTold, often() ? along : GeVector()}};
    if (often()) part.ends[0].kind = EndKind::kFlanged;
    if (family == Family::kReducer && often()) part.ends[1].at = to + aside * (0.3 * size);
    if (family == Family::kBend || !often()) part.centre = from + (to - from) * 0.5;
    if (family == Family::kBend) *part.centre += aside * length;
    if (often() && between(0, 1) < 0.4 && !isFlange(family)) {
      const GePoint middle = part.centre ? *part.centre : from + (to - from) * 0.5;
      part.branches.push_back({middle + aside * size, size * 0.5, EndKind::kNotTold, {}});
    }
    part.face = often() ? 0 : 1;
    if (often()) part.spindle = direction();
    part.along = along;
    part.tolerance = often() ? 1 : size / 50;
    return part;
  }

 private:
  std::mt19937 random_;
};

bool isFinite(const Vesk::Extents& box) {
  const GePoint low = box.min;
  const GePoint high = box.max;
  return std::isfinite(low.x + low.y + low.z + high.x + high.y + high.z);
}

void expectSound(const Drawn& drawn) {
  for (const auto& body : drawn.bodies) {
    EXPECT_EQ(body->checkSize(), 0) << textOf(*body);
    EXPECT_GT(body->volume(), 0) << textOf(*body);
    if (const auto* box = dynamic_cast<const Box*>(body.get())) {
      EXPECT_GT(triple(box->edge1, box->edge2, box->edge3), 0) << textOf(*body);
    }
    Vesk::Extents extents;
    body->addExtents(extents);
    EXPECT_TRUE(isFinite(extents)) << textOf(*body);
  }
}

constexpr int kSamples = 60;

template <class Check>
void forEachPart(Check check) {
  for (int family = static_cast<int>(Family::kUnknown);
       family <= static_cast<int>(Family::kSupportSpring); ++family) {
    Sample sample(static_cast<unsigned>(family));
    for (int i = 0; i < kSamples; ++i) {
      const Part part = sample.part(static_cast<Family>(family));
      SCOPED_TRACE(std::string(nameOf(part.family)) + " " + std::to_string(i));
      check(part);
    }
  }
}

TEST(Invariants, BodiesAreSoundAndNothingIsMissing) {
  forEachPart([](const Part& part) {
    const Drawn drawn = draw(part);
    EXPECT_FALSE(drawn.bodies.empty());
    EXPECT_TRUE(drawn.missing.empty()) << drawn.missing.front();
    expectSound(drawn);
  });
}

// Along every stretch but the tangents of an arc.
TEST(Invariants, BodiesCoverTheCentreLine) {
  forEachPart([](const Part& part) {
    if (part.family == Family::kBend) return;
    const Drawn drawn = draw(part);
    const double tolerance = 1e-6 * (1 + part.ends[0].outside);
    for (const Stretch& stretch : drawn.covered) {
      for (int i = 0; i <= 40; ++i) {
        const GePoint p = stretch.from + (stretch.to - stretch.from) * (i / 40.0);
        EXPECT_TRUE(contains(drawn, p, tolerance)) << i;
      }
    }
  });
}

TEST(Invariants, TheCentreLineGoesThroughEveryEnd) {
  forEachPart([](const Part& part) {
    if (isSupport(part.family) || part.family == Family::kInstrumentDial) return;
    const Drawn drawn = draw(part);
    const auto isPassed = [&](const GePoint& p) {
      for (const Stretch& stretch : drawn.covered)
        if (distance(stretch.from, p) < 1e-6 || distance(stretch.to, p) < 1e-6) return true;
      return false;
    };
    for (const End& end : part.ends) EXPECT_TRUE(isPassed(end.at));
    if (part.family == Family::kTee || isValve(part.family)) {
      for (const End& end : part.branches) EXPECT_TRUE(isPassed(end.at));
    }
  });
}

// Round bodies about the line: along it no family but what hangs or stands on it
// goes beyond its ends.
TEST(Invariants, BodiesEndWhereTheComponentEnds) {
  forEachPart([](const Part& sampled) {
    Part part = sampled;
    if (isSupport(part.family) || part.family == Family::kBend ||
        part.family == Family::kInstrumentDial || part.family == Family::kInstrument ||
        part.family == Family::kFilterY || part.family == Family::kFilterBasket ||
        part.family == Family::kTrap || part.family == Family::kFlangeOrifice)
      return;
    part.branches.clear();
    part.centre.reset();
    part.spindle = {};
    part.ends[0].at = {1e5, 0, 0};
    part.ends[1].at = {1e5 + distance(sampled.ends[0].at, sampled.ends[1].at), 0, 0};
    part.ends[0].line = {};
    part.ends[1].line = {};
    Vesk::Extents extents;
    for (const auto& body : draw(part).bodies) body->addExtents(extents);
    EXPECT_NEAR(extents.min.x, part.ends[0].at.x, 1e-6);
    EXPECT_NEAR(extents.max.x, part.ends[1].at.x, 1e-6);
    EXPECT_LE(extents.max.y, 2.2 * part.ends[0].outside);
  });
}

// The whole arc lies in the bodies: points on it at equal angles.
TEST(Invariants, BendsCoverTheirArc) {
  Sample sample(7);
  for (int i = 0; i < 500; ++i) {
    const double size = std::pow(10, sample.between(0, 4));
    const double radius = size * sample.between(0.6, 10);
    const double sweep = sample.between(0.05, 3.0);
    const GeVector u = sample.direction();
    const GeVector v = cross(u, GeVector(u.y + 0.3, u.z, -u.x)).normalised(1e-9);
    const GePoint centre(sample.between(-1e6, 1e6), sample.between(-1e6, 1e6), 0);
    const auto onArc = [&](double angle) {
      return centre + (u * std::cos(angle) + v * std::sin(angle)) * radius;
    };
    Part part;
    part.family = Family::kBend;
    part.ends = {{onArc(0), size, EndKind::kNotTold, {}},
                 {onArc(sweep), size, EndKind::kNotTold, {}}};
    part.centre = onArc(0) + v * (radius * std::tan(sweep / 2));
    if (i % 3 == 0) part.ends[1].outside = size * 0.8;
    const Drawn drawn = draw(part);
    expectSound(drawn);
    EXPECT_TRUE(drawn.remarks.empty()) << i;
    for (int k = 0; k <= 20; ++k) {
      EXPECT_TRUE(contains(drawn, onArc(sweep * k / 20), part.tolerance + 1e-6 * radius)) << i;
    }
  }
}

TEST(Invariants, HalfTurnsCoverTheirArc) {
  Sample sample(8);
  for (int i = 0; i < 200; ++i) {
    const GeVector u = sample.direction();
    const GeVector v = cross(u, GeVector(u.y + 0.3, u.z, -u.x)).normalised(1e-9);
    Part part;
    part.family = Family::kBend;
    part.ends = {{GePoint(u * 100), 60, EndKind::kNotTold, {}},
                 {GePoint(u * -100), 60, EndKind::kNotTold, {}}};
    part.halfTurn = v * 5;
    const Drawn drawn = draw(part);
    expectSound(drawn);
    for (int k = 0; k <= 20; ++k) {
      const double angle = kPi * k / 20;
      EXPECT_TRUE(
          contains(drawn, GePoint((u * std::cos(angle) + v * std::sin(angle)) * 100), 1e-6));
    }
  }
}

// A cap's slices lie within the tolerance of half an ellipsoid: its volume is
// 2 / 3 of the cylinder about it, less a mantle of that thickness.
TEST(Invariants, CapsAreDishedWithinTheTolerance) {
  for (const double outside : {60.3, 168.3, 610.0, 4000.0}) {
    Part part;
    part.family = Family::kCap;
    part.ends = {{{0, 0, 0}, outside, EndKind::kNotTold, {-1, 0, 0}}};
    double volume = 0;
    for (const auto& body : draw(part).bodies) volume += body->volume();
    const double quarter = kPi * outside * outside / 4 * outside / 4;
    const double exact = quarter + quarter * 2 / 3;  // as long straight as dished
    EXPECT_LT(volume, exact);
    EXPECT_GT(volume, exact - kPi * outside * outside / 2 * part.tolerance);
  }
}

// Numbers from anywhere give bodies or a word why not, and never a bad body.
TEST(Invariants, HostileNumbersAreRefusedOrDrawnSoundly) {
  constexpr double kNumbers[] = {0, -0.0, 1e-300, 1e-9, 0.01,  0.05,   1,        -1,
                                 7, 1e6,  1e11,   1e15, 1e300, -1e300, HUGE_VAL, NAN};
  std::mt19937 random(3);
  const auto any = [&] { return kNumbers[random() % std::size(kNumbers)]; };
  const auto anyPoint = [&] { return GePoint(any(), any(), any()); };
  for (int i = 0; i < 40000; ++i) {
    Part part;
    part.family =
        static_cast<Family>(random() % (static_cast<unsigned>(Family::kSupportSpring) + 1));
    for (auto k = random() % 4; k > 0; --k)
      part.ends.push_back(
          {anyPoint(), any(), static_cast<EndKind>(random() % 8), anyPoint() - GePoint()});
    for (auto k = random() % 3; k > 0; --k)
      part.branches.push_back({anyPoint(), any(), EndKind::kNotTold, {}});
    if (random() % 2 == 0) part.centre = anyPoint();
    part.face = random() % 3;
    if (random() % 4 == 0) part.halfTurn = anyPoint() - GePoint();
    if (random() % 2 == 0) part.spindle = anyPoint() - GePoint();
    if (random() % 2 == 0) part.along = anyPoint() - GePoint();
    if (random() % 4 == 0) part.tolerance = any();
    const Drawn drawn = draw(part);
    EXPECT_LT(drawn.bodies.size(), 60000u);
    for (const auto& body : drawn.bodies) {
      Vesk::Extents extents;
      body->addExtents(extents);
      EXPECT_TRUE(isFinite(extents));
      EXPECT_EQ(body->checkSize(), 0) << textOf(*body);
    }
  }
}

}  // namespace
}  // namespace Vesk::Pcf
