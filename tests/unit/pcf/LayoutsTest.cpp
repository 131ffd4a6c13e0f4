// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <functional>
#include <ostream>

#include "pcf/PcfRun.h"

// One plant in many layouts, and what is no plant.
namespace {

constexpr char kPlant[] =
    "ISOGEN-FILES ISOGEN.FLS\n"
    "UNITS-BORE INCH\n"
    "UNITS-CO-ORDS MM\n"
    "UNITS-WEIGHT KGS\n"
    "DATE-DMY 01/02/2003\n"
    "PROJECT-IDENTIFIER X1\n"
    "AREA 51\n"
    "PIPELINE-REFERENCE P-1\n"
    "    REVISION 0\n"
    "    PIPING-SPEC A1\n"
    "    ATTRIBUTE1 water\n"
    "PIPE\n"
    "    END-POINT 0 0 0 4 BW\n"
    "    END-POINT 1000 0 0 4 BW\n"
    "    SKEY PIPW\n"
    "    ITEM-CODE C-1\n"
    "    PIPING-SPEC A1\n"
    "    AREA 7\n"
    "ELBOW\n"
    "    END-POINT 1000 0 0 4 BW\n"
    "    END-POINT 1152.4 152.4 0 4 BW\n"
    "    CENTRE-POINT 1152.4 0 0\n"
    "    ANGLE 9000\n"
    "    SKEY ELBW\n"
    "MESSAGE-SQUARE\n"
    "    FIELD WELD TO SUIT\n"
    "FLANGE\n"
    "    END-POINT 1152.4 152.4 0 4\n"
    "    END-POINT 1152.4 228.4 0 4\n"
    "    SKEY FLWN\n"
    "MATERIALS\n"
    "ITEM-CODE C-1\n"
    "    DESCRIPTION PIPE\n";

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = text.find(from); at != std::string::npos;
       at = text.find(from, at + to.size()))
    text.replace(at, from.size(), to);
  return text;
}

std::string utf16(const std::string& text, bool isBig, bool hasMark) {
  std::string bytes;
  if (hasMark) bytes = isBig ? "\xFE\xFF" : "\xFF\xFE";
  for (const char c : text) {
    if (isBig) bytes += '\0';
    bytes += c;
    if (!isBig) bytes += '\0';
  }
  return bytes;
}

// A blank before every line.
std::string shifted(const std::string& text) { return ' ' + replaced(text, "\n", "\n "); }

struct LayoutCase {
  const char* name;
  std::function<std::string(std::string)> change;
};

void PrintTo(const LayoutCase& row, std::ostream* out) { *out << row.name; }

