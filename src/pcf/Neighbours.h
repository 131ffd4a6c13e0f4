// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_NEIGHBOURS_H
#define VESK_PCF_NEIGHBOURS_H

#include <cstddef>
#include <optional>

#include "pcf/Joints.h"
#include "pcf/Plan.h"

namespace Vesk::Pcf {

// Which of two ends, and whether anything said so.
struct Side {
  std::size_t index = 0;
  bool isGuess = false;
};

// What the components that meet a component tell about it.
class Neighbours {
 public:
  Neighbours(const Plan& plan, const Joints& joints) : plan_(plan), joints_(joints) {}

  // The unit vector from the point into what meets its component there; null if
  // nothing does, or nothing that has a direction.
  GeVector lineAt(const Point& point) const { return lineAt(point, false); }

  // The same; where only a reducer is met, whose own axis may slant, that axis.
  GeVector roughLineAt(const Point& point) const { return lineAt(point, true); }

  // Whether anything meets the end of a straight component there, or up to 10 mm
  // further along.
  bool isMet(const Point& end, const Point& opposite) const {
    return meetsAt(end, opposite) != Meets::kOpen;
  }

  // Which of two ends of a flange is its face. In this order: the kinds of the ends;
  // gaskets, flanges, bolts and equipment, which meet a face; pipes, fittings and
  // welds, which meet the other end; valves and the like, which are mates unless they
  // are welded; what lies up to 10 mm further along; an open end.
  Side faceOf(const Point& first, const Point& second) const;

  // Which of two ends of what closes a line the line arrives at.
  Side arrivalOf(const Point& first, const Point& second, Family family) const;

 private:
  enum class Meets { kFace, kMate, kOpen, kWeldedMate, kPipe };

  std::optional<Meets> meetsOf(const Point& other) const;
  Meets meetsAt(const Point& end, const Point& opposite) const;
  GeVector lineAt(const Point& point, bool takesReducers) const;
  GeVector directionInto(const Point& other, bool takesReducers) const;

  const Plan& plan_;
  const Joints& joints_;
};

}  // namespace Vesk::Pcf

#endif
