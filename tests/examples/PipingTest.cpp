#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <ostream>

#include "examples/HostRun.h"

namespace {

// Every component must have one of the three fates, and every number of the report
// must be the file's own.
void expectReportAddsUp(const HostRun& run, long components, const std::string& file) {
  long read = -1;
  long drawn = 0;
  long nothing = 0;
  long notDrawn = 0;
  long elements = -1;
  long tallied = 0;
  bool tallying = false;
  for (const std::string& line : linesOf(run.out)) {
    std::sscanf(line.c_str(),
                "Components read: %ld = %ld drawn + %ld with nothing to draw + %ld not drawn",
                &read, &drawn, &nothing, &notDrawn);
    std::sscanf(line.c_str(), "Elements: %ld", &elements);
    long count = 0;
    if (tallying && std::sscanf(line.c_str(), "%ld", &count) == 1) tallied += count;
    if (line == "Drawn:") tallying = true;
    if (line == "Drawn otherwise than the file says:") tallying = false;
    if (line.rfind("Errors:", 0) == 0) tallying = false;
  }
  EXPECT_EQ(read, components) << run.out;
  EXPECT_EQ(drawn + nothing + notDrawn, components) << run.out;
  EXPECT_EQ(tallied, components) << run.out;
  long inFile = 0;
  for (const std::string& line : linesOf(file))
    if (line.size() > 19 && line.compare(17, 2, "00") == 0) ++inFile;
  EXPECT_EQ(elements, inFile) << run.out;
}

void expectRecords(const std::vector<std::string>& actual,
                   const std::vector<std::string>& expected) {
  EXPECT_EQ(actual.size(), expected.size());
  for (std::size_t i = 0; i < actual.size() || i < expected.size(); ++i) {
    const std::string one = i < actual.size() ? actual[i] : "(no more)";
    const std::string other = i < expected.size() ? expected[i] : "(no more)";
    EXPECT_TRUE(sameRecord(one, other))
        << "record " << i << "\n is       " << one << "\n expected " << other;
  }
}

struct DrawingCase {
  const char* name;
  long components;
  const char* file;
  const char* records;  // without the header, one to a line
  const char* remark;   // part of what standard error says; nullptr: nothing
};

void PrintTo(const DrawingCase& row, std::ostream* out) { *out << row.name; }

// A pipe of 1000 along x with a nominal bore of 100: outside 114.3, flange 230.
#define PIPE_1000 "c 0 0 0,1000 0 0,114.3\nl pt 0 0 0,pt 1000 0 0\n"

// clang-format off
const DrawingCase kDrawings[] = {
    // ---- how files look
    {"MissingUnitsMeanMillimetres", 1,
     "PIPE\n    END-POINT 0 0 0 100\n    END-POINT 1000 0 0 100\n", PIPE_1000, nullptr},
    {"BoresInInchesBesideCoordinatesInMillimetres", 1,  // NPS 6 is 168.3 wide
     "UNITS-BORE INCH\nUNITS-CO-ORDS MM\nPIPE\n    END-POINT 0 0 0 6\n    END-POINT 1000 0 0 6\n",
     "c 0 0 0,1000 0 0,168.3\nl pt 0 0 0,pt 1000 0 0\n", nullptr},
    {"CoordinatesInInches", 1,  // 10 x 25.4
     "UNITS-CO-ORDS INCH\nPIPE\n    END-POINT 0 0 0 100\n    END-POINT 10 0 0 100\n",
     "c 0 0 0,254 0 0,114.3\nl pt 0 0 0,pt 254 0 0\n", nullptr},
    {"CoordinatesInSixteenthsOfAnInch", 1,  // 160 / 16 x 25.4
     "UNITS-CO-ORDS INCH-SIXTEENTH\nPIPE\n    END-POINT 0 0 0 100\n    END-POINT 160 0 0 100\n",
     "c 0 0 0,254 0 0,114.3\nl pt 0 0 0,pt 254 0 0\n", nullptr},
    {"BoresInSixteenthsOfAnInch", 1,  // 64 / 16 = NPS 4
     "UNITS-BORE INCH-SIXTEENTH\nPIPE\n    END-POINT 0 0 0 64\n    END-POINT 1000 0 0 64\n",
     PIPE_1000, nullptr},
    {"UnitsHoldFromTheirLineOn", 2,
     "PIPE\n    END-POINT 0 0 0 100\n    END-POINT 1000 0 0 100\n"
     "UNITS-BORE INCH\nPIPE\n    END-POINT 0 0 0 4\n    END-POINT 1000 0 0 4\n",
     PIPE_1000 PIPE_1000, nullptr},
    {"UnknownUnitIsReportedAndMillimetresTaken", 1,
     "UNITS-CO-ORDS FURLONG\nPIPE\n    END-POINT 0 0 0 100\n    END-POINT 1000 0 0 100\n", PIPE_1000,
     "in.pcf:1: error: UNITS-CO-ORDS: expected MM or INCH, found \"FURLONG\"; millimetres are taken\n"},
    {"BoreAsAFraction", 1,  // NPS 1-1/2 is 48.3 wide, NPS 3/4 26.7
     "UNITS-BORE INCH\nPIPE\n END-POINT 0 0 0 1-1/2\n END-POINT 9 0 0 1 1/2\n"
     " CO-ORDS 0 0 0 3/4\n",
     "c 0 0 0,9 0 0,48.3\nl pt 0 0 0,pt 9 0 0\n", nullptr},
    {"BoreMarkedAsInches", 1,
     "PIPE\n    END-POINT 0 0 0 4\"\n    END-POINT 1000 0 0 4\" BW\n", PIPE_1000, nullptr},
    {"BoreThatIsNoNominalSizeIsTheDiameter", 1,
     "PIPE\n    END-POINT 0 0 0 118.5\n    END-POINT 1000 0 0 118.5\n",
     "c 0 0 0,1000 0 0,118.5\nl pt 0 0 0,pt 1000 0 0\n", nullptr},
    {"BoreAtOneEndIsTheBoreOfBoth", 1,
     "PIPE\n    END-POINT 0 0 0 100\n    END-POINT 1000 0 0 BW\n", PIPE_1000, nullptr},
    {"CarriageReturnsTabsAndTrailingBlanks", 1,
     "PIPE  \t\r\n\tEND-POINT\t0\t0\t0\t100\t \r\n\tEND-POINT\t1000 0 0 100 BW   \r\n", PIPE_1000, nullptr},
    {"CarriageReturnsAlone", 1,
     "PIPE\r    END-POINT 0 0 0 100\r    END-POINT 1000 0 0 100\r", PIPE_1000, nullptr},
    {"NoEndOfTheLastLine", 1,
     "PIPE\n    END-POINT 0 0 0 100\n    END-POINT 1000 0 0 100", PIPE_1000, nullptr},
    {"ByteOrderMark", 1,
     "\xEF\xBB\xBFPIPE\n    END-POINT 0 0 0 100\n    END-POINT 1000 0 0 100\n", PIPE_1000, nullptr},
    {"LowerCase", 1,
     "pipe\n    end-point 0 0 0 100 bw\n    End-Point 1000 0 0 100\n", PIPE_1000, nullptr},
    {"BlankLinesAndCommentsAreNothing", 1,
     "\n   \n! made by hand\nPIPE\n\n    END-POINT 0 0 0 100\n# \n    END-POINT 1000 0 0 100\n",
     PIPE_1000, nullptr},
    {"AttributesOfAnyKind", 1,
     "PIPE\n    UCI 7!x\n    END-POINT 0 0 0 100\n    WEIGHT\n    <MY ATTRIBUTE> 7\n"
     "    PIPE-LENGTH 4\n    END-POINT 1000 0 0 100\n    TAG <\xC4>\n    BEND-RADIUS 3\n",
     PIPE_1000, nullptr},
    {"AttributesInAngleBrackets", 2,
     "PIPE\n    <END-POINT> 0 0 0 100\n    <END-POINT 1000 0 0 100 BW>\n"
     "PIPE\n    END-POINT <0 0 0 100>\n    <END-POINT> <1000 0 0 100>\n",
     PIPE_1000 PIPE_1000, nullptr},
    {"WholeFileIndented", 1,
     "  PIPE\n      END-POINT 0 0 0 100\n      END-POINT 1000 0 0 100\n", PIPE_1000, nullptr},
    {"NothingIndented", 2,
     "PIPE\nEND-POINT 0 0 0 100\nSKEY PIPE\nITEM-CODE 1\nEND-POINT 1000 0 0 100\n"
     "PIPE\nEND-POINT 0 0 0 100\nEND-POINT 1000 0 0 100\n",
     PIPE_1000 PIPE_1000,
     "in.pcf:2: warning: END-POINT: expected to be indented; taken as part of the PIPE of line 1 "
     "(said once)\n"},
    {"MaterialsAreNoComponents", 1,
     "PIPE\n    END-POINT 0 0 0 100\n    END-POINT 1000 0 0 100\n"
     "MATERIALS\nITEM-CODE 1\n    DESCRIPTION PIPE\nITEM-CODE 2\n    DESCRIPTION BEND\n",
     PIPE_1000, nullptr},
    {"HundredsOfMetresKeepFourDecimals", 1,
     "PIPE\n    END-POINT 812345.6789 -654321.1234 98765.4321 100\n"
     "    END-POINT 812346.6789 -654321.1234 98765.4321 100\n",
     "c 812345.6789 -654321.1234 98765.4321,1 0 0,114.3\n"
     "l pt 812345.6789 -654321.1234 98765.4321,pt 1 0 0\n", nullptr},
    {"ExponentsAndSigns", 1,
     "PIPE\n    END-POINT -0.0 +0 0.e0 1E2\n    END-POINT 1.0e+03 .0 0. 100.000\n", PIPE_1000, nullptr},

    // ---- straight pieces
    {"FixedPipeAndMiscellaneousAreStraight", 2,
     "PIPE-FIXED\n    END-POINT 0 0 0 100\n    END-POINT 1000 0 0 100\n"
     "MISC-COMPONENT\n    END-POINT 0 0 0 100\n    END-POINT 1000 0 0 100\n",
     PIPE_1000 PIPE_1000, nullptr},
    {"CouplingUnionClampFilterInstrumentAreWider", 5,  // 114.3 x 1.25 = 142.875
     "COUPLING\n END-POINT 0 0 0 100\n END-POINT 9 0 0 100\nUNION\n END-POINT 0 0 0 100\n END-POINT 9 0 0 100\n"
     "CLAMP\n END-POINT 0 0 0 100\n END-POINT 9 0 0 100\nFILTER\n END-POINT 0 0 0 100\n END-POINT 9 0 0 100\n"
     "INSTRUMENT\n END-POINT 0 0 0 100\n END-POINT 9 0 0 100\n",
     "c 0 0 0,9 0 0,142.875\nl pt 0 0 0,pt 9 0 0\nc 0 0 0,9 0 0,142.875\nl pt 0 0 0,pt 9 0 0\n"
     "c 0 0 0,9 0 0,142.875\nl pt 0 0 0,pt 9 0 0\nc 0 0 0,9 0 0,142.875\nl pt 0 0 0,pt 9 0 0\n"
     "c 0 0 0,9 0 0,142.875\nl pt 0 0 0,pt 9 0 0\n", nullptr},
    {"AnAngledInstrumentGoesByItsCentre", 1,
     "INSTRUMENT-ANGLE\n END-POINT 0 0 0 100\n END-POINT 9 9 0 100\n CENTRE-POINT 9 0 0\n",
     "c 0 0 0,9 0 0,142.875\nc 9 0 0,0 9 0,142.875\nl pt 0 0 0,pt 9 0 0\nl pt 9 0 0,pt 0 9 0\n", nullptr},
    {"ADialIsAPoint", 2, "INSTRUMENT-DIAL\n    CO-ORDS 1 2 3 20\nINSTRUMENT-DIAL\n    END-POINT 4 5 6 20\n",
     "l pt 1 2 3\nl pt 4 5 6\n", nullptr},
    {"ABalloonIsAPointAndItsText", 1, "INSTRUMENT-BALLOON\n    CO-ORDS 1 2 3\n    TEXT FT-1\n",
     "l pt 1 2 3\nx 1 2 3,1 0 0,0 0 1,50,30,1,4\nx FT-1\n", nullptr},
    {"AFittingWithoutEndsIsAPointAndNamed", 1, "COUPLING\n    CO-ORDS 1 2 3 20\n", "l pt 1 2 3\n",
     "in.pcf:1: warning: COUPLING: expected two END-POINTs; drawn as a point at its CO-ORDS\n"},
    {"FurtherEndsOfAPipeAreNamed", 1,
     "PIPE\n END-POINT 0 0 0 100\n END-POINT 1000 0 0 100\n END-POINT 500 90 0 50\n",
     PIPE_1000 "c 500 0 0,0 90 0,60.3\nl pt 500 0 0,pt 0 90 0\n",
     "in.pcf:1: warning: PIPE: expected two END-POINTs, found more; those are drawn from its middle\n"},
    {"AComponentMayHaveManyPorts", 1,  // 60.3 x 1.25 = 75.375
     "MULTI-PORT-COMPONENT\n END-POINT 0 0 0 100\n END-POINT 90 0 0 100\n END-POINT 45 90 0 50\n CENTRE-POINT 45 0 0\n",
     "c 0 0 0,90 0 0,142.875\nl pt 0 0 0,pt 90 0 0\nc 45 0 0,0 90 0,75.375\nl pt 45 0 0,pt 0 90 0\n", nullptr},
    {"PipeWithTwoBoresIsACone", 1, "PIPE\n END-POINT 0 0 0 100\n END-POINT 90 0 0 50\n",
     "n 0 0 0,90 0 0,114.3,60.3\nl pt 0 0 0,pt 90 0 0\n", nullptr},
    {"UnknownComponentWithTwoEndsLeavesNoGap", 1,
     "FOO-BAR\n    END-POINT 0 0 0 100\n    END-POINT 1000 0 0 100\n", PIPE_1000,
     "in.pcf:1: warning: FOO-BAR: unknown component; drawn like a piece of pipe\n"},

    {"AFamilyNameWithAnotherSuffixIsOfTheFamily", 1,
     "PIPE-OF-LEAD\n    END-POINT 0 0 0 100\n    END-POINT 1000 0 0 100\n", PIPE_1000, nullptr},
    {"HeadersAreNoComponents", 1,
     "STYLE-FILES x.fls\nUNITS-WEIGHT KGS\nUNITS-BOLT-DIA MM\nPIPELINE-REFERENCE P-1\n"
     "PIPELINE-TEMP 80\nPIPE-SPEC A1\nATTRIBUTE1 x\nREVISION 0\nSPOOL-IDENTIFIER 2\nMATERIALS\n"
     "PIPE\n    END-POINT 0 0 0 100\n    END-POINT 1000 0 0 100\n", PIPE_1000, nullptr},

    // ---- sizes: ASME B36.10 and, for flanges, B16.5 class 150
    {"SmallestAndLargestSizeInMillimetres", 2,
     "PIPE\n END-POINT 0 0 0 6\n END-POINT 9 0 0 6\nPIPE\n END-POINT 0 0 0 1200\n END-POINT 9 0 0 1200\n",
     "c 0 0 0,9 0 0,10.3\nl pt 0 0 0,pt 9 0 0\nc 0 0 0,9 0 0,1219\nl pt 0 0 0,pt 9 0 0\n", nullptr},
    {"SmallestAndLargestSizeInInches", 2,
     "UNITS-BORE INCH\nPIPE\n END-POINT 0 0 0 0.125\n END-POINT 9 0 0 .125\n"
     "PIPE\n END-POINT 0 0 0 48\n END-POINT 9 0 0 48\n",
     "c 0 0 0,9 0 0,10.3\nl pt 0 0 0,pt 9 0 0\nc 0 0 0,9 0 0,1219\nl pt 0 0 0,pt 9 0 0\n", nullptr},
    {"RoundedInches", 1,  // 1.3 stands for 1.25: 42.2
     "UNITS-BORE INCH\nPIPE\n END-POINT 0 0 0 1.3\n END-POINT 9 0 0 1.3\n",
     "c 0 0 0,9 0 0,42.2\nl pt 0 0 0,pt 9 0 0\n", nullptr},
    {"FlangeOfASizeBeyondItsStandard", 1,  // 660 x 1.3 + 20
     "FLANGE-BLIND\n END-POINT 0 0 0 650\n END-POINT 9 0 0 650\n", "c 0 0 0,9 0 0,878\nl pt 0 0 0,pt 9 0 0\n",
     nullptr},

    // ---- elbows: E1 = 0, first tangent along x, t the distance of T
    {"QuarterTurn", 1,  // R = t tan 45 = 100
     "ELBOW\n END-POINT 0 0 0 100\n END-POINT 100 100 0 100\n CENTRE-POINT 100 0 0\n",
     "t 0 100 0,0 -100 0,100 0 0,114.3\nl pt 0 0 0,pt 100 0 0\nl pt 100 0 0,pt 0 100 0\n", nullptr},
    {"EighthOfATurn", 1,  // t = 100, E2 = T + 100 (cos 45, sin 45), R = 100 / tan 22.5 = 241.42136
     "BEND\n END-POINT 0 0 0 100\n END-POINT 170.710678 70.710678 0 100\n CENTRE-POINT 100 0 0\n",
     "t 0 241.42136 0,0 -241.42136 0,170.71068 -170.71068 0,114.3\n"
     "l pt 0 0 0,pt 100 0 0\nl pt 100 0 0,pt 70.7107 70.7107 0\n", nullptr},
    {"ThirtyDegrees", 1,  // E2 = T + 100 (cos 30, sin 30), R = 100 / tan 15 = 373.20508
     "BEND\n END-POINT 0 0 0 100\n END-POINT 186.602540 50 0 100\n CENTRE-POINT 100 0 0\n",
     "t 0 373.20508 0,0 -373.20508 0,186.60254 -323.20508 0,114.3\n"
     "l pt 0 0 0,pt 100 0 0\nl pt 100 0 0,pt 86.6025 50 0\n", nullptr},
    {"HundredAndThirtyFiveDegrees", 1,  // t = 400, E2 = T + 400 (-0.70710678, 0.70710678), R = 400 tan 22.5
     "BEND\n END-POINT 0 0 0 100\n END-POINT 117.157288 282.842712 0 100\n CENTRE-POINT 400 0 0\n",
     "t 0 165.685425 0,0 -165.685425 0,117.157288 117.157288 0,114.3\n"
     "l pt 0 0 0,pt 400 0 0\nl pt 400 0 0,pt -282.8427 282.8427 0\n", nullptr},
    {"QuarterTurnInASkewPlane", 1,  // along (1,2,2)/3, then (2,1,-2)/3, t = R = 300; C = E1 + 300 (2,1,-2)/3
     "ELBOW\n END-POINT 0 0 0 100\n END-POINT 300 300 0 100\n CENTRE-POINT 100 200 200\n",
     "t 200 100 -200,-200 -100 200,100 200 200,114.3\n"
     "l pt 0 0 0,pt 100 200 200\nl pt 100 200 200,pt 200 100 -200\n", nullptr},
    {"SixtyDegreesInASkewPlane", 1,
     // The same tangents: E2 = T + 300 (cos 60 (1,2,2) + sin 60 (2,1,-2)) / 3, R = 300 / tan 30 =
     // 519.615242, C = R (2,1,-2)/3.
     "ELBOW\n END-POINT 0 0 0 100\n END-POINT 323.205081 386.602540 126.794919 100\n"
     " CENTRE-POINT 100 200 200\n",
     "t 346.410162 173.205081 -346.410162,-346.410162 -173.205081 346.410162,"
     "-23.205081 213.397459 473.205081,114.3\n"
     "l pt 0 0 0,pt 100 200 200\nl pt 100 200 200,pt 223.2051 186.6025 -73.2051\n", nullptr},
    {"UnequalTangentsLeaveAStraightPiece", 1,  // the arc at the nearer end: t = 100
     "ELBOW\n END-POINT 0 0 0 100\n END-POINT 150 100 0 100\n CENTRE-POINT 150 0 0\n",
     "c 0 0 0,50 0 0,114.3\nt 50 100 0,0 -100 0,100 0 0,114.3\n"
     "l pt 0 0 0,pt 150 0 0\nl pt 150 0 0,pt 0 100 0\n", nullptr},
    {"CollinearElbowIsDrawnStraight", 1,
     "ELBOW\n END-POINT 0 0 0 100\n END-POINT 300 0 0 100\n CENTRE-POINT 100 0 0\n",
     "c 0 0 0,100 0 0,114.3\nc 100 0 0,200 0 0,114.3\nl pt 0 0 0,pt 100 0 0\nl pt 100 0 0,pt 200 0 0\n",
     "in.pcf:1: warning: ELBOW: ends and CENTRE-POINT lie on one line; drawn straight\n"},
    {"FoldedElbowIsDrawnAsStraightPieces", 1,
     "ELBOW\n END-POINT 0 0 0 100\n END-POINT 50 0 0 100\n CENTRE-POINT 100 0 0\n",
     "c 0 0 0,100 0 0,114.3\nc 100 0 0,-50 0 0,114.3\nl pt 0 0 0,pt 100 0 0\nl pt 100 0 0,pt -50 0 0\n",
     "both ends lie on the same side of the CENTRE-POINT"},
    {"ArcNarrowerThanThePipeIsAMitre", 1,  // R = 50 is less than 114.3 / 2
     "ELBOW\n END-POINT 0 0 0 100\n END-POINT 50 50 0 100\n CENTRE-POINT 50 0 0\n",
     "c 0 0 0,50 0 0,114.3\nc 50 0 0,0 50 0,114.3\nl pt 0 0 0,pt 50 0 0\nl pt 50 0 0,pt 0 50 0\n",
     "the arc is narrower than the pipe"},
    {"HalfTurnByItsFarthestPoint", 1,  // ends 200 apart, R = 100 about their middle
     "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n CENTRE-POINT 100 100 0\n ANGLE 18000\n",
     "t 0 100 0,0 -100 0,100 0 0,60.3\nt 0 100 0,100 0 0,0 100 0,60.3\n"
     "l pt 0 0 0,pt 100 100 0\nl pt 100 100 0,pt -100 100 0\n", nullptr},
    {"HalfTurnByTheLineThatArrivesAcross", 2,
     "PIPE\n END-POINT -500 0 0 50\n END-POINT 0 0 0 50\n"
     "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n CENTRE-POINT 0 100 0\n",
     "c -500 0 0,500 0 0,60.3\nl pt -500 0 0,pt 500 0 0\n"
     "t 0 100 0,0 -100 0,100 0 0,60.3\nt 0 100 0,100 0 0,0 100 0,60.3\n"
     "l pt 0 0 0,pt 100 100 0\nl pt 100 100 0,pt -100 100 0\n", nullptr},
    {"ReducingElbowTakesTheLargerBore", 1,
     "ELBOW\n END-POINT 0 0 0 50\n END-POINT 100 100 0 100\n CENTRE-POINT 100 0 0\n",
     "t 0 100 0,0 -100 0,100 0 0,114.3\nl pt 0 0 0,pt 100 0 0\nl pt 100 0 0,pt 0 100 0\n",
     "its ends have different bores"},

    // ---- branches
    {"Tee", 1,
     "TEE\n END-POINT 0 0 0 100\n END-POINT 200 0 0 100\n CENTRE-POINT 100 0 0\n BRANCH1-POINT 100 90 0 50\n",
     "c 0 0 0,200 0 0,114.3\nl pt 0 0 0,pt 200 0 0\nc 100 0 0,0 90 0,60.3\nl pt 100 0 0,pt 0 90 0\n", nullptr},
    {"StubHasNoRun", 1,
     "TEE-STUB\n CENTRE-POINT 100 0 0 100\n BRANCH1-POINT 100 90 0 50\n",
     "c 100 0 0,0 90 0,60.3\nl pt 100 0 0,pt 0 90 0\n", nullptr},
    {"CrossHasTwoBranches", 1,
     "CROSS\n END-POINT 0 0 0 100\n END-POINT 200 0 0 100\n CENTRE-POINT 100 0 0\n"
     " BRANCH1-POINT 100 90 0 50\n BRANCH2-POINT 100 -90 0 50\n",
     "c 0 0 0,200 0 0,114.3\nl pt 0 0 0,pt 200 0 0\nc 100 0 0,0 90 0,60.3\nl pt 100 0 0,pt 0 90 0\n"
     "c 100 0 0,0 -90 0,60.3\nl pt 100 0 0,pt 0 -90 0\n", nullptr},
    {"Olet", 1, "OLET\n CENTRE-POINT 0 0 0 100\n BRANCH1-POINT 0 0 90 20\n",
     "c 0 0 0,0 0 90,26.7\nl pt 0 0 0,pt 0 0 90\n", nullptr},
    {"TeeWithoutCentreOrBranchIsDrawnAndNamed", 2,
     "TEE\n END-POINT 0 0 0 100\n END-POINT 1000 0 0 100\n"
     "TEE\n END-POINT 0 0 0 100\n END-POINT 1000 0 0 100\n BRANCH1-POINT 500 90 0 50\n",
     PIPE_1000 PIPE_1000 "c 500 0 0,0 90 0,60.3\nl pt 500 0 0,pt 0 90 0\n",
     "in.pcf:1: warning: TEE: expected a BRANCH1-POINT; drawn without a branch\n"
     "in.pcf:4: warning: TEE: expected a CENTRE-POINT; the branch leaves the middle of the run\n"},

    // ---- reducers, flanges, valves
    {"ConcentricReducer", 1,
     "REDUCER-CONCENTRIC\n END-POINT 0 0 0 100\n END-POINT 90 0 0 50\n",
     "n 0 0 0,90 0 0,114.3,60.3\nl pt 0 0 0,pt 90 0 0\n", nullptr},
    {"EccentricReducerHasAnObliqueAxis", 1,  // flat on top: (114.3 - 60.3) / 2 = 27 upwards
     "REDUCER-ECCENTRIC\n END-POINT 0 0 0 100\n END-POINT 90 0 27 50\n FLAT-DIRECTION UP\n",
     "n 0 0 0,90 0 27,114.3,60.3\nl pt 0 0 0,pt 90 0 27\n", nullptr},
    {"FlangeHasItsFaceAtTheFlangedEnd", 1,  // disc 0.4 x 100; hub 114.3 + 0.4 (230 - 114.3) = 160.58
     "FLANGE\n END-POINT 0 0 0 100 BW\n END-POINT 100 0 0 100 FL\n",
     "c 100 0 0,-40 0 0,230\nn 60 0 0,-60 0 0,160.58,114.3\nl pt 100 0 0,pt -100 0 0\n", nullptr},
    {"FlangeHasItsFaceAtTheGasket", 2,  // gasket (114.3 + 230) / 2 = 172.15
     "FLANGE\n END-POINT 0 0 0 100\n END-POINT 100 0 0 100\nGASKET\n END-POINT 100 0 0 100\n END-POINT 103 0 0 100\n",
     "c 100 0 0,-40 0 0,230\nn 60 0 0,-60 0 0,160.58,114.3\nl pt 100 0 0,pt -100 0 0\n"
     "c 100 0 0,3 0 0,172.15\nl pt 100 0 0,pt 3 0 0\n", nullptr},
    {"BlindFlangeIsADisc", 1,
     "FLANGE-BLIND\n END-POINT 0 0 0 100\n END-POINT 24 0 0 100\n", "c 0 0 0,24 0 0,230\nl pt 0 0 0,pt 24 0 0\n",
     nullptr},
    {"StubEndHasACollar", 1,  // a tenth of 150; (114.3 + 230) / 2
     "LAP-JOINT-STUBEND\n END-POINT 0 0 0 100 FL\n END-POINT 150 0 0 100 BW\n",
     "c 0 0 0,15 0 0,172.15\nc 15 0 0,135 0 0,114.3\nl pt 0 0 0,pt 150 0 0\n", nullptr},
    {"ValveIsTwoConesThatMeet", 1,
     "VALVE\n END-POINT 0 0 0 100\n END-POINT 200 0 0 100\n CENTRE-POINT 100 0 0\n",
     "n 0 0 0,100 0 0,114.3,0\nl pt 0 0 0,pt 100 0 0\nn 200 0 0,-100 0 0,114.3,0\nl pt 200 0 0,pt -100 0 0\n",
     nullptr},
    {"FlangedValveIsAsWideAsItsFlanges", 1,  // without a centre: in the middle
     "VALVE\n END-POINT 0 0 0 100 FL\n END-POINT 200 0 0 100 FL\n",
     "n 0 0 0,100 0 0,230,0\nl pt 0 0 0,pt 100 0 0\nn 200 0 0,-100 0 0,230,0\nl pt 200 0 0,pt -100 0 0\n", nullptr},
    {"AngleValve", 1,
     "VALVE-ANGLE\n END-POINT 0 0 0 100\n END-POINT 90 90 0 100\n CENTRE-POINT 90 0 0\n",
     "n 0 0 0,90 0 0,114.3,0\nl pt 0 0 0,pt 90 0 0\nn 90 90 0,0 -90 0,114.3,0\nl pt 90 90 0,pt 0 -90 0\n", nullptr},
    {"FourWayValve", 1,
     "VALVE-4WAY\n END-POINT 0 0 0 50\n END-POINT 20 0 0 50\n CENTRE-POINT 10 0 0\n"
     " BRANCH1-POINT 10 10 0 50\n BRANCH2-POINT 10 -10 0 50\n",
     "n 0 0 0,10 0 0,60.3,0\nl pt 0 0 0,pt 10 0 0\nn 20 0 0,-10 0 0,60.3,0\nl pt 20 0 0,pt -10 0 0\n"
     "n 10 10 0,0 -10 0,60.3,0\nl pt 10 10 0,pt 0 -10 0\nn 10 -10 0,0 10 0,60.3,0\nl pt 10 -10 0,pt 0 10 0\n",
     nullptr},
    {"CapNarrowsFromThePipe", 1,
     "CAP\n END-POINT 0 0 0 100\n END-POINT 60 0 0 100\n", "n 0 0 0,60 0 0,114.3,57.15\nl pt 0 0 0,pt 60 0 0\n",
     nullptr},
    {"CapWithOneEndGoesOnFromThePipe", 2,  // 0.4 x 114.3 = 45.72
     "PIPE\n END-POINT 0 0 0 100\n END-POINT 1000 0 0 100\nCAP\n END-POINT 1000 0 0 100\n",
     PIPE_1000 "n 1000 0 0,45.72 0 0,114.3,57.15\nl pt 1000 0 0,pt 45.72 0 0\n", nullptr},

    // ---- what stands at one place
    {"WeldIsAPoint", 2, "WELD\n CO-ORDS 1 2 3 100\nWELD\n END-POINT 4 5 6 100\n END-POINT 4 5 6 100\n",
     "l pt 1 2 3\nl pt 4 5 6\n", nullptr},
    {"SupportIsABox", 2,  // 114.3 x 1.25 = 142.875, half 71.4375; 100 without a bore
     "SUPPORT\n CO-ORDS 0 0 0 100\nSUPPORT\n CO-ORDS 0 0 0\n",
     "b 142.875 0 0,-71.4375 -71.4375 -71.4375,0 142.875 0,0 0 142.875\n"
     "b 100 0 0,-50 -50 -50,0 100 0,0 0 100\n", nullptr},
    {"MessagesAreTexts", 3,
     "MESSAGE-CIRCLE\n CO-ORDS 1 2 3\n TEXT A 1\nMESSAGE-SQUARE\n CO-ORDS 1 2 3\n TEXT <TWO>\n TEXT lines\n"
     "MESSAGE-TRIANGLE three\n CO-ORDS 0 0 0\n",
     "x 1 2 3,1 0 0,0 0 1,50,30,1,3\nx A 1\nx 1 2 3,1 0 0,0 0 1,50,30,1,3\nx TWO\n"
     "x 1 2 -72,1 0 0,0 0 1,50,30,1,5\nx lines\nx 0 0 0,1 0 0,0 0 1,50,30,1,5\nx three\n", nullptr},
    {"MessagesNameTheirTextInSeveralWays", 1,
     "MESSAGE-CIRCLE\n CO-ORDS 0 0 0\n TEXT1 a\n MESSAGE-TEXT b\n <DESCRIPTION> c d\n",
     "x 0 0 0,1 0 0,0 0 1,50,30,1,1\nx a\nx 0 0 -75,1 0 0,0 0 1,50,30,1,1\nx b\n"
     "x 0 0 -150,1 0 0,0 0 1,50,30,1,3\nx c d\n", nullptr},
    {"EndOfTheLineIsAPointAndWhatItMeets", 2,
     "END-CONNECTION-PIPELINE\n CO-ORDS 1 2 3\n PIPELINE-REFERENCE P-2\nEND-POSITION-OPEN\n CO-ORDS 4 5 6\n",
     "l pt 1 2 3\nx 1 2 3,1 0 0,0 0 1,50,30,1,3\nx P-2\nl pt 4 5 6\n", nullptr},
    {"ControlCharactersInATextBecomeBlanks", 1, "MESSAGE-CIRCLE\n CO-ORDS 0 0 0\n TEXT A\tB\x01" "C\xE9\n",
     "x 0 0 0,1 0 0,0 0 1,50,30,1,6\nx A B C\xE9\n", nullptr},
    {"BoltsHaveNothingToDraw", 2, "BOLT\n CO-ORDS 0 0 0\n BOLT-DIA 20\nPIPE\n END-POINT 0 0 0 100\n END-POINT 1000 0 0 100\n",
     PIPE_1000, nullptr},

    // ---- what cannot be drawn, and malformed lines
    {"ZeroLength", 3,
     "PIPE\n END-POINT 5 5 5 100\n END-POINT 5 5 5 100\nGASKET\n END-POINT 5 5 5 100\n END-POINT 5 5 5 100\n"
     "ELBOW\n END-POINT 5 5 5 100\n END-POINT 5 5 5 100\n CENTRE-POINT 5 5 5\n", "",
     "in.pcf:1: error: PIPE not drawn: zero length\nin.pcf:4: error: GASKET not drawn: zero length\n"
     "in.pcf:7: error: ELBOW not drawn: zero length\n"},
    {"MissingEnds", 3, "PIPE\n END-POINT 0 0 0 100\nPIPE\nWELD\n CO-ORDS 0 0 0\n", "l pt 0 0 0\n",
     "in.pcf:1: error: PIPE not drawn: expected two END-POINTs, found one\n"
     "in.pcf:3: error: PIPE not drawn: expected two END-POINTs, found none\n"},
    {"ElbowWithoutCentre", 1, "ELBOW\n END-POINT 0 0 0 100\n END-POINT 9 9 0 100\n", "",
     "in.pcf:1: error: ELBOW not drawn: expected a CENTRE-POINT, found none\n"},
    {"NoBore", 1, "PIPE\n END-POINT 0 0 0\n END-POINT 9 9 0 0\n", "",
     "in.pcf:1: error: PIPE not drawn: expected a bore behind an END-POINT, found none\n"},
    {"MessageWithoutText", 1, "MESSAGE-CIRCLE\n CO-ORDS 0 0 0\n", "",
     "in.pcf:1: error: MESSAGE-CIRCLE not drawn: expected a TEXT, found none\n"},
    {"UnknownComponentWithNothingToGoBy", 1, "FOO-BAR\n CENTRE-POINT 0 0 0\n", "",
     "in.pcf:1: error: FOO-BAR not drawn: unknown component"},
    {"UnknownWordWithAValueIsNoComponent", 1, "AREA 51\nWELD\n CO-ORDS 0 0 0\n", "l pt 0 0 0\n",
     "in.pcf:1: warning: AREA: expected a component or a header, found an unknown word; ignored\n"},
    {"DecimalComma", 1, "PIPE\n END-POINT 1,5 0 0 100\n END-POINT 9 0 0 100\n", "",
     "in.pcf:2: error: END-POINT: expected a number as x, found \"1,5\"\n"},
    {"TooFewCoordinates", 1, "WELD\n CO-ORDS 1 2\n", "",
     "in.pcf:2: error: CO-ORDS: expected three co-ordinates (x y z), found only two\n"},
    {"WordsThatAreNumbersToOthers", 5,
     "WELD\n CO-ORDS nan 0 0\nWELD\n CO-ORDS 0 inf 0\nWELD\n CO-ORDS 0 0 0x10\nWELD\n CO-ORDS 1e999 0 0\n"
     "WELD\n CO-ORDS 0 0 1e300\n", "",
     "in.pcf:2: error: CO-ORDS: expected a number as x, found \"nan\"\n"},
    {"BadBoreIsReportedAndTheOtherTaken", 1, "PIPE\n END-POINT 0 0 0 1OO\n END-POINT 1000 0 0 100\n", PIPE_1000,
     "in.pcf:2: error: END-POINT: expected a bore (a number, 0 or more) as fourth value, found \"1OO\"\n"},
    {"NegativeBore", 1, "PIPE\n END-POINT 0 0 0 -100\n END-POINT 1000 0 0 100\n", PIPE_1000,
     "in.pcf:2: error: END-POINT: expected a bore (a number, 0 or more) as fourth value, found \"-100\"\n"},
    {"FifthNumber", 1, "PIPE\n END-POINT 0 0 0 100 7\n END-POINT 1000 0 0 100\n", PIPE_1000,
     "in.pcf:2: warning: END-POINT: expected the kind of end behind the bore, found a fifth number \"7\"\n"},
    {"PlaceBeforeAnyComponent", 1, "    END-POINT 0 0 0 100\nWELD\n    CO-ORDS 0 0 0\n", "l pt 0 0 0\n",
     "in.pcf:1: error: END-POINT: expected a component before it\n"},
};
// clang-format on

class Drawings : public testing::TestWithParam<DrawingCase> {};

TEST_P(Drawings, GivesTheseRecords) {
  const DrawingCase& row = GetParam();
  const HostFolder folder;
  folder.write("in.pcf", row.file);
  const HostRun run = runHost(folder, PIPING_PROGRAM, "in.pcf t");
  const std::string file = folder.read("veskt.dat");
  expectRecords(recordsOf(file), linesOf(row.records));
  expectReportAddsUp(run, row.components, file);
  if (row.remark == nullptr) {
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.exitCode, 0);
  } else {
    EXPECT_NE(run.err.find(row.remark), std::string::npos) << run.err;
    EXPECT_EQ(run.exitCode, 1);
  }
}

