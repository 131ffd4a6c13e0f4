// SPDX-License-Identifier: MIT
#include "files/PlantTarget.h"

#include <utility>

#include "output/RecordLayout.h"
#include "terminal/Exit.h"

namespace VeskTool {

SinkStream::SinkStream(TextSink& sink) : std::ostream(nullptr), sink_(sink) {
  rdbuf(this);
  exceptions(std::ios::badbit);
}

int SinkStream::overflow(int c) {
  if (c != std::char_traits<char>::eof()) {
    const char byte = static_cast<char>(c);
    sink_.write({&byte, 1});
  }
  return 0;
}

std::streamsize SinkStream::xsputn(const char* text, std::streamsize size) {
  sink_.write({text, static_cast<std::size_t>(size)});
  return size;
}

PlantTarget::PlantTarget(const std::string& records, const std::optional<std::string>& sidecar,
                         std::vector<std::string> columns, bool force)
    : records_(records, force) {
  out_.mode = Vesk::kTokens;
  out_.format = Vesk::kTokens;
  if (!sidecar) return;
  sidecar_.emplace(*sidecar, force);
  stream_ = std::make_unique<SinkStream>(*sidecar_);
  writer_.emplace(*stream_, std::move(columns));
}

void PlantTarget::setHeader(std::string_view f1, std::string_view f2, int number) {
  holder_.header.set(std::string(f1).c_str(), std::string(f2).c_str(), number);
}

void PlantTarget::put(const Vesk::Geo& geo) {
  holder_.setElement(geo);
  out_.counter = 0;
  out_.clear();
  holder_.writeRecords(out_);
  out_.flushLine();
  text_.clear();
  for (const std::string& line : out_.recs) text_.append(line).append(1, '\n');
  records_.write(text_);
  ++elements_;
}

void PlantTarget::put(const Vesk::SidecarRow& row) {
  if (!writer_) return;
  writer_->add(row);
  ++rows_;
}

void PlantTarget::commit() {
  std::vector<OutputFile*> files;
  if (sidecar_) files.push_back(&*sidecar_);
  files.push_back(&records_);
  commitTogether(files);
}

}  // namespace VeskTool
