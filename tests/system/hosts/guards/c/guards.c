/* SPDX-License-Identifier: MIT */
/* The functions of the model, called as its own main does not. */
#define main modelMain
#include "model.c"
#undef main

int main(void) {
  const double end[3] = {0, 0, 100};
  if (!vk_openVesk("guards")) return 2;
  number(1);
  if (writePipe(NULL, end, 1) != -1) return 3;
  if (writePipe(end, NULL, 1) != -1) return 4;
  if (writePipe(end, end, 1) != 1) return 5;
  vk_openVesk(NULL);
  if (writePipe(end, end, 1) != 0) return 6; /* no file, no lines */
  return 0;
}
