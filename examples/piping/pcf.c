#include "pcf.h"

#include <ctype.h>
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "lines.h"
#include "memory.h"

/* Places farther away than this (millimetres) are taken for a slip of the pen;
   beyond it the four decimals of the record could not be told apart. */
static const double kFarthest = 1e10;
static const double kInch = 25.4;

/* What holds while the file is read. */
typedef struct Reader {
  Piping* piping;
  Report* report;
  long line;
  size_t indent;     /* smallest indentation so far: that of components and headers */
  double coordinate; /* millimetres of one unit of the co-ordinates */
  double bore;       /* the same of the bores */
  int boreInches;
  size_t pipeline;
  int open;   /* the last word began a component */
  int header; /* the last word was a header */
  int looseTold;
} Reader;

/* ---- words ------------------------------------------------------------------ */

static int isBlank(char c) { return c == ' ' || c == '\t' || c == '\f' || c == '\v'; }

static char* skipBlanks(char* text) {
  while (isBlank(*text)) ++text;
  return text;
}

/* Cuts the first word off and moves *text behind it; an empty word at the end. */
static char* nextWord(char** text) {
  char* word = skipBlanks(*text);
  char* end = word;
  while (*end != '\0' && !isBlank(*end)) ++end;
  *text = *end == '\0' ? end : end + 1;
  *end = '\0';
  return word;
}

/* Bytes above 127 stay: they are letters of one code page or another. What would
   upset a terminal goes. */
static void toCapitals(char* word) {
  for (; *word != '\0'; ++word) {
    if (*word >= 'a' && *word <= 'z') *word = (char)(*word - 'a' + 'A');
    if ((unsigned char)*word < ' ' || *word == 127) *word = '?';
  }
}

/* Takes "<" from the front and ">" from the end of a text that has both. */
static char* withoutBrackets(char* text) {
  text = skipBlanks(text);
  const size_t length = strlen(text);
  if (length < 2 || text[0] != '<' || text[length - 1] != '>') return text;
  text[length - 1] = '\0';
  return text + 1;
}

/* Splits "<KEY> value", "<KEY value>", "KEY <value>" or "KEY value"; the key comes
   in capitals. */
static char* splitKey(char* line, char** value) {
  char* text = skipBlanks(line);
  char* close = text[0] == '<' ? strchr(text, '>') : NULL;
  if (close != NULL && close[1] != '\0' && !isBlank(close[1])) close = NULL;
  if (close != NULL && close[1] != '\0') {
    *close = '\0';
    *value = withoutBrackets(close + 1);
    ++text;
    char* blank = text;
    char* key = nextWord(&blank);
    toCapitals(key);
    return key;
  }
  text = withoutBrackets(text);
  char* key = nextWord(&text);
  toCapitals(key);
  *value = withoutBrackets(text);
  return key;
}

static size_t indentOf(const char* line) {
  size_t indent = 0;
  for (; isBlank(*line); ++line) indent = *line == '\t' ? indent / 8 * 8 + 8 : indent + 1;
  return indent;
}

static int isComment(const char* text) {
  return text[0] == '!' || text[0] == '#' || text[0] == ';' || strncmp(text, "//", 2) == 0;
}

/* ---- numbers ---------------------------------------------------------------- */

/* The host never sets a locale, so strtod takes a point and nothing else; what
   it would take beyond decimal numbers ("nan", "0x1p3") is sorted out before. */
static int readNumber(const char* word, double* number) {
  if (word[0] == '\0' || word[strspn(word, "0123456789.+-eE")] != '\0') return 0;
  char* end = NULL;
  *number = strtod(word, &end);
  return *end == '\0' && isfinite(*number);
}

/* A bore may also be a fraction: "3/4" or "1-1/2". */
static int readBore(const char* word, double* bore) {
  if (readNumber(word, bore)) return 1;
  int whole = 0;
  int over = 0;
  int under = 0;
  int used = 0;
  if (strlen(word) > 12 || word[strspn(word, "0123456789-/")] != '\0') return 0;
  if (sscanf(word, "%4d-%4d/%4d%n", &whole, &over, &under, &used) != 3 || word[used] != '\0') {
    whole = 0;
    if (sscanf(word, "%4d/%4d%n", &over, &under, &used) != 2 || word[used] != '\0') return 0;
  }
  if (whole < 0 || over < 0 || under <= 0) return 0;
  *bore = whole + (double)over / under;
  return 1;
}

