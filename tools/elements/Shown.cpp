// SPDX-License-Identifier: MIT
#include "elements/Shown.h"

#include "elements/Describe.h"
#include "elements/Kinds.h"

namespace VeskTool {

Vesk::SceneElement shownOf(const Vesk::RecordElement& element, std::uint32_t file,
                           Vesk::SceneBuilder& builder) {
  Vesk::SceneElement shown;
  shown.kind = static_cast<std::uint8_t>(kindOf(*element.geo));
  shown.header = builder.headerId(headerText(element.header), trimmedField(element.header.f2));
  shown.file = file;
  shown.line = element.firstLine;
  shown.lines = static_cast<std::uint32_t>(element.lastLine - element.firstLine + 1);
  return shown;
}

}  // namespace VeskTool
