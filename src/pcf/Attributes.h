// SPDX-License-Identifier: MIT
#ifndef VESK_PCF_ATTRIBUTES_H
#define VESK_PCF_ATTRIBUTES_H

#include <string>
#include <string_view>
#include <vector>

#include "pcf/Plan.h"
#include "pcf/Text.h"

namespace Vesk::Pcf {

// Calls visit(entry, line) for every line of a component behind its word.
template <class Visit>
void visitAttributes(const Plan& plan, const Component& component, Visit visit) {
  Lines lines(plan.textOf(component), component.line);
  if (!lines.next()) return;
  while (lines.next()) {
    const std::string_view text = trimmed(lines.line());
    if (text.empty() || isComment(text)) continue;
    const KeyValue entry = keyValueOf(text);
    if (!entry.key.empty()) visit(entry, text);
  }
}

// The texts of a message: those that a key names, else what stands bare on its lines.
std::vector<std::string> textsOfMessage(const Plan& plan, const Component& component);

// What an end of the line names, and its texts.
std::vector<std::string> textsOfMark(const Plan& plan, const Component& component);

// How a valve is turned.
struct SpindleData {
  GeVector direction = {};  // null: not given
  Actuator actuator = Actuator::kNotTold;
};
// FLAT-DIRECTION of an eccentric reducer; null if it has none.
GeVector flatDirectionOf(const Plan& plan, const Component& component);

SpindleData spindleOf(const Plan& plan, const Component& component);

// A direction by its words, x to the EAST, y to the NORTH, z UP; null for any other.
GeVector directionOf(std::string_view words);

// The columns of the sidecar, and their values for a component. `source` is the name
// of its file.
std::vector<std::string> sidecarColumns();
void fillSidecarValues(std::vector<std::string>& values, const Plan& plan,
                       const Component& component, std::string_view source);

}  // namespace Vesk::Pcf

#endif
