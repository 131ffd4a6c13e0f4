// SPDX-License-Identifier: MIT
#include "files/Unpacker.h"
#include "terminal/Libraries.h"

namespace VeskTool {

std::unique_ptr<Unpacker> makeZstdUnpacker() {
  requireLibrary("zstd");
  return nullptr;
}

}  // namespace VeskTool
