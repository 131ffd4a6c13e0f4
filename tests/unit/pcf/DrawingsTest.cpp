// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

#include "pcf/PcfRun.h"

// What becomes of a file: its records, and what is said about it.
namespace {

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find('\n', at);
    lines.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return lines;
}

// The same keyword, and numbers within 0.0001; of a text the same bytes.
bool sameRecord(const std::string& one, const std::string& other) {
  if (one[0] == 'x' && one.find(',') == std::string::npos) return one == other;
  const std::vector<double> a = numbersOf(one);
  const std::vector<double> b = numbersOf(other);
  if (one[0] != other[0] || a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (std::abs(a[i] - b[i]) > 1e-4) return false;
  }
  return true;
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
  std::uint64_t components;
  const char* file;
  const char* records;  // without the header, one to a line
  const char* message;  // part of what is said; nullptr: nothing
};

void PrintTo(const DrawingCase& row, std::ostream* out) { *out << row.name; }

// A pipe of 1000 along x with a nominal bore of 100: outside 114.3.
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
     "in.pcf:1: error: UNITS-CO-ORDS: taken as millimetres; expected MM or INCH, found \"FURLONG\"\n"},
    {"BoreAsAFraction", 1,  // NPS 1-1/2 is 48.3 wide, NPS 3/4 26.7
     "UNITS-BORE INCH\nPIPE\n END-POINT 0 0 0 1-1/2\n END-POINT 9 0 0 1 1/2\n"
     " CO-ORDS 0 0 0 3/4\n",
     "c 0 0 0,9 0 0,48.3\nl pt 0 0 0,pt 9 0 0\n", nullptr},
    {"BoreMarkedAsInches", 1,
     "PIPE\n    END-POINT 0 0 0 4\"\n    END-POINT 1000 0 0 4\" BW\n", PIPE_1000, nullptr},
    {"BoreThatIsNoNominalSizeIsTheDiameter", 1,
     "PIPE\n    END-POINT 0 0 0 118.5\n    END-POINT 1000 0 0 118.5\n",
     "c 0 0 0,1000 0 0,118.5\nl pt 0 0 0,pt 1000 0 0\n",
     "in.pcf:1: note: bores that are in no table are drawn as they are: 118.5\n"},
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
     "PIPE\n    END-POINT <0 0 1 100>\n    <END-POINT> <1000 0 1 100>\n",
     PIPE_1000 "c 0 0 1,1000 0 0,114.3\nl pt 0 0 1,pt 1000 0 0\n", nullptr},
    {"WholeFileIndented", 1,
     "  PIPE\n      END-POINT 0 0 0 100\n      END-POINT 1000 0 0 100\n", PIPE_1000, nullptr},
    {"NothingIndented", 2,
     "PIPE\nEND-POINT 0 0 0 100\nSKEY PIPE\nITEM-CODE 1\nEND-POINT 1000 0 0 100\n"
     "PIPE\nEND-POINT 0 0 1 100\nEND-POINT 1000 0 1 100\n",
     PIPE_1000 "c 0 0 1,1000 0 0,114.3\nl pt 0 0 1,pt 1000 0 0\n", nullptr},
    {"APlaceThatIsNotIndentedBelongsToTheComponentAbove", 2,
     "PIPE\n END-POINT 0 0 0 100\nEND-POINT 1000 0 0 100\nPIPE\n END-POINT 0 0 1 100\n END-POINT 1000 0 1 100\n",
     PIPE_1000 "c 0 0 1,1000 0 0,114.3\nl pt 0 0 1,pt 1000 0 0\n",
     "in.pcf:3: note: END-POINT: expected to be indented; taken as a part of the component above\n"},
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
    {"ABalloonIsAPointAndItsText", 1, "INSTRUMENT-BALLOON\n    CO-ORDS 1 2 3\n    TEXT FT-1\n",
     "l pt 1 2 3\nx 1 2 3,1 0 0,0 0 1,50,30,1,4\nx FT-1\n", nullptr},
    {"FurtherEndsOfAPipeAreNamed", 1,
     "PIPE\n END-POINT 0 0 0 100\n END-POINT 1000 0 0 100\n END-POINT 500 90 0 50\n",
     "c 0 0 0,1000 0 0,114.3\nc 500 0 0,0 90 0,60.3\nl pt 0 0 0,pt 1000 0 0\nl pt 500 0 0,pt 0 90 0\n",
     "in.pcf:1: warning: PIPE: expected two END-POINTs, found more; those are drawn from its middle\n"},
    {"AComponentMayHaveManyPorts", 1,
     "MULTI-PORT-COMPONENT\n END-POINT 0 0 0 100\n END-POINT 90 0 0 100\n END-POINT 45 90 0 50\n CENTRE-POINT 45 0 0\n",
     "c 0 0 0,90 0 0,114.3\nc 45 0 0,0 90 0,60.3\nl pt 0 0 0,pt 90 0 0\nl pt 45 0 0,pt 0 90 0\n", nullptr},
    {"PipeWithTwoBoresIsACone", 1, "PIPE\n END-POINT 0 0 0 100\n END-POINT 90 0 0 50\n",
     "n 0 0 0,90 0 0,114.3,60.3\nl pt 0 0 0,pt 90 0 0\n",
     "in.pcf:1: warning: PIPE: its ends have different bores; drawn as a cone\n"},
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
     "c 0 0 0,300 0 0,114.3\nl pt 0 0 0,pt 100 0 0\nl pt 100 0 0,pt 200 0 0\n",
     "in.pcf:1: warning: ELBOW: has its points on one line; drawn straight\n"},
    {"FoldedElbowIsDrawnAsStraightPieces", 1,
     "ELBOW\n END-POINT 0 0 0 100\n END-POINT 50 0 0 100\n CENTRE-POINT 100 0 0\n",
     "c 0 0 0,100 0 0,114.3\nc 100 0 0,-50 0 0,114.3\nl pt 0 0 0,pt 100 0 0\nl pt 100 0 0,pt -50 0 0\n",
     "in.pcf:1: warning: ELBOW: turns back on its own line; drawn straight\n"},
    {"ArcNarrowerThanThePipeIsAMitre", 1,  // R = 50 is less than 114.3 / 2
     "ELBOW\n END-POINT 0 0 0 100\n END-POINT 50 50 0 100\n CENTRE-POINT 50 0 0\n",
     "c 0 0 0,50 0 0,114.3\nc 50 0 0,0 50 0,114.3\nl pt 0 0 0,pt 50 0 0\nl pt 50 0 0,pt 0 50 0\n",
     "in.pcf:1: warning: ELBOW: its arc is tighter than its pipe; drawn with a corner\n"},
    {"HalfTurnByItsFarthestPointAndTheLineThatArrivesAcross", 2,  // ends 200 apart, R = 100 about their middle
     "PIPE\n END-POINT -500 0 0 50\n END-POINT 0 0 0 50\n"
     "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n CENTRE-POINT 100 100 0\n ANGLE 18000\n",
     "c -500 0 0,500 0 0,60.3\nl pt -500 0 0,pt 500 0 0\n"
     "t 0 100 0,0 -100 0,100 0 0,60.3\nt 0 100 0,100 0 0,0 100 0,60.3\n"
     "l pt 0 0 0,pt 100 0 0\nl pt 100 0 0,pt 0 200 0\nl pt 100 200 0,pt -100 0 0\n", nullptr},
    {"TheAngleAloneIsNoHalfTurn", 1,  // t = 100 sqrt 2, a quarter of R = t about (-100, 100)
     "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n CENTRE-POINT 100 100 0\n ANGLE 18000\n",
     "t -100 100 0,100 -100 0,100 100 0,60.3\nl pt 0 0 0,pt 100 100 0\nl pt 100 100 0,pt -100 100 0\n",
     "in.pcf:1: note: BEND: its ANGLE is not that of its points, which are drawn: 180 and 90\n"},
    {"HalfTurnByTheLineThatArrivesAcross", 2,
     "PIPE\n END-POINT -500 0 0 50\n END-POINT 0 0 0 50\n"
     "BEND\n END-POINT 0 0 0 50\n END-POINT 0 200 0 50\n CENTRE-POINT 0 100 0\n",
     "c -500 0 0,500 0 0,60.3\nl pt -500 0 0,pt 500 0 0\n"
     "t 0 100 0,0 -100 0,100 0 0,60.3\nt 0 100 0,100 0 0,0 100 0,60.3\n"
     "l pt 0 0 0,pt 100 0 0\nl pt 100 0 0,pt 0 200 0\nl pt 100 200 0,pt -100 0 0\n", nullptr},
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
     "in.pcf:1: warning: TEE: has no branch\n"
     "in.pcf:4: warning: TEE: expected a CENTRE-POINT; the branch leaves the run at its foot\n"},

    // ---- reducers, flanges, valves
    {"ConcentricReducer", 1,
     "REDUCER-CONCENTRIC\n END-POINT 0 0 0 100\n END-POINT 90 0 0 50\n",
     "n 0 0 0,90 0 0,114.3,60.3\nl pt 0 0 0,pt 90 0 0\n", nullptr},
    // Class 150: 230 wide. A leg of 100 begins with a disc of 0.15 x 114.3 = 17.145.
    {"EndsOfAValveByItsSkey", 1,
     "VALVE\n END-POINT 0 0 0 100\n END-POINT 200 0 0 100\n SKEY VVFL\n",
     "c 0 0 0,17.145 0 0,230\nn 17.145 0 0,82.855 0 0,114.3,0\nc 200 0 0,-17.145 0 0,230\nn 182.855 0 0,-82.855 0 0,114.3,0\n"
     "l pt 0 0 0,pt 100 0 0\nl pt 200 0 0,pt -100 0 0\n", nullptr},
    {"CodesOfEndsComeBeforeTheSkey", 1,
     "VALVE\n END-POINT 0 0 0 100 BW\n END-POINT 200 0 0 100 SW\n SKEY VVFL\n",
     "n 0 0 0,100 0 0,114.3,0\nl pt 0 0 0,pt 100 0 0\nn 200 0 0,-100 0 0,114.3,0\nl pt 200 0 0,pt -100 0 0\n", nullptr},
    // The wafer is 0.5 x 114.3 long and as wide as (114.3 + 230) / 2.
    {"ButterfliesAreHeldBetweenFlangesOfOthers", 1,
     "VALVE\n END-POINT 0 0 0 100\n END-POINT 200 0 0 100\n SKEY VYFL\n",
     "c 0 0 0,71.425 0 0,114.3\nc 71.425 0 0,28.575 0 0,172.15\nc 200 0 0,-71.425 0 0,114.3\nc 128.575 0 0,-28.575 0 0,172.15\n"
     "l pt 0 0 0,pt 100 0 0\nl pt 200 0 0,pt -100 0 0\n", nullptr},
    {"WeldedBySkey", 1,
     "VALVE\n END-POINT 0 0 0 100\n END-POINT 200 0 0 100\n SKEY VVBW\n",
     "n 0 0 0,100 0 0,114.3,0\nl pt 0 0 0,pt 100 0 0\nn 200 0 0,-100 0 0,114.3,0\nl pt 200 0 0,pt -100 0 0\n", nullptr},
    // ---- what stands at one place
    {"WeldIsAPoint", 2, "WELD\n CO-ORDS 1 2 3 100\nWELD\n END-POINT 4 5 6 100\n END-POINT 4 5 6 100\n",
     "l pt 1 2 3\nl pt 4 5 6\n", nullptr},
    // in its middle
    {"WeldOfAGapWithoutABoreIsAPoint", 1, "WELD\n END-POINT 4 5 6\n END-POINT 10 5 6\n", "l pt 7 5 6\n", nullptr},
    {"WeldOfAGapIsClosed", 1, "WELD\n END-POINT 4 5 6 100\n END-POINT 10 5 6 100\n",
     "c 4 5 6,6 0 0,114.3\nl pt 4 5 6,pt 6 0 0\n", nullptr},
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
     "in.pcf:1: error: PIPE not drawn: has no length\n"
     "in.pcf:4: error: GASKET not drawn: nothing shows in which direction it lies\n"
     "in.pcf:7: error: ELBOW not drawn: has no length\n"},
    {"MissingEnds", 3, "PIPE\n END-POINT 0 0 0 100\nPIPE\nWELD\n CO-ORDS 0 0 0\n", "l pt 0 0 0\n",
     "in.pcf:1: error: PIPE not drawn: expected two ends\n"
     "in.pcf:3: error: PIPE not drawn: it has no points\n"},
    {"ElbowWithoutCentre", 1, "ELBOW\n END-POINT 0 0 0 100\n END-POINT 9 9 0 100\n", "",
     "in.pcf:1: error: ELBOW not drawn: expected a CENTRE-POINT, found none\n"},
    {"NoBore", 1, "PIPE\n END-POINT 0 0 0\n END-POINT 9 9 0 0\n", "",
     "in.pcf:1: error: PIPE not drawn: expected a bore after a point, found none\n"},
    {"MessageWithoutText", 1, "MESSAGE-CIRCLE\n CO-ORDS 0 0 0\n", "",
     "in.pcf:1: note: MESSAGE-CIRCLE: has no text\n"},
    {"MessageWithoutAPlaceIsAtTheNextComponent", 2, "MESSAGE-CIRCLE\n TEXT A\nWELD\n CO-ORDS 4 5 6\n",
     "x 4 5 6,1 0 0,0 0 1,50,30,1,1\nx A\nl pt 4 5 6\n", nullptr},
    {"MessageThatNothingFollows", 2, "WELD\n CO-ORDS 4 5 6\nMESSAGE-CIRCLE\n TEXT A\n", "l pt 4 5 6\n",
     "in.pcf:3: note: MESSAGE-CIRCLE: has no place, and no component follows\n"},
    // The end that lies on the pipe is where the leg begins.
    {"OletOfTwoEndsOnAPipe", 2,
     "OLET\n END-POINT 0 50 0 20\n END-POINT 0 150 0 20\nPIPE\n END-POINT 0 50 0 100\n END-POINT 1000 50 0 100\n",
     "c 0 50 0,0 100 0,26.7\nl pt 0 50 0,pt 0 100 0\nc 0 50 0,1000 0 0,114.3\nl pt 0 50 0,pt 1000 0 0\n",
     "in.pcf:1: warning: OLET: expected a CENTRE-POINT and a BRANCH1-POINT; drawn from end to end\n"},
    {"OletOfTwoEndsTheOtherWayRound", 2,
     "OLET\n END-POINT 0 150 0 20\n END-POINT 0 50 0 20\nPIPE\n END-POINT 0 50 0 100\n END-POINT 1000 50 0 100\n",
     "c 0 50 0,0 100 0,26.7\nl pt 0 50 0,pt 0 100 0\nc 0 50 0,1000 0 0,114.3\nl pt 0 50 0,pt 1000 0 0\n",
     "in.pcf:1: warning: OLET: expected a CENTRE-POINT and a BRANCH1-POINT; drawn from end to end\n"},
    {"OletOfACentreAndAnEnd", 1, "OLET\n END-POINT 0 50 0 20\n CENTRE-POINT 0 0 0\n",
     "c 0 0 0,0 50 0,26.7\nl pt 0 0 0,pt 0 50 0\n", nullptr},
    {"OletOfOneEnd", 1, "OLET\n END-POINT 0 50 0 20\n", "", "in.pcf:1: error: OLET not drawn: expected a CENTRE-POINT and a BRANCH1-POINT\n"},
    {"UnknownComponentWithNothingToGoBy", 1, "FOO-BAR\n CENTRE-POINT 0 0 0\n", "",
     "in.pcf:1: error: FOO-BAR not drawn: expected two ends\n"},
    {"AWordWithAValueAndNoPlaceIsAHeader", 1, "PIPE-TYPE 3\nWELD\n CO-ORDS 0 0 0\n", "l pt 0 0 0\n",
     "in.pcf:1: note: unknown word, taken as a header: \"PIPE-TYPE\"\n"},
    {"AnEndWithoutAPlaceIsNothing", 2, "END-POSITION-OPEN\nWELD\n CO-ORDS 0 0 0\n", "l pt 0 0 0\n", nullptr},
    {"AnUnknownWordWithoutAPlaceIsAHeader", 1, "FOO 51\n BAR 1\nFOO\nBAR\nWELD\n CO-ORDS 0 0 0\n", "l pt 0 0 0\n",
     "in.pcf:1: note: unknown word, taken as a header: \"FOO\" (3 times, also in.pcf:3, in.pcf:4)\n"},
    {"DecimalComma", 1, "PIPE\n END-POINT 1,5 0 0 100\n END-POINT 9 0 0 100\n", "",
     "in.pcf:2: error: END-POINT: expected a number as x, found \"1,5\"\n"},
    {"TooFewCoordinates", 1, "WELD\n CO-ORDS 1 2\n", "",
     "in.pcf:2: error: CO-ORDS: expected three co-ordinates (x y z), found only two\n"},
    {"WordsThatAreNumbersToOthers", 5,
     "WELD\n CO-ORDS nan 0 0\nWELD\n CO-ORDS 0 inf 0\nWELD\n CO-ORDS 0 0 0x10\nWELD\n CO-ORDS 1e999 0 0\n"
     "WELD\n CO-ORDS 0 0 1e300\n", "",
     "in.pcf:2: error: CO-ORDS: expected a number as x, found \"nan\" (2 times, also in.pcf:8)\n"
     "in.pcf:4: error: CO-ORDS: expected a number as y, found \"inf\"\n"},
    {"BadBoreIsReportedAndTheOtherTaken", 1, "PIPE\n END-POINT 0 0 0 1OO\n END-POINT 1000 0 0 100\n", PIPE_1000,
     "in.pcf:2: warning: END-POINT: expected a bore (a number, 0 or more) as fourth value, found \"1OO\"\n"},
    {"NegativeBore", 1, "PIPE\n END-POINT 0 0 0 -100\n END-POINT 1000 0 0 100\n", PIPE_1000,
     "in.pcf:2: warning: END-POINT: expected a bore (a number, 0 or more) as fourth value, found \"-100\"\n"},
    {"WhatStandsBehindTheBoreIsNoMatter", 1, "PIPE\n END-POINT 0 0 0 100 7\n END-POINT 1000 0 0 100\n", PIPE_1000,
     nullptr},
    {"PlaceBeforeAnyComponent", 1, "    END-POINT 0 0 0 100\nWELD\n    CO-ORDS 0 0 0\n", "l pt 0 0 0\n",
     "in.pcf:1: error: END-POINT: expected a component before it\n"},
};
// clang-format on

