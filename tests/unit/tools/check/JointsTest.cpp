// SPDX-License-Identifier: MIT
#include "check/Joints.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "text/Numbers.h"
#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/Torus.h"

using namespace Vesk;
using namespace VeskTool;

namespace {

Cyl cylinder(const GeVector& from, const GeVector& to, double diameter) {
  return {from, to, diameter};
}

std::string textOf(const JointFault& fault) {
  return std::to_string(static_cast<int>(fault.kind)) + " at " + std::to_string(fault.end.line) +
         " to " + std::to_string(fault.other.line) + ": " + rounded(fault.along, 6) + " " +
         rounded(fault.across, 6);
}

std::vector<std::string> faultsOf(Joints& joints) {
  std::vector<std::string> faults;
  joints.find([&](const JointFault& fault) { faults.push_back(textOf(fault)); });
  return faults;
}

// The same by looking at every pair of ends: no grid, no order of search.
std::vector<std::string> faultsOfAllPairs(const Joints& joints, const JointOptions& options) {
  const std::vector<PipeEnd>& ends = joints.ends();
  const auto nearestOf = [&](std::size_t i) {
    std::size_t nearest = ends.size();
    double best = 0.0;
    for (std::size_t k = 0; k < ends.size(); ++k) {
      double distance = 0.0;
      if (!areFacing(ends[i], ends[k], options, distance)) continue;
      if (nearest == ends.size() || distance < best) {
        nearest = k;
        best = distance;
      }
    }
    return nearest;
  };
  std::vector<JointFault> faults;
  for (std::size_t i = 0; i < ends.size(); ++i) {
    const std::size_t k = nearestOf(i);
    if (k < i && nearestOf(k) == i) judgeJoint(ends[k], ends[i], options, faults);
  }
  std::vector<std::string> texts;
  for (const JointFault& fault : faults) texts.push_back(textOf(fault));
  return texts;
}

TEST(JointsTest, EndsOfTheKinds) {
  Joints joints({});
  joints.add(cylinder({0, 0, 0}, {1000, 0, 0}, 100), 1);
  joints.add(Cone({0, 0, 0}, {0, 0, 50}, 100, 0), 2);
  joints.add(Torus({0, 0, 0}, {9, 0, 0}, {0, 9, 0}, 4), 3);
  joints.add(Box({0, 0, 0}, {9, 0, 0}, {0, 9, 0}, {0, 0, 9}), 4);
  std::vector<std::string> ends;
  for (const PipeEnd& end : joints.ends()) {
    ends.push_back(pointText(end.point) + " to " + pointText(GePoint(end.outward)) + " of " +
                   shortest(end.diameter) + (end.isFitting ? " fitting" : ""));
  }
  const std::vector<std::string> expected = {
      "0 0 0 to -1 -0 -0 of 100",
      "1000 0 0 to 1 0 0 of 100",
      // The pointed end is none.
      "0 0 0 to -0 -0 -1 of 100 fitting",
      // The torus turns from x to y: it comes from -y and leaves towards -x.
      "9 0 0 to 0 -1 0 of 4",
      "0 9 0 to -1 0 0 of 4",
  };
  EXPECT_EQ(ends, expected);
}

TEST(JointsTest, EndsMustFaceEachOtherWithinFiveDegrees) {
  // tan 4.9 and 5.1 degrees times 1000.
  for (const auto& [y, count] : {std::pair(85.73, 1u), std::pair(89.25, 0u)}) {
    Joints joints({});
    joints.add(cylinder({0, 0, 0}, {1000, 0, 0}, 100), 1);
    joints.add(cylinder({1000.5, 0, 0}, {2000.5, y, 0}, 100), 2);
    EXPECT_EQ(faultsOf(joints).size(), count) << y;
  }
}

TEST(JointsTest, GapIsSaidOncePerJoint) {
  Joints joints({});
  joints.add(cylinder({0, 0, 0}, {1000, 0, 0}, 100), 7);
  joints.add(cylinder({1000.5, 0, 0}, {2000, 0, 0}, 100), 3);
  EXPECT_EQ(faultsOf(joints), std::vector<std::string>{"0 at 7 to 3: 0.500000 0.000000"});
}

TEST(JointsTest, WhatMeetsHasNoFurtherJoints) {
  Joints joints({});
  joints.add(cylinder({0, 0, 0}, {1000, 0, 0}, 100), 1);
  joints.add(cylinder({1000, 0, 0}, {2000, 0, 0}, 100), 2);
  joints.add(cylinder({1000.5, 0, 0}, {2000, 0, 0}, 100), 3);
  EXPECT_EQ(faultsOf(joints), std::vector<std::string>{});
}

TEST(JointsTest, HugeCoordinatesEnd) {
  Joints joints({});
  joints.add(cylinder({1e300, 0, 0}, {1e300, 1000, 0}, 100), 1);
  joints.add(cylinder({-1e300, 0, 0}, {-1e300, 1000, 0}, 100), 2);
  EXPECT_EQ(faultsOf(joints), std::vector<std::string>{});
}

// The reach is narrower than any cell of space could be.
TEST(JointsTest, TinyReachesEnd) {
  for (const double reach : {1e-320, 1e-12, 1e-6}) {
    Joints joints({0.0, reach});
    for (std::uint64_t line = 1; line <= 12; ++line) {
      const double x = static_cast<double>(line) * 1000;
      joints.add(cylinder({x, 0, 0}, {x + 1000, 0, 0}, 100), line);
    }
    EXPECT_EQ(faultsOf(joints), std::vector<std::string>{}) << reach;
  }
}

struct CrowdRow {
  const char* name;
  double apart;      // every other pipe starts so far off
  double cloud;      // and all within so much
  double direction;  // how far directions differ
};

constexpr CrowdRow kCrowds[] = {
    {"AtOnePlace", 0, 0, 0},         {"AtTwoPlaces", 5, 0, 0},           {"InACloud", 0, 1, 0},
    {"InAllDirections", 0, 0, 2000}, {"AlmostInOneDirection", 0, 1, 90},
};

// Each of these has a hundred million pairs that face each other or almost do.
TEST(JointsTest, ManyEndsAtOnePlaceEnd) {
  constexpr std::uint64_t kPipes = 10000;
  for (const CrowdRow& row : kCrowds) {
    std::mt19937 random(1);
    const auto upTo = [&](double most) {
      return most * static_cast<double>(random()) / 4294967295.0;
    };
    Joints joints({});
    for (std::uint64_t line = 1; line <= kPipes; ++line) {
      const bool even = line % 2 == 0;
      const GeVector from(upTo(row.cloud) + (even ? row.apart : 0), upTo(row.cloud), 0);
      const GeVector way(even ? 1000 : -1000, upTo(row.direction), upTo(row.direction));
      joints.add(cylinder(from, from + way, 100), line);
    }
    EXPECT_LE(faultsOf(joints).size(), kPipes) << row.name;
  }
}

// Runs of pipe in six directions whose pieces start a little off the end before,
// crowded enough for many wrong neighbours.
// Ends in the middle of a hundred rings that are 990 m away at least: none of them is
// measured, which at 160,000 measures for all would leave ends that nobody has looked ahead of.
TEST(JointsTest, RingsFarAroundAreNotMeasured) {
  Joints joints({});
  for (std::uint32_t i = 0; i < 100; ++i)
    joints.add(Torus({0, 0, 0}, {2e6 + i, 0, 0}, {0, 2e6 + i, 0}, 2e6), i + 1);
  for (std::uint32_t i = 0; i < 450; ++i)
    joints.add(cylinder({20.0 * i, 0, 0}, {20.0 * i, 0, 10}, 5), 1000 + i);
  std::size_t looked = 0;
  joints.find([](const JointFault&) {},
              [&](const OpenEnd& open) { looked += open.end.line >= 1000 && open.isLooked; });
  EXPECT_EQ(looked, 900U);
}

TEST(JointsTest, GridFindsWhatAllPairsFind) {
  std::size_t all = 0;
  for (unsigned seed = 0; seed < 20; ++seed) {
    std::mt19937 random(seed);
    const auto upTo = [&](unsigned n) { return static_cast<double>(random() % n); };
    const JointOptions options{0.1, 1.0 + upTo(30)};
    Joints joints(options);
    for (std::uint64_t line = 1; line <= 400;) {
      GeVector at(upTo(300) - 150, upTo(300) - 150, upTo(300) - 150);
      const GeVector along = std::array<GeVector, 6>{
          {{1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}, {0, 0, 1}, {0, 0, -1}}}[random() % 6];
      for (int piece = 0; piece < 5; ++piece, ++line) {
        const double length = 40 + upTo(40);
        const GeVector end = at + along * length;
        joints.add(cylinder(at, end, 6 + upTo(20)), line);
        at = end + along * (upTo(7) - 3) * (1.0 / 3.0) + GeVector(upTo(3), upTo(2), 0) * 0.2;
      }
    }
    std::vector<std::string> expected = faultsOfAllPairs(joints, options);
    std::vector<std::string> actual = faultsOf(joints);
    std::sort(expected.begin(), expected.end());
    std::sort(actual.begin(), actual.end());
    EXPECT_EQ(actual, expected) << seed;
    all += expected.size();
  }
  EXPECT_GT(all, 500u);
}

}  // namespace
