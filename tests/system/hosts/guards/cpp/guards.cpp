// SPDX-License-Identifier: MIT
// The file of the model, when exceptions pass by.
#include <cstdlib>

#define main modelMain
#include "model.cpp"
#undef main

namespace {

template <class Exception, class Call>
void expect(const char* what, Call call) {
  try {
    VeskFile file(what);
    file.number(1);
    const Xyz p{1, 2, 3};
    vk_writePnt(p.data());
    call(p.data());
  } catch (const Exception&) {
    return;
  }
  std::cout << what << ": not thrown\n";
  std::exit(1);
}

}  // namespace

int main() {
  expect<GeEx::NullPtr>("null", [](const double*) { vk_writePnt(nullptr); });
  expect<GeEx::NullDir>("axis", [](const double* p) { vk_writeElb(p, p, p, p, 1); });
  // The files are closed: their lines are on the disk while this program runs on.
  const int code = std::system(
      "for name in null axis; do"
      "  echo 'DUCT-7  A1001    00l pt 1 2 3' | cmp - vesk$name.dat || exit 1;"
      "done");
  return code == 0 ? 0 : 1;
}
