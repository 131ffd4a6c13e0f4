// SPDX-License-Identifier: MIT
#include "select/Selection.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <ostream>

#include "select/Pattern.h"
#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/Red.h"
#include "vesk/Relb.h"
#include "vesk/Torus.h"
#include "vesk/Txt.h"

namespace VeskTest {
namespace {

using namespace Vesk;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

// The model that is chosen from, a letter for each element.
struct Element {
  char letter;
  std::shared_ptr<Geo> geo;
  const char* f1;
  const char* f2;
  std::uint64_t first;
  std::uint64_t last;
};

std::shared_ptr<Geo> duct() {
  auto relb = std::make_shared<Relb>();
  relb->centre = {5000, 0, 0};
  relb->startVector = {300, 0, 0};
  relb->endVector = {0, 300, 0};
  relb->depth = 200;
  relb->width = 400;
  return relb;
}

// clang-format off
const Element kModel[] = {
    {'a', std::make_shared<Cyl>(GeVector(0, 0, 0), GeVector(1000, 0, 0), 114.3), "P-1001  ", "01", 1, 1},
    {'b', std::make_shared<Torus>(GeVector(1000, 305, 0), GeVector(1000, 0, 0), GeVector(1305, 305, 0), 114.3), "P-1001  ", "01", 2, 3},
    {'c', std::make_shared<Cyl>(GeVector(0, 0, 500), GeVector(1000, 1000, 500), 60.3), "P-1002  ", "  ", 4, 4},
    {'d', std::make_shared<Cone>(GeVector(0, 0, 900), GeVector(200, 0, 900), 114.3, 88.9), "P-1002  ", "02", 5, 8},
    {'e', std::make_shared<Box>(GeVector(0, 0, -110), GeVector(500, 0, -110), GeVector(0, 500, -110), GeVector(0, 0, -60)), "STEEL   ", "  ", 9, 9},
    {'f', duct(), "DUCT-7  ", "A1", 10, 10},
    {'g', std::make_shared<Pline>(std::initializer_list<GePoint>{{0, 0, 2000}, {0, 0, 3000}}), "        ", "  ", 11, 11},
    {'h', std::make_shared<Pgon>(std::initializer_list<GePoint>{{0, 0, 4000}, {9, 0, 4000}, {0, 9, 4000}}), "P-1001 X", "01", 12, 12},
    {'i', std::make_shared<Txt>(GePoint(100, 0, 0), GeVector(1, 0, 0), GeVector(0, 1, 0), 5, 10, 1, 0, "A"), "NOTES   ", "  ", 13, 14},
    {'j', std::make_shared<Cyl>(GeVector(kNan, 0, 0), GeVector(1000, 0, 0), 114.3), "P-1003  ", "  ", 15, 15},
};
// clang-format on

struct Text {
  Criterion criterion;
  const char* text;
  bool isNegated = false;
};

struct Choice {
  const char* name;
  std::vector<Text> texts;
  const char* letters;
  double tolerance = 0.0;

