#include "canvas.h"

#include <stdlib.h>
#include <string.h>

#include "memory.h"
#include "vesk.h"

static const double kTextHeight = 50;
enum { kLongestText = 512 };

void putPoint(Drawing* drawing, Vec at) {
  vk_writePnt(at.v);
  ++drawing->made[kPoint];
}

void putSegment(Drawing* drawing, Vec from, Vec to) {
  if (vecDistance(from, to) < kShortest) return;
  vk_writeSeg(from.v, to.v);
  ++drawing->made[kSegment];
}

void putCylinder(Drawing* drawing, Vec from, Vec to, double diameter) {
  if (vecDistance(from, to) < kShortest) return;
  vk_writeCyl(from.v, to.v, diameter);
  ++drawing->made[kCylinder];
}

void putCone(Drawing* drawing, Vec from, Vec to, double diameter1, double diameter2) {
  if (vecDistance(from, to) < kShortest) return;
  vk_writeCon(from.v, to.v, diameter1, diameter2);
  ++drawing->made[kCone];
}

void putTorus(Drawing* drawing, Vec centre, Vec from, Vec to, double diameter) {
  vk_writeTor(centre.v, from.v, to.v, diameter);
  ++drawing->made[kTorus];
}

void putCube(Drawing* drawing, Vec middle, double edge) {
  const Vec half = {{edge / 2, edge / 2, edge / 2}};
  const Vec corner = vecSub(middle, half);
  Vec ends[3] = {corner, corner, corner};
  for (int i = 0; i < 3; ++i) ends[i].v[i] += edge;
  vk_writeBox(corner.v, ends[0].v, ends[1].v, ends[2].v);
  ++drawing->made[kBox];
}

/* A line feed or another control character in a text would break its record. */
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

void putTexts(Drawing* drawing, const Component* component, Vec at) {
  for (size_t i = 0; i < component->textCount; ++i) {
    putText(drawing, component, at, component->texts[i]);
    at.v[2] -= kTextHeight * 1.5;
  }
}

void putPiece(Drawing* drawing, Vec from, Vec to, double diameter1, double diameter2) {
  if (diameter1 == diameter2)
    putCylinder(drawing, from, to, diameter1);
  else
    putCone(drawing, from, to, diameter1, diameter2);
}

long putSoFar(const Drawing* drawing) {
  long made = 0;
  for (int i = 0; i < kElements; ++i) made += drawing->made[i];
  return made;
}
