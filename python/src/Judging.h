// SPDX-License-Identifier: MIT
#ifndef VESK_PYTHON_JUDGING_H
#define VESK_PYTHON_JUDGING_H

#include <pybind11/pybind11.h>

namespace VeskPython {

// Checks, clashes and differences; see Module.h.
void defineJudging(pybind11::module_& module);

}  // namespace VeskPython

#endif
