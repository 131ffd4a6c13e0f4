// SPDX-License-Identifier: MIT
#include "pcf/shapes/Families.h"

#include <cstddef>
#include <iterator>
#include <string>

namespace Vesk::Pcf {
namespace {

std::string upper(std::string_view text) {
  std::string result(text);
  for (char& c : result)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return result;
}

// A word, or the beginning of one that goes on with '-' or a digit.
struct WordRow {
  std::string_view word;
  Family family;
};

// A SKEY that begins so, below a word of one of these families.
struct KeyRow {
  Family word;
  std::string_view key;
  Family family;
};

// clang-format off
constexpr WordRow kWords[] = {
    {"ADDITIONAL-COMPONENT", Family::kCoupling},
    {"ADDITIONAL-ITEM",      Family::kNothing},
    {"BELLOWS",              Family::kBellows},
    {"BEND",                 Family::kBend},
    {"BLIND-FLANGE",         Family::kFlangeBlind},
    {"BOLT",                 Family::kNothing},
    {"CAP",                  Family::kCap},
    {"CLAMP",                Family::kCoupling},
    {"CONNECTOR",            Family::kCoupling},
    {"COUPLING",             Family::kCoupling},
    {"CROSS",                Family::kTee},
    {"ELBOW",                Family::kBend},
    {"END-CONNECTION",       Family::kNothing},
    {"END-POSITION",         Family::kNothing},
    {"EXPANSION-BELLOWS",    Family::kBellows},
    {"FILTER",               Family::kFilter},
    {"FILTER-BASKET",        Family::kFilterBasket},
    {"FILTER-CONE",          Family::kFilterCone},
    {"FILTER-Y",             Family::kFilterY},
    {"FLANGE",               Family::kFlangeWeldNeck},
    {"FLANGE-BLIND",         Family::kFlangeBlind},
    {"FLANGE-LAP-JOINT",     Family::kFlangeLapJoint},
    {"FLANGE-ORIFICE",       Family::kFlangeOrifice},
    {"FLANGE-REDUCING",      Family::kFlangeReducing},
    {"FLANGE-SCREWED",       Family::kFlangeScrewed},
    {"FLANGE-SLIP-ON",       Family::kFlangeSlipOn},
    {"FLANGE-SOCKET",        Family::kFlangeSocket},
    {"FLANGE-WELD-NECK",     Family::kFlangeWeldNeck},
    {"FLEXIBLE-HOSE",        Family::kPipe},
    {"FLOOR-SYMBOL",         Family::kNothing},
    {"FLOW-ARROW",           Family::kNothing},
    {"GAP",                  Family::kNothing},
    {"GASKET",               Family::kGasket},
    {"HOSE",                 Family::kPipe},
    {"INSTRUMENT",           Family::kInstrument},
    {"INSTRUMENT-BALLOON",   Family::kNothing},
    {"INSTRUMENT-DIAL",      Family::kInstrumentDial},
    {"INSULATION-SYMBOL",    Family::kNothing},
    {"ISO-SPLIT-POINT",      Family::kNothing},
    {"LAP-JOINT-RING",       Family::kLapRing},
    {"LAP-JOINT-STUBEND",    Family::kStubEnd},
    {"LAPJOINT-RING",        Family::kLapRing},
    {"LAPJOINT-STUBEND",     Family::kStubEnd},
    {"MESSAGE",              Family::kNothing},
    {"MISC-COMPONENT",       Family::kMisc},
    {"MULTI-PORT-COMPONENT", Family::kMisc},
    {"NIPPLE",               Family::kPipe},
    {"NUT",                  Family::kNothing},
    {"OLET",                 Family::kOlet},
    {"ORIFICE-PLATE",        Family::kOrificePlate},
    {"PIPE",                 Family::kPipe},
    {"PLUG",                 Family::kPlug},
    {"PULLED-BEND",          Family::kBend},
    {"REDUCER",              Family::kReducer},
    {"REFERENCE-ITEM",       Family::kNothing},
    {"SLIP-PLATE",           Family::kSpectacleBlind},
    {"SPECTACLE-BLIND",      Family::kSpectacleBlind},
    {"START-CONNECTION",     Family::kNothing},
    {"START-POSITION",       Family::kNothing},
    {"STRAINER",             Family::kFilter},
    {"SUPPORT",              Family::kSupport},
    {"TEE",                  Family::kTee},
    {"TRAP",                 Family::kTrap},
    {"UNION",                Family::kUnion},
    {"VALVE",                Family::kValve},
    {"VALVE-3WAY",           Family::kValve3Way},
    {"VALVE-4WAY",           Family::kValve4Way},
    {"VALVE-ANGLE",          Family::kValveAngle},
    {"VALVE-BALL",           Family::kValveBall},
    {"VALVE-BUTTERFLY",      Family::kValveButterfly},
    {"VALVE-CHECK",          Family::kValveCheck},
    {"VALVE-CONTROL",        Family::kValveControl},
    {"VALVE-DIAPHRAGM",      Family::kValveDiaphragm},
    {"VALVE-GATE",           Family::kValveGate},
    {"VALVE-GLOBE",          Family::kValveGlobe},
    {"VALVE-NEEDLE",         Family::kValveNeedle},
    {"VALVE-PLUG",           Family::kValvePlug},
    {"VALVE-RELIEF",         Family::kValveRelief},
    {"WALL-SYMBOL",          Family::kNothing},
    {"WELD",                 Family::kNothing},
    {"Y-PIECE",              Family::kYPiece},
};

constexpr KeyRow kKeys[] = {
    {Family::kValve,          "CK",   Family::kValveCheck},
    {Family::kValve,          "C",    Family::kValveControl},
    {Family::kValve,          "AV",   Family::kValveAngle},
    {Family::kValve,          "R",    Family::kValveRelief},
    {Family::kValve,          "V3",   Family::kValve3Way},
    {Family::kValve,          "V4",   Family::kValve4Way},
    {Family::kValve,          "VB",   Family::kValveBall},
    {Family::kValve,          "VC",   Family::kValveCheck},
    {Family::kValve,          "VD",   Family::kValveDiaphragm},
    {Family::kValve,          "VG",   Family::kValveGlobe},
    {Family::kValve,          "VK",   Family::kValvePlug},
    {Family::kValve,          "VN",   Family::kValveNeedle},
    {Family::kValve,          "VP",   Family::kValvePlug},
    {Family::kValve,          "VR",   Family::kValveRelief},
    {Family::kValve,          "VS",   Family::kValveGate},
    {Family::kValve,          "VT",   Family::kValveGate},
    {Family::kValve,          "VY",   Family::kValveButterfly},
    {Family::kValveAngle,     "R",    Family::kValveRelief},
    {Family::kValveAngle,     "VR",   Family::kValveRelief},
    {Family::kValveAngle,     "AR",   Family::kValveRelief},
    {Family::kFlangeWeldNeck, "FLBL", Family::kFlangeBlind},
    {Family::kFlangeWeldNeck, "FLLB", Family::kFlangeLapJoint},
    {Family::kFlangeWeldNeck, "FLLJ", Family::kFlangeLapJoint},
    {Family::kFlangeWeldNeck, "FLR",  Family::kFlangeReducing},
    {Family::kFlangeWeldNeck, "FLSC", Family::kFlangeScrewed},
    {Family::kFlangeWeldNeck, "FLSE", Family::kStubEnd},
    {Family::kFlangeWeldNeck, "FLSO", Family::kFlangeSlipOn},
    {Family::kFlangeWeldNeck, "FLSW", Family::kFlangeSocket},
    {Family::kFlangeWeldNeck, "FO",   Family::kFlangeOrifice},
    {Family::kFilter,         "FB",   Family::kFilterBasket},
    {Family::kFilter,         "FC",   Family::kFilterCone},
    {Family::kFilter,         "FY",   Family::kFilterY},
    {Family::kFilter,         "YS",   Family::kFilterY},
    {Family::kInstrument,     "CV",   Family::kValveControl},
    {Family::kInstrument,     "OP",   Family::kOrificePlate},
    {Family::kInstrument,     "RP",   Family::kOrificePlate},
    {Family::kInstrument,     "RV",   Family::kValveRelief},
    {Family::kInstrument,     "ID",   Family::kInstrumentDial},
    {Family::kSupport,        "ANC",  Family::kSupportAnchor},
    {Family::kSupport,        "GUI",  Family::kSupportGuide},
    {Family::kSupport,        "HAN",  Family::kSupportHanger},
    {Family::kSupport,        "01HG", Family::kSupportHanger},
    {Family::kSupport,        "HG",   Family::kSupportHanger},
    {Family::kSupport,        "SHO",  Family::kSupportShoe},
    {Family::kSupport,        "SK",   Family::kSupportShoe},
    {Family::kSupport,        "SPR",  Family::kSupportSpring},
};
// clang-format on

// Whether `text` is the word, or goes on behind it with a suffix.
bool beginsWith(std::string_view text, std::string_view word) {
  if (text.substr(0, word.size()) != word) return false;
  if (text.size() == word.size()) return true;
  const char next = text[word.size()];
  return next == '-' || (next >= '0' && next <= '9');
}

Family byWord(std::string_view component) {
  const WordRow* longest = nullptr;
  for (const WordRow& row : kWords) {
    if (!beginsWith(component, row.word)) continue;
    if (longest == nullptr || row.word.size() > longest->word.size()) longest = &row;
  }
  return longest == nullptr ? Family::kUnknown : longest->family;
}

// The longest key that fits.
Family byKey(Family word, std::string_view skey) {
  const KeyRow* longest = nullptr;
  for (const KeyRow& row : kKeys) {
    if (row.word != word || skey.substr(0, row.key.size()) != row.key) continue;
    if (longest == nullptr || row.key.size() > longest->key.size()) longest = &row;
  }
  return longest == nullptr ? word : longest->family;
}

}  // namespace

Family familyOf(std::string_view component, std::string_view skey) {
  return byKey(byWord(upper(component)), upper(skey));
}

bool isFlange(Family family) {
  return family >= Family::kFlangeWeldNeck && family <= Family::kFlangeOrifice;
}

bool isValve(Family family) { return family >= Family::kValve && family <= Family::kValve4Way; }

bool isSupport(Family family) {
  return family >= Family::kSupport && family <= Family::kSupportSpring;
}

bool closesLine(Family family) {
  return family == Family::kFlangeBlind || family == Family::kCap || family == Family::kPlug;
}

std::string_view nameOf(Family family) {
  // In the order of the enumeration.
  static constexpr std::string_view kNames[] = {
      "nothing",
      "unknown component",
      "pipe",
      "bend",
      "tee",
      "Y-piece",
      "olet",
      "reducer",
      "weld neck flange",
      "slip-on flange",
      "socket flange",
      "screwed flange",
      "lap joint flange",
      "reducing flange",
      "orifice flange",
      "blind flange",
      "stub end",
      "lap joint ring",
      "gasket",
      "spectacle blind",
      "valve",
      "gate valve",
      "globe valve",
      "ball valve",
      "butterfly valve",
      "check valve",
      "control valve",
      "relief valve",
      "plug valve",
      "needle valve",
      "diaphragm valve",
      "angle valve",
      "three-way valve",
      "four-way valve",
      "instrument",
      "dial",
      "orifice plate",
      "filter",
      "Y-strainer",
      "basket strainer",
      "cone strainer",
      "steam trap",
      "coupling",
      "union",
      "bellows",
      "cap",
      "plug",
      "component",
      "support",
      "shoe",
      "guide",
      "anchor",
      "hanger",
      "spring hanger",
  };
  static_assert(std::size(kNames) == static_cast<std::size_t>(Family::kSupportSpring) + 1);
  return kNames[static_cast<std::size_t>(family)];
}

}  // namespace Vesk::Pcf