const LayoutCase kLayouts[] = {
    {"ReturnAndFeed", [](auto text) { return replaced(text, "\n", "\r\n"); }},
    {"ReturnAlone", [](auto text) { return replaced(text, "\n", "\r"); }},
    {"Tabs", [](auto text) { return replaced(text, "    ", "\t"); }},
    {"NoBreakSpaces",
     [](auto text) { return replaced(text, "    ", "\xC2\xA0\xC2\xA0\xC2\xA0 "); }},
    {"NoBreakSpacesBetween",
     [](auto text) {
       return replaced(text, "0 0",
                       "0\xC2\xA0"
                       "0");
     }},
    {"TwoBlanks", [](auto text) { return replaced(text, "    ", "  "); }},
    {"OneBlank", [](auto text) { return replaced(text, "    ", " "); }},
    {"ABlankBeforeAll", [](auto text) { return shifted(text); }},
    {"NothingIndented", [](auto text) { return replaced(text, "    ", ""); }},
    {"NothingIndentedBehindABlank", [](auto text) { return shifted(replaced(text, "    ", "")); }},
    {"LowerCase",
     [](auto text) {
       for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
       return text;
     }},
    {"TrailingBlanks", [](auto text) { return replaced(text, "\n", "  \t\n"); }},
    {"EmptyLines", [](auto text) { return replaced(text, "\n", "\n\n   \n"); }},
    {"GluedEnds", [](auto text) { return replaced(text, " 4 BW", " 4BW"); }},
    {"Marks", [](auto text) { return replaced(text, " 4", " 4\""); }},
    {"CentreWithABoreOfZero",
     [](auto text) { return replaced(text, "1152.4 0 0\n", "1152.4 0 0 0\n"); }},
    {"Utf8Mark", [](auto text) { return "\xEF\xBB\xBF" + text; }},
    {"Utf16Little", [](auto text) { return utf16(text, false, true); }},
    {"Utf16Big", [](auto text) { return utf16(text, true, true); }},
    {"Utf16WithoutAMark", [](auto text) { return utf16(text, false, false); }},
    {"Utf16BigWithoutAMark", [](auto text) { return utf16(text, true, false); }},
    {"UnitsBelowThePipeline",
     [](auto text) {
       text = replaced(text, "UNITS-BORE INCH\nUNITS-CO-ORDS MM\n", "");
       return replaced(text, "    REVISION 0\n", "    UNITS-BORE INCH\n    UNITS-CO-ORDS MM\n");
     }},
    {"NoLastLineEnd", [](auto text) { return text.substr(0, text.size() - 1); }},
    {"MoreBehindTheEnds",
     [](auto text) { return replaced(text, " BW", " BW MALE INSULATION-OFF TRACING-ON"); }},
    {"NominalMillimetres",
     [](auto text) { return replaced(replaced(text, "INCH", "MM"), " 4", " 100"); }},
    {"BracketsAboutKeys",
     [](auto text) {
       return replaced(replaced(text, "SKEY ", "<SKEY> "), "END-POINT ", "<END-POINT> ");
     }},
    {"UnknownHeaders", [](auto text) { return "FOO-FILES x\nANOTHER-HEADER 1\n" + text; }},
    {"UnknownAttributes",
     [](auto text) { return replaced(text, "    SKEY", "    FOO BAR\n    X\n    SKEY"); }},
};

class Layouts : public testing::TestWithParam<LayoutCase> {};

TEST_P(Layouts, GiveTheSameRecords) {
  const PcfRun expected = runPcf(kPlant);
  ASSERT_EQ(expected.warnings + expected.errors, 0U) << expected.messageText();
  ASSERT_EQ(expected.components, 4U);
  const PcfRun run = runPcf(GetParam().change(kPlant));
  EXPECT_EQ(run.warnings + run.errors, 0U) << run.messageText();
  EXPECT_EQ(run.components, 4U) << run.messageText();
  ASSERT_EQ(run.records.size(), expected.records.size());
  for (std::size_t i = 0; i < run.records.size(); ++i) {
    if (run.records[i][0] == 'x') continue;
    EXPECT_EQ(run.records[i], expected.records[i]);
  }
}

INSTANTIATE_TEST_SUITE_P(Pcf, Layouts, testing::ValuesIn(kLayouts),
                         [](const auto& row) { return std::string(row.param.name); });

// At the middle of the component that follows, the flange.
TEST(Messages, WithoutAPlaceStandAtWhatFollows) {
  const PcfRun run = runPcf(kPlant);
  const std::vector<std::string> texts = run.recordsOf('x');
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_EQ(texts[0], "x 1152.4 190.4 0,1 0 0,0 0 1,50,30,1,18");
  EXPECT_EQ(texts[1], "x FIELD WELD TO SUIT");
}

// ---- words ---------------------------------------------------------------------------

struct WordCase {
  const char* name;
  const char* text;  // behind a pipe
  std::uint64_t components;
  std::uint64_t drawn;
  const char* said;  // part of what is said; nullptr: nothing
};

void PrintTo(const WordCase& row, std::ostream* out) { *out << row.name; }

// clang-format off
const WordCase kWords[] = {
    {"FlowArrowsAreNoAttribute", "FLOW-ARROW\n    CO-ORDS 5 0 0\n    SKEY FLOW\n", 2, 1, nullptr},
    {"UnknownComponentsMayBeginLikeAnAttribute", "FLOW-METER\n    END-POINT 9 0 0 100\n    END-POINT 20 0 0 100\n", 2, 2,
     "warning: FLOW-METER: unknown component; drawn like a piece of pipe"},
    {"UnknownComponentsMayBeginLikeAHeader", "SPOOL-PIECE\n    END-POINT 9 0 0 100\n    END-POINT 20 0 0 100\n", 2, 2,
     "warning: SPOOL-PIECE: unknown component; drawn like a piece of pipe"},
    {"PointsBelowAHeaderAreNamed", "AREA 51\n    END-POINT 9 0 0 100\n    END-POINT 20 0 0 100\n", 1, 1,
     "error: END-POINT: expected a component before it"},
    {"PointsBesideAHeaderAreNamed", "AREA 51\nEND-POINT 9 0 0 100\n", 1, 1,
     "error: END-POINT: expected a component before it"},
    {"PlacesBelowAHeaderAreItsOwn", "AREA 51\n    CO-ORDS 9 0 0\n", 1, 1, nullptr},
};
// clang-format on

