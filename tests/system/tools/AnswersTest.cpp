// SPDX-License-Identifier: MIT
// Answers of the tool with each of their numbers, words and exit codes: every row brings its own
// files, from which what is expected follows.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "support/TempFolder.h"
#include "tools/ToolRun.h"

namespace VeskTest {
namespace {

using Files = std::map<std::string, std::string>;

struct Answer {
  const char* name;
  Files files;
  const char* arguments;
  int exit;
  std::vector<std::string> out = {};     // parts of stdout
  std::vector<std::string> err = {};     // parts of stderr
  std::vector<std::string> absent = {};  // what stands in neither
};

void PrintTo(const Answer& each, std::ostream* out) { *out << each.arguments; }

// The same pipe in columns.
const std::string kColumns =
    "60    01  P-1     001CYL    0.000    0.000    0.000    0.000    0.000 1000.000  100.000\n";

// A quarter of a turn within a reducer of 10, 20 and 30 whose ends are swapped.
const std::string kSwapped =
    "P-1     01001    00r 0 0 0,10 0 0,0 20 0,10 20 0,0 0 -30,10 0 -30,0 20 -30,10 20 -30\n";

// A box of two lines behind a pipe.
const std::string kMarked = kPipe +
                            "P-1     01002    00b 10 0 0,0 0 0,0 20 0,0 0 30\n"
                            "P-1     01002    00beed seam 1.25 2.5,ed rim 3 4\n";

// Crossing pipes: 70 apart, with radii of 50 and 30.
const std::string kCrossing =
    "P-1     01007    00c 0 0 0,1000 0 0,100\n"
    "P-2     01009    00c 500 -500 70,0 1000 0,60\n";

std::string manyTimes(int count, const std::string& begin, const std::string& end) {
  std::string text;
  for (int i = 0; i < count; ++i) text += begin + std::to_string(100 + i) + end;
  return text;
}

// Two folders: one file is the same, one differs, one can't be read on the second side, and each
// has one of its own.
const Files kFolders = {
    {"one/same.dat", kPipe},  {"two/same.dat", kPipe},
    {"one/other.dat", kPipe}, {"two/other.dat", "P-1     01001    00c 0 0 0,0 0 1000,200\n"},
    {"one/bad.dat", kPipe},   {"two/bad.dat", "nothing of this kind\n"},
    {"one/first.dat", kPipe}, {"two/second.dat", kPipe},
};

const Answer kShow[] = {
    // 24 columns of heading, four blanks and a star, then names with a star behind each.
    {"NamesInColumnsHaveTheirPlaces",
     {{"a.dat", kColumns.substr(0, 24).replace(0, 2, "60").replace(21, 3, "BOX") +
                    "    0.000    0.000    0.000   10.000    0.000    0.000    0.000   20.000"
                    "    0.000    0.000    0.000   30.000\n"
                    "63    01  P-1     001BOX    *one*three*\n"
                    "64    01  P-1     001BOX    *seam*    1.250    2.500\n"}},
     "show --json a.dat:1",
     0,
     {"\"firstLine\": 1,\n  \"lastLine\": 3,",
      R"({"line": 2, "column": 30, "endColumn": 32, "text": "one", "meaning": "name without values"})",
      R"({"line": 2, "column": 34, "endColumn": 38, "text": "three", "meaning": "name without values"})",
      R"({"line": 3, "column": 30, "endColumn": 33, "text": "seam", "meaning": "name"})",
      R"({"line": 3, "column": 35, "endColumn": 43, "text": "    1.250", "meaning": "value"})",
      R"({"line": 3, "column": 44, "endColumn": 52, "text": "    2.500", "meaning": "value"})",
      "\"mark 0\": \"one\"", "\"mark 1\": \"three\"", "\"mark 2\": \"seam 1.25 2.5\""}},
    // 21 columns of heading, "ed", a blank, and what is up to the comma.
    {"MarksInTokensHaveTheirPlaces",
     {{"a.dat", kMarked}},
     "show --json a.dat:2",
     0,
     {"\"firstLine\": 2,\n  \"lastLine\": 3,",
      R"({"line": 3, "column": 22, "endColumn": 23, "text": "ed", "meaning": "word"})",
      R"({"line": 3, "column": 25, "endColumn": 37, "text": "seam 1.25 2.5", "meaning": "name and values"})",
      R"({"line": 3, "column": 39, "endColumn": 40, "text": "ed", "meaning": "word"})",
      R"({"line": 3, "column": 42, "endColumn": 48, "text": "rim 3 4", "meaning": "name and values"})",
      "\"mark 0\": \"seam 1.25 2.5\"", "\"mark 1\": \"rim 3 4\""}},
    {"AnyLineOfAnElementNamesIt",
     {{"a.dat", kMarked}},
     "show --json a.dat:3",
     0,
     {"\"firstLine\": 2,\n  \"lastLine\": 3,", "\"kind\": \"box\""}},
    {"TheFieldsOfAllLinesAreShown",
     {{"a.dat", kMarked}},
     "show a.dat:3",
     0,
     {"box, token style\n  2 | P-1     01002    00b 10 0 0,0 0 0,0 20 0,0 0 30\n  3 | P-1     01002"
      "    00beed seam 1.25 2.5,ed rim 3 4\n",
      "\n   2  22-23    '10'             edge 1 x\n", "\n   3  42-48    'rim 3 4'        name"}},
    {"EachArcHasItsRadius",
     {{"a.dat", "P-1     01001    00l pt 1 2 3,pt 10 0 0,pt 10 20 0,ar 5 1 2 3,ar 7 4 5 6\n"}},
     "show --json a.dat:1",
     0,
     {"\"arc 0\": \"radius 5 1 2 3\"", "\"arc 1\": \"radius 7 4 5 6\"",
      R"("column": 55, "endColumn": 55, "text": "5", "meaning": "arc 0 radius")",
      R"("column": 57, "endColumn": 57, "text": "1", "meaning": "arc 0 value 1")",
      R"("column": 59, "endColumn": 59, "text": "2", "meaning": "arc 0 value 2")",
      R"("column": 61, "endColumn": 61, "text": "3", "meaning": "arc 0 value 3")",
      R"("column": 66, "endColumn": 66, "text": "7", "meaning": "arc 1 radius")",
      R"("column": 72, "endColumn": 72, "text": "6", "meaning": "arc 1 value 3")"}},
    // The largest number of eighteen digits is a line, though none is there; one more digit is
    // none.
    {"ALineHasEighteenDigits",
     {{"a.dat", kPipe}},
     "show a.dat:999999999999999999",
     3,
     {},
     {"a.dat: has 1 lines, not 999999999999999999"}},
    {"ALineHasNoMoreDigits",
     {{"a.dat", kPipe}},
     "show a.dat:9999999999999999999",
     2,
     {},
     {"names no line"}},
    {"ThereIsNoLineOfZero", {{"a.dat", kPipe}}, "show a.dat:0", 2, {}, {"names no line"}},
    {"TheLastLineIsOne", {{"a.dat", kMarked}}, "show --json a.dat:1", 0, {"\"lastLine\": 1,"}},
    {"TheLineBehindTheLastIsNone",
     {{"a.dat", kMarked}},
     "show a.dat:4",
     3,
     {},
     {"a.dat: has 3 lines, not 4"}},
    {"ThePlaceOfAFindingIsALine",
     {{"a.dat", kMarked}},
     "show --json a.dat:2:1-40:",
     0,
     {"\"firstLine\": 2,"}},
    {"ANegativeVolumeIsOne",
     {{"a.dat", kSwapped}},
     "list --json a.dat",
     0,
     {"\"kind\": \"reducer\", \"header\": \"P-1\", \"group\": \"01\", \"counter\": 1, "
      "\"volume\": -6000,"}},
    {"ANegativeVolumeIsTakenOff",
     {{"a.dat", kSwapped + "P-1     01002    00b 10 0 0,0 0 0,0 20 0,0 0 50\n"}},
     "info --json a.dat",
     0,
     {"\"volume\": 4000\n"}},  // 10 * 20 * 50 - 6000
    {"ANegativeVolumeIsOneForPeople", {{"a.dat", kSwapped}}, "list a.dat", 0, {"volume -6000\n"}},
    {"ThreeDecimalsAreShown",
     {{"a.dat", "P-1     01001    00c 0.12345 -1.2345 1234.5678,0 0 9.87654,4.4444\n"}},
     "list a.dat",
     0,
     {"0.123        -1.234      1234.568  length 9.877, diameter 4.444\n"}},
    {"EachFileHasItsHeading",
     {{"a.dat", kPipe + kPipe}, {"b.dat", kPipe}},
     "list a.dat b.dat a.dat",
     0,
     {"SIZES\na.dat:\n       1", "\n       2  ", "\nb.dat:\n       1  ", "\na.dat:\n       1  "}},
    {"TheLimitCountsTheRest",
     {{"a.dat", kPipe + kPipe + kPipe + kPipe + kPipe}},
     "list --csv --limit 2 a.dat",
     0,
     {"\n1,cylinder", "\n2,cylinder"},
     {"vesk: 2 of 5 elements listed (--limit)\n"},
     {"\n3,cylinder"}},
    {"ALimitOfAllIsNone",
     {{"a.dat", kPipe + kPipe}},
     "list --csv --limit 2 a.dat",
     0,
     {"\n2,cyl"},
     {},
     {"listed"}},
};

const Answer kRefused[] = {
    {"AnAngleIsFinite",
     {{"a.dat", kPipe}},
     "convert a.dat x.dat --rotate z,inf",
     2,
     {},
     {"--rotate z,inf: not an axis and an angle"}},
    {"AnAngleIsANumber",
     {{"a.dat", kPipe}},
     "convert a.dat x.dat --rotate z,nan",
     2,
     {},
     {"not an axis"}},
    {"AnAngleIsThere",
     {{"a.dat", kPipe}},
     "convert a.dat x.dat --rotate z,",
     2,
     {},
     {"not an axis"}},
    {"AnAxisIsThere",
     {{"a.dat", kPipe}},
     "convert a.dat x.dat --rotate w,90",
     2,
     {},
     {"not an axis"}},
    {"AScaleIsFinite",
     {{"a.dat", kPipe}},
     "convert a.dat x.dat --scale inf",
     2,
     {},
     {"--scale inf: not a number above 0"}},
    {"AScaleIsAboveZero",
     {{"a.dat", kPipe}},
     "convert a.dat x.dat --scale 0",
     2,
     {},
     {"not a number above 0"}},
    {"AMoveIsFinite",
     {{"a.dat", kPipe}},
     "convert a.dat x.dat --move 1,inf,0",
     2,
     {},
     {"--move 1,inf,0: not three numbers"}},
    {"AMoveHasThreeNumbers",
     {{"a.dat", kPipe}},
     "convert a.dat x.dat --move 1,2",
     2,
     {},
     {"not three numbers"}},
    {"AMoveHasNoMore",
     {{"a.dat", kPipe}},
     "convert a.dat x.dat --move 1,2,3,4",
     2,
     {},
     {"not three numbers"}},
    {"AGridIsAboveZero",
     {{"a.dat", kPipe}},
     "split a.dat --by grid --grid 9,0,9 -o new",
     2,
     {},
     {"--grid 9,0,9: not lengths above 0"}},
    {"AGridHasOneLengthOrThree",
     {{"a.dat", kPipe}},
     "split a.dat --by grid --grid 9,9 -o new",
     2,
     {},
     {"not lengths above 0"}},
    {"PicturesHaveSixteenPixels",
     {{"a.dat", kPipe}},
     "view a.dat -o x.png --pixels 16x15",
     2,
     {},
     {"--pixels 16x15: not two sizes"}},
    {"PicturesHaveNoMoreThanTheMost",
     {{"a.dat", kPipe}},
     "view a.dat -o x.png --pixels 8193x16",
     2,
     {},
     {"not two sizes"}},
    {"AttributesAreOfOneFile",
     {{"a.dat", kPipe}},
     "list --attributes a.csv a.dat a.dat",
     2,
     {},
     {"--attributes is for a single file"}},
    {"AMixtureIsRefused",
     {{"a.dat", kPipe}},
     "diff a.dat .",
     2,
     {},
     {". is a folder, the other is not"}},
};

const Answer kDiffs[] = {
    {"FoldersAreCounted",
     kFolders,
     "diff one two",
     3,
     {"other.dat:\n~ A:1 B:1  cylinder P-1 01/1: changed: diameter from 100 to 200\n",
      "same.dat:\nno difference; 1 in their places\n",
      "only in one: first.dat\nonly in two: second.dat\n"
      "1 of 3 files differ, 2 in one folder only\n"},
     {"bad.dat: this is not a record file"}},
    {"FoldersAreCountedForPrograms",
     kFolders,
     "diff --json --tolerance 0.5 one two",
     3,
     {"\"a\": \"one\",\n  \"b\": \"two\",\n  \"onlyA\": [\n    \"first.dat\"\n  ],\n  \"onlyB\": "
      "[\n"
      "    \"second.dat\"\n  ],",
      "other.dat\",\n  \"tolerance\": 0.5,\n"
      "  \"inPlace\": 0,",
      "same.dat\",\n  \"tolerance\": 0.5,\n"
      "  \"inPlace\": 1,"}},
    {"FoldersThatDiffer",
     {{"one/a.dat", kPipe}, {"two/a.dat", "P-1     01001    00c 0 0 0,0 0 1000,200\n"}},
     "diff one two",
     1,
     {"1 of 1 file differ\n"}},
    {"FoldersThatAreTheSame",
     {{"one/a.dat", kPipe}, {"two/a.dat", kPipe}},
     "diff one two",
     0,
     {"0 of 1 file differ\n"}},
    {"AFileOfOneFolderIsADifference",
     {{"one/a.dat", kPipe}, {"two/a.dat", kPipe}, {"two/b.dat", kPipe}},
     "diff one two",
     1,
     {"only in two: b.dat\n0 of 1 file differ, 1 in one folder only\n"}},
    // The texts have changed places, 5000 away.
    {"TextsAreFoundByWhatTheySay",
     {{"a.dat",
       "P-1     01001    00x 0 0 0,1 0 0,0 1 0,5,4,1,2\nP-1     01001    01x AB\n"
       "P-1     01002    00x 50 0 0,1 0 0,0 1 0,5,4,1,2\nP-1     01002    01x CD\n"},
      {"b.dat",
       "P-1     01011    00x 0 5000 0,1 0 0,0 1 0,5,4,1,2\nP-1     01011    01x CD\n"
       "P-1     01012    00x 50 5000 0,1 0 0,0 1 0,5,4,1,2\nP-1     01012    01x AB\n"}},
     "diff a.dat b.dat",
     1,
     {"~ A:1 B:3  text P-1 01/1: moved by 50 5000 0\n~ A:3 B:1  text P-1 01/2: moved by "
      "-50 5000 0\n2 moved; 0 in their places\n"}},
    {"AMoveHasItsSigns",
     {{"a.dat", "P-1     01005    00c 10 20 30,0 0 9,4\n"},
      {"b.dat", "\nP-1     01005    00c 11 18 33,0 0 9,4\n"}},
     "diff --json a.dat b.dat",
     1,
     {"\"lineA\": 1, \"lineB\": 2, \"movedBy\": [1, -2, 3]"}},
    {"AMoveHasItsLines",
     {{"a.dat", "P-1     01005    00c 10 20 30,0 0 9,4\n"},
      {"b.dat", kColumns.substr(0, 0) + "P-1     01006    00c 900 0 0,0 0 9,4\n"
                                        "P-1     01005    00c 11 18 33,0 0 9,4\n"}},
     "diff a.dat b.dat",
     1,
     {"~ A:1 B:2  cylinder P-1 01/5: moved by 1 -2 3\n",
      "+        B:1  cylinder P-1 01/6: added at 900 0 0, length 9, diameter 4\n",
      "1 moved, 1 added; 0 in their places\n"}},
    // Up to the tolerance nothing differs: 0.5 and a little more.
    {"WhatIsWithinTheToleranceIsTheSame",
     {{"a.dat", kPipe}, {"b.dat", "P-1     01001    00c 0 0 0.49,0 0 1000,100\n"}},
     "diff --tolerance 0.5 a.dat b.dat",
     0,
     {"no difference; 1 in their places\n"}},
    {"WhatIsBeyondTheToleranceIsNot",
     {{"a.dat", kPipe}, {"b.dat", "P-1     01001    00c 0 0 0.51,0 0 1000,100\n"}},
     "diff --tolerance 0.5 a.dat b.dat",
     1,
     {"moved by 0 0 0.51\n1 moved; 0 in their places\n"}},
    {"AnotherOrderIsNoDifference",
     {{"a.dat", "P-1     01001    00c 0 0 0,0 0 9,4\nP-1     01002    00c 50 0 0,0 0 9,4\n"},
      {"b.dat", "P-1     01002    00c 50 0 0,0 0 9,4\nP-1     01001    00c 0 0 0,0 0 9,4\n"}},
     "diff a.dat b.dat",
     0,
     {"no difference; 2 in their places, in another order\n"}},
    {"AnotherHeaderIsAnotherName",
     {{"a.dat", kPipe}, {"b.dat", "P-9     01001    00c 0 0 0,0 0 1000,100\n"}},
     "diff a.dat b.dat",
     1,
     {"cylinder P-1 01/1: renamed: header from P-1 01 to P-9 01\n1 renamed; 0 in their places\n"}},
};

const Answer kConversions[] = {
    {"LostHeaderFieldsAreNamed",
     {{"a.dat", "P-1     01001  Q100c cs AB12,sp XY,1 2 3,40 50 600,100\n"}},
     "convert a.dat x.dat --style fixed",
     1,
     {},
     {"a.dat:1: warning: cylinder: F5 \"Q1\" is lost [V308]", "cylinder: F7 \"XY\" is lost [V308]",
      "vesk: 2 times [V308]"}},
    {"F6IsKept",
     {{"a.dat", "P-1     01001    00c cs AB12,1 2 3,40 50 600,100\n"}},
     "convert a.dat - --style fixed",
     0,
     {"60AB1201  P-1     001CYL    1.000    2.000    3.000   41.000   52.000  603.000  100.000\n"},
     {},
     {"lost"}},
    {"VerifiedElementsAreCounted",
     {{"a.dat", kPipe + kPipe + kPipe}},
     "convert a.dat x.dat --style fixed --verify",
     0,
     {},
     {"vesk: verified 3 elements, 0 differ\n"}},
    {"OnlyChosenElementsAreVerified",
     {{"a.dat", kPipe + kPipe + kPipe}},
     "convert a.dat x.dat --lines 2-3 --verify",
     0,
     {},
     {"vesk: verified 2 elements, 0 differ\n"}},
};

const Answer kChecks[] = {
    {"ANoteIsNoErrorIfStrict",
     {{"a.dat", "P-1     01001    00c 0 0 0,0 0 1000,100 \n"}},
     "check --strict a.dat",
     0,
     {"a.dat: 0 errors, 0 warnings, 1 note in 1 element\n"}},
    {"BothStylesAreOne",
     {{"a.dat", kPipe + kColumns}},
     "check --mixed --json --ignore V204 a.dat",
     0,
     {"\"file\": \"a.dat\",\n      \"style\": \"mixed\",\n      \"elements\": 2,"}},
    {"OneStyleIsNamed",
     {{"a.dat", kColumns}},
     "check --mixed --json a.dat",
     0,
     {"\"style\": \"fixed\","}},
    {"ElementsAddUpOverFiles",
     {{"a.dat", kPipe},
      {"b.dat", "P-1     01001    00c 0 0 0,0 0 1000,-1\nP-1     01002    00c 0 9 0,0 0 1000,0\n"}},
     "check --json a.dat b.dat",
     1,
     {"\n  \"elements\": 3,\n  \"errors\": 1,\n  \"warnings\": 1,\n  \"notes\": 0\n"}},
    // Supports at one place are one kind twice: compared as a whole with --joints, by their
    // shapes without.
    {"DuplicatesAreNoMatterOfJoints",
     {{"a.dat",
       "P-1     01001    00b 10 0 0,0 0 0,0 10 0,0 0 10\nP-1     01002    00b 10 0 0,0 0 0,0 10 "
       "0,0 0 10\n"},
      {"a.attributes.csv", "f1,f2,first,last,component\nP-1,01,1,1,SUPPORT\nP-1,01,2,2,SUPPORT\n"}},
     "check --only V204 a.dat",
     0,
     {"a.dat:2: warning: same shape as the element at line 1 [V204]"}},
    {"SupportsAreComparedAsAWhole",
     {{"a.dat",
       "P-1     01001    00b 10 0 0,0 0 0,0 10 0,0 0 10\nP-1     01002    00b 10 0 0,3 4 0,0 10 "
       "0,0 0 10\n"},
      {"a.attributes.csv", "f1,f2,first,last,component\nP-1,01,1,1,SUPPORT\nP-1,01,2,2,SUPPORT\n"}},
     "check --joints --only V208 a.dat",
     0,
     {"a.dat:2: warning: ", " at 8 9 5: another stands 5.000 away, at line 1 [V208]"}},
    {"ASupportIsOfBothItsPlaces",
     {{"a.dat",
       "P-1     01001    00b 10 0 0,0 0 0,0 10 0,0 0 10\nP-1     01002    00b 10 0 0,3 4 0,0 10 "
       "0,0 0 10\n"},
      {"a.attributes.csv", "f1,f2,first,last,component\nP-1,01,1,1,SUPPORT\nP-1,01,2,2,SUPPORT\n"}},
     "check --joints --only V208 --lines 1 a.dat",
     0,
     {"a.dat:2: warning: ", "another stands 5.000 away, at line 1"}},
    {"ASupportIsOfItsOwnPlace",
     {{"a.dat",
       "P-1     01001    00b 10 0 0,0 0 0,0 10 0,0 0 10\nP-1     01002    00b 10 0 0,3 4 0,0 10 "
       "0,0 0 10\n"},
      {"a.attributes.csv", "f1,f2,first,last,component\nP-1,01,1,1,SUPPORT\nP-1,01,2,2,SUPPORT\n"}},
     "check --joints --only V208 --lines 2 a.dat",
     0,
     {"a.dat:2: warning: ", "another stands 5.000 away, at line 1"}},
    {"ASupportBeyondTheReachIsAnother",
     {{"a.dat",
       "P-1     01001    00b 10 0 0,0 0 0,0 10 0,0 0 10\nP-1     01002    00b 10 0 0,3 4 0,0 10 "
       "0,0 0 10\n"},
      {"a.attributes.csv", "f1,f2,first,last,component\nP-1,01,1,1,SUPPORT\nP-1,01,2,2,SUPPORT\n"}},
     "check --joints --only V208 --reach 4.9 a.dat",
     0,
     {"0 warnings in 2 elements"}},
    // "x" stands in column 36, behind 21 of the heading, "0 0 0,0 0 1000".
    {"SarifCountsColumnsFromOneToBehindTheLast",
     {{"a.dat", "P-1     01001    00c 0 0 0,0 0 1000,-12.5\n"}},
     "check --format sarif a.dat",
     1,
     {R"("startLine": 1, "startColumn": 37, "endColumn": 42)"}},
    {"TextCountsColumnsFromOneToTheLast",
     {{"a.dat", "P-1     01001    00c 0 0 0,0 0 1000,-12.5\n"}},
     "check a.dat",
     1,
     {"a.dat:1:37-41: error: diameter is below zero: -12.5 [V101]\n"
      "  1 | P-1     01001    00c 0 0 0,0 0 1000,-12.5\n"
      "    |                                     ^~~~~\n"
      "  expected: a positive number\n"}},
    // 20 diameters.
    {"WhatAnEndFacesIsLookedForAsFarAsThis",
     {{"a.dat", kPipe}},
     "check --only V205 a.dat",
     0,
     {"end at 0 0 0: open, 100 wide, faces nothing within 2000.000 [V205]",
      "end at 0 0 1000: open, 100 wide, faces nothing within 2000.000 [V205]"}},
    {"ABlankCounterIsOne",
     {{"a.dat", "P-1     01       00c 0 0 0,0 0 1000,100\n"}},
     "check a.dat",
     0,
     {"0 errors, 0 warnings in 1 element"}},
    {"CountersAreOfBase36",
     {{"a.dat", "P-1     0100a    00c 0 0 0,0 0 1000,100\n"}},
     "check a.dat",
     1,
     {"a.dat:1:11-13: error: element counter is not base 36: '00a' [V031]"}},
    {"EveryControlCharacterIsOne",
     {{"a.dat", "P-1\x7f    01001    00c 0 0 0,0 0 1000,100\n"}},
     "check a.dat",
     1,
     {"a.dat:1:4: error: control character 0x7f [V019]"}},
    {"BlanksAreCounted",
     {{"a.dat", "P-1     01001    00c 0 0 0,0 0 1000,100  \n"}},
     "check a.dat",
     0,
     {"a.dat:1:40-41: note: 2 blanks at the end of the line [V032]"}},
};

const Answer kClashes[] = {
    // The third pipe stands askew: its box meets that of the first, and it is 800 away.
    {"PairsAreCounted",
     {{"a.dat", kCrossing + "P-3     01001    00c 990 -1500 0,1000 1500 0,60\n"}},
     "clash --json a.dat",
     1,
     {"\"elements\": 3,\n  \"withoutRoom\": 0,\n  \"pairs\": 2,",
      R"("a": {"file": "a.dat", "line": 1, "kind": "cylinder", "header": "P-1 01", "counter": 7},)",
      R"("b": {"file": "a.dat", "line": 2, "kind": "cylinder", "header": "P-2 01", "counter": 9},)",
      "\"distance\": 0,\n      \"depth\": ", "\"depthIsLowerBound\": true\n"}},
    // 31 from each other: 111 - 50 - 30.
    {"PairsThatAreFarAreNotMeasured",
     {{"a.dat", kCrossing + "P-3     01001    00c 500 -500 -111,0 1000 0,60\n"}},
     "clash --json --clearance 30 a.dat",
     1,
     {"\"pairs\": 1,", "\"V501\": 1,\n    \"V502\": 0,"}},
    {"ADistanceIsOne",
     {{"a.dat", kCrossing + "P-3     01001    00c 500 -500 -111,0 1000 0,60\n"}},
     "clash --json --clearance 32 a.dat",
     1,
     {"\"V501\": 1,\n    \"V502\": 1,", "\"place\": [500, 0, -65.5],\n      \"distance\": 31\n"}},
    {"ADistanceIsOneForPeople",
     {{"a.dat", kCrossing + "P-3     01001    00c 500 -500 -111,0 1000 0,60\n"}},
     "clash --clearance 32 a.dat",
     1,
     {"a.dat:1: warning: cylinder of P-1 01 is 31 from the cylinder of P-3 01 at line 3 at "
      "500 0 -65.5 [V502]",
      "a.dat: 1 clash, 1 too near, 0 duplicates in 3 elements\n"}},
    {"FindingsOfSarifAreInTheirOrder",
     {{"a.dat", kCrossing + "P-3     01001    00c 500 -500 -111,0 1000 0,60\n"}},
     "clash --format sarif --clearance 32 a.dat",
     1,
     {"\"ruleId\": \"V501\",\n          \"level\": \"error\",", "\"startLine\": 1}",
      "\"ruleId\": \"V502\",\n          \"level\": \"warning\","}},
};

// Each of 25 headers is in both files, with the same counter.
const Files kManyHeaders = {{"a.dat", manyTimes(25, "P-", "   01001    00c 0 0 0,0 0 9,4\n")},
                            {"b.dat", manyTimes(25, "P-", "   01001    00c 0 9 0,0 0 9,4\n")}};

// Seven parts whose names differ only in what names can't hold.
const Files kLikeNames = {
    {"a.dat",
     "A+1     01001    00c 0 0 0,0 0 9,4\nA/1     01001    00c 0 0 0,0 0 9,4\n"
     "A:1     01001    00c 0 0 0,0 0 9,4\nA;1     01001    00c 0 0 0,0 0 9,4\n"
     "A?1     01001    00c 0 0 0,0 0 9,4\nA*1     01001    00c 0 0 0,0 0 9,4\n"
     "A!1     01001    00c 0 0 0,0 0 9,4\nA=1     01001    00c 0 0 0,0 0 9,4\n"}};

const Answer kChanges[] = {
    {"TheFirstTwentyHeadersAreNamed",
     kManyHeaders,
     "merge a.dat b.dat -o x.dat",
     0,
     {"b.dat: header P-119 01 clashes: 1 element renumbered, 1 to 1 become 2 to 2\n"
      "and 5 more headers; -v shows all\nx.dat: 50 elements\n"},
     {},
     {"P-120"}},
    {"AllHeadersAreNamedIfAsked",
     kManyHeaders,
     "merge -v a.dat b.dat -o x.dat",
     0,
     {"b.dat: header P-124 01 clashes: 1 element renumbered, 1 to 1 become 2 to 2\nx.dat: 50"},
     {},
     {"more header"}},
    // 46655 is the last counter, ZZZ: after 46654 one more fits, two do not.
    {"CountersGoUpToTheLast",
     {{"a.dat", "P-1     01ZZY    00c 0 0 0,0 0 9,4\n"},
      {"b.dat", "P-1     01ZZY    00c 0 9 0,0 0 9,4\n"}},
     "merge a.dat b.dat -o -",
     0,
     {"P-1     01ZZZ    00c 0 9 0,0 0 9,4\n"},
     {"46654 to 46654 become 46655 to 46655"}},
    {"CountersRunOutBehindTheLast",
     {{"a.dat", "P-1     01ZZY    00c 0 0 0,0 0 9,4\n"},
      {"b.dat", "P-1     01ZZY    00c 0 9 0,0 0 9,4\nP-1     01ZZZ    00c 0 18 0,0 0 9,4\n"}},
     "merge a.dat b.dat -o x.dat",
     4,
     {},
     {"b.dat: the 46 656 counters of header P-1 01 run out"}},
    {"ClashesAreForPrograms",
     {{"a.dat", "P-1     01005    00c 0 0 0,0 0 9,4\n"},
      {"b.dat", "P-1     01005    00c 0 9 0,0 0 9,4\nP-1     01008    00c 0 18 0,0 0 9,4\n"}},
     "merge --json a.dat b.dat -o x.dat",
     0,
     {"\"written\": true,\n  \"file\": \"x.dat\",\n  \"attributes\": null,\n  \"elements\": 3,\n"
      "  \"rows\": 0,\n  \"style\": \"token\",\n  \"rowsLeftOut\": 0,\n  \"inputs\": [\n    "
      "\"a.dat\",\n    "
      "\"b.dat\"\n  ],",
      R"({"file": "b.dat", "header": "P-1 01", "elements": 2, "becomes": "P-1 01", "shift": 1})"}},
    {"RowsLeftOutAreCounted",
     {{"a.dat", "P-1     01001    00c 0 0 0,0 0 9,4\n"},
      {"a.attributes.csv", "f1,f2,first,last,spec\nP-1,01,1,1,A1\n"},
      {"b.dat", "P-1     01001    00c 0 9 0,0 0 9,4\nP-2     01001    00c 0 18 0,0 0 9,4\n"},
      {"b.attributes.csv", "f1,f2,first,last,spec\nP-1,01,1,1,B2\nP-2,01,1,1,B2\n"}},
     "extract --json a.dat b.dat -o x.dat",
     1,
     {"\"written\": true,\n  \"file\": \"x.dat\",\n  \"attributes\": \"x.attributes.csv\",\n"
      "  \"elements\": 3,\n  \"rows\": 2,\n  \"rowsLeftOut\": 1,"}},
    {"RowsLeftOutOfAMergeAreCounted",
     {{"a.dat", "P-1     01001    00c 0 0 0,0 0 9,4\n"},
      {"a.attributes.csv", "f1,f2,first,last,spec\nP-1,01,1,1,A1\n"},
      {"b.dat", "P-1     01001    00c 0 9 0,0 0 9,4\nP-2     01001    00c 0 18 0,0 0 9,4\n"},
      {"b.attributes.csv", "f1,f2,first,last,spec\nP-1,01,1,1,B2\nP-2,01,1,1,B2\n"}},
     "merge --clash keep --json a.dat b.dat -o x.dat",
     1,
     {"\"elements\": 3,\n  \"rows\": 2,", "\"rowsLeftOut\": 1,"}},
    {"ADryRunIsNotWritten",
     {{"a.dat", kPipe}},
     "extract -n --json a.dat -o x.dat",
     0,
     {"\"written\": false,", "\"elements\": 1,\n  \"rows\": 0,"}},
    // 25 like the first.
    {"TheFirstTwentyDuplicatesAreNamed",
     {{"a.dat", manyTimes(26, "P-1     01", "    00c 0 0 0,0 0 9,4\n")}},
     "edit a.dat -o x.dat --drop-duplicates",
     0,
     {"line 21 dropped: cylinder like the one at line 1\n"
      "and 5 more elements; -v shows all\n25 elements dropped\nx.dat: 1 element\n"},
     {},
     {"line 22"}},
    {"AllDuplicatesAreNamedIfAsked",
     {{"a.dat", manyTimes(26, "P-1     01", "    00c 0 0 0,0 0 9,4\n")}},
     "edit -v a.dat -o x.dat --drop-duplicates",
     0,
     {"line 26 dropped: cylinder like the one at line 1\n25 elements dropped\n"},
     {},
     {"more elements"}},
    // By their counters 3, 1, 2, 9 become 1, 2, 3, 9: three are in another place. From 4 on all
    // four have others but the last, whose number would be 7.
    {"ChangesAreForPrograms",
     {{"a.dat",
       "P-1     01003    00c 0 0 0,0 0 9,4\nP-1     01001    00c 9 0 0,0 0 9,4\n"
       "P-2     01002    00c 18 0 0,0 0 9,4\nP-1     01004    00c 27 0 0,0 0 9,4\n"
       "P-1     01008    00c 27 0 0,0 0 9,4\n"}},
     "edit --json a.dat -o x.dat --sort counter --renumber elements --start 3 --rename P-1 Q-7 "
     "--drop-duplicates",
     0,
     {"\"written\": true,\n  \"input\": \"a.dat\",\n  \"file\": \"x.dat\",\n  \"attributes\": "
      "null,\n"
      "  \"elements\": 4,\n  \"rows\": 0,",
      R"({"line": 5, "kind": "cylinder", "like": 4})",
      R"({"header": "P-1 01", "becomes": "Q-7 01", "elements": 3})",
      // Q-7 1, 3, 4 become 3, 4, 5; P-2 2 becomes 3.
      "\"inAnotherPlace\": 3,\n  \"renumbered\": 4,\n  \"componentsApart\": 0\n"}},
    {"ADryRunOfAnEditIsNotWritten",
     {{"a.dat", kPipe}},
     "edit -n --json a.dat -o x.dat --rename P-1 Q-7",
     0,
     {"\"written\": false,"}},
    {"FiveLikeNamesAreWarnedOf",
     kLikeNames,
     "split a.dat --by header -o new -n",
     0,
     {"new/A+1_01.dat ", "new/A_1_01.dat ", "new/A_1_01-7.dat ",
      "8 elements in 8 parts; not written"},
     {"new/A_1_01-2.dat is for \"A:1 01\"", "new/A_1_01-6.dat is for \"A!1 01\""},
     {"new/A_1_01-7.dat is for"}},
    {"PartsAreForPrograms",
     {{"a.dat",
       "P-1     01001    00c 0 0 0,0 0 9,4\nP-1     01001    00c 5 0 0,0 0 9,4\nP-2     01001    "
       "00c 0 0 0,0 0 9,4\n"},
      {"a.attributes.csv", "f1,f2,first,last,spec\nP-1,01,1,1,A1\n"}},
     "split --json a.dat --by header -o new",
     0,
     {"\"written\": true,\n  \"input\": \"a.dat\",\n  \"by\": \"header\",",
      R"({"of": "P-1 01", "file": "new/P-1_01.dat", "attributes": "new/P-1_01.attributes.csv", "elements": 2, "rows": 1})",
      R"({"of": "P-2 01", "file": "new/P-2_01.dat", "attributes": "new/P-2_01.attributes.csv", "elements": 1, "rows": 0})"}},
    // The middles are at x 25 and y 15: cells 2 and 1 of 10.
    {"SquaresInPlanAreAsLongAsWide",
     {{"a.dat", "P-1     01001    00b 2 0 0,24 14 4,0 2 0,0 0 2\n"}},
     "split a.dat --by grid --grid 10 -o new -n",
     0,
     {"new/x2_y1.dat         1  x2_y1\n"}},
    {"DevicesOfWindowsAreNoNames",
     {{"a.dat",
       "LPT1      001    00c 0 0 0,0 0 9,4\nCOM9      001    00c 0 0 0,0 0 9,4\nnul       001    "
       "00c 0 0 0,0 0 9,4\n"
       "LPTX      001    00c 0 0 0,0 0 9,4\nCOM10     001    00c 0 0 0,0 0 9,4\n"}},
     "split a.dat --by header -o new -n",
     0,
     {"new/LPT1_.dat ", "new/COM9_.dat ", "new/nul_.dat ", "new/LPTX.dat ", "new/COM10.dat "}},
    // A pipe of 2 elements of 1 component, and three components that are left out for two reasons.
    {"ComponentsAndElementsAreCountedApart",
     {{"a.pcf",
       "PIPE\n END-POINT 0 0 0 100\n END-POINT 1000 0 0 100\nPIPE\n END-POINT 5 0 0 100\n "
       "END-POINT 1005 9 0 100\n"}},
     "import --json a.pcf -o x.dat",
     0,
     {"\"elements\": 4,\n  \"components\": 2,\n  \"errors\": 0,\n  \"warnings\": 0,"}},
};

// Texts of 21 elements without a wall, each of another width; the last three times.
const std::string kWidths = manyTimes(21, "P-1     01001    00c 0 0 0,0 0 1000,", "\n") +
                            "P-1     01001    00c 0 9 0,0 0 1000,120\n"
                            "P-1     01001    00c 0 18 0,0 0 1000,120\n";

const Answer kMeasures[] = {
    // 1200 inches are 100 feet.
    {"WhatIsAskedForIsSaid",
     {{"a.dat", "P-1     01001    00c 0 0 0,0 0 1200,10\n"}},
     "measure --json --unit 25.4 --units imperial --density 7000 --content 800 --insulation 30 "
     "a.dat",
     0,
     {"\"unit\": 25.4,\n  \"units\": \"imperial\",\n  \"density\": 7000,\n  \"content_density\": "
      "800,\n"
      "  \"insulation\": 30,",
      "\"diameter1\": 10,", "\"length\": 100,"}},
    {"WhatIsNotAskedForIsSaidToo",
     {{"a.dat", kPipe}},
     "measure --json a.dat",
     0,
     {"\"unit\": 1,\n  \"units\": \"metric\",\n  \"density\": 0,\n  \"content_density\": 1000,\n  "
      "\"insulation\": 0,"}},
    {"WallsAreOfSteel",
     {{"a.dat", kPipe}},
     "measure --json --schedule 40 a.dat",
     0,
     {"\"density\": 7850,\n  \"content_density\": 1000,"}},
    {"TheLargerSideOfADuctComesFirst",
     {{"a.dat",
       "P-1     01001    00e 0 0 0,900 0 0,0 900 0,300,400\nP-1     01002    00e 0 0 0,900 0 0,0 "
       "900 0,400,300\n"}},
     "measure --csv --sums --by size a.dat",
     0,
     {"\nsubtotal,size,400 x 300,,,0,0,0,0,0,0,0,0,0,2,"}},
    // Within a thousandth, 0.5, of both; 0.1 and 0.3 from them.
    {"TheNearestWallCounts",
     {{"a.dat",
       "P-1     01001    00c 0 0 0,0 0 1000,500.1\nP-1     01002    00c 0 0 0,0 0 1000,500.3\n"
       "P-1     01003    00c 0 0 0,0 0 1000,499.4\n"},
      {"walls.csv", "500,5\n500.4,6\n"}},
     "measure --csv --walls walls.csv a.dat",
     0,
     {"\nrow,,,,cylinder,500.1,0,0,0,0,0,5,0,0,1,", "\nrow,,,,cylinder,500.3,0,0,0,0,0,6,0,0,1,",
      "\nrow,,,,cylinder,499.4,0,0,0,0,0,0,0,0,1,"},
     {"a.dat:3: no wall: cylinder of 499.4 mm"}},
    {"TwentyRemarksAreMade",
     {{"a.dat", kWidths}, {"walls.csv", "9,1\n"}},
     "measure --csv --walls walls.csv a.dat",
     0,
     {},
     {"a.dat:20: no wall: cylinder of 119 mm\n",
      "vesk: warning: and so on, for 3 more elements\n  hint: -v names them\n"},
     {"cylinder of 120 mm"}},
    {"AllRemarksAreMadeIfAsked",
     {{"a.dat", kWidths}, {"walls.csv", "9,1\n"}},
     "measure -v --csv --walls walls.csv a.dat",
     0,
     {},
     {"a.dat:21: no wall: cylinder of 120 mm (3 times, also a.dat:22, a.dat:23)\n"},
     {"and so on"}},
    {"ThreePlacesAreNamed",
     {{"a.dat", kPipe + kPipe}, {"b.dat", kPipe + kPipe}, {"walls.csv", "9,1\n"}},
     "measure --json --walls walls.csv a.dat b.dat",
     0,
     {R"({"text": "no wall: cylinder of 100 mm", "count": 4, "places": ["a.dat:1", "a.dat:2", "b.dat:1"]})"},
     {"a.dat:1: no wall: cylinder of 100 mm (4 times, also a.dat:2, b.dat:1 ...)\n"}},
    // pi / 4 * 0.375 * 0.375 * 100 ft3.
    {"FourDecimalsOfCubicFeetAreShown",
     {{"a.dat", "P-1     01001    00c 0 0 0,0 0 30480,114.3\n"}},
     "measure --units imperial a.dat",
     0,
     {" 11.0447\n"}},
    {"SixDecimalsOfCubicMetresAreShown",
     {{"a.dat", "P-1     01001    00c 0 0 0,0 0 1000,100\n"}},
     "measure a.dat",
     0,
     {"  1.000       0.314   0.007854\n"}},  // pi * 0.1, pi / 4 * 0.01
};

const Answer kShapes[] = {
    // Ends within solids are not open: at 45 degrees of a bend of 300, 330 from its centre.
    {"AnEndInTheOuterHalfOfABendIsNotOpen",
     {{"a.dat",
       "P-1     01001    00t 0 0 0,300 0 0,0 300 0,100\nP-2     01002    00c 233.3 233.3 500,0 0 "
       "-500,30\n"}},
     "check --only V205,V206 a.dat",
     0,
     {"end at 233.3 233.3 500: "},
     {},
     {"end at 233.3 233.3 0: "}},
    // 351 from the centre and so 1 outside.
    {"AnEndOutsideABendIs",
     {{"a.dat",
       "P-1     01001    00t 0 0 0,300 0 0,0 300 0,100\nP-2     01002    00c 248.2 248.2 500,0 0 "
       "-500,30\n"}},
     "check --only V205,V206 a.dat",
     0,
     {"end at 248.2 248.2 500: ", "end at 248.2 248.2 0: "}},
    // At x 190 of 200 the cone has a radius of 48.
    {"AnEndInTheWideHalfOfAConeIsNotOpen",
     {{"a.dat",
       "P-1     01001    00n 0 0 0,200 0 0,20,100\nP-2     01002    00c 190 40 500,0 0 -500,10\n"}},
     "check --only V205,V206 a.dat",
     0,
     {"end at 190 40 500: "},
     {},
     {"end at 190 40 0: "}},
    {"AnEndBesideAConeIs",
     {{"a.dat",
       "P-1     01001    00n 0 0 0,200 0 0,20,100\nP-2     01002    00c 190 60 500,0 0 -500,10\n"}},
     "check --only V205,V206 a.dat",
     0,
     {"end at 190 60 500: ", "end at 190 60 0: "}},
    // Half of the larger diameter is 50, whichever of both it is.
    {"EndsFaceEachOtherUpToHalfOfTheLargerDiameter",
     {{"a.dat",
       "P-1     01001    00c 0 0 0,1000 0 0,100\nP-1     01002    00c 1049 0 0,1000 0 0,20\n"}},
     "check --joints --reach 200 --only V201 a.dat",
     0,
     {"a.dat:2:22-29: warning: end at 1049 0 0: gap of 49.000 to the end at line 1 [V201]"}},
    {"EndsFaceEachOtherUpToHalfOfTheLargerDiameterBehindThem",
     {{"a.dat",
       "P-1     01001    00c 0 0 0,1000 0 0,20\nP-1     01002    00c 1049 0 0,1000 0 0,100\n"}},
     "check --joints --reach 200 --only V201 a.dat",
     0,
     {"gap of 49.000 to the end at line 1"}},
    {"EndsFaceEachOtherNoFurther",
     {{"a.dat",
       "P-1     01001    00c 0 0 0,1000 0 0,100\nP-1     01002    00c 1051 0 0,1000 0 0,20\n"}},
     "check --joints --reach 200 --only V201 a.dat",
     0,
     {"0 warnings in 2 elements"}},
    {"EndsFaceEachOtherUpToTheReach",
     {{"a.dat",
       "P-1     01001    00c 0 0 0,1000 0 0,100\nP-1     01002    00c 1049 0 0,1000 0 0,20\n"}},
     "check --joints --reach 48 --only V201 a.dat",
     0,
     {"0 warnings in 2 elements"}},
    // By 60 degrees: the cosine is more than a quarter of the sine.
    {"AReducerMayBeTurnedByALittle",
     {{"a.dat",
       "P-1     01001    00r -10 -10 0,20 0 0,0 20 0,20 20 0,13.660 -3.660 40,23.660 13.660 "
       "40,-3.660 6.340 40,6.340 23.660 40\n"}},
     "check a.dat",
     0,
     {"0 errors, 0 warnings"}},
    // By 80 degrees it is less: 0.174 to 0.246.
    {"AReducerIsTwistedByMore",
     {{"a.dat",
       "P-1     01001    00r -10 -10 0,20 0 0,0 20 0,20 20 0,18.112 -1.585 40,21.585 18.112 "
       "40,-1.585 1.888 40,1.888 21.585 40\n"}},
     "check a.dat",
     0,
     {"reducer is twisted: its second end fits the first better turned [V106]",
      "0 errors, 1 warning"}},
    // Columns keep hundredths beyond 9999.999: 100 and 100.03 may then be the same, up to 0.04.
    {"FarAwayRadiiAreRoundedMore",
     {{"a.dat",
       "60    01  P-1     001TOR20000.000    0.000    0.00020100.000    0.000    0.00020000.000  "
       "100.030    0.000  100.015   20.000\n"}},
     "check --only V110 a.dat",
     0,
     {"0 warnings"}},
    {"NearRadiiAreNot",
     {{"a.dat",
       "60    01  P-1     001TOR 2000.000    0.000    0.000 2100.000    0.000    0.000 2000.000  "
       "100.030    0.000  100.015   20.000\n"}},
     "check --only V110 a.dat",
     0,
     {"bend has two radii: 100.000 and 100.030 [V110]"}},
    {"TheVolumeOfSwappedEndsIsNone",
     {{"a.dat", kSwapped}},
     "export a.dat -o - --to ifc",
     0,
     {"IFCQUANTITYVOLUME('GrossVolume',$,$,6.E-06,$)"}},  // 10 * 20 * 30 mm3
};

const Answer kImports[] = {
    // Of one word, two can't be drawn, and one can.
    {"WhatBecameOfEachIsCounted",
     {{"a.pcf",
       "PIPE\n END-POINT 0 0 0 100\n END-POINT 1000 0 0 100\nPIPE\n END-POINT 0 0 0 100\n "
       "END-POINT 0 0 0 100\n"
       "PIPE\n END-POINT 9 0 0 100\n END-POINT 9 0 0 100\nBEAM\n END-POINT 0 0 0 100\n"}},
     "import a.pcf -o x.dat",
     1,
     {"x.dat: 2 elements of 4 components\n  drawn: 1\n    1  PIPE\n  not drawn: 3\n"
      "    2  PIPE: has no length (first in line 4)\n    1  BEAM: "},
     {"a.pcf:4: error: PIPE not drawn: has no length (2 times, also a.pcf:7)"}},
};

// A chunk of a review model: a pipe of 1000 and 100.
std::string pipeChunk(const std::string& name) {
  return name +
         "\n 1 1\n 8\n 0.001 0 0 0\n 0 0.001 0 0\n 0 0 0.001 0\n -50 -50 -500 50 50 500\n"
         " 50 1000\n";
}

std::string groupChunk(const std::string& name, const std::string& inside) {
  return "CNTB\n 1 2\n" + name + "\n 0 0 0\n 9\n" + inside + "CNTE\n 1 1\n";
}

std::string times(int count, const std::string& text) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

// Everything that is remarked on is there another number of times.
const std::string kReview =
    "HEAD\n 1 1\na plant\na note\ntoday\nsomeone\nMODL\n 1 1\nPROJECT\nMODEL\n" +
    times(6, "COLR\n 1 1\n 1 2 3 4\n") +
    groupChunk("/A",
               pipeChunk("PRIM") + times(7, pipeChunk("OBST")) + times(8, pipeChunk("INSU"))) +
    groupChunk("/EMPTY", "") + times(5, groupChunk("/B", times(2, pipeChunk("PRIM")))) +
    "END:\n 1 1\n";

const std::string kReviewAttributes =
    "CADC_Attributes_File v1.0 , start: NEW , end: END , name_end: := , sep: &end&\n"
    "NEW /A\nDesign Temp.:=A1\nDesign Temp.:=A2\nEND\nNEW /EMPTY\nNote:=x\nEND\n"
    "NEW /C\nEND\nNEW /D\nEND\nNEW /E\nEND\n" +
    times(4, "what is this\n");

// A pipe in /A and two in each of five groups.
TEST(ReviewAnswers, CountEverythingThatIsRemarkedOn) {
  const TempFolder folder;
  writeFile("a.rvm", kReview);
  writeFile("a.att", kReviewAttributes);
  const ToolRun run = runTool("import a.rvm --attributes a.att -o x.dat");
  EXPECT_EQ(run.exit, 1) << run.err;
  for (const char* part :
       {"x.dat: 11 elements of 11 shapes in 7 groups\n  cylinder: 11 exact; 11 elements\n",
        "  7 obstructions, skipped (--obstructions draws them)\n",
        "  8 insulations, skipped (--insulations draws them)\n", "  6 colours, dropped\n",
        "  5 groups without attributes\n",
        "  1 groups without shapes whose attributes are dropped\n",
        "  3 blocks of attributes without a group\n",
        "  4 lines that are not attributes or belong to no block\n",
        "  1 attributes given again in their block, the last one kept\n"}) {
    EXPECT_TRUE(contains(run.out, part)) << part << run.out;
  }
  const ToolRun drawn = runTool("import a.rvm --attributes a.att -o y.dat --obstructions");
  EXPECT_TRUE(contains(drawn.out, "y.dat: 18 elements of 18 shapes in 7 groups\n")) << drawn.out;
  EXPECT_FALSE(contains(drawn.out, "--obstructions draws them")) << drawn.out;
  EXPECT_TRUE(contains(drawn.out, "  8 insulations, skipped")) << drawn.out;
  const ToolRun some = runTool("import a.rvm --group /A -o z.dat");
  EXPECT_TRUE(contains(some.out, "z.dat: 1 element of ")) << some.out;
  EXPECT_TRUE(contains(some.out, "  10 shapes of groups that were not selected\n")) << some.out;
}

// The first shape stands in line 34, behind 10 lines, 6 times 3 of colours and 5 of its group.
TEST(ReviewAnswers, HaveARowForEachShape) {
  const TempFolder folder;
  writeFile("a.rvm", kReview);
  writeFile("a.att", kReviewAttributes);
  const ToolRun run = runTool("import --json a.rvm --attributes a.att -o x.dat");
  for (const char* part :
       {"\"file\": \"x.dat\",\n  \"attributes\": \"x.attributes.csv\",\n  \"inputs\": [\n"
        "    \"a.rvm\"\n  ],\n  \"elements\": 11,\n  \"shapes\": 11,\n  \"groups\": 7,",
        R"({"kind": "cylinder", "exact": 11, "in pieces": 0, "sliced": 0, "faceted": 0, )"
        R"("doubtful": 0, "refused": 0, "elements": 11, "deviation": 0, "volumeLost": 0})",
        R"({"text": "colours, dropped", "count": 6})",
        R"({"text": "groups without attributes", "count": 5})"}) {
    EXPECT_TRUE(contains(run.out, part)) << part << run.out;
  }
  const std::string rows = readFile("x.attributes.csv");
  EXPECT_TRUE(rows.starts_with(
      "f1,f2,first,last,path,component,kind,written,source,transparency,material,position,"
      "design-temp,note\n/A,01,1,1,/A,/A,cylinder,exact,a.rvm,0,9,34,A2,\n"))
      << rows;
}

// A record behind its heading, what is found in it, and what is expected instead.
struct Found {
  const char* record;
  const char* finding;
  const char* expected = "";
};

constexpr Found kInTokens[] = {
    {"c 1 2 3,0 0 1000,-200", "37-40: error: diameter is below zero: -200 [V101]",
     "a positive number"},
    {"n 1 2 3,0 0 1000,20,-1", "40-41: error: diameter is below zero: -1 [V101]",
     "a positive number"},
    {"n 1 2 3,0 0 1000,-20,1", "37-39: error: diameter is below zero: -20 [V101]"},
    {"t 0 0 0,9 0 0,0 9 0,-4", "40-41: error: diameter is below zero: -4 [V101]"},
    {"e 0 0 0,9 0 0,0 9 0,4,-5", "42-43: error: width is below zero: -5 [V101]"},
    {"e 0 0 0,9 0 0,0 9 0,-4,5", "40-41: error: depth is below zero: -4 [V101]"},
    {"e 0 0 0,9 0 0,0 9 0,0.003,5", "40-44: warning: nothing to be seen: depth is 0.003 [V103]"},
    {"e 0 0 0,9 0 0,0 9 0,4,0.002", "42-46: warning: nothing to be seen: width is 0.002 [V103]"},
    {"t 0 0 0,9 0 0,0 9 0,18.1",
     "40-43: error: tube of 18.100 is wider than its bend of radius 9.000 [V102]",
     "at most twice the radius"},
    {"e 0 0 0,9 0 0,0 9 0,19,4",
     "40-41: error: section of 19.000 is wider than its bend of radius 9.000 [V102]"},
    {"c 1 2 3,0 0 0.009,200", "28-36: warning: nothing to be seen: length is 0.009 [V103]"},
    {"c 1 2 3,0 0 1000,0", "37: warning: nothing to be seen: diameter is 0 [V103]"},
    {"n 1 2 3,0 0 1000,0.002,0.001",
     "37-47: warning: nothing to be seen: both diameters is 0.002 [V103]"},
    {"n 1 2 3,0 0 1000,0.001,0.002",
     "37-47: warning: nothing to be seen: both diameters is 0.002 [V103]"},
    {"n 1 2 3,0 0 0,20,9", "28-32: warning: nothing to be seen: length is 0 [V103]"},
    {"b 0.003 0 0,1 1 1,0 20 0,0 0 30", "22-30: warning: nothing to be seen: edge is 0.003 [V103]"},
    {"b 9 0 0,1 1 1,0 0.004 0,0 0 30", "34-42: warning: nothing to be seen: edge is 0.004 [V103]"},
    {"b 9 0 0,1 1 1,0 20 0,0 0 0", "41-45: warning: nothing to be seen: edge is 0 [V103]"},
    {"b 9 0 0,1 1 1,0 20 0,5 5 0", "22-45: warning: box is flat: its edges lie in a plane [V103]"},
    {"t 0 0 0,9 0 0,0 0.002 0,4",
     "34-42: warning: nothing to be seen: bend radius is 0.002 [V103]"},
    {"t 0 0 0,0.003 0 0,0 9 0,4",
     "28-36: warning: nothing to be seen: bend radius is 0.003 [V103]"},
    {"l pt 1 2 3,pt 0 0 0", "25-38: warning: nothing to be seen: length is 0 [V103]"},
    {"g pt 0 0 0,pt 1 0 0,pt 2 0 0",
     "25-47: warning: face has no area: its points lie in a line [V103]"},
    {"t 0 0 0,9 0 0,0 9.1 0,4", "28-40: warning: bend has two radii: 9.000 and 9.100 [V110]",
     "start and end at the same distance from the centre"},
    {"t 0 0 0,9 0 0,-9 0 0,4",
     "28-39: error: bend without a plane: its start and end lie in a line [V112]"},
    {"t 0 0 0,9 0 0,-9 0.0015 0,4",
     "28-44: warning: bend of half a turn: rounding decides on which side it lies [V113]",
     "two bends of a quarter"},
    {"g pt 0 0 0,pt 9 0 0,pt 0 9 0,pt 9 9 0", "25-56: error: quadrangle crosses itself [V108]",
     "four points round the face"},
    {"g pt 0 0 0,pt 9 9 0,pt 9 0 0,pt 0 9 0,pt -5 5 0",
     "25-66: error: polygon crosses itself [V108]", "points round the face"},
    {"l pt 1 1000000000000 3",
     "27-39: warning: number of 1000000000000 has no decimals left [V121]"},
    {"c 1 inf 3,0 0 1000,200", "24-26: error: number is not finite [V105]", "a finite number"},
    {"x 1 2 3,1 0 0,0 1 0,-2,0.5,5,0", "40-41: error: height is below zero: -2 [V101]"},
    {"x 1 2 3,1 0 0,0 1 0,2,-0.5,5,0", "42-45: error: character width is below zero: -0.5 [V101]"},
    {"x 1 2 3,0 0 0,0 1 0,2,0.5,5,0", "28-32: warning: nothing to be seen: direction is 0 [V103]"},
    {"x 1 2 3,1 0 0,0 0 0,2,0.5,5,0",
     "34-38: warning: nothing to be seen: up direction is 0 [V103]"},
    {"x 1 2 3,1 0 0,0 1 0,0,0.5,5,0", "40: warning: nothing to be seen: height is 0 [V103]"},
    {"x 1 2 3,1 0 0,0 1 0,2,0,5,0", "42: warning: nothing to be seen: character width is 0 [V103]"},
};

// Each in a line of its own; a text has an empty second one.
TEST(CheckAnswers, SayWhatIsWrongWhereAndByHowMuch) {
  const TempFolder folder;
  std::string records;
  for (const Found& each : kInTokens) {
    const std::string heading = "P-1     01001    00";
    const std::string record = each.record;
    records += heading + record + '\n';
    if (record[0] == 'x') records += "P-1     01001    01x \n";
  }
  writeFile("a.dat", records);
  const std::string out = runTool("check --max 0 --ignore V204,V032 a.dat").out;
  int line = 0;
  for (const Found& each : kInTokens) {
    ++line;
    const std::string finding = "a.dat:" + std::to_string(line) + ':' + each.finding + '\n';
    if (each.record[0] == 'x') ++line;
    const std::size_t at = out.find(finding);
    EXPECT_NE(at, out.npos) << finding << out.substr(0, 3000);
    if (at == out.npos || *each.expected == '\0') continue;
    const std::string rest = out.substr(at, out.find("\na.dat:", at) - at);
    EXPECT_TRUE(contains(rest, std::string("\n  expected: ") + each.expected)) << rest;
  }
}

const std::string kRun = "P-1     01001    00c 0 0 0,1000 0 0,100\n";

// Four kinds of joints, and what open ends face.
const Answer kJoints[] = {
    {"AGapIsAlongTheAxis",
     {{"a.dat", kRun + "P-1     01002    00c 1002.5 0.05 0,500 0 0,100\n"}},
     "check --joints a.dat",
     0,
     {"a.dat:2:22-34: warning: end at 1002.5 0.05 0: gap of 2.500 to the end at line 1 [V201]"}},
    {"AnOverlapIsAlongTheAxis",
     {{"a.dat", kRun + "P-1     01002    00c 997.5 0.05 0,500 0 0,100\n"}},
     "check --joints a.dat",
     0,
     {"overlap of 2.500 with the end at line 1 [V201]"}},
    {"AnOffsetIsAcrossTheAxis",
     {{"a.dat", kRun + "P-1     01002    00c 1002.5 3 4,500 0 0,100\n"}},
     "check --joints a.dat",
     0,
     {"end at 1002.5 3 4: axis is off by 5.000 from the end at line 1 [V202]"}},
    // At the second end's own diameter: "0 0 0,1000 0 0," are 15, behind 21 of the heading.
    {"DiametersMeet",
     {{"a.dat", kRun + "P-1     01002    00c 1000 0 0,500 0 0,90\n"}},
     "check --joints a.dat",
     0,
     {"a.dat:2:39-40: warning: end at 1000 0 0: diameter 90 meets 100, the end at line 1 [V203]"}},
    // 1.5 % of 100 are 1.5.
    {"DiametersOfOneNominalSizeMayMeet",
     {{"a.dat", kRun + "P-1     01002    00c 1000 0 0,500 0 0,98.5\n"}},
     "check --joints --only V203 a.dat",
     0,
     {"0 warnings"}},
    {"DiametersOfTwoNominalSizesMayNot",
     {{"a.dat", kRun + "P-1     01002    00c 1000 0 0,500 0 0,98.4\n"}},
     "check --joints --only V203 a.dat",
     0,
     {"diameter 98.4 meets 100, the end at line 1 [V203]"}},
    // The surface of the run is at z 50.
    {"ABranchMayStopShort",
     {{"a.dat", kRun + "P-2     01002    00c 500 0 500,0 0 -442.5,60\n"}},
     "check --joints --only V206 a.dat",
     0,
     {"a.dat:2:32-41: warning: end at 500 0 57.5: stops 7.500 short of the cylinder at line 1 "
      "[V206]"}},
    {"ABranchMayPassBeside",
     {{"a.dat", kRun + "P-2     01002    00c 500 60 500,0 0 -500,60\n"}},
     "check --joints --only V206 a.dat",
     0,
     {"end at 500 60 0: passes beside the cylinder at line 1, 10.000 away [V206]"}},
    {"APieceMayBeMissing",
     {{"a.dat", kRun + "P-1     01002    00c 1300.5 0 0,500 0 0,100\n"}},
     "check --joints --only V207 a.dat",
     0,
     {"nothing for 300.500 up to the open end at line "}},
    {"AnOpenEndFacesWhatIsAhead",
     {{"a.dat", kRun + "B-1     01001    00b 10 0 0,1400.25 -500 -500,0 1000 0,0 0 1000\n"}},
     "check --joints --only V205 a.dat",
     0,
     {"a.dat:1:28-35: note: end at 1000 0 0: open, 100 wide, faces the box at line 2, 400.250 "
      "away [V205]"}},
};

const Answer kSiblings[] = {
    // A pipe of 1000 becomes one of 10, whose middle is 195 from that of the other, along y and z.
    {"WhatIsCutShortIsNearAlongY",
     {{"a.dat", "P-1     01001    00c 0 0 0,0 1000 0,4\n"},
      {"b.dat", "P-1     01002    00c 0 300 0,0 10 0,6\n"}},
     "diff a.dat b.dat",
     1,
     {"A:1 B:1 ", "moved and changed: by 0 300 0; "}},
    {"WhatIsCutShortIsNearAlongZ",
     {{"a.dat", "P-1     01001    00c 0 0 0,0 0 1000,4\n"},
      {"b.dat", "P-1     01002    00c 0 0 300,0 0 10,6\n"}},
     "diff a.dat b.dat",
     1,
     {"A:1 B:1 ", "moved and changed: by 0 0 300; "}},
    // 1500 are more than the box from corner to corner.
    {"WhatIsFurtherThanItsLengthIsAnother",
     {{"a.dat", "P-1     01001    00c 0 0 0,0 0 1000,4\n"},
      {"b.dat", "P-1     01002    00c 0 0 2000,0 0 10,6\n"}},
     "diff a.dat b.dat",
     1,
     {"- A:1 ", "+        B:1 ", "1 added, 1 removed; 0 in their places\n"}},
    {"CountersAreListedForPeople",
     {{"a.dat", kPipe + "P-1     0100A    00c 0 0 0,0 0 1000,100\n"}},
     "list a.dat",
     0,
     {"       2  cylinder    P-1 01            10         0.000 "}},
    {"WithoutALossStrictWrites",
     {{"a.dat", kPipe}, {"b.dat", kColumns}},
     "merge --strict --clash keep a.dat b.dat -o -",
     0,
     {kPipe + kPipe}},
    {"WithALossStrictDoesNotWrite",
     {{"a.dat", kColumns}, {"b.dat", "P-1     01001    00c 0 0 0,0 0 1000,100,ft 7\n"}},
     "merge --strict a.dat b.dat -o x.dat",
     1,
     {},
     {"ft \"7\" is lost [V308]", "x.dat is not written, since something would be lost (--strict)"}},
    {"ALossOfAMergeIsTold",
     {{"a.dat", kColumns}, {"b.dat", "P-1     01001    00c 0 0 0,0 0 1000,100,ft 7\n"}},
     "merge a.dat b.dat -o x.dat",
     1,
     {"x.dat: 2 elements\n"},
     {"b.dat:1: warning: cylinder: ft \"7\" is lost [V308]"}},
    // Counters 1, 2 and 3, of which the row has 1 and 3.
    {"ARowOfCountersApartIsTwo",
     {{"a.dat",
       "P-1     01001    00c 0 0 0,0 0 9,4\nP-1     01009    00c 9 0 0,0 0 9,4\nP-1     01002    "
       "00c 18 0 0,0 0 9,4\n"},
      {"a.attributes.csv", "f1,f2,first,last,spec\nP-1,01,1,2,A1\n"}},
     "edit a.dat -o x.dat --renumber elements",
     0,
     {"2 elements renumbered\n1 component split: a row for each range of counters\nx.dat: 3 "
      "elements; x.attributes.csv: 2 rows\n"}},
    {"ARowOfCountersSideBySideIsOne",
     {{"a.dat",
       "P-1     01001    00c 0 0 0,0 0 9,4\nP-1     01002    00c 18 0 0,0 0 9,4\nP-1     01009    "
       "00c 9 0 0,0 0 9,4\n"},
      {"a.attributes.csv", "f1,f2,first,last,spec\nP-1,01,1,2,A1\n"}},
     "edit a.dat -o x.dat --renumber elements",
     0,
     {"1 element renumbered\nx.dat: 3 elements; x.attributes.csv: 1 row\n"}},
    {"TheFirstOfEachIsInItsFile",
     {{"a.pcf", "PIPE\n END-POINT 0 0 0 100\n END-POINT 1000 0 0 100\n"},
      {"b.pcf", "\nPIPE\n END-POINT 9 0 0 100\n END-POINT 9 0 0 100\n"}},
     "import a.pcf b.pcf -o x.dat",
     1,
     {"x.dat: 2 elements of 2 components in 2 files\n",
      "1  PIPE: has no length (first in b.pcf:2)\n"},
     {"b.pcf:2: error: PIPE not drawn: has no length"}},
};

// A box, one of a flat edge, two pipes and a face.
const std::string kReported =
    "P-1     01001    00b 10 0 0,0 0 0,0 20 0,0 0 30\n"
    "P-1     01002    00b 10 0 0,0 0 0,0 20 0,0 0 0\n"
    "P-1     01003    00c 0 0 0,0 0 1000,100\n"
    "P-1     01004    00g pt 0 0 0,pt 9 0 0,pt 9 9 0\n"
    "P-2     01003    00c 0 0 0,0 0 1000,100\n";

// Four that went up by 50, and something new before them.
const std::string kUp = "P-1     01009    00b 10 0 0,9000 0 0,0 20 0,0 0 30\n";

const Answer kMore[] = {
    // 2 (64 + 60) triangles; 50 (1 - cos(180 / 32 degrees)) off; pi / 4 * 0.01 m3 twice, of which
    // a polygon of 32 has 0.993587.
    {"AReportHasARowForEachKind",
     {{"a.dat", kReported}},
     "export a.dat --report",
     1,
     {"\ntriangles         1          0          1       1                                         "
      "    open\n",
      "\nboxes             2          1         12       1          0   ",
      "   0.000006  0.000006  yes\n",
      "\ncylinders         2          0        248       1   0.240764   0.240764   0.015607  "
      "0.015708  yes\n"},
     {"a.dat:2: error: box can't be shown: edge of zero [V401]"}},
    // 6000 cubic inches are 0.098322384 m3.
    {"AReportIsInTheUnitOfTheFile",
     {{"a.dat", kReported}},
     "export a.dat --report --json --unit 25.4",
     1,
     {"\"format\": \"none\",\n  \"unit\": 25.4,\n  \"offset\": [0, 0, 0],",
      R"({"kind": "box", "elements": 2, "notShown": 1, "triangles": 12, "meshes": 1, "deviation": 0, )",
      R"("meshVolume": 0.098322384, "exactVolume": 0.098322384, "solids": 1, "closed": 1, "closedIn32Bits": 1})",
      R"({"kind": "cylinder", "elements": 2, "notShown": 0, "triangles": 248, "meshes": 1, "deviation": 0.24076)",
      R"("solids": 2, "closed": 2, "closedIn32Bits": 2})"}},
    {"TheFormatOfAReportIsNamed",
     {{"a.dat", kPipe}},
     "export a.dat --report --json -o x.stl",
     0,
     {"\"format\": \"stl\",\n  \"unit\": 1,"}},
    // The corners of the box and the surfaces of the pipes; 6000 - 0 + 2 pi / 4 * 1e7.
    {"AFileIsSummedUp",
     {{"a.dat", kReported}},
     "info --headers a.dat",
     0,
     {"a.dat\n  style     token\n  elements  5\n    triangles   1\n    boxes       2\n    "
      "cylinders   2\n"
      "  headers   2\n    P-1 01      4\n    P-2 01      1\n  lines     5\n  bytes     ",
      "  box from  -50.000 -50.000 0.000\n  to        50.000 50.000 1000.000\n  volume    "
      "15713963.268\n"}},
    // Of both sections of a cone, 114.3 and 60.3.
    {"AConeHasTwoWalls",
     {{"a.dat", "P-1     01001    00n 0 0 0,0 0 200,114.3,60.3\n"}},
     "measure --schedule 40 a.dat",
     0,
     {" 114.3 x 60.3  6.02 x 3.91 "}},
    {"AConeIsMeasuredFromItsWideEnd",
     {{"a.dat",
       "P-1     01001    00n 0 0 0,0 0 200,60.3,114.3\nP-1     01001    00n 0 0 0,0 0 "
       "200,114.3,60.3\n"}},
     "measure --csv a.dat",
     0,
     {"\nrow,,,,cone,114.3,60.3,0,0,0,0,0,0,0,2,0.4,"}},
    {"AMoveOfManyNamesTheFirst",
     {{"a.dat",
       "P-1     01001    00c 0 0 0,0 0 9,4\nP-1     01002    00c 100 0 0,0 0 9,5\n"
       "P-1     01003    00c 200 0 0,0 0 9,6\nP-1     01004    00c 300 0 0,0 0 9,7\n"},
      {"b.dat",
       kUp + "P-1     01001    00c 0 0 50,0 0 9,4\nP-1     01002    00c 100 0 50,0 0 9,5\n"
             "P-1     01003    00c 200 0 50,0 0 9,6\nP-1     01004    00c 300 0 50,0 0 9,7\n"}},
     "diff a.dat b.dat",
     1,
     {"~ A:1 and on  4 elements moved by 0 0 50\n+        B:1  box P-1 01/9: added at 9000 0 0, "
      "edges "
      "10, 20, 30\n4 moved, 1 added; 0 in their places\n"}},
    // Pipes within five degrees face each other across nothing; the sine of 4 is 0.0698.
    {"OpenEndsFaceEachOtherWithinFiveDegrees",
     {{"a.dat", kRun + "P-1     01002    00c 1300 0 0,498.8 34.9 0,100\n"}},
     "check --joints --only V207 a.dat",
     0,
     {"nothing for ", "1 warning in 2 elements"}},
    {"OpenEndsDoNotBeyondFiveDegrees",
     {{"a.dat", kRun + "P-1     01002    00c 1300 0 0,433 250 0,100\n"}},
     "check --joints --only V207 a.dat",
     0,
     {"0 warnings in 2 elements"}},
    // 21 of the heading, "pt 1 2", blanks and a 3.
    {"ALongLineIsAsLongAsItIs",
     {{"a.dat", "P-1     01001    00l pt 1 2" + std::string(485, ' ') + "34\n"}},
     "check a.dat",
     1,
     {"a.dat:1:513-514: error: line of 514 characters [V018]", "  expected: at most 512\n"}},
    // Two of a kind, in two lines.
    {"MessagesOfAnImportAreCounted",
     {{"a.pcf",
       "PIPE\n END-POINT 0 0 0 100\n END-POINT 1000 0 0 100\nPIPE\n END-POINT 9 0 0 100\n "
       "END-POINT 9 0 0 100\n"
       "PIPE\n END-POINT 5 0 0 100\n END-POINT 5 0 0 100\n"}},
     "import --json a.pcf -o x.dat",
     1,
     {"\"errors\": 2,\n  \"warnings\": 0,",
      R"({"severity": "error", "text": "PIPE not drawn: has no length", "count": 2, "places": )"
      R"([{"file": "a.pcf", "line": 4}, {"file": "a.pcf", "line": 7}]})"}},
    // Three lines of which one is open, in pieces that are read one after another.
    {"LinesAndBytesAreCounted",
     {{"a.dat", kPipe + kPipe + kPipe.substr(0, kPipe.size() - 1)}},
     "info -v --json a.dat",
     1,
     {"\"elements\": 2,", "\"faults\": 1,", "\"lines\": 3,\n", "\"bytes\": 119,\n"},
     {"note: a.dat: token style, 2 elements, 3 lines, 119 bytes\n"}},
    {"QuotesOfACsvAreDoubled",
     {{"a.dat", "P-\"1,   01001    00c 0 0 0,0 0 1000,100\n"}},
     "list --csv a.dat",
     0,
     {"\n1,cylinder,\"P-\"\"1,\",01,1,0,0,0,"}},
    // Columns keep the radius of a bend of 100, tokens do not.
    {"ABendRadiusThatOneStyleDoesNotKeepIsNoDifference",
     {{"a.dat",
       "60    01  P-1     001TOR    0.000    0.000    0.000  100.000    0.000    0.000    0.000"
       "  100.000    0.000  100.000   20.000\n"},
      {"b.dat", "P-1     01001    00t 0 0 0,100 0 0,0 100 0,20\n"}},
     "diff a.dat b.dat",
     0,
     {"no difference; 1 in their places\n"}},
    {"ABendRadiusThatTheOtherStyleDoesNotKeepIsNone",
     {{"a.dat", "P-1     01001    00t 0 0 0,100 0 0,0 100 0,20\n"},
      {"b.dat",
       "60    01  P-1     001TOR    0.000    0.000    0.000  100.000    0.000    0.000    0.000"
       "  100.000    0.000  100.000   20.000\n"}},
     "diff a.dat b.dat",
     0,
     {"no difference; 1 in their places\n"}},
    {"PipesThatEndInsideAreCounted",
     {{"a.dat", kRun + "P-2     01001    00c 500 0 0,0 0 500,60\n"}},
     "clash --strict a.dat",
     1,
     {"a.dat:1: error: cylinder of P-1 01 and the pipe that ends in it: cylinder of P-2 01 at line "
      "2",
      " [V504]\n", "a.dat: 0 clashes, 1 inside, 0 too near, 0 duplicates in 2 elements\n"}},
    {"SarifSaysWhatIsExpected",
     {{"a.dat", "P-1     01001    00c 0 0 0,0 0 1000,-12.5\n"}},
     "check --format sarif a.dat",
     1,
     {R"("text": "diameter is below zero: -12.5; expected a positive number"})"}},
    {"AnglesAsNearAsRoundingAreOne",
     {{"a.dat",
       "P-1     01001    00t 0 0 0,300 0 0,0 300 0,40\nP-1     01002    00t 0 0 0,300 0 0,0 300 "
       "0,40\n"
       "P-1     01003    00t 0 0 0,300 0 0,0.0524 299.999995 0,40\n"}},  // 0.01 degrees less
     "measure --csv a.dat",
     0,
     {"\nrow,,,,torus,40,0,0,0,300,90,0,0,0,3,"}},
    {"OtherAnglesAreNot",
     {{"a.dat",
       "P-1     01001    00t 0 0 0,300 0 0,0 300 0,40\nP-1     01002    00t 0 0 0,300 0 0,0 300 "
       "0,40\n"
       "P-1     01003    00t 0 0 0,300 0 0,0.5236 299.99954 0,40\n"}},  // 0.1 degrees less
     "measure --csv a.dat",
     0,
     {"\nrow,,,,torus,40,0,0,0,300,90,0,0,0,2,", "\nrow,,,,torus,40,0,0,0,300,89.9,0,0,0,1,"}},
    // More than is read at a time.
    {"LinesOfALargeFileAreCounted",
     {{"a.dat", times(8000, kPipe)}},
     "info --json a.dat",
     0,
     {"\"elements\": 8000,", "\"lines\": 8000,\n", "\"bytes\": 320000,\n"}},
    {"APolylineOfGltfIsAStrip",
     {{"a.dat", "P-1     01001    00l pt 1 2 3,pt 10 0 0,pt 10 20 0\n"}},
     "export a.dat -o - --to gltf",
     0,
     {"\"mode\":3", "\"count\":3,"}},
    {"ASegmentOfGltfIsALine",
     {{"a.dat", "P-1     01001    00l pt 1 2 3,pt 10 0 0\n"}},
     "export a.dat -o - --to gltf",
     0,
     {"\"mode\":1", "\"count\":2,"}},
    {"ComplaintsAreCounted",
     {{"a.rvm",
       "HEAD\n 1 1\na plant\na note\ntoday\nsomeone\nMODL\n 1 1\nPROJECT\nMODEL\n" +
           groupChunk("/A", times(3,
                                  "PRIM\n 1 1\n 8\n 0.001 0 0 0\n 0 0.001 0 0\n 0 0 0.001 0\n -50 "
                                  "-50 -500 50 50 500\n -50 1000\n") +
                                pipeChunk("PRIM")) +
           "END:\n 1 1\n"}},
     "import --json a.rvm -o x.dat",
     1,
     {R"({"text": "refused, cylinder: a size is zero or below", "count": 3, "first": "a.rvm, line 16, in /A"})"},
     {"3 shapes refused, cylinder: a size is zero or below", "the first: a.rvm, line 16, in /A"}},
};

class AnswerTest : public testing::TestWithParam<Answer> {};

TEST_P(AnswerTest, IsThis) {
  const TempFolder folder;
  const Answer& each = GetParam();
  for (const auto& [name, text] : each.files) {
    const std::filesystem::path place = std::filesystem::path(name).parent_path();
    if (!place.empty()) std::filesystem::create_directories(place);
    writeFile(name, text);
  }
  const ToolRun run = runTool(each.arguments);
  EXPECT_EQ(run.exit, each.exit) << run.out << run.err;
  for (const std::string& part : each.out) {
    EXPECT_TRUE(contains(run.out, part)) << part << "\n--- in\n" << run.out;
  }
  for (const std::string& part : each.err) {
    EXPECT_TRUE(contains(run.err, part)) << part << "\n--- in\n" << run.err;
  }
  for (const std::string& part : each.absent) {
    EXPECT_FALSE(contains(run.out + run.err, part)) << part << "\n--- in\n" << run.out << run.err;
  }
}

std::string nameOf(const testing::TestParamInfo<Answer>& each) { return each.param.name; }

INSTANTIATE_TEST_SUITE_P(OfShow, AnswerTest, testing::ValuesIn(kShow), nameOf);
INSTANTIATE_TEST_SUITE_P(OfRefusals, AnswerTest, testing::ValuesIn(kRefused), nameOf);
INSTANTIATE_TEST_SUITE_P(OfDiff, AnswerTest, testing::ValuesIn(kDiffs), nameOf);
INSTANTIATE_TEST_SUITE_P(OfConvert, AnswerTest, testing::ValuesIn(kConversions), nameOf);
INSTANTIATE_TEST_SUITE_P(OfCheck, AnswerTest, testing::ValuesIn(kChecks), nameOf);
INSTANTIATE_TEST_SUITE_P(OfChanges, AnswerTest, testing::ValuesIn(kChanges), nameOf);
INSTANTIATE_TEST_SUITE_P(OfMeasure, AnswerTest, testing::ValuesIn(kMeasures), nameOf);
INSTANTIATE_TEST_SUITE_P(OfShapes, AnswerTest, testing::ValuesIn(kShapes), nameOf);
INSTANTIATE_TEST_SUITE_P(OfImport, AnswerTest, testing::ValuesIn(kImports), nameOf);
INSTANTIATE_TEST_SUITE_P(OfJoints, AnswerTest, testing::ValuesIn(kJoints), nameOf);
INSTANTIATE_TEST_SUITE_P(OfSiblings, AnswerTest, testing::ValuesIn(kSiblings), nameOf);
INSTANTIATE_TEST_SUITE_P(OfMore, AnswerTest, testing::ValuesIn(kMore), nameOf);
INSTANTIATE_TEST_SUITE_P(OfClash, AnswerTest, testing::ValuesIn(kClashes), nameOf);

}  // namespace
}  // namespace VeskTest
