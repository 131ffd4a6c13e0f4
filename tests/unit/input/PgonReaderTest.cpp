// SPDX-License-Identifier: MIT
#include "input/ReaderTesting.h"
#include "vesk/Pgon.h"

using namespace Vesk;

namespace {

// "x y z" of the points and, where there is one, "/ x y z" of the normals.
std::string verticesOf(const Pgon& pgon) {
  std::string text;
  const auto add = [&text](double x, double y, double z) {
    for (const double v : {x, y, z}) text += std::to_string(static_cast<int>(v)) + ' ';
  };
  for (const PgonVertex& vertex : pgon.vertices) {
    add(vertex.point.x, vertex.point.y, vertex.point.z);
    if (vertex.hasNormal) text += "/ ";
    if (vertex.hasNormal) add(vertex.normal.x, vertex.normal.y, vertex.normal.z);
    text += "| ";
  }
  return text;
}

struct ShapeRow {
  const char* name;
  std::int32_t mode;
  Recs lines;
  const char* vertices;
};

const ShapeRow kShapes[] = {
    {"Triangle",
     kFixedColumns,
     {fixedLine("60", "TRI", fields("1 2 3 4 5 6 7 8 9"))},
     "1 2 3 | 4 5 6 | 7 8 9 | "},
    {"TriangleWithNormals",
     kFixedColumns,
     {fixedLine("60", "TRN", fields("1 2 3 4 5 6 7 8 9")),
      fixedLine("61", "TRN", fields("0 0 1 0 1 0 1 0 0"))},
     "1 2 3 / 0 0 1 | 4 5 6 / 0 1 0 | 7 8 9 / 1 0 0 | "},
    {"Quadrangle",
     kFixedColumns,
     {fixedLine("60", "QUA", fields("1 2 3 4 5 6 7 8 9 1 1 1"))},
     "1 2 3 | 4 5 6 | 7 8 9 | 1 1 1 | "},
    {"QuadrangleWithNormals",
     kFixedColumns,
     {fixedLine("60", "QUN", fields("1 2 3 4 5 6 7 8 9 1 1 1")),
      fixedLine("61", "QUN", fields("0 0 1 0 1 0 1 0 0 0 0 2"))},
     "1 2 3 / 0 0 1 | 4 5 6 / 0 1 0 | 7 8 9 / 1 0 0 | 1 1 1 / 0 0 2 | "},
    {"PointsOnTwoLines",
     kFixedColumns,
     {fixedLine("60", "TRN", fields("1 2 3 4 5 6 7 8")), fixedLine("61", "TRN", fields("9")),
      fixedLine("62", "TRN", fields("0 0 1 0 1 0 1 0")), fixedLine("63", "TRN", fields("0"))},
     "1 2 3 / 0 0 1 | 4 5 6 / 0 1 0 | 7 8 9 / 1 0 0 | "},
    {"Tokens",
     kTokens,
     {tokenLine("00", "g ", "pt 1 2 3,pt 1 0 0,pt 1 1 0")},
     "1 2 3 | 2 2 3 | 2 3 3 | "},
    {"TokensWithNormals",
     kTokens,
     {tokenLine("00", "g ", "pt 1 2 3,pt 1 0 0,pt 1 1 0,vn 0 0 1,vn 0 1 0,vn 1 0 0")},
     "1 2 3 / 0 0 1 | 2 2 3 / 0 1 0 | 2 3 3 / 1 0 0 | "},
    {"FewerNormalsThanPoints",
     kTokens,
     {tokenLine("00", "g ", "pt 1 2 3,pt 1 0 0,pt 1 1 0,vn 0 0 1")},
     "1 2 3 / 0 0 1 | 2 2 3 | 2 3 3 | "},
    {"AttributesAside",
     kTokens,
     {tokenLine("00", "g ", "cs a,pt 1 2 3,pt 1 0 0,pt 1 1 0,ft 1,tk 2")},
     "1 2 3 | 2 2 3 | 2 3 3 | "},
    {"BrokenBetweenTokens",
     kTokens,
     {tokenLine("00", "g ", "pt 1"), tokenLine("01", "g ", " 2 3"),
      tokenLine("02", "g ", ",pt 1 0"), tokenLine("03", "g ", " 0,pt "),
      tokenLine("04", "g ", "1 1 0")},
     "1 2 3 | 2 2 3 | 2 3 3 | "},
};

TEST(PgonReaderTest, ReadsItsVertices) {
  for (const ShapeRow& row : kShapes) {
    EXPECT_EQ(verticesOf(readFrom<Pgon>(row.mode, row.lines)), row.vertices) << row.name;
  }
}

TEST(PgonReaderTest, ReadsArcs) {
  const auto pgon =
      readFrom<Pgon>(kTokens, {tokenLine("00", "g ", "pt 0 0 0,pt 1 0 0,pt 1 1 0,ar 12.5 0 1 2")});
  EXPECT_EQ(pgon.arcs, std::vector<ArcEntry>({{12.5, {0, 1, 2}}}));
}

TEST(PgonReaderTest, ReadingReplacesEverything) {
  Pgon pgon{{1, 1, 1}, {2, 2, 2}, {3, 3, 3}, {4, 4, 4}};
  pgon.arcs = {{1, {}}};
  Input in({tokenLine("00", "g ", "pt 1 2 3,pt 1 0 0,pt 1 1 0")}, kTokens);
  in.pushPoint({9, 9, 9});
  pgon.read(in);
  EXPECT_EQ(verticesOf(pgon), "1 2 3 | 2 2 3 | 2 3 3 | ");
  EXPECT_TRUE(pgon.arcs.empty());
  EXPECT_EQ(in.pointCount, 3u);
}

TEST(PgonReaderTest, Failures) {
  expectFailures<Pgon>({
      {"AnotherStyle", kNoStyle, {"60"}, "1: Can't process this kind of style, primitive triangle"},
      {"AnotherKeyword",
       kFixedColumns,
       {fixedLine("60", "CYL", "")},
       "1: Can't process this kind of style, primitive triangle"},
      {"TriangleWithoutLine60",
       kFixedColumns,
       {fixedLine("61", "TRI", "")},
       "1: line \"60\" not found, primitive triangle"},
      {"NormalsWithoutLine60",
       kFixedColumns,
       {fixedLine("61", "TRN", "")},
       "1: line \"60\" not found, primitive triangle with normals"},
      {"NormalsWithoutLine61",
       kFixedColumns,
       {fixedLine("60", "TRN", fields("1 2 3 4 5 6 7 8 9"))},
       "1: line \"61\" not found, primitive triangle with normals"},
      {"QuadrangleWithoutLine60",
       kFixedColumns,
       {fixedLine("61", "QUA", "")},
       "1: line \"60\" not found, primitive quadrangle"},
      {"QuadrangleNormalsWithoutLine61",
       kFixedColumns,
       {fixedLine("60", "QUN", fields("1 2 3 4 5 6 7 8 9 1 1 1"))},
       "1: line \"61\" not found, primitive quadrangle with normals"},
      {"DigitForAnItem",
       kTokens,
       {tokenLine("00", "g ", "1 2 3")},
       "1: identifier expected, primitive triangle"},
      {"UnknownTag",
       kTokens,
       {tokenLine("00", "g ", "pt 1 2 3,pt 1 2 3,pt 1 2 3,pt 1 2 3,vn 0 0 1,qq")},
       "2: unknown tag \"qq\", primitive quadrangle with normals"},
      {"NormalWithoutVertex",
       kTokens,
       {tokenLine("00", "g ", "pt 1 2 3,vn 0 0 1,vn 0 0 1")},
       "2: unknown tag \"vn\", primitive triangle with normals"},
      {"PointCut",
       kTokens,
       {tokenLine("00", "g ", "pt 1 2")},
       "1: Input: can't get string value, primitive triangle"},
      {"ArcOutOfRange",
       kTokens,
       {tokenLine("00", "g ", "pt 1 2 3,ar 1 2 3 nan")},
       "1: Input: number out of range, primitive triangle"},
  });
}

}  // namespace
