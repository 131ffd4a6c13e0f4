// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

#include "pcf/Attributes.h"
#include "pcf/PcfRun.h"

// What the lines of a file belong to, and what is said of those that can't be taken.
namespace {

struct ReadingCase {
  const char* name;
  std::string file;
  std::uint64_t components;
  std::uint64_t drawn;
  std::size_t messages;
  const char* said;  // part of them
};

void PrintTo(const ReadingCase& row, std::ostream* out) { *out << row.name; }

#define PIPE_9 "PIPE\n    END-POINT 0 0 0 100\n    END-POINT 9 0 0 100\n"
#define PIPE_20 "PIPE\n    END-POINT 9 0 0 100\n    END-POINT 20 0 0 100\n"
#define FLAT_9 "PIPE\nEND-POINT 0 0 0 100\nEND-POINT 9 0 0 100\n"
#define FLAT_20 "PIPE\nEND-POINT 9 0 0 100\nEND-POINT 20 0 0 100\n"
#define QUARTER "    END-POINT 0 0 0 100\n    END-POINT 152 152 0 100\n    CENTRE-POINT 152 0 0\n"

// clang-format off
const ReadingCase kReadings[] = {
    // ---- lines between the margin of components and that of their points
    {"AComponentBetweenHasPointsBelow", PIPE_9 "  PIPE\n    END-POINT 9 0 0 100\n    END-POINT 20 0 0 100\n", 2, 2, 0, ""},
    {"AWordBetweenWithoutPointsIsAnAttribute", PIPE_9 "  CAP\n    SKEY CPBW\n", 1, 1, 0, ""},
    {"AnAttributeBetweenIsOne", PIPE_9 "  SKEY PIPW\n" PIPE_20, 2, 2, 0, ""},
    {"AWordWithAValueBetweenIsAnAttribute", PIPE_9 "  PIPE 6 INCH\n    END-POINT 30 0 0 100\n", 1, 1, 3, "expected two END-POINTs, found more"},
    {"AWordOfMaterialsBetweenIsNone", PIPE_9 "MATERIALS\nITEM-CODE C\n  PIPE\n    DESCRIPTION PIPE\n", 1, 1, 0, ""},
    {"AComponentBetweenBehindMaterialsIsOne", PIPE_9 "MATERIALS\nITEM-CODE C\n  PIPE\n    END-POINT 9 0 0 100\n    END-POINT 20 0 0 100\n", 2, 2, 0, ""},
    {"AComponentBehindMaterialsIsOne", PIPE_9 "MATERIALS\nITEM-CODE C\n" PIPE_20, 2, 2, 0, ""},
    {"AWordOfMaterialsIsNone", PIPE_9 "MATERIALS\nITEM-CODE C\nPIPE\n    DESCRIPTION PIPE\n", 1, 1, 0, ""},
    // ---- at the margin
    {"AnAttributeAtTheMarginIsOfTheComponentAbove", PIPE_9 "SKEY PIPW\n" PIPE_20, 2, 2, 0, ""},
    {"AnAttributeBeforeAllIsPassedOver", "SKEY PIPW\n" PIPE_9, 1, 1, 0, ""},
    {"APointAtTheMarginIsOfTheComponentAbove", "PIPE\n    END-POINT 0 0 0 100\nEND-POINT 9 0 0 100\n" PIPE_20 PIPE_20, 3, 2, 2, "note: END-POINT: expected to be indented; taken as a part of the component above"},
    {"ALineOfAnotherLanguageIsPassedOver", "<HEAD\n" PIPE_9 "<TAIL\n", 1, 1, 0, ""},
    {"AnAttributesNameWithEndsIsAComponent", PIPE_9 "FLOW-METER\n\n! here\n    END-POINT 9 0 0 100\n    END-POINT 20 0 0 100\n", 2, 2, 1, "warning: FLOW-METER: unknown component"},
    {"AnAttributesNameAtTheEndIsNone", PIPE_9 "FLOW-METER\n", 1, 1, 0, ""},
    {"AnAttributesNameBeforeARemarkAtTheEndIsNone", PIPE_9 "FLOW-METER\n\n! the end\n", 1, 1, 0, ""},
    {"PipelineWithoutAName", "PIPELINE-REFERENCE\n" PIPE_9, 1, 1, 1, "note: PIPELINE-REFERENCE: expected the reference of a pipeline, found none"},
    {"PipelineWithoutANameBelowAComponent", PIPE_9 "    PIPELINE-REFERENCE\n", 1, 1, 0, ""},
    // ---- a file that indents nothing
    {"TextOfAMessageAtTheEnd", FLAT_9 "MESSAGE-CIRCLE\nWELD\n", 2, 1, 1, "note: MESSAGE-CIRCLE: has no place, and no component follows"},
    {"TextOfAMessageBeforeRemarks", FLAT_9 "MESSAGE-CIRCLE\nWELD\n\n! here\n" FLAT_20, 3, 3, 0, ""},
    {"TextOfAMessageBeforeMaterials", FLAT_9 "MESSAGE-CIRCLE\nWELD\nMATERIALS\nITEM-CODE C\n", 2, 1, 1, "has no place"},
    {"AWeldBelowAMessageHasAPlace", FLAT_9 "MESSAGE-CIRCLE\nWELD\nCO-ORDS 5 0 0\n", 3, 2, 1, "note: MESSAGE-CIRCLE: has no text"},
    {"HeaderInTheMiddle", FLAT_9 "AREA 51\n" FLAT_20, 2, 2, 0, ""},
    {"UnknownWordsWithPoints", FLAT_9 "FOO\nEND-POINT 9 0 0 100\nEND-POINT 20 0 0 100\n", 2, 2, 1, "warning: FOO: unknown component"},
    {"MaterialsAndAComponent", FLAT_9 "MATERIALS\nITEM-CODE C\nDESCRIPTION PIPE\n" FLAT_20, 2, 2, 0, ""},
    {"MaterialsAndAPipeline", FLAT_9 "MATERIALS\nITEM-CODE C\nPIPELINE-REFERENCE Q\n" FLAT_20, 2, 2, 0, ""},
    {"MaterialsAndAnotherFile", FLAT_9 "MATERIALS\nITEM-CODE C\nISOGEN-FILES X\n" FLAT_20, 2, 2, 0, ""},
    {"MaterialsAndUnits", FLAT_9 "MATERIALS\nITEM-CODE C\nUNITS-BORE MM\n" FLAT_20, 2, 2, 0, ""},
    {"APipelineOfAMark", FLAT_9 "END-CONNECTION-PIPELINE\nCO-ORDS 9 0 0\nPIPELINE-REFERENCE Q\n" FLAT_20, 3, 3, 0, ""},
    // ---- units
    {"UnitOfBoresThatIsNone", "UNITS-BORE FURLONG\n" PIPE_9, 1, 1, 1, "error: UNITS-BORE: taken as millimetres; expected MM or INCH, found \"FURLONG\""},
    {"LongWordsAreCut", "UNITS-CO-ORDS " + std::string(50, 'A') + "\n" PIPE_9, 1, 1, 1, "found \"AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA...\""},
    {"ControlCharactersAreShownAsMarks", "UNITS-CO-ORDS A\x7F\x01Z\n" PIPE_9, 1, 1, 1, "found \"A?\?Z\""},
    {"UnitsBehindMaterials", PIPE_9 "MATERIALS\nITEM-CODE C\nUNITS-BORE MM\n" PIPE_20, 2, 2, 0, ""},
    {"InchesWithoutAnyBore", "UNITS-CO-ORDS INCH\nPIPE\n    END-POINT 0 0 0\n    END-POINT 9 0 0\n", 1, 0, 1, "error: PIPE not drawn: expected a bore after a point"},
    {"InchesWithOneBore", "UNITS-CO-ORDS INCH\nPIPE\n    END-POINT 0 0 0\n    END-POINT 9 0 0 6\n", 1, 1, 1, "note: no UNITS-BORE: bores are in inches"},
    // ---- numbers of bends
    {"AngleThatIsNoNumber", "BEND\n" QUARTER "    ANGLE right\n", 1, 1, 0, ""},
    {"AngleOfZero", "BEND\n" QUARTER "    ANGLE 0\n", 1, 1, 0, ""},
    {"RadiusThatIsNoNumber", "BEND\n" QUARTER "    BEND-RADIUS long\n", 1, 1, 0, ""},
    {"RadiusBelowZero", "BEND\n" QUARTER "    BEND-RADIUS -300\n", 1, 1, 0, ""},
    {"RadiusBeyondAllPlants", "BEND\n" QUARTER "    BEND-RADIUS 1e11\n", 1, 1, 0, ""},
    {"OfTwoRadiiTheFirst", "BEND\n" QUARTER "    BEND-RADIUS 152\n    BEND-RADIUS 300\n", 1, 1, 0, ""},
    {"OfTwoRadiiTheFirstIsWrong", "BEND\n" QUARTER "    BEND-RADIUS 300\n    BEND-RADIUS 152\n", 1, 1, 1, "which are drawn: 300 and 152"},
    // A hundredth of 152 is 1.52.
    {"RadiusWithinAHundredth", "BEND\n" QUARTER "    BEND-RADIUS 153.5\n", 1, 1, 0, ""},
    {"RadiusBelowWithinAHundredth", "BEND\n" QUARTER "    BEND-RADIUS 150.5\n", 1, 1, 0, ""},
    {"RadiusBeyondAHundredth", "BEND\n" QUARTER "    BEND-RADIUS 153.6\n", 1, 1, 1, "which are drawn: 153.6 and 152"},
    {"RadiusBelowByMoreThanAHundredth", "BEND\n" QUARTER "    BEND-RADIUS 150.4\n", 1, 1, 1, "which are drawn: 150.4 and 152"},
    {"RadiusInInches", "BEND\n" QUARTER "    BEND-RADIUS 5.984252\"\n", 1, 1, 0, ""},  // 152 / 25.4
    // The word without points is none, and neither is its radius the bend's.
    {"RadiusBelowAnUnknownWord", "FOO\n    BEND-RADIUS 300\nBEND\n" QUARTER "    BEND-RADIUS 152\n", 1, 1, 1, "unknown word, taken as a header"},
    // ---- messages and marks
    {"MessageOfMoreThan512Bytes", "MESSAGE-CIRCLE\n    CO-ORDS 0 0 0\n    TEXT " + std::string(600, 'x') + "\n" PIPE_9, 2, 2, 1, "note: MESSAGE-CIRCLE: its text is cut off after 512 bytes"},
    {"MarkWithoutAPlace", PIPE_9 "END-CONNECTION-PIPELINE\n    PIPELINE-REFERENCE Q\n", 2, 1, 0, ""},
    {"BodyWithoutPoints", PIPE_9 "CAP\n    SKEY CPBW\n", 2, 1, 1, "error: CAP not drawn: it has no points"},
    {"BodyWithOnePointThatIsNone", PIPE_9 "    CENTRE-POINT 1 2\n", 1, 0, 2, "error: PIPE drawn in part: one of its points can't be read"},
    {"WeldAtOneEnd", PIPE_9 "WELD\n    END-POINT 9 0 0 100\n", 2, 2, 0, ""},
    {"WeldOfThreeEnds", PIPE_9 "WELD\n    END-POINT 9 0 0 100\n    END-POINT 9 0 0 100\n    END-POINT 9 0 0 100\n", 2, 2, 0, ""},
    {"TheSameWeldTwice", PIPE_9 "WELD\n    CO-ORDS 9 0 0\nWELD\n    CO-ORDS 9 0 0\n", 3, 2, 0, ""},
    {"AttributesOfAMessageAreNoText", "MESSAGE-CIRCLE\n    CO-ORDS 9 0 0\n    UCI 5\n    STATUS X\n    NOMINAL-CLASS 150\n    ITEM-CODE X\n" PIPE_9, 2, 1, 1, "note: MESSAGE-CIRCLE: has no text"},
    {"TextOfAMessageThatIsEmpty", "MESSAGE-CIRCLE\n    CO-ORDS 9 0 0\n    TEXT\n" PIPE_9, 2, 2, 0, ""},
    {"KeyOfNothing", PIPE_9 "    SKEY\n", 1, 1, 0, ""},
    {"APipelineBelowAHeader", "AREA 5\n    PIPELINE-REFERENCE Q\n" PIPE_9, 1, 1, 0, ""},
    {"ABendOfOneEnd", "BEND\n    END-POINT 0 0 0 100\n", 1, 0, 1, "error: BEND not drawn: expected two ends"},
    {"MessageBetweenMessagesStandsAtTheNextComponent", "MESSAGE-CIRCLE\n    TEXT A\nMESSAGE-CIRCLE\n    TEXT B\n    CO-ORDS 5 5 5\n" PIPE_9, 3, 3, 0, ""},
};
// clang-format on

class Readings : public testing::TestWithParam<ReadingCase> {};

TEST_P(Readings, TellWhatIsDrawnAndSaid) {
  const ReadingCase& row = GetParam();
  const PcfRun run = runPcf(row.file);
  EXPECT_EQ(run.components, row.components) << run.messageText();
  EXPECT_EQ(run.drawn, row.drawn) << run.messageText();
  EXPECT_EQ(run.messages.size(), row.messages) << run.messageText();
  EXPECT_NE(run.messageText().find(row.said), std::string::npos) << run.messageText();
}

INSTANTIATE_TEST_SUITE_P(Pcf, Readings, testing::ValuesIn(kReadings),
                         [](const auto& row) { return std::string(row.param.name); });

struct PointCase {
  const char* text;  // behind END-POINT
  const char* said;  // nullptr: nothing
};

// Ten thousand kilometres are 1e10 mm.
TEST(Points, ThatCannotBeReadAreSaid) {
  static constexpr PointCase kRows[] = {
      {"", "END-POINT: expected three co-ordinates (x y z), found none"},
      {"1", "END-POINT: expected three co-ordinates (x y z), found only one"},
      {"1 2", "END-POINT: expected three co-ordinates (x y z), found only two"},
      {"a 2 3", "END-POINT: expected a number as x, found \"a\""},
      {"1 b 3", "END-POINT: expected a number as y, found \"b\""},
      {"1 2 c", "END-POINT: expected a number as z, found \"c\""},
      {"1 2 3x", "END-POINT: expected a number as z, found \"3x\""},
      {"1.001e10 2 3 100",
       "END-POINT: expected x within ten thousand kilometres, found \"1.001e10\""},
      {"1 -1.001e10 3 100",
       "END-POINT: expected y within ten thousand kilometres, found \"-1.001e10\""},
      {"1 2 1.001e10 100",
       "END-POINT: expected z within ten thousand kilometres, found \"1.001e10\""},
      {"9.99e9 2 3 100", nullptr},
      {"1 -9.99e9 3 100", nullptr},
      {"1 2 9.99e9 100", nullptr},
  };
  for (const PointCase& row : kRows) {
    const PcfRun run =
        runPcf("PIPE\n    END-POINT 0 0 0 100\n    END-POINT " + std::string(row.text) + "\n");
    if (row.said == nullptr) {
      EXPECT_EQ(run.errors, 0U) << run.messageText();
    } else {
      EXPECT_NE(run.messageText().find("in.pcf:3: error: " + std::string(row.said) + '\n'),
                std::string::npos)
          << row.text << ": " << run.messageText();
    }
  }
}

struct EndCase {
  const char* name;
  const char* bore;     // behind the first end; the second has 100
  const char* outside;  // of the pipe
  bool isWarned;
};

void PrintTo(const EndCase& row, std::ostream* out) { *out << row.name; }

// Bores 100 and 1 1/2 inches are 114.3 and 48.3 wide. What is no bore is as if there were none,
// and the other end's is taken.
// clang-format off
const EndCase kEnds[] = {
    {"Bore",                 "100",        "114.3",  false},
    {"BoreAndEnd",           "100 BW",     "114.3",  false},
    {"BoreAndEndTogether",   "100bw",      "114.3",  false},
    {"EndAlone",             "BW",         "114.3",  false},
    {"WordAlone",            "FLGD",       "114.3",  false},
    {"Nothing",              "",           "114.3",  false},
    {"InchesAndAFraction",   "1 1/2\"",    "48.3,114.3", false},
    {"InchesAndAMarkBefore", "1\" 1/2",    "48.3,114.3", false},
    {"DecimalsAndAFraction", "100.5 1/2",  "100.5,114.3", false},
    {"LetterForAZero",       "1OO",        "114.3",  true},
    {"OneLetterForAZero",    "10O",        "114.3",  true},
    {"DigitInTheEnd",        "6B1",        "114.3",  true},
    {"BracketInTheEnd",      "6[W",        "114.3",  true},
    {"BracketBehindTheEnd",  "6W[",        "114.3",  true},
    {"BraceInTheEnd",        "6{W",        "114.3",  true},
    {"BraceBehindTheEnd",    "6W{",        "114.3",  true},
    {"ThreeLetters",         "6BWX",       "114.3",  true},
    {"BelowZero",            "-5",         "114.3",  true},
    {"BeyondAllPlants",      "1e12",       "114.3",  true},
    {"SignOfANumber",        "#100",       "114.3",  true},
    {"Control",              "\x01\x02\x03", "114.3", false},
};
// clang-format on

class BoresOfEnds : public testing::TestWithParam<EndCase> {};

TEST_P(BoresOfEnds, AreNumbersWithOrWithoutTheEnd) {
  const EndCase& row = GetParam();
  const PcfRun run =
      runPcf("PIPE\n    END-POINT 0 0 0 " + std::string(row.bore) + "\n    END-POINT 9 0 0 100\n");
  ASSERT_EQ(run.records.size(), 2U) << run.messageText();
  EXPECT_TRUE(run.records[0].ends_with(std::string(",9 0 0,") + row.outside)) << run.records[0];
  const bool isWarned = run.messageText().find("expected a bore (a number") != std::string::npos;
  EXPECT_EQ(isWarned, row.isWarned) << run.messageText();
}

INSTANTIATE_TEST_SUITE_P(Pcf, BoresOfEnds, testing::ValuesIn(kEnds),
                         [](const auto& row) { return std::string(row.param.name); });

struct DescriptionCase {
  const char* name;
  const char* materials;
  const char* description;
};

TEST(Materials, DescribeTheItemsOfTheirCodes) {
  const DescriptionCase rows[] = {
      {"ByItsCode", "ITEM-CODE C-1\n    DESCRIPTION PIPE\n", "PIPE"},
      {"ByItsIdentifier", "MATERIAL-IDENTIFIER C-1\n    ITEM-DESCRIPTION PIPE\n", "PIPE"},
      {"OfTwoTheFirst", "ITEM-CODE C-1\n    DESCRIPTION PIPE\n    DESCRIPTION TUBE\n", "PIPE"},
      {"OfAnotherCode", "ITEM-CODE C-2\n    DESCRIPTION PIPE\n", ""},
      {"WithoutACode", "DESCRIPTION PIPE\n", ""},
      {"OfTheCodeAbove", "ITEM-CODE C-2\nITEM-CODE C-1\n    WEIGHT 5\n    DESCRIPTION PIPE\n",
       "PIPE"},
  };
  const std::vector<std::string> columns = Vesk::Pcf::sidecarColumns();
  const auto column = static_cast<std::size_t>(
      std::find(columns.begin(), columns.end(), "description") - columns.begin());
  for (const DescriptionCase& row : rows) {
    const PcfRun run = runPcf(PIPE_9 "    ITEM-CODE C-1\nMATERIALS\n" + std::string(row.materials));
    EXPECT_EQ(run.rows.at(0).values.at(column), row.description) << row.name;
  }
}

// The ends of 0 and 20 lie about 10.
// A support is as large as the pipe that it stands on, whatever stands behind its place: of DN 100
// a leg half as wide from 1.1 to 0.4 diameters below, 114.3 * 1.1 = 125.73 and 114.3 * 0.7 = 80.01.
TEST(Spots, AreAsLargeAsTheirPipe) {
  const char* const kPipe = "PIPE\n    END-POINT 0 0 0 100\n    END-POINT 1000 0 0 100\n";
  for (const char* place :
       {"CO-ORDS 500 0 0", "CO-ORDS 500 0 0 50", "CO-ORDS 500 67 0", "END-POINT 500 0 0 50"}) {
    const PcfRun run = runPcf(kPipe + std::string("SUPPORT\n    ") + place + "\n");
    const std::vector<double> leg = numbersOf(run.recordsOf('c').at(1));
    EXPECT_NEAR(leg[2], -125.73, 1e-3) << place;
    EXPECT_NEAR(leg[5], 80.01, 1e-3) << place;
    EXPECT_NEAR(leg[6], 57.15, 1e-3) << place;
  }
  // 57.15 + 10 from the axis is the furthest; beyond it has its own bore, of DN 50, 60.3, or 100.
  const auto widthAt = [&](const char* place) {
    const PcfRun run = runPcf(kPipe + std::string("SUPPORT\n    ") + place + "\n");
    return numbersOf(run.recordsOf('c').at(1)).back();
  };
  EXPECT_NEAR(widthAt("CO-ORDS 500 67.1 0 50"), 57.15, 1e-3);
  EXPECT_NEAR(widthAt("CO-ORDS 500 67.2 0 50"), 30.15, 1e-3);
  EXPECT_NEAR(widthAt("CO-ORDS 500 67.2 0"), 50, 1e-3);
  EXPECT_NEAR(widthAt("CO-ORDS -67.1 0 0"), 57.15, 1e-3);
  EXPECT_NEAR(widthAt("CO-ORDS -67.2 0 0"), 50, 1e-3);
}

// Its place belongs to the tap.
TEST(Spots, AreNotAtThePlaceOfATap) {
  const char* const kEnd = "    END-POINT 50 0 0 100\n";
  const char* const kTap = "    TAP-CONNECTION\n    CO-ORDS 70 80 90\n";
  const PcfRun alone = runPcf("INSTRUMENT\n" + std::string(kEnd));
  const PcfRun tapped = runPcf("INSTRUMENT\n" + std::string(kEnd) + kTap);
  ASSERT_FALSE(alone.records.empty());
  EXPECT_EQ(tapped.records, alone.records) << tapped.messageText();
  // Without the tap it would be its own.
  const PcfRun placed = runPcf("INSTRUMENT\n" + std::string(kEnd) + "    CO-ORDS 70 80 90\n");
  EXPECT_NE(placed.records, alone.records);
}

TEST(Spots, BetweenTwoEndsAreInTheMiddle) {
  const std::string pipe = "PIPE\n END-POINT -500 0 0 100\n END-POINT 500 0 0 100\n";
  const PcfRun ends =
      runPcf("SUPPORT\n END-POINT 0 0 0 100\n END-POINT 20 0 0 100\n SKEY GUID\n" + pipe);
  const PcfRun place = runPcf("SUPPORT\n CO-ORDS 10 0 0 100\n SKEY GUID\n" + pipe);
  EXPECT_EQ(ends.messageText(), "");
  EXPECT_EQ(ends.records, place.records);
}

// As many pipes as the search follows lie below the whole fitting; with one more its run is
// drawn beside them.
TEST(Olets, LieOnUpTo64PipesInARow) {
  for (const int count : {64, 65}) {
    std::string file =
        "OLET\n END-POINT 0 0 0 100\n END-POINT 200 0 0 100\n CENTRE-POINT 100 0 0\n"
        " BRANCH1-POINT 100 90 0 50\n";
    for (int i = 0; i < count; ++i) {
      file += "PIPE\n";
      for (const int k : {i, i + 1})
        file += " END-POINT " + std::to_string(200.0 * k / count) + " 0 0 100\n";
    }
    const PcfRun run = runPcf(file);
    // A leg, its line, and two of each pipe.
    EXPECT_EQ(run.records.size(), 2U + (count == 64 ? 0U : 2U) + 2U * static_cast<unsigned>(count));
  }
}

}  // namespace