INSTANTIATE_TEST_SUITE_P(Piping, Drawings, testing::ValuesIn(kDrawings),
                         [](const auto& row) { return std::string(row.param.name); });

using Vec = std::array<double, 3>;

Vec plus(const Vec& a, const Vec& b, double factor) {
  return {a[0] + b[0] * factor, a[1] + b[1] * factor, a[2] + b[2] * factor};
}

double dot(const Vec& a, const Vec& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

// What makes an arc fit: its radius at either end is at a right angle to the tangent
// there, and both are t / tan(half of the angle between the tangents' other ways), which
// is t / tan(turn / 2).
TEST(Piping, AnArcFitsItsTangentsAtAnyAngleInAnyPlane) {
  // Two directions at right angles each: along the axes, and (1,2,2)/3, (2,-2,1)/3,
  // (2,3,6)/7, (3,-6,2)/7.
  const Vec along[] = {{1, 0, 0}, {1 / 3., 2 / 3., 2 / 3.}, {2 / 7., 3 / 7., 6 / 7.}};
  const Vec across[] = {{0, 0, 1}, {2 / 3., -2 / 3., 1 / 3.}, {3 / 7., -6 / 7., 2 / 7.}};
  const double t = 500;
  const double turn = std::acos(-1.0) / 180;
  for (int plane = 0; plane < 3; ++plane) {
    for (int degrees = 5; degrees <= 170; degrees += 15) {
      const Vec first = along[plane];
      const Vec second = plus(plus({0, 0, 0}, first, std::cos(degrees * turn)), across[plane],
                              std::sin(degrees * turn));
      const Vec start = {1000, 2000, 3000};
      const Vec tangents = plus(start, first, t);
      const Vec end = plus(tangents, second, t);
      char text[512];
      std::snprintf(text, sizeof text,
                    "BEND\n  END-POINT %.9f %.9f %.9f 10\n  END-POINT %.9f %.9f %.9f 10\n"
                    "  CENTRE-POINT %.9f %.9f %.9f\n",
                    start[0], start[1], start[2], end[0], end[1], end[2], tangents[0], tangents[1],
                    tangents[2]);
      const HostFolder folder;
      folder.write("in.pcf", text);
      const HostRun run = runHost(folder, PIPING_PROGRAM, "in.pcf t");
      const std::vector<std::string> records = recordsOf(folder.read("veskt.dat"));
      SCOPED_TRACE(std::to_string(degrees) + " degrees in plane " + std::to_string(plane));
      ASSERT_EQ(records.size(), 3u) << run.err;
      ASSERT_EQ(records[0][0], 't') << records[0];
      const Vec toStart = pointOf(records[0], 1);
      const Vec toEnd = pointOf(records[0], 2);
      const double radius = t / std::tan(degrees * turn / 2);
      EXPECT_NEAR(dot(toStart, first), 0, 1e-3);
      EXPECT_NEAR(dot(toEnd, second), 0, 1e-3);
      EXPECT_NEAR(std::sqrt(dot(toStart, toStart)), radius, 1e-3);
      EXPECT_NEAR(std::sqrt(dot(toEnd, toEnd)), radius, 1e-3);
      for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(pointOf(records[0], 0)[i] + toStart[i], start[i], 1e-3);
        EXPECT_NEAR(pointOf(records[0], 0)[i] + toEnd[i], end[i], 1e-3);
      }
    }
  }
}

