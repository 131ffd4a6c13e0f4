// SPDX-License-Identifier: MIT
// Take-offs as a whole: groups, walls, what is named. What one element measures, and the walls of
// the schedules, have tests of their own in tests/unit/tools/takeoff.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "support/TempFolder.h"
#include "tools/ToolRun.h"

namespace VeskTest {
namespace {

// Pipes of 114.3, 2 m and 1 m long, one of 60.3 and 1 m; bends of three radii.
const std::string kPlant =
    "P-1     A1001    00c 0 0 0,0 0 2000,114.3\n"
    "P-1     A1002    00t 0 0 0,300 0 0,0 300 0,114.3\n"
    "P-1     A1003    00t 0 0 0,300.03 0 0,0 300.03 0,114.3\n"
    "P-2     A1001    00c 0 0 0,0 0 1000,60.3\n"
    "P-2     A1002    00c 0 0 0,0 0 1000,114.3\n"
    "P-2     A1003    00t 0 0 0,300.1 0 0,0 300.1 0,114.3\n"
    "P-2     A1004    00t 0 0 0,150 0 0,0 150 0,114.3\n";

// A cube of 1 m whose ends are exchanged, and a box that leans by an eighth of a turn.
const std::string kOdd =
    "E-1     01001    00r 0 0 1000,1000 0 0,0 1000 0,1000 1000 0,0 0 -1000,1000 0 -1000,"
    "0 1000 -1000,1000 1000 -1000\n"
    "E-2     01001    00b 1000 0 0,0 0 0,0 500 0,0 200 200\n";

// The columns of a row up to what it counts:
// level,by,group,description,kind, diameter1,diameter2,width,depth,radius,angle,wall1,wall2,
// components,count
constexpr RunCase kRuns[] = {
    {"SizesGoByTheUnit", "measure --unit 1000 --csv metres.dat", 0,
     "\nrow,,,,cylinder,165.1,0,0,0,0,0,0,0,0,1,0.5,0,", ""},
    {"SizesThatAMetreDoesNotTellApart", "measure --unit 1000 --csv metres.dat", 0,
     "\nrow,,,,cylinder,168.3,0,0,0,0,0,0,0,0,1,0.5,0,", ""},
    // 300 and 300.03 are one, 300.1 is 0.07 away, and so another.
    {"RadiiThatRoundingMakesAreOne", "measure --csv plant.dat", 0,
     "\nrow,,,,torus,114.3,0,0,0,300,90,0,0,0,2,", ""},
    {"RadiiAreRows", "measure --csv plant.dat", 0, "\nrow,,,,torus,114.3,0,0,0,300.1,90,0,0,0,1,",
     ""},
    {"ThreeRadiiAreThree", "measure --csv plant.dat", 0,
     "\nrow,,,,torus,114.3,0,0,0,150,90,0,0,0,1,", ""},
    {"AnInsideOutReducerTakesNothingOff", "measure --csv --only reducer --density 1 odd.dat", 0,
     ",1,0,0,6,1,1,0,0,0,0,0\n",
     "odd.dat:1: reducer with its ends swapped: measured as it is drawn"},
    // 1 * 0.5 * 0.2 m3.
    {"AnObliqueBoxCountsWhatItEncloses", "measure --csv --only box --density 1000 odd.dat", 0,
     "\nrow,,,,box,0,0,500,282.84,0,0,0,0,0,1,1,0,1.765685424949238,0.1,100,", "oblique box"},
    {"TheElementIsNamed", "measure odd.dat", 0, "boxes",
     "odd.dat:2: oblique box: measured as it is drawn"},
    {"WhatHasNoShapeIsCountedAndNamed", "measure --csv none.dat", 1,
     "\nrow,,,,cylinder,0,0,0,0,0,0,0,0,0,4,0,0,0,0,",
     "none.dat:1: not measured: diameter below zero (4 times, also none.dat:2, none.dat:3 ...)"},
    {"AllPlacesWithV", "measure -v none.dat", 1, "cylinders",
     "(4 times, also none.dat:2, none.dat:3, none.dat:4)"},
    {"NoTableOfZerosForNoFile", "measure gone.dat", 3, "", "gone.dat: No such file"},
    {"NoDocumentForNoFile", "measure --json gone.dat", 3, "", "gone.dat: No such file"},
    {"TheOthersAreMeasured", "measure --csv gone.dat metres.dat", 3, "\ntotal,,,,,0,", "gone.dat"},
    {"AFileOfNothing", "measure --csv empty.dat", 0, "\ntotal,,,,,0,0,0,0,0,0,0,0,0,0,0,0,", ""},
    {"GroupsHaveSubtotals", "measure --by header plant.dat", 0,
     "P-1 A1  all                                           3     2.943 ", ""},
    {"AGroupIsTheSecondField", "measure --by group --sums --csv plant.dat", 0,
     "\nsubtotal,group,A1,,,0,0,0,0,0,0,0,0,0,7,", ""},
    {"AKind", "measure --by kind --sums --csv plant.dat", 0,
     "\nsubtotal,kind,bend,,,0,0,0,0,0,0,0,0,0,4,", ""},
    {"SizesInTheirOrder", "measure --by size --sums --csv plant.dat", 0,
     "\nsubtotal,size,60.3,,,0,0,0,0,0,0,0,0,0,1,1,0,", ""},
    {"ACombination", "measure --by header,size --sums --csv plant.dat", 0,
     "\nsubtotal,\"header,size\",\"P-2 A1, 114.3\",,,0,0,0,0,0,0,0,0,0,3,", ""},
    {"SeveralTables", "measure --by kind --by size --sums plant.dat", 0, "\n\nSIZE ", ""},
    // 2 m + 1 m: 3 * pi * 0.10828 * 0.00602 * 7850 = 48.2 kg; pi / 4 * 0.10226^2 * 3 * 1000 =
    // 24.6 kg of water.
    {"WallsBySchedule", "measure --schedule 40 --only pipe plant.dat", 0,
     "cylinders    114.3     6.02      2     3.000       1.077   0.030782       48.2    0.024639   "
     "     24.6\n",
     ""},
    // The same 0.0061435 m3 at 8000 kg/m3 and with oil: 49.1 and 24.639 * 0.85 = 20.9.
    {"DensitiesOfOnesOwn",
     "measure --schedule 40 --only pipe --density 8000 --content 850 plant.dat", 0,
     "       49.1    0.024639        20.9\n", ""},
    // pi * (0.1143 - 0.0036) * 0.0036 * 3 * 7850 = 29.5 kg.
    {"WallsOfATable", "measure --walls walls.csv --only pipe plant.dat", 0,
     "cylinders    114.3      3.6      2     3.000       1.077   0.030782       29.5 ",
     "plant.dat:4: no wall: cylinder of 60.3 mm"},
    {"WhatHasNoWallHasNoWeight", "measure --walls walls.csv --size 60.3 --csv plant.dat", 0,
     "\nrow,,,,cylinder,60.3,0,0,0,0,0,0,0,0,1,1,0,", "no wall: cylinder of 60.3 mm"},
    {"NoWallInInches", "measure --walls walls.csv --units imperial plant.dat", 0, "NO WALL",
     "no wall: cylinder of 2.374 in"},
    {"NoSchedule", "measure --schedule 45 plant.dat", 2, "", "--schedule"},
    {"OneKindOfWalls", "measure --schedule 40 --walls walls.csv plant.dat", 2, "", "--schedule"},
    {"NoTableOfWalls", "measure --walls gone.csv plant.dat", 3, "", "gone.csv: No such file"},
    {"NoSidecar", "measure --by spec plant.dat", 3, "", "plant.dat: has no sidecar to measure by"},
    {"NoColumn", "measure --by colour --attributes rows.csv plant.dat", 2, "",
     "there is no column \"colour\""},
    // The first three elements are one component, of the others two have no row: quarter bends
    // of 300.1 and 150, 0.7070 m.
    {"AComponentCountsAsOne", "measure --by item --attributes rows.csv plant.dat", 0,
     "C-1     FIRST LINE            1      3     2.943 ", ""},
    {"OnlyItemsHaveADescription",
     "measure --by header --sums --csv --attributes rows.csv plant.dat", 0,
     "\nsubtotal,header,P-1 A1,,,0,0,0,0,0,0,0,0,1,3,", ""},
    {"ElementsWithoutARow", "measure --by item --attributes rows.csv plant.dat", 0,
     "(none)                               2     0.707 ", ""},
    {"ComponentsInAllTables", "measure --by header --sums --csv --attributes rows.csv plant.dat", 0,
     "\ntotal,,,,,0,0,0,0,0,0,0,0,2,7,", ""},
    // Its body is of a size of the table.
    {"AFlangeIsNoPipe",
     "measure --schedule 40 --sums --by component --csv --attributes rows.csv "
     "plant.dat",
     0, "\nsubtotal,component,FLANGE,,,0,0,0,0,0,0,0,0,1,2,2,0,",
     "plant.dat:4: no wall: FLANGE (2 times, also plant.dat:5)"},
    {"AFormulaIsAText", "measure --by header --csv formula.dat", 0, "\nrow,header,'=A1 01,,", ""},
    {"SumsOfNothing", "measure --sums plant.dat", 2, "", "--sums needs --by"},
    {"OneFormAtATime", "measure --csv --xlsx x.xlsx plant.dat", 2, "", "--csv"},
};

class TakeOffTest : public testing::TestWithParam<RunCase> {};

TEST_P(TakeOffTest, Runs) {
  const TempFolder folder;
  writeFile("plant.dat", kPlant);
  writeFile("odd.dat", kOdd);
  writeFile("empty.dat", "");
  writeFile(
      "metres.dat",
      "P-1     01001    00c 0 0 0,0 0 0.5,0.1683\nP-1     01002    00c 0 0 0,0 0 0.5,0.1651\n");
  std::string none;
  for (int i = 1; i <= 4; ++i)
    none += "P-1     0100" + std::to_string(i) + "    00c 0 0 0,0 0 9,-2\n";
  writeFile("none.dat", none);
  writeFile("formula.dat", "=A1     01001    00c 0 0 0,0 0 1000,100\n");
  writeFile("walls.csv", "114.3,3.6\n");
  writeFile("rows.csv",
            "f1,f2,first,last,item-code,description,component\n"
            "P-1,A1,1,3,C-1,FIRST LINE,PIPE\n"
            "P-2,A1,1,2,C-2,,FLANGE\n");
  const ToolRun run = expectRun(GetParam());
  if (std::string_view(GetParam().out).empty()) {
    EXPECT_EQ(run.out, "");
  }
  EXPECT_FALSE(std::filesystem::exists("x.xlsx"));
}

INSTANTIATE_TEST_SUITE_P(Commands, TakeOffTest, testing::ValuesIn(kRuns),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(TakeOff, IsTheSameWithAnyNumberOfJobs) {
  const TempFolder folder;
  std::string files;
  for (int i = 0; i < 8; ++i) {
    const std::string name = std::to_string(i) + ".dat";
    writeFile(name, kPlant + "P-3     A1001    00c 0 0 0,0 0 0." + std::to_string(i) + ",0.3\n");
    files += ' ' + name;
  }
  const std::string one = runTool("measure --csv --by header,size" + files).out;
  EXPECT_TRUE(contains(one, "\ntotal,"));
  EXPECT_EQ(runTool("measure --csv --by header,size -j 4" + files).out, one);
}

}  // namespace
}  // namespace VeskTest
