// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>

#include "findings/Catalogue.h"
#include "findings/Findings.h"
#include "input/LineReader.h"
#include "input/ReadFailure.h"
#include "input/ReaderTesting.h"
#include "vesk/Cyl.h"
#include "vesk/RecordFile.h"

using namespace Vesk;
using namespace VeskTool;

namespace {

std::string columns(const std::string& keyword, const std::string& numbers) {
  return fixedLine("60", keyword, fields(numbers) + '\n');
}

std::string tokens(const std::string& keyword, const std::string& data) {
  return tokenLine("00", keyword, data + '\n');
}

const std::string kCyl = tokens("c ", "1 2 3,0 0 1000,200");
const std::string kBox = tokens("b ", "10 0 0,1 1 1,0 20 0,0 0 30");
const std::string kRed = tokens("r ", "1 0 0,1 0 0,0 1 0,1 1 0,0 0 1,1 0 1,0 1 1,1 1 1");
const std::string kBoxColumns = columns("BOX", "0 0 0 1 0 0 0 1 0 0 0 1");
const std::string kText = tokens("x ", "1 2 3,1 0 0,0 1 0,2.5,0.5,5,2");

struct Row {
  ReadCause cause;
  const char* name;
  std::string text;  // of a file; its first fault counts
  std::string token;
  std::string code;
  std::string message;
  std::string expected;
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }

// What the words of a message may be, tests of the readers say too.
const Row kRows[] = {
    {ReadCause::kNoNumber, "CommaInANumber", columns("CYL", "1 2 3 1 2 13 4,5"), "      4,5",
     "V021", "Input: can't get double from expression \"      4,5\", primitive cylinder",
     "a number"},
    {ReadCause::kNotInt, "ArcOutOfRange", tokens("l ", "pt 1 2 3,ar 1 2 3 1e10"), "", "V022",
     "Input: number out of range, primitive polyline", "a whole number of 32 bits"},
    {ReadCause::kNoPoint, "PointMissing", tokens("t ", "1 0 0,100 0 0"), "", "V023",
     "Input: can't get double, primitive torus", "a point"},
    {ReadCause::kNoValue, "TextMissing", kText, "", "V023",
     "Input: can't get string value, primitive text", "a further value"},
    {ReadCause::kNoDirection, "ElbowPointOnItsAxis",
     columns("ELB", "0 0 10 0 0 0 0 0 10 0 50 10") + fixedLine("61", "ELB", fields("30") + '\n'),
     "Direction should not be Null or Infinity", "V030",
     "Direction should not be Null or Infinity, primitive relbow", "points that differ"},
    {ReadCause::kNoLine, "ThirdLineOfATextMissing",
     fixedLine("70", "TXT", fields("1 2 3 1 0 0 0 1 0 2.5 0.5 5") + '\n') +
         fixedLine("71", "TXT", "\n"),
     "72", "V012", "line \"72\" not found, primitive text", "line \"72\""},
    {ReadCause::kLineSkipped, "LineLeftOut",
     tokens("l ", "pt 1 2 3,") + tokenLine("02", "l ", "pt 1 2 3\n"), "01", "V012", "line missing",
     "line \"01\""},
    {ReadCause::kLineMissing, "EndsWithAComma", tokens("l ", "pt 1 2 3,"), "", "V012",
     "line missing", "a further value"},
    {ReadCause::kBadNames, "NameWithoutItsAsterisk",
     kBoxColumns + fixedLine("63", "BOX", "    *a\n"), "63", "V024",
     "bad line \"63\", primitive box", "names, an asterisk behind each"},
    {ReadCause::kBadValues, "ValuesWithoutNumbers",
     kBoxColumns + fixedLine("64", "BOX", "    *a*\n"), "64", "V024",
     "bad line \"64\", primitive box", "a name, an asterisk and pairs of numbers"},
    {ReadCause::kUnknownMark, "MarkOfABox", kBox + tokenLine("00", "be", "xy a\n"), "xy", "V025",
     "unknown tag xy, primitive box", "ed, ft or tk"},
    {ReadCause::kUnknownMark, "MarkInQuotes", kBox + tokenLine("00", "be", "\"x a\n"), "\"x",
     "V025", "unknown tag \"x, primitive box", "ed, ft or tk"},
    {ReadCause::kUnknownTag, "TagOfAReducer", kRed + tokenLine("00", "re", "xy a\n"), "xy", "V025",
     "unknown tag, primitive reducer", "ed, ft or tk"},
    {ReadCause::kUnknownWord, "WordOfAPolygon", tokens("g ", "pt 1 2 3,qq 1"), "qq", "V025",
     "unknown tag \"qq\", primitive triangle", "pt, vn, ar, ft or tk"},
    {ReadCause::kUnknownPlineWord, "WordOfAPolyline", tokens("l ", "pt 1 2 3,qq 1"), "qq", "V025",
     "Pline: unknown identifier \"qq\", primitive polyline", "pt, ar, ft or tk"},
    {ReadCause::kNoWord, "DigitInAPolygon", tokens("g ", "1 2 3"), "", "V025",
     "identifier expected, primitive triangle", "pt, vn, ar, ft or tk"},
    {ReadCause::kNoPlineWord, "DigitInAPolyline", tokens("l ", "1 2 3"), "", "V020",
     "Pline: wrong style, primitive polyline", "pt, ar, ft or tk"},
    {ReadCause::kTooFewVertices, "TwoVertices", tokens("g ", "pt 1 2 3,pt 1 0 0"), "", "V029",
     "pgon: less than 3 vertices", "a further point"},
    {ReadCause::kTextLength, "TextTooShort", kText + tokenLine("01", "x ", "a\n"), "1", "V028",
     "text of 1 characters", "as many characters as its length says"},
    {ReadCause::kNumbersLength, "FieldMissing", columns("CYL", "1 2 3 1 2 13"), "54", "V023",
     "54 characters of numbers", "7 numbers of nine characters"},
    {ReadCause::kTextBehind, "NumberTooMany", tokens("c ", "1 2 3,0 0 1000,200,7"), "", "V027",
     "text behind the record", "ft, tk or nothing"},
    {ReadCause::kNulInHeader, "NulInTheHeader", "AAA" + std::string(1, '\0') + kCyl.substr(4), "",
     "V026", "NUL character", "a header field"},
    {ReadCause::kNoRecord, "NoRecordAtAll", "hello\n", "", "V011", "no record",
     "the first line of a record"},
    {ReadCause::kEmptyLine, "EmptyLine", kCyl + '\n', "", "V017", "empty line",
     "the first line of a record"},
    {ReadCause::kNoLineNumber, "LetterInTheLineNumber", kCyl + tokenLine("0x", "c ", "1\n"), "",
     "V016", "no line number", "the first line of a record"},
    {ReadCause::kNoKeyword, "LineEndsBeforeItsKeyword", kCyl + tokenLine("00", "", "\n"), "",
     "V015", "no keyword", "the first line of a record"},
    {ReadCause::kUnknownKeyword, "KeywordOfNoKind", kCyl + tokens("q ", "1 2 3"), "q ", "V015",
     "unknown keyword \"q \"", "the first line of a record"},
    {ReadCause::kStrayLine, "FirstLineMissing", kBox + tokenLine("01", "c ", "1\n"), "01", "V012",
     "line \"01\" without its first line", "the first line of a record"},
    {ReadCause::kLineTooLong, "LineWithoutAnEnd",
     kCyl + std::string(LineReader::kLongestLine + 1, 'x') + '\n', "", "V013",
     "line too long for a record", "the first line of a record"},
    {ReadCause::kCutOff, "LastLineWithoutAnEnd", kCyl + kCyl.substr(0, 30), "", "V014",
     "file cut off", "the end of the line"},
};

class CausesTest : public testing::TestWithParam<Row> {};

TEST_P(CausesTest, GiveCodeAndMessage) {
  const Row& row = GetParam();
  RecordFile file(std::make_unique<TextSource>(row.text), "f");
  RecordFile::Found found = file.next();
  while (found == RecordFile::Found::kElement) found = file.next();
  ASSERT_EQ(found, RecordFile::Found::kFault);
  const RecordFault& fault = file.fault();
  EXPECT_EQ(fault.cause, row.cause);
  EXPECT_EQ(fault.token, row.token);
  EXPECT_EQ(fault.message, row.message);
  EXPECT_EQ(fault.expected, row.expected);
  EXPECT_EQ(findingOf(file).code, row.code);
}

INSTANTIATE_TEST_SUITE_P(Files, CausesTest, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

// No file leads to these: a style that a file can't have, a field that the length of its
// numbers has ruled out, a kernel that refuses more than a direction.
const Row kOthers[] = {
    {ReadCause::kShortField, "FieldCutOff", "", "", "V023",
     "Input: can't get string value of specified length", "a field of nine characters"},
    {ReadCause::kKernel, "KernelRefuses", "", "General error", "V020", "General error",
     "a record as it is written"},
    {ReadCause::kWrongStyle, "NoStyleOfABox", "", "box", "V020", "box: wrong style",
     "a record as it is written"},
    {ReadCause::kWrongPolygonStyle, "NoStyleOfAPolygon", "", "", "V020",
     "Can't process this kind of style", "a record as it is written"},
};

class CausesOutsideFilesTest : public testing::TestWithParam<Row> {};

TEST_P(CausesOutsideFilesTest, GiveCodeAndMessage) {
  const Row& row = GetParam();
  const ReadFailure failure(row.cause, {}, row.token);
  EXPECT_EQ(failure.message, row.message);
  EXPECT_EQ(failure.expected(), row.expected);
  EXPECT_EQ(codeOfCause(row.cause), row.code);
}

INSTANTIATE_TEST_SUITE_P(Failures, CausesOutsideFilesTest, testing::ValuesIn(kOthers),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(CauseTableTest, HasARowForEachCause) {
  std::set<ReadCause> causes;
  for (const Row& row : kRows) causes.insert(row.cause);
  for (const Row& row : kOthers) EXPECT_TRUE(causes.insert(row.cause).second) << row.name;
  EXPECT_EQ(causes.size(), kReadCauses);
}

TEST(CauseTableTest, CodesAreInTheCatalogue) {
  for (std::size_t i = 0; i < kReadCauses; ++i) {
    const std::string_view code = codeOfCause(static_cast<ReadCause>(i));
    EXPECT_NE(findCode(code), nullptr) << code;
  }
}

// The primitive is named once, whatever was read before; the place is the token's.
TEST(ReadFailureTest, TellsCauseTokenPlaceAndPrimitive) {
  Cyl cyl;
  Input in({tokenLine("00", "c ", "1 2 3,"), tokenLine("01", "c ", "0 0 1x,5")}, kTokens);
  try {
    cyl.read(in);
    FAIL() << "1x is no number";
  } catch (const ReadFailure& e) {
    EXPECT_EQ(e.cause, ReadCause::kNoNumber);
    EXPECT_EQ(e.token, "1x");
    EXPECT_EQ(e.place.line, 1u);
    EXPECT_EQ(e.place.column, 25u);  // 21 characters of heading, "0 0 "
    EXPECT_EQ(e.primitive, "cylinder");
    EXPECT_EQ(e.level, ExceptionInfo::kFatal);
    EXPECT_EQ(e.message, "Input: can't get double from expression \"1x\", primitive cylinder");
  }
}

}  // namespace
