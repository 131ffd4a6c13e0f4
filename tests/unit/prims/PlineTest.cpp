// SPDX-License-Identifier: MIT
#include "vesk/Pline.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "support/RecordLines.h"
#include "vesk/GeConstants.h"

using namespace Vesk;
using namespace VeskTest;

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

Pline point(std::int32_t size, const GePoint& direction) {
  Pline pline{{1, 2, 3}};
  pline.pointSize = size;
  pline.pointDirection = direction;
  return pline;
}

Pline withArcs(Pline pline, std::vector<ArcEntry> arcs) {
  pline.arcs = std::move(arcs);
  return pline;
}

const Pline kThree{{1, 2, 3}, {4, 2, 3.5}, {1, 0, 3}};

// clang-format off
const RecordCase<Pline> kRecords[] = {
    {"Point", Pline{{1, 2, 3}}, 2, {"60|000|PNT" + fields({1, 2, 3})}},
    {"Point", Pline{{1, 2, 3}}, 3, {"00|000|l pt 1 2 3"}},
    {"PointWithSize", point(3, {}), 2, {"60|000|PNT" + fields({1, 2, 3, 3})}},
    {"SizeCountsBeforeDirection", point(3, {0, 0, 1}), 2, {"60|000|PNT" + fields({1, 2, 3, 3})}},
    {"SizeOne", point(1, {}), 2, {"60|000|PNT" + fields({1, 2, 3, 1})}},
    {"SizeZeroAndNoDirection", point(0, {}), 2, {"60|000|PNT" + fields({1, 2, 3})}},
    {"NegativeSizeIsNone", point(-4, {}), 2, {"60|000|PNT" + fields({1, 2, 3})}},
    {"DirectionAfterAZeroPoint", point(0, {0, 0, 1}), 2,
     {"60|000|PNT" + fields({1, 2, 3, 0, 0, 0, 0, 0, 1})}},
    {"DirectionAfterANegativeSize", point(-1, {0.5, 0, 0}), 2,
     {"60|000|PNT" + fields({1, 2, 3, 0, 0, 0, 0.5, 0, 0})}},
    {"TinyDirectionIsNotNone", point(0, {0, 1e-300, 0}), 2,
     {"60|000|PNT" + fields({1, 2, 3, 0, 0, 0, 0, 0, 0})}},
    {"MinusZeroDirectionIsNone", point(0, {-0.0, 0, 0}), 2, {"60|000|PNT" + fields({1, 2, 3})}},
    {"SizeAndDirectionAreNotInTokens", point(3, {0, 0, 1}), 3, {"00|000|l pt 1 2 3"}},

    {"Segment", Pline{{1, 2, 3}, {4, 2, 3.5}}, 2,
     {"60|000|SEG" + fields({1, 2, 3, 4, 2, 3.5})}},
    {"SegmentOfIdenticalPoints", Pline{{1, 2, 3}, {1, 2, 3}}, 2,
     {"60|000|SEG" + fields({1, 2, 3, 1, 2, 3})}},
    {"SegmentOfIdenticalPoints", Pline{{1, 2, 3}, {1, 2, 3}}, 3, {"00|000|l pt 1 2 3,pt 0 0 0"}},
    {"ThreeVerticesAreTwoSegmentsWithTheirOwnCounters", kThree, 2,
     {"60|000|SEG" + fields({1, 2, 3, 4, 2, 3.5}), "60|001|SEG" + fields({4, 2, 3.5, 1, 0, 3})}},
    {"LaterVerticesAreRelativeToTheFirst", kThree, 3, {"00|000|l pt 1 2 3,pt 3 0 0.5,pt 0 -2 0"}},
    {"ArcsAreNotInFixedColumns", withArcs(kThree, {{12.5, {0, 1, 2}}}), 2,
     {"60|000|SEG" + fields({1, 2, 3, 4, 2, 3.5}), "60|001|SEG" + fields({4, 2, 3.5, 1, 0, 3})}},
    {"ArcsFollowTheVertices",
     withArcs(Pline{{1, 2, 3}, {4, 2, 3.5}}, {{12.5, {0, 1, 2}}, {-0.12345, {-7, 2147483647, 0}}}), 3,
     {"00|000|l pt 1 2 3,pt 3 0 0.5,ar 12.5 0 1 2,ar -0.1235 -7 2147483647 0"}},

    {"NoVerticesWriteNothing", Pline{}, 2, {}},
    {"NoVerticesHaveARecordOfTheirOwn", Pline{}, 3, {"00|000|l "}},
    {"NotNumbersPass", Pline{{NAN, 0, 0}, {0, kInf, -kInf}}, 2,
     {"60|000|SEG      nan" + fields({0, 0, 0}) + "      inf     -inf"}},
    {"NotNumbersPass", Pline{{NAN, 0, 0}, {0, kInf, -kInf}}, 3,
     {"00|000|l pt nan 0 0,pt nan inf -inf"}},
    {"MinusZeroKeepsItsSign", Pline{{-0.0, -0.00001, 0}}, 3, {"00|000|l pt -0 -0 0"}},
};
// clang-format on

