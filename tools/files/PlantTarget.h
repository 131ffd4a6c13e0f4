// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_PLANTTARGET_H
#define VESK_TOOLS_PLANTTARGET_H

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

#include "api/ElementHolder.h"
#include "output/Output.h"
#include "sidecar/Sidecar.h"
#include "terminal/Streams.h"

namespace VeskTool {

// A stream into a sink, which throws what the sink throws.
class SinkStream : private std::streambuf, public std::ostream {
 public:
  explicit SinkStream(TextSink& sink);

 private:
  int overflow(int c) override;
  std::streamsize xsputn(const char* text, std::streamsize size) override;

  TextSink& sink_;
};

// Where an import writes to: a record file in the token style and, beside it, its
// sidecar. Both appear whole or neither does.
class PlantTarget {
 public:
  // "-" is the standard output. Without `force` existing files are refused. Without
  // `sidecar` there is none.
  PlantTarget(const std::string& records, const std::optional<std::string>& sidecar,
              std::vector<std::string> columns, bool force);

  // The header of the elements that follow.
  void setHeader(std::string_view f1, std::string_view f2, int number);

  void put(const Vesk::Geo& geo);
  void put(const Vesk::SidecarRow& row);

  void commit();

  std::uint64_t elements() const { return elements_; }
  std::uint64_t rows() const { return rows_; }

 private:
  OutputFile records_;
  std::optional<OutputFile> sidecar_;
  std::unique_ptr<SinkStream> stream_;
  std::optional<Vesk::SidecarWriter> writer_;
  Vesk::ElementHolder holder_;
  Vesk::Output out_;
  std::string text_;
  std::uint64_t elements_ = 0;
  std::uint64_t rows_ = 0;
};

}  // namespace VeskTool

#endif