class Words : public testing::TestWithParam<WordCase> {};

TEST_P(Words, AreTakenForWhatTheyAre) {
  const WordCase& row = GetParam();
  const PcfRun run =
      runPcf("PIPE\n    END-POINT 0 0 0 100\n    END-POINT 9 0 0 100\n    SKEY PIPW\n" +
             std::string(row.text));
  EXPECT_EQ(run.components, row.components) << run.messageText();
  EXPECT_EQ(run.drawn, row.drawn) << run.messageText();
  EXPECT_EQ(run.rows.at(0).values[7], "PIPW");
  if (row.said == nullptr) {
    EXPECT_EQ(run.messageText(), "");
  } else {
    EXPECT_NE(run.messageText().find(row.said), std::string::npos) << run.messageText();
  }
}

INSTANTIATE_TEST_SUITE_P(Pcf, Words, testing::ValuesIn(kWords),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Words, OfALineMayStandBeforeThePointsOfAFileThatIndentsNothing) {
  const PcfRun run = runPcf(
      "PIPE\nEND-POINT 0 0 0 100\nEND-POINT 9 0 0 100\n"
      "PIPE\nPIPELINE-REFERENCE Q\nEND-POINT 9 0 0 100\nEND-POINT 20 0 0 100\n"
      "PIPELINE-REFERENCE R\nPIPE\nEND-POINT 20 0 0 100\nEND-POINT 30 0 0 100\n");
  EXPECT_EQ(run.drawn, 3U);
  EXPECT_EQ(run.messageText(), "");
  EXPECT_EQ(run.headers.at(2).substr(0, 1), "Q");
  EXPECT_EQ(run.headers.at(4).substr(0, 1), "R");
}

TEST(Words, BelowAMessageOfAFileThatIndentsNothingAreItsText) {
  const PcfRun run = runPcf(
      "PIPE\nEND-POINT 0 0 0 100\nEND-POINT 9 0 0 100\nMESSAGE-CIRCLE\nWELD\n"
      "PIPE\nEND-POINT 9 0 0 100\nEND-POINT 20 0 0 100\n");
  EXPECT_EQ(run.drawn, 3U);
  EXPECT_EQ(run.messageText(), "");
  ASSERT_EQ(run.recordsOf('x').size(), 2U);
  EXPECT_EQ(run.recordsOf('x')[1], "x WELD");
}

TEST(Words, ThatAreUnknownAreSaidWithoutControlCharacters) {
  const PcfRun run = runPcf(
      "PIPE\n END-POINT 0 0 0 100\n END-POINT 9 0 0 100\n"
      "\x1B[31mFOO\xE9\n END-POINT 9 0 0 100\n END-POINT 20 0 0 100\n");
  EXPECT_EQ(run.messageText(),
            "in.pcf:4: warning: ?[31MFOO?: unknown component; drawn like a piece of pipe\n");
}

struct NoUnitCase {
  const char* name;
  const char* units;
  double bore;
  double outside;
  const char* said;
};

// clang-format off
const NoUnitCase kNoUnits[] = {
    {"OfTheCoordinates",    "UNITS-CO-ORDS INCH\n",                  6,   168.3, "in.pcf:2: note: no UNITS-BORE: bores are in inches, as the co-ordinates are\n"},
    {"NotIfTheyAreNoSizes", "UNITS-CO-ORDS INCH\n",                  150, 168.3, ""},
    {"Given",               "UNITS-CO-ORDS INCH\nUNITS-BORE MM\n",   20,  26.7,  ""},
    {"OfMillimetres",       "UNITS-CO-ORDS MM\n",                    20,  26.7,  ""},
};
// clang-format on