std::vector<std::string> headersOf(const std::string& file) {
  std::vector<std::string> headers;
  for (const std::string& line : linesOf(file)) headers.push_back(line.substr(0, 17));
  return headers;
}

// Eight characters of the reference, two of its number in the file, three of the
// component's; before the first reference blanks and 00. A reference that comes again is
// the same pipeline; a bolt takes a number though it draws nothing.
TEST(Piping, EveryPipelineReferenceSetsTheHeader) {
  const HostFolder folder;
  folder.write("in.pcf",
               "WELD\n    CO-ORDS 0 0 0\n"
               "PIPELINE-REFERENCE P-1\nWELD\n    CO-ORDS 0 0 0\n"
               "PIPELINE-REFERENCE <LONG-REFERENCE 2>\nBOLT\nWELD\n    CO-ORDS 0 0 0\n"
               "PIPELINE-REFERENCE P-1\nWELD\n    CO-ORDS 0 0 0\n");
  const HostRun run = runHost(folder, PIPING_PROGRAM, "in.pcf t");
  const std::vector<std::string> expected = {"        00001    ", "P-1     01002    ",
                                             "LONG-REF02004    ", "P-1     01005    "};
  EXPECT_EQ(headersOf(folder.read("veskt.dat")), expected);
  EXPECT_EQ(run.exitCode, 0) << run.err;
  EXPECT_NE(run.out.find("Components of pipeline P-1: 2\n"
                         "Components of pipeline LONG-REFERENCE 2: 2\n"
                         "Components without a PIPELINE-REFERENCE: 1\n"),
            std::string::npos)
      << run.out;
}

