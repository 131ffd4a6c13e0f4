/* SPDX-License-Identifier: MIT */
/* Ends inside the library: nobody here catches what it throws. */
#include "vesk.h"

int main(void) {
  vk_openVesk("null");
  vk_writePnt(0);
  return 0;
}
