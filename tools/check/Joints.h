#ifndef VESK_TOOLS_CHECK_JOINTS_H
#define VESK_TOOLS_CHECK_JOINTS_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "ge/GePoint.h"
#include "output/RecordLayout.h"
#include "output/Recs.h"
#include "prims/Geo.h"

namespace VeskTool {

// Where numbers stand in the lines of their element.
struct NumberSpan {
  std::uint16_t line = 0;    // index of the line
  std::uint16_t column = 0;  // of the first character, from 1, in bytes; 0: unknown
  std::uint16_t last = 0;    // of the last one
  std::uint16_t inside = 0;  // bytes before it that go on with a letter of UTF-8
};

// An end of a cylinder, cone or torus.
struct PipeEnd {
  GePoint point;     // the middle of the face
  GeVector outward;  // unit normal of the face
  double diameter = 0.0;
  std::uint64_t line = 0;     // of the element
  std::uint32_t element = 0;  // the two ends of an element have the same
  bool isFitting = false;     // of something wider than its pipe on purpose
  NumberSpan place;           // the numbers that say where the end is
  NumberSpan width;           // its diameter
};

struct JointOptions {
  double tolerance = 0.1;  // up to here two ends meet
  double reach = 10.0;     // ends further apart have nothing to do with each other
};

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
// cylinder shorter than three diameters (a flange, a gasket, an instrument) and
// a pointed cone (half a valve) are fittings, wider than their pipe on purpose.
// Boxes, reducers and elbows of ducts have no such ends.
class Joints {
 public:
  explicit Joints(const JointOptions& options) : options_(options) {}

  // Keeps the ends of the element, if it has any that can be seen. Without its
  // lines the ends have no spans.
  void add(const Vesk::Geo& geo, std::uint64_t line, const Vesk::Recs& lines = {},
           std::int32_t mode = Vesk::kTokens);

  // Calls take for every fault, in the order of lines.
  void find(const std::function<void(const JointFault&)>& take) const;

  const std::vector<PipeEnd>& ends() const { return ends_; }

 private:
  void addEnd(const GePoint& point, const GeVector& outward, PipeEnd end);

  JointOptions options_;
  std::vector<PipeEnd> ends_;
  std::uint32_t elements_ = 0;
};

// The distance of the middles if the two ends face each other, else nothing;
// the whole rule of what a joint may be.
bool areFacing(const PipeEnd& a, const PipeEnd& b, const JointOptions& options, double& distance);

// What is wrong with the joint of two ends, appended to `faults`. Lengths that are
// over a limit by less than 1e-6 are within it.
void judgeJoint(const PipeEnd& a, const PipeEnd& b, const JointOptions& options,
                std::vector<JointFault>& faults);

}  // namespace VeskTool

#endif
