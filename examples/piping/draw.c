#include "draw.h"

#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "bend.h"
#include "memory.h"
#include "sizes.h"
#include "vesk.h"

/* Shorter pieces (millimetres) have no length in a drawing. */
static const double kShortest = 0.01;
/* A place this near to a line or to another place lies on it. */
static const double kNear = 1;
/* Without a bore to go by (millimetres). */
static const double kPlainSize = 100;
static const double kTextHeight = 50;
enum { kLongestText = 512, kLargestNumber = 46655, kNeighbours = 8 };

/* ---- elements: each writes if there is something to write, and counts -------- */

static void putPoint(Drawing* drawing, Vec at) {
  vk_writePnt(at.v);
  ++drawing->made[kPoint];
}

static void putSegment(Drawing* drawing, Vec from, Vec to) {
  if (vecDistance(from, to) < kShortest) return;
  vk_writeSeg(from.v, to.v);
  ++drawing->made[kSegment];
}

static void putCylinder(Drawing* drawing, Vec from, Vec to, double diameter) {
  if (vecDistance(from, to) < kShortest) return;
  vk_writeCyl(from.v, to.v, diameter);
  ++drawing->made[kCylinder];
}

static void putCone(Drawing* drawing, Vec from, Vec to, double diameter1, double diameter2) {
  if (vecDistance(from, to) < kShortest) return;
  vk_writeCon(from.v, to.v, diameter1, diameter2);
  ++drawing->made[kCone];
}

static void putTorus(Drawing* drawing, Vec centre, Vec from, Vec to, double diameter) {
  vk_writeTor(centre.v, from.v, to.v, diameter);
  ++drawing->made[kTorus];
}

/* A cube with edges along the axes. */
static void putCube(Drawing* drawing, Vec middle, double edge) {
  const Vec half = {{edge / 2, edge / 2, edge / 2}};
  const Vec corner = vecSub(middle, half);
  Vec ends[3] = {corner, corner, corner};
  for (int i = 0; i < 3; ++i) ends[i].v[i] += edge;
  vk_writeBox(corner.v, ends[0].v, ends[1].v, ends[2].v);
  ++drawing->made[kBox];
}

/* A text to be read from the front; a line feed or another control character in
   it would break the record. */
static void putText(Drawing* drawing, const Component* component, Vec at, const char* text) {
  const double direction[3] = {1, 0, 0};
  const double up[3] = {0, 0, 1};
  size_t length = strlen(text);
  if (length > kLongestText) {
    reportRemark(drawing->report, component->name, component->line,
                 "expected a text of at most 512 bytes; its end is left out");
    length = kLongestText;
    /* Not in the middle of a UTF-8 character. */
    while (length > kLongestText - 4 && ((unsigned char)text[length] & 0xC0) == 0x80) --length;
  }
  char* copy = memoryText(text, length);
  for (char* c = copy; *c != '\0'; ++c)
    if ((unsigned char)*c < ' ') *c = ' ';
  vk_writeTxt(at.v, direction, up, kTextHeight * 0.6, kTextHeight, 1, 0, copy);
  free(copy);
  ++drawing->made[kText];
}

/* ---- what a component knows ------------------------------------------------- */

/* A component on its way to paper: its ends, centre and diameters in one place. */
typedef struct Item {
  Drawing* drawing;
  const Component* component;
  size_t index; /* of the component */
  const Port* end1;
  const Port* end2;
  const Port* branch1;
  Vec centre; /* CENTRE-POINT, else the middle of the ends */
  int hasCentre;
  PipeSize size1; /* of end1; of the other end if it has no bore */
  PipeSize size2;
  const char* failure; /* why it is not drawn; NULL if it is */
} Item;

static void remark(const Item* item, const char* text) {
  reportRemark(item->drawing->report, item->component->name, item->component->line, text);
}

static void fail(Item* item, const char* reason) { item->failure = reason; }

static PipeSize sizeOf(const Drawing* drawing, const Port* port) {
  PipeSize size = pipeSize(port->bore, port->inches);
  if (!drawing->boreAsDiameter) return size;
  size.outside = port->bore;
  if (size.flange < size.outside) size.flange = size.outside * 1.3;
  return size;
}

