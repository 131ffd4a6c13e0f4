/* SPDX-License-Identifier: MIT */
/*
 * elements - writes each of the eleven elements once into veskelements.dat: a small
 * air handling unit with its duct, its pipe and its label. Lengths are millimetres.
 */
#include <errno.h>
#include <stdio.h>

#include "vesk.h"

/* A duct 400 wide (y) and 300 high (z): a straight piece, an elbow, a transition. */
static void writeDuct(void) {
  /* Straight: a box from one corner along three edges, 1000 long (x). */
  const double corner[3] = {1000, -200, 350};
  const double along[3] = {2000, -200, 350};
  const double across[3] = {1000, 200, 350};
  const double upwards[3] = {1000, -200, 650};
  vk_setHeader("DUCT", "01", 1);
  vk_writeBox(corner, along, across, upwards);

  /* Elbow: upwards about an axis 200 above the top of the duct, so the inner radius is
     200 and the outer one 500. It starts where the straight piece ends, at x = 2000. */
  const double axisStart[3] = {2000, -200, 850};
  const double axisEnd[3] = {2000, 200, 850};
  const double outerStart[3] = {2000, -200, 350};
  const double outerEnd[3] = {2500, -200, 850};
  vk_setHeader("DUCT", "01", 2);
  vk_writeElb(axisStart, axisEnd, outerStart, outerEnd, 200);

  /* Transition: from the end of the elbow, 300 by 400, to 200 by 200. The corners of an
     end stand in the order 0, 1, 3, 2 round its face; 4 lies opposite 0. */
  const double red[8][3] = {
      {2200, -200, 850},  {2500, -200, 850},  {2200, 200, 850},  {2500, 200, 850},
      {2250, -100, 1250}, {2450, -100, 1250}, {2250, 100, 1250}, {2450, 100, 1250},
  };
  vk_setHeader("DUCT", "01", 3);
  vk_writeRed(red[0], red[1], red[2], red[3], red[4], red[5], red[6], red[7]);
}

/* The base plate, its gusset and the bolt hole that it is set out from. */
static void writePlates(void) {
  const double plate[4][3] = {{0, -400, 0}, {1000, -400, 0}, {1000, 400, 0}, {0, 400, 0}};
  vk_setHeader("PLATE", "01", 4);
  vk_writeQua(plate[0], plate[1], plate[2], plate[3]);

  const double gusset[3][3] = {{0, 0, 0}, {-300, 0, 0}, {0, 0, 300}};
  vk_setHeader("PLATE", "01", 5);
  vk_writeTri(gusset[0], gusset[1], gusset[2]);

  const double hole[3] = {50, -350, 0};
  vk_setHeader("PLATE", "01", 6);
  vk_writePnt(hole);
}

/* A heating pipe, 60.3 wide: straight, a quarter turn of radius 76, a reducer. */
static void writePipe(void) {
  const double start[3] = {500, 400, 500};
  const double bendStart[3] = {500, 800, 500};
  vk_setHeader("PIPE", "01", 7);
  vk_writeCyl(start, bendStart, 60.3);

  /* The torus takes the centre of its arc and the two ends of its centre line. */
  const double bendCentre[3] = {500, 800, 576};
  const double bendEnd[3] = {500, 876, 576};
  vk_setHeader("PIPE", "01", 8);
  vk_writeTor(bendCentre, bendStart, bendEnd, 60.3);

  const double top[3] = {500, 876, 652};
  vk_setHeader("PIPE", "01", 9);
  vk_writeCon(bendEnd, top, 60.3, 48.3);

  vk_setHeader("PIPE", "01", 10);
  vk_writeSeg(start, bendStart);
}

/* A label on the front: the text runs along x, its height along z. */
static void writeLabel(void) {
  const double position[3] = {100, -400, 300};
  const double direction[3] = {1, 0, 0};
  const double up[3] = {0, 0, 1};
  vk_setHeader("LABEL", "01", 11);
  vk_writeTxt(position, direction, up, 30, 50, 1, 0, "AIR HANDLING UNIT 1");
}

int main(void) {
  if (!vk_openVesk("elements")) {
    perror("veskelements.dat");
    return 1;
  }
  writeDuct();
  writePlates();
  writePipe();
  writeLabel();
  errno = 0;
  vk_openVesk(NULL); /* closes the file; errno tells what the disk refused */
  if (errno != 0) {
    perror("veskelements.dat");
    return 1;
  }
  puts("Written: veskelements.dat");
  return 0;
}
