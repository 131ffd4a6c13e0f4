/* SPDX-License-Identifier: MIT */
/*
 * Writes all eleven elements. VESK is the folder of the library:
 *
 *     cc -I"$VESK/include" model.c -o model -L"$VESK/lib" -lCVeskDll -Wl,-rpath,"$VESK/lib"
 *     ./model fan
 *
 * makes veskfan.dat. C cannot catch the exception that a null array throws: it ends the
 * program. An array that is a variable is never null; a pointer that comes from elsewhere
 * is asked first, as in writePipe.
 */
#include <errno.h>
#include <stdio.h>

#include "vesk.h"

#define AT(x, y, z) ((const double[3]){x, y, z})

/* Every element has its number in the header. */
static void number(int n) { vk_setHeader("DUCT-7", "A1", n); }

/* Returns the lines written, or -1 if an end is missing. */
static int writePipe(const double* from, const double* to, double diameter) {
  if (from == NULL || to == NULL) return -1;
  return vk_writeCyl(from, to, diameter);
}

static int writeModel(void) {
  number(1);
  vk_writePnt(AT(1, 2, 3));
  number(2);
  vk_writeSeg(AT(0, 0, 0), AT(1000, 0, 0.5));
  number(3);
  vk_writeTri(AT(0, 0, 0), AT(100, 0, 0), AT(0, 50, 0));
  number(4);
  vk_writeQua(AT(0, 0, 10), AT(100, 0, 10), AT(100, 50, 10), AT(0, 50, 10));
  number(5);
  vk_writeTxt(AT(1, 2, 0), AT(1, 0, 0), AT(0, 1, 0), 0.5, 2.5, 7, 1, "Fan 1");
  number(6);
  vk_writeBox(AT(0, 0, 0), AT(10, 0, 0), AT(0, 20, 0), AT(0, 0, 30));
  number(7);
  vk_writeRed(AT(0, 0, 0), AT(10, 0, 0), AT(0, 10, 0), AT(10, 10, 0), AT(2, 2, 20), AT(8, 2, 20),
              AT(2, 8, 20), AT(8, 8, 20));
  number(8);
  if (writePipe(AT(1, 2, 3), AT(1, 2, 13), 219.1) < 1) return 0;
  number(9);
  if (vk_writeCon(AT(0, 0, 0), AT(0, 0, 100), 168.3, 114.3) < 1) return 0;
  number(10);
  if (vk_writeTor(AT(0, 0, 0), AT(100, 0, 0), AT(0, 100, 0), 20) < 1) return 0;
  number(11);
  /* The third and fourth point must not be at the first: that throws too. */
  return vk_writeElb(AT(0, 0, 0), AT(0, 0, 10), AT(50, 0, 0), AT(0, 50, 0), 30) > 0;
}

int main(int argc, char** argv) {
  if (argc != 2) {
    fprintf(stderr, "Usage: model NAME\n");
    return 2;
  }
  if (!vk_openVesk(argv[1])) {
    fprintf(stderr, "vesk%s.dat: ", argv[1]);
    perror(NULL);
    return 1;
  }
  const int whole = writeModel();
  errno = 0;
  vk_openVesk(NULL); /* closes the file; errno tells what the disk refused */
  if (errno != 0) {
    fprintf(stderr, "vesk%s.dat: ", argv[1]);
    perror(NULL);
    return 1;
  }
  return whole ? 0 : 1;
}
