// SPDX-License-Identifier: MIT
#ifndef VESK_OUTPUT_OUTFILE_H
#define VESK_OUTPUT_OUTFILE_H

#include <system_error>

#include "output/FileBase.h"
#include "output/Output.h"

namespace Vesk {

class ElementHolder;

// The output file: owns the file handle from open to the next open, close or
// destruction, and the line assembler that builds the records.
class OutFile : public FileBase {
 public:
  OutFile() = default;

  Recs& records() override;
  int setRecords(const Recs& lines) override;

  // Closes the open file and creates `name`, or empties it. On failure (a null
  // name too) returns false, and all else is as the close left it.
  // To learn whether the file before is complete, close it first.
  bool open(const char* name, int mode) override;

  // Returns whether error() is empty. A failure seen since the open, by a write
  // or by this call, is also left in errno; otherwise errno is as it was. Without
  // an open file nothing happens.
  bool close() override;

  virtual ~OutFile();

  // The same, or with `append` adds to what the file holds.
  bool open(const char* name, int mode, bool append);

  bool isOpen() const { return file_ != nullptr; }

  // The first thing that the system refused since open was last called: opening,
  // writing or closing. What is in the file after a failed write is unknown, so
  // the file is complete only if this is empty after close. A full disk may not
  // show before.
  std::error_code error() const { return error_; }

  // Assembles the element that the holder keeps and prints its lines, each
  // followed by a newline. Returns the number of lines printed: 0 for an
  // invalid holder (the lines of the element before stay in records() then) and
  // 0 when no file is open. A line that the system refused counts as printed;
  // see error.
  //
  // An ExceptionInfo ends the element early: the lines finished so far are
  // printed, the unfinished one is lost. Any other exception passes and nothing
  // is printed; file, holder and assembler serve the next element as ever.
  int writeElement(const ElementHolder& holder);

  // The assembler.
  Output& output() { return output_; }

 private:
  void print();
  void keepError(int number);

  Output output_;
  std::error_code error_;
};

}  // namespace Vesk

#endif
