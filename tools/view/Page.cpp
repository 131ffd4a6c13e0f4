// SPDX-License-Identifier: MIT
#include "view/Page.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <span>
#include <unordered_map>

#include "elements/Kinds.h"
#include "terminal/Exit.h"
#include "text/Json.h"
#include "view/PageCode.h"
#include "view/PageData.h"

namespace VeskTool {
namespace {

constexpr std::string_view kScenePlace = "<script type=\"text/plain\" id=\"vesk-scene\"></script>";
constexpr std::string_view kDataPlace = "<script type=\"text/plain\" id=\"vesk-data\"></script>";
constexpr std::string_view kEnd = "</script>";

// A text longer than half a gigabyte is more than browsers hold.
constexpr std::size_t kMostBytes = std::size_t{380} << 20U;

void addBlock(JsonWriter& json, std::string_view name, const PageData::Block& block) {
  json.key(name).beginArrayRow().value(block.offset).value(block.count).endArray();
}

template <class Vector>
void addVector(JsonWriter& json, std::string_view name, const Vector& v) {
  json.key(name).value(GePoint(v.x, v.y, v.z));
}

template <class Vector>
void append(std::vector<float>& to, const Vector& v) {
  to.insert(to.end(), {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)});
}

// A direction in steps of a 127th: half a degree, which no shading shows.
template <class Vector>
void appendDirection(std::vector<std::int8_t>& to, const Vector& v) {
  const double length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
  for (const double part : {v.x, v.y, v.z}) {
    to.push_back(static_cast<std::int8_t>(length > 0.0 ? std::lround(part / length * 127.0) : 0));
  }
}

// A corner of a triangle: which position and which normal.
std::uint64_t cornerKey(std::uint32_t position, std::uint32_t normal) {
  return (std::uint64_t{position} << 32U) | normal;
}

// The graphics card wants one index for position and normal together.
void addMesh(JsonWriter& json, PageData& data, const Vesk::Mesh& mesh) {
  std::unordered_map<std::uint64_t, std::uint32_t> corners;
  std::vector<float> positions;
  std::vector<std::int8_t> normals;
  std::vector<std::uint32_t> indices;
  for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
    for (std::size_t k = 0; k < 3; ++k) {
      const std::uint32_t position = mesh.triangles[i][k];
      const std::uint32_t normal = mesh.triangleNormals[i][k];
      const auto [corner, isNew] = corners.try_emplace(cornerKey(position, normal),
                                                       static_cast<std::uint32_t>(corners.size()));
      if (isNew) {
        append(positions, mesh.positions[position]);
        appendDirection(normals, mesh.normals[normal]);
      }
      indices.push_back(corner->second);
    }
  }
  json.beginObjectRow();
  addBlock(json, "positions", data.addPlanes(positions, 3));
  addBlock(json, "normals", data.add(normals, 3));
  addBlock(json, "indices", data.addSteps(indices));
  json.key("closed").value(mesh.closed).endObject();
}

// What hints are made from: where the values of each element begin, and the offset.
struct Known {
  const PageModel& model;
  std::vector<std::size_t> starts;  // one more than there are elements
  std::array<double, 3> offset;

  explicit Known(const PageModel& made) : model(made) {
    const Vesk::Scene& scene = model.scene();
    offset = {scene.offset.x, scene.offset.y, scene.offset.z};
    std::vector<std::size_t> sizes;
    for (const ValueLayout* layout : model.layouts()) {
      std::size_t size = 0;
      for (const auto& [name, type] : *layout)
        size += type == 'n' || type == 'i' || type == 't' ? 1 : 3;
      sizes.push_back(size);
    }
    starts.push_back(0);
    for (const std::uint32_t layout : model.layoutIds()) {
      starts.push_back(starts.back() + sizes[layout]);
    }
  }

  std::span<const double> valuesOf(std::uint32_t element) const {
    return std::span(model.values())
        .subspan(starts[element], starts[element + 1] - starts[element]);
  }
};

void addHints(JsonWriter& json, PageData& data, const PlaceHints& hints) {
  addBlock(json, "hints", data.add(hints.hints));
  addBlock(json, "literals", data.addPlanes(hints.literals));
}

