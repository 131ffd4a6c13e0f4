// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXPORT_STEP_H
#define VESK_TOOLS_EXPORT_STEP_H

#include <memory>

#include "export/ElementWriter.h"
#include "terminal/Streams.h"

namespace VeskTool {

// STEP, ISO 10303-242 (AP242), as text in a stream.
//
// The surfaces are the true ones: cylindrical, conical, toroidal and plane, and for
// sides of reducers that are not plane ruled. One product for each header (F1 and F2)
// with a colour of its own, all in one assembly; an element is a representation of its
// own that is related to its header's, so that elements of a header need not stand
// together and nothing but the headers is in memory. Segments, polylines and points
// are curve sets; a face is a shell of one face. Texts are left out.
//
// The unit is `millimetres` long.
std::unique_ptr<ElementWriter> makeStepWriter(double millimetres, TextSink& out);

}  // namespace VeskTool

#endif
