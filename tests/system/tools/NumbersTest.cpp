// SPDX-License-Identifier: MIT
// The numbers in the answers of the tool, each by the arithmetic beside it. What the answers
// look like is the matter of the transcripts.
#include "text/Numbers.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <numbers>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "elements/Encoder.h"
#include "output/RecordLayout.h"
#include "support/TempFolder.h"
#include "text/Table.h"
#include "text/Words.h"
#include "tools/ToolRun.h"
#include "vesk/Cyl.h"

namespace VeskTest {
namespace {

using std::numbers::pi;

// One element of each kind, none at the origin, with sizes that all differ.
const std::string kKinds =
    "P-1     01001    00c 1 2 3,0 3 4,10\n"
    "P-1     01002    00n 4 5 6,0 0 12,20,10\n"
    "P-1     01003    00t 7 8 9,100 0 0,0 100 0,20\n"
    "P-2     01004    00e 11 12 13,0 200 0,-200 0 0,30,40\n"
    "P-2     A100A    00b 10 0 0,21 22 23,0 20 0,0 0 30\n"
    "P-2     A1006    00l pt 31 32 33,pt 3 4 0,pt 3 4 12\n"
    "P-2     A1007    00g pt 41 42 43,pt 3 0 0,pt 0 4 0\n"
    "P-2     A1008    00x 51 52 53,1 0 0,0 1 0,2.5,0.5,1,2\n"
    "P-2     A1008    01x AB\n"
    "P-2     A1009    00r 61 62 63,10 0 0,0 20 0,10 20 0,0 0 30,10 0 30,0 20 30,10 20 30\n";

std::vector<std::string> split(const std::string& line) {
  std::vector<std::string> cells;
  std::istringstream stream(line + ',');
  for (std::string cell; std::getline(stream, cell, ',');) cells.push_back(cell);
  return cells;
}

// The cell of the first line that begins so, in the column of this name; "none" if there is none.
std::string cellOf(const std::string& csv, std::string_view row, std::string_view column) {
  std::istringstream lines(csv);
  std::string heading;
  std::getline(lines, heading);
  const std::vector<std::string> columns = split(heading);
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with(row)) continue;
    const std::vector<std::string> cells = split(line);
    for (std::size_t i = 0; i < columns.size() && i < cells.size(); ++i) {
      if (columns[i] == column) return cells[i];
    }
  }
  return "none";
}

struct Cell {
  const char* row;
  const char* column;
  double expected;
};

std::ostream& operator<<(std::ostream& out, const Cell& cell) {
  return out << cell.row << ' ' << cell.column;
}

void expectCells(const std::string& csv, const std::vector<Cell>& cells) {
  for (const Cell& cell : cells) {
    const std::string text = cellOf(csv, cell.row, cell.column);
    double value = std::nan("");
    const auto end = std::from_chars(text.data(), text.data() + text.size(), value).ptr;
    EXPECT_EQ(end, text.data() + text.size()) << cell << ": " << text;
    EXPECT_NEAR(value, cell.expected, 1e-12 * std::fabs(cell.expected)) << cell;
  }
}

TEST(ListNumbers, AreThoseOfEachKind) {
  const TempFolder folder;
  writeFile("kinds.dat", kKinds);
  const std::string csv = runTool("list --csv kinds.dat").out;
  expectCells(csv, {{"1,cylinder,P-1,01,1,", "x", 1},
                    {"1,", "y", 2},
                    {"1,", "z", 3},
                    {"1,", "length", 5},             // 3, 4, 5
                    {"1,", "volume", pi / 4 * 500},  // 10 * 10 * 5
                    {"1,", "diameter", 10},
                    {"2,cone,P-1,01,2,", "x", 4},
                    {"2,", "length", 12},
                    {"2,", "diameter", 20},
                    {"2,", "diameter2", 10},
                    {"2,", "volume", pi * (100 + 50 + 25) * 12 / 3},  // radii of 10 and 5
                    {"3,torus,P-1,01,3,", "y", 8},
                    {"3,", "radius", 100},
                    {"3,", "angle", 90},
                    {"3,", "diameter", 20},
                    {"3,", "volume", pi / 4 * 400 * (pi / 2 * 100)},  // the section and its way
                    {"4,elbow,P-2,01,4,", "z", 13},
                    {"4,", "radius", 200},
                    {"4,", "angle", 90},
                    {"4,", "depth", 30},
                    {"4,", "width", 40},
                    {"4,", "volume", 1200 * (pi / 2 * 200)},
                    {"5,box,P-2,A1,10,", "x", 21},  // 00A is 10 in base 36
                    {"5,", "edge1", 10},
                    {"5,", "edge2", 20},
                    {"5,", "edge3", 30},
                    {"5,", "volume", 6000},
                    {"6,polyline,", "y", 32},
                    {"6,", "length", 17},  // 3, 4, 5 and then 12 upwards
                    {"6,", "vertices", 3},
                    {"7,triangle,", "x", 41},
                    {"7,", "vertices", 3},
                    {"8,text,", "z", 53},
                    {"8,", "height", 2.5},
                    {"10,reducer,", "y", 62},
                    {"10,", "volume", 6000}});
  // What an element does not have is no 0.
  for (const Cell& none : {Cell{"1,", "diameter2", 0},
                           {"1,", "radius", 0},
                           {"1,", "vertices", 0},
                           {"3,", "length", 0},
                           {"4,", "diameter", 0},
                           {"5,", "length", 0},
                           {"10,", "edge1", 0}}) {
    EXPECT_EQ(cellOf(csv, none.row, none.column), "") << none;
  }
}

