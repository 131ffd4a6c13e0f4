// SPDX-License-Identifier: MIT
#include "files/SidecarFile.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "terminal/SystemFailure.h"
#include "terminal/Terminal.h"
#include "text/Numbers.h"

namespace VeskTool {

namespace fs = std::filesystem;

SidecarColumns::SidecarColumns(std::string name, std::vector<std::string> columns)
    : name_(std::move(name)), columns_(std::move(columns)) {}

std::size_t SidecarColumns::columnOf(const std::string& name) const {
  const auto found = std::find(columns_.begin(), columns_.end(), name);
  if (found != columns_.end()) return static_cast<std::size_t>(found - columns_.begin());
  std::string names;
  for (const std::string& column : columns_) names += (names.empty() ? "" : ", ") + column;
  throw Failure(Exit::kUsage, name_ + ": there is no column \"" + name + '"', "columns: " + names);
}

SidecarFile::SidecarFile(std::ifstream stream, const std::string& name)
    : stream_(std::move(stream)),
      reader_(stream_, name),
      join_(reader_),
      names_(name, reader_.columns()) {}

std::unique_ptr<SidecarFile> SidecarFile::open(const std::string& recordFile,
                                               const std::string& name) {
  if (name.empty() && recordFile == "-") return nullptr;
  const std::string file = name.empty() ? Vesk::sidecarNameOf(recordFile) : name;
  std::error_code error;
  if (name.empty() && !fs::is_regular_file(pathOf(file), error)) return nullptr;
  errno = 0;
  std::ifstream stream(pathOf(file), std::ios::binary);
  if (!stream) {
    const int number = errno;
    throw SystemFailure(Exit::kInput, file + ": " + errorText(number), number, file);
  }
  std::unique_ptr<SidecarFile> sidecar(new SidecarFile(std::move(stream), file));
  const std::string& fault = sidecar->reader_.fault();
  if (!fault.empty()) throw Failure(Exit::kInput, fault, "docs/sidecar.md describes sidecars");
  return sidecar;
}

const Vesk::SidecarRow* SidecarFile::find(const Vesk::RecordElement& element) {
  const Vesk::HeaderFields& header = element.header;
  return join_.find(header.f1.view(), header.f2.view(), element.counter());
}

void SidecarFile::finish(Session& session) {
  join_.finish();
  if (!reader_.fault().empty()) throw Failure(Exit::kInput, reader_.fault());
  if (join_.outOfOrder() > 0) {
    session.warning(reader_.name() + ": has another order than its record file; attributes of " +
                        counted(join_.outOfOrder(), "component") + " are missing",
                    "join record files and sidecars in the same order");
  }
  if (join_.rowsWithoutElements() > 0) {
    session.note(reader_.name() + ": " + counted(join_.rowsWithoutElements(), "row") +
                 " without elements");
  }
  if (join_.elementsWithoutRows() > 0) {
    session.note(reader_.name() + ": " + counted(join_.elementsWithoutRows(), "element") +
                 " without a row");
  }
}

}  // namespace VeskTool
