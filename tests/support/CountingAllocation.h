// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_SUPPORT_COUNTINGALLOCATION_H
#define VESK_TESTS_SUPPORT_COUNTINGALLOCATION_H

namespace VeskTest {

// How often the program has allocated by operator new.
extern int allocations;

}  // namespace VeskTest

#endif
