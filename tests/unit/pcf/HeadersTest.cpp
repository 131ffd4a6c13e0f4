// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <set>

#include "pcf/Attributes.h"
#include "pcf/PcfRun.h"

// The header fields of components, and the rows of the sidecar.
namespace {

using Rows = std::vector<std::string>;

std::string weld(int x) { return "WELD\n    CO-ORDS " + std::to_string(x) + " 0 0\n"; }

// Eight characters of the reference, two of its place in the import, three of the
// component's in its file; before the first reference blanks and 00. A reference that
// comes again is the same line; a bolt takes a number though it draws nothing.
TEST(Headers, NameLineAndComponent) {
  const PcfRun run = runPcf(weld(0) + "PIPELINE-REFERENCE P-1\n" + weld(1) +
                            "PIPELINE-REFERENCE <LONG-REFERENCE 2>\nBOLT\n" + weld(2) +
                            "PIPELINE-REFERENCE P-1\n" + weld(3));
  EXPECT_EQ(run.headers, (Rows{"        00001    ", "P-1     01002    ", "LONG-REF02004    ",
                               "P-1     01005    "}));
}

TEST(Headers, GoOnBehindTheLargestCounterWithANewGroup) {
  std::string text = "PIPELINE-REFERENCE P\n";
  for (int i = 0; i < 46656; ++i) text += weld(i);
  text += "PIPELINE-REFERENCE Q\n" + weld(46656);
  const PcfRun run = runPcf(text);
  EXPECT_EQ(run.headers[46654], "P       01ZZZ    ");
  EXPECT_EQ(run.headers[46655], "P       03001    ");
  EXPECT_EQ(run.headers[46656], "Q       04002    ");
  EXPECT_EQ(std::set<std::string>(run.headers.begin(), run.headers.end()).size(), 46657U);
  EXPECT_EQ(run.messageText(), "");
}

TEST(Headers, OfManyFilesAreDifferent) {
  const std::string line = "PIPELINE-REFERENCE P-1\n" + weld(0);
  const PcfRun run =
      runPcf({{"a.pcf", line}, {"b.pcf", line}, {"c.pcf", weld(0)}, {"d.pcf", weld(0)}});
  EXPECT_EQ(run.headers, (Rows{"P-1     01001    ", "P-1     02001    ", "        03001    ",
                               "        04001    "}));
  EXPECT_EQ(run.rows[0].values.back(), "2");
  EXPECT_EQ(run.rows[1].f2, "02");
}

// 1295 groups for each F1, then another F1.
TEST(Headers, GoOnWhenTheGroupsOfALineAreUsedUp) {
  std::vector<std::pair<std::string, std::string>> files;
  for (int i = 0; i < 2592; ++i)
    files.emplace_back("f", "PIPELINE-REFERENCE SAME-LINE\n" + weld(i));
  const PcfRun run = runPcf(files);
  EXPECT_EQ(run.headers[0], "SAME-LIN01001    ");
  EXPECT_EQ(run.headers[1294], "SAME-LINZZ001    ");
  EXPECT_EQ(run.headers[1295], "SAME-~0101001    ");
  EXPECT_EQ(run.headers[2590], "SAME-~0201001    ");
  EXPECT_EQ(std::set<std::string>(run.headers.begin(), run.headers.end()).size(), 2592U);
}

TEST(Headers, AreCutBetweenCharacters) {
  const PcfRun run = runPcf("PIPELINE-REFERENCE ABCDEFG\xC3\x98\n" + weld(0));
  EXPECT_EQ(run.headers[0], "ABCDEFG 01001    ");
  EXPECT_EQ(run.rows[0].f1, "ABCDEFG");
}

TEST(Headers, OfAComponentMayNameAnotherLine) {
  const PcfRun run =
      runPcf("PIPELINE-REFERENCE P\nWELD\n    CO-ORDS 0 0 0\n    PIPELINE-REFERENCE Q\n" + weld(1));
  EXPECT_EQ(run.headers[0].substr(0, 8), "Q       ");
  EXPECT_EQ(run.headers[1].substr(0, 8), "P       ");
}

std::string valueOf(const PcfRun& run, std::size_t row, const std::string& column) {
  const std::vector<std::string> columns = Vesk::Pcf::sidecarColumns();
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (columns[i] == column) return run.rows.at(row).values[i];
  }
  return "no such column";
}

