// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_VIEW_PNG_H
#define VESK_TOOLS_VIEW_PNG_H

#include "draw/Picture.h"
#include "terminal/Streams.h"

namespace VeskTool {

// Writes a picture as PNG, without alpha if every pixel is opaque. The same
// picture gives the same bytes. Throws std::bad_alloc.
void writePng(TextSink& to, const Vesk::Picture& picture);

}  // namespace VeskTool

#endif
