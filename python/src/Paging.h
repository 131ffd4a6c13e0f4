// SPDX-License-Identifier: MIT
#ifndef VESK_PYTHON_PAGING_H
#define VESK_PYTHON_PAGING_H

#include <pybind11/pybind11.h>

namespace VeskPython {

// Pages of the viewer; see Module.h.
void definePaging(pybind11::module_& module);

}  // namespace VeskPython

#endif
