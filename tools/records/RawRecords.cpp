// SPDX-License-Identifier: MIT
#include "records/RawRecords.h"

#include <memory>
#include <utility>

#include "files/Files.h"
#include "files/PackedSource.h"
#include "findings/Findings.h"

namespace VeskTool {

// An input of which the last bytes can be had again.
class KeptInput : public TextInput {
 public:
  using TextInput::TextInput;

  std::size_t read(char* buffer, std::size_t size) override {
    const std::size_t count = TextInput::read(buffer, size);
    // A long stretch of lines that are no record need not be kept.
    if (kept_.size() - begin_ > 2 * RawRecords::kMostBytes)
      begin_ = kept_.size() - RawRecords::kMostBytes;
    kept_.erase(0, begin_);
    origin_ += begin_;
    begin_ = 0;
    kept_.append(buffer, count);
    return count;
  }

  // What stands before this place of the file is not asked for any more.
  void dropUpTo(std::uint64_t offset) {
    if (offset >= origin_) begin_ = static_cast<std::size_t>(offset - origin_);
  }

  // So many lines from this place on; empty if it is not kept any more.
  std::string_view lines(std::uint64_t offset, std::uint64_t count) const {
    if (offset < origin_ + begin_) return {};
    const auto first = static_cast<std::size_t>(offset - origin_);
    std::size_t end = first;
    for (std::uint64_t i = 0; i < count && end < kept_.size(); ++i)
      end = std::min(kept_.find('\n', end), kept_.size() - 1) + 1;
    return std::string_view(kept_).substr(first, end - first);
  }

 private:
  std::string kept_;
  std::size_t begin_ = 0;     // of what may still be asked for
  std::uint64_t origin_ = 0;  // of `kept_` in the file
};

RawRecords::RawRecords(const std::string& file, Session& session, bool isQuiet)
    : session_(session),
      records_(
          [&] {
            auto source = std::make_unique<KeptInput>(file, count_, session.progress());
            kept_ = source.get();
            return std::unique_ptr<Vesk::ByteSource>(std::move(source));
          }(),
          shownName(file), {.bothStyles = session.options().mixed}),
      isQuiet_(isQuiet) {}

bool RawRecords::next() {
  for (;;) {
    const Vesk::RecordFile::Found found = records_.next();
    if (found == Vesk::RecordFile::Found::kEnd) break;
    if (found == Vesk::RecordFile::Found::kElement) {
      ++elements_;
      kept_->dropUpTo(records_.element().offset);
      return true;
    }
    ++faults_;
    if (records_.mode() != 0 && !isQuiet_) session_.say(findingOf(records_));
    kept_->dropUpTo(records_.fault().offset);
  }
  requireRecords(records_, count_, elements_);
  return false;
}

std::string_view RawRecords::bytes() {
  const Vesk::RecordElement& element = records_.element();
  const std::string_view bytes =
      kept_->lines(element.offset, element.lastLine - element.firstLine + 1);
  if (bytes.empty() || bytes.size() > kMostBytes) {
    throw Failure(Exit::kInput, records_.name() + ':' + std::to_string(element.firstLine) +
                                    ": the element is longer than 32 MiB");
  }
  return bytes;
}

}  // namespace VeskTool
