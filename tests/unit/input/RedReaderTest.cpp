// SPDX-License-Identifier: MIT
#include "input/ReaderTesting.h"
#include "vesk/Red.h"

using namespace Vesk;

namespace {

const std::string kLine60 = fixedLine("60", "RED", fields("1 0 0 11 0 0 1 10 0 11 10 0"));
const std::string kLine61 = fixedLine("61", "RED", fields("3 2 20 9 2 20 3 8 20 9 8 20"));
const std::string kTokenRecord =
    tokenLine("00", "r ", "1 0 0,10 0 0,0 10 0,10 10 0,2 2 20,8 2 20,2 8 20,8 8 20");

void expectGeometry(const Red& red) {
  const GePoint corners[] = {{1, 0, 0},  {11, 0, 0}, {1, 10, 0}, {11, 10, 0},
                             {3, 2, 20}, {9, 2, 20}, {3, 8, 20}, {9, 8, 20}};
  for (int k = 0; k < 8; ++k) EXPECT_EQ(red.corner(k), corners[k]) << k;
}

TEST(RedReaderTest, ReadsItsCorners) {
  expectGeometry(readFrom<Red>(kFixedColumns, {kLine60, kLine61}));
  expectGeometry(readFrom<Red>(kTokens, {kTokenRecord}));
}

TEST(RedReaderTest, ReadingReplacesTheTags) {
  Red red;
  red.tags = {{"old", {}}};
  Input in({kTokenRecord}, kTokens);
  red.read(in);
  EXPECT_TRUE(red.tags.empty());
}

struct TagRow {
  const char* name;
  std::int32_t mode;
  Recs lines;  // behind the corners
  std::vector<TagEntry> tags;
};

const TagRow kTags[] = {
    {"FixedColumns",
     kFixedColumns,
     {fixedLine("63", "RED", "    *x*y*"), fixedLine("64", "RED", "    *seam*" + fields("1 2.5"))},
     {{"x", {}}, {"y", {}}, {"seam", {{1, 2.5}}}}},
    {"LastWithoutValues",
     kTokens,
     {tokenLine("00", "re", "ed a 1 2,ed b")},
     {{"a", {{1, 2}}}, {"b", {}}}},
    {"LastWithOnePair", kTokens, {tokenLine("00", "re", "ed a 1 2")}, {{"a", {{1, 2}}}}},
    {"LastIsRepeated",
     kTokens,
     {tokenLine("00", "re", "ed b,ed a 1 2ed a 1 2 3 4ed a 1 2 3 4 5 6")},
     {{"b", {}}, {"a", {{1, 2}, {3, 4}, {5, 6}}}}},
    {"RepeatedOverLines",
     kTokens,
     {tokenLine("00", "re", "ed a 1 2"), tokenLine("01", "re", "ed a 1 2 3 4")},
     {{"a", {{1, 2}, {3, 4}}}}},
    {"RepeatedWithClosingAttributes",
     kTokens,
     {tokenLine("00", "re", "ed a 1 2ed a 1 2 3 4,tk 7")},
     {{"a", {{1, 2}, {3, 4}}}}},
    {"NameWithTheWordInIt",
     kTokens,
     {tokenLine("00", "re", "ed red hat 1 2ed red hat 1 2 3 4")},
     {{"red hat", {{1, 2}, {3, 4}}}}},
    {"NameWithNumbers",
     kTokens,
     {tokenLine("00", "re", "ed a 8 9 1 2ed a 8 9 1 2 3 4")},
     {{"a 8 9", {{1, 2}, {3, 4}}}}},
    {"SamePairTwice",
     kTokens,
     {tokenLine("00", "re", "ed  1 1ed  1 1 1 1")},
     {{"", {{1, 1}, {1, 1}}}}},
    {"NameThatIsTheWordItself",
     kTokens,
     {tokenLine("00", "re", "ed ed  0 -9000")},
     {{"ed ", {{0, -9000}}}}},
    {"NameThatIsTheWordItselfRepeated",
     kTokens,
     {tokenLine("00", "re", "ed ed  0 1ed ed  0 1 2 3")},
     {{"ed ", {{0, 1}, {2, 3}}}}},
    {"NotRepeated", kTokens, {tokenLine("00", "re", "ed a 1 2 3 4")}, {{"a", {{1, 2}, {3, 4}}}}},
};

TEST(RedReaderTest, ReadsItsTags) {
  for (const TagRow& row : kTags) {
    Recs lines = row.mode == kTokens ? Recs{kTokenRecord} : Recs{kLine60, kLine61};
    lines.insert(lines.end(), row.lines.begin(), row.lines.end());
    const auto red = readFrom<Red>(row.mode, lines);
    expectGeometry(red);
    EXPECT_EQ(red.tags, row.tags) << row.name;
  }
}

// In the time that a line of this length takes, not in that of its square.
TEST(RedReaderTest, LongTagsAreReadInOneGo) {
  std::string pairs;
  for (int i = 0; i < 1000000; ++i) pairs += " 1 2";
  std::string words;
  for (int i = 0; i < 2000000; ++i) words += "ed ";
  const auto withPairs =
      readFrom<Red>(kTokens, {kTokenRecord, tokenLine("00", "re", "ed a" + pairs)});
  EXPECT_EQ(withPairs.tags.at(0).values.size(), 1000000u);
  const auto withWords = readFrom<Red>(kTokens, {kTokenRecord, tokenLine("00", "re", words)});
  EXPECT_EQ(withWords.tags.at(0).name, words.substr(3));
}

TEST(RedReaderTest, Failures) {
  expectFailures<Red>({
      {"AnotherStyle", kNoStyle, {"60"}, "1: reducer: wrong style, primitive reducer"},
      {"NoLine60", kFixedColumns, {kLine61}, "1: line \"60\" not found, primitive reducer"},
      {"NoLine61", kFixedColumns, {kLine60}, "1: line \"61\" not found, primitive reducer"},
      {"BadLine63",
       kFixedColumns,
       {kLine60, kLine61, fixedLine("63", "RED", "x")},
       "1: bad line \"63\", primitive reducer"},
      {"BadLine64",
       kFixedColumns,
       {kLine60, kLine61, fixedLine("64", "RED", "    *x*")},
       "1: bad line \"64\", primitive reducer"},
      {"UnknownTag",
       kTokens,
       {kTokenRecord, tokenLine("00", "re", "xy a")},
       "2: unknown tag, primitive reducer"},
      {"CornerMissing",
       kTokens,
       {tokenLine("00", "r ", "1 0 0,10 0 0")},
       "1: Input: can't get double, primitive reducer"},
  });
}

}  // namespace