TEST(Piping, NumbersStartAgainBehindTheLargest) {
  std::string text;
  for (int i = 0; i < 46657; ++i) text += "WELD\n CO-ORDS 0 0 0\n";
  const HostFolder folder;
  folder.write("in.pcf", text);
  const HostRun run = runHost(folder, PIPING_PROGRAM, "in.pcf t");
  const std::string file = folder.read("veskt.dat");
  const std::vector<std::string> headers = headersOf(file);
  ASSERT_EQ(headers.size(), 46657u);
  EXPECT_EQ(headers[46654].substr(10, 3), "ZZZ");
  EXPECT_EQ(headers[46655].substr(10, 3), "001");
  EXPECT_EQ(headers[46656].substr(10, 3), "002");
  // The 46656th stands in line 46655 x 2 + 1.
  EXPECT_EQ(run.err,
            "in.pcf:93311: warning: the header counts to 46655; from here on the numbers start "
            "again at 1\n");
  EXPECT_EQ(run.exitCode, 1);
  expectReportAddsUp(run, 46657, file);
}

TEST(Piping, BoresAreDiametersIfAskedFor) {
  const HostFolder folder;
  folder.write("in.pcf",
               "UNITS-BORE INCH\nPIPE\n    END-POINT 0 0 0 4\n    END-POINT 1000 0 0 4\n");
  runHost(folder, PIPING_PROGRAM, "--bore-as-diameter in.pcf t");
  // 4 x 25.4
  EXPECT_EQ(recordsOf(folder.read("veskt.dat"))[0], "c 0 0 0,1000 0 0,101.6");
}

