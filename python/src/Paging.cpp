// SPDX-License-Identifier: MIT
#include "Paging.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Attributes.h"
#include "Fine.h"
#include "Lines.h"
#include "Plant.h"
#include "Poll.h"
#include "elements/Describe.h"
#include "terminal/Streams.h"
#include "view/Page.h"
#include "view/PageData.h"
#include "view/PageModel.h"

namespace VeskTool {

// Python has the library for it.
void writeCompressed(TextSink& to, std::string_view bytes) {
  const pybind11::gil_scoped_acquire lock;
  const pybind11::object packed = pybind11::module_::import("zlib").attr("compress")(
      pybind11::memoryview::from_memory(bytes.data(), static_cast<pybind11::ssize_t>(bytes.size())),
      kPageCompression);
  const pybind11::object text = pybind11::module_::import("base64").attr("b64encode")(packed);
  to.write(pybind11::cast<std::string_view>(text));
}

}  // namespace VeskTool

namespace VeskPython {
namespace {

struct PageOptions {
  std::vector<std::string> files;
  int style;
  double tolerance;
  std::string quality;
  std::string title;
};

// Gives an element of the page its row of attributes.
void give(VeskTool::PageModel& page, std::uint32_t index, const std::string& file,
          const Attributes& attributes, std::size_t element) {
  const Vesk::SidecarRow* row = attributes.of(element);
  if (row == nullptr) return;
  const std::string key =
      file + '\n' + row->f1 + '\n' + row->f2 + '\n' + std::to_string(row->first);
  page.setAttributes(index, key, attributes.columns(), row->values);
}

void fill(VeskTool::PageModel& page, Plant& plant, const Attributes& attributes,
          const PageOptions& options) {
  std::vector<std::uint32_t> ids;
  for (const std::string& each : options.files) ids.push_back(page.addFile(each));
  Lines lines(options.style);
  std::size_t element = 0;
  Poll poll(kMeshesBetweenPolls);
  plant.each([&](Vesk::RecordElement& each, std::uint32_t file) {
    poll();
    const std::size_t known = file < ids.size() ? file : 0;
    const std::uint32_t index =
        page.add(*each.geo, VeskTool::headerText(each.header), each.counter(), ids[known],
                 each.firstLine, lines.of(each));
    page.setGroup(index, VeskTool::trimmedField(each.header.f2));
    give(page, index, options.files[known], attributes, element++);
  });
  page.finish();
}

// The page of a plant: to a file, or without a path as bytes; what is missing in it.
py::tuple paged(const py::dict& table, const py::object& attributes, const py::bytes& page,
                const py::object& path, const py::dict& words) {
  const PageOptions options{fileNames(py::list(words["files"])), py::cast<int>(words["style"]),
                            py::cast<double>(words["tolerance"]),
                            py::cast<std::string>(words["quality"]), toBytes(words["title"])};
  std::optional<std::string> file;
  if (!path.is_none()) file = outputName(path);
  Plant plant(table);
  const Attributes known =
      attributes.is_none() ? Attributes() : Attributes(py::dict(attributes), plant.size());
  const auto pageText = py::cast<std::string>(page);
  VeskTool::PageModel model(finenessOf(options.tolerance, options.quality));
  VeskTool::TextBuffer buffer;
  {
    const py::gil_scoped_release free;
    std::optional<VeskTool::OutputFile> out;
    if (file) out.emplace(*file, true);
    fill(model, plant, known, options);
    VeskTool::writePage(out ? static_cast<VeskTool::TextSink&>(*out) : buffer, pageText, model,
                        options.title);
    if (out) out->commit();
  }
  return py::make_tuple(file ? py::object(py::none()) : py::object(py::bytes(buffer.text())),
                        toPython(missingOf(model.scene())));
}

}  // namespace

void definePaging(py::module_& module) { module.def("page", &paged); }

}  // namespace VeskPython
