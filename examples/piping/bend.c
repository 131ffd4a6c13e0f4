#include "bend.h"

#include <math.h>

/* Turns smaller than this angle (radians, a tenth of a degree) are drawn straight. */
static const double kSmallestTurn = 0.1 * 3.14159265358979323846 / 180;
static const double kEqualTangents = 0.5;
static const double kShortest = 0.01;

Bend bendFrom(Vec end1, Vec end2, Vec tangents) {
  Bend bend = {kBendStraight, tangents, end1, end2, 0};
  const double length1 = vecDistance(end1, tangents);
  const double length2 = vecDistance(end2, tangents);
  if (length1 < kShortest || length2 < kShortest) return bend;

  const Vec u = vecUnit(vecSub(end1, tangents));
  const Vec v = vecUnit(vecSub(end2, tangents));
  const double sine = vecLength(vecCross(u, v));
  const double cosine = vecDot(u, v);
  if (sine < sin(kSmallestTurn)) {
    if (cosine > 0) bend.form = kBendFolded;
    return bend;
  }

  double t = (length1 + length2) / 2;
  if (fabs(length1 - length2) > kEqualTangents) {
    t = length1 < length2 ? length1 : length2;
    bend.start = vecAdd(tangents, vecScale(u, t));
    bend.end = vecAdd(tangents, vecScale(v, t));
    /* The given end is kept to the last bit where it is the end of the arc. */
    if (length1 < length2)
      bend.start = end1;
    else
      bend.end = end2;
  }
  bend.form = kBendArc;
  bend.centre = vecAdd(tangents, vecScale(vecAdd(u, v), t / (1 + cosine)));
  bend.radius = vecDistance(bend.centre, bend.start);
  return bend;
}
