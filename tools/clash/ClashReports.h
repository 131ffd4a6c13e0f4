// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_CLASH_CLASHREPORTS_H
#define VESK_TOOLS_CLASH_CLASHREPORTS_H

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "clash/ClashSearch.h"
#include "findings/Findings.h"

namespace VeskTool {

// V501 hard, V502 clearance, V503 duplicate, V504 inside.
std::string_view codeOf(Clash::Kind kind);

// What was found, and which of it is told.
struct ClashReport {
  std::uint64_t pairs = 0;
  std::map<std::string_view, std::uint64_t> counts;  // by code, all four
  std::map<std::string_view, std::uint64_t> untold;
  std::vector<Clash> clashes;
};

// As a finding at the first of the two elements, or with isBack at the second.
Finding findingOf(const Clash& clash, const ClashModel& model, const ClashSearch& search,
                  bool isBack = false);

// "plant.dat, steel.dat: 2 clashes, 1 too near, 0 duplicates in 2 513 elements", and
// what was not told.
std::string summaryOf(const ClashReport& report, const ClashModel& model);

// One document, schema "vesk.clash/1"; docs/schema/clash.json.
std::string jsonOf(const ClashReport& report, const ClashModel& model, const ClashSearch& search);

}  // namespace VeskTool

#endif
