// SPDX-License-Identifier: MIT
#include "pcf/shapes/Shapes.h"

#include <gtest/gtest.h>

#include <string>

#include "Bodies.h"
#include "PartText.h"

namespace Vesk::Pcf {
namespace {

struct ShapeRow {
  const char* name;
  Family family;
  const char* part;
  const char* bodies;  // a line each, in this order; a row may show the first only, then "..."
};

std::string linesOf(const Drawn& drawn) {
  std::string result;
  for (const auto& body : drawn.bodies) result += textOf(*body) + "\n";
  for (const std::string_view why : drawn.missing) result += "missing: " + std::string(why) + "\n";
  for (const std::string_view what : drawn.remarks) result += "remark: " + std::string(what) + "\n";
  return result;
}

// The row's lines without the blanks before them.
std::string linesOf(const char* text) {
  std::string result;
  for (const char* c = text; *c != '\0'; ++c) {
    if (*c == ' ' && (result.empty() || result.back() == '\n')) continue;
    result += *c;
  }
  if (!result.empty() && result.front() == '\n') result.erase(0, 1);
  if (!result.empty() && result.back() != '\n') result += '\n';
  return result;
}

void cutAtDots(std::string& expected, std::string& actual) {
  const std::size_t dots = expected.find("...\n");
  if (dots == std::string::npos) return;
  expected.resize(dots);
  actual.resize(std::min(actual.size(), dots));
}

void expectRows(const ShapeRow* rows, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    const ShapeRow& row = rows[i];
    std::string expected = linesOf(row.bodies);
    std::string actual = linesOf(draw(partOf(row.family, row.part)));
    cutAtDots(expected, actual);
    EXPECT_EQ(actual, expected) << row.name;
  }
}

template <std::size_t N>
void expectRows(const ShapeRow (&rows)[N]) {
  expectRows(rows, N);
}

// A 6 inch flange of class 150: 168.3 and 280 wide, so the rim lies 111.7 beyond the
// pipe. All are 100 long.
const ShapeRow kFlangeRows[] = {
    // 40 disc, then a hub from 168.3 + 0.4 * 111.7 = 212.98
    {"WeldNeck", Family::kFlangeWeldNeck, "e 0 0 0 168.3 e 100 0 0 168.3",
     R"(cylinder 0 0 0 > 40 0 0 d 280
        cone 40 0 0 > 100 0 0 d 212.98 168.3)"},
    {"WeldNeckWithItsFaceSecond", Family::kFlangeWeldNeck, "e 0 0 0 168.3 e 100 0 0 168.3 face 1",
     R"(cylinder 100 0 0 > 60 0 0 d 280
        cone 60 0 0 > 0 0 0 d 212.98 168.3)"},
    // 168.3 + 0.25 * 111.7 = 196.225, + 0.2 * 111.7 = 190.64
    {"SlipOn", Family::kFlangeSlipOn, "e 0 0 0 168.3 e 100 0 0 168.3",
     R"(cylinder 0 0 0 > 60 0 0 d 280
        cone 60 0 0 > 100 0 0 d 196.225 190.64)"},
    {"Socket", Family::kFlangeSocket, "e 0 0 0 168.3 e 100 0 0 168.3",
     R"(cylinder 0 0 0 > 50 0 0 d 280
        cylinder 50 0 0 > 100 0 0 d 212.98)"},
    // + 0.45 * 111.7 = 218.565, + 0.3 * 111.7 = 201.81
    {"Screwed", Family::kFlangeScrewed, "e 0 0 0 168.3 e 100 0 0 168.3",
     R"(cylinder 0 0 0 > 50 0 0 d 280
        cone 50 0 0 > 100 0 0 d 218.565 201.81)"},
    {"LapJoint", Family::kFlangeLapJoint, "e 0 0 0 168.3 e 100 0 0 168.3",
     R"(cylinder 0 0 0 > 50 0 0 d 280
        cylinder 50 0 0 > 100 0 0 d 196.225)"},
    // the hub narrows to 114.3: 114.3 + 0.4 * (280 - 114.3) = 180.58
    {"Reducing", Family::kFlangeReducing, "e 0 0 0 168.3 e 100 0 0 114.3",
     R"(cylinder 0 0 0 > 40 0 0 d 280
        cone 40 0 0 > 100 0 0 d 180.58 114.3)"},
    // taps from 0.4 to 0.62 of 280 about the middle of the disc, 28 = 0.1 * 280 wide
    {"Orifice", Family::kFlangeOrifice, "e 0 0 0 168.3 e 100 0 0 168.3",
     R"(cylinder 0 0 0 > 50 0 0 d 280
        cone 50 0 0 > 100 0 0 d 212.98 168.3
        cylinder 25 0 -112 > 25 0 -173.6 d 28
        cylinder 25 0 112 > 25 0 173.6 d 28)"},
    // the collar: a tenth, half of the way to the rim, 224.15
    {"StubEnd", Family::kStubEnd, "e 0 0 0 168.3 e 100 0 0 168.3",
     R"(cylinder 0 0 0 > 10 0 0 d 224.15
        cylinder 10 0 0 > 100 0 0 d 168.3)"},
    {"Blind", Family::kFlangeBlind, "e 0 0 0 168.3 e 25 0 0 168.3",
     "cylinder 0 0 0 > 25 0 0 d 280"},
    // 0.2 * 168.3 = 33.66, away from the line
    {"BlindAtOneEnd", Family::kFlangeBlind, "e 0 0 0 168.3 line -1 0 0",
     "cylinder 0 0 0 > 33.66 0 0 d 280"},
    {"BlindWithoutALine", Family::kFlangeBlind, "e 0 0 0 168.3",
     "missing: nothing shows in which direction it lies"},
    {"BlindByNameBetweenNeighbours", Family::kFlangeBlind,
     "e 0 0 0 168.3 line -1 0 0 e 100 0 0 168.3 line 1 0 0",
     R"(cylinder 0 0 0 > 40 0 0 d 280
        cone 40 0 0 > 100 0 0 d 212.98 168.3)"},
    {"Gasket", Family::kGasket, "e 0 0 0 168.3 e 3 0 0 168.3", "cylinder 0 0 0 > 3 0 0 d 224.15"},
    {"GasketAtOnePoint", Family::kGasket, "e 0 0 0 168.3 along 1 0 0",
     "cylinder -1.5 0 0 > 1.5 0 0 d 224.15"},
    {"BlindFromItsSecondEnd", Family::kFlangeBlind, "e 0 0 0 168.3 e 25 0 0 114.3 face 1",
     "cylinder 25 0 0 > 0 0 0 d 230"},
    {"LapRing", Family::kLapRing, "e 0 0 0 168.3 e 20 0 0 168.3", "cylinder 0 0 0 > 20 0 0 d 280"},
    // a fifth of 10 is thinner than 3; 10 * 90 / 21.3 = 42.254, half of the way to it 26.127
    {"GasketOfATinyPipe", Family::kGasket, "e 0 0 0 10 along 0 0 1",
     "cylinder 0 0 -1 > 0 0 1 d 26.127"},
    {"GasketByTheLineOfItsEnd", Family::kGasket, "e 0 0 0 168.3 line 0 -2 0",
     "cylinder 0 1.5 0 > 0 -1.5 0 d 224.15"},
    {"GasketWithoutALine", Family::kGasket, "e 0 0 0 168.3",
     "missing: nothing shows in which direction it lies"},
    // a disc of 10, so taps of 6 = 0.6 * 10
    {"OrificeOfAThinFlange", Family::kFlangeOrifice, "e 0 0 0 168.3 e 20 0 0 168.3",
     R"(cylinder 0 0 0 > 10 0 0 d 280
        cone 10 0 0 > 20 0 0 d 212.98 168.3
        cylinder 5 0 -112 > 5 0 -173.6 d 6
        cylinder 5 0 112 > 5 0 173.6 d 6)"},
    // the collar: 0.15 * 168.3 = 25.245 at the most
    {"LongStubEnd", Family::kStubEnd, "e 0 0 0 168.3 e 1000 0 0 168.3",
     R"(cylinder 0 0 0 > 25.245 0 0 d 224.15
        cylinder 25.245 0 0 > 1000 0 0 d 168.3)"},
    {"StubEndFromItsSecondEnd", Family::kStubEnd, "e 0 0 0 168.3 e 100 0 0 168.3 face 1",
     R"(cylinder 100 0 0 > 90 0 0 d 224.15
        cylinder 90 0 0 > 0 0 0 d 168.3)"},
    // square to pipes that lie 20 apart: a disc of 40, then wedges to the other pipe
    {"ReducingEccentrically", Family::kFlangeReducing,
     "e 0 0 0 168.3 line -1 0 0 e 100 0 20 114.3 line 1 0 0 tol 100",
     R"(cylinder 0 0 0 > 40 0 0 d 280
        reducer 40 0 0 > 100 0 20
        reducer 40 0 0 > 100 0 20
        reducer 40 0 0 > 100 0 20
        reducer 40 0 0 > 100 0 20)"},
    // the wider of both pipes tells the disc, the one at the neck the hub:
    // 168.3 + 0.4 * 111.7 = 212.98
    {"ReducingAtItsFace", Family::kFlangeReducing, "e 0 0 0 114.3 e 100 0 0 168.3",
     R"(cylinder 0 0 0 > 40 0 0 d 280
        cone 40 0 0 > 100 0 0 d 212.98 168.3)"},
    // disc at most 0.3 * 280 = 84, hub at most 0.45 * 280 = 126; then pipe
    {"ALongOneEndsInPipe", Family::kFlangeWeldNeck, "e 0 0 0 168.3 e 1000 0 0 168.3",
     R"(cylinder 0 0 0 > 84 0 0 d 280
        cone 84 0 0 > 210 0 0 d 212.98 168.3
        cylinder 210 0 0 > 1000 0 0 d 168.3)"},
    {"WithoutLength", Family::kFlangeWeldNeck, "e 5 5 5 168.3 e 5 5 5 168.3",
     "missing: has no length"},
    {"WithOneEnd", Family::kFlangeWeldNeck, "e 5 5 5 168.3", "missing: expected two ends"},
};

TEST(Shapes, DrawFlangesWithTheirDiscAtTheFace) { expectRows(kFlangeRows); }

struct SizeRow {
  double outside;
  double flange;
};

TEST(Shapes, TakeFlangesFromTheTable) {
  static constexpr SizeRow kRows[] = {
      // 1/2 to 24 inches
      {21.3, 90},
      {26.7, 100},
      {33.4, 110},
      {42.2, 115},
      {48.3, 125},
      {60.3, 150},
      {73.0, 180},
      {88.9, 190},
      {101.6, 215},
      {114.3, 230},
      {141.3, 255},
      {168.3, 280},
      {219.1, 345},
      {273, 405},
      {323.8, 485},
      {355.6, 535},
      {406.4, 595},
      {457, 635},
      {508, 700},
      {610, 815},
      {76.1, 181.95},  // 180 + 10 * 3.1 / 15.9 = 181.950 between 2 1/2
                       // and 3 inches
      {10.65, 45},     // half of the smallest
      {710, 945},      // 815 + 1.3 * 100
  };
  for (const SizeRow& row : kRows)
    EXPECT_NEAR(flangeDiameter(row.outside), row.flange, 1e-3) << row.outside;
}

// Between 0 and 200 on pipe 100 wide: centre at 100, legs of 100, within 1.5 * 100.
const ShapeRow kValveRows[] = {
    {"NotTold", Family::kValve, "e 0 0 0 100 e 200 0 0 100",
     R"(cone 0 0 0 > 100 0 0 d 100 0
        cone 200 0 0 > 100 0 0 d 100 0)"},
    {"Gate", Family::kValveGate, "e 0 0 0 100 e 200 0 0 100",
     R"(cone 0 0 0 > 100 0 0 d 100 30
        cone 200 0 0 > 100 0 0 d 100 30)"},
    // discs of 0.15 * 100, F(114.3) = 230: pipe 114.3 wide, 17.145 = 0.15 * 114.3
    {"GateWithFlanges", Family::kValveGate, "e 0 0 0 114.3 kind FL e 200 0 0 114.3 kind FL",
     R"(cylinder 0 0 0 > 17.145 0 0 d 230
        cone 17.145 0 0 > 100 0 0 d 114.3 34.29
        cylinder 200 0 0 > 182.855 0 0 d 230
        cone 182.855 0 0 > 100 0 0 d 114.3 34.29)"},
    // 0.3 of the length of the core each
    {"LongGateEndsInPipe", Family::kValveGate, "e 0 0 0 100 e 1000 0 0 100",
     R"(cylinder 0 0 0 > 350 0 0 d 100
        cone 350 0 0 > 500 0 0 d 100 30
        cylinder 1000 0 0 > 650 0 0 d 100
        cone 650 0 0 > 500 0 0 d 100 30)"},
    // a ball of 0.9 * 100, one cone to each side at this tolerance
    {"Globe", Family::kValveGlobe, "e 0 0 0 100 e 200 0 0 100 tol 100",
     R"(cone 0 0 0 > 100 0 0 d 100 30
        cone 200 0 0 > 100 0 0 d 100 30
        cone 100 0 0 > 145 0 0 d 90 0
        cone 100 0 0 > 55 0 0 d 90 0)"},
    // 1.9 * 20 and not 140
    {"BallStaysWithinShortLegs", Family::kValveBall, "e 0 0 0 100 e 40 0 0 100 tol 100",
     R"(cylinder 0 0 0 > 20 0 0 d 100
        cylinder 40 0 0 > 20 0 0 d 100
        cone 20 0 0 > 39 0 0 d 38 0
        cone 20 0 0 > 1 0 0 d 38 0)"},
    // a quarter of the leg and not 0.15 * 114.3
    {"ThinFlangesOfAShortValve", Family::kValveGate, "e 0 0 0 114.3 kind FL e 40 0 0 114.3 kind FL",
     R"(cylinder 0 0 0 > 5 0 0 d 230
        cone 5 0 0 > 20 0 0 d 114.3 34.29
        cylinder 40 0 0 > 35 0 0 d 230
        cone 35 0 0 > 20 0 0 d 114.3 34.29)"},
    {"OneFlangedEnd", Family::kValveGate, "e 0 0 0 100 kind BW e 200 0 0 114.3 kind FL",
     R"(cone 0 0 0 > 100 0 0 d 100 30
        cylinder 200 0 0 > 182.855 0 0 d 230
        cone 182.855 0 0 > 100 0 0 d 114.3 34.29)"},
    // the plate takes what there is: 10 and not 25
    {"ShortControl", Family::kValveControl, "e 0 0 0 100 e 20 0 0 100",
     R"(cone 0 0 0 > 10 0 0 d 100 30
        cylinder 0 0 0 > 10 0 0 d 130
        cone 20 0 0 > 10 0 0 d 100 30
        cylinder 20 0 0 > 10 0 0 d 130)"},
    // a ball of 140 begins about its centre, on its largest circle
    {"Ball", Family::kValveBall, "e 0 0 0 100 e 200 0 0 100 tol 100",
     R"(cylinder 0 0 0 > 100 0 0 d 100
        cylinder 200 0 0 > 100 0 0 d 100
        cone 100 0 0 > 170 0 0 d 140 0
        cone 100 0 0 > 30 0 0 d 140 0)"},
    // (114.3 + 230) / 2 = 172.15 wide, a quarter of 114.3 to each side
    {"Butterfly", Family::kValveButterfly, "e 0 0 0 114.3 e 200 0 0 114.3",
     R"(cylinder 0 0 0 > 71.425 0 0 d 114.3
        cylinder 71.425 0 0 > 100 0 0 d 172.15
        cylinder 200 0 0 > 128.575 0 0 d 114.3
        cylinder 128.575 0 0 > 100 0 0 d 172.15)"},
    {"WaferButterfly", Family::kValveButterfly, "e 0 0 0 114.3 e 40 0 0 114.3",
     R"(cylinder 0 0 0 > 20 0 0 d 172.15
        cylinder 40 0 0 > 20 0 0 d 172.15)"},
    {"CheckPointsWithTheFlow", Family::kValveCheck, "e 0 0 0 100 e 200 0 0 100",
     R"(cone 0 0 0 > 100 0 0 d 100 30
        cylinder 200 0 0 > 100 0 0 d 100
        cylinder 120 0 0 > 100 0 0 d 125)"},
    {"Control", Family::kValveControl, "e 0 0 0 100 e 200 0 0 100",
     R"(cone 0 0 0 > 100 0 0 d 100 30
        cylinder 75 0 0 > 100 0 0 d 130
        cone 200 0 0 > 100 0 0 d 100 30
        cylinder 125 0 0 > 100 0 0 d 130)"},
    {"Plug", Family::kValvePlug, "e 0 0 0 100 e 200 0 0 100",
     R"(cone 0 0 0 > 100 0 0 d 100 150
        cone 200 0 0 > 100 0 0 d 100 150)"},
    {"Needle", Family::kValveNeedle, "e 0 0 0 100 e 200 0 0 100",
     R"(cone 0 0 0 > 40 0 0 d 100 25
        cylinder 40 0 0 > 100 0 0 d 25
        cone 200 0 0 > 160 0 0 d 100 25
        cylinder 160 0 0 > 100 0 0 d 25)"},
    {"Diaphragm", Family::kValveDiaphragm, "e 0 0 0 100 e 200 0 0 100",
     R"(cone 0 0 0 > 100 0 0 d 100 40
        cylinder 94 0 0 > 100 0 0 d 140
        cone 200 0 0 > 100 0 0 d 100 40
        cylinder 106 0 0 > 100 0 0 d 140)"},
    // up the inlet goes on as a spring: 1.4 and 1.7 diameters from the centre
    {"ReliefAtAnAngle", Family::kValveRelief, "e 0 0 0 100 e 100 0 100 150 c 0 0 100 tol 100",
     R"(cone 0 0 0 > 0 0 100 d 100 30
        cone 100 0 100 > 0 0 100 d 150 45
        cone 0 0 100 > 0 0 145 d 90 0
        cone 0 0 100 > 0 0 55 d 90 0
        cylinder 0 0 100 > 0 0 310 d 90
        cone 0 0 310 > 0 0 355 d 90 45)"},
    // An outlet is across where the cosine is below 0.9: sqrt(1 - 0.89^2) = 0.45596, and
    // sqrt(1 - 0.91^2) = 0.41461; else it begins in the middle, 50 from its end.
    {"ReliefAcrossBackwards", Family::kValveRelief, "e 0 0 0 100 e 45.596 0 11 100 c 0 0 100",
     R"(cone 0 0 0 > 0 0 100 d 100 30
        cone 45.596 0 11 > 0 0 100 d 100 30
        ...)"},
    {"ReliefAcrossForwards", Family::kValveRelief, "e 0 0 0 100 e 45.596 0 189 100 c 0 0 100",
     R"(cone 0 0 0 > 0 0 100 d 100 30
        cone 45.596 0 189 > 0 0 100 d 100 30
        ...)"},
    {"ReliefAlongBackwards", Family::kValveRelief, "e 0 0 0 100 e 41.461 0 9 100 c 0 0 100",
     R"(cone 0 0 0 > 0 0 100 d 100 30
        cylinder 20.73 0 54.5 > 0 0 100 d 60
        cone 41.461 0 9 > 20.73 0 54.5 d 100 60)"},
    {"ReliefAlongForwards", Family::kValveRelief, "e 0 0 0 100 e 41.461 0 191 100 c 0 0 100",
     R"(cone 0 0 0 > 0 0 100 d 100 30
        cylinder 20.73 0 145.5 > 0 0 100 d 60
        cone 41.461 0 191 > 20.73 0 145.5 d 100 60)"},
    {"ReliefInTheLine", Family::kValveRelief, "e 0 0 0 100 e 200 0 0 100",
     R"(cone 0 0 0 > 100 0 0 d 100 30
        cylinder 150 0 0 > 100 0 0 d 60
        cone 200 0 0 > 150 0 0 d 100 60)"},
    {"Angle", Family::kValveAngle, "e 0 0 0 100 e 100 0 100 100 c 0 0 100 tol 100",
     R"(cone 0 0 0 > 0 0 100 d 100 30
        cone 100 0 100 > 0 0 100 d 100 30
        cone 0 0 100 > 0 0 137.5 d 75 0
        cone 0 0 100 > 0 0 62.5 d 75 0)"},
    {"ThreeWay", Family::kValve3Way, "e 0 0 0 100 e 200 0 0 100 b 100 100 0 50 c 100 0 0 tol 100",
     R"(cone 0 0 0 > 100 0 0 d 100 30
        cone 200 0 0 > 100 0 0 d 100 30
        cylinder 100 100 0 > 100 75 0 d 50
        cone 100 75 0 > 100 0 0 d 50 15
        cone 100 0 0 > 137.5 0 0 d 75 0
        cone 100 0 0 > 62.5 0 0 d 75 0)"},
    {"FourWay", Family::kValve4Way,
     "e 0 0 0 100 e 200 0 0 100 b 100 100 0 100 b 100 -100 0 100 c 100 0 0 tol 100",
     R"(cone 0 0 0 > 100 0 0 d 100 30
        cone 200 0 0 > 100 0 0 d 100 30
        cone 100 100 0 > 100 0 0 d 100 30
        cone 100 -100 0 > 100 0 0 d 100 30
        cone 100 0 0 > 137.5 0 0 d 75 0
        cone 100 0 0 > 62.5 0 0 d 75 0)"},
    // the bar takes 0.2 * 100 of the outlet, or all of it
    {"ShortCheck", Family::kValveCheck, "e 0 0 0 100 e 20 0 0 100",
     R"(cone 0 0 0 > 10 0 0 d 100 30
        cylinder 20 0 0 > 10 0 0 d 100
        cylinder 20 0 0 > 10 0 0 d 125)"},
    {"FurtherEndsAreBranches", Family::kValve, "e 0 0 0 100 e 200 0 0 100 e 100 100 0 100",
     R"(cone 0 0 0 > 100 0 0 d 100 0
        cone 200 0 0 > 100 0 0 d 100 0
        cone 100 100 0 > 100 0 0 d 100 0)"},
    {"CentreAtAnEnd", Family::kValve, "e 0 0 0 100 e 100 0 0 100 c 0 0 0",
     R"(cone 100 0 0 > 0 0 0 d 100 0
        remark: one of its ends lies in its centre)"},
};

TEST(Shapes, DrawValvesByTheirKind) { expectRows(kValveRows); }

// Behind the two cones of a gate valve from 0 to 200: what stands on the spindle at
// 100, in diameters of 100.
const ShapeRow kActuatorRows[] = {
    {"Handwheel", Family::kValveGate, "spindle 0 0 1",
     R"(box 100 0 45 edges 90 35 70
        cylinder 100 0 70 > 100 0 160 d 14
        torus 100 0 160 from 160 0 160 to 70 51.962 160 d 10
        torus 100 0 160 from 70 51.962 160 to 70 -51.962 160 d 10
        torus 100 0 160 from 70 -51.962 160 to 160 0 160 d 10
        cylinder 40 0 160 > 160 0 160 d 6
        cylinder 100 -60 160 > 100 60 160 d 6)"},
    // a bonnet of 0.8 by 0.4
    {"HandwheelOfAnyValve", Family::kValve, "spindle 0 0 1",
     R"(cylinder 100 0 0 > 100 0 80 d 40
        cylinder 100 0 70 > 100 0 160 d 14
        ...)"},
    // the second half of its body, and a bonnet that narrows
    {"HandwheelOfADiaphragm", Family::kValveDiaphragm, "spindle 0 0 1",
     R"(cone 200 0 0 > 100 0 0 d 100 40
        cylinder 106 0 0 > 100 0 0 d 140
        cone 100 0 20 > 100 0 90 d 120 40
        cylinder 100 0 70 > 100 0 160 d 14
        ...)"},
    // a long thin spindle and a small wheel: 35 * cos 120 = -17.5, 35 * sin 120 = 30.311
    {"HandwheelOfANeedle", Family::kValveNeedle, "spindle 0 0 1",
     R"(cone 200 0 0 > 160 0 0 d 100 25
        cylinder 160 0 0 > 100 0 0 d 25
        cylinder 100 0 0 > 100 0 80 d 40
        cylinder 100 0 70 > 100 0 200 d 10
        torus 100 0 200 from 135 0 200 to 82.5 30.311 200 d 10
        ...)"},
    {"Spring", Family::kValveGate, "spindle 0 0 1 by SPRING",
     R"(cylinder 100 0 0 > 100 0 140 d 60
        cone 100 0 140 > 100 0 170 d 60 30)"},
    // 9 degrees off the line lie in it, 11 do not: tan 9 = 0.158, tan 11 = 0.194
    {"NearlyInTheLine", Family::kValveGate, "spindle 1 0 0.158 by SOLENOID",
     "remark: its spindle lies in the line; drawn without"},
    {"NearlyInTheLineTheOtherWay", Family::kValveGate, "spindle -1 0 0.158 by SOLENOID",
     "remark: its spindle lies in the line; drawn without"},
    // 80 * sin 11 = 15.265, 80 * cos 11 = 78.53
    {"BesideTheLine", Family::kValveGate, "spindle 1 0 0.19438 by SOLENOID",
     R"(cylinder 100 0 0 > 178.53 0 15.265 d 30
        ...)"},
    {"Lever", Family::kValveGate, "spindle 0 0 1 by LEVER",
     R"(cylinder 100 0 0 > 100 0 95 d 25
        box 179 0 100 edges 11 180 22)"},
    {"DiaphragmDown", Family::kValveGate, "spindle 0 0 -5 by DIAPHRAGM",
     R"(cylinder 100 0 0 > 100 0 -130 d 35
        cone 100 0 -130 > 100 0 -150 d 50 160
        cylinder 100 0 -150 > 100 0 -160 d 170
        cone 100 0 -160 > 100 0 -185 d 160 40)"},
    {"PistonAside", Family::kValveGate, "spindle 0 1 0 by PISTON",
     R"(cylinder 100 0 0 > 100 110 0 d 35
        cylinder 100 110 0 > 100 230 0 d 90)"},
    {"Motor", Family::kValveGate, "spindle 0 0 1 by MOTOR",
     R"(cylinder 100 0 0 > 100 0 110 d 35
        box 100 0 145 edges 70 80 80
        cylinder 140 0 145 > 220 0 145 d 50)"},
    {"Solenoid", Family::kValveGate, "spindle 0 0 1 by SOLENOID",
     R"(cylinder 100 0 0 > 100 0 80 d 30
        box 100 0 110 edges 60 50 50)"},
    {"None", Family::kValveGate, "spindle 0 0 1 by NONE", ""},
    {"CheckHasNone", Family::kValveCheck, "spindle 0 0 1", "cylinder 120 0 0 > 100 0 0 d 125"},
    {"ReliefHasASpring", Family::kValveRelief, "spindle 0 0 1",
     R"(cone 200 0 0 > 150 0 0 d 100 60
        cylinder 100 0 0 > 100 0 140 d 60
        cone 100 0 140 > 100 0 170 d 60 30)"},
    {"InTheLine", Family::kValveGate, "spindle 1 0 0",
     "remark: its spindle lies in the line; drawn without"},
};

TEST(Shapes, DrawActuatorsOnTheSpindle) {
  for (const ShapeRow& row : kActuatorRows) {
    const std::string part = std::string("e 0 0 0 100 e 200 0 0 100 ") + row.part;
    std::string actual = linesOf(draw(partOf(row.family, part)));
    for (int i = 0; i < 2; ++i) actual.erase(0, actual.find('\n') + 1);
    std::string expected = linesOf(row.bodies);
    cutAtDots(expected, actual);
    EXPECT_EQ(actual, expected) << row.name;
  }
}

struct UsualRow {
  Family family;
  const char* actuator;
};

// Turned by a quarter it is a lever, by a motor of air a diaphragm.
TEST(Shapes, GiveEachValveItsUsualActuator) {
  static constexpr UsualRow kRows[] = {
      {Family::kValve, "HANDWHEEL"},          {Family::kValveGate, "HANDWHEEL"},
      {Family::kValveGlobe, "HANDWHEEL"},     {Family::kValveBall, "LEVER"},
      {Family::kValveButterfly, "LEVER"},     {Family::kValveCheck, "NONE"},
      {Family::kValveControl, "DIAPHRAGM"},   {Family::kValveRelief, "SPRING"},
      {Family::kValvePlug, "LEVER"},          {Family::kValveNeedle, "HANDWHEEL"},
      {Family::kValveDiaphragm, "HANDWHEEL"}, {Family::kValveAngle, "HANDWHEEL"},
      {Family::kValve3Way, "HANDWHEEL"},      {Family::kValve4Way, "HANDWHEEL"},
  };
  for (const UsualRow& row : kRows) {
    const std::string part = "e 0 0 0 100 e 200 0 0 100 tol 100 spindle 0 0 1";
    EXPECT_EQ(linesOf(draw(partOf(row.family, part))),
              linesOf(draw(partOf(row.family, part + " by " + row.actuator))))
        << nameOf(row.family);
  }
}

const ShapeRow kFittingRows[] = {
    {"Pipe", Family::kPipe, "e 0 0 0 60.3 e 1000 0 0 60.3", "cylinder 0 0 0 > 1000 0 0 d 60.3"},
    {"TwoDiameters", Family::kPipe, "e 0 0 0 60.3 e 1000 0 0 48.3",
     "cone 0 0 0 > 1000 0 0 d 60.3 48.3"},
    {"ByWayOfItsCentre", Family::kMisc, "e 0 0 0 60 e 100 100 0 60 c 100 0 0",
     R"(cylinder 0 0 0 > 100 0 0 d 60
        cylinder 100 0 0 > 100 100 0 d 60)"},
    {"Tee", Family::kTee, "e 0 0 0 60 e 200 0 0 60 c 100 0 0 b 100 0 80 40",
     R"(cylinder 0 0 0 > 200 0 0 d 60
        cylinder 100 0 0 > 100 0 80 d 40)"},
    {"Cross", Family::kTee, "e 0 0 0 60 e 200 0 0 60 c 100 0 0 b 100 0 80 40 b 100 0 -80 40",
     R"(cylinder 0 0 0 > 200 0 0 d 60
        cylinder 100 0 0 > 100 0 80 d 40
        cylinder 100 0 0 > 100 0 -80 d 40)"},
    {"StubWithoutARun", Family::kTee, "c 100 0 0 b 100 0 80 40",
     "cylinder 100 0 0 > 100 0 80 d 40"},
    {"BranchAtTheCentre", Family::kTee, "e 0 0 0 60 e 200 0 0 60 c 100 0 0 b 100 0 0 40",
     R"(cylinder 0 0 0 > 200 0 0 d 60
        remark: a branch has no length)"},
    {"YPieceOfThreeLegs", Family::kYPiece, "e 0 0 0 60 c 100 0 0 b 200 100 0 60 b 200 -100 0 40",
     R"(cylinder 100 0 0 > 0 0 0 d 60
        cylinder 100 0 0 > 200 100 0 d 60
        cylinder 100 0 0 > 200 -100 0 d 40)"},
    {"Olet", Family::kOlet, "c 0 0 0 b 0 0 120 33.4", "cylinder 0 0 0 > 0 0 120 d 33.4"},
    {"OletWithARun", Family::kOlet, "e -50 0 0 60 e 50 0 0 60 c 0 0 0 b 0 0 120 33.4",
     R"(cylinder -50 0 0 > 50 0 0 d 60
        cylinder 0 0 0 > 0 0 120 d 33.4)"},
    {"OletFromItsEnd", Family::kOlet, "e 0 0 0 60 b 0 0 120 33.4",
     "cylinder 0 0 0 > 0 0 120 d 33.4"},
    {"OletWhoseEndLiesOnTheWay", Family::kOlet, "e 0 0 30 60 c 0 0 0 b 0 0 120 33.4",
     "cylinder 0 0 0 > 0 0 120 d 33.4"},
    {"OletWhoseEndIsItsCentre", Family::kOlet, "e 0 0 0 60 c 0 0 0 b 0 0 120 33.4",
     "cylinder 0 0 0 > 0 0 120 d 33.4"},
    {"OletWhoseEndLiesAside", Family::kOlet, "e 50 0 60 60 c 0 0 0 b 0 0 120 33.4",
     R"(cylinder 0 0 0 > 0 0 120 d 33.4
        cylinder 0 0 0 > 50 0 60 d 60)"},
    {"OletWhoseEndLiesBehind", Family::kOlet, "e 0 0 -30 60 c 0 0 0 b 0 0 120 33.4",
     R"(cylinder 0 0 0 > 0 0 120 d 33.4
        cylinder 0 0 0 > 0 0 -30 d 60)"},
    {"OletWhoseEndLiesBeyond", Family::kOlet, "e 0 0 150 60 c 0 0 0 b 0 0 120 33.4",
     R"(cylinder 0 0 0 > 0 0 120 d 33.4
        cylinder 0 0 0 > 0 0 150 d 60)"},
    {"OletOfAnEndAlone", Family::kOlet, "e 0 0 120 33.4 c 0 0 0",
     "cylinder 0 0 0 > 0 0 120 d 33.4"},
    {"YPieceOfOneLeg", Family::kYPiece, "e 100 0 0 60 c 0 0 0",
     R"(cylinder 0 0 0 > 100 0 0 d 60
        remark: has no branch)"},
    {"YPieceOfTwoLegs", Family::kYPiece, "e 100 0 0 60 e 0 100 0 60 c 0 0 0",
     R"(cylinder 0 0 0 > 100 0 0 d 60
        cylinder 0 0 0 > 0 100 0 d 60)"},
    // 1.2 times as wide, without its nut
    {"UnionThatTurns", Family::kUnion, "e 0 0 0 60 e 100 100 0 60 c 100 0 0",
     R"(cylinder 0 0 0 > 100 0 0 d 72
        cylinder 100 0 0 > 100 100 0 d 72)"},
    {"BellowsThatTurn", Family::kBellows, "e 0 0 0 60 e 100 100 0 60 c 100 0 0",
     R"(cylinder 0 0 0 > 100 0 0 d 60
        cylinder 100 0 0 > 100 100 0 d 60)"},
    {"CapWithoutADirection", Family::kCap, "e 0 0 0 60",
     "missing: nothing shows in which direction it lies"},
    {"PlugWithoutADirection", Family::kPlug, "e 0 0 0 60",
     "missing: nothing shows in which direction it lies"},
    {"OletWithNothing", Family::kOlet, "b 0 0 120 33.4",
     "missing: expected two ends, or a centre and a branch"},
    {"Concentric", Family::kReducer, "e 0 0 0 168.3 line -1 0 0 e 140 0 0 114.3 line 1 0 0",
     "cone 0 0 0 > 140 0 0 d 168.3 114.3"},
    // 1 mm unless told: 22 facets, 11 wedges; the axis goes from centre to centre
    {"EccentricIsOfWedges", Family::kReducer,
     "e 0 0 0 168.3 line -1 0 0 e 140 0 27 114.3 line 1 0 0 tol 100",
     R"(reducer 0 0 0 > 140 0 27
        reducer 0 0 0 > 140 0 27
        reducer 0 0 0 > 140 0 27
        reducer 0 0 0 > 140 0 27)"},
    {"EccentricByOneNeighbour", Family::kReducer,
     "e 0 0 0 168.3 line -1 0 0 e 140 0 27 114.3 tol 100",
     R"(reducer 0 0 0 > 140 0 27
        reducer 0 0 0 > 140 0 27
        reducer 0 0 0 > 140 0 27
        reducer 0 0 0 > 140 0 27)"},
    {"WithoutNeighboursOnItsSlant", Family::kReducer, "e 0 0 0 168.3 e 140 0 27 114.3",
     "cone 0 0 0 > 140 0 27 d 168.3 114.3"},
    {"Coupling", Family::kCoupling, "e 0 0 0 60 e 90 0 0 60", "cylinder 0 0 0 > 90 0 0 d 75"},
    {"Union", Family::kUnion, "e 0 0 0 60 e 90 0 0 60",
     R"(cylinder 0 0 0 > 90 0 0 d 72
        cylinder 30 0 0 > 60 0 0 d 90)"},
    // ten cones of 14 = 0.7 * 200 / 10 from 30 on
    {"Bellows", Family::kBellows, "e 0 0 0 100 e 200 0 0 100",
     R"(cylinder 0 0 0 > 200 0 0 d 100
        cone 30 0 0 > 44 0 0 d 100 130
        cone 44 0 0 > 58 0 0 d 130 100
        cone 58 0 0 > 72 0 0 d 100 130
        cone 72 0 0 > 86 0 0 d 130 100
        cone 86 0 0 > 100 0 0 d 100 130
        cone 100 0 0 > 114 0 0 d 130 100
        cone 114 0 0 > 128 0 0 d 100 130
        cone 128 0 0 > 142 0 0 d 130 100
        cone 142 0 0 > 156 0 0 d 100 130
        cone 156 0 0 > 170 0 0 d 130 100)"},
    {"PlugFromItsSecondEnd", Family::kPlug, "e 0 0 0 100 e 50 0 0 100 face 1",
     R"(cylinder 50 0 0 > 20 0 0 d 100
        cylinder 20 0 0 > 0 0 0 d 60)"},
    {"PlugTowardsItsCentre", Family::kPlug, "e 0 0 0 100 c 0 7 0",
     R"(cylinder 0 0 0 > 0 24 0 d 100
        cylinder 0 24 0 > 0 40 0 d 60)"},
    // a centre 0.4 beside the line between both ends is on it, one 0.6 beside is not
    {"CentreAlmostOnTheLine", Family::kMisc, "e 0 0 0 60 e 200 0 0 60 c 100 0.4 0",
     "cylinder 0 0 0 > 200 0 0 d 60"},
    {"CentreBesideTheLine", Family::kMisc, "e 0 0 0 60 e 200 0 0 60 c 100 0.6 0",
     R"(cylinder 0 0 0 > 100 0.6 0 d 60
        cylinder 100 0.6 0 > 200 0 0 d 60)"},
    {"CentreBeyondAnEnd", Family::kMisc, "e 0 0 0 60 e 200 0 0 60 c 200.6 0 0",
     R"(cylinder 0 0 0 > 200.6 0 0 d 60
        cylinder 200.6 0 0 > 200 0 0 d 60)"},
    {"CentreBeforeTheOtherEnd", Family::kMisc, "e 0 0 0 60 e 200 0 0 60 c -0.6 0 0",
     R"(cylinder 0 0 0 > -0.6 0 0 d 60
        cylinder -0.6 0 0 > 200 0 0 d 60)"},
    // the end lies 0.9 beside the way of its branch, or 1.1
    {"OletWhoseEndLiesAlmostOnTheWay", Family::kOlet, "e 0.9 0 30 60 c 0 0 0 b 0 0 120 33.4",
     "cylinder 0 0 0 > 0 0 120 d 33.4"},
    {"OletWhoseEndLiesBesideTheWay", Family::kOlet, "e 1.1 0 30 60 c 0 0 0 b 0 0 120 33.4",
     R"(cylinder 0 0 0 > 0 0 120 d 33.4
        cylinder 0 0 0 > 1.1 0 30 d 60)"},
    // a quarter of the diameter is dish, one cone at this tolerance
    {"Cap", Family::kCap, "e 0 0 0 100 e 40 0 0 100 tol 100",
     R"(cylinder 0 0 0 > 15 0 0 d 100
        cone 15 0 0 > 40 0 0 d 100 0)"},
    {"FlatCapIsAllDish", Family::kCap, "e 0 0 0 100 e 20 0 0 100 tol 100",
     "cone 0 0 0 > 20 0 0 d 100 0"},
    {"CapFromItsSecondEnd", Family::kCap, "e 0 0 0 100 e 40 0 0 100 face 1 tol 100",
     R"(cylinder 40 0 0 > 25 0 0 d 100
        cone 25 0 0 > 0 0 0 d 100 0)"},
    // half a diameter, away from the line
    {"CapAtOneEnd", Family::kCap, "e 0 0 0 100 line 0 0 -3 tol 100",
     R"(cylinder 0 0 0 > 0 0 25 d 100
        cone 0 0 25 > 0 0 50 d 100 0)"},
    {"Plug", Family::kPlug, "e 0 0 0 100 line -1 0 0",
     R"(cylinder 0 0 0 > 24 0 0 d 100
        cylinder 24 0 0 > 40 0 0 d 60)"},
    {"UnknownWordLikeAPipe", Family::kUnknown, "e 0 0 0 60 e 90 0 0 60",
     "cylinder 0 0 0 > 90 0 0 d 60"},
    {"NothingAtAll", Family::kNothing, "e 0 0 0 60 e 90 0 0 60", ""},
};

TEST(Shapes, DrawFittingsFromEndToEnd) { expectRows(kFittingRows); }

// A quarter turn from -x to +z with legs of 100: radius 100 tan(45 degrees) = 100
// about (-100, 0, 100).
const ShapeRow kBendRows[] = {
    {"QuarterTurn", Family::kBend, "e -100 0 0 50 e 0 0 100 50 c 0 0 0",
     "torus -100 0 100 from -100 0 0 to 0 0 100 d 50"},
    {"TheLongerLegIsStraight", Family::kBend, "e -150 0 0 50 e 0 0 100 50 c 0 0 0",
     R"(cylinder -150 0 0 > -100 0 0 d 50
        torus -100 0 100 from -100 0 0 to 0 0 100 d 50)"},
    // 150 degrees of turn: legs 100, 30 degrees between them: radius 100 tan 15 = 26.795;
    // its middle at 75: (-100 + 26.795 sin 75, 26.795 - 26.795 cos 75)
    {"ALongTurnInOne", Family::kBend, "e -100 0 0 50 e -86.6025404 50 0 50 c 0 0 0",
     R"(torus -100 26.795 0 from -100 0 0 to -86.603 50 0 d 50)"},
    {"HalfTurnIsTwoQuarters", Family::kBend, "e 0 0 0 50 e 0 200 0 50 turn 7 0 0",
     R"(torus 0 100 0 from 0 0 0 to 100 100 0 d 50
        torus 0 100 0 from 100 100 0 to 0 200 0 d 50)"},
    {"HalfTurnTighterThanItsPipe", Family::kBend, "e 0 0 0 50 e 0 40 0 50 turn 7 0 0",
     "missing: its half turn is tighter than its pipe"},
    {"OnOneLine", Family::kBend, "e 0 0 0 50 e 200 0 0 50 c 100 0 0",
     R"(cylinder 0 0 0 > 200 0 0 d 50
        remark: has its points on one line; drawn straight)"},
    {"CentreAtAnEnd", Family::kBend, "e 0 0 0 50 e 200 0 0 50 c 0 0 0",
     R"(cylinder 0 0 0 > 200 0 0 d 50
        remark: its centre lies at an end; drawn straight)"},
    {"TighterThanItsPipe", Family::kBend, "e -20 0 0 50 e 0 0 20 50 c 0 0 0",
     R"(cylinder -20 0 0 > 0 0 0 d 50
        cylinder 0 0 0 > 0 0 20 d 50
        remark: its arc is tighter than its pipe; drawn with a corner)"},
    {"TurnsBack", Family::kBend, "e 100 0 0 50 e 60 0 0 50 c 0 0 0",
     R"(cylinder 100 0 0 > 0 0 0 d 50
        cylinder 0 0 0 > 60 0 0 d 50
        remark: turns back on its own line; drawn straight)"},
    // on from the first leg, which begins its arc at -100
    {"BranchGoesOnAlongALeg", Family::kBend, "e -100 0 0 50 e 0 0 100 50 c 0 0 0 b 80 0 0 30",
     R"(torus -100 0 100 from -100 0 0 to 0 0 100 d 50
        cylinder -100 0 0 > 80 0 0 d 30)"},
    // the middle of the arc: (-100 + 70.711, 0, 100 - 70.711)
    {"BranchFromTheMiddleOfTheArc", Family::kBend,
     "e -100 0 0 50 e 0 0 100 50 c 0 0 0 b 60 0 -60 30",
     R"(torus -100 0 100 from -100 0 0 to 0 0 100 d 50
        cylinder -29.289 0 29.289 > 60 0 -60 d 30)"},
    // aside of the bend: from the centre, which a piece joins to the middle of the arc
    {"BranchAsideFromTheCentre", Family::kBend, "e -100 0 0 50 e 0 0 100 50 c 0 0 0 b 0 90 0 30",
     R"(torus -100 0 100 from -100 0 0 to 0 0 100 d 50
        cylinder -29.289 0 29.289 > 0 0 0 d 30
        cylinder 0 0 0 > 0 90 0 d 30)"},
};

TEST(Shapes, DrawBendsAlongTheirArc) { expectRows(kBendRows); }

// Rings every 30 degrees or less; each is square to the arc.
TEST(Shapes, RuleBendsOfTwoDiameters) {
  const Drawn drawn = draw(partOf(Family::kBend, "e -100 0 0 50 e 0 0 100 40 c 0 0 0 tol 100"));
  EXPECT_EQ(drawn.bodies.size(), 3u * 4);  // three stretches of eight facets
  EXPECT_EQ(textOf(*drawn.bodies.front()), "reducer -100 0 0 > -50 0 13.397");
  EXPECT_EQ(textOf(*drawn.bodies.back()), "reducer -13.397 0 50 > 0 0 100");
}

const ShapeRow kEquipmentRows[] = {
    // half of what the drum takes: 0.7 * 100 = 70; sixty parts in a hundred are 42
    {"Filter", Family::kFilter, "e 0 0 0 100 e 200 0 0 100",
     R"(cylinder 0 0 0 > 200 0 0 d 100
        cone 30 0 0 > 58 0 0 d 100 150
        cylinder 58 0 0 > 142 0 0 d 150
        cone 142 0 0 > 170 0 0 d 150 100)"},
    // leans by 45 degrees: 160 / sqrt 2 = 113.137, 175 / sqrt 2 = 123.744
    // 1.5 of its width about the middle of its way
    {"FilterThatTurns", Family::kFilter, "e 0 0 0 100 e 200 200 0 100 c 200 0 0 tol 100",
     R"(cylinder 0 0 0 > 200 0 0 d 100
        cylinder 200 0 0 > 200 200 0 d 100
        cone 200 0 0 > 275 0 0 d 150 0
        cone 200 0 0 > 125 0 0 d 150 0)"},
    // twice 0.7 of the shorter leg
    {"FilterThatTurnsSoon", Family::kFilter, "e 0 0 0 100 e 40 200 0 100 c 40 0 0 tol 100",
     R"(cylinder 0 0 0 > 40 0 0 d 100
        cylinder 40 0 0 > 40 200 0 d 100
        cone 40 0 0 > 68 0 0 d 56 0
        cone 40 0 0 > 12 0 0 d 56 0)"},
    {"YStrainer", Family::kFilterY, "e 0 0 0 100 e 200 0 0 100",
     R"(cylinder 0 0 0 > 200 0 0 d 100
        cylinder 30 0 0 > 170 0 0 d 120
        cylinder 100 0 0 > 213.137 0 -113.137 d 80
        cylinder 213.137 0 -113.137 > 223.744 0 -123.744 d 110)"},
    {"YStrainerToWhereItsSpindlePoints", Family::kFilterY,
     "e 0 0 0 100 e 200 0 0 100 spindle 0 1 0",
     R"(cylinder 0 0 0 > 200 0 0 d 100
        cylinder 30 0 0 > 170 0 0 d 120
        cylinder 100 0 0 > 213.137 113.137 0 d 80
        cylinder 213.137 113.137 0 > 223.744 123.744 0 d 110)"},
    {"BasketToTheSide", Family::kFilterBasket, "e 0 0 0 100 e 200 0 0 100 spindle 0 1 0",
     R"(cylinder 0 0 0 > 200 0 0 d 100
        cylinder 100 -130 0 > 100 90 0 d 150
        cylinder 100 90 0 > 100 105 0 d 180)"},
    // a vertical line has its side along x
    {"BasketOnAVerticalLine", Family::kFilterBasket, "e 0 0 0 100 e 0 0 200 100",
     R"(cylinder 0 0 0 > 0 0 200 d 100
        cylinder -130 0 100 > 90 0 100 d 150
        cylinder 90 0 100 > 105 0 100 d 180)"},
    {"Basket", Family::kFilterBasket, "e 0 0 0 100 e 200 0 0 100",
     R"(cylinder 0 0 0 > 200 0 0 d 100
        cylinder 100 0 -130 > 100 0 90 d 150
        cylinder 100 0 90 > 100 0 105 d 180)"},
    {"Cone", Family::kFilterCone, "e 0 0 0 100 e 200 0 0 100",
     R"(cylinder 0 0 0 > 200 0 0 d 100
        cylinder 30 0 0 > 44 0 0 d 150
        cone 44 0 0 > 170 0 0 d 140 100)"},
    {"Trap", Family::kTrap, "e 0 0 0 100 e 200 0 0 100 tol 100",
     R"(cylinder 0 0 0 > 200 0 0 d 100
        cylinder 100 0 -90 > 100 0 60 d 130
        cone 100 0 -90 > 100 0 -130 d 130 0)"},
    {"InstrumentInTheLine", Family::kInstrument, "e 0 0 0 100 e 200 0 0 100",
     R"(cylinder 0 0 0 > 200 0 0 d 100
        cone 30 0 0 > 58 0 0 d 100 130
        cylinder 58 0 0 > 142 0 0 d 130
        cone 142 0 0 > 170 0 0 d 130 100
        cylinder 100 0 0 > 100 0 160 d 15
        cylinder 100 -10 160 > 100 10 160 d 110)"},
    {"DialOnAPipe", Family::kInstrumentDial, "e 0 0 0 100 along 1 0 0",
     R"(cylinder 0 0 0 > 0 0 160 d 15
        cylinder 0 -10 160 > 0 10 160 d 110)"},
    {"DialToTheSide", Family::kInstrumentDial, "e 0 0 0 50 along 1 0 0 spindle 0 3 0",
     R"(cylinder 0 0 0 > 0 80 0 d 7.5
        cylinder -5 80 0 > 5 80 0 d 55)"},
    {"DialAtTheEndOfALine", Family::kInstrumentDial, "e 0 0 0 100 line 0 -1 0",
     R"(cylinder 0 0 0 > 0 160 0 d 15
        cylinder -10 160 0 > 10 160 0 d 110)"},
    {"DialOfItsOwnSize", Family::kInstrumentDial, "e 0 0 0 0",
     R"(cylinder 0 0 0 > 0 0 160 d 15
        cylinder 0 -10 160 > 0 10 160 d 110)"},
    // a disc of (168.3 + 280) / 2 and a handle: 33.6 by 84 = 0.12 and 0.3 of 280
    {"OrificePlate", Family::kOrificePlate, "e 0 0 0 168.3 e 3 0 0 168.3",
     R"(cylinder 0 0 0 > 3 0 0 d 224.15
        box 1.5 0 154.075 edges 3 84 33.6)"},
    // (273 + 405) / 2 = 339, the other disc 1.1 of it up; a web of 0.3 by 0.2 of it
    {"SpectacleBlind", Family::kSpectacleBlind, "e 0 0 0 273 e 10 0 0 273",
     R"(cylinder 0 0 0 > 10 0 0 d 339
        cylinder 0 0 372.9 > 10 0 372.9 d 339
        box 5 0 186.45 edges 10 101.7 67.8)"},
};

TEST(Shapes, DrawEquipmentAboutTheMiddle) { expectRows(kEquipmentRows); }

// At the origin on a pipe along x, 100 wide.
const ShapeRow kSupportRows[] = {
    {"Shoe", Family::kSupportShoe, "e 0 0 0 100 along 1 0 0",
     R"(box 0 0 -75 edges 160 70 15
        box 0 0 -115 edges 180 10 90)"},
    {"Guide", Family::kSupportGuide, "e 0 0 0 100 along 1 0 0",
     R"(box 0 0 -57.5 edges 80 15 180
        box 0 60 -10 edges 80 80 10
        box 0 -60 -10 edges 80 80 10)"},
    {"Anchor", Family::kSupportAnchor, "e 0 0 0 100 along 1 0 0",
     R"(box 0 0 -55 edges 80 110 130
        box 0 0 -115 edges 140 10 190
        cylinder -57.5 0 0 > -42.5 0 0 d 140
        cylinder 42.5 0 0 > 57.5 0 0 d 140)"},
    {"Hanger", Family::kSupportHanger, "e 0 0 0 100 along 1 0 0",
     R"(cylinder -15 0 0 > 15 0 0 d 120
        cylinder 0 0 50 > 0 0 320 d 12
        box 0 0 325 edges 60 10 60)"},
    {"Spring", Family::kSupportSpring, "e 0 0 0 100 along 1 0 0",
     R"(cylinder -15 0 0 > 15 0 0 d 120
        cylinder 0 0 50 > 0 0 360 d 12
        cylinder 0 0 150 > 0 0 290 d 80
        box 0 0 365 edges 60 10 60)"},
    {"NotTold", Family::kSupport, "e 0 0 0 100 along 1 0 0",
     R"(cylinder 0 0 -110 > 0 0 -40 d 50
        box 0 0 -115 edges 100 10 100)"},
    {"OnAVerticalPipe", Family::kSupport, "e 0 0 0 100 along 0 0 -1",
     R"(cylinder -110 0 0 > -40 0 0 d 50
        box -115 0 0 edges 100 10 100)"},
    {"WithoutAPipe", Family::kSupport, "e 0 0 0 0",
     R"(cylinder 0 0 -110 > 0 0 -40 d 50
        box 0 0 -115 edges 100 10 100)"},
};

TEST(Shapes, DrawSupportsByTheirKind) { expectRows(kSupportRows); }

const ShapeRow kUnsoundRows[] = {
    {"NoDiameter", Family::kPipe, "e 0 0 0 0 e 9 0 0 0",
     "missing: a number is not finite, or a diameter is not above 0"},
    {"BelowZero", Family::kPipe, "e 0 0 0 -5 e 9 0 0 5",
     "missing: a number is not finite, or a diameter is not above 0"},
    {"FartherThanAnyPlant", Family::kPipe, "e 0 0 0 5 e 1e300 0 0 5",
     "missing: a number is not finite, or a diameter is not above 0"},
    {"NoTolerance", Family::kPipe, "e 0 0 0 5 e 9 0 0 5 tol 0",
     "missing: a number is not finite, or a diameter is not above 0"},
    {"NoPoints", Family::kPipe, "", "missing: expected two ends"},
    {"NoPointsOfAValve", Family::kValve, "", "missing: expected two ends"},
    {"NoPlace", Family::kSupport, "", "missing: expected a place"},
    {"NoEnd", Family::kCap, "", "missing: expected an end"},
};

TEST(Shapes, NameWhatIsMissing) { expectRows(kUnsoundRows); }

struct WordRow {
  const char* word;
  EndKind kind;
};

struct ActuatorWordRow {
  const char* word;
  Actuator actuator;
};

TEST(Shapes, KnowActuatorsByTheirWords) {
  static constexpr ActuatorWordRow kRows[] = {
      {"HANDWHEEL", Actuator::kHandwheel},  {"WHEEL", Actuator::kHandwheel},
      {"LEVER", Actuator::kLever},          {"WRENCH", Actuator::kLever},
      {"DIAPHRAGM", Actuator::kDiaphragm},  {"PNEUMATIC", Actuator::kDiaphragm},
      {"PISTON", Actuator::kPiston},        {"HYDRAULIC", Actuator::kPiston},
      {"CYLINDER", Actuator::kPiston},      {"MOTOR", Actuator::kMotor},
      {"ELECTRIC", Actuator::kMotor},       {"SOLENOID", Actuator::kSolenoid},
      {"SPRING", Actuator::kSpring},        {"NONE", Actuator::kNone},
      {"motor operated", Actuator::kMotor}, {"01LEVER", Actuator::kLever},
      {"SOMETHING", Actuator::kNotTold},    {"", Actuator::kNotTold},
  };
  for (const ActuatorWordRow& row : kRows)
    EXPECT_EQ(actuatorOf(row.word), row.actuator) << row.word;
}

// The third and fourth letter.
TEST(Shapes, KnowTheEndsOfASkey) {
  static constexpr WordRow kRows[] = {
      {"VVFL", EndKind::kFlanged}, {"VBBW", EndKind::kButt},   {"vvsw", EndKind::kSocket},
      {"VTSC", EndKind::kScrewed}, {"VVPL", EndKind::kPlain},  {"VVFLX", EndKind::kFlanged},
      {"FLVV", EndKind::kNotTold}, {"VFL", EndKind::kNotTold}, {"FL", EndKind::kNotTold},
      {"", EndKind::kNotTold},
  };
  for (const WordRow& row : kRows) EXPECT_EQ(endKindOfSkey(row.word), row.kind) << row.word;
}

TEST(Shapes, KnowTheCodesOfEnds) {
  static constexpr WordRow kRows[] = {
      {"BW", EndKind::kButt},    {"sw", EndKind::kSocket}, {"SC", EndKind::kScrewed},
      {"FL", EndKind::kFlanged}, {"PL", EndKind::kPlain},  {"CP", EndKind::kCompression},
      {"PF", EndKind::kPushFit}, {"", EndKind::kNotTold},  {"BWX", EndKind::kNotTold},
  };
  for (const WordRow& row : kRows) EXPECT_EQ(endKindOf(row.word), row.kind) << row.word;
}

}  // namespace
}  // namespace Vesk::Pcf