TEST(Rows, KeepWhatHeadersCannot) {
  const PcfRun run = runPcf(
      "PIPELINE-REFERENCE P-1001-6\"-A1A\n    PIPING-SPEC A1A\n"
      "PIPE\n    END-POINT 0 0 0 100\n    END-POINT 9 0 0 100\n    UCI 7!x\n    ITEM-CODE C-1\n"
      "    SKEY PIPW\n    WEIGHT 12.5\n    COMPONENT-ATTRIBUTE1 16 bar\n"
      "    COMPONENT-ATTRIBUTE97 REF\n    COMPONENT-IDENTIFIER 42\n    TAG T-1\n"
      "PIPE\n    END-POINT 9 0 0 100\n    END-POINT 20 0 0 100\n    MATERIAL-IDENTIFIER M-1\n"
      "    PIPING-SPEC B2\n    UNIQUE-COMPONENT-IDENTIFIER u\n"
      "PIPE\n    END-POINT 20 0 0 100\n    END-POINT 30 0 0 100\n    ITEM-CODE C-1\n"
      "    ITEM-DESCRIPTION its own\n"
      "MATERIALS\nITEM-CODE C-1\n    DESCRIPTION PIPE, SMLS\n"
      "MATERIAL-IDENTIFIER M-1\n    DESCRIPTION TUBE\n");
  const char* const expected[][2] = {{"pipeline", "P-1001-6\"-A1A"},
                                     {"component", "PIPE"},
                                     {"kind", "pipe"},
                                     {"component-identifier", "42"},
                                     {"uci", "7!x"},
                                     {"item-code", "C-1"},
                                     {"description", "PIPE, SMLS"},
                                     {"skey", "PIPW"},
                                     {"spec", "A1A"},
                                     {"weight", "12.5"},
                                     {"tag", "T-1"},
                                     {"attributes", "1=16 bar; 97=REF"},
                                     {"source", "in.pcf"},
                                     {"line", "3"}};
  for (const auto& [column, value] : expected) EXPECT_EQ(valueOf(run, 0, column), value) << column;
  EXPECT_EQ(valueOf(run, 1, "description"), "TUBE");
  EXPECT_EQ(valueOf(run, 1, "spec"), "B2");
  EXPECT_EQ(valueOf(run, 1, "uci"), "u");
  EXPECT_EQ(valueOf(run, 2, "description"), "its own");
}

// Whichever of its words stands first.
TEST(Rows, KeepTheFirstOfTwoValuesOfAColumn) {
  const PcfRun run = runPcf(
      "PIPE\n    END-POINT 0 0 0 100\n    END-POINT 9 0 0 100\n"
      "    ITEM-CODE C-1\n    ITEM-CODE C-2\n    UCI a\n    UNIQUE-COMPONENT-IDENTIFIER b\n"
      "    ITEM-DESCRIPTION long\n    DESCRIPTION short\n    NAME n\n    TAG t\n");
  EXPECT_EQ(valueOf(run, 0, "item-code"), "C-1");
  EXPECT_EQ(valueOf(run, 0, "uci"), "a");
  EXPECT_EQ(valueOf(run, 0, "description"), "long");
  EXPECT_EQ(valueOf(run, 0, "tag"), "n");
}

TEST(Rows, AreThereForWhatHasElements) {
  const PcfRun run =
      runPcf("BOLT\n    CO-ORDS 0 0 0\n" + weld(0) + "PIPE\n    END-POINT 0 0 0 100\n");
  ASSERT_EQ(run.rows.size(), 1U);
  EXPECT_EQ(run.rows[0].first, 2);
  EXPECT_EQ(run.rows[0].last, 2);
}

}  // namespace
