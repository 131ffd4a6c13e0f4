/* From components to the calls of vesk.h. */
#ifndef PIPING_DRAW_H
#define PIPING_DRAW_H

#include "canvas.h"

/*
 * Writes every component to the open file. Each takes the next number of the
 * header, drawn or not, so that the number is its place in the file; each gets
 * its outcome in the report.
 */
void drawAll(Drawing* drawing);

#endif
