// SPDX-License-Identifier: MIT
#include <string>
#include <string_view>

#include "input/ReaderFrame.h"
#include "output/RecordWords.h"
#include "vesk/Pgon.h"

namespace Vesk {
namespace {

struct Shape {
  const Keyword& keyword;
  std::size_t corners;
  bool normals;
  std::string_view name;
};

constexpr Shape kShapes[] = {
    {Keywords::kTriangle, 3, false, "triangle"},
    {Keywords::kTriangleWithNormals, 3, true, "triangle with normals"},
    {Keywords::kQuadrangle, 4, false, "quadrangle"},
    {Keywords::kQuadrangleWithNormals, 4, true, "quadrangle with normals"},
};

// The shape that the first line's keyword names, null if none.
const Shape* shapeOf(const Input& in) {
  if (in.mode != kFixedColumns || in.lineLength < kFixedColumnsLayout.data) return nullptr;
  const auto keyword = std::string_view(in.line).substr(kFixedColumnsLayout.keyword, 3);
  for (const Shape& shape : kShapes) {
    if (keyword == shape.keyword.fixedColumns) return &shape;
  }
  return nullptr;
}

void readShape(Input& in, const Shape& shape, Pgon& pgon) {
  needLine(in, LineNumbers::kFirst);
  const std::uint32_t first = in.lineIndex;
  for (std::size_t i = 0; i < shape.corners; ++i) pgon.addVertex(getPoint9(in));
  if (!shape.normals) return;
  needSecondPart(in, first);
  for (PgonVertex& vertex : pgon.vertices) {
    vertex.normal = getVector9(in);
    vertex.hasNormal = true;
  }
}

// Reads the items of a mode 3 record. Points collect in the scanner's list;
// normals belong to the vertices in order.
class ItemReader {
 public:
  ItemReader(Input& in, Pgon& pgon) : in_(in), pgon_(pgon) {}

  void read() {
    in_.pointCount = 0;
    in_.setDelimiters(kBlankOrComma);
    for (;;) {
      in_.skipChars(kBlankOrComma, true);
      if (in_.atEnd()) break;
      readItem();
    }
    addVertices();
  }

  // By what was read: a fourth point makes it a quadrangle.
  std::string_view name() const {
    return kShapes[(in_.pointCount > 3 ? 2 : 0) + (normals_ > 0 ? 1 : 0)].name;
  }

 private:
  void readItem() {
    if (!in_.atNonDigit()) in_.fail(ReadCause::kNoWord);
    if (takeClosing(in_)) return;
    std::string tag;
    in_.peekTokenN(tag, kTagWidth);
    if (tag == tagOf(Words::kPoint)) {
      in_.getFixedString(tag, kTagWidth);
      readPoint();
    } else if (tag == tagOf(Words::kNormal)) {
      in_.getFixedString(tag, kTagWidth);
      readNormal(tag);
    } else if (tag == tagOf(Words::kArc)) {
      in_.getFixedString(tag, kTagWidth);
      readArc();
    } else {
      in_.fail(ReadCause::kUnknownWord, tag);
    }
  }

  void readPoint() {
    const GeVector v = getVector(in_);
    in_.pushPoint(in_.pointCount == 0 ? GePoint(v) : pointAt(in_.points.front(), v));
  }

  void readNormal(const std::string& tag) {
    addVertices();
    if (normals_ == pgon_.vertices.size()) in_.fail(ReadCause::kUnknownWord, tag);
    PgonVertex& vertex = pgon_.vertices[normals_++];
    vertex.normal = getVector(in_);
    vertex.hasNormal = true;
  }

  void readArc() {
    in_.setDelimiters(kBlankOrComma);
    ArcEntry arc;
    arc.radius = in_.getDouble();
    for (std::int32_t& value : arc.values) value = in_.getInt();
    pgon_.arcs.push_back(arc);
  }

  // The points that are no vertices yet.
  void addVertices() {
    while (pgon_.vertices.size() < in_.pointCount) {
      pgon_.addVertex(in_.points[pgon_.vertices.size()]);
    }
  }

  Input& in_;
  Pgon& pgon_;
  std::size_t normals_ = 0;
};

}  // namespace

std::int32_t Pgon::read(Input& in) {
  vertices.clear();
  arcs.clear();
  startRecord(in);
  if (const Shape* shape = shapeOf(in)) {
    return readRecord(in, shape->name, [&] { readShape(in, *shape, *this); });
  }
  in.pointCount = 0;
  ItemReader items(in, *this);
  try {
    if (in.mode != kTokens) in.fail(ReadCause::kWrongPolygonStyle);
    items.read();
  } catch (ReadFailure& e) {
    failNamed(e, items.name());
  }
  return 0;
}

}  // namespace Vesk
