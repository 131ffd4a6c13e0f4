// SPDX-License-Identifier: MIT
#include "output/RecordFields.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

using namespace Vesk;

namespace {

struct CountRow {
  const RecordShape& shape;
  int columns;
  int most;
  int tokens;
};

// Three numbers of each point and vector, one of anything else.
const CountRow kCounts[] = {
    {Records::kCyl, 3 + 3 + 1, 7, 3 + 3 + 1},  {Records::kCone, 3 + 3 + 1 + 1, 8, 3 + 3 + 1 + 1},
    {Records::kBox, 4 * 3, 12, 4 * 3},         {Records::kTorus, 3 * 3 + 2, 11, 3 * 3 + 1},
    {Records::kRed, 8 * 3, 24, 8 * 3},         {Records::kRelb, 4 * 3 + 1, 13, 3 * 3 + 2},
    {Records::kPoint, 3, 3 + 3 + 3, 0},        {Records::kSegment, 2 * 3, 6, 0},
    {Records::kTriangle, 3 * 3, 9, 0},         {Records::kTriangleWithNormals, 6 * 3, 18, 0},
    {Records::kQuadrangle, 4 * 3, 12, 0},      {Records::kQuadrangleWithNormals, 8 * 3, 24, 0},
    {Records::kTxt, 3 * 3 + 3, 12, 3 * 3 + 4},
};

TEST(RecordFieldsTest, HaveSoManyNumbers) {
  ASSERT_EQ(std::size(kCounts), std::size(Records::kAll));
  for (std::size_t i = 0; i < std::size(kCounts); ++i) {
    const CountRow& row = kCounts[i];
    EXPECT_EQ(&row.shape, Records::kAll[i]);
    EXPECT_EQ(row.shape.numbers(kFixedColumns), row.columns) << row.shape.keyword.fixedColumns;
    EXPECT_EQ(row.shape.mostNumbers(kFixedColumns), row.most) << row.shape.keyword.fixedColumns;
    EXPECT_EQ(row.shape.numbers(kTokens), row.tokens) << row.shape.keyword.fixedColumns;
  }
}

struct RangeRow {
  const char* name;
  const RecordShape& shape;
  std::int32_t mode;
  Value value;
  int index;
  int first;
  int last;
};

void PrintTo(const RangeRow& row, std::ostream* out) { *out << row.name; }

const RangeRow kRanges[] = {
    {"DiameterIsBehindTwoPoints", Records::kCyl, kFixedColumns, Value::kDiameter, 0, 6, 6},
    {"FirstEdgeIsBeforeTheCornerInTokens", Records::kBox, kTokens, Value::kEdge1, 0, 0, 2},
    {"CornerIsBehindTheFirstEdgeInTokens", Records::kBox, kTokens, Value::kOrigin, 0, 3, 5},
    {"FirstEdgeIsBehindTheCornerInColumns", Records::kBox, kFixedColumns, Value::kEdge1, 0, 3, 5},
    {"DiameterIsBehindTheBendRadius", Records::kTorus, kFixedColumns, Value::kDiameter, 0, 10, 10},
    {"TokensHaveNoBendRadius", Records::kTorus, kTokens, Value::kDiameter, 0, 9, 9},
    {"MissingValueIsTheLastNumber", Records::kTorus, kTokens, Value::kBendRadius, 0, 9, 9},
    {"OuterStartIsBehindTheBendAxis", Records::kRelb, kFixedColumns, Value::kStart, 0, 6, 8},
    {"StartIsBehindTheCentre", Records::kRelb, kTokens, Value::kStart, 0, 3, 5},
    {"CornersCount", Records::kRed, kFixedColumns, Value::kCorner, 4, 12, 14},
    {"HeightOfAText", Records::kTxt, kTokens, Value::kHeight, 0, 9, 9},
};

class RecordRanges : public testing::TestWithParam<RangeRow> {};

TEST_P(RecordRanges, AreThese) {
  const RangeRow& row = GetParam();
  const NumberRange range = row.shape.rangeOf(row.value, row.mode, row.index);
  EXPECT_EQ(range.first, row.first);
  EXPECT_EQ(range.last, row.last);
}

INSTANTIATE_TEST_SUITE_P(Records, RecordRanges, testing::ValuesIn(kRanges),
                         [](const auto& row) { return std::string(row.param.name); });

// The document.

std::vector<std::string> linesOfRecordsPage() {
  std::ifstream page(VESK_TEST_SOURCE_DIR "/../docs/records.md");
  EXPECT_TRUE(page.is_open());
  std::vector<std::string> lines;
  for (std::string line; std::getline(page, line);) lines.push_back(line);
  return lines;
}

// "start point, axis vector, diameter"
std::string wordsOf(std::span<const RecordField> fields) {
  std::string text;
  for (const RecordField& field : fields) {
    const std::string_view type = field.type == FieldType::kPoint    ? "point"
                                  : field.type == FieldType::kVector ? "vector"
                                                                     : "";
    text += (text.empty() ? "" : ", ") + std::string(field.name);
    if (!field.name.ends_with(type)) text += ' ' + std::string(type);
  }
  return text;
}

std::string cellOf(std::string_view keyword, std::span<const RecordField> fields) {
  return " `" + std::string(keyword) + "` " + wordsOf(fields) + " |";
}

TEST(RecordsPage, TellsTheFieldsOfEachRecordAndOfNoOther) {
  std::set<std::string> wanted;
  for (const RecordShape* each : Records::kAll) {
    wanted.insert(cellOf(each->keyword.fixedColumns, each->columns));
    if (!each->tokens.empty()) wanted.insert(cellOf(each->keyword.tokens, each->tokens));
  }
  std::set<std::string> found;
  for (const std::string& line : linesOfRecordsPage()) {
    if (!line.starts_with("| ")) continue;
    for (std::size_t bar = line.find('|'); bar != line.npos; bar = line.find('|', bar + 1)) {
      const std::string cell = line.substr(bar + 1, line.find('|', bar + 1) - bar);
      // A keyword, and behind it no word of a polyline or polygon.
      const bool isColumns = cell.size() > 6 && cell[1] == '`' && cell[5] == '`';
      const bool isTokens = cell.size() > 5 && cell[1] == '`' && cell[3] == ' ' && cell[4] == '`';
      if (isColumns || (isTokens && cell.find('`', 5) == cell.npos)) found.insert(cell);
    }
  }
  EXPECT_EQ(found, wanted);
}

TEST(RecordsPage, TellsTheNumbersBehindEachWord) {
  std::set<std::string> wanted;
  for (const WordFields& each : kWordFields) {
    std::string row = "| `" + std::string(tagOf(each.word)) + "` | " + std::string(each.name);
    for (const std::string_view number : each.numbers) {
      row += (number == each.numbers.front() ? "" : ",") + std::string(number);
    }
    wanted.insert(row + " |");
  }
  std::set<std::string> found;
  for (const std::string& line : linesOfRecordsPage()) {
    if (line.starts_with("| `") && line.size() > 6 && line[5] == '`') found.insert(line);
  }
  EXPECT_EQ(found, wanted);
}

}  // namespace