TEST(ListNumbers, AreThoseOfEachKindForPeople) {
  const TempFolder folder;
  writeFile("kinds.dat", kKinds);
  const std::string table = runTool("list kinds.dat").out;
  for (const char* part :
       {"1.000         2.000         3.000  length 5, diameter 10\n",
        "4.000         5.000         6.000  length 12, diameters 20 and 10\n",
        "  radius 100, angle 90, diameter 20\n", "  radius 200, angle 90, depth 30, width 40\n",
        "  edges 10, 20, 30\n", "  length 17, 3 vertices\n", "  3 vertices\n",
        "  height 2.5, \"AB\"\n", "  volume 6000\n"}) {
    EXPECT_TRUE(contains(table, part)) << part << table;
  }
}

struct SortCase {
  const char* name;
  const char* arguments;
  const char* lines;  // in their order
};

// By x: 1, 4, 7, 11, 21, 31, 41, 51, 61. By volume: 0 three times, 392.7, 2199.1, 6000 twice,
// 49348, 376991. By diameter: 10, 20, 20, and what has none in the order of the file.
constexpr SortCase kSorts[] = {
    {"ByX", "--sort x --descending", "10 8 7 6 5 4 3 2 1"},
    {"ByY", "--sort y", "1 2 3 4 5 6 7 8 10"},
    {"ByZ", "--sort z --descending --limit 2", "10 8"},
    {"ByVolume", "--sort volume", "6 7 8 1 2 5 10 3 4"},
    {"ByDiameter", "--sort diameter", "1 2 3 4 5 6 7 8 10"},
    {"ByDiameterDescending", "--sort diameter --descending", "2 3 1 4 5 6 7 8 10"},
    {"BySecondDiameter", "--sort diameter2 --limit 1", "2"},
    {"ByCounter", "--sort counter --descending --limit 3", "5 10 8"},
    {"ByKind", "--sort kind --limit 3", "3 5 2"},  // bend, box, cone
    {"ByHeader", "--sort header --descending --limit 1", "4"},
    {"ByGroup", "--sort group --descending --limit 1", "5"},
    {"ByAngle", "--sort angle --limit 2", "3 4"},
    {"ByHeight", "--sort height --limit 1", "8"},
};

TEST(ListNumbers, AreSortedBy) {
  const TempFolder folder;
  writeFile("kinds.dat", kKinds);
  for (const SortCase& each : kSorts) {
    const std::string csv = runTool(std::string("list -q --csv kinds.dat ") + each.arguments).out;
    std::istringstream rows(csv);
    std::string row;
    std::getline(rows, row);
    std::string lines;
    while (std::getline(rows, row))
      lines += (lines.empty() ? "" : " ") + row.substr(0, row.find(','));
    EXPECT_EQ(lines, each.lines) << each.name;
  }
}

// Pipes of 114.3 and 60.3, a cone between both, a duct, a quarter bend, lines, and a face:
// every sum of a take-off has something in it from two files.
const std::string kFirst =
    "P-1     A1001    00c 0 0 0,0 0 2000,114.3\n"
    "P-1     A1002    00n 0 0 0,0 0 100,114.3,60.3\n"
    "P-1     A1003    00b 1000 0 0,0 0 0,0 400 0,0 0 300\n"
    "P-1     A1004    00l pt 0 0 0,pt 3000 4000 0\n";
