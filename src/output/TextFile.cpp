// SPDX-License-Identifier: MIT
#include "output/TextFile.h"

#ifdef _WIN32
#include <optional>
#include <string>

#include "output/Utf16.h"
#endif

namespace Vesk {

std::FILE* openTextFile(const char* name, bool append) {
#ifdef _WIN32
  if (const std::optional<std::u16string> wide = toUtf16(name)) {
    return _wfopen(std::wstring(wide->begin(), wide->end()).c_str(), append ? L"at" : L"wt");
  }
#endif
  return std::fopen(name, append ? "at" : "wt");
}

}  // namespace Vesk
