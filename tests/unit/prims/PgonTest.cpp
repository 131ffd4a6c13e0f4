// SPDX-License-Identifier: MIT
#include "vesk/Pgon.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>

#include "support/RecordLines.h"
#include "vesk/GeConstants.h"
#include "vesk/GeEx.h"

using namespace Vesk;
using namespace VeskTest;

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

const Pgon kTriangle{{1, 2, 3}, {4, 2, 3}, {4, 6, 3.5}};
const Pgon kQuadrangle{{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}};

// With a normal at each vertex: (0, 0, 1), (0, 0, 2), (0, 0, 3) ...
Pgon withNormals(Pgon pgon) {
  double z = 0.0;
  for (PgonVertex& vertex : pgon.vertices) {
    vertex.normal = {0, 0, z += 1.0};
    vertex.hasNormal = true;
  }
  return pgon;
}

// With a normal at one vertex only.
Pgon withNormalAt(Pgon pgon, std::size_t i) {
  pgon.vertices[i].normal = {0, 0.6, 0.8};
  pgon.vertices[i].hasNormal = true;
  return pgon;
}

Pgon withArcs(Pgon pgon, std::vector<ArcEntry> arcs) {
  pgon.arcs = std::move(arcs);
  return pgon;
}

// n vertices (0, 0, 0), (1, 0, 0), (2, 0, 0) ...: no triangle can be cut off.
Pgon collinear(int n) {
  Pgon pgon;
  for (int i = 0; i < n; ++i) pgon.addVertex({static_cast<double>(i), 0, 0});
  return pgon;
}

// A record of those vertices of `collinear`.
std::string fan(const char* number, const char* counter, const char* keyword,
                std::initializer_list<int> vertices) {
  std::string line = std::string(number) + "|" + counter + "|" + keyword;
  for (const int i : vertices) line += fields({static_cast<double>(i), 0, 0});
  return line;
}

std::string normals(const char* counter, const char* keyword, std::initializer_list<int> vertices) {
  std::string line = std::string("61|") + counter + "|" + keyword;
  for (const int i : vertices) line += fields({0, 0, i + 1.0});
  return line;
}

const std::string kPoints3 = fields({1, 2, 3, 4, 2, 3, 4, 6, 3.5});
const std::string kPoints4 = fields({0, 0, 0, 2, 0, 0, 2, 2, 0, 0, 2, 0});

