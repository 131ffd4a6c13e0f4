// SPDX-License-Identifier: MIT
#include "output/NumberTextSweep.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string_view>
#include <vector>

#include "output/NumberText.h"

namespace VeskTest {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// The bounds of the nine-character form, of the fast way and of its parts.
constexpr double kBounds[] = {
    99999999.0, 9999999.9, 999999.99, 99999.999,  -9999.999, -99999.99, -999999.9,
    -9999999.0, 9999.999,  0.0,       0x1p53,     0x1p-10,   0x1p-11,   0x1p-47,
    0x1p-1022,  1e8,       1e16,      99999999.5, 0.5,       1.0,       0x1p52,
    0x1p63,     0x1p64,    9.9999995, 0.99999995,
};

// The mixing step of the splitmix64 generator: any number to any other.
std::uint64_t mixed(std::uint64_t n) {
  n += 0x9e3779b97f4a7c15;
  n = (n ^ n >> 30) * 0xbf58476d1ce4e5b9;
  n = (n ^ n >> 27) * 0x94d049bb133111eb;
  return n ^ n >> 31;
}

double whole(std::uint64_t n) { return static_cast<double>(n); }

// The double `steps` (-4 to 4) beside v.
double beside(double v, std::uint64_t n) {
  const int steps = static_cast<int>(n % 9) - 4;
  for (int i = 0; i < std::abs(steps); ++i)
    v = std::nextafter(v, steps < 0 ? -kInfinity : kInfinity);
  return v;
}

double plantDecimal(std::uint64_t n) {
  constexpr double kScales[] = {1.0, 10.0, 100.0, 1000.0, 1e4, 1e6};
  return whole(mixed(n) % 1000000000) / kScales[n % std::size(kScales)];
}

// Odd multiples of half the last of 0 to 7 decimals' binary part: x.5, x.25,
// x.125 ... have an exact half behind 0, 1, 2 ... decimals.
double exactHalf(std::uint64_t n) {
  return std::ldexp(whole(2 * (n / 8) + 1), -1 - static_cast<int>(n % 8));
}

// The double nearest to the middle of two neighbouring decimals, or beside it.
double nearMiddle(std::uint64_t n) {
  constexpr double kScales[] = {1.0, 10.0, 100.0, 1000.0, 1e4, 1e5, 1e6, 1e7};
  const std::uint64_t random = mixed(n);
  const double middle = whole(random >> 8 & ((std::uint64_t{1} << random % 46) - 1)) + 0.5;
  return beside(middle / kScales[n % std::size(kScales)], n / 8);
}

double nearBound(std::uint64_t n) {
  const std::uint64_t random = mixed(n);
  const std::size_t count = std::size(kBounds);
  const std::size_t choice = random >> 32 & 63;
  if (choice < count) return beside(kBounds[choice], n);
  if (choice % 2 == 0) return beside(std::ldexp(1.0, static_cast<int>(random % 2098) - 1074), n);
  return beside(std::pow(10.0, static_cast<double>(random % 640) - 325.0), n);
}

double denormal(std::uint64_t n) {
  return std::bit_cast<double>(mixed(n) >> 12 & ((std::uint64_t{2} << mixed(n) % 52) - 1));
}

double huge(std::uint64_t n) {
  const std::uint64_t random = mixed(n);
  return std::ldexp(1.0 + whole(random >> 12) * 0x1p-52, 50 + static_cast<int>(random % 974));
}

// The text of v by the C library's formatted print.
std::string_view printed(std::vector<char>& buffer, const char* format, int decimals, double v) {
  if (std::isnan(v)) return "nan";
  buffer.resize(400);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  const int length = std::snprintf(buffer.data(), buffer.size(), format, decimals, v);
#pragma GCC diagnostic pop
  return {buffer.data(), static_cast<std::size_t>(length)};
}

std::string_view printedFixed(std::vector<char>& buffer, double v, int decimals) {
  std::string_view text = printed(buffer, "%.*f", decimals, v);
  if (text.find('.') == text.npos) return text;
  text = text.substr(0, text.find_last_not_of('0') + 1);
  return text.back() == '.' ? text.substr(0, text.size() - 1) : text;
}

// The fixed forms of the nine-character field only; the exponent forms and what
// is no number have no fast way.
bool hasFixedField9(double v) { return v <= 99999999.0 && v > -9999999.0; }

std::string_view printedField9(std::vector<char>& buffer, double v) {
  int decimals = 3;
  if (v > 9999999.9 || v <= -999999.9) {
    decimals = 0;
  } else if (v > 999999.99 || v <= -99999.99) {
    decimals = 1;
  } else if (v > 99999.999 || v <= -9999.999) {
    decimals = 2;
  }
  return printed(buffer, "%9.*f", decimals, v);
}

constexpr int kMostDecimals = 9;

// How many decimals sample i is printed with: halves with theirs.
int sampleDecimals(std::uint64_t i) {
  const std::uint64_t n = i / 8;
  switch (i % 8) {
    case 2:
    case 4:
      return static_cast<int>(n % 8);
    case 3:
      return static_cast<int>(n / 9 % 8);
    default:
      return static_cast<int>(n % (kMostDecimals + 1));
  }
}

// A block of the room that a text asks for, and a byte behind it.
class Room {
 public:
  explicit Room(std::size_t size) : chars_(size + 1) {}