TEST(Piping, ReadsUtf16) {
  const std::string text = "PIPE\r\n    END-POINT 0 0 0 100\r\n    END-POINT 1000 0 0 100\r\n";
  std::string little = "\xFF\xFE";
  std::string big = "\xFE\xFF";
  for (const char c : text) {
    little += c;
    little += '\0';
    big += '\0';
    big += c;
  }
  for (const std::string& bytes : {little, big}) {
    const HostFolder folder;
    folder.write("in.pcf", bytes);
    const HostRun run = runHost(folder, PIPING_PROGRAM, "in.pcf t");
    EXPECT_EQ(run.err, "");
    expectRecords(recordsOf(folder.read("veskt.dat")), linesOf(PIPE_1000));
  }
}

TEST(Piping, TakesLinesOfAnyLengthAndAnyByte) {
  const std::string junk(100000, 'x');
  std::string bytes;
  for (int i = 1; i < 256; ++i)
    if (i != '\n' && i != '\r') bytes += static_cast<char>(i);
  const HostFolder folder;
  folder.write("in.pcf", "PIPE\n    END-POINT 0 0 0 100" + std::string(50000, ' ') +
                             "BW\n    NOTE " + junk + "\n    " + junk + "\n    NOTE " + bytes +
                             '\0' + "\n    END-POINT 1000 0 0 100\n");
  const HostRun run = runHost(folder, PIPING_PROGRAM, "in.pcf t");
  EXPECT_EQ(run.err, "");
  expectRecords(recordsOf(folder.read("veskt.dat")), linesOf(PIPE_1000));
}