// clang-format off
const RecordCase<Pgon> kRecords[] = {
    {"Triangle",            kTriangle,   2, {"60|000|TRI" + kPoints3}},
    {"Quadrangle",          kQuadrangle, 2, {"60|000|QUA" + kPoints4}},
    {"TriangleWithNormals", withNormals(kTriangle), 2,
     {"60|000|TRN" + kPoints3, "61|000|TRN" + fields({0, 0, 1, 0, 0, 2, 0, 0, 3})}},
    {"QuadrangleWithNormals", withNormals(kQuadrangle), 2,
     {"60|000|QUN" + kPoints4, "61|000|QUN" + fields({0, 0, 1, 0, 0, 2, 0, 0, 3, 0, 0, 4})}},
    {"VertexZeroAloneHasANormal", withNormalAt(kTriangle, 0), 2,
     {"60|000|TRN" + kPoints3, "61|000|TRN" + fields({0, 0.6, 0.8, 0, 0, 0, 0, 0, 0})}},
    {"AllButVertexZeroDecideNothing", withNormalAt(kTriangle, 1), 2, {"60|000|TRI" + kPoints3}},
    {"QuadrangleVertexZeroAloneHasANormal", withNormalAt(kQuadrangle, 0), 2,
     {"60|000|QUN" + kPoints4, "61|000|QUN" + fields({0, 0.6, 0.8, 0, 0, 0, 0, 0, 0, 0, 0, 0})}},
    {"ArcsAreNotInFixedColumns", withArcs(kTriangle, {{1, {2, 3, 4}}}), 2,
     {"60|000|TRI" + kPoints3}},
    {"EqualPointsAreWritten", Pgon{{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}, 2,
     {"60|000|TRI" + fields({1, 1, 1, 1, 1, 1, 1, 1, 1})}},
    {"NotNumbersPass", Pgon{{NAN, 0, 0}, {kInf, 0, 0}, {-kInf, 0, 0}}, 2,
     {"60|000|TRI      nan" + fields({0, 0}) + "      inf" + fields({0, 0}) + "     -inf" +
      fields({0, 0})}},
    {"NotNumbersPass", Pgon{{0, 0, 0}, {kInf, 0, 0}, {NAN, -kInf, 0}}, 3,
     {"00|000|g pt 0 0 0,pt inf 0 0,pt nan -inf 0"}},

    {"FanOfFive",  collinear(5), 2,
     {fan("60", "000", "QUA", {0, 1, 2, 3}), fan("60", "001", "TRI", {0, 3, 4})}},
    {"FanOfSix",   collinear(6), 2,
     {fan("60", "000", "QUA", {0, 1, 2, 3}), fan("60", "001", "QUA", {0, 3, 4, 5})}},
    {"FanOfSeven", collinear(7), 2,
     {fan("60", "000", "QUA", {0, 1, 2, 3}), fan("60", "001", "QUA", {0, 3, 4, 5}),
      fan("60", "002", "TRI", {0, 5, 6})}},
    {"FanOfEight", collinear(8), 2,
     {fan("60", "000", "QUA", {0, 1, 2, 3}), fan("60", "001", "QUA", {0, 3, 4, 5}),
      fan("60", "002", "QUA", {0, 5, 6, 7})}},
    {"FanOfFiveWithNormals", withNormals(collinear(5)), 2,
     {fan("60", "000", "QUN", {0, 1, 2, 3}), normals("000", "QUN", {0, 1, 2, 3}),
      fan("60", "001", "TRN", {0, 3, 4}), normals("001", "TRN", {0, 3, 4})}},

    {"LaterPointsAreRelativeToTheFirst", kTriangle, 3, {"00|000|g pt 1 2 3,pt 3 0 0,pt 3 4 0.5"}},
    {"ManyPointsAreOneRecord", collinear(5), 3,
     {"00|000|g pt 0 0 0,pt 1 0 0,pt 2 0 0,pt 3 0 0,pt 4 0 0"}},
    {"NormalsFollowThePoints", withNormals(kTriangle), 3,
     {"00|000|g pt 1 2 3,pt 3 0 0,pt 3 4 0.5,vn 0 0 1,vn 0 0 2,vn 0 0 3"}},
    {"OnlyVerticesWithANormalWriteIt", withNormalAt(kTriangle, 1), 3,
     {"00|000|g pt 1 2 3,pt 3 0 0,pt 3 4 0.5,vn 0 0.6 0.8"}},
    {"ArcsComeLast", withArcs(withNormalAt(kTriangle, 2), {{12.5, {0, -1, 2}}, {3, {4, 5, 6}}}), 3,
     {"00|000|g pt 1 2 3,pt 3 0 0,pt 3 4 0.5,vn 0 0.6 0.8,ar 12.5 0 -1 2,ar 3 4 5 6"}},
    {"FirstPointHasFourDecimalsAllElseSix",
     withArcs(Pgon{{1.23456789, 0, 0}, {2.46913578, 0, 0}, {1.23456789, 1.23456789, 0}},
              {{1.23456789, {1, 2, 3}}}), 3,
     {"00|000|g pt 1.2346 0 0,pt 1.234568 0 0,pt 0 1.234568 0,ar 1.234568 1 2 3"}},
};
// clang-format on

TEST(PgonTest, WritesItsRecord) {
  for (const auto& row : kRecords) EXPECT_EQ(linesOf(row.primitive, row.mode), row.lines) << row;
}

TEST(PgonTest, FirstPointAndLaterPointsHaveTheirOwnDecimals) {
  Output out = assembler(3);
  out.pointDecimals = 3;
  out.valueDecimals = 2;
  EXPECT_EQ(linesOf(Pgon{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, out),
            Lines{"00|000|g pt 0 0 0,pt 1 0 0,pt 1 1 0"});
  EXPECT_EQ(linesOf(Pgon{{0.0625, 0, 0}, {0.1875, 0, 0}, {0.0625, 1, 0}}, out),
            Lines{"00|000|g pt 0.062 0 0,pt 0.12 0 0,pt 0 1 0"});  // exact halves, to even
}

TEST(PgonTest, LessThanThreeVerticesThrowInEveryMode) {
  for (const int mode : {-1, 0, 1, 2, 3, 4}) {
    for (int n = 0; n < 3; ++n) {
      Output out = assembler(mode);
      out.recs.push_back("before");
      EXPECT_EQ(writeFailure(collinear(n), out), "pgon: less than 3 vertices") << mode;
      EXPECT_EQ(out.recs, Recs{"before"}) << mode;
      EXPECT_EQ(out.lineText(), "") << mode;
    }
  }
}

TEST(PgonTest, LongTokenRecordContinues) {
  const Lines lines = linesOf(collinear(200), 3);
  std::string expected;
  for (int i = 0; i < 200; ++i) {
    expected += (i == 0 ? "pt " : ",pt ") + std::to_string(i) + " 0 0";
  }
  std::string written;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    ASSERT_EQ(lines[i].substr(0, 9), "0" + std::to_string(i) + "|000|g ");
    EXPECT_LE(lines[i].size() - 9, 512U - 21) << "prefix and keyword are 21 characters";
    written += lines[i].substr(9);
  }
  EXPECT_EQ(lines.size(), 5U);  // 2180 characters, 491 at most on each line
  EXPECT_EQ(written, expected);
}

// Polygons and the area that shoelaces give them.
struct AreaCase {
  const char* name;
  Pgon pgon;
  double area;
  std::size_t triangles;  // 0: not said
  GePoint centroid;
  friend std::ostream& operator<<(std::ostream& os, const AreaCase& row) { return os << row.name; }
};

Pgon regular(int n) {
  Pgon pgon;
  for (int i = 0; i < n; ++i) {
    pgon.addVertex({3 + std::cos(2 * kPi * i / n), std::sin(2 * kPi * i / n), 7});
  }
  return pgon;
}

// clang-format off
const AreaCase kAreas[] = {
    {"Triangle",   Pgon{{0, 0, 0}, {6, 0, 0}, {0, 3, 0}},                         9, 1, {2, 1, 0}},
    {"Square",     kQuadrangle,                                                   4, 2, {1, 1, 0}},
    {"SquareOtherSense", Pgon{{0, 2, 0}, {2, 2, 0}, {2, 0, 0}, {0, 0, 0}},        4, 2, {1, 1, 0}},
    {"RegularPentagon", regular(5), 2.5 * std::sin(2 * kPi / 5),                     3, {3, 0, 7}},
    {"RegularOf100",    regular(100), 50 * std::sin(2 * kPi / 100),                 98, {3, 0, 7}},
    // Squares of 4 about (1, 1) and 2 by 1 about (1, 2.5): (4 + 2, 4 + 5) / 6.
    {"House", Pgon{{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {2, 3, 0}, {0, 3, 0}},        6, 0, {1, 1.5, 0}},
    // 2 by 1 about (1, 0.5) and 1 by 1 about (0.5, 1.5): (2.5, 2.5) / 3.
    {"CornerPiece", Pgon{{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 1, 0}, {1, 2, 0}, {0, 2, 0}},
                                                                  3, 0, {2.5 / 3, 2.5 / 3, 0}},
    {"CornerPieceOtherSense", Pgon{{0, 2, 0}, {1, 2, 0}, {1, 1, 0}, {2, 1, 0}, {2, 0, 0}, {0, 0, 0}},
                                                                  3, 0, {2.5 / 3, 2.5 / 3, 0}},
    {"CollinearPointsBetween", Pgon{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {2, 2, 0}, {1, 2, 0}, {0, 2, 0}},
                                                                              4, 0, {1, 1, 0}},
    {"RepeatedPoints", Pgon{{0, 0, 0}, {0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {2, 2, 0}, {0, 2, 0}},
                                                                              4, 2, {1, 1, 0}},
    {"UprightInSpace", Pgon{{5, 0, 0}, {5, 2, 0}, {5, 2, 1}, {5, 1, 1}, {5, 1, 2}, {5, 0, 2}},
                                                                  3, 0, {5, 2.5 / 3, 2.5 / 3}},
};
// clang-format on

double areaOf(const Pgon& triangle) {
  return cross(triangle.point(1) - triangle.point(0), triangle.point(2) - triangle.point(0))
             .length() /
         2.0;
}

TEST(PgonTest, TrianglesCoverTheArea) {
  for (const AreaCase& row : kAreas) {
    std::vector<Pgon> pieces(7);  // forgotten
    ASSERT_TRUE(row.pgon.triangulate(pieces)) << row;
    double area = 0.0;
    for (const Pgon& piece : pieces) {
      ASSERT_EQ(piece.vertices.size(), 3U) << row;
      area += areaOf(piece);
    }
    EXPECT_NEAR(area, row.area, 1e-12) << row;
    if (row.triangles != 0) {
      EXPECT_EQ(pieces.size(), row.triangles) << row;
    }
  }
}

TEST(PgonTest, CentroidIsWeightedByArea) {
  for (const AreaCase& row : kAreas) {
    GePoint p(9, 9, 9);
    EXPECT_EQ(&row.pgon.centroid(p), &p);
    EXPECT_LE(distance(p, row.centroid), 1e-14) << row << ": " << p.x << " " << p.y << " " << p.z;
  }
}

TEST(PgonTest, LargePolygonIsOneRecordForEachTriangle) {
  for (const AreaCase& row : kAreas) {
    if (row.pgon.vertices.size() < 5) continue;
    const Lines lines = linesOf(row.pgon, 2);
    double area = 0.0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      // Counters 000, 001 ... in base 36.
      const char* digits = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
      const std::string counter = {'0', digits[i / 36], digits[i % 36]};
      EXPECT_EQ(lines[i].substr(0, 10), "60|" + counter + "|TRI") << row;
      const std::vector<double> n = numbersOf(lines[i]);
      ASSERT_EQ(n.size(), 9U) << row;
      area += areaOf(Pgon{{n[0], n[1], n[2]}, {n[3], n[4], n[5]}, {n[6], n[7], n[8]}});
    }
    // The fields have three decimals: half of a thousandth for each coordinate.
    EXPECT_NEAR(area, row.area, 0.005 * static_cast<double>(lines.size())) << row;
  }
}

TEST(PgonTest, PiecesKeepTheNormalsOfTheirVertices) {
  const Pgon pgon = withNormals(Pgon{{0, 0, 0}, {2, 0, 0}, {3, 1, 0}, {2, 2, 0}, {0, 2, 0}});
  const Lines lines = linesOf(pgon, 2);
  ASSERT_EQ(lines.size(), 6U);
  for (std::size_t i = 0; i < lines.size(); i += 2) {
    const std::string counter = "|00" + std::to_string(i / 2) + "|TRN";
    EXPECT_EQ(lines[i].substr(0, 10), "60" + counter);
    EXPECT_EQ(lines[i + 1].substr(0, 10), "61" + counter);
    const std::vector<double> points = numbersOf(lines[i]);
    const std::vector<double> piecesNormals = numbersOf(lines[i + 1]);
    ASSERT_EQ(points.size(), 9U);
    ASSERT_EQ(piecesNormals.size(), 9U);
    for (std::size_t k = 0; k < 9; k += 3) {
      // Vertex z - 1 has the normal (0, 0, z).
      const auto vertex = static_cast<std::size_t>(piecesNormals[k + 2]) - 1;
      EXPECT_EQ(GePoint(points[k], points[k + 1], points[k + 2]), pgon.point(vertex));
    }
  }
}

TEST(PgonTest, EachPieceAsksItsOwnFirstVertexForNormals) {
  const Pgon square{{0, 0, 0}, {2, 0, 0}, {3, 1, 0}, {2, 2, 0}, {0, 2, 0}};
  for (std::size_t i = 0; i < 5; ++i) {
    const Pgon pgon = withNormalAt(square, i);
    std::vector<Pgon> pieces;
    pgon.triangulate(pieces);
    Lines keywords;
    for (const Pgon& piece : pieces) {
      keywords.emplace_back(piece.vertices[0].hasNormal ? "TRN" : "TRI");
    }
    Lines written;
    for (const std::string& line : linesOf(pgon, 2)) {
      if (line.starts_with("60")) written.push_back(line.substr(7, 3));
    }
    EXPECT_EQ(written, keywords) << i;
  }
}

TEST(PgonTest, SliversAreDropped) {
  // Areas of 0.5e-8 and 2e-8.
  std::vector<Pgon> pieces;
  EXPECT_FALSE((Pgon{{0, 0, 0}, {1e-8, 0, 0}, {0, 1, 0}}).triangulate(pieces));
  EXPECT_TRUE(pieces.empty());
  EXPECT_TRUE((Pgon{{0, 0, 0}, {4e-8, 0, 0}, {0, 1, 0}}).triangulate(pieces));
  EXPECT_EQ(pieces.size(), 1U);
}

TEST(PgonTest, TinyPolygonFallsBackToTheFan) {
  Pgon tiny = regular(5);
  tiny.move({-3, 0, -7});
  tiny.scale(1e-5);
  const Lines lines = linesOf(tiny, 2);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].substr(7, 3), "QUA");
  EXPECT_EQ(lines[1].substr(7, 3), "TRI");
}

