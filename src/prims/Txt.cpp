// SPDX-License-Identifier: MIT
#include "vesk/Txt.h"

#include <array>
#include <cmath>
#include <utility>

#include "output/Output.h"
#include "output/RecordWords.h"
#include "prims/CentroidAccumulator.h"

namespace Vesk {
namespace {

// What a set flag adds to the alignment in the record.
constexpr double kFlagMark = 0.2;

double alignmentNumber(const Txt& txt) {
  return txt.alignment + (txt.alignmentFlag != 0 ? kFlagMark : 0.0);
}

// The corners of the parallelogram that the text occupies.
std::array<GePoint, 4> corners(const Txt& txt) {
  const GeVector along = static_cast<double>(txt.text.size()) * txt.charWidth * txt.direction;
  const GeVector up = txt.height * txt.upDirection;
  const int code = txt.alignment >= 1 && txt.alignment <= 9 ? txt.alignment - 1 : 0;
  const int column = code % 3;
  const int row = code / 3;
  const GePoint start = txt.position - 0.5 * column * along - 0.5 * row * up;
  return {start, start + along, start + up, start + along + up};
}

}  // namespace

Txt::Txt(const GePoint& place, const GeVector& along, const GeVector& up, double widthOfChar,
         double textHeight, std::int32_t alignmentCode, std::int32_t flag, std::string characters)
    : position(place),
      direction(along),
      upDirection(up),
      charWidth(widthOfChar),
      height(textHeight),
      alignment(alignmentCode),
      alignmentFlag(flag),
      text(std::move(characters)) {}

std::int32_t Txt::write(Output& out) const {
  const double length = static_cast<double>(text.size());
  if (out.mode == kFixedColumns) {
    out.beginRecord(Keywords::kTxt.fixedColumns, true);
    out.addPoint9(position);
    out.addPoint9(direction);
    out.addPoint9(upDirection);
    out.addNumber(height);
    out.addNumber(charWidth);
    out.addNumber(alignmentNumber(*this));
    out.startLine(LineNumbers::kTextSecond);
    out.startLine(LineNumbers::kTextThird);
    out.addFixed(length, 0, false, 3);
    out.addText(text);
  } else if (out.mode == kTokens) {
    out.beginRecord(Keywords::kTxt.tokens, true);
    out.addPoint(position, out.pointDecimals, true);
    out.addPoint(direction, out.valueDecimals, true);
    out.addPoint(upDirection, out.valueDecimals, true);
    out.addFixed(height, out.valueDecimals, true);
    out.addFixed(charWidth, out.valueDecimals, true);
    out.addFixed(alignmentNumber(*this), 0, true);
    out.addFixed(length, 0, false);
    out.nextLine();
    out.addText(text);
  }
  return static_cast<std::int32_t>(out.recs.size());
}

void Txt::move(const GeVector&) {}

void Txt::rot(const GeMatrix& m) {
  position = m * position;
  direction = m * direction;
  upDirection = m * upDirection;
}

void Txt::scale(double factor) {
  position = GeMatrix::scaling(factor) * position;
  charWidth *= factor;
  height *= factor;
}

Extents& Txt::addExtents(Extents& box) const {
  for (const GePoint& corner : corners(*this)) box.add(corner);
  return box;
}

GePoint& Txt::centroid(GePoint& p) const {
  CentroidAccumulator accumulator;
  for (const GePoint& corner : corners(*this)) accumulator.add(corner, 1.0);
  return p = accumulator.point();
}

bool Txt::equal(const Geo& other, double tolerance) const {
  const auto* txt = sameKind<Txt>(other);
  if (txt == nullptr) return false;
  const double differences[] = {
      distance(position, txt->position), (direction - txt->direction).length(),
      (upDirection - txt->upDirection).length(), std::fabs(charWidth - txt->charWidth),
      std::fabs(height - txt->height)};
  for (const double difference : differences) {
    if (!(difference <= tolerance)) return false;
  }
  return alignment == txt->alignment && (alignmentFlag != 0) == (txt->alignmentFlag != 0) &&
         text == txt->text;
}

}  // namespace Vesk
