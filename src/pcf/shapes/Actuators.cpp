// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <string>

#include "pcf/shapes/Drawing.h"

namespace Vesk::Pcf {
namespace {

// A spindle this near to a leg would lie in it: the cosine of 10 degrees.
constexpr double kInTheLine = 0.985;

Actuator usualOf(Family family) {
  switch (family) {
    case Family::kValveBall:
    case Family::kValveButterfly:
    case Family::kValvePlug:
      return Actuator::kLever;
    case Family::kValveControl:
      return Actuator::kDiaphragm;
    case Family::kValveRelief:
      return Actuator::kSpring;
    case Family::kValveCheck:
      return Actuator::kNone;
    default:
      return Actuator::kHandwheel;
  }
}

// What stands on the spindle, at heights from the centre of the valve. All sizes
// are in diameters of the pipe.
class Stand {
 public:
  Stand(Builder& out, const GePoint& centre, const Frame& frame, double size)
      : out_(out), centre_(centre), frame_(frame), size_(size) {}

  GePoint at(double height) const { return centre_ + frame_.along * (height * size_); }

  void post(double from, double to, double diameter) {
    out_.cylinder(at(from), at(to), diameter * size_);
  }
  void taper(double from, double to, double diameter1, double diameter2) {
    out_.cone(at(from), at(to), diameter1 * size_, diameter2 * size_);
  }
  void block(double height, double alongSpindle, double across, double alongRun) {
    out_.box(at(height), frame_, alongSpindle * size_, across * size_, alongRun * size_);
  }
  // Along the run, from the spindle on.
  void arm(double height, double length, double width) {
    const GePoint middle = at(height) + frame_.up * ((length / 2 - width / 2) * size_);
    out_.box(middle, frame_, width * 0.5 * size_, width * size_, length * size_);
  }
  void rod(double height, const GeVector& direction, double from, double to, double diameter) {
    out_.cylinder(at(height) + direction * (from * size_), at(height) + direction * (to * size_),
                  diameter * size_);
  }
  void wheel(double height, double radius) {
    out_.ring(at(height), frame_.along, radius * size_, 0.1 * size_);
    rod(height, frame_.up, -radius, radius, 0.06);
    rod(height, frame_.across, -radius, radius, 0.06);
  }
  const Frame& frame() const { return frame_; }

 private:
  Builder& out_;
  GePoint centre_;
  Frame frame_;  // along the spindle, up along the run
  double size_;
};

void bonnet(Stand& stand, Family family) {
  if (family == Family::kValveGate)  // flat, as its gate is
    stand.block(0.45, 0.9, 0.7, 0.35);
  else if (family == Family::kValveDiaphragm)
    stand.taper(0.2, 0.9, 1.2, 0.4);
  else
    stand.post(0, 0.8, 0.4);
}

void handwheel(Stand& stand, Family family) {
  const bool needle = family == Family::kValveNeedle;
  bonnet(stand, family);
  stand.post(0.7, needle ? 2.0 : 1.6, needle ? 0.1 : 0.14);
  stand.wheel(needle ? 2.0 : 1.6, needle ? 0.35 : 0.6);
}

void lever(Stand& stand) {
  stand.post(0, 0.95, 0.25);
  stand.arm(1.0, 1.8, 0.22);
}

void diaphragm(Stand& stand) {
  stand.post(0, 1.3, 0.35);
  stand.taper(1.3, 1.5, 0.5, 1.6);
  stand.post(1.5, 1.6, 1.7);
  stand.taper(1.6, 1.85, 1.6, 0.4);
}

void piston(Stand& stand) {
  stand.post(0, 1.1, 0.35);
  stand.post(1.1, 2.3, 0.9);
}

void motor(Stand& stand) {
  stand.post(0, 1.1, 0.35);
  stand.block(1.45, 0.7, 0.8, 0.8);
  stand.rod(1.45, stand.frame().up, 0.4, 1.2, 0.5);
}

void solenoid(Stand& stand) {
  stand.post(0, 0.8, 0.3);
  stand.block(1.1, 0.6, 0.5, 0.5);
}

void spring(Stand& stand) {
  stand.post(0, 1.4, 0.6);
  stand.taper(1.4, 1.7, 0.6, 0.3);
}

}  // namespace

void drawReliefBonnet(Builder& out, const GePoint& centre, const GeVector& direction, double size) {
  Stand stand(out, centre, Frame(direction), size);
  spring(stand);
}

void drawActuator(Builder& out, const Part& part, const GePoint& centre, const GeVector& run,
                  double size) {
  const GeVector spindle = unit(part.spindle);
  const Actuator kind = part.actuator == Actuator::kNotTold ? usualOf(part.family) : part.actuator;
  if (spindle == GeVector() || kind == Actuator::kNone) return;
  for (const Leg& leg : legsOf(part)) {
    if (dot(spindle, leg.inward) < -kInTheLine)
      return out.remark("its spindle lies in the line; drawn without");
  }
  Stand stand(out, centre, Frame(spindle, run), size);
  switch (kind) {
    case Actuator::kHandwheel:
      return handwheel(stand, part.family);
    case Actuator::kLever:
      return lever(stand);
    case Actuator::kDiaphragm:
      return diaphragm(stand);
    case Actuator::kPiston:
      return piston(stand);
    case Actuator::kMotor:
      return motor(stand);
    case Actuator::kSolenoid:
      return solenoid(stand);
    case Actuator::kSpring:
      return spring(stand);
    // GCOVR_EXCL_START: usualOf tells one, and none is drawn above
    case Actuator::kNotTold:
    case Actuator::kNone:
      return;
      // GCOVR_EXCL_STOP
  }
}

}  // namespace Vesk::Pcf
