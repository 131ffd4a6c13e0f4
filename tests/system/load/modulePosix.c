/* SPDX-License-Identifier: MIT */
#define _GNU_SOURCE
#include <dirent.h>
#include <dlfcn.h>
#include <malloc.h>
#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "module.h"

__attribute__((noreturn)) static void fail(const char* what) {
  fprintf(stderr, "%s\n", what);
  exit(1);
}

Module moduleLoad(const char* path) {
  Module module = dlopen(path, RTLD_NOW | RTLD_LOCAL);
  if (module == NULL) fail(dlerror());
  return module;
}

Function moduleFunction(Module module, const char* name) {
  void* symbol = dlsym(module, name);
  if (symbol == NULL) fail(dlerror());
  Function function;
  memcpy(&function, &symbol, sizeof function);
  return function;
}

void moduleUnload(Module module) {
  if (dlclose(module) != 0) fail(dlerror());
}

int moduleIsLoaded(const char* path) {
  Module module = dlopen(path, RTLD_NOW | RTLD_NOLOAD);
  if (module == NULL) return 0;
  dlclose(module);
  return 1;
}

long openHandles(void) {
  long count = 0;
  DIR* folder = opendir("/proc/self/fd");
  if (folder == NULL) fail("no /proc/self/fd");
  while (readdir(folder) != NULL) ++count;
  closedir(folder);
  return count;
}

long usedMemory(void) {
  const struct mallinfo2 info = mallinfo2();
  return (long)(info.uordblks + info.hblkhd);
}

static void* runWork(void* work) {
  void (*function)(void);
  memcpy(&function, work, sizeof function);
  function();
  return NULL;
}

void runInSmallThread(void (*work)(void)) {
  pthread_attr_t attributes;
  pthread_t thread;
  pthread_attr_init(&attributes);
  if (pthread_attr_setstacksize(&attributes, 64 * 1024) != 0 ||
      pthread_create(&thread, &attributes, runWork, &work) != 0) {
    fail("no thread");
  }
  pthread_join(thread, NULL);
  pthread_attr_destroy(&attributes);
}
