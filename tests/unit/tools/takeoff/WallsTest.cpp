// SPDX-License-Identifier: MIT
#include "takeoff/Walls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <numbers>
#include <ostream>
#include <set>
#include <string>

#include "pcf/Sizes.h"
#include "support/TempFolder.h"
#include "terminal/Exit.h"
#include "vesk/Cyl.h"

namespace VeskTest {
namespace {

using namespace VeskTool;

constexpr double kSteel = 7850.0;

void writeFile(const char* name, const std::string& text) {
  std::ofstream(name, std::ios::binary) << text;
}

double wallOf(const char* schedule, double dn) {
  const auto walls = wallsOfSchedule(schedule);
  const auto found = std::find_if(walls.begin(), walls.end(),
                                  [dn](const ScheduledWall& each) { return each.dn == dn; });
  return found == walls.end() ? 0.0 : found->wall;
}

// pi (D - t) t of steel, kg/m.
double weightOf(double diameter, double wall) {
  return std::numbers::pi * (diameter - wall) * wall * 1e-6 * kSteel;
}

TEST(Schedules, WeighWhatIsKnownOfTwoSizes) {
  // pi * 108.28 * 6.02 * 7850e-6 = 16.0754, pi * 161.19 * 7.11 * 7850e-6 = 28.2639.
  EXPECT_NEAR(weightOf(114.3, wallOf("40", 100)), 16.075, 0.001);
  EXPECT_NEAR(weightOf(168.3, wallOf("STD", 150)), 28.264, 0.001);
}

struct PoundsCase {
  double dn;
  const char* schedule;
  double pounds;  // for a foot of plain pipe, as usually told
};

// clang-format off
constexpr PoundsCase kPounds[] = {
    {15, "STD", 0.85}, {20, "STD", 1.13}, {25, "STD", 1.68}, {32, "STD", 2.27}, {40, "STD", 2.72},
    {50, "STD", 3.65}, {65, "STD", 5.79}, {80, "STD", 7.58}, {90, "STD", 9.11},
    {100, "STD", 10.79}, {125, "STD", 14.62}, {150, "STD", 18.97}, {200, "STD", 28.55},
    {250, "STD", 40.48}, {300, "STD", 49.56}, {350, "STD", 54.57}, {400, "STD", 62.58},
    {450, "STD", 70.59}, {500, "STD", 78.6}, {550, "STD", 86.61}, {600, "STD", 94.62},
    {750, "STD", 118.65}, {900, "STD", 142.68}, {15, "XS", 1.09}, {20, "XS", 1.47},
    {25, "XS", 2.17}, {32, "XS", 3}, {40, "XS", 3.63}, {50, "XS", 5.02}, {65, "XS", 7.66},
    {80, "XS", 10.25}, {90, "XS", 12.5}, {100, "XS", 14.98}, {125, "XS", 20.78},
    {150, "XS", 28.57}, {200, "XS", 43.39}, {250, "XS", 54.74}, {300, "XS", 65.42},
    {350, "XS", 72.09}, {400, "XS", 82.77}, {450, "XS", 93.45}, {500, "XS", 104.13},
    {600, "XS", 125.49}, {300, "40", 53.52}, {350, "40", 63.44}, {450, "40", 104.67},
    {500, "40", 123.11}, {600, "40", 171.29}, {250, "80", 64.43}, {300, "80", 88.63},
    {350, "80", 106.13}, {400, "80", 136.61}, {450, "80", 170.92}, {500, "80", 208.87},
    {600, "80", 296.58}, {15, "160", 1.31}, {20, "160", 1.94}, {25, "160", 2.84},
    {32, "160", 3.76}, {40, "160", 4.86}, {50, "160", 7.46}, {65, "160", 10.01},
    {80, "160", 14.32}, {100, "160", 22.51}, {125, "160", 32.96}, {150, "160", 45.35},
    {200, "160", 74.69}, {250, "160", 115.64}, {300, "160", 160.27}, {350, "160", 189.11},
    {400, "160", 245.25}, {600, "160", 542.13}, {15, "XXS", 1.71}, {20, "XXS", 2.44},
    {25, "XXS", 3.66}, {40, "XXS", 6.41}, {50, "XXS", 9.03}, {80, "XXS", 18.58},
    {100, "XXS", 27.54}, {150, "XXS", 53.16}, {200, "XXS", 72.42}, {100, "120", 19},
    {150, "120", 36.39}, {200, "120", 60.71}, {200, "60", 35.64}, {250, "60", 54.74},
    {200, "20", 22.36}, {200, "30", 24.7}, {250, "20", 28.04}, {250, "30", 34.24},
    {300, "20", 33.38}, {300, "30", 43.77}, {25, "10S", 1.4}, {40, "10S", 2.09},
    {50, "10S", 2.64}, {80, "10S", 4.33}, {100, "10S", 5.61}, {150, "10S", 9.29},
    {200, "10S", 13.4}, {250, "10S", 18.65}, {300, "10S", 24.16}, {50, "5S", 1.6},
    {100, "5S", 3.92}, {150, "5S", 7.6}, {200, "5S", 9.93}, {250, "5S", 15.19},
    {300, "5S", 20.98}, {300, "60", 73.15}, {350, "60", 85.05}, {400, "60", 107.5},
    {450, "60", 138.17}, {500, "60", 166.4}, {600, "60", 238.35}, {200, "100", 50.95},
    {250, "100", 77.03}, {300, "100", 107.32}, {350, "100", 130.85}, {400, "100", 164.82},
    {450, "100", 207.96}, {500, "100", 256.1}, {600, "100", 367.39}, {250, "120", 89.29},
    {300, "120", 125.49}, {350, "120", 150.79}, {400, "120", 192.43}, {450, "120", 244.14},
    {500, "120", 296.37}, {600, "120", 429.39}, {200, "140", 67.76}, {250, "140", 104.13},
    {300, "140", 139.67}, {350, "140", 170.21}, {400, "140", 223.64}, {450, "140", 274.22},
    {500, "140", 341.09}, {600, "140", 483.12}, {450, "160", 308.5}, {500, "160", 379.17},
    {125, "XXS", 38.55}, {250, "XXS", 104.13}, {300, "XXS", 125.49}, {350, "10", 36.71},
    {400, "10", 42.05}, {450, "10", 47.39}, {500, "10", 52.73}, {600, "10", 63.41},
    {350, "20", 45.61}, {400, "20", 52.27}, {450, "20", 58.94}, {500, "20", 78.6},
    {350, "30", 54.57}, {400, "30", 62.58}, {450, "30", 82.15}, {500, "30", 104.13},
    {600, "30", 140.68},
};
// clang-format on

// 1 lb/ft is 0.45359237 / 0.3048 kg/m. The pounds are of inches and have two decimals.
TEST(Schedules, WeighTheUsualPoundsForAFoot) {
  for (const PoundsCase& each : kPounds) {
    const double diameter = Vesk::Pcf::sizeOfDn(each.dn)->outside;
    const double expected = each.pounds * 0.45359237 / 0.3048;
    EXPECT_NEAR(weightOf(diameter, wallOf(each.schedule, each.dn)), expected, 0.006 * expected)
        << "DN " << each.dn << " schedule " << each.schedule;
  }
}

TEST(Schedules, AreOfSizesThatThereAreAndLeaveABore) {
  for (const std::string& name : scheduleNames()) {
    double last = 0.0;
    for (const ScheduledWall& each : wallsOfSchedule(name)) {
      EXPECT_LT(last, each.dn) << name;
      last = each.dn;
      const auto* size = Vesk::Pcf::sizeOfDn(each.dn);
      ASSERT_NE(size, nullptr) << name << " DN " << each.dn;
      EXPECT_LT(2.0 * each.wall, size->outside) << name << " DN " << each.dn;
    }
    EXPECT_GT(last, 0.0) << name;
  }
}

// A higher number is no thinner, size by size.
TEST(Schedules, GrowWithTheirNumbers) {
  constexpr const char* kLists[][8] = {{"5S", "10S", "40S", "80S"},
                                       {"10", "20", "30", "40", "60", "80", "100", "120"},
                                       {"100", "120", "140", "160"},
                                       {"STD", "XS", "XXS"}};
  for (const auto& list : kLists) {
    std::map<double, double> last;
    for (const char* name : list) {
      if (name == nullptr) break;
      for (const ScheduledWall& each : wallsOfSchedule(name)) {
        EXPECT_LE(last[each.dn], each.wall) << name << " DN " << each.dn;
        last[each.dn] = each.wall;
      }
    }
  }
}

// STD is schedule 40 up to DN 250 and 9.53 mm above, XS is 80 up to DN 200 and 12.7 mm
// above; 40S is STD, 80S is XS.
TEST(Schedules, MeetWhereTheStandardLetsThem) {
  for (const ScheduledWall& each : wallsOfSchedule("STD")) {
    EXPECT_EQ(each.wall, each.dn <= 250 ? wallOf("40", each.dn) : 9.53) << each.dn;
  }
  for (const ScheduledWall& each : wallsOfSchedule("XS")) {
    EXPECT_EQ(each.wall, each.dn <= 200 ? wallOf("80", each.dn) : 12.7) << each.dn;
  }
  for (const ScheduledWall& each : wallsOfSchedule("40S")) {
    EXPECT_EQ(each.wall, wallOf("STD", each.dn)) << each.dn;
  }
  for (const ScheduledWall& each : wallsOfSchedule("80S")) {
    EXPECT_EQ(each.wall, wallOf("XS", each.dn)) << each.dn;
  }
}

struct AgreementCase {
  const char* name;
  double diameter;
  double wall;

