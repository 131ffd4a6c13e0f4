/*
 * From the three points of an elbow to its arc.
 *
 * A piping file gives the two ends of an elbow and the point where the tangents
 * at these ends meet:
 *
 *              C             E1, E2  ends
 *            / |             T       where the tangents meet, the CENTRE-POINT
 *          /   | R           C       centre of the arc, R its radius
 *     E2 ,     |
 *         `-.__|
 *     t       T  E1    (T lies at the distance t from both ends)
 *
 * With the unit vectors u = (E1-T)/t and v = (E2-T)/t, which enclose the angle
 * phi, the centre lies on their bisector at the distance t / cos(phi/2) from T.
 * As |u + v| is 2 cos(phi/2) and u.v is 2 cos^2(phi/2) - 1,
 *
 *     C = T + (u + v) t / (1 + u.v),       R = t tan(phi/2),
 *
 * for any angle and in any plane, with no arc cosine.
 */
#ifndef PIPING_BEND_H
#define PIPING_BEND_H

#include "vec.h"

typedef enum BendForm {
  kBendArc,      /* an arc; its ends are `start` and `end` */
  kBendStraight, /* the three points lie on one line, T between the ends or at one of them */
  kBendFolded    /* both ends lie on the same side of T: no arc leads from one to the other */
} BendForm;

/*
 * The arc of an elbow. If the ends are not equally far from T the arc lies at
 * the nearer one, and `start` or `end` differs from the given end: the piece
 * between them is straight. Distances that differ by less than half a
 * millimetre count as equal.
 */
typedef struct Bend {
  BendForm form;
  Vec centre;
  Vec start;
  Vec end;
  double radius;
} Bend;

/* The arc from end1 to end2 whose tangents meet at `tangents`. */
Bend bendFrom(Vec end1, Vec end2, Vec tangents);

#endif
