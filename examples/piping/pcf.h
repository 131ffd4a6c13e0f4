/*
 * The piping component file (PCF) as a list of components.
 *
 * The file is plain text. A word at the start of a line begins a component or a
 * header; the indented lines below it are its attributes:
 *
 *     UNITS-BORE INCH
 *     PIPELINE-REFERENCE P-1001
 *     PIPE
 *         END-POINT  0 0 0 6 BW        x y z, bore, kind of end
 *         END-POINT  1000 0 0 6 BW
 *         ITEM-CODE  A106
 *
 * What is kept is what is drawn: the places, the angle, the texts.
 */
#ifndef PIPING_PCF_H
#define PIPING_PCF_H

#include <stddef.h>

#include "kinds.h"
#include "report.h"
#include "vec.h"

#define kNoPipeline ((size_t)-1)

typedef enum PortRole {
  kPortEnd,    /* END-POINT */
  kPortCentre, /* CENTRE-POINT */
  kPortBranch, /* BRANCH1-POINT, BRANCH2-POINT ... */
  kPortPlace   /* CO-ORDS */
} PortRole;

/* One place of a component. */
typedef struct Port {
  PortRole role;
  Vec at;      /* millimetres */
  double bore; /* millimetres, 0 if not given */
  int inches;  /* 1 if the bore was given in inches */
  char end[3]; /* kind of end in capitals ("BW", "FL"), empty if not given */
} Port;

typedef struct Component {
  char* name; /* the word in capitals */
  Shape shape;
  long line;       /* of the word */
  size_t pipeline; /* index into the pipelines, kNoPipeline before the first one */
  Port* ports;     /* in the order of the file */
  size_t portCount;
  char** texts; /* of a message or of what an end connects to */
  size_t textCount;
  double angle; /* degrees, 0 if not given */
  int hasValue; /* 1 if something stands behind the word */
  int damaged;  /* 1 if a line with a place could not be read; it was reported */
} Component;

typedef struct Piping {
  char** pipelines; /* references in the order in which they first occur */
  size_t pipelineCount;
  Component* components;
  size_t componentCount;
} Piping;

/*
 * Reads a file ("-": the standard input). Whatever is malformed is reported with
 * its line, and reading goes on behind it. Returns 1, or 0 with errno set if the
 * file cannot be read.
 */
int pcfRead(Piping* piping, const char* file, Report* report);

void pcfFree(Piping* piping);

/* Whether there is any component that is known or has a place: a letter holds none. */
int pcfHasComponents(const Piping* piping);

/* The port of that role, counted from 0; NULL if there are fewer. */
const Port* pcfPort(const Component* component, PortRole role, size_t index);

#endif
