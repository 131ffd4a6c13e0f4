// SPDX-License-Identifier: MIT
#include "commands/ImportReviewModel.h"

#include <array>
#include <cstdio>
#include <map>
#include <memory>
#include <set>
#include <string_view>
#include <utility>

#include "files/PackedSource.h"
#include "files/PlantTarget.h"
#include "rvm/ReviewFault.h"
#include "terminal/Streams.h"
#include "terminal/Terminal.h"
#include "text/Json.h"
#include "text/Numbers.h"

namespace VeskTool {
namespace {

using Vesk::ReviewCounts;
using Vesk::ReviewOddity;
using Vesk::ShapeFate;

constexpr double kCubicMetre = 1e9;  // mm3

// What every row has; the attributes' own columns follow.
constexpr std::string_view kColumns[] = {"path",   "component",    "kind",     "written",
                                         "source", "transparency", "material", "position"};
constexpr std::size_t kOwnColumns = std::size(kColumns);

bool endsWith(std::string_view name, std::string_view ending) {
  if (name.size() < ending.size()) return false;
  name.remove_prefix(name.size() - ending.size());
  for (std::size_t i = 0; i < name.size(); ++i) {
    const char c = name[i];
    if ((c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c) != ending[i]) return false;
  }
  return true;
}

// "Design Temp." gives "design-temp".
std::string columnOf(std::string_view key) {
  std::string name;
  for (const char c : key) {
    const bool isCapital = c >= 'A' && c <= 'Z';
    const bool isPlain =
        (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || static_cast<unsigned char>(c) >= 0x80;
    if (isCapital || isPlain) {
      name += isCapital ? static_cast<char>(c - 'A' + 'a') : c;
    } else if (!name.empty() && name.back() != '-') {
      name += '-';
    }
  }
  while (!name.empty() && name.back() == '-') name.pop_back();
  return name.empty() ? "attribute" : name;
}

std::vector<std::string> columnsOf(const Vesk::ReviewAttributes& attributes) {
  std::vector<std::string> columns(std::begin(kColumns), std::end(kColumns));
  std::set<std::string> taken(columns.begin(), columns.end());
  taken.insert({"f1", "f2", "first", "last"});
  std::map<std::string, int> numbers;  // the next one, by name
  for (const std::string& key : attributes.keys()) {
    const std::string name = columnOf(key);
    std::string unique = name;
    int& number = numbers.try_emplace(name, 2).first->second;
    while (!taken.insert(unique).second) unique = name + '-' + std::to_string(number++);
    columns.push_back(unique);
  }
  return columns;
}

Vesk::ReadBytes bytesOf(PackedSource& source) {
  return [&source](char* buffer, std::size_t size) { return source.read(buffer, size); };
}

// Shapes with the same reason, and the first of them.
struct Complaint {
  std::size_t count = 0;
  std::string first;
};

class Sink : public Vesk::ReviewSink {
 public:
  Sink(PlantTarget& target, bool hasSidecar, std::size_t columns)
      : target_(target), hasSidecar_(hasSidecar), columns_(columns) {}

  void setFile(std::string file) { file_ = std::move(file); }

  void element(const Vesk::ReviewHeader& header, const Vesk::Geo& geo) override {
    target_.setHeader(header.f1, header.f2, header.number);
    target_.put(geo);
  }

  void shape(const Vesk::ReviewRow& row) override {
    if (row.outcome->fate == ShapeFate::kRefused || row.outcome->fate == ShapeFate::kDoubtful) {
      complain(row);
    }
    if (!hasSidecar_ || row.outcome->elements == 0) return;
    row_.f1 = row.header.f1;
    row_.f2 = row.header.f2;
    row_.first = row_.last = row.header.number;
    row_.values.assign(columns_, {});
    row_.values[0] = row.path;
    row_.values[1] = row.group;
    row_.values[2] = nameOf(row.shape->kind);
    row_.values[3] = nameOf(row.outcome->fate);
    row_.values[4] = file_;
    row_.values[5] = std::to_string(row.shape->transparency);
    row_.values[6] = std::to_string(row.material);
    row_.values[7] = std::to_string(row.shape->place);
    if (row.values != nullptr) {
      for (const auto& [key, value] : *row.values) row_.values[kOwnColumns + key] = value;
    }
    target_.put(row_);
  }

  const std::map<std::string, Complaint>& complaints() const { return complaints_; }

 private:
  void complain(const Vesk::ReviewRow& row) {
    std::string text = nameOf(row.outcome->fate);
    text += std::string(", ") + nameOf(row.shape->kind) + ": " + row.outcome->reason;
    Complaint& complaint = complaints_[text];
    if (complaint.count++ > 0) return;
    complaint.first = file_ + (row.shape->isLine ? ", line " : ", byte ") +
                      std::to_string(row.shape->place) + ", in " +
                      (row.path.empty() ? "no group" : row.path);
  }

  PlantTarget& target_;
  bool hasSidecar_;
  std::size_t columns_;
  std::string file_;
  Vesk::SidecarRow row_;
  std::map<std::string, Complaint> complaints_;
};

constexpr const char* kOddities[Vesk::kReviewOddities] = {
    "ends of groups without a group",
    "groups without an end",
    "unknown chunks, skipped",
    "chunks with unknown extra data",
    "the file ends inside END:",
    "bytes behind END:",
    "chunks out of order: HEAD and MODL come once, and first"};

// What was seen or dropped, with how often it was.
std::vector<std::pair<std::string, std::uint64_t>> remarksOf(
    const ReviewCounts& counts, const Vesk::ReviewAttributes& attributes,
    const Vesk::ReviewNames& names) {
  std::vector<std::pair<std::string, std::uint64_t>> all = {
      {"shapes whose box is not that of their parameters", counts.boxesDisagree},
      {"sheared snouts of two radii, whose form is not certain", counts.oddSnouts},
      {"shapes whose transparency is missing or in an uncertain place",
       counts.uncertainTransparencies},
      {"shapes with rounded axes, made perpendicular again", counts.axesRepaired},
      {"facets without an area or that cross themselves, left out", counts.facetsRefused},
      {"obstructions, skipped (--obstructions draws them)", counts.obstructionsSkipped},
      {"insulations, skipped (--insulations draws them)", counts.insulationsSkipped},
      {"shapes of groups that were not selected", counts.notSelected},
      {"colours, dropped", counts.colours},
      {"transparencies, kept only in the sidecar", counts.transparencies},
      {"normals, dropped", counts.normals},
      {"groups without attributes", counts.groupsWithoutAttributes},
      {"groups without shapes whose attributes are dropped", counts.groupsOfNoShape},
      {"blocks of attributes without a group", attributes.unusedCount()},
      {"lines that are not attributes or belong to no block", attributes.strayCount()},
      {"attributes given again in their block, the last one kept", attributes.replacedCount()},
      {"names that share a header field F2", names.crowded()},
  };
  for (std::size_t i = 0; i < Vesk::kReviewOddities; ++i) {
    all.emplace_back(kOddities[i], counts.oddities[i].count);
  }
  std::erase_if(all, [](const auto& remark) { return remark.second == 0; });
  return all;
}

std::string textOf(const ReviewModelJob& job, const ReviewCounts& counts,
                   const std::vector<std::pair<std::string, std::uint64_t>>& remarks) {
  std::string text = job.output + ": " + counted(counts.elements, "element") + " of " +
                     counted(counts.shapes(), "shape") + " in " + counted(counts.groups, "group") +
                     '\n';
  for (std::size_t k = 0; k < Vesk::kReviewKinds; ++k) {
    const Vesk::ReviewKindCount& kind = counts.kinds[k];
    if (kind.shapes() == 0) continue;
    text += std::string("  ") + nameOf(static_cast<Vesk::ReviewKind>(k)) + ':';
    for (std::size_t f = 0; f < Vesk::kShapeFates; ++f) {
      if (kind.fates[f] == 0) continue;
      text += ' ' + grouped(kind.fates[f]) + ' ' + nameOf(static_cast<ShapeFate>(f)) + ',';
    }
    text.back() = ';';
    text += ' ' + counted(kind.elements, "element");
    if (kind.deviation > 0.0) {
      text += ", at most " + trimmedNumber(kind.deviation, 4) + " mm off";
    }
    if (kind.volumeLost > 0.0) {
      text += ", " + trimmedNumber(kind.volumeLost / kCubicMetre, 6) + " m3 less";
    }
    text += '\n';
  }
  for (const auto& [what, count] : remarks) text += "  " + grouped(count) + ' ' + what + '\n';
  return text;
}

std::string jsonOf(const ReviewModelJob& job, const ReviewCounts& counts,
                   const std::vector<std::pair<std::string, std::uint64_t>>& remarks,
                   const std::map<std::string, Complaint>& complaints) {
  std::string text;
  JsonWriter json(text);
  json.beginObject().key("schema").value("vesk.import.review/1").key("file").value(job.output);
  json.key("attributes");
  if (job.sidecar) {
    json.value(*job.sidecar);
  } else {
    json.null();
  }
  json.key("inputs").beginArray();
  for (const std::string& file : job.files) json.value(file);
  json.endArray().key("elements").value(std::uint64_t{counts.elements});
  json.key("shapes").value(std::uint64_t{counts.shapes()});
  json.key("groups").value(std::uint64_t{counts.groups}).key("kinds").beginArray();
  for (std::size_t k = 0; k < Vesk::kReviewKinds; ++k) {
    const Vesk::ReviewKindCount& kind = counts.kinds[k];
    if (kind.shapes() == 0) continue;
    json.beginObjectRow().key("kind").value(nameOf(static_cast<Vesk::ReviewKind>(k)));
    for (std::size_t f = 0; f < Vesk::kShapeFates; ++f) {
      json.key(nameOf(static_cast<ShapeFate>(f))).value(std::uint64_t{kind.fates[f]});
    }
    json.key("elements").value(std::uint64_t{kind.elements});
    json.key("deviation").value(kind.deviation).key("volumeLost").value(kind.volumeLost);
    json.endObject();
  }
  json.endArray().key("complaints").beginArray();
  for (const auto& [what, complaint] : complaints) {
    json.beginObjectRow().key("text").value(what);
    json.key("count").value(std::uint64_t{complaint.count});
    json.key("first").value(complaint.first).endObject();
  }
  json.endArray().key("remarks").beginArray();
  for (const auto& [what, count] : remarks) {
    json.beginObjectRow().key("text").value(what).key("count").value(count).endObject();
  }
  json.endArray().endObject();
  return text;
}

// Reads a file by `read` and turns what is wrong with it into a Failure.
template <class Read>
void readFile(const std::string& file, Session& session, Read read) {
  InputCount count;
  PackedSource source(file, count, session.progress());
  const std::string name = shownName(file);
  try {
    read(bytesOf(source));
  } catch (const Vesk::ReviewFault& fault) {
    if (!source.error().empty()) throw Failure(Exit::kInput, name + ": " + source.error());
    throw Failure(Exit::kInput, name + (fault.isLine ? ", line " : ", byte ") +
                                    std::to_string(fault.place) + ": " + fault.what());
  } catch (const std::length_error& crowded) {
    throw Failure(Exit::kInput, name + ": " + crowded.what(), "import fewer files at once");
  }
  if (!source.error().empty()) throw Failure(Exit::kInput, name + ": " + source.error());
}

}  // namespace

bool isReviewModel(const std::string& file) {
  if (file == "-") return false;
  if (endsWith(file, ".rvm") || endsWith(file, ".rev")) return true;
  if (endsWith(file, ".pcf") || isDevice(pathOf(file))) return false;
  constexpr std::string_view kBinary("\0\0\0H\0\0\0E\0\0\0A\0\0\0D", 16);
  std::FILE* const opened = openFile(pathOf(file), "rb");
  if (opened == nullptr) return false;
  std::array<char, kBinary.size()> begin{};
  const std::size_t size = std::fread(begin.data(), 1, begin.size(), opened);
  std::fclose(opened);
  const std::string_view text(begin.data(), size);
  return text == kBinary || text.starts_with("HEAD\n") || text.starts_with("HEAD\r\n");
}

Exit importReviewModels(const ReviewModelJob& job, Session& session) {
  Vesk::ReviewAttributes attributes;
  for (const std::string& file : job.attributes) {
    readFile(file, session, [&](const Vesk::ReadBytes& bytes) { attributes.read(bytes); });
  }
  const std::vector<std::string> columns = columnsOf(attributes);
  PlantTarget target(job.output, job.sidecar, columns, job.force);
  Sink sink(target, job.sidecar.has_value(), columns.size());
  Vesk::ReviewImport import(job.options, attributes, sink);
  for (const std::string& file : job.files) {
    sink.setFile(shownName(file));
    readFile(file, session, [&](const Vesk::ReadBytes& bytes) { import.read(bytes); });
  }
  const ReviewCounts& counts = import.counts();
  for (const auto& [what, complaint] : sink.complaints()) {
    session.warning(counted(complaint.count, "shape") + ' ' + what,
                    "the first: " + complaint.first);
  }
  for (std::size_t i = 0; i < job.options.groups.size(); ++i) {
    if (import.selection().found()[i]) continue;
    throw Failure(Exit::kInput, "no group is " + job.options.groups[i],
                  "a group is named by its path, \"/SITE/ZONE\", or the end of it; * stands for "
                  "any characters");
  }
  target.commit();
  const auto remarks = remarksOf(counts, attributes, import.names());
  const std::string answer =
      job.json ? jsonOf(job, counts, remarks, sink.complaints()) : textOf(job, counts, remarks);
  if (job.output == "-") {
    session.remark(answer);
  } else if (job.json || !session.options().quiet) {
    session.out().write(answer);
  }
  return counts.isAllExact() ? Exit::kDone : Exit::kNo;
}

}  // namespace VeskTool
