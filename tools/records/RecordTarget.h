// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_RECORDS_RECORDTARGET_H
#define VESK_TOOLS_RECORDS_RECORDTARGET_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "files/PlantTarget.h"
#include "files/SidecarFile.h"
#include "records/CounterSet.h"
#include "sidecar/Sidecar.h"
#include "terminal/Streams.h"
#include "text/Json.h"

namespace VeskTool {

// The columns of a sidecar behind its key.
using Columns = std::vector<std::string>;

// The sidecars of some record files.
class Sidecars {
 public:
  // Those beside the files; with `isOff` none is looked for.
  Sidecars(const std::vector<std::string>& files, bool isOff);

  // All columns of all of them, each once; nothing if no file has a sidecar.
  const std::optional<Columns>& columns() const { return columns_; }

  // Opens that of one file; null if it has none.
  std::unique_ptr<SidecarFile> open(const std::string& file) const;

  // The row with its values in the order of columns().
  void arrange(Vesk::SidecarRow& row, const SidecarFile& from) const;

 private:
  bool isOff_;
  std::optional<Columns> columns_;
};

// Which rows a sidecar has so far: each component once.
class RowSet {
 public:
  enum class Outcome {
    kNew,
    kKnown,  // the same row is there
    kClash,  // another row is there that has elements in common with it
  };

  Outcome add(const Vesk::SidecarRow& row);

 private:
  struct Header {
    CounterSet counters;
    std::map<int, std::size_t> rows;  // by `first`; a hash of all else
  };

  std::unordered_map<std::string, Header> headers_;  // by f1 and f2
};

// A record file and, beside it, its sidecar, on their way. Nothing is there under
// their names before commitTogether.
class RecordTarget {
 public:
  // "-" is the standard output. Without columns there is no sidecar, and none beside
  // a name that is no file's either. A sidecar of before would not belong to the new
  // records: it is refused without `force`, and else replaced by one without rows. A
  // dry run only counts.
  RecordTarget(const std::string& name, const std::optional<Columns>& columns, bool force,
               bool isDryRun);

  // Lines of one element.
  void write(std::string_view lines);

  // A row that is there already is not written again; false for one that clashes.
  bool put(const Vesk::SidecarRow& row);

  // Brings it to the disk and gives the files back to the system until the next write.
  void rest();

  const std::string& name() const { return name_; }
  std::uint64_t elements() const { return elements_; }
  std::uint64_t rows() const { return rows_; }

  // "out.dat: 12 elements; out.attributes.csv: 5 rows"
  std::string summary() const;

  // The same as members of an object that has begun: file, attributes, elements, rows.
  void append(JsonWriter& json) const;

  friend void commitTogether(const std::vector<RecordTarget*>& targets);

 private:
  std::string name_;
  std::string sidecarName_;  // empty without one
  bool isDryRun_;
  std::optional<OutputFile> records_;
  std::optional<OutputFile> sidecar_;
  std::unique_ptr<SinkStream> stream_;
  std::optional<Vesk::SidecarWriter> writer_;
  RowSet rowSet_;
  std::uint64_t elements_ = 0;
  std::uint64_t rows_ = 0;
};

// All files of all targets appear, or none does.
void commitTogether(const std::vector<RecordTarget*>& targets);

// Throws a Failure with Exit::kUsage if both go to the standard output.
void refuseJsonBeside(const std::string& output);

// Throws a Failure with Exit::kUsage if what is written to this name would replace the
// input or its sidecar.
void refuseSameRecords(const std::string& input, const std::string& output);

}  // namespace VeskTool

#endif