// The instances by their meshes.
void addGroups(JsonWriter& json, PageData& data, const Known& known) {
  const Vesk::Scene& scene = known.model.scene();
  constexpr int kAxes[] = {-1, -1, -1, 0, -1, -1, -1, 1, -1, -1, -1, 2};
  struct Group {
    PlaceHints places;
    std::vector<std::uint32_t> elements;
  };
  std::vector<Group> groups(scene.meshes.size());
  for (const Vesk::SceneInstance& each : scene.instances) {
    const Vesk::Placement& at = each.placement;
    std::vector<float> rows;
    append(rows, GePoint(at.x.x, at.y.x, at.z.x));
    rows.push_back(static_cast<float>(at.origin.x));
    append(rows, GePoint(at.x.y, at.y.y, at.z.y));
    rows.push_back(static_cast<float>(at.origin.y));
    append(rows, GePoint(at.x.z, at.y.z, at.z.z));
    rows.push_back(static_cast<float>(at.origin.z));
    Group& group = groups[each.mesh];
    group.places.add(rows, kAxes, known.valuesOf(each.element), known.offset);
    group.elements.push_back(each.element);
  }
  json.key("groups").beginArray();
  for (std::size_t mesh = 0; mesh < groups.size(); ++mesh) {
    json.beginObjectRow().key("mesh").value(std::uint64_t{mesh});
    addBlock(json, "elements", data.addSteps(groups[mesh].elements));
    addHints(json, data, groups[mesh].places);
    json.endObject();
    groups[mesh] = {};
  }
  json.endArray();
}

void addPointsAndLines(JsonWriter& json, PageData& data, const Known& known) {
  const Vesk::Scene& scene = known.model.scene();
  constexpr int kAxes[] = {0, 1, 2, 0, 1, 2};
  PlaceHints places;
  std::vector<std::uint32_t> elements;
  std::vector<float> numbers;
  const auto add = [&](std::uint32_t element) {
    elements.push_back(element);
    places.add(numbers, std::span(kAxes).first(numbers.size()), known.valuesOf(element),
               known.offset);
    numbers.clear();
  };
  const auto finish = [&](std::string_view name) {
    json.key(name).beginObjectRow();
    addBlock(json, "elements", data.addSteps(elements));
    addHints(json, data, places);
    json.endObject();
    places = {};
    elements.clear();
  };
  for (const Vesk::ScenePoint& each : scene.points) {
    append(numbers, each.position);
    add(each.element);
  }
  finish("points");
  for (const Vesk::SceneLine& each : scene.lines) {
    for (std::size_t i = 1; i < each.count; ++i) {
      append(numbers, scene.lineVertices[each.first + i - 1]);
      append(numbers, scene.lineVertices[each.first + i]);
      add(each.element);
    }
  }
  finish("lines");
}

// Directions of unit length, which the page multiplies by the height.
GePoint unit(const GeVector& v) {
  const double length = v.length();
  return length > 0.0 ? GePoint(v.x / length, v.y / length, v.z / length) : GePoint();
}

// The texts: 11 numbers each (position, along, up, height, width), and the strings.
void addTexts(JsonWriter& json, PageData& data, const Known& known) {
  const Vesk::Scene& scene = known.model.scene();
  constexpr int kAxes[] = {0, 1, 2, -1, -1, -1, -1, -1, -1, -1, -1};
  PlaceHints places;
  std::vector<std::uint32_t> elements;
  json.key("texts").beginObject().key("strings").beginArrayRow();
  for (const Vesk::SceneText& each : scene.texts) {
    json.value(each.text);
    elements.push_back(each.element);
    std::vector<float> numbers;
    append(numbers, each.position);
    append(numbers, unit(each.along));
    append(numbers, unit(each.up));
    numbers.push_back(static_cast<float>(each.height));
    numbers.push_back(static_cast<float>(each.width * each.along.length()));
    places.add(numbers, kAxes, known.valuesOf(each.element), known.offset);
  }
  json.endArray();
  addBlock(json, "elements", data.addSteps(elements));
  addHints(json, data, places);
  json.endObject();
}

