// SPDX-License-Identifier: MIT
// Scenes whose clashes are known.

#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <vector>

#include "support/TempFolder.h"
#include "tools/ToolRun.h"

namespace VeskTest {
namespace {

// An element: its header and what stands behind the record's prefix.
struct Element {
  const char* f1;
  const char* f2;
  const char* record;
};

struct Scene {
  const char* name;
  std::vector<Element> elements;
  const char* options;
  const char* clashes;  // "CODE line-line", in the order of lines

  friend std::ostream& operator<<(std::ostream& os, const Scene& each) { return os << each.name; }
};

std::string padded(std::string text, std::size_t width) {
  text.resize(width, ' ');
  return text;
}

// The counters are 001, 002 ... in the order of the lines.
std::string recordsOf(const std::vector<Element>& elements) {
  std::string records;
  int counter = 0;
  for (const Element& each : elements) {
    records += padded(each.f1, 8) + padded(each.f2, 2) + "00" + std::to_string(++counter) +
               "    00" + each.record + '\n';
  }
  return records;
}

std::string clashesIn(const nlohmann::json& document) {
  std::string text;
  for (const auto& each : document["clashes"]) {
    if (!text.empty()) text += ", ";
    text += each["code"].get<std::string>() + ' ' + std::to_string(each["a"]["line"].get<int>()) +
            '-' + std::to_string(each["b"]["line"].get<int>());
  }
  return text;
}

// A pipe along x, 1000 long and 100 wide; others are placed about it.
constexpr const char* kPipe = "c 0 0 0,1000 0 0,100";

// clang-format off
const Scene kScenes[] = {
    {"CrossingPipes", {{"A", "", kPipe}, {"B", "", "c 500 -500 70,0 1000 0,60"}}, "", "V501 1-2"},
    {"PipesApart", {{"A", "", kPipe}, {"B", "", "c 500 -500 81,0 1000 0,60"}}, "", ""},
    {"TangentPipes", {{"A", "", kPipe}, {"B", "", "c 500 -500 80,0 1000 0,60"}}, "", ""},
    {"ContactIsNoClash", {{"A", "", kPipe}, {"B", "", "c 500 -500 79.95,0 1000 0,60"}}, "", ""},
    {"BeyondTheTolerance", {{"A", "", kPipe}, {"B", "", "c 500 -500 79.8,0 1000 0,60"}}, "", "V501 1-2"},
    {"WithinALargerTolerance", {{"A", "", kPipe}, {"B", "", "c 500 -500 79.8,0 1000 0,60"}}, "--tolerance 0.5", ""},
    {"PipeInAPipe", {{"A", "", kPipe}, {"B", "", "c 100 0 0,800 0 0,60"}}, "", "V501 1-2"},
    {"PipeOnAPlate", {{"A", "", kPipe}, {"B", "", "b 2000 0 0,-500 -500 -150,0 1000 0,0 0 100"}}, "", ""},
    {"PipeThroughAPlate", {{"A", "", kPipe}, {"B", "", "b 100 0 0,500 -500 -500,0 1000 0,0 0 1000"}}, "", "V501 1-2"},
    {"PipeThroughAFace", {{"A", "", kPipe}, {"B", "", "g pt 500 -500 -500,pt 0 1000 0,pt 0 1000 1000,pt 0 0 1000"}}, "", "V501 1-2"},
    {"BoxesFaceToFace", {{"A", "", "b 10 0 0,0 0 0,0 10 0,0 0 10"}, {"B", "", "b 10 0 0,10 5 5,0 10 0,0 0 10"}}, "", ""},
    // Ends of pipes.
    {"EndToEnd", {{"A", "", kPipe}, {"B", "", "c 1000 0 0,500 0 0,100"}}, "--clearance 50", ""},
    {"EndToEndOfAnotherSize", {{"A", "", kPipe}, {"B", "", "c 1000 0 0,500 0 0,60"}}, "--clearance 50", ""},
    {"EndsWithinTheTolerance", {{"A", "", kPipe}, {"B", "", "c 1000.05 0.05 0,500 0 0,100"}}, "--clearance 50", ""},
    {"EndsWithinALargerTolerance", {{"A", "", kPipe}, {"B", "", "c 1000.3 0.3 0,500 0 0,100"}}, "--clearance 50 --tolerance 0.5", ""},
    {"EndsBeyondTheTolerance", {{"A", "", kPipe}, {"B", "", "c 1000.3 0.3 0,500 0 0,100"}}, "--clearance 50", "V502 1-2"},
    {"EndsThatOverlap", {{"A", "", kPipe}, {"B", "", "c 995 0 0,500 0 0,100"}}, "", "V501 1-2"},
    {"BendOnAPipe", {{"A", "", kPipe}, {"B", "", "t 1000 300 0,0 -300 0,300 0 0,100"}}, "--clearance 5", ""},
    {"BendIntoAPipe", {{"A", "", kPipe}, {"B", "", "t 900 300 20,0 -300 0,300 0 0,100"}}, "", "V501 1-2"},
    {"PipePastTheInnerSideOfABend", {{"A", "", "t 0 0 0,300 0 0,0 300 0,100"}, {"B", "", "c 0 0 -500,0 0 1000,100"}}, "", ""},
    {"PipeThroughABend", {{"A", "", "t 0 0 0,300 0 0,0 300 0,100"}, {"B", "", "c 212 212 -500,0 0 1000,60"}}, "", "V501 1-2"},
    {"BendsInARack", {{"A", "", "t 0 0 0,300 0 0,0 300 0,100"}, {"B", "", "t 0 0 0,500 0 0,0 500 0,98"}}, "", ""},
    {"BendsThatAreTooNear", {{"A", "", "t 0 0 0,300 0 0,0 300 0,100"}, {"B", "", "t 0 0 0,500 0 0,0 500 0,98"}}, "--clearance 101.1", "V502 1-2"},
    {"BendsThatAreNot", {{"A", "", "t 0 0 0,300 0 0,0 300 0,100"}, {"B", "", "t 0 0 0,500 0 0,0 500 0,98"}}, "--clearance 101", ""},
    // Branches.
    {"BranchFromTheAxis", {{"A", "", kPipe}, {"B", "", "c 500 0 0,0 0 500,60"}}, "", ""},
    {"BranchFromTheSurface", {{"A", "", kPipe}, {"B", "", "c 500 0 50,0 0 500,60"}}, "", ""},
    {"BranchFromBelowTheSurface", {{"A", "", kPipe}, {"B", "", "c 500 0 40,0 0 500,60"}}, "", ""},
    {"BranchFirst", {{"B", "", "c 500 0 0,0 0 500,60"}, {"A", "", kPipe}}, "", ""},
    {"BranchOfTwoHeadersIsStrict", {{"A", "", kPipe}, {"B", "", "c 500 0 0,0 0 500,60"}}, "--strict", "V504 1-2"},
    {"BranchFromABend", {{"A", "", "t 0 0 0,300 0 0,0 300 0,100"}, {"B", "", "c 212 212 0,0 0 500,60"}}, "", ""},
    {"MitredPipes", {{"A", "", kPipe}, {"B", "", "c 1000 0 0,400 300 0,100"}}, "", ""},
    {"MitredPipesThatMeetWithinTheTolerance", {{"A", "", kPipe}, {"B", "", "c 1000 -0.05 0,400 300 0,100"}}, "", ""},
    {"MitredPipesThatDoNotMeet", {{"A", "", kPipe}, {"B", "", "c 1000 -0.5 0,400 300 0,100"}}, "", "V501 1-2"},
    {"MitredPipesThatMeetWithinALargerTolerance", {{"A", "", kPipe}, {"B", "", "c 1000 -0.5 0,400 300 0,100"}}, "--tolerance 0.6", ""},
    {"ThroughBothSides", {{"A", "", kPipe}, {"B", "", "c 500 0 -60,0 0 500,60"}}, "", "V501 1-2"},
    {"EndInABox", {{"A", "", kPipe}, {"B", "", "b 500 0 0,900 -100 -100,0 200 0,0 0 200"}}, "", "V501 1-2"},
    {"ThroughABendAndBackIn", {{"A", "", "t 0 0 0,300 0 0,0 300 0,100"}, {"B", "", "c 300 20 0,-300 300 0,20"}}, "", "V501 1-2"},
    // Along the chord from 10 to 80 degrees of the bend, and on; its middle is 54 off the axis.
    {"FromABendOutBackInAndThrough", {{"A", "", "t 0 0 0,300 0 0,0 300 0,100"}, {"B", "", "c 295.4 52.1 0,-389.3 389.3 0,2"}}, "", "V501 1-2"},
    // Clearance.
    {"NearerThanTheClearance", {{"A", "", kPipe}, {"B", "", "c 0 0 129.9,1000 0 0,60"}}, "--clearance 50", "V502 1-2"},
    {"AsFarAsTheClearance", {{"A", "", kPipe}, {"B", "", "c 0 0 130,1000 0 0,60"}}, "--clearance 50", ""},
    {"ContactIsTooNear", {{"A", "", kPipe}, {"B", "", "c 0 0 80,1000 0 0,60"}}, "--clearance 50", "V502 1-2"},
    // Duplicates.
    {"SamePipe", {{"A", "", kPipe}, {"B", "", kPipe}}, "", "V503 1-2"},
    {"SamePipeFromTheOtherEnd", {{"A", "", kPipe}, {"B", "", "c 1000 0 0,-1000 0 0,100"}}, "", "V503 1-2"},
    {"AnotherDiameterIsAClash", {{"A", "", kPipe}, {"B", "", "c 0 0 0,1000 0 0,99"}}, "", "V501 1-2"},
    // Between what.
    {"NotWithinAHeader", {{"A", "01", kPipe}, {"A", "01", "c 500 -500 0,0 1000 0,60"}}, "", ""},
    {"BetweenHeadersOfALine", {{"A", "01", kPipe}, {"A", "02", "c 500 -500 0,0 1000 0,60"}}, "", "V501 1-2"},
    {"NotWithinALine", {{"A", "01", kPipe}, {"A", "02", "c 500 -500 0,0 1000 0,60"}}, "--between lines", ""},
    {"NotWithinAnotherLine", {{"A", "01", "c 0 0 9000,10 0 0,5"}, {"A", "02", "c 0 0 9900,10 0 0,5"}, {"B", "01", kPipe}, {"B", "02", "c 500 -500 0,0 1000 0,60"}}, "--between lines", ""},
    {"BetweenTwoOfManyLines", {{"A", "01", "c 0 0 9000,10 0 0,5"}, {"A", "02", "c 0 0 9900,10 0 0,5"}, {"B", "01", kPipe}, {"C", "01", "c 500 -500 0,0 1000 0,60"}}, "--between lines", "V501 3-4"},
    {"BetweenElements", {{"A", "01", kPipe}, {"A", "01", "c 500 -500 0,0 1000 0,60"}}, "--between elements", "V501 1-2"},
    {"NotWithinAFile", {{"A", "01", kPipe}, {"B", "02", "c 500 -500 0,0 1000 0,60"}}, "--between files", ""},
    {"Ignored", {{"INS-1", "", kPipe}, {"B", "", "c 500 -500 0,0 1000 0,60"}}, "--ignore B:INS-*", ""},
    {"IgnoredWithAll", {{"INS-1", "", kPipe}, {"B", "", "c 500 -500 0,0 1000 0,60"}}, "--ignore INS-*", ""},
    {"OthersAreNotIgnored", {{"A", "", kPipe}, {"B", "", "c 500 -500 0,0 1000 0,60"}}, "--ignore INS-*:B --ignore A:C", "V501 1-2"},
    {"IgnoredByItsGroup", {{"A", "01", kPipe}, {"B", "", "c 500 -500 0,0 1000 0,60"}}, "--ignore \"B:A 01\"", ""},
    // What takes up no room, and what is nowhere.
    {"LinesTextsAndPoints", {{"A", "", kPipe}, {"B", "", "l pt 0 0 0,pt 1000 0 0"}, {"B", "", "l pt 0 0 0"}}, "--clearance 50", ""},
    {"ThreeAndTheirPairs", {{"A", "", kPipe}, {"B", "", "c 500 -500 0,0 1000 0,60"}, {"C", "", "c 800 -500 0,0 1000 0,60"}}, "", "V501 1-2, V501 1-3"},
};
// clang-format on

class ClashScene : public testing::TestWithParam<Scene> {};

TEST_P(ClashScene, HasTheseClashes) {
  const TempFolder folder;
  writeFile("scene.dat", recordsOf(GetParam().elements));
  const std::string options = GetParam().options;
  const ToolRun run = runTool("clash --json scene.dat " + options);
  ASSERT_EQ(run.err, "");
  EXPECT_EQ(clashesIn(nlohmann::json::parse(run.out)), GetParam().clashes);
  EXPECT_EQ(run.exit, GetParam().clashes[0] == '\0' ? 0 : 1);
}

// As plants lie in their countries: the same clashes at six million millimetres.
TEST_P(ClashScene, HasTheSameClashesFarAway) {
  const TempFolder folder;
  writeFile("scene.dat", recordsOf(GetParam().elements));
  ASSERT_EQ(runTool("convert scene.dat far.dat -q --move 6700000,5200000,-1100000").exit, 0);
  const ToolRun run = runTool(std::string("clash --json far.dat ") + GetParam().options);
  EXPECT_EQ(clashesIn(nlohmann::json::parse(run.out)), GetParam().clashes);
}

INSTANTIATE_TEST_SUITE_P(Of, ClashScene, testing::ValuesIn(kScenes),
                         [](const auto& each) { return each.param.name; });

struct DepthCase {
  const char* name;
  const char* a;
  const char* b;
  double depth;
  bool isBound;
};

// clang-format off
const DepthCase kDepths[] = {
    {"ParallelPipes", kPipe, "c 0 0 70,1000 0 0,60", 10, false},           // 50 + 30 - 70
    {"CoaxialPipes", kPipe, "c 100 0 0,800 0 0,60", 80, false},            // out sideways
    {"EndsOfParallelPipes", kPipe, "c 995 0 10,500 0 0,100", 5, false},    // out lengthwise
    {"EndsTheOtherWayRound", kPipe, "c 1495 0 10,-500 0 0,100", 5, false},
    {"AShortPipeAlongALongOne", kPipe, "c 2 0 40,3 0 0,100", 5, false},    // out by its beginning
    {"AShortPipeTheOtherWayRound", kPipe, "c 5 0 40,-3 0 0,100", 5, false},
    {"AShortPipeAtTheFarEnd", kPipe, "c 994 0 40,3 0 0,100", 6, false},
    {"CrossingPipes", kPipe, "c 500 -500 70,0 1000 0,60", 10, true},
    {"PipeInAPlate", kPipe, "b 2000 0 0,-500 -500 -130,0 1000 0,0 0 100", 20, true},
};
// clang-format on

TEST(Clash, DepthIsExactForParallelPipesAndElseABoundWithinOne) {
  const TempFolder folder;
  for (const DepthCase& each : kDepths) {
    SCOPED_TRACE(each.name);
    writeFile("scene.dat", recordsOf({{"A", "", each.a}, {"B", "", each.b}}));
    const auto clash =
        nlohmann::json::parse(runTool("clash --json scene.dat").out)["clashes"].at(0);
    EXPECT_EQ(clash["depthIsLowerBound"].get<bool>(), each.isBound);
    EXPECT_LE(clash["depth"].get<double>(), each.depth + 1e-6);
    EXPECT_GE(clash["depth"].get<double>(), each.depth - (each.isBound ? 1.0 : 1e-6));
  }
}

TEST(Clash, DistanceAndPlaceAreThoseOfTheNearestPoints) {
  const TempFolder folder;
  // The pipe's top is at (400, 0, 50), the box's corner at (400, 0, 87.5) above it.
  writeFile("scene.dat",
            recordsOf({{"A", "", kPipe}, {"B", "", "b 1 0 1,400 0 87.5,-1 0 1,0 1 1"}}));
  const auto clash =
      nlohmann::json::parse(runTool("clash --json scene.dat --clearance 50").out)["clashes"].at(0);
  EXPECT_NEAR(clash["distance"].get<double>(), 37.5, 0.001);
  EXPECT_NEAR(clash["place"][0].get<double>(), 400, 0.1);
  EXPECT_NEAR(clash["place"][1].get<double>(), 0, 0.1);
  EXPECT_NEAR(clash["place"][2].get<double>(), 68.75, 0.001);
}

TEST(Clash, IsLookedForBetweenTwoSidesOnly) {
  const TempFolder folder;
  const std::vector<Element> crossing = {{"A", "", kPipe}, {"B", "", "c 500 -500 0,0 1000 0,60"}};
  writeFile("piping.dat", recordsOf(crossing));
  writeFile("steel.dat", recordsOf({{"A", "", "b 100 0 0,200 -500 -500,0 1000 0,0 0 1000"}}));
  const auto document = nlohmann::json::parse(runTool("clash --json piping.dat steel.dat").out);
  EXPECT_EQ(clashesIn(document), "V501 1-1");
  EXPECT_EQ(document["clashes"][0]["b"]["file"], "steel.dat");
}

// Two components of one header: 1 and 2 belong together, 3 does not.
TEST(Clash, IsNoneWithinOneComponentOfTheAttributes) {
  const TempFolder folder;
  writeFile("scene.dat", recordsOf({{"A", "01", kPipe},
                                    {"A", "01", "c 500 -500 0,0 1000 0,60"},
                                    {"A", "01", "c 800 -500 0,0 1000 0,60"}}));
  EXPECT_EQ(
      clashesIn(nlohmann::json::parse(runTool("clash --json --between elements scene.dat").out)),
      "V501 1-2, V501 1-3");
  writeFile("scene.attributes.csv", "f1,f2,first,last,item\nA,01,1,2,valve\nA,01,3,3,pipe\n");
  EXPECT_EQ(
      clashesIn(nlohmann::json::parse(runTool("clash --json --between elements scene.dat").out)),
      "V501 1-3");
}

const RunCase kRuns[] = {
    {"IgnoreWithoutAHeader", "clash scene.dat --ignore :B", 2, "", "a header is missing"},
    {"UnknownScope", "clash scene.dat --between rooms", 2, "", "--between"},
    {"NoSuchFile", "clash scene.dat none.dat", 3, "", "none.dat"},
    {"NegativeClearance", "clash scene.dat --clearance -1", 2, "", "--clearance"},
    {"StdinTwice", "clash - -", 2, "", "read only once"},
    {"PageOfJson", "clash scene.dat --view --json", 2, "", "--view shows a page, not json"},
    {"PageNotAskedFor", "clash scene.dat -o x.html", 2, "", "--view"},
    {"NoSuchAttributes", "clash scene.dat --attributes none.csv", 3, "", "none.csv"},
    {"BcfOverItsInput", "clash scene.dat --bcf scene.dat", 2, "", "scene.dat"},
    {"BcfOverAFile", "clash scene.dat --bcf there.bcf", 4, "", "there.bcf"},
    {"Limited", "clash many.dat --max 3", 1, "7 more of V501", ""},
    {"LimitedToTwenty", "clash wide.dat", 1, "16 more of V501", ""},
    {"TooManyInOnePlace", "clash crowd.dat", 3, "", "too many elements in one place"},
    {"Sarif", "clash scene.dat --format sarif", 1, "\"ruleId\": \"V501\"", ""},
};

class ClashRun : public testing::TestWithParam<RunCase> {};

TEST_P(ClashRun, ComesToThis) {
  const TempFolder folder;
  const auto pipes = [](int count) {
    std::string records;
    for (int i = 0; i < count; ++i) {
      records += padded("P-" + std::to_string(i), 8) + "01001    00c 0 0 " +
                 std::to_string(i * 0.001) + ",1000 0 0,100\n";
    }
    return records;
  };
  writeFile("scene.dat", pipes(2));
  writeFile("there.bcf", "x");
  writeFile("many.dat", pipes(5));  // 10 pairs
  writeFile("wide.dat", pipes(9));  // 36 pairs
  if (std::string(GetParam().arguments).find("crowd") != std::string::npos) {
    writeFile("crowd.dat", pipes(2500));  // 3 million pairs
  }
  expectRun(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Clash, ClashRun, testing::ValuesIn(kRuns),
                         [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace VeskTest