const std::string kSecond =
    "P-1     A1001    00c 0 0 0,0 0 1000,114.3\n"
    "P-1     A1002    00t 0 0 0,300 0 0,0 300 0,114.3\n"
    "P-2     A1001    00c 0 0 0,0 0 1000,60.3\n"
    "P-2     A1002    00l pt 0 0 0,pt 2000 0 0\n"
    "P-2     A1003    00g pt 0 0 0,pt 1000 0 0,pt 1000 1000 0,pt 0 1000 0\n";

// Schedule 40 has walls of 6.02 and 3.91 mm for these. Insulation is 50 mm thick.
constexpr double kD1 = 0.1143;
constexpr double kD2 = 0.0603;
constexpr double kIn1 = kD1 - 2 * 0.00602;
constexpr double kIn2 = kD2 - 2 * 0.00391;
constexpr double kOut1 = kD1 + 0.1;
constexpr double kOut2 = kD2 + 0.1;

double disc(double d) { return pi / 4 * d * d; }
double frustum(double a, double b) { return pi / 12 * (a * a + a * b + b * b) * 0.1; }
double slope(double a, double b) { return pi * (a + b) / 2 * std::hypot(0.1, (a - b) / 2); }

// Of pipe of 114.3, bends included, and of 60.3.
const double kLong1 = 3 + 0.3 * pi / 2;
const double kLong2 = 1;

const double kVolume =
    disc(kD1) * kLong1 + disc(kD2) * kLong2 + frustum(kD1, kD2) + 1.0 * 0.4 * 0.3;
// Quadrangle of 1 m2 seen from one side; the duct has 2 * (0.4 + 0.3 + 0.12).
const double kSurface = pi * kD1 * kLong1 + pi * kD2 * kLong2 + slope(kD1, kD2) + 1.64 + 1;
const double kContent = disc(kIn1) * kLong1 + disc(kIn2) * kLong2 + frustum(kIn1, kIn2);
const double kSteel = kVolume - 0.12 - kContent;  // the duct has no wall
const double kInsulation = (disc(kOut1) - disc(kD1)) * kLong1 + (disc(kOut2) - disc(kD2)) * kLong2 +
                           frustum(kOut1, kOut2) - frustum(kD1, kD2) + (0.5 * 0.4 - 0.4 * 0.3);
const double kCladding =
    pi * kOut1 * kLong1 + pi * kOut2 * kLong2 + slope(kOut1, kOut2) + 2 * (0.5 + 0.4);

constexpr char kMeasure[] =
    "measure -q --csv --schedule 40 --density 8000 --content 850 --insulation 50 ";

TEST(MeasureNumbers, AddUpOverFiles) {
  const TempFolder folder;
  writeFile("a.dat", kFirst);
  writeFile("b.dat", kSecond);
  const std::string csv = runTool(std::string(kMeasure) + "a.dat b.dat").out;
  expectCells(csv, {{"total,", "count", 9},
                    {"total,", "length_m", kLong1 + kLong2 + 0.1 + 1},
                    {"total,", "lines_m", 5 + 2},
                    {"total,", "surface_m2", kSurface},
                    {"total,", "volume_m3", kVolume},
                    {"total,", "weight_kg", kSteel * 8000},
                    {"total,", "content_m3", kContent},
                    {"total,", "content_weight_kg", kContent * 850},
                    {"total,", "insulation_m3", kInsulation},
                    {"total,", "insulation_surface_m2", kCladding},
                    {"total,", "without_wall", 1},
                    {"row,,,,cylinder,114.3,", "count", 2},
                    {"row,,,,cylinder,114.3,", "length_m", 3},
                    {"row,,,,cylinder,114.3,", "wall1_mm", 6.02},
                    {"row,,,,cylinder,60.3,", "wall1_mm", 3.91},
                    {"row,,,,cone,114.3,60.3,", "wall1_mm", 6.02},
                    {"row,,,,cone,114.3,60.3,", "wall2_mm", 3.91},
                    {"row,,,,box,0,0,400,300,", "wall1_mm", 0},
                    {"row,,,,box,0,0,400,300,", "without_wall", 1},
                    {"row,,,,segment,", "lines_m", 7},
                    {"row,,,,quadrangle,", "surface_m2", 1}});
}