/* The given port, or the first one of the component that has a bore. */
static const Port* withBore(const Component* component, const Port* port) {
  if (port != NULL && port->bore > 0) return port;
  for (size_t i = 0; i < component->portCount; ++i)
    if (component->ports[i].bore > 0) return &component->ports[i];
  return NULL;
}

static Item itemOf(Drawing* drawing, size_t index) {
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
  const Port* bore1 = withBore(component, item.end1);
  const Port* bore2 =
      withBore(component, item.end2 != NULL && item.end2->bore > 0 ? item.end2 : item.end1);
  if (bore1 != NULL) item.size1 = sizeOf(drawing, bore1);
  if (bore2 != NULL) item.size2 = sizeOf(drawing, bore2);
  return item;
}

/* Whether the component has two ends, a bore and a length; if not, it has failed. */
static int hasBody(Item* item) {
  if (item->end1 == NULL || item->end2 == NULL) {
    fail(item, item->end1 == NULL ? "expected two END-POINTs, found none"
                                  : "expected two END-POINTs, found one");
  } else if (item->size1.outside <= 0) {
    fail(item, "expected a bore behind an END-POINT, found none");
  } else if (vecDistance(item->end1->at, item->end2->at) < kShortest &&
             (!item->hasCentre || vecDistance(item->end1->at, item->centre) < kShortest)) {
    fail(item, "zero length");
  }
  return item->failure == NULL;
}

static int isBodyShape(Shape shape) {
  return shape != kShapeWeld && shape != kShapeSupport && shape != kShapeMessage &&
         shape != kShapeMark && shape != kShapeNothing;
}

/*
 * The component that meets this one at `at`, and the place of its port there.
 * Only the next few in the file are looked at: files list a line in its order.
 */
