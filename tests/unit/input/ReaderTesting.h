// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_INPUT_READERTESTING_H
#define VESK_TESTS_INPUT_READERTESTING_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "input/Input.h"
#include "output/Output.h"
#include "vesk/ExceptionInfo.h"
#include "vesk/Geo.h"

namespace Vesk {

// "level: message" of the ExceptionInfo that `work` throws; "nothing" if none.
template <class Work>
std::string failureOf(Work work) {
  try {
    work();
  } catch (const ExceptionInfo& e) {
    return std::to_string(e.level) + ": " + e.message;
  }
  return "nothing";
}

// A mode 2 line: line number, 19 header characters, keyword, data.
inline std::string fixedLine(const std::string& number, const std::string& keyword,
                             const std::string& data) {
  return number + "CSCSBBDDAAAAAAAA00A" + keyword + data;
}

// A mode 3 line: 17 header characters, line number, keyword, data.
inline std::string tokenLine(const std::string& number, const std::string& keyword,
                             const std::string& data) {
  return "AAAAAAAABB00ADDEE" + number + keyword + data;
}

// Numbers of nine characters, blanks between, side by side.
//   fields("1 -2.5") -> "        1     -2.5"
inline std::string fields(const std::string& numbers) {
  std::string text;
  std::string number;
  for (const char c : numbers + " ") {
    if (c != ' ') {
      number += c;
    } else if (!number.empty()) {
      text += std::string(9 - number.size(), ' ') + number;
      number.clear();
    }
  }
  return text;
}

inline constexpr std::int32_t kNoStyle = 5;

// A record that can't be read, and the "level: message" that it causes.
struct FailureRow {
  const char* name;
  std::int32_t mode;
  Recs lines;
  const char* failure;
};

template <class Primitive>
void expectFailures(const std::vector<FailureRow>& rows) {
  for (const FailureRow& row : rows) {
    Input in(row.lines, row.mode);
    Primitive primitive;
    EXPECT_EQ(failureOf([&] { primitive.read(in); }), row.failure) << row.name;
  }
}

// Reads the primitive from these lines; it must succeed.
template <class Primitive>
Primitive readFrom(std::int32_t mode, Recs lines) {
  Input in(std::move(lines), mode);
  Primitive primitive;
  EXPECT_EQ(failureOf([&] { EXPECT_EQ(primitive.read(in), 0); }), "nothing");
  return primitive;
}

// The lines that the primitive is written as, with the headers of fixedLine and
// tokenLine.
inline Recs linesOf(const Geo& geo, std::int32_t mode, std::uint32_t lineSize = 0) {
  Output out;
  out.mode = mode;
  out.lineSize = lineSize != 0     ? lineSize
                 : mode == kTokens ? kTokensLineSize
                                   : kFixedColumnsLineSize;
  out.prefix = mode == kTokens ? tokenLine("00", "", "") : fixedLine("60", "", "");
  geo.write(out);
  out.flushLine();
  return out.recs;
}

}  // namespace Vesk

#endif
