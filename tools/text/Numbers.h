// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_NUMBERS_H
#define VESK_TOOLS_NUMBERS_H

#include <cstdint>
#include <string>
#include <string_view>

#include "vesk/GePoint.h"

namespace VeskTool {

// Numbers as the tool prints them; never by the locale.

// The fewest digits that give the same double back: 0.1, 100000, -0, 1e+22. An
// exponent only from 1e16 on and below 1e-5; "nan", "inf", "-inf".
void appendShortest(std::string& to, double value);
std::string shortest(double value);

// Exactly so many decimals: 2 decimals: 1.005 -> "1.00". A result that is zero
// has no sign.
void appendRounded(std::string& to, double value, int decimals);
std::string rounded(double value, int decimals);

// At most so many decimals, without zeros at the end: 3 decimals: 1.5 -> "1.5".
void appendTrimmed(std::string& to, double value, int decimals);
std::string trimmedNumber(double value, int decimals);

// "x y z", shortest.
std::string pointText(const GePoint& p);

// The digits in groups of three: 2513004 -> "2 513 004".
std::string grouped(std::uint64_t value);

// "1 element", "2 513 elements".
std::string counted(std::uint64_t count, const char* one);

// The whole text as a number: true, and `value` is it. Blanks are no part of one.
bool readNumber(std::string_view text, double& value);

// "1,2,3" or "1 2 3" as so many finite numbers.
bool readNumbers(std::string_view text, std::size_t count, double* values);

}  // namespace VeskTool

#endif
