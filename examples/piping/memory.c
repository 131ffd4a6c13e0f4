#include "memory.h"

#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

void* memoryResize(void* block, size_t count, size_t size) {
  void* moved = size != 0 && count > SIZE_MAX / size ? NULL : realloc(block, count * size);
  if (moved == NULL) {
    fputs("piping: error: out of memory\n", stderr);
    exit(3);
  }
  return moved;
}

char* memoryText(const char* text, size_t length) {
  char* copy = memoryResize(NULL, length + 1, 1);
  memcpy(copy, text, length);
  copy[length] = '\0';
  return copy;
}

void* memoryGrow(void* block, size_t count, size_t size) {
  if ((count & (count - 1)) != 0) return block;
  return memoryResize(block, count == 0 ? 1 : count * 2, size);
}