TEST(PgonTest, CollinearPolygonHasNoTriangleAndNoCentre) {
  std::vector<Pgon> pieces;
  EXPECT_FALSE(collinear(5).triangulate(pieces));
  GePoint p(9, 9, 9);
  EXPECT_EQ(collinear(5).centroid(p), GePoint(0, 0, 0));
}

struct CounterCase {
  const char* name;
  Pgon pgon;
  const char* counter;
  Lines keywords;  // number, counter and keyword of the lines
  friend std::ostream& operator<<(std::ostream& os, const CounterCase& r) { return os << r.name; }
};

// clang-format off
const CounterCase kCounters[] = {
    {"TrianglesLastCounter",    regular(9), "ZZZ", {"60|ZZZ|TRI"}},
    {"TrianglesLastButOne",     regular(9), "ZZY", {"60|ZZY|TRI", "60|ZZZ|TRI"}},
    {"NormalsLastCounter",      withNormals(regular(9)), "ZZZ", {"60|ZZZ|TRN", "61|ZZZ|TRN"}},
    {"FanLastCounter",          collinear(9), "ZZZ", {"60|ZZZ|QUA"}},
    {"FanLastButOne",           collinear(9), "ZZY", {"60|ZZY|QUA", "60|ZZZ|QUA"}},
    {"FanBeforeItsTriangle",    collinear(5), "ZZZ", {"60|ZZZ|QUA"}},
    {"FanWithItsTriangle",      collinear(5), "ZZY", {"60|ZZY|QUA", "60|ZZZ|TRI"}},
    {"FanOfNormals",            withNormals(collinear(5)), "ZZZ", {"60|ZZZ|QUN", "61|ZZZ|QUN"}},
};
// clang-format on

