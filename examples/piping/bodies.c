#include "bodies.h"

#include <string.h>

void drawBranches(const Item* item, double widening) {
  for (size_t i = 0;; ++i) {
    const Port* branch = pcfPort(item->component, kPortBranch, i);
    if (branch == NULL) return;
    const Port* bore = itemWithBore(item->component, branch);
    const double diameter = bore == NULL ? 0 : itemSize(item->drawing, bore).outside;
    if (vecDistance(item->centre, branch->at) < kShortest) {
      itemRemark(item, "expected a branch away from the CENTRE-POINT; the branch has zero length");
      continue;
    }
    putCylinder(item->drawing, item->centre, branch->at, diameter * widening);
    putSegment(item->drawing, item->centre, branch->at);
  }
}

/* From end to end; by way of the centre if that lies beside the line. */
static void drawRun(const Item* item, double widening) {
  Drawing* drawing = item->drawing;
  const Vec from = item->end1->at;
  const Vec to = item->end2->at;
  const double diameter1 = item->size1.outside * widening;
  const double diameter2 = item->size2.outside * widening;
  if (vecDistanceToLine(item->centre, from, to) < kNear) {
    putPiece(drawing, from, to, diameter1, diameter2);
    putSegment(drawing, from, to);
    return;
  }
  putCylinder(drawing, from, item->centre, diameter1);
  putCylinder(drawing, item->centre, to, diameter2);
  putSegment(drawing, from, item->centre);
  putSegment(drawing, item->centre, to);
}

/* Further END-POINTs of a component with many. */
static void drawFurtherEnds(const Item* item, double widening) {
  if (pcfPort(item->component, kPortEnd, 2) != NULL &&
      strncmp(item->component->name, "MULTI-PORT", 10) != 0)
    itemRemark(item, "expected two END-POINTs, found more; those are drawn from its middle");
  for (size_t i = 2;; ++i) {
    const Port* end = pcfPort(item->component, kPortEnd, i);
    if (end == NULL) return;
    const Port* bore = itemWithBore(item->component, end);
    if (bore == NULL || vecDistance(item->centre, end->at) < kShortest) {
      itemRemark(item, "a further END-POINT has no bore or lies in the centre; left out");
      continue;
    }
    const double diameter = itemSize(item->drawing, bore).outside * widening;
    putCylinder(item->drawing, item->centre, end->at, diameter);
    putSegment(item->drawing, item->centre, end->at);
  }
}

/* Whether the component has a place, but no two ends to draw a body between. */
static int isSpot(const Item* item) {
  if (item->end2 != NULL || item->component->portCount == 0) return 0;
  return item->end1 == NULL ? pcfPort(item->component, kPortPlace, 0) != NULL
                            : strncmp(item->component->name, "INSTRUMENT", 10) == 0;
}

void drawStraight(Item* item, double widening) {
  if (isSpot(item)) {
    const Port* place = pcfPort(item->component, kPortPlace, 0);
    putPoint(item->drawing, place != NULL ? place->at : item->end1->at);
    /* A dial is one by nature. */
    if (strncmp(item->component->name, "INSTRUMENT", 10) != 0)
      itemRemark(item, "expected two END-POINTs; drawn as a point at its CO-ORDS");
    return;
  }
  if (!itemHasBody(item)) return;
  drawRun(item, widening);
  drawFurtherEnds(item, widening);
  drawBranches(item, widening);
}

void drawTee(Item* item) {
  const int run = item->end1 != NULL && item->end2 != NULL;
  if (run && !itemHasBody(item)) return;
  if (!run && !(item->hasCentre && item->branch1 != NULL)) {
    itemFail(item, "expected two END-POINTs, or a CENTRE-POINT and a BRANCH1-POINT");
    return;
  }
  if (itemWithBore(item->component, item->branch1) == NULL) {
    itemFail(item, "expected a bore behind a point, found none");
    return;
  }
  if (!run && vecDistance(item->centre, item->branch1->at) < kShortest) {
    itemFail(item, "zero length");
    return;
  }
  if (run) drawRun(item, 1);
  if (item->branch1 == NULL) itemRemark(item, "expected a BRANCH1-POINT; drawn without a branch");
  if (run && !item->hasCentre && item->branch1 != NULL)
    itemRemark(item, "expected a CENTRE-POINT; the branch leaves the middle of the run");
  drawBranches(item, 1);
}

/* The branch alone: the pipe on which it sits is a component of its own. */
void drawOlet(Item* item) {
  const Port* to = item->branch1 != NULL ? item->branch1 : item->end1;
  const Port* bore = itemWithBore(item->component, to);
  if (item->hasCentre && to != NULL) {
    if (bore == NULL)
      itemFail(item, "expected a bore behind the BRANCH1-POINT, found none");
    else if (vecDistance(item->centre, to->at) < kShortest)
      itemFail(item, "zero length");
    if (item->failure != NULL) return;
    putCylinder(item->drawing, item->centre, to->at, itemSize(item->drawing, bore).outside);
    putSegment(item->drawing, item->centre, to->at);
    return;
  }
  itemFail(item, "expected a CENTRE-POINT and a BRANCH1-POINT");
}

/* A cone from the end to a point in the centre, as wide as a flange if it ends in one. */
static void drawValveLeg(const Item* item, const Port* end) {
  const Port* bore = itemWithBore(item->component, end);
  if (bore == NULL || vecDistance(end->at, item->centre) < kShortest) {
    itemRemark(item, "one of its ends has no bore or lies in its centre; left out");
    return;
  }
  const PipeSize size = itemSize(item->drawing, bore);
  putCone(item->drawing, end->at, item->centre, itemIsFlanged(end) ? size.flange : size.outside, 0);
  putSegment(item->drawing, end->at, item->centre);
}

void drawValve(Item* item) {
  if (!itemHasBody(item)) return;
  for (size_t i = 0; i < item->component->portCount; ++i) {
    const Port* port = &item->component->ports[i];
    if (port->role == kPortEnd || port->role == kPortBranch) drawValveLeg(item, port);
  }
}

void drawReducer(Item* item) {
  if (!itemHasBody(item)) return;
  if (item->end1->bore <= 0 || item->end2->bore <= 0)
    itemRemark(item, "expected a bore behind both END-POINTs; the one given is taken for both");
  putCone(item->drawing, item->end1->at, item->end2->at, item->size1.outside, item->size2.outside);
  putSegment(item->drawing, item->end1->at, item->end2->at);
  drawBranches(item, 1);
}

/* A word that is not known: if it has two ends it is drawn like a piece of pipe, so
   that the line has no gap. */
void drawUnknown(Item* item) {
  if (item->component->portCount == 0) {
    itemFail(item, "unknown component");
    return;
  }
  drawStraight(item, 1);
  if (item->failure == NULL)
    itemRemark(item, "unknown component; drawn like a piece of pipe");
  else
    itemFail(item, "unknown component without two END-POINTs and a bore");
}
