// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "commands/Command.h"
#include "findings/Catalogue.h"
#include "input/ReaderTesting.h"
#include "support/TempFolder.h"
#ifndef _WIN32
#include "support/JsonSchema.h"
#endif

using namespace Vesk;
using namespace VeskTool;

namespace {

using Json = nlohmann::json;

struct Outcome {
  int exit = 0;
  std::string out;
  std::string err;
};

// The command with these words.
Outcome runCommand(std::unique_ptr<Command> command, std::vector<std::string> words) {
  CLI::App app;
  command->define(app);
  std::reverse(words.begin(), words.end());
  app.parse(words);
  CommonOptions options;
  options.colour = "never";
  TextBuffer out;
  TextBuffer err;
  Progress progress("", Progress::Mode::kNever);
  Session session(options, out, err, progress);
  Outcome run;
  try {
    run.exit = static_cast<int>(command->run(session));
  } catch (const Failure& failure) {
    run.exit = static_cast<int>(failure.exit);
    err.write(failure.what());
  }
  run.out = out.text();
  run.err = err.text();
  return run;
}

Outcome check(std::vector<std::string> words) { return runCommand(makeCheck(), std::move(words)); }

std::string contentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

class CheckCommandTest : public testing::Test {
 protected:
  // The test's folder is the current one.
  static std::string write(const std::string& name, const std::string& text) {
    std::ofstream(name, std::ios::binary) << text;
    return name;
  }

  const std::string kCyl = tokenLine("00", "c ", "1 2 3,0 0 1000,200\n");
  const std::string kBad = tokenLine("00", "c ", "1 2 3,0 0 10x0,200\n");
  const std::string kShort = tokenLine("00", "c ", "1 2 3,0 0 0.001,200\n");

 private:
  VeskTest::TempFolder folder_;
};

TEST_F(CheckCommandTest, TextNamesPlaceLineAndCode) {
  const Outcome run = check({write("plant.dat", kCyl + kBad + kShort)});
  EXPECT_EQ(run.exit, 1);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out,
            "plant.dat:2:32-35: error: not a number in a cylinder: '10x0' [V021]\n"
            "  2 | AAAAAAAABB00ADDEE00c 1 2 3,0 0 10x0,200\n"
            "    |                                ^~~~\n"
            "  expected: a number\n"
            "plant.dat:3:28-36: warning: nothing to be seen: length is 0.001 [V103]\n"
            "  3 | AAAAAAAABB00ADDEE00c 1 2 3,0 0 0.001,200\n"
            "    |                            ^~~~~~~~~\n"
            "plant.dat: 1 error, 1 warning in 2 elements\n");
}

TEST_F(CheckCommandTest, ExitCodes) {
  const std::string clean = write("clean.dat", kCyl);
  const std::string bad = write("bad.dat", kBad + kCyl);
  const std::string odd = write("odd.dat", kShort);
  const std::string none = write("none.dat", "hello\n");
  const std::string empty = write("empty.dat", "");
  EXPECT_EQ(check({clean}).exit, 0);
  EXPECT_EQ(check({empty}).exit, 0);
  EXPECT_EQ(check({odd}).exit, 0);
  EXPECT_EQ(check({"--strict", odd}).exit, 1);
  EXPECT_EQ(check({bad}).exit, 1);
  EXPECT_EQ(check({none}).exit, 3);
  EXPECT_EQ(check({clean + "x"}).exit, 3);
  EXPECT_EQ(check({bad, none, clean}).exit, 3);
  EXPECT_EQ(check({"--only", "V9", clean}).exit, 2);
  EXPECT_EQ(check({"--ignore", "V021", bad}).exit, 0);
}

TEST_F(CheckCommandTest, SomeCodesOnly) {
  const std::string file = write("f.dat", kBad + kShort + kShort);
  const auto codes = [&](std::vector<std::string> words) {
    words.insert(words.end(), {"--json", file});
    std::string text;
    const Json document = Json::parse(check(words).out);
    for (const Json& finding : document["files"][0]["findings"]) {
      text += finding["code"].get<std::string>() + ' ';
    }
    return text;
  };
  EXPECT_EQ(codes({}), "V021 V103 V103 V204 ");
  EXPECT_EQ(codes({"--only", "V103"}), "V103 V103 ");
  EXPECT_EQ(codes({"--only", "v0,V2"}), "V021 V204 ");
  EXPECT_EQ(codes({"--ignore", "V1", "--ignore", "V021"}), "V204 ");
  EXPECT_EQ(codes({"--level", "error"}), "V021 ");
  EXPECT_EQ(codes({"--max", "1"}), "V021 V103 V204 ");
}

TEST_F(CheckCommandTest, MaxCountsWhatIsNotTold) {
  const Outcome run =
      check({"--max", "1", "--only", "V103", write("f.dat", kShort + kShort + kShort)});
  EXPECT_TRUE(
      run.out.ends_with("f.dat: 0 errors, 3 warnings in 3 elements\n"
                        "  2 more of V103\n"));
}

