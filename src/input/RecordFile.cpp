// SPDX-License-Identifier: MIT
#include "vesk/RecordFile.h"

#include <utility>

#include "input/RecordReader.h"
#include "output/Base36.h"
#include "output/NumberText.h"

namespace Vesk {

int RecordElement::counter() const { return decodeBase36({header.f3.data(), header.f3.width()}); }

RecordFile::RecordFile(const std::string& path, const RecordOptions& options)
    : RecordFile(std::make_unique<FileSource>(path), path, options) {}

RecordFile::RecordFile(std::istream& stream, std::string name, const RecordOptions& options)
    : RecordFile(std::make_unique<StreamSource>(stream), std::move(name), options) {}

RecordFile::RecordFile(std::unique_ptr<ByteSource> source, std::string name,
                       const RecordOptions& options)
    : reader_(std::make_unique<RecordReader>(std::move(source), options)), name_(std::move(name)) {}

RecordFile::~RecordFile() = default;

RecordFile::Found RecordFile::next() { return reader_->next(); }

RecordElement& RecordFile::element() { return reader_->element(); }

const RecordFault& RecordFile::fault() const { return reader_->fault(); }

const Recs& RecordFile::lines() const { return reader_->lines(); }

std::int32_t RecordFile::mode() const { return reader_->mode(); }

const std::string& RecordFile::error() const { return reader_->error(); }

std::string RecordFile::textOf(const RecordFault& fault) const {
  std::string text =
      name_ + ':' + countText(fault.line) + ':' + countText(fault.column) + ": " + fault.message;
  if (!fault.expected.empty()) text += "; expected " + fault.expected;
  return text;
}

}  // namespace Vesk
