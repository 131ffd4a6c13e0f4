// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstring>
#include <filesystem>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "Attributes.h"
#include "Module.h"
#include "Plant.h"
#include "Poll.h"
#include "findings/Findings.h"
#include "vesk/RecordFile.h"

namespace VeskPython {
namespace {

// The bytes of an object with a method read.
class ObjectSource : public Vesk::ByteSource {
 public:
  explicit ObjectSource(py::object read) : read_(std::move(read)) {}

  ObjectSource(const ObjectSource&) = delete;
  ObjectSource& operator=(const ObjectSource&) = delete;
  ~ObjectSource() override {
    const py::gil_scoped_acquire lock;
    read_ = py::object();
  }

  std::size_t read(char* buffer, std::size_t size) override {
    const py::gil_scoped_acquire lock;
    const py::object bytes = read_(size);
    if (!py::isinstance<py::bytes>(bytes)) {
      throw py::type_error("a file object gives bytes: open it with \"rb\"");
    }
    const auto text = py::cast<std::string_view>(bytes);
    if (text.size() > size) throw py::value_error("read() gave more bytes than it was asked for");
    std::memcpy(buffer, text.data(), text.size());
    return text.size();
  }

 private:
  py::object read_;
};

struct Fault {
  std::uint32_t file;
  std::uint64_t line;
  std::uint64_t column;
  std::string code;
  std::string message;
  std::string expected;
};

// Reads files one after the other, so many elements at a time.
class Reader {
 public:
  // `sources`: of each its name, where it is, the name of a file as bytes or an object
  // with a method read, and its sidecar: the name of a file and what messages call it;
  // "": the one beside it, None: no one.
  Reader(const py::list& sources, int style, bool takesCutOff) : options_{style, takesCutOff} {
    for (const py::handle& each : sources) {
      const auto words = py::cast<py::tuple>(each);
      Source source{toBytes(words[0]), words[1], std::nullopt, {}};
      if (py::isinstance<py::tuple>(words[2])) {
        const auto names = py::cast<py::tuple>(words[2]);
        source.sidecar = toBytes(names[0]);
        source.shown = toBytes(names[1]);
      } else if (!words[2].is_none()) {
        source.sidecar = toBytes(words[2]);
      }
      sources_.push_back(std::move(source));
    }
  }

  // None behind the last; else {"order": ..., "faults": [...], "styles": [...]}.
  py::object next(std::size_t most) {
    Plant plant;
    faults_.clear();
    bool isEnd = false;
    {
      const py::gil_scoped_release free;
      isEnd = !read(plant, most);
    }
    if (isEnd && plant.size() == 0 && faults_.empty() && hasGiven_) return py::none();
    hasGiven_ = true;
    py::dict table = plant.toPython();
    table["faults"] = takeFaults();
    py::list styles;
    for (const int each : styles_) styles.append(each);
    table["styles"] = styles;
    if (!attributes_.isEmpty()) table["attributes"] = attributes_.toPython();
    py::list notes;
    for (const std::string& each : notes_) notes.append(toText(each));
    table["notes"] = notes;
    notes_.clear();
    return table;
  }

 private:
  struct Source {
    std::string name;
    py::object from;
    std::optional<std::string> sidecar;
    std::string shown;  // its name in messages, where it has another
  };

  bool open() {
    if (next_ == sources_.size()) return false;
    const py::gil_scoped_acquire lock;
    const Source& source = sources_[next_++];
    if (py::isinstance<py::bytes>(source.from)) {
      file_ = std::make_unique<Vesk::RecordFile>(
          std::make_unique<Vesk::FileSource>(py::cast<std::string>(source.from)), source.name,
          options_);
    } else {
      file_ = std::make_unique<Vesk::RecordFile>(
          std::make_unique<ObjectSource>(source.from.attr("read")), source.name, options_);
    }
    openSidecar(source);
    return true;
  }

  void openSidecar(const Source& source) {
    sidecar_.reset();
    if (!source.sidecar) return;
    const bool isNamed = !source.sidecar->empty();
    const std::string name = isNamed ? *source.sidecar : Vesk::sidecarNameOf(source.name);
    std::error_code error;
    if (!isNamed && !std::filesystem::is_regular_file(name, error)) return;
    sidecar_.emplace(name, source.shown.empty() ? name : source.shown);
    if (sidecar_->isEmpty()) closeSidecar();
  }

  void closeSidecar() {
    if (!sidecar_) return;
    std::string note = sidecar_->finish();
    if (!note.empty()) notes_.push_back(std::move(note));
    sidecar_.reset();
  }

  void take(const Vesk::RecordElement& element, Plant& plant, std::uint32_t index) {
    if (sidecar_) {
      // Those before the first sidecar have no rows.
      if (attributes_.isEmpty()) {
        for (std::size_t i = 0; i < plant.size(); ++i) attributes_.addNone();
      }
      sidecar_->give(element, attributes_);
    } else if (!attributes_.isEmpty()) {
      attributes_.addNone();
    }
    plant.add(element, index);
  }

  // False at the end of the last file.
  bool read(Plant& plant, std::size_t most) {
    using Found = Vesk::RecordFile::Found;
    while (plant.size() < most && faults_.size() < most) {
      poll_();
      if (!file_ && !open()) return false;
      const Found found = file_->next();
      const auto index = static_cast<std::uint32_t>(next_ - 1);
      if (found == Found::kElement) take(file_->element(), plant, index);
      if (found == Found::kFault) addFault(index);
      if (found == Found::kEnd) finishFile();
    }
    return true;
  }

  void addFault(std::uint32_t index) {
    VeskTool::Finding finding = VeskTool::findingOf(*file_);
    faults_.push_back({index, finding.line, finding.column, std::string(finding.code),
                       std::move(finding.message), std::move(finding.expected)});
  }

  void finishFile() {
    const std::string reason = file_->error();
    const std::string name = file_->name();
    styles_.push_back(file_->mode());
    file_.reset();
    closeSidecar();
    if (reason.empty()) return;
    const py::gil_scoped_acquire lock;
    const py::object error = py::reinterpret_borrow<py::object>(PyExc_OSError)(
        py::module_::import("errno").attr("EIO"), toText(reason), toText(name));
    PyErr_SetObject(PyExc_OSError, error.ptr());
    throw py::error_already_set();
  }

  py::list takeFaults() {
    py::list rows;
    for (const Fault& each : faults_) {
      rows.append(py::make_tuple(each.file, each.line, each.column, each.code, toText(each.message),
                                 toText(each.expected)));
    }
    faults_.clear();
    return rows;
  }

  Vesk::RecordOptions options_;
  std::vector<Source> sources_;
  std::size_t next_ = 0;
  std::unique_ptr<Vesk::RecordFile> file_;
  std::optional<SidecarBeside> sidecar_;
  Attributes attributes_;
  std::vector<std::string> notes_;
  std::vector<Fault> faults_;
  std::vector<int> styles_;
  bool hasGiven_ = false;
  Poll poll_;
};

}  // namespace

void defineReading(py::module_& module) {
  py::class_<Reader>(module, "Reader")
      .def(py::init<const py::list&, int, bool>())
      .def("next", &Reader::next);
}

}  // namespace VeskPython
