/* SPDX-License-Identifier: MIT */
/*
 * host CASE LIBRARY [COUNT]: loads the shared library by hand, as a host that is not C++ does,
 * and prints "ok CASE" if what the case says is so.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>
#endif

#include "module.h"

typedef int (*OpenVesk)(const char*);
typedef int (*SetHeader)(const char*, const char*, int);
typedef int (*WriteCyl)(const double*, const double*, double);

/* One copy of the library. */
typedef struct {
  Module module;
  OpenVesk openVesk;
  SetHeader setHeader;
  WriteCyl writeCyl;
} Library;

static const double kStart[3] = {0, 0, 0};
static const double kEnd[3] = {0, 0, 10};

static void check(int condition, const char* sentence) {
  if (condition) return;
  fprintf(stderr, "not so: %s\n", sentence);
  exit(1);
}

static Library load(const char* path) {
  Library library;
  library.module = moduleLoad(path);
  library.openVesk = (OpenVesk)moduleFunction(library.module, "vk_openVesk");
  library.setHeader = (SetHeader)moduleFunction(library.module, "vk_setHeader");
  library.writeCyl = (WriteCyl)moduleFunction(library.module, "vk_writeCyl");
  return library;
}

/* Writes that many cylinders, with the numbers from `first` on as their headers. */
static void writeCylinders(const Library* library, const char* part, int first, int count) {
  for (int i = 0; i < count; ++i) {
    check(library->setHeader(part, "01", first + i) == 1, "the number fits");
    check(library->writeCyl(kStart, kEnd, 5) == 1, "an element is one line");
  }
}

/* Whether the file holds these cylinders and nothing else. The header is eight characters, two,
   and three base-36 digits; below 10 these are the number's own. */
static int holdsCylinders(const char* file, const char* part, int count) {
  char expected[100];
  char line[100];
  FILE* stream = fopen(file, "r");
  if (stream == NULL) return 0;
  for (int i = 0; i < count; ++i) {
    snprintf(expected, sizeof expected, "%-8s0100%d    00c 0 0 0,0 0 10,5\n", part, i % 10);
    if (fgets(line, sizeof line, stream) == NULL || strcmp(line, expected) != 0) {
      fclose(stream);
      return 0;
    }
  }
  const int ends = fgetc(stream) == EOF;
  fclose(stream);
  return ends;
}

static void unloadFinishesTheOpenFile(const char* path) {
  Library library = load(path);
  const long handles = openHandles();
  check(library.openVesk("unload") == 1, "the file opens");
  writeCylinders(&library, "PUMP", 0, 9);
#ifndef _WIN32
  /* Wine's C library writes sooner. */
  check(!holdsCylinders("veskunload.dat", "PUMP", 9), "before, the text is in the buffer");
#endif
  moduleUnload(library.module);
  check(!moduleIsLoaded(path), "the library is gone");
  check(holdsCylinders("veskunload.dat", "PUMP", 9), "the file is complete");
  check(openHandles() <= handles, "the file is closed");
}

/* The file is looked at when the process has ended. */
static void exitFinishesTheOpenFile(const char* path) {
  Library library = load(path);
  check(library.openVesk("exit") == 1, "the file opens");
  writeCylinders(&library, "PUMP", 0, 9);
}

static void anOpenClosesTheFileBefore(const char* path) {
  Library library = load(path);
  check(library.openVesk("first") == 1, "the first file opens");
  const long handles = openHandles();
  writeCylinders(&library, "PUMP", 0, 3);
  check(library.openVesk("second") == 1, "the second file opens");
  check(holdsCylinders("veskfirst.dat", "PUMP", 3), "the first file is complete");
  check(openHandles() <= handles, "one file is open");
  writeCylinders(&library, "TANK", 0, 2);
  check(library.openVesk(NULL) == 0, "NULL opens nothing");
  check(holdsCylinders("vesksecond.dat", "TANK", 2), "the second file is complete");
  /* Windows does not delete a file that is open. */
  check(remove("vesksecond.dat") == 0, "the second file is closed");
#ifndef _WIN32
  check(openHandles() == handles - 1, "no file is open");
#endif
  moduleUnload(library.module);
}

