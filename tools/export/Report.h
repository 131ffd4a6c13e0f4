// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXPORT_REPORT_H
#define VESK_TOOLS_EXPORT_REPORT_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "elements/Kinds.h"
#include "mesh/Scene.h"
#include "text/Json.h"

namespace VeskTool {

// What the meshes of one kind are good for, in the unit of the scene.
struct KindReport {
  Kind kind = Kind::kPoint;
  std::uint64_t elements = 0;
  std::uint64_t failed = 0;     // could not be shown
  std::uint64_t triangles = 0;  // of all instances
  std::uint64_t meshes = 0;     // that they share

  // The largest deviation, and the tolerance of the element that has it.
  double deviation = 0.0;
  double tolerance = 0.0;
  double part = 0.0;  // the largest part that an element takes of its tolerance

  double meshVolume = 0.0;
  double exactVolume = 0.0;

  std::uint64_t solids = 0;
  std::uint64_t closed = 0;          // every edge with two triangles, Euler's sum 2
  std::uint64_t closedIn32Bits = 0;  // and again with numbers of 32 bits

  // Whether everything is closed and within its tolerance.
  bool isGood() const;
};

// By kind, those that occur. Each mesh is looked at as it is.
std::vector<KindReport> reportOf(const Vesk::Scene& scene);

// As a table for people, volumes in m3; a unit is `millimetres` long.
std::string reportTable(const std::vector<KindReport>& rows, double millimetres);

// As an array of objects.
void appendReport(JsonWriter& json, const std::vector<KindReport>& rows, double millimetres);

}  // namespace VeskTool

#endif
