// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXPORT_DXF_H
#define VESK_TOOLS_EXPORT_DXF_H

#include <memory>

#include "export/ElementWriter.h"
#include "terminal/Streams.h"
#include "vesk/mesh/Fineness.h"

namespace VeskTool {

// DXF of release 2010 in UTF-8, three-dimensional, in a stream: a layer for each kind
// with a colour of its own, solids and faces as MESH, lines and polylines, points,
// texts as MTEXT, with header and line as extended data of "VESK". Round shapes are as fine as
// `fineness` says. A few hundred elements are in memory.
//
// The unit is `millimetres` long.
std::unique_ptr<ElementWriter> makeDxfWriter(const Vesk::Fineness& fineness, double millimetres,
                                             TextSink& out);

}  // namespace VeskTool

#endif