TEST(PgonTest, ExhaustedCounterEndsAfterTheLastCompleteRecord) {
  for (const CounterCase& row : kCounters) {
    Output out = assembler(2, row.counter);
    row.pgon.write(out);
    out.flushLine();
    Lines keywords;
    for (const std::string& line : shown(out)) {
      keywords.push_back(line.substr(0, 10));
      EXPECT_GE(line.size(), 10U + 9 * 9) << row << ": no line of a heading alone";
    }
    EXPECT_EQ(keywords, row.keywords) << row;
  }
}

// Of triangles the finished lines, of a fan those before the record that is still
// in the assembler.
TEST(PgonTest, ExhaustedCounterCountsTheFinishedLines) {
  const auto counted = [](const Pgon& pgon, const char* counter) {
    Output out = assembler(2, counter);
    return pgon.write(out);
  };
  EXPECT_EQ(counted(regular(9), "ZZZ"), 1);
  EXPECT_EQ(counted(collinear(9), "ZZZ"), 0);
  EXPECT_EQ(counted(collinear(9), "ZZY"), 1);
  EXPECT_EQ(counted(collinear(5), "ZZZ"), 0);
  EXPECT_EQ(counted(withNormals(collinear(5)), "ZZZ"), 1);
}

TEST(PgonTest, PointAndNormalByIndex) {
  const Pgon pgon = withNormalAt(kTriangle, 1);
  EXPECT_EQ(pgon.point(2), GePoint(4, 6, 3.5));
  EXPECT_EQ(pgon.normal(1), GeVector(0, 0.6, 0.8));
  EXPECT_EQ(pgon.normal(0), GeVector(0, 0, 0));
  EXPECT_THROW((void)pgon.point(3), std::out_of_range);
  EXPECT_THROW((void)pgon.normal(3), std::out_of_range);
}