TEST(MeasureNumbers, AddUpInGroupsOverFiles) {
  const TempFolder folder;
  writeFile("a.dat", kFirst);
  writeFile("b.dat", kSecond);
  const std::string csv = runTool(std::string(kMeasure) + "--by header a.dat b.dat").out;
  expectCells(csv,
              {{"subtotal,header,P-1 A1,", "count", 6},
               {"subtotal,header,P-1 A1,", "length_m", kLong1 + 0.1 + 1},
               {"subtotal,header,P-1 A1,", "lines_m", 5},
               {"subtotal,header,P-1 A1,", "volume_m3", kVolume - disc(kD2)},
               {"subtotal,header,P-1 A1,", "without_wall", 1},
               {"subtotal,header,P-2 A1,", "count", 3},
               {"subtotal,header,P-2 A1,", "lines_m", 2},
               {"subtotal,header,P-2 A1,", "surface_m2", pi * kD2 + 1},
               {"subtotal,header,P-2 A1,", "content_m3", disc(kIn2)},
               {"subtotal,header,P-2 A1,", "insulation_surface_m2", pi * kOut2},
               {"row,header,P-1 A1,,cylinder,114.3,", "length_m", 3},
               {"row,header,P-2 A1,,cylinder,60.3,", "weight_kg", (disc(kD2) - disc(kIn2)) * 8000},
               {"total,", "volume_m3", kVolume},
               {"total,", "insulation_m3", kInsulation}});
}

TEST(MeasureNumbers, AreGivenInFeetAndPounds) {
  const TempFolder folder;
  writeFile("a.dat", kFirst);
  writeFile("b.dat", kSecond);
  const std::string csv = runTool(std::string(kMeasure) + "--units imperial a.dat b.dat").out;
  constexpr double kFoot = 0.3048;
  expectCells(csv, {{"total,", "length_ft", (kLong1 + kLong2 + 1.1) / kFoot},
                    {"total,", "lines_ft", 7 / kFoot},
                    {"total,", "surface_ft2", kSurface / kFoot / kFoot},
                    {"total,", "volume_ft3", kVolume / kFoot / kFoot / kFoot},
                    {"total,", "weight_lb", kSteel * 8000 / 0.45359237},
                    {"total,", "content_ft3", kContent / kFoot / kFoot / kFoot},
                    {"total,", "content_weight_lb", kContent * 850 / 0.45359237},
                    {"total,", "insulation_ft3", kInsulation / kFoot / kFoot / kFoot},
                    {"total,", "insulation_surface_ft2", kCladding / kFoot / kFoot},
                    {"total,", "count", 9},
                    // 114.3 / 25.4 = 4.5; 6.02 / 25.4 = 0.23701; angles are degrees.
                    {"row,,,,cylinder,4.5,", "wall1_in", 0.237},
                    {"row,,,,torus,4.5,", "radius_in", 11.811},
                    {"row,,,,torus,4.5,", "angle_deg", 90}});
}

// Metres are 1000 mm: the volumes are those of the same plant in millimetres.
TEST(MeasureNumbers, GoByTheUnitOfTheFile) {
  const TempFolder folder;
  writeFile("metres.dat",
            "P-1     A1001    00c 0 0 0,0 0 2,0.1143\n"
            "P-1     A1002    00t 0 0 0,0.3 0 0,0 0.3 0,0.1143\n"
            "P-1     A1003    00b 1 0 0,0 0 0,0 0.4 0,0 0 0.3\n"
            "P-1     A1004    00n 0 0 0,0 0 0.1,0.1143,0.0603\n"
            "P-1     A1005    00l pt 0 0 0,pt 3 4 0\n"
            "P-1     A1006    00e 0 0 0,0.5 0 0,0 0.5 0,0.3,0.4\n");
  const std::string csv = runTool(std::string(kMeasure) + "--unit 1000 metres.dat").out;
  expectCells(csv, {{"row,,,,cylinder,114.3,", "length_m", 2},
                    {"row,,,,cylinder,114.3,", "wall1_mm", 6.02},
                    {"row,,,,cylinder,114.3,", "content_m3", disc(kIn1) * 2},
                    {"row,,,,cylinder,114.3,", "insulation_surface_m2", pi * kOut1 * 2},
                    {"row,,,,torus,114.3,0,0,0,300,90,", "length_m", 0.3 * pi / 2},
                    {"row,,,,box,0,0,400,300,", "volume_m3", 0.12},
                    {"row,,,,box,", "surface_m2", 1.64},
                    {"row,,,,cone,114.3,60.3,", "volume_m3", frustum(kD1, kD2)},
                    {"row,,,,segment,", "lines_m", 5},
                    {"row,,,,elbow,0,0,400,300,500,90,", "volume_m3", 0.12 * 0.5 * pi / 2}});
}

