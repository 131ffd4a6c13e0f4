// SPDX-License-Identifier: MIT
#include "vesk/RecordFile.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <system_error>

#include "input/LineReader.h"
#include "input/ReaderTesting.h"
#include "input/RecordHeading.h"
#include "input/RecordTesting.h"
#include "vesk/Box.h"
#include "vesk/Cyl.h"
#include "vesk/Txt.h"

using namespace Vesk;

namespace {

TEST(RecordHeadingTest, MakesThePrimitiveOfEachCode) {
  for (std::int32_t code = 1; code <= 9; ++code) EXPECT_EQ(makeGeo(code)->typeCode(), code);
  for (const std::int32_t code : {-1, 0, 10}) EXPECT_EQ(makeGeo(code), nullptr);
}

using Findings = std::vector<std::string>;

const std::string kCylTokens = tokenLine("00", "c ", "1 2 3,0 0 1000,200\n");
const std::string kCylColumns = fixedLine("60", "CYL", fields("1 2 3 1 2 13 4.5") + '\n');
const std::string kRed60 = fixedLine("60", "RED", fields("1 0 0 11 0 0 1 10 0 11 10 0") + '\n');
const std::string kRed61 = fixedLine("61", "RED", fields("3 2 20 9 2 20 3 8 20 9 8 20") + '\n');
const std::string kBoxTokens = tokenLine("00", "b ", "10 0 0,1 1 1,0 20 0,0 0 30\n");
const std::string kText70 = fixedLine("70", "TXT", fields("1 2 3 1 0 0 0 1 0 2.5 0.5 5") + '\n');
const std::string kText71 = fixedLine("71", "TXT", "\n");
const std::string kTextTokens = tokenLine("00", "x ", "1 2 3,1 0 0,0 1 0,2.5,0.5,5,2\n");

TEST(RecordFileTest, YieldsHeaderAttributesAndPrimitive) {
  const std::string text =
      "\n" + tokenLine("00", "c ", "cs A,sp b c,1 2 3,0 0 1000,200,ft 5,tk -6\n");
  RecordFile file(std::make_unique<TextSource>(text), "f");
  EXPECT_EQ(file.next(), RecordFile::Found::kFault);
  ASSERT_EQ(file.next(), RecordFile::Found::kElement);
  RecordElement& element = file.element();
  EXPECT_STREQ(element.header.f1.text(), "AAAAAAAA");
  EXPECT_STREQ(element.header.f2.text(), "BB");
  EXPECT_STREQ(element.header.f3.text(), "00A");
  EXPECT_STREQ(element.header.f4.text(), "DD");
  EXPECT_STREQ(element.header.f5.text(), "EE");
  EXPECT_STREQ(element.header.f6.text(), "A   ");
  EXPECT_STREQ(element.header.f7.text(), "b c               ");
  EXPECT_EQ(element.counter(), 10);
  EXPECT_EQ(element.ft, 5);
  EXPECT_EQ(element.tk, -6);
  EXPECT_EQ(element.keyword, "c ");
  EXPECT_EQ(element.firstLine, 2u);
  EXPECT_EQ(element.lastLine, 2u);
  EXPECT_EQ(element.offset, 1u);
  EXPECT_EQ(file.lines().size(), 1u);
  EXPECT_EQ(file.mode(), kTokens);
  ASSERT_EQ(element.geo->typeCode(), Cyl::kTypeCode);
  EXPECT_EQ(static_cast<Cyl*>(element.geo)->diameter, 200.0);
  EXPECT_EQ(file.next(), RecordFile::Found::kEnd);
  EXPECT_EQ(file.next(), RecordFile::Found::kEnd);
}

TEST(RecordFileTest, FixedColumnsKeepOtherFields) {
  RecordFile file(std::make_unique<TextSource>(kCylColumns), "f");
  ASSERT_EQ(file.next(), RecordFile::Found::kElement);
  const HeaderFields& header = file.element().header;
  EXPECT_STREQ(header.f6.text(), "CSCS");
  EXPECT_STREQ(header.f2.text(), "BB");
  EXPECT_STREQ(header.f4.text(), "DD");
  EXPECT_STREQ(header.f1.text(), "AAAAAAAA");
  EXPECT_STREQ(header.f3.text(), "00A");
  EXPECT_TRUE(header.f5.isBlank());
  EXPECT_TRUE(header.f7.isBlank());
  EXPECT_EQ(file.mode(), kFixedColumns);
}

struct FindingsRow {
  const char* name;
  std::string text;
  Findings found;
};

void PrintTo(const FindingsRow& row, std::ostream* out) { *out << row.name; }

// Made by hand from the layouts: what stands where, and what is wrong with it.
const FindingsRow kFiles[] = {
    {"Empty", "", {}},
    {"OneElement", kCylTokens, {"c  1-1"}},
    {"ElementsOfSeveralLines",
     kRed60 + kRed61 + kText70 + kText71 + fixedLine("72", "TXT", "  2ab\n"),
     {"RED 1-2", "TXT 3-5"}},
    {"TagLines",
     kRed60 + kRed61 + fixedLine("63", "RED", "    *a*\n") +
         fixedLine("64", "RED", "    *b*" + fields("1 2") + '\n') +
         fixedLine("64", "RED", "    *c*" + fields("1 2") + '\n') + kCylColumns,
     {"RED 1-5", "CYL 6-6"}},
    {"TagTokens",
     kBoxTokens + tokenLine("00", "be", "ed a,\n") + tokenLine("01", "be", "ed b\n") + kBoxTokens,
     {"b  1-3", "b  4-4"}},
    {"CrLf",
     tokenLine("00", "x ", "1 2 3,1 0 0,0 1 0,2.5,0.5,5,2\r\n") + tokenLine("01", "x ", "ab\r\n"),
     {"x  1-2"}},
    {"CrLfAndLf",
     tokenLine("00", "c ", "1 2 3,0 0 1000,200\r\n") + kCylTokens,
     {"c  1-1", "c  2-2"}},
    {"EmptyLines",
     "\n\n" + kCylTokens + "\n" + kCylTokens,
     {"f:1:1: no record; expected the first line of a record", "c  3-3",
      "f:4:1: empty line; expected the first line of a record", "c  5-5"}},
    {"NoRecordAtAll", "hello\nworld\n", {"f:1:1: no record; expected the first line of a record"}},
    {"UnknownKeyword",
     kCylColumns + fixedLine("60", "XYZ", "\n"),
     {"CYL 1-1", "f:2:22: unknown keyword \"XYZ\"; expected the first line of a record"}},
    {"UnknownTokenKeyword",
     kCylTokens + tokenLine("00", "q ", "1 2 3\n"),
     {"c  1-1", "f:2:20: unknown keyword \"q \"; expected the first line of a record"}},
    {"NoLineNumber",
     kCylColumns + "6x" + kCylColumns.substr(2),
     {"CYL 1-1", "f:2:1: no line number; expected the first line of a record"}},
    {"ShortLine",
     kCylTokens + tokenLine("00", "", "\n"),
     {"c  1-1", "f:2:20: no keyword; expected the first line of a record"}},
    {"FirstLineMissing",
     kCylColumns + kRed61 + kCylColumns,
     {"CYL 1-1", "f:2:1: line \"61\" without its first line; expected the first line of a record",
      "CYL 3-3"}},
    {"NumberDamaged",
     kCylTokens + tokenLine("00", "c ", "1 2x 3,0 0 1000,200\n") + kCylTokens,
     {"c  1-1",
      "f:2:24: Input: can't get double from expression \"2x\", primitive cylinder; expected a "
      "number",
      "c  3-3"}},
    {"FieldDamaged",
     fixedLine("60", "CYL", fields("1 2 3 1 2 13 4,5") + '\n') + kCylColumns,
     {"f:1:79: Input: can't get double from expression \"      4,5\", primitive cylinder; expected "
      "a number",
      "CYL 2-2"}},
    {"DamageOnTheSecondLine",
     kRed60 + fixedLine("61", "RED", fields("3 2 20 9 2 20 3 8 x 9 8 20") + '\n'),
     {"f:2:97: Input: can't get double from expression \"        x\", primitive reducer; expected "
      "a number"}},
    {"FieldMissing",
     fixedLine("60", "CYL", fields("1 2 3 1 2 13") + '\n'),
     {"f:1:79: 54 characters of numbers; expected 7 numbers of nine characters"}},
    {"FieldTooLong",
     fixedLine("60", "CYL", "1" + fields("1 2 3 1 2 13 4.5") + '\n'),
     {"f:1:89: 64 characters of numbers; expected 7 numbers of nine characters"}},
    {"NumberTooMany",
     kCylTokens.substr(0, kCylTokens.size() - 1) + ",7\n",
     {"f:1:41: text behind the record; expected ft, tk or nothing"}},
    {"UnknownTag",
     kBoxTokens + tokenLine("00", "be", "xy a\n"),
     {"f:2:22: unknown tag xy, primitive box; expected ed, ft or tk"}},
    {"UnknownTagBeginsItsLine",
     kBoxTokens + tokenLine("00", "be", "ed a,\n") + tokenLine("01", "be", "xy b\n"),
     {"f:3:22: unknown tag xy, primitive box; expected ed, ft or tk"}},
    {"UnknownTagWithinALaterLine",
     kBoxTokens + tokenLine("00", "be", "ed a,ed\n") + tokenLine("01", "be", " b,xy c\n"),
     {"f:3:25: unknown tag xy, primitive box; expected ed, ft or tk"}},
    {"TagMissingBehindTheLastComma",
     kBoxTokens + tokenLine("00", "be", "ed a,\n") + tokenLine("01", "be", "ed b,,ed c\n"),
     {"f:3:27: unknown tag , primitive box; expected ed, ft or tk"}},
    {"TagLineWithoutATag",
     kBoxTokens + tokenLine("00", "be", "\n"),
     {"f:2:22: unknown tag , primitive box; expected ed, ft or tk"}},
    {"TagMissingAtTheEnd",
     kBoxTokens + tokenLine("00", "be", "ed a,\n") + tokenLine("01", "be", "ed b,\n"),
     {"f:3:27: unknown tag , primitive box; expected ed, ft or tk"}},
    {"SecondPartMissing",
     kRed60 + kCylColumns,
     {"f:1:133: 108 characters of numbers; expected 24 numbers of nine characters", "CYL 2-2"}},
    {"SecondPartBetweenOthers",
     kRed60 + "x\n" + kRed61,
     {"f:1:133: 108 characters of numbers; expected 24 numbers of nine characters",
      "f:2:1: no line number; expected the first line of a record"}},
    {"LineMissingByNumber",
     kRed60 + fixedLine("62", "RED", fields("1") + '\n') + kCylColumns,
     {"f:2:1: line missing; expected line \"61\"", "CYL 3-3"}},
    {"LineMissingByNumberInTokens",
     tokenLine("00", "l ", "pt 1 2 3,\n") + tokenLine("02", "l ", "pt 1 2 3\n") +
         tokenLine("03", "l ", "x\n"),
     {"f:2:18: line missing; expected line \"01\""}},
    {"FirstLineMissingBehindTheSameHeader",
     kTextTokens + tokenLine("01", "x ", "ab\n") + tokenLine("01", "x ", "cd\n"),
     {"x  1-2", "f:3:18: line \"01\" without its first line; expected the first line of a record"}},
    {"FirstTagLineMissing",
     kBoxTokens + tokenLine("01", "be", "ed b\n"),
     {"f:2:18: line missing; expected line \"01\""}},
    {"LineOfAnotherHeader",
     kRed60 + "61XXXX" + kRed61.substr(6),
     {"f:1:133: 108 characters of numbers; expected 24 numbers of nine characters",
      "f:2:1: line \"61\" without its first line; expected the first line of a record"}},
    {"LastLineMissing",
     tokenLine("00", "l ", "pt 1 2 3,\n") + kCylTokens,
     {"f:1:31: line missing; expected a further value", "c  2-2"}},
    {"AttributeValueMissing",
     tokenLine("00", "c ", "1 2 3,0 0 1,2,ft \n"),
     {"f:1:39: line missing; expected a further value"}},
    {"TextLineMissing",
     kTextTokens + kCylTokens,
     {"f:1:51: Input: can't get string value, primitive text; expected a further value", "c  2-2"}},
    {"TextLine72Missing",
     kText70 + kText71 + kCylColumns,
     {"f:2:25: line \"72\" not found, primitive text; expected line \"72\"", "CYL 3-3"}},
    {"TextTooShort",
     kTextTokens + tokenLine("01", "x ", "a\n"),
     {"f:2:22: text of 1 characters; expected as many characters as its length says"}},
    {"TextWithALineEnd",
     kText70 + kText71 + fixedLine("72", "TXT", "  3a\n") + "b\n",
     {"f:3:25: text of 1 characters; expected as many characters as its length says",
      "f:4:1: no line number; expected the first line of a record"}},
    {"TwoVertices",
     tokenLine("00", "g ", "pt 1 2 3,pt 1 0 0\n"),
     {"f:1:39: pgon: less than 3 vertices; expected a further point"}},
    {"PolylineWithoutVertices", tokenLine("00", "l ", "cs a,\n"), {"l  1-1"}},
    {"NulInTheHeader",
     "AAA" + std::string(1, '\0') + kCylTokens.substr(4) + kCylTokens,
     {"f:1:4: NUL character; expected a header field", "c  2-2"}},
    {"NulInANumber",
     tokenLine("00", "c ", "1 2 3,0 0 1" + std::string(1, '\0') + ",2\n"),
     {"f:1:32: Input: can't get double from expression \"1" + std::string(1, '\0') +
      "\", primitive cylinder; expected a number"}},
    {"CutInANumber",
     kCylTokens + kCylTokens.substr(0, 30),
     {"c  1-1", "f:2:31: file cut off; expected the end of the line"}},
    {"CutBeforeTheLineEnd",
     kCylTokens + kCylTokens.substr(0, kCylTokens.size() - 1),
     {"c  1-1", "f:2:40: file cut off; expected the end of the line"}},
    {"CutInTheSecondLine",
     kRed60 + kRed61.substr(0, 60),
     {"f:2:61: file cut off; expected the end of the line"}},
    {"CutBehindTheFirstCharacter",
     kCylColumns + "6",
     {"CYL 1-1", "f:2:2: file cut off; expected the end of the line"}},
    {"CutWhereTagsMayFollow",
     kRed60 + kRed61 + "6",
     {"f:3:2: file cut off; expected the end of the line"}},
    {"CutWhereNoTagsFollow",
     kRed60 + kRed61 + "60",
     {"RED 1-2", "f:3:3: file cut off; expected the end of the line"}},
    {"CutInTags",
     kBoxTokens + tokenLine("00", "be", "ed"),
     {"f:2:24: file cut off; expected the end of the line"}},
    {"CutInTheSecondLineOfAPolyline",
     tokenLine("00", "l ", "\n") + tokenLine("01", "l ", "").substr(0, 18),
     {"f:2:19: file cut off; expected the end of the line"}},
    {"CutElsewhere",
     kCylTokens + "xyz",
     {"c  1-1", "f:2:4: file cut off; expected the end of the line"}},
};

class RecordFileFindings : public testing::TestWithParam<FindingsRow> {};

TEST_P(RecordFileFindings, AreThese) { EXPECT_EQ(findings(GetParam().text), GetParam().found); }

TEST_P(RecordFileFindings, DoNotDependOnThePieces) {
  for (const std::size_t size : {1u, 7u}) {
    RecordFile file(std::make_unique<PieceSource>(GetParam().text, size), "f");
    EXPECT_EQ(findings(file), GetParam().found) << size;
  }
}

INSTANTIATE_TEST_SUITE_P(Files, RecordFileFindings, testing::ValuesIn(kFiles),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(RecordFileTest, UnknownTagKeepsItsLevel) {
  const std::string text = kBoxTokens + tokenLine("00", "be", "xy a\n");
  RecordFile file(std::make_unique<TextSource>(text), "f");
  ASSERT_EQ(file.next(), RecordFile::Found::kFault);
  EXPECT_EQ(file.fault().level, 2);
  EXPECT_EQ(file.fault().kind, RecordFault::Kind::kDamaged);
  EXPECT_EQ(file.fault().firstLine, 1u);
  EXPECT_EQ(file.fault().lastLine, 2u);
  EXPECT_EQ(file.lines().size(), 2u);
}

TEST(RecordFileTest, StrayLinesGiveTheFirst) {
  const std::string text = kCylTokens + "one\ntwo\n" + kCylTokens;
  RecordFile file(std::make_unique<TextSource>(text), "f");
  ASSERT_EQ(file.next(), RecordFile::Found::kElement);
  ASSERT_EQ(file.next(), RecordFile::Found::kFault);
  EXPECT_EQ(file.fault().kind, RecordFault::Kind::kStray);
  EXPECT_EQ(file.fault().lastLine, 3u);
  EXPECT_EQ(file.lines(), Recs{"one"});
}

TEST(RecordFileTest, TextKeepsTheReturnThatItEndsWith) {
  const std::string tokens = tokenLine("00", "x ", "1 2 3,1 0 0,0 1 0,2.5,0.5,5,3\n");
  const std::string rows[] = {
      tokens + tokenLine("01", "x ", "ab\r\n"),
      tokens.substr(0, tokens.size() - 1) + "\r\n" + tokenLine("01", "x ", "ab\r\r\n"),
      kText70 + kText71 + fixedLine("72", "TXT", "  3ab\r\n"),
  };
  for (const std::string& row : rows) {
    const std::string text = row + kCylTokens;
    RecordFile file(std::make_unique<TextSource>(text), "f");
    ASSERT_EQ(file.next(), RecordFile::Found::kElement) << row;
    EXPECT_EQ(static_cast<Txt*>(file.element().geo)->text, "ab\r") << row;
    EXPECT_EQ(file.lines().back().back(), '\r') << row;
  }
  // A character that is missing where the lines end with CR LF stays missing.
  const std::string crLf = tokens.substr(0, tokens.size() - 1) + "\r\n";
  EXPECT_EQ(findings(crLf + tokenLine("01", "x ", "ab\r\n")),
            Findings{"f:2:22: text of 2 characters; expected as many characters as its length "
                     "says"});
}

TEST(RecordFileTest, CutOffLineIsTakenOnDemand) {
  const std::string text = kCylTokens.substr(0, kCylTokens.size() - 2);
  RecordFile file(std::make_unique<TextSource>(text), "f", {0, true});
  ASSERT_EQ(file.next(), RecordFile::Found::kElement);
  EXPECT_TRUE(file.element().isCutOff);
  EXPECT_EQ(static_cast<Cyl*>(file.element().geo)->diameter, 20.0);
  EXPECT_EQ(findings(kRed60 + kRed61.substr(0, kRed61.size() - 1), {0, true}), Findings{"RED 1-2"});
  EXPECT_EQ(
      findings(kCylTokens.substr(0, 25), {0, true}),
      Findings{
          "f:1:26: Input: can't get string value, primitive cylinder; expected a further value"});
}

TEST(RecordFileTest, StyleIsFoundBehindStrayLines) {
  EXPECT_EQ(findings("x\n\n" + kCylColumns),
            (Findings{"f:1:1: no record; expected the first line of a record", "CYL 3-3"}));
}

// f1 = "......60" and f3 = "0c " make a mode 2 line look like one of mode 3.
TEST(RecordFileTest, HostileHeadersDoNotHideTheStyle) {
  const std::string columns = "60CSCSBBDDAAAAAAA00c CYL" + fields("1 2 3 1 2 13 4.5") + '\n';
  ASSERT_NE(kindOfFirstLine(columns, kFixedColumns), nullptr);
  ASSERT_NE(kindOfFirstLine(columns, kTokens), nullptr);
  EXPECT_EQ(findings(columns), Findings{"CYL 1-1"});
  // A text line that looks like a cylinder of mode 2, in front of a file that
  // lost its beginning.
  const std::string text = "60AAAAAABB00ADDEE01x CYL" + fields("1 2 3 1 2 13 4.5") + '\n';
  ASSERT_NE(kindOfFirstLine("60AAAAAABB00ADDEE01x CYL", kFixedColumns), nullptr);
  EXPECT_EQ(
      findings(text + kCylTokens + kCylTokens),
      (Findings{"f:1:18: line \"01\" without its first line; expected the first line of a record",
                "c  2-2", "c  3-3"}));
}

TEST(RecordFileTest, StyleCanBeForced) {
  EXPECT_EQ(findings(kCylTokens, {kFixedColumns, false}),
            Findings{"f:1:1: no line number; expected the first line of a record"});
  EXPECT_EQ(findings(kCylColumns, {kFixedColumns, false}), Findings{"CYL 1-1"});
}

struct JoinedRow {
  const char* name;
  std::string text;
  Findings found;
};

void PrintTo(const JoinedRow& row, std::ostream* out) { *out << row.name; }

const std::string kCylBroken = fixedLine("60", "CYL", fields("1 2 3 1 2 13") + "x\n");

// Files of both styles, joined; what each line is follows from the layouts.
const JoinedRow kJoined[] = {
    {"TokensThenColumns", kCylTokens + kCylColumns, {"c  1-1", "CYL 2-2"}},
    {"ColumnsThenTokens", kCylColumns + kCylTokens, {"CYL 1-1", "c  2-2"}},
    {"ThereAndBack",
     kRed60 + kRed61 + kBoxTokens + kCylColumns + kTextTokens + tokenLine("01", "x ", "ab\n") +
         kRed60 + kRed61,
     {"RED 1-2", "b  3-3", "CYL 4-4", "x  5-6", "RED 7-8"}},
    {"BehindTagLines",
     kBoxTokens + tokenLine("00", "be", "ed a\n") + kRed60 + kRed61 +
         fixedLine("63", "RED", "    *a*\n") + kBoxTokens,
     {"b  1-2", "RED 3-5", "b  6-6"}},
    {"BehindStrayLines",
     kCylTokens + "x\n\n" + kCylColumns,
     {"c  1-1", "f:2:2: no line number; expected the first line of a record", "CYL 4-4"}},
    {"DamagedAtTheSeam",
     kCylTokens + kCylBroken + kCylColumns,
     {"c  1-1", "f:2:80: 55 characters of numbers; expected 7 numbers of nine characters",
      "CYL 3-3"}},
    {"CutOff",
     kCylTokens + kCylColumns.substr(0, kCylColumns.size() - 1),
     {"c  1-1", "f:2:88: file cut off; expected the end of the line"}},
};

class JoinedFiles : public testing::TestWithParam<JoinedRow> {};

TEST_P(JoinedFiles, AreReadInBothStyles) {
  const JoinedRow& row = GetParam();
  EXPECT_EQ(findings(row.text, {.bothStyles = true}), row.found);
  RecordOptions options;
  options.bothStyles = true;
  for (const std::size_t size : {1u, 7u, 4096u}) {
    RecordFile file(std::make_unique<PieceSource>(row.text, size), "f", options);
    EXPECT_EQ(findings(file), row.found);
  }
}

INSTANTIATE_TEST_SUITE_P(RecordFileTest, JoinedFiles, testing::ValuesIn(kJoined),
                         [](const auto& each) { return each.param.name; });

TEST(RecordFileTest, JoinedFileHasTheStyleOfWhatWasFound) {
  const std::string text = kCylTokens + kCylColumns + kCylTokens;
  RecordFile file(std::make_unique<TextSource>(text), "f", {.bothStyles = true});
  for (const std::int32_t mode : {kTokens, kFixedColumns, kTokens}) {
    ASSERT_EQ(file.next(), RecordFile::Found::kElement);
    EXPECT_EQ(file.mode(), mode);
    EXPECT_EQ(static_cast<Cyl*>(file.element().geo)->diameter, mode == kTokens ? 200.0 : 4.5);
  }
  EXPECT_EQ(file.next(), RecordFile::Found::kEnd);
}

TEST(RecordFileTest, ReadsFromPathsAndStreams) {
  const auto path =
      (std::filesystem::temp_directory_path() /
       ("RecordFileTest" + std::to_string(std::hash<std::string>()(testing::TempDir()))))
          .string();
  std::ofstream(path, std::ios::binary) << kCylTokens;
  {
    RecordFile file(path);
    EXPECT_EQ(file.next(), RecordFile::Found::kElement);
    EXPECT_EQ(file.next(), RecordFile::Found::kEnd);
    EXPECT_EQ(file.error(), "");
    EXPECT_EQ(file.name(), path);
  }
  std::remove(path.c_str());
  std::istringstream stream(kCylTokens);
  RecordFile file(stream, "stream");
  EXPECT_EQ(findings(file), Findings{"c  1-1"});
}

TEST(RecordFileTest, FileThatCannotBeOpenedHasNoElements) {
  RecordFile file("no/such/folder/file.dat");
  EXPECT_EQ(file.next(), RecordFile::Found::kEnd);
  EXPECT_NE(file.error(), "");
}

#ifdef __linux__
// Three lines, of which the second can't be read at the first attempt.
ssize_t readWithAFault(void* cookie, char* buffer, size_t size) {
  int& calls = *static_cast<int*>(cookie);
  const std::string line = "P-1     0100" + std::to_string(++calls) + "    00c 0 0 0,0 0 10,5\n";
  if (calls == 2) {
    errno = EIO;
    return -1;
  }
  return calls > 3 ? 0 : static_cast<ssize_t>(line.copy(buffer, size));
}

TEST(RecordFileTest, NothingIsReadBehindAnError) {
  int calls = 0;
  std::FILE* stream = fopencookie(&calls, "rb", {readWithAFault, nullptr, nullptr, nullptr});
  ASSERT_NE(stream, nullptr);
  RecordFile file(std::make_unique<FileSource>(stream), "f");
  EXPECT_EQ(file.next(), RecordFile::Found::kElement);
  EXPECT_EQ(file.next(), RecordFile::Found::kEnd);
  EXPECT_EQ(file.next(), RecordFile::Found::kEnd);
  EXPECT_EQ(file.error(), std::generic_category().message(EIO));
  EXPECT_EQ(calls, 2);
  std::fclose(stream);
}
#endif

TEST(RecordFileTest, LinesOfAnyLengthAreWhole) {
  const std::string text(300000, 'a');
  const std::string file = tokenLine("00", "x ", "1 2 3,1 0 0,0 1 0,2.5,0.5,5,300000\n") +
                           tokenLine("01", "x ", text + "\n") + kCylTokens;
  RecordFile reader(std::make_unique<PieceSource>(file, 100000), "f");
  ASSERT_EQ(reader.next(), RecordFile::Found::kElement);
  EXPECT_EQ(static_cast<Txt*>(reader.element().geo)->text, text);
  ASSERT_EQ(reader.next(), RecordFile::Found::kElement);
  EXPECT_EQ(reader.element().offset, file.size() - kCylTokens.size());
  EXPECT_EQ(reader.next(), RecordFile::Found::kEnd);
}

TEST(RecordFileTest, ManyElementsPassTheBlock) {
  std::string text;
  while (text.size() < 3 * LineReader::kBlockSize) text += kCylTokens;
  RecordFile file(std::make_unique<TextSource>(text), "f");
  std::uint64_t count = 0;
  while (file.next() == RecordFile::Found::kElement) {
    EXPECT_EQ(file.element().offset, count * kCylTokens.size());
    ++count;
  }
  EXPECT_EQ(count, text.size() / kCylTokens.size());
}

}  // namespace
