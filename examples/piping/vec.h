/* Points and vectors of three doubles, in the shape that vesk.h takes. */
#ifndef PIPING_VEC_H
#define PIPING_VEC_H

typedef struct Vec {
  double v[3];
} Vec;

Vec vecAdd(Vec a, Vec b);
Vec vecSub(Vec a, Vec b);
Vec vecScale(Vec a, double factor);
Vec vecCross(Vec a, Vec b);
double vecDot(Vec a, Vec b);
double vecLength(Vec a);
double vecDistance(Vec a, Vec b);

/* The point that lies `part` of the way from a to b: 0 is a, 1 is b. */
Vec vecBetween(Vec a, Vec b, double part);

/* a with length 1; a itself if its length is 0. */
Vec vecUnit(Vec a);

/* Distance of p from the straight line through a and b, from a if a is b. */
double vecDistanceToLine(Vec p, Vec a, Vec b);

#endif
