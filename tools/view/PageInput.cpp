#include "view/PageInput.h"

#include <algorithm>

#include "Files.h"

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

}  // namespace

Exit readInto(PageModel& model, const std::string& file, Session& session, bool says) {
  Exit exit = Exit::kDone;
  InputCount count;
  Vesk::RecordFile records = openRecords(file, count, session);
  const std::uint32_t id = model.addFile(records.name());
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
    model.add(*element.geo, headerText(element.header), element.counter(), id, element.firstLine,
              records.lines());
    ++elements;
  }
  requireRecords(records, count, elements);
  return exit;
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
      const std::string place = each.line == 0 ? file : file + ':' + std::to_string(each.line);
      mark.text = place + ": " + mark.text;
    }
    model.mark(std::move(mark));
  }
}

}  // namespace VeskTool
