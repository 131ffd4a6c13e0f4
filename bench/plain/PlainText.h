// SPDX-License-Identifier: MIT
#ifndef VESK_BENCH_PLAIN_PLAINTEXT_H
#define VESK_BENCH_PLAIN_PLAINTEXT_H

#include <string>

namespace VeskBench {

// The two number forms of NumberText.h written the ordinary way: a string for
// each number by the C library's formatted print.
std::string plainField9(double v);
std::string plainFixed(double v, int decimals, int width = 0);

}  // namespace VeskBench

#endif
