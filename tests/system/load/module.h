/* SPDX-License-Identifier: MIT */
/* Loading a shared library by hand, and what a process holds, on both kinds of system. */
#ifndef VESK_TESTS_LOAD_MODULE_H
#define VESK_TESTS_LOAD_MODULE_H

#include <stddef.h>

typedef void* Module;
typedef void (*Function)(void);

/* Ends the program with a message if the library or the function is not there. */
Module moduleLoad(const char* path);
Function moduleFunction(Module module, const char* name);
void moduleUnload(Module module);

/* Whether a library of that path is loaded in this process. */
int moduleIsLoaded(const char* path);

/* Open files, or what Windows calls handles. */
long openHandles(void);

/* Bytes of private memory in use. */
long usedMemory(void);

/* Runs `work` in a thread with a stack of 64 KiB and waits for its end. */
void runInSmallThread(void (*work)(void));

#endif