TEST(PgonTest, AppendedVertexHasANormalOnlyIfGiven) {
  Pgon pgon;
  pgon.addVertex({1, 2, 3});
  pgon.addVertex({4, 5, 6}, {0, 0, 1});
  EXPECT_FALSE(pgon.vertices[0].hasNormal);
  EXPECT_EQ(pgon.vertices[0].normal, GeVector(0, 0, 0));
  EXPECT_TRUE(pgon.vertices[1].hasNormal);
  EXPECT_EQ(pgon.vertices[1].normal, GeVector(0, 0, 1));
}

TEST(PgonTest, MoveShiftsPointsNotNormals) {
  Pgon pgon = withArcs(withNormals(kTriangle), {{5, {1, 2, 3}}});
  pgon.move({10, 20, 30});
  EXPECT_EQ(pgon.point(0), GePoint(11, 22, 33));
  EXPECT_EQ(pgon.point(2), GePoint(14, 26, 33.5));
  EXPECT_EQ(pgon.normal(1), GeVector(0, 0, 2));
  EXPECT_EQ(pgon.arcs, (std::vector<ArcEntry>{{5, {1, 2, 3}}}));
}

TEST(PgonTest, RotMakesNormalsUnitDirectionsAgain) {
  Pgon pgon = kTriangle;
  pgon.vertices[0].normal = {3, 0, 4};
  pgon.vertices[0].hasNormal = true;
  pgon.vertices[1].normal = {7, 7, 7};  // without the flag it is left as it is
  pgon.rot({kUnitY, -kUnitX, kUnitZ, {100, 0, 0}});
  EXPECT_EQ(pgon.point(0), GePoint(98, 1, 3));
  EXPECT_EQ(pgon.normal(0), GeVector(0, 0.6, 0.8));
  EXPECT_EQ(pgon.normal(1), GeVector(7, 7, 7));
}