static int isEndKind(const char* word) {
  return isalpha((unsigned char)word[0]) && isalpha((unsigned char)word[1]) && word[2] == '\0';
}

/* ---- attributes of a component ---------------------------------------------- */

static Component* openComponent(const Reader* reader) {
  return &reader->piping->components[reader->piping->componentCount - 1];
}

/* The role of a key, -1 if it is no place. */
static int roleOf(const char* key) {
  if (strcmp(key, "END-POINT") == 0) return kPortEnd;
  if (strcmp(key, "CENTRE-POINT") == 0 || strcmp(key, "CENTER-POINT") == 0) return kPortCentre;
  if (strcmp(key, "CO-ORDS") == 0 || strcmp(key, "COORDS") == 0) return kPortPlace;
  if (strncmp(key, "BRANCH", 6) != 0) return -1;
  const char* rest = key + 6 + strspn(key + 6, "0123456789");
  return strcmp(rest, "-POINT") == 0 ? (int)kPortBranch : -1;
}

static int readPlace(Reader* reader, const char* key, char* value, Vec* at) {
  for (int i = 0; i < 3; ++i) {
    const char* word = nextWord(&value);
    double number = 0;
    if (word[0] == '\0') {
      reportError(reader->report, reader->line, "%s: expected three co-ordinates (x y z), found %s",
                  key,
                  i == 0   ? "none"
                  : i == 1 ? "only one"
                           : "only two");
      return 0;
    }
    if (!readNumber(word, &number)) {
      reportError(reader->report, reader->line, "%s: expected a number as %c, found \"%s\"", key,
                  "xyz"[i], word);
      return 0;
    }
    at->v[i] = number * reader->coordinate;
    if (!(fabs(at->v[i]) <= kFarthest)) {
      reportError(reader->report, reader->line,
                  "%s: expected %c within ten thousand kilometres, found \"%s\"", key, "xyz"[i],
                  word);
      return 0;
    }
  }
  return 1;
}

/* Bore and kind of end, each of which may be missing. */
static int readEnd(Reader* reader, const char* key, char* value, Port* port) {
  char* word = nextWord(&value);
  if (word[0] != '\0' && !isEndKind(word)) {
    const size_t length = strlen(word);
    const int marked = length > 1 && word[length - 1] == '"';
    if (marked) word[length - 1] = '\0';
    double bore = 0;
    if (!readBore(word, &bore) || bore < 0 || bore * kInch > kFarthest) {
      reportError(reader->report, reader->line,
                  "%s: expected a bore (a number, 0 or more) as fourth value, found \"%s%s\"", key,
                  word, marked ? "\"" : "");
      return 0;
    }
    port->inches = marked || reader->boreInches;
    port->bore = bore * (marked ? kInch : reader->bore);
    word = nextWord(&value);
    if (strchr(word, '/') != NULL && readBore(word, &bore)) { /* "1 1/2" */
      port->bore += bore * (marked ? kInch : reader->bore);
      word = nextWord(&value);
    }
  }
  double number = 0;
  if (readNumber(word, &number))
    reportWarning(reader->report, reader->line,
                  "%s: expected the kind of end behind the bore, found a fifth number \"%s\"", key,
                  word);
  if (isEndKind(word)) {
    toCapitals(word);
    memcpy(port->end, word, sizeof port->end);
  }
  return 1;
}

static void readPort(Reader* reader, const char* key, PortRole role, char* value) {
  Component* component = openComponent(reader);
  Port port = {role, {{0, 0, 0}}, 0, 0, ""};
  /* readPlace cuts its words off; what follows the third is the bore. */
  char* rest = value;
  for (int i = 0; i < 3; ++i) {
    rest = skipBlanks(rest);
    while (*rest != '\0' && !isBlank(*rest)) ++rest;
  }
  char* behind = memoryText(rest, strlen(rest));
  if (!readPlace(reader, key, value, &port.at)) {
    component->damaged = 1;
  } else {
    /* A place with a bad bore is still a place. */
    readEnd(reader, key, behind, &port);
    component->ports = memoryGrow(component->ports, component->portCount, sizeof(Port));
    component->ports[component->portCount++] = port;
  }
  free(behind);
}