static const Component* neighbourAt(const Item* item, Vec at) {
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

/*
 * The direction in which the line arrives at `at` from the neighbour there; a
 * zero vector if that is not known.
 */
static Vec directionInto(const Item* item, Vec at) {
  const Vec none = {{0, 0, 0}};
  const Component* other = neighbourAt(item, at);
  if (other == NULL) return none;
  /* From its centre if it has one, else from its far end. */
  const Port* from = pcfPort(other, kPortCentre, 0);
  for (size_t i = 0; from == NULL && i < other->portCount; ++i)
    if (vecDistance(other->ports[i].at, at) >= kNear) from = &other->ports[i];
  return from == NULL ? none : vecUnit(vecSub(at, from->at));
}

/* ---- bodies ------------------------------------------------------------------ */

/* A straight piece: a cylinder, or a cone if its ends differ. */
static void putPiece(Drawing* drawing, Vec from, Vec to, double diameter1, double diameter2) {
  if (diameter1 == diameter2)
    putCylinder(drawing, from, to, diameter1);
  else
    putCone(drawing, from, to, diameter1, diameter2);
}

static void drawBranches(const Item* item, double widening) {
  for (size_t i = 0;; ++i) {
    const Port* branch = pcfPort(item->component, kPortBranch, i);
    if (branch == NULL) return;
    const Port* bore = withBore(item->component, branch);
    const double diameter = bore == NULL ? 0 : sizeOf(item->drawing, bore).outside;
    if (vecDistance(item->centre, branch->at) < kShortest) {
      remark(item, "expected a branch away from the CENTRE-POINT; the branch has zero length");
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
  for (size_t i = 2;; ++i) {
    const Port* end = pcfPort(item->component, kPortEnd, i);
    if (end == NULL) return;
    const Port* bore = withBore(item->component, end);
    if (bore == NULL || vecDistance(item->centre, end->at) < kShortest) {
      remark(item, "a further END-POINT has no bore or lies in the centre; left out");
      continue;
    }
    const double diameter = sizeOf(item->drawing, bore).outside * widening;
    putCylinder(item->drawing, item->centre, end->at, diameter);
    putSegment(item->drawing, item->centre, end->at);
  }
}

static void drawStraight(Item* item, double widening) {
  if (item->component->portCount == 1 && item->end1 == NULL &&
      item->component->ports[0].role == kPortPlace) {
    /* A dial or a balloon: it has a place, but no ends. */
    putPoint(item->drawing, item->component->ports[0].at);
    remark(item, "no END-POINT; drawn as a point at its CO-ORDS");
    return;
  }
  if (!hasBody(item)) return;
  drawRun(item, widening);
  drawFurtherEnds(item, widening);
  drawBranches(item, widening);
}

static void drawTee(Item* item) {
  const int run = item->end1 != NULL && item->end2 != NULL;
  if (run && !hasBody(item)) return;
  if (!run && !(item->hasCentre && item->branch1 != NULL)) {
    fail(item, "expected two END-POINTs, or a CENTRE-POINT and a BRANCH1-POINT");
    return;
  }
  if (withBore(item->component, item->branch1) == NULL) {
    fail(item, "expected a bore behind a point, found none");
    return;
  }
  if (!run && vecDistance(item->centre, item->branch1->at) < kShortest) {
    fail(item, "zero length");
    return;
  }
  if (run) drawRun(item, 1);
  if (item->branch1 == NULL) remark(item, "expected a BRANCH1-POINT; drawn without a branch");
  if (run && !item->hasCentre && item->branch1 != NULL)
    remark(item, "expected a CENTRE-POINT; the branch leaves the middle of the run");
  drawBranches(item, 1);
}

/* An olet narrows from its foot on the pipe to the branch. */
static void drawOlet(Item* item) {
  const Port* to = item->branch1 != NULL ? item->branch1 : item->end1;
  const Port* bore = withBore(item->component, to);
  if (item->hasCentre && to != NULL) {
    if (bore == NULL)
      fail(item, "expected a bore behind the BRANCH1-POINT, found none");
    else if (vecDistance(item->centre, to->at) < kShortest)
      fail(item, "zero length");
    if (item->failure != NULL) return;
    putCylinder(item->drawing, item->centre, to->at, sizeOf(item->drawing, bore).outside);
    putSegment(item->drawing, item->centre, to->at);
    return;
  }
  fail(item, "expected a CENTRE-POINT and a BRANCH1-POINT");
}

/* ---- elbows ------------------------------------------------------------------ */

static double larger(double a, double b) { return a > b ? a : b; }

/* Half a turn from end to end with its farthest point towards `outwards`: two
   quarters. */
static void drawHalfTurn(const Item* item, Vec outwards, double diameter) {
  const Vec from = item->end1->at;
  const Vec to = item->end2->at;
  const Vec chord = vecUnit(vecSub(to, from));
  const Vec middle = vecBetween(from, to, 0.5);
  const Vec across = vecUnit(vecSub(outwards, vecScale(chord, vecDot(outwards, chord))));
  const Vec top = vecAdd(middle, vecScale(across, vecDistance(from, to) / 2));
  putTorus(item->drawing, middle, from, top, diameter);
  putTorus(item->drawing, middle, top, to, diameter);
  putSegment(item->drawing, from, top);
  putSegment(item->drawing, top, to);
}

/*
 * Where an elbow of half a turn goes, if this is one: its tangents never meet, so
 * its CENTRE-POINT is either its farthest point, and the ANGLE says that it turns
 * by 180 degrees, or the middle of the ends, and the line arrives across them.
 */
static int isHalfTurn(const Item* item, Vec* outwards) {
  const Vec from = item->end1->at;
  const Vec to = item->end2->at;
  const int marked = fabs(item->component->angle - 180) < 1;
  if (vecDistance(from, to) < kShortest) return 0;
  if (vecDistanceToLine(item->centre, from, to) >= kNear) {
    *outwards = vecSub(item->centre, vecBetween(from, to, 0.5));
    return marked;
  }
  if (vecDistance(item->centre, vecBetween(from, to, 0.5)) >= kNear) return 0;
  const Vec chord = vecUnit(vecSub(to, from));
  const Vec ends[2] = {from, to};
  for (int i = 0; i < 2; ++i) {
    *outwards = directionInto(item, ends[i]);
    if (vecLength(*outwards) > 0.5 && fabs(vecDot(*outwards, chord)) < 0.1) return 1;
  }
  return 0;
}

static void drawElbow(Item* item) {
  if (!hasBody(item)) return;
  if (!item->hasCentre) {
    fail(item, "expected a CENTRE-POINT, found none");
    return;
  }
  Drawing* drawing = item->drawing;
  const Vec from = item->end1->at;
  const Vec to = item->end2->at;
  double diameter = larger(item->size1.outside, item->size2.outside);
  if (item->size1.outside != item->size2.outside)
    remark(item, "its ends have different bores; drawn with the larger one");

  Vec outwards;
  const int half = isHalfTurn(item, &outwards);
  const Bend bend = bendFrom(from, to, item->centre);
  if (half) {
    drawHalfTurn(item, outwards, diameter);
  } else if (bend.form == kBendArc && bend.radius >= diameter / 2) {
    putCylinder(drawing, from, bend.start, diameter);
    putTorus(drawing, bend.centre, bend.start, bend.end, diameter);
    putCylinder(drawing, bend.end, to, diameter);
    putSegment(drawing, from, item->centre);
    putSegment(drawing, item->centre, to);
  } else {
    if (bend.form == kBendStraight)
      remark(item, "ends and CENTRE-POINT lie on one line; drawn straight");
    else if (bend.form == kBendFolded)
      remark(item, "both ends lie on the same side of the CENTRE-POINT; drawn as straight pieces");
    else
      remark(item, "the arc is narrower than the pipe; drawn as a mitre");
    putCylinder(drawing, from, item->centre, diameter);
    putCylinder(drawing, item->centre, to, diameter);
    putSegment(drawing, from, item->centre);
    putSegment(drawing, item->centre, to);
  }
  drawBranches(item, 1);
}

/* ---- flanges and what closes a line ------------------------------------------ */

static int isFlanged(const Port* port) { return strcmp(port->end, "FL") == 0; }

static int isFlangedShape(Shape shape) {
  return shape == kShapeGasket || shape == kShapeFlange || shape == kShapeBlind;
}

/* Whether the face of a flange is at its second end: by the kinds of end if they
   are given, else by what it meets there. */
static int faceIsSecond(const Item* item) {
  if (isFlanged(item->end1) != isFlanged(item->end2)) return isFlanged(item->end2);
  const Component* first = neighbourAt(item, item->end1->at);
  const Component* second = neighbourAt(item, item->end2->at);
  if (first != NULL && isFlangedShape(first->shape)) return 0;
  return second != NULL && isFlangedShape(second->shape);
}

/* A disc at the face, two fifths of the length, and a hub that narrows to the pipe. */
static void drawFlange(Item* item) {
  if (!hasBody(item)) return;
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
static void drawStubEnd(Item* item) {
  if (!hasBody(item)) return;
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
  if (end == NULL || item->size1.outside <= 0) return hasBody(item);
  *from = end->at;
  if (item->end2 != NULL) {
    *to = item->end2->at;
    return hasBody(item);
  }
  const Vec direction = item->hasCentre && vecDistance(item->centre, end->at) >= kShortest
                            ? vecUnit(vecSub(item->centre, end->at))
                            : directionInto(item, end->at);
  if (vecLength(direction) < 0.5) {
    fail(item, "expected two END-POINTs, found one and no component that ends there");
    return 0;
  }
  *to = vecAdd(end->at, vecScale(direction, part * item->size1.outside));
  return 1;
}

static void drawBlind(Item* item) {
  Vec from;
  Vec to;
  if (!drawsOnward(item, 0.2, &from, &to)) return;
  putCylinder(item->drawing, from, to, item->size1.flange);
  putSegment(item->drawing, from, to);
}

/* A gasket reaches from the pipe half of the way to the rim of the flange. */
static void drawGasket(Item* item) {
  if (!hasBody(item)) return;
  const double diameter = (item->size1.outside + item->size1.flange) / 2;
  putCylinder(item->drawing, item->end1->at, item->end2->at, diameter);
  putSegment(item->drawing, item->end1->at, item->end2->at);
}

/* A cap is open where the line arrives and narrows to half of the diameter. */
static void drawCap(Item* item) {
  Vec from;
  Vec to;
  if (!drawsOnward(item, 0.4, &from, &to)) return;
  if (item->end2 != NULL && neighbourAt(item, from) == NULL && neighbourAt(item, to) != NULL) {
    const Vec other = from;
    from = to;
    to = other;
  }
  putCone(item->drawing, from, to, item->size1.outside, item->size1.outside / 2);
  putSegment(item->drawing, from, to);
}

/* ---- valves, reducers --------------------------------------------------------- */

/* A cone from the end to a point in the centre, as wide as a flange if it ends in one. */
static void drawValveLeg(const Item* item, const Port* end) {
  const Port* bore = withBore(item->component, end);
  if (bore == NULL || vecDistance(end->at, item->centre) < kShortest) {
    remark(item, "one of its ends has no bore or lies in its centre; left out");
    return;
  }
  const PipeSize size = sizeOf(item->drawing, bore);
  putCone(item->drawing, end->at, item->centre, isFlanged(end) ? size.flange : size.outside, 0);
  putSegment(item->drawing, end->at, item->centre);
}

static void drawValve(Item* item) {
  if (!hasBody(item)) return;
  for (size_t i = 0; i < item->component->portCount; ++i) {
    const Port* port = &item->component->ports[i];
    if (port->role == kPortEnd || port->role == kPortBranch) drawValveLeg(item, port);
  }
}

static void drawReducer(Item* item) {
  if (!hasBody(item)) return;
  if (item->end1->bore <= 0 || item->end2->bore <= 0)
    remark(item, "expected a bore behind both END-POINTs; the one given is taken for both");
  putCone(item->drawing, item->end1->at, item->end2->at, item->size1.outside, item->size2.outside);
  putSegment(item->drawing, item->end1->at, item->end2->at);
  drawBranches(item, 1);
}

/* ---- what stands at one place ------------------------------------------------- */

/* CO-ORDS, else the centre, else the middle of the ends, else the first place. */
static int placeOf(Item* item, Vec* at) {
  const Component* component = item->component;
  const Port* place = pcfPort(component, kPortPlace, 0);
  if (component->portCount == 0) {
    fail(item, "expected CO-ORDS, found none");
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

static void drawSupport(Item* item) {
  Vec at;
  if (!placeOf(item, &at)) return;
  putCube(item->drawing, at, item->size1.outside > 0 ? item->size1.outside * 1.25 : kPlainSize);
}

static void drawWeld(Item* item) {
  Vec at;
  if (placeOf(item, &at)) putPoint(item->drawing, at);
}

/* The texts below each other. */
static void putTexts(const Item* item, Vec at) {
  for (size_t i = 0; i < item->component->textCount; ++i) {
    putText(item->drawing, item->component, at, item->component->texts[i]);
    at.v[2] -= kTextHeight * 1.5;
  }
}

static void drawMessage(Item* item) {
  Vec at;
  if (item->component->textCount == 0) {
    fail(item, "expected a TEXT, found none");
    return;
  }
  if (placeOf(item, &at)) putTexts(item, at);
}

static void drawMark(Item* item) {
  Vec at;
  if (!placeOf(item, &at)) return;
  putPoint(item->drawing, at);
  putTexts(item, at);
}

/* A word that is not known: if it has two ends it is drawn like a piece of pipe, so
   that the line has no gap. */
static void drawUnknown(Item* item) {
  if (item->component->portCount == 0) {
    fail(item, "unknown component");
    return;
  }
  drawStraight(item, 1);
  if (item->failure == NULL)
    remark(item, "unknown component; drawn like a piece of pipe");
  else
    fail(item, "unknown component without two END-POINTs and a bore");
}

/* ---- all ----------------------------------------------------------------------- */

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

static long madeSoFar(const Drawing* drawing) {
  long made = 0;
  for (int i = 0; i < kElements; ++i) made += drawing->made[i];
  return made;
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
    const long before = madeSoFar(drawing);
    drawItem(&item);
    if (component->shape == kShapeNothing) {
      reportOutcome(drawing->report, component->name, component->line, kNothingToDraw, "");
      continue;
    }
    if (item.failure == NULL && madeSoFar(drawing) == before) fail(&item, "zero length");
    if (!drawing->boreAsDiameter && hasUnknownBore(component)) ++drawing->unknownBores;
    reportOutcome(drawing->report, component->name, component->line,
                  item.failure == NULL ? kDrawn : kNotDrawn,
                  item.failure == NULL ? "" : item.failure);
  }
}
