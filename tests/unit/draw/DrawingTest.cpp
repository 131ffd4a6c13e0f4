// SPDX-License-Identifier: MIT
// What a drawing has besides the model: scale bar, axes and level texts.
#include "draw/Drawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "draw/Models.h"

namespace VeskTest {
namespace {

using namespace Vesk;

// A drawing of 900 pixels has a unit of one pixel; of 1800 by 900 the model has
// 1800 - 2 * 36 by 900 - 36 - 84 = 1728 by 780.
DrawingStyle styleOf(std::string_view view, int width, int height) {
  DrawingStyle style = plainStyle(view, width, height);
  style.isPlain = false;
  return style;
}

Model plate(double width, double height) { return {box({0, 0, 0}, {width, 100, height})}; }

std::string namesOf(const Drawing& drawing) {
  std::string names;
  for (const Label& label : drawing.labels()) names += label.text + ' ';
  return names;
}

struct FurnitureCase {
  const char* name;
  const char* view;
  int width;
  int height;
  const char* labels;
  std::size_t bars;
  std::size_t axes;
};

// 3456 mm are 1728 pixels: a quarter of 1800 pixels is 900 mm, and 500 the round length
// below. The isometric view is sqrt(2/3) * (3556 / 2 + 1000) = 2268 high in 780 pixels:
// there a quarter is 1309 mm. At 0.7, the least unit, the axes take (30 + 12 + 6) * 0.7 = 33.6 and
// their names as much again as 42 * 0.7 = 29.4: 63 across and 58.8 upwards.
const FurnitureCase kFurniture[] = {
    {"AxisTowardsTheEyeIsLeftOut", "front", 1800, 900, "500 mm X Z ", 1, 2},
    {"AxisTowardsTheEyeFromAbove", "top", 1800, 900, "500 mm X Y ", 1, 2},
    {"AllAxesOfAnIsometricView", "iso", 1800, 900, "1000 mm X Y Z ", 1, 3},
    {"TooNarrowForAxes", "front", 62, 400, "500 mm ", 1, 0},
    {"WideEnoughForAxes", "front", 64, 400, "500 mm X Z ", 1, 2},
    {"TooLowForAxes", "front", 400, 58, "500 mm ", 1, 0},
    {"HighEnoughForAxes", "front", 400, 60, "500 mm X Z ", 1, 2},
    // Its base line is 24 * 0.7 = 16.8 from below.
    {"TooLowForTheScaleBar", "front", 400, 16, "", 0, 0},
    {"HighEnoughForTheScaleBar", "front", 400, 17, "2000 mm ", 1, 0},
    // The bar begins at 36 * 0.7 = 25.2 and is between a tenth and a quarter wide.
    {"TooNarrowForTheScaleBar", "front", 26, 400, "", 0, 0},
};

TEST(DrawingFurniture, StandsWhereThereIsRoom) {
  for (const FurnitureCase& each : kFurniture) {
    const Scene scene = sceneOf(plate(3456, 1000));
    const Drawing drawing(scene, styleOf(each.view, each.width, each.height));
    EXPECT_EQ(drawing.scaleBar().size(), each.bars) << each.name;
    EXPECT_EQ(drawing.axes().size(), each.axes) << each.name;
    if (each.width == 1800) {
      EXPECT_EQ(namesOf(drawing), each.labels) << each.name;
    }
  }
}

// From 36 for 500 mm, which are 250 pixels, 24 above the lower edge; its ends are 5 high.
TEST(DrawingFurniture, ScaleBarIsAsLongAsItSays) {
  const Scene scene = sceneOf(plate(3456, 1000));
  const Drawing drawing(scene, styleOf("front", 1800, 900));
  const std::vector<ScreenPoint>& bar = drawing.scaleBar().at(0).points;
  ASSERT_EQ(bar.size(), 4u);
  const double expected[][2] = {{36, 871}, {36, 876}, {286, 876}, {286, 871}};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_NEAR(bar[i].x, expected[i][0], 1e-9) << i;
    EXPECT_NEAR(bar[i].y, expected[i][1], 1e-9) << i;
  }
  // Its text stands level over the middle, 9 high, 6 above the bar.
  const Label& label = drawing.labels().at(0);
  EXPECT_NEAR(label.place.x, 161.0, 1e-9);
  EXPECT_NEAR(label.place.y, 870.0, 1e-9);
  EXPECT_TRUE(label.isMiddle);
  EXPECT_EQ(label.along.x, 9.0);
  EXPECT_EQ(label.along.y, 0.0);
  EXPECT_EQ(label.up.x, 0.0);
  EXPECT_EQ(label.up.y, -9.0);
}

// Of 450 by 200 pixels all is at the least unit of 0.7: from 36 * 0.7 on, 24 * 0.7
// above the lower edge, 5 * 0.7 high.
TEST(DrawingFurniture, IsSmallerInASmallDrawing) {
  const Scene scene = sceneOf(plate(3456, 1000));
  const Drawing drawing(scene, styleOf("front", 450, 200));
  const std::vector<ScreenPoint>& bar = drawing.scaleBar().at(0).points;
  EXPECT_NEAR(bar[0].x, 25.2, 1e-9);
  EXPECT_NEAR(bar[0].y, 200 - 16.8 - 3.5, 1e-9);
  EXPECT_NEAR(bar[1].y, 200 - 16.8, 1e-9);
}

// Where the axes begin: 30 + 12 + 6 from the right and 30 + 12 from below. X goes 30
// to the right, Z 30 upwards; the names stand 9 further on, half their height of 9
// lower.
TEST(DrawingFurniture, AxesPointAsTheModelLies) {
  const Scene scene = sceneOf(plate(3456, 1000));
  const Drawing drawing(scene, styleOf("front", 1800, 900));
  const double expected[][4] = {{1752, 858, 1782, 858}, {1752, 858, 1752, 828}};
  const double names[][2] = {{1791, 862.5}, {1752, 823.5}};
  ASSERT_EQ(drawing.axes().size(), 2u);
  for (std::size_t i = 0; i < 2; ++i) {
    const std::vector<ScreenPoint>& line = drawing.axes()[i].points;
    EXPECT_NEAR(line[0].x, expected[i][0], 1e-9) << i;
    EXPECT_NEAR(line[0].y, expected[i][1], 1e-9) << i;
    EXPECT_NEAR(line[1].x, expected[i][2], 1e-9) << i;
    EXPECT_NEAR(line[1].y, expected[i][3], 1e-9) << i;
    EXPECT_NEAR(drawing.labels()[i + 1].place.x, names[i][0], 1e-9) << i;
    EXPECT_NEAR(drawing.labels()[i + 1].place.y, names[i][1], 1e-9) << i;
  }
}

struct AreaCase {
  const char* name;
  int width;
  int height;
  bool isPlain;
  double pixels;  // of the model's width
};

// A square, so that the narrower side of the area is its width.
const AreaCase kAreas[] = {
    {"MarginsOfAnEighth", 100, 100, true, 75},            // 100 * 6/8
    {"MarginsOf36", 900, 900, true, 828},                 // 900 - 72
    {"FooterOf84", 1200, 900, false, 780},                // 900 - 36 - 84
    {"FooterOfThreeEighths", 400, 80, false, 40},         // 80 * (1 - 1/8 - 3/8)
    {"FooterOf58.8InASmallOne", 400, 200, false, 116.2},  // 200 - 25 - 58.8
};

TEST(DrawingArea, LeavesTheMarginsFree) {
  for (const AreaCase& each : kAreas) {
    const Scene scene = sceneOf(plate(1000, 1000));
    DrawingStyle style = plainStyle("front", each.width, each.height);
    style.isPlain = each.isPlain;
    const Drawing drawing(scene, style);
    EXPECT_NEAR(drawing.projection().scale() * 1000.0, each.pixels, 1e-9) << each.name;
  }
}

struct FarTextCase {
  const char* name;
  GePoint place;  // of a text beside a plate of 1000 by 1000
  bool isFar;
};

// Further than 1000 from the box of all else, on any side.
const FarTextCase kFarTexts[] = {
    {"OnThePlate", {500, 0, 500}, false},
    {"BesideIt", {1990, 0, 500}, false},
    {"FarToTheRight", {2010, 0, 500}, true},
    {"FarToTheLeft", {-1010, 0, 500}, true},
    {"FarBefore", {500, -1010, 500}, true},
    {"FarBehind", {500, 1110, 500}, true},
    {"FarAbove", {500, 0, 2010}, true},
    {"FarBelow", {500, 0, -1010}, true},
    {"AMillionAway", {1e9, 1e9, 500}, true},
    {"BeyondAllPixels", {1e11, -1e11, 500}, true},
    {"BeyondAllOnTheLeft", {-1e11, 0, 500}, true},
};

TEST(DrawingArea, TextsFarOffDoNotShrinkThePlant) {
  const Scene alone = sceneOf(plate(1000, 1000));
  const DrawingStyle style = plainStyle("front");
  const double scale = Drawing::scaleOf(alone, style);
  for (const FarTextCase& each : kFarTexts) {
    Model model = plate(1000, 1000);
    model.push_back(text(each.place, "NOTE"));
    const Scene scene = sceneOf(model);
    const Drawing drawing(scene, style);
    EXPECT_EQ(drawing.farTexts(), each.isFar ? 1U : 0U) << each.name;
    if (each.isFar) {
      EXPECT_DOUBLE_EQ(drawing.projection().scale(), scale) << each.name;
      EXPECT_EQ(namesOf(drawing), "") << each.name;
    }
  }
}

struct HeapCase {
  const char* name;
  std::size_t texts;
  double apart;  // from one text to the next, along x; a text is 400 wide
  std::size_t drawn;
};

// A drawing of 900 shows 1200 as 828 pixels, so a text takes 276 by 69 of them.
const HeapCase kHeaps[] = {
    {"AHundredAtOnePlace", 100, 0, 100},
    {"OfMoreTheFirstHundredStay", 101, 0, 100},
    {"OfThousands", 8000, 0, 100},
    {"BesideEachOtherAllStay", 3, 400, 3},
    // 400 / 5.333: 75 lie over each other.
    {"ARowThatNoHundredShare", 150, 5.333, 150},
};

// As wide as ten letters. A drawing of 900 shows its 1000 of 1200 as 690 pixels; L is 4 sixths of
// a letter's height wide, with 2 between two: n of them n - 1/3. Half a pixel for each: 1380.
struct NarrowCase {
  const char* name;
  std::size_t letters;
  bool isInItsPlace;
};

const NarrowCase kNarrow[] = {
    {"TenStandInTheirPlace", 10, true},
    {"ThirteenHundredStill", 1300, true},
    {"FifteenHundredStandLevel", 1500, false},
    {"AMillionToo", 1'000'000, false},
};

TEST(DrawingTexts, StandLevelWhereTheyAreTooNarrowToBeRead) {
  for (const NarrowCase& each : kNarrow) {
    const auto narrow = std::make_shared<Txt>();
    narrow->position = {100, -1, 500};
    narrow->direction = {1, 0, 0};
    narrow->upDirection = {0, 0, 1};
    narrow->charWidth = 1000.0 / static_cast<double>(each.letters);
    narrow->height = 100;
    narrow->alignment = 1;
    narrow->text = std::string(each.letters, 'L');
    const Scene scene = sceneOf({box({0, 0, 0}, {1200, 100, 1200}), narrow});
    const Drawing drawing(scene, plainStyle("front", 900, 900));
    ASSERT_EQ(drawing.labels().size(), 1U) << each.name;
    EXPECT_EQ(drawing.labels().front().width > 0.0, each.isInItsPlace) << each.name;
  }
}

TEST(DrawingTexts, AreLeftOutWhereAHundredOthersLie) {
  for (const HeapCase& each : kHeaps) {
    Model model{box({0, 0, 0}, {1200, 100, 1200})};
    for (std::size_t i = 0; i < each.texts; ++i) {
      model.push_back(
          text({static_cast<double>(i) * each.apart, -1, 500}, std::to_string(i % 10) + "NOT"));
    }
    const Scene scene = sceneOf(model);
    const Drawing drawing(scene, plainStyle("front", 900, 900));
    EXPECT_EQ(drawing.labels().size(), each.drawn) << each.name;
    EXPECT_EQ(drawing.buriedTexts(), each.texts - each.drawn) << each.name;
    EXPECT_EQ(drawing.labels().front().text, "0NOT") << each.name;
  }
}

constexpr double kDegree = 3.14159265358979323846 / 180;

std::shared_ptr<Geo> leaningText(const GeVector& along, const GeVector& up, double height) {
  return std::make_shared<Txt>(GePoint(500, -1, 500), along, up, height / 4, height, 1, 0, "LLLL");
}

GeVector directionAt(double degrees) {
  return {std::cos(degrees * kDegree), 0, std::sin(degrees * kDegree)};
}

struct ReadableCase {
  const char* name;
  double along;  // degrees
  double up;
  double height;
  bool isReadable;
};

// Of 300 by 300 a plate of 1000 takes 300 - 2 * 36 * 0.7 = 249.6 pixels: a text of 7 * 0.7 pixels
// is 19.63 high. Between both directions the sine is above a quarter from 14.48 degrees on,
// counted forwards.
const ReadableCase kReadable[] = {
    {"Upright", 0, 90, 100, true},
    {"Slanting", 30, 120, 100, true},
    {"UpsideDown", 180, 270, 100, true},
    {"Mirrored", 180, 90, 100, false},
    {"MirroredUpsideDown", 0, 270, 100, false},
    {"LeaningFarForwards", 0, 15, 100, true},
    {"LeaningTooFarForwards", 0, 14, 100, false},
    {"LeaningFarBack", 0, 165, 100, true},
    {"LeaningTooFarBack", 0, 166, 100, false},
    {"SevenPixelsHigh", 0, 90, 19.64, true},
    {"NotSevenPixelsHigh", 0, 90, 19.62, false},
};

TEST(DrawingTexts, LieInTheirPlaneWhereTheyCanBeRead) {
  for (const ReadableCase& each : kReadable) {
    Model model = plate(1000, 1000);
    model.push_back(leaningText(directionAt(each.along), directionAt(each.up), each.height));
    const Scene scene = sceneOf(model);
    const Drawing drawing(scene, plainStyle("front", 300, 300));
    ASSERT_EQ(drawing.labels().size(), 1U) << each.name;
    const Label& label = drawing.labels()[0];
    const double pixels = each.height * 0.2496;
    // As wide as its height; level ones are 6.3 high and as wide as the font makes them.
    EXPECT_NEAR(label.width, each.isReadable ? 1.0 : 0.0, 1e-9) << each.name;
    const GeVector along = directionAt(each.along) * pixels;
    const GeVector up = directionAt(each.up) * pixels;
    EXPECT_NEAR(label.along.x, each.isReadable ? along.x : 6.3, 1e-9) << each.name;
    EXPECT_NEAR(label.along.y, each.isReadable ? -along.z : 0.0, 1e-9) << each.name;
    EXPECT_NEAR(label.up.x, each.isReadable ? up.x : 0.0, 1e-9) << each.name;
    EXPECT_NEAR(label.up.y, each.isReadable ? -up.z : -6.3, 1e-9) << each.name;
    // 0.18 of the height, and 2.5 * 0.7 at the most.
    const double halo = each.isReadable ? std::min(0.18 * pixels, 1.75) : 0.18 * 6.3;
    EXPECT_NEAR(drawing.haloOf(label), halo, 1e-9) << each.name;
  }
}

struct EdgeCase {
  const char* name;
  int pixels;
  GePoint at;
  const char* text;
  double x;
  double y;
};

// Of 300 by 300 a plate of 1000 takes 25.2 to 274.8, and a level text is 6.3 high: LLLL, 22 sixths
// wide, takes 23.1 and keeps 6.3 from the edge. Of 40 by 40 it takes 5 to 35, and L takes 4.2.
const EdgeCase kEdges[] = {
    {"InTheMiddle", 300, {500, -1, 500}, "LLLL", 150, 150},
    {"AtTheLeft", 300, {0, -1, 500}, "LLLL", 25.2, 150},
    {"AtTheRight", 300, {1000, -1, 500}, "LLLL", 300 - 23.1 - 6.3, 150},
    {"AtTheLeftOfASmallOne", 40, {0, -1, 500}, "L", 6.3, 20},
    {"AtTheRightOfASmallOne", 40, {1000, -1, 500}, "L", 40 - 4.2 - 6.3, 20},
    {"WiderThanTheDrawing", 40, {500, -1, 500}, "LLLLLLLLLLLL", 6.3, 20},
    {"AtTheTopOfASmallOne", 40, {500, -1, 1000}, "L", 20, 12.6},
    {"AtTheBottomOfASmallOne", 40, {500, -1, 0}, "L", 20, 40 - 6.3},
};

TEST(DrawingTexts, LevelOnesStayWithinTheDrawing) {
  for (const EdgeCase& each : kEdges) {
    Model model = plate(1000, 1000);
    model.push_back(std::make_shared<Txt>(each.at, GeVector(1, 0, 0), GeVector(0, 0, 1), 0.01, 0.01,
                                          1, 0, each.text));
    const Scene scene = sceneOf(model);
    const Drawing drawing(scene, plainStyle("front", each.pixels, each.pixels));
    ASSERT_EQ(drawing.labels().size(), 1U) << each.name;
    EXPECT_NEAR(drawing.labels()[0].place.x, each.x, 1e-3) << each.name;
    EXPECT_NEAR(drawing.labels()[0].place.y, each.y, 1e-3) << each.name;
  }
}

struct OverlapCase {
  const char* name;
  double right;  // of the second text from the first, pixels
  double up;
  std::size_t labels;
};

// Each takes 23.1 by 6.3 and keeps 0.3 of its height free at the sides and above, 0.4 below: 26.88
// by 10.71.
const OverlapCase kOverlaps[] = {
    {"SamePlace", 0, 0, 1},         {"BesideIt", 26.8, 0, 1},       {"FurtherBesideIt", 27, 0, 2},
    {"BeforeIt", -26.8, 0, 1},      {"FurtherBeforeIt", -27, 0, 2}, {"AboveIt", 0, 10.6, 1},
    {"FurtherAboveIt", 0, 10.8, 2}, {"BelowIt", 0, -10.6, 1},       {"FurtherBelowIt", 0, -10.8, 2},
    {"Aslant", 26.8, -10.6, 1},
};

TEST(DrawingTexts, OfLevelOnesOverEachOtherTheFirstStays) {
  for (const OverlapCase& each : kOverlaps) {
    Model model = plate(1000, 1000);
    model.push_back(std::make_shared<Txt>(GePoint(500, -1, 500), GeVector(1, 0, 0),
                                          GeVector(0, 0, 1), 0.01, 0.01, 1, 0, "LLLL"));
    model.push_back(
        std::make_shared<Txt>(GePoint(500 + each.right / 0.2496, -1, 500 + each.up / 0.2496),
                              GeVector(1, 0, 0), GeVector(0, 0, 1), 0.01, 0.01, 1, 0, "TTTT"));
    const Scene scene = sceneOf(model);
    const Drawing drawing(scene, plainStyle("front", 300, 300));
    ASSERT_EQ(drawing.labels().size(), each.labels) << each.name;
    EXPECT_EQ(drawing.labels()[0].text, "LLLL") << each.name;
  }
}

// An outline is 1.6, an edge 0.9, a polyline 2.2 and a point 3 to each side, in a drawing of 900.
// Small drawings have 0.7 of that at least.
TEST(DrawingLines, HaveTheirWidths) {
  const Scene scene = sceneOf(plate(1000, 1000));
  struct Row {
    int pixels;
    double unit;
  };
  const Row rows[] = {{720, 0.8}, {450, 0.7}, {90, 0.7}};
  for (const Row& row : rows) {
    const Drawing drawing(scene, plainStyle("front", row.pixels, row.pixels));
    EXPECT_NEAR(drawing.widthOf(LineWeight::kOutline), 1.6 * row.unit, 1e-9) << row.pixels;
    EXPECT_NEAR(drawing.widthOf(LineWeight::kEdge), 0.9 * row.unit, 1e-9) << row.pixels;
    EXPECT_NEAR(drawing.widthOf(LineWeight::kLine), 2.2 * row.unit, 1e-9) << row.pixels;
    EXPECT_NEAR(drawing.dotRadius(), 3.0 * row.unit, 1e-9) << row.pixels;
  }
}

// 36 to either side, eight times as much at the most.
TEST(DrawingArea, MarginsGrowWithTheDrawing) {
  const Scene scene = sceneOf(plate(1000, 1000));
  struct Row {
    int pixels;
    double margin;
  };
  const Row rows[] = {{1800, 72}, {7200, 288}, {9000, 288}};
  for (const Row& row : rows) {
    const DrawingStyle style = plainStyle("front", row.pixels, row.pixels);
    EXPECT_NEAR(Drawing::scaleOf(scene, style) * 1000, row.pixels - 2 * row.margin, 1e-9);
  }
}

struct InkCase {
  Colour paper;
  Colour ink;
};

TEST(DrawingLines, AreDarkOnLightPaperAndLightOnDark) {
  const Scene scene = sceneOf(plate(1000, 1000));
  const InkCase rows[] = {
      {{255, 255, 255}, {28, 36, 48}}, {{0, 0, 0}, {228, 233, 239}},
      {{128, 128, 128}, {28, 36, 48}}, {{100, 100, 100}, {228, 233, 239}},
      {{0, 255, 0}, {28, 36, 48}},     {{0, 0, 255}, {228, 233, 239}},
  };
  for (const InkCase& row : rows) {
    DrawingStyle style = plainStyle("front");
    style.background = row.paper;
    EXPECT_EQ(Drawing(scene, style).ink(), row.ink) << int{row.paper.red};
  }
}

struct LengthCase {
  double width;  // of a plate that 249.6 pixels of 300 show, half as high
  const char* text;
};

// A quarter of 300 pixels at 249.6 for the plate: 0.30048 of its width, and the largest of 1, 2
// and 5 below; metres from 10 on.
TEST(DrawingFurniture, ScaleBarHasARoundLength) {
  const LengthCase rows[] = {
      {332, "50 mm"},   {333, "100 mm"},  {664, "100 mm"},   {667, "200 mm"},    {1663, "200 mm"},
      {1665, "500 mm"}, {3327, "500 mm"}, {3329, "1000 mm"}, {33278, "5000 mm"}, {33281, "10 m"},
      {66554, "10 m"},  {66561, "20 m"},  {5, "1 mm"},       {0.5, "0.1 mm"},    {1e7, "2000 m"},
  };
  for (const LengthCase& row : rows) {
    const Scene scene = sceneOf({box({0, 0, 0}, {row.width, row.width, row.width / 2})});
    const Drawing drawing(scene, styleOf("front", 300, 300));
    EXPECT_EQ(drawing.labels().at(0).text, row.text) << row.width;
  }
}

TEST(DrawingArea, TextsAloneAreNotFar) {
  const Model texts{text({0, 0, 0}, "A"), text({1e6, 0, 0}, "B")};
  EXPECT_EQ(farTextsOf(sceneOf(texts)), std::vector<bool>(2, false));
}

// 3456 mm are 1728 pixels: a quarter of one is half a millimetre.
TEST(DrawingArea, RoundShapesAreAQuarterOfAPixelOffAtMost) {
  const Fineness fineness =
      Drawing::finenessFor(sceneOf(plate(3456, 1000)), styleOf("front", 1800, 900));
  EXPECT_NEAR(fineness.tolerance(1.0), 0.5, 1e-12);
  EXPECT_NEAR(fineness.tolerance(1000.0), 0.5, 1e-12);
}

}  // namespace
}  // namespace VeskTest
