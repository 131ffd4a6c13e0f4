// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_ELEMENTS_SHOWN_H
#define VESK_TOOLS_ELEMENTS_SHOWN_H

#include <cstdint>

#include "mesh/SceneBuilder.h"
#include "vesk/RecordFile.h"

namespace VeskTool {

// What a scene keeps of an element of this file, one of the builder's; its kind is a Kind.
Vesk::SceneElement shownOf(const Vesk::RecordElement& element, std::uint32_t file,
                           Vesk::SceneBuilder& builder);

}  // namespace VeskTool

#endif