/* A fresh load starts with a blank header and no file. */
static void aSecondLoadStartsAnew(const char* path) {
  Library library = load(path);
  library.openVesk("before");
  writeCylinders(&library, "PUMP", 0, 1);
  moduleUnload(library.module);

  library = load(path);
  check(library.writeCyl(kStart, kEnd, 5) == 0, "no file is open");
  library.openVesk("after");
  check(library.writeCyl(kStart, kEnd, 5) == 1, "an element is written");
  moduleUnload(library.module);

  char line[100] = "";
  FILE* stream = fopen("veskafter.dat", "r");
  check(stream != NULL && fgets(line, sizeof line, stream) != NULL, "the file is there");
  fclose(stream);
  check(strcmp(line, "                 00c 0 0 0,0 0 10,5\n") == 0, "the header is blank");
}

static void loadAndUnload(const char* path, int times) {
  for (int i = 0; i < times; ++i) {
    Library library = load(path);
    check(library.openVesk("again") == 1, "the file opens");
    writeCylinders(&library, "PUMP", 0, 2);
    moduleUnload(library.module);
    check(!moduleIsLoaded(path), "the library is gone");
    check(holdsCylinders("veskagain.dat", "PUMP", 2), "the file is complete");
  }
}

/* What the system keeps of the first loads is not counted. A pointer for each load would be 8,000
   bytes, a primitive a hundred thousand. */
static void loadingOftenLeaksNothing(const char* path, int times) {
  loadAndUnload(path, times / 10);
  const long handles = openHandles();
  const long memory = usedMemory();
  loadAndUnload(path, times);
  check(openHandles() == handles, "no handle is left");
  const long left = usedMemory() - memory;
  printf("%ld bytes left after %d loads\n", left, times);
  check(left < 4L * times, "no memory is left");
}

static void twoCopiesKeepTheirOwnState(const char* path, const char* otherPath) {
  Library one = load(path);
  Library other = load(otherPath);
  check(one.module != other.module && one.writeCyl != other.writeCyl, "there are two copies");
  one.openVesk("one");
  other.openVesk("other");
  one.setHeader("PUMP", "01", 0);
  other.setHeader("TANK", "01", 0);
  one.writeCyl(kStart, kEnd, 5);
  other.writeCyl(kStart, kEnd, 5);
  moduleUnload(one.module);
  check(holdsCylinders("veskone.dat", "PUMP", 1), "the first copy's file is complete");
  writeCylinders(&other, "TANK", 1, 1);
  moduleUnload(other.module);
  check(holdsCylinders("veskother.dat", "TANK", 2), "the second copy's file is complete");
}

static Library threadsLibrary;
static Function threadsOthers[9];
static const char* const kOthers[9] = {"vk_writePnt", "vk_writeSeg", "vk_writeTri",
                                       "vk_writeQua", "vk_writeBox", "vk_writeRed",
                                       "vk_writeTor", "vk_writeElb", "vk_writeTxt"};

/* Every write function reads at most eight arrays; the round ones read their numbers too. */
static void writeElements(void) {
  typedef void (*Points)(const double*, const double*, const double*, const double*, const double*,
                         const double*, const double*, const double*);
  typedef int (*Torus)(const double*, const double*, const double*, double);
  typedef int (*Elbow)(const double*, const double*, const double*, const double*, double);
  typedef void (*Text)(const double*, const double*, const double*, double, double, int, int,
                       const char*);
  static const double x[3] = {10, 0, 0};
  static const double y[3] = {0, 10, 0};
  threadsLibrary.openVesk("thread");
  for (int i = 0; i < 6; ++i) {
    ((Points)threadsOthers[i])(kStart, x, y, kEnd, kStart, x, y, kEnd);
  }
  ((Torus)threadsOthers[6])(kStart, x, y, 5);
  ((Elbow)threadsOthers[7])(kStart, kEnd, x, y, 4);
  ((Text)threadsOthers[8])(kStart, x, y, 1, 1, 1, 0, "text");
  threadsLibrary.openVesk("small");
  writeCylinders(&threadsLibrary, "PUMP", 0, 5);
  threadsLibrary.openVesk(NULL);
}