struct TurnCase {
  const char* name;
  const char* options;
  const char* record;  // the pipe at 1 2 3 with the axis 4 5 6 and the diameter 10
};

// By the right hand: about x, y goes to z; about y, z to x; about z, x to y. The sine of 30
// degrees is 0.5, the cosine 0.866025.
constexpr TurnCase kTurns[] = {
    {"AboutX", "--rotate x,90", "1 -3 2,4 -6 5,10"},
    {"AboutY", "--rotate y,90", "3 2 -1,6 5 -4,10"},
    {"AboutZ", "--rotate z,90", "-2 1 3,-5 4 6,10"},
    {"AboutXBackwards", "--rotate x,-90", "1 3 -2,4 6 -5,10"},
    {"AboutYBackwards", "--rotate y,-90", "-3 2 1,-6 5 4,10"},
    {"AboutZBackwards", "--rotate z,-90", "2 -1 3,5 -4 6,10"},
    {"ThreeQuartersAreOneBack", "--rotate z,270", "2 -1 3,5 -4 6,10"},
    {"HalfATurn", "--rotate z,180", "-1 -2 3,-4 -5 6,10"},
    {"HalfATurnBackwards", "--rotate y,-180", "-1 2 -3,-4 5 -6,10"},
    {"AWholeTurn", "--rotate x,360", "1 2 3,4 5 6,10"},
    // 1 - 2 * 0.5 ... : x cos - y sin, x sin + y cos.
    {"AnotherAngleAboutZ", "--rotate z,30", "-0.134 2.2321 3,0.964102 6.330127 6,10"},
    {"AnotherAngleAboutX", "--rotate x,30", "1 0.2321 3.5981,4 1.330127 7.696152,10"},
    {"AnotherAngleAboutY", "--rotate y,30", "2.366 2 2.0981,6.464102 5 3.196152,10"},
    // First to (-2, 1, 3), then y goes to z.
    {"OneTurnAfterTheOther", "--rotate z,90 --rotate x,90", "-2 -3 1,-5 -6 4,10"},
    {"Moved", "--move 100,-200,300", "101 -198 303,4 5 6,10"},
    {"Scaled", "--scale 0.5", "0.5 1 1.5,2 2.5 3,5"},
    {"ScaledThenTurnedThenMoved", "--move 1,1,1 --rotate z,90 --scale 2", "-3 3 7,-10 8 12,20"},
};

TEST(ConvertNumbers, TurnMoveAndScale) {
  const TempFolder folder;
  for (const TurnCase& each : kTurns) {
    const ToolRun run = runTool(std::string("convert -q - - ") + each.options,
                                "P-1     01001    00c 1 2 3,4 5 6,10\n");
    EXPECT_EQ(run.out, std::string("P-1     01001    00c ") + each.record + '\n') << each.name;
  }
}

// About x: y goes to z and z to -y, of every point and vector; sizes stay.
TEST(ConvertNumbers, TurnEveryKind) {
  const TempFolder folder;
  EXPECT_EQ(runTool("convert - - --rotate x,90", kKinds).out,
            "P-1     01001    00c 1 -3 2,0 -4 3,10\n"
            "P-1     01002    00n 4 -6 5,0 -12 0,20,10\n"
            "P-1     01003    00t 7 -9 8,100 0 0,0 0 100,20\n"
            "P-2     01004    00e 11 -13 12,0 0 200,-200 0 0,30,40\n"
            "P-2     A100A    00b 10 0 0,21 -23 22,0 0 20,0 -30 0\n"
            "P-2     A1006    00l pt 31 -33 32,pt 3 0 4,pt 3 -12 4\n"
            "P-2     A1007    00g pt 41 -43 42,pt 3 0 0,pt 0 0 4\n"
            "P-2     A1008    00x 51 -53 52,1 0 0,0 0 1,2.5,0.5,1,2\n"
            "P-2     A1008    01x AB\n"
            "P-2     A1009    00r 61 -63 62,10 0 0,0 0 20,10 0 20,0 -30 0,10 -30 0,0 -30 20,"
            "10 -30 20\n");
}

