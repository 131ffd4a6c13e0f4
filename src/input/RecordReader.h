// SPDX-License-Identifier: MIT
#ifndef VESK_INPUT_RECORDREADER_H
#define VESK_INPUT_RECORDREADER_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "input/Input.h"
#include "input/LineReader.h"
#include "input/RecordHeading.h"
#include "prims/Visit.h"
#include "vesk/RecordFile.h"

namespace Vesk {

// The insides of RecordFile, which tells what its operations do.
class RecordReader {
 public:
  using Found = RecordFile::Found;

  RecordReader(std::unique_ptr<ByteSource> source, const RecordOptions& options)
      : options_(options), reader_(std::move(source)), mode_(options.mode) {}

  Found next();

  RecordElement& element() { return element_; }
  const RecordFault& fault() const { return fault_; }
  const Recs& lines() const { return in_.recs; }
  std::int32_t mode() const { return mode_; }
  const std::string& error() const { return reader_.source().error(); }

 private:
  bool advance();
  bool isWhole() const { return reader_.isTerminated() || options_.takeCutOff; }
  void findMode();
  bool isOfOtherStyle() const;
  void followStyle();

  Found readElement(const RecordKind& kind);
  Found readLastElement(const RecordKind& kind);
  Found readPrimitive(const RecordKind& kind);
  Found skipStray();
  Found skipGap();
  Found reportCutOff();
  Found report(const ReadFailure& failure, RecordFault::Kind kind = RecordFault::Kind::kDamaged);

  void addLine();
  void clearLines();
  void readHeader();
  void readAttributes();
  void checkFixedColumns(const RecordKind& kind) const;
  void checkTokens(const RecordKind& kind);
  void checkText();
  bool mayHaveMore(const RecordKind& kind) const;

  RecordOptions options_;
  LineReader reader_;
  bool started_ = false;
  bool hasLine_ = false;              // not read yet, behind the element
  const RecordKind* kind_ = nullptr;  // of the record that this line begins
  std::int32_t mode_ = 0;

  Input in_;
  std::vector<std::string> spareLines_;
  Continuation continuation_;
  std::array<std::unique_ptr<Geo>, kLastTypeCode + 1> geos_;  // by type code
  bool firstHasReturn_ = false;  // CR before the line end; of the first line
  bool lastHasReturn_ = false;
  std::size_t attributeLine_ = 0;  // where the attributes end
  std::size_t attributeEnd_ = 0;

  RecordElement element_;
  RecordFault fault_;
};

}  // namespace Vesk

#endif
