/*
 * piping - draws a piping component file as a Vesk record file.
 *
 * Reads the file (pcf.h), writes it through the functions of vesk.h (draw.h), looks
 * into what was written (record.h) and says what became of it all (report.h).
 */
#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "draw.h"
#include "memory.h"
#include "pcf.h"
#include "record.h"
#include "report.h"
#include "vesk.h"

typedef enum Exit {
  kExitDone = 0,
  kExitRemarks = 1, /* done, but something was malformed, left out or drawn otherwise */
  kExitUsage = 2,
  kExitInput = 3,
  kExitOutput = 4
} Exit;

static const char kHelp[] =
    "Usage: piping [--bore-as-diameter] FILE.pcf NAME\n"
    "Draws a piping component file as the Vesk record file veskNAME.dat.\n"
    "\n"
    "  FILE.pcf            the file to draw; - is the standard input\n"
    "  NAME                what stands between \"vesk\" and \".dat\"; the file lies in the\n"
    "                      current folder\n"
    "  --bore-as-diameter  draw pipes as wide as their bores; without it a nominal bore\n"
    "                      (6 inch, 150 mm) is drawn with the outside diameter of such a\n"
    "                      pipe (168.3 mm)\n"
    "  --help              print this and stop\n"
    "\n"
    "Counts go to the standard output, messages \"file:line: ...\" to standard error.\n"
    "Exit code: 0 done; 1 done, but something was malformed, left out or drawn otherwise;\n"
    "2 wrong usage; 3 the input cannot be read or holds no component; 4 the output cannot\n"
    "be written.\n";

typedef struct Arguments {
  const char* input;
  const char* name;
  int boreAsDiameter;
  int help;
} Arguments;

/* Returns 0 and says why if the arguments are wrong. */
static int readArguments(Arguments* arguments, int count, char** words) {
  int optionsOver = 0;
  memset(arguments, 0, sizeof *arguments);
  for (int i = 1; i < count; ++i) {
    const char* word = words[i];
    if (!optionsOver && strcmp(word, "--") == 0) {
      optionsOver = 1;
    } else if (!optionsOver && (strcmp(word, "--help") == 0 || strcmp(word, "-h") == 0)) {
      arguments->help = 1;
      return 1;
    } else if (!optionsOver && strcmp(word, "--bore-as-diameter") == 0) {
      arguments->boreAsDiameter = 1;
    } else if (!optionsOver && word[0] == '-' && word[1] != '\0') {
      fprintf(stderr, "piping: error: unknown option \"%s\"\n", word);
      return 0;
    } else if (arguments->input == NULL) {
      arguments->input = word;
    } else if (arguments->name == NULL) {
      arguments->name = word;
    } else {
      fprintf(stderr, "piping: error: expected two names, found a third: \"%s\"\n", word);
      return 0;
    }
  }
  if (arguments->name != NULL && arguments->name[0] != '\0') return 1;
  fputs("piping: error: expected the name of a file and the name of the output\n", stderr);
  return 0;
}

static char* outputFile(const char* name) {
  const size_t length = strlen(name);
  char* file = memoryResize(NULL, length + sizeof "vesk.dat", 1);
  memcpy(file, "vesk", 4);
  memcpy(file + 4, name, length);
  memcpy(file + 4 + length, ".dat", 5);
  return file;
}

static void printPipelines(const Piping* piping) {
  for (size_t i = 0; i <= piping->pipelineCount; ++i) {
    const size_t wanted = i < piping->pipelineCount ? i : kNoPipeline;
    long components = 0;
    for (size_t k = 0; k < piping->componentCount; ++k)
      if (piping->components[k].pipeline == wanted) ++components;
    if (wanted != kNoPipeline)
      printf("Components of pipeline %s: %ld\n", piping->pipelines[i], components);
    else if (components > 0)
      printf("Components without a PIPELINE-REFERENCE: %ld\n", components);
  }
}

