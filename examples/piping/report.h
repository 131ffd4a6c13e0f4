/*
 * What the program has to say: messages while it works, counts at the end.
 *
 * Every component that was read ends in exactly one of the three outcomes, so
 * that their sum is the number of components read.
 */
#ifndef PIPING_REPORT_H
#define PIPING_REPORT_H

#include <stddef.h>
#include <stdio.h>

typedef enum Outcome {
  kDrawn,
  kNothingToDraw, /* by its nature: bolts, flow arrows */
  kNotDrawn,      /* should have been drawn, could not be */
  kOutcomes
} Outcome;

/* Components of one name with one fate; `first` is the line of the first. */
typedef struct Tally {
  char* name;
  char* reason; /* empty if there is nothing to add */
  Outcome outcome;
  long count;
  long first;
} Tally;

typedef struct Report {
  const char* file; /* name for messages; not owned */
  int quiet;        /* 1: warnings are counted, but not printed */
  long errors;
  long warnings;
  long components;
  long outcomes[kOutcomes];
  Tally* tallies; /* fates, in the order in which they first occurred */
  size_t tallyCount;
  Tally* remarks; /* drawn, but not as the file says */
  size_t remarkCount;
} Report;

void reportStart(Report* report, const char* file);
void reportFree(Report* report);

/* Prints "file:line: error: ..." (or without the line if it is 0) and counts. */
void reportError(Report* report, long line, const char* format, ...);
void reportWarning(Report* report, long line, const char* format, ...);

/* Counts a component. A reason must be given with kNotDrawn. */
void reportOutcome(Report* report, const char* name, long line, Outcome outcome,
                   const char* reason);

/* Counts and prints (as a warning) what is odd about a component that is drawn. */
void reportRemark(Report* report, const char* name, long line, const char* remark);

/* Prints the counts: components by name, then all that was not drawn or drawn
   otherwise. */
void reportPrint(const Report* report, FILE* stream);

#endif
