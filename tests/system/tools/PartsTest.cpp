// SPDX-License-Identifier: MIT
// extract, split, merge and edit: what they write, byte for byte, and what they leave alone.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support/TempFolder.h"
#include "tools/ToolRun.h"

namespace VeskTest {
namespace {

namespace fs = std::filesystem;

using Files = std::map<std::string, std::string>;

// A pipe, a bend, another line's pipe, a box, a text of two lines, and a pipe.
const std::string kPipe1 = "P-1     01001    00c 0 0 0,1000 0 0,100\n";
const std::string kBend = "P-1     01002    00t 1000 0 500,0 0 -500,500 0 0,100\n";
const std::string kOther = "P-2     02001    00c 0 0 5000,0 0 1000,60.3\n";
const std::string kBox = "DUCT-7  A1001    00b 1000 0 0,0 -250 -900,0 500 0,0 0 200\n";
const std::string kText =
    "DUCT-7  A1005    00x 1 2 0,1 0 0,0 1 0,2.5,0.5,7,5\n"
    "DUCT-7  A1005    01x Fan 1\n";
const std::string kPipe2 = "P-1     01003    00c 1500 0 500,0 0 1000,100\n";
const std::string kPlant = kPipe1 + kBend + kOther + kBox + kText + kPipe2;

// The first row is of the pipe and the bend.
const std::string kKey = "f1,f2,first,last,item-code\n";
const std::string kRowA = "P-1,01,1,2,A\n";
const std::string kRowB = "P-2,02,1,1,B\n";
const std::string kRowC = "DUCT-7,A1,1,1,\"C, steel\"\n";
const std::string kRowD = "P-1,01,3,3,D\n";
const std::string kRows = kKey + kRowA + kRowB + kRowC + kRowD;

// The same pipe as the first, in fixed columns; fields of nine characters.
const std::string kFixedPipe =
    "60    01  P-1     001CYL    0.000    0.000    0.000 1000.000    0.000    0.000  100.000\n";

std::string withReturns(std::string text) {
  for (std::size_t i = 0; (i = text.find('\n', i)) != std::string::npos; i += 2)
    text.insert(i, 1, '\r');
  return text;
}

// All files of the current folder and below, but for those of the run itself.
Files filesHere() {
  Files files;
  for (const auto& entry : fs::recursive_directory_iterator(".")) {
    const std::string name = entry.path().lexically_relative(".").generic_string();
    if (!name.starts_with("tool."))
      files[name] = entry.is_directory() ? "" : readFile(entry.path());
  }
  return files;
}

struct PartCase {
  const char* name;
  const char* arguments;
  int exit;
  Files made;       // all that is there behind it, and was not before
  const char* out;  // what stdout holds
  const char* err;  // what stderr holds; "" nothing
};

void PrintTo(const PartCase& each, std::ostream* out) { *out << each.arguments; }

const PartCase kCases[] = {
    // extract
    {"ExtractAHeader",
     "extract plain.dat -o x.dat --header P-1",
     0,
     {{"x.dat", kPipe1 + kBend + kPipe2}},
     "x.dat: 3 elements\n",
     ""},
    {"ExtractTakesAllLinesOfAnElement",
     "extract plain.dat -o x.dat --lines 6",
     0,
     {{"x.dat", kText}},
     "1 element",
     ""},
    {"ExtractInJson",
     "extract --json plain.dat -o x.dat --header P-1",
     0,
     {{"x.dat", kPipe1 + kBend + kPipe2}},
     "\"written\": true,\n  \"file\": \"x.dat\",\n  \"attributes\": null,\n  \"elements\": 3,",
     ""},
    {"ExtractInJsonNeedsAFile",
     "extract --json plain.dat -o -",
     2,
     {},
     "",
     "--json and -o - both want stdout"},
    {"SplitInJson",
     "split --json -n plant.dat --by group -o parts",
     0,
     {},
     "{\"of\": \"A1\", \"file\": \"parts/A1.dat\", \"attributes\": \"parts/A1.attributes.csv\", "
     "\"elements\": 2, \"rows\": 1}",
     ""},
    {"MergeInJson",
     "merge --json -n plain.dat pipe.dat -o x.dat",
     0,
     {},
     "\"becomes\": \"P-1 01\", \"shift\": 3}",
     ""},
    {"EditInJson",
     "edit --json -n plain.dat -o x.dat --rename P-1 P-7",
     0,
     {},
     "{\"header\": \"P-1 01\", \"becomes\": \"P-7 01\", \"elements\": 3}",
     ""},
    {"EditDropsInJson",
     "edit --json -n twice.dat -o x.dat --drop-duplicates",
     0,
     {},
     "{\"line\": 2, \"kind\": \"cylinder\", \"like\": 1}",
     ""},
    {"ExtractAKindButASize",
     "extract plain.dat -o x.dat --only pipe --not --size 60..61",
     0,
     {{"x.dat", kPipe1 + kPipe2}},
     "2 elements",
     ""},
    {"ExtractAPlace",
     "extract plain.dat -o x.dat --near 0,0,5500,100",
     0,
     {{"x.dat", kOther}},
     "1 element",
     ""},
    // The text stands in the first pipe.
    {"ExtractWhatTouches",
     "extract plain.dat -o x.dat --touching P-1",
     0,
     {{"x.dat", kPipe1 + kBend + kText + kPipe2}},
     "4 elements",
     ""},
    {"ExtractAllWithoutAChoice",
     "extract plain.dat -o x.dat",
     0,
     {{"x.dat", kPlant}},
     "6 elements",
     ""},
    {"ExtractNothing",
     "extract plain.dat -o x.dat --header P-9",
     1,
     {},
     "",
     "no element is chosen"},
    {"ExtractKeepsLineEnds",
     "extract returns.dat -o x.dat --only text,bend",
     0,
     {{"x.dat", withReturns(kBend + kText)}},
     "2 elements",
     ""},
    {"ExtractLeavesOutWhatCantBeRead",
     "extract bad.dat -o x.dat",
     1,
     {{"x.dat", kPipe1 + kPipe2}},
     "2 elements",
     "bad.dat:2:"},
    {"ExtractOfAnEmptyFile", "extract empty.dat -o x.dat", 0, {{"x.dat", ""}}, "0 elements", ""},
    {"ExtractNoRecords", "extract text.txt -o x.dat", 3, {}, "", "this is not a record file"},
    {"ExtractCarriesTheSidecar",
     "extract plant.dat -o x.dat --header P-1",
     0,
     {{"x.dat", kPipe1 + kBend + kPipe2}, {"x.attributes.csv", kKey + kRowA + kRowD}},
     "x.dat: 3 elements; x.attributes.csv: 2 rows\n",
     ""},
    {"ExtractLeavesTheSidecar",
     "extract plant.dat -o x.dat --header P-1 --no-attributes",
     0,
     {{"x.dat", kPipe1 + kBend + kPipe2}},
     "x.dat: 3 elements\n",
     ""},
    {"ExtractOfTwoFiles",
     "extract plain.dat later.dat -o x.dat --header P-2",
     0,
     {{"x.dat", kOther + "P-2     02001    00c 0 0 0,0 0 7,60.3\n"}},
     "2 elements",
     ""},
    {"ExtractOfTwoStyles", "extract plain.dat fixed.dat -o x.dat", 3, {}, "", "vesk merge"},
    {"ExtractOnlySays",
     "extract plant.dat -o x.dat --header P-1 -n",
     0,
     {},
     "x.dat: 3 elements; x.attributes.csv: 2 rows; not written (--dry-run)\n",
     ""},
    {"ExtractOverAFile", "extract plain.dat -o later.dat", 4, {}, "", "-f replaces it"},
    {"ExtractOverASidecar", "extract plain.dat -o plant.dat", 4, {}, "", "-f replaces it"},
    {"ExtractOntoItself", "extract plain.dat -f -o plain.dat", 2, {}, "", "both input and output"},
    {"ExtractIntoAPipe", "extract plant.dat -o - --header P-2", 0, {}, kOther.c_str(), ""},
    {"ExtractIntoNoFolder", "extract plain.dat -o none/x.dat", 4, {}, "", "No such file"},

    // split
    {"SplitByHeader",
     "split plain.dat --by header -o parts",
     0,
     {{"parts", ""},
      {"parts/P-1_01.dat", kPipe1 + kBend + kPipe2},
      {"parts/P-2_02.dat", kOther},
      {"parts/DUCT-7_A1.dat", kBox + kText}},
     "6 elements in 3 parts\n",
     ""},
    {"SplitByGroup",
     "split plain.dat --by group -o \"g-*.dat\"",
     0,
     {{"g-01.dat", kPipe1 + kBend + kPipe2}, {"g-02.dat", kOther}, {"g-A1.dat", kBox + kText}},
     "3 parts",
     ""},
    {"SplitByKind",
     "split plain.dat --by kind -o \"k-*.dat\"",
     0,
     {{"k-cylinder.dat", kPipe1 + kOther + kPipe2},
      {"k-torus.dat", kBend},
      {"k-box.dat", kBox},
      {"k-text.dat", kText}},
     "4 parts",
     ""},
    {"SplitBySize",
     "split plain.dat --by size -o \"s-*.dat\"",
     0,
     {{"s-100.dat", kPipe1 + kBend + kPipe2}, {"s-60.3.dat", kOther}, {"s-none.dat", kBox + kText}},
     "3 parts",
     ""},
    // The middles: x 500, some 1200, 0, 0, 1, 1500; z 0, some 200, 5500, -800, 0, 1000.
    {"SplitByGrid",
     "split pipes.dat --by grid --grid 1000,9999,1000 -o \"c-*.dat\"",
     0,
     {{"c-x0_y0_z0.dat", kPipe1}, {"c-x0_y0_z5.dat", kOther}, {"c-x1_y0_z1.dat", kPipe2}},
     "3 parts",
     ""},
    {"SplitByGridInPlan",
     "split pipes.dat --by grid --grid 1200 -o \"c-*.dat\"",
     0,
     {{"c-x0_y0.dat", kPipe1 + kOther}, {"c-x1_y0.dat", kPipe2}},
     "2 parts",
     ""},
    {"SplitCarriesTheSidecar",
     "split plant.dat --by kind -o \"k-*.dat\"",
     0,
     {{"k-cylinder.dat", kPipe1 + kOther + kPipe2},
      {"k-cylinder.attributes.csv", kKey + kRowA + kRowB + kRowD},
      {"k-torus.dat", kBend},
      {"k-torus.attributes.csv", kKey + kRowA},
      {"k-box.dat", kBox},
      {"k-box.attributes.csv", kKey + kRowC},
      {"k-text.dat", kText},
      {"k-text.attributes.csv", kKey}},
     "5 rows",
     ""},
    {"SplitNamesAreSafe",
     "split odd.dat --by header -o \"o-*.dat\"",
     0,
     {{"o-A_B_01.dat", "A/B     01001    00c 0 0 0,0 0 1,1\n"},
      {"o-A_B_01-2.dat", "A?B     01001    00c 0 0 0,0 0 2,1\n"},
      {"o-a_b_01-2-2.dat", "a:b_01-2  001    00c 0 0 0,0 0 4,1\n"},
      {"o-a_b_01-3.dat", "a*b     01001    00c 0 0 0,0 0 3,1\n"},
      {"o-blank.dat", "          001    00c 0 0 0,0 0 5,1\n"},
      {"o-CON_.dat", "CON       001    00c 0 0 0,0 0 6,1\n"}},
     "6 parts",
     "o-A_B_01-2.dat is for \"A?B 01\""},
    {"SplitIntoTooManyParts",
     "split plain.dat --by header -o parts --limit 2",
     4,
     {},
     "",
     "more than 2 parts"},
    {"SplitOnlySays",
     "split plain.dat --by header -o parts -n",
     0,
     {},
     "6 elements in 3 parts; not written (--dry-run)\n",
     ""},
    {"SplitByAPattern",
     "split plain.dat --by header -o \"la*er.dat\" --limit 9",
     0,
     {{"laP-1_01er.dat", kPipe1 + kBend + kPipe2},
      {"laP-2_02er.dat", kOther},
      {"laDUCT-7_A1er.dat", kBox + kText}},
     "3 parts",
     ""},
    {"SplitRefusesFilesThatAreThere",
     "split plain.dat --by header -o \"have/*.dat\"",
     4,
     {},
     "",
     "-f replaces it"},
    {"SplitOfADamagedFile",
     "split bad.dat --by kind -o \"k-*.dat\"",
     1,
     {{"k-cylinder.dat", kPipe1 + kPipe2}},
     "1 part\n",
     "bad.dat:2:"},
    {"SplitWithoutAGrid", "split plain.dat --by grid -o parts", 2, {}, "", "belong together"},
    {"SplitByAGridOfZero", "split plain.dat --by grid --grid 0 -o parts", 2, {}, "", "above 0"},
    {"SplitIntoAFile", "split plain.dat --by kind -o later.dat", 2, {}, "", "a name with *"},
    {"SplitIntoTwoStars",
     "split plain.dat --by kind -o \"x*y*.dat\"",
     2,
     {},
     "",
     "only one * may stand"},
    {"SplitOfAnEmptyFile",
     "split empty.dat --by kind -o \"k-*.dat\"",
     0,
     {},
     "0 elements in 0 parts",
     ""},

    // merge
    {"MergeOfOtherHeaders",
     "merge pipe.dat other.dat -o x.dat",
     0,
     {{"x.dat", kPipe1 + kOther}},
     "x.dat: 2 elements\n",
     ""},
    // The counters 1 to 3 of P-1 are taken: 1 moves behind 3.
    {"MergeRenumbers",
     "merge plain.dat pipe.dat -o x.dat",
     0,
     {{"x.dat", kPlant + "P-1     01004    00c 0 0 0,1000 0 0,100\n"}},
     "pipe.dat: header P-1 01 clashes: 1 element renumbered, 1 to 1 become 4 to 4\n",
     ""},
    {"MergeRenames",
     "merge plain.dat pipe.dat pipe.dat -o x.dat --clash rename",
     0,
     {{"x.dat", kPlant + "P-1~2   01001    00c 0 0 0,1000 0 0,100\n" +
                    "P-1~3   01001    00c 0 0 0,1000 0 0,100\n"}},
     "renamed to P-1~2 01\n",
     ""},
    {"MergeKeeps",
     "merge plain.dat pipe.dat -o x.dat --clash keep",
     0,
     {{"x.dat", kPlant + kPipe1}},
     "kept as they are",
     ""},
    {"MergeRefuses",
     "merge plain.dat pipe.dat -o x.dat --clash refuse",
     1,
     {},
     "",
     "headers clash"},
    {"MergeInTheStyleOfTheFirst",
     "merge other.dat fixed.dat -o x.dat",
     0,
     {{"x.dat", kOther + kPipe1}},
     "2 elements",
     ""},
    {"MergeInAStyle",
     "merge pipe.dat -o x.dat --style fixed",
     0,
     {{"x.dat", kFixedPipe}},
     "1 element",
     ""},
    {"MergeRenumbersInColumns",
     "merge fixed.dat fixed.dat -o x.dat",
     0,
     {{"x.dat", kFixedPipe + "60    01  P-1     002CYL    0.000    0.000    0.000 1000.000    0.000"
                             "    0.000  100.000\n"}},
     "2 elements",
     ""},
    // 1 and 2 of the row are taken by 1 to 3 too: 3 behind the largest.
    {"MergeMovesKeysOfTheSidecar",
     "merge plant.dat plant.dat -o x.dat",
     0,
     {{"x.dat", kPlant + "P-1     01004    00c 0 0 0,1000 0 0,100\n" +
                    "P-1     01005    00t 1000 0 500,0 0 -500,500 0 0,100\n" +
                    "P-2     02002    00c 0 0 5000,0 0 1000,60.3\n" +
                    "DUCT-7  A1006    00b 1000 0 0,0 -250 -900,0 500 0,0 0 200\n" +
                    "DUCT-7  A100A    00x 1 2 0,1 0 0,0 1 0,2.5,0.5,7,5\n" +
                    "DUCT-7  A100A    01x Fan 1\n" +
                    "P-1     01006    00c 1500 0 500,0 0 1000,100\n"},
      {"x.attributes.csv",
       kRows + "P-1,01,4,5,A\nP-2,02,2,2,B\nDUCT-7,A1,6,6,\"C, steel\"\n" + "P-1,01,6,6,D\n"}},
     "8 rows",
     ""},
    {"MergeJoinsColumns",
     "merge plant.dat more.dat -o x.dat",
     0,
     {{"x.dat", kPlant + "Q-1     01001    00c 0 0 0,0 0 9,5\n"},
      {"x.attributes.csv",
       "f1,f2,first,last,item-code,spec\n"
       "P-1,01,1,2,A,\nP-2,02,1,1,B,\nDUCT-7,A1,1,1,\"C, steel\",\n"
       "P-1,01,3,3,D,\nQ-1,01,1,1,Z,S1\n"}},
     "5 rows",
     ""},
    {"MergeOnlySays",
     "merge plain.dat pipe.dat -o x.dat -n",
     0,
     {},
     "1 to 1 become 4 to 4\nx.dat: 7 elements; not written (--dry-run)\n",
     ""},
    {"MergeOfTheLastCounters", "merge last.dat last.dat -o x.dat", 4, {}, "", "run out"},
    {"MergeFromStdin", "merge - pipe.dat -o x.dat", 2, {}, "", "stdin does not allow"},
    {"MergeOfAMissingFile", "merge pipe.dat none.dat -o x.dat", 3, {}, "", "No such file"},
    {"MergeLosesNothingByStrict",
     "merge normals.dat -o x.dat --style fixed --strict",
     1,
     {},
     "",
     "x.dat is not written"},

    // edit
    {"EditRenames",
     "edit plain.dat -o x.dat --rename P-2 P-3",
     0,
     {{"x.dat",
       kPipe1 + kBend + "P-3     02001    00c 0 0 5000,0 0 1000,60.3\n" + kBox + kText + kPipe2}},
     "header P-2 02 becomes P-3 02: 1 element\n",
     ""},
    {"EditRenamesBothFields",
     "edit plain.dat -o x.dat --rename P-2 \"PUMP A B\"",
     0,
     {{"x.dat",
       kPipe1 + kBend + "PUMP A  B 001    00c 0 0 5000,0 0 1000,60.3\n" + kBox + kText + kPipe2}},
     "P-2 02 becomes PUMP A B: 1",
     ""},
    {"EditRenamesEveryLine",
     "edit plain.dat -o x.dat --rename DUCT-7 D --group \"P-* 01\" 9",
     0,
     {{"x.dat",
       "P-1     9 001    00c 0 0 0,1000 0 0,100\n"
       "P-1     9 002    00t 1000 0 500,0 0 -500,500 0 0,100\n" +
           kOther +
           "D       A1001    00b 1000 0 0,0 -250 -900,0 500 0,0 0 200\n"
           "D       A1005    00x 1 2 0,1 0 0,0 1 0,2.5,0.5,7,5\n"
           "D       A1005    01x Fan 1\n"
           "P-1     9 003    00c 1500 0 500,0 0 1000,100\n"}},
     "6 elements",
     ""},
    {"EditInColumns",
     "edit fixed.dat -o x.dat --rename P-1 ABCDEFGH --group P-1 XY",
     0,
     {{"x.dat",
       "60    XY  ABCDEFGH001CYL    0.000    0.000    0.000 1000.000    0.000    0.000"
       "  100.000\n"}},
     "P-1 01 becomes ABCDEFGH XY",
     ""},
    {"EditMovesKeysOfTheSidecar",
     "edit plant.dat -o x.dat --rename P-1 N-1 --start 11 --renumber"
     " components",
     0,
     {{"x.dat",
       "N-1     0100B    00c 0 0 0,1000 0 0,100\n"
       "N-1     0100C    00t 1000 0 500,0 0 -500,500 0 0,100\n"
       "P-2     0200B    00c 0 0 5000,0 0 1000,60.3\n"
       "DUCT-7  A100B    00b 1000 0 0,0 -250 -900,0 500 0,0 0 200\n"
       "DUCT-7  A100C    00x 1 2 0,1 0 0,0 1 0,2.5,0.5,7,5\n"
       "DUCT-7  A100C    01x Fan 1\n"
       "N-1     0100D    00c 1500 0 500,0 0 1000,100\n"},
      {"x.attributes.csv", kKey + "N-1,01,11,12,A\nP-2,02,11,11,B\nDUCT-7,A1,11,11,\"C, steel\"\n" +
                               "N-1,01,13,13,D\n"}},
     "6 elements renumbered\n",
     ""},
    // None of the six stays: the text, which was the fifth, comes first, and so on.
    {"EditSorts",
     "edit plant.dat -o x.dat --sort header,kind",
     0,
     {{"x.dat", kText + kBox + kPipe1 + kPipe2 + kBend + kOther},
      {"x.attributes.csv", kKey + kRowC + kRowA + kRowD + kRowB}},
     "6 elements reordered\n",
     ""},
    {"EditSortsBySize",
     "edit plain.dat -o x.dat --sort size",
     0,
     {{"x.dat", kBox + kText + kOther + kPipe1 + kBend + kPipe2}},
     "6 elements",
     ""},
    {"EditKeepsComponents",
     "edit shared.dat -o x.dat --renumber components",
     0,
     {{"x.dat",
       "P-1     01001    00c 0 0 0,0 0 1,1\nP-1     01001    00c 0 0 0,0 0 2,1\n"
       "P-1     01002    00c 0 0 0,0 0 3,1\nP-1     01003    00c 0 0 0,0 0 4,1\n"}},
     "4 elements renumbered",
     ""},
    {"EditNumbersElements",
     "edit shared.dat -o x.dat --renumber elements --start 0",
     0,
     {{"x.dat",
       "P-1     01000    00c 0 0 0,0 0 1,1\nP-1     01001    00c 0 0 0,0 0 2,1\n"
       "P-1     01002    00c 0 0 0,0 0 3,1\nP-1     01003    00c 0 0 0,0 0 4,1\n"}},
     "4 elements renumbered",
     ""},
    // The same pipe from its other end; points belong to both sides.
    {"EditDropsDuplicates",
     "edit same.dat -o x.dat --drop-duplicates",
     0,
     {{"x.dat", kPipe1 + "P-1     01005    00l pt 0 0 0\nP-1     01006    00l pt 0 0 0\n"}},
     "line 2 dropped: cylinder like the one at line 1\n1 element dropped\n",
     ""},
    {"EditRefusesSharedCounters",
     "edit plain.dat -o x.dat --rename P-2 \"P-1 01\"",
     1,
     {},
     "",
     "counters in common"},
    {"EditNumbersWhatBecameOne",
     "edit plain.dat -o x.dat --rename P-2 \"P-1 01\" --renumber components",
     0,
     {{"x.dat", kPipe1 + kBend + "P-1     01003    00c 0 0 5000,0 0 1000,60.3\n" + kBox +
                    "DUCT-7  A1002    00x 1 2 0,1 0 0,0 1 0,2.5,0.5,7,5\n"
                    "DUCT-7  A1002    01x Fan 1\n"
                    "P-1     01004    00c 1500 0 500,0 0 1000,100\n"}},
     "3 elements renumbered",
     ""},
    {"EditOnlySays",
     "edit plant.dat -o x.dat --rename P-2 P-3 -n",
     0,
     {},
     "header P-2 02 becomes P-3 02: 1 element\n"
     "x.dat: 6 elements; x.attributes.csv: 4 rows; not written (--dry-run)\n",
     ""},
    {"EditOfNoHeader", "edit plain.dat -o x.dat --rename P-9 P-3", 1, {}, "", "no header P-9"},
    {"EditOfNothing", "edit plain.dat -o x.dat", 2, {}, "", "no change is asked for"},
    {"EditToALongName",
     "edit plain.dat -o x.dat --rename P-2 ABCDEFGHI",
     2,
     {},
     "",
     "at most 8 characters"},
    {"EditToALongGroup",
     "edit plain.dat -o x.dat --group P-2 ABC",
     2,
     {},
     "",
     "at most 2 characters"},
    {"EditSortsByNothing", "edit plain.dat -o x.dat --sort colour", 2, {}, "", "\"colour\""},
    {"EditOfADamagedFile",
     "edit bad.dat -o x.dat --renumber elements",
     1,
     {{"x.dat", kPipe1 + "P-1     01002    00c 1500 0 500,0 0 1000,100\n"}},
     "2 elements",
     "bad.dat:2:"},
    {"EditBeyondTheLastCounter",
     "edit shared.dat -o x.dat --renumber elements --start 46654",
     4,
     {},
     "",
     "run out"},
    {"EditUpToTheLastCounter",
     "edit shared.dat -o x.dat --renumber components --start 46653",
     0,
     {{"x.dat",
       "P-1     01ZZX    00c 0 0 0,0 0 1,1\nP-1     01ZZX    00c 0 0 0,0 0 2,1\n"
       "P-1     01ZZY    00c 0 0 0,0 0 3,1\nP-1     01ZZZ    00c 0 0 0,0 0 4,1\n"}},
     "4 elements",
     ""},
};

class PartsTest : public testing::TestWithParam<PartCase> {};

TEST_P(PartsTest, WritesTheseFilesAndNoOther) {
  const PartCase& each = GetParam();
  const TempFolder folder;
  writeFile("plain.dat", kPlant);
  writeFile("plant.dat", kPlant);
  writeFile("plant.attributes.csv", kRows);
  writeFile("returns.dat", withReturns(kPlant));
  writeFile("pipes.dat", kPipe1 + kOther + kPipe2);
  writeFile("pipe.dat", kPipe1);
  writeFile("twice.dat", kPipe1 + kPipe1);
  writeFile("other.dat", kOther);
  writeFile("later.dat", "P-2     02001    00c 0 0 0,0 0 7,60.3\n");
  writeFile("fixed.dat", kFixedPipe);
  writeFile("bad.dat", kPipe1 + "P-1     01002    00c 0 0 0,0 0 1000x,100\n" + kPipe2);
  writeFile("empty.dat", "");
  writeFile("text.txt", "nothing of this kind\n");
  writeFile("more.dat", "Q-1     01001    00c 0 0 0,0 0 9,5\n");
  writeFile("more.attributes.csv", "f1,f2,first,last,spec,item-code\nQ-1,01,1,1,S1,Z\n");
  writeFile("last.dat", "P-1     01ZZZ    00c 0 0 0,0 0 1,1\n");
  writeFile("odd.dat",
            "A/B     01001    00c 0 0 0,0 0 1,1\n"
            "A?B     01001    00c 0 0 0,0 0 2,1\n"
            "a*b     01001    00c 0 0 0,0 0 3,1\n"
            "a:b_01-2  001    00c 0 0 0,0 0 4,1\n"
            "          001    00c 0 0 0,0 0 5,1\n"
            "CON       001    00c 0 0 0,0 0 6,1\n");
  writeFile("shared.dat",
            "P-1     01009    00c 0 0 0,0 0 1,1\nP-1     01009    00c 0 0 0,0 0 2,1\n"
            "P-1     01008    00c 0 0 0,0 0 3,1\nP-1     01009    00c 0 0 0,0 0 4,1\n");
  writeFile("same.dat", kPipe1 +
                            "P-1     01004    00c 1000 0 0,-1000 0 0,100\n"
                            "P-1     01005    00l pt 0 0 0\nP-1     01006    00l pt 0 0 0\n");
  writeFile("normals.dat", "P-1     01001    00l pt 0 0 0,pt 1 0 0,pt 2 0 0\n");
  fs::create_directory("have");
  writeFile("have/P-2_02.dat", "");
  const Files before = filesHere();
  const ToolRun run = runTool(each.arguments);
  EXPECT_EQ(run.exit, each.exit) << run.err;
  EXPECT_TRUE(contains(run.out, each.out)) << run.out;
  EXPECT_TRUE(contains(run.err, each.err)) << run.err;
  if (*each.out == '\0') {
    EXPECT_EQ(run.out, "");
  }
  if (*each.err == '\0') {
    EXPECT_EQ(run.err, "");
  }
  Files expected = before;
  expected.insert(each.made.begin(), each.made.end());
#ifdef _WIN32
  // readFile reads line ends of Windows as those of other systems.
  for (auto& [name, bytes] : expected) std::erase(bytes, '\r');
#endif
  EXPECT_EQ(filesHere(), expected);
}

INSTANTIATE_TEST_SUITE_P(Records, PartsTest, testing::ValuesIn(kCases),
                         [](const auto& each) { return std::string(each.param.name); });

// A sidecar of before would say wrong things of the new elements.
TEST(Parts, ReplaceASidecarThatBelongsToOtherElements) {
  const TempFolder folder;
  writeFile("plain.dat", kPlant);
  writeFile("x.dat", kOther);
  writeFile("x.attributes.csv", kKey + kRowB);
  EXPECT_EQ(runTool("extract plain.dat -f -o x.dat --header P-1").exit, 0);
  EXPECT_EQ(readFile("x.attributes.csv"), "f1,f2,first,last\n");
}

#ifndef _WIN32
TEST(Parts, SayThatTheDiskIsFull) {
  const TempFolder folder;
  writeFile("plain.dat", kPlant);
  for (const char* command :
       {"extract plain.dat", "merge plain.dat plain.dat", "edit plain.dat --renumber elements"}) {
    const ToolRun run = runTool(std::string(command) + " -f -o /dev/full");
    EXPECT_EQ(run.exit, 4) << command;
    EXPECT_TRUE(contains(run.err, "No space left on device")) << run.err;
  }
}
#endif

}  // namespace
}  // namespace VeskTest