static void printElements(const Record* record) {
  static const char* const kNames[kElements] = {"points",    "segments", "texts", "boxes",
                                                "cylinders", "cones",    "tori"};
  printf("Elements: %ld, in lines: %ld\n", record->elements, record->lines);
  for (int i = 0; i < kElements; ++i)
    if (record->kinds[i] > 0) printf("%8ld  %s\n", record->kinds[i], kNames[i]);
}

/* The functions that write do not tell what the disk refused. The close does, by
   errno, its `reason`; what of it all stands in the file, only the file itself tells. */
static int isComplete(const Drawing* drawing, const char* file, int reason, Record* record) {
  if (!recordCount(record, file)) {
    fprintf(stderr, "%s: error: cannot be read back: %s\n", file, strerror(errno));
    return 0;
  }
  long made = 0;
  int same = 1;
  for (int i = 0; i < kElements; ++i) {
    made += drawing->made[i];
    same = same && drawing->made[i] == record->kinds[i];
  }
  same = same && record->elements == made;
  if (same && reason == 0) return 1;
  const char* text = reason != 0 ? strerror(reason) : "the system gave no reason";
  if (same)
    fprintf(stderr, "%s: error: cannot be closed: %s\n", file, text);
  else
    fprintf(stderr,
            "%s: error: incomplete: %s; it holds %ld of the %ld elements that were written\n", file,
            text, record->elements, made);
  return 0;
}

static Exit finish(const Drawing* drawing, const char* file, int reason) {
  Report* report = drawing->report;
  Record record;
  if (!isComplete(drawing, file, reason, &record)) return kExitOutput;
  printf("Written: %s\n", file);
  printElements(&record);
  printf("It begins:\n");
  recordPrintHead(file, 5, stdout);
  printPipelines(drawing->piping);
  reportPrint(report, stdout);
  if (drawing->unknownBores > 0)
    printf("Components with bores that are no nominal size, drawn as they are: %ld\n",
           drawing->unknownBores);
  if (fflush(stdout) != 0 || ferror(stdout)) {
    fprintf(stderr, "piping: error: standard output: %s\n", strerror(errno));
    return kExitOutput;
  }
  return report->errors + report->warnings > 0 ? kExitRemarks : kExitDone;
}

static Exit draw(const Arguments* arguments, const Piping* piping, Report* report,
                 const char* file) {
  Drawing drawing = {piping, report, arguments->boreAsDiameter, {0}, 0};
  if (!vk_openVesk(arguments->name)) {
    fprintf(stderr, "%s: error: cannot be opened for writing: %s\n", file, strerror(errno));
    return kExitOutput;
  }
  drawAll(&drawing);
  errno = 0;
  vk_openVesk(NULL); /* closes the file, so that it is complete */
  return finish(&drawing, file, errno);
}

static Exit run(const Arguments* arguments, Report* report, const char* file) {
  Piping piping;
  if (!pcfRead(&piping, arguments->input, report)) {
    reportError(report, 0, "cannot be read: %s", strerror(errno));
    return kExitInput;
  }
  Exit result = kExitInput;
  /* A file without components is left alone, and so is an older output file. */
  if (!pcfHasComponents(&piping))
    reportError(report, 0, "expected a piping component file, found no component");
  else
    result = draw(arguments, &piping, report, file);
  pcfFree(&piping);
  return result;
}

int main(int count, char** words) {
  Arguments arguments;
  if (!readArguments(&arguments, count, words)) {
    fputs("Try \"piping --help\".\n", stderr);
    return kExitUsage;
  }
  if (arguments.help) {
    fputs(kHelp, stdout);
    return kExitDone;
  }
  char* file = outputFile(arguments.name);
  Exit result = kExitUsage;
  if (strcmp(file, arguments.input) == 0) {
    fprintf(stderr, "piping: error: %s is both input and output\n", file);
  } else {
    Report report;
    reportStart(&report, arguments.input);
    result = run(&arguments, &report, file);
    reportFree(&report);
  }
  free(file);
  return (int)result;
}
