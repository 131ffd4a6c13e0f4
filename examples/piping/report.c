#include "report.h"

#include <stdarg.h>
#include <stdlib.h>
#include <string.h>

#include "memory.h"

void reportStart(Report* report, const char* file) {
  memset(report, 0, sizeof *report);
  report->file = strcmp(file, "-") == 0 ? "stdin" : file;
}

static void freeTallies(Tally* tallies, size_t count) {
  for (size_t i = 0; i < count; ++i) {
    free(tallies[i].name);
    free(tallies[i].reason);
  }
  free(tallies);
}

void reportFree(Report* report) {
  freeTallies(report->tallies, report->tallyCount);
  freeTallies(report->remarks, report->remarkCount);
  memset(report, 0, sizeof *report);
}

static void message(const Report* report, long line, const char* kind, const char* format,
                    va_list arguments) {
  if (line > 0)
    fprintf(stderr, "%s:%ld: %s: ", report->file, line, kind);
  else
    fprintf(stderr, "%s: %s: ", report->file, kind);
  vfprintf(stderr, format, arguments);
  fputc('\n', stderr);
}

void reportError(Report* report, long line, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  message(report, line, "error", format, arguments);
  va_end(arguments);
  ++report->errors;
}

void reportWarning(Report* report, long line, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  if (!report->quiet) message(report, line, "warning", format, arguments);
  va_end(arguments);
  ++report->warnings;
}

static void count(Tally** tallies, size_t* tallyCount, const char* name, long line, Outcome outcome,
                  const char* reason) {
  for (size_t i = 0; i < *tallyCount; ++i) {
    Tally* tally = &(*tallies)[i];
    if (tally->outcome == outcome && strcmp(tally->name, name) == 0 &&
        strcmp(tally->reason, reason) == 0) {
      ++tally->count;
      return;
    }
  }
  *tallies = memoryGrow(*tallies, *tallyCount, sizeof **tallies);
  Tally* tally = &(*tallies)[(*tallyCount)++];
  tally->name = memoryText(name, strlen(name));
  tally->reason = memoryText(reason, strlen(reason));
  tally->outcome = outcome;
  tally->count = 1;
  tally->first = line;
}

void reportOutcome(Report* report, const char* name, long line, Outcome outcome,
                   const char* reason) {
  ++report->components;
  ++report->outcomes[outcome];
  count(&report->tallies, &report->tallyCount, name, line, outcome, reason);
  if (outcome == kNotDrawn) reportError(report, line, "%s not drawn: %s", name, reason);
}

void reportRemark(Report* report, const char* name, long line, const char* remark) {
  count(&report->remarks, &report->remarkCount, name, line, kDrawn, remark);
  reportWarning(report, line, "%s: %s", name, remark);
}

static void printTallies(const Report* report, FILE* stream, Outcome outcome) {
  for (size_t i = 0; i < report->tallyCount; ++i) {
    const Tally* tally = &report->tallies[i];
    if (tally->outcome != outcome) continue;
    fprintf(stream, "%8ld  %s", tally->count, tally->name);
    if (tally->reason[0] != '\0')
      fprintf(stream, ": %s (%s %s:%ld)", tally->reason, tally->count == 1 ? "at" : "first at",
              report->file, tally->first);
    fputc('\n', stream);
  }
}

void reportPrint(const Report* report, FILE* stream) {
  fprintf(stream, "Components read: %ld = %ld drawn + %ld with nothing to draw + %ld not drawn\n",
          report->components, report->outcomes[kDrawn], report->outcomes[kNothingToDraw],
          report->outcomes[kNotDrawn]);
  fputs("Drawn:\n", stream);
  printTallies(report, stream, kDrawn);
  if (report->outcomes[kNothingToDraw] > 0) {
    fputs("Nothing to draw:\n", stream);
    printTallies(report, stream, kNothingToDraw);
  }
  if (report->outcomes[kNotDrawn] > 0) {
    fputs("Not drawn:\n", stream);
    printTallies(report, stream, kNotDrawn);
  }
  if (report->remarkCount > 0) fputs("Drawn otherwise than the file says:\n", stream);
  for (size_t i = 0; i < report->remarkCount; ++i) {
    const Tally* remark = &report->remarks[i];
    fprintf(stream, "%8ld  %s: %s (%s %s:%ld)\n", remark->count, remark->name, remark->reason,
            remark->count == 1 ? "at" : "first at", report->file, remark->first);
  }
  fprintf(stream, "Errors: %ld, warnings: %ld\n", report->errors, report->warnings);
}
