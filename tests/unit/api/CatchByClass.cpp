// SPDX-License-Identifier: MIT
// A host in C++: catches by class what the shared library throws, though the
// library shows it no more of the classes than their type information.
#include <vesk.h>

#include <cstdio>
#include <exception>
#include <string>

#include "vesk/GeEx.h"

namespace {

constexpr double kOrigin[] = {0, 0, 0};
constexpr double kZ[] = {0, 0, 1};

int failures = 0;

void check(bool condition, const char* sentence) {
  if (condition) return;
  std::fprintf(stderr, "not so: %s\n", sentence);
  ++failures;
}

template <class Exception, class Call>
bool throws(Call call) {
  try {
    call();
  } catch (const Exception&) {
    return true;
  } catch (...) {
  }
  return false;
}

}  // namespace

int main() {
  const auto nullArray = [] { vk_writeCyl(nullptr, kZ, 1); };
  const auto noDirection = [] { vk_writeElb(kOrigin, kZ, kOrigin, kZ, 1); };

  check(throws<GeEx::NullPtr>(nullArray), "a null array is caught as GeEx::NullPtr");
  check(throws<Vesk::TovExWhere>(nullArray), "a null array is caught as TovExWhere");
  check(throws<Vesk::TovException>(nullArray), "a null array is caught as TovException");
  check(throws<std::exception>(nullArray), "a null array is caught as std::exception");
  check(!throws<GeEx::NullDir>(nullArray), "a null array is no GeEx::NullDir");
  check(throws<GeEx::NullDir>(noDirection), "a missing direction is caught as GeEx::NullDir");
  check(!throws<GeEx::NullPtr>(noDirection), "a missing direction is no GeEx::NullPtr");

  try {
    vk_writePnt(nullptr);
    check(false, "a null point throws");
  } catch (const GeEx::NullPtr& e) {
    check(e.where == "GePoint", "the place of a null point is GePoint");
    check(std::string(e.what()) == "Pointer to array should not be NULL",
          "the text names the null pointer");
  }

  check(vk_openVesk("catch") == 1, "the library is fit for the next call");
  check(vk_writeCyl(kOrigin, kZ, 1) == 1, "the next element is written");
  vk_openVesk(nullptr);
  return failures == 0 ? 0 : 1;
}
