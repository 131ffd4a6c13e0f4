// SPDX-License-Identifier: MIT
#include "Fine.h"

#include "Plant.h"

namespace VeskPython {

Vesk::Fineness finenessOf(double tolerance, const std::string& quality) {
  using Vesk::Fineness;
  if (tolerance > 0.0) return Fineness::ofTolerance(tolerance);
  if (quality == "draft") return Fineness::ofSegments(Fineness::kDraft);
  if (quality == "normal") return Fineness::ofSegments(Fineness::kNormal);
  if (quality == "fine") return Fineness::ofSegments(Fineness::kFine);
  throw py::value_error("quality '" + quality + "': draft, normal or fine");
}

Missing missingOf(const Vesk::Scene& scene) {
  Missing missing;
  for (const Vesk::SceneFailure& each : scene.failures) {
    missing.emplace_back(each.element, each.reason);
  }
  return missing;
}

py::list toPython(const Missing& missing) {
  py::list rows;
  for (const auto& [element, reason] : missing) {
    rows.append(py::make_tuple(element, toText(reason)));
  }
  return rows;
}

std::vector<std::string> fileNames(const py::list& texts) {
  std::vector<std::string> result;
  for (const py::handle& each : texts) result.push_back(toBytes(each));
  if (result.empty()) result.emplace_back("model");
  return result;
}

std::string outputName(const py::handle& path) {
  std::string name = toBytes(path);
  return name == "-" ? "./-" : name;
}

}  // namespace VeskPython
