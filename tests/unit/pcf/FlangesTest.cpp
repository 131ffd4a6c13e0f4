// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

#include "pcf/PcfRun.h"

// Which end of a flange is its face: the disc is there, the other end is as wide as the
// pipe.
namespace {

struct FaceCase {
  const char* name;
  const char* codes;  // of the ends at 0 and at 100: "FL BW", "-" for none
  const char* rest;   // of the file; P(x, y): a pipe from x to y, and so on
  int face;           // 0 or 100
  bool isGuess = false;
  const char* skey = "";
};

void PrintTo(const FaceCase& row, std::ostream* out) { *out << row.name; }

#define TWO(word, x, y) word "\n END-POINT " #x " 0 0 100\n END-POINT " #y " 0 0 100\n"
#define P(x, y) TWO("PIPE", x, y)
#define G(x, y) TWO("GASKET", x, y)
#define V(x, y) TWO("VALVE", x, y)
#define V_BW(x, y) TWO("VALVE", x, y) " SKEY VVBW\n"
#define V_FL(x, y) TWO("VALVE", x, y) " SKEY VVFL\n"
#define AT(word, x) word "\n CO-ORDS " #x " 0 0\n"

// clang-format off
const FaceCase kFaces[] = {
    // ---- 1. the kinds of the ends
    {"FlangedEnd",           "BW FL", "", 100},
    {"FlangedEndFirst",      "FL BW", "", 0},
    {"FlangedEndAlone",      "- FL",  "", 100},
    {"WeldedEndAlone",       "BW -",  "", 100},
    {"SocketEnd",            "- SW",  "", 0},
    {"ScrewedEnd",           "SC -",  "", 100},
    {"PlainEnd",             "- PL",  "", 0},
    {"CodesComeFirst",       "FL BW", P(-50, 0) G(100, 103), 0},
    {"LowerCaseCodes",       "bw fl", "", 100},
    // ---- 2. what meets a face
    {"Gasket",               "- -", G(100, 103), 100},
    {"GasketAtTheFirst",     "- -", G(0, -3), 0},
    {"GasketAndPipe",        "- -", G(100, 103) P(-500, 0), 100},
    {"Flange",               "- -", P(-500, 0) TWO("FLANGE", 100, 200), 100},
    {"BlindFlange",          "- -", P(-500, 0) TWO("FLANGE-BLIND", 100, 120), 100},
    {"SpectacleBlind",       "- -", P(-500, 0) TWO("SPECTACLE-BLIND", 100, 120), 100},
    {"Bolt",                 "- -", AT("BOLT", 100), 100},
    {"ArrowTellsNothing",    "- -", AT("FLOW-ARROW", 100) P(-500, 0), 100},
    {"DialTellsNothing",     "- -", AT("INSTRUMENT-DIAL", 100) P(-500, 0), 100},
    {"PipeBesideAValve",     "- -", V(0, -300) P(0, -500) V(100, 300), 100},
    {"SupportTellsNothing",  "- -", AT("SUPPORT", 100) P(-500, 0), 100},
    {"OrificePlate",         "- -", P(-500, 0) TWO("ORIFICE-PLATE", 100, 103), 100},
    {"Equipment",            "- -", P(100, 500) AT("END-CONNECTION-EQUIPMENT", 0), 0},
    {"FarAwayInTheFile",     "- -", P(9000, 9100) P(9200, 9300) P(9400, 9500) P(9600, 9700) P(9800, 9900)
                                    P(10000, 10100) P(10200, 10300) P(10400, 10500) P(10600, 10700) P(10800, 10900) G(100, 103), 100},
    {"TheSameFlangeTwice",   "- -", P(-500, 0) TWO("FLANGE", 0, 100) P(-500, 0), 100},
    {"BlindKeyBehindAGasketOfOnePlace", "- -", P(-500, 0) AT("GASKET", 100), 100, false, "FLBL"},
    {"SameCodesAtBothEnds",  "BW BW", G(100, 103) P(-500, 0), 100},
    // ---- 3. what meets the pipe's end
    {"Pipe",                 "- -", P(-500, 0), 100},
    {"PipeAtTheSecond",      "- -", P(100, 500), 0},
    {"Elbow",                "- -", "ELBOW\n END-POINT 100 0 0 100\n END-POINT 252 152 0 100\n CENTRE-POINT 252 0 0\n", 0},
    {"Tee",                  "- -", "TEE\n END-POINT 100 0 0 100\n END-POINT 300 0 0 100\n CENTRE-POINT 200 0 0\n BRANCH1-POINT 200 90 0 50\n", 0},
    {"BranchOfATee",         "- -", "TEE\n END-POINT 200 -100 0 100\n END-POINT 200 100 0 100\n CENTRE-POINT 200 0 0\n BRANCH1-POINT 100 0 0 100\n", 0},
    {"Reducer",              "- -", TWO("REDUCER-CONCENTRIC", 100, 200), 0},
    {"Olet",                 "- -", "OLET\n CENTRE-POINT 200 0 0 300\n BRANCH1-POINT 100 0 0 100\n", 0},
    {"Cap",                  "- -", TWO("CAP", 100, 150), 0},
    {"StubEnd",              "- -", TWO("LAP-JOINT-STUBEND", 100, 150), 0},
    {"Weld",                 "- -", AT("WELD", 100), 0},
    {"WeldWithEnds",         "- -", TWO("WELD", 100, 100), 0},
    {"WeldBeforeAValve",     "- -", AT("WELD", 0) V(100, 300), 100},
    // ---- 4. what may be a mate
    {"ValveSaysNothing",     "- -", P(-500, 0) V(100, 300), 100},
    {"FlangedValve",         "- -", V_FL(100, 300), 100},
    {"WeldedValveAndPipe",   "- -", P(-500, 0) V_BW(100, 300), 100},
    {"PipeAndWeldedValve",   "- -", V_BW(-300, 0) P(100, 500), 0},
    {"WeldedValveAlone",     "- -", V_BW(100, 300), 0},
    {"ValveAlone",           "- -", V(100, 300), 100},
    {"ValveBeforeGasket",    "- -", V(-300, 0) G(100, 103), 100},
    {"Instrument",           "- -", P(-500, 0) TWO("INSTRUMENT", 100, 300), 100},
    {"Filter",               "- -", P(-500, 0) TWO("FILTER", 100, 300), 100},
    {"Miscellaneous",        "- -", P(-500, 0) TWO("MISC-COMPONENT", 100, 300), 100},
    {"UnknownWord",          "- -", TWO("FOO", 100, 300), 100},
    {"CodesOfTheValve",      "- -", "VALVE\n END-POINT 100 0 0 100 BW\n END-POINT 300 0 0 100 BW\n", 0},
    // ---- 5. a little further along
    {"GasketThatIsNotListed", "- -", V(103, 300), 100},
    {"PipeAcrossAGap",       "- -", P(-500, -5), 100},
    {"AcrossTenMillimetres", "- -", V(110, 300), 100},
    {"AcrossMoreThanTen",    "- -", V(110.1, 300), 0, true},
    {"TooFar",               "- -", V(115, 300), 0, true},
    {"AlmostBesideTheAxis",  "- -", "VALVE\n END-POINT 105 0.9 0 100\n END-POINT 500 0.9 0 100\n", 100},
    {"BesideTheAxisByLittle", "- -", "VALVE\n END-POINT 105 1.1 0 100\n END-POINT 500 1.1 0 100\n", 0, true},
    {"AtTheSamePlaceAlmost", "- -", "GASKET\n END-POINT 100 0.9 0 100\n END-POINT 103 0.9 0 100\n", 100},
    {"BesideTheAxis",        "- -", "PIPE\n END-POINT 105 9 0 100\n END-POINT 500 9 0 100\n", 0, true},
    // ---- 6. an open end
    {"OpenEndIsTheFace",     "- -", P(100, 500), 0},
    {"LineGoesOnElsewhere",  "- -", P(-500, 0) AT("END-CONNECTION-PIPELINE", 100), 100},
    {"NothingAtAll",         "- -", "", 0, true},
    {"PipesAtBothEnds",      "- -", P(-500, 0) P(100, 500), 0, true},
    {"SupportsSayNothing",   "- -", P(-500, 0) AT("SUPPORT", 0), 100},
    // ---- the SKEY tells the kind, no end
    {"BlindKeyInALine",      "- -", P(-500, 0) G(100, 103) TWO("FLANGE", 103, 203), 100, false, "FLBL"},
    {"WeldNeckKey",          "- -", P(-500, 0), 100, false, "FLWN"},
    {"SlipOnKey",            "- -", P(100, 500), 0, false, "FLSO"},
    {"LapJointAtItsStubEnd", "- -", TWO("LAPJOINT-STUBEND", 0, -100) P(-500, -100), 100, false, "FLLB"},
};
// clang-format on

std::string flangeOf(const FaceCase& row) {
  const std::string codes = row.codes;
  const std::size_t blank = codes.find(' ');
  std::string text = "FLANGE\n";
  for (const auto& [x, code] :
       {std::pair{"0", codes.substr(0, blank)}, std::pair{"100", codes.substr(blank + 1)}})
    text += std::string(" END-POINT ") + x + " 0 0 100 " + (code == "-" ? "" : code) + '\n';
  return text + (*row.skey == '\0' ? "" : std::string(" SKEY ") + row.skey + '\n');
}

class Faces : public testing::TestWithParam<FaceCase> {};

// ASME B16.5, class 150, 4 inches: 230 wide. The pipe is 114.3 wide.
TEST_P(Faces, AreThere) {
  const FaceCase& row = GetParam();
  const PcfRun run = runPcf(flangeOf(row) + row.rest);
  double disc = -1;
  double pipe = -1;
  for (std::size_t i = 0; i < run.records.size(); ++i) {
    if (run.headers[i].substr(10, 3) != "001" || run.records[i][0] == 'l') continue;
    const std::vector<double> n = numbersOf(run.records[i]);
    const double x[2] = {n[0], n[0] + n[3]};
    const double d[2] = {n[6], n.size() > 7 ? n[7] : n[6]};
    for (int end = 0; end < 2; ++end) {
      const bool isAnEnd = std::abs(x[end]) < 0.01 || std::abs(x[end] - 100) < 0.01;
      if (isAnEnd && std::abs(d[end] - 230) < 0.01) disc = x[end];
      if (isAnEnd && d[end] < 150) pipe = x[end];
    }
  }
  EXPECT_NEAR(disc, row.face, 0.01) << run.messageText();
  EXPECT_NEAR(pipe, 100 - row.face, 0.01);
  const bool isSaid = run.messageText().find("warning: FLANGE: nothing shows") != std::string::npos;
  EXPECT_EQ(isSaid, row.isGuess) << run.messageText();
}

INSTANTIATE_TEST_SUITE_P(Pcf, Faces, testing::ValuesIn(kFaces),
                         [](const auto& row) { return std::string(row.param.name); });

// What closes a line lies away from what it meets.
struct ClosingCase {
  const char* name;
  const char* file;
  double from;  // of its centre line, along x
  double to;
};

void PrintTo(const ClosingCase& row, std::ostream* out) { *out << row.name; }

// clang-format off
const ClosingCase kClosings[] = {
    {"CapWithTwoEnds",        TWO("CAP", 0, 60) P(-500, 0), 0, 60},
    {"CapTheOtherWay",        TWO("CAP", 60, 0) P(-500, 0), 0, 60},
    {"CapWithOneEnd",         "CAP\n END-POINT 0 0 0 100\n" P(-500, 0), 0, 57.15},
    {"CapToTheLeft",          "CAP\n END-POINT 0 0 0 100\n" P(500, 0), 0, -57.15},
    {"CapOnAReducer",         "CAP\n END-POINT 0 0 0 100\nREDUCER-CONCENTRIC\n END-POINT -100 0 0 150\n END-POINT 0 0 0 100\n", 0, 57.15},
    {"BlindWithOneEnd",       "FLANGE-BLIND\n END-POINT 0 0 0 100\n" G(-3, 0), 0, 22.86},
    {"BlindWithTwoEnds",      TWO("FLANGE-BLIND", 24, 0) G(-3, 0), 0, 24},
    {"PlugBehindABend",       "PLUG\n END-POINT 0 0 0 100\nELBOW\n END-POINT 0 0 0 100\n END-POINT -152 152 0 100\n CENTRE-POINT -152 0 0\n", 0, 45.72},
};
// clang-format on

class Closings : public testing::TestWithParam<ClosingCase> {};

TEST_P(Closings, LieAwayFromTheLine) {
  const PcfRun run = runPcf(GetParam().file);
  for (std::size_t i = 0; i < run.records.size(); ++i) {
    if (run.headers[i].substr(10, 3) != "001" || run.records[i][0] != 'l') continue;
    const std::vector<double> n = numbersOf(run.records[i]);
    EXPECT_NEAR(n[0], GetParam().from, 0.01);
    EXPECT_NEAR(n[0] + n[3], GetParam().to, 0.01);
  }
  EXPECT_EQ(run.warnings + run.errors, 0U) << run.messageText();
}

INSTANTIATE_TEST_SUITE_P(Pcf, Closings, testing::ValuesIn(kClosings),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