  friend std::ostream& operator<<(std::ostream& os, const AgreementCase& each) {
    return os << each.name;
  }
};

// Within a thousandth, 0.05 mm at the least.
constexpr AgreementCase kAgreements[] = {{"Exact", 114.3, 6.02},
                                         {"ATenthMoreOnDn250", 273.1, 9.27},
                                         {"EuropeanDn300", 323.9, 10.31},
                                         {"EuropeanDn25IsAnother", 33.7, 0},
                                         {"EuropeanDn65IsAnother", 76.1, 0},
                                         {"HundredthsOfSmallPipe", 21.34, 2.77},
                                         {"ATenthOfSmallPipeIsNot", 21.4, 0},
                                         {"InchesOfDn600", 609.6, 17.48},
                                         {"NoPipe", 100, 0}};

TEST(Walls, AreFoundByTheOutsideDiameter) {
  const Walls walls = Walls::ofSchedule("40");
  for (const AgreementCase& each : kAgreements) {
    EXPECT_EQ(walls.ofDiameter(each.diameter), each.wall) << each;
  }
}

// Each wall of each table at the outside diameter of its size, and at no other.
TEST(Walls, OfASchedulesAreThoseOfItsTable) {
  std::set<double> sizes;
  for (const std::string& name : scheduleNames()) {
    for (const ScheduledWall& each : wallsOfSchedule(name)) sizes.insert(each.dn);
  }
  for (const std::string& name : scheduleNames()) {
    const Walls walls = Walls::ofSchedule(name);
    std::map<double, double> expected;
    for (const ScheduledWall& each : wallsOfSchedule(name)) expected[each.dn] = each.wall;
    for (const double dn : sizes) {
      const Vesk::Pcf::PipeSize* size = Vesk::Pcf::sizeOfDn(dn);
      ASSERT_NE(size, nullptr) << dn;
      EXPECT_EQ(walls.ofDiameter(size->outside), expected[dn]) << name << " DN " << dn;
    }
  }
}

TEST(Walls, OfATableOfOnesOwn) {
  const TempFolder folder;
  writeFile("walls.csv", "size,wall\r\n114.3,3.6\r\n400 x 300,0.8\n\n600x200,1");
  const Walls walls = Walls::ofFile("walls.csv");
  EXPECT_FALSE(walls.isEmpty());
  EXPECT_EQ(walls.ofDiameter(114.3), 3.6);
  EXPECT_EQ(walls.ofDiameter(168.3), 0.0);
  EXPECT_EQ(walls.ofSection(300, 400), 0.8);
  EXPECT_EQ(walls.ofSection(600, 200), 1.0);
  EXPECT_EQ(walls.ofSection(600, 300), 0.0);
  // Within a thousandth of each side.
  EXPECT_EQ(walls.ofSection(400.3, 299.8), 0.8);
  EXPECT_EQ(walls.ofSection(400, 301), 0.0);
  EXPECT_EQ(walls.ofSection(401, 300), 0.0);
}

TEST(Walls, SayWhichLineIsNone) {
  const TempFolder folder;
  for (const char* line : {"114.3", "114.3;3.6", "114.3,0", "114.3,57.15", "114.3,x", "x,3.6",
                           "400 x,1", "400 x 2,1", "400 x 300 x 2,1", "-114.3,3", "nan,1"}) {
    writeFile("walls.csv", std::string("168.3,7.11\n") + line + '\n');
    try {
      Walls::ofFile("walls.csv");
      ADD_FAILURE() << line;
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.exit, Exit::kInput);
      EXPECT_TRUE(std::string(failure.what()).starts_with("walls.csv:2: ")) << failure.what();
    }
  }
  EXPECT_THROW(Walls::ofFile("none.csv"), Failure);
  writeFile("large.csv", std::string((std::size_t{1} << 20) + 1, '\n'));
  EXPECT_THROW(Walls::ofFile("large.csv"), Failure);
}

}  // namespace
}  // namespace VeskTest