static void addText(Component* component, const char* text) {
  if (text[0] == '\0') return;
  component->texts = memoryGrow(component->texts, component->textCount, sizeof(char*));
  component->texts[component->textCount++] = memoryText(text, strlen(text));
}

/* TEXT, TEXT1, MESSAGE-TEXT; some programs use other words for it. */
static int isTextKey(const char* key) {
  if (strcmp(key, "DESCRIPTION") == 0 || strcmp(key, "NOTE") == 0 || strcmp(key, "LABEL") == 0)
    return 1;
  if (strncmp(key, "MESSAGE-", 8) == 0) key += 8;
  return strncmp(key, "TEXT", 4) == 0 && key[4 + strspn(key + 4, "0123456789")] == '\0';
}

/* Degrees; files write a quarter turn as 90, 90.0 or, in hundredths, 9000. */
static void readAngle(Component* component, const char* value) {
  double angle = 0;
  if (readNumber(value, &angle) && angle > 0) component->angle = angle > 360 ? angle / 100 : angle;
}

static void readAttribute(Reader* reader, const char* key, char* value) {
  const int role = roleOf(key);
  if (!reader->open) {
    if (role >= 0 && !reader->header)
      reportError(reader->report, reader->line, "%s: expected a component before it", key);
    return;
  }
  Component* component = openComponent(reader);
  if (role >= 0)
    readPort(reader, key, (PortRole)role, value);
  else if (component->shape == kShapeMessage && isTextKey(key))
    addText(component, value);
  else if (component->shape == kShapeMark && (strstr(key, "-REFERENCE") != NULL || isTextKey(key)))
    addText(component, value);
  else if (strcmp(key, "ANGLE") == 0)
    readAngle(component, value);
}

/* ---- headers and components ------------------------------------------------- */

/* Millimetres of a unit by its name, 0 if it is not known. */
static double unitOf(const char* name) {
  static const struct {
    const char* name;
    double millimetres;
  } kUnits[] = {
      {"MM", 1},          {"MILLIMETRE", 1},      {"MILLIMETRES", 1}, {"MILLIMETER", 1},
      {"MILLIMETERS", 1}, {"MM-HUNDREDTH", 0.01}, {"CM", 10},         {"M", 1000},
      {"METRE", 1000},    {"METRES", 1000},       {"METER", 1000},    {"METERS", 1000},
      {"INCH", 25.4},     {"INCHES", 25.4},       {"IN", 25.4},       {"INCH-SIXTEENTH", 25.4 / 16},
      {"FEET", 304.8},    {"FOOT", 304.8},        {"FT", 304.8},
  };
  for (size_t i = 0; i < sizeof kUnits / sizeof kUnits[0]; ++i)
    if (strcmp(name, kUnits[i].name) == 0) return kUnits[i].millimetres;
  return 0;
}

static void readUnits(Reader* reader, const char* key, char* value) {
  const int bores = strcmp(key, "UNITS-BORE") == 0;
  if (!bores && strcmp(key, "UNITS-CO-ORDS") != 0 && strcmp(key, "UNITS-COORDS") != 0) return;
  char* name = nextWord(&value);
  toCapitals(name);
  double unit = unitOf(name);
  if (unit <= 0) {
    reportError(reader->report, reader->line,
                "%s: expected MM or INCH, found \"%s\"; millimetres are taken", key, name);
    unit = 1;
  }
  if (bores) {
    reader->bore = unit;
    reader->boreInches = strncmp(name, "IN", 2) == 0;
  } else {
    reader->coordinate = unit;
  }
}

static void setPipeline(Reader* reader, const char* reference) {
  Piping* piping = reader->piping;
  if (reference[0] == '\0') {
    reportError(reader->report, reader->line,
                "PIPELINE-REFERENCE: expected the reference of a pipeline, found none");
  }
  for (reader->pipeline = 0; reader->pipeline < piping->pipelineCount; ++reader->pipeline)
    if (strcmp(piping->pipelines[reader->pipeline], reference) == 0) return;
  piping->pipelines = memoryGrow(piping->pipelines, piping->pipelineCount, sizeof(char*));
  piping->pipelines[piping->pipelineCount++] = memoryText(reference, strlen(reference));
}

