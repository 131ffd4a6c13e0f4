#include <math.h>

#include "bend.h"
#include "bodies.h"

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
    *outwards = itemDirectionInto(item, ends[i]);
    if (vecLength(*outwards) > 0.5 && fabs(vecDot(*outwards, chord)) < 0.1) return 1;
  }
  return 0;
}

void drawElbow(Item* item) {
  if (!itemHasBody(item)) return;
  if (!item->hasCentre) {
    itemFail(item, "expected a CENTRE-POINT, found none");
    return;
  }
  Drawing* drawing = item->drawing;
  const Vec from = item->end1->at;
  const Vec to = item->end2->at;
  double diameter = larger(item->size1.outside, item->size2.outside);
  if (item->size1.outside != item->size2.outside)
    itemRemark(item, "its ends have different bores; drawn with the larger one");

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
      itemRemark(item, "ends and CENTRE-POINT lie on one line; drawn straight");
    else if (bend.form == kBendFolded)
      itemRemark(item,
                 "both ends lie on the same side of the CENTRE-POINT; drawn as straight pieces");
    else
      itemRemark(item, "the arc is narrower than the pipe; drawn as a mitre");
    putCylinder(drawing, from, item->centre, diameter);
    putCylinder(drawing, item->centre, to, diameter);
    putSegment(drawing, from, item->centre);
    putSegment(drawing, item->centre, to);
  }
  drawBranches(item, 1);
}
