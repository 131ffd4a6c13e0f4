// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXPORT_FORMATS_H
#define VESK_TOOLS_EXPORT_FORMATS_H

#include <span>
#include <string>
#include <string_view>

namespace VeskTool {

// What a format of others keeps of a record file; words for people, as the table in
// docs/formats.md has them.
struct FormatText {
  std::string_view names;  // ".step (.stp), AP242"
  std::string_view keeps;
  std::string_view loses;   // counted in a warning where it happens
  std::string_view exact;   // how near to the true shapes
  std::string_view memory;  // what grows with the plant
  std::string_view opened;  // programs of others that open it in the tests
};

// The formats of `vesk export`.
std::span<const FormatText> exportFormats();

// What `vesk help formats` says.
std::string formatsHelp();

}  // namespace VeskTool

#endif
