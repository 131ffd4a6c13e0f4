/* SPDX-License-Identifier: MIT */
/* A host in C: calls the thirteen functions in their order and leaves
   veskthirteen.dat in the current folder. Exit code 0 if every result is as it
   should be. */
#include <stdio.h>
#include <vesk.h>

static int failures = 0;

static void expect(const char* call, int result, int expected) {
  if (result == expected) return;
  fprintf(stderr, "%s returned %d, not %d\n", call, result, expected);
  ++failures;
}

int main(void) {
  static const double o[3] = {0, 0, 0};
  static const double x[3] = {10, 0, 0};
  static const double y[3] = {0, 10, 0};
  static const double z[3] = {0, 0, 10};
  static const double xy[3] = {10, 10, 0};
  static const double third[3] = {0.33333333, -0.66666666, 1000000.5};
  static const double top[4][3] = {{2, 2, 20}, {8, 2, 20}, {2, 8, 20}, {8, 8, 20}};

  expect("vk_openVesk", vk_openVesk("thirteen"), 1);
  expect("vk_setHeader", vk_setHeader("PUMP-7", "CC", 46655), 1);
  vk_writePnt(third);
  vk_writeSeg(x, y);
  vk_writeTri(o, x, y);
  vk_writeQua(o, x, xy, y);
  vk_writeTxt(o, x, y, 0.5, 2.5, 1, 0, "To tank T-2");
  vk_writeBox(o, x, y, z);
  vk_writeRed(o, x, y, xy, top[0], top[1], top[2], top[3]);
  expect("vk_writeCyl", vk_writeCyl(o, third, 219.1), 1);
  expect("vk_writeCon", vk_writeCon(o, z, 219.1, 168.3), 1);
  expect("vk_writeTor", vk_writeTor(o, x, y, 5), 1);
  expect("vk_writeElb", vk_writeElb(o, z, x, y, 4), 1);
  expect("vk_openVesk", vk_openVesk(NULL), 0);
  return failures == 0 ? 0 : 1;
}
