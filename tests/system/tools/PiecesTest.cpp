// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <limits>

#include "elements/Fields.h"
#include "files/Files.h"
#include "findings/Catalogue.h"
#include "findings/Findings.h"
#include "select/Pattern.h"
#include "terminal/Nearest.h"
#include "text/Json.h"
#include "text/Numbers.h"
#include "text/Words.h"

namespace VeskTool {
namespace {

struct ShortestCase {
  double value;
  const char* text;
};

constexpr ShortestCase kShortest[] = {
    {0.1, "0.1"},         {100000.0, "100000"},
    {-0.0, "-0"},         {1e15, "1000000000000000"},
    {1e22, "1e+22"},      {1e-7, "1e-07"},
    {0.00001, "0.00001"}, {std::numeric_limits<double>::infinity(), "inf"},
};

TEST(Numbers, ShortestGivesTheFewestDigitsThatComeBack) {
  for (const ShortestCase& each : kShortest) EXPECT_EQ(shortest(each.value), each.text);
}

TEST(Numbers, RoundedKeepsItsDecimalsAndNoNegativeZero) {
  EXPECT_EQ(rounded(1.5, 3), "1.500");
  EXPECT_EQ(rounded(-0.0001, 3), "0.000");
  EXPECT_EQ(rounded(2.5, 0), "2");  // an exact half goes to the even digit
  EXPECT_EQ(trimmedNumber(1.5, 3), "1.5");
  EXPECT_EQ(trimmedNumber(100.0, 3), "100");
}

TEST(Numbers, GroupedHasThreeDigitsInAGroup) {
  EXPECT_EQ(grouped(0), "0");
  EXPECT_EQ(grouped(999), "999");
  EXPECT_EQ(grouped(1000), "1 000");
  EXPECT_EQ(grouped(2513004), "2 513 004");
}

TEST(Numbers, ReadNumbersTakesTheWholeTextAndTheRightCount) {
  double v[3] = {};
  EXPECT_TRUE(readNumbers("1,-2.5,3e2", 3, v));
  EXPECT_EQ(v[0], 1.0);
  EXPECT_EQ(v[1], -2.5);
  EXPECT_EQ(v[2], 300.0);
  for (const char* bad : {"1,2", "1,2,3,4", "1,,3", "a,2,3", "", "1,2,3x"}) {
    EXPECT_FALSE(readNumbers(bad, 3, v)) << bad;
  }
}

struct PatternCase {
  const char* name;
  const char* pattern;
  bool matches;
};

constexpr PatternCase kPatterns[] = {
    {"plant.dat", "*.dat", true},
    {"plant.dat.gz", "*.dat", false},
    {"a", "?", true},
    {"", "?", false},
    {"", "*", true},
    {"abcabd", "*abd", true},
    {"P-1001 01", "P-10*", true},
    {"P-1001", "p-*", false},
    {"abc", "a*b*c*", true},
};

TEST(Files, PatternsMatchWholeNames) {
  for (const PatternCase& each : kPatterns) {
    EXPECT_EQ(Vesk::matchesPattern(each.name, each.pattern), each.matches)
        << each.name << " " << each.pattern;
  }
}

TEST(Nearest, NamesWhatIsNearAndNothingElse) {
  const std::vector<std::string> names{"check", "convert", "info", "list"};
  EXPECT_EQ(didYouMean("chekc", names), "did you mean \"check\"?");
  EXPECT_EQ(didYouMean("inof", names), "did you mean \"info\"?");
  EXPECT_EQ(didYouMean("conver", names), "did you mean \"convert\"?");
  EXPECT_EQ(didYouMean("plant.dat", names), "");
}

TEST(Json, KeepsTheOrderAndEscapesText) {
  std::string text;
  JsonWriter json(text);
  json.beginObject().key("b").value("a\"\n\xFF").key("a").beginArrayRow();
  json.value(1.5).value(std::numeric_limits<double>::quiet_NaN()).endArray();
  json.key("c").beginArray().endArray().endObject();
  EXPECT_EQ(text, "{\n  \"b\": \"a\\\"\\n\xEF\xBF\xBD\",\n  \"a\": [1.5, null],\n  \"c\": []\n}\n");
}

TEST(Words, WrapsAtBlanks) {
  EXPECT_EQ(wrapped("aa bb cc", 2, 7), "  aa bb\n  cc\n");
  EXPECT_EQ(wrapped("longer than\nthat", 0, 4), "longer\nthan\nthat\n");
}

TEST(Findings, ShowTheLineAndMarkTheColumns) {
  Finding finding;
  finding.code = "V021";
  finding.file = "plant.dat";
  finding.line = 7;
  finding.column = 5;
  finding.endColumn = 7;
  finding.message = "radius is not a number: '1,5'";
  finding.expected = "a number";
  finding.hint = "write 1.5";
  finding.sourceLine = "ab c1,5 d";
  std::string text;
  appendText(text, finding, Look());
  EXPECT_EQ(text,
            "plant.dat:7:5-7: error: radius is not a number: '1,5' [V021]\n"
            "  7 | ab c1,5 d\n"
            "    |     ^~~\n"
            "  expected: a number\n"
            "  hint: write 1.5\n");
}

TEST(Findings, MarkBehindACutAndBehindLettersOfSeveralBytes) {
  Finding finding;
  finding.code = "V021";
  finding.file = "f";
  finding.line = 1;
  finding.column = 301;
  finding.endColumn = 301;
  finding.message = "m";
  finding.sourceLine = std::string(300, 'a') + 'X' + std::string(300, 'b');
  std::string text;
  appendText(text, finding, Look());
  const std::size_t line = text.find('\n') + 1;
  const std::size_t mark = text.find('\n', line) + 1;
  EXPECT_EQ(text.find('X') - line, text.find('^') - mark);

  finding.column = finding.endColumn = 4;
  finding.sourceLine = "\xC3\xA4 X";  // a letter of two bytes, a blank, X in byte 4
  text.clear();
  appendText(text, finding, Look());
  EXPECT_NE(text.find("\n    |   ^\n"), std::string::npos) << text;
}

TEST(Catalogue, CodesRiseAndAreComplete) {
  std::string_view last;
  for (const CodeText& each : catalogue()) {
    EXPECT_LT(last, each.code);
    EXPECT_FALSE(each.title.empty() || each.meaning.empty() || each.remedy.empty()) << each.code;
    last = each.code;
  }
  EXPECT_EQ(findCode("v021"), findCode("V021"));
  EXPECT_EQ(findCode("V999"), nullptr);
}

std::string fieldText(const Vesk::Recs& lines, int mode) {
  std::string text;
  for (const Field& each : fieldsOf(lines, mode)) {
    text += std::to_string(each.line) + ':' + std::to_string(each.column) + ' ' + each.text + '=' +
            each.meaning + '\n';
  }
  return text;
}

TEST(Fields, TokensAreNamedByKeywordAndWord) {
  const std::string text = fieldText({"DUCT-7  A1002    00l pt 0 0 0,pt 1000 0 0.5,ft 7"}, 3);
  EXPECT_NE(text.find("0:11 002=F3, element counter\n"), std::string::npos) << text;
  EXPECT_NE(text.find("0:22 pt=word\n0:25 0=vertex 0 x\n"), std::string::npos) << text;
  EXPECT_NE(text.find("0:41 0.5=vertex 1 z\n"), std::string::npos) << text;
  EXPECT_NE(text.find("7=ft, closing attribute\n"), std::string::npos) << text;
}

TEST(Fields, NumbersOfColumnsGoOnOnTheNextLine) {
  const std::string head = "    A1  DUCT-7  007RED";
  std::string first = "60" + head;
  std::string second = "61" + head;
  for (int i = 0; i < 12; ++i) first += "    1.000";
  for (int i = 0; i < 12; ++i) second += "    2.000";
  const std::string text = fieldText({first, second}, 2);
  EXPECT_NE(text.find("0:124     1.000=corner 3 z\n"), std::string::npos) << text;
  EXPECT_NE(text.find("1:25     2.000=corner 4 x\n"), std::string::npos) << text;
}

TEST(Fields, EveryByteThatIsNoSeparatorIsInOneField) {
  const Vesk::Recs lines{"DUCT-7  A1005    00x 1 2 0,1 0 0,0 1 0,2.5,0.5,7,5",
                         "DUCT-7  A1005    01x Fan 1"};
  std::size_t bytes = 0;
  for (const Field& each : fieldsOf(lines, 3)) {
    EXPECT_EQ(lines[each.line].substr(each.column - 1, each.text.size()), each.text);
    bytes += each.text.size();
  }
  // 50 and 26 bytes, less 6 blanks and 6 commas between the numbers.
  EXPECT_EQ(bytes, 50u + 26u - 12u);
}

}  // namespace
}  // namespace VeskTool