// Behind 19 characters of header and the keyword neither text fits into the 512 of a
// line, so each begins one more.
TEST(Piping, ATextIsCutAtTheLongestThatALineHolds) {
  const HostFolder folder;
  folder.write("in.pcf", "MESSAGE-CIRCLE\n CO-ORDS 0 0 0\n TEXT " + std::string(512, 'a') +
                             "\nMESSAGE-CIRCLE\n CO-ORDS 0 0 0\n TEXT " + std::string(511, 'b') +
                             "\xC3\xA4\n");
  const HostRun run = runHost(folder, PIPING_PROGRAM, "in.pcf t");
  const std::string file = folder.read("veskt.dat");
  const std::vector<std::string> records = recordsOf(file);
  ASSERT_EQ(records.size(), 6u);
  EXPECT_EQ(records[2], "x " + std::string(512, 'a'));
  EXPECT_EQ(records[5], "x " + std::string(511, 'b'));  // not half of the letter
  EXPECT_EQ(run.err,
            "in.pcf:4: warning: MESSAGE-CIRCLE: expected a text of at most 512 bytes; its end is "
            "left out\n");
  expectReportAddsUp(run, 2, file);
}

TEST(Piping, NamesAtTheEndWhatIsNotDrawn) {
  const HostFolder folder;
  folder.write("in.pcf",
               "PIPE\n END-POINT 0 0 0 100\n END-POINT 0 0 0 100\nFOO\nBOLT\nPIPE\n"
               " END-POINT 1 0 0 100\n END-POINT 1 0 0 100\nWELD\n CO-ORDS 0 0 0\n");
  const HostRun run = runHost(folder, PIPING_PROGRAM, "in.pcf t");
  EXPECT_NE(run.out.find("Components read: 5 = 1 drawn + 1 with nothing to draw + 3 not drawn\n"
                         "Drawn:\n       1  WELD\n"
                         "Nothing to draw:\n       1  BOLT\n"
                         "Not drawn:\n       2  PIPE: zero length (first at in.pcf:1)\n"
                         "       1  FOO: unknown component (at in.pcf:4)\n"),
            std::string::npos)
      << run.out;
}

