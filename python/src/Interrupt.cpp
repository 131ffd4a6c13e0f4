// SPDX-License-Identifier: MIT
// What the tool asks of its process, answered by Python.
#include "Poll.h"
#include "terminal/Terminal.h"

namespace VeskTool {

// Python's own handlers of signals run, and what they raise ends the work.
void checkInterrupt() { VeskPython::Poll::now(); }

}  // namespace VeskTool