// The lines of all records, and the values that follow from their numbers.
void addRecords(JsonWriter& json, PageData& data, const Known& known) {
  const PageModel& model = known.model;
  const std::string& records = model.records();
  const SplitLines split = splitLines(records);
  json.key("records").beginObjectRow().key("bytes").value(std::uint64_t{records.size()});
  addBlock(json, "heads", data.add(split.heads, SplitLines::kHead));
  addBlock(json, "rests", data.add(split.rests));
  json.endObject();

  std::vector<std::string> types;
  for (const ValueLayout* layout : model.layouts()) {
    std::string& all = types.emplace_back();
    for (const auto& [name, type] : *layout) all += type;
  }
  ValueHints values;
  std::vector<std::uint32_t> texts;
  for (std::uint32_t i = 0; i < model.layoutIds().size(); ++i) {
    const std::size_t begin = model.recordStarts()[i];
    const std::size_t end =
        i + 1 < model.recordStarts().size() ? model.recordStarts()[i + 1] : records.size();
    const std::string& layout = types[model.layoutIds()[i]];
    const std::span<const double> all = known.valuesOf(i);
    values.add(plainNumbers(std::string_view(records).substr(begin, end - begin)), layout, all);
    std::size_t at = 0;
    for (const char type : layout) {
      if (type == 't') texts.push_back(static_cast<std::uint32_t>(all[at]));
      at += type == 'n' || type == 'i' || type == 't' ? 1 : 3;
    }
  }
  json.key("values").beginObjectRow();
  addBlock(json, "hints", data.add(values.hints));
  addBlock(json, "literals", data.add(values.literals));
  addBlock(json, "texts", data.addSteps(texts));
  json.endObject();
}

void addElements(JsonWriter& json, PageData& data, const PageModel& model) {
  const std::vector<Vesk::SceneElement>& elements = model.scene().elements;
  std::vector<std::uint8_t> bytes;
  for (const Vesk::SceneElement& each : elements) bytes.push_back(each.kind);
  json.key("elements").beginObject().key("count").value(std::uint64_t{elements.size()});
  addBlock(json, "kind", data.add(bytes));
  bytes.clear();
  for (const PageModel::Shown each : model.shown())
    bytes.push_back(static_cast<std::uint8_t>(each));
  addBlock(json, "shown", data.add(bytes));
  std::vector<std::uint32_t> column;
  const auto add = [&](std::string_view name, auto value) {
    column.clear();
    for (const Vesk::SceneElement& each : elements) {
      column.push_back(static_cast<std::uint32_t>(value(each)));
    }
    addBlock(json, name, data.addSteps(column));
  };
  add("header", [](const Vesk::SceneElement& each) { return each.header; });
  // Each file once, however often it was given.
  const std::vector<std::string> names = model.fileNames();
  const std::set<std::string> sorted(names.begin(), names.end());
  std::vector<std::uint32_t> places;
  for (const std::string& name : names) {
    const auto place = std::distance(sorted.begin(), sorted.find(name));
    places.push_back(static_cast<std::uint32_t>(place));
  }
  add("file", [&](const Vesk::SceneElement& each) { return places[each.file]; });
  add("line", [](const Vesk::SceneElement& each) { return each.line; });
  add("lines", [](const Vesk::SceneElement& each) { return each.lines; });
  addBlock(json, "counter", data.addSteps(model.counters()));
  addBlock(json, "group", data.addSteps(model.groupIds()));
  addBlock(json, "layout", data.addSteps(model.layoutIds()));
  addBlock(json, "component", data.addSteps(model.components()));
  addBlock(json, "row", data.addSteps(model.rows()));
  json.endObject();
}

void addTexts(JsonWriter& json, std::string_view name, const std::vector<std::string>& texts) {
  json.key(name).beginArrayRow();
  for (const std::string& each : texts) json.value(each);
  json.endArray();
}

// What is known of the components.
void addAttributes(JsonWriter& json, PageData& data, const PageModel& model) {
  json.key("attributes").beginObjectRow();
  addTexts(json, "names", model.attributeNames());
  addTexts(json, "texts", model.attributeTexts());
  json.key("columns").beginArrayRow();
  for (const std::vector<std::uint32_t>& column : model.attributeColumns()) {
    const PageData::Block block = data.addSteps(column);
    json.beginArrayRow().value(block.offset).value(block.count).endArray();
  }
  json.endArray().endObject();
}

