// SPDX-License-Identifier: MIT
#ifndef VESK_PYTHON_MESHING_H
#define VESK_PYTHON_MESHING_H

#include <pybind11/pybind11.h>

namespace VeskPython {

// Triangles, glTF and drawings; see Module.h.
void defineMeshing(pybind11::module_& module);

}  // namespace VeskPython

#endif
