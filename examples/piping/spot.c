#include "bodies.h"

/* The edge of a support without a bore to go by (millimetres). */
static const double kPlainSize = 100;

/* CO-ORDS, else the centre, else the middle of the ends, else the first place. */
static int placeOf(Item* item, Vec* at) {
  const Component* component = item->component;
  const Port* place = pcfPort(component, kPortPlace, 0);
  if (component->portCount == 0) {
    itemFail(item, "expected CO-ORDS, found none");
    return 0;
  }
  if (place != NULL)
    *at = place->at;
  else if (item->hasCentre || (item->end1 != NULL && item->end2 != NULL))
    *at = item->centre;
  else
    *at = component->ports[0].at;
  return 1;
}

void drawSupport(Item* item) {
  Vec at;
  if (!placeOf(item, &at)) return;
  putCube(item->drawing, at, item->size1.outside > 0 ? item->size1.outside * 1.25 : kPlainSize);
}

void drawWeld(Item* item) {
  Vec at;
  if (placeOf(item, &at)) putPoint(item->drawing, at);
}

void drawMessage(Item* item) {
  Vec at;
  if (item->component->textCount == 0) {
    itemFail(item, "expected a TEXT, found none");
    return;
  }
  if (placeOf(item, &at)) putTexts(item->drawing, item->component, at);
}

void drawMark(Item* item) {
  Vec at;
  if (!placeOf(item, &at)) return;
  putPoint(item->drawing, at);
  putTexts(item->drawing, item->component, at);
}
