#include "record.h"

#include <errno.h>
#include <stdio.h>
#include <string.h>

enum { kNumberAt = 17, kKeywordAt = 19, kHead = 64, kLongestLine = 1 << 16 };

/* The kind of an element by its keyword and, for "l ", by the number of its points;
   -1 if it is none that this program writes. */
static int kindOf(char keyword, long commas) {
  switch (keyword) {
    case 'l':
      return commas > 0 ? kSegment : kPoint;
    case 'x':
      return kText;
    case 'b':
      return kBox;
    case 'c':
      return kCylinder;
    case 'n':
      return kCone;
    case 't':
      return kTorus;
    default:
      return -1;
  }
}

static void countLine(Record* record, const char* head, size_t length, long commas) {
  ++record->lines;
  if (length <= kKeywordAt || memcmp(head + kNumberAt, "00", 2) != 0) return;
  ++record->elements;
  const int kind = kindOf(head[kKeywordAt], commas);
  if (kind >= 0) ++record->kinds[kind];
}

int recordCount(Record* record, const char* file) {
  memset(record, 0, sizeof *record);
  errno = 0;
  FILE* stream = fopen(file, "r");
  if (stream == NULL) return 0;
  char head[kHead] = "";
  size_t length = 0;
  long commas = 0;
  for (int c = getc(stream); c != EOF; c = getc(stream)) {
    if (c == '\n') {
      countLine(record, head, length, commas);
      length = 0;
      commas = 0;
      continue;
    }
    if (length < kHead) head[length] = (char)c;
    if (length > kLongestLine) break; /* no record; a device may never end a line */
    ++length;
    /* Those behind the keyword; the header text may hold commas of its own. */
    if (c == ',' && length > kKeywordAt) ++commas;
  }
  /* What has no end of line was cut off and does not count. */
  const int ok = !ferror(stream);
  const int reason = errno;
  fclose(stream);
  errno = reason;
  return ok;
}

void recordPrintHead(const char* file, long lines, FILE* stream) {
  FILE* record = fopen(file, "r");
  if (record == NULL) return;
  int atStart = 1;
  for (int c = getc(record); c != EOF && lines > 0; c = getc(record)) {
    if (atStart) fputs("  ", stream);
    fputc(c, stream);
    atStart = c == '\n';
    if (atStart) --lines;
  }
  fclose(record);
}
