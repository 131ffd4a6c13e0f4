// SPDX-License-Identifier: MIT
#include <algorithm>

#include "elements/Kinds.h"
#include "export/Writers.h"

namespace VeskTool {

std::string nameOf(const Vesk::Scene& scene, std::uint32_t element) {
  const Vesk::SceneElement& each = scene.elements[element];
  std::string name = scene.headers[each.header];
  if (!name.empty()) name += '/';
  name += nameOf(static_cast<Kind>(each.kind));
  name += ':' + std::to_string(each.line);
  // Blanks, and what is no text at all.
  std::replace_if(
      name.begin(), name.end(), [](char c) { return c >= 0 && c <= ' '; }, '_');
  return name;
}

}  // namespace VeskTool
