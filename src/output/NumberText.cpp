// SPDX-License-Identifier: MIT
#include "output/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "output/FixedDecimals.h"
#include "output/RecordLayout.h"

namespace Vesk {
namespace {

constexpr int kFieldWidth = static_cast<int>(kNumberFieldWidth);

// The decimals of the fixed forms of the nine-character field by range.
enum Field9Form { kNoDecimals, kOneDecimal, kTwoDecimals, kThreeDecimals, kExponent, kNoNumber };

Field9Form field9Form(double v) {
  if (v > 99999.999) {
    if (v > 99999999.0) return std::isfinite(v) ? kExponent : kNoNumber;
    if (v > 9999999.9) return kNoDecimals;
    return v > 999999.99 ? kOneDecimal : kTwoDecimals;
  }
  if (v > -9999.999) return kThreeDecimals;
  if (v > -99999.99) return kTwoDecimals;
  if (v > -999999.9) return kOneDecimal;
  if (v > -9999999.0) return kNoDecimals;
  return std::isfinite(v) ? kExponent : kNoNumber;
}

// Writes v with exactly `decimals` decimals into `room` characters.
char* writeDecimals(char* to, std::size_t room, double v, int decimals) {
  if (std::isnan(v)) return std::copy_n("nan", 3, to);
  return std::to_chars(to, to + room, v, std::chars_format::fixed, decimals).ptr;
}

// Moves the text to the right end of a field of `width`; returns its new end.
char* alignRight(char* text, char* end, int width) {
  const std::ptrdiff_t blanks = width - (end - text);
  if (blanks <= 0) return end;
  std::copy_backward(text, end, end + blanks);
  std::fill_n(text, blanks, ' ');
  return end + blanks;
}

// Removes trailing zeros and a bare point from decimals.
char* trim(char* end) {
  while (end[-1] == '0') --end;
  return end[-1] == '.' ? end - 1 : end;
}

// The sign of a negative v; -0.0 is negative, and so is what rounds to it.
char* writeSign(char* to, double v) {
  *to = '-';
  return to + (std::signbit(v) ? 1 : 0);
}

// Writes the digits of a number without leading zeros.
inline char* writeWhole(char* to, std::uint64_t digits) {
  const unsigned skipped = leadingZeros(digits);
  storeEight(to, (digits | kEightZeros) >> (8 * skipped));
  return to + (8 - skipped);
}

// The fraction in units of 10^-7. Its eight digits are one that is 0, where the
// point goes, and seven decimals, of which the first `decimals` count.
std::uint64_t inSevenDecimals(std::uint64_t fraction, int decimals) {
  return fraction * kPowersOfTen[kMostFixedDecimals - static_cast<unsigned>(decimals)];
}

constexpr std::uint64_t kPointAndZeros = (kEightZeros & ~std::uint64_t{0xff}) | '.';
constexpr std::uint64_t kBlank = ' ';
constexpr std::uint64_t kEightBlanks = 0x2020202020202020;

// Writes point and decimals without trailing zeros, which are the last bytes of
// the word. Of a fraction 0 they would leave the bare point.
inline char* writeFraction(char* to, std::uint64_t digits) {
  storeEight(to, digits | kPointAndZeros);
  const unsigned zeros = static_cast<unsigned>(std::countl_zero(digits | 1)) / 8;
  return to + (8 - zeros) - (digits == 0 ? 1 : 0);
}

constexpr std::uint64_t kEightDigitsEnd = 100000000;

// Writes a number of more than eight digits before the point. Out of line, to
// keep the way of all others short.
[[gnu::noinline]] char* writeLong(char* to, FixedDecimals parts, int decimals) {
  to = writeWhole(to, eightDigits(parts.whole / kEightDigitsEnd));
  storeEight(to, eightDigits(parts.whole % kEightDigitsEnd) | kEightZeros);
  return writeFraction(to + 8, eightDigits(inSevenDecimals(parts.fraction, decimals)));
}

// The trimmed form without a width.
[[gnu::always_inline]] inline char* writeTrimmed(char* to, double v, int decimals) {
  if (!canFix(v, decimals)) return Portable::writeFixed(to, v, decimals);
  to = writeSign(to, v);
  if (roundsToZero(v)) {
    *to = '0';
    return to + 1;
  }
  const FixedDecimals parts = fixedDecimals(v, decimals);
  if (parts.whole >= kEightDigitsEnd) [[unlikely]]
    return writeLong(to, parts, decimals);
  const auto [whole, fraction] =
      twiceEightDigits(parts.whole, inSevenDecimals(parts.fraction, decimals));
  return writeFraction(writeWhole(to, whole), fraction);
}

// Writes v right-aligned in nine characters, which it does not exceed in the
// ranges of the fixed forms. The digits before the point fill the columns that
// the decimals leave; of their leading zeros the last becomes the sign, the
// others blanks.
char* writeColumns(char* to, double v, int decimals) {
  const FixedDecimals parts = fixedDecimals(v, decimals);
  const auto [digits, decimalDigits] =
      twiceEightDigits(parts.whole, inSevenDecimals(parts.fraction, decimals));
  const unsigned blanks = 8 * leadingZeros(digits);
  const std::uint64_t blanked = ((std::uint64_t{1} << blanks) - 1) & (kEightZeros ^ kEightBlanks);
  const std::uint64_t sign = (std::signbit(v) ? kBlank ^ '-' : 0) << ((blanks - 8) & 63);
  const std::uint64_t whole = (digits | kEightZeros) ^ blanked ^ sign;
  if (decimals == 0) {
    *to = ' ';
    storeEight(to + 1, whole);
  } else {
    storeEight(to, whole >> (8 * decimals));
    storeEight(to + 8 - decimals, decimalDigits | kPointAndZeros);
  }
  return to + kFieldWidth;
}

// 10^exponent by repeated squaring.
double powerOfTen(int exponent) {
  double result = 1.0;
  for (double square = 10.0; exponent != 0; exponent >>= 1, square *= square) {
    if ((exponent & 1) != 0) result *= square;
  }
  return result;
}

// Mantissa and exponent of a finite v beyond the fixed forms. The form is nine
// characters wide for every count of the exponent's digits; the sign takes one
// of the mantissa's decimals.
char* writeExponentForm(char* to, double v) {
  const int exponent = static_cast<int>(std::log10(std::fabs(v)));
  int decimals = v > 0.0 ? 4 : 3;
  if (exponent < 10) {
    ++decimals;
  } else if (exponent >= 100) {
    --decimals;
  }
  to = writeDecimals(to, kField9Room - 4, v / powerOfTen(exponent), decimals);
  *to++ = 'e';
  return std::to_chars(to, to + 3, exponent).ptr;
}

}  // namespace

[[gnu::noinline]] char* Portable::writeField9(char* to, double v) {
  const Field9Form form = field9Form(v);
  char* end = nullptr;
  if (form == kExponent) {
    end = writeExponentForm(to, v);
  } else {
    end = writeDecimals(to, kField9Room, v, form == kNoNumber ? 0 : form);
  }
  return alignRight(to, end, kFieldWidth);
}

[[gnu::noinline]] char* Portable::writeFixed(char* to, double v, int decimals, int width) {
  decimals = std::max(decimals, 0);
  char* end = writeDecimals(to, fixedRoom(decimals), v, decimals);
  // The width counts the zeros that the trimming removes.
  end = alignRight(to, end, width);
  return decimals > 0 && std::isfinite(v) ? trim(end) : end;
}

char* writeField9(char* to, double v) {
  const Field9Form form = field9Form(v);
  if (form <= kThreeDecimals && kHasFixedDecimals) return writeColumns(to, v, form);
  return Portable::writeField9(to, v);
}

char* writeFixed(char* to, double v, int decimals, int width) {
  return width > 0 ? Portable::writeFixed(to, v, decimals, width) : writeTrimmed(to, v, decimals);
}

char* writePoint(char* to, double x, double y, double z, int decimals) {
  to = writeTrimmed(to, x, decimals);
  *to++ = ' ';
  to = writeTrimmed(to, y, decimals);
  *to++ = ' ';
  return writeTrimmed(to, z, decimals);
}

void appendField9(std::string& text, double v) {
  char field[kField9Room];
  text.append(field, writeField9(field, v));
}

void appendFixed(std::string& text, double v, int decimals, int width) {
  const std::size_t start = text.size();
  text.resize(start + fixedRoom(decimals, width));
  const char* const end = writeFixed(text.data() + start, v, decimals, width);
  text.resize(static_cast<std::size_t>(end - text.data()));
}

void appendInt(std::string& text, int v) {
  char digits[std::numeric_limits<int>::digits10 + 2];
  text.append(digits, std::to_chars(std::begin(digits), std::end(digits), v).ptr);
}

std::string countText(std::uint64_t v) {
  char digits[std::numeric_limits<std::uint64_t>::digits10 + 1];
  return {digits, std::to_chars(std::begin(digits), std::end(digits), v).ptr};
}

}  // namespace Vesk
