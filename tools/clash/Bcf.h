// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_CLASH_BCF_H
#define VESK_TOOLS_CLASH_BCF_H

#include <span>
#include <string>

#include "clash/ClashSearch.h"

namespace VeskTool {

// Clashes in a file of one of these at most.
inline constexpr std::size_t kMostTopics = 30'000;

// The clashes as an archive of the BIM Collaboration Format 2.1: a topic with a
// title, a description and a view of the place for each.
//
// Places are in metres, those of the files being millimetres. A topic's identifier
// comes from what it is about (the code, and header, counter and kind of both
// elements; equal ones are numbered), so that the same clash has the same one in the
// next file, wherever it has moved. The date is that of SOURCE_DATE_EPOCH in the
// environment, else 2000-01-01.
//
// Throws a Failure with Exit::kUsage for more than kMostTopics.
std::string bcfOf(std::span<const Clash> clashes, const ClashModel& model,
                  const ClashSearch& search);

}  // namespace VeskTool

#endif
