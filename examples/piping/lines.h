/* A whole text file in memory, handed out line by line. */
#ifndef PIPING_LINES_H
#define PIPING_LINES_H

#include <stddef.h>

typedef struct Lines {
  char* text; /* owned; each line that was handed out ends in a zero */
  size_t length;
  size_t next;
  long number; /* of the line handed out last, from 1 */
} Lines;

/*
 * Reads the whole file; "-" is the standard input. Returns 1, or 0 with errno
 * set if it cannot be read.
 *
 * A byte order mark is taken away. UTF-16 with a byte order mark becomes UTF-8;
 * any other bytes stay as they are. Zero bytes become blanks.
 */
int linesRead(Lines* lines, const char* file);

/*
 * The next line without its end (LF, CRLF or CR) and without blanks and tabs at
 * its end; NULL after the last one. The last line needs no end. The text may be
 * changed in place and lives until linesFree.
 */
char* linesNext(Lines* lines);

void linesFree(Lines* lines);

#endif
