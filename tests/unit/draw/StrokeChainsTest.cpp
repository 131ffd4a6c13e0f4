// SPDX-License-Identifier: MIT
#include "draw/StrokeChains.h"

#include <gtest/gtest.h>

#include <vector>

namespace VeskTest {
namespace {

using namespace Vesk;

struct Line {
  ScreenPoint a;
  std::uint32_t vertexA;
  ScreenPoint b;
  std::uint32_t vertexB;
  LinePart part = {};
  LineWeight weight = LineWeight::kEdge;
};

std::vector<Stroke> strokesOf(const std::vector<Line>& lines) {
  StrokeChains chains(lines.size());
  for (const Line& each : lines) {
    chains.add({each.a, each.vertexA}, {each.b, each.vertexB}, each.part, each.weight);
  }
  std::vector<Stroke> strokes;
  chains.take(7, strokes);
  return strokes;
}

constexpr ScreenPoint at(double x, double y) { return {x, y, 0.0}; }

struct RestCase {
  const char* name;
  LinePart part;  // of a line of 100 pixels
  LineWeight weight;
  std::size_t strokes;
};

// Of a hidden edge half a pixel counts, of an outline a twentieth.
const RestCase kRests[] = {
    {"ShortEdgeAtTheStart", {0, 0.0049}, LineWeight::kEdge, 0},
    {"LongerEdgeAtTheStart", {0, 0.0051}, LineWeight::kEdge, 1},
    {"ShortEdgeAtTheEnd", {0.9951, 1}, LineWeight::kEdge, 0},
    {"LongerEdgeAtTheEnd", {0.9949, 1}, LineWeight::kEdge, 1},
    {"ShortEdgeBetween", {0.5, 0.5049}, LineWeight::kEdge, 0},
    {"ShortOutline", {0, 0.0049}, LineWeight::kOutline, 1},
    {"ShortPolyline", {0, 0.0049}, LineWeight::kLine, 1},
    {"TinyOutline", {0, 0.00049}, LineWeight::kOutline, 0},
    {"LessTinyOutline", {0, 0.00051}, LineWeight::kOutline, 1},
};

TEST(StrokeChains, LeaveOutShortRestsOfHiddenLines) {
  for (const RestCase& each : kRests) {
    const std::vector<Stroke> strokes =
        strokesOf({{at(0, 0), 0, at(100, 0), 1, each.part, each.weight}});
    ASSERT_EQ(strokes.size(), each.strokes) << each.name;
    if (strokes.empty()) continue;
    EXPECT_EQ(strokes[0].element, 7U);
    EXPECT_EQ(strokes[0].weight, each.weight) << each.name;
    EXPECT_NEAR(strokes[0].points[0].x, 100 * each.part.from, 1e-9) << each.name;
    EXPECT_NEAR(strokes[0].points[1].x, 100 * each.part.to, 1e-9) << each.name;
  }
}

// What nothing hides stays, however short.
TEST(StrokeChains, KeepShortLinesThatAreWhole) {
  EXPECT_EQ(strokesOf({{at(0, 0), 0, at(0.04, 0), 1}}).size(), 1U);
}

struct ChainCase {
  const char* name;
  std::vector<Line> lines;
  std::vector<std::size_t> points;  // of each stroke
};

const ChainCase kChains[] = {
    {"TwoThatMeet", {{at(0, 0), 0, at(9, 0), 1}, {at(9, 0), 1, at(9, 9), 2}}, {3}},
    {"EndToEnd", {{at(0, 0), 0, at(9, 0), 1}, {at(9, 9), 2, at(9, 0), 1}}, {3}},
    {"StartToStart", {{at(9, 0), 1, at(0, 0), 0}, {at(9, 0), 1, at(9, 9), 2}}, {3}},
    {"OfTwoWeights",
     {{at(0, 0), 0, at(9, 0), 1}, {at(9, 0), 1, at(9, 9), 2, {}, LineWeight::kOutline}},
     {2, 2}},
    {"ThreeAtANode",
     {{at(0, 0), 0, at(9, 0), 1}, {at(9, 0), 1, at(9, 9), 2}, {at(9, 0), 1, at(20, 0), 3}},
     {2, 2, 2}},
    {"ThreeAtANodeOfWhichTwoAreOutlines",
     {{at(0, 0), 0, at(9, 0), 1, {}, LineWeight::kOutline},
      {at(9, 0), 1, at(9, 9), 2},
      {at(9, 0), 1, at(20, 5), 3, {}, LineWeight::kOutline}},
     {3, 2}},
    {"OtherVertices", {{at(0, 0), 0, at(9, 0), 1}, {at(9, 0), 5, at(9, 9), 2}}, {2, 2}},
    {"CutWhereTheyMeet",
     {{at(0, 0), 0, at(9, 0), 1, {0, 0.5}}, {at(9, 0), 1, at(9, 9), 2}},
     {2, 2}},
    {"SameTwice", {{at(0, 0), 0, at(9, 0), 1}, {at(0, 0), 0, at(9, 0), 1}}, {2}},
    {"SameTheOtherWay", {{at(0, 0), 0, at(9, 0), 1}, {at(9, 0), 1, at(0, 0), 0}}, {2}},
    {"SameToAHundredth", {{at(0, 0), 0, at(9, 0), 1}, {at(0.004, 0), 2, at(9, 0.004), 3}}, {2}},
    {"TwoHundredthsBeside", {{at(0, 0), 0, at(9, 0), 1}, {at(0, 0.02), 2, at(9, 0.02), 3}}, {2, 2}},
    // Straight but for a hundredth of a pixel, or not.
    {"AlmostStraight", {{at(0, 0), 0, at(50, 0.009), 1}, {at(50, 0.009), 1, at(100, 0), 2}}, {2}},
    {"AlmostStraightDownwards",
     {{at(0, 0), 0, at(50, -0.009), 1}, {at(50, -0.009), 1, at(100, 0), 2}},
     {2}},
    {"NotStraight", {{at(0, 0), 0, at(50, 0.011), 1}, {at(50, 0.011), 1, at(100, 0), 2}}, {3}},
    {"NotStraightDownwards",
     {{at(0, 0), 0, at(50, -0.011), 1}, {at(50, -0.011), 1, at(100, 0), 2}},
     {3}},
    {"ThereAndBack", {{at(0, 0), 0, at(100, 0), 1}, {at(100, 0), 1, at(50, 0), 2}}, {3}},
    {"Square",
     {{at(0, 0), 0, at(9, 0), 1},
      {at(9, 0), 1, at(9, 9), 2},
      {at(9, 9), 2, at(0, 9), 3},
      {at(0, 9), 3, at(0, 0), 0}},
     {5}},
    // The corner that it would begin at lies on a side.
    {"SquareFromTheMiddleOfASide",
     {{at(5, 0), 4, at(9, 0), 1},
      {at(9, 0), 1, at(9, 9), 2},
      {at(9, 9), 2, at(0, 9), 3},
      {at(0, 9), 3, at(0, 0), 0},
      {at(0, 0), 0, at(5, 0), 4}},
     {5}},
    {"RingBesideALine",
     {{at(0, 0), 0, at(9, 0), 1},
      {at(9, 0), 1, at(9, 9), 2},
      {at(9, 9), 2, at(0, 0), 0},
      {at(30, 0), 7, at(40, 0), 8}},
     {2, 4}},
};

TEST(StrokeChains, JoinWhatMeets) {
  for (const ChainCase& each : kChains) {
    std::vector<std::size_t> points;
    for (const Stroke& stroke : strokesOf(each.lines)) points.push_back(stroke.points.size());
    EXPECT_EQ(points, each.points) << each.name;
  }
}

struct PieceCase {
  const char* name;
  std::vector<LinePiece> pieces;
  std::vector<double> parts;  // from, to of each that is left
  bool isOutline = false;     // the first of them
};

const PieceCase kPieces[] = {
    {"Touching", {{1, {0, 0.5}, false}, {1, {0.5, 1}, false}}, {0, 1}},
    {"InAnyOrder", {{1, {0.5, 1}, false}, {1, {0, 0.5}, false}}, {0, 1}},
    {"AlmostTouching", {{1, {0, 0.5}, false}, {1, {0.5 + 5e-10, 1}, false}}, {0, 1}},
    {"Apart", {{1, {0, 0.5}, false}, {1, {0.5 + 5e-9, 1}, false}}, {0, 0.5, 0.5 + 5e-9, 1}},
    {"OfTwoLines", {{2, {0.5, 1}, false}, {1, {0, 0.5}, false}}, {0, 0.5, 0.5, 1}},
    {"SecondIsAnOutline", {{1, {0, 0.5}, false}, {1, {0.5, 1}, true}}, {0, 1}, true},
    {"FirstIsAnOutline", {{1, {0, 0.5}, true}, {1, {0.5, 1}, false}}, {0, 1}, true},
    {"None", {}, {}},
};

TEST(StrokeChains, PiecesOfALineThatTouchAreOne) {
  for (const PieceCase& each : kPieces) {
    std::vector<LinePiece> pieces = each.pieces;
    joinPieces(pieces);
    std::vector<double> parts;
    for (const LinePiece& piece : pieces) {
      parts.push_back(piece.part.from);
      parts.push_back(piece.part.to);
    }
    EXPECT_EQ(parts, each.parts) << each.name;
    if (!pieces.empty()) {
      EXPECT_EQ(pieces[0].isOutline, each.isOutline) << each.name;
    }
  }
}

}  // namespace
}  // namespace VeskTest
