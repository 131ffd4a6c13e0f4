// SPDX-License-Identifier: MIT
#include "view/Page.h"

namespace VeskTool {

// For a build without the viewer.
std::string pageTemplate() { return {}; }

}  // namespace VeskTool
