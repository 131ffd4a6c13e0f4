// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <ostream>

#include "examples/HostRun.h"

// What becomes of a file is tested with the library that reads it; here the host's own
// part: its arguments, its files, its exit codes.
namespace {

// Bodies, lines, points and texts through all functions that the host calls.
TEST(Piping, WritesWhatTheLibraryDraws) {
  const HostFolder folder;
  folder.write("in.pcf",
               "PIPELINE-REFERENCE P-1\n"
               "PIPE\n END-POINT 0 0 0 100\n END-POINT 1000 0 0 100\n"
               "ELBOW\n END-POINT 1000 0 0 100\n END-POINT 1152.4 152.4 0 100\n"
               " CENTRE-POINT 1152.4 0 0\n"
               "REDUCER-CONCENTRIC\n END-POINT 1152.4 152.4 0 100\n END-POINT 1152.4 254.4 0 50\n"
               "WELD\n CO-ORDS 0 0 0\nMESSAGE-CIRCLE\n CO-ORDS 0 0 0\n TEXT A 1\n");
  const HostRun run = runHost(folder, PIPING_PROGRAM, "in.pcf t");
  EXPECT_EQ(run.exitCode, 0) << run.err;
  const char* const expected[] = {
      "c 0 0 0,1000 0 0,114.3",
      "l pt 0 0 0,pt 1000 0 0",
      "t 1000 152.4 0,0 -152.4 0,152.4 0 0,114.3",
      "l pt 1000 0 0,pt 152.4 0 0",
      "l pt 1152.4 0 0,pt 0 152.4 0",
      "n 1152.4 152.4 0,0 102 0,114.3,60.3",
      "l pt 1152.4 152.4 0,pt 0 102 0",
      "l pt 0 0 0",
      "x 0 0 0,1 0 0,0 0 1,50,30,1,3",
      "x A 1",
  };
  const std::vector<std::string> records = recordsOf(folder.read("veskt.dat"));
  ASSERT_EQ(records.size(), std::size(expected));
  for (std::size_t i = 0; i < records.size(); ++i)
    EXPECT_TRUE(sameRecord(records[i], expected[i])) << records[i];
  EXPECT_EQ(linesOf(folder.read("veskt.dat"))[2].substr(0, 17), "P-1     01002    ");
}

TEST(Piping, BoresAreDiametersIfAskedFor) {
  const HostFolder folder;
  folder.write("in.pcf",
               "UNITS-BORE INCH\nPIPE\n    END-POINT 0 0 0 4\n    END-POINT 1000 0 0 4\n");
  runHost(folder, PIPING_PROGRAM, "--bore-as-diameter in.pcf t");
  // 4 x 25.4
  EXPECT_EQ(recordsOf(folder.read("veskt.dat"))[0], "c 0 0 0,1000 0 0,101.6");
}

struct CommandCase {
  const char* name;
  const char* arguments;
  int exitCode;
  const char* out;  // part of it
  const char* err;  // part of it
};

void PrintTo(const CommandCase& row, std::ostream* out) { *out << row.name; }

// clang-format off
const CommandCase kCommands[] = {
    {"Help", "--help", 0, "Usage: piping", ""},
    {"Nothing", "", 2, "", "expected the name of a file and the name of the output"},
    {"OneName", "good.pcf", 2, "", "expected the name of a file"},
    {"EmptyName", "good.pcf ''", 2, "", "expected the name of a file"},
    {"ThreeNames", "good.pcf t u", 2, "", "found a third: \"u\""},
    {"UnknownOption", "--fast good.pcf t", 2, "", "unknown option \"--fast\""},
    {"InputIsOutput", "vesksame.dat same", 2, "", "is both input and output"},
    {"Done", "good.pcf t", 0, "Written: veskt.dat\nElements: 1\nComponents: 1\n       1  WELD, drawn\n", ""},
    {"StandardInput", "- t <good.pcf", 0, "Written: veskt.dat\n", ""},
    {"StandardInputInMessages", "- t <odd.pcf", 1, "", "stdin:3: error: CO-ORDS: expected a number as x"},
    {"NoFile", "none.pcf t", 3, "", "none.pcf: error: cannot be read: "},
    {"Folder", ". t", 3, "", ".: error: cannot be read: "},
    {"EmptyFile", "/dev/null t", 3, "", "this is not a piping component file"},
    {"NoPipingFile", "letter.txt t", 3, "", "this is not a piping component file"},
    {"NoSuchFolderOfTheOutput", "good.pcf none/t", 4, "", "vesknone/t.dat: error: incomplete: "},
};
// clang-format on

class Commands : public testing::TestWithParam<CommandCase> {};

TEST_P(Commands, EndsSo) {
  const CommandCase& row = GetParam();
  const HostFolder folder;
  folder.write("good.pcf", "WELD\n    CO-ORDS 1 2 3\n");
  folder.write("odd.pcf", "WELD\n    CO-ORDS 1 2 3\n    CO-ORDS x\n");
  folder.write("vesksame.dat", "WELD\n    CO-ORDS 1 2 3\n");
  folder.write("letter.txt", "Dear all, please find below\nHello\n\nSincerely yours\n");
  const HostRun run = runHost(folder, PIPING_PROGRAM, row.arguments);
  EXPECT_EQ(run.exitCode, row.exitCode) << run.err;
  EXPECT_NE(run.out.find(row.out), std::string::npos) << run.out;
  EXPECT_NE(run.err.find(row.err), std::string::npos) << run.err;
  EXPECT_EQ(run.err.empty(), row.exitCode == 0) << run.err;
  // What is not drawn leaves no file behind.
  EXPECT_EQ(folder.has("veskt.dat"), row.exitCode < 2 && std::string(row.name) != "Help");
}

INSTANTIATE_TEST_SUITE_P(Piping, Commands, testing::ValuesIn(kCommands),
                         [](const auto& row) { return std::string(row.param.name); });

// A limit on the size of files stands in for a full disk: the library's writes fail
// and nobody hears of it. Windows has no such limit.
#ifndef _WIN32
TEST(Piping, FindsOutThatTheDiskRefused) {
  std::string text;
  for (int i = 0; i < 5000; ++i) text += "WELD\n CO-ORDS " + std::to_string(i) + " 2000 3000\n";
  const HostFolder folder;
  folder.write("in.pcf", text);
  // What counts its lines writes the counts under the limit too: not where those of
  // others are, which it would cut.
  const HostRun run = runHost(folder, PIPING_PROGRAM, "in.pcf t",
                              "trap '' XFSZ; ulimit -f 64; export GCOV_PREFIX=\"$PWD\";");
  EXPECT_EQ(run.exitCode, 4);
  EXPECT_NE(run.err.find("veskt.dat: error: incomplete: File too large"), std::string::npos)
      << run.err;
}
#endif

}  // namespace
