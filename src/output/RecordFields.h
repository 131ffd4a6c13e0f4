// SPDX-License-Identifier: MIT
#ifndef VESK_OUTPUT_RECORDFIELDS_H
#define VESK_OUTPUT_RECORDFIELDS_H

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <string_view>

#include "output/RecordWords.h"
#include "vesk/RecordStyle.h"

namespace Vesk {

// What a value of an element is. Both styles may give it in different ways: the axis of a
// cylinder is the end of its axis in columns, and a vector in tokens.
enum class Value {
  kOrigin,
  kAxis,
  kDiameter,
  kDiameter1,  // at the start
  kDiameter2,
  kEdge1,
  kEdge2,
  kEdge3,
  kMark,  // of a box; numbered
  kCentre,
  kStart,  // of a bend or an elbow
  kEnd,
  kBendRadius,
  kDepth,
  kWidth,
  kAxisEndA,  // of an elbow, columns
  kAxisEndB,
  kInnerRadius,
  kCorner,  // numbered
  kTag,     // of a reducer; numbered
  kVertex,  // numbered
  kNormal,  // numbered
  kArc,     // numbered
  kPointSize,
  kPointDirection,
  kPosition,
  kDirection,
  kUp,
  kHeight,
  kCharWidth,
  kAlignment,
  kFlag,
  kTextLength,
  kText,
};

enum class FieldType { kPoint, kVector, kNumber };

// Where numbers of a record stand, counted from 0 in the order in which they are written.
struct NumberRange {
  int first;
  int last;
};

// Numbers of a record that belong together.
struct RecordField {
  Value value;
  int index;              // of a numbered value
  std::string_view name;  // "start", of which "start x" is the first number
  FieldType type;
  bool mayBeMissing = false;  // as well as those behind it

  constexpr int numbers() const { return type == FieldType::kNumber ? 1 : 3; }
};

// One kind of record: what it is called and which fields it has, one after the other, in
// each style. In tokens a polyline or polygon has words instead, see kWordFields.
struct RecordShape {
  const Keyword& keyword;
  std::span<const RecordField> columns;
  std::span<const RecordField> tokens;
  std::string_view tagWord = {};  // keyword of its tag lines in tokens, empty if it has none
  int sizeAlone = 0;  // columns: numbers of the first field that may be missing, where it is a size

  constexpr std::span<const RecordField> fields(std::int32_t mode) const {
    return mode == kTokens ? tokens : columns;
  }

  // How many numbers there are at least, and at most.
  constexpr int numbers(std::int32_t mode) const { return count(mode, false); }
  constexpr int mostNumbers(std::int32_t mode) const { return count(mode, true); }

  // Where a value stands; the last one of all if the style does not have it.
  constexpr NumberRange rangeOf(Value value, std::int32_t mode, int index = 0) const {
    int first = 0;
    for (const RecordField& field : fields(mode)) {
      const int next = first + field.numbers();
      if (field.value == value && field.index == index) return {first, next - 1};
      first = next;
    }
    return {first - 1, first - 1};
  }

  constexpr NumberRange all(std::int32_t mode) const { return {0, numbers(mode) - 1}; }

