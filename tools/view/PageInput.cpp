// SPDX-License-Identifier: MIT
#include "view/PageInput.h"

#include <algorithm>
#include <cerrno>
#include <fstream>

#include "files/Files.h"
#include "sidecar/Sidecar.h"
#include "terminal/Terminal.h"

namespace VeskTool {
namespace {

// The element that has this line; none if no element has it.
std::optional<std::uint32_t> elementAt(const Vesk::Scene& scene, std::uint32_t file,
                                       std::uint64_t line) {
  const auto isBefore = [](const Vesk::SceneElement& element,
                           const std::pair<std::uint32_t, std::uint64_t>& place) {
    return std::pair(element.file, element.line + element.lines - 1) < place;
  };
  const auto found = std::lower_bound(scene.elements.begin(), scene.elements.end(),
                                      std::pair(file, line), isBefore);
  if (found == scene.elements.end() || found->file != file || found->line > line) return {};
  return static_cast<std::uint32_t>(found - scene.elements.begin());
}

// The sidecar of a record file while both are read.
class Attributes {
 public:
  // `given` is a file that must be there; if it is empty the one beside the records is
  // read, if there is one.
  Attributes(const std::string& file, const std::string& given) {
    const std::string name = given.empty() ? Vesk::sidecarNameOf(file) : given;
    if (given.empty() && file == "-") return;
    in_.open(pathOf(name), std::ios::binary);
    if (!in_.is_open()) {
      if (given.empty()) return;
      throw Failure(Exit::kInput, name + ": " + errorText(errno),
                    "--attributes names the CSV file that an import wrote beside the records");
    }
    reader_.emplace(in_, name);
    join_.emplace(*reader_);
  }

  void give(PageModel& model, std::uint32_t element, const Vesk::RecordElement& of) {
    if (!join_) return;
    const std::string f1 = trimmedField(of.header.f1);
    const std::string f2 = trimmedField(of.header.f2);
    const Vesk::SidecarRow* row = join_->find(f1, f2, of.counter());
    if (row == nullptr) return;
    const std::string key =
        reader_->name() + '\n' + f1 + '\n' + f2 + '\n' + std::to_string(row->first);
    model.setAttributes(element, key, reader_->columns(), row->values);
  }

  // Why the file could not be read to its end; empty if it could.
  std::string fault() const { return reader_ ? reader_->fault() : std::string(); }

 private:
  std::ifstream in_;
  std::optional<Vesk::SidecarReader> reader_;
  std::optional<Vesk::SidecarJoin> join_;
};

Exit readAll(PageModel& model, const std::string& file, Session& session, bool says, Choice* choice,
             PageModel::Shown others, const std::string& attributes) {
  Exit exit = Exit::kDone;
  InputCount count;
  Vesk::RecordFile records = openRecords(file, count, session);
  const std::uint32_t id = model.addFile(records.name());
  Attributes known(file, attributes);
  std::uint64_t elements = 0;
  for (;;) {
    const Vesk::RecordFile::Found found = records.next();
    if (found == Vesk::RecordFile::Found::kEnd) break;
    if (found == Vesk::RecordFile::Found::kFault) {
      if (says && records.mode() != 0) session.say(findingOf(records));
      exit = Exit::kNo;
      continue;
    }
    const Vesk::RecordElement& element = records.element();
    const std::uint32_t index =
        model.add(*element.geo, headerText(element.header), element.counter(), id,
                  element.firstLine, records.lines());
    model.setGroup(index, trimmedField(element.header.f2));
    known.give(model, index, element);
    if (choice != nullptr && !choice->takes(element)) model.setShown(index, others);
    ++elements;
  }
  requireRecords(records, count, elements);
  if (!known.fault().empty()) {
    session.warning(known.fault(), "the page shows nothing of the components after this line");
    exit = worst(exit, Exit::kNo);
  }
  return exit;
}

}  // namespace

Exit readInto(PageModel& model, const std::string& file, Session& session, bool says,
              const std::string& attributes) {
  return readAll(model, file, session, says, nullptr, PageModel::Shown::kWhole, attributes);
}

Exit readInto(PageModel& model, const std::string& file, Choice& choice, PageModel::Shown others,
              Session& session, const std::string& attributes) {
  return readAll(model, file, session, true, &choice, others, attributes);
}

void markFindings(PageModel& model, const std::string& file, const std::vector<Finding>& findings) {
  const std::vector<std::string>& files = model.scene().files;
  const auto id =
      static_cast<std::uint32_t>(std::find(files.begin(), files.end(), file) - files.begin());
  for (const Finding& each : findings) {
    PageMark mark{elementAt(model.scene(), id, each.line), nameOf(each.severity), each.code,
                  each.message};
    if (!each.expected.empty()) mark.text += "; expected " + each.expected;
    if (!mark.element) {
      const std::string name = id < files.size() ? model.fileNames()[id] : file;
      const std::string place = each.line == 0 ? name : name + ':' + std::to_string(each.line);
      mark.text = place + ": " + mark.text;
    }
    model.mark(std::move(mark));
  }
}

}  // namespace VeskTool
