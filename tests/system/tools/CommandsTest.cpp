// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "commands/Command.h"
#include "commands/Help.h"
#include "support/TempFolder.h"
#include "tools/ToolRun.h"

namespace VeskTest {
namespace {

// In a folder with good.dat (a pipe), bad.dat (a damaged one behind a good one),
// empty.dat, text.txt (no records) and cut.dat (cut off).
constexpr RunCase kRuns[] = {
    {"NoCommand", "", 2, "", "a command is missing"},
    {"HelpIsAnAnswer", "--help", 0, "Usage: vesk COMMAND", ""},
    {"HelpOfACommandBeginsWithExamples", "info --help", 0, "Examples:\n  vesk info", ""},
    {"HelpOfACommandByHelp", "help diff", 0, "--tolerance LENGTH", ""},
    {"HelpGivesDefaults", "diff --help", 0, "[0.01]", ""},
    {"VersionOption", "--version", 0, "vesk 1.", ""},
    {"UnknownCommandNamesTheNearest", "inof good.dat", 2, "", "did you mean \"info\"?"},
    {"UnknownOptionNamesTheNearest", "info --jsn good.dat", 2, "", "did you mean \"--json\"?"},
    {"OneArgumentTooMany", "show good.dat:1 bad.dat", 2, "", "one argument too many"},
    {"MissingArgument", "list", 2, "", "required"},
    {"WrongValueOfAnOption", "info --color blue good.dat", 2, "", "vesk info --help"},
    {"OptionsBeforeTheCommand", "-q info good.dat", 0, "elements  1\n", ""},
    {"MissingFile", "info none.dat", 3, "", "none.dat: No such file"},
    {"NoRecordFile", "info text.txt", 3, "", "this is not a record file"},
    {"EmptyFileIsARecordFile", "info empty.dat", 0, "elements  0\n", ""},
    {"ABlankFileIsAnEmptyOne", "info blank.dat", 0, "elements  0\n", ""},
    {"ABlankFileHasNoFindings", "check blank.dat", 0, "blank.dat: ", ""},
    {"AByteOrderMarkIsNoRecord", "info marked.dat", 0, "elements  1\n", ""},
    {"AMarkAloneIsAnEmptyFile", "list mark.dat", 0, "KIND", ""},
    {"APipingFileGetsAHint", "info line.pcf", 3, "", "vesk import line.pcf -o line.dat"},
    {"AMeshGetsAHint", "list mesh.glb", 3, "", "vesk export"},
    // Of three pipes in tokens and two in fixed columns.
    {"TheOtherStyleIsNamed", "info joined.dat", 1, "faults    1\n",
     "joined.dat:4: error: from line 4 fixed columns, 2 lines [V011]\n"},
    {"TheOtherStyleIsAFinding", "check joined.dat", 1,
     "joined.dat:4: error: from line 4 fixed columns, 2 lines", ""},
    // An option takes one value each time: what stands behind it is a file.
    {"FilesBehindASelection", "list --only pipe good.dat old/same.dat", 0, "old/same.dat:\n", ""},
    {"FilesBehindTwoSelections", "info --header P-1 --not --only box good.dat old/same.dat", 0,
     "old/same.dat\n", ""},
    {"FilesBehindATurn", "convert --rotate z,90 --rotate x,90 good.dat turned.dat", 0, "", ""},
    {"FilesBehindANewName", "edit -o x.dat --group P-1 07 --rename P-1 P-2 good.dat", 0,
     "P-1 01 becomes P-2 07", ""},
    {"TheHintToTheOtherStyle", "info joined.dat", 1, "elements  3\n", "--mixed reads on in it"},
    {"BothStylesAreReadIfAsked", "info --mixed joined.dat", 0, "style     mixed\n  elements  5\n",
     ""},
    {"BothStylesAreListed", "list --csv --mixed joined.dat", 0, "\n5,cylinder,P-1,01,1,", ""},
    {"BothStylesAreChecked", "check --mixed joined.dat", 0, " in 5 elements\n", ""},
    // 5 times pi / 4 * 100 * 100 * 1000 = 0.0392699081698 m3.
    {"BothStylesAreMeasured", "measure --csv --mixed joined.dat", 0, ",0.03926990816", ""},
    {"BothStylesAreShown", "show --mixed joined.dat:5", 0, "fixed style", ""},
    {"BothStylesAreCompared", "diff --mixed joined.dat joined.dat", 0, "no difference; 5", ""},
    {"BothStylesBecomeOne", "convert --mixed joined.dat one.dat --verify", 0, "",
     "verified 5 elements, 0 differ"},
    {"BothStylesAreMerged", "merge --mixed joined.dat good.dat -o one.dat", 0, "6 elements", ""},
    {"BothStylesAreExported", "export --mixed joined.dat -o x.stl", 0, "", ""},
    {"BothStylesAreNotExtracted", "extract --mixed joined.dat -o one.dat", 3, "",
     "joined.dat: fixed style, but what comes before it has token"},
    {"OneStyleOfBothIsExtracted", "extract --mixed joined.dat -o one.dat --lines 4-5", 0,
     "2 elements", ""},
    {"EditKeepsToOneStyle", "edit --mixed joined.dat -o x.dat --sort kind", 2, "",
     "there is no option \"--mixed\""},
    // 2,000 less the five that are shown, lines 2 to 6.
    {"RepeatedMessagesAreCounted", "info flood.dat", 1, "faults    2 000\n",
     "flood.dat: 1 995 more, at lines 7, 8, 9 and so on [V021]; -v shows all\n"},
    {"RepeatedMessagesOfOtherCommands", "export flood.dat -o x.step", 1, "",
     "flood.dat: 1 995 more, at lines 7, 8, 9 and so on [V021]; -v shows all\n"},
    {"AllMessagesOnDemand", "info -v flood.dat", 1, "faults    2 000\n", "flood.dat:2001:"},
    {"ListOfSeveralFiles", "list good.dat old/same.dat", 0, "good.dat:\n", ""},
    {"ListOfSeveralFilesAsCsv", "list --csv good.dat old/same.dat", 0,
     "\nold/same.dat,1,cylinder,P-1,01,1,", ""},
    // pi / 4 * 100 * 100 * 1000 = 7853981.6; of four edges, bends and heights nothing.
    {"ListHasANumberAColumn", "list --csv good.dat", 0, ",7853981.6", ""},
    {"ListHasAColumnForEachSize", "list --csv good.dat", 0, ",1000,100,,,,,,,,,,,\n", ""},
    {"ListSorted", "list --csv --sort length --descending three.dat", 0,
     "\n3,cylinder,P-1,01,3,0,0,0,", ""},
    {"ListOfTheLongestOnly", "list --sort length --descending --limit 1 three.dat", 0,
     "\n       3  cylinder", "vesk: 1 of 3 elements listed (--limit)\n"},
    {"ListByNoColumn", "list --sort colour good.dat", 2, "",
     "\"colour\" is not one of these: line, "},
    {"WrongTypeIsSaidPlainly", "list --limit x good.dat", 2, "",
     "--limit: \"x\" is not a whole number of 0 or more\n"},
    {"WrongWordIsSaidPlainly", "check --format xml good.dat", 2, "",
     "--format: \"xml\" is not one of these: text, json, sarif\n"},
    {"MissingValueIsSaidPlainly", "list good.dat --limit", 2, "", "--limit needs a value\n"},
    {"ImportIsQuietOnDemand", "import -q pump.pcf -o x.dat", 0, "", ""},
    // Of ten pipes 6 are moved by 0 0 100.
    {"EqualMovesAreOneLine", "diff ten.dat moved.dat", 1,
     "~ A:1 and on  6 elements moved by 0 0 100\n6 moved; 4 in their places\n", ""},
    {"EqualMovesOneByOne", "diff -v ten.dat moved.dat", 1,
     "~ A:6 B:6  cylinder P-1 01/6: moved by 0 0 100\n", "note"},
    {"SummaryAlone", "diff --summary ten.dat moved.dat", 1, "6 moved; 4 in their places\n", ""},
    {"FoldersAreCompared", "diff old new", 1,
     "only in old: gone.dat\nonly in new: more.dat\n1 of 2 files differ, 2 in one folder only\n",
     ""},
    {"FoldersAsJson", "diff --json old new", 1, "\"schema\": \"vesk.diff-folders/1\"", ""},
    {"AFolderIsNoFile", "diff old good.dat", 2, "", "old is a folder, the other is not"},
    {"ClashOfASelection", "clash crossed.dat --header P-1", 1, "[V501]", ""},
    {"ClashOfAnotherSelection", "clash crossed.dat --header P-3", 0, "0 clashes", ""},
    {"ClashOfNothing", "clash crossed.dat --header P-9", 1, "", "no element is chosen"},
    {"WatchNeedsAFile", "view --watch good.dat", 2, "", "-o FILE.html"},
    {"WatchOfTheStandardInput", "check --watch -", 2, "", "not for the standard input"},
    {"VersionOfTheBuild", "version --json", 0, "\"compiler\": \"", ""},
    {"DamagedElement", "info bad.dat", 1, "faults    1\n", "bad.dat:2:32-36: error:"},
    {"CutOff", "info cut.dat", 1, "faults    1\n", "[V014]"},
    {"HighestCodeOfSeveralFilesWins", "info bad.dat none.dat good.dat", 3, "good.dat\n",
     "none.dat"},
    {"VerboseTellsWhatWasRead", "measure -v good.dat", 0, "cylinders",
     "vesk: note: good.dat: token style, 1 element, 1 line, 40 bytes\n"},
    {"QuietIsStrongerThanVerbose", "measure -q -v good.dat", 0, "cylinders", ""},
    {"StandardInput", "info -", 0, "<stdin>\n  style     token", ""},
    {"StandardInputTwice", "info - -", 2, "", "read only once"},
    {"StandardInputTwiceInDiff", "diff - -", 2, "", "read only once"},
    {"ShowAPlaceInStandardInput", "show -:1", 0, "cylinder, token style\n", ""},
    {"NameOfSeveralBytes", "convert good.dat \"K\xC3\xBChlung.dat\" --verify", 0, "",
     "verified 1 element, 0 differ\n"},
    {"NumberThatIsNone", "diff good.dat bad.dat --tolerance nan", 2, "",
     "not a number of 0 or more"},
    {"NumberInHexadecimal", "measure good.dat --density 0x10", 2, "", "not a number of 0 or more"},
    {"NumberBelowZero", "check good.dat --reach -1", 2, "", "not a number above 0"},
    {"UnitOfZero", "measure good.dat --unit 0", 2, "", "not a number above 0"},
    {"MoveToNowhere", "convert good.dat x.dat --move inf,0,0", 2, "", "not three numbers"},
    {"FolderMeansItsRecordFiles", "info .", 3, "good.dat", "this is not a record file"},
    {"FolderWithoutAny", "info sub", 3, "", "there is no *.dat file"},
    {"PatternOfTheToolItself", "info \"goo*.dat\"", 0, "good.dat\n", ""},
    {"PatternWithoutAFile", "info \"x*.dat\"", 3, "", "no file matches"},
    {"ListOnlyAKind", "list good.dat --only cylinder", 0, "length 1000, diameter 100\n", ""},
    {"ListUnknownKind", "list good.dat --only cilinder", 2, "", "did you mean \"cylinder\"?"},
    {"ListByHeader", "list good.dat --header \"P-1 01\" --csv", 0, "\n1,cylinder,P-1,01,1,0,0,0,",
     ""},
    {"ListWrongBox", "list good.dat --bbox 1,2,3", 2, "", "not six numbers"},
    {"ListDamaged", "list bad.dat", 1, "cylinder", "[V021]"},
    {"ShowTheElement", "show good.dat:1", 0, "'1000'      axis z\n", ""},
    {"ShowAFindingAsItIsPrinted", "show good.dat:1:31-40:", 0, "cylinder, token style\n", ""},
    {"ShowADamagedElement", "show bad.dat:2", 1, "element that can't be read", "[V021]"},
    {"ShowBeyondTheEnd", "show good.dat:2", 3, "", "has 1 lines, not 2"},
    {"ShowWithoutALine", "show good.dat", 2, "", "names no line"},
    {"MeasureLength", "measure good.dat", 0, "cylinders      100      1     1.000", ""},
    {"ConvertOntoItself", "convert good.dat good.dat -f", 2, "", "both input and output"},
    {"ConvertOverAFile", "convert good.dat bad.dat", 4, "", "-f replaces it"},
    {"ConvertIntoNoFolder", "convert good.dat none/a.dat", 4, "", "none/a.dat: No such file"},
    {"ConvertThroughPipes", "convert - - --style fixed", 0,
     "60    01  P-1     001CYL    0.000    0.000    0.000    0.000    0.000 1000.000  100.000\n",
     ""},
    {"ConvertNegative", "convert good.dat - --move -5,0,-1e1", 0, "c -5 0 -10,0 0 1000,100\n", ""},
    {"ShowAFindingInStandardInput", "show \"<stdin>:1:2-3:\"", 0, "cylinder, token style\n", ""},
    {"ConvertReplaces", "convert -f good.dat text.txt --style fixed", 0, "", ""},
    {"ConvertIntoAFolder", "convert -f good.dat sub", 4, "", "sub: Is a directory"},
    {"ConvertIsNoExport", "convert good.dat x.glb", 2, "", "vesk export"},
    {"HelpOfTypesWithAColon", "help clash", 0, "--ignore A[:B] ", ""},
    {"HelpOfHelp", "help help", 0, "vesk help COMMAND", ""},
    {"CheckOfJointsByTheirCode", "check --only V205 good.dat", 0, "[V205]", ""},
    {"ConvertWrongTurn", "convert good.dat x.dat --rotate 90", 2, "", "not an axis and an angle"},
    {"VerifyNeedsFiles", "convert - x.dat --verify", 2, "", "--verify needs files"},
    {"DiffOfTheSame", "diff good.dat good.dat", 0, "no difference; 1 in their places\n", ""},
    {"DiffIsQuietOnDemand", "diff -q good.dat empty.dat", 1, "", ""},
    {"DiffRemoved", "diff good.dat empty.dat", 1, "removed at 0 0 0, length 1000, diameter 100",
     ""},
    {"DiffAdded", "diff empty.dat good.dat", 1, "1 added; 0 in their places\n", ""},
    {"ImportNoPiping", "import text.txt -o x.dat", 3, "", "this is not a piping component file"},
    {"ImportOfBefore", "import good.pcf x", 2, "", "vesk import good.pcf -o x.dat"},
    {"ImportWithoutOutput", "import a b c", 2, "", "vesk import a b c -o plant.dat"},
    {"ImportMissing", "import none.pcf -o x.dat", 3, "", "none.pcf: No such file"},
    {"ExplainACode", "explain v021", 0, "V021: not a number\n\n", ""},
    {"ExplainUnknown", "explain V999", 2, "", "there is no code V999"},
    {"CompletionOfNoShell", "completion tcsh", 2, "", "completion --help"},
};

std::string pipe(int counter, const std::string& place, const std::string& length) {
  return "P-1     0100" + std::to_string(counter) + "    00c " + place + ",0 0 " + length +
         ",100\n";
}

void writeMore() {
  const std::string columns =
      "60    01  P-1     001CYL    0.000    0.000    0.000    0.000    0.000 1000.000  100.000\n";
  writeFile("blank.dat", "\n  \n\r\n\t\n");
  writeFile("marked.dat", "\xEF\xBB\xBF" + kPipe);
  writeFile("mark.dat", "\xEF\xBB\xBF");
  writeFile("line.pcf", "a line of piping\n");
  writeFile("mesh.glb", "glTF\n");
  std::filesystem::copy_file(VESK_PIPING_SAMPLE, "pump.pcf");
  writeFile("joined.dat", kPipe + kPipe + kPipe + columns + columns);
  std::string flood = kPipe;
  for (int i = 0; i < 2000; ++i) flood += pipe(2, "0 0 0", "1000x");
  writeFile("flood.dat", flood);
  writeFile("three.dat",
            pipe(1, "0 0 0", "200") + pipe(2, "0 0 0", "100") + pipe(3, "0 0 0", "300"));
  std::string ten;
  std::string moved;
  for (int i = 1; i < 10; ++i) {
    const std::string at = std::to_string(2000 * i) + " 0 ";
    ten += pipe(i, at + "0", "1000");
    moved += pipe(i, at + (i <= 6 ? "100" : "0"), "1000");
  }
  writeFile("ten.dat", ten + pipe(0, "0 0 0", "1000"));
  writeFile("moved.dat", moved + pipe(0, "0 0 0", "1000"));
  for (const char* folder : {"old", "new"}) {
    std::filesystem::create_directory(folder);
    writeFile(std::string(folder) + "/same.dat", kPipe);
  }
  writeFile("old/other.dat", ten);
  writeFile("new/other.dat", moved);
  writeFile("old/gone.dat", kPipe);
  writeFile("new/more.dat", kPipe);
  // P-2 crosses P-1, P-3 is far from both.
  writeFile("crossed.dat", kPipe + "P-2     01001    00c -500 0 500,1000 0 0,100\n" +
                               "P-3     01001    00c 9000 0 500,1000 0 0,100\n");
}

class CommandsTest : public testing::TestWithParam<RunCase> {};

TEST_P(CommandsTest, Runs) {
  const TempFolder folder;
  writeFile("good.dat", kPipe);
  writeFile("bad.dat", kPipe + "P-1     01002    00c 0 0 0,0 0 1000x,100\n");
  writeFile("empty.dat", "");
  writeFile("text.txt", "nothing of this kind\n");
  writeFile("text.dat", "nothing of this kind\n");
  writeFile("cut.dat", kPipe + kPipe.substr(0, kPipe.size() - 2));
  std::filesystem::create_directory("sub");
  writeMore();
  expectRun(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Commands, CommandsTest, testing::ValuesIn(kRuns),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(Help, FitsAScreen) {
  const TempFolder folder;
  const ToolRun run = runTool("--help");
  std::size_t lines = 0;
  for (std::size_t begin = 0; begin < run.out.size(); ++lines) {
    const std::size_t end = run.out.find('\n', begin);
    EXPECT_LE(end - begin, 80u) << run.out.substr(begin, end - begin);
    begin = end + 1;
  }
  EXPECT_LE(lines, 24u);
}

// Values have a word for their unit or kind, and the default in brackets behind.
TEST(Help, NamesDefaultAndUnitOfEveryOption) {
  for (const auto& command : VeskTool::makeCommands()) {
    CLI::App app;
    command->define(app);
    const std::string help = VeskTool::helpOfCommand(command->text(), app);
    for (const CLI::Option* option : app.get_options()) {
      if (option->get_positional() || option->get_type_name().empty() ||
          option->get_lnames().empty()) {
        continue;
      }
      const std::string name = std::string(command->text().name) + " --" + option->get_lnames()[0];
      const std::string type = option->get_type_name().substr(0, option->get_type_name().find(':'));
      EXPECT_TRUE(type != "TEXT" || option->get_lnames()[0] == "header") << name;
      EXPECT_NE(type, "FLOAT") << name;
      EXPECT_NE(type, "INT") << name;
      EXPECT_NE(type, "UINT") << name;
      EXPECT_FALSE(option->get_default_str().empty()) << name;
      EXPECT_TRUE(contains(help, "--" + option->get_lnames()[0] + ' ' + type)) << name;
    }
  }
}

// 11 elements, one of each kind; 12 lines and 572 bytes by wc. The largest x is
// the segment's end; the lowest x is that of the cylinder: 1 - 219.1 / 2.
TEST(Info, SumsUpAFile) {
  const TempFolder folder;
  const ToolRun run = runTool("info \"" + golden("elements.tokens.dat") + "\"");
  EXPECT_EQ(run.exit, 0);
  for (const char* part :
       {"  style     token\n", "  elements  11\n", "    cylinders   1\n", "  headers   1\n",
        "  lines     12\n", "  bytes     572\n", "  box from  -108.550 -107.550 -10.000\n",
        "  to        1000.000 111.550 100.000\n"}) {
    EXPECT_TRUE(contains(run.out, part)) << part << run.out;
  }
}

TEST(Info, AnswersTheSameWithAnyNumberOfJobs) {
  const TempFolder folder;
  std::string files;
  for (int i = 0; i < 9; ++i) {
    const std::string name = "z" + std::to_string(i) + ".dat";
    std::string bytes;
    for (int k = 0; k <= i; ++k) bytes += kPipe;
    writeFile(name, bytes + (i % 3 == 0 ? "damaged\n" : ""));
    files += ' ' + name;
  }
  const ToolRun one = runTool("info" + files);
  const ToolRun four = runTool("info -j 4" + files);
  EXPECT_EQ(one.exit, 1);
  EXPECT_EQ(four.exit, 1);
  EXPECT_EQ(one.out, four.out);
  EXPECT_EQ(one.err, four.err);
}

TEST(Info, RecordFilesJoinedEndToEndAreARecordFile) {
  const TempFolder folder;
  const std::string pump = readFile(golden("pump.dat"));
  const std::string elements = readFile(golden("elements.tokens.dat"));
  const ToolRun run = runTool("info -", pump + elements + pump);
  EXPECT_EQ(run.exit, 0) << run.err;
  EXPECT_TRUE(contains(run.out, "  elements  1 059\n")) << run.out;  // 524 + 11 + 524
}

struct LossCase {
  const char* name;
  const char* record;
  const char* style;
  int exit;
  const char* code;
  const char* text;
};

constexpr LossCase kLosses[] = {
    {"DecimalsInColumns", "P-1     01001    00c 0 0 0,0 0 1000,100.1234\n", "fixed", 0, "[V302]",
     "cylinder: diameter 100.1234 becomes 100.123"},
    // 99999999.5 has the mantissa 10.00000: ten characters.
    {"TenCharacters", "P-1     01001    00l pt 99999999.5 0 0\n", "fixed", 1, "[V301]",
     "vertex 0 99999999.5 0 0"},
    {"OnlyWhatIsTooLongIsNamed", "P-1     01001    00c 99999999.5 1 2,0 0 1000,100\n", "fixed", 1,
     "[V301]", "a number needs ten characters: origin 99999999.5 1 2 [V301]\n"},
    {"Arcs", "P-1     01001    00l pt 0 0 0,pt 1 0 0,ar 5 1 2 3\n", "fixed", 1, "[V304]",
     "arc 0 \"radius 5 1 2 3\" is lost"},
    {"Pieces", "P-1     01001    00l pt 0 0 0,pt 1 0 0,pt 1 1 0\n", "fixed", 1, "[V307]",
     "polyline: becomes 2 records"},
    {"ClosingAttribute", "P-1     01001    00c 0 0 0,0 0 1000,100,ft 7\n", "fixed", 1, "[V308]",
     "ft \"7\" is lost"},
    {"FieldF5", "P-1     01001  ab00c 0 0 0,0 0 1000,100\n", "fixed", 1, "[V308]",
     "F5 \"ab\" is lost"},
    {"PointSize", "60    01  P-1     001PNT    1.000    2.000    3.000    5.000\n", "token", 1,
     "[V303]", "point size 5 is lost"},
    {"PointDirection",
     "60    01  P-1     001PNT    1.000    2.000    3.000    0.000    0.000    0.000    0.000    "
     "0.000    1.000\n",
     "token", 1, "[V303]", "direction 0 0 1 is lost"},
    {"BendRadius",
     "60    01  P-1     001TOR    0.000    0.000    0.000  100.000    0.000    0.000    0.000  "
     "100.000    0.000  120.000   20.000\n",
     "token", 1, "[V306]", "bend radius 120 is lost"},
    {"BendRadiusThatIsTheMean",
     "60    01  P-1     001TOR    0.000    0.000    0.000  100.000    0.000    0.000    0.000  "
     "100.000    0.000  100.000   20.000\n",
     "token", 0, "", ""},
    {"DuctElbowWithoutAPlane", "P-1     01001    00e 0 0 5,40 0 0,-40 0 0,20,10\n", "fixed", 1,
     "[V309]", "element not written: its bend has no plane"},
    // The axis leans by 0.4 over its length of 10.
    {"DuctElbowOutOfSquare",
     "60    01  P-1     001ELB    0.000    0.000   10.000    0.400    0.000    0.000   50.000    "
     "0.000   10.000    0.000   50.000   10.000\n61    01  P-1     001ELB   30.000\n",
     "fixed", 1, "[V312]", "duct elbow: its points are out of square and move by up to 0."},
    {"NothingLost", "P-1     01001    00c 0 0 0,0 0 1000,100\n", "fixed", 0, "", ""},
};

class ConvertLossTest : public testing::TestWithParam<LossCase> {};

TEST_P(ConvertLossTest, IsNamed) {
  const TempFolder folder;
  const LossCase& each = GetParam();
  writeFile("in.dat", each.record);
  const ToolRun run = runTool(std::string("convert in.dat out.dat --style ") + each.style);
  EXPECT_EQ(run.exit, each.exit) << run.err;
  EXPECT_TRUE(contains(run.err, each.text)) << run.err;
  EXPECT_TRUE(contains(run.err, each.code)) << run.err;
  if (*each.code == '\0') {
    EXPECT_EQ(run.err, "");
  }
  EXPECT_TRUE(std::filesystem::exists("out.dat"));

  const ToolRun strict =
      runTool(std::string("convert in.dat strict.dat --strict --style ") + each.style);
  EXPECT_EQ(strict.exit, each.exit);
  EXPECT_EQ(std::filesystem::exists("strict.dat"), each.exit == 0);
}

INSTANTIATE_TEST_SUITE_P(Convert, ConvertLossTest, testing::ValuesIn(kLosses),
                         [](const auto& each) { return std::string(each.param.name); });

void PrintTo(const LossCase& each, std::ostream* out) { *out << each.record; }

TEST(Convert, VerifyCountsWhatReadingHasMoved) {
  const TempFolder folder;
  const std::string elbow =
      "60    01  P-1     001ELB    0.000    0.000   10.000    0.400    0.000    0.000   50.000    "
      "0.000   10.000    0.000   50.000   10.000\n61    01  P-1     001ELB   30.000\n";
  writeFile("in.dat", elbow);
  const ToolRun first = runTool("convert in.dat out.dat --verify");
  EXPECT_EQ(first.exit, 1);
  EXPECT_TRUE(contains(first.err, "verified 1 element, 1 differ")) << first.err;
  EXPECT_NE(readFile("out.dat"), elbow);

  const ToolRun second = runTool("convert out.dat again.dat --verify");
  EXPECT_EQ(second.exit, 0) << second.err;
  EXPECT_TRUE(contains(second.err, "verified 1 element, 0 differ")) << second.err;
  EXPECT_EQ(readFile("again.dat"), readFile("out.dat"));
}

TEST(Convert, FlagOfATextIsLostInTokens) {
  const TempFolder folder;
  const ToolRun run =
      runTool("convert \"" + golden("elements.columns.dat") + "\" out.dat --style token");
  EXPECT_EQ(run.exit, 1);
  EXPECT_TRUE(contains(run.err, ":5: warning: text: flag 1 is lost [V305]\n")) << run.err;
  EXPECT_EQ(readFile("out.dat"), readFile(golden("elements.tokens.dat")));
}

TEST(Convert, ThereAndBackGivesTheSameBytes) {
  const TempFolder folder;
  EXPECT_EQ(runTool("convert \"" + golden("elements.tokens.dat") + "\" c.dat --style fixed").exit,
            0);
  EXPECT_EQ(runTool("convert c.dat t.dat --style token --verify").exit, 0);
  EXPECT_EQ(readFile("t.dat"), readFile(golden("elements.tokens.dat")));
}

// A number of ten characters would move all behind it.
TEST(Convert, WhatIsNotWrittenIsNotInTheFile) {
  const TempFolder folder;
  const ToolRun run = runTool("convert - - --style fixed",
                              "P-1     01001    00c 99999999.5 0 0,0 0 1000,100\n" + kPipe);
  EXPECT_EQ(run.exit, 1);
  EXPECT_EQ(run.out,
            "60    01  P-1     001CYL    0.000    0.000    0.000    0.000    0.000 1000.000  "
            "100.000\n");
  for (const char* place : {"inf 0 0", "0 -inf 0", "0 0 nan"}) {
    const std::string record = std::string("P-1     01001    00c ") + place + ",0 0 1000,100\n";
    EXPECT_EQ(runTool("convert - - --style fixed", record).out, "") << place;
  }
}

struct ValueCase {
  const char* before;
  const char* after;
  const char* change;
};

constexpr char kText[] = "x 1 2 3,1 0 0,0 1 0,2.5,0.5,1,2\nP-1     01001    01x AB";

// Every value of a kind that is not its place, the others the same.
constexpr ValueCase kValues[] = {
    {kText, "x 1 2 3,1 0 0,0 1 0,2.5,0.5,1,2\nP-1     01001    01x CD",
     "text from \"AB\" to \"CD\""},
    {kText, "x 1 2 3,1 0 0,0 1 0,3,0.5,1,2\nP-1     01001    01x AB", "height from 2.5 to 3"},
    {kText, "x 1 2 3,1 0 0,0 1 0,2.5,0.7,1,2\nP-1     01001    01x AB", "width from 0.5 to 0.7"},
    {kText, "x 1 2 3,1 0 0,0 1 0,2.5,0.5,5,2\nP-1     01001    01x AB", "alignment from 1 to 5"},
    {kText, "x 1 2 3,0 1 0,0 1 0,2.5,0.5,1,2\nP-1     01001    01x AB",
     "direction from 1 0 0 to 0 1 0"},
    {kText, "x 1 2 3,1 0 0,0 0 1,2.5,0.5,1,2\nP-1     01001    01x AB", "up from 0 1 0 to 0 0 1"},
    {"c 0 0 0,0 0 9,4", "c 0 0 0,0 0 8,4", "axis from 0 0 9 to 0 0 8"},
    {"n 0 0 0,0 0 9,4,2", "n 0 0 0,0 0 9,5,2", "diameter 1 from 4 to 5"},
    {"n 0 0 0,0 0 9,4,2", "n 0 0 0,0 0 9,4,3", "diameter 2 from 2 to 3"},
    {"t 0 0 0,9 0 0,0 9 0,4", "t 0 0 0,9 0 0,0 9 0,5", "diameter from 4 to 5"},
    {"e 0 0 0,9 0 0,0 9 0,4,5", "e 0 0 0,9 0 0,0 9 0,4,6", "width from 5 to 6"},
    {"e 0 0 0,9 0 0,0 9 0,4,5", "e 0 0 0,9 0 0,0 9 0,3,5", "depth from 4 to 3"},
    {"b 5 0 0,1 2 3,0 6 0,0 0 7", "b 5 0 0,1 2 3,0 6 0,0 0 8", "edge 3 from 0 0 7 to 0 0 8"},
    {"b 5 0 0,1 2 3,0 6 0,0 0 7", "b 4 0 0,1 2 3,0 6 0,0 0 7", "edge 1 from 5 0 0 to 4 0 0"},
    {"r 0 0 0,1 0 0,0 1 0,1 1 0,0 0 1,1 0 1,0 1 1,1 1 1",
     "r 0 0 0,1 0 0,0 1 0,1 1 0,0 0 1,1 0 1,0 1 1,1 1 2", "corner 7 from 1 1 1 to 1 1 2"},
};

TEST(Diff, NamesTheValueThatIsAnother) {
  const TempFolder folder;
  for (const ValueCase& each : kValues) {
    writeFile("a.dat", std::string("P-1     01001    00") + each.before + '\n');
    writeFile("b.dat", std::string("P-1     01001    00") + each.after + '\n');
    const std::string out = runTool("diff a.dat b.dat").out;
    EXPECT_TRUE(contains(out, std::string("/1: changed: ") + each.change + '\n')) << out;
  }
}

TEST(Convert, TurnsThenMoves) {
  const TempFolder folder;
  const ToolRun run = runTool("convert - - --scale 2 --rotate z,90 --move 0,0,7",
                              "P-1     01001    00c 10 0 0,5 0 0,3\n"
                              "P-1     01002    00x 10 0 0,1 0 0,0 1 0,2,1,1,1\n"
                              "P-1     01002    01x A\n");
  EXPECT_EQ(run.exit, 0) << run.err;
  EXPECT_EQ(run.out,
            "P-1     01001    00c 0 20 7,0 10 0,6\n"
            "P-1     01002    00x 0 20 7,0 1 0,-1 0 0,4,2,1,1\n"
            "P-1     01002    01x A\n");
}

TEST(Convert, VerifyReadsBack) {
  const TempFolder folder;
  const ToolRun run =
      runTool("convert \"" + golden("pump.dat") + "\" out.dat --style fixed --verify");
  EXPECT_EQ(run.exit, 0);
  EXPECT_TRUE(contains(run.err, "verified 524 elements, 0 differ\n")) << run.err;
}

struct DiffCase {
  const char* name;
  const char* a;
  const char* b;
  int exit;
  const char* text;
};

constexpr DiffCase kDiffs[] = {
    {"Moved", "P-1     01001    00c 0 0 0,0 0 9,4\n", "P-1     01001    00c 0 5 0,0 0 9,4\n", 1,
     "cylinder P-1 01/1: moved by 0 5 0\n"},
    {"Resized", "P-1     01001    00c 0 0 0,0 0 9,4\n", "P-1     01001    00c 0 0 0,0 0 9,6\n", 1,
     "changed: diameter from 4 to 6\n"},
    {"MovedAndResized", "P-1     01001    00c 0 0 0,0 0 9,4\n",
     "P-1     01001    00c 1 0 0,0 0 9,6\n", 1,
     "moved and changed: by 1 0 0; diameter from 4 to 6\n"},
    {"Renamed", "P-1     01001    00c 0 0 0,0 0 9,4\n", "P-2     01001    00c 0 0 0,0 0 9,4\n", 1,
     "renamed: header from P-1 01 to P-2 01\n"},
    {"GivenFromTheOtherEnd", "P-1     01001    00c 0 0 0,0 0 9,4\n",
     "P-1     01001    00c 0 0 9,0 0 -9,4\n", 0, "no difference; 1 in their places\n"},
    {"WithinTheTolerance", "P-1     01001    00c 0 0 0,0 0 9,4\n",
     "P-1     01001    00c 0 0.009 0,0 0 9,4\n", 0, "no difference"},
    {"BeyondTheTolerance", "P-1     01001    00c 0 0 0,0 0 9,4\n",
     "P-1     01001    00c 0 0 0.011,0 0 9,4\n", 1, "moved by 0 0 0.011\n"},
    {"MovedByXWithinTheTolerance", "P-1     01001    00c 0 0 0,0 0 9,4\n",
     "P-1     01001    00c 0.009 0 0,0 0 9,4\n", 0, "no difference"},
    {"ASizeBeyondTheTolerance", "P-1     01001    00c 0 0 0,0 0 9,4\n",
     "P-1     01001    00c 0 0 0,0 0 9,4.011\n", 1, "changed: diameter from 4 to 4.011\n"},
    {"ASizeWithinTheTolerance", "P-1     01001    00c 0 0 0,0 0 9,4\n",
     "P-1     01001    00c 0 0 0,0 0 9,4.009\n", 0, "no difference"},
    {"ArcsOfFacesCount", "P-1     01001    00g pt 0 0 0,pt 1 0 0,pt 0 1 0,ar 5 1 2 3\n",
     "P-1     01001    00g pt 0 0 0,pt 1 0 0,pt 0 1 0\n", 1,
     "changed: arc 0 from \"radius 5 1 2 3\" to nothing\n"},
    {"ABendOfAnotherEnd", "P-1     01001    00t 0 0 0,9 0 0,0 9 0,4\n",
     "P-1     01001    00t 0 0 0,9 0 0,0 0 9,4\n", 1, "changed: end from 0 9 0 to 0 0 9\n"},
    {"AVertexElsewhere", "P-1     01001    00l pt 5 5 5,pt 1 0 0,pt 2 0 0\n",
     "P-1     01001    00l pt 5 5 5,pt 1 0 3,pt 2 0 0\n", 1,
     "changed: vertex 1 from 1 0 0 to 1 0 3\n"},
    {"Reordered", "P-1     01001    00c 0 0 0,0 0 9,4\nP-1     01002    00c 50 0 0,0 0 9,4\n",
     "P-1     01002    00c 50 0 0,0 0 9,4\nP-1     01001    00c 0 0 0,0 0 9,4\n", 0,
     "no difference; 2 in their places, in another order\n"},
    {"ByNearnessWhereCountersDiffer",
     "P-1     01001    00c 0 0 0,0 0 9,4\nP-1     01002    00c 50 0 0,0 0 9,4\n",
     "P-1     01008    00c 51 0 0,0 0 9,4\nP-1     01009    00c 1 0 0,0 0 9,4\n", 1,
     "2 moved; 0 in their places\n"},
    {"NothingDiffersFromItselfWithoutAPlace",
     "P-1     01001    00l pt nan 2 3\nP-1     01001    00l pt nan 2 3\n"
     "P-1     01002    00c 0 0 1e999,0 0 9,4\n",
     "P-1     01001    00l pt nan 2 3\nP-1     01001    00l pt nan 2 3\n"
     "P-1     01002    00c 0 0 1e999,0 0 9,4\n",
     0, "no difference; 3 in their places\n"},
    {"WithoutAPlaceOtherValuesCount", "P-1     01001    00l pt nan 0 0,pt 1 0 0\n",
     "P-1     01001    00l pt nan 0 0,pt 1 0 7\n", 1, "1 changed; 0 in their places\n"},
    {"ArcsCount", "P-1     01001    00l pt 0 0 0,pt 1 0 0,ar 5 1 2 3\n",
     "P-1     01001    00l pt 0 0 0,pt 1 0 0\n", 1,
     "changed: arc 0 from \"radius 5 1 2 3\" to nothing\n"},
};

class DiffTest : public testing::TestWithParam<DiffCase> {};

TEST_P(DiffTest, IsTold) {
  const TempFolder folder;
  const DiffCase& each = GetParam();
  writeFile("a.dat", each.a);
  writeFile("b.dat", each.b);
  const ToolRun run = runTool("diff a.dat b.dat");
  EXPECT_EQ(run.exit, each.exit) << run.err;
  EXPECT_TRUE(contains(run.out, each.text)) << run.out;
}

INSTANTIATE_TEST_SUITE_P(Diff, DiffTest, testing::ValuesIn(kDiffs),
                         [](const auto& each) { return std::string(each.param.name); });

void PrintTo(const DiffCase& each, std::ostream* out) { *out << each.a << each.b; }

// Two pipes of 2 m and a quarter bend of radius 300: pi / 2 * 0.3 m = 0.471 m.
// The pipes: pi / 4 * 0.1^2 * 4 m = 0.0314159 m3, at 1000 kg/m3 31.4 kg. The duct:
// 1 m x 0.5 m x 0.2 m = 0.1 m3, a piece of 1 m of duct; surface 2 * (0.5 + 0.1 + 0.2) = 1.6 m2.
TEST(Measure, TakesOff) {
  const TempFolder folder;
  const ToolRun run = runTool("measure - --density 1000",
                              "P-1     01001    00c 0 0 0,0 0 2000,100\n"
                              "P-1     01002    00c 0 0 0,2000 0 0,100\n"
                              "P-1     01003    00t 0 0 0,300 0 0,0 300 0,100\n"
                              "P-1     01004    00b 1000 0 0,0 0 0,0 500 0,0 0 200\n");
  EXPECT_EQ(run.exit, 0) << run.err;
  EXPECT_TRUE(contains(run.out, "     2     4.000       1.257   0.031416       31.4\n")) << run.out;
  EXPECT_TRUE(contains(run.out, "      300         90      1     0.471 ")) << run.out;
  EXPECT_TRUE(contains(run.out, "     1     1.000       1.600   0.100000      100.0\n")) << run.out;
}

TEST(Import, DrawsAsThePipingHostDoes) {
  const TempFolder folder;
  const ToolRun run = runTool("import \"" VESK_PIPING_SAMPLE "\" -o pump.dat");
  EXPECT_EQ(run.exit, 0) << run.err;
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(readFile("pump.dat"), readFile(golden("pump.dat")));
  const std::string sidecar = readFile("pump.attributes.csv");
  EXPECT_TRUE(contains(sidecar, "f1,f2,first,last,pipeline,component,")) << sidecar;
  const ToolRun again = runTool("import \"" VESK_PIPING_SAMPLE "\" -o pump.dat");
  EXPECT_EQ(again.exit, 4);
  EXPECT_EQ(runTool("import -f \"" VESK_PIPING_SAMPLE "\" -o pump.dat").exit, 0);
  EXPECT_EQ(readFile("pump.attributes.csv"), sidecar);
}

TEST(Import, SaysWhatItCantDraw) {
  const TempFolder folder;
  const ToolRun run =
      runTool("import - -o x.dat", "PIPE\n    END-POINT 0 0 0 100\nWELD\n    CO-ORDS 0 0 0\n");
  EXPECT_EQ(run.exit, 1);
  EXPECT_TRUE(contains(run.err, "<stdin>:1: error: PIPE not drawn")) << run.err;
}

constexpr char kWeld[] = "WELD\n    CO-ORDS 1 2 3\n";

// Records and sidecar, of which each may be in the way.
TEST(Import, WritesBothFilesOrNeither) {
  const TempFolder folder;
  writeFile("x.attributes.csv", "old");
  EXPECT_EQ(runTool("import - -o x.dat", kWeld).exit, 4);
  EXPECT_FALSE(std::filesystem::exists("x.dat"));
  EXPECT_EQ(readFile("x.attributes.csv"), "old");
  std::filesystem::create_directory("y.attributes.csv");
  writeFile("y.dat", "old");
  EXPECT_EQ(runTool("import -f - -o y.dat", kWeld).exit, 4);
  EXPECT_EQ(readFile("y.dat"), "old");
  EXPECT_EQ(runTool("import - -o z.dat --attributes none/z.csv", kWeld).exit, 4);
  EXPECT_FALSE(std::filesystem::exists("z.dat"));
  EXPECT_EQ(runTool("import - -o z.dat --no-attributes", kWeld).exit, 0);
  EXPECT_FALSE(std::filesystem::exists("z.attributes.csv"));
}

TEST(Import, NeverLeavesAnEmptyFile) {
  const TempFolder folder;
  EXPECT_EQ(runTool("import - -o x.dat", "PIPE\n    END-POINT 0 0 0 100\n").exit, 3);
  EXPECT_EQ(runTool("import - -o x.dat", "Dear all\n").exit, 3);
  EXPECT_FALSE(std::filesystem::exists("x.dat"));
  EXPECT_FALSE(std::filesystem::exists("x.attributes.csv"));
}

TEST(Import, TakesFoldersAndManyFiles) {
  const TempFolder folder;
  std::filesystem::create_directories("lines/deep");
  writeFile("lines/a.pcf", "PIPELINE-REFERENCE A\nWELD\n    CO-ORDS 1 2 3\n");
  writeFile("lines/deep/b.PCF", "PIPELINE-REFERENCE B\nWELD\n    CO-ORDS 1 2 3\n");
  writeFile("lines/letter.txt", "Dear all\n");
  EXPECT_EQ(runTool("import lines -o plant.dat").exit, 0);
  EXPECT_EQ(readFile("plant.dat"),
            "A       01001    00l pt 1 2 3\nB       02001    00l pt 1 2 3\n");
  EXPECT_EQ(runTool("import lines/a.pcf - -o two.dat", kWeld).exit, 0);
  EXPECT_EQ(readFile("two.dat"), "A       01001    00l pt 1 2 3\n        02001    00l pt 1 2 3\n");
  // One that can't be read, and nothing is written.
  writeFile("lines/c.pcf", "Dear all\n");
  const ToolRun run = runTool("import -f lines -o plant.dat");
  EXPECT_EQ(run.exit, 3);
  EXPECT_TRUE(contains(run.err, "c.pcf: error: this is not a piping component file")) << run.err;
}

TEST(Import, WritesToTheStandardOutput) {
  const TempFolder folder;
  const ToolRun run = runTool("import - -o -", kWeld);
  EXPECT_EQ(run.exit, 0);
  EXPECT_EQ(run.out, "        00001    00l pt 1 2 3\n");
  EXPECT_FALSE(std::filesystem::exists("-.attributes.csv"));
}

}  // namespace
}  // namespace VeskTest
