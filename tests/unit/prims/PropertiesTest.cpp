// SPDX-License-Identifier: MIT
// What holds for any primitive of any kind, anywhere. GeoContractTest asks the
// same of fixed samples, and how far the extents reach and what the volume is.

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <cstdint>
#include <memory>

#include "support/Kinds.h"
#include "vesk/GeConstants.h"

using namespace Vesk;
using namespace VeskTest;

namespace {

constexpr double kNear = 1e-9;  // rounding at co-ordinates of a few hundred

const Kind& anyKind() {
  return kinds()[static_cast<std::size_t>(*rc::gen::inRange(0, static_cast<int>(kinds().size())))];
}

Random anyRandom() { return Random(*rc::gen::arbitrary<std::uint64_t>()); }

GeMatrix anyQuarterTurn() {
  const GeMatrix turns[] = {
      {kUnitX, kUnitZ, -kUnitY, kNullVector},
      {-kUnitZ, kUnitY, kUnitX, kNullVector},
      {kUnitY, -kUnitX, kUnitZ, kNullVector},
  };
  return turns[*rc::gen::inRange(0, 3)];
}

RC_GTEST_PROP(Properties, AMoveBackIsNoMove, ()) {
  const Kind& kind = anyKind();
  Random random = anyRandom();
  const auto geo = kind.make(random);
  const auto moved = kind.copy(*geo);
  const GeVector way = random.point() - GePoint();
  moved->move(way);
  RC_ASSERT(moved->equal(*geo, kNear) == (!kind.movable || way.length() < kNear));
  moved->move(-way);
  RC_ASSERT(moved->equal(*geo, kNear));
}

RC_GTEST_PROP(Properties, FourQuarterTurnsAreNone, ()) {
  const Kind& kind = anyKind();
  Random random = anyRandom();
  const auto geo = kind.make(random);
  const auto turned = kind.copy(*geo);
  const GeMatrix turn = anyQuarterTurn();
  for (int i = 0; i < 4; ++i) turned->rot(turn);
  RC_ASSERT(turned->equal(*geo, kNear));
  RC_ASSERT(turned->volume() == geo->volume());
}

RC_GTEST_PROP(Properties, EqualIsReflexiveAndSymmetric, ()) {
  const Kind& kind = anyKind();
  Random random = anyRandom();
  const auto geo = kind.make(random);
  RC_ASSERT(geo->equal(*geo, 0.0));
  // One that is nearly the same, and one of any kind.
  const auto near = kind.copy(*geo);
  near->move(random.direction() * 0.01);
  const auto other = anyKind().make(random);
  for (const double tolerance : {0.0, 0.005, 0.02, 1000.0}) {
    RC_ASSERT(geo->equal(*near, tolerance) == near->equal(*geo, tolerance));
    RC_ASSERT(geo->equal(*other, tolerance) == other->equal(*geo, tolerance));
  }
  RC_ASSERT(geo->equal(*near, 0.02));
}

RC_GTEST_PROP(Properties, ExtentsContainThePointsOfTheShape, ()) {
  const Kind& kind = anyKind();
  Random random = anyRandom();
  const auto geo = kind.make(random);
  geo->rot(random.motion());
  Extents box;
  geo->addExtents(box);
  for (int i = 0; i < 200; ++i) {
    const double u = random.between(0.0, 1.0);
    const double v = random.between(0.0, 1.0);
    const GePoint p = kind.at(*geo, u, v, random.between(0.0, 1.0));
    for (const auto& [least, value, most] :
         {std::array{box.min.x, p.x, box.max.x}, std::array{box.min.y, p.y, box.max.y},
          std::array{box.min.z, p.z, box.max.z}}) {
      RC_ASSERT(least - kNear <= value);
      RC_ASSERT(value <= most + kNear);
    }
  }
}

}  // namespace
