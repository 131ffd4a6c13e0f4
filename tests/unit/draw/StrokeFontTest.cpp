// SPDX-License-Identifier: MIT
#include "draw/StrokeFont.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace VeskTest {
namespace {

using Vesk::charactersOf;
using Vesk::FontLine;
using Vesk::FontPoint;
using Vesk::StrokeFont;

std::vector<FontLine> linesOf(std::string_view text) {
  std::vector<FontLine> lines;
  StrokeFont::append(text, lines);
  return lines;
}

// As "x y,x y;..." in sixths of a capital letter.
std::string shapeOf(std::string_view text) {
  std::string shape;
  for (const FontLine& line : linesOf(text)) {
    for (const FontPoint& p : line) {
      shape += std::to_string(static_cast<int>(p.x * 6 + 0.5)) + ' ' +
               std::to_string(static_cast<int>(p.y * 6 + 2.5) - 2) + ',';
    }
    shape += ';';
  }
  return shape;
}

struct ShapeCase {
  const char* name;
  std::string text;
  const char* shape;
};

const ShapeCase kShapes[] = {
    {"CapitalsAreSixHigh", "L", "0 6,0 0,4 0,;"},
    {"DotIsOnePoint", ".", "0 0,;"},
    {"SecondLetterTwoBehindTheFirst", "LL", "0 6,0 0,4 0,;6 6,6 0,10 0,;"},
    {"BlankIsThreeWide", "L L", "0 6,0 0,4 0,;11 6,11 0,15 0,;"},
    {"OtherCharactersAreBoxes", "\xE4\xB8\xAD", "0 0,0 6,4 6,4 0,0 0,;"},
    {"EachBrokenByteIsLatin1", "\xB0", "0 6,1 6,1 5,0 5,0 6,;"},
    {"DegreeInUtf8IsTheSame", "\xC2\xB0", "0 6,1 6,1 5,0 5,0 6,;"},
    {"ControlCharactersAreBoxes", "\x01", "0 0,0 6,4 6,4 0,0 0,;"},
    {"Nothing", "", ""},
};

TEST(StrokeFont, MakesLines) {
  for (const ShapeCase& each : kShapes) EXPECT_EQ(shapeOf(each.text), each.shape) << each.name;
}

TEST(StrokeFont, LettersDifferAndStayInTheirCells) {
  std::set<std::string> shapes;
  for (char c = 0x20; c < 0x7F; ++c) {
    const std::string text(1, c);
    EXPECT_TRUE(shapes.insert(shapeOf(text)).second) << text;
    for (const FontLine& line : linesOf(text)) {
      ASSERT_FALSE(line.empty()) << text;
      for (const FontPoint& p : line) {
        EXPECT_TRUE(p.x >= 0 && p.x <= StrokeFont::widthOf(text) + 1e-12) << text;
        EXPECT_TRUE(p.y >= -0.34 && p.y <= 1.17) << text;
      }
    }
  }
}

struct HeightCase {
  const char* letters;
  double top;  // sixths
  double bottom;
};

// Capitals and digits are six high, small letters four; what hangs down goes down by two.
TEST(StrokeFont, LettersAreAsHighAsTheirKind) {
  const HeightCase rows[] = {
      {"ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789", 6, 0},
      {"bdfhiklt", 6, 0},
      {"acemnorsuvwxz", 4, 0},
      {"gpqy", 4, -2},
  };
  for (const HeightCase& row : rows) {
    for (const char* c = row.letters; *c != '\0'; ++c) {
      double top = -9;
      double bottom = 9;
      double left = 9;
      for (const FontLine& line : linesOf(std::string(1, *c))) {
        for (const FontPoint& p : line) {
          top = std::max(top, p.y * 6);
          bottom = std::min(bottom, p.y * 6);
          left = std::min(left, p.x * 6);
        }
      }
      EXPECT_NEAR(top, row.top, 1e-9) << *c;
      EXPECT_NEAR(bottom, row.bottom, 1e-9) << *c;
      EXPECT_NEAR(left, *c == '1' ? 1 : 0, 1e-9) << *c;  // below the flag of a 1 nothing stands
    }
  }
}

struct SignCase {
  const char* sign;
  const char* beginning;  // the letter whose lines it begins with
  std::size_t more;       // lines
};

TEST(StrokeFont, SignsAreLettersWithMore) {
  const SignCase rows[] = {
      {"\xC3\x84", "A", 2},        {"\xC3\x96", "O", 2},     {"\xC3\x9C", "U", 2},
      {"\xC3\xA4", "a", 2},        {"\xC3\xB6", "o", 2},     {"\xC3\xBC", "u", 2},
      {"\xC3\x98", "O", 1},        {"\xE2\x8C\x80", "O", 1}, {"\xC3\xB8", "o", 1},
      {"\xCE\xBC", "\xC2\xB5", 0}, {"\xC2\xA0", " ", 0},     {"\xF0\x9F\x98\x80", "\x01", 0},
      {"\xE2\x82\xAC", "\x01", 0},
  };
  for (const SignCase& row : rows) {
    const std::string sign = shapeOf(row.sign);
    const std::string letter = shapeOf(row.beginning);
    EXPECT_EQ(sign.substr(0, letter.size()), letter) << row.sign;
    EXPECT_EQ(linesOf(row.sign).size(), linesOf(row.beginning).size() + row.more) << row.sign;
    EXPECT_DOUBLE_EQ(StrokeFont::widthOf(row.sign), StrokeFont::widthOf(row.beginning));
  }
}

// By the tables of Unicode: what is too long, too large, half of a pair or cut off is bytes of
// Latin-1.
TEST(StrokeFont, CharactersAreThoseOfUtf8) {
  struct Row {
    std::string bytes;
    std::u32string characters;
  };
  const Row rows[] = {
      {"A", U"A"},
      {"\xC2\x80", {0x80}},
      {"\xDF\xBF", {0x7FF}},
      {"\xE0\xA0\x80", {0x800}},
      {"\xEF\xBF\xBF", {0xFFFF}},
      {"\xED\x9F\xBF", {0xD7FF}},
      {"\xEE\x80\x80", {0xE000}},
      {"\xF0\x90\x80\x80", {0x10000}},
      {"\xF4\x8F\xBF\xBF", {0x10FFFF}},
      {"\xF4\x90\x80\x80", {0xF4, 0x90, 0x80, 0x80}},
      {"\xF5\x80\x80\x80", {0xF5, 0x80, 0x80, 0x80}},
      {"\xC1\xBF", {0xC1, 0xBF}},
      {"\xE0\x9F\xBF", {0xE0, 0x9F, 0xBF}},
      {"\xF0\x8F\xBF\xBF", {0xF0, 0x8F, 0xBF, 0xBF}},
      {"\xED\xA0\x80", {0xED, 0xA0, 0x80}},
      {"\xED\xBF\xBF", {0xED, 0xBF, 0xBF}},
      {"\xC3", {0xC3}},
      {"\xE2\x82", {0xE2, 0x82}},
      {"\xE2\x82z", {0xE2, 0x82, 'z'}},
  };
  for (const Row& row : rows) EXPECT_EQ(charactersOf(row.bytes), row.characters) << row.bytes;
}

// L is 4 sixths wide, the gap 2, the blank 3.
TEST(StrokeFont, MeasuresTexts) {
  EXPECT_DOUBLE_EQ(StrokeFont::widthOf(""), 0.0);
  EXPECT_DOUBLE_EQ(StrokeFont::widthOf("L"), 4.0 / 6.0);
  EXPECT_DOUBLE_EQ(StrokeFont::widthOf("L L"), 15.0 / 6.0);
}

}  // namespace
}  // namespace VeskTest
