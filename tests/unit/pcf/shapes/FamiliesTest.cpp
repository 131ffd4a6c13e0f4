// SPDX-License-Identifier: MIT
#include "pcf/shapes/Families.h"

#include <gtest/gtest.h>

namespace Vesk::Pcf {
namespace {

struct FamilyRow {
  const char* component;
  const char* skey;
  const char* name;
};

constexpr FamilyRow kRows[] = {
    {"PIPE", "", "pipe"},
    {"pipe-fixed", "", "pipe"},
    {"ELBOW", "ELBW", "bend"},
    {"BEND-TEED", "", "bend"},
    {"PULLED-BEND", "PB", "bend"},
    {"TEE-STUB", "TSBW", "tee"},
    {"TEE-SET-ON", "TSSO", "tee"},
    {"CROSS", "CRBW", "tee"},
    {"Y-PIECE-FABRICATED", "", "Y-piece"},
    {"OLET", "WTBW", "olet"},
    {"REDUCER-ECCENTRIC", "REBW", "reducer"},
    {"FLANGE", "FLWN", "weld neck flange"},
    {"FLANGE", "", "weld neck flange"},
    {"FLANGE", "flso", "slip-on flange"},
    {"FLANGE", "FLSW", "socket flange"},
    {"FLANGE", "FLSC", "screwed flange"},
    {"FLANGE", "FLLB", "lap joint flange"},
    {"FLANGE", "FLRC", "reducing flange"},
    {"FLANGE", "FOWN", "orifice flange"},
    {"FLANGE", "FLBL", "blind flange"},
    {"FLANGE", "FLFL", "weld neck flange"},
    {"FLANGE-BLIND", "FLBL", "blind flange"},
    {"LAPJOINT-STUBEND", "FLSE", "stub end"},
    {"LAP-JOINT-STUBEND", "", "stub end"},
    {"GASKET", "", "gasket"},
    {"VALVE", "VVBW", "valve"},
    {"VALVE", "VTFL", "gate valve"},
    {"VALVE", "VGFL", "globe valve"},
    {"VALVE", "VBFL", "ball valve"},
    {"VALVE", "VYFL", "butterfly valve"},
    {"VALVE", "VCFL", "check valve"},
    {"VALVE", "CKFL", "check valve"},
    {"VALVE", "CVFL", "control valve"},
    {"VALVE", "VRFL", "relief valve"},
    {"VALVE", "VPFL", "plug valve"},
    {"VALVE", "VNSC", "needle valve"},
    {"VALVE", "VDFL", "diaphragm valve"},
    {"VALVE", "AVFL", "angle valve"},
    {"VALVE-ANGLE", "VGFL", "angle valve"},  // the word decides
    {"VALVE-ANGLE", "VRFL", "relief valve"},
    {"VALVE-3WAY", "VBFL", "three-way valve"},
    {"VALVE-4WAY", "", "four-way valve"},
    {"VALVE", "??", "valve"},
    {"INSTRUMENT", "IIFL", "instrument"},
    {"INSTRUMENT", "CVFL", "control valve"},
    {"INSTRUMENT-DIAL", "IDPL", "dial"},
    {"FILTER", "FIFL", "filter"},
    {"FILTER", "FYFL", "Y-strainer"},
    {"TRAP", "TIFL", "steam trap"},
    {"SUPPORT", "ANCH", "anchor"},
    {"SUPPORT", "GUID", "guide"},
    {"SUPPORT", "HANG", "hanger"},
    {"SUPPORT", "01HG", "hanger"},
    {"SUPPORT", "SKID", "shoe"},
    {"SUPPORT", "SHOE", "shoe"},
    {"SUPPORT", "SPRG", "spring hanger"},
    {"SUPPORT", "01XX", "support"},
    {"CAP", "KABW", "cap"},
    {"PLUG", "PLSC", "plug"},
    {"WELD", "WW", "nothing"},
    {"END-CONNECTION-EQUIPMENT", "", "nothing"},
    {"MESSAGE-SQUARE", "", "nothing"},
    {"PIPELINE", "", "unknown component"},  // a longer word, no suffix
    {"WIDGET", "VTFL", "unknown component"},
    {"", "", "unknown component"},
};

TEST(Families, FollowTheWordAndThenTheKey) {
  for (const FamilyRow& row : kRows)
    EXPECT_EQ(nameOf(familyOf(row.component, row.skey)), row.name)
        << row.component << " " << row.skey;
}

}  // namespace
}  // namespace Vesk::Pcf
