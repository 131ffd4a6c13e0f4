// SPDX-License-Identifier: MIT
#include "draw/StrokeFont.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace VeskTest {
namespace {

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

// L is 4 sixths wide, the gap 2, the blank 3.
TEST(StrokeFont, MeasuresTexts) {
  EXPECT_DOUBLE_EQ(StrokeFont::widthOf(""), 0.0);
  EXPECT_DOUBLE_EQ(StrokeFont::widthOf("L"), 4.0 / 6.0);
  EXPECT_DOUBLE_EQ(StrokeFont::widthOf("L L"), 15.0 / 6.0);
}

}  // namespace
}  // namespace VeskTest
