// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_SUPPORT_TEXT_H
#define VESK_TESTS_SUPPORT_TEXT_H

#include <iterator>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace VeskTest {

// The text with its blanks and line ends made visible, so that a difference in
// a failing test can be seen: "a b\n" -> "a_b$\n".
inline std::string visible(std::string_view text) {
  std::string shown;
  for (const char c : text) {
    if (c == ' ') {
      shown += '_';
    } else if (c == '\n') {
      shown += "$\n";
    } else {
      shown += c;
    }
  }
  return shown;
}

// Lines, each with its newline, as they stand in a file.
template <class Lines>
std::string joined(const Lines& lines) {
  std::string text;
  for (const auto& line : lines) {
    text += line;
    text += '\n';
  }
  return text;
}

inline std::string joined(std::initializer_list<std::string_view> lines) {
  return joined(std::vector<std::string_view>(lines));
}

// What `row << stream` gives, for the names of rows.
template <class Row>
std::string streamed(const Row& row) {
  std::ostringstream out;
  out << row;
  return out.str();
}

}  // namespace VeskTest

#define EXPECT_TEXT(actual, expected) \
  EXPECT_EQ(VeskTest::visible(actual), VeskTest::visible(expected))

#endif
