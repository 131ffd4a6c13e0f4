/* From components to the calls of vesk.h. */
#ifndef PIPING_DRAW_H
#define PIPING_DRAW_H

#include "pcf.h"
#include "report.h"

/* The elements that a piping file is drawn with. */
typedef enum Element { kPoint, kSegment, kText, kBox, kCylinder, kCone, kTorus, kElements } Element;

typedef struct Drawing {
  const Piping* piping;
  Report* report;
  int boreAsDiameter;   /* 1: draw each bore as it is given */
  long made[kElements]; /* calls that wrote an element */
  long unknownBores;    /* components with a bore that is no nominal size */
} Drawing;

/*
 * Writes every component to the open file. Each takes the next number of the
 * header, drawn or not, so that the number is its place in the file; each gets
 * its outcome in the report.
 */
void drawAll(Drawing* drawing);

#endif
