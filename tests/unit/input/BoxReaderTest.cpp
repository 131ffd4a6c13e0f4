// SPDX-License-Identifier: MIT
#include "input/ReaderTesting.h"
#include "vesk/Box.h"

using namespace Vesk;

namespace {

const std::string kFixed = fixedLine("60", "BOX", fields("1 1 1 11 1 1 1 21 1 1 1 31"));
const std::string kTokenRecord = tokenLine("00", "b ", "10 0 0,1 1 1,0 20 0,0 0 30");

void expectGeometry(const Box& box) {
  EXPECT_EQ(box.origin, GePoint(1, 1, 1));
  EXPECT_EQ(box.edge1, GeVector(10, 0, 0));
  EXPECT_EQ(box.edge2, GeVector(0, 20, 0));
  EXPECT_EQ(box.edge3, GeVector(0, 0, 30));
}

TEST(BoxReaderTest, ReadsItsGeometry) {
  expectGeometry(readFrom<Box>(kFixedColumns, {kFixed}));
  expectGeometry(readFrom<Box>(kTokens, {kTokenRecord}));
  expectGeometry(readFrom<Box>(kTokens, {kTokenRecord + ",ft 1,tk 2"}));
}

TEST(BoxReaderTest, ReadingReplacesTheMarks) {
  for (const std::int32_t mode : {kFixedColumns, kTokens}) {
    Box box;
    box.edges = {{"old", {{1, 2}}}};
    Input in({mode == kTokens ? kTokenRecord : kFixed}, mode);
    box.read(in);
    EXPECT_TRUE(box.edges.empty());
  }
}

struct MarkRow {
  const char* name;
  std::int32_t mode;
  Recs lines;  // behind the first
  std::vector<TagEntry> marks;
};

const MarkRow kMarks[] = {
    {"NamesOnOneLine",
     kFixedColumns,
     {fixedLine("63", "BOX", "    *left*right edge*")},
     {{"left", {}}, {"right edge", {}}}},
    {"EmptyName", kFixedColumns, {fixedLine("63", "BOX", "    **")}, {{"", {}}}},
    {"LinesWithValues",
     kFixedColumns,
     {fixedLine("63", "BOX", "    *a*"), fixedLine("64", "BOX", "    *b*" + fields("1 2.5")),
      fixedLine("64", "BOX", "    *c*" + fields("1 2 3 4"))},
     {{"a", {}}, {"b", {{1, 2.5}}}, {"c", {{1, 2}, {3, 4}}}}},
    {"NamesRunOnToLine64",
     kFixedColumns,
     {fixedLine("63", "BOX", "    *a*"), fixedLine("64", "BOX", "b*"),
      fixedLine("64", "BOX", "    *c*" + fields("1 2"))},
     {{"a", {}}, {"b", {}}, {"c", {{1, 2}}}}},
    {"ValuesRunOn",
     kFixedColumns,
     {fixedLine("64", "BOX", "    *b"), fixedLine("65", "BOX", "*" + fields("1")),
      fixedLine("66", "BOX", fields("2"))},
     {{"b", {{1, 2}}}}},
    {"Tokens",
     kTokens,
     {tokenLine("00", "be", "ed left,ed right 1 2.5 3 4")},
     {{"left", {}}, {"right", {{1, 2.5}, {3, 4}}}}},
    {"TokensOnTwoLines",
     kTokens,
     {tokenLine("00", "be", "ed left,"), tokenLine("01", "be", "ed right 1 2")},
     {{"left", {}}, {"right", {{1, 2}}}}},
    {"TokensBeforeClosingAttributes",
     kTokens,
     {tokenLine("00", "be", "ed a 1 2,ft 5,tk 6")},
     {{"a", {{1, 2}}}}},
    {"NamesWithBlanksAndDigits",
     kTokens,
     {tokenLine("00", "be", "ed my edge 7,ed 5 1 2,ed  3 4,ed ")},
     {{"my edge 7", {}}, {"5", {{1, 2}}}, {"", {{3, 4}}}, {"", {}}}},
    {"NameOfTwoNumbers", kTokens, {tokenLine("00", "be", "ed 1 2")}, {{"1 2", {}}}},
};

TEST(BoxReaderTest, ReadsItsMarks) {
  for (const MarkRow& row : kMarks) {
    Recs lines = row.lines;
    lines.insert(lines.begin(), row.mode == kTokens ? kTokenRecord : kFixed);
    const auto box = readFrom<Box>(row.mode, lines);
    expectGeometry(box);
    EXPECT_EQ(box.edges, row.marks) << row.name;
  }
}

TEST(BoxReaderTest, Failures) {
  expectFailures<Box>({
      {"AnotherStyle", kNoStyle, {"60"}, "1: box: wrong style, primitive box"},
      {"NoLine60",
       kFixedColumns,
       {fixedLine("61", "BOX", "")},
       "1: line \"60\" not found, primitive box"},
      {"NamesWithoutOpening",
       kFixedColumns,
       {kFixed, fixedLine("63", "BOX", "left*")},
       "1: bad line \"63\", primitive box"},
      {"NamesWithoutClosing",
       kFixedColumns,
       {kFixed, fixedLine("63", "BOX", "    *left")},
       "1: bad line \"63\", primitive box"},
      {"SecondBadNamesLine",
       kFixedColumns,
       {kFixed, fixedLine("63", "BOX", "    *left*"), fixedLine("63", "BOX", "right*")},
       "1: bad line \"63\", primitive box"},
      {"ValuesWithoutOpening",
       kFixedColumns,
       {kFixed, fixedLine("64", "BOX", "a*" + fields("1 2"))},
       "1: bad line \"64\", primitive box"},
      {"ValuesWithoutOpeningBehindNames",
       kFixedColumns,
       {kFixed, fixedLine("63", "BOX", "    *left*"), fixedLine("64", "BOX", "a*" + fields("1 2"))},
       "1: bad line \"64\", primitive box"},
      {"NameWithoutClosing",
       kFixedColumns,
       {kFixed, fixedLine("64", "BOX", "    *a" + fields("1 2"))},
       "1: bad line \"64\", primitive box"},
      {"NoValues",
       kFixedColumns,
       {kFixed, fixedLine("64", "BOX", "    *a*")},
       "1: bad line \"64\", primitive box"},
      {"HalfAPair",
       kFixedColumns,
       {kFixed, fixedLine("64", "BOX", "    *a*" + fields("1 2 3"))},
       "1: bad line \"64\", primitive box"},
      {"ValueIsNoNumber",
       kFixedColumns,
       {kFixed, fixedLine("64", "BOX", "    *a*" + fields("1 x"))},
       "1: bad line \"64\", primitive box"},
      {"UnknownTag",
       kTokens,
       {kTokenRecord, tokenLine("00", "be", "ed a,xy b 1 2")},
       "2: unknown tag xy, primitive box"},
      {"TagWithoutBlank",
       kTokens,
       {kTokenRecord, tokenLine("00", "be", "edge")},
       "2: unknown tag edge, primitive box"},
      {"NoPoint",
       kTokens,
       {tokenLine("00", "b ", "10 0 0,1 1 1,0 20 0,")},
       "1: Input: can't get double, primitive box"},
  });
}

}  // namespace
