// SPDX-License-Identifier: MIT
#include "ge/PointMatch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <vector>

using namespace Vesk;

namespace {

using Points = std::vector<GePoint>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

double apart(const GePoint& a, const GePoint& b) {
  return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y) +
                   (a.z - b.z) * (a.z - b.z));
}

// The smallest largest distance over all pairings.
double bruteForce(const Points& first, const Points& second) {
  std::vector<std::size_t> order(first.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  double best = kInfinity;
  do {
    double largest = 0.0;
    for (std::size_t i = 0; i < order.size(); ++i) {
      largest = std::max(largest, apart(first[i], second[order[i]]));
    }
    best = std::min(best, largest);
  } while (std::next_permutation(order.begin(), order.end()));
  return best;
}

// Whether the match is a pairing, and one of its largest distance.
void expectPairing(const PointMatch& match, const Points& first, const Points& second) {
  std::vector<std::size_t> order(first.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  ASSERT_TRUE(std::is_permutation(order.begin(), order.end(), match.partners.begin(),
                                  match.partners.end()));
  double largest = 0.0;
  for (const std::size_t i : order) {
    largest = std::max(largest, apart(first[i], second[match.partners[i]]));
  }
  EXPECT_EQ(match.largestDistance, largest);
}

// On the grid many distances are equal.
Points randomPoints(std::mt19937& random, std::size_t n, bool onGrid) {
  std::uniform_real_distribution<double> anywhere(-10.0, 10.0);
  std::uniform_int_distribution<int> grid(0, 2);
  const auto coordinate = [&] { return onGrid ? grid(random) : anywhere(random); };
  Points points(n);
  for (GePoint& p : points) p = GePoint(coordinate(), coordinate(), coordinate());
  return points;
}

TEST(PointMatchTest, TheLargestDistanceIsTheSmallestOfAllPermutations) {
  std::mt19937 random(17);
  for (std::size_t n = 0; n <= 6; ++n) {
    for (int i = 0; i < 150; ++i) {
      const Points first = randomPoints(random, n, i % 2 == 0);
      const Points second = randomPoints(random, n, i % 2 == 0);
      const auto match = matchPoints(first, second);
      ASSERT_TRUE(match);
      ASSERT_EQ(match->largestDistance, n == 0 ? 0.0 : bruteForce(first, second));
      expectPairing(*match, first, second);
    }
  }
}

TEST(PointMatchTest, TheNearestNeighbourIsNotAlwaysThePartner) {
  // Nearest first pairs 0 with 1 and leaves 3 with -4, seven apart.
  const Points first = {{0, 0, 0}, {3, 0, 0}};
  const Points second = {{1, 0, 0}, {-4, 0, 0}};
  const auto match = matchPoints(first, second);
  ASSERT_TRUE(match);
  EXPECT_EQ(match->largestDistance, 4.0);
  EXPECT_EQ(match->partners, (std::vector<std::size_t>{1, 0}));
}

TEST(PointMatchTest, APermutationOfManyPointsIsFound) {
  std::mt19937 random(23);
  const Points first = randomPoints(random, 200, false);
  std::vector<std::size_t> place(first.size());
  std::iota(place.begin(), place.end(), std::size_t{0});
  std::shuffle(place.begin(), place.end(), random);
  Points second(first.size());
  for (std::size_t i = 0; i < first.size(); ++i) second[place[i]] = first[i];
  const auto match = matchPoints(first, second);
  ASSERT_TRUE(match);
  EXPECT_EQ(match->largestDistance, 0.0);
  EXPECT_EQ(match->partners, place);
}

TEST(PointMatchTest, TheOneDisplacedPointOfManySetsTheDistance) {
  // Points of a line 10 apart, each moved by at most 1 and one of them by 4.
  std::mt19937 random(29);
  std::uniform_real_distribution<double> shift(-1.0, 1.0);
  Points first;
  Points second;
  for (int i = 0; i < 200; ++i) {
    first.push_back({10.0 * i, 0, 0});
    second.push_back({10.0 * i + shift(random), 0, 0});
  }
  second[77] = {774, 0, 0};
  std::shuffle(second.begin(), second.end(), random);
  const auto match = matchPoints(first, second);
  ASSERT_TRUE(match);
  EXPECT_EQ(match->largestDistance, 4.0);
  expectPairing(*match, first, second);
}

TEST(PointMatchTest, AChainMovesEveryPoint) {
  // 0..199 against 1..200: each to its right neighbour, not 199 stay and one goes 200.
  Points first;
  Points second;
  for (int i = 0; i < 200; ++i) {
    first.push_back({1.0 * i, 0, 0});
    second.push_back({200.0 - i, 0, 0});
  }
  const auto match = matchPoints(first, second);
  ASSERT_TRUE(match);
  EXPECT_EQ(match->largestDistance, 1.0);
}

TEST(PointMatchTest, ListsOfDifferentLengthHaveNoPairing) {
  EXPECT_FALSE(matchPoints(Points(2), Points(3)));
  EXPECT_FALSE(matchPoints(Points(1), Points()));
  EXPECT_FALSE(pointsCoincide(Points(2), Points(3), 1e9));
}

TEST(PointMatchTest, TwoEmptyListsCoincide) {
  const auto match = matchPoints({}, {});
  ASSERT_TRUE(match);
  EXPECT_EQ(match->largestDistance, 0.0);
  EXPECT_TRUE(match->partners.empty());
  EXPECT_TRUE(pointsCoincide({}, {}, 0.0));
}

TEST(PointMatchTest, ADistanceEqualToTheLimitIsWithinIt) {
  const Points first = {{0, 0, 0}};
  const Points second = {{3, 4, 0}};
  EXPECT_TRUE(matchPoints(first, second, 5.0));
  EXPECT_FALSE(matchPoints(first, second, std::nextafter(5.0, 0.0)));
  EXPECT_TRUE(pointsCoincide(first, second, 5.0));
  EXPECT_FALSE(pointsCoincide(first, second, std::nextafter(5.0, 0.0)));
}

TEST(PointMatchTest, NaNIsInfinitelyFarFromEverything) {
  const Points first = {{0, 0, 0}, {NAN, 0, 0}};
  const auto match = matchPoints(first, first);
  ASSERT_TRUE(match);
  EXPECT_EQ(match->largestDistance, kInfinity);
  EXPECT_FALSE(matchPoints(first, first, 1e300));
  EXPECT_FALSE(pointsCoincide(first, first, 1e300));
  const Points infinite = {{kInfinity, 0, 0}};
  EXPECT_FALSE(pointsCoincide(infinite, infinite, 1e300));
}

TEST(PointMatchTest, PointsAreTakenInOrderWhereThatIsAsGood) {
  const Points same(4);
  const auto match = matchPoints(same, same);
  ASSERT_TRUE(match);
  EXPECT_EQ(match->partners, (std::vector<std::size_t>{0, 1, 2, 3}));
}

}  // namespace
