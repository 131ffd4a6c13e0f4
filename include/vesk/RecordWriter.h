// SPDX-License-Identifier: MIT
#ifndef VESK_RECORDWRITER_H
#define VESK_RECORDWRITER_H

#include <cstdint>
#include <memory>
#include <string>

#include <vesk/Geo.h>
#include <vesk/HeaderFields.h>
#include <vesk/RecordStyle.h>

namespace Vesk {

struct RecordElement;

// Writes a record file, element by element.
//
//   RecordWriter file("pump.dat");
//   file.setHeader("P-1001", "01", 1);
//   file.write(Cyl({0, 0, 0}, {0, 0, 500}, 219.1));
//   file.close();
//
// The complete file appears under its name when close succeeds, and then
// replaces one of that name; until then the text goes to a file beside it,
// NAME.part- and a number. A writer that is destroyed without close leaves
// nothing and does not change an existing file: so an exception on the way, or a
// forgotten close, can't pass for a finished file. A device or a pipe that exists
// is written directly.
//
// What the system refuses is a std::system_error whose text begins with the
// file's name. The bytes are those that the exported functions write, except for
// an element that does not fit into its lines, which they cut short in the file.
//
// May be moved, but not copied; one that was moved from can only be assigned to
// or destroyed. One thread at a time.
class RecordWriter {
 public:
  // Begins the file.
  //
  //   path   the file's name; on Windows, where names are UTF-16, valid UTF-8 is
  //          taken as UTF-8 and anything else in the system's code page
  //   style  kTokens, as the exported functions write, or kFixedColumns
  //
  // Throws std::system_error if the system refuses (no such folder, no right to
  // write, the name is a folder), std::invalid_argument for another style.
  explicit RecordWriter(const std::string& path, std::int32_t style = kTokens);

  RecordWriter(RecordWriter&& other) noexcept;
  RecordWriter& operator=(RecordWriter&& other) noexcept;
  ~RecordWriter();

  // Sets the header of every later element, as vk_setHeader does: the first 8
  // and the first 2 characters, padded with blanks, control characters as
  // blanks, and the element number 0..46655. The other fields become blank.
  // Throws std::out_of_range for any other number; the header then stays.
  void setHeader(const std::string& f1, const std::string& f2, int number);

  // The same, with all fields as given.
  void setHeader(const HeaderFields& header);

  // Writes one element under the header that was set last, all blank at first;
  // returns the number of its lines. NaN and the infinities are written as
  // "nan", "inf" and "-inf".
  //
  // Throws, writing nothing of the element, ExceptionInfo if it does not fit
  // into its lines (a text of more than 512 bytes), std::invalid_argument if it is
  // none of the nine kinds. Throws std::system_error if the system refuses
  // (a full disk may show here or in close), std::logic_error after close.
  int write(const Geo& geo);

  // The same under the element's own header and with its closing attributes, as
  // RecordFile has read it; the header that was set stays for other elements.
  int write(const RecordElement& element);

  // Finishes the file: all of it is on the disk when this returns. Throws
  // std::system_error if the system refused anything since the file was begun;
  // then nothing is left. A further call does nothing.
  void close();

 private:
  class Part;

  std::unique_ptr<Part> part_;  // null after a move
};

}  // namespace Vesk

#endif