class Drawings : public testing::TestWithParam<DrawingCase> {};

TEST_P(Drawings, GiveTheseRecords) {
  const DrawingCase& row = GetParam();
  const PcfRun run = runPcf(row.file);
  expectRecords(run.records, linesOf(row.records));
  EXPECT_EQ(run.components, row.components);
  EXPECT_EQ(run.drawn + run.inPart + run.nothing + run.notDrawn, row.components);
  const std::string said = run.messageText();
  if (row.message == nullptr) {
    EXPECT_EQ(said, "");
    return;
  }
  EXPECT_NE(said.find(row.message), std::string::npos) << said;
  const bool isNote = std::string(row.message).find(": note: ") != std::string::npos;
  EXPECT_EQ(run.errors + run.warnings == 0, isNote) << said;
}

struct SpindleCase {
  const char* attribute;
  const char* way;  // of the stem; null: there is none
  bool hasWheel;
};

constexpr SpindleCase kSpindles[] = {
    {"SPINDLE-DIRECTION NORTH", "0 91.44 0", true},
    {"SPINDLE-DIRECTION SOUTH", "0 -91.44 0", true},
    {"SPINDLE-DIRECTION UP", "0 0 91.44", true},
    {"SPINDLE-DIRECTION DOWN", "0 0 -91.44", true},
    {"SPINDLE-DIRECTION n", "0 91.44 0", true},
    {"SPINDLE-DIRECTION S", "0 -91.44 0", true},
    {"SPINDLE-DIRECTION U", "0 0 91.44", true},
    {"SPINDLE-DIRECTION D", "0 0 -91.44", true},
    // Half a right angle: 91.44 / sqrt 2.
    {"SPINDLE-DIRECTION NORTH-UP", "0 64.657844 64.657844", true},
    {"SPINDLE-DIRECTION SOUTH DOWN", "0 -64.657844 -64.657844", true},
    {"ACTUATOR HANDWHEEL UP", "0 0 91.44", true},
    // Below a lever it is 0.95 of 114.3 long.
    {"OPERATOR LEVER SOUTH", "0 -108.585 0", false},
    {"SPINDLE-DIRECTION NORTH\n ACTUATOR LEVER UP", "0 108.585 0", false},
    {"ACTUATOR LEVER UP\n SPINDLE-DIRECTION NORTH", "0 108.585 0", false},
    {"OPERATOR MOTOR", nullptr, false},
};

