/* SPDX-License-Identifier: MIT */
/* fileVersion DLL VERSION: checks the version resource of a DLL. */
#include <stdio.h>
#include <string.h>
#include <windows.h>

static char block[4096];

static int holds(const char* name, const char* expected) {
  char path[100] = "\\StringFileInfo\\040904B0\\";
  strcat(path, name);
  void* text = "";
  UINT size = 0;
  if (!VerQueryValueA(block, path, &text, &size) || strcmp(text, expected) != 0) {
    printf("%s is \"%s\", not \"%s\"\n", name, (char*)text, expected);
    return 0;
  }
  return 1;
}

int main(int argc, char** argv) {
  if (argc != 3 || !GetFileVersionInfoA(argv[1], 0, sizeof block, block)) {
    puts("no version resource");
    return 1;
  }
  void* data = NULL;
  UINT size = 0;
  if (!VerQueryValueA(block, "\\", &data, &size)) return 1;
  const VS_FIXEDFILEINFO* fixed = data;
  char version[40];
  snprintf(version, sizeof version, "%d.%d.%d", HIWORD(fixed->dwFileVersionMS),
           LOWORD(fixed->dwFileVersionMS), HIWORD(fixed->dwFileVersionLS));
  if (strcmp(version, argv[2]) != 0 || fixed->dwFileType != VFT_DLL) {
    printf("the file's version is %s\n", version);
    return 1;
  }
  if (!holds("FileVersion", argv[2]) || !holds("ProductVersion", argv[2]) ||
      !holds("OriginalFilename", "CVeskDll.dll")) {
    return 1;
  }
  printf("version %s\n", version);
  return 0;
}
