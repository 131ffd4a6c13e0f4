#include "vec.h"

#include <math.h>

Vec vecAdd(Vec a, Vec b) {
  const Vec sum = {{a.v[0] + b.v[0], a.v[1] + b.v[1], a.v[2] + b.v[2]}};
  return sum;
}

Vec vecSub(Vec a, Vec b) {
  const Vec difference = {{a.v[0] - b.v[0], a.v[1] - b.v[1], a.v[2] - b.v[2]}};
  return difference;
}

Vec vecScale(Vec a, double factor) {
  const Vec scaled = {{a.v[0] * factor, a.v[1] * factor, a.v[2] * factor}};
  return scaled;
}

Vec vecCross(Vec a, Vec b) {
  const Vec cross = {{a.v[1] * b.v[2] - a.v[2] * b.v[1], a.v[2] * b.v[0] - a.v[0] * b.v[2],
                      a.v[0] * b.v[1] - a.v[1] * b.v[0]}};
  return cross;
}

double vecDot(Vec a, Vec b) { return a.v[0] * b.v[0] + a.v[1] * b.v[1] + a.v[2] * b.v[2]; }

double vecLength(Vec a) { return sqrt(vecDot(a, a)); }

double vecDistance(Vec a, Vec b) { return vecLength(vecSub(a, b)); }

Vec vecBetween(Vec a, Vec b, double part) { return vecAdd(a, vecScale(vecSub(b, a), part)); }

Vec vecUnit(Vec a) {
  const double length = vecLength(a);
  return length > 0 ? vecScale(a, 1 / length) : a;
}

double vecDistanceToLine(Vec p, Vec a, Vec b) {
  const Vec line = vecUnit(vecSub(b, a));
  const Vec fromA = vecSub(p, a);
  return vecLength(vecSub(fromA, vecScale(line, vecDot(fromA, line))));
}
