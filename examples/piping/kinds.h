/* The words at the head of a component and what is drawn for each. */
#ifndef PIPING_KINDS_H
#define PIPING_KINDS_H

typedef enum Shape {
  kShapeUnknown,   /* a word that is not in the table */
  kShapeHeader,    /* no component: units, pipeline data, materials */
  kShapeAttribute, /* no component: part of one */
  kShapeNothing,   /* a component with nothing to draw */
  kShapePipe,      /* straight, as wide as the pipe; branches if it has any */
  kShapeFitting,   /* the same, wider than the pipe */
  kShapeElbow,
  kShapeTee,
  kShapeOlet,
  kShapeReducer,
  kShapeFlange,
  kShapeBlind,
  kShapeGasket,
  kShapeStubEnd,
  kShapeValve,
  kShapeCap,
  kShapeWeld,
  kShapeSupport,
  kShapeMessage,
  kShapeMark /* a point and its text: an end of the pipeline, a balloon */
} Shape;

/*
 * The shape for a word in capitals. A word that is not in the table but begins
 * with one that is, followed by '-' or a digit, takes its shape: "VALVE-RELIEF" is
 * a valve. A word in -FILES is a header: a file begins with the name of its style
 * files.
 */
Shape shapeOf(const char* word);

#endif