TEST_F(CheckCommandTest, ThreadsGiveTheSame) {
  std::vector<std::string> files;
  for (int i = 0; i < 8; ++i) {
    files.push_back(write("f" + std::to_string(i) + ".dat", i % 2 == 0 ? kCyl + kBad : kShort));
  }
  for (const char* format : {"text", "json", "sarif"}) {
    std::vector<std::string> words = files;
    words.insert(words.end(), {"--format", format});
    const Outcome one = check(words);
    words.insert(words.end(), {"-j", "4"});
    const Outcome four = check(words);
    EXPECT_EQ(one.exit, 1);
    EXPECT_EQ(four.exit, 1);
    EXPECT_EQ(one.out, four.out);
  }
}

TEST_F(CheckCommandTest, JsonFitsItsSchema) {
  const Outcome run =
      check({"--json", "--joints", "--max", "1", write("a.dat", kBad + kShort + kShort),
             write("b.dat", ""), write("c.dat", kCyl + "\n")});
  const Json document = Json::parse(run.out);
  const Json schema = Json::parse(contentOf(VESK_DOCS_DIR "/schema/check.json"));
#ifndef _WIN32
  EXPECT_EQ(schemaFault(document, schema), "");
#endif
  EXPECT_EQ(document["schema"], "vesk.check/1");
  EXPECT_EQ(document["files"].size(), 3u);
  EXPECT_EQ(document["files"][0]["untold"]["V103"], 1);
  EXPECT_EQ(document["files"][0]["findings"][0]["endColumn"], 35);
  EXPECT_EQ(document["errors"], 2);
  EXPECT_EQ(document["warnings"], 3);
  EXPECT_EQ(document["elements"], 3);
}

TEST_F(CheckCommandTest, SarifFitsItsSchema) {
  // Two bytes of a letter in the header are one character before the columns.
  std::string line = kBad;
  line.replace(0, 2, "\xc3\xbc");
  const Outcome run = check({"--format", "sarif", write("a b.dat", line), write("c.dat", kCyl)});
  const Json document = Json::parse(run.out);
  const Json schema = Json::parse(contentOf(VESK_DOCS_DIR "/schema/check-sarif.json"));
#ifndef _WIN32
  EXPECT_EQ(schemaFault(document, schema), "");
#endif
  const Json& result = document["runs"][0]["results"][0];
  EXPECT_EQ(result["ruleId"], "V021");
  const Json& place = result["locations"][0]["physicalLocation"];
  EXPECT_EQ(place["artifactLocation"]["uri"], "a%20b.dat");
  // Bytes 32 to 35, one less as characters; the end is the column behind.
  EXPECT_EQ(place["region"]["startColumn"], 31);
  EXPECT_EQ(place["region"]["endColumn"], 35);
  EXPECT_EQ(document["runs"][0]["results"].size(), 1u);
}

// A line of the token style with a counter of three digits.
std::string lineOf(const std::string& counter, const std::string& record) {
  std::string line = tokenLine("00", record.substr(0, 2), record.substr(2) + "\n");
  return line.replace(10, 3, counter);
}

struct BesideRow {
  const char* name;
  const char* rows;  // of the sidecar: first, last, component, skey
  std::vector<std::pair<const char*, const char*>> elements;
  std::string lines;  // "3 V204 " for each finding but those of open ends of pipes
};

// Pipes and discs 100 wide along x; supports are boxes.
const BesideRow kBeside[] = {
    {"TwiceIsToldOnceForAComponent",
     "1,1,TEE,\n2,2,TEE,\n",
     {{"001", "c 0 0 0,1000 0 0,100"},
      {"001", "c 500 0 0,0 0 300,60"},
      {"002", "c 0 0 0,1000 0 0,100"},
      {"002", "c 500 0 0,0 0 300,60"}},
     "3 V204 "},
    {"WithoutARowForEachElement",
     "9,9,TEE,\n",
     {{"001", "c 0 0 0,1000 0 0,100"},
      {"001", "c 500 0 0,0 0 300,60"},
      {"002", "c 0 0 0,1000 0 0,100"},
      {"002", "c 500 0 0,0 0 300,60"}},
     "3 V204 4 V204 "},
    {"WhatClosesALineIsNotOpen",
     "1,1,PIPE,\n2,2,FLANGE-BLIND,\n",
     {{"001", "c 0 0 0,1000 0 0,100"}, {"002", "c 1000 0 0,20 0 0,200"}},
     "1 V205 "},
    {"AFlangeIsOpen",
     "1,1,PIPE,\n2,2,FLANGE,\n",
     {{"001", "c 0 0 0,1000 0 0,100"}, {"002", "c 1000 0 0,20 0 0,200"}},
     "1 V205 2 V205 "},
    {"SupportsTwice",
     "1,1,SUPPORT,GUID\n2,2,SUPPORT,GUID\n",
     {{"001", "b 9 0 0,0 0 0,0 9 0,0 0 9"}, {"002", "b 9 0 0,6 0 0,0 9 0,0 0 9"}},
     "2 V208 "},
    {"SupportsTwiceAtOnePlaceAreNoElementsTwice",
     "1,1,SUPPORT,GUID\n2,2,SUPPORT,GUID\n",
     {{"001", "b 9 0 0,0 0 0,0 9 0,0 0 9"}, {"002", "b 9 0 0,0 0 0,0 9 0,0 0 9"}},
     "2 V208 "},
    {"SupportsOfTwoKinds",
     "1,1,SUPPORT,GUID\n2,2,SUPPORT,SHOE\n",
     {{"001", "b 9 0 0,0 0 0,0 9 0,0 0 9"}, {"002", "b 9 0 0,6 0 0,0 9 0,0 0 9"}},
     ""},
    {"SupportsFurtherApartThanTheReach",
     "1,1,SUPPORT,GUID\n2,2,SUPPORT,GUID\n",
     {{"001", "b 9 0 0,0 0 0,0 9 0,0 0 9"}, {"002", "b 9 0 0,11 0 0,0 9 0,0 0 9"}},
     ""},
};

