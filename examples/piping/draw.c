#include "draw.h"

#include "bodies.h"
#include "vesk.h"

enum { kLargestNumber = 46655 };

static void drawItem(Item* item) {
  switch (item->component->shape) {
    case kShapeHeader:
    case kShapeAttribute:
    case kShapeNothing:
      break;
    case kShapePipe:
      drawStraight(item, 1);
      break;
    case kShapeFitting:
      drawStraight(item, 1.25);
      break;
    case kShapeElbow:
      drawElbow(item);
      break;
    case kShapeTee:
      drawTee(item);
      break;
    case kShapeOlet:
      drawOlet(item);
      break;
    case kShapeReducer:
      drawReducer(item);
      break;
    case kShapeFlange:
      drawFlange(item);
      break;
    case kShapeBlind:
      drawBlind(item);
      break;
    case kShapeGasket:
      drawGasket(item);
      break;
    case kShapeStubEnd:
      drawStubEnd(item);
      break;
    case kShapeValve:
      drawValve(item);
      break;
    case kShapeCap:
      drawCap(item);
      break;
    case kShapeWeld:
      drawWeld(item);
      break;
    case kShapeSupport:
      drawSupport(item);
      break;
    case kShapeMessage:
      drawMessage(item);
      break;
    case kShapeMark:
      drawMark(item);
      break;
    case kShapeUnknown:
      drawUnknown(item);
      break;
  }
}

/* The reference of the pipeline, its number among those of the file (two digits to
   base 36, 00 before the first) and the number of the component. */
static void setHeader(Drawing* drawing, size_t index) {
  static const char kDigits[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  const size_t pipeline = drawing->piping->components[index].pipeline;
  const char* reference = pipeline == kNoPipeline ? "" : drawing->piping->pipelines[pipeline];
  const size_t ordinal = pipeline == kNoPipeline ? 0 : pipeline + 1;
  const char digits[3] = {kDigits[ordinal / 36 % 36], kDigits[ordinal % 36], '\0'};
  vk_setHeader(reference, digits, (int)(index % kLargestNumber) + 1);
}

static int hasUnknownBore(const Component* component) {
  for (size_t i = 0; i < component->portCount; ++i) {
    const Port* port = &component->ports[i];
    if (port->bore > 0 && !pipeSize(port->bore, port->inches).known) return 1;
  }
  return 0;
}

void drawAll(Drawing* drawing) {
  const Piping* piping = drawing->piping;
  for (size_t i = 0; i < piping->componentCount; ++i) {
    const Component* component = &piping->components[i];
    if (i == kLargestNumber)
      reportWarning(drawing->report, component->line,
                    "the header counts to 46655; from here on the numbers start again at 1");
    setHeader(drawing, i);
    Item item = itemOf(drawing, i);
    const long before = putSoFar(drawing);
    drawItem(&item);
    if (component->shape == kShapeNothing) {
      reportOutcome(drawing->report, component->name, component->line, kNothingToDraw, "");
      continue;
    }
    if (item.failure == NULL && putSoFar(drawing) == before) itemFail(&item, "zero length");
    if (!drawing->boreAsDiameter && hasUnknownBore(component)) ++drawing->unknownBores;
    reportOutcome(drawing->report, component->name, component->line,
                  item.failure == NULL ? kDrawn : kNotDrawn,
                  item.failure == NULL ? "" : item.failure);
  }
}
