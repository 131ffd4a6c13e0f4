// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

#include "support/JsonSchema.h"
#include "support/TempFolder.h"
#include "tools/ToolRun.h"

namespace VeskTest {
namespace {

using Json = nlohmann::json;

Json schemaOf(const std::string& name) {
  std::ifstream file(std::string(VESK_SCHEMA_FOLDER) + "/" + name + ".json");
  return Json::parse(file);
}

struct SchemaCase {
  const char* name;
  const char* schema;
  const char* arguments;  // G is the folder of golden files
  int exit;
};

constexpr SchemaCase kCases[] = {
    {"Info", "info", "info --json Gpump.dat Gelements.columns.dat", 0},
    {"InfoHeaders", "info", "info --json --headers Gpump.dat", 0},
    {"InfoEmpty", "info", "info --json empty.dat", 0},
    {"InfoMissing", "info", "info --json none.dat", 3},
    {"List", "list", "list --json Gelements.tokens.dat", 0},
    {"ListNothing", "list", "list --json empty.dat", 0},
    {"ListOddBytes", "list", "list --json odd.dat", 0},
    {"Show", "show", "show --json Gelements.columns.dat:6", 0},
    {"ShowChosen", "show-list", "show --json Gelements.columns.dat --only box,pipe", 0},
    {"ShowDamaged", "show", "show --json bad.dat:1", 1},
    {"Measure", "measure", "measure --json --density 7850 Gpump.dat", 0},
    {"Check", "check", "check --json bad.dat odd.dat empty.dat", 1},
    {"CheckJoints", "check", "check --json --joints Gpump.dat", 0},
    {"CheckSarif", "check-sarif", "check --format sarif bad.dat odd.dat", 1},
    {"Diff", "diff", "diff --json Gpump.dat Gelements.tokens.dat", 1},
    {"DiffSame", "diff", "diff --json Gpump.dat Gpump.dat", 0},
    {"Clash", "clash", "clash --json --clearance 500 --between elements Gelements.tokens.dat", 1},
    {"ClashOfNothing", "clash", "clash --json Gpump.dat", 0},
    {"ClashSarif", "check-sarif",
     "clash --format sarif --clearance 500 --between elements Gelements.tokens.dat", 1},
    {"Export", "export", "export --report --json Gpump.dat", 0},
    {"ExportToAFile", "export", "export --report --json Gelements.tokens.dat -o x.stl", 0},
    {"ExportOfNothing", "export", "export --report --json empty.dat", 0},
    {"MeasureBy", "measure", "measure --json --by item --by kind --attributes rows.csv Gpump.dat",
     0},
    {"MeasureWalls", "measure", "measure --json --schedule 40 --units imperial Gpump.dat", 0},
    {"MeasureNotAll", "measure", "measure --json odd.dat none.dat", 3},
    {"ListWithAttributes", "list", "list --json --attributes rows.csv Gpump.dat", 0},
    {"ShowWithAttributes", "show", "show --json --attributes rows.csv Gpump.dat:1", 0},
    {"Import", "import", "import --json S -o pump.dat", 0},
    {"ListFiles", "list-files", "list --json Gpump.dat Gelements.columns.dat odd.dat", 0},
    {"DiffFolders", "diff-folders", "diff --json one two", 1},
    {"ImportReviewModel", "import-review", "import --json model.rvm -o model.dat", 0},
    {"InfoOfBothStyles", "info", "info --json --mixed two/mixed.dat", 0},
    {"CheckOfBothStyles", "check", "check --json --mixed two/mixed.dat", 0},
    {"Extract", "extract", "extract --json Gpump.dat Gpump.dat -o x.dat --only bend", 0},
    {"Split", "split", "split --json Gpump.dat --by kind -o parts", 0},
    {"SplitDry", "split", "split --json -n Gelements.tokens.dat --by size -o parts", 0},
    {"Merge", "merge", "merge --json Gpump.dat Gpump.dat -o x.dat", 0},
    {"Edit", "edit",
     "edit --json Gpump.dat -o x.dat --drop-duplicates --group P-1001-6 07 --renumber elements", 0},
    {"Explain", "explain", "explain --json", 0},
    {"Version", "version", "version --json", 0},
};

const std::string kPipe = "P-1     01001    00c 0 0 0,1000 0 0,100\n";
const std::string kFixedPipe =
    "60    01  P-1     001CYL    0.000    0.000    0.000 1000.000    0.000    0.000  100.000\n";

// A cylinder in a group.
const std::string kReviewModel =
    "HEAD\n 1 2\na plant\na note\ntoday\nsomeone\nMODL\n 1 1\nPROJECT\nMODEL\n"
    "CNTB\n 1 2\n/PLANT\n 0 0 0\n 9\n"
    "PRIM\n 1 1\n 8\n 0.001 0 0 168\n 0 0.001 0 155\n 0 0 0.001 49\n"
    " -725.7 -725.7 -67.45\n 725.7 725.7 67.45\n 725.7 134.9\n"
    "CNTE\n 1 1\nEND:\n 1 1\n";

class SchemaTest : public testing::TestWithParam<SchemaCase> {};

TEST_P(SchemaTest, DocumentKeepsIt) {
  const TempFolder folder;
  writeFile("empty.dat", "");
  writeFile("rows.csv", "f1,f2,first,last,item-code,description\nP-1001-6,01,1,9,C-1,PIPE\n");
  writeFile("odd.dat", "P-\xFF\xC3\xA4   01001    00c 0 0 0,0 0 1000,100\n");
  writeFile("bad.dat", "P-1     01001    00c 0 0 0,0 0 1000x,100\n");
  writeFile("model.rvm", kReviewModel);
  std::filesystem::create_directories("one");
  std::filesystem::create_directories("two");
  for (const char* name : {"one/pump.dat", "two/pump.dat", "one/only.dat"})
    std::filesystem::copy_file(golden("pump.dat"), name);
  writeFile("two/mixed.dat", kPipe + kFixedPipe);
  writeFile("one/mixed.dat", kPipe);
  const SchemaCase& each = GetParam();
  std::string arguments;
  for (const char* c = each.arguments; *c != '\0'; ++c) {
    if (*c == 'G') {
      arguments += golden("");
    } else if (*c == 'S') {
      arguments += VESK_PIPING_SAMPLE;
    } else {
      arguments += *c;
    }
  }
  const ToolRun run = runTool(arguments);
  EXPECT_EQ(run.exit, each.exit) << run.err;
  const Json document = Json::parse(run.out);
  EXPECT_EQ(schemaFault(document, schemaOf(each.schema)), "");
  EXPECT_TRUE(run.out.starts_with("{\n  \"schema\": ") ||
              run.out.starts_with("{\n  \"$schema\": "));
}

INSTANTIATE_TEST_SUITE_P(Json, SchemaTest, testing::ValuesIn(kCases),
                         [](const auto& each) { return std::string(each.param.name); });

void PrintTo(const SchemaCase& each, std::ostream* out) { *out << each.arguments; }

TEST(Schema, TellsADocumentThatBreaksIt) {
  const TempFolder folder;
  const Json schema = schemaOf("version");
  const Json good = Json::parse(
      R"({"schema":"vesk.version/1","version":"1","commit":null,"options":{},"libraries":[]})");
  EXPECT_EQ(schemaFault(good, schema), "");
  for (const char* patch : {R"({"schema":"vesk.version/2"})", R"({"libraries":null})",
                            R"({"version":1})", R"({"x":1})"}) {
    Json bad = good;
    bad.merge_patch(Json::parse(patch));
    EXPECT_NE(schemaFault(bad, schema), "") << patch;
  }
}

}  // namespace
}  // namespace VeskTest
