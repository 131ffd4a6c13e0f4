/* SPDX-License-Identifier: MIT */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <windows.h>
/* Needs the types of windows.h. */
#include <psapi.h>

#include "module.h"

__attribute__((noreturn)) static void fail(const char* what) {
  fprintf(stderr, "%s: error %lu\n", what, GetLastError());
  exit(1);
}

Module moduleLoad(const char* path) {
  Module module = LoadLibraryA(path);
  if (module == NULL) fail(path);
  return module;
}

Function moduleFunction(Module module, const char* name) {
  FARPROC symbol = GetProcAddress(module, name);
  if (symbol == NULL) fail(name);
  Function function;
  memcpy(&function, &symbol, sizeof function);
  return function;
}

void moduleUnload(Module module) {
  if (!FreeLibrary(module)) fail("FreeLibrary");
}

int moduleIsLoaded(const char* path) { return GetModuleHandleA(path) != NULL; }

long openHandles(void) {
  DWORD count = 0;
  if (!GetProcessHandleCount(GetCurrentProcess(), &count)) fail("GetProcessHandleCount");
  return (long)count;
}

long usedMemory(void) {
  /* What the heaps have given out. */
  HANDLE heaps[64];
  const DWORD count = GetProcessHeaps(64, heaps);
  long bytes = 0;
  for (DWORD i = 0; i < count && i < 64; ++i) {
    PROCESS_HEAP_ENTRY entry = {0};
    while (HeapWalk(heaps[i], &entry)) {
      if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += (long)entry.cbData;
    }
  }
  return bytes;
}

static DWORD WINAPI runWork(void* work) {
  void (*function)(void);
  memcpy(&function, work, sizeof function);
  function();
  return 0;
}

void runInSmallThread(void (*work)(void)) {
  HANDLE thread =
      CreateThread(NULL, 64 * 1024, runWork, &work, STACK_SIZE_PARAM_IS_A_RESERVATION, NULL);
  if (thread == NULL) fail("no thread");
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
}
