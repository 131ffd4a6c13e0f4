// SPDX-License-Identifier: MIT
#include "input/ReaderFrame.h"

#include <cmath>
#include <limits>
#include <utility>

#include "input/ParseDouble.h"
#include "output/RecordWords.h"

namespace Vesk {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

bool isNegativeZero(double v) { return v == 0.0 && std::signbit(v); }

// d such that from + d is `to`, or else rather below it: the greatest number of
// a nine-character form must not pass its bound.
double difference(double from, double to) {
  const double d = to - from;
  if (isNegativeZero(to)) return std::signbit(from + d) ? d : std::nextafter(d, -kInfinity);
  const double above = from + d - to;
  if (!(above > 0.0)) return d;
  const double lower = std::nextafter(d, -kInfinity);
  return to - (from + lower) <= above ? lower : d;
}

// s such that s - base is `offset`.
double sum(double base, double offset) {
  const double s = base + offset;
  if (!isNegativeZero(offset) || !std::isfinite(s) || std::signbit(s - base)) return s;
  return s == 0.0 && !std::signbit(base) ? -0.0 : std::nextafter(s, -kInfinity);
}

}  // namespace

void failNamed(ReadFailure& e, std::string_view primitive) {
  e.addPrimitive(primitive);
  throw;  // cppcheck-suppress rethrowNoCurrentException ; called where `e` is caught
}

void failNamed(const Input& in, ReadCause cause, const TovExWhere& e, std::string_view primitive) {
  ReadFailure failure(cause, {in.tokenLine, in.tokenColumn}, e.what());
  failure.addPrimitive(primitive);
  throw failure;
}

void startRecord(Input& in) {
  in.rewind();
  const RecordLayout& layout = in.mode == kTokens ? kTokensLayout : kFixedColumnsLayout;
  in.startAt(static_cast<std::uint32_t>(layout.data));
}

void needLine(Input& in, std::string_view number) {
  if (in.findLine(number, 0)) return;
  if (!in.recs.empty()) in.markToken(in.recs.size() - 1, in.recs.back().size());
  in.fail(ReadCause::kNoLine, number);
}

void needSecondPart(Input& in, std::uint32_t firstIndex) {
  if (in.lineIndex != firstIndex && in.nextLine()) return;
  needLine(in, LineNumbers::kSecond);
}

GePoint getPoint9(Input& in) {
  double xyz[3];
  in.getFixedDoubles(3, xyz, kNumberFieldWidth);
  return GePoint(xyz);
}

GeVector getVector9(Input& in) { return getPoint9(in) - GePoint(); }

GeVector getVector(Input& in) {
  GePoint p;
  in.getPoint(p);
  return {p.x, p.y, p.z};
}

GeVector vectorBetween(const GePoint& from, const GePoint& to) {
  return {difference(from.x, to.x), difference(from.y, to.y), difference(from.z, to.z)};
}

GePoint pointAt(const GePoint& base, const GeVector& offset) {
  return {sum(base.x, offset.x), sum(base.y, offset.y), sum(base.z, offset.z)};
}

bool takeClosing(Input& in) {
  if (in.atEnd()) return false;
  const std::string_view rest = std::string_view(in.line).substr(in.cursor);
  if (!rest.starts_with(tagOf(Words::kFt)) && !rest.starts_with(tagOf(Words::kTk))) return false;
  std::string token;
  in.getFixedString(token, kTagWidth);
  token += ' ';
  in.setDelimiters(",");
  in.skipChars(" ", true);
  std::string value;
  if (!in.atEnd()) in.getToken(value);
  in.skipChars(",", true);
  takeClosing(in, token + value);
  return true;
}

bool takeClosing(Input& in, std::string_view token) {
  const bool isFt = token.starts_with(Words::kFt);
  if (!isFt && !token.starts_with(Words::kTk)) return false;
  const auto value = parseDouble(token.substr(Words::kFt.size()));
  if (!value || !Input::isInt(*value)) return true;
  (isFt ? in.ft : in.tk) = in.toInt(*value);
  return true;
}

}  // namespace Vesk
