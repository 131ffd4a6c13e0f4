// SPDX-License-Identifier: MIT
#ifndef VESK_PYTHON_FINE_H
#define VESK_PYTHON_FINE_H

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "Column.h"
#include "mesh/Scene.h"
#include "vesk/mesh/Fineness.h"

namespace VeskPython {

// What all have in common that make triangles and write them.

// By the tolerance, or if that is 0 by the quality; throws ValueError.
Vesk::Fineness finenessOf(double tolerance, const std::string& quality);

// Fine meshes take long.
inline constexpr unsigned kMeshesBetweenPolls = 64;

// Elements without the shape that they ought to have, and why.
using Missing = std::vector<std::pair<std::int64_t, std::string>>;

Missing missingOf(const Vesk::Scene& scene);
py::list toPython(const Missing& missing);

// The names of a model's files, at least one.
std::vector<std::string> fileNames(const py::list& texts);

// The name of a file to be written, which is none of the tool's own words.
std::string outputName(const py::handle& path);

}  // namespace VeskPython

#endif
