// SPDX-License-Identifier: MIT
#include "Module.h"

#include <exception>
#include <string>
#include <system_error>

#include "Judging.h"
#include "Measuring.h"
#include "Meshing.h"
#include "Paging.h"
#include "Plant.h"
#include "select/Pattern.h"
#include "sidecar/Sidecar.h"
#include "terminal/SystemFailure.h"
#include "terminal/Terminal.h"
#include "vesk/ExceptionInfo.h"

namespace VeskPython {
namespace {

// OSError with the number and the file's name.
void raise(int number, const std::string& text, const std::string& name) {
  const py::object made =
      py::reinterpret_borrow<py::object>(PyExc_OSError)(number, toText(text), toText(name));
  PyErr_SetObject(reinterpret_cast<PyObject*>(Py_TYPE(made.ptr())), made.ptr());
}

// The name stands in front of the text.
void raise(const std::system_error& error) {
  const std::string text = error.what();
  const std::size_t end = text.rfind(": " + error.code().message());
  const std::string name = text.substr(0, end == std::string::npos ? text.size() : end);
  raise(error.code().value(), error.code().message(), name);
}

void translate(std::exception_ptr thrown) {
  try {
    if (thrown) std::rethrow_exception(thrown);
  } catch (const std::system_error& error) {
    raise(error);
  } catch (const VeskTool::SystemFailure& error) {
    raise(error.number, VeskTool::errorText(error.number), error.name);
  } catch (const VeskTool::Failure& error) {
    const std::string hint = error.hint.empty() ? "" : "; " + error.hint;
    PyErr_SetString(PyExc_ValueError, (error.what() + hint).c_str());
  } catch (const std::out_of_range& error) {
    PyErr_SetString(PyExc_ValueError, error.what());
  } catch (const Vesk::ExceptionInfo& error) {
    PyErr_SetString(PyExc_ValueError, error.message.c_str());
  } catch (const Vesk::TovException& error) {
    PyErr_SetString(PyExc_ValueError, error.what());
  }
}

}  // namespace
}  // namespace VeskPython

PYBIND11_MODULE(_vesk, module) {
  pybind11::register_exception_translator(&VeskPython::translate);
  module.def("header_name", [](const pybind11::str& f1, const pybind11::str& f2) {
    return VeskPython::toText(Vesk::headerName(VeskPython::toBytes(f1), VeskPython::toBytes(f2)));
  });
  module.def("sidecar_name", [](const pybind11::str& file) {
    return VeskPython::toText(Vesk::sidecarNameOf(VeskPython::toBytes(file)));
  });
  VeskPython::defineReading(module);
  VeskPython::defineWriting(module);
  VeskPython::defineQuerying(module);
  VeskPython::defineMeasuring(module);
  VeskPython::defineJudging(module);
  VeskPython::defineMeshing(module);
  VeskPython::definePaging(module);
}
