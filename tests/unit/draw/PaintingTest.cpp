// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "draw/Models.h"
#include "draw/Painter.h"
#include "draw/StrokeFont.h"

namespace Vesk {

void PrintTo(const Colour& c, std::ostream* out) {
  *out << int{c.red} << ' ' << int{c.green} << ' ' << int{c.blue} << ' ' << int{c.alpha};
}

}  // namespace Vesk

namespace VeskTest {
namespace {

using namespace Vesk;

constexpr Colour kWhite{255, 255, 255};
constexpr Colour kInk{28, 36, 48};
constexpr Colour kFirst{200, 0, 0};
constexpr Colour kSecond{0, 100, 0};

Picture pictureOf(const Model& model, DrawingStyle style, bool hasFaces = true) {
  style.colours = {kFirst, kSecond};
  const Scene scene = sceneOf(model);
  return paint(Drawing(scene, style), hasFaces);
}

// A face towards the eye has 0.64 + 0.48 * 2/3 = 0.96 of its colour.
constexpr Colour kFirstBefore{192, 0, 0};

struct PixelCase {
  const char* name;
  const char* view;
  Model model;
  int x;
  int y;
  Colour colour;
};

Model leaning(const std::vector<GePoint>& corners) {
  return {box({400, 500, 800}, {600, 510, 1000}), face(corners)};
}

Model plate() { return {box({0, 0, 0}, {1000, 100, 500})}; }

// 1000 wide is 75 pixels: the plate reaches from 12.5 to 87.5 and, as high as
// 37.5, from 31.25 to 68.75. Outlines are 1.6 * 0.7 = 1.12 wide: 11.94 to 13.06.
const PixelCase kPixels[] = {
    {"FaceInItsColour", "front", plate(), 50, 50, kFirstBefore},
    {"NothingBesideIt", "front", plate(), 5, 50, kWhite},
    {"NothingAboveIt", "front", plate(), 50, 29, kWhite},
    {"OutlineOnItsSide", "front", plate(), 12, 50, kInk},
    {"NoOutlineBefore", "front", plate(), 11, 50, kWhite},
    {"NoOutlineBehind", "front", plate(), 13, 50, kFirstBefore},
    {"OutlineOnItsOtherSide", "front", plate(), 87, 50, kInk},
    // A cylinder before a box, whichever comes first. Its radius is 7.5 pixels: in the
    // middle of pixel 50 it faces asin(0.5 / 7.5) to the right, where
    // 0.64 + 0.48 * (2 * 0.9978 - 0.0667) / 3 = 0.949.
    {"NearHidesFar",
     "front",
     {box({0, 500, 0}, {1000, 600, 1000}), cyl({500, 0, 0}, {500, 0, 1000}, 200)},
     50,
     50,
     {0, 95, 0}},
    {"FarIsSeenBesideNear",
     "front",
     {box({0, 500, 0}, {1000, 600, 1000}), cyl({500, 0, 0}, {500, 0, 1000}, 200)},
     30,
     50,
     kFirstBefore},
    {"NearHidesFarFromBehind",
     "back",
     {box({0, 500, 0}, {1000, 600, 1000}), cyl({500, 0, 0}, {500, 0, 1000}, 200)},
     50,
     50,
     kFirstBefore},
    // A triangle that leans backwards from y = 0 at its foot to y = 1000 at its top, and
    // at y = 500 a box of which the upper part, 12.5 to 27.5, stands before it.
    {"LeaningFaceBehindABox", "front", leaning({{500, 1000, 1000}, {0, 0, 0}, {1000, 0, 0}}), 50,
     20, kFirstBefore},
    {"LeaningFaceFromItsFoot", "front", leaning({{0, 0, 0}, {1000, 0, 0}, {500, 1000, 1000}}), 50,
     20, kFirstBefore},
    {"LeaningFaceFromItsOtherFoot", "front", leaning({{1000, 0, 0}, {500, 1000, 1000}, {0, 0, 0}}),
     50, 20, kFirstBefore},
    // Open surfaces have the same brightness from both sides.
    {"OpenFaceFromAbove",
     "top",
     {face({{0, 0, 0}, {9, 0, 0}, {9, 9, 0}, {0, 9, 0}})},
     50,
     50,
     kFirstBefore},
    {"OpenFaceFromBelow",
     "bottom",
     {face({{0, 0, 0}, {9, 0, 0}, {9, 9, 0}, {0, 9, 0}})},
     50,
     50,
     kFirstBefore},
    {"PointIsADotInItsColour", "top", {line({{0, 0, 0}})}, 50, 50, kFirst},
    // 2.2 * 0.7 = 1.54 wide, from 49.23 to 50.77: three of four rows of samples.
    {"PolylineInItsColour", "top", {line({{-1, 0, 0}, {1, 0, 0}})}, 30, 50, {214, 64, 64}},
    {"EmptyIsBackground", "iso", {}, 50, 50, kWhite},
};

TEST(Painting, HasTheseColours) {
  for (const PixelCase& each : kPixels) {
    const Picture picture = pictureOf(each.model, plainStyle(each.view));
    ASSERT_EQ(picture.bytes.size(), 40000u) << each.name;
    EXPECT_EQ(picture.at(each.x, each.y), each.colour) << each.name;
  }
}

// Twice as much light from above as from the left: 0.64 + 0.48 * 1/3 = 0.80 for a
// face to the left, 0.96 for one upwards, 0.64 for what is turned away.
TEST(Painting, LightComesFromTheLeftAboveAndBefore) {
  const StandardView front = *standardView("front");
  EXPECT_NEAR(brightnessOf(front, {0, -1, 0}), 0.96, 1e-12);
  EXPECT_NEAR(brightnessOf(front, {0, 0, 1}), 0.96, 1e-12);
  EXPECT_NEAR(brightnessOf(front, {-1, 0, 0}), 0.80, 1e-12);
  EXPECT_NEAR(brightnessOf(front, {1, 0, 0}), 0.64, 1e-12);
  EXPECT_EQ(shaded({200, 100, 0}, 0.5), (Colour{100, 50, 0}));
  // A tenth of what is missing to white: 200 + 5.5, 100 + 15.5, 25.5.
  EXPECT_EQ(shaded({200, 100, 0}, 1.1), (Colour{206, 116, 26}));
}

TEST(Painting, LinesAloneLeaveThePaperWhite) {
  const Picture picture = pictureOf(plate(), plainStyle("front"), false);
  EXPECT_EQ(picture.at(50, 50), kWhite);
  EXPECT_EQ(picture.at(12, 50), kInk);
}

// The lower edge lies at 68.75 and is 1.12 wide: from 68.19 to 69.31. Of the rows
// of samples of pixel 69, at .125, .375, .625 and .875, the first is ink.
TEST(Painting, PixelsAreTheMeanOfTheirSamples) {
  const Picture picture = pictureOf(plate(), plainStyle("front"));
  // (28 + 3 * 255) / 4 = 198.25, (36 + 765) / 4 = 200.25, (48 + 765) / 4 = 203.25
  EXPECT_EQ(picture.at(50, 69), (Colour{198, 200, 203}));
  // Of pixel 68 the last three: (3 * 28 + 192) / 4 = 69, 108 / 4, 144 / 4.
  EXPECT_EQ(picture.at(50, 68), (Colour{69, 27, 36}));
}

// A bar along x, 1000 or 75 pixels long and so many pixels thick.
std::shared_ptr<Geo> bar(double pixels, double y = 0) {
  const double side = pixels / 0.075;
  return box({0, y, 0}, {1000, y + side, side});
}

struct WidthCase {
  const char* name;
  Model model;
  double width;
};

// Usually 1.12. The volume of a bar of 3 pixels by the diagonal of its box:
// 75 * 9 / sqrt(75 * 75 + 9 + 9) = 8.9856 = 2.9976 * 2.9976, and a fifth is 0.5995.
const WidthCase kWidths[] = {
    {"ThickSolids", plate(), 1.12},
    {"ThinSolids", {bar(3)}, 0.5995},
    {"MostAreThin", {bar(3), bar(20, 1000), bar(3, 2000)}, 0.5995},
    {"MostAreThick", {bar(20), bar(3, 1000), bar(20, 2000)}, 1.12},
    {"ThinnerThanAPixel", {bar(0.5)}, 0.28},
    {"NoSolids", {line({{0, 0, 0}, {1, 0, 0}}), face({{0, 0, 0}, {1, 0, 0}, {0, 0, 1}})}, 1.12},
};

TEST(Painting, OutlinesAreAFifthOfMostSolidsAtTheMost) {
  for (const WidthCase& each : kWidths) {
    const Scene scene = sceneOf(each.model);
    const Drawing drawing(scene, plainStyle("front"));
    EXPECT_NEAR(drawing.widthOf(LineWeight::kOutline), each.width, 1e-4) << each.name;
    EXPECT_NEAR(drawing.dotRadius(), each.width * 3.0 / 1.6, 1e-4) << each.name;
  }
}

// A bar of 2 pixels from 49 to 51 between lines of 0.4, so that of the rows of samples
// of pixel 50 the last is ink: (3 * 192 + 28) / 4, 36 / 4, 48 / 4.
TEST(Painting, ThinSolidsKeepTheirColour) {
  EXPECT_EQ(pictureOf({bar(2)}, plainStyle("top")).at(50, 50), (Colour{151, 9, 12}));
}

TEST(Painting, ScaleBarIsAsThickAsEver) {
  DrawingStyle style = plainStyle("front", 900, 900);
  style.isPlain = false;
  const Scene scene = sceneOf({box({0, 0, 0}, {1000, 1, 1})});
  const Drawing drawing(scene, style);
  ASSERT_EQ(drawing.scaleBar().size(), 1u);
  EXPECT_NEAR(drawing.scaleBar()[0].width, 1.6, 1e-12);
  EXPECT_NEAR(drawing.axes().at(0).width, 1.6, 1e-12);
}

TEST(Painting, TransparentPaperStaysTransparent) {
  DrawingStyle style = plainStyle("front");
  style.background = {0, 0, 0, 0};
  const Picture picture = pictureOf(plate(), style);
  EXPECT_EQ(picture.at(5, 5), (Colour{0, 0, 0, 0}));
  EXPECT_EQ(picture.at(50, 50), kFirstBefore);
  // A quarter of the samples: 255 / 4 = 63.75.
  EXPECT_EQ(picture.at(50, 69), (Colour{28, 36, 48, 64}));
}

TEST(Painting, LinesAreLightOnDarkPaper) {
  DrawingStyle style = plainStyle("front");
  style.background = {0, 0, 0};
  EXPECT_EQ(pictureOf(plate(), style).at(12, 50), (Colour{228, 233, 239}));
}

// Three letters of 100 by 100: 300 are 75 pixels, so a letter is 25 high; L is 4 of
// the 16 sixths wide that LLL takes: 4 / 16 * 75 = 18.75. The first L stands at
// 12.5 from 37.5 down to 62.5, and its foot ends at 31.25.
TEST(Painting, TextsLieInTheirPlaces) {
  const Picture picture = pictureOf({text({0, 0, 0}, "LLL")}, plainStyle("front"));
  EXPECT_EQ(picture.at(12, 50), kInk);
  EXPECT_EQ(picture.at(25, 62), kInk);
  EXPECT_EQ(picture.at(25, 45), kWhite);
  EXPECT_EQ(picture.at(12 + 28, 50), kInk);  // 6 / 16 * 75 further on
}

// Seen from above it stands level, 0.7 * 9 high: from 6.3 on, an L each 6.3 pixels, the foot of
// the fifteenth from 94.5 to 98.7 on the base line in the middle. No more of them have room.
TEST(Painting, TextsWiderThanThePaperEndWithIt) {
  const Picture picture = pictureOf({text({0, 0, 0}, std::string(1000, 'L'))}, plainStyle("top"));
  EXPECT_NE(picture.at(6, 47), kWhite);
  EXPECT_NE(picture.at(96, 50), kWhite);
  EXPECT_EQ(picture.at(50, 90), kWhite);
}

// One letter of 75 pixels: its strokes are 2 * 0.055 * 75 = 8.25 wide, half of it to
// the right of 12.5.
TEST(Painting, LargeTextsHaveWideStrokes) {
  const Picture picture = pictureOf({text({0, 0, 0}, "L")}, plainStyle("front"));
  EXPECT_EQ(picture.at(15, 40), kInk);
  EXPECT_EQ(picture.at(17, 40), kWhite);
}

// The text over the scale bar is as far to its left as to its right.
TEST(Painting, NotesStandAboutTheirMiddle) {
  DrawingStyle style = plainStyle("front", 300, 300);
  style.isPlain = false;
  const Scene scene = sceneOf({box({0, 0, 0}, {1000, 1, 1})});
  const Drawing drawing(scene, style);
  const Label& label = drawing.labels().at(0);
  const Picture picture = paint(drawing, true);
  int left = 300;
  int right = 0;
  for (int y = static_cast<int>(label.place.y) - 7; y < static_cast<int>(label.place.y); ++y) {
    for (int x = 0; x < 150; ++x) {
      if (picture.at(x, y) == kWhite) continue;
      left = std::min(left, x);
      right = std::max(right, x + 1);
    }
  }
  EXPECT_NEAR((left + right) / 2.0, label.place.x, 1.0);
  // As wide as the font makes it, and half a pixel of ink on either side.
  EXPECT_NEAR(right - left, 6.3 * StrokeFont::widthOf(label.text) + 1.0, 1.5);
}

// A thousand plates at one place look as one does, and take no longer to draw.
TEST(Painting, SolidsAtOnePlaceLookAsOne) {
  const DrawingStyle style = plainStyle("iso", 400, 300);
  const auto pictureOf = [&](std::size_t count) {
    const Scene scene = sceneOf(Model(count, box({0, 0, 0}, {1000, 800, 600})));
    return paint(Drawing(scene, style), true);
  };
  Picture many = pictureOf(200);
  EXPECT_EQ(pictureOf(1).bytes, many.bytes);
}

struct Interrupt {};

TEST(Painting, PollEndsTheDrawing) {
  const Scene scene = sceneOf(plate());
  DrawingStyle style = plainStyle("iso", 400, 300);
  int polls = 0;
  style.poll = [&] { ++polls; };
  const Drawing drawing(scene, style);
  EXPECT_GT(polls, 0);
  style.poll = [] { throw Interrupt(); };
  EXPECT_THROW(Drawing(scene, style), Interrupt);
  int left = 1000;
  style.poll = [&] {
    if (--left < 0) throw Interrupt();
  };
  const Drawing patient(scene, style);
  left = 0;
  EXPECT_THROW(paint(patient, true), Interrupt);
}

TEST(Painting, IsTheSameTwice) {
  const Model model{cyl({0, 0, 0}, {5, 6, 7}, 3), text({0, 0, 0}, "LLL"), plate()[0]};
  DrawingStyle style = plainStyle("iso", 300, 200);
  style.isPlain = false;
  EXPECT_EQ(pictureOf(model, style).bytes, pictureOf(model, style).bytes);
}

}  // namespace
}  // namespace VeskTest
