// SPDX-License-Identifier: MIT
#ifndef VESK_PYTHON_MEASURING_H
#define VESK_PYTHON_MEASURING_H

#include <pybind11/pybind11.h>

namespace VeskPython {

// What each element measures; see Module.h.
void defineMeasuring(pybind11::module_& module);

}  // namespace VeskPython

#endif
