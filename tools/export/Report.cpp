// SPDX-License-Identifier: MIT
#include "export/Report.h"

#include <algorithm>
#include <array>

#include "mesh/MeshProof.h"
#include "text/Numbers.h"
#include "text/Table.h"

namespace VeskTool {
namespace {

// The sagitta of a chord is calculated, and so has the error of a calculation.
constexpr double kRounding = 1e-6;

constexpr double kMillimetre = 1e-3;  // metres

// What is the same for all instances of a mesh.
struct MeshFacts {
  double volume = 0.0;
  bool closed = false;
  bool closedIn32Bits = false;
  bool known = false;
};

MeshFacts factsOf(const Vesk::Mesh& mesh) {
  MeshFacts facts;
  facts.known = true;
  if (!mesh.closed) return facts;
  std::size_t dropped = 0;
  facts.volume = enclosedVolume(mesh);
  facts.closed = closureFault(mesh).empty();
  facts.closedIn32Bits = closureFault(roundedMesh(mesh, dropped)).empty();
  return facts;
}

std::string closedText(const KindReport& row) {
  if (row.solids == 0) return row.triangles == 0 ? "" : "open";
  if (row.closedIn32Bits == row.solids) return "yes";
  return "no: " + grouped(row.solids - row.closedIn32Bits);
}

}  // namespace

bool KindReport::isGood() const {
  return closed == solids && closedIn32Bits == solids && part <= 1.0 + kRounding;
}

std::vector<KindReport> reportOf(const Vesk::Scene& scene) {
  std::array<KindReport, kKinds> rows;
  for (std::size_t i = 0; i < kKinds; ++i) rows[i].kind = static_cast<Kind>(i);
  const auto rowOf = [&](std::uint32_t element) -> KindReport& {
    return rows[scene.elements[element].kind];
  };
  for (const Vesk::SceneElement& element : scene.elements) ++rows[element.kind].elements;
  for (const Vesk::SceneFailure& failure : scene.failures) ++rowOf(failure.element).failed;
  std::vector<MeshFacts> facts(scene.meshes.size());
  for (const Vesk::SceneInstance& instance : scene.instances) {
    const Vesk::Mesh& mesh = scene.meshes[instance.mesh];
    MeshFacts& known = facts[instance.mesh];
    KindReport& row = rowOf(instance.element);
    if (!known.known) {
      known = factsOf(mesh);
      ++row.meshes;
    }
    row.triangles += mesh.triangles.size();
    const double part = instance.tolerance > 0.0 ? instance.deviation / instance.tolerance : 0.0;
    row.part = std::max(row.part, part);
    if (instance.deviation > row.deviation || row.tolerance == 0.0) {
      row.deviation = instance.deviation;
      row.tolerance = instance.tolerance;
    }
    if (!mesh.closed) continue;
    ++row.solids;
    row.closed += known.closed ? 1 : 0;
    row.closedIn32Bits += known.closedIn32Bits ? 1 : 0;
    row.meshVolume += known.volume * instance.placement.volumeFactor();
    row.exactVolume += instance.volume;
  }
  std::vector<KindReport> used;
  std::copy_if(rows.begin(), rows.end(), std::back_inserter(used),
               [](const KindReport& row) { return row.elements > 0; });
  return used;
}

std::string reportTable(const std::vector<KindReport>& rows, double millimetres) {
  using Side = Table::Side;
  const double metre = millimetres * kMillimetre;
  const double cubic = metre * metre * metre;
  Table table({{"KIND", Side::kLeft},
               {"ELEMENTS", Side::kRight},
               {"NOT SHOWN", Side::kRight},
               {"TRIANGLES", Side::kRight},
               {"MESHES", Side::kRight},
               {"DEVIATION", Side::kRight},
               {"TOLERANCE", Side::kRight},
               {"VOLUME m3", Side::kRight},
               {"EXACT m3", Side::kRight},
               {"CLOSED", Side::kLeft}});
  for (const KindReport& row : rows) {
    const bool isSolid = row.solids > 0;
    const bool hasMesh = row.triangles > 0;
    table.add({std::string(wordsOf(row.kind)), grouped(row.elements), grouped(row.failed),
               hasMesh ? grouped(row.triangles) : "", hasMesh ? grouped(row.meshes) : "",
               isSolid ? trimmedNumber(row.deviation, 6) : "",
               isSolid ? trimmedNumber(row.tolerance, 6) : "",
               isSolid ? rounded(row.meshVolume * cubic, 6) : "",
               isSolid ? rounded(row.exactVolume * cubic, 6) : "", closedText(row)});
  }
  return table.text();
}

void appendReport(JsonWriter& json, const std::vector<KindReport>& rows, double millimetres) {
  const double metre = millimetres * kMillimetre;
  const double cubic = metre * metre * metre;
  json.beginArray();
  for (const KindReport& row : rows) {
    json.beginObjectRow().key("kind").value(nameOf(row.kind));
    json.key("elements").value(row.elements).key("notShown").value(row.failed);
    json.key("triangles").value(row.triangles).key("meshes").value(row.meshes);
    json.key("deviation").value(row.deviation).key("tolerance").value(row.tolerance);
    json.key("meshVolume").value(row.meshVolume * cubic);
    json.key("exactVolume").value(row.exactVolume * cubic);
    json.key("solids").value(row.solids).key("closed").value(row.closed);
    json.key("closedIn32Bits").value(row.closedIn32Bits);
    json.endObject();
  }
  json.endArray();
}

}  // namespace VeskTool
