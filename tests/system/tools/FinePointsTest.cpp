// SPDX-License-Identifier: MIT
// What tells an answer from one that is nearly right: each row names the point, and what is
// expected follows from the records beside it.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "support/TempFolder.h"
#include "tools/Exported.h"
#include "tools/ToolRun.h"

namespace VeskTest {
namespace {

using Json = nlohmann::json;

struct FinePoint {
  const char* name;
  const char* arguments;
  int exit;
  std::vector<const char*> out = {};     // parts of stdout
  std::vector<const char*> err = {};     // parts of stderr
  std::vector<const char*> absent = {};  // what stands in neither
};

const std::map<std::string, std::string> kFiles = {
    // Bends of 100 with a stated radius of 100.05, and of 100.
    {"radius.dat",
     "60    01  P-1     001TOR    0.000    0.000    0.000  100.000    0.000    0.000    0.000"
     "  100.000    0.000  100.050   20.000\n"},
    {"same-radius.dat",
     "60    01  P-1     001TOR    0.000    0.000    0.000  100.000    0.000    0.000    0.000"
     "  100.000    0.000  100.000   20.000\n"},
    // Three pipes of which columns keep three decimals.
    {"decimals.dat",
     "P-1     01001    00c 0 0 0,0 0 1000,100.00004\n"
     "P-1     01002    00c 0 9 0,0 0 1000,100.00004\n"
     "P-1     01003    00c 0 18 0,0 0 1000,100.00004\n"},
    // Polygons of four and of five corners.
    {"four.dat", "P-1     01001    00g pt 0 0 0,pt 10 0 0,pt 10 10 0,pt 0 10 0\n"},
    {"five.dat", "P-1     01001    00g pt 0 0 0,pt 10 0 0,pt 15 5 0,pt 10 10 0,pt 0 10 0\n"},
    // A box with a mark of values that columns round.
    {"mark.dat",
     "P-1     01001    00b 10 0 0,0 0 0,0 20 0,0 0 30\n"
     "P-1     01001    00beed seam 1.25 2.0004\n"},
    {"tag.dat",
     "P-1     01001    00r 0 0 0,10 0 0,0 10 0,10 10 0,0 0 20,10 0 20,0 10 20,10 10 20\n"
     "P-1     01001    00reed side 1.25 2.0004\n"},
    {"tk.dat", "P-1     01001    00c 0 0 0,0 0 1000,100,ft 7,tk 0\n"},
    // A bend whose vectors are 100 and 102 long: 101 in the mean.
    {"two-radii.dat", "P-1     01001    00t 0 0 0,100 0 0,0 102 0,20\n"},
    {"formula.dat",
     "P-1     01001    00x 1 2 3,1 0 0,0 1 0,2.5,0.5,1,5\n"
     "P-1     01001    01x =A1+1\n"},
    {"formula.attributes.csv", "f1,f2,first,last,note\nP-1,01,1,1,'-2+3\n"},
    // The same number in two groups: two components.
    {"groups.dat",
     "P-1     01001    00c 0 0 0,0 0 1000,114.3\n"
     "P-1     02001    00c 0 0 0,0 0 1000,114.3\n"},
    {"groups.attributes.csv", "f1,f2,first,last,spec\nP-1,01,1,1,A1\nP-1,02,1,1,A1\n"},
    {"more.dat", "P-1     01009    00c 0 0 0,0 0 1000,114.3\n"},
    {"more.attributes.csv", "f1,f2,first,last,spec\nP-1,01,9,9,A1\n"},
    // Of bends that rounding has set apart most are of 300.03.
    {"bends.dat",
     "P-1     01001    00t 0 0 0,300 0 0,0 300 0,114.3\n"
     "P-1     01002    00t 0 0 0,300.03 0 0,0 300.03 0,114.3\n"
     "P-1     01003    00t 0 0 0,300.03 0 0,0 300.03 0,114.3\n"},
    // Twins, and the same under other numbers.
    {"twins.dat",
     "P-1     01001    00c 0 0 0,0 0 9,4\n"
     "P-1     01002    00c 0 0 0,0 0 9,4\n"},
    {"other-twins.dat",
     "P-1     01011    00c 0 0 0,0 0 9,4\n"
     "P-1     01012    00c 0 0 0,0 0 9,4\n"},
    // Two pipes of one number; of one of them something is left, 5 aside and wider.
    {"pair.dat",
     "P-1     01001    00c 0 0 0,0 0 9,4\n"
     "P-1     01001    00c 1000 0 0,0 0 9,4\n"},
    {"rest.dat", "P-1     01001    00c 1005 0 0,0 0 9,6\n"},
    // Diameters of 10.2 and 10.4, then in exchanged places 5000 away.
    {"widths.dat",
     "P-1     01001    00c 0 0 0,0 0 9,10.2\n"
     "P-1     01002    00c 50 0 0,0 0 9,10.4\n"},
    {"exchanged.dat",
     "P-1     01011    00c 0 5000 0,0 0 9,10.4\n"
     "P-1     01012    00c 50 5000 0,0 0 9,10.2\n"},
    // A pipe from 0 to 1000 that becomes one from 300 to 310: their middles are 195 apart.
    {"long.dat", "P-1     01001    00c 0 0 0,1000 0 0,4\n"},
    {"short.dat", "P-1     01002    00c 300 0 0,10 0 0,6\n"},
    // Three and four that go up by 50.
    {"three.dat",
     "P-1     01001    00c 0 0 0,0 0 9,4\n"
     "P-1     01002    00c 100 0 0,0 0 9,5\n"
     "P-1     01003    00c 200 0 0,0 0 9,6\n"},
    {"three-up.dat",
     "P-1     01001    00c 0 0 50,0 0 9,4\n"
     "P-1     01002    00c 100 0 50,0 0 9,5\n"
     "P-1     01003    00c 200 0 50,0 0 9,6\n"},
    {"four.one.dat",
     "P-1     01001    00c 0 0 0,0 0 9,4\n"
     "P-1     01002    00c 100 0 0,0 0 9,5\n"
     "P-1     01003    00c 200 0 0,0 0 9,6\n"
     "P-1     01004    00c 300 0 0,0 0 9,7\n"},
    {"four-up.dat",
     "P-1     01001    00c 0 0 50,0 0 9,4\n"
     "P-1     01002    00c 100 0 50,0 0 9,5\n"
     "P-1     01003    00c 200 0 50,0 0 9,6\n"
     "P-1     01004    00c 300 0 50,0 0 9,7\n"},
    // A gap of half a millimetre between the first two.
    {"gap.dat",
     "P-1     01001    00c 0 0 0,1000 0 0,100\n"
     "P-1     01002    00c 1000.5 0 0,1000 0 0,100\n"
     "P-1     01003    00c 0 5000 0,1000 0 0,100\n"},
    // One, two and four lines that belong to no element.
    {"stray.dat", kPipe + "nothing\n" + kPipe},
    {"stray-two.dat", kPipe + "nothing\nof this\n" + kPipe},
    {"stray-four.dat", kPipe + "nothing\nof this\nkind\nis known\n" + kPipe},
    // A pipe that overlaps the one before it by half a millimetre.
    {"overlap.dat",
     "P-1     01001    00c 0 0 0,1000 0 0,100\n"
     "P-1     01002    00c 999.5 0 0,1000 0 0,100\n"},
    // Ends of other bores: a warning.
    {"bores.pcf", "PIPE\n END-POINT 0 0 0 100\n END-POINT 1000 0 0 80\n"},
    {"good.pcf", "PIPE\n END-POINT 0 0 0 100\n END-POINT 1000 0 0 100\n"},
    // The row of P-1 goes to 5, and P-2 has a 3.
    {"ranges.dat",
     "P-1     01001    00c 0 0 0,0 0 9,4\n"
     "P-2     01003    00c 9 0 0,0 0 9,4\n"},
    {"ranges.attributes.csv", "f1,f2,first,last,spec\nP-1,01,1,5,A1\nP-2,01,3,3,B2\n"},
    // A note, a warning and an error.
    {"levels.dat",
     "P-1     01001    00c 0 0 0,0 0 1000,100 \n"
     "P-1     01002    00c 0 9 0,0 0 1000,0\n"
     "P-1     01003    00c 0 18 0,0 0 1000,-1\n"},
    // A pipe, and a flange that is as wide.
    {"flange.dat",
     "P-1     01001    00c 0 0 0,0 0 1000,114.3\n"
     "P-1     01002    00c 0 0 1000,0 0 20,114.3\n"},
    {"flange.attributes.csv", "f1,f2,first,last,component\nP-1,01,1,1,PIPE\nP-1,01,2,2,FLANGE\n"},
    // Rows from 4 to 6 and from 1 to 5 have 4 and 5 in common.
    {"from4.dat", "P-1     01004    00c 0 0 0,0 0 9,4\n"},
    {"from4.attributes.csv", "f1,f2,first,last,spec\nP-1,01,4,6,A1\n"},
    {"from1.dat", "P-1     01001    00c 9 0 0,0 0 9,4\n"},
    {"from1.attributes.csv", "f1,f2,first,last,spec\nP-1,01,1,5,A1\n"},
    // Numbers 3 to 5 of one header in both; 1 to 2 of another.
    {"first.dat",
     "P-1     01003    00c 0 0 0,0 0 9,4\n"
     "P-1     01005    00c 9 0 0,0 0 9,4\n"
     "P-2     01001    00c 18 0 0,0 0 9,4\n"},
    {"second.dat",
     "P-1     01003    00c 0 9 0,0 0 9,4\n"
     "P-1     01005    00c 9 9 0,0 0 9,4\n"
     "P-2     01002    00c 18 9 0,0 0 9,4\n"},
    // A bend of 4, a box, a pipe of 6, and one of 3 of a larger number.
    {"mixed.dat",
     "P-1     01004    00t 0 0 0,9 0 0,0 9 0,4\n"
     "P-1     01003    00b 5 0 0,0 0 0,0 6 0,0 0 7\n"
     "P-1     01002    00c 0 0 0,0 0 9,6\n"
     "P-1     01009    00c 5 0 0,0 0 9,3\n"},
    // The middles are at x 5 and 15, y -5 and 5, z 5 and 25.
    {"cells.dat",
     "P-1     01001    00b 2 0 0,4 -6 4,0 2 0,0 0 2\n"
     "P-1     01002    00b 2 0 0,14 4 24,0 2 0,0 0 2\n"},
    {"twice.dat",
     "P-1     01001    00c 0 0 0,0 0 9,4\n"
     "P-1     01002    00b 5 0 0,0 0 0,0 6 0,0 0 7\n"
     "P-1     01003    00c 0 0 9,0 0 -9,4\n"
     "P-1     01004    00c 0 0 0,0 0 9,4\n"},
    {"dots.dat",
     "P-1     01001    00l pt 0 0 0\n"
     "P-1     01002    00l pt 1000 0 1000\n"},
    {"way.dat", "P-1     01001    00l pt 1 2 3,pt 10 0 0,pt 10 20 0\n"},
    // A blank behind the record is a note.
    {"blank.dat", "P-1     01001    00c 0 0 0,0 0 1000,100 \n"},
    {"blank-too.dat", "P-1     01001    00c 0 0 0,0 0 1000,100 \n"},
    // Pipes that cross each other, and steel that crosses both.
    {"zones/a.dat", "P-1     01001    00c 0 0 0,1000 0 0,100\n"},
    {"zones/b.dat", "P-2     01001    00c 500 -500 0,0 1000 0,60\n"},
    {"steel.dat", "S-1     01001    00b 1000 0 0,0 0 -500,0 10 0,0 0 1000\n"},
    // Its up direction is twice as long as one of unit length.
    {"tall.dat",
     "P-1     01001    00x 1 2 3,1 0 0,0 2 0,2.5,0.5,1,2\n"
     "P-1     01001    01x AB\n"},
    {"cone.dat", "P-1     01001    00n 0 0 0,0 0 200,60,20\n"},
    // Of two headers that become one, each number is a component of its own.
    {"numbers.dat",
     "P-1     01005    00c 0 0 0,0 0 9,4\n"
     "P-2     01005    00c 9 0 0,0 0 9,4\n"},
    // By groups the last comes first, and the first last.
    {"unsorted.dat",
     "P-1     03001    00c 0 0 0,0 0 9,4\n"
     "P-2     02001    00c 9 0 0,0 0 9,4\n"
     "P-3     01001    00c 18 0 0,0 0 9,4\n"},
    // The same header and number in two files, and rows that differ.
    {"one.dat", "P-1     01001    00c 0 0 0,0 0 9,4\n"},
    {"one.attributes.csv", "f1,f2,first,last,spec\nP-1,01,1,1,A1\n"},
    {"two.dat", "P-1     01001    00c 9 0 0,0 0 9,4\n"},
    {"two.attributes.csv", "f1,f2,first,last,spec\nP-1,01,1,1,B2\n"},
    // A row without an element, and two elements without a row.
    {"rows.dat",
     "P-1     01001    00c 0 0 0,0 0 9,4\n"
     "P-1     01002    00c 9 0 0,0 0 9,4\n"
     "P-1     01003    00c 18 0 0,0 0 9,4\n"},
    {"rows.attributes.csv", "f1,f2,first,last,spec\nP-1,01,1,1,A1\nP-1,01,7,7,B2\n"},
    {"nothing.dat", "P-1     01001    00c 0 0 0,0 0 1000,0\n"},
    // Upwards along z, and its up direction towards -x.
    {"upright.dat",
     "P-1     01001    00b 1000 0 0,0 0 0,0 1000 0,0 0 1000\n"
     "P-1     01002    00x 500 -10 100,0 0 1,-1 0 0,100,100,1,3\n"
     "P-1     01002    01x ABC\n"},
};

const FinePoint kPoints[] = {
    {"AStatedBendRadiusIsLost",
     "convert radius.dat x.dat --style token",
     1,
     {},
     {"bend radius 100.05 is lost", "[V306]"}},
    {"ABendRadiusThatTheVectorsHaveIsNot",
     "convert same-radius.dat x.dat --style token",
     0,
     {},
     {},
     {"V306"}},
    {"LostDecimalsAreNamed",
     "convert decimals.dat x.dat --style fixed",
     0,
     {},
     {"diameter 100.00004 becomes 100", "3 times [V302]"},
     {"not shown"}},
    {"AsManyAsTheLimitAreNamed",
     "convert decimals.dat x.dat --style fixed --limit 3",
     0,
     {},
     {"decimals.dat:3"},
     {"not shown"}},
    {"BeyondTheLimitOneIsNot",
     "convert decimals.dat x.dat --style fixed --limit 2",
     0,
     {},
     {"decimals.dat:2", "1 of them not shown", "3 times [V302]"},
     {"decimals.dat:3"}},
    {"FourCornersStayOneRecord", "convert four.dat x.dat --style fixed", 0, {}, {}, {"V307"}},
    // A polygon of n corners has n - 2 triangles.
    {"FiveCornersBecomeThree",
     "convert five.dat x.dat --style fixed",
     1,
     {},
     {"becomes 3 records", "[V307]"}},
    {"AMarkOfOtherValuesIsLost",
     "convert mark.dat x.dat --style fixed",
     1,
     {},
     {"mark 0 \"seam 1.25 2.0004\" becomes \"seam 1.25 2\"", "[V310]"}},
    {"ATagOfOtherValuesIsLost",
     "convert tag.dat x.dat --style fixed",
     1,
     {},
     {"tag 0 \"side 1.25 2.0004\" becomes \"side 1.25 2\"", "[V310]"}},
    {"ClosingAttributesAreLostEvenOfZero",
     "convert tk.dat x.dat --style fixed",
     1,
     {},
     {"ft \"7\" is lost", "tk \"0\" is lost", "2 times [V308]"}},
    {"TheRadiusOfABendIsTheMean", "list two-radii.dat", 0, {"  radius 101, angle 90, diameter 20"}},
    {"TheRadiusOfABendIsTheMeanForPrograms", "list --csv two-radii.dat", 0, {",101,90,"}},
    {"NoTextOfACsvIsAFormula", "list --csv formula.dat", 0, {",'=A1+1,'-2+3\n"}},
    {"AComponentIsOfItsGroup",
     "measure --csv --sums --by spec groups.dat",
     0,
     {"\nsubtotal,spec,A1,,,0,0,0,0,0,0,0,0,2,2,", "\ntotal,,,,,0,0,0,0,0,0,0,0,2,2,"}},
    {"ComponentsAddUpOverFiles",
     "measure --csv --sums --by spec groups.dat more.dat",
     0,
     {"\nsubtotal,spec,A1,,,0,0,0,0,0,0,0,0,3,3,", "\ntotal,,,,,0,0,0,0,0,0,0,0,3,3,"}},
    {"OfRadiiThatAreOneThatOfMostCounts",
     "measure --csv bends.dat",
     0,
     {"\nrow,,,,torus,114.3,0,0,0,300.03,90,0,0,0,3,"}},
    {"TwinsKeepTheirOrder",
     "diff twins.dat other-twins.dat",
     0,
     {"no difference; 2 in their places\n"},
     {},
     {"another order"}},
    {"ANumberOfTwoIsNoName",
     "diff pair.dat rest.dat",
     1,
     {"- A:1 ", "~ A:2 B:1 ", "moved and changed: by 5 0 0; diameter from 4 to 6"}},
    {"WhatHasMovedFarIsFoundByItsExactSizes",
     "diff widths.dat exchanged.dat",
     1,
     {"A:1 B:2 ", "moved by 50 5000 0", "A:2 B:1 ", "moved by -50 5000 0", "2 moved; 0 in"}},
    {"WhatIsCutShortIsNear",
     "diff long.dat short.dat",
     1,
     {"A:1 B:1 ", "moved and changed: by 300 0 0; ", "1 moved, 1 changed; 0 in"}},
    {"ThreeThatMovedAlikeAreToldEach",
     "diff three.dat three-up.dat",
     1,
     {"A:1 B:1 ", "A:2 B:2 ", "A:3 B:3 ", "3 moved"},
     {},
     {"and on"}},
    {"FourAreToldAsOne",
     "diff four.one.dat four-up.dat",
     1,
     {"~ A:1 and on  4 elements moved by 0 0 50\n4 moved; 0 in"},
     {},
     {"A:2"}},
    {"AJointIsOfBothItsEnds",
     "check --joints --only V201 --lines 1 gap.dat",
     0,
     {"gap.dat:2:", "gap of 0.500"}},
    {"AJointIsOfTheOtherEndToo",
     "check --joints --only V201 --lines 2 gap.dat",
     0,
     {"gap.dat:2:", "gap of 0.500"}},
    {"AJointIsOfNoOtherEnd", "check --joints --only V201 --lines 3 gap.dat", 0, {}, {}, {"gap of"}},
    {"OneMoreLineOfNoElementIsTold",
     "check stray-two.dat",
     1,
     {"stray-two.dat:2:", ", and so is the line after it"}},
    {"MoreLinesOfNoElementAreCounted",
     "check stray-four.dat",
     1,
     {"stray-four.dat:2:", ", and so are the 3 lines after it"}},
    {"OneLineOfNoElementIsToldAlone", "check stray.dat", 1, {"stray.dat:2:"}, {}, {"after it"}},
    {"AnOverlapHasNoSign",
     "check --joints --only V201 overlap.dat",
     0,
     {"overlap of 0.500 with the end at line 1"}},
    {"AWarningOfAnImportIsAnExitCode", "import bores.pcf -o x.dat", 1, {}, {"different bores"}},
    {"AnImportWithoutAWarningIsDone", "import good.pcf -o x.dat", 0, {"x.dat: 2 elements of 1 "}},
    {"HeadersShareTheNumbersOfTheirRows",
     "edit ranges.dat -o x.dat --rename P-2 P-1",
     1,
     {},
     {"would be one header, and have counters in common"}},
    {"TheLevelOfNotesIsAll",
     "check levels.dat --level note",
     1,
     {"V032", "V103", "V101", ": 1 error, 1 warning, 1 note in 3 elements"}},
    {"TheLevelOfWarningsHasNoNotes",
     "check levels.dat --level warning",
     1,
     {"V103", "V101", ": 1 error, 1 warning in 3 elements"},
     {},
     {"V032"}},
    {"TheLevelOfErrorsHasNothingElse",
     "check levels.dat --level error",
     1,
     {"V101", ": 1 error, 0 warnings in 3 elements"},
     {},
     {"V032", "V103"}},
    {"WhatHasAWallShowsItBesideWhatHasNone",
     "measure --csv --schedule 40 flange.dat",
     0,
     {"\nrow,,,,cylinder,114.3,0,0,0,0,0,6.02,0,0,2,"},
     {"no wall: FLANGE"}},
    {"RowsThatOverlapAtTheirEndAreLeftOut",
     "extract from4.dat from1.dat -o x.dat",
     1,
     {"x.dat: 2 elements; x.attributes.csv: 1 row\n"},
     {"1 row left out"}},
    {"TheScaleStandsOverItsMiddle",
     "view cone.dat -o - --to svg",
     0,
     {" text-anchor=\"middle\" x="}},
    // 3 to 5 move behind 5: to 6 to 8.
    {"CountersThatClashMoveBehindTheOthers",
     "merge first.dat second.dat -o x.dat",
     0,
     {"second.dat: header P-1 01 clashes: 2 elements renumbered, 3 to 5 become 6 to 8\n",
      "x.dat: 6 elements\n"},
     {},
     {"P-2 01 clashes"}},
    {"WhatClashesGetsAnotherName",
     "merge first.dat second.dat -o - --clash rename",
     0,
     {"P-1~2   01003    00c 0 9 0,0 0 9,4\n", "P-1~2   01005    00c 9 9 0,0 0 9,4\n",
      "P-2     01002    00c 18 9 0,0 0 9,4\n"},
     {"renamed to P-1~2 01"}},
    {"WhatClashesIsRefused",
     "merge first.dat second.dat -o x.dat --clash refuse",
     1,
     {},
     {"x.dat is not written, since headers clash", "have counters that are already taken"}},
    {"ElementsAreSortedByCounter",
     "edit mixed.dat -o - --sort counter",
     0,
     {"01002    00c 0 0 0,0 0 9,6\nP-1     01003    00b 5 0 0,0 0 0,0 6 0,0 0 7\n"
      "P-1     01004    00t 0 0 0,9 0 0,0 9 0,4\nP-1     01009    00c"},
     {"2 elements reordered"}},
    // A box has no diameter: 0, 3, 4, 6.
    {"ElementsAreSortedBySize",
     "edit mixed.dat -o - --sort size",
     0,
     {"01003    00b 5 0 0,0 0 0,0 6 0,0 0 7\nP-1     01009    00c 5 0 0,0 0 9,3\n"
      "P-1     01004    00t 0 0 0,9 0 0,0 9 0,4\nP-1     01002    00c"}},
    {"EqualElementsKeepTheirOrder",
     "edit mixed.dat -o - --sort kind,header",
     0,
     {"00c 0 0 0,0 0 9,6\nP-1     01009    00c 5 0 0,0 0 9,3\n"}},
    {"EachElementGetsItsOwnNumber",
     "edit pair.dat -o - --renumber elements --start 35",
     0,
     {"P-1     0100Z    00c 0 0 0,0 0 9,4\nP-1     01010    00c 1000 0 0,0 0 9,4\n"},
     {"2 elements renumbered"}},
    {"ElementsOfOneNumberKeepSharingIt",
     "edit pair.dat -o - --renumber components --start 1",
     0,
     {"P-1     01001    00c 0 0 0,0 0 9,4\nP-1     01001    00c 1000 0 0,0 0 9,4\n"},
     {"0 elements renumbered"}},
    {"CellsOfAGridAreOfThePlan",
     "split cells.dat --by grid --grid 10 -o new -n",
     0,
     {"new/x0_y-1.dat         1  x0_y-1\n", "new/x1_y0.dat          1  x1_y0\n",
      "2 elements in 2 parts; not written"}},
    {"CellsOfAGridHaveThreeLengths",
     "split cells.dat --by grid --grid 20,20,10 -o new -n",
     0,
     {"x0_y-1_z0", "x0_y0_z2"}},
    {"PartsOfSizesHaveTheirNames",
     "split mixed.dat --by size -o new -n",
     0,
     {"new/4.dat ", "new/none.dat ", "new/6.dat ", "new/3.dat ", "4 elements in 4 parts"}},
    {"WhatIsDroppedIsLikeTheFirst",
     "edit twice.dat -o x.dat --drop-duplicates",
     0,
     {"line 3 dropped: cylinder like the one at line 1\n",
      "line 4 dropped: cylinder like the one at line 1\n", "2 elements dropped\n",
      "x.dat: 2 elements\n"}},
    {"AWarningIsNoErrorUnlessStrict", "check nothing.dat", 0, {"0 errors, 1 warning in 1 element"}},
    {"AWarningIsAnErrorIfStrict", "check --strict nothing.dat", 1, {"0 errors, 1 warning"}},
    {"WhatAFormatHasNoPlaceForIsNoError",
     "export tall.dat cone.dat -o x.stl",
     0,
     {},
     {"left out: 1 text"}},
    {"WhatAFormatHasNoPlaceForIsAnErrorIfStrict",
     "export tall.dat cone.dat -o x.stl --strict",
     1,
     {},
     {"left out: 1 text"}},
    {"NothingIsWrittenIfStrict",
     "convert five.dat x.dat --style fixed --strict",
     1,
     {},
     {"x.dat is not written, since something would be lost (--strict)"}},
    {"ASummaryIsAllThatIsSaid",
     "diff --summary three.dat three-up.dat",
     1,
     {"3 moved; 0 in their places\n"},
     {},
     {"A:1"}},
    {"RowsThatOverlapAreLeftOutOfAMerge",
     "merge from4.dat from1.dat -o x.dat --clash keep",
     1,
     {"x.dat: 2 elements; x.attributes.csv: 1 row\n"},
     {"1 row left out: another row has their elements"}},
    // 36 from the sides and above, 84 from below: 780 pixels for 1000, in the middle of 828; a dot
    // is 6 wide.
    {"DotsStandAtTheirPlaces",
     "view dots.dat -o - --to svg --from front --pixels 900x900",
     0,
     {"<circle cx=\"60\" cy=\"816\" r=\"3\" ", "<circle cx=\"840\" cy=\"36\" r=\"3\" "}},
    // Three-dimensional, and not closed.
    {"APolylineOfDxfIsOpen",
     "export way.dat -o - --to dxf",
     0,
     {"AcDb3dPolyline\n 66\n1\n 10\n0\n 20\n0\n 30\n0\n 70\n8\n"}},
    {"NotesAddUpOverFiles",
     "check --json blank.dat blank-too.dat",
     0,
     {"\n  \"elements\": 2,\n  \"errors\": 0,\n  \"warnings\": 0,\n  \"notes\": 2\n"}},
    {"AFolderIsOneSideOfAClash",
     "clash zones steel.dat",
     1,
     {"2 clashes, ", "in 3 elements", "a.dat:1: ", "b.dat:1: "}},
    // 2.5 * 2 high.
    {"ATextOfDxfIsAsHighAsItsUpDirection",
     "export tall.dat -o - --to dxf",
     0,
     {"\n 40\n5\n 41\n0\n"}},
    // From its narrow end: a radius of 10, and atan((30 - 10) / 200).
    {"AConeOfStepHasHalfItsAngle",
     "export cone.dat -o - --to step",
     0,
     {"CONICAL_SURFACE('',#", ",10.,0.0996686524911620"}},
    {"NumbersOfTwoHeadersAreTwoComponents",
     "edit numbers.dat -o - --rename P-2 P-1 --renumber components",
     0,
     {"P-1     01001    00c 0 0 0,0 0 9,4\nP-1     01002    00c 9 0 0,0 0 9,4\n"},
     {"2 elements renumbered"}},
    {"GroupsAreSortedByThemselves",
     "edit unsorted.dat -o - --sort group",
     0,
     {"P-3     01001    00c 18 0 0,0 0 9,4\nP-2     02001    00c 9 0 0,0 0 9,4\n"
      "P-1     03001    00c 0 0 0,0 0 9,4\n"},
     {"2 elements reordered"}},
    {"RowsThatDifferAreLeftOut",
     "extract one.dat two.dat -o x.dat",
     1,
     {"x.dat: 2 elements; x.attributes.csv: 1 row\n"},
     {"1 row left out, since elements of two files have the same header and counter"}},
    {"WhatCantBeShownIsOfItsFile",
     "export cone.dat nothing.dat -o x.stl",
     1,
     {},
     {"nothing.dat:1: ", "[V401]"},
     {"cone.dat:1"}},
    {"RowsAndElementsThatDontMeetAreCounted",
     "list -v --csv rows.dat",
     0,
     {},
     {"1 row without elements", "2 elements without a row"}},
    // The text's own x goes up the picture, and its y, which is downwards, to the right.
    {"AnUprightTextOfSvgReadsUpwards",
     "view upright.dat -o - --to svg --from front",
     0,
     {" transform=\"matrix(0 -1 1 0 "}},
    // 900 by 900 pixels: letters of 9 pixels have a rim of 0.18 * 9 on both sides.
    {"TheRimOfATextIsOnBothSides",
     "view cone.dat -o - --to svg --pixels 900x900",
     0,
     {" stroke-width=\"3.24\""}},
};

class FinePointTest : public testing::TestWithParam<FinePoint> {};

void PrintTo(const FinePoint& each, std::ostream* out) { *out << each.arguments; }

TEST_P(FinePointTest, IsMet) {
  const TempFolder folder;
  std::filesystem::create_directory("zones");
  for (const auto& [name, text] : kFiles) writeFile(name, text);
  const FinePoint& each = GetParam();
  const ToolRun run = runTool(each.arguments);
  EXPECT_EQ(run.exit, each.exit) << run.out << run.err;
  for (const char* part : each.out) {
    EXPECT_TRUE(contains(run.out, part)) << part << "\n--- in\n" << run.out;
  }
  for (const char* part : each.err) {
    EXPECT_TRUE(contains(run.err, part)) << part << "\n--- in\n" << run.err;
  }
  for (const char* part : each.absent) {
    EXPECT_FALSE(contains(run.out + run.err, part)) << part << "\n--- in\n" << run.out << run.err;
  }
}

INSTANTIATE_TEST_SUITE_P(Answers, FinePointTest, testing::ValuesIn(kPoints),
                         [](const auto& each) { return std::string(each.param.name); });

// A pipe, a damaged one and a pipe that crosses the first.
const std::string kDamaged = kPipe +
                             "P-1     01002    00c 0 0 0,0 0 1000x,100\n"
                             "P-2     01003    00c -500 0 500,1000 0 0,60\n";

constexpr const char* kAllCommands[] = {
    "check bad.dat",
    "clash bad.dat",
    "convert bad.dat new.dat",
    "convert bad.dat new.dat --style fixed",
    "diff bad.dat good.dat",
    "diff good.dat bad.dat",
    "edit bad.dat -o new.dat --rename P-1 P-7",
    "export bad.dat --report",
    "export bad.dat -o new.dxf",
    "export bad.dat -o new.glb",
    "export bad.dat -o new.gltf",
    "export bad.dat -o new.ifc",
    "export bad.dat -o new.obj",
    "export bad.dat -o new.ply",
    "export bad.dat -o new.step",
    "export bad.dat -o new.stl",
    "extract bad.dat -o new.dat",
    "info --json bad.dat",
    "info -j 2 good.dat bad.dat",
    "info bad.dat",
    "list --csv bad.dat",
    "list --json bad.dat",
    "list bad.dat",
    "list good.dat bad.dat",
    "measure -j 2 bad.dat good.dat",
    "measure bad.dat",
    "merge bad.dat good.dat -o new.dat",
    "split bad.dat --by kind -o new",
    "view bad.dat -o new.png",
    "view bad.dat -o new.svg",
};

// The good elements are the same in both files, so that nothing else could be the reason.
TEST(UnreadableElements, AreToldByTheExitCodeOfEveryCommand) {
  for (const std::string arguments : kAllCommands) {
    const TempFolder folder;
    const std::size_t second = kDamaged.find('\n') + 1;
    writeFile("bad.dat", kDamaged);
    writeFile("good.dat",
              kDamaged.substr(0, second) + kDamaged.substr(kDamaged.find('\n', second) + 1));
    const ToolRun run = runTool(arguments);
    EXPECT_EQ(run.exit, 1) << arguments << run.err;
    EXPECT_TRUE(contains(run.out + run.err, "V021")) << arguments << run.out << run.err;
  }
}

TEST(InfoForPrograms, CountsWhatCantBeRead) {
  const TempFolder folder;
  writeFile("bad.dat", kDamaged);
  const Json file = Json::parse(runTool("info --json bad.dat").out)["files"][0];
  EXPECT_EQ(file["faults"], 1);
  EXPECT_EQ(file["elements"], 2);
}

// The field with this meaning.
Json fieldOf(const Json& shown, const std::string& meaning) {
  for (const Json& field : shown["fields"]) {
    if (field["meaning"] == meaning) return field;
  }
  return {};
}

// Header, line number and keyword end at column 21; "cs AB12,sp XY,1 2 3," is 20 wide.
TEST(ShowForPrograms, CountsColumnsFromOneToTheLast) {
  const TempFolder folder;
  writeFile("a.dat", kPipe + "P-1     01002    00c cs AB12,sp XY,1 2 3,40 50 600,100\n");
  const Json shown = Json::parse(runTool("show --json a.dat:2").out);
  EXPECT_EQ(fieldOf(shown, "F6"), Json::parse(R"({"line": 2, "column": 25, "endColumn": 28,
      "text": "AB12", "meaning": "F6"})"));
  EXPECT_EQ(fieldOf(shown, "F7"), Json::parse(R"({"line": 2, "column": 33, "endColumn": 34,
      "text": "XY", "meaning": "F7"})"));
  EXPECT_EQ(fieldOf(shown, "axis z"), Json::parse(R"({"line": 2, "column": 48, "endColumn": 50,
      "text": "600", "meaning": "axis z"})"));
  EXPECT_EQ(fieldOf(shown, "diameter"), Json::parse(R"({"line": 2, "column": 52, "endColumn": 54,
      "text": "100", "meaning": "diameter"})"));
  // A single column stands alone for people.
  const std::string table = runTool("show a.dat:2").out;
  for (const char* row : {"   2  25-28    'AB12'", "   2  36       '1'", "   2  48-50    '600'"}) {
    EXPECT_TRUE(contains(table, row)) << row << table;
  }
}

// The third line of a text in columns: three columns from 25 on for its length, then the text.
TEST(ShowForPrograms, FindsTheTextOnItsLine) {
  const TempFolder folder;
  const Json shown =
      Json::parse(runTool("show --json \"" + golden("elements.columns.dat") + ":7\"").out);
  EXPECT_EQ(fieldOf(shown, "length of the text"),
            Json::parse(R"({"line": 7, "column": 25, "endColumn": 27, "text": "  5",
      "meaning": "length of the text"})"));
  EXPECT_EQ(fieldOf(shown, "text"), Json::parse(R"({"line": 7, "column": 28, "endColumn": 32,
      "text": "Fan 1", "meaning": "text"})"));
}

TEST(ShowForPrograms, HasMarksWithTheirValuesInOrder) {
  const TempFolder folder;
  writeFile("mark.dat", kFiles.at("mark.dat"));
  const Json shown = Json::parse(runTool("show --json mark.dat:1").out);
  EXPECT_EQ(shown["values"]["mark 0"], "seam 1.25 2.0004");
}

// Forty pipes that have moved aside by nearly the tolerance, and to other numbers: each is found
// where it is now, and nothing has changed.
TEST(DiffOfALargeTolerance, LooksAsFarAsItReaches) {
  const TempFolder folder;
  std::string before;
  std::string after;
  for (int i = 10; i < 50; ++i) {
    const std::string number = std::to_string(i);
    before += "P-1     010" + number + "    00c " + number + "0 2.4 0,0 0 9,4\n";
    after += "P-1     011" + number + "    00c " + number + "0 7.3 0,0 0 9,4\n";
  }
  writeFile("a.dat", before);
  writeFile("b.dat", after);
  EXPECT_EQ(runTool("diff a.dat b.dat --tolerance 5").out, "no difference; 40 in their places\n");
}

// The words of piping files for what has the wall of a pipe, and for some that have none.
TEST(MeasureWithWalls, GoesByTheComponent) {
  const TempFolder folder;
  for (const char* word : {"PIPE",
                           "PIPE-FIXED",
                           "PIPE-BLOCK-FIXED",
                           "PIPE-BLOCK-VARIABLE",
                           "PULLED-BEND",
                           "BEND",
                           "ELBOW",
                           "TEE",
                           "TEE-STUB",
                           "TEE-SET-ON",
                           "CROSS",
                           "Y-PIECE",
                           "Y-PIECE-FITTING",
                           "OLET",
                           "NIPPLE",
                           "REDUCER-CONCENTRIC",
                           "REDUCER-ECCENTRIC",
                           "-FLANGE",
                           "-VALVE",
                           "-CAP",
                           "-GASKET",
                           "-INSTRUMENT",
                           "-FILTER",
                           "-SUPPORT",
                           "-COUPLING"}) {
    const bool isPipe = word[0] != '-';
    writeFile("a.dat", "P-1     01001    00c 0 0 0,0 0 1000,114.3\n");
    writeFile("a.attributes.csv",
              std::string("f1,f2,first,last,component\nP-1,01,1,1,") + (word + !isPipe) + '\n');
    const Json all =
        Json::parse(runTool("measure --json --schedule 40 --insulation 50 a.dat").out)["all"];
    EXPECT_EQ(all["without_wall"], isPipe ? 0 : 1) << word;
    // pi (114.3 - 6.02) 6.02 mm2 on 1 m, at 7850 kg/m3.
    EXPECT_NEAR(all["weight"].get<double>(), isPipe ? 16.0754 : 0.0, 1e-3) << word;
    // pi (114.3 + 100) mm on 1 m.
    EXPECT_NEAR(all["insulation_surface"].get<double>(), isPipe ? 0.673243 : 0.0, 1e-6) << word;
  }
}

// A dish of 500 and 250 in one file, a pipe in the other.
std::string reviewOf(const std::string& group, const std::string& kind, const std::string& box,
                     const std::string& sizes) {
  return "HEAD\n 1 2\na plant\na note\ntoday\nsomeone\nMODL\n 1 1\nPROJECT\nMODEL\nCNTB\n 1 2\n" +
         group + "\n 0 0 0\n 9\nPRIM\n 1 1\n " + kind +
         "\n 0.001 0 0 0\n 0 0.001 0 0\n 0 0 0.001 0\n " + box + "\n " + sizes +
         "\nCNTE\n 1 1\nEND:\n 1 1\n";
}

// What is lost is said in cubic metres: 2/3 pi 0.5 0.5 0.25 of the dish but for what its cones,
// which are read back, have.
TEST(ReviewModels, SayWhatTheirSlicesLoseAndWhereARowIsFrom) {
  const TempFolder folder;
  writeFile("a.rvm", reviewOf("/DISH", "5", "-500 -500 0 500 500 250", "500 250"));
  writeFile("b.rvm", reviewOf("/PIPE", "8", "-50 -50 -500 50 50 500", "50 1000"));
  const ToolRun run = runTool("import a.rvm b.rvm -o x.dat");
  EXPECT_EQ(run.exit, 1) << run.err;
  const std::size_t end = run.out.find(" m3 less");
  ASSERT_NE(end, std::string::npos) << run.out;
  const std::size_t begin = run.out.rfind(' ', end - 1) + 1;
  const double lost = std::stod(run.out.substr(begin, end - begin));
  const Json info = Json::parse(runTool("info --json --only cone,pipe x.dat").out)["files"][0];
  const double dish = info["volume"].get<double>() / 1e9 - 0.25 * 3.14159265358979 * 0.01;
  EXPECT_NEAR(dish + lost, 2.0 / 3 * 3.14159265358979 * 0.5 * 0.5 * 0.25, 2e-6);
  EXPECT_GT(lost, 1e-4);
  const Json rows = Json::parse(runTool("list --json x.dat").out)["elements"];
  for (const Json& row : rows) {
    EXPECT_EQ(row["attributes"]["source"], row["header"] == "/DISH" ? "a.rvm" : "b.rvm") << row;
  }
}

// Of more findings than people are shown programs get all.
TEST(ManyFindings, AreShownInPartAndHandedOnWhole) {
  const TempFolder folder;
  std::string thin;
  std::string crossing = kPipe;
  for (int i = 0; i < 25; ++i) {
    thin += "P-1     01001    00c " + std::to_string(i) + " 0 0,0 0 1000,0\n";
    crossing += "P-2     01001    00c -500 0 " + std::to_string(20 + 30 * i) + ",1000 0 0,20\n";
  }
  writeFile("thin.dat", thin);
  writeFile("crossing.dat", crossing);
  EXPECT_EQ(Json::parse(runTool("check --json thin.dat").out)["files"][0]["findings"].size(), 25U);
  const ToolRun check = runTool("check thin.dat");
  EXPECT_TRUE(contains(check.out, "thin.dat:20:")) << check.out;
  EXPECT_FALSE(contains(check.out, "thin.dat:21:")) << check.out;
  EXPECT_TRUE(contains(check.out, "  5 more of V103\n")) << check.out;
  EXPECT_EQ(Json::parse(runTool("clash --json crossing.dat").out)["clashes"].size(), 25U);
  const ToolRun clash = runTool("clash crossing.dat");
  EXPECT_TRUE(contains(clash.out, "at line 21 ")) << clash.out;
  EXPECT_FALSE(contains(clash.out, "at line 22 ")) << clash.out;
  EXPECT_TRUE(contains(clash.out, "  5 more of V501\n")) << clash.out;
}

// A pipe of 1000 whose pieces may be 100 off has fewer than one of what can't be seen.
TEST(FinenessOfDrawings, IsAsAskedFor) {
  const TempFolder folder;
  writeFile("wide.dat", "P-1     01001    00c 0 0 0,0 0 1000,1000\n");
  const std::size_t seen = runTool("view wide.dat -o - --to svg --from top").out.size();
  const std::size_t coarse =
      runTool("view wide.dat -o - --to svg --from top --tolerance 100").out.size();
  const std::size_t draft =
      runTool("view wide.dat -o - --to svg --from top --quality draft").out.size();
  EXPECT_LT(coarse, draft);
  EXPECT_LT(draft, seen);
}

// The row of an element finds it under its new header, of one character in F2.
TEST(RenamedHeaders, KeepTheirRows) {
  const TempFolder folder;
  writeFile("one.dat", kFiles.at("one.dat"));
  writeFile("one.attributes.csv", kFiles.at("one.attributes.csv"));
  ASSERT_EQ(runTool("edit one.dat -o x.dat --rename P-1 \"Q 1\"").exit, 0);
  const Json element = Json::parse(runTool("list --json x.dat").out)["elements"][0];
  EXPECT_EQ(element["header"], "Q");
  EXPECT_EQ(element["group"], "1");
  ASSERT_TRUE(element.contains("attributes")) << element;
  EXPECT_EQ(element["attributes"]["spec"], "A1");
}

// So many elements that relations name them in parts; the last part counts too.
TEST(IfcRelations, NameEveryProductOnce) {
  const TempFolder folder;
  for (const int count : {1, 63, 64, 65, 150}) {
    std::string records;
    for (int i = 0; i < count; ++i) records += kPipe;
    writeFile("pipes.dat", records);
    std::istringstream lines(runTool("export -q pipes.dat -o - --to ifc").out);
    std::map<std::string, int> named;
    int products = 0;
    for (std::string line; std::getline(lines, line);) {
      products += contains(line, "=IFCPIPESEGMENT(") ? 1 : 0;
      for (const char* relation :
           {"=IFCRELCONTAINEDINSPATIALSTRUCTURE(", "=IFCRELASSIGNSTOGROUP("}) {
        if (!contains(line, relation)) continue;
        const std::size_t begin = line.find("(#");
        const std::string list = line.substr(begin, line.find(')', begin) - begin);
        named[relation] += static_cast<int>(std::count(list.begin(), list.end(), '#'));
      }
    }
    EXPECT_EQ(products, count);
    EXPECT_EQ(named["=IFCRELCONTAINEDINSPATIALSTRUCTURE("], count);
    EXPECT_EQ(named["=IFCRELASSIGNSTOGROUP("], count);
  }
}

// Two segments: four corners, and an edge between the first two and between the others.
TEST(PlyLines, EndAtTheirOwnCorners) {
  const TempFolder folder;
  writeFile("lines.dat",
            "P-1     01001    00l pt 0 0 0,pt 1 0 0\n"
            "P-1     01002    00l pt 5 0 0,pt 1 2 0,pt 1 2 3\n"
            "P-1     01003    00l pt 9 0 0,pt 1 0 0\n");
  ASSERT_EQ(runTool("export lines.dat -o x.ply").exit, 0);
  const std::string bytes = bytesOf("x.ply");
  EXPECT_TRUE(contains(bytes, "element vertex 7\n"));
  EXPECT_TRUE(contains(bytes, "element edge 4\n"));
  const std::size_t data = bytes.find("end_header\n") + 11;
  std::vector<std::uint32_t> ends;
  for (std::size_t at = data + 7 * 15; at + 4 <= bytes.size(); at += 4)
    ends.push_back(u32At(bytes, at));
  EXPECT_EQ(ends, (std::vector<std::uint32_t>{0, 1, 2, 3, 3, 4, 5, 6}));
  const double expected[] = {0, 1, 5, 6, 6, 9, 10};
  for (std::size_t i = 0; i < 7; ++i)
    EXPECT_EQ(static_cast<double>(f32At(bytes, data + 15 * i)), expected[i]) << i;
}

}  // namespace
}  // namespace VeskTest
