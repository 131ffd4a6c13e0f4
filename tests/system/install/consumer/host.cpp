// SPDX-License-Identifier: MIT
#include <vesk.h>

#include <vesk/GeEx.h>

int main() try {
  vk_writePnt(nullptr);
  return 1;
} catch (const GeEx::NullPtr&) {
  return 0;
}