TEST(PgonTest, RotOfANullNormalThrowsAndChangesNothing) {
  Pgon pgon = withNormals(kTriangle);
  pgon.vertices[2].normal = {0, 0, 0};
  EXPECT_THROW(pgon.rot({kUnitY, -kUnitX, kUnitZ, {100, 0, 0}}), GeEx::NullDir);
  EXPECT_EQ(pgon.point(0), GePoint(1, 2, 3));
  EXPECT_EQ(pgon.normal(0), GeVector(0, 0, 1));
}

TEST(PgonTest, ScaleMultipliesPointsAndArcRadiiNotNormals) {
  Pgon pgon = withArcs(withNormals(kTriangle), {{5, {1, 2, 3}}});
  pgon.scale(-2);
  EXPECT_EQ(pgon.point(1), GePoint(-8, -4, -6));
  EXPECT_EQ(pgon.normal(1), GeVector(0, 0, 2));
  EXPECT_EQ(pgon.arcs, (std::vector<ArcEntry>{{-10, {1, 2, 3}}}));
}

TEST(PgonTest, ExtentsEncloseThePoints) {
  Extents box;
  withNormals(kTriangle).addExtents(box);
  EXPECT_EQ(box.min, GePoint(1, 2, 3));
  EXPECT_EQ(box.max, GePoint(4, 6, 3.5));
}

