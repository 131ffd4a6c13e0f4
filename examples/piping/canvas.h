/*
 * The elements that a piping file is drawn with: one function each, in front of the
 * function of vesk.h that writes it.
 */
#ifndef PIPING_CANVAS_H
#define PIPING_CANVAS_H

#include "pcf.h"
#include "report.h"
#include "vec.h"

/* Shorter pieces (millimetres) have no length in a drawing. */
#define kShortest 0.01

typedef enum Element { kPoint, kSegment, kText, kBox, kCylinder, kCone, kTorus, kElements } Element;

typedef struct Drawing {
  const Piping* piping;
  Report* report;
  int boreAsDiameter;   /* 1: draw each bore as it is given */
  long made[kElements]; /* calls that wrote an element */
  long unknownBores;    /* components with a bore that is no nominal size */
} Drawing;

/*
 * Each writes its element and counts it. Segments, cylinders and cones of no length
 * are left out and not counted.
 */
void putPoint(Drawing* drawing, Vec at);
void putSegment(Drawing* drawing, Vec from, Vec to);
void putCylinder(Drawing* drawing, Vec from, Vec to, double diameter);
void putCone(Drawing* drawing, Vec from, Vec to, double diameter1, double diameter2);
void putTorus(Drawing* drawing, Vec centre, Vec from, Vec to, double diameter);

/* A straight piece: a cylinder, or a cone if its ends differ. */
void putPiece(Drawing* drawing, Vec from, Vec to, double diameter1, double diameter2);

/* A cube with edges along the axes. */
void putCube(Drawing* drawing, Vec middle, double edge);

/* The texts of a component below each other, to be read from the front. A text longer
   than a record holds is cut, with a remark. */
void putTexts(Drawing* drawing, const Component* component, Vec at);

/* Elements written so far. */
long putSoFar(const Drawing* drawing);

#endif
