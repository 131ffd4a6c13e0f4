// SPDX-License-Identifier: MIT
#ifndef VESK_PYTHON_POLL_H
#define VESK_PYTHON_POLL_H

#include <pybind11/pybind11.h>

namespace VeskPython {

// Lets Python handle its signals now and then, on a thread that has given the lock away:
// what Ctrl-C raises there ends the work.
class Poll {
 public:
  // `every`: so many calls are some milliseconds of work, at the most.
  explicit Poll(unsigned every = 4096) : every_(every) {}

  void operator()() {
    if (++calls_ % every_ != 0) return;
    now();
  }

  static void now() {
    const pybind11::gil_scoped_acquire lock;
    if (PyErr_CheckSignals() != 0) throw pybind11::error_already_set();
  }

 private:
  unsigned every_;
  unsigned calls_ = 0;
};

}  // namespace VeskPython

#endif