TEST(PgonTest, PieceCountIsHalfTheVerticesFromFiveOn) {
  const int expected[] = {1, 1, 1, 1, 1, 2, 3, 3, 4};
  for (int n = 0; n <= 8; ++n) EXPECT_EQ(collinear(n).pieceCount(), expected[n]) << n;
}

TEST(PgonTest, NeitherSolidNorMeasured) {
  EXPECT_FALSE(kTriangle.isSolid());
  EXPECT_EQ(kTriangle.volume(), 0.0);
  EXPECT_EQ(kTriangle.checkSize(), 0);
  EXPECT_EQ(Pgon{}.checkSize(), 0);
}

struct EqualCase {
  const char* name;
  Pgon other;
  double tolerance;
  bool equal;
  friend std::ostream& operator<<(std::ostream& os, const EqualCase& row) { return os << row.name; }
};

Pgon withNormal1(const GeVector& normal) {
  Pgon pgon = withNormals(kTriangle);
  pgon.vertices[1].normal = normal;
  return pgon;
}

Pgon withoutFlag1() {
  Pgon pgon = withNormals(kTriangle);
  pgon.vertices[1].hasNormal = false;
  return pgon;
}

Pgon withPoint2(const GePoint& p) {
  Pgon pgon = withNormals(kTriangle);
  pgon.vertices[2].point = p;
  return pgon;
}

// Against the triangle with the normals (0, 0, 1), (0, 0, 2), (0, 0, 3).
// clang-format off
const EqualCase kEquals[] = {
    {"Same",                        withNormals(kTriangle),                           0,   true},
    {"PointAtTheTolerance",         withPoint2({4, 6, 4}),                            0.5, true},
    {"PointAboveTheTolerance",      withPoint2({4, 6, 4.125}),                        0.5, false},
    {"DistanceCountsNotCoordinates", withPoint2({4.4, 6.4, 3.5}),                     0.5, false},
    {"NormalAtTheTolerance",        withNormal1({0, 0, 2.5}),                         0.5, true},
    {"NormalAboveTheTolerance",     withNormal1({0, 0, 2.625}),                       0.5, false},
    {"FlagsDiffer",                 withoutFlag1(),                                   9,   false},
    {"NoNormals",                   kTriangle,                                        9,   false},
    {"MoreVertices",                withNormals(collinear(4)),                        99,  false},
    {"ArcsAreNotCompared",          withArcs(withNormals(kTriangle), {{5, {1, 2, 3}}}), 0, true},
};
// clang-format on

TEST(PgonTest, EqualComparesPointsFlagsAndNormals) {
  const Pgon pgon = withNormals(kTriangle);
  for (const EqualCase& row : kEquals) {
    EXPECT_EQ(pgon.equal(row.other, row.tolerance), row.equal) << row;
    EXPECT_EQ(row.other.equal(pgon, row.tolerance), row.equal) << row << ", the other way round";
  }
}

TEST(PgonTest, NormalsWithoutTheFlagAreNotCompared) {
  Pgon a = kTriangle;
  a.vertices[1].normal = {5, 6, 7};
  EXPECT_TRUE(a.equal(kTriangle, 0));
}

}  // namespace
