// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <ostream>
#include <sstream>
#include <string>

#include "elements/Kinds.h"
#include "support/TempFolder.h"
#include "tools/ToolRun.h"
#include "view/Palette.h"
#include "view/Svg.h"

namespace VeskTest {
namespace {

std::string bytesOf(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream bytes;
  bytes << stream.rdbuf();
  return bytes.str();
}

// In a folder with good.dat (a pipe), bad.dat (a damaged one behind a good one),
// thin.dat (a pipe without diameter), heap.dat (a pipe and 102 texts at one place),
// text.txt (no records), empty.dat and old.png.
constexpr RunCase kDraws[] = {
    {"Png", "view good.dat -o new.png", 0, "new.png: 1 element, 1600 x 1200 pixels\n", ""},
    {"Svg", "view good.dat -o new.svg", 0, "new.svg: 1 element, 1600 x 1200 pixels\n", ""},
    {"EndingInCapitals", "view good.dat -o capitals.PNG --pixels 64x48", 0,
     "capitals.PNG: 1 element", ""},
    {"ManyFilesAreOneDrawing", "view good.dat good.dat -o new.svg", 0, "2 elements", ""},
    {"Size", "view good.dat -o new.png --pixels 64x48", 0, "64 x 48 pixels", ""},
    {"StandardInput", "view - -o new.png --pixels 64x48", 0, "new.png: 1 element", ""},
    {"SvgToStandardOutput", "view good.dat -o - --to svg", 0, "<svg xmlns=", ""},
    {"PngToStandardOutput", "view good.dat -o - --to png --pixels 64x48", 0, "PNG", ""},
    {"NothingToDraw", "view empty.dat -o new.png --pixels 64x48", 0, "0 elements", ""},
    {"FromTheTop", "view good.dat -o new.svg --from top --plain", 0, "new.svg", ""},
    {"FromNowhere", "view good.dat -o new.svg --from behind", 2, "", "vesk view --help"},
    {"SizeOfOneNumber", "view good.dat -o new.png --pixels 64", 2, "", "not two sizes"},
    {"SizeWithRest", "view good.dat -o new.png --pixels 64x48px", 2, "", "not two sizes"},
    {"SizeTooSmall", "view good.dat -o new.png --pixels 64x15", 2, "", "not two sizes"},
    {"SizeTooLarge", "view good.dat -o new.png --pixels 8193x64", 2, "", "not two sizes"},
    {"SizeBelowZero", "view good.dat -o new.png --pixels -64x64", 2, "", "not two sizes"},
    {"Background", "view good.dat -o new.svg --background \"#1c2430\"", 0, "new.svg", ""},
    {"NoColour", "view good.dat -o new.svg --background blu", 2, "", "not a colour"},
    {"NoUnit", "view good.dat -o new.svg --unit 0", 2, "", "vesk view --help"},
    {"ToNeedsAFile", "view good.dat --to png", 2, "", "--to png needs -o"},
    {"DrawingOptionOfAPage", "view good.dat -o new.html --from top", 2, "",
     "do not apply to a page"},
    {"MissingFile", "view none.dat -o new.png", 3, "", "none.dat: No such file"},
    {"NoRecordFile", "view text.txt -o new.svg", 3, "", "this is not a record file"},
    {"DamagedElement", "view bad.dat -o new.svg", 1, "new.svg: 1 element", "[V021]"},
    {"WhatCannotBeDrawn", "view thin.dat -o new.svg", 1, "1 element",
     "thin.dat:1: error: cylinder can't be shown: diameter of zero [V401]"},
    {"TextsThatAHundredOthersCover", "view heap.dat -o new.svg", 0, "new.svg: 103 elements",
     "2 texts lie where 100 others do: left out"},
    {"ExistingFile", "view good.dat -o old.png", 4, "", "-f replaces it"},
    {"ExistingFileByForce", "view good.dat -o old.png -f --pixels 64x48", 0, "old.png: 1 element",
     ""},
    {"OntoItself", "view good.dat -o good.dat --to svg -f", 2, "", "both input and output"},
    {"IntoNoFolder", "view good.dat -o none/new.png", 4, "", "none/new.png: No such file"},
};

// 102 texts at one place.
std::string heapOfTexts() {
  std::string records;
  for (int i = 0; i < 102; ++i) {
    records +=
        "P-1     01002    00x 0 0 500,1 0 0,0 0 1,100,60,1,4\n"
        "P-1     01002    01x NOTE\n";
  }
  return records;
}

class DrawingTest : public testing::TestWithParam<RunCase> {};

TEST_P(DrawingTest, Runs) {
  const TempFolder folder;
  writeFile("good.dat", kPipe);
  writeFile("bad.dat", kPipe + "P-1     01002    00c 0 0 0,0 0 1000x,100\n");
  writeFile("thin.dat", "P-1     01001    00c 0 0 0,0 0 1000,0\n");
  writeFile("text.txt", "nothing of this kind\n");
  writeFile("heap.dat", kPipe + heapOfTexts());
  writeFile("empty.dat", "");
  writeFile("old.png", "old");
  const ToolRun run = expectRun(GetParam());
  EXPECT_EQ(std::filesystem::exists("new.png") || std::filesystem::exists("new.svg"),
            contains(run.out, "new."));
}

INSTANTIATE_TEST_SUITE_P(Drawings, DrawingTest, testing::ValuesIn(kDraws),
                         [](const auto& each) { return std::string(each.param.name); });

// The pipe is 100 wide and 1000 high. From the front, plain, in 100 by 100 pixels
// with margins of 12.5 it is 75 high and 7.5 wide: from 46.25 to 53.75. Its two
// sides and two rims are one outline, which begins at a corner. Lines are 1.6 * 0.7
// wide.
TEST(Drawing, WritesPathsWithTwoDecimals) {
  const TempFolder folder;
  writeFile("pipe.dat", kPipe);
  const ToolRun run =
      runTool("view pipe.dat -o - --to svg --from front --pixels 100x100 --plain --title \"A<B\"");
  EXPECT_EQ(run.exit, 0);
  for (const char* part :
       {"<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"100\" height=\"100\" viewBox=\"0 0 100 "
        "100\" role=\"img\">\n<title>A&lt;B</title>\n"
        "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n",
        "<g id=\"outlines\" fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\" "
        "stroke-width=\"1.12\" stroke=\"#1c2430\">\n<path d=\"M",
        "46.25 12.5", "53.75 12.5", "46.25 87.5", "53.75 87.5", "\"/>\n</g>\n</svg>\n"}) {
    EXPECT_TRUE(contains(run.out, part)) << part << '\n' << run.out;
  }
}

TEST(Drawing, IsTheSameTwice) {
  const TempFolder folder;
  const std::string input = '"' + golden("elements.tokens.dat") + '"';
  for (const char* file : {"a.png", "b.png", "a.svg", "b.svg"}) {
    EXPECT_EQ(runTool("view " + input + " --pixels 300x200 -o " + file).exit, 0);
  }
  EXPECT_EQ(bytesOf("a.png"), bytesOf("b.png"));
  EXPECT_EQ(bytesOf("a.svg"), bytesOf("b.svg"));
}

// Without -f and with a fault nothing changes.
TEST(Drawing, AFailedRunLeavesTheOldFile) {
  const TempFolder folder;
  writeFile("text.txt", "nothing of this kind\n");
  writeFile("old.png", "old");
  EXPECT_EQ(runTool("view text.txt -o old.png -f").exit, 3);
  EXPECT_EQ(bytesOf("old.png"), "old");
}

// 1600 pixels less margins of 48 (36 * 1200 / 900) are 1504 for 1000 units, from
// the front. A quarter of the width, 400 pixels, is 265.9 units: 200 of them.
TEST(Drawing, ScaleBarIsRoundAndInMillimetresOrMetres) {
  const TempFolder folder;
  writeFile("row.dat", "P-1     01001    00c 0 0 0,1000 0 0,100\n");
  const auto drawn = [](const std::string& options) {
    return runTool("view row.dat -o - --to svg --from front " + options).out;
  };
  EXPECT_TRUE(contains(drawn(""), ">200 mm</text>"));
  EXPECT_TRUE(contains(drawn("--unit 25.4"), ">5000 mm</text>"));  // of 6753
  EXPECT_TRUE(contains(drawn("--unit 1000"), ">200 m</text>"));
  EXPECT_FALSE(contains(drawn("--plain"), "</text>"));
}

TEST(Drawing, AnSvgHasItsWidthAndHeight) {
  const TempFolder folder;
  writeFile("row.dat", "P-1     01001    00c 0 0 0,1000 0 0,100\n");
  const std::string svg = runTool("view row.dat -o - --to svg --pixels 300x200").out;
  EXPECT_TRUE(contains(svg, " width=\"300\" height=\"200\" viewBox=\"0 0 300 200\" ")) << svg;
}

// One path for each element, in its own colour, however many strokes it has.
TEST(Drawing, HasAPathForEachElement) {
  const TempFolder folder;
  writeFile("lines.dat",
            "P-1     01001    00l pt 0 0 0,pt 1000 0 0\n"
            "P-1     01002    00l pt 0 0 500,pt 1000 0 500,pt 0 0 900\n"
            "P-1     01003    00l pt 0 0 950,pt 1000 0 0\n");
  const std::string svg = runTool("view lines.dat -o - --to svg --from front --plain").out;
  std::size_t paths = 0;
  for (std::size_t at = 0; (at = svg.find("<path stroke=", at)) != svg.npos; ++at) ++paths;
  EXPECT_EQ(paths, 3U) << svg;
}

// Three characters as wide as high: a letter has 0.72 of the size of its font.
TEST(Drawing, ATextIsAsWideAsItsCharacters) {
  const TempFolder folder;
  writeFile("text.dat",
            "P-1     01001    00b 1000 0 0,0 0 0,0 1000 0,0 0 1000\n"
            "P-1     01002    00x 500 -10 100,1 0 0,0 0 1,100,100,1,3\n"
            "P-1     01002    01x ABC\n");
  const std::string svg = runTool("view text.dat -o - --to svg --from front --plain").out;
  const auto number = [&](const std::string& name) {
    const std::size_t at = svg.find(' ' + name + "=\"");
    return at == svg.npos ? 0.0 : std::stod(svg.substr(at + name.size() + 3));
  };
  EXPECT_GT(number("font-size"), 9.0) << svg;
  EXPECT_NEAR(number("textLength") / number("font-size"), 3 * 0.72, 1e-3);
}

TEST(Drawing, HasTheColoursOfThePage) {
  const std::string palette = bytesOf(VESK_PAGE_PALETTE);
  const std::vector<Vesk::Colour> colours = VeskTool::kindColours();
  ASSERT_EQ(colours.size(), VeskTool::kKinds);
  for (std::size_t i = 0; i < colours.size(); ++i) {
    const std::string row = "  " + std::string(nameOf(static_cast<VeskTool::Kind>(i))) + ": '" +
                            VeskTool::hexOf(colours[i]) + "',";
    EXPECT_TRUE(contains(palette, row)) << row;
  }
}

struct ColourCase {
  const char* text;
  const char* hex;  // nullptr: refused
};

constexpr ColourCase kColours[] = {
    {"white", "#ffffff"},   {"black", "#000000"}, {"#fff", "#ffffff"}, {"#1c2430", "#1c2430"},
    {"#1C2430", "#1c2430"}, {"#a5c", "#aa55cc"},  {"#", nullptr},      {"#12345", nullptr},
    {"#12345g", nullptr},   {"#-12345", nullptr}, {"red", nullptr},    {"", nullptr},
};

TEST(Drawing, ReadsColours) {
  for (const ColourCase& each : kColours) {
    const auto colour = VeskTool::readColour(each.text);
    ASSERT_EQ(colour.has_value(), each.hex != nullptr) << each.text;
    if (colour) {
      EXPECT_EQ(VeskTool::hexOf(*colour), each.hex);
    }
  }
  EXPECT_EQ(VeskTool::readColour("transparent")->alpha, 0);
}

struct XmlCase {
  const char* name;
  std::string text;
  const char* xml;
};

const XmlCase kXml[] = {
    {"Markup", "<a b=\"c\">&</a>", "&lt;a b=&quot;c&quot;&gt;&amp;&lt;/a&gt;"},
    {"Utf8StaysAsItIs", "\xC3\x98 60", "\xC3\x98 60"},
    {"Latin1BecomesUtf8", "\xD8 60", "\xC3\x98 60"},
    {"ControlCharacters", std::string("a\0b\x1B", 4),
     "a\xEF\xBF\xBD"
     "b\xEF\xBF\xBD"},
    {"LongForms", "\xC0\xBC", "\xC3\x80\xC2\xBC"},
    {"HalfOfAPair", "\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xEF\xBF\xBD"},
    {"NoCharacter", "\xEF\xBF\xBE", "\xEF\xBF\xBD"},
    {"BeyondTheFirstPlane", "\xF0\x9F\x94\xA5", "\xF0\x9F\x94\xA5"},
};

TEST(Drawing, MakesXmlOfAnyText) {
  for (const XmlCase& each : kXml) EXPECT_EQ(VeskTool::xmlText(each.text), each.xml) << each.name;
}

}  // namespace
}  // namespace VeskTest
