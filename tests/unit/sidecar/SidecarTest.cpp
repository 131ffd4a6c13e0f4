// SPDX-License-Identifier: MIT
#include "sidecar/Sidecar.h"

#include <gtest/gtest.h>

#include <ostream>
#include <random>
#include <sstream>

#include "sidecar/Utf8.h"

namespace Vesk {
namespace {

// ---- written ---------------------------------------------------------------------

struct FieldCase {
  const char* name;
  const char* value;
  const char* written;
};

void PrintTo(const FieldCase& row, std::ostream* out) { *out << row.name; }

// clang-format off
constexpr FieldCase kFields[] = {
    {"PlainTextStands",           "A106-B",       "A106-B"},
    {"BlanksStand",               " a b ",        " a b "},
    {"CommaIsQuoted",             "PIPE, 6",      "\"PIPE, 6\""},
    {"QuoteIsDoubled",            "6\"",          "\"6\"\"\""},
    {"LineEndIsQuoted",           "a\nb",         "\"a\nb\""},
    {"EqualsGetsAnApostrophe",    "=SUM(A1)",     "'=SUM(A1)"},
    {"PlusGetsAnApostrophe",      "+49",          "'+49"},
    {"MinusGetsAnApostrophe",     "-1",           "'-1"},
    {"AtGetsAnApostrophe",        "@home",        "'@home"},
    {"TabGetsAnApostrophe",       "\tx",          "'\tx"},
    {"ReturnGetsAnApostrophe",    "\rx",          "\"'\rx\""},
    {"ApostropheBeforeAFormula",  "'=1",          "''=1"},
    {"ApostropheElsewhereStands", "'quoted'",     "'quoted'"},
    {"ApostropheAloneStands",     "'",            "'"},
    {"FormulaWithAComma",         "=A1,B1",       "\"'=A1,B1\""},
    {"Utf8Stands",                "\xC3\x98 60",  "\xC3\x98 60"},
    {"Latin1BecomesUtf8",         "\xD8 60",      "\xC3\x98 60"},
    {"Windows1252BecomesUtf8",    "\x80",         "\xE2\x82\xAC"},
};
// clang-format on

class Fields : public testing::TestWithParam<FieldCase> {};

TEST_P(Fields, AreWrittenSoAndComeBack) {
  std::stringstream stream;
  SidecarWriter writer(stream, {"text"});
  writer.add({"P-1", "01", 7, 9, {GetParam().value}});
  EXPECT_EQ(stream.str(),
            std::string("f1,f2,first,last,text\nP-1,01,7,9,") + GetParam().written + '\n');
  SidecarReader reader(stream, "s.csv");
  SidecarRow row;
  ASSERT_TRUE(reader.next(row)) << reader.fault();
  EXPECT_EQ(row.values[0], toUtf8(GetParam().value));
  EXPECT_FALSE(reader.next(row));
  EXPECT_EQ(reader.fault(), "");
}

INSTANTIATE_TEST_SUITE_P(Sidecar, Fields, testing::ValuesIn(kFields),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(SidecarWriter, FillsMissingValuesAndDropsSurplusOnes) {
  std::ostringstream stream;
  SidecarWriter writer(stream, {"a", "b"});
  writer.add({"", "00", 0, 46655, {"x"}});
  writer.add({"=P", "", 1, 1, {"x", "y", "z"}});
  EXPECT_EQ(stream.str(), "f1,f2,first,last,a,b\n,00,0,46655,x,\n'=P,,1,1,x,y\n");
}

TEST(SidecarWriter, EveryTextComesBack) {
  std::mt19937 random(7);
  const std::string alphabet = "a'=\",\n\r\t+-@ ;\xC3\xA4";
  for (int i = 0; i < 3000; ++i) {
    SidecarRow row{"P", "01", i, i, {}};
    for (int k = 0; k < 3; ++k) {
      std::string text;
      for (auto n = random() % 6; n > 0; --n) text += alphabet[random() % (alphabet.size() - 2)];
      row.values.push_back(text);
    }
    std::stringstream stream;
    SidecarWriter writer(stream, {"a", "b", "c"});
    writer.add(row);
    SidecarReader reader(stream, "s.csv");
    SidecarRow back;
    ASSERT_TRUE(reader.next(back)) << reader.fault() << stream.str();
    EXPECT_EQ(back.values, row.values) << stream.str();
  }
}

// ---- read ------------------------------------------------------------------------

std::string textOf(const std::string& file) {
  std::istringstream stream(file);
  SidecarReader reader(stream, "s.csv");
  std::string text;
  for (const std::string& column : reader.columns()) text += column + ' ';
  for (SidecarRow row; reader.next(row);) {
    text += "| " + row.f1 + '/' + row.f2 + '/' + std::to_string(row.first) + '-' +
            std::to_string(row.last);
    for (const std::string& value : row.values) text += ' ' + value;
  }
  return text + reader.fault();
}

struct ReadCase {
  const char* name;
  const char* file;
  const char* text;
};

void PrintTo(const ReadCase& row, std::ostream* out) { *out << row.name; }

// clang-format off
constexpr ReadCase kReads[] = {
    {"KeyAlone",        "f1,f2,first,last\nA,01,1,2\n",                    "| A/01/1-2"},
    {"NoLineEnd",       "f1,f2,first,last,x\nA,01,1,2,y",                  "x | A/01/1-2 y"},
    {"ReturnAndFeed",   "f1,f2,first,last,x\r\nA,01,1,2,y\r\n",            "x | A/01/1-2 y"},
    {"ByteOrderMark",   "\xEF\xBB\xBF" "f1,f2,first,last\nA,01,1,2\n",     "| A/01/1-2"},
    {"QuotedKey",       "\"f1\",\"f2\",\"first\",\"last\"\n\"A\",\"01\",\"1\",\"2\"\n", "| A/01/1-2"},
    {"AnyOrderAndCase", "Last,X,F2,First,F1\n2,y,01,1,A\n",                "x | A/01/1-2 y"},
    {"EmptyLines",      "f1,f2,first,last\n\nA,01,1,2\n\n\n",              "| A/01/1-2"},
    {"NoRows",          "f1,f2,first,last,x\n",                            "x "},
    {"Empty",           "", "s.csv:1: the file is empty; expected the names of the columns"},
    {"NoKey",           "f1,f2,last\n",
     "s.csv:1: there is no column \"first\"; expected f1, f2, first and last"},
    {"TooFew",          "f1,f2,first,last,x\nA,01,1,2\n", "x s.csv:2: the row has fewer fields than the first line"},
    {"TooMany",         "f1,f2,first,last\nA,01,1,2,3\n", "s.csv:2: the row has more fields than the first line"},
    {"NoNumber",        "f1,f2,first,last\nA,01,1x,2\n",  "s.csv:2: \"first\" is not a number from 0 to 46655"},
    {"TooLarge",        "f1,f2,first,last\nA,01,1,46656\n", "s.csv:2: \"last\" is not a number from 0 to 46655"},
    {"Negative",        "f1,f2,first,last\nA,01,-1,2\n",  "s.csv:2: \"first\" is not a number from 0 to 46655"},
    {"Backwards",       "f1,f2,first,last\nA,01,3,2\n",   "s.csv:2: \"last\" is smaller than \"first\""},
    {"NumberEmpty",     "f1,f2,first,last\nA,01,,2\n",    "s.csv:2: \"first\" is not a number from 0 to 46655"},
    {"ReturnInAField",  "f1,f2,first,last,x\nA,01,1,2,a\rb\n", "x | A/01/1-2 a\rb"},
    {"ReturnAlone",     "f1,f2,first,last\n\r\n\rA,01,1,2\n", "| A/01/1-2"},
    {"OpenQuoteInTheFirstLine", "f1,\"f2", "s.csv:1: a quoted field has no end"},
    {"OpenQuote",       "f1,f2,first,last\nA,01,1,1\n\"A\nB,01,1,2\n",
     "| A/01/1-1s.csv:3: a quoted field has no end"},
    {"BehindTheQuote",  "f1,f2,first,last\n\"A\"x,01,1,2\n", "s.csv:2: there is something after the end of a quoted field"},
    {"LineOfTheFault",  "f1,f2,first,last,x\nA,01,1,1,\"a\nb\nc\"\nA,01,x,2,\n",
     "x | A/01/1-1 a\nb\ncs.csv:5: \"first\" is not a number from 0 to 46655"},
};
// clang-format on

class Reads : public testing::TestWithParam<ReadCase> {};

TEST_P(Reads, GiveThis) { EXPECT_EQ(textOf(GetParam().file), GetParam().text); }

INSTANTIATE_TEST_SUITE_P(Sidecar, Reads, testing::ValuesIn(kReads),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(SidecarReader, RefusesAFieldWithoutEnd) {
  const std::string key = "f1,f2,first,last\n";
  const std::string longest(SidecarReader::kLongestField, 'x');
  for (const char* quote : {"", "\""}) {
    EXPECT_EQ(textOf(key + quote + longest + "x"), "s.csv:2: a field is longer than 1 MiB");
    EXPECT_EQ(textOf(key + quote + longest + quote + ",01,1,2\n"), "| " + longest + "/01/1-2");
  }
  EXPECT_EQ(textOf(longest + "x"), "s.csv:1: a field is longer than 1 MiB");
}

// Of a last row without a line end nobody knows whether it is whole; those before it are.
TEST(SidecarReader, AFileCutAnywhereKeepsTheRowsBefore) {
  const std::string first = "f1,f2,first,last,x\nA,01,1,2,\"a,b\"\n";
  const std::string second = "A,01,3,4,\"c\nd\"\n";
  for (std::size_t length = 0; length < second.size(); ++length) {
    std::istringstream stream(first + second.substr(0, length));
    SidecarReader reader(stream, "s.csv");
    SidecarRow row;
    ASSERT_TRUE(reader.next(row)) << reader.fault();
    EXPECT_EQ(row.values[0], "a,b");
    if (reader.next(row)) {
      EXPECT_EQ(row.last, 4);
    }
  }
}

// ---- joined ----------------------------------------------------------------------

// A sidecar with `count` rows, ten counters each, of pipelines of a hundred rows.
std::string manyRows(int count) {
  std::ostringstream stream;
  SidecarWriter writer(stream, {"n"});
  for (int i = 0; i < count; ++i) {
    const int first = i % 100 * 10;
    writer.add({"P" + std::to_string(i / 100), "01", first, first + 9, {std::to_string(i)}});
  }
  return stream.str();
}

std::string valueOf(SidecarJoin& join, int row, int element) {
  const SidecarRow* found =
      join.find("P" + std::to_string(row / 100) + "  ", "01", row % 100 * 10 + element);
  return found == nullptr ? "none" : found->values[0];
}

TEST(SidecarJoin, GivesEveryElementItsRow) {
  std::istringstream stream(manyRows(30000));
  SidecarReader reader(stream, "s.csv");
  SidecarJoin join(reader);
  for (int row = 0; row < 30000; ++row) {
    for (int element = 0; element < 10; element += 3)
      ASSERT_EQ(valueOf(join, row, element), std::to_string(row));
  }
  join.finish();
  EXPECT_EQ(join.rows(), 30000U);
  EXPECT_EQ(join.rowsWithoutElements(), 0U);
  EXPECT_EQ(join.elementsWithoutRows(), 0U);
}

TEST(SidecarJoin, CountsRowsWithoutElementsAndElementsWithoutRows) {
  std::istringstream stream(manyRows(1000));
  SidecarReader reader(stream, "s.csv");
  SidecarJoin join(reader);
  EXPECT_EQ(join.find("", "", 0), nullptr);
  EXPECT_EQ(valueOf(join, 3, 0), "3");
  EXPECT_EQ(valueOf(join, 700, 0), "700");
  EXPECT_EQ(join.find("P7", "02", 0), nullptr);
  EXPECT_EQ(valueOf(join, 701, 0), "701");
  EXPECT_EQ(join.find("P7", "01", 1000), nullptr);
  join.finish();
  EXPECT_EQ(join.rows(), 1000U);
  EXPECT_EQ(join.rowsWithoutElements(), 997U);
  EXPECT_EQ(join.elementsWithoutRows(), 3U);
}

TEST(SidecarJoin, LooksBackAFewRows) {
  std::istringstream stream(manyRows(1000));
  SidecarReader reader(stream, "s.csv");
  SidecarJoin join(reader);
  EXPECT_EQ(valueOf(join, 900, 0), "900");
  EXPECT_EQ(valueOf(join, 10, 0), "10");
  EXPECT_EQ(valueOf(join, 901, 0), "901");
}

// Two zones of 20,000 components each, their sidecars joined the other way round. The first
// row of the second zone lies 20,000 ahead, which is beyond the window.
TEST(SidecarJoin, CountsWhatLiesBeyondItsWindow) {
  std::istringstream stream(manyRows(40000));
  SidecarReader reader(stream, "s.csv");
  SidecarJoin join(reader);
  for (int row = 20000; row < 40000; ++row) EXPECT_EQ(valueOf(join, row, 0), "none");
  for (int row = 0; row < 20000; ++row) ASSERT_EQ(valueOf(join, row, 0), std::to_string(row));
  join.finish();
  EXPECT_EQ(join.rows(), 40000U);
  EXPECT_EQ(join.elementsWithoutRows(), 20000U);
  EXPECT_EQ(join.rowsWithoutElements(), 20000U);
  EXPECT_EQ(join.outOfOrder(), 20000U);
}

// The second zone is found ahead, the first lies too far behind then.
TEST(SidecarJoin, CountsWhatLiesTooFarBehind) {
  std::istringstream stream(manyRows(10000));
  SidecarReader reader(stream, "s.csv");
  SidecarJoin join(reader);
  for (int row = 5000; row < 10000; ++row) ASSERT_EQ(valueOf(join, row, 0), std::to_string(row));
  for (int row = 0; row < 5000; ++row) EXPECT_EQ(valueOf(join, row, 0), "none");
  EXPECT_EQ(join.outOfOrder(), 5000U);
}

// An element without a row, and a row without elements.
TEST(SidecarJoin, DoesNotCountWhatHasNoPartner) {
  std::istringstream stream(manyRows(10000));
  SidecarReader reader(stream, "s.csv");
  SidecarJoin join(reader);
  for (int row = 0; row < 10000; row += 2) {
    EXPECT_EQ(join.find("P" + std::to_string(row / 100), "02", 1), nullptr);
    ASSERT_EQ(valueOf(join, row, 0), std::to_string(row));
  }
  join.finish();
  EXPECT_EQ(join.rowsWithoutElements(), 5000U);
  EXPECT_EQ(join.elementsWithoutRows(), 5000U);
  EXPECT_EQ(join.outOfOrder(), 0U);
}

// Back by 1,024 rows and no more; ahead by 16,384.
TEST(SidecarJoin, LooksAsFarAsItSays) {
  std::istringstream stream(manyRows(30000));
  SidecarReader reader(stream, "s.csv");
  SidecarJoin join(reader);
  EXPECT_EQ(valueOf(join, 16383, 0), "16383");
  EXPECT_EQ(valueOf(join, 16383 - 1024, 0), std::to_string(16383 - 1024));
  EXPECT_EQ(valueOf(join, 16383, 0), "16383");
  EXPECT_EQ(valueOf(join, 16383 - 1025, 0), "none");
  EXPECT_EQ(join.elementsWithoutRows(), 1U);
}

// Of two rows of the same elements the first is found, also when the other is dropped.
TEST(SidecarJoin, FindsTheFirstOfTwoRowsOfTheSameElements) {
  std::istringstream stream("f1,f2,first,last,n\nA,01,1,1,one\nA,01,1,1,two\nB,01,1,1,three\n");
  SidecarReader reader(stream, "s.csv");
  SidecarJoin join(reader);
  EXPECT_EQ(join.find("B", "01", 1)->values[0], "three");
  EXPECT_EQ(join.find("A", "01", 1)->values[0], "one");
  join.finish();
  EXPECT_EQ(join.rows(), 3U);
  EXPECT_EQ(join.rowsWithoutElements(), 1U);
}

TEST(SidecarJoin, KeepsElementsApartWhoseRowsHaveGaps) {
  std::istringstream stream("f1,f2,first,last\nA,01,1,2\nA,01,5,5\nA,02,1,9\n");
  SidecarReader reader(stream, "s.csv");
  SidecarJoin join(reader);
  EXPECT_EQ(join.find("A       ", "01", 3), nullptr);
  EXPECT_NE(join.find("A       ", "01", 2), nullptr);
  EXPECT_NE(join.find("A       ", "01", 5), nullptr);
  EXPECT_EQ(join.find("A       ", "01", 6), nullptr);
  EXPECT_EQ(join.find("B       ", "01", 5), nullptr);
  EXPECT_NE(join.find("A       ", "02", 5), nullptr);
}

TEST(SidecarJoin, FindsHeadersThatAreNoUtf8) {
  std::stringstream stream;
  SidecarWriter(stream, {}).add({"\xD8-1", "01", 1, 1, {}});
  SidecarReader reader(stream, "s.csv");
  SidecarJoin join(reader);
  EXPECT_NE(join.find("\xD8-1     ", "01", 1), nullptr);
}

// ---- names and texts ---------------------------------------------------------------

TEST(SidecarName, StandsBesideTheRecordFile) {
  EXPECT_EQ(sidecarNameOf("plant.dat"), "plant.attributes.csv");
  EXPECT_EQ(sidecarNameOf("a.b/PLANT.DAT"), "a.b/PLANT.attributes.csv");
  EXPECT_EQ(sidecarNameOf("plant"), "plant.attributes.csv");
  EXPECT_EQ(sidecarNameOf("plant.rec"), "plant.rec.attributes.csv");
}

TEST(Utf8, IsCutBetweenCharacters) {
  EXPECT_EQ(cutUtf8("abc", 8), "abc");
  EXPECT_EQ(cutUtf8("abcdefgh\xC3\xA4", 8), "abcdefgh");
  EXPECT_EQ(cutUtf8("abcdefg\xC3\xA4", 8), "abcdefg");
  EXPECT_EQ(cutUtf8("abcdef\xC3\xA4x", 8), "abcdef\xC3\xA4");
  EXPECT_EQ(cutUtf8("abcdef\xE2\x82\xAC", 8), "abcdef");
  EXPECT_EQ(cutUtf8("abcde\xF0\x9F\x94\xA7", 8), "abcde");
  EXPECT_EQ(cutUtf8("\xC3\xA4", 1), "");
  // More than three bytes that follow none are no UTF-8, and stay; fewer at the beginning too.
  EXPECT_EQ(cutUtf8("abc\x80\x80\x80\x80\x80\x80", 8), "abc\x80\x80\x80\x80\x80");
  EXPECT_EQ(cutUtf8("\x80\x80\x80", 2), "\x80\x80");
  EXPECT_EQ(cutUtf8("abcd\xC3\x80\x80\x80\x80\x80", 8), "abcd\xC3\x80\x80\x80");
  EXPECT_EQ(cutUtf8("abcd\xF0\x9F\x94\xA7z", 7), "abcd");
  EXPECT_EQ(cutUtf8("abcd\xF0\x9F\x94\xA7z", 8), "abcd\xF0\x9F\x94\xA7");
}

TEST(Utf8, KnowsWhatIsNone) {
  for (const char* text : {"", "abc", "\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x94\xA7",
                           "\xE0\xA0\x80", "\xED\x9F\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"})
    EXPECT_TRUE(isUtf8(text)) << text;
  for (const char* text :
       {"\x80", "\xC3", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF5\x80\x80\x80",
        "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xE2\x82", "\xC3\xC3"})
    EXPECT_FALSE(isUtf8(text)) << text;
}

// The first bytes are no UTF-8 by themselves; each is a character of Windows-1252, by the tables of
// Python. Holes are the control characters of Latin-1.
TEST(Utf8, IsMadeOfEachByteOfWindows1252) {
  static constexpr const char* kRows[][2] = {
      {"\x80", "\xE2\x82\xAC"}, {"\x81", "\xC2\x81"},     {"\x82", "\xE2\x80\x9A"},
      {"\x83", "\xC6\x92"},     {"\x84", "\xE2\x80\x9E"}, {"\x85", "\xE2\x80\xA6"},
      {"\x86", "\xE2\x80\xA0"}, {"\x87", "\xE2\x80\xA1"}, {"\x88", "\xCB\x86"},
      {"\x89", "\xE2\x80\xB0"}, {"\x8A", "\xC5\xA0"},     {"\x8B", "\xE2\x80\xB9"},
      {"\x8C", "\xC5\x92"},     {"\x8D", "\xC2\x8D"},     {"\x8E", "\xC5\xBD"},
      {"\x8F", "\xC2\x8F"},     {"\x90", "\xC2\x90"},     {"\x91", "\xE2\x80\x98"},
      {"\x92", "\xE2\x80\x99"}, {"\x93", "\xE2\x80\x9C"}, {"\x94", "\xE2\x80\x9D"},
      {"\x95", "\xE2\x80\xA2"}, {"\x96", "\xE2\x80\x93"}, {"\x97", "\xE2\x80\x94"},
      {"\x98", "\xCB\x9C"},     {"\x99", "\xE2\x84\xA2"}, {"\x9A", "\xC5\xA1"},
      {"\x9B", "\xE2\x80\xBA"}, {"\x9C", "\xC5\x93"},     {"\x9D", "\xC2\x9D"},
      {"\x9E", "\xC5\xBE"},     {"\x9F", "\xC5\xB8"},     {"\xA0", "\xC2\xA0"},
      {"\xA1", "\xC2\xA1"},     {"\xA2", "\xC2\xA2"},     {"\xA3", "\xC2\xA3"},
      {"\xA4", "\xC2\xA4"},     {"\xA5", "\xC2\xA5"},     {"\xA6", "\xC2\xA6"},
      {"\xA7", "\xC2\xA7"},     {"\xA8", "\xC2\xA8"},     {"\xA9", "\xC2\xA9"},
      {"\xAA", "\xC2\xAA"},     {"\xAB", "\xC2\xAB"},     {"\xAC", "\xC2\xAC"},
      {"\xAD", "\xC2\xAD"},     {"\xAE", "\xC2\xAE"},     {"\xAF", "\xC2\xAF"},
      {"\xB0", "\xC2\xB0"},     {"\xB1", "\xC2\xB1"},     {"\xB2", "\xC2\xB2"},
      {"\xB3", "\xC2\xB3"},     {"\xB4", "\xC2\xB4"},     {"\xB5", "\xC2\xB5"},
      {"\xB6", "\xC2\xB6"},     {"\xB7", "\xC2\xB7"},     {"\xB8", "\xC2\xB8"},
      {"\xB9", "\xC2\xB9"},     {"\xBA", "\xC2\xBA"},     {"\xBB", "\xC2\xBB"},
      {"\xBC", "\xC2\xBC"},     {"\xBD", "\xC2\xBD"},     {"\xBE", "\xC2\xBE"},
      {"\xBF", "\xC2\xBF"},     {"\xC0", "\xC3\x80"},     {"\xC1", "\xC3\x81"},
      {"\xC2", "\xC3\x82"},     {"\xC3", "\xC3\x83"},     {"\xC4", "\xC3\x84"},
      {"\xC5", "\xC3\x85"},     {"\xC6", "\xC3\x86"},     {"\xC7", "\xC3\x87"},
      {"\xC8", "\xC3\x88"},     {"\xC9", "\xC3\x89"},     {"\xCA", "\xC3\x8A"},
      {"\xCB", "\xC3\x8B"},     {"\xCC", "\xC3\x8C"},     {"\xCD", "\xC3\x8D"},
      {"\xCE", "\xC3\x8E"},     {"\xCF", "\xC3\x8F"},     {"\xD0", "\xC3\x90"},
      {"\xD1", "\xC3\x91"},     {"\xD2", "\xC3\x92"},     {"\xD3", "\xC3\x93"},
      {"\xD4", "\xC3\x94"},     {"\xD5", "\xC3\x95"},     {"\xD6", "\xC3\x96"},
      {"\xD7", "\xC3\x97"},     {"\xD8", "\xC3\x98"},     {"\xD9", "\xC3\x99"},
      {"\xDA", "\xC3\x9A"},     {"\xDB", "\xC3\x9B"},     {"\xDC", "\xC3\x9C"},
      {"\xDD", "\xC3\x9D"},     {"\xDE", "\xC3\x9E"},     {"\xDF", "\xC3\x9F"},
      {"\xE0", "\xC3\xA0"},     {"\xE1", "\xC3\xA1"},     {"\xE2", "\xC3\xA2"},
      {"\xE3", "\xC3\xA3"},     {"\xE4", "\xC3\xA4"},     {"\xE5", "\xC3\xA5"},
      {"\xE6", "\xC3\xA6"},     {"\xE7", "\xC3\xA7"},     {"\xE8", "\xC3\xA8"},
      {"\xE9", "\xC3\xA9"},     {"\xEA", "\xC3\xAA"},     {"\xEB", "\xC3\xAB"},
      {"\xEC", "\xC3\xAC"},     {"\xED", "\xC3\xAD"},     {"\xEE", "\xC3\xAE"},
      {"\xEF", "\xC3\xAF"},     {"\xF0", "\xC3\xB0"},     {"\xF1", "\xC3\xB1"},
      {"\xF2", "\xC3\xB2"},     {"\xF3", "\xC3\xB3"},     {"\xF4", "\xC3\xB4"},
      {"\xF5", "\xC3\xB5"},     {"\xF6", "\xC3\xB6"},     {"\xF7", "\xC3\xB7"},
      {"\xF8", "\xC3\xB8"},     {"\xF9", "\xC3\xB9"},     {"\xFA", "\xC3\xBA"},
      {"\xFB", "\xC3\xBB"},     {"\xFC", "\xC3\xBC"},     {"\xFD", "\xC3\xBD"},
      {"\xFE", "\xC3\xBE"},     {"\xFF", "\xC3\xBF"},
  };
  for (const auto& [byte, text] : kRows) {
    EXPECT_EQ(toUtf8(byte), text);
    EXPECT_EQ(toUtf8(std::string("A") + byte + "z"), std::string("A") + text + "z");
  }
}

TEST(SidecarReader, CountsColumnsBehindTheKey) {
  std::istringstream stream("spec,f1,first,f2,tag,last,note\n");
  const SidecarReader reader(stream, "s.csv");
  EXPECT_EQ(reader.columnOf("spec"), 0);
  EXPECT_EQ(reader.columnOf("tag"), 1);
  EXPECT_EQ(reader.columnOf("note"), 2);
  EXPECT_EQ(reader.columnOf("f1"), -1);
  EXPECT_EQ(reader.columnOf("colour"), -1);
}

}  // namespace
}  // namespace Vesk
