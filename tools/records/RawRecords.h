// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_RECORDS_RAWRECORDS_H
#define VESK_TOOLS_RECORDS_RAWRECORDS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "terminal/Exit.h"
#include "terminal/Session.h"
#include "vesk/RecordFile.h"

namespace VeskTool {

class KeptInput;

// Reads a record file from its beginning to its end, element by element, with the
// bytes of each as they stand in the file.
class RawRecords {
 public:
  // What an element's lines may come to.
  static constexpr std::size_t kMostBytes = std::size_t{1} << 25;

  // "-" is the standard input. Faults are said to the session, unless it `isQuiet`.
  RawRecords(const std::string& file, Session& session, bool isQuiet = false);

  // Goes to the next element; false at the end. Throws what requireRecords does.
  bool next();

  const Vesk::RecordElement& element() { return records_.element(); }
  const Vesk::RecordFile& file() const { return records_; }
  int mode() const { return records_.mode(); }

  // All lines of the element with their ends. Valid until next. Throws a Failure
  // with Exit::kInput beyond kMostBytes.
  std::string_view bytes();

  // kNo if there was something that can't be read.
  Exit exit() const { return faults_ > 0 ? Exit::kNo : Exit::kDone; }

 private:
  InputCount count_;
  Session& session_;
  KeptInput* kept_ = nullptr;  // the file's
  Vesk::RecordFile records_;
  std::uint64_t elements_ = 0;
  std::uint64_t faults_ = 0;
  bool isQuiet_;
};

}  // namespace VeskTool

#endif
