// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_CHECK_JOINTS_H
#define VESK_TOOLS_CHECK_JOINTS_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "check/OpenEnds.h"
#include "check/PipeEnd.h"
#include "output/RecordLayout.h"
#include "vesk/GePoint.h"
#include "vesk/Geo.h"
#include "vesk/Recs.h"

namespace VeskTool {

// Two ends that face each other and do not meet as they should.
struct JointFault {
  enum class Kind { kGap, kOverlap, kOffset, kDiameter };

  Kind kind = Kind::kGap;
  PipeEnd end;  // the one of the later line
  PipeEnd other;
  double along = 0.0;   // from face to face; below zero: they overlap
  double across = 0.0;  // from axis to axis
};

// Finds ends of pipes that almost meet.
//
// Two ends face each other if their outward normals point against each other
// within five degrees and their middles are no further apart than the reach and
// half of the larger diameter. Of all that it faces each end has one nearest
// (the first of equal ones). Ends nearest to each other are a joint:
//
//   along the axis and across it within the tolerance   they meet; V203 if
//                                                       neither is a fitting and
//                                                       their diameters differ
//                                                       by more
//   across it by more                                   V202, an offset
//   else                                                V201, a gap or an overlap
//
// An end that meets another is done: what lies near besides is no joint. A
// cylinder shorter than three diameters (a flange, a gasket, an instrument), a
// pointed cone (half a valve) and a flat one (shorter than 0.4 of its larger
// diameter: a slice of something round) are fittings, wider than their pipe on
// purpose.
// Boxes, reducers and elbows of ducts have no such ends. Diameters within 1.5 in a
// hundred of each other are those of one nominal size, 168 and 168.4 for one, and
// nothing is said of them.
//
// An end that faces none is open unless it lies in another solid; see OpenEnds.h.
class Joints {
 public:
  explicit Joints(const JointOptions& options) : options_(options) {}

  // Keeps the ends of the element, if it has any that can be seen, and what ends may
  // meet. Without its lines the ends have no spans. `group` is that of its header,
  // see Solids; ends of what `isClosed` are never open.
  void add(const Vesk::Geo& geo, std::uint64_t line, const Vesk::Recs& lines = {},
           std::int32_t mode = Vesk::kTokens, std::uint64_t group = 0, bool isClosed = false);

  // Calls take for every fault, and takeOpen for every open end, each in the order
  // of lines.
  void find(const std::function<void(const JointFault&)>& take,
            const std::function<void(const OpenEnd&)>& takeOpen = {});

  const std::vector<PipeEnd>& ends() const { return ends_; }

 private:
  void addEnd(const GePoint& point, const GeVector& outward, PipeEnd end);

  JointOptions options_;
  std::vector<PipeEnd> ends_;
  Solids solids_;
};

// What is wrong with the joint of two ends, appended to `faults`. Lengths that are
// over a limit by less than 1e-6 are within it.
void judgeJoint(const PipeEnd& a, const PipeEnd& b, const JointOptions& options,
                std::vector<JointFault>& faults);

}  // namespace VeskTool

#endif
