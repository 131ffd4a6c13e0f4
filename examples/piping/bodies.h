/*
 * The bodies of the components. Each function draws one kind, or says by itemFail why
 * it cannot; what is odd but drawn is said by itemRemark.
 */
#ifndef PIPING_BODIES_H
#define PIPING_BODIES_H

#include "item.h"

/* bodies.c: what the line runs through. `widening` is the width in pipe diameters. */
void drawStraight(Item* item, double widening);
void drawBranches(const Item* item, double widening);
void drawTee(Item* item);
void drawOlet(Item* item);
void drawValve(Item* item);
void drawReducer(Item* item);
void drawUnknown(Item* item);

/* elbow.c */
void drawElbow(Item* item);

/* flange.c: flanges and what closes a line */
void drawFlange(Item* item);
void drawStubEnd(Item* item);
void drawBlind(Item* item);
void drawGasket(Item* item);
void drawCap(Item* item);

/* spot.c: what stands at one place */
void drawSupport(Item* item);
void drawWeld(Item* item);
void drawMessage(Item* item);
void drawMark(Item* item);

#endif
