#ifndef VESK_OUTPUT_FIXEDDECIMALS_H
#define VESK_OUTPUT_FIXEDDECIMALS_H

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace Vesk {

// The decimal digits of a double, exact and fast.
//
// A double is a whole number of 53 bits times a power of two. Below 2^53 the
// power is not positive:
//
//   |v| = m / 2^s,  m < 2^53,  s >= 0
//
// The whole part is the upper bits, m >> s. The lower bits f = m - (whole << s)
// are below 2^s as well as below 2^53, so that the fraction times 10^d, d <= 7,
//
//   f * 10^d / 2^s
//
// has a numerator below 2^77 and below 2^(s + 24). With the denominator made
// 2^100, which multiplies the numerator by 2^(100 - s), it stays below 2^124:
// one exact number of 128 bits, its lower 100 the remainder. Adding half a unit
// and dropping the remainder rounds to nearest; a remainder of 0 after the
// addition was an exact half, which goes to the even neighbour.
//
// An s above 100 says |v| < 2^-47, and that rounds to 0 with any mantissa. So
// zeros and denormals, s = 1075, need no case of their own.

#if defined(__SIZEOF_INT128__)
__extension__ using Uint128 = unsigned __int128;

// Whether the functions below serve on this machine.
inline constexpr bool kHasFixedDecimals = std::endian::native == std::endian::little;
#else
inline constexpr bool kHasFixedDecimals = false;
#endif

inline constexpr int kMostFixedDecimals = 7;

inline constexpr std::array<std::uint64_t, kMostFixedDecimals + 1> kPowersOfTen{
    1, 10, 100, 1000, 10000, 100000, 1000000, 10000000};

// |v| = whole + fraction / 10^decimals after rounding; fraction < 10^decimals.
struct FixedDecimals {
  std::uint64_t whole = 0;
  std::uint64_t fraction = 0;
};

// s in the derivation; negative for 2^53 and above, the infinities and NaN.
inline int binaryPlaces(double v) {
  return 1075 - static_cast<int>((std::bit_cast<std::uint64_t>(v) >> 52) & 0x7ff);
}

// Whether fixedDecimals can round v to so many decimals, 0 or more.
inline bool canFix(double v, int decimals) {
  return kHasFixedDecimals && decimals <= kMostFixedDecimals && binaryPlaces(v) >= 0;
}

// |v| to so many decimals, exact halves to the even digit; canFix(v, decimals)
// holds. The numbers in the comment above.
#if defined(__SIZEOF_INT128__)
inline FixedDecimals fixedDecimals(double v, int decimals) {
  constexpr std::uint64_t kHiddenBit = std::uint64_t{1} << 52;
  const int s = binaryPlaces(v);
  const std::uint64_t m = (std::bit_cast<std::uint64_t>(v) & (kHiddenBit - 1)) | kHiddenBit;
  const int wholeShift = std::min(s, 63);
  const std::uint64_t power = kPowersOfTen[static_cast<std::size_t>(decimals)];

  FixedDecimals result{m >> wholeShift, 0};
  const std::uint64_t f = m - (result.whole << wholeShift);
  const Uint128 scaled = (Uint128{f} * power << (100 - std::min(s, 100))) + (Uint128{1} << 99);
  result.fraction = static_cast<std::uint64_t>(scaled >> 100);
  if (scaled << 28 == 0) [[unlikely]] {  // an exact half
    const std::uint64_t last = decimals == 0 ? result.whole + 1 : result.fraction;
    result.fraction -= last & 1;
  }
  if (result.fraction == power) [[unlikely]] {
    result.fraction = 0;
    ++result.whole;
  }
  return result;
}
#else
inline FixedDecimals fixedDecimals(double, int) { return {}; }
#endif

// Eight digits in one word, a digit a byte, the first digit in the lowest byte.
//
// Each step splits all the word's numbers at once into quotient and remainder,
// by a multiplication with the reciprocal that is exact in the range needed:
// one number below 10^8, two below 10^4, four below 100, eight digits.
inline std::uint64_t eightDigits(std::uint64_t n) {
  const std::uint64_t high = n * 109951163 >> 40;  // n / 10^4
  const std::uint64_t fours = high | (n - high * 10000) << 32;
  const std::uint64_t hundreds = fours * 10486 >> 20 & 0x0000007f0000007f;
  const std::uint64_t twos = hundreds | (fours - hundreds * 100) << 16;
  const std::uint64_t tens = twos * 103 >> 10 & 0x000f000f000f000f;
  return tens | (twos - tens * 10) << 8;
}

inline constexpr std::uint64_t kEightZeros = 0x3030303030303030;  // "00000000"

// How many of the first digits are zeros, not counting the last of the eight.
inline int leadingZeros(std::uint64_t digits) {
  return std::countr_zero(digits | std::uint64_t{1} << 56) / 8;
}

// Writes the eight bytes of `word`, the lowest first.
inline void storeEight(char* to, std::uint64_t word) { std::memcpy(to, &word, sizeof word); }

}  // namespace Vesk

#endif