TEST(PlineTest, WritesItsRecord) {
  for (const auto& row : kRecords) EXPECT_EQ(linesOf(row.primitive, row.mode), row.lines) << row;
}

TEST(PlineTest, AllVerticesHavePointDecimals) {
  Output out = assembler(3);
  out.pointDecimals = 3;
  const Pline pline{{1.00049, 2, 3}, {4, 2, 3.5}};
  EXPECT_EQ(linesOf(withArcs(pline, {{0.00049, {1, 2, 3}}}), out),
            Lines{"00|000|l pt 1 2 3,pt 3 0 0.5,ar 0 1 2 3"});
}

// Vertices of one coordinate: "pt " and ten characters, comma or not.
Pline longLine(int count) {
  Pline pline;
  for (int i = 0; i < count; ++i) pline.vertices.emplace_back(i, 0, 0.125);
  return pline;
}

TEST(PlineTest, LongTokenRecordContinuesBetweenTokens) {
  constexpr int kCount = 300;
  const Lines lines = linesOf(longLine(kCount), 3);
  std::string expected;
  for (int i = 0; i < kCount; ++i) {
    expected += "pt " + std::to_string(i) + (i == 0 ? " 0 0.125" : " 0 0");
    if (i + 1 < kCount) expected += ",";
  }
  std::string written;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string number = (i < 10 ? "0" : "") + std::to_string(i);
    ASSERT_EQ(lines[i].substr(0, 9), number + "|000|l ");
    const std::string data = lines[i].substr(9);
    EXPECT_EQ(data.substr(0, 3), "pt ") << "a token is never split";
    // Prefix and keyword are 21 characters; the next token would not have fitted.
    EXPECT_LE(21 + data.size(), 512U);
    if (i + 1 < lines.size()) {
      const std::string next = lines[i + 1].substr(9, lines[i + 1].find(',') + 1 - 9);
      EXPECT_GT(21 + data.size() + next.size(), 512U);
    }
    written += data;
  }
  EXPECT_EQ(written, expected);
  EXPECT_GT(lines.size(), 5U);
}

TEST(PlineTest, LineNumberStaysAtNinetyNine) {
  const Lines lines = linesOf(longLine(6000), 3);
  ASSERT_GT(lines.size(), 102U);
  EXPECT_EQ(lines[98].substr(0, 3), "98|");
  EXPECT_EQ(lines[99].substr(0, 3), "99|");
  EXPECT_EQ(lines[100].substr(0, 3), "99|");
  EXPECT_EQ(lines.back().substr(0, 3), "99|");
}

TEST(PlineTest, EverySegmentHasItsCounterInBase36) {
  const Lines lines = linesOf(longLine(40), 2);
  ASSERT_EQ(lines.size(), 39U);
  EXPECT_EQ(lines[9].substr(0, 7), "60|009|");
  EXPECT_EQ(lines[10].substr(0, 7), "60|00A|");
  EXPECT_EQ(lines[35].substr(0, 7), "60|00Z|");
  EXPECT_EQ(lines[36].substr(0, 7), "60|010|");
}

struct CounterCase {
  const char* name;
  const char* counter;
  Lines lines;
  friend std::ostream& operator<<(std::ostream& os, const CounterCase& r) { return os << r.name; }
};

// clang-format off
const CounterCase kCounters[] = {
    {"LastCounter", "ZZZ", {"60|ZZZ|SEG" + fields({0, 0, 0.125, 1, 0, 0.125})}},
    {"LastButOne",  "ZZY", {"60|ZZY|SEG" + fields({0, 0, 0.125, 1, 0, 0.125}),
                            "60|ZZZ|SEG" + fields({1, 0, 0.125, 2, 0, 0.125})}},
};
// clang-format on

