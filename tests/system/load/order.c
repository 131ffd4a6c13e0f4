/* SPDX-License-Identifier: MIT */
/* order LIBRARY: loads and unloads the library, telling when. */
#include <stdio.h>

#include "module.h"

static void tell(const char* event) {
  puts(event);
  fflush(stdout);
}

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  tell("load");
  Module module = moduleLoad(argv[1]);
  tell("loaded");
  moduleUnload(module);
  tell("unloaded");
  return 0;
}
