#include "item.h"

#include <string.h>

enum { kNeighbours = 8 };

void itemRemark(const Item* item, const char* text) {
  reportRemark(item->drawing->report, item->component->name, item->component->line, text);
}

void itemFail(Item* item, const char* reason) { item->failure = reason; }

PipeSize itemSize(const Drawing* drawing, const Port* port) {
  PipeSize size = pipeSize(port->bore, port->inches);
  if (!drawing->boreAsDiameter) return size;
  size.outside = port->bore;
  if (size.flange < size.outside) size.flange = size.outside * 1.3;
  return size;
}

const Port* itemWithBore(const Component* component, const Port* port) {
  if (port != NULL && port->bore > 0) return port;
  for (size_t i = 0; i < component->portCount; ++i)
    if (component->ports[i].bore > 0) return &component->ports[i];
  return NULL;
}

Item itemOf(Drawing* drawing, size_t index) {
  const Component* component = &drawing->piping->components[index];
  Item item;
  memset(&item, 0, sizeof item);
  item.drawing = drawing;
  item.component = component;
  item.index = index;
  item.end1 = pcfPort(component, kPortEnd, 0);
  item.end2 = pcfPort(component, kPortEnd, 1);
  item.branch1 = pcfPort(component, kPortBranch, 0);
  const Port* centre = pcfPort(component, kPortCentre, 0);
  item.hasCentre = centre != NULL;
  if (centre != NULL)
    item.centre = centre->at;
  else if (item.end1 != NULL && item.end2 != NULL)
    item.centre = vecBetween(item.end1->at, item.end2->at, 0.5);
  const Port* bore1 = itemWithBore(component, item.end1);
  const Port* bore2 =
      itemWithBore(component, item.end2 != NULL && item.end2->bore > 0 ? item.end2 : item.end1);
  if (bore1 != NULL) item.size1 = itemSize(drawing, bore1);
  if (bore2 != NULL) item.size2 = itemSize(drawing, bore2);
  return item;
}

int itemHasBody(Item* item) {
  if (item->end1 == NULL || item->end2 == NULL) {
    itemFail(item, item->end1 == NULL ? "expected two END-POINTs, found none"
                                      : "expected two END-POINTs, found one");
  } else if (item->size1.outside <= 0) {
    itemFail(item, "expected a bore behind an END-POINT, found none");
  } else if (vecDistance(item->end1->at, item->end2->at) < kShortest &&
             (!item->hasCentre || vecDistance(item->end1->at, item->centre) < kShortest)) {
    itemFail(item, "zero length");
  }
  return item->failure == NULL;
}

static int isBodyShape(Shape shape) {
  return shape != kShapeWeld && shape != kShapeSupport && shape != kShapeMessage &&
         shape != kShapeMark && shape != kShapeNothing;
}

const Component* itemNeighbour(const Item* item, Vec at) {
  const Piping* piping = item->drawing->piping;
  const size_t from = item->index > kNeighbours ? item->index - kNeighbours : 0;
  for (size_t i = from; i < piping->componentCount && i <= item->index + kNeighbours; ++i) {
    const Component* other = &piping->components[i];
    if (i == item->index || !isBodyShape(other->shape)) continue;
    for (size_t k = 0; k < other->portCount; ++k)
      if (other->ports[k].role != kPortCentre && vecDistance(other->ports[k].at, at) < kNear)
        return other;
  }
  return NULL;
}

Vec itemDirectionInto(const Item* item, Vec at) {
  const Vec none = {{0, 0, 0}};
  const Component* other = itemNeighbour(item, at);
  if (other == NULL) return none;
  /* From its centre if it has one, else from its far end. */
  const Port* from = pcfPort(other, kPortCentre, 0);
  for (size_t i = 0; from == NULL && i < other->portCount; ++i)
    if (vecDistance(other->ports[i].at, at) >= kNear) from = &other->ports[i];
  return from == NULL ? none : vecUnit(vecSub(at, from->at));
}

int itemIsFlanged(const Port* end) { return strcmp(end->end, "FL") == 0; }
