// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_FILES_WATCH_H
#define VESK_TOOLS_FILES_WATCH_H

#include <functional>
#include <string>
#include <vector>

#include "terminal/Exit.h"
#include "terminal/Session.h"

namespace VeskTool {

// Does the work, and again whenever one of the files, as expandFiles finds them, was
// written, has come or has gone, and then rests for half a second. A Failure is said,
// and watching goes on; but not one of wrong usage, or of the first time. Ends by
// Interrupted only. Throws a Failure with Exit::kUsage for the standard input.
[[noreturn]] void watchFiles(const std::vector<std::string>& words, Session& session,
                             const std::function<void()>& work);

}  // namespace VeskTool

#endif
