// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Module.h"
#include "Plant.h"
#include "Poll.h"
#include "prims/Visit.h"
#include "vesk/ExceptionInfo.h"
#include "vesk/GeEx.h"
#include "vesk/RecordWriter.h"

namespace VeskPython {
namespace {

using Array = py::array_t<double, py::array::c_style | py::array::forcecast>;

// Rows of numbers of one element each, such as three of a point.
struct Numbers {
  const double* data;
  std::size_t width;

  GeVector vector(std::size_t row, std::size_t i = 0) const {
    const double* p = data + row * width + 3 * i;
    return {p[0], p[1], p[2]};
  }
  double number(std::size_t row) const { return data[row * width]; }
  std::int32_t integer(std::size_t row) const { return static_cast<std::int32_t>(number(row)); }
};

// Calls act with the element of this row, made as the exported functions make it.
using Use = std::function<void(const Vesk::Geo&)>;
using Columns = std::vector<Numbers>;

Vesk::Red reducerOf(const Numbers& corners, std::size_t row) {
  std::array<GeVector, 8> points;
  for (std::size_t k = 0; k < points.size(); ++k) points[k] = corners.vector(row, k);
  return Vesk::Red(points);
}

void makeSolid(Vesk::PrimitiveKind kind, const Columns& c, std::size_t row, const Use& act) {
  switch (kind) {
    case Vesk::PrimitiveKind::kCyl:
      return act(Vesk::Cyl(c[0].vector(row), c[1].vector(row), c[2].number(row)));
    case Vesk::PrimitiveKind::kBox:
      return act(Vesk::Box(c[0].vector(row), c[1].vector(row), c[2].vector(row), c[3].vector(row)));
    case Vesk::PrimitiveKind::kRelb:
      return act(Vesk::Relb(c[0].vector(row), c[1].vector(row), c[2].vector(row), c[3].vector(row),
                            c[4].number(row)));
    case Vesk::PrimitiveKind::kTorus:
      return act(
          Vesk::Torus(c[0].vector(row), c[1].vector(row), c[2].vector(row), c[3].number(row)));
    case Vesk::PrimitiveKind::kRed:
      return act(reducerOf(c[0], row));
    case Vesk::PrimitiveKind::kCone:
      return act(
          Vesk::Cone(c[0].vector(row), c[1].vector(row), c[2].number(row), c[3].number(row)));
    case Vesk::PrimitiveKind::kPline:
    case Vesk::PrimitiveKind::kPgon:
    case Vesk::PrimitiveKind::kTxt:
      break;
  }
}

// Which would break the record.
bool hasLineFeed(const Vesk::Geo& geo) {
  const auto in = [](const std::string& text) { return text.find('\n') != std::string::npos; };
  const auto inAny = [&](const std::vector<Vesk::TagEntry>& tags) {
    return std::any_of(tags.begin(), tags.end(), [&](const auto& tag) { return in(tag.name); });
  };
  if (const auto* text = dynamic_cast<const Vesk::Txt*>(&geo)) return in(text->text);
  if (const auto* box = dynamic_cast<const Vesk::Box*>(&geo)) return inAny(box->edges);
  if (const auto* red = dynamic_cast<const Vesk::Red*>(&geo)) return inAny(red->tags);
  return false;
}

// Headers and counters of the rows of one call.
struct Labels {
  std::vector<Vesk::HeaderFields> headers;
  Column<std::int32_t> header;
  Column<std::int32_t> counter;

  Labels(const py::list& words, const py::object& codes, const py::object& counters) {
    for (const py::handle& each : words) headers.push_back(headerOf(each).fields);
    header.take(codes, "header");
    counter.take(counters, "number");
  }
};

class Writer {
 public:
  Writer(const std::string& path, int style)
      : path_(path), file_(std::make_unique<Vesk::RecordWriter>(path, style)) {}

  // Elements of one class from the arguments of its exported function, checked before.
  void writeSolids(int code, const py::list& arrays, const py::list& words, const py::object& codes,
                   const py::object& counters) {
    std::vector<Array> kept;
    Columns columns;
    for (const py::handle& each : arrays) {
      kept.push_back(py::cast<Array>(each));
      const Array& array = kept.back();
      std::size_t width = 1;
      for (py::ssize_t i = 1; i < array.ndim(); ++i) {
        width *= static_cast<std::size_t>(array.shape(i));
      }
      columns.push_back({array.data(), width});
    }
    const Labels labels(words, codes, counters);
    const auto kind = static_cast<Vesk::PrimitiveKind>(code);
    run(labels, [&](std::size_t row, const Use& act) { makeSolid(kind, columns, row, act); });
  }

