// SPDX-License-Identifier: MIT
#include "prims/EarRing.h"

namespace Vesk::Ears {
namespace {

// How many neighbours of v the sweep line meets after v.
int countEdgesAhead(const Ring& ring, Index v) {
  return (isBefore(ring.at(v), ring.at(ring.before(v))) ? 1 : 0) +
         (isBefore(ring.at(v), ring.at(ring.after(v))) ? 1 : 0);
}

}  // namespace

std::vector<Index> sweepOrder(const Ring& ring) {
  struct Event {
    PlanePoint at;
    int edgesAhead;
    Index vertex;
  };
  std::vector<Event> events;
  events.reserve(ring.size());
  for (const Index v : ring.vertices()) {
    events.push_back({ring.at(v), countEdgesAhead(ring, v), v});
  }
  std::sort(events.begin(), events.end(), [](const Event& a, const Event& b) {
    if (!(a.at == b.at)) return isBefore(a.at, b.at);
    if (a.edgesAhead != b.edgesAhead) return a.edgesAhead < b.edgesAhead;
    return a.vertex < b.vertex;
  });
  std::vector<Index> order;
  order.reserve(events.size());
  for (const Event& e : events) order.push_back(e.vertex);
  return order;
}

}  // namespace Vesk::Ears
