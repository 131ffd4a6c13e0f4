// SPDX-License-Identifier: MIT
#ifndef VESK_OUTPUT_TEXTFILE_H
#define VESK_OUTPUT_TEXTFILE_H

#include <cstdio>

namespace Vesk {

// Opens the file `name` of the C library for writing in text mode: empties it,
// or with `append` adds to what it holds. Null if the system refuses.
//
// name: zero-terminated. Its bytes are the file's name as they are; on Windows,
// where names are UTF-16, a name that is valid UTF-8 is taken as UTF-8 and any
// other in the system's code page.
std::FILE* openTextFile(const char* name, bool append);

}  // namespace Vesk

#endif
