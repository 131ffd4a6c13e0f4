// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "check/FileCheck.h"
#include "findings/Catalogue.h"
#include "input/LineReader.h"
#include "input/ReaderTesting.h"

using namespace Vesk;
using namespace VeskTool;

namespace {

using Lines = std::vector<std::string>;

// "1:79-87 error V021" for each finding.
Lines found(const std::string& text, bool joints = false,
            const std::vector<std::string>& ignore = {}) {
  CheckOptions options;
  options.joints = joints;
  options.ignore = ignore;
  Lines lines;
  FileCheck check(options, [&](Finding&& finding) {
    std::string place = std::to_string(finding.line);
    if (finding.column > 0) place += ':' + std::to_string(finding.column);
    if (finding.endColumn > finding.column) place += '-' + std::to_string(finding.endColumn);
    lines.push_back(place + ' ' + std::string(nameOf(finding.severity)) + ' ' +
                    std::string(finding.code));
  });
  RecordFile file(std::make_unique<TextSource>(text), "f");
  check.run(file);
  return lines;
}

std::string columns(const std::string& keyword, const std::string& numbers) {
  return fixedLine("60", keyword, fields(numbers) + '\n');
}

std::string tokens(const std::string& keyword, const std::string& data) {
  return tokenLine("00", keyword, data + '\n');
}

std::string reducer(const std::string& first, const std::string& second) {
  return columns("RED", first) + fixedLine("61", "RED", fields(second) + '\n');
}

const std::string kCyl = tokens("c ", "1 2 3,0 0 1000,200");
const std::string kBox = tokens("b ", "10 0 0,1 1 1,0 20 0,0 0 30");
const std::string kText = tokens("x ", "1 2 3,1 0 0,0 1 0,2.5,0.5,5,2");

// A text of 600 characters needs a line of 621, which is more than 512 but no
// more than 512 and a heading of 21.
std::string longText(std::size_t length) {
  return tokens("x ", "1 2 3,1 0 0,0 1 0,2.5,0.5,5," + std::to_string(length)) +
         tokenLine("01", "x ", std::string(length, 'a') + '\n');
}

struct Row {
  const char* name;
  std::string text;
  Lines findings;
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }

// Columns from 1. In columns number k stands in 25 + 9 k to 33 + 9 k; in tokens
// the data begin at 22.
const Row kRows[] = {
    // Form.
    {"StrayLineBeforeTheStyleIsKnown", "x\n" + kCyl, {"1:1 error V011"}},
    {"FirstLineMissing", kCyl + "B" + tokenLine("01", "c ", "1\n").substr(1), {"2:18 error V012"}},
    {"LineNumberSkipped",
     tokens("l ", "pt 1 2 3,") + tokenLine("02", "l ", "pt 1 2 3\n"),
     {"2:18 error V012"}},
    {"SecondLineMissing", columns("RED", "0 0 0 1 0 0 0 1 0 1 1 0"), {"1:133 error V023"}},
    {"LineOfNoRecordsLength",
     kCyl + std::string(LineReader::kLongestLine + 1, 'a') + '\n',
     {"2:1 error V013"}},
    {"CutInANumber", kCyl + kCyl.substr(0, 30), {"2:31 error V014"}},
    {"CutBeforeTheLineEnd", kCyl + kCyl.substr(0, kCyl.size() - 1), {"2:40 error V014"}},
    {"UnknownKeyword", kCyl + tokens("q ", "1 2 3"), {"2:20 error V015"}},
    {"UnknownKeywordInColumns",
     columns("CYL", "1 2 3 1 2 13 4.5") + columns("CYX", "1 2 3"),
     {"2:22 error V015"}},
    {"KeywordCutOff", kCyl + tokenLine("00", "", "\n"), {"2:20 error V015"}},
    {"NoLineNumber", kCyl + tokenLine("0x", "c ", "1\n"), {"2:18 error V016"}},
    {"EmptyLine", kCyl + "\n", {"2:1 error V017"}},
    // 513 characters of a first line: 21 of heading, 6 of "pt 1 2", blanks, "3".
    {"FirstLineOneTooLong",
     tokens("l ", "pt 1 2" + std::string(513 - 28, ' ') + "3"),
     {"1:513 error V018"}},
    {"FirstLineOfFullSize", tokens("l ", "pt 1 2" + std::string(512 - 28, ' ') + "3"), {}},
    {"ContinuationLineOfFullSizeAndHeading", longText(512), {}},
    {"ContinuationLineOneTooLong", longText(513), {"2:534 error V018"}},
    {"TabInAText", kText + tokenLine("01", "x ", "a\t\n"), {"2:23 error V019"}},
    {"DeleteInAText",
     kText + tokenLine("01", "x ",
                       "\x7f"
                       "a\n"),
     {"2:22 error V019"}},
    {"BytesAbove127AreText", kText + tokenLine("01", "x ", "\xc3\xbc\n"), {}},
    {"CrLfIsALineEnd", kCyl.substr(0, kCyl.size() - 1) + "\r\n", {}},
    {"CrAloneIsNone", kText + tokenLine("01", "x ", "\ra\n"), {"2:22 error V019"}},
    {"ItemOfAPolylineWithoutWord", tokens("l ", "1 2 3"), {"1:1 error V020"}},
    {"DecimalComma", columns("CYL", "1 2 3 1 2 13 4,5"), {"1:79-87 error V021"}},
    {"LetterInANumber", tokens("c ", "1 2x 3,0 0 1000,200"), {"1:24-25 error V021"}},
    {"ArcNumberTooLarge", tokens("l ", "pt 1 2 3,ar 5 99999999999 1 1"), {"1:36-46 error V022"}},
    {"NumberMissing", columns("CYL", "1 2 3 1 2 13"), {"1:79 error V023"}},
    {"NamesWithoutEnd",
     columns("BOX", "0 0 0 1 0 0 0 1 0 0 0 1") + fixedLine("63", "BOX", "    *a\n"),
     {"2:25 error V024"}},
    {"UnknownTag", kBox + tokenLine("00", "be", "xy a\n"), {"2:22 error V025"}},
    {"ZeroByteInTheHeader",
     "AAA" + std::string(1, '\0') + kCyl.substr(4) + kCyl,
     {"1:4 error V026", "1:4 error V019"}},
    {"NumberTooMany", tokens("c ", "1 2 3,0 0 1000,200,7"), {"1:41 error V027"}},
    {"TextTooShort", kText + tokenLine("01", "x ", "a\n"), {"2:22 error V028"}},
    {"PolygonOfTwoPoints", tokens("g ", "pt 1 2 3,pt 1 0 0"), {"1:39 error V029"}},
    {"ElbowWithoutDirection",
     columns("ELB", "0 0 10 0 0 0 0 0 10 0 50 10") + fixedLine("61", "ELB", fields("30") + '\n'),
     {"2:25 error V030"}},
    {"CounterWithASmallLetter", "AAAAAAAABB00a" + kCyl.substr(13), {"1:11-13 error V031"}},
    {"CounterThatWasNeverSet", "AAAAAAAABB   " + kCyl.substr(13), {}},
    {"BlanksAtTheEnd", tokens("c ", "1 2 3,0 0 1000,200  "), {"1:40-41 note V032"}},
    {"BlanksAtTheEndOfAText", kText + tokenLine("01", "x ", "a \n"), {}},

    // Sizes.
    {"CylinderOfNegativeDiameter", tokens("c ", "1 2 3,0 0 1000,-200"), {"1:37-40 error V101"}},
    {"CylinderOfNegativeDiameterInColumns",
     columns("CYL", "1 2 3 1 2 13 -4.5"),
     {"1:84-87 error V101"}},
    {"ConeOfNegativeSecondDiameter", tokens("n ", "1 2 3,0 0 1000,20,-1"), {"1:40-41 error V101"}},
    {"TorusOfNegativeDiameter", tokens("t ", "0 0 0,9 0 0,0 9 0,-4"), {"1:40-41 error V101"}},
    {"ElbowOfNegativeWidth", tokens("e ", "0 0 0,9 0 0,0 9 0,4,-4"), {"1:42-43 error V101"}},
    {"TextOfNegativeHeight",
     tokens("x ", "1 2 3,1 0 0,0 1 0,-2,0.5,5,2") + tokenLine("01", "x ", "ab\n"),
     {"1:40-41 error V101"}},
    {"TubeWiderThanItsBend", tokens("t ", "0 0 0,9 0 0,0 9 0,18.1"), {"1:40-43 error V102"}},
    {"TubeAsWideAsItsBend", tokens("t ", "0 0 0,9 0 0,0 9 0,18.02"), {}},
    {"ElbowWiderThanItsBend", tokens("e ", "0 0 0,9 0 0,0 9 0,19,4"), {"1:40-41 error V102"}},
    {"CylinderWithoutLength", tokens("c ", "1 2 3,0 0 0.009,200"), {"1:28-36 warning V103"}},
    {"CylinderJustLongEnough", tokens("c ", "1 2 3,0 0 0.01,200"), {}},
    {"CylinderWithoutDiameter", tokens("c ", "1 2 3,0 0 1000,0"), {"1:37 warning V103"}},
    {"ConeWithoutDiameters", tokens("n ", "1 2 3,0 0 1000,0,0"), {"1:37-39 warning V103"}},
    {"PointedCone", tokens("n ", "1 2 3,0 0 1000,0,9"), {}},
    {"BoxWithoutFirstEdge", tokens("b ", "0 0 0,1 1 1,0 20 0,0 0 30"), {"1:22-26 warning V103"}},
    {"BoxWithoutThirdEdge", tokens("b ", "9 0 0,1 1 1,0 20 0,0 0 0"), {"1:41-45 warning V103"}},
    {"FlatBox", tokens("b ", "9 0 0,1 1 1,0 20 0,5 5 0"), {"1:22-45 warning V103"}},
    {"BendWithoutEnd", tokens("t ", "0 0 0,9 0 0,0 0 0,4"), {"1:34-38 warning V103"}},
    {"SegmentWithoutLength", tokens("l ", "pt 1 2 3,pt 0 0 0"), {"1:25-38 warning V103"}},
    {"PointHasNoLength", tokens("l ", "pt 1 2 3"), {}},
    {"TriangleInALine", tokens("g ", "pt 0 0 0,pt 1 0 0,pt 2 0 0"), {"1:25-47 warning V103"}},
    {"TextWithoutDirection",
     tokens("x ", "1 2 3,0 0 0,0 1 0,2,0.5,5,2") + tokenLine("01", "x ", "ab\n"),
     {"1:28-32 warning V103"}},
    {"FlatReducer",
     reducer("0 0 0 10 0 0 0 10 0 10 10 0", "0 0 0 10 0 0 0 10 0 10 10 0"),
     {"1:33-132 warning V103"}},

    // Numbers.
    {"Infinite", tokens("c ", "1 inf 3,0 0 1000,200"), {"1:24-26 error V105"}},
    {"NotANumber", columns("CYL", "1 2 3 1 nan 13 4.5"), {"1:67-69 error V105"}},
    {"OneDecimalLeft", columns("SEG", "1234567.2 0 0 1 0 0"), {"1:25-33 note V120"}},
    {"TwoDecimalsLeftBelowZero", columns("SEG", "1 0 0 1 0 -12345.50"), {"1:70-78 note V120"}},
    {"LargestWithThreeDecimals", columns("SEG", "99999.999 0 0 -9999.998 0 0"), {}},
    {"NoDecimalsLeft", columns("SEG", "1 12345678 0 1 0 0"), {"1:35-42 warning V121"}},
    {"Exponent", columns("SEG", "1 1.23457e8 0 1 0 0"), {"1:34-42 warning V121"}},
    {"WholeNumberTypedByHand", columns("SEG", "1 12345 0 1 0 0"), {}},
    {"NoDecimalsLeftInTokens", tokens("l ", "pt 1 1000000000000 3"), {"1:27-39 warning V121"}},
    {"LargeNumberInTokens", tokens("l ", "pt 1 900000000000.1234 3"), {}},

    // Reducers: a square of 10 below, one of 6 above.
    {"Reducer", reducer("0 0 0 10 0 0 0 10 0 10 10 0", "2 2 20 8 2 20 2 8 20 8 8 20"), {}},
    {"OffsetReducer",
     reducer("0 0 0 10 0 0 0 10 0 10 10 0", "92 2 20 98 2 20 92 8 20 98 8 20"),
     {}},
    {"WedgeReducer", reducer("0 0 0 10 0 0 0 10 0 10 10 0", "0 5 20 9 5 20 0 5 20 9 5 20"), {}},
    {"CornersRoundInsteadOfAcross",
     reducer("0 0 0 10 0 0 10 10 0 0 10 0", "2 2 20 8 2 20 8 8 20 2 8 20"),
     {"1:33-132 error V106"}},
    // It has a waist and a volume, and can be made.
    {"SecondEndTurnedByAQuarter",
     reducer("0 0 0 10 0 0 0 10 0 10 10 0", "8 2 20 8 8 20 2 2 20 2 8 20"),
     {"1:33-132 warning V106"}},
    {"SecondEndTurnedByHalf",
     reducer("0 0 0 10 0 0 0 10 0 10 10 0", "8 8 20 2 8 20 8 2 20 2 2 20"),
     {"1:33-132 error V106"}},
    {"SecondEndMirrored",
     reducer("0 0 0 10 0 0 0 10 0 10 10 0", "8 2 20 2 2 20 8 8 20 2 8 20"),
     {"1:33-132 error V106"}},
    {"EndsExchanged",
     reducer("2 2 20 8 2 20 2 8 20 8 8 20", "0 0 0 10 0 0 0 10 0 10 10 0"),
     {"1:33-132 warning V107"}},

    // Quadrangles.
    {"Quadrangle", tokens("g ", "pt 0 0 0,pt 9 0 0,pt 9 9 0,pt 0 9 0"), {}},
    {"ConcaveQuadrangle", tokens("g ", "pt 0 0 0,pt 9 0 0,pt 2 2 0,pt 0 9 0"), {}},
    {"CrossedQuadrangle",
     tokens("g ", "pt 0 0 0,pt 9 0 0,pt 0 9 0,pt 9 9 0"),
     {"1:25-56 error V108"}},
    {"CrossedQuadrangleAlongTheOtherSides",
     columns("QUA", "0 0 0 9 9 0 9 0 0 0 9 0"),
     {"1:33-132 error V108"}},

    // Bends.
    {"TwoRadii", tokens("t ", "0 0 0,9 0 0,0 9.1 0,4"), {"1:28-40 warning V110"}},
    {"RadiiWithinRounding", tokens("t ", "0 0 0,9 0 0,0 9.01 0,4"), {}},
    {"ElbowOfTwoRadii", tokens("e ", "0 0 0,9 0 0,0 9.1 0,4,4"), {"1:28-40 warning V110"}},
    {"StatedRadiusDiffers", columns("TOR", "0 0 0 9 0 0 0 9 0 9.5 4"), {"1:112-114 warning V111"}},
    {"StatedRadiusDiffersByMoreThanRounding",
     columns("TOR", "0 0 0 9 0 0 0 9 0 9.05 4"),
     {"1:111-114 warning V111"}},
    {"StatedRadiusWithinRounding", columns("TOR", "0 0 0 9 0 0 0 9 0 9.01 4"), {}},
    {"StatedRadius", columns("TOR", "0 0 0 9 0 0 0 9 0 9 4"), {}},
    {"RadiiWithinTheDecimalsOfLargeNumbers",
     // Two decimals: four hundredths are rounding.
     columns("TOR", "123456.00 0 0 123465.00 0 0 123456.00 9.03 0 9.015 4"),
     {"1:25-33 note V120", "1:52-60 note V120", "1:79-87 note V120"}},
    {"HalfTurn", tokens("t ", "0 0 0,9 0 0,-9 0 0,4"), {"1:28-39 error V112"}},
    // atan(0.0015 / 9) is 0.0095 degrees, atan(0.0016 / 9) is 0.0102.
    {"NearlyHalfATurn", tokens("t ", "0 0 0,9 0 0,-9 0.0015 0,4"), {"1:28-44 warning V113"}},
    {"NearlyHalfATurnOfADuct",
     tokens("e ", "0 0 0,9 0 0,-9 0.0015 0,4,4"),
     {"1:28-44 warning V113"}},
    {"LessThanHalfATurn", tokens("t ", "0 0 0,9 0 0,-9 0.0016 0,4"), {}},
    {"LineWithoutPoints", tokens("l ", "ar 5 1 2 3"), {"1 warning V103"}},

    // Twice.
    {"SameElementTwice", kCyl + kBox + kCyl, {"3 warning V204"}},
    {"SameFromTheOtherEnd", kCyl + tokens("c ", "1 2 1003,0 0 -1000,200"), {"2 warning V204"}},
    {"SamePointTwiceMarksAJoint", tokens("l ", "pt 1 2 3") + tokens("l ", "pt 1 2 3"), {}},
};

class CheckFindings : public testing::TestWithParam<Row> {};

TEST_P(CheckFindings, AreThese) { EXPECT_EQ(found(GetParam().text), GetParam().findings); }

INSTANTIATE_TEST_SUITE_P(Files, CheckFindings, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

// Cylinders of 100 along x from the origin to 1000, then something at its end.
const std::string kPipe = tokens("c ", "0 0 0,1000 0 0,100");

const Row kJoints[] = {
    {"ExactMeeting", kPipe + tokens("c ", "1000 0 0,500 0 0,100"), {}},
    {"WithinTheTolerance", kPipe + tokens("c ", "1000.1 0 0,500 0 0,100"), {}},
    {"Gap", kPipe + tokens("c ", "1000.5 0 0,500 0 0,100"), {"2:22-31 warning V201"}},
    {"GapInColumns",
     columns("CYL", "0 0 0 1000 0 0 100") + columns("CYL", "1000.5 0 0 1500 0 0 100"),
     {"2:28-51 warning V201"}},
    {"Overlap", kPipe + tokens("c ", "999.5 0 0,500 0 0,100"), {"2:22-30 warning V201"}},
    {"GapSeenFromTheOtherEnd",
     kPipe + tokens("c ", "1500.5 0 0,-500 0 0,100"),
     {"2:33-40 warning V201"}},
    {"Offset", kPipe + tokens("c ", "1000 0.5 0,500 0 0,100"), {"2:22-31 warning V202"}},
    {"DiameterMismatch", kPipe + tokens("c ", "1000 0 0,500 0 0,88.9"), {"2:39-42 warning V203"}},
    {"DiameterMismatchOfABend",
     kPipe + tokens("t ", "1000 150 0,0 -150 0,150 0 0,90"),
     {"2:50-51 warning V203"}},
    {"DiameterMismatchOfABendInColumns",
     columns("CYL", "0 0 0 1000 0 0 100") + columns("TOR", "1000 150 0 1000 0 0 1150 150 0 150 90"),
     {"2:122-123 warning V203"}},
    {"GapOfTenAtMost", kPipe + tokens("c ", "1010 0 0,500 0 0,100"), {"2:22-29 warning V201"}},
    {"FarApart", kPipe + tokens("c ", "1010.1 0 0,500 0 0,100"), {"2:22-31 warning V207"}},
    {"ApartByMoreThanHalfADiameter",
     tokens("c ", "0 0 0,1000 0 0,10") + tokens("c ", "1005.1 0 0,500 0 0,10"),
     {"2:22-31 warning V207"}},
    {"Branch", kPipe + tokens("c ", "1000 0 0,0 500 0,100"), {}},
    {"BranchBesideTheEnd",
     kPipe + tokens("c ", "1000 0.5 0,0 500 0,100"),
     {"1:28-35 warning V206"}},
    {"OneNominalSize", kPipe + tokens("c ", "1000 0 0,500 0 0,101.5"), {}},
    {"AnotherNominalSize", kPipe + tokens("c ", "1000 0 0,500 0 0,102"), {"2:39-41 warning V203"}},
    {"ElbowToPipe",
     kPipe + tokens("t ", "1000 150 0,0 -150 0,150 0 0,100") +
         tokens("c ", "1150 150 0,0 500 0,100"),
     {}},
    {"ElbowAwayFromPipe",
     kPipe + tokens("t ", "1000 150 0,0 -150 0,150 0 0,100") +
         tokens("c ", "1150 150.5 0,0 500 0,100"),
     {"3:22-33 warning V201"}},
    {"EndOfElbowAwayFromPipe",
     tokens("c ", "1150 150.5 0,0 500 0,100") + tokens("t ", "1000 150 0,0 -150 0,150 0 0,100"),
     {"2:42-48 warning V201"}},
    {"ReducerToPipes",
     kPipe + tokens("n ", "1000 0 0,80 0 0,100,60") + tokens("c ", "1080 0 0,500 0 0,60"),
     {}},
    {"ReducerTheWrongWayRound",
     kPipe + tokens("n ", "1000 0 0,80 0 0,60,100") + tokens("c ", "1080 0 0,500 0 0,60"),
     {"2:38-39 warning V203", "3:39-40 warning V203"}},
    {"FlangeIsWider", kPipe + tokens("c ", "1000 0 0,20 0 0,180"), {}},
    {"FlatConeIsWider", kPipe + tokens("n ", "1000 0 0,71 0 0,180,100"), {}},
    {"LongerConeIsNot", kPipe + tokens("n ", "1000 0 0,73 0 0,180,100"), {"2:38-40 warning V203"}},
    {"GasketLeftOut",
     tokens("c ", "0 0 0,20 0 0,180") + tokens("c ", "23.2 0 0,20 0 0,180"),
     {"2:22-29 warning V201"}},
    {"GasketBetween",
     tokens("c ", "0 0 0,20 0 0,180") + tokens("c ", "20 0 0,3.2 0 0,150") +
         tokens("c ", "23.2 0 0,20 0 0,180"),
     {}},
};

class CheckJoints : public testing::TestWithParam<Row> {};

// All but the open ends of these short lines.
TEST_P(CheckJoints, AreThese) {
  EXPECT_EQ(found(GetParam().text, true, {"V205"}), GetParam().findings);
}

INSTANTIATE_TEST_SUITE_P(Files, CheckJoints, testing::ValuesIn(kJoints),
                         [](const auto& row) { return std::string(row.param.name); });

// The pipe ends at 0 and at 1000, which are columns 22 to 26 and 28 to 35 of its line.
const Row kOpenEnds[] = {
    {"BothOfAPipe", kPipe, {"1:22-26 note V205", "1:28-35 note V205"}},
    {"NotWhereAnotherMeets",
     kPipe + tokens("c ", "1000 0 0,500 0 0,100"),
     {"1:22-26 note V205", "2:31-37 note V205"}},
    {"NotWhereItMeetsASolid",
     kPipe + tokens("b ", "9 0 0,1000 -50 -50,0 99 0,0 0 99"),
     {"1:22-26 note V205"}},
    {"NotInTheSideOfAPipe",
     kPipe + tokens("c ", "500 0 0,0 0 300,60"),
     {"1:22-26 note V205", "1:28-35 note V205", "2:30-36 note V205"}},
    // the surface of the pipe is at 50
    {"BranchFromTheSurface",
     kPipe + tokens("c ", "500 0 50,0 0 300,60"),
     {"1:22-26 note V205", "1:28-35 note V205", "2:31-37 note V205"}},
    {"BranchOffTheSurface",
     kPipe + tokens("c ", "500 0 58,0 0 300,60"),
     {"1:22-26 note V205", "1:28-35 note V205", "2:22-29 warning V206", "2:31-37 note V205"}},
    {"FurtherOffItIsOpen",
     kPipe + tokens("c ", "500 0 61,0 0 300,60"),
     {"1:22-26 note V205", "1:28-35 note V205", "2:22-29 note V205", "2:31-37 note V205"}},
    // its axis passes 55 beside that of the pipe, whose surface is at 50
    {"BranchBesideThePipe",
     kPipe + tokens("c ", "500 55 0,0 0 300,60"),
     {"1:22-26 note V205", "1:28-35 note V205", "2:22-29 warning V206", "2:31-37 note V205"}},
    {"PieceMissing",
     kPipe + tokens("c ", "1400 0 0,500 0 0,100"),
     {"1:22-26 note V205", "2:22-29 warning V207", "2:31-37 note V205"}},
    // aside by more than half of the thinner one
    {"NothingIsMissingAside",
     kPipe + tokens("c ", "1400 40 0,500 0 0,60"),
     {"1:22-26 note V205", "1:28-35 note V205", "2:22-30 note V205", "2:32-38 note V205"}},
    {"NothingIsMissingAcrossTwentyDiameters",
     kPipe + tokens("c ", "3001 0 0,500 0 0,100"),
     {"1:22-26 note V205", "1:28-35 note V205", "2:22-29 note V205", "2:31-37 note V205"}},
    {"NorIfSomethingElseIsBetween",
     kPipe + tokens("c ", "1400 0 0,500 0 0,100") + tokens("c ", "1200 0 -500,0 0 1000,60"),
     {"1:22-26 note V205", "1:28-35 note V205", "2:22-29 note V205", "2:31-37 note V205",
      "3:22-32 note V205", "3:34-41 note V205"}},
    // the stem stands on the pipe and has no centre line of its own
    {"DetailsOfALineWithACentreLine",
     kPipe + tokens("l ", "pt 0 0 0,pt 1000 0 0") + tokens("c ", "500 0 0,0 0 300,60"),
     {"1:22-26 note V205", "1:28-35 note V205"}},
    // no end of the line is at the pipe, whose ends are details; for the sanitizers above all
    {"NoLineEndsAtWhatIsNoNumber",
     kPipe + tokens("l ", "pt 0 nan 0,pt 2000 0 0"),
     {"2:27-29 error V105"}},
};

class CheckOpenEnds : public testing::TestWithParam<Row> {};

TEST_P(CheckOpenEnds, AreThese) { EXPECT_EQ(found(GetParam().text, true), GetParam().findings); }

INSTANTIATE_TEST_SUITE_P(Files, CheckOpenEnds, testing::ValuesIn(kOpenEnds),
                         [](const auto& row) { return std::string(row.param.name); });

struct MessageRow {
  const char* name;
  std::string text;
  std::string message;  // of the last finding of the code
  const char* code;
};

const MessageRow kMessages[] = {
    {"FacesNothing", kPipe, "end at 1000 0 0: open, 100 wide, faces nothing within 2000.000",
     "V205"},
    // 1250 - 1000, up to the near side of the box
    {"FacesABox", kPipe + tokens("b ", "9 0 0,1250 -50 -50,0 99 0,0 0 99"),
     "end at 1000 0 0: open, 100 wide, faces the box at line 2, 250.000 away", "V205"},
    // within 20 diameters, which are 2000
    {"FacesABoxFarAhead", kPipe + tokens("b ", "9 0 0,2990 -50 -50,0 99 0,0 0 99"),
     "end at 1000 0 0: open, 100 wide, faces the box at line 2, 1990.000 away", "V205"},
    {"StopsShort", tokens("c ", "0 0 -500,0 0 1000,100") + tokens("c ", "58 0 0,300 0 0,60"),
     "end at 58 0 0: stops 8.000 short of the cylinder at line 1", "V206"},
    {"PassesBeside", tokens("c ", "0 0 -500,0 0 1000,100") + tokens("c ", "0 53 0,300 0 0,60"),
     "end at 0 53 0: passes beside the cylinder at line 1, 3.000 away", "V206"},
    {"Missing", kPipe + tokens("c ", "1400 0 0,500 0 0,100"),
     "end at 1400 0 0: nothing for 400.000 up to the open end at line 1", "V207"},
};

TEST(CheckTest, OpenEndsSayWhatTheyFace) {
  for (const MessageRow& row : kMessages) {
    CheckOptions options;
    options.joints = true;
    options.only = {row.code};
    std::string last;
    FileCheck check(options, [&](Finding&& finding) { last = finding.message; });
    RecordFile file(std::make_unique<TextSource>(row.text), "f");
    check.run(file);
    EXPECT_EQ(last, row.message) << row.name;
  }
}

TEST(CheckTest, EveryCodeOfTheCatalogueIsProvokedAndTheOtherWayRound) {
  // V208 needs attributes beside the file; see CheckCommandTest.
  std::set<std::string> provoked = {"V208"};
  for (const auto& rows :
       {testing::ValuesIn(kRows), testing::ValuesIn(kJoints), testing::ValuesIn(kOpenEnds)}) {
    for (const Row& row : std::vector<Row>(rows.begin(), rows.end())) {
      for (const std::string& finding : row.findings) {
        provoked.insert(finding.substr(finding.rfind(' ') + 1));
      }
    }
  }
  std::set<std::string> known;
  for (const CodeText& code : catalogue()) {
    if (code.code < "V300") known.emplace(code.code);
  }
  EXPECT_EQ(provoked, known);
}

std::string goldenFile(const std::string& name) {
  std::ifstream file(VESK_TEST_SOURCE_DIR "/golden/" + name, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

constexpr const char* kGolden[] = {"elements.columns.dat", "elements.tokens.dat", "pump.dat"};

// Whatever the bytes are, each finding is at a place of the file and shows it.
TEST(CheckTest, FindingsOfDamagedFilesStandInTheFile) {
  std::mt19937 random(7);
  std::size_t count = 0;
  for (const char* name : kGolden) {
    const std::string whole = goldenFile(name).substr(0, 3000);
    for (int round = 0; round < 400; ++round) {
      std::string text = whole;
      for (int i = 0; i < 3; ++i)
        text[random() % text.size()] =
            "0 \n-e,\t\xff"
            "9."[random() % 10];
      std::vector<std::string> lines;
      std::istringstream stream(text);
      for (std::string line; std::getline(stream, line);) lines.push_back(line);
      CheckOptions options;
      options.joints = true;
      FileCheck check(options, [&](Finding&& finding) {
        ++count;
        ASSERT_GE(finding.line, 1u);
        ASSERT_LE(finding.line, lines.size());
        const std::string& line = lines[finding.line - 1];
        EXPECT_LE(finding.column, line.size() + 1);
        EXPECT_LE(finding.endColumn, line.size());
        EXPECT_TRUE(finding.endColumn == 0 || finding.endColumn >= finding.column);
        EXPECT_TRUE(finding.sourceLine.empty() || finding.sourceLine == line);
      });
      RecordFile file(std::make_unique<TextSource>(text), "f");
      check.run(file);
    }
  }
  EXPECT_GT(count, 1200u);
}

// But the ends of their lines, which are open.
TEST(CheckTest, CleanFilesGiveNothing) {
  for (const char* name : kGolden) {
    const std::string text = goldenFile(name);
    ASSERT_FALSE(text.empty()) << name;
    EXPECT_EQ(found(text, true, {"V205"}), Lines{}) << name;
  }
}

}  // namespace