struct CommandCase {
  const char* name;
  const char* arguments;
  int exitCode;
  const char* out;  // part of it
  const char* err;  // part of it
};

void PrintTo(const CommandCase& row, std::ostream* out) { *out << row.name; }

// clang-format off
const CommandCase kCommands[] = {
    {"Help", "--help", 0, "Usage: piping", ""},
    {"Nothing", "", 2, "", "expected the name of a file and the name of the output"},
    {"OneName", "good.pcf", 2, "", "expected the name of a file"},
    {"EmptyName", "good.pcf ''", 2, "", "expected the name of a file"},
    {"ThreeNames", "good.pcf t u", 2, "", "found a third: \"u\""},
    {"UnknownOption", "--fast good.pcf t", 2, "", "unknown option \"--fast\""},
    {"InputIsOutput", "vesksame.dat same", 2, "", "is both input and output"},
    {"Done", "good.pcf t", 0, "Written: veskt.dat\nElements: 1, in lines: 1\n       1  points\nIt begins:\n"
                              "          00001    00l pt 1 2 3\n", ""},
    {"StandardInput", "- t <good.pcf", 0, "Written: veskt.dat\n", ""},
    {"StandardInputInMessages", "- t <odd.pcf", 1, "", "stdin:3: error: CO-ORDS: expected a number as x"},
    {"NoFile", "none.pcf t", 3, "", "none.pcf: error: cannot be read: "},
    {"Folder", ". t", 3, "", ".: error: cannot be read: "},
    {"EmptyFile", "/dev/null t", 3, "", "found no component"},
    {"NoPipingFile", "letter.txt t", 3, "", "found no component"},
    {"NoSuchFolderOfTheOutput", "good.pcf none/t", 4, "", "vesknone/t.dat: error: cannot be opened for writing: "},
};
// clang-format on