  friend std::ostream& operator<<(std::ostream& os, const Choice& each) { return os << each.name; }
};

using enum Criterion;

// clang-format off
const Choice kChoices[] = {
    {"NothingMeansAll", {}, "abcdefghij"},
    {"HeaderByF1", {{kHeader, "P-1001"}}, "ab"},
    {"HeaderByBothFields", {{kHeader, "P-1002 02"}}, "d"},
    {"HeaderIsNoPrefix", {{kHeader, "P-100"}}, ""},
    {"HeaderByStar", {{kHeader, "P-100*"}}, "abcdhj"},
    {"HeaderByQuestionMark", {{kHeader, "P-100?"}}, "abcdj"},
    {"GroupByStar", {{kHeader, "* 01"}}, "abh"},
    {"TwoHeadersAreAlternatives", {{kHeader, "STEEL"}, {kHeader, "NOTES"}}, "ei"},
    {"AllButAHeader", {{kHeader, "P-*", true}}, "efgi"},
    {"OnlyByClass", {{kOnly, "cylinder"}}, "acj"},
    {"OnlyByPlainWord", {{kOnly, "pipe,bend,duct"}}, "abcfj"},
    {"OnlyByWhatPeopleRead", {{kOnly, "bends,duct elbow"}}, "bf"},
    {"OnlyInPlural", {{kOnly, "tori, boxes"}}, "be"},
    {"OnlyTwiceIsMore", {{kOnly, "cone"}, {kOnly, "text"}}, "di"},
    {"AllButAKind", {{kOnly, "pipe,bend", true}}, "defghi"},
    {"SizeInARange", {{kSize, "60..100"}}, "cd"},
    {"SizeFrom", {{kSize, "200.."}}, "ef"},
    {"SizeUpTo", {{kSize, "..61"}}, "ce"},
    {"SizeByValue", {{kSize, "114.3,400"}}, "abdfj"},
    {"SizeWithinHalfATenth", {{kSize, "114.34"}}, "abdj"},
    {"SizeWithinHalfATenthBelow", {{kSize, "114.26"}}, "abdj"},
    {"SizeAtTheEndsOfARange", {{kSize, "60.3..88.9"}}, "cd"},
    {"SizeJustWithinARange", {{kSize, "60.31..88.89"}}, ""},
    {"SizeBeyondHalfATenth", {{kSize, "114.36"}}, ""},
    {"SizeBelowHalfATenth", {{kSize, "114.24"}}, ""},
    {"SizeOfADuctIsItsDepth", {{kSize, "200"}}, "f"},
    {"SizeOfADuctIsItsWidth", {{kSize, "400"}}, "f"},
    {"SizeOfAConeIsThatOfEitherEnd", {{kSize, "88.9"}}, "d"},
    {"SizeOfABoxIsAnyEdge", {{kSize, "500"}}, "e"},
    {"BoxByTrueShape", {{kBox, "0,900,400,100,1000,600"}}, ""},
    {"BoxOnTheDiagonal", {{kBox, "400,400,400,600,600,600"}}, "c"},
    // The pipe a is 57.15 wide to each side of the x axis and ends at 1000.
    {"BoxAtTheSideOfAPipe", {{kBox, "100,57.14,-1,200,60,1"}}, "a"},
    {"BoxBesideAPipe", {{kBox, "100,57.16,-1,200,60,1"}}, ""},
    {"BoxBeforeAPipe", {{kBox, "-9,-1,-1,-0.01,1,1"}}, ""},
    {"BoxAtTheStartOfAPipe", {{kBox, "-9,-1,-1,0,1,1"}}, "a"},
    {"BoxWithCornersInAnyOrder", {{kBox, "600,600,600,400,400,400"}}, "c"},
    {"BoxWithBlanks", {{kBox, "600 600 600 400 400 400"}}, "c"},
    // The pipe's top is at 57.15, the text lies in the pipe.
    {"NearAPoint", {{kNear, "100,0,60,2.86"}}, "a"},
    {"NotNearEnough", {{kNear, "100,0,60,2.84"}}, ""},
    {"NearWithPlusSigns", {{kNear, "+100,+0,60,+2.86"}}, "a"},
    {"NearWithoutRadius", {{kNear, "100,0,0,0"}}, "ai"},
    // The box ends 2.85 below the pipe.
    {"TouchingAPipe", {{kTouching, "P-1001"}}, "abi"},
    {"TouchingUpToATolerance", {{kTouching, "P-1001"}}, "abei", 2.86},
    {"NotTouching", {{kTouching, "P-1001", true}}, "cdefghj"},
    {"TouchingJustWithinTheTolerance", {{kTouching, "P-1001"}}, "abei", 2.8500},
    {"TouchingJustBeyondTheTolerance", {{kTouching, "P-1001"}}, "abi", 2.8490},
    {"TouchingOthersOnly", {{kTouching, "P-1001"}, {kHeader, "P-1001", true}}, "i"},
    {"TouchingWhatIsNotThere", {{kTouching, "P-9"}}, ""},
    // Of a pipe without a place.
    {"TouchingWhatIsNowhere", {{kTouching, "P-1003"}}, ""},
    {"NotTouchingWhatIsNowhere", {{kTouching, "P-1003", true}}, "abcdefghij"},
    {"Lines", {{kLines, "3-5"}}, "bcd"},
    {"LinesFrom", {{kLines, "14-"}}, "ij"},
    {"LinesUpTo", {{kLines, "-1"}}, "a"},
    {"LinesUpToTheSecond", {{kLines, "-2"}}, "ab"},
    {"LinesWithinAnElement", {{kLines, "6-7"}}, "d"},
    {"LinesAtTheEndOfAnElement", {{kLines, "8"}}, "d"},
    {"LinesByNumber", {{kLines, "7, 12"}}, "dh"},
    {"AllMustBeMet", {{kHeader, "P-*"}, {kOnly, "pipe"}, {kSize, "..100"}}, "c"},
    {"ThoseButNotThese", {{kHeader, "P-*"}, {kSize, "114.3", true}, {kOnly, "triangle", true}}, "c"},
};
// clang-format on

class SelectionOf : public testing::TestWithParam<Choice> {};

TEST_P(SelectionOf, TakesTheseElements) {
  Selection selection;
  for (const Text& text : GetParam().texts) {
    selection.add(text.criterion, text.text, text.isNegated);
  }
  selection.setTolerance(GetParam().tolerance);
  EXPECT_EQ(selection.isEmpty(), GetParam().texts.empty());
  const auto elementOf = [](const Element& each) {
    return SelectionElement{*each.geo, each.f1, each.f2, each.first, each.last};
  };
  if (selection.needsModel()) {
    for (const Element& each : kModel) selection.gather(elementOf(each));
    selection.finish();
  }
  std::string letters;
  for (const Element& each : kModel) {
    if (selection.takes(elementOf(each))) letters += each.letter;
  }
  EXPECT_EQ(letters, GetParam().letters);
}

INSTANTIATE_TEST_SUITE_P(By, SelectionOf, testing::ValuesIn(kChoices),
                         [](const auto& each) { return each.param.name; });

struct Refusal {
  Criterion criterion;
  const char* text;
  const char* message;
};

// clang-format off
const Refusal kRefusals[] = {
    {kHeader, "", "--header \"\": no header"},
    {kOnly, "pump", "there is no kind \"pump\""},
    {kOnly, "", "there is no kind \"\""},
    {kOnly, "pipe,,bend", "there is no kind \"\""},
    {kSize, "", "--size : \"\" is neither a size nor a range"},
    {kSize, "DN100", "--size DN100: \"DN100\" is neither a size nor a range"},
    {kSize, "..", "--size ..: \"..\" is neither a size nor a range"},
    {kSize, "200..100", "--size 200..100: \"200..100\" begins above its end"},
    {kSize, "1..2..3", "--size 1..2..3: \"1..2..3\" is neither a size nor a range"},
    {kSize, "nan", "--size nan: \"nan\" is neither a size nor a range"},
    {kSize, "inf..", "--size inf..: \"inf..\" is neither a size nor a range"},
    {kSize, "100,5x", "--size 100,5x: \"5x\" is neither a size nor a range"},
    {kSize, "+-5", "--size +-5: \"+-5\" is neither a size nor a range"},
    {kBox, "1,2,3", "--bbox 1,2,3: not six numbers"},
    {kBox, "1,2,3,4,5,6,7", "--bbox 1,2,3,4,5,6,7: not six numbers"},
    {kBox, "1,2,3,4,5,nan", "--bbox 1,2,3,4,5,nan: not six numbers"},
    {kNear, "1,2,3", "--near 1,2,3: not four numbers"},
    {kNear, "1,2,3,-1", "--near 1,2,3,-1: the radius is below zero"},
    {kNear, "1;2;3;4", "--near 1;2;3;4: not four numbers"},
    {kTouching, "", "--touching \"\": no header"},
    {kLines, "0", "--lines 0: \"0\" is neither a line nor a range"},
    {kLines, "5-3", "--lines 5-3: \"5-3\" is neither a line nor a range"},
    {kLines, "-", "--lines -: \"-\" is neither a line nor a range"},
    {kLines, "1-2-3", "--lines 1-2-3: \"1-2-3\" is neither a line nor a range"},
    {kLines, "99999999999999999999", "--lines 99999999999999999999: \"99999999999999999999\" is neither a line nor a range"},
};
// clang-format on

TEST(Selection, RefusesTextsThatMeanNothing) {
  for (const Refusal& each : kRefusals) {
    try {
      Selection().add(each.criterion, each.text);
      ADD_FAILURE() << each.text << " was taken";
    } catch (const SelectionError& error) {
      EXPECT_STREQ(error.what(), each.message);
      EXPECT_NE(error.hint, "");
    }
  }
}

TEST(Selection, OffersTheKindsForAWrongWord) {
  try {
    Selection().add(kOnly, "pipez");
    FAIL();
  } catch (const SelectionError& error) {
    EXPECT_EQ(error.word, "pipez");
    EXPECT_EQ(error.choices, kindWords());
  }
}

TEST(Selection, TakesItsOwnExamples) {
  for (const CriterionText& each : criteria()) {
    EXPECT_EQ(&criteria()[static_cast<std::size_t>(each.criterion)], &each);
    Selection selection;
    EXPECT_NO_THROW(selection.add(each.criterion, each.example));
    EXPECT_FALSE(selection.isEmpty());
  }
}

struct KindCase {
  std::shared_ptr<Geo> geo;
  std::string_view name;
  std::string_view plural;
  std::string_view word;
  std::string_view words;
};

// clang-format off
const KindCase kKindNames[] = {
    {std::make_shared<Pline>(std::initializer_list<GePoint>{{0, 0, 0}}), "point", "points", "point", "points"},
    {std::make_shared<Pline>(std::initializer_list<GePoint>{{0, 0, 0}, {1, 0, 0}}), "segment", "segments", "segment", "segments"},
    {std::make_shared<Pline>(std::initializer_list<GePoint>{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}), "polyline", "polylines", "polyline", "polylines"},
    {std::make_shared<Pgon>(std::initializer_list<GePoint>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}), "triangle", "triangles", "triangle", "triangles"},
    {std::make_shared<Pgon>(std::initializer_list<GePoint>{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}), "quadrangle", "quadrangles", "quadrangle", "quadrangles"},
    {std::make_shared<Pgon>(std::initializer_list<GePoint>{{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 2, 0}, {0, 1, 0}}), "polygon", "polygons", "polygon", "polygons"},
    {std::make_shared<Txt>(), "text", "texts", "text", "texts"},
    {std::make_shared<Box>(), "box", "boxes", "box", "boxes"},
    {std::make_shared<Red>(), "reducer", "reducers", "reducer", "reducers"},
    {std::make_shared<Cyl>(), "cylinder", "cylinders", "cylinder", "cylinders"},
    {std::make_shared<Cone>(), "cone", "cones", "cone", "cones"},
    {std::make_shared<Torus>(), "torus", "tori", "bend", "bends"},
    {duct(), "elbow", "elbows", "duct elbow", "duct elbows"},
};
// clang-format on

TEST(Kinds, HaveTheseNames) {
  for (const KindCase& each : kKindNames) {
    const Kind kind = kindOf(*each.geo);
    EXPECT_EQ(nameOf(kind), each.name);
    EXPECT_EQ(pluralOf(kind), each.plural);
    EXPECT_EQ(wordOf(kind), each.word);
    EXPECT_EQ(wordsOf(kind), each.words);
  }
}

// A reducer has no size, even where all are meant.
// Half a thousandth is rounding.
TEST(Selection, TakesWhatRoundingSetsApartAsTouching) {
  const Cyl pipe(GeVector(0, 0, 0), GeVector(1000, 0, 0), 100);
  for (const auto& [gap, isTouching] : {std::pair(0.0004, true), std::pair(0.0006, false)}) {
    const Cyl next(GeVector(1000 + gap, 0, 0), GeVector(2000, 0, 0), 100);
    Selection selection;
    selection.add(kTouching, "A");
    selection.gather({pipe, "A", "", 1, 1});
    selection.gather({next, "B", "", 2, 2});
    selection.finish();
    EXPECT_EQ(selection.takes({next, "B", "", 2, 2}), isTouching) << gap;
  }
}

TEST(Selection, TakesNoReducerByItsSize) {
  Selection selection;
  selection.add(Criterion::kSize, "0..");
  const Red reducer;
  EXPECT_FALSE(selection.takes({reducer, "P-1", "01", 1, 1}));
  EXPECT_TRUE(selection.takes({*kModel[0].geo, "P-1", "01", 1, 1}));
}

struct HeaderCase {
  const char* f1;
  const char* f2;
  const char* name;
};

TEST(Headers, AreNamedByBothFieldsWithoutTheirBlanks) {
  const HeaderCase rows[] = {{"P-1     ", "01", "P-1 01"},
                             {"P-1     ", "  ", "P-1"},
                             {"        ", "01", "01"},
                             {"        ", "  ", ""}};
  for (const HeaderCase& each : rows) {
    EXPECT_EQ(headerName(each.f1, each.f2), each.name);
    EXPECT_TRUE(matchesHeader(each.f1, each.f2, each.name));
  }
}

// An element that stands in no file has no lines.
TEST(Selection, TakesNothingByLinesThatStandsInNoFile) {
  Selection selection;
  selection.add(Criterion::kLines, "-9");
  EXPECT_FALSE(selection.takes({*kModel[0].geo, "P-1", "01", 0, 0}));
  EXPECT_TRUE(selection.takes({*kModel[0].geo, "P-1", "01", 1, 0}));
}

struct PatternCase {
  const char* name;
  const char* pattern;
  bool matches;
};

// clang-format off
const PatternCase kPatterns[] = {
    {"abc", "abc", true}, {"abc", "ab", false}, {"ab", "abc", false}, {"", "", true}, {"", "*", true},
    {"abc", "*", true}, {"abc", "a*", true}, {"abc", "*c", true}, {"abc", "*b*", true}, {"abc", "*d*", false},
    {"abc", "a?c", true}, {"abc", "???", true}, {"abc", "????", false}, {"abc", "?", false},
    {"aab", "*ab", true}, {"abab", "*ab", true}, {"abac", "*ab", false}, {"a*c", "a*c", true}, {"abcabd", "*abd", true},
};
// clang-format on

TEST(Pattern, StarIsAnyTextAndQuestionMarkOneByte) {
  for (const PatternCase& each : kPatterns) {
    EXPECT_EQ(matchesPattern(each.name, each.pattern), each.matches)
        << each.name << ' ' << each.pattern;
  }
}

TEST(Pattern, EndsSoonWithManyStars) {
  std::string pattern;
  for (int i = 0; i < 1000; ++i) pattern += "*a";
  EXPECT_FALSE(matchesPattern(std::string(10000, 'a') + 'b', pattern + "*c"));
}

// Of each class whatever has a size: a box of three edges, a duct of two sides, a cone of two ends.
TEST(SelectionBySize, LooksAtEverySizeOfAnElement) {
  auto relb = std::make_shared<Relb>();
  relb->startVector = {300, 0, 0};
  relb->endVector = {0, 300, 0};
  relb->depth = 400;
  relb->width = 500;
  const std::shared_ptr<Geo> elements[] = {
      std::make_shared<Box>(GeVector(0, 0, 0), GeVector(100, 0, 0), GeVector(0, 200, 0),
                            GeVector(0, 0, 300)),
      relb, std::make_shared<Cone>(GeVector(0, 0, 0), GeVector(0, 0, 9), 600, 700)};
  for (int size = 100; size <= 700; size += 100) {
    Selection selection;
    selection.add(kSize, std::to_string(size));
    for (std::size_t i = 0; i < 3; ++i) {
      const std::size_t owner = size <= 300 ? 0 : size <= 500 ? 1 : 2;
      EXPECT_EQ(selection.takes({*elements[i], "P-1     ", "01", 1, 1}), i == owner) << size;
    }
  }
}

}  // namespace
}  // namespace VeskTest
