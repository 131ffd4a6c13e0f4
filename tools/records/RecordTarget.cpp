// SPDX-License-Identifier: MIT
#include "records/RecordTarget.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <system_error>
#include <utility>

#include "terminal/Exit.h"
#include "terminal/Terminal.h"
#include "text/Numbers.h"

namespace VeskTool {
namespace {

std::size_t hashOf(const Vesk::SidecarRow& row) {
  constexpr std::size_t kFactor = 1099511628211U;
  std::size_t hash = static_cast<std::size_t>(row.last);
  for (const std::string& value : row.values)
    hash = hash * kFactor ^ std::hash<std::string_view>()(value);
  return hash;
}

// Empty for what can have none beside it.
std::string sidecarBeside(const std::string& name) {
  return name == "-" || isDevice(pathOf(name)) ? std::string() : Vesk::sidecarNameOf(name);
}

bool isThere(const std::string& name) {
  std::error_code error;
  return std::filesystem::exists(pathOf(name), error);
}

}  // namespace

Sidecars::Sidecars(const std::vector<std::string>& files, bool isOff) : isOff_(isOff) {
  for (const std::string& file : files) {
    const std::unique_ptr<SidecarFile> sidecar = open(file);
    if (sidecar == nullptr) continue;
    if (!columns_) columns_.emplace();
    for (const std::string& column : sidecar->columns()) {
      if (std::find(columns_->begin(), columns_->end(), column) == columns_->end())
        columns_->push_back(column);
    }
  }
}

std::unique_ptr<SidecarFile> Sidecars::open(const std::string& file) const {
  return isOff_ ? nullptr : SidecarFile::open(file, "");
}

void Sidecars::arrange(Vesk::SidecarRow& row, const SidecarFile& from) const {
  if (!columns_ || from.columns() == *columns_) return;
  std::vector<std::string> values(columns_->size());
  for (std::size_t i = 0; i < row.values.size(); ++i) {
    const auto place = std::find(columns_->begin(), columns_->end(), from.columns()[i]);
    values[static_cast<std::size_t>(place - columns_->begin())] = std::move(row.values[i]);
  }
  row.values = std::move(values);
}

RowSet::Outcome RowSet::add(const Vesk::SidecarRow& row) {
  Header& header = headers_[row.f1 + '\n' + row.f2];
  const auto same = header.rows.find(row.first);
  const std::size_t hash = hashOf(row);
  if (same != header.rows.end() && same->second == hash) return Outcome::kKnown;
  if (header.counters.hasAny(row.first, row.last)) return Outcome::kClash;
  header.counters.add(row.first, row.last);
  header.rows.emplace(row.first, hash);
  return Outcome::kNew;
}

RecordTarget::RecordTarget(const std::string& name, const std::optional<Columns>& columns,
                           bool force, bool isDryRun)
    : name_(name), isDryRun_(isDryRun) {
  const std::string beside = sidecarBeside(name);
  const bool isStale = !columns && !beside.empty() && isThere(beside);
  if (!beside.empty() && (columns || isStale)) sidecarName_ = beside;
  if (isDryRun) return;
  records_.emplace(name, force);
  if (sidecarName_.empty()) return;
  sidecar_.emplace(sidecarName_, force);
  stream_ = std::make_unique<SinkStream>(*sidecar_);
  writer_.emplace(*stream_, columns.value_or(Columns()));
}

void RecordTarget::write(std::string_view lines) {
  ++elements_;
  if (records_) records_->write(lines);
}

bool RecordTarget::put(const Vesk::SidecarRow& row) {
  if (sidecarName_.empty()) return true;
  const RowSet::Outcome outcome = rowSet_.add(row);
  if (outcome != RowSet::Outcome::kNew) return outcome == RowSet::Outcome::kKnown;
  ++rows_;
  if (writer_) writer_->add(row);
  return true;
}

void RecordTarget::rest() {
  if (records_) records_->rest();
  if (sidecar_) sidecar_->rest();
}

std::string RecordTarget::summary() const {
  std::string text =
      (name_ == "-" ? std::string("<stdout>") : name_) + ": " + counted(elements_, "element");
  if (!sidecarName_.empty()) text += "; " + sidecarName_ + ": " + counted(rows_, "row");
  return text + (isDryRun_ ? "; not written (--dry-run)\n" : "\n");
}

void RecordTarget::append(JsonWriter& json) const {
  json.key("file").value(name_).key("attributes");
  if (sidecarName_.empty()) {
    json.null();
  } else {
    json.value(sidecarName_);
  }
  json.key("elements").value(elements_).key("rows").value(rows_);
}

void commitTogether(const std::vector<RecordTarget*>& targets) {
  // The records last: with these there, all is.
  std::vector<OutputFile*> files;
  for (RecordTarget* target : targets) {
    if (target->sidecar_) files.push_back(&*target->sidecar_);
  }
  for (RecordTarget* target : targets) {
    if (target->records_) files.push_back(&*target->records_);
  }
  commitTogether(files);
}

void refuseJsonBeside(const std::string& output) {
  if (output == "-")
    throw Failure(Exit::kUsage, "--json and -o - both want stdout", "-o OUT names a file");
}

void refuseSameRecords(const std::string& input, const std::string& output) {
  refuseSameFile(input, output);
  const std::string beside = sidecarBeside(output);
  if (beside.empty() || input == "-") return;
  refuseSameFile(input, beside);
  refuseSameFile(Vesk::sidecarNameOf(input), beside);
  refuseSameFile(Vesk::sidecarNameOf(input), output);
}

}  // namespace VeskTool
