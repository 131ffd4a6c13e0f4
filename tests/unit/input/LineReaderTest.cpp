// SPDX-License-Identifier: MIT
#include "input/LineReader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "input/RecordTesting.h"

using namespace Vesk;

namespace {

// "number@offset:line" of each line; "~" behind one without an end, "!" behind
// one that was too long.
std::vector<std::string> linesOf(std::string_view text, std::size_t piece, std::size_t longest) {
  LineReader reader(std::make_unique<PieceSource>(text, piece), longest);
  std::vector<std::string> lines;
  while (reader.next()) {
    lines.push_back(std::to_string(reader.number()) + '@' + std::to_string(reader.offset()) + ':' +
                    std::string(reader.line()) + (reader.isTerminated() ? "" : "~") +
                    (reader.isTooLong() ? "!" : ""));
  }
  return lines;
}

struct LinesRow {
  const char* name;
  std::string text;
  std::vector<std::string> lines;
};

const LinesRow kLines[] = {
    {"Nothing", "", {}},
    {"OneLine", "ab\n", {"1@0:ab"}},
    {"EmptyLines", "\n\n", {"1@0:", "2@1:"}},
    {"CrLf", "ab\r\n\r\nc\r\n", {"1@0:ab", "2@4:", "3@6:c"}},
    {"CrInTheLineStays", "a\rb\r\r\n", {"1@0:a\rb\r"}},
    {"NoLineEnd", "ab\ncd", {"1@0:ab", "2@3:cd~"}},
    {"CrWithoutLf", "ab\r", {"1@0:ab~"}},
    {"AsLongAsMayBe", "12345678\nx\n", {"1@0:12345678", "2@9:x"}},
    {"TooLong", "a\n1234567890abcdefghij\nb\nc\n", {"1@0:a", "2@2:12345678!", "3@23:b", "4@25:c"}},
    {"TooLongWithoutEnd", "a\n1234567890", {"1@0:a", "2@2:12345678~!"}},
    {"TooLongTwice", "123456789\n123456789\n", {"1@0:12345678!", "2@10:12345678!"}},
};

TEST(LineReaderTest, TakesTextApart) {
  for (const LinesRow& row : kLines) {
    for (const std::size_t piece : {1u, 2u, 7u, 1000u}) {
      EXPECT_EQ(linesOf(row.text, piece, 8), row.lines) << row.name << ' ' << piece;
    }
  }
}

TEST(LineReaderTest, WindowKeepsTheLine) {
  const std::string text = "ab\ncd\nef\n";
  LineReader reader(std::make_unique<PieceSource>(text, 1));
  reader.next();
  reader.next();
  EXPECT_EQ(reader.window(), "cd\nef\n");
  EXPECT_EQ(reader.line(), "cd");
  EXPECT_EQ(reader.offset(), 3u);
  ASSERT_TRUE(reader.next());
  EXPECT_EQ(reader.line(), "ef");
  EXPECT_FALSE(reader.next());
}

}  // namespace