TEST(PlineTest, ExhaustedCounterEndsAfterTheLastCompleteRecord) {
  for (const CounterCase& row : kCounters) {
    Output out = assembler(2, row.counter);
    const int count = longLine(6).write(out);
    EXPECT_EQ(shown(out), row.lines) << row;
    EXPECT_EQ(count, static_cast<int>(out.recs.size())) << row;
    out.flushLine();
    EXPECT_EQ(out.recs.size(), row.lines.size()) << row << ": no line of a heading alone";
  }
}

TEST(PlineTest, CounterThatJustSufficesLosesNothing) {
  Output out = assembler(2, "ZZY");
  EXPECT_EQ(linesOf(longLine(3), out).size(), 2U);
}

TEST(PlineTest, FailureOfTheAssemblerPasses) {
  Output out = assembler(3);
  out.lineSize = 21;
  EXPECT_EQ(writeFailure(Pline{{1000000, 1000000, 1000000}}, out),
            "Output: line too big for output");
  out.lineSize = 0;
  EXPECT_EQ(writeFailure(Pline{{1, 2, 3}}, out), "Output: line size is not set");
}

TEST(PlineTest, VertexOutsideTheListIsZero) {
  EXPECT_EQ(kThree.vertex(0), GePoint(1, 2, 3));
  EXPECT_EQ(kThree.vertex(2), GePoint(1, 0, 3));
  for (const int i : {-1, 3, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_EQ(kThree.vertex(i), GePoint(0, 0, 0)) << i;
  }
  EXPECT_EQ(Pline{}.vertex(0), GePoint(0, 0, 0));
}

TEST(PlineTest, ArcsAreAppended) {
  Pline pline;
  pline.addArc(12.5, 0, -1, 2);
  pline.addArc(1, 3, 4, 5);
  EXPECT_EQ(pline.arcs, (std::vector<ArcEntry>{{12.5, {0, -1, 2}}, {1, {3, 4, 5}}}));
}

TEST(PlineTest, DefaultIsEmpty) {
  const Pline pline;
  EXPECT_EQ(pline.pointSize, 0);
  EXPECT_EQ(pline.pointDirection, GePoint(0, 0, 0));
  EXPECT_TRUE(pline.vertices.empty());
  EXPECT_TRUE(pline.arcs.empty());
}

TEST(PlineTest, MoveShiftsTheVerticesOnly) {
  Pline pline = withArcs(point(2, {0, 0, 1}), {{5, {1, 2, 3}}});
  pline.vertices.emplace_back(0, 0, 0);
  pline.move({10, 20, 30});
  EXPECT_EQ(pline.vertices, (std::vector<GePoint>{{11, 22, 33}, {10, 20, 30}}));
  EXPECT_EQ(pline.pointDirection, GePoint(0, 0, 1));
  EXPECT_EQ(pline.arcs, (std::vector<ArcEntry>{{5, {1, 2, 3}}}));
}

TEST(PlineTest, RotTurnsTheDirectionWithoutTranslation) {
  Pline pline = withArcs(point(0, {1, 0, 0}), {{5, {1, 2, 3}}});
  pline.rot({kUnitY, -kUnitX, kUnitZ, {100, 0, 0}});
  EXPECT_EQ(pline.vertices, (std::vector<GePoint>{{98, 1, 3}}));
  EXPECT_EQ(pline.pointDirection, GePoint(0, 1, 0));
  EXPECT_EQ(pline.arcs, (std::vector<ArcEntry>{{5, {1, 2, 3}}}));
}

TEST(PlineTest, ScaleMultipliesVerticesAndArcRadii) {
  Pline pline = withArcs(point(3, {1, 0, 0}), {{5, {1, 2, 3}}, {-1, {4, 5, 6}}});
  pline.scale(-2);
  EXPECT_EQ(pline.vertices, (std::vector<GePoint>{{-2, -4, -6}}));
  EXPECT_EQ(pline.pointDirection, GePoint(1, 0, 0));
  EXPECT_EQ(pline.pointSize, 3);
  EXPECT_EQ(pline.arcs, (std::vector<ArcEntry>{{-10, {1, 2, 3}}, {2, {4, 5, 6}}}));
}

TEST(PlineTest, ExtentsEncloseTheVertices) {
  Extents box;
  kThree.addExtents(box);
  EXPECT_EQ(box.min, GePoint(1, 0, 3));
  EXPECT_EQ(box.max, GePoint(4, 2, 3.5));
}

TEST(PlineTest, ExtentsOfNothingStayEmpty) {
  Extents box;
  Pline{}.addExtents(box);
  EXPECT_EQ(box.min, GePoint(kInf, kInf, kInf));
  EXPECT_EQ(box.max, GePoint(-kInf, -kInf, -kInf));
}

TEST(PlineTest, PieceCountIsTheNumberOfRecords) {
  EXPECT_EQ(Pline{}.pieceCount(), 1);
  EXPECT_EQ(longLine(1).pieceCount(), 1);
  EXPECT_EQ(longLine(2).pieceCount(), 1);
  EXPECT_EQ(longLine(3).pieceCount(), 2);
  EXPECT_EQ(longLine(40).pieceCount(), 39);
}

TEST(PlineTest, NeitherSolidNorMeasured) {
  EXPECT_FALSE(kThree.isSolid());
  EXPECT_EQ(kThree.volume(), 0.0);
  EXPECT_EQ(kThree.checkSize(), 0);
  EXPECT_EQ(Pline{}.checkSize(), 0);
}

struct CentroidCase {
  const char* name;
  Pline pline;
  GePoint centroid;
  friend std::ostream& operator<<(std::ostream& os, const CentroidCase& r) { return os << r.name; }
};

// clang-format off
const CentroidCase kCentroids[] = {
    {"Empty",             Pline{},                                             {0, 0, 0}},
    {"Point",             Pline{{1, 2, 3}},                                    {0, 0, 0}},
    {"SegmentsOfNoLength", Pline{{1, 2, 3}, {1, 2, 3}, {1, 2, 3}},             {0, 0, 0}},
    {"Segment",           Pline{{1, 2, 3}, {3, 2, 3}},                         {2, 2, 3}},
    // Length 2 about (1, 0), length 6 about (2, 3): (2 + 12, 18) / 8.
    {"WeightedByLength",  Pline{{0, 0, 0}, {2, 0, 0}, {2, 6, 0}},              {1.75, 2.25, 0}},
    {"RepeatedVertexHasNoWeight",
     Pline{{0, 0, 0}, {0, 0, 0}, {2, 0, 0}, {2, 0, 0}, {2, 6, 0}},             {1.75, 2.25, 0}},
};
// clang-format on

TEST(PlineTest, CentroidIsWeightedByLength) {
  for (const CentroidCase& row : kCentroids) {
    GePoint p(9, 9, 9);
    EXPECT_LE(distance(row.pline.centroid(p), row.centroid), 1e-15) << row;
  }
}

struct EqualCase {
  const char* name;
  Pline other;
  double tolerance;
  bool equal;
  friend std::ostream& operator<<(std::ostream& os, const EqualCase& row) { return os << row.name; }
};

// clang-format off
const EqualCase kEquals[] = {
    {"Same",                    kThree,                                       0,   true},
    {"EachCoordinateAtTheTolerance",
     Pline{{1.5, 1.5, 3.5}, {4, 2, 3.5}, {1, 0, 3}},                          0.5, true},
    {"CoordinateAboveTheTolerance", Pline{{1, 2, 3}, {4, 2, 3.5}, {1, 0, 3.625}}, 0.5, false},
    {"FewerVertices",           Pline{{1, 2, 3}, {4, 2, 3.5}},                9,   false},
    {"OtherDirection",          Pline{{1, 0, 3}, {4, 2, 3.5}, {1, 2, 3}},     0.5, false},
    {"ArcsAreNotCompared",      withArcs(kThree, {{5, {1, 2, 3}}}),           0,   true},
    {"NotANumberIsNeverNear",   Pline{{1, 2, 3}, {4, NAN, 3.5}, {1, 0, 3}},   9,   false},
};
// clang-format on

TEST(PlineTest, EqualComparesEveryCoordinate) {
  for (const EqualCase& row : kEquals) {
    EXPECT_EQ(kThree.equal(row.other, row.tolerance), row.equal) << row;
    EXPECT_EQ(row.other.equal(kThree, row.tolerance), row.equal) << row << ", the other way round";
  }
}

}  // namespace
