
#include "bodies.h"

static int isFlangedShape(Shape shape) {
  return shape == kShapeGasket || shape == kShapeFlange || shape == kShapeBlind;
}

/* Whether the face of a flange is at its second end: by the kinds of end if they
   are given, else by what it meets there. */
static int faceIsSecond(const Item* item) {
  if (itemIsFlanged(item->end1) != itemIsFlanged(item->end2)) return itemIsFlanged(item->end2);
  const Component* first = itemNeighbour(item, item->end1->at);
  const Component* second = itemNeighbour(item, item->end2->at);
  if (first != NULL && isFlangedShape(first->shape)) return 0;
  return second != NULL && isFlangedShape(second->shape);
}

/* A disc at the face, two fifths of the length, and a hub that narrows to the pipe. */
void drawFlange(Item* item) {
  if (!itemHasBody(item)) return;
  const int second = faceIsSecond(item);
  const Vec face = second ? item->end2->at : item->end1->at;
  const Vec neck = second ? item->end1->at : item->end2->at;
  const double outside = second ? item->size1.outside : item->size2.outside;
  const double flange = second ? item->size2.flange : item->size1.flange;
  const Vec back = vecBetween(face, neck, 0.4);
  putCylinder(item->drawing, face, back, flange);
  putCone(item->drawing, back, neck, outside + (flange - outside) * 0.4, outside);
  putSegment(item->drawing, face, neck);
}

/* A collar at the face, a tenth of the length, on a piece of pipe. */
void drawStubEnd(Item* item) {
  if (!itemHasBody(item)) return;
  const int second = faceIsSecond(item);
  const Vec face = second ? item->end2->at : item->end1->at;
  const Vec neck = second ? item->end1->at : item->end2->at;
  const double outside = item->size1.outside;
  const Vec back = vecBetween(face, neck, 0.1);
  putCylinder(item->drawing, face, back, (outside + item->size1.flange) / 2);
  putCylinder(item->drawing, back, neck, outside);
  putSegment(item->drawing, face, neck);
}

/* Some files give one END-POINT to what closes a line: it goes on from there by a
   part of the diameter. */
static int drawsOnward(Item* item, double part, Vec* from, Vec* to) {
  const Port* end = item->end1;
  if (end == NULL || item->size1.outside <= 0) return itemHasBody(item);
  *from = end->at;
  if (item->end2 != NULL) {
    *to = item->end2->at;
    return itemHasBody(item);
  }
  const Vec direction = item->hasCentre && vecDistance(item->centre, end->at) >= kShortest
                            ? vecUnit(vecSub(item->centre, end->at))
                            : itemDirectionInto(item, end->at);
  if (vecLength(direction) < 0.5) {
    itemFail(item, "expected two END-POINTs, found one and no component that ends there");
    return 0;
  }
  *to = vecAdd(end->at, vecScale(direction, part * item->size1.outside));
  return 1;
}

void drawBlind(Item* item) {
  Vec from;
  Vec to;
  if (!drawsOnward(item, 0.2, &from, &to)) return;
  putCylinder(item->drawing, from, to, item->size1.flange);
  putSegment(item->drawing, from, to);
}

/* A gasket reaches from the pipe half of the way to the rim of the flange. */
void drawGasket(Item* item) {
  if (!itemHasBody(item)) return;
  const double diameter = (item->size1.outside + item->size1.flange) / 2;
  putCylinder(item->drawing, item->end1->at, item->end2->at, diameter);
  putSegment(item->drawing, item->end1->at, item->end2->at);
}

/* A cap is open where the line arrives and narrows to half of the diameter. */
void drawCap(Item* item) {
  Vec from;
  Vec to;
  if (!drawsOnward(item, 0.4, &from, &to)) return;
  if (item->end2 != NULL && itemNeighbour(item, from) == NULL && itemNeighbour(item, to) != NULL) {
    const Vec other = from;
    from = to;
    to = other;
  }
  putCone(item->drawing, from, to, item->size1.outside, item->size1.outside / 2);
  putSegment(item->drawing, from, to);
}
