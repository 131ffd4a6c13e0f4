// SPDX-License-Identifier: MIT
#include "pcf/shapes/Drawing.h"

namespace Vesk::Pcf {
namespace {

// A support where no pipe tells its size, mm.
constexpr double kOfItsOwn = 100;

// Bodies about a place on a pipe. All sizes are in diameters of the pipe, heights
// from its axis.
class Place {
 public:
  Place(Builder& out, const Part& part)
      : out_(out),
        at_(part.ends.front().at),
        frame_(unit(part.along) == GeVector() ? GeVector(1, 0, 0) : part.along),
        size_(part.ends.front().outside > 0 ? part.ends.front().outside : kOfItsOwn) {}

  GePoint at(double height) const { return at_ + frame_.up * (height * size_); }

  // From one height to another; full lengths along the pipe and across.
  void block(double from, double to, double along, double across, double aside = 0) {
    out_.box(at((from + to) / 2) + frame_.across * (aside * size_), frame_, along * size_,
             across * size_, (to - from) * size_);
  }
  void post(double from, double to, double diameter) {
    out_.cylinder(at(from), at(to), diameter * size_);
  }
  // About the pipe, so far along it from the place.
  void collar(double along, double length, double diameter) {
    const GePoint middle = at_ + frame_.along * (along * size_);
    const GeVector half = frame_.along * (length / 2 * size_);
    out_.cylinder(middle - half, middle + half, diameter * size_);
  }

 private:
  Builder& out_;
  GePoint at_;
  Frame frame_;
  double size_;
};

void plate(Place& place, double along, double across) { place.block(-1.2, -1.1, along, across); }

// A web under the pipe on a plate, both longer than wide.
void shoe(Place& place) {
  place.block(-1.1, -0.4, 1.6, 0.15);
  plate(place, 1.8, 0.9);
}

// A plate with a cheek on each side of the pipe.
void guide(Place& place) {
  place.block(-0.65, -0.5, 0.8, 1.8);
  for (const double side : {-0.6, 0.6}) place.block(-0.5, 0.3, 0.8, 0.1, side);
}

// A block about the lower half, held by two collars.
void anchor(Place& place) {
  place.block(-1.1, 0, 0.8, 1.3);
  plate(place, 1.4, 1.9);
  for (const double along : {-0.5, 0.5}) place.collar(along, 0.15, 1.4);
}

void hanger(Place& place) {
  place.collar(0, 0.3, 1.2);
  place.post(0.5, 3.2, 0.12);
  place.block(3.2, 3.3, 0.6, 0.6);
}

void spring(Place& place) {
  place.collar(0, 0.3, 1.2);
  place.post(0.5, 3.6, 0.12);
  place.post(1.5, 2.9, 0.8);
  place.block(3.6, 3.7, 0.6, 0.6);
}

// A leg on a foot.
void other(Place& place) {
  place.post(-1.1, -0.4, 0.5);
  plate(place, 1, 1);
}

}  // namespace

void drawSupport(Builder& out, const Part& part) {
  Place place(out, part);
  switch (part.family) {
    case Family::kSupportShoe:
      return shoe(place);
    case Family::kSupportGuide:
      return guide(place);
    case Family::kSupportAnchor:
      return anchor(place);
    case Family::kSupportHanger:
      return hanger(place);
    case Family::kSupportSpring:
      return spring(place);
    default:
      return other(place);
  }
}

}  // namespace Vesk::Pcf