// Twice as far from the origin, and all sizes twice as large.
TEST(ConvertNumbers, ScaleEveryKind) {
  const TempFolder folder;
  EXPECT_EQ(runTool("convert - - --scale 2", kKinds).out,
            "P-1     01001    00c 2 4 6,0 6 8,20\n"
            "P-1     01002    00n 8 10 12,0 0 24,40,20\n"
            "P-1     01003    00t 14 16 18,200 0 0,0 200 0,40\n"
            "P-2     01004    00e 22 24 26,0 400 0,-400 0 0,60,80\n"
            "P-2     A100A    00b 20 0 0,42 44 46,0 40 0,0 0 60\n"
            "P-2     A1006    00l pt 62 64 66,pt 6 8 0,pt 6 8 24\n"
            "P-2     A1007    00g pt 82 84 86,pt 6 0 0,pt 0 8 0\n"
            "P-2     A1008    00x 102 104 106,1 0 0,0 1 0,5,1,1,2\n"
            "P-2     A1008    01x AB\n"
            "P-2     A1009    00r 122 124 126,20 0 0,0 40 0,20 40 0,0 0 60,20 0 60,0 40 60,"
            "20 40 60\n");
}

struct BoxCase {
  const char* name;
  const char* box;
  const char* lines;  // of three pipes of 2 mm: along x, y and z, each 100 long from 10
};

// x from 10 to 110 at y = z = 500; y from 10 to 110 at x = z = 500; z likewise.
constexpr BoxCase kBoxes[] = {
    {"AlongX", "0,400,400,200,600,600", "1"},
    {"AlongY", "400,0,400,600,200,600", "2"},
    {"AlongZ", "400,400,0,600,600,200", "3"},
    {"All", "0,0,0,600,600,600", "1 2 3"},
    {"BeforeX", "0,400,400,9.9,600,600", ""},
    {"AtTheBeginningOfX", "0,400,400,10.1,600,600", "1"},
    {"BehindX", "110.1,400,400,200,600,600", ""},
    {"AtTheEndOfX", "109.9,400,400,200,600,600", "1"},
    {"BeforeY", "400,0,400,600,9.9,600", ""},
    {"AtTheEndOfY", "400,109.9,400,600,200,600", "2"},
    {"BehindZ", "400,400,110.1,600,600,200", ""},
    {"AtTheBeginningOfZ", "400,400,0,600,600,10.1", "3"},
    // 499 is the surface.
    {"BesideX", "0,0,0,200,498.9,600", ""},
    {"AtTheSideOfX", "0,400,0,200,499.1,600", "1"},
};

TEST(ListNumbers, AreWhereTheBoxIs) {
  const TempFolder folder;
  writeFile("axes.dat",
            "P-1     01001    00c 10 500 500,100 0 0,2\n"
            "P-1     01002    00c 500 10 500,0 100 0,2\n"
            "P-1     01003    00c 500 500 10,0 0 100,2\n");
  for (const BoxCase& each : kBoxes) {
    const std::string csv = runTool(std::string("list -q --csv axes.dat --bbox ") + each.box).out;
    std::istringstream rows(csv);
    std::string row;
    std::getline(rows, row);
    std::string lines;
    while (std::getline(rows, row))
      lines += (lines.empty() ? "" : " ") + row.substr(0, row.find(','));
    EXPECT_EQ(lines, each.lines) << each.name;
  }
}

// Along x the elbow reaches from 11 - 200 - 15 on and the bend to 7 + 100 + 10; along y the cone
// from 5 - 10 on and the elbow to 12 + 200 + 15; along z the elbow from 13 - 20 on and the reducer
// to 63 + 30.
TEST(InfoNumbers, AreThoseOfTheFile) {
  const TempFolder folder;
  writeFile("kinds.dat", kKinds);
  const auto file =
      nlohmann::json::parse(runTool("info --json --headers kinds.dat").out)["files"][0];
  EXPECT_EQ(file["headerList"], nlohmann::json::parse(R"([
      {"header": "P-1 01", "elements": 3},
      {"header": "P-2 01", "elements": 1},
      {"header": "P-2 A1", "elements": 5}])"));
  EXPECT_EQ(file["elements"], 9);
  EXPECT_EQ(file["headers"], 3);
  EXPECT_EQ(file["lines"], 10);
  EXPECT_EQ(file["bytes"], kKinds.size());
  const std::vector<double> box = {-204, -5, -7, 117, 227, 93};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(file["box"]["min"][i].get<double>(), box[i], 1e-9) << i;
    EXPECT_NEAR(file["box"]["max"][i].get<double>(), box[3 + i], 1e-9) << i;
  }
  EXPECT_NEAR(
      file["volume"].get<double>(),
      pi / 4 * 500 + pi * 700 + pi / 4 * 400 * (pi / 2 * 100) + 1200 * (pi / 2 * 200) + 6000 + 6000,
      1e-6);
}

