// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_LOAD_OBSERVED_OBSERVE_H
#define VESK_TESTS_LOAD_OBSERVED_OBSERVE_H

#include <cstdio>

inline void observe(const char* event) {
  std::puts(event);
  std::fflush(stdout);
}

#endif