class Commands : public testing::TestWithParam<CommandCase> {};

TEST_P(Commands, EndsSo) {
  const CommandCase& row = GetParam();
  const HostFolder folder;
  folder.write("good.pcf", "WELD\n    CO-ORDS 1 2 3\n");
  folder.write("odd.pcf", "WELD\n    CO-ORDS 1 2 3\n    CO-ORDS x\n");
  folder.write("vesksame.dat", "WELD\n    CO-ORDS 1 2 3\n");
  folder.write("letter.txt", "Dear all, please find below\nHello\n\nSincerely yours\n");
  const HostRun run = runHost(folder, PIPING_PROGRAM, row.arguments);
  EXPECT_EQ(run.exitCode, row.exitCode) << run.err;
  EXPECT_NE(run.out.find(row.out), std::string::npos) << run.out;
  EXPECT_NE(run.err.find(row.err), std::string::npos) << run.err;
  EXPECT_EQ(run.err.empty(), row.exitCode == 0) << run.err;
  // What is not drawn leaves no file behind.
  EXPECT_EQ(folder.has("veskt.dat"), row.exitCode < 2 && std::string(row.name) != "Help");
}

INSTANTIATE_TEST_SUITE_P(Piping, Commands, testing::ValuesIn(kCommands),
                         [](const auto& row) { return std::string(row.param.name); });

// A limit on the size of files stands in for a full disk: the library's writes fail
// and nobody hears of it. Windows has no such limit.
#ifndef _WIN32
TEST(Piping, FindsOutThatTheDiskRefused) {
  std::string text;
  for (int i = 0; i < 5000; ++i) text += "WELD\n CO-ORDS 1000 2000 3000\n";
  const HostFolder folder;
  folder.write("in.pcf", text);
  const HostRun run = runHost(folder, PIPING_PROGRAM, "in.pcf t", "trap '' XFSZ; ulimit -f 64;");
  EXPECT_EQ(run.exitCode, 4);
  EXPECT_NE(run.err.find("veskt.dat: error: incomplete: File too large; it holds "),
            std::string::npos)
      << run.err;
  EXPECT_NE(run.err.find(" of the 5000 elements"), std::string::npos) << run.err;
}
#endif

}  // namespace
