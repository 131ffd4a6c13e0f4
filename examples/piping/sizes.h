/*
 * Nominal pipe sizes. A piping file gives bores as nominal sizes: a pipe of
 * bore 6 inch (or 150 mm) is 168.3 mm wide.
 */
#ifndef PIPING_SIZES_H
#define PIPING_SIZES_H

/* What a size stands for, all in millimetres. */
typedef struct PipeSize {
  int known;      /* 1 if the bore is a nominal size of the table */
  double outside; /* outside diameter of the pipe; the bore itself if not known */
  double flange;  /* outside diameter of a flange (class 150) */
} PipeSize;

/*
 * Looks a bore up.
 *
 *   bore     the number of the file in millimetres (an inch is 25.4)
 *   inches   1 if the file gave it in inches: 6 inch is looked up as NPS 6; else
 *            150 mm is looked up as DN 150
 */
PipeSize pipeSize(double bore, int inches);

#endif