  template <class Write>
  std::string_view text(std::size_t size, Write write) {
    chars_[size] = '#';
    char* const end = write(chars_.data());
    if (chars_[size] != '#') return "(wrote behind its room)";
    return {chars_.data(), static_cast<std::size_t>(end - chars_.data())};
  }

 private:
  std::vector<char> chars_;
};

std::string difference(double v, const char* form, std::string_view expected,
                       std::string_view text) {
  char value[64];
  std::snprintf(value, sizeof value, "%a", v);
  return std::string(value) + " " + form + ": expected \"" + std::string(expected) + "\", got \"" +
         std::string(text) + "\"";
}

}  // namespace

double numberSample(std::uint64_t i) {
  const std::uint64_t n = i / 8;
  const bool negative = (mixed(i) & 1) != 0;
  const auto value = [&] {
    switch (i % 8) {
      case 0:
        return std::bit_cast<double>(mixed(n));
      case 1:
        return plantDecimal(n);
      case 2:
        return exactHalf(n);
      case 3:
        return beside(exactHalf(n / 9), n);
      case 4:
        return nearMiddle(n);
      case 5:
        return nearBound(n);
      case 6:
        return n % 4 == 0 ? denormal(n) : plantDecimal(n) * 0.001;
      default:
        return n % 4 == 0 ? huge(n) : plantDecimal(n) - plantDecimal(n + 1);
    }
  }();
  return negative ? -value : value;
}

std::string firstDifference(std::uint64_t first, std::uint64_t last) {
  std::vector<char> expectedBuffer;
  Room fastRoom(Vesk::fixedRoom(kMostDecimals));
  Room portableRoom(Vesk::fixedRoom(kMostDecimals));
  for (std::uint64_t i = first; i < last; ++i) {
    const double v = numberSample(i);
    const int decimals = sampleDecimals(i);
    const std::size_t size = Vesk::fixedRoom(decimals);
    const auto fast = [&](char* to) { return Vesk::writeFixed(to, v, decimals); };
    const auto portable = [&](char* to) { return Vesk::Portable::writeFixed(to, v, decimals); };
    const std::string_view expected = printedFixed(expectedBuffer, v, decimals);
    for (const std::string_view text :
         {fastRoom.text(size, fast), portableRoom.text(size, portable)}) {
      if (text != expected) return difference(v, "trimmed", expected, text);
    }

    const auto fast9 = [&](char* to) { return Vesk::writeField9(to, v); };
    const auto portable9 = [&](char* to) { return Vesk::Portable::writeField9(to, v); };
    const std::string_view by = portableRoom.text(Vesk::kField9Room, portable9);
    const std::string_view field = fastRoom.text(Vesk::kField9Room, fast9);
    if (field != by) return difference(v, "nine characters", by, field);
    if (!hasFixedField9(v)) continue;
    const std::string_view expected9 = printedField9(expectedBuffer, v);
    if (field != expected9) return difference(v, "nine characters", expected9, field);
  }
  return {};
}

}  // namespace VeskTest
