// SPDX-License-Identifier: MIT
#include "view/PageCode.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <optional>

namespace VeskTool {
namespace {

// Powers of ten and whole numbers up to 15 digits are exact, so that their quotient
// is the nearest double.
constexpr std::size_t kMostDigits = 15;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isOfNumber(char c) { return isDigit(c) || c == '.' || c == '-' || c == '+'; }

// A word of such characters as a number, if it is a simple one.
std::optional<double> numberOf(std::string_view word) {
  const bool isNegative = word.starts_with('-');
  if (isNegative || word.starts_with('+')) word.remove_prefix(1);
  double whole = 0.0;
  double scale = 1.0;
  std::size_t digits = 0;
  bool hasPoint = false;
  for (const char c : word) {
    if (c == '.' && !hasPoint) {
      hasPoint = true;
    } else if (isDigit(c)) {
      whole = whole * 10.0 + (c - '0');
      if (hasPoint) scale *= 10.0;
      ++digits;
    } else {
      return std::nullopt;
    }
  }
  if (digits == 0 || digits > kMostDigits) return std::nullopt;
  const double number = whole / scale;
  return isNegative ? -number : number;
}

template <class Number>
bool isSame(Number a, Number b) {
  using Bits = std::conditional_t<sizeof(Number) == 8, std::uint64_t, std::uint32_t>;
  return std::bit_cast<Bits>(a) == std::bit_cast<Bits>(b);
}

bool isVector(char type) { return type == 'p' || type == 'o' || type == 'd'; }

// Looks for one value among the numbers of a record.
class ValueSearch {
 public:
  ValueSearch(const std::vector<double>& numbers, std::span<const double> values)
      : numbers_(numbers), values_(values) {}

  // The hint for value `at`, part `axis` of a vector or -1.
  std::uint8_t hint(std::size_t at, int axis) {
    const std::size_t count = std::min(numbers_.size(), ValueHints::kMostSkipped);
    for (std::size_t skipped = 0; skipped < count; ++skipped) {
      const std::size_t place = (next_ + skipped) % numbers_.size();
      for (std::uint8_t mode = 0; mode < ValueHints::kModes; ++mode) {
        if (!isSame(made(mode, numbers_[place], at, axis), values_[at])) continue;
        next_ = place + 1;
        return static_cast<std::uint8_t>(1 + mode + 8 * skipped);
      }
    }
    return ValueHints::kLiteral;
  }

 private:
  double made(std::uint8_t mode, double number, std::size_t at, int axis) const {
    if (mode == ValueHints::kSame) return number;
    if (axis < 0 || at < 3) return std::nan("");
    const double before = values_[at - 3];
    const double first = values_[static_cast<std::size_t>(axis)];
    switch (mode) {
      case ValueHints::kFromBefore:
        return before + number;
      case ValueHints::kToBefore:
        return number - before;
      case ValueHints::kFromFirst:
        return first + number;
      default:
        return number - first;
    }
  }

  const std::vector<double>& numbers_;
  std::span<const double> values_;
  std::size_t next_ = 0;
};

double changed(double value, std::size_t operation) {
  switch (operation) {
    case PlaceHints::kNegative:
      return -value;
    case PlaceHints::kHalf:
      return value * 0.5;
    case PlaceHints::kMinusHalf:
      return value * -0.5;
    default:
      return value;
  }
}

std::uint8_t simpleHint(float number) {
  if (isSame(number, 0.0F)) return PlaceHints::kZero;
  if (isSame(number, -0.0F)) return PlaceHints::kMinusZero;
  if (isSame(number, 1.0F)) return PlaceHints::kOne;
  if (isSame(number, -1.0F)) return PlaceHints::kMinusOne;
  return PlaceHints::kLiteral;
}

std::uint8_t valueHint(float number, std::span<const double> values, double offset) {
  const std::size_t count = std::min(values.size(), PlaceHints::kMostValues);
  for (std::size_t operation = 0; operation < PlaceHints::kOperations; ++operation) {
    for (std::size_t i = 0; i < count; ++i) {
      if (!isSame(static_cast<float>(changed(values[i], operation) - offset), number)) continue;
      return static_cast<std::uint8_t>(PlaceHints::kValues + i +
                                       PlaceHints::kMostValues * operation);
    }
  }
  return PlaceHints::kLiteral;
}

}  // namespace

SplitLines splitLines(std::string_view lines) {
  const auto count = static_cast<std::size_t>(std::count(lines.begin(), lines.end(), '\n'));
  SplitLines split;
  split.heads.assign(count * SplitLines::kHead, '\n');
  split.rests.reserve(lines.size());
  for (std::size_t line = 0; line < count; ++line) {
    const std::size_t end = lines.find('\n');
    const std::size_t head = std::min(end, SplitLines::kHead);
    for (std::size_t k = 0; k < head; ++k) split.heads[k * count + line] = lines[k];
    if (end >= SplitLines::kHead) split.rests += lines.substr(head, end + 1 - head);
    lines.remove_prefix(end + 1);
  }
  return split;
}

std::vector<double> plainNumbers(std::string_view lines) {
  std::vector<double> numbers;
  while (!lines.empty()) {
    const std::size_t end = lines.find('\n');
    std::string_view line = lines.substr(0, end);
    lines.remove_prefix(std::min(lines.size(), line.size() + 1));
    line.remove_prefix(std::min(line.size(), SplitLines::kHead));
    for (std::size_t at = 0; at < line.size();) {
      std::size_t stop = at;
      while (stop < line.size() && isOfNumber(line[stop])) ++stop;
      if (const auto number = numberOf(line.substr(at, stop - at))) numbers.push_back(*number);
      at = std::max(stop, at + 1);
    }
  }
  return numbers;
}

void ValueHints::add(const std::vector<double>& numbers, std::string_view types,
                     std::span<const double> values) {
  ValueSearch search(numbers, values);
  std::size_t at = 0;
  for (const char type : types) {
    const std::size_t width = isVector(type) ? 3 : 1;
    for (std::size_t k = 0; k < width && type != 't'; ++k) {
      hints.push_back(search.hint(at + k, isVector(type) ? static_cast<int>(k) : -1));
      if (hints.back() == kLiteral) literals.push_back(values[at + k]);
    }
    at += width;
  }
}

void PlaceHints::add(std::span<const float> numbers, std::span<const int> axes,
                     std::span<const double> values, const std::array<double, 3>& offset) {
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    std::uint8_t hint = kLiteral;
    if (axes[i] < 0) hint = simpleHint(numbers[i]);
    if (hint == kLiteral) {
      const double off = axes[i] < 0 ? 0.0 : offset[static_cast<std::size_t>(axes[i])];
      hint = valueHint(numbers[i], values, off);
    }
    if (hint == kLiteral && isSame(numbers[i], before_[turn_])) hint = kThreeBefore;
    hints.push_back(hint);
    if (hint == kLiteral) literals.push_back(numbers[i]);
    before_[turn_] = numbers[i];
    turn_ = (turn_ + 1) % before_.size();
  }
}

}  // namespace VeskTool
