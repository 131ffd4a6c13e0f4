/* SPDX-License-Identifier: MIT */
#include <vesk.h>
int main(void) {
  const double a[3] = {0, 0, 0}, b[3] = {0, 0, 10};
  if (!vk_openVesk("c")) return 1;
  return vk_writeCyl(a, b, 5) == 1 ? 0 : 2;
}