TEST(Units, OfBoresAreThoseOfTheCoordinatesIfNoneAreGiven) {
  for (const NoUnitCase& row : kNoUnits) {
    const std::string bore = std::to_string(static_cast<int>(row.bore));
    const PcfRun run = runPcf(std::string(row.units) + "PIPE\n END-POINT 0 0 0 " + bore +
                              "\n END-POINT 9 0 0 " + bore + '\n');
    EXPECT_NEAR(numbersOf(run.recordsOf('c').at(0)).back(), row.outside, 1e-4) << row.name;
    EXPECT_EQ(run.messageText(), row.said) << row.name;
  }
}

struct LengthCase {
  const char* unit;
  double millimetres;
};

// Ten of them along a pipe; records have millimetres.
TEST(Units, OfCoordinatesHaveTheseLengths) {
  static constexpr LengthCase kRows[] = {
      {"MM", 1},
      {"MMS", 1},
      {"MILLIMETRE", 1},
      {"MILLIMETRES", 1},
      {"MILLIMETER", 1},
      {"MILLIMETERS", 1},
      {"MM-HUNDREDTH", 0.01},
      {"MM-HUNDREDTHS", 0.01},
      {"CM", 10},
      {"M", 1000},
      {"METRE", 1000},
      {"METRES", 1000},
      {"METER", 1000},
      {"METERS", 1000},
      {"INCH", 25.4},
      {"INCHES", 25.4},
      {"IN", 25.4},
      {"INCH-SIXTEENTH", 1.5875},
      {"INCH-SIXTEENTHS", 1.5875},
      {"FEET", 304.8},
      {"FOOT", 304.8},
      {"FT", 304.8},
      {"inch", 25.4},
  };
  for (const LengthCase& row : kRows) {
    const PcfRun run = runPcf(std::string("UNITS-BORE MM\nUNITS-CO-ORDS ") + row.unit +
                              "\nPIPE\n END-POINT 0 0 0 100\n END-POINT 1000 2000 -3000 100\n");
    EXPECT_EQ(run.messageText(), "") << row.unit;
    const std::vector<double> pipe = numbersOf(run.recordsOf('c').at(0));
    EXPECT_NEAR(pipe[3], 1000 * row.millimetres, 1e-4) << row.unit;
    EXPECT_NEAR(pipe[4], 2000 * row.millimetres, 1e-4) << row.unit;
    EXPECT_NEAR(pipe[5], -3000 * row.millimetres, 1e-4) << row.unit;
    EXPECT_NEAR(pipe[6], 114.3, 1e-4) << row.unit;
  }
}

// A bore of so many is that of 2 feet, 24 inches: 610 wide.
TEST(Units, OfBoresHaveTheseLengths) {
  static constexpr std::pair<const char*, const char*> kRows[] = {
      {"MM", "600"},  {"CM", "60"},  {"M", "0.6"},     {"MM-HUNDREDTHS", "60000"},
      {"INCH", "24"}, {"IN", "24"},  {"INCHES", "24"}, {"INCH-SIXTEENTH", "384"},
      {"FEET", "2"},  {"FOOT", "2"}, {"FT", "2"},
  };
  for (const auto& [unit, bore] : kRows) {
    const PcfRun run = runPcf(std::string("UNITS-BORE ") + unit + "\nPIPE\n END-POINT 0 0 0 " +
                              bore + "\n END-POINT 1000 0 0 " + bore + "\n");
    EXPECT_NEAR(numbersOf(run.recordsOf('c').at(0)).back(), 610, 1e-4) << unit;
  }
}

// ---- junk --------------------------------------------------------------------------

struct JunkCase {
  const char* name;
  std::string bytes;
};

void PrintTo(const JunkCase& row, std::ostream* out) { *out << row.name; }

std::string noise(std::size_t size) {
  std::string bytes;
  std::uint32_t state = 1;
  for (std::size_t i = 0; i < size; ++i) {
    state = state * 1664525U + 1013904223U;
    bytes += static_cast<char>(state >> 24U);
  }
  return bytes;
}

std::string linesOfJunk() {
  std::string text;
  for (int i = 0; i < 10000; ++i) text += "\x1B[31mJUNK" + std::to_string(i) + " line\n";
  return text;
}

