// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_SHAPES_FAMILIES_H
#define VESK_PCF_SHAPES_FAMILIES_H

#include <string_view>

namespace Vesk::Pcf {

// What a component is drawn as. Elbows of a PCF are bends here: pipe along an arc.
enum class Family {
  kNothing,  // has no body: welds, bolts, messages, ends, symbols
  kUnknown,  // the word is not known

  kPipe,
  kBend,
  kTee,  // and crosses, laterals, stubs: a run and legs from the centre
  kYPiece,
  kOlet,
  kReducer,  // concentric or eccentric: the ends tell

  kFlangeWeldNeck,
  kFlangeSlipOn,
  kFlangeSocket,
  kFlangeScrewed,
  kFlangeLapJoint,
  kFlangeReducing,
  kFlangeOrifice,
  kFlangeBlind,
  kStubEnd,
  kLapRing,
  kGasket,
  kSpectacleBlind,

  kValve,  // of a kind that is not told
  kValveGate,
  kValveGlobe,
  kValveBall,
  kValveButterfly,
  kValveCheck,
  kValveControl,
  kValveRelief,
  kValvePlug,
  kValveNeedle,
  kValveDiaphragm,
  kValveAngle,
  kValve3Way,
  kValve4Way,

  kInstrument,      // in the line
  kInstrumentDial,  // a dial on a stem
  kOrificePlate,
  kFilter,
  kFilterY,
  kFilterBasket,
  kFilterCone,
  kTrap,
  kCoupling,
  kUnion,
  kBellows,
  kCap,
  kPlug,
  kMisc,  // drawn like a piece of pipe

  kSupport,  // of a kind that is not told
  kSupportShoe,
  kSupportGuide,
  kSupportAnchor,
  kSupportHanger,
  kSupportSpring,
};

bool isFlange(Family family);  // with a face and a pipe's end; not what closes a line
bool isValve(Family family);
bool isSupport(Family family);
bool closesLine(Family family);  // FlangeBlind, Cap, Plug: one end is enough

// Control valves are instruments in some files: INSTRUMENT with a SKEY of CV..
// is drawn as one.
//
// The family of a component word (in any case, with suffixes: VALVE-ANGLE) with
// its SKEY, which may be empty. The word decides, the SKEY chooses among the
// kinds of that word; a SKEY that says nothing gives the kind that is not told.
Family familyOf(std::string_view component, std::string_view skey);

// A name for people: "gate valve", "weld neck flange".
std::string_view nameOf(Family family);

}  // namespace Vesk::Pcf

#endif