// A gate valve of 114.3 from 0 to 200 along x; its stem begins in the middle. Below a handwheel it
// is 0.8 of 114.3 long and 0.4 of it wide, below a lever 0.25.
// The corners of the bodies that lie in the plane of an end are on its circle or its centre.
TEST(TaperedBends, HaveTheBoresOfTheirEnds) {
  const PcfRun run =
      runPcf("ELBOW\n END-POINT 0 0 0 100\n END-POINT 500 500 0 150\n CENTRE-POINT 500 0 0\n");
  double atStart = 0.0;
  double atEnd = 0.0;
  for (const std::string& record : run.recordsOf('r')) {
    const std::vector<double> numbers = numbersOf(record);
    ASSERT_EQ(numbers.size(), 24U);
    for (std::size_t k = 0; k < 8; ++k) {
      double p[3];
      for (std::size_t i = 0; i < 3; ++i) p[i] = numbers[i] + (k == 0 ? 0.0 : numbers[3 * k + i]);
      if (std::fabs(p[0]) < 1e-3) atStart = std::max(atStart, std::hypot(p[1], p[2]));
      if (std::fabs(p[1] - 500) < 1e-3) atEnd = std::max(atEnd, std::hypot(p[0] - 500, p[2]));
    }
  }
  // DN 100 is 114.3 wide, DN 150 168.3.
  EXPECT_NEAR(atStart, 57.15, 1e-3);
  EXPECT_NEAR(atEnd, 84.15, 1e-3);
}

TEST(Spindles, PointAsTheFileSays) {
  for (const SpindleCase& row : kSpindles) {
    const PcfRun run = runPcf("VALVE\n END-POINT 0 0 0 100\n END-POINT 200 0 0 100\n SKEY VVBW\n " +
                              std::string(row.attribute) + '\n');
    const std::string text = "100 0 0," + std::string(row.way == nullptr ? "" : row.way);
    bool isFound = false;
    for (const std::string& record : run.recordsOf('c'))
      isFound =
          isFound || record.find(text + (row.hasWheel ? ",45.72" : ",28.575")) != std::string::npos;
    EXPECT_EQ(isFound, row.way != nullptr) << row.attribute;
    EXPECT_EQ(run.recordsOf('t').size(), row.hasWheel ? 3U : 0U) << row.attribute;
    EXPECT_EQ(run.messageText(), "") << row.attribute;
  }
}

INSTANTIATE_TEST_SUITE_P(Pcf, Drawings, testing::ValuesIn(kDrawings),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
