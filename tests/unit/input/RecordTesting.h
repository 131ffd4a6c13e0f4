// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_INPUT_RECORDTESTING_H
#define VESK_TESTS_INPUT_RECORDTESTING_H

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "api/ElementHolder.h"
#include "vesk/RecordFile.h"
#include "vesk/TovException.h"

namespace Vesk {

// The text of the holder's element as it stands in a file; empty when it can't
// be written.
inline std::string writtenText(const ElementHolder& holder, std::int32_t mode,
                               std::uint32_t lineSize = 0) {
  Output out;
  out.mode = mode;
  out.lineSize = lineSize != 0     ? lineSize
                 : mode == kTokens ? kTokensLineSize
                                   : kFixedColumnsLineSize;
  try {
    holder.writeRecords(out);
    out.flushLine();
  } catch (const TovException&) {
    return {};
  }
  std::string text;
  for (const std::string& line : out.recs) text += line + '\n';
  return text;
}

// A holder with what was read.
inline ElementHolder holderOf(const RecordElement& element) {
  ElementHolder holder;
  static_cast<HeaderFields&>(holder.header) = element.header;
  holder.ft = element.ft;
  holder.tk = element.tk;
  holder.setElement(*element.geo);
  return holder;
}

// Gives at most `size` bytes at a time.
class PieceSource : public ByteSource {
 public:
  PieceSource(std::string_view text, std::size_t size) : text_(text), size_(size) {}

  std::size_t read(char* buffer, std::size_t size) override {
    const std::size_t count = text_.copy(buffer, std::min(size, size_));
    text_.remove_prefix(count);
    return count;
  }

 private:
  std::string_view text_;
  std::size_t size_;
};

// What a reader finds, in words: "CYL 1-1" for an element with its lines,
// textOf for a fault.
inline std::vector<std::string> findings(RecordFile& file) {
  std::vector<std::string> found;
  for (;;) {
    switch (file.next()) {
      case RecordFile::Found::kEnd:
        return found;
      case RecordFile::Found::kElement:
        found.push_back(std::string(file.element().keyword) + ' ' +
                        std::to_string(file.element().firstLine) + '-' +
                        std::to_string(file.element().lastLine));
        break;
      case RecordFile::Found::kFault:
        found.push_back(file.textOf(file.fault()));
        break;
    }
  }
}

inline std::vector<std::string> findings(std::string_view text, const RecordOptions& options = {}) {
  RecordFile file(std::make_unique<TextSource>(text), "f", options);
  return findings(file);
}

}  // namespace Vesk

#endif