const JunkCase kJunk[] = {
    {"Empty", ""},
    {"Blank", "\n \n\t\n"},
    {"Letter", "Dear all, please find below\nHello\n\nSincerely yours\n"},
    {"Noise", noise(100000)},
    {"OneLongLine", std::string(100000, 'x')},
    {"Zeros", std::string(100000, '\0')},
    {"Lines", linesOfJunk()},
    {"WordsWithoutPoints", "SUPPORT\nyours sincerely\n"},
};

class Junk : public testing::TestWithParam<JunkCase> {};

TEST_P(Junk, IsOneError) {
  const PcfRun run = runPcf(GetParam().bytes);
  EXPECT_FALSE(run.isPiping);
  EXPECT_TRUE(run.records.empty());
  EXPECT_EQ(run.errors, 1U) << run.messageText();
  EXPECT_LE(run.messages.size(), 2U) << run.messageText();
}

INSTANTIATE_TEST_SUITE_P(Pcf, Junk, testing::ValuesIn(kJunk),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Junk, BehindAPlantIsAFewMessages) {
  const PcfRun run = runPcf(std::string(kPlant) +
                            "PIPE\n    END-POINT 0 9 0 4\n    END-POINT 9 9 0 4\n" + linesOfJunk());
  EXPECT_LE(run.messages.size(), 5U) << run.messageText();
  for (const char c : run.messageText()) EXPECT_TRUE(c >= ' ' || c == '\n');
}

// ---- the same fault many times -------------------------------------------------------

TEST(Messages, OfTheSameFaultAreOne) {
  std::string text;
  for (int i = 0; i < 74; ++i)
    text += "PIPE\n END-POINT " + std::to_string(i) + " 0 0 100\n END-POINT " + std::to_string(i) +
            " 0 0 100\n";
  const PcfRun run = runPcf(text);
  EXPECT_EQ(
      run.messageText(),
      "in.pcf:1: error: PIPE not drawn: has no length (74 times, also in.pcf:4, in.pcf:7 ...)\n");
  EXPECT_EQ(run.notDrawn, 74U);
}

struct UnitsCase {
  const char* name;
  std::vector<unsigned> units;  // of UTF-16
  const char* bytes;            // of UTF-8
};

// By the tables of Unicode: U+00C4, U+20AC, U+1F600 = 0x10000 + 0x3D << 10 + 0x200; what is only
// half of a pair is none.
const UnitsCase kUnits[] = {
    {"OneByte", {0x41}, "A"},
    {"TwoBytes", {0xC4, 0x7FF}, "\xC3\x84\xDF\xBF"},
    {"ThreeBytes", {0x800, 0x20AC, 0xFFFD}, "\xE0\xA0\x80\xE2\x82\xAC\xEF\xBF\xBD"},
    {"FourBytes",
     {0xD83D, 0xDE00, 0x41},
     "\xF0\x9F\x98\x80"
     "A"},
    {"TheLastOfAll", {0xDBFF, 0xDFFF}, "\xF4\x8F\xBF\xBF"},
    {"FirstHalfAlone", {0xD83D, 0x41}, "?A"},
    {"SecondHalfAlone", {0xDE00, 0x41}, "?A"},
    {"HalvesExchanged", {0xDE00, 0xD83D, 0x41}, "??A"},
};

TEST(Layouts, TextsOfUtf16AreTheSameAsOfUtf8) {
  for (const UnitsCase& row : kUnits) {
    for (const bool isBig : {false, true}) {
      std::string text = utf16("MESSAGE-CIRCLE\n CO-ORDS 1 2 3\n TEXT ", isBig, true);
      for (const unsigned unit : row.units) {
        const char low = static_cast<char>(unit & 0xFFU);
        const char high = static_cast<char>(unit >> 8U);
        text += isBig ? high : low;
        text += isBig ? low : high;
      }
      text += utf16("\n", isBig, false);
      const std::string bytes = row.bytes;
      EXPECT_EQ(runPcf(text).records,
                (std::vector<std::string>{
                    "x 1 2 3,1 0 0,0 0 1,50,30,1," + std::to_string(bytes.size()), "x " + bytes}))
          << row.name << isBig;
    }
  }
}

}  // namespace
