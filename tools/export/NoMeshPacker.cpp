// SPDX-License-Identifier: MIT
#include "export/MeshPacker.h"
#include "terminal/Libraries.h"

namespace VeskTool {

std::unique_ptr<MeshPacker> makeMeshPacker() {
  requireLibrary("meshoptimizer");
  return nullptr;
}

}  // namespace VeskTool
