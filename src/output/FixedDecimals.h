// SPDX-License-Identifier: MIT
#ifndef VESK_OUTPUT_FIXEDDECIMALS_H
#define VESK_OUTPUT_FIXEDDECIMALS_H

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__) && defined(__x86_64__)
#include <emmintrin.h>
#endif

namespace Vesk {

// The decimal digits of a double, exact and fast.
//
// A normal double below 2^52 is a whole number of 53 bits, divided by a power of
// two:
//
//   |v| = m / 2^s,  m < 2^53,  s > 0
//
// For s < 64 the whole part is the upper bits, m >> s. The s lower bits, moved to
// the upper end of a word, are the fraction in units of 2^-64. Times 10^d that is
// one exact product of 128 bits: its upper word the decimals, its lower word the
// remainder. Half a unit is added to round to nearest; a remainder of 0 is then
// the sign of an exact half, which goes to the even neighbour.
//
// For s >= 64, that is |v| < 2^-11, there is no whole part, and the whole product
// m * 10^d is shifted by s. There is no exact half either: it would make
// m * 10^d * 2 a multiple of 2^s, but m has at most 52 factors of two and 10^d at
// most 7. An s above 100 says |v| < 2^-47, which rounds to 0;
// it also stands for zeros and denormals, s = 1075, where m is another.

#if defined(__SIZEOF_INT128__)
__extension__ using Uint128 = unsigned __int128;

// Whether the functions below serve on this machine.
inline constexpr bool kHasFixedDecimals = std::endian::native == std::endian::little;
#else
inline constexpr bool kHasFixedDecimals = false;
#endif

inline constexpr unsigned kMostFixedDecimals = 7;

inline constexpr std::array<std::uint64_t, kMostFixedDecimals + 1> kPowersOfTen{
    1, 10, 100, 1000, 10000, 100000, 1000000, 10000000};

// |v| = whole + fraction / 10^decimals after rounding; fraction < 10^decimals.
struct FixedDecimals {
  std::uint64_t whole = 0;
  std::uint64_t fraction = 0;
};

// s in the derivation; 0 or less from 2^52 on, for the infinities and for NaN.
inline int binaryPlaces(double v) {
  return 1075 - static_cast<int>((std::bit_cast<std::uint64_t>(v) >> 52) & 0x7ff);
}

// Whether fixedDecimals can round v to so many decimals.
inline bool canFix(double v, int decimals) {
  return kHasFixedDecimals && static_cast<unsigned>(decimals) <= kMostFixedDecimals &&
         binaryPlaces(v) > 0;
}

// Whether the exponent alone says that v is 0 to as many decimals as canFix takes.
inline bool roundsToZero(double v) { return binaryPlaces(v) > 100; }

// |v| to so many decimals, exact halves to the even digit; canFix(v, decimals)
// holds. As derived above.
#if defined(__SIZEOF_INT128__)
inline FixedDecimals fixedDecimals(double v, int decimals) {
  constexpr std::uint64_t kHiddenBit = std::uint64_t{1} << 52;
  constexpr std::uint64_t kHalf = std::uint64_t{1} << 63;
  const int s = binaryPlaces(v);
  const std::uint64_t m = (std::bit_cast<std::uint64_t>(v) & (kHiddenBit - 1)) | kHiddenBit;
  const std::uint64_t power = kPowersOfTen[static_cast<std::size_t>(decimals)];
  if (s >= 64) [[unlikely]] {
    if (roundsToZero(v)) return {};
    const Uint128 half = Uint128{1} << (s - 1);
    return {0, static_cast<std::uint64_t>((Uint128{m} * power + half) >> s)};
  }

  FixedDecimals result{m >> s, 0};
  const Uint128 product = Uint128{m << (64 - s)} * power + kHalf;
  result.fraction = static_cast<std::uint64_t>(product >> 64);
  if (static_cast<std::uint64_t>(product) == 0) [[unlikely]] {  // an exact half
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
// Each step splits all numbers in the word at once into quotient and remainder:
// one number below 10^8, two below 10^4, four below 100, eight digits. The
// quotients q come from a multiplication with the reciprocal, exact in the range
// needed. With the divisor b and lanes of k bits, the quotient below and the
// remainder n - q * b above it are together
//
//   q + (n - q * b) * 2^k  =  n * 2^k - q * (b * 2^k - 1)
inline std::uint64_t eightDigits(std::uint64_t n) {
  const std::uint64_t fours = n * 109951163 >> 40;
  n = (n << 32) - fours * ((std::uint64_t{10000} << 32) - 1);
  const std::uint64_t hundreds = n * 10486 >> 20 & 0x0000007f0000007f;
  n = (n << 16) - hundreds * ((std::uint64_t{100} << 16) - 1);
  const std::uint64_t tens = n * 103 >> 10 & 0x000f000f000f000f;
  return (n << 8) - tens * ((std::uint64_t{10} << 8) - 1);
}

// The eight digits of two numbers. A number's whole part and its decimals are made
// at once, so that a unit for several numbers at a time does both in one go.
struct TwiceEightDigits {
  std::uint64_t first = 0;
  std::uint64_t second = 0;
};

#if defined(__SSE2__) && defined(__x86_64__)
// The steps of eightDigits on both words. Its products have 64, 32 and 16 bits,
// one for each quotient, so that the reciprocals are shorter from step to step; they
// are exact in the range needed.
inline TwiceEightDigits twiceEightDigits(std::uint64_t a, std::uint64_t b) {
  const auto in64 = [](long long x) { return _mm_set1_epi64x(x); };
  const auto in16 = [](short x) { return _mm_set1_epi16(x); };
  __m128i n = _mm_set_epi64x(static_cast<long long>(b), static_cast<long long>(a));
  const __m128i fours = _mm_srli_epi64(_mm_mul_epu32(n, in64(109951163)), 40);
  n = _mm_sub_epi64(n, _mm_mul_epu32(fours, in64(10000)));
  n = _mm_or_si128(fours, _mm_slli_epi64(n, 32));
  const __m128i hundreds = _mm_srli_epi16(_mm_mulhi_epu16(n, in16(5243)), 3);
  n = _mm_sub_epi32(n, _mm_madd_epi16(hundreds, in16(100)));
  n = _mm_or_si128(hundreds, _mm_slli_epi32(n, 16));
  const __m128i tens = _mm_mulhi_epu16(n, in16(6554));
  n = _mm_sub_epi16(_mm_slli_epi16(n, 8), _mm_mullo_epi16(tens, in16((10 << 8) - 1)));
  return {static_cast<std::uint64_t>(_mm_cvtsi128_si64(n)),
          static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(n, n)))};
}
#else
inline TwiceEightDigits twiceEightDigits(std::uint64_t a, std::uint64_t b) {
  return {eightDigits(a), eightDigits(b)};
}
#endif

inline constexpr std::uint64_t kEightZeros = 0x3030303030303030;  // "00000000"

// How many of the first digits are zeros, not counting the last of the eight.
inline unsigned leadingZeros(std::uint64_t digits) {
  return static_cast<unsigned>(std::countr_zero(digits | std::uint64_t{1} << 56)) / 8;
}

// Writes the eight bytes of `word`, the lowest first.
inline void storeEight(char* to, std::uint64_t word) { std::memcpy(to, &word, sizeof word); }

}  // namespace Vesk

#endif
