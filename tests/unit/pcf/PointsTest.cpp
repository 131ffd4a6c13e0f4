// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ostream>

#include "pcf/PcfRun.h"

// The points of components: their runs and legs, as the segments of the centre line.
namespace {

struct LegCase {
  const char* name;
  const char* file;
  const char* lines;  // of the first component, "x y z>x y z" each, sorted as drawn
  const char* said;   // part of what is said; nullptr: nothing
};

void PrintTo(const LegCase& row, std::ostream* out) { *out << row.name; }

#define RUN_100 "END-POINT 0 0 0 100\n END-POINT 200 0 0 100\n"
#define BRANCH(n, x, y) " BRANCH" #n "-POINT " #x " " #y " 0 50\n"

#define ENDS_152 " END-POINT 0 0 0 100\n END-POINT 152 152 0 100\n"
#define QUARTER_152 ENDS_152 " CENTRE-POINT 152 0 0\n"
#define PIPE_BEFORE "PIPE\n END-POINT -500 0 0 100\n END-POINT 0 0 0 100\n"

// clang-format off
const LegCase kLegs[] = {
    // ---- tees
    {"Tee",             "TEE\n " RUN_100 " CENTRE-POINT 100 0 0\n" BRANCH(1, 100, 90), "0 0 0>200 0 0 100 0 0>100 90 0", nullptr},
    {"TeeSetOn",        "TEE-SET-ON\n " RUN_100 " CENTRE-POINT 100 0 0\n" BRANCH(1, 100, 90), "0 0 0>200 0 0 100 0 0>100 90 0", nullptr},
    {"TeeStubWithRun",  "TEE-STUB\n " RUN_100 " CENTRE-POINT 100 0 0\n" BRANCH(1, 100, 90), "0 0 0>200 0 0 100 0 0>100 90 0", nullptr},
    {"TeeStub",         "TEE-STUB\n CENTRE-POINT 100 0 0 100\n" BRANCH(1, 100, 90), "100 0 0>100 90 0", nullptr},
    {"Cross",           "CROSS\n " RUN_100 " CENTRE-POINT 100 0 0\n" BRANCH(1, 100, 90) BRANCH(2, 100, -90),
     "0 0 0>200 0 0 100 0 0>100 90 0 100 0 0>100 -90 0", nullptr},
    {"ThreeEndsFindTheirRun", "TEE\n END-POINT 0 0 0 100\n END-POINT 100 90 0 50\n END-POINT 200 0 0 100\n CENTRE-POINT 100 0 0\n",
     "0 0 0>200 0 0 100 0 0>100 90 0", nullptr},
    {"FourEnds",        "CROSS\n END-POINT 0 0 0 100\n END-POINT 100 90 0 50\n END-POINT 200 0 0 100\n END-POINT 100 -90 0 50\n CENTRE-POINT 100 0 0\n",
     "0 0 0>200 0 0 100 0 0>100 90 0 100 0 0>100 -90 0", nullptr},
    {"WithoutCentre",   "TEE\n " RUN_100 BRANCH(1, 60, 90), "0 0 0>200 0 0 60 0 0>60 90 0", "warning: TEE: expected a CENTRE-POINT"},
    {"BranchInTheCentre", "TEE\n " RUN_100 " CENTRE-POINT 100 0 0\n" BRANCH(1, 100, 0), "0 0 0>200 0 0", "warning: TEE: a branch has no length"},
    // ---- Y-pieces
    {"YWithOneEnd",     "Y-PIECE-FITTING\n END-POINT 0 0 0 100\n CENTRE-POINT 100 0 0\n" BRANCH(1, 200, 90) BRANCH(2, 200, -90),
     "100 0 0>0 0 0 100 0 0>200 90 0 100 0 0>200 -90 0", nullptr},
    {"YAsATee",         "Y-PIECE-FABRICATED\n " RUN_100 " CENTRE-POINT 100 0 0\n" BRANCH(1, 200, 90),
     "100 0 0>0 0 0 100 0 0>200 0 0 100 0 0>200 90 0", nullptr},
    // ---- olets
    {"Olet",            "OLET\n CENTRE-POINT 100 0 0 300\n" BRANCH(1, 100, 200), "100 0 0>100 200 0", nullptr},
    {"OletWithARun",    "OLET\n " RUN_100 " CENTRE-POINT 100 0 0\n" BRANCH(1, 100, 90), "0 0 0>200 0 0 100 0 0>100 90 0", nullptr},
    {"OletAtTheEndOfItsRun", "OLET\n " RUN_100 " CENTRE-POINT 200 0 0\n" BRANCH(1, 200, 90), "0 0 0>200 0 0 200 0 0>200 90 0", nullptr},
    {"OletOnAPipe",     "OLET\n " RUN_100 " CENTRE-POINT 100 0 0\n" BRANCH(1, 100, 90) "PIPE\n END-POINT -500 0 0 100\n END-POINT 500 0 0 100\n",
     "100 0 0>100 90 0", nullptr},
    {"OletOnTwoPipesThatMeetBelowIt", "OLET\n " RUN_100 " CENTRE-POINT 100 0 0\n" BRANCH(1, 100, 90)
     "PIPE\n END-POINT -500 0 0 100\n END-POINT 100 0 0 100\nPIPE\n END-POINT 500 0 0 100\n END-POINT 100 0 0 100\n",
     "100 0 0>100 90 0", nullptr},
    {"OletOnPipesWithAGap", "OLET\n " RUN_100 " CENTRE-POINT 100 0 0\n" BRANCH(1, 100, 90)
     "PIPE\n END-POINT -500 0 0 100\n END-POINT 50 0 0 100\nPIPE\n END-POINT 500 0 0 100\n END-POINT 150 0 0 100\n",
     "0 0 0>200 0 0 100 0 0>100 90 0", nullptr},
    {"OletOnAPipeThatTurnsAway", "OLET\n " RUN_100 " CENTRE-POINT 100 0 0\n" BRANCH(1, 100, 90)
     "PIPE\n END-POINT 0 0 0 100\n END-POINT 0 0 500 100\nPIPE\n END-POINT 200 0 0 100\n END-POINT 200 0 500 100\n",
     "0 0 0>200 0 0 100 0 0>100 90 0", nullptr},
    {"OletBetweenPipes", "OLET\n " RUN_100 " CENTRE-POINT 100 0 0\n" BRANCH(1, 100, 90) "PIPE\n END-POINT -500 0 0 100\n END-POINT 0 0 0 100\n"
     "PIPE\n END-POINT 200 0 0 100\n END-POINT 500 0 0 100\n", "0 0 0>200 0 0 100 0 0>100 90 0", nullptr},
    {"OletWithOneEnd",  "OLET\n END-POINT 100 57 0 300\n" BRANCH(1, 100, 200), "100 57 0>100 200 0", nullptr},
    {"OletWithoutBranch", "OLET\n CENTRE-POINT 100 0 0\n END-POINT 100 200 0 50\n", "100 0 0>100 200 0", nullptr},
    {"OletWithoutBranchGoesToTheFarthestEnd", "OLET\n CENTRE-POINT 100 0 0\n END-POINT 100 57 0 50\n END-POINT 100 200 0 50\n", "100 0 0>100 200 0", nullptr},
    {"OletFromItsFirstEndOnAPipe", "OLET\n END-POINT 100 0 0 50\n END-POINT 100 200 0 50\nPIPE\n END-POINT -500 0 0 100\n END-POINT 500 0 0 100\n",
     "100 0 0>100 200 0", "warning: OLET: expected a CENTRE-POINT and a BRANCH1-POINT; drawn from end to end"},
    {"OletFromItsSecondEndOnAPipe", "OLET\n END-POINT 100 200 0 50\n END-POINT 100 0 0 50\nPIPE\n END-POINT -500 0 0 100\n END-POINT 500 0 0 100\n",
     "100 0 0>100 200 0", "warning: OLET: expected a CENTRE-POINT and a BRANCH1-POINT; drawn from end to end"},
    {"OletOfOneEnd",    "OLET\n END-POINT 100 0 0 50\n", "", "error: OLET not drawn: expected a CENTRE-POINT and a BRANCH1-POINT"},
    {"OletOfABranch",   "OLET\n" BRANCH(1, 100, 200), "", "error: OLET not drawn: expected a CENTRE-POINT and a BRANCH1-POINT"},
    {"OletWithARunOfNoLength", "OLET\n END-POINT 100 0 0 50\n END-POINT 100 0 0 50\n" BRANCH(1, 100, 200), "100 0 0>100 200 0", nullptr},
    {"OletWithoutCentreLeavesItsRunAtTheFoot", "OLET\n " RUN_100 BRANCH(1, 60, 90), "0 0 0>200 0 0 60 0 0>60 90 0", nullptr},
    {"OletOnAPipeOfKilometres", "OLET\n " RUN_100 " CENTRE-POINT 100 0 0\n" BRANCH(1, 100, 90) "PIPE\n END-POINT -2000000 0 0 100\n END-POINT 2000000 0 0 100\n",
     "100 0 0>100 90 0", nullptr},
    {"OletOnAPipeOfOneEnd", "OLET\n " RUN_100 " CENTRE-POINT 100 0 0\n" BRANCH(1, 100, 90) "PIPE\n END-POINT -500 0 0 100\n",
     "0 0 0>200 0 0 100 0 0>100 90 0", "error: PIPE not drawn: expected two ends"},
    {"OletOnAPipeOfThreeEnds", "OLET\n " RUN_100 " CENTRE-POINT 100 0 0\n" BRANCH(1, 100, 90)
     "PIPE\n CENTRE-POINT 0 0 0\n END-POINT -500 0 0 100\n END-POINT 500 0 0 100\n END-POINT 0 90 0 100\n",
     "100 0 0>100 90 0", "warning: PIPE: expected two END-POINTs, found more"},
    {"OletWithOneEndAndACentre", "OLET\n CENTRE-POINT 100 0 0\n END-POINT 100 57 0 300\n" BRANCH(1, 100, 200), "100 0 0>100 200 0", nullptr},
    // ---- tees without a centre or a branch
    {"TeeWhoseBranchLeavesBeyondItsRun", "TEE\n " RUN_100 BRANCH(1, 300, 90), "0 0 0>200 0 0 100 0 0>300 90 0", "warning: TEE: expected a CENTRE-POINT"},
    {"TeeWithoutBranch", "TEE\n " RUN_100, "0 0 0>200 0 0", "TEE: has no branch"},
    // ---- pieces of the line that go on at a branch
    {"DialOfTwoEnds",   "INSTRUMENT-DIAL\n " RUN_100, "0 0 0>200 0 0", nullptr},
    {"TrapThatTurns",   "TRAP-ANGLE\n END-POINT 0 0 0 100\n CENTRE-POINT 90 0 0\n BRANCH1-POINT 90 90 0 100\n", "0 0 0>90 0 0 90 0 0>90 90 0", nullptr},
    {"FilterThatTurns", "FILTER-ANGLE\n END-POINT 0 0 0 100\n CENTRE-POINT 90 0 0\n BRANCH1-POINT 90 90 0 100\n", "0 0 0>90 0 0 90 0 0>90 90 0", nullptr},
    {"BasketThatTurns", "FILTER-BASKET\n END-POINT 0 0 0 100\n CENTRE-POINT 90 0 0\n BRANCH1-POINT 90 90 0 100\n", "0 0 0>90 0 0 90 0 0>90 90 0", nullptr},
    {"ConeThatTurns",   "FILTER-CONE\n END-POINT 0 0 0 100\n CENTRE-POINT 90 0 0\n BRANCH1-POINT 90 90 0 100\n", "0 0 0>90 0 0 90 0 0>90 90 0", nullptr},
    {"StrainerThatTurns", "FILTER-Y\n END-POINT 0 0 0 100\n CENTRE-POINT 90 0 0\n BRANCH1-POINT 90 90 0 100\n", "0 0 0>90 0 0 90 0 0>90 90 0", nullptr},
    {"PieceThatTurns",  "MISC-COMPONENT\n END-POINT 0 0 0 100\n CENTRE-POINT 90 0 0\n BRANCH1-POINT 90 90 0 100\n", "0 0 0>90 0 0 90 0 0>90 90 0", nullptr},
    // ---- where the line arrives at what closes it
    {"CapThatNothingMeets", "CAP\n END-POINT 0 0 0 100\n END-POINT 60 0 0 100\n", "0 0 0>60 0 0",
     "warning: CAP: nothing shows where the line arrives; its first END-POINT is assumed"},
    {"CapByItsWeldedEnd", "CAP\n END-POINT 0 0 0 100 FL\n END-POINT 60 0 0 100 BW\n", "60 0 0>0 0 0", nullptr},
    {"CapByItsFirstEnd", "CAP\n END-POINT 0 0 0 100 BW\n END-POINT 60 0 0 100 FL\n", "0 0 0>60 0 0", nullptr},
    {"BlindFlangeByItsFlangedEnd", "FLANGE-BLIND\n END-POINT 0 0 0 100 BW\n END-POINT 24 0 0 100 FL\n", "24 0 0>0 0 0", nullptr},
    {"BlindFlangeByItsFirstEnd", "FLANGE-BLIND\n END-POINT 0 0 0 100 FL\n END-POINT 24 0 0 100 BW\n", "0 0 0>24 0 0", nullptr},
    {"CapBetweenPipes", "CAP\n END-POINT 0 0 0 100\n END-POINT 60 0 0 100\n" PIPE_BEFORE "PIPE\n END-POINT 60 0 0 100\n END-POINT 500 0 0 100\n",
     "0 0 0>60 0 0", "nothing shows where the line arrives"},
    {"CapBetweenAGasketAndAPipe", "CAP\n END-POINT 0 0 0 100\n END-POINT 60 0 0 100\nGASKET\n END-POINT 0 0 0 100\n END-POINT -3 0 0 100\n"
     "PIPE\n END-POINT 60 0 0 100\n END-POINT 500 0 0 100\n", "60 0 0>0 0 0", nullptr},
    {"CapBetweenAPipeAndAGasket", "CAP\n END-POINT 0 0 0 100\n END-POINT 60 0 0 100\nGASKET\n END-POINT 60 0 0 100\n END-POINT 63 0 0 100\n" PIPE_BEFORE,
     "0 0 0>60 0 0", nullptr},
    {"BlindFlangeBetweenAWeldAndABolt", "FLANGE-BLIND\n END-POINT 0 0 0 100\n END-POINT 24 0 0 100\nWELD\n CO-ORDS 0 0 0\nBOLT\n CO-ORDS 24 0 0\n",
     "24 0 0>0 0 0", nullptr},
    {"BlindFlangeBetweenABoltAndAWeld", "FLANGE-BLIND\n END-POINT 0 0 0 100\n END-POINT 24 0 0 100\nWELD\n CO-ORDS 24 0 0\nBOLT\n CO-ORDS 0 0 0\n",
     "0 0 0>24 0 0", nullptr},
    // ---- valves
    {"Valve",           "VALVE\n " RUN_100, "0 0 0>100 0 0 200 0 0>100 0 0", nullptr},
    {"AngleValve",      "VALVE-ANGLE\n END-POINT 0 0 0 100\n END-POINT 90 90 0 100\n CENTRE-POINT 90 0 0\n", "0 0 0>90 0 0 90 90 0>90 0 0", nullptr},
    {"AngleValveByItsNeighbours", "VALVE-ANGLE\n END-POINT 0 0 0 100\n END-POINT 90 90 0 100\nPIPE\n END-POINT -500 0 0 100\n END-POINT 0 0 0 100\n"
     "PIPE\n END-POINT 90 90 0 100\n END-POINT 90 500 0 100\n", "0 0 0>90 0 0 90 90 0>90 0 0",
     "warning: VALVE-ANGLE: expected a CENTRE-POINT; it lies where the pipes that meet it would"},
    {"AngleValveWithoutCentre", "VALVE-ANGLE\n END-POINT 0 0 0 100\n END-POINT 90 90 0 100\n", "0 0 0>45 45 0 90 90 0>45 45 0",
     "warning: VALVE-ANGLE: expected a CENTRE-POINT, found none; drawn straight"},
    {"ThreeWayByABranch", "VALVE-3WAY\n " RUN_100 " CENTRE-POINT 100 0 0\n" BRANCH(1, 100, 90), "0 0 0>100 0 0 200 0 0>100 0 0 100 90 0>100 0 0", nullptr},
    {"ThreeWayByEnds",  "VALVE-3WAY\n " RUN_100 " END-POINT 100 90 0 50\n CENTRE-POINT 100 0 0\n", "0 0 0>100 0 0 200 0 0>100 0 0 100 90 0>100 0 0", nullptr},
    {"FourWay",         "VALVE-4WAY\n " RUN_100 " CENTRE-POINT 100 0 0\n" BRANCH(1, 100, 90) BRANCH(2, 100, -90),
     "0 0 0>100 0 0 200 0 0>100 0 0 100 90 0>100 0 0 100 -90 0>100 0 0", nullptr},
    {"ThreeWayInstrument", "INSTRUMENT-3WAY\n END-POINT 0 0 0 100\n END-POINT 100 90 0 50\n END-POINT 200 0 0 100\n CENTRE-POINT 100 0 0\n",
     "0 0 0>200 0 0 100 0 0>100 90 0", nullptr},
    {"InstrumentThatGoesOnAtABranch", "INSTRUMENT-ANGLE\n END-POINT 0 0 0 100\n CENTRE-POINT 90 0 0\n BRANCH1-POINT 90 90 0 100\n", "0 0 0>90 0 0 90 0 0>90 90 0", nullptr},
    {"InstrumentThatTurnsToABranchWithoutCentre", "INSTRUMENT-ANGLE\n END-POINT 0 0 0 100\n BRANCH1-POINT 90 90 0 100\n", "0 0 0>90 90 0",
     "warning: INSTRUMENT-ANGLE: expected a CENTRE-POINT, found none; drawn straight"},
    {"OffsetValve",     "VALVE-OFFSET\n END-POINT 0 0 0 100\n END-POINT 200 50 0 100\n CENTRE-POINT 100 25 0\n", "0 0 0>100 25 0 200 50 0>100 25 0", nullptr},
    // ---- branches of flanges and of what closes a line
    {"BranchOfAFlange", "FLANGE\n " RUN_100 " CENTRE-POINT 100 0 0\n" BRANCH(1, 100, 90) PIPE_BEFORE, "200 0 0>0 0 0 100 0 0>100 90 0", nullptr},
    {"BranchOfABlindFlange", "FLANGE-BLIND\n END-POINT 0 0 0 100\n END-POINT 24 0 0 100\n CENTRE-POINT 24 0 0\n" BRANCH(1, 90, 0) PIPE_BEFORE,
     "0 0 0>24 0 0 24 0 0>90 0 0", nullptr},
    {"BranchOfACap", "CAP\n END-POINT 0 0 0 100\n END-POINT 60 0 0 100\n" BRANCH(1, 30, 90) PIPE_BEFORE, "0 0 0>60 0 0 30 0 0>30 90 0", nullptr},
    {"ThirdEndOfAGasket", "GASKET\n END-POINT 0 0 0 100\n END-POINT 4 0 0 100\n END-POINT 2 90 0 50\n", "0 0 0>4 0 0 2 0 0>2 90 0",
     "warning: GASKET: expected two END-POINTs, found more"},
    // ---- bends
    {"BendTeed",        "ELBOW-TEED\n END-POINT 0 0 0 100\n END-POINT 152 152 0 100\n CENTRE-POINT 152 0 0\n" BRANCH(1, 300, 0),
     "0 0 0>152 0 0 152 0 0>152 152 0 152 0 0>300 0 0", nullptr},
    {"BendByItsNeighbours", "ELBOW\n END-POINT 0 0 0 100\n END-POINT 152 152 0 100\nPIPE\n END-POINT -500 0 0 100\n END-POINT 0 0 0 100\n"
     "PIPE\n END-POINT 152 152 0 100\n END-POINT 152 500 0 100\n", "0 0 0>152 0 0 152 0 0>152 152 0",
     "warning: ELBOW: expected a CENTRE-POINT; it lies where the pipes that meet it would"},
    {"CentreAtAnEnd",   "BEND\n END-POINT 0 0 0 100\n END-POINT 152 152 0 100\n CENTRE-POINT 0 0 0\n", "0 0 0>152 152 0",
     "warning: BEND: its centre lies at an end; drawn straight"},
    // ---- bends on one line
    {"OnALineWithAnAngle90", "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n CENTRE-POINT 0 100 0\n ANGLE 9000\n"
     "PIPE\n END-POINT -500 0 0 50\n END-POINT 0 0 0 50\n", "0 0 0>0 100 0 0 100 0>0 200 0", "warning: BEND: has its points on one line; drawn straight"},
    {"OnALineBetweenPipesOfThatLine", "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n CENTRE-POINT 0 100 0\n"
     "PIPE\n END-POINT 0 -500 0 50\n END-POINT 0 0 0 50\n", "0 0 0>0 100 0 0 100 0>0 200 0", "drawn straight"},
    {"OnALineAlone",    "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n CENTRE-POINT 0 100 0\n ANGLE 18000\n",
     "0 0 0>0 100 0 0 100 0>0 200 0", "drawn straight"},
    {"HalfATurnProven", "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n CENTRE-POINT 0 100 0\n ANGLE 180\n"
     "PIPE\n END-POINT -500 0 0 50\n END-POINT 0 0 0 50\nPIPE\n END-POINT -500 200 0 50\n END-POINT 0 200 0 50\n",
     "0 0 0>100 0 0 100 0 0>100 200 0 100 200 0>0 200 0", nullptr},
    {"ABranchOfHalfATurnIsNamed", "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n CENTRE-POINT 0 100 0\n ANGLE 180\n" BRANCH(1, 200, 100)
     "PIPE\n END-POINT -500 0 0 50\n END-POINT 0 0 0 50\nPIPE\n END-POINT -500 200 0 50\n END-POINT 0 200 0 50\n",
     "0 0 0>100 0 0 100 0 0>100 200 0 100 200 0>0 200 0", "error: BEND drawn in part: its lines do not come to all of its points"},
    {"PipesFromBothSidesProveNone", "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n CENTRE-POINT 0 100 0\n"
     "PIPE\n END-POINT -500 0 0 50\n END-POINT 0 0 0 50\nPIPE\n END-POINT 500 200 0 50\n END-POINT 0 200 0 50\n",
     "0 0 0>0 100 0 0 100 0>0 200 0", "drawn straight"},
    {"TheAngleBetweenTheLegsIsNoMatter", "BEND\n END-POINT 0 0 0 100\n END-POINT 170.7107 70.7107 0 100\n CENTRE-POINT 100 0 0\n ANGLE 135\n",
     "0 0 0>100 0 0 100 0 0>170.7107 70.7107 0", nullptr},
    // ---- bends whose BEND-RADIUS is a check: R = t tan(angle between the legs / 2), t the shorter leg
    {"RadiusOfThePoints", "BEND\n" QUARTER_152 " BEND-RADIUS 152\n", "0 0 0>152 0 0 152 0 0>152 152 0", nullptr},
    {"RadiusByTheShorterLeg", "BEND\n END-POINT 0 0 0 100\n END-POINT 152 400 0 100\n CENTRE-POINT 152 0 0\n BEND-RADIUS 152\n",
     "0 0 0>152 0 0 152 0 0>152 400 0", nullptr},
    // 62.9605 tan(67.5 deg) = 152.00
    {"RadiusOfAnEighthTurn", "BEND\n END-POINT 0 0 0 100\n END-POINT 107.4802 44.5198 0 100\n CENTRE-POINT 62.9605 0 0\n BEND-RADIUS 152\n ANGLE 4500\n",
     "0 0 0>62.9605 0 0 62.9605 0 0>107.4802 44.5198 0", nullptr},
    {"RadiusInTheUnitOfTheCoordinates", "UNITS-CO-ORDS INCH\nBEND\n END-POINT 0 0 0 100\n END-POINT 6 6 0 100\n CENTRE-POINT 6 0 0\n BEND-RADIUS 6\n",
     "0 0 0>152.4 0 0 152.4 0 0>152.4 152.4 0", nullptr},
    {"RadiusAgainstThePoints", "BEND\n" QUARTER_152 " BEND-RADIUS 300\n", "0 0 0>152 0 0 152 0 0>152 152 0",
     "note: BEND: its BEND-RADIUS is not that of its points, which are drawn: 300 and 152"},
    // ---- bends whose ANGLE is a check: the turn or what the legs enclose, within a degree
    {"AngleOfThePoints", "BEND\n" QUARTER_152 " ANGLE 90\n", "0 0 0>152 0 0 152 0 0>152 152 0", nullptr},
    {"AngleNearlyOfThePoints", "BEND\n" QUARTER_152 " ANGLE 9099\n", "0 0 0>152 0 0 152 0 0>152 152 0", nullptr},
    {"AngleJustBelowThePoints", "BEND\n" QUARTER_152 " ANGLE 89.01\n", "0 0 0>152 0 0 152 0 0>152 152 0", nullptr},
    {"AngleAboveThePoints", "BEND\n" QUARTER_152 " ANGLE 9125\n", "0 0 0>152 0 0 152 0 0>152 152 0",
     "note: BEND: its ANGLE is not that of its points, which are drawn: 91.25 and 90"},
    {"AngleBelowThePoints", "BEND\n" QUARTER_152 " ANGLE 88.75\n", "0 0 0>152 0 0 152 0 0>152 152 0",
     "note: BEND: its ANGLE is not that of its points, which are drawn: 88.75 and 90"},
    {"AngleOfHalfTheTurn", "BEND\n" QUARTER_152 " ANGLE 4500\n", "0 0 0>152 0 0 152 0 0>152 152 0",
     "note: BEND: its ANGLE is not that of its points, which are drawn: 45 and 90"},
    {"AngleOfHalfATurnAgainstACorner", "BEND\n" QUARTER_152 " ANGLE 18000\n", "0 0 0>152 0 0 152 0 0>152 152 0",
     "note: BEND: its ANGLE is not that of its points, which are drawn: 180 and 90"},
    {"AngleBetweenTheLegsWithinADegree", "BEND\n END-POINT 0 0 0 100\n END-POINT 170.7107 70.7107 0 100\n CENTRE-POINT 100 0 0\n ANGLE 135.75\n",
     "0 0 0>100 0 0 100 0 0>170.7107 70.7107 0", nullptr},
    {"AngleNeitherOfTheTurnNorBetweenTheLegs", "BEND\n END-POINT 0 0 0 100\n END-POINT 170.7107 70.7107 0 100\n CENTRE-POINT 100 0 0\n ANGLE 136.25\n",
     "0 0 0>100 0 0 100 0 0>170.7107 70.7107 0", "note: BEND: its ANGLE is not that of its points, which are drawn: 136.25 and 45"},
    // ---- bends without a CENTRE-POINT
    {"OnePipeGivesEqualLegs", "BEND\n" ENDS_152 PIPE_BEFORE, "0 0 0>152 0 0 152 0 0>152 152 0",
     "warning: BEND: expected a CENTRE-POINT; it follows from the pipe that meets it, for equal legs"},
    // Leg b R / (a + sqrt(a^2 + b^2 - 2 b R)) of a = 152, b = 400, R = 152: 400 * 152 / (152 + 248) = 152
    {"OnePipeAndTheRadiusGiveTheStraightPiece", "BEND\n END-POINT 0 0 0 100\n END-POINT 152 400 0 100\n BEND-RADIUS 152\n" PIPE_BEFORE,
     "0 0 0>152 0 0 152 0 0>152 400 0", "warning: BEND: expected a CENTRE-POINT; it follows from the pipe that meets it and BEND-RADIUS"},
    {"OnePipeAtTheSecondEnd", "BEND\n END-POINT 152 400 0 100\n END-POINT 0 0 0 100\n BEND-RADIUS 152\n" PIPE_BEFORE,
     "152 400 0>152 0 0 152 0 0>0 0 0", "BEND-RADIUS"},
    {"ARadiusThatIsTooLargeIsNotTaken", "BEND\n" ENDS_152 " BEND-RADIUS 300\n" PIPE_BEFORE, "0 0 0>152 0 0 152 0 0>152 152 0",
     "for equal legs"},
    {"BothPipesAcrossMakeHalfATurn", "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n" PIPE_BEFORE "PIPE\n END-POINT -500 200 0 50\n END-POINT 0 200 0 50\n",
     "0 0 0>100 0 0 100 0 0>100 200 0 100 200 0>0 200 0", "warning: BEND: expected a CENTRE-POINT; half a turn fits what meets it"},
    {"OnePipeAcrossAndTheRadiusMakeHalfATurn", "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n BEND-RADIUS 100\n" PIPE_BEFORE,
     "0 0 0>100 0 0 100 0 0>100 200 0 100 200 0>0 200 0", "half a turn fits what meets it"},
    {"OnePipeAcrossAloneTellsNothing", "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n" PIPE_BEFORE, "",
     "error: BEND not drawn: expected a CENTRE-POINT, found none"},
    {"NoPipeTellsNothing", "BEND\n" ENDS_152 " BEND-RADIUS 152\n ANGLE 9000\n", "", "error: BEND not drawn: expected a CENTRE-POINT, found none"},
    {"PipesWhoseLinesPassEachOther", "BEND\n" ENDS_152 PIPE_BEFORE "PIPE\n END-POINT 152 152 0 100\n END-POINT 152 152 500 100\n", "",
     "error: BEND not drawn: expected a CENTRE-POINT, found none"},
    {"PipesWhoseLinesMeetBehind", "BEND\n" ENDS_152 "PIPE\n END-POINT 500 0 0 100\n END-POINT 0 0 0 100\nPIPE\n END-POINT 152 152 0 100\n END-POINT 152 500 0 100\n",
     "", "error: BEND not drawn: expected a CENTRE-POINT, found none"},
    {"PipesWhoseLinesMeetBehindTheSecond", "BEND\n" ENDS_152 PIPE_BEFORE "PIPE\n END-POINT 152 152 0 100\n END-POINT 152 -500 0 100\n",
     "", "error: BEND not drawn: expected a CENTRE-POINT, found none"},
    {"PipesAcrossFromBothSidesTellNothing", "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n" PIPE_BEFORE "PIPE\n END-POINT 500 200 0 50\n END-POINT 0 200 0 50\n",
     "", "error: BEND not drawn: expected a CENTRE-POINT, found none"},
    {"TheSecondPipeAcrossAndTheAngleMakeHalfATurn", "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n ANGLE 18000\nPIPE\n END-POINT -500 200 0 50\n END-POINT 0 200 0 50\n",
     "0 0 0>100 0 0 100 0 0>100 200 0 100 200 0>0 200 0", "half a turn fits what meets it"},
    {"APipeAcrossAndAnotherAngleTellNothing", "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n ANGLE 9000\n" PIPE_BEFORE, "",
     "error: BEND not drawn: expected a CENTRE-POINT, found none"},
    {"APipeAlongTheEndsMakesNoHalfTurn", "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n ANGLE 18000\nPIPE\n END-POINT 0 -500 0 50\n END-POINT 0 0 0 50\n", "",
     "error: BEND not drawn: expected a CENTRE-POINT, found none"},
    {"HalfATurnProvenByTheSecondPipe", "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n CENTRE-POINT 0 100 0\n ANGLE 180\n"
     "PIPE\n END-POINT -500 200 0 50\n END-POINT 0 200 0 50\n", "0 0 0>100 0 0 100 0 0>100 200 0 100 200 0>0 200 0", nullptr},
    {"HalfATurnByItsFarthestPoint", "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n CENTRE-POINT 100 100 0\n ANGLE 180\n"
     "PIPE\n END-POINT -500 200 0 50\n END-POINT 0 200 0 50\n", "0 0 0>100 0 0 100 0 0>100 200 0 100 200 0>0 200 0", nullptr},
    {"FarthestPointThatNothingProvesIsACorner", "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n CENTRE-POINT 100 100 0\n ANGLE 180\n",
     "0 0 0>100 100 0 100 100 0>0 200 0", "note: BEND: its ANGLE is not that of its points, which are drawn: 180 and 90"},
    {"FarthestPointWithoutAnAngleIsACorner", "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n CENTRE-POINT 100 100 0\n"
     "PIPE\n END-POINT -500 200 0 50\n END-POINT 0 200 0 50\n", "0 0 0>100 100 0 100 100 0>0 200 0", nullptr},
    // The legs (-150, -100) and (-150, 100): 180 - 2 atan(100 / 150) = 112.6199 degrees
    {"APointThatIsNotTheFarthestIsACorner", "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n CENTRE-POINT 150 100 0\n ANGLE 180\n"
     "PIPE\n END-POINT -500 200 0 50\n END-POINT 0 200 0 50\n", "0 0 0>150 100 0 150 100 0>0 200 0", "note: BEND: its ANGLE is not that of its points, which are drawn: 180 and 112.62"},
    // ---- what is given twice, and odd things
    {"SameEndTwice",    "PIPE\n END-POINT 0 0 0 100\n END-POINT 0 0 0 100\n", "", "error: PIPE not drawn: has no length"},
    {"OneEndInATee",    "TEE\n END-POINT 0 0 0 100\n CENTRE-POINT 100 0 0\n" BRANCH(1, 100, 90), "100 0 0>0 0 0 100 0 0>100 90 0",
     "warning: TEE: has fewer ends than its name says; drawn without the others"},
    {"OneBranchInACross", "CROSS\n " RUN_100 " CENTRE-POINT 100 0 0\n" BRANCH(1, 100, 90), "0 0 0>200 0 0 100 0 0>100 90 0",
     "warning: CROSS: has fewer ends"},
    {"OneBranchInAY",   "Y-PIECE-FITTING\n END-POINT 0 0 0 100\n CENTRE-POINT 100 0 0\n" BRANCH(1, 200, 90), "100 0 0>0 0 0 100 0 0>200 90 0",
     "warning: Y-PIECE-FITTING: has fewer ends than its name says; drawn without the others"},
    {"TwoEndsInAThreeWayValve", "VALVE-3WAY\n " RUN_100 " CENTRE-POINT 100 0 0\n", "0 0 0>100 0 0 200 0 0>100 0 0",
     "warning: VALVE-3WAY: has fewer ends than its name says; drawn without the others"},
    {"OneEndInAnAngleValve", "VALVE-ANGLE\n END-POINT 0 0 0 100\n CENTRE-POINT 90 0 0\n", "",
     "error: VALVE-ANGLE not drawn: expected two ends"},
    {"SameEndTwiceInATee", "TEE\n END-POINT 0 0 0 100\n END-POINT 0 0 0 100\n CENTRE-POINT 100 0 0\n" BRANCH(1, 100, 90), "",
     "error: TEE not drawn: has no length"},
    {"SameEndTwiceInAnAngleValve", "VALVE-ANGLE\n END-POINT 0 0 0 100\n END-POINT 0 0 0 100\n CENTRE-POINT 100 0 0\n", "",
     "error: VALVE-ANGLE not drawn: has no length"},
    {"SameEndTwiceInABend", "BEND\n END-POINT 0 0 0 100\n END-POINT 0 0 0 100\n CENTRE-POINT 100 0 0\n", "",
     "error: BEND not drawn: has no length"},
    {"TwoBoresInAPiece", "MISC-COMPONENT\n END-POINT 0 0 0 100\n END-POINT 200 0 0 50\n", "0 0 0>200 0 0",
     "warning: MISC-COMPONENT: its ends have different bores; drawn as a cone"},
    {"TapsAreNoPlaces", "PIPE\n " RUN_100 " TAP-CONNECTION\n CO-ORDS 100 57 0\n", "0 0 0>200 0 0", nullptr},
    {"GapsStay",        "PIPE\n " RUN_100 "PIPE\n END-POINT 205 0 0 100\n END-POINT 500 0 0 100\n", "0 0 0>200 0 0", nullptr},
    {"WeldsWithALengthCloseIt", "WELD\n END-POINT 0 0 0 100\n END-POINT 3 0 0 100\n", "0 0 0>3 0 0", nullptr},
    {"OffsetReducer", "REDUCER-OFFSET\n END-POINT 0 0 0 150\n END-POINT 140 0 -40 100\nPIPE\n END-POINT -500 0 0 150\n END-POINT 0 0 0 150\n"
     "PIPE\n END-POINT 140 0 -40 100\n END-POINT 500 0 -40 100\n", "0 0 0>140 0 -40", nullptr},
    {"FeetAndInchesApart", "UNITS-BORE INCH\nPIPE\n END-POINT 0 0 0 6\"\n END-POINT 12' 6.1/2\" 0 0 6\"\n", "0 0 0>3822.7 0 0", nullptr},
    {"UnknownWithTwoEnds", "FOO\n " RUN_100, "0 0 0>200 0 0", "warning: FOO: unknown component; drawn like a piece of pipe"},
};
// clang-format on

// The segments of the first component.
std::string linesOf(const PcfRun& run) {
  std::string text;
  for (std::size_t i = 0; i < run.records.size(); ++i) {
    const std::vector<double> n = numbersOf(run.records[i]);
    if (run.headers[i].substr(10, 3) != "001" || run.records[i][0] != 'l' || n.size() < 6) continue;
    char segment[200];
    std::snprintf(segment, sizeof segment, "%s%.8g %.8g %.8g>%.8g %.8g %.8g",
                  text.empty() ? "" : " ", n[0], n[1], n[2], n[0] + n[3], n[1] + n[4], n[2] + n[5]);
    text += segment;
  }
  return text;
}

class Legs : public testing::TestWithParam<LegCase> {};

TEST_P(Legs, AreDrawn) {
  const LegCase& row = GetParam();
  const PcfRun run = runPcf(row.file);
  EXPECT_EQ(linesOf(run), row.lines) << run.messageText();
  if (row.said == nullptr) {
    EXPECT_EQ(run.messageText(), "");
  } else {
    EXPECT_NE(run.messageText().find(row.said), std::string::npos) << run.messageText();
  }
}

INSTANTIATE_TEST_SUITE_P(Pcf, Legs, testing::ValuesIn(kLegs),
                         [](const auto& row) { return std::string(row.param.name); });

// Eccentric reducers that meet no pipe: both circles are square to the axis. Bores 150 and
// 100 are 168.3 and 114.3 wide, so the centre lines lie 27 apart.
struct AloneCase {
  const char* name;
  const char* to;  // from 0 0 0
  const char* flat;
  bool isRuled;  // from x = 0 to x = 140 in wedges
  const char* said;
};

void PrintTo(const AloneCase& row, std::ostream* out) { *out << row.name; }

// clang-format off
const AloneCase kAlone[] = {
    {"FlatDown",      "140 0 -27",  "FLAT-DIRECTION DOWN",  true, nullptr},
    {"FlatUp",        "140 0 27",   "FLAT-DIRECTION UP",    true, nullptr},
    {"FlatNorth",     "140 27 0",   "FLAT-DIRECTION NORTH", true, nullptr},
    {"ByItsBores",    "140 0 -27",  "",                     true, nullptr},
    {"FlatAside",     "140 19.0919 19.0919", "FLAT-DIRECTION NORTH-UP", true, nullptr},
    {"OnOneLine",     "140 0 0",    "FLAT-DIRECTION UP",    false, "note: REDUCER-ECCENTRIC: its ends lie on one line; drawn concentric"},
    {"NothingFits",   "140 0 -90",  "",                     false, "warning: REDUCER-ECCENTRIC: nothing shows to which pipes it is square"},
};
// clang-format on

class ReducersAlone : public testing::TestWithParam<AloneCase> {};

TEST_P(ReducersAlone, AreSquareToTheirAxis) {
  const AloneCase& row = GetParam();
  const PcfRun run = runPcf("REDUCER-ECCENTRIC\n END-POINT 0 0 0 150\n END-POINT " +
                            std::string(row.to) + " 100\n " + row.flat + '\n');
  EXPECT_EQ(run.recordsOf('n').empty(), row.isRuled);
  EXPECT_EQ(run.recordsOf('r').empty(), !row.isRuled);
  for (const std::string& record : run.recordsOf('r')) {
    const std::vector<double> n = numbersOf(record);  // eight corners
    ASSERT_EQ(n.size() % 3, 0U) << record;
    for (std::size_t i = 0; i < n.size(); i += 3)
      EXPECT_TRUE(std::abs(n[i]) < 0.001 || std::abs(n[i] - 140) < 0.001) << record;
  }
  if (row.said == nullptr) {
    EXPECT_EQ(run.messageText(), "");
  } else {
    EXPECT_NE(run.messageText().find(row.said), std::string::npos) << run.messageText();
  }
}

INSTANTIATE_TEST_SUITE_P(Pcf, ReducersAlone, testing::ValuesIn(kAlone),
                         [](const auto& row) { return std::string(row.param.name); });

// Bores 150 and 100 are 168.3 and 114.3 wide: flat at one side, their centre lines lie 27 apart.
// The disc is 0.4 of 76 mm thick, as of every reducing flange; the hub begins at 576 - 30.4.
TEST(Flanges, ThatReduceEccentricallyAreSquareToTheirPipes) {
  const std::string flange =
      "FLANGE-REDUCING-ECCENTRIC\n END-POINT 500 0 0 100\n END-POINT 576 0 27 150 FL\n";
  const char* const pipe = "PIPE\n END-POINT 0 0 0 100\n END-POINT 500 0 0 100\n";
  for (const std::string& file : {flange + pipe, flange}) {
    const PcfRun run = runPcf(file);
    EXPECT_EQ(run.messageText(), "");
    const std::vector<double> disc = numbersOf(run.recordsOf('c').at(0));
    EXPECT_NEAR(disc[0], 576, 1e-4);
    EXPECT_NEAR(disc[2], 27, 1e-4);
    EXPECT_NEAR(disc[3], -30.4, 1e-4);
    EXPECT_NEAR(disc[5], 0, 1e-4);
    EXPECT_TRUE(run.recordsOf('n').empty());
    ASSERT_FALSE(run.recordsOf('r').empty());
    for (const std::string& record : run.recordsOf('r')) {
      const std::vector<double> n = numbersOf(record);  // a corner, and seven from there
      for (std::size_t i = 0; i < n.size(); i += 3) {
        const double x = i == 0 ? n[0] : n[0] + n[i];
        EXPECT_LT(std::min(std::abs(x - 500), std::abs(x - 545.6)), 0.001) << record;
      }
    }
  }
}

TEST(Flanges, WithoutALengthNeedNoFace) {
  const PcfRun run = runPcf("FLANGE\n END-POINT 5 0 0 100\n END-POINT 5 0 0 100\n");
  EXPECT_EQ(run.messageText(), "in.pcf:1: error: FLANGE not drawn: has no length\n");
}

TEST(Repeats, AreDrawnOnce) {
  const PcfRun run = runPcf(
      "PIPE\n END-POINT 0 0 0 100\n END-POINT 9 0 0 100\n"
      "PIPE\n END-POINT 9 0 0 100\n END-POINT 0 0 0 100\n"
      "PIPE\n END-POINT 9 0 0 50\n END-POINT 0 0 0 50\n"
      "SUPPORT\n CO-ORDS 5 0 0 100\n SKEY GUID\n"
      "SUPPORT\n CO-ORDS 5 0 0\n SKEY GUID\n"
      "SUPPORT\n CO-ORDS 5 0 0\n SKEY ANCH\n");
  EXPECT_EQ(run.recordsOf('c').size() - 2, 2U);  // two pipes, two collars of the anchor
  EXPECT_EQ(run.drawn, 4U);
  EXPECT_EQ(run.nothing, 2U);
  EXPECT_NE(
      run.messageText().find("in.pcf:4: note: PIPE: the same component is already in this file"),
      std::string::npos)
      << run.messageText();
  EXPECT_EQ(run.warnings + run.errors, 0U);
}

// Each file's own are drawn once, those of two files for both.
TEST(Repeats, OfTwoFilesAreDrawnForBothAndTold) {
  const std::string pipe = "PIPE\n END-POINT 0 0 0 100\n END-POINT 9 0 0 100\n";
  const std::string other = "PIPE\n END-POINT 9 0 0 100\n END-POINT 20 0 0 100\n";
  const PcfRun run = runPcf({{"a.pcf", pipe}, {"b.pcf", other + pipe}, {"c.pcf", pipe + pipe}});
  EXPECT_EQ(run.drawn, 4U);
  EXPECT_EQ(run.nothing, 1U);
  EXPECT_EQ(run.messageText(),
            "b.pcf:4: note: PIPE: the same component is in an earlier file; drawn for both (2 "
            "times, also "
            "c.pcf:1)\n"
            "c.pcf:4: note: PIPE: the same component is already in this file; drawn once\n");
}

TEST(Repeats, AreNotTheWeldsBetweenTwoFiles) {
  const std::string weld = "WELD\n CO-ORDS 0 0 0\n";
  EXPECT_EQ(runPcf({{"a.pcf", weld}, {"b.pcf", weld}}).messageText(), "");
}

}  // namespace
