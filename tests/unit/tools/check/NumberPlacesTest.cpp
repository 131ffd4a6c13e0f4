// SPDX-License-Identifier: MIT
#include "check/NumberPlaces.h"

#include <gtest/gtest.h>

#include <string>

#include "input/ReaderTesting.h"

using namespace Vesk;
using namespace VeskTool;

namespace {

struct Row {
  const char* name;
  std::int32_t mode;
  Recs lines;
  const char* places;  // "line:column=text", columns from 0
};

const Row kRows[] = {
    {"Columns",
     kFixedColumns,
     {fixedLine("60", "PNT", fields("1 -2.5 123456789"))},
     "0:32=1 0:38=-2.5 0:42=123456789 "},
    {"ColumnsOfTwoLines",
     kFixedColumns,
     {fixedLine("60", "ELB", fields("1 2")), fixedLine("61", "ELB", fields("3"))},
     "0:32=1 0:41=2 1:32=3 "},
    {"TagsInColumnsAreNone",
     kFixedColumns,
     {fixedLine("60", "BOX", fields("1 2 3 4 5 6 7 8 9 10 11 12")),
      fixedLine("64", "BOX", "    *a*" + fields("8 9"))},
     "0:32=1 0:41=2 0:50=3 0:59=4 0:68=5 0:77=6 0:86=7 0:95=8 0:104=9 0:112=10 0:121=11 0:130=12 "},
    {"Tokens",
     kTokens,
     {tokenLine("00", "c ", "1 2 3,0 0 1,20")},
     "0:21=1 0:23=2 0:25=3 0:27=0 0:29=0 0:31=1 0:33=20 "},
    {"WordsAndAttributesAreNone",
     kTokens,
     {tokenLine("00", "l ", "cs 7,sp 8 9,pt 1 2 3,ft 5,tk 6")},
     "0:36=1 0:38=2 0:40=3 "},
    {"TokensOfTwoLines",
     kTokens,
     {tokenLine("00", "l ", "pt 1 2 3,"), tokenLine("01", "l ", "pt 4 5 6")},
     "0:24=1 0:26=2 0:28=3 1:24=4 1:26=5 1:28=6 "},
    {"TagsInTokensAreNone",
     kTokens,
     {tokenLine("00", "b ", "1 2 3"), tokenLine("00", "be", "ed a 1 2")},
     "0:21=1 0:23=2 0:25=3 "},
    {"TextIsNone",
     kTokens,
     {tokenLine("00", "x ", "1 2 3,1"), tokenLine("01", "x ", "77")},
     "0:21=1 0:23=2 0:25=3 0:27=1 "},
};

TEST(NumberPlacesTest, AreThese) {
  for (const Row& row : kRows) {
    std::string text;
    for (const NumberPlace& place : numberPlaces(row.lines, row.mode)) {
      text += std::to_string(place.line) + ':' + std::to_string(place.column) + '=' +
              std::string(place.text) + ' ';
    }
    EXPECT_EQ(text, row.places) << row.name;
  }
}

}  // namespace