// Files read back may be off by two of the last digit that a column of nine characters has for
// four times the largest number, with its sign; tokens by 0.0002 and what 64 bits leave.
TEST(EncoderTolerance, IsTwoOfTheLastDigits) {
  using VeskTool::Encoder;
  const auto pipe = [](double length) { return Vesk::Cyl({1, 2, 3}, {1, 2, length + 3}, 10); };
  EXPECT_NEAR(Encoder(Vesk::kFixedColumns).toleranceOf(pipe(100)), 0.002, 1e-12);   // -400.000
  EXPECT_NEAR(Encoder(Vesk::kFixedColumns).toleranceOf(pipe(1000)), 0.002, 1e-12);  // -4000.000
  EXPECT_NEAR(Encoder(Vesk::kFixedColumns).toleranceOf(pipe(10000)), 0.02, 1e-12);  // -40000.00
  EXPECT_NEAR(Encoder(Vesk::kFixedColumns).toleranceOf(pipe(100000)), 0.2, 1e-12);  // -400000.0
  EXPECT_NEAR(Encoder(Vesk::kTokens).toleranceOf(pipe(100)), 2e-4, 1e-11);
  EXPECT_NEAR(Encoder(Vesk::kTokens).toleranceOf(pipe(1e9)), 2e-4 + 4e9 * 1e-14, 1e-11);
}

// Without an exponent from 1e-5 up to 1e16; the shortest that is the number again.
TEST(ShortestNumbers, HaveAnExponentOnlyFarFromOne) {
  using VeskTool::shortest;
  EXPECT_EQ(shortest(0.0), "0");
  EXPECT_EQ(shortest(-0.5), "-0.5");
  EXPECT_EQ(shortest(1e-5), "0.00001");
  EXPECT_EQ(shortest(-1e-5), "-0.00001");
  EXPECT_EQ(shortest(9e-6), "9e-06");
  EXPECT_EQ(shortest(9e15), "9000000000000000");
  EXPECT_EQ(shortest(1e16), "1e+16");
  EXPECT_EQ(shortest(0.1 + 0.2), "0.30000000000000004");
}

TEST(RoundedNumbers, KeepTheirDecimals) {
  EXPECT_EQ(VeskTool::rounded(1.0, 3), "1.000");
  EXPECT_EQ(VeskTool::rounded(-0.0004, 3), "0.000");
  EXPECT_EQ(VeskTool::rounded(2.9996, 3), "3.000");
  EXPECT_EQ(VeskTool::rounded(12.34, 1), "12.3");
  EXPECT_EQ(VeskTool::trimmedNumber(1.5004, 3), "1.5");
  EXPECT_EQ(VeskTool::trimmedNumber(-0.0004, 3), "0");
}

// By letters, not by bytes.
TEST(PaddedTexts, AreAsWideAsTheirLetters) {
  using Side = VeskTool::Table::Side;
  EXPECT_EQ(VeskTool::padded("\xc3\xa4", 3, Side::kLeft), "\xc3\xa4  ");
  EXPECT_EQ(VeskTool::padded("\xc3\xa4", 3, Side::kRight), "  \xc3\xa4");
  EXPECT_EQ(VeskTool::padded("abc", 3, Side::kRight), "abc");
  EXPECT_EQ(VeskTool::padded("abcd", 3, Side::kRight), "abcd");
  VeskTool::Table table({{"\xc3\xa4", Side::kLeft}, {"N", Side::kRight}, {"", Side::kLeft}});
  table.add({"one", "5", ""});
  table.add({"\xc3\xb6\xc3\xbc", "1000", "x"});
  EXPECT_EQ(table.text(), "\xc3\xa4       N\none     5\n\xc3\xb6\xc3\xbc   1000  x\n");
}

TEST(WrappedTexts, KeepToTheWidth) {
  EXPECT_EQ(VeskTool::wrapped("aa bb cc", 2, 7), "  aa bb\n  cc\n");
  EXPECT_EQ(VeskTool::wrapped("aa bb cc", 2, 6), "  aa\n  bb\n  cc\n");
  EXPECT_EQ(VeskTool::wrapped("aaaaaaaaa b", 2, 6), "  aaaaaaaaa\n  b\n");
}

