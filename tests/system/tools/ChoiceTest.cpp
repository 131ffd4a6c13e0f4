// SPDX-License-Identifier: MIT
// One selection for every command that reads records.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "commands/Command.h"
#include "files/SelectionOptions.h"
#include "support/TempFolder.h"
#include "tools/ToolRun.h"

namespace VeskTest {
namespace {

// Line 1 lies on x, line 2 stands at its end. Line 3 goes from (0, 0, 500) to
// (1000, 1000, 1500), through (500, 500, 1000); its box holds (900, 100, 600), which is
// far from it. The plate of line 4 lies 50 below line 1. Line 6 is elsewhere.
const std::string kPlant =
    "P-1     01001    00c 0 0 0,1000 0 0,100\n"
    "P-1     01002    00c 1000 0 0,0 0 2000,100\n"
    "P-2     01001    00c 0 0 500,1000 1000 1000,60.3\n"
    "DUCT-7  A1001    00b 1000 0 0,0 -250 -300,0 500 0,0 0 200\n"
    "P-2     02002    00c 9000 0 0,0 0 10,10\n";

// As above with line 2 gone and line 5 moved by 100.
const std::string kLater =
    "P-1     01001    00c 0 0 0,1000 0 0,100\n"
    "P-2     01001    00c 0 0 500,1000 1000 1000,60.3\n"
    "DUCT-7  A1001    00b 1000 0 0,0 -250 -300,0 500 0,0 0 200\n"
    "P-2     02002    00c 9100 0 0,0 0 10,10\n";

// In a folder with plant.dat, later.dat, and bad.dat, whose line 2 is damaged.
constexpr RunCase kRuns[] = {
    {"InfoOfAHeader", "info plant.dat --header P-1", 0, "elements  2\n", ""},
    {"InfoTakesWhatItPrints", "info plant.dat --header \"DUCT-7 A1\" --headers", 0,
     "DUCT-7 A1   1\n", ""},
    {"InfoOfAGroup", "info plant.dat --header \"* 02\"", 0, "elements  1\n", ""},
    {"InfoOfNothing", "info plant.dat --header P-3", 1, "", "no element is chosen"},
    {"InfoLeavesOutFilesOfNothing", "info plant.dat later.dat --near 9000,0,0,9", 0, "plant.dat\n",
     ""},
    {"ListOfSizes", "list plant.dat --size ..61 --csv", 0, "\n3,cylinder,", ""},
    {"ListInABox", "list plant.dat --bbox 490,490,990,510,510,1010", 0, "       3  cylinder", ""},
    {"ListNotByTheBoxOfADiagonal", "list plant.dat --bbox 890,90,590,910,110,610", 1, "",
     "no element is chosen"},
    {"ListTouching", "list plant.dat --touching DUCT-7 --only pipe --tolerance 50", 0,
     "       1  cylinder", ""},
    {"ListNotTouching", "list plant.dat --touching DUCT-7 --only pipe --tolerance 49", 1, "",
     "no element"},
    {"TouchingByItsOtherName", "list plant.dat --touching DUCT-7 --only pipe --touch-tolerance 50",
     0, "       1  cylinder", ""},
    {"TouchingNeedsAFile", "list - --touching P-1", 2, "", "stdin does not allow"},
    {"ListLines", "list plant.dat --lines 2,5-", 0, "       5  cylinder", ""},
    {"NotIsForTheNextOption", "list plant.dat --not --header P-1 --only pipe --lines -4", 0,
     "       3  cylinder", ""},
    {"NotAlone", "list plant.dat --not", 2, "", "--not must stand before"},
    {"NotBeforeAnotherOption", "list plant.dat --not --csv --lines 1", 2, "",
     "--not must stand before"},
    {"WrongKind", "measure plant.dat --only cilinder", 2, "", "did you mean \"cylinder\"?"},
    {"WrongSize", "export plant.dat -o x.stl --size 5..1", 2, "", "begins above its end"},
    {"WrongBox", "info plant.dat --bbox 1,2,3", 2, "", "not six numbers"},
    {"ShowWhatIsChosen", "show plant.dat --near 9000,0,5,1", 0,
     "  5 | P-2     02002    00c 9000 0 0,0 0 10,10\n", ""},
    {"ShowNothing", "show plant.dat --near 9000,0,500,1", 1, "", "no element is chosen"},
    {"MeasureAHeader", "measure plant.dat --header P-1", 0, "\nall                     2     3.000",
     ""},
    {"MeasureNothing", "measure plant.dat --header P-3", 1, "", "no element is chosen"},
    {"CheckAlwaysTellsWhatCantBeRead", "check bad.dat --header P-1", 1, "1 error, 0 warnings in 1",
     ""},
    {"CheckNothing", "check plant.dat --header P-3", 1, "", "no element is chosen"},
    {"CheckByCodeAndKind", "check bad.dat --only V1,pipe", 0, "0 errors, 0 warnings in 1", ""},
    {"CheckNotACode", "check bad.dat --not --only V1", 2, "", "--ignore V1"},
    {"CheckTellsAPairIfTheFirstIsChosen", "check twice.dat --header P-1", 0, "same shape", ""},
    {"CheckTellsAPairIfTheSecondIsChosen", "check twice.dat --header P-2", 0, "same shape", ""},
    {"CheckTellsNoOtherPair", "check twice.dat --header P-3", 0, "0 errors, 0 warnings in 1", ""},
    // One end of P-3 has the gap, the other meets nothing.
    {"CheckTellsAJointOfAChosenEnd", "check twice.dat --joints --header P-3", 0,
     "0 errors, 1 warning, 1 note in 1", ""},
    {"CheckTellsNoOtherJoint", "check twice.dat --joints --header P-2 --ignore V204", 0,
     "0 errors, 0 warnings in 1", ""},
    {"DiffTakesAPairIfOneSideIsChosen", "diff plant.dat later.dat --near 9100,0,0,9", 1,
     "moved by 100 0 0\n1 moved; 0 in their places\n", ""},
    {"DiffOfAHeader", "diff plant.dat later.dat --header P-1", 1, "1 removed; 1 in their places\n",
     ""},
    {"DiffOfNothing", "diff plant.dat later.dat --header P-3", 1, "", "no element is chosen"},
    {"ConvertAPart", "convert plant.dat - --header \"P-2 02\"", 0,
     "P-2     02002    00c 9000 0 0,0 0 10,10\n", ""},
    {"ConvertAPartAndVerify", "convert plant.dat x.dat --only pipe --style fixed --verify", 0, "",
     "verified 4 elements, 0 differ"},
    {"ConvertNothing", "convert plant.dat x.dat --header P-3", 1, "", "no element is chosen"},
    {"ExportAPart", "export plant.dat --report --only box", 0, "boxes", ""},
    {"ExportNothing", "export plant.dat -o x.glb --header P-3", 1, "", "no element is chosen"},
    {"DrawAPart", "view plant.dat -o x.svg --only box", 0, "x.svg: 1 element, ", ""},
    {"DrawNothing", "view plant.dat -o x.svg --header P-3", 1, "", "no element is chosen"},
    {"ContextOfADrawing", "view plant.dat -o x.svg --only box --context", 2, "",
     "--context is for a page"},
    {"HelpTellsWhatItMeans", "help selection", 0, "diff     reports a pair if either side", ""},
};

class ChoiceTest : public testing::TestWithParam<RunCase> {};

TEST_P(ChoiceTest, Runs) {
  const TempFolder folder;
  writeFile("plant.dat", kPlant);
  writeFile("later.dat", kLater);
  writeFile("bad.dat", kPipe + "damaged\n");
  // The same pipe twice, and one that begins 5 behind its end.
  writeFile("twice.dat",
            "P-1     01001    00c 0 0 0,0 0 1000,100\n"
            "P-2     01001    00c 0 0 0,0 0 1000,100\n"
            "P-3     01001    00c 0 0 1005,0 0 1000,100\n");
  const ToolRun run = expectRun(GetParam());
  if (std::string_view(GetParam().out).empty()) {
    EXPECT_EQ(run.out, "");
  }
  EXPECT_FALSE(std::filesystem::exists("x.glb") || std::filesystem::exists("x.stl"));
}

INSTANTIATE_TEST_SUITE_P(Commands, ChoiceTest, testing::ValuesIn(kRuns),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(Choice, IsTheSameForEveryCommandThatReadsRecords) {
  for (const auto& command : VeskTool::makeCommands()) {
    const std::string name(command->text().name);
    if (!contains(VeskTool::selectionHelp(), "\n  " + name + ' ')) continue;
    CLI::App app;
    command->define(app);
    for (const char* option : {"--header", "--only", "--size", "--bbox", "--near", "--touching",
                               "--lines", "--not", "--touch-tolerance"}) {
      EXPECT_NE(app.get_option_no_throw(option), nullptr) << name << ' ' << option;
    }
  }
}

}  // namespace
}  // namespace VeskTest
