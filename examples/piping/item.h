/* What is known of a component when its body is drawn. */
#ifndef PIPING_ITEM_H
#define PIPING_ITEM_H

#include "canvas.h"
#include "sizes.h"

/* A place this near (millimetres) to a line or to another place lies on it. */
#define kNear 1.0

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

Item itemOf(Drawing* drawing, size_t index);

/* Says what is odd about the component, which is drawn nevertheless. */
void itemRemark(const Item* item, const char* text);

/* Says why the component is not drawn; `reason` is a literal. */
void itemFail(Item* item, const char* reason);

/* Whether the component has two ends, a bore and a length; if not, it has failed. */
int itemHasBody(Item* item);

/* Diameters for the bore of a port. */
PipeSize itemSize(const Drawing* drawing, const Port* port);

/* The given port, or the first one of the component if that has no bore (or is NULL);
   NULL if none has a bore. */
const Port* itemWithBore(const Component* component, const Port* port);

/* Whether the file marks an end as flanged. */
int itemIsFlanged(const Port* end);

/*
 * The component that meets this one at `at`, NULL if there is none. Only the next few
 * in the file are looked at: files list a line in its order.
 */
const Component* itemNeighbour(const Item* item, Vec at);

/*
 * The direction in which the line arrives at `at` from the neighbour there; a zero
 * vector if that is not known.
 */
Vec itemDirectionInto(const Item* item, Vec at);

#endif
