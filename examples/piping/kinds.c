#include "kinds.h"

#include <stdbool.h>
#include <stddef.h>
#include <string.h>

typedef struct Kind {
  const char* word;
  Shape shape;
} Kind;

/* clang-format off */
static const Kind kKinds[] = {
    {"ADDITIONAL-COMPONENT",  kShapeFitting},
    {"ADDITIONAL-ITEM",       kShapeNothing},
    {"BELLOWS",               kShapeFitting},
    {"BEND",                  kShapeElbow},
    {"BLIND-FLANGE",          kShapeBlind},
    {"BOLT",                  kShapeNothing},
    {"CAP",                   kShapeCap},
    {"CLAMP",                 kShapeFitting},
    {"CONNECTOR",             kShapeFitting},
    {"COUPLING",              kShapeFitting},
    {"CROSS",                 kShapeTee},
    {"ELBOW",                 kShapeElbow},
    {"END-CONNECTION",        kShapeMark},
    {"END-POSITION",          kShapeMark},
    {"EXPANSION-BELLOWS",     kShapeFitting},
    {"FILTER",                kShapeFitting},
    {"FLANGE",                kShapeFlange},
    {"FLANGE-BLIND",          kShapeBlind},
    {"FLEXIBLE-HOSE",         kShapePipe},
    {"FLOOR-SYMBOL",          kShapeNothing},
    {"FLOW-ARROW",            kShapeNothing},
    {"GASKET",                kShapeGasket},
    {"HOSE",                  kShapePipe},
    {"INSTRUMENT",            kShapeFitting},
    {"INSTRUMENT-BALLOON",    kShapeMark},
    {"INSULATION-SYMBOL",     kShapeNothing},
    {"LAP-JOINT-RING",        kShapeBlind},
    {"LAP-JOINT-STUBEND",     kShapeStubEnd},
    {"LAPJOINT-RING",         kShapeBlind},
    {"LAPJOINT-STUBEND",      kShapeStubEnd},
    {"MESSAGE",               kShapeMessage},
    {"MISC-COMPONENT",        kShapePipe},
    {"MULTI-PORT-COMPONENT",  kShapeFitting},
    {"NIPPLE",                kShapePipe},
    {"OLET",                  kShapeOlet},
    {"PIPE",                  kShapePipe},
    {"PIPE-BLOCK-FIXED",      kShapePipe},
    {"PIPE-BLOCK-VARIABLE",   kShapePipe},
    {"PIPE-FIXED",            kShapePipe},
    {"PLUG",                  kShapeCap},
    {"PULLED-BEND",           kShapeElbow},
    {"REDUCER",               kShapeReducer},
    {"REDUCER-CONCENTRIC",    kShapeReducer},
    {"REDUCER-ECCENTRIC",     kShapeReducer},
    {"REFERENCE-ITEM",        kShapeNothing},
    {"SPECTACLE-BLIND",       kShapeGasket},
    {"START-CONNECTION",      kShapeMark},
    {"START-POSITION",        kShapeMark},
    {"STRAINER",              kShapeFitting},
    {"SUPPORT",               kShapeSupport},
    {"TEE",                   kShapeTee},
    {"TEE-SET-ON",            kShapeTee},
    {"TEE-STUB",              kShapeTee},
    {"TRAP",                  kShapeFitting},
    {"UNION",                 kShapeFitting},
    {"VALVE",                 kShapeValve},
    {"WALL-SYMBOL",           kShapeNothing},
    {"WELD",                  kShapeWeld},
    {"Y-PIECE",               kShapeTee},

    {"BOLT-DIA",              kShapeAttribute},
    {"BOLT-ITEM-CODE",        kShapeAttribute},
    {"BOLT-ITEM-DESCRIPTION", kShapeAttribute},
    {"BOLT-LENGTH",           kShapeAttribute},
    {"BOLT-QUANTITY",         kShapeAttribute},
    {"BEND-RADIUS",           kShapeAttribute},
    {"COMPONENT-ATTRIBUTE",   kShapeAttribute},
    {"COMPONENT-IDENTIFIER",  kShapeAttribute},
    {"CONNECTION-REFERENCE",  kShapeAttribute},
    {"CUT-PIECE-LENGTH",      kShapeAttribute},
    {"DESCRIPTION",           kShapeAttribute},
    {"ERECTION-ITEM",         kShapeAttribute},
    {"FABRICATION-ITEM",      kShapeAttribute},
    {"INSULATION-SPEC",       kShapeAttribute},
    {"ITEM-CODE",             kShapeAttribute},
    {"ITEM-DESCRIPTION",      kShapeAttribute},
    {"MASTER-COMPONENT-IDENTIFIER", kShapeAttribute},
    {"MATERIAL-IDENTIFIER",   kShapeAttribute},
    {"NAME",                  kShapeAttribute},
    {"SKEY",                  kShapeAttribute},
    {"SPINDLE-DIRECTION",     kShapeAttribute},
    {"STATUS",                kShapeAttribute},
    {"SUPPORT-DIRECTION",     kShapeAttribute},
    {"TAG",                   kShapeAttribute},
    {"TRACING-SPEC",          kShapeAttribute},
    {"UCI",                   kShapeAttribute},
    {"UNIQUE-COMPONENT-IDENTIFIER", kShapeAttribute},
    {"WEIGHT",                kShapeAttribute},

    {"ATTRIBUTE",             kShapeHeader},
    {"DATE-DMY",              kShapeHeader},
    {"INSULATION",            kShapeHeader},
    {"MATERIAL",              kShapeHeader},
    {"MATERIALS",             kShapeHeader},
    {"PIPELINE",              kShapeHeader},
    {"PIPE-CLASS",            kShapeHeader},
    {"PIPE-SPEC",             kShapeHeader},
    {"PIPING-CLASS",          kShapeHeader},
    {"PIPING-SPEC",           kShapeHeader},
    {"PROJECT-IDENTIFIER",    kShapeHeader},
    {"REVISION",              kShapeHeader},
    {"SPOOL",                 kShapeHeader},
    {"START-CO-ORDS",         kShapeHeader},
    {"TRACING",               kShapeHeader},
    {"UNITS",                 kShapeHeader},
};
/* clang-format on */

static bool endsWith(const char* word, const char* end) {
  const size_t length = strlen(word);
  return length >= strlen(end) && strcmp(word + length - strlen(end), end) == 0;
}

Shape shapeOf(const char* word) {
  Shape shape = kShapeUnknown;
  size_t longest = 0;
  for (size_t i = 0; i < sizeof kKinds / sizeof kKinds[0]; ++i) {
    const size_t length = strlen(kKinds[i].word);
    if (strncmp(word, kKinds[i].word, length) != 0) continue;
    if (strchr("-0123456789", word[length]) == NULL) continue; /* the end is found as well */
    if (length <= longest) continue;
    longest = length;
    shape = kKinds[i].shape;
  }
  if (shape == kShapeUnknown && endsWith(word, "-FILES")) return kShapeHeader;
  return shape;
}