void addNames(JsonWriter& json, const PageModel& model) {
  std::vector<std::string> files = model.fileNames();
  std::sort(files.begin(), files.end());
  files.erase(std::unique(files.begin(), files.end()), files.end());
  addTexts(json, "files", files);
  addTexts(json, "headers", model.scene().headers);
  addTexts(json, "groupNames", model.groups());
  addTexts(json, "strings", model.strings());
  json.key("kinds").beginArray();
  for (std::size_t i = 0; i < kKinds; ++i) {
    const auto kind = static_cast<Kind>(i);
    json.beginObjectRow().key("name").value(nameOf(kind));
    json.key("plural").value(wordsOf(kind)).endObject();
  }
  json.endArray().key("layouts").beginArray();
  for (const ValueLayout* layout : model.layouts()) {
    json.beginArrayRow();
    for (const auto& [name, type] : *layout) {
      json.beginArrayRow().value(name).value(std::string_view(&type, 1)).endArray();
    }
    json.endArray();
  }
  json.endArray();
}

void addMarks(JsonWriter& json, const PageModel& model) {
  json.key("marks").beginArray();
  for (const PageMark& mark : model.marks()) {
    json.beginObjectRow().key("element");
    if (mark.element) {
      json.value(std::uint64_t{*mark.element});
    } else {
      json.null();
    }
    json.key("level").value(mark.level).key("code").value(mark.code);
    json.key("text").value(mark.text).endObject();
  }
  json.endArray().key("failures").beginArray();
  for (const Vesk::SceneFailure& failure : model.scene().failures) {
    json.beginObjectRow().key("element").value(std::uint64_t{failure.element});
    json.key("reason").value(failure.reason).endObject();
  }
  json.endArray();
}

// The head; the data grows with it.
std::string headOf(const PageModel& model, PageData& data, std::string_view title) {
  const Vesk::Scene& scene = model.scene();
  const bool isEmpty = scene.bounds.min.x > scene.bounds.max.x;
  std::string text;
  JsonWriter json(text);
  json.beginObject().key("schema").value("vesk-scene/2").key("title").value(title);
  json.key("unit").value("mm");
  addVector(json, "offset", scene.offset);
  json.key("bounds").beginArrayRow();
  json.value(isEmpty ? GePoint() : scene.bounds.min);
  json.value(isEmpty ? GePoint() : scene.bounds.max).endArray();
  addNames(json, model);
  json.key("meshes").beginArray();
  for (const Vesk::Mesh& mesh : scene.meshes) addMesh(json, data, mesh);
  json.endArray();
  const Known known(model);
  addElements(json, data, model);
  addAttributes(json, data, model);
  addRecords(json, data, known);
  addGroups(json, data, known);
  addPointsAndLines(json, data, known);
  addTexts(json, data, known);
  addMarks(json, model);
  json.endObject();
  return text;
}

}  // namespace

void requirePageTemplate() {
  if (!pageTemplate().empty()) return;
  throw Failure(Exit::kUsage, "this vesk was built without the viewer",
                "to include it, build with npm installed and VESK_BUILD_VIEWER on");
}

void writePage(TextSink& to, const PageModel& model, std::string_view title) {
  requirePageTemplate();
  writePage(to, pageTemplate(), model, title);
}

void writePage(TextSink& to, std::string_view page, const PageModel& model,
               std::string_view title) {
  const std::size_t scene = page.find(kScenePlace) + kScenePlace.size() - kEnd.size();
  const std::size_t place = page.find(kDataPlace) + kDataPlace.size() - kEnd.size();
  PageData data;
  {
    const std::string head = headOf(model, data, title);
    if (head.size() + data.bytes().size() > kMostBytes) {
      throw Failure(Exit::kOutput, "the model is too large for a page that browsers can read",
                    "export it, or view the files of a part of the plant");
    }
    to.write(page.substr(0, scene));
    writeCompressed(to, head);
  }
  to.write(page.substr(scene, place - scene));
  writeCompressed(to, data.bytes());
  to.write(page.substr(place));
}

}  // namespace VeskTool
