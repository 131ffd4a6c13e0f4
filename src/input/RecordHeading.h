// SPDX-License-Identifier: MIT
#ifndef VESK_INPUT_RECORDHEADING_H
#define VESK_INPUT_RECORDHEADING_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "output/RecordWords.h"
#include "vesk/Geo.h"
#include "vesk/ReadCause.h"

namespace Vesk {

// One kind of record. A polyline or polygon has several in mode 2.
struct RecordKind {
  const Keyword& keyword;
  std::int32_t typeCode;
  std::size_t numbers;          // of a mode 2 record, tags aside
  std::string_view tagWord;     // keyword of its mode 3 tag lines, empty if it has none
  std::size_t moreNumbers = 0;  // mode 2: how many there may be as well
  std::size_t mostNumbers = 0;
};

// A new primitive with this type code, null if there is no such code.
std::unique_ptr<Geo> makeGeo(std::int32_t typeCode);

// The kind of record that begins with this line, null if none does: its line
// number is that of a first line and its keyword is known. For a mode 2 and a
// mode 3 file.
const RecordKind* kindOfFirstLine(std::string_view line, std::int32_t mode);

// Whether a line cut short after these characters may have been a first line.
bool mayBeFirstLine(std::string_view cutLine, std::int32_t mode);

// What keeps the line from being a first line, for reports.
struct HeadingFault {
  std::size_t column;  // from 0
  ReadCause cause;
  std::string_view token;  // of the line
};
HeadingFault faultOfHeading(std::string_view line, std::int32_t mode);

// Knows which lines may follow in a record.
class Continuation {
 public:
  enum class Answer {
    kYes,
    kNo,         // it is no line of this record
    kWrongLine,  // it is one, but lines between are missing
  };

  // Starts with the record's first line, which kindOfFirstLine has found.
  void start(const RecordKind& kind, std::string_view firstLine, std::int32_t mode);

  // Whether the line is the record's next one; if it is, counts on.
  Answer follow(std::string_view line);

  // Whether a line cut short after these characters may be the next one.
  bool mayFollow(std::string_view cutLine) const;

  // The line number that comes next.
  std::string_view expectedNumber() const { return next_; }

 private:
  std::string heading(std::string_view number, std::string_view keyword) const;
  bool isHeading(std::string_view line, std::string_view number, std::string_view keyword) const;
  bool opensTags(std::string_view line) const;
  void countFrom(std::string_view number);

  const RecordKind* kind_ = nullptr;
  std::int32_t mode_ = 0;
  std::string first_;    // heading of the first line
  std::string number_;   // of the last line
  std::string next_;     // of the next line
  std::string keyword_;  // of the last line
};

}  // namespace Vesk

#endif
