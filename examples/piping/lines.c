#include "lines.h"

#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "memory.h"

static int readStream(Lines* lines, FILE* stream) {
  size_t room = 1 << 16;
  lines->text = memoryResize(NULL, room, 1);
  errno = 0;
  for (;;) {
    lines->length += fread(lines->text + lines->length, 1, room - lines->length, stream);
    if (lines->length < room) break;
    room *= 2;
    lines->text = memoryResize(lines->text, room, 1);
  }
  return !ferror(stream);
}

static size_t putUtf8(char* out, unsigned long code) {
  if (code < 0x80) {
    out[0] = (char)code;
    return 1;
  }
  size_t count = code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
  static const unsigned long kLead[] = {0, 0, 0xC0, 0xE0, 0xF0};
  for (size_t i = count - 1; i > 0; --i, code >>= 6) out[i] = (char)(0x80 | (code & 0x3F));
  out[0] = (char)(kLead[count] | code);
  return count;
}

static unsigned long unit16(const Lines* lines, size_t at, int bigEndian) {
  const unsigned char first = (unsigned char)lines->text[at];
  const unsigned char second = (unsigned char)lines->text[at + 1];
  return bigEndian ? first * 256UL + second : second * 256UL + first;
}

static void fromUtf16(Lines* lines, int bigEndian) {
  /* Two bytes become at most three. */
  char* utf8 = memoryResize(NULL, lines->length / 2 + 1, 3);
  size_t length = 0;
  for (size_t at = 2; at + 1 < lines->length; at += 2) {
    unsigned long code = unit16(lines, at, bigEndian);
    if (code >= 0xD800 && code < 0xDC00 && at + 3 < lines->length) {
      const unsigned long low = unit16(lines, at + 2, bigEndian);
      if (low >= 0xDC00 && low < 0xE000) {
        code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
        at += 2;
      }
    }
    length += putUtf8(utf8 + length, code);
  }
  free(lines->text);
  lines->text = utf8;
  lines->length = length;
}

int linesRead(Lines* lines, const char* file) {
  memset(lines, 0, sizeof *lines);
  const int standard = strcmp(file, "-") == 0;
  FILE* stream = standard ? stdin : fopen(file, "rb");
  if (stream == NULL) return 0;
  const int ok = readStream(lines, stream);
  const int reason = errno;
  if (!standard) fclose(stream);
  if (!ok) {
    linesFree(lines);
    errno = reason;
    return 0;
  }

  if (lines->length >= 2 && memcmp(lines->text, "\xFF\xFE", 2) == 0)
    fromUtf16(lines, 0);
  else if (lines->length >= 2 && memcmp(lines->text, "\xFE\xFF", 2) == 0)
    fromUtf16(lines, 1);
  else if (lines->length >= 3 && memcmp(lines->text, "\xEF\xBB\xBF", 3) == 0)
    lines->next = 3;

  for (size_t i = 0; i < lines->length; ++i)
    if (lines->text[i] == '\0') lines->text[i] = ' ';
  /* Room for the zero behind a last line without an end. */
  lines->text = memoryResize(lines->text, lines->length + 1, 1);
  lines->text[lines->length] = '\0';
  return 1;
}

char* linesNext(Lines* lines) {
  if (lines->next >= lines->length) return NULL;
  char* line = lines->text + lines->next;
  size_t end = lines->next;
  while (end < lines->length && lines->text[end] != '\n' && lines->text[end] != '\r') ++end;
  lines->next = end + 1;
  if (end + 1 < lines->length && lines->text[end] == '\r' && lines->text[end + 1] == '\n')
    ++lines->next;
  while (lines->text + end > line && strchr(" \t\f\v\x1A", lines->text[end - 1]) != NULL) --end;
  lines->text[end] = '\0';
  ++lines->number;
  return line;
}

void linesFree(Lines* lines) {
  free(lines->text);
  memset(lines, 0, sizeof *lines);
}
