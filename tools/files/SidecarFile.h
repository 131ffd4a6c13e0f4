// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_SIDECARFILE_H
#define VESK_TOOLS_SIDECARFILE_H

#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "sidecar/Sidecar.h"
#include "terminal/Session.h"
#include "vesk/RecordFile.h"

namespace VeskTool {

// The names of a sidecar's columns behind the key.
class SidecarColumns {
 public:
  // `name` is the sidecar's, for messages.
  SidecarColumns(std::string name, std::vector<std::string> columns);

  const std::vector<std::string>& columns() const { return columns_; }

  // The place of a column; throws a Failure with Exit::kUsage if there is none.
  std::size_t columnOf(const std::string& name) const;

 private:
  std::string name_;
  std::vector<std::string> columns_;
};

// The sidecar of a record file, joined with it while both are read.
class SidecarFile {
 public:
  // The one with this name or, for "", "plant.attributes.csv" beside "plant.dat" if it is
  // there; null if it is not, or for the standard input. Throws a Failure with
  // Exit::kInput for a file that is no sidecar, and for a name without a file.
  static std::unique_ptr<SidecarFile> open(const std::string& recordFile, const std::string& name);

  const SidecarColumns& names() const { return names_; }
  const std::vector<std::string>& columns() const { return names_.columns(); }
  std::size_t columnOf(const std::string& name) const { return names_.columnOf(name); }

  // The row of an element; null if it has none. Valid until the next call. To be asked
  // for every element, so that the counts are right.
  const Vesk::SidecarRow* find(const Vesk::RecordElement& element);

  // Reads the rest and says what has no partner; throws a Failure with Exit::kInput if
  // the file could not be read to its end.
  void finish(Session& session);

 private:
  SidecarFile(std::ifstream stream, const std::string& name);

  std::ifstream stream_;
  Vesk::SidecarReader reader_;
  Vesk::SidecarJoin join_;
  SidecarColumns names_;
};

}  // namespace VeskTool

#endif
