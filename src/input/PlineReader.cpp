// SPDX-License-Identifier: MIT
#include <string>

#include "input/ReaderFrame.h"
#include "output/RecordWords.h"
#include "vesk/Pline.h"

namespace Vesk {
namespace {

// Characters of a point's record without and with a size: beyond these a size
// or a direction follows.
constexpr std::size_t kLongestBarePoint = kFixedColumnsLayout.data + 3 * kNumberFieldWidth;
constexpr std::size_t kLongestSizedPoint = kFixedColumnsLayout.data + 6 * kNumberFieldWidth;

// The length that the record has, or would have if it were not broken into
// several lines.
std::size_t recordLength(const Input& in) {
  std::size_t length = in.line.size();
  for (std::size_t i = in.lineIndex + 1; i < in.recs.size(); ++i) {
    const std::string& line = in.recs[i];
    if (line.starts_with(LineNumbers::kFirst)) break;
    if (line.size() > kFixedColumnsLayout.data) length += line.size() - kFixedColumnsLayout.data;
  }
  return length;
}

void readPoint(Input& in, Pline& pline) {
  needLine(in, LineNumbers::kFirst);
  const std::size_t length = recordLength(in);
  pline.vertices.push_back(getPoint9(in));
  if (length > kLongestSizedPoint) {
    getPoint9(in);  // the null point before a direction
    pline.pointDirection = getPoint9(in);
  } else if (length > kLongestBarePoint) {
    in.setDelimiters("");
    pline.pointSize = in.getInt();
  }
}

void readSegment(Input& in, Pline& pline) {
  needLine(in, LineNumbers::kFirst);
  for (int i = 0; i < 2; ++i) pline.vertices.push_back(getPoint9(in));
}

void readArc(Input& in, Pline& pline) {
  in.setDelimiters(kBlankOrComma);
  const double radius = in.getDouble();
  const std::int32_t a = in.getInt();
  const std::int32_t b = in.getInt();
  pline.addArc(radius, a, b, in.getInt());
}

void readItem(Input& in, Pline& pline) {
  if (!in.atNonDigit()) in.fail(ReadCause::kNoPlineWord);
  if (takeClosing(in)) return;
  std::string tag;
  in.peekTokenN(tag, kTagWidth);
  if (tag == tagOf(Words::kPoint)) {
    in.getFixedString(tag, kTagWidth);
    const GeVector v = getVector(in);
    auto& vertices = pline.vertices;
    vertices.push_back(vertices.empty() ? GePoint(v) : pointAt(vertices.front(), v));
  } else if (tag == tagOf(Words::kArc)) {
    in.getFixedString(tag, kTagWidth);
    readArc(in, pline);
  } else {
    in.fail(ReadCause::kUnknownPlineWord, tag);
  }
}

void readTokens(Input& in, Pline& pline) {
  in.setDelimiters(kBlankOrComma);
  for (;;) {
    // Arcs without vertices begin with a comma.
    in.skipChars(kBlankOrComma, true);
    if (in.atEnd()) return;
    readItem(in, pline);
  }
}

}  // namespace

std::int32_t Pline::read(Input& in) {
  pointSize = 0;
  pointDirection = GePoint();
  vertices.clear();
  arcs.clear();
  startRecord(in);
  std::string keyword;
  if (in.mode == kFixedColumns && in.lineLength >= kFixedColumnsLayout.data) {
    keyword = in.line.substr(kFixedColumnsLayout.keyword, 3);
  }
  if (keyword == Keywords::kPoint.fixedColumns) {
    return readRecord(in, "point", [&] { readPoint(in, *this); });
  }
  if (keyword == Keywords::kSegment.fixedColumns) {
    return readRecord(in, "segment", [&] { readSegment(in, *this); });
  }
  return readRecord(in, "polyline", [&] {
    if (in.mode != kTokens) in.fail(ReadCause::kWrongStyle, "Pline");
    readTokens(in, *this);
  });
}

}  // namespace Vesk
