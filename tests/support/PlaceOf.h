// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_SUPPORT_PLACEOF_H
#define VESK_TESTS_SUPPORT_PLACEOF_H

#include <string>

namespace VeskTest {

// The place text of the exception E that `work` throws; "nothing" if none.
template <class E, class Work>
std::string placeOf(Work work) {
  try {
    work();
  } catch (const E& e) {
    return e.where;
  }
  return "nothing";
}

}  // namespace VeskTest

#endif
