/* A look into the finished record file. */
#ifndef PIPING_RECORD_H
#define PIPING_RECORD_H

#include "draw.h"

typedef struct Record {
  long lines;
  long elements;
  long kinds[kElements];
} Record;

/*
 * Counts the elements of a record file. Returns 1, or 0 with errno set if it
 * cannot be read.
 *
 * A line opens with 17 characters of header text and a line number of two digits;
 * "00" begins an element, whose keyword stands behind it:
 *
 *     P-1001  01007    00c 0 0 0,0 0 1000,168.3
 */
int recordCount(Record* record, const char* file);

/* Prints the first lines of the file, each after two blanks. */
void recordPrintHead(const char* file, long lines, FILE* stream);

#endif