TEST(GroupedNumbers, HaveABlankForEachThousand) {
  EXPECT_EQ(VeskTool::grouped(0), "0");
  EXPECT_EQ(VeskTool::grouped(999), "999");
  EXPECT_EQ(VeskTool::grouped(1000), "1 000");
  EXPECT_EQ(VeskTool::grouped(1234567), "1 234 567");
  EXPECT_EQ(VeskTool::counted(1, "element"), "1 element");
  EXPECT_EQ(VeskTool::counted(0, "element"), "0 elements");
  EXPECT_EQ(VeskTool::counted(2000, "element"), "2 000 elements");
}

// By the place in A; what is added comes last, by its place in B.
TEST(DiffNumbers, AreInTheOrderOfTheFiles) {
  const TempFolder folder;
  writeFile("a.dat",
            "P-1     01001    00c 0 0 0,0 0 9,4\n"
            "P-1     01002    00c 500 0 0,0 0 9,4\n"
            "P-1     01003    00b 5 0 0,1 2 3,0 6 0,0 0 7\n");
  writeFile("b.dat",
            "P-1     01004    00n 70 80 90,0 0 9,4,2\n"
            "P-1     01002    00c 500 0 0,0 0 9,6\n"
            "P-1     01003    00b 5 0 0,2 0 6,0 6 0,0 0 7\n"
            "P-1     01005    00l pt 1 2 3,pt 4 5 6\n");
  EXPECT_EQ(runTool("diff a.dat b.dat").out,
            "- A:1  cylinder P-1 01/1: removed at 0 0 0, length 9, diameter 4\n"
            "~ A:2 B:2  cylinder P-1 01/2: changed: diameter from 4 to 6\n"
            "~ A:3 B:3  box P-1 01/3: moved by 1 -2 3\n"
            "+        B:1  cone P-1 01/4: added at 70 80 90, length 9, diameters 4 and 2\n"
            "+        B:4  segment P-1 01/5: added at 1 2 3, length 8.775\n"  // sqrt(16 + 25 + 36)
            "1 moved, 1 changed, 2 added, 1 removed; 0 in their places\n");
  const auto json = nlohmann::json::parse(runTool("diff --json a.dat b.dat").out);
  std::string lines;
  for (const auto& each : json["differences"]) {
    lines +=
        each["lineA"].dump() + ' ' + each["lineB"].dump() + ' ' + each["movedBy"].dump() + '\n';
  }
  EXPECT_EQ(lines, "1 null [0,0,0]\n2 2 [0,0,0]\n3 3 [1,-2,3]\nnull 1 [0,0,0]\nnull 4 [0,0,0]\n");
}

// Of two files whose sidecars have other columns, in another order; what is empty is left out.
TEST(ListNumbers, HaveTheAttributesOfTheirRows) {
  const TempFolder folder;
  writeFile("a.dat", kKinds.substr(0, kKinds.find('\n') + 1));
  writeFile("b.dat", kKinds.substr(0, kKinds.find('\n') + 1));
  writeFile("a.attributes.csv", "f1,f2,first,last,spec,tag\nP-1,01,1,1,A1,V-7\n");
  writeFile("b.attributes.csv", "f1,f2,first,last,note,tag,spec\nP-1,01,1,1,new,,B2\n");
  const auto elements = nlohmann::json::parse(runTool("list --json a.dat b.dat").out)["elements"];
  EXPECT_EQ(elements[0]["attributes"], nlohmann::json::parse(R"({"spec": "A1", "tag": "V-7"})"));
  EXPECT_EQ(elements[1]["attributes"], nlohmann::json::parse(R"({"spec": "B2", "note": "new"})"));
  const std::string csv = runTool("list --csv a.dat b.dat").out;
  EXPECT_EQ(cellOf(csv, "a.dat,1,", "spec"), "A1");
  EXPECT_EQ(cellOf(csv, "a.dat,1,", "tag"), "V-7");
  EXPECT_EQ(cellOf(csv, "b.dat,1,", "spec"), "B2");
  EXPECT_EQ(cellOf(csv, "b.dat,1,", "tag"), "");
  EXPECT_EQ(cellOf(csv, "b.dat,1,", "note"), "new");
}

}  // namespace
}  // namespace VeskTest
