// SPDX-License-Identifier: MIT
// What the tool asks of its process, answered by Python.
#include "Poll.h"
#include "terminal/Terminal.h"

namespace VeskTool {

// Python's own handlers of signals run, and what they raise ends the work.
void checkInterrupt() { VeskPython::Poll::now(); }

// Nothing ends the process but Python, which takes files that are half written with it.
HalfFile::HalfFile(const std::filesystem::path& /*path*/) {}
HalfFile& HalfFile::operator=(HalfFile&& /*other*/) noexcept { return *this; }
void HalfFile::release() noexcept {}
Together::Together() = default;
Together::~Together() = default;

}  // namespace VeskTool
