// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_OUTPUT_NUMBERTEXTSWEEP_H
#define VESK_TESTS_OUTPUT_NUMBERTEXTSWEEP_H

#include <cstdint>
#include <string>

namespace VeskTest {

// A long row of doubles that are hard to print, and the comparison of their
// texts with those of other programs. Sample i is the same in every run; the
// kinds take turns:
//
//   any bit pattern; decimals as plants have them; exact halves of every last
//   decimal from 0 to 7, one after the other; their neighbours; the doubles
//   round the middle of two decimals; the doubles round each bound of the forms
//   and each power of two and of ten; denormals; values from 1e15 to the largest
double numberSample(std::uint64_t i);

// Compares the texts of samples first to last - 1: the fast way with the C
// library's formatted print and with std::to_chars, the trimmed form with 0 to
// 9 decimals by turns (a half with the decimals that it is a half of) and the nine-character form,
// and that nothing behind the asked room is touched. Empty if all agree, else the first difference.
std::string firstDifference(std::uint64_t first, std::uint64_t last);

}  // namespace VeskTest

#endif