static long linesOf(const char* file) {
  long lines = 0;
  FILE* stream = fopen(file, "r");
  check(stream != NULL, "the file is there");
  for (int c = fgetc(stream); c != EOF; c = fgetc(stream)) lines += c == '\n';
  fclose(stream);
  return lines;
}

static void aThreadWithASmallStackMayCall(const char* path) {
  threadsLibrary = load(path);
  for (int i = 0; i < 9; ++i) {
    threadsOthers[i] = moduleFunction(threadsLibrary.module, kOthers[i]);
  }
  runInSmallThread(writeElements);
  check(linesOf("veskthread.dat") >= 9, "every element has a line");
  check(holdsCylinders("vesksmall.dat", "PUMP", 5), "the cylinders are complete");
  moduleUnload(threadsLibrary.module);
}

#ifndef _WIN32
/* Starts a child and waits for it; 1 in the child itself. */
static int inChild(void) {
  const pid_t child = fork();
  check(child >= 0, "there is a child");
  if (child == 0) return 1;
  int status = 0;
  check(waitpid(child, &status, 0) == child && status == 0, "the child ended well");
  return 0;
}

/* What docs/hosting.md tells of children: the first way. */
static void aChildThatEndsAtOnceWritesNothingTwice(const char* path) {
  Library library = load(path);
  library.openVesk("child");
  writeCylinders(&library, "PUMP", 0, 4);
  if (inChild()) _exit(0);
  writeCylinders(&library, "PUMP", 4, 3);
  moduleUnload(library.module);
  check(holdsCylinders("veskchild.dat", "PUMP", 7), "each line is there once");
}

/* The other way: a child that ends by exit. */
static void aChildWhoseParentHasClosedWritesNothing(const char* path) {
  Library library = load(path);
  library.openVesk("closed");
  writeCylinders(&library, "PUMP", 0, 4);
  library.openVesk(NULL);
  if (inChild()) exit(0);
  check(holdsCylinders("veskclosed.dat", "PUMP", 4), "each line is there once");
  moduleUnload(library.module);
}
#endif

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  const char* name = argv[1];
  const char* path = argv[2];
  if (strcmp(name, "unloadFinishesTheOpenFile") == 0) {
    unloadFinishesTheOpenFile(path);
  } else if (strcmp(name, "exitFinishesTheOpenFile") == 0) {
    exitFinishesTheOpenFile(path);
  } else if (strcmp(name, "anOpenClosesTheFileBefore") == 0) {
    anOpenClosesTheFileBefore(path);
  } else if (strcmp(name, "aSecondLoadStartsAnew") == 0) {
    aSecondLoadStartsAnew(path);
  } else if (strcmp(name, "loadingOftenLeaksNothing") == 0) {
    loadingOftenLeaksNothing(path, argc > 3 ? atoi(argv[3]) : 1000);
  } else if (strcmp(name, "twoCopiesKeepTheirOwnState") == 0) {
    twoCopiesKeepTheirOwnState(path, argv[3]);
  } else if (strcmp(name, "aThreadWithASmallStackMayCall") == 0) {
    aThreadWithASmallStackMayCall(path);
#ifndef _WIN32
  } else if (strcmp(name, "aChildThatEndsAtOnceWritesNothingTwice") == 0) {
    aChildThatEndsAtOnceWritesNothingTwice(path);
  } else if (strcmp(name, "aChildWhoseParentHasClosedWritesNothing") == 0) {
    aChildWhoseParentHasClosedWritesNothing(path);
#endif
  } else {
    return 2;
  }
  printf("ok %s\n", name);
  return 0;
}