TEST_F(CheckCommandTest, AttributesMakeComponentsOfElements) {
  for (const BesideRow& row : kBeside) {
    std::string text;
    for (const auto& [counter, record] : row.elements) text += lineOf(counter, record);
    // The key begins with the F1 and F2 of the first line.
    const std::string f1 = text.substr(0, 8).substr(0, text.substr(0, 8).find_last_not_of(' ') + 1);
    const std::string f2 = text.substr(8, 2).substr(0, text.substr(8, 2).find_last_not_of(' ') + 1);
    std::string sidecar = "f1,f2,first,last,component,skey\n";
    std::istringstream rows(row.rows);
    for (std::string line; std::getline(rows, line);) sidecar += f1 + ',' + f2 + ',' + line + '\n';
    write("plant.attributes.csv", sidecar);
    const Outcome run = check({"--json", "--joints", write("plant.dat", text)});
    std::string lines;
    const Json document = Json::parse(run.out);
    for (const Json& finding : document["files"][0]["findings"])
      lines += std::to_string(finding["line"].get<int>()) + ' ' +
               finding["code"].get<std::string>() + ' ';
    // Open ends of the tee and its twin are not what is asked here.
    if (std::string(row.name).find("Open") == std::string::npos) {
      std::string others;
      std::istringstream words(lines);
      for (std::string line, code; words >> line >> code;)
        if (code != "V205") others += line + ' ' + code + ' ';
      lines = others;
    }
    EXPECT_EQ(lines, row.lines) << row.name;
  }
}

TEST_F(CheckCommandTest, AttributesThatCantBeReadAreNamed) {
  write("plant.dat", kCyl);
  Outcome run = check({"--attributes", "no.csv", "plant.dat"});
  EXPECT_EQ(run.exit, 3);
  EXPECT_NE((run.out + run.err).find("no.csv"), std::string::npos);
  run = check({"--attributes", write("bad.csv", "a,b\n1,2\n"), "plant.dat"});
  EXPECT_EQ(run.exit, 3);
  run = check({"--attributes", "no.csv", "plant.dat", "plant.dat"});
  EXPECT_EQ(run.exit, 2);
  run = check({"--attributes", write("more.csv", "f1,f2,first,last\nX,Y,1,1\n"), "plant.dat"});
  EXPECT_EQ(run.exit, 0);
}

// The line of a joint is gone when it is told; its letters are counted before.
TEST_F(CheckCommandTest, SarifCountsLettersBeforeTheEndOfAPipe) {
  std::string next = tokenLine("00", "c ", "1 2 1003.5,0 0 1000,200\n");
  next.replace(0, 2, "\xc3\xbc");
  const Outcome run = check({"--joints", "--format", "sarif", write("a.dat", kCyl + next)});
  const Json document = Json::parse(run.out);
  const Json& result = document["runs"][0]["results"][0];
  EXPECT_EQ(result["ruleId"], "V201");
  // "1 2 1003.5" in bytes 22 to 31.
  const Json& region = result["locations"][0]["physicalLocation"]["region"];
  EXPECT_EQ(region["startColumn"], 21);
  EXPECT_EQ(region["endColumn"], 31);
}

TEST_F(CheckCommandTest, SarifSaysWhenAFileCouldNotBeRead) {
  const Outcome run = check({"--format", "sarif", write("c.dat", kCyl), "no/such.dat"});
  EXPECT_EQ(run.exit, 3);
  EXPECT_EQ(Json::parse(run.out)["runs"][0]["invocations"][0]["executionSuccessful"], false);
}

TEST_F(CheckCommandTest, ExplainKnowsEveryCode) {
  for (const CodeText& code : catalogue()) {
    const Outcome run = runCommand(makeExplain(), {std::string(code.code)});
    EXPECT_EQ(run.exit, 0);
    EXPECT_TRUE(run.out.starts_with(std::string(code.code) + ": " + std::string(code.title)));
    EXPECT_GT(code.meaning.size(), 30u) << code.code;
    EXPECT_GT(code.remedy.size(), 15u) << code.code;
  }
}

TEST(CatalogueTest, IsInOrder) {
  EXPECT_TRUE(std::is_sorted(catalogue().begin(), catalogue().end(),
                             [](const CodeText& a, const CodeText& b) { return a.code < b.code; }));
}

}  // namespace
