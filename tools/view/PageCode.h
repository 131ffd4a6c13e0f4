// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_VIEW_PAGECODE_H
#define VESK_TOOLS_VIEW_PAGECODE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace VeskTool {

// What makes the data of a page small before it is compressed. Most of its numbers
// stand in the records, which are in the page byte for byte: for these it holds a
// hint, a byte that says which number of the record it is, and only for the others
// the number itself. viewer/src/scene/hints.js takes the hints back, with the same
// arithmetic and so with every bit.

// The first bytes of each line, column by column, and then what follows them, line
// by line: the heads of neighbouring lines differ in a byte or two.
struct SplitLines {
  static constexpr std::size_t kHead = 19;

  std::string heads;  // a shorter line ends with a newline and is filled up with more of them
  std::string rests;  // with their newlines
};

SplitLines splitLines(std::string_view lines);

// The numbers in the lines of a record behind their heads: digits with a sign and a
// point, 15 digits at most. What is not so simple is left out.
std::vector<double> plainNumbers(std::string_view lines);

// How values follow from the numbers of a record.
struct ValueHints {
  // kLiteral, or 1 + mode + 8 * (how many numbers of the record are skipped; behind
  // the last one comes the first).
  enum Mode : std::uint8_t { kSame, kFromBefore, kToBefore, kFromFirst, kToFirst, kModes };
  static constexpr std::uint8_t kLiteral = 0;
  static constexpr std::size_t kMostSkipped = 24;

  std::vector<std::uint8_t> hints;
  std::vector<double> literals;

  // The values of an element; `types` has a character for each value, as a
  // ValueLayout. Texts get no hint.
  void add(const std::vector<double>& numbers, std::string_view types,
           std::span<const double> values);
};

// How the 32-bit numbers of drawn things follow from the values of their elements.
struct PlaceHints {
  enum : std::uint8_t { kLiteral, kZero, kMinusZero, kOne, kMinusOne, kThreeBefore, kValues };
  // From kValues on: which value + kMostValues * what is done to it.
  enum : std::size_t { kAsItIs, kNegative, kHalf, kMinusHalf, kOperations };
  static constexpr std::size_t kMostValues = 62;

  std::vector<std::uint8_t> hints;
  std::vector<float> literals;

  // `axes` says for each number which part of the scene's offset is taken off a
  // value that is a place: 0, 1 or 2, -1 for none.
  void add(std::span<const float> numbers, std::span<const int> axes,
           std::span<const double> values, const std::array<double, 3>& offset);

 private:
  std::array<float, 3> before_{};  // the numbers before the next one, in a ring
  std::size_t turn_ = 0;
};

}  // namespace VeskTool

#endif
