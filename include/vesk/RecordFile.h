// SPDX-License-Identifier: MIT
#ifndef VESK_RECORDFILE_H
#define VESK_RECORDFILE_H

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <vesk/ByteSource.h>
#include <vesk/Geo.h>
#include <vesk/HeaderFields.h>
#include <vesk/ReadCause.h>
#include <vesk/RecordStyle.h>
#include <vesk/Recs.h>

namespace Vesk {

class RecordReader;

// One element of a record file.
struct RecordElement {
  // What the style keeps. In mode 2 f5 and f7 are blank, and f6 is in the prefix;
  // in mode 3 f6 and f7 are the attributes "cs " and "sp ", cut to their widths.
  HeaderFields header;
  std::optional<std::int32_t> ft;  // closing attributes, mode 3
  std::optional<std::int32_t> tk;

  Geo* geo = nullptr;           // the primitive; its owner may change it
  std::string_view keyword;     // of its record
  std::uint64_t firstLine = 0;  // from 1
  std::uint64_t lastLine = 0;
  std::uint64_t offset = 0;  // of its first byte in the file
  bool isCutOff = false;     // its last line has no end; see RecordOptions

  // The element counter.
  int counter() const;
};

// Something in a record file that is not an element.
struct RecordFault {
  enum class Kind {
    kDamaged,  // an element that can't be read, or that lacks something
    kCutOff,   // the file ends inside this element
    kStray,    // lines that belong to no element
  };

  Kind kind = Kind::kDamaged;
  std::uint64_t line = 0;       // where it is; from 1
  std::size_t column = 0;       // from 1
  std::string message;          // what was found
  std::string expected;         // what was expected there
  std::int32_t level = 0;       // as in ExceptionInfo
  std::uint64_t firstLine = 0;  // of the element, or of the stray lines
  std::uint64_t lastLine = 0;
  std::uint64_t offset = 0;  // of the first line in the file

  // What `message` is made from.
  ReadCause cause = ReadCause::kNoRecord;
  std::string token;
  std::string_view primitive;  // "cylinder"; empty if no reader of one has failed
};

struct RecordOptions {
  std::int32_t mode = 0;    // kFixedColumns or kTokens; 0: detect it
  bool takeCutOff = false;  // take a last line without an end as if it had one
  bool bothStyles = false;  // read on where files of both styles were joined
};

// Reads a record file, element by element.
//
//   RecordFile file("veskplant.dat");
//   for (RecordFile::Found found; (found = file.next()) != RecordFile::Found::kEnd;) {
//     if (found == RecordFile::Found::kElement) use(file.element());
//     if (found == RecordFile::Found::kFault) report(file.textOf(file.fault()));
//   }
//   if (!file.error().empty()) ...
//
// The style is detected from the first lines; lines may end with LF or CR LF.
// A line that begins an element of the other style belongs to no element, unless
// `bothStyles` asks to go on in that style.
// One element at a time is in memory, never the file. Whatever can't be read is
// a fault, and reading goes on at the next first line of a record.
//
// A text may end with CR: if the lines end with LF only and one character is
// missing by the text's length, the CR is that character.
//
// A polyline or polygon that mode 2 wrote as several records comes back as
// those records, one element each.
//
// Every line is written with an end. So a last line without one means that the
// file was cut off, perhaps inside a number: its element is a fault. If too
// little is left of that line to see whether it began a new element, the
// element before it is a fault too if it may lack a line: if it is a box or a
// reducer, whose tag lines may follow, or if its last line was nearly full.
// Other missing lines are noticed by their numbers and by what is missing in the
// record; tag lines missing at an element's end, and arcs, can't be noticed.
class RecordFile {
 public:
  enum class Found { kElement, kFault, kEnd };

  // A file that can't be opened has no elements; see error.
  explicit RecordFile(const std::string& path, const RecordOptions& options = {});

  // From a stream, or any other source of bytes; the name is for reports.
  RecordFile(std::istream& stream, std::string name, const RecordOptions& options = {});
  RecordFile(std::unique_ptr<ByteSource> source, std::string name,
             const RecordOptions& options = {});

  RecordFile(const RecordFile&) = delete;
  RecordFile& operator=(const RecordFile&) = delete;
  ~RecordFile();

  // Goes to the next element or fault.
  Found next();

  // What next() has found. Valid until its next call, and so is the primitive.
  RecordElement& element();
  const RecordFault& fault() const;

  // The lines of the element, or of the damaged one; the first of stray lines.
  const Recs& lines() const;

  // The style; 0 until a record is found. With bothStyles, that of what next has found.
  std::int32_t mode() const;

  const std::string& name() const { return name_; }

  // Why the file could not be opened or read to its end; empty if it could.
  const std::string& error() const;

  // "veskplant.dat:1042:31: message; expected a number"
  std::string textOf(const RecordFault& fault) const;

 private:
  std::unique_ptr<RecordReader> reader_;
  std::string name_;
};

}  // namespace Vesk

#endif
