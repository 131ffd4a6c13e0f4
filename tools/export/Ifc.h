// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXPORT_IFC_H
#define VESK_TOOLS_EXPORT_IFC_H

#include <memory>
#include <string>
#include <string_view>

#include "export/ElementWriter.h"
#include "terminal/Streams.h"

namespace VeskTool {

// IFC4 as text in a stream.
//
// A cylinder is an IfcPipeSegment, a torus or cone an IfcPipeFitting, an elbow or
// reducer an IfcDuctFitting, all else a proxy or an annotation, unless the component
// that the sidecar names says otherwise (VALVE, FLANGE, ...). Round shapes, bends and
// right-angled boxes are swept solids, skew boxes and reducers faceted breps. Each
// header is a distribution system; quantities are length and volume; what the sidecar
// knows is a property set. Texts are left out.
//
// Memory: the headers, and eight bytes for each element, since no GlobalId may be there
// twice. The unit is `millimetres` long.
std::unique_ptr<ElementWriter> makeIfcWriter(double millimetres, TextSink& out);

}  // namespace VeskTool

#endif
