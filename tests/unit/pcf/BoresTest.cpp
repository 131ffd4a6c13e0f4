// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <ostream>

#include "pcf/PcfRun.h"

// The outside diameters of pipes by what a file gives as their bores.
namespace {

using Vesk::Pcf::BoreMeaning;

struct BoreCase {
  const char* name;
  const char* units;    // of UNITS-BORE; empty: none
  const char* bores;    // of pipes that do not meet
  const char* outside;  // of the pipes
  const char* said;     // part of what is said; nullptr: nothing
  BoreMeaning meaning = BoreMeaning::kAuto;
};

void PrintTo(const BoreCase& row, std::ostream* out) { *out << row.name; }

// ASME B36.10: NPS 1/2 21.3, 3/4 26.7, 1 33.4, 1 1/4 42.2, 1 1/2 48.3, 2 60.3, 3 88.9,
// 3 1/2 101.6, 4 114.3, 6 168.3, 8 219.1, 10 273, 12 323.8, 14 355.6, 18 457, 24 610.
// clang-format off
const BoreCase kBores[] = {
    // ---- nominal sizes
    {"NominalMillimetres",    "MM",   "40 50 80 90 100 150 200 600", "48.3 60.3 88.9 101.6 114.3 168.3 219.1 610", nullptr},
    {"WithoutUnits",          "",     "150 200",             "168.3 219.1", nullptr},
    {"Inches",                "INCH", "0.5 2 3 3.5 4 12 24", "21.3 60.3 88.9 101.6 114.3 323.8 610", nullptr},
    {"InchesAsFractions",     "INCH", "3/4 1.1/2 1-1/4",     "26.7 48.3 42.2", nullptr},
    {"InchesInTwoWords",      "INCH", "1_1/2 2",             "48.3 60.3", nullptr},
    {"InchesWithMarks",       "MM",   "6\" 1.1/2\"",         "168.3 48.3", nullptr},
    {"InchesGluedToTheBore",  "MM",   "6in 2IN",             "168.3 60.3", nullptr},
    {"MillimetresGluedToTheBore", "INCH", "150mm 50MM",      "168.3 60.3", nullptr},
    {"SizeMarks",             "INCH", "DN150 dn50 NPS2",     "168.3 60.3 60.3", nullptr},
    {"SizeMarksApart",        "MM",   "DN_150 NPS_1.1/2",    "168.3 48.3", nullptr},
    {"SizeMarksUnderHundredths", "MM-HUNDREDTHS", "DN150 100mm NPS2 15000", "168.3 114.3 60.3 168.3", nullptr},
    {"SizeMarksUnderSixteenths", "INCH-SIXTEENTH", "DN150 100mm NPS2 6in 6\" 96", "168.3 114.3 60.3 168.3 168.3 168.3", nullptr},
    {"SizeMarksUnderFeet",    "FEET", "DN150 100mm NPS2 6in 0.5", "168.3 114.3 60.3 168.3 168.3", nullptr},
    {"SizeMarksUnderMetres",  "M",    "DN150 100mm NPS2 0.15", "168.3 114.3 60.3 168.3", nullptr},
    {"EndsGluedToTheBore",    "INCH", "6BW 2SW",             "168.3 60.3", nullptr},
    {"SixteenthsOfAnInch",    "INCH-SIXTEENTH", "64 12",     "114.3 26.7", nullptr},
    {"HundredthsOfMillimetres", "MM-HUNDREDTHS", "15000 8000", "168.3 88.9", nullptr},
    {"HundredthOfMillimetres", "MM-HUNDREDTH", "10000",      "114.3", nullptr},
    {"RoundedInches",         "INCH", "1.3 2",               "42.2 60.3", nullptr},

    // Above one inch within 0.061, below within 0.011: 2.07 * 25.4, 0.3 * 25.4, 0.262 * 25.4
    {"RoundedLargeInches",    "INCH", "2.06 4",              "60.3 114.3", nullptr},
    {"InchesThatAreNotRounded", "INCH", "2.07 4",            "52.578 114.3", "note: bores that are in no table are drawn as they are: 2.07"},
    {"RoundedSmallInches",    "INCH", "0.26 2",              "13.7 60.3", nullptr},
    {"SmallInchesThatAreNotRounded", "INCH", "0.3 0.262 2",  "7.62 6.6548 60.3", "in no table are drawn as they are: 0.262, 0.3"},
    {"SmallMillimetresUnderInches", "INCH", "25 50 15",      "33.4 60.3 21.3", "warning: UNITS-BORE INCH with bores that only millimetres can be"},
    {"InchesThatMightBeMillimetres", "INCH", "20 40 6 8 10", "508 1016 168.3 219.1 273", nullptr},

    // ---- inches in millimetres
    {"InchesInMillimetres",   "MM",   "50.8 101.6 152.4",    "60.3 114.3 168.3",
     "note: bores are inches in millimetres (--bores gives them another meaning): 50.8 is drawn 60.3"},
    {"ThreeAndAHalfInches",   "MM",   "50.8 88.9 152.4 152.4", "60.3 101.6 168.3 168.3", "bores are inches"},
    {"SmallInches",           "MM",   "12.7 19.05 25.4 38.1", "21.3 26.7 33.4 48.3", "bores are inches"},
    {"InchesRoundedToTenths", "MM",   "31.8 19.1 152.4",     "42.2 26.7 168.3", "bores are inches"},
    {"LargeInches",           "MM",   "152.4 355.6 457.2 609.6", "168.3 355.6 457 610", "bores are inches"},
    {"BesideNominalSizes",    "MM",   "152.4 101.6 150",     "168.3 114.3 168.3", "bores are inches"},

    // ---- outside diameters
    {"OutsideDiameters",      "MM",   "60.3 101.6 114.3",    "60.3 101.6 114.3",
     "note: bores are outside diameters (--bores gives them another meaning): 60.3 is drawn 60.3"},
    {"DiameterOfThreeInches", "MM",   "88.9 168.3 219.1",    "88.9 168.3 219.1", "bores are outside diameters"},
    {"DiametersToThousandths", "MM",  "60.325 168.275 273.05", "60.325 168.275 273.05", "bores are outside diameters"},
    {"EuropeanDiameters",     "MM",   "17.2 26.9 33.7 42.4 76.1 139.7 323.9", "17.2 26.9 33.7 42.4 76.1 139.7 323.9", "bores are outside diameters"},
    {"EuropeanDn65IsNotThreeInches", "MM", "76.1",           "76.1", "bores are outside diameters"},
    {"ThreeInchesAreNotDn65", "MM",   "76.2",                "88.9", "bores are inches"},
    {"LargeDiameters",        "MM",   "168.3 457.2 609.6",   "168.3 457.2 609.6", "bores are outside diameters"},
    {"DiametersBesideNominal", "MM",  "150 168.3",           "168.3 168.3", "bores are outside diameters"},
    {"DiametersInInches",     "INCH", "6.625 4.5 2.375 3.5", "168.275 114.3 60.325 88.9", ": 2.375 is drawn 60.325"},

    // ---- what nothing tells
    {"AloneItIsFourInches",   "MM",   "101.6",               "114.3",
     "warning: bore 101.6 is 4 inches in millimetres or the diameter of 3 1/2 inches: taken as 4 inches; --bores diameter takes it as the diameter\n"},
    {"AloneItIsADiameter",    "MM",   "88.9",                "88.9",
     "warning: bore 88.9 is the diameter of 3 inches or 3 1/2 inches in millimetres: taken as the diameter; --bores inches takes it as inches\n"},
    {"BesideNominalSizesToo", "MM",   "150 101.6",           "168.3 114.3", "warning: bore 101.6 is 4 inches"},
    {"AloneUnderInches",      "INCH", "3.5",                 "101.6", nullptr},
    {"OfNoTable",             "MM",   "47.5 361.4 150",      "47.5 361.4 168.3", "note: bores that are in no table are drawn as they are: 47.5, 361.4"},
    {"MostOfTheFileDecides",  "MM",   "152.4 203.2 168.3 101.6", "168.3 219.1 168.3 114.3", "bores are inches"},
    {"MostPipesDecideAndNotMostSizes", "MM", "60.3 60.3 60.3 60.3 50.8 25.4 101.6", "60.3 60.3 60.3 60.3 60.3 33.4 101.6", "bores are inches"},
    {"InchesUnderMillimetres", "MM",  "0.5 2 4",             "21.3 60.3 114.3", "warning: UNITS-BORE MM with bores that only inches can be: taken as inches, 0.5 to 4"},
    {"InchesUnderMillimetresWithLargeOnes", "MM", "1.5 2 6 8", "48.3 60.3 168.3 219.1", "warning: UNITS-BORE MM"},
    {"LargeInchesUnderMillimetres", "MM", "10 12 14 16",     "273 323.8 355.6 406.4", "warning: UNITS-BORE MM with bores that only inches can be: taken as inches, 10 to 16"},
    {"BesideMillimetresTheyStay", "MM", "15 14",             "21.3 14",   "note: bores that are in no table are drawn as they are: 14"},
    {"SmallSizesMightBeInches", "MM", "6 8 12",              "10.3 13.7 12", "warning: all bores can be millimetres or inches: taken as millimetres; --bores inches takes them as inches, 6 to 12"},
    {"ASmallSizeMightBeInches", "MM", "6",                   "10.3",  "warning: all bores can be millimetres or inches: taken as millimetres; --bores inches takes them as inches, 6\n"},
    {"LargerOnesAreNot",      "MM",   "8 10 15",             "13.7 17.1 21.3", nullptr},
    {"BesideLargerOnesTheyAreNot", "MM", "8 10 100",         "13.7 17.1 114.3", nullptr},
    {"MillimetresUnderInches", "INCH", "50 150 200",         "60.3 168.3 219.1", "warning: UNITS-BORE INCH with bores that only millimetres can be: taken as millimetres, 50 to 200"},

    {"FiveOfNoTable",         "MM",   "41.1 43.1 47.5 55.5 66.6", "41.1 43.1 47.5 55.5 66.6",
     "note: bores that are in no table are drawn as they are: 41.1, 43.1, 47.5, 55.5, 66.6\n"},
    {"MoreThanFiveOfNoTable", "MM",   "41.1 43.1 47.5 55.5 66.6 361.4", "41.1 43.1 47.5 55.5 66.6 361.4",
     "note: bores that are in no table are drawn as they are: 41.1, 43.1, 47.5, 55.5, 66.6 ..."},

    // ---- told from outside
    {"ToldToBeInchesOfNoSize", "MM",  "47.3",                "47.3",   nullptr, BoreMeaning::kInches},
    {"ToldToBeInchesUnderInches", "INCH", "6 0.5 7.3",       "168.3 21.3 185.42", nullptr, BoreMeaning::kInches},  // 7.3 * 25.4
    {"ToldToBeNominalUnderInches", "INCH", "6",              "168.3",  nullptr, BoreMeaning::kNominal},
    {"ToldToBeNominalOfNoSize", "MM", "47.3",                "47.3",   nullptr, BoreMeaning::kNominal},
    {"ToldToBeInches",        "MM",   "101.6 88.9",          "114.3 101.6", nullptr, BoreMeaning::kInches},
    {"ToldToBeInchesUnderMillimetres", "MM", "6 8 12",       "168.3 219.1 323.8", nullptr, BoreMeaning::kInches},
    {"ToldToBeDiameters",     "MM",   "101.6 152.4 150",     "101.6 152.4 150", nullptr, BoreMeaning::kDiameter},
    {"ToldToBeDiametersInInches", "INCH", "4",               "101.6", nullptr, BoreMeaning::kDiameter},
    {"ToldToBeNominal",       "MM",   "152.4 150",           "152.4 168.3", nullptr, BoreMeaning::kNominal},
};
// clang-format on

std::vector<std::string> wordsOf(const std::string& text) {
  std::vector<std::string> words;
  std::string word;
  for (const char c : text + ' ') {
    if (c != ' ') {
      word += c == '_' ? ' ' : c;
    } else if (!word.empty()) {
      words.push_back(std::move(word));
      word.clear();
    }
  }
  return words;
}

class Bores : public testing::TestWithParam<BoreCase> {};

TEST_P(Bores, AreDrawnSo) {
  const BoreCase& row = GetParam();
  std::string text = *row.units == '\0' ? "" : std::string("UNITS-BORE ") + row.units + '\n';
  int y = 0;
  for (const std::string& bore : wordsOf(row.bores)) {
    y += 5000;
    for (const char* x : {"0", "1000"}) {
      if (*x == '0') text += "PIPE\n";
      text.append("    END-POINT ").append(x) += ' ' + std::to_string(y) + " 0 " + bore + '\n';
    }
  }
  Vesk::Pcf::ImportOptions options;
  options.bores = row.meaning;
  const PcfRun run = runPcf(text, options);
  const std::vector<std::string> pipes = run.recordsOf('c');
  const std::vector<std::string> outside = wordsOf(row.outside);
  ASSERT_EQ(pipes.size(), outside.size()) << run.messageText();
  for (std::size_t i = 0; i < pipes.size(); ++i)
    EXPECT_EQ(pipes[i].substr(pipes[i].rfind(',') + 1), outside[i]);
  if (row.said == nullptr) {
    EXPECT_TRUE(row.meaning != BoreMeaning::kAuto || run.messages.empty()) << run.messageText();
  } else {
    EXPECT_NE(run.messageText().find(row.said), std::string::npos) << run.messageText();
    const bool isWarning = std::string(row.said).find("warning") != std::string::npos;
    EXPECT_EQ(run.warnings > 0, isWarning) << run.messageText();
  }
}

INSTANTIATE_TEST_SUITE_P(Pcf, Bores, testing::ValuesIn(kBores),
                         [](const auto& row) { return std::string(row.param.name); });

// Inches and diameters stand in one file as often; 101.6 is what it meets.
TEST(MixedBores, AreThoseOfTheirNeighbours) {
  const PcfRun run = runPcf(
      "PIPE\n END-POINT 0 0 0 152.4\n END-POINT 100 0 0 152.4\n"
      "PIPE\n END-POINT 0 900 0 168.3\n END-POINT 100 900 0 168.3\n"
      "PIPE\n END-POINT 0 500 0 101.6\n END-POINT 100 500 0 101.6\n"
      "PIPE\n END-POINT 100 500 0 114.3\n END-POINT 200 500 0 114.3\n");
  EXPECT_EQ(run.recordsOf('c')[2], "c 0 500 0,100 0 0,114.3") << run.messageText();
}

// DN 90 is 101.6 wide: what meets it is a diameter.
TEST(MixedBores, AreDiametersBesideAPipeOfThatWidth) {
  const PcfRun run = runPcf(
      "PIPE\n END-POINT 0 0 0 152.4\n END-POINT 100 0 0 152.4\n"
      "PIPE\n END-POINT 0 900 0 168.3\n END-POINT 100 900 0 168.3\n"
      "PIPE\n END-POINT 0 500 0 101.6\n END-POINT 100 500 0 101.6\n"
      "PIPE\n END-POINT 100 500 0 90\n END-POINT 200 500 0 90\n"
      "PIPE\n END-POINT 100 500 0\n END-POINT 100 700 0 50\n");
  EXPECT_EQ(run.recordsOf('c')[2], "c 0 500 0,100 0 0,101.6") << run.messageText();
}

struct MissingCase {
  const char* name;
  const char* file;
  const char* record;  // one of them
  const char* said;
};

void PrintTo(const MissingCase& row, std::ostream* out) { *out << row.name; }

// clang-format off
const MissingCase kMissing[] = {
    {"OfAPipeTheOtherEnds", "PIPE\n END-POINT 0 0 0 100\n END-POINT 9 0 0\n", "c 0 0 0,9 0 0,114.3", nullptr},
    {"OfAPipeTheNeighbours",
     "PIPE\n END-POINT 0 0 0\n END-POINT 9 0 0\nPIPE\n END-POINT 9 0 0 100\n END-POINT 20 0 0 100\n",
     "c 0 0 0,9 0 0,114.3", nullptr},
    {"OfAPipeTheNeighboursFirst",
     "PIPE\n END-POINT 0 0 0 100\n END-POINT 9 0 0\nPIPE\n END-POINT 9 0 0 50\n END-POINT 20 0 0 50\n",
     "n 0 0 0,9 0 0,114.3,60.3", "warning: PIPE: its ends have different bores; drawn as a cone"},
    {"AlongAChain",
     "PIPE\n END-POINT 0 0 0\n END-POINT 9 0 0\nPIPE\n END-POINT 9 0 0\n END-POINT 20 0 0\n"
     "PIPE\n END-POINT 20 0 0\n END-POINT 30 0 0\nPIPE\n END-POINT 30 0 0 50\n END-POINT 40 0 0 50\n",
     "c 0 0 0,9 0 0,60.3", nullptr},
    {"OfAReducerTheNeighbours",
     "REDUCER-CONCENTRIC\n END-POINT 0 0 0 100\n END-POINT 90 0 0\nPIPE\n END-POINT 90 0 0 50\n END-POINT 200 0 0 50\n",
     "n 0 0 0,90 0 0,114.3,60.3", nullptr},
    {"OfAReducerWithoutANeighbourTheOtherEnds",
     "REDUCER-CONCENTRIC\n END-POINT 0 0 0 100\n END-POINT 90 0 0\n", "c 0 0 0,90 0 0,114.3",
     "warning: REDUCER-CONCENTRIC: expected a bore after each of its points; the one given is taken for all"},
    {"OfABranchTheNeighbours",
     "TEE\n END-POINT 0 0 0 100\n END-POINT 200 0 0 100\n CENTRE-POINT 100 0 0\n BRANCH1-POINT 100 90 0\n"
     "PIPE\n END-POINT 100 90 0 50\n END-POINT 100 200 0 50\n",
     "c 100 0 0,0 90 0,60.3", nullptr},
    {"OfAnEndTheWidestNeighbours",
     "PIPE\n END-POINT 0 0 0\n END-POINT 9 0 0\nPIPE\n END-POINT 9 0 0 100\n END-POINT 20 0 0 100\n"
     "PIPE\n END-POINT 9 0 0 50\n END-POINT 9 20 0 50\n",
     "c 0 0 0,9 0 0,114.3", nullptr},
    {"OfAnEndTheWidestNeighboursFirst",
     "PIPE\n END-POINT 0 0 0\n END-POINT 9 0 0\nPIPE\n END-POINT 9 0 0 50\n END-POINT 9 20 0 50\n"
     "PIPE\n END-POINT 9 0 0 100\n END-POINT 20 0 0 100\n",
     "c 0 0 0,9 0 0,114.3", nullptr},
    {"OfABranchWithoutANeighbourTheRuns",
     "TEE\n END-POINT 0 0 0 100\n END-POINT 200 0 0 100\n CENTRE-POINT 100 0 0\n BRANCH1-POINT 100 90 0\n",
     "c 0 0 0,200 0 0,114.3",
     "warning: TEE: expected a bore after each of its points; the one given is taken for all"},
    {"ZeroBehindACentreIsNone",
     "ELBOW\n END-POINT 0 0 0 100\n END-POINT 152.4 152.4 0 100\n CENTRE-POINT 152.4 0 0 0\n",
     "t 0 152.4 0,0 -152.4 0,152.4 0 0,114.3", nullptr},
};
// clang-format on

class MissingBores : public testing::TestWithParam<MissingCase> {};

TEST_P(MissingBores, AreFound) {
  const PcfRun run = runPcf(GetParam().file);
  EXPECT_EQ(run.records.at(0) == GetParam().record || run.records.at(2) == GetParam().record, true)
      << run.records[0];
  if (GetParam().said == nullptr) {
    EXPECT_EQ(run.messageText(), "");
  } else {
    EXPECT_NE(run.messageText().find(GetParam().said), std::string::npos) << run.messageText();
  }
}

INSTANTIATE_TEST_SUITE_P(Pcf, MissingBores, testing::ValuesIn(kMissing),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
