// SPDX-License-Identifier: MIT
// Random pairs of all kinds against points of theirs: no two points of the bodies
// are nearer to each other than the distance, and the nearest two that it names are
// points of the bodies and as far apart as it says.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "distance/Body.h"
#include "mesh/TrueDistance.h"
#include "support/Kinds.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/Red.h"
#include "vesk/Txt.h"

namespace VeskTest {
namespace {

using namespace Vesk;

using Place = std::array<double, 3>;  // of a point in its body, each 0..1

struct Sample {
  const Kind* kind;
  std::unique_ptr<Geo> geo;

  GePoint at(const Place& p) const {
    if (kind->typeCode == Txt::kTypeCode) return dynamic_cast<const Txt&>(*geo).position;
    return kind->at(*geo, p[0], p[1], p[2]);
  }

  std::vector<Place> places() const {
    const int kAlong = kind->solid ? 8 : 24;  // the pieces of a line divide 24
    constexpr int kRound = 10;
    std::vector<Place> all;
    for (int i = 0; i <= kAlong; ++i) {
      for (int k = 0; k <= 2; ++k) {
        for (int m = 0; m <= kRound; ++m) {
          all.push_back({i / static_cast<double>(kAlong), k / 2.0, m / double{kRound}});
        }
      }
    }
    return all;
  }
};

// How many pairs of each two kinds; VESK_PAIRS in the environment says otherwise.
int pairCount() {
  constexpr int kUsual = 50;
  const char* text = std::getenv("VESK_PAIRS");
  int count = kUsual;
  if (text != nullptr) std::from_chars(text, text + std::string_view(text).size(), count);
  return count;
}

// The smallest value of f near a start in the unit cube of N dimensions.
template <std::size_t N, class F>
double leastNear(std::array<double, N>& at, F f) {
  double least = f(at);
  for (double step = 0.1; step > 1e-9;) {
    bool isBetter = false;
    for (std::size_t i = 0; i < N; ++i) {
      for (const double by : {step, -step}) {
        std::array<double, N> next = at;
        next[i] = std::clamp(next[i] + by, 0.0, 1.0);
        const double value = f(next);
        if (value >= least) continue;
        least = value;
        at = next;
        isBetter = true;
      }
    }
    if (!isBetter) step /= 2;
  }
  return least;
}

// The smallest distance of two points that a search from the nearest samples finds.
double nearestPoints(const Sample& a, const Sample& b) {
  struct Start {
    double distance;
    std::array<double, 6> at;
  };
  std::vector<std::pair<Place, GePoint>> ofB;
  for (const Place& p : b.places()) ofB.emplace_back(p, b.at(p));
  std::vector<Start> starts;
  for (const Place& p : a.places()) {
    const GePoint from = a.at(p);
    Start best{1e300, {}};
    for (const auto& [q, to] : ofB) {
      const double apart = distance(from, to);
      if (apart < best.distance) best = {apart, {p[0], p[1], p[2], q[0], q[1], q[2]}};
    }
    starts.push_back(best);
  }
  std::sort(starts.begin(), starts.end(),
            [](const Start& x, const Start& y) { return x.distance < y.distance; });
  double least = 1e300;
  for (std::size_t i = 0; i < std::min<std::size_t>(3, starts.size()); ++i) {
    least = std::min(least, leastNear(starts[i].at, [&](const std::array<double, 6>& p) {
                       return distance(a.at({p[0], p[1], p[2]}), b.at({p[3], p[4], p[5]}));
                     }));
  }
  return least;
}

double toSegment(const GePoint& p, const GePoint& a, const GePoint& b) {
  const GeVector along = b - a;
  const double t = std::clamp(dot(p - a, along) / dot(along, along), 0.0, 1.0);
  return distance(p, a + along * t);
}

// Of a plane convex face.
double toFace(const GePoint& p, const Pgon& face) {
  const std::size_t n = face.vertices.size();
  GeVector normal = cross(face.point(1) - face.point(0), face.point(2) - face.point(0));
  normal /= normal.length();
  double least = 1e300;
  bool isInside = true;
  for (std::size_t i = 0; i < n; ++i) {
    const GePoint& a = face.point(i);
    const GePoint& b = face.point((i + 1) % n);
    least = std::min(least, toSegment(p, a, b));
    isInside = isInside && triple(normal, b - a, p - a) > 0.0;
  }
  return isInside ? std::fabs(dot(p - face.point(0), normal)) : least;
}

// How far a point is from the body, of a solid from its surface.
double farFrom(const Sample& sample, const GePoint& p) {
  if (sample.kind->solid) return distanceToSurface(*sample.geo, p);
  if (const auto* face = dynamic_cast<const Pgon*>(sample.geo.get())) return toFace(p, *face);
  if (const auto* line = dynamic_cast<const Pline*>(sample.geo.get())) {
    double least = 1e300;
    for (std::size_t i = 1; i < line->vertices.size(); ++i) {
      least = std::min(least, toSegment(p, line->vertices[i - 1], line->vertices[i]));
    }
    return least;
  }
  return distance(dynamic_cast<const Txt&>(*sample.geo).position, p);
}

void expectGap(const Sample& a, const Sample& b) {
  const std::optional<Body> bodyA = Body::of(*a.geo);
  const std::optional<Body> bodyB = Body::of(*b.geo);
  ASSERT_TRUE(bodyA && bodyB);
  const Gap gap = gapOf(*bodyA, *bodyB);
  EXPECT_GE(nearestPoints(a, b), gap.distance - kDistanceError);
  EXPECT_NEAR(gapOf(*bodyB, *bodyA).distance, gap.distance, kDistanceError);
  EXPECT_EQ(std::isinf(gapOf(*bodyA, *bodyB, gap.distance * 0.99 - 0.01).distance), true);
  EXPECT_GE(gap.distance + 1e-9, gapOf(bodyA->box(), bodyB->box()));
  if (gap.distance == 0.0) return;
  EXPECT_NEAR(distance(gap.onA, gap.onB), gap.distance, 1e-6);
  EXPECT_LT(farFrom(a, gap.onA), kDistanceError);
  EXPECT_LT(farFrom(b, gap.onB), kDistanceError);
}

class Pairs : public testing::TestWithParam<std::pair<std::size_t, std::size_t>> {};

std::vector<std::pair<std::size_t, std::size_t>> allPairs() {
  std::vector<std::pair<std::size_t, std::size_t>> pairs;
  for (std::size_t i = 0; i < kinds().size(); ++i) {
    for (std::size_t k = i; k < kinds().size(); ++k) pairs.emplace_back(i, k);
  }
  return pairs;
}

TEST_P(Pairs, DistanceIsThatOfTheNearestPoints) {
  const Kind& one = kinds()[GetParam().first];
  const Kind& other = kinds()[GetParam().second];
  Random random(GetParam().first * 100 + GetParam().second + 1);
  const int count = pairCount();
  for (int n = 0; n < count; ++n) {
    SCOPED_TRACE(std::to_string(n));
    const Sample a{&one, one.make(random)};
    const Sample b{&other, other.make(random)};
    expectGap(a, b);
    if (HasFailure()) break;
  }
}

INSTANTIATE_TEST_SUITE_P(OfAllKinds, Pairs, testing::ValuesIn(allPairs()), [](const auto& each) {
  return std::string(kinds()[each.param.first].name) + kinds()[each.param.second].name;
});

// A reducer whose second end is turned against its first, so that its sides are
// bilinear and the body is not convex.
std::unique_ptr<Geo> twisted(Random& random) {
  auto red = std::make_unique<Red>();
  const GeMatrix motion = random.motion();
  const double angle = random.between(0.1, 1.2);
  red->origin = motion * GePoint();
  std::array<GePoint, 8> corners;
  for (unsigned k = 0; k < 8; ++k) {
    const double x = (k & 1U) != 0 ? 10 : -10;
    const double y = (k & 2U) != 0 ? 15 : -15;
    corners[k] = k < 4 ? GePoint(x, y, 0)
                       : GePoint(x * std::cos(angle) - y * std::sin(angle),
                                 x * std::sin(angle) + y * std::cos(angle), 30);
  }
  red->origin = motion * corners[0];
  for (unsigned k = 1; k < 8; ++k) red->cornerVectors[k - 1] = motion * (corners[k] - corners[0]);
  return red;
}

TEST(Pairs, TwistedReducersAreBoundByBilinearFaces) {
  Random random(77);
  const Kind& reducer = kinds()[4];
  for (const Kind& other : kinds()) {
    for (int n = 0; n < std::max(4, pairCount() / 5); ++n) {
      SCOPED_TRACE(std::string(other.name) + ' ' + std::to_string(n));
      expectGap({&reducer, twisted(random)}, {&other, other.make(random)});
    }
    if (HasFailure()) break;
  }
}

}  // namespace
}  // namespace VeskTest
