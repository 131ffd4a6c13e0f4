// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_WORDS_H
#define VESK_PCF_WORDS_H

#include <string_view>

namespace Vesk::Pcf {

// What a word at the margin begins, or an indented one is.
enum class Word {
  kUnknown,
  kHeader,     // units and what describes the file or the line
  kMaterials,  // ends the components
  kAttribute,  // part of a component
  kPoint,      // of a component, with co-ordinates
  kText,       // of a message
  kBody,       // a component with a body; the rest have none:
  kWeld,       // a place
  kMessage,    // texts
  kMark,       // an end of the line and what it meets
  kNothing,    // bolts, flow arrows
};

// Of a word in capitals. A component may have a suffix that is not in the table:
// VALVE-SOMETHING is a valve.
Word wordOf(std::string_view word);

inline bool isComponent(Word word) { return word >= Word::kBody; }

enum class Role : unsigned char {
  kEnd,     // END-POINT
  kCentre,  // CENTRE-POINT
  kBranch,  // BRANCHn-POINT
  kPlace,   // CO-ORDS
  kNone,
};

// Of a key in any case; kNone if it has no co-ordinates.
Role roleOf(std::string_view key);

}  // namespace Vesk::Pcf

#endif
