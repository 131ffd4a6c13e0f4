// SPDX-License-Identifier: MIT
#ifndef VESK_OUTPUT_FILEBASE_H
#define VESK_OUTPUT_FILEBASE_H

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include "vesk/FixStr.h"
#include "vesk/Recs.h"

namespace Vesk {

struct FileCloser {
  // GCOVR_EXCL_START: OutFile closes by itself, to see whether the system refused
  void operator()(std::FILE* file) const { std::fclose(file); }
  // GCOVR_EXCL_STOP
};

// A file of records: what OutFile is to its users.
class FileBase {
 public:
  FileBase(const FileBase&) = delete;
  FileBase& operator=(const FileBase&) = delete;

  // The lines of the current element.
  virtual Recs& records() = 0;

  // Replaces them by a copy of `lines`; the file's own list stays as it is.
  // Returns the number of lines now held.
  virtual int setRecords(const Recs& lines) = 0;

  // Opens the file `name` in a record style; false if that can't be done.
  virtual bool open(const char* name, int mode) = 0;

  // Closes the file if one is open; false if some of it was not written.
  virtual bool close() = 0;

 protected:
  FileBase() = default;
  ~FileBase() = default;

  std::string title_;                            // the owner's; not written
  std::string name_;                             // of the file opened last
  std::unique_ptr<char[]> buffer_;               // the open file's; outlives it
  std::unique_ptr<std::FILE, FileCloser> file_;  // null while closed
  std::int32_t status_ = 0;                      // set to 0 at every open
  std::int32_t mode_ = 0;                        // record style
  FixStr<3> mark_;                               // the owner's; not written
};

}  // namespace Vesk

#endif