 private:
  constexpr int count(std::int32_t mode, bool all) const {
    int sum = 0;
    for (const RecordField& field : fields(mode)) {
      if (all || !field.mayBeMissing) sum += field.numbers();
    }
    return sum;
  }
};

namespace Records {

// clang-format off
inline constexpr RecordField kCylColumns[] = {
    {Value::kOrigin, 0, "start", FieldType::kPoint},
    {Value::kAxis, 0, "end", FieldType::kPoint},
    {Value::kDiameter, 0, "diameter", FieldType::kNumber},
};
inline constexpr RecordField kCylTokens[] = {
    {Value::kOrigin, 0, "origin", FieldType::kPoint},
    {Value::kAxis, 0, "axis", FieldType::kVector},
    {Value::kDiameter, 0, "diameter", FieldType::kNumber},
};
inline constexpr RecordField kConeColumns[] = {
    {Value::kOrigin, 0, "start", FieldType::kPoint},
    {Value::kAxis, 0, "end", FieldType::kPoint},
    {Value::kDiameter1, 0, "start diameter", FieldType::kNumber},
    {Value::kDiameter2, 0, "end diameter", FieldType::kNumber},
};
inline constexpr RecordField kConeTokens[] = {
    {Value::kOrigin, 0, "origin", FieldType::kPoint},
    {Value::kAxis, 0, "axis", FieldType::kVector},
    {Value::kDiameter1, 0, "start diameter", FieldType::kNumber},
    {Value::kDiameter2, 0, "end diameter", FieldType::kNumber},
};
inline constexpr RecordField kBoxColumns[] = {
    {Value::kOrigin, 0, "corner", FieldType::kPoint},
    {Value::kEdge1, 0, "end of edge 1", FieldType::kPoint},
    {Value::kEdge2, 0, "end of edge 2", FieldType::kPoint},
    {Value::kEdge3, 0, "end of edge 3", FieldType::kPoint},
};
inline constexpr RecordField kBoxTokens[] = {
    {Value::kEdge1, 0, "edge 1", FieldType::kVector},
    {Value::kOrigin, 0, "corner", FieldType::kPoint},
    {Value::kEdge2, 0, "edge 2", FieldType::kVector},
    {Value::kEdge3, 0, "edge 3", FieldType::kVector},
};
inline constexpr RecordField kTorusColumns[] = {
    {Value::kCentre, 0, "centre", FieldType::kPoint},
    {Value::kStart, 0, "start", FieldType::kPoint},
    {Value::kEnd, 0, "end", FieldType::kPoint},
    {Value::kBendRadius, 0, "bend radius", FieldType::kNumber},
    {Value::kDiameter, 0, "diameter", FieldType::kNumber},
};
inline constexpr RecordField kTorusTokens[] = {
    {Value::kCentre, 0, "centre", FieldType::kPoint},
    {Value::kStart, 0, "start vector", FieldType::kVector},
    {Value::kEnd, 0, "end vector", FieldType::kVector},
    {Value::kDiameter, 0, "diameter", FieldType::kNumber},
};
inline constexpr RecordField kRedColumns[] = {
    {Value::kCorner, 0, "corner 0", FieldType::kPoint},
    {Value::kCorner, 1, "corner 1", FieldType::kPoint},
    {Value::kCorner, 2, "corner 2", FieldType::kPoint},
    {Value::kCorner, 3, "corner 3", FieldType::kPoint},
    {Value::kCorner, 4, "corner 4", FieldType::kPoint},
    {Value::kCorner, 5, "corner 5", FieldType::kPoint},
    {Value::kCorner, 6, "corner 6", FieldType::kPoint},
    {Value::kCorner, 7, "corner 7", FieldType::kPoint},
};
inline constexpr RecordField kRedTokens[] = {
    {Value::kCorner, 0, "corner 0", FieldType::kPoint},
    {Value::kCorner, 1, "to corner 1", FieldType::kVector},
    {Value::kCorner, 2, "to corner 2", FieldType::kVector},
    {Value::kCorner, 3, "to corner 3", FieldType::kVector},
    {Value::kCorner, 4, "to corner 4", FieldType::kVector},
    {Value::kCorner, 5, "to corner 5", FieldType::kVector},
    {Value::kCorner, 6, "to corner 6", FieldType::kVector},
    {Value::kCorner, 7, "to corner 7", FieldType::kVector},
};
inline constexpr RecordField kRelbColumns[] = {
    {Value::kAxisEndA, 0, "bend axis end a", FieldType::kPoint},
    {Value::kAxisEndB, 0, "bend axis end b", FieldType::kPoint},
    {Value::kStart, 0, "outer start", FieldType::kPoint},
    {Value::kEnd, 0, "outer end", FieldType::kPoint},
    {Value::kInnerRadius, 0, "inner radius", FieldType::kNumber},
};
inline constexpr RecordField kRelbTokens[] = {
    {Value::kCentre, 0, "centre", FieldType::kPoint},
    {Value::kStart, 0, "start vector", FieldType::kVector},
    {Value::kEnd, 0, "end vector", FieldType::kVector},
    {Value::kDepth, 0, "depth", FieldType::kNumber},
    {Value::kWidth, 0, "width", FieldType::kNumber},
};
inline constexpr RecordField kPointColumns[] = {
    {Value::kVertex, 0, "point", FieldType::kPoint},
    {Value::kPointSize, 0, "size or direction", FieldType::kVector, true},
    {Value::kPointDirection, 0, "direction", FieldType::kVector, true},
};
inline constexpr RecordField kSegmentColumns[] = {
    {Value::kVertex, 0, "from", FieldType::kPoint},
    {Value::kVertex, 1, "to", FieldType::kPoint},
};
inline constexpr RecordField kTriangleColumns[] = {
    {Value::kVertex, 0, "vertex 0", FieldType::kPoint},
    {Value::kVertex, 1, "vertex 1", FieldType::kPoint},
    {Value::kVertex, 2, "vertex 2", FieldType::kPoint},
};
inline constexpr RecordField kTriangleWithNormalsColumns[] = {
    {Value::kVertex, 0, "vertex 0", FieldType::kPoint},
    {Value::kVertex, 1, "vertex 1", FieldType::kPoint},
    {Value::kVertex, 2, "vertex 2", FieldType::kPoint},
    {Value::kNormal, 0, "normal 0", FieldType::kVector},
    {Value::kNormal, 1, "normal 1", FieldType::kVector},
    {Value::kNormal, 2, "normal 2", FieldType::kVector},
};
inline constexpr RecordField kQuadrangleColumns[] = {
    {Value::kVertex, 0, "vertex 0", FieldType::kPoint},
    {Value::kVertex, 1, "vertex 1", FieldType::kPoint},
    {Value::kVertex, 2, "vertex 2", FieldType::kPoint},
    {Value::kVertex, 3, "vertex 3", FieldType::kPoint},
};
inline constexpr RecordField kQuadrangleWithNormalsColumns[] = {
    {Value::kVertex, 0, "vertex 0", FieldType::kPoint},
    {Value::kVertex, 1, "vertex 1", FieldType::kPoint},
    {Value::kVertex, 2, "vertex 2", FieldType::kPoint},
    {Value::kVertex, 3, "vertex 3", FieldType::kPoint},
    {Value::kNormal, 0, "normal 0", FieldType::kVector},
    {Value::kNormal, 1, "normal 1", FieldType::kVector},
    {Value::kNormal, 2, "normal 2", FieldType::kVector},
    {Value::kNormal, 3, "normal 3", FieldType::kVector},
};
inline constexpr RecordField kTxtColumns[] = {
    {Value::kPosition, 0, "position", FieldType::kPoint},
    {Value::kDirection, 0, "direction", FieldType::kVector},
    {Value::kUp, 0, "up direction", FieldType::kVector},
    {Value::kHeight, 0, "height", FieldType::kNumber},
    {Value::kCharWidth, 0, "width", FieldType::kNumber},
    {Value::kAlignment, 0, "alignment", FieldType::kNumber},
};
inline constexpr RecordField kTxtTokens[] = {
    {Value::kPosition, 0, "position", FieldType::kPoint},
    {Value::kDirection, 0, "direction", FieldType::kVector},
    {Value::kUp, 0, "up direction", FieldType::kVector},
    {Value::kHeight, 0, "height", FieldType::kNumber},
    {Value::kCharWidth, 0, "width", FieldType::kNumber},
    {Value::kAlignment, 0, "alignment", FieldType::kNumber},
    {Value::kTextLength, 0, "length of the text", FieldType::kNumber},
};

inline constexpr RecordShape kCyl{Keywords::kCyl, kCylColumns, kCylTokens};
inline constexpr RecordShape kCone{Keywords::kCone, kConeColumns, kConeTokens};
inline constexpr RecordShape kBox{Keywords::kBox, kBoxColumns, kBoxTokens, Keywords::kBoxTags};
inline constexpr RecordShape kTorus{Keywords::kTorus, kTorusColumns, kTorusTokens};
inline constexpr RecordShape kRed{Keywords::kRed, kRedColumns, kRedTokens, Keywords::kRedTags};
inline constexpr RecordShape kRelb{Keywords::kRelb, kRelbColumns, kRelbTokens};
inline constexpr RecordShape kPoint{Keywords::kPoint, kPointColumns, {}, {}, 1};
inline constexpr RecordShape kSegment{Keywords::kSegment, kSegmentColumns, {}};
inline constexpr RecordShape kTriangle{Keywords::kTriangle, kTriangleColumns, {}};
inline constexpr RecordShape kTriangleWithNormals{Keywords::kTriangleWithNormals, kTriangleWithNormalsColumns, {}};
inline constexpr RecordShape kQuadrangle{Keywords::kQuadrangle, kQuadrangleColumns, {}};
inline constexpr RecordShape kQuadrangleWithNormals{Keywords::kQuadrangleWithNormals, kQuadrangleWithNormalsColumns, {}};
inline constexpr RecordShape kTxt{Keywords::kTxt, kTxtColumns, kTxtTokens};
// clang-format on

// All of them, in the order in which a heading is looked up.
inline constexpr const RecordShape* kAll[] = {&kCyl,        &kCone,
                                              &kBox,        &kTorus,
                                              &kRed,        &kRelb,
                                              &kPoint,      &kSegment,
                                              &kTriangle,   &kTriangleWithNormals,
                                              &kQuadrangle, &kQuadrangleWithNormals,
                                              &kTxt};

}  // namespace Records

// The record with this keyword, null if there is none. In tokens the first of those that
// share it.
constexpr const RecordShape* recordNamed(std::string_view keyword, std::int32_t mode) {
  for (const RecordShape* each : Records::kAll) {
    const Keyword& name = each->keyword;
    if (keyword == (mode == kTokens ? name.tokens : name.fixedColumns)) return each;
  }
  return nullptr;
}

// What follows a word of a polyline or polygon in tokens.
struct WordFields {
  std::string_view word;  // with its blank
  std::string_view name;  // before the number that counts them
  std::span<const std::string_view> numbers;
};

inline constexpr std::string_view kAxisNames[] = {" x", " y", " z"};
inline constexpr std::string_view kArcNumbers[] = {" radius", " value 1", " value 2", " value 3"};

inline constexpr WordFields kWordFields[] = {
    {Words::kPoint, "vertex", kAxisNames},
    {Words::kNormal, "normal", kAxisNames},
    {Words::kArc, "arc", kArcNumbers},
};

}  // namespace Vesk

#endif
