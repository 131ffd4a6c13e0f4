// SPDX-License-Identifier: MIT
#include "export/ElementWriter.h"

#include <algorithm>

#include "vesk/Box.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/Red.h"

namespace VeskTool {

void ElementWriter::countLosses(const Vesk::RecordElement& record) {
  const auto lose = [this](const char* what, std::size_t count) {
    if (count > 0) lost_[what] += count;
  };
  const Vesk::Geo& geo = *record.geo;
  if (const auto* line = dynamic_cast<const Vesk::Pline*>(&geo)) {
    lose("arc", line->arcs.size());
    lose("point symbol", line->pointSize != 0 || !(line->pointDirection == GePoint()) ? 1U : 0U);
  } else if (const auto* face = dynamic_cast<const Vesk::Pgon*>(&geo)) {
    lose("arc", face->arcs.size());
    lose("normal", static_cast<std::size_t>(std::count_if(
                       face->vertices.begin(), face->vertices.end(),
                       [](const Vesk::PgonVertex& vertex) { return vertex.hasNormal; })));
  } else if (const auto* box = dynamic_cast<const Vesk::Box*>(&geo)) {
    lose("edge mark", box->edges.size());
  } else if (const auto* reducer = dynamic_cast<const Vesk::Red*>(&geo)) {
    lose("tag", reducer->tags.size());
  }
}

}  // namespace VeskTool
