/* Memory that is there or ends the program with a message (exit code 3). */
#ifndef PIPING_MEMORY_H
#define PIPING_MEMORY_H

#include <stddef.h>

void* memoryResize(void* block, size_t count, size_t size);

/* A zero-terminated copy of `length` bytes. */
char* memoryText(const char* text, size_t length);

/*
 * Makes room for one more item at the end of a growing array: `block` holds
 * `count` items of `size` bytes. Returns the block, moved if it had to grow. The
 * room doubles at each power of two, so that no separate capacity is kept.
 */
void* memoryGrow(void* block, size_t count, size_t size);

#endif