static void freeComponent(Component* component) {
  for (size_t i = 0; i < component->textCount; ++i) free(component->texts[i]);
  free(component->texts);
  free(component->ports);
  free(component->name);
}

/* An unknown word with a value behind it and no place below is no component:
   components stand alone in their line. */
static void closeComponent(Reader* reader) {
  if (!reader->open) return;
  reader->open = 0;
  Component* component = openComponent(reader);
  if (component->shape != kShapeUnknown || !component->hasValue) return;
  if (component->portCount > 0 || component->damaged) return;
  reportWarning(reader->report, component->line,
                "%s: expected a component or a header, found an unknown word; ignored",
                component->name);
  freeComponent(component);
  --reader->piping->componentCount;
}

static void startComponent(Reader* reader, const char* key, const char* value, Shape shape) {
  Piping* piping = reader->piping;
  piping->components = memoryGrow(piping->components, piping->componentCount, sizeof(Component));
  Component* component = &piping->components[piping->componentCount++];
  memset(component, 0, sizeof *component);
  component->name = memoryText(key, strlen(key));
  component->shape = shape;
  component->line = reader->line;
  component->pipeline = reader->pipeline;
  component->hasValue = value[0] != '\0';
  if (shape == kShapeMessage) addText(component, value);
  reader->open = 1;
  reader->header = 0;
}

static void readTopLevel(Reader* reader, const char* key, char* value, int bracketed) {
  /* In some files nothing is indented: places are told by their names. */
  const Shape shape = shapeOf(key);
  const int attribute = shape == kShapeAttribute || isTextKey(key) || strcmp(key, "ANGLE") == 0;
  if (roleOf(key) >= 0 || attribute) {
    if (reader->open && !reader->looseTold) {
      reader->looseTold = 1;
      reportWarning(reader->report, reader->line,
                    "%s: expected to be indented; taken as part of the %s of line %ld (said once)",
                    key, openComponent(reader)->name, openComponent(reader)->line);
    }
    readAttribute(reader, key, value);
    return;
  }
  if (shape == kShapeUnknown && bracketed) return;
  closeComponent(reader);
  if (shape != kShapeHeader) {
    startComponent(reader, key, value, shape);
    return;
  }
  reader->header = 1;
  if (strcmp(key, "PIPELINE-REFERENCE") == 0)
    setPipeline(reader, value);
  else
    readUnits(reader, key, value);
}

static void readLine(Reader* reader, char* line) {
  char* text = skipBlanks(line);
  if (text[0] == '\0' || isComment(text)) return;
  const size_t indent = indentOf(line);
  const int bracketed = text[0] == '<';
  if (indent < reader->indent) reader->indent = indent;
  char* value = NULL;
  const char* key = splitKey(text, &value);
  if (indent > reader->indent)
    readAttribute(reader, key, value);
  else
    readTopLevel(reader, key, value, bracketed);
}

int pcfRead(Piping* piping, const char* file, Report* report) {
  memset(piping, 0, sizeof *piping);
  Lines lines;
  if (!linesRead(&lines, file)) return 0;
  Reader reader = {piping, report, 0, (size_t)-1, 1, 1, 0, kNoPipeline, 0, 0, 0};
  for (char* line = linesNext(&lines); line != NULL; line = linesNext(&lines)) {
    reader.line = lines.number;
    readLine(&reader, line);
  }
  closeComponent(&reader);
  linesFree(&lines);
  return 1;
}

void pcfFree(Piping* piping) {
  for (size_t i = 0; i < piping->pipelineCount; ++i) free(piping->pipelines[i]);
  for (size_t i = 0; i < piping->componentCount; ++i) freeComponent(&piping->components[i]);
  free(piping->pipelines);
  free(piping->components);
  memset(piping, 0, sizeof *piping);
}

int pcfHasComponents(const Piping* piping) {
  for (size_t i = 0; i < piping->componentCount; ++i) {
    const Component* component = &piping->components[i];
    if (component->shape != kShapeUnknown || component->portCount > 0) return 1;
  }
  return 0;
}

const Port* pcfPort(const Component* component, PortRole role, size_t index) {
  for (size_t i = 0; i < component->portCount; ++i)
    if (component->ports[i].role == role && index-- == 0) return &component->ports[i];
  return NULL;
}
