// SPDX-License-Identifier: MIT
#ifndef VESK_PYTHON_MODULE_H
#define VESK_PYTHON_MODULE_H

#include <pybind11/pybind11.h>

namespace VeskPython {

// What each source adds to the module.
void defineReading(pybind11::module_& module);
void defineWriting(pybind11::module_& module);
void defineQuerying(pybind11::module_& module);

}  // namespace VeskPython

#endif