  // Runs of points: polylines, or polygons with isFace.
  void writeRuns(bool isFace, const py::object& given, const py::object& from,
                 const py::list& words, const py::object& codes, const py::object& counters) {
    Column<double> points{{3}};
    Column<std::int64_t> offsets;
    points.take(given, "points");
    offsets.take(from, "offsets");
    const Labels labels(words, codes, counters);
    run(labels, [&](std::size_t row, const Use& act) {
      const auto first = static_cast<std::size_t>(offsets.at(row));
      const auto last = static_cast<std::size_t>(offsets.at(row + 1));
      Vesk::Pline line;
      Vesk::Pgon face;
      for (std::size_t i = first; i < last; ++i) {
        if (isFace) face.addVertex(points.point(i));
        if (!isFace) line.vertices.push_back(points.point(i));
      }
      if (isFace) return act(face);
      act(line);
    });
  }

  void writeTexts(const py::list& texts, const py::list& arrays, const py::list& words,
                  const py::object& codes, const py::object& counters) {
    std::vector<std::string> characters;
    for (const py::handle& each : texts) characters.push_back(toBytes(each));
    std::vector<Array> kept;
    for (const py::handle& each : arrays) kept.push_back(py::cast<Array>(each));
    const auto column = [&](std::size_t i) {
      return Numbers{kept.at(i).data(), kept.at(i).ndim() > 1 ? std::size_t{3} : std::size_t{1}};
    };
    const Columns c{column(0), column(1), column(2), column(3), column(4), column(5), column(6)};
    const Labels labels(words, codes, counters);
    run(labels, [&](std::size_t row, const Use& act) {
      act(Vesk::Txt(GePoint(c[0].vector(row)), c[1].vector(row), c[2].vector(row), c[3].number(row),
                    c[4].number(row), c[5].integer(row), c[6].integer(row), characters[row]));
    });
  }

  // All elements of a plant, as they were read; the first line of each of them.
  py::array writePlant(const py::dict& table) {
    Plant plant(table);
    Column<std::int64_t> lines;
    {
      const py::gil_scoped_release free;
      plant.each([&](Vesk::RecordElement& element, std::uint32_t) {
        poll_();
        lines.add(line_);
        const std::string place = "element " + std::to_string(lines.rows() - 1) + ": ";
        try {
          if (hasLineFeed(*element.geo)) fail(place + "a line feed in a text");
          line_ += file().write(element);
        } catch (const Vesk::ExceptionInfo& error) {
          fail(place + error.message);
        }
      });
    }
    return lines.toArray();
  }

  void close() {
    const py::gil_scoped_release free;
    file().close();
    file_.reset();
  }

  void discard() { file_.reset(); }

 private:
  using Make = std::function<void(std::size_t row, const Use& act)>;

  Vesk::RecordWriter& file() {
    if (!file_) throw std::out_of_range(path_ + ": the file is closed");
    return *file_;
  }

  void run(const Labels& labels, const Make& make) {
    const py::gil_scoped_release free;
    std::size_t row = 0;
    const Use use = [&](const Vesk::Geo& geo) { line_ += file().write(geo); };
    const std::size_t rows = labels.header.rows();
    for (; row < rows; ++row) {
      poll_();
      Vesk::HeaderFields fields =
          labels.headers.at(static_cast<std::size_t>(labels.header.at(row)));
      setCounter(fields, labels.counter.at(row));
      file().setHeader(fields);
      try {
        make(row, use);
      } catch (const Vesk::ExceptionInfo& error) {
        fail("row " + std::to_string(row) + ": " + error.message);
      } catch (const Vesk::TovException& error) {
        fail("row " + std::to_string(row) + ": " + error.what());
      }
    }
  }

  // Half a call is not written: the file goes.
  [[noreturn]] void fail(const std::string& text) {
    file_.reset();
    throw std::out_of_range(text);
  }

  std::string path_;
  std::unique_ptr<Vesk::RecordWriter> file_;
  std::int64_t line_ = 1;
  Poll poll_;
};

}  // namespace

void defineWriting(py::module_& module) {
  py::class_<Writer>(module, "Writer")
      .def(py::init<const std::string&, int>())
      .def("solids", &Writer::writeSolids)
      .def("runs", &Writer::writeRuns)
      .def("texts", &Writer::writeTexts)
      .def("plant", &Writer::writePlant)
      .def("close", &Writer::close)
      .def("discard", &Writer::discard);
}

}  // namespace VeskPython
