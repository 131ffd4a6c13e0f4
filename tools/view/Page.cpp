#include "view/Page.h"

#include <unordered_map>

#include "Exit.h"
#include "Json.h"
#include "Kinds.h"
#include "view/PageData.h"

namespace VeskTool {
namespace {

constexpr std::string_view kScenePlace =
    "<script type=\"application/json\" id=\"vesk-scene\"></script>";
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

// A corner of a triangle: which position and which normal.
std::uint64_t cornerKey(std::uint32_t position, std::uint32_t normal) {
  return (std::uint64_t{position} << 32U) | normal;
}

// The graphics card wants one index for position and normal together.
void addMesh(JsonWriter& json, PageData& data, const Vesk::Mesh& mesh) {
  std::unordered_map<std::uint64_t, std::uint32_t> corners;
  std::vector<float> positions;
  std::vector<float> normals;
  std::vector<std::uint32_t> indices;
  const auto append = [](std::vector<float>& to, const auto& v) {
    to.insert(to.end(),
              {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)});
  };
  for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
    for (std::size_t k = 0; k < 3; ++k) {
      const std::uint32_t position = mesh.triangles[i][k];
      const std::uint32_t normal = mesh.triangleNormals[i][k];
      const auto [corner, isNew] = corners.try_emplace(cornerKey(position, normal),
                                                       static_cast<std::uint32_t>(corners.size()));
      if (isNew) {
        append(positions, mesh.positions[position]);
        append(normals, mesh.normals[normal]);
      }
      indices.push_back(corner->second);
    }
  }
  json.beginObjectRow();
  addBlock(json, "positions", data.add(positions, 3));
  addBlock(json, "normals", data.add(normals, 3));
  addBlock(json, "indices", data.add(indices));
  json.key("closed").value(mesh.closed).endObject();
}

// The instances by their meshes.
void addGroups(JsonWriter& json, PageData& data, const Vesk::Scene& scene) {
  struct Group {
    std::vector<float> matrices;
    std::vector<std::uint32_t> elements;
  };
  std::vector<Group> groups(scene.meshes.size());
  for (const Vesk::SceneInstance& each : scene.instances) {
    const Vesk::Placement& at = each.placement;
    const double rows[] = {at.x.x, at.y.x, at.z.x, at.origin.x,  //
                           at.x.y, at.y.y, at.z.y, at.origin.y,  //
                           at.x.z, at.y.z, at.z.z, at.origin.z};
    Group& group = groups[each.mesh];
    for (const double value : rows) group.matrices.push_back(static_cast<float>(value));
    group.elements.push_back(each.element);
  }
  json.key("groups").beginArray();
  for (std::size_t mesh = 0; mesh < groups.size(); ++mesh) {
    json.beginObjectRow().key("mesh").value(std::uint64_t{mesh});
    addBlock(json, "matrices", data.add(groups[mesh].matrices, 12));
    addBlock(json, "elements", data.add(groups[mesh].elements));
    json.endObject();
    groups[mesh] = {};
  }
  json.endArray();
}

void append(std::vector<float>& to, const GePoint& p) {
  to.insert(to.end(), {static_cast<float>(p.x), static_cast<float>(p.y), static_cast<float>(p.z)});
}

void addPointsAndLines(JsonWriter& json, PageData& data, const Vesk::Scene& scene) {
  std::vector<float> positions;
  std::vector<std::uint32_t> elements;
  const auto add = [&](std::string_view name, std::size_t width) {
    json.key(name).beginObjectRow();
    addBlock(json, "positions", data.add(positions, width));
    addBlock(json, "elements", data.add(elements));
    json.endObject();
    positions.clear();
    elements.clear();
  };
  for (const Vesk::ScenePoint& each : scene.points) {
    append(positions, each.position);
    elements.push_back(each.element);
  }
  add("points", 3);
  for (const Vesk::SceneLine& each : scene.lines) {
    for (std::size_t i = 1; i < each.count; ++i) {
      append(positions, scene.lineVertices[each.first + i - 1]);
      append(positions, scene.lineVertices[each.first + i]);
      elements.push_back(each.element);
    }
  }
  add("lines", 6);
}

// Directions of unit length, which the page multiplies by the height.
GePoint unit(const GeVector& v) {
  const double length = v.length();
  return length > 0.0 ? GePoint(v.x / length, v.y / length, v.z / length) : GePoint();
}

void addTexts(JsonWriter& json, const Vesk::Scene& scene) {
  json.key("texts").beginArray();
  for (const Vesk::SceneText& each : scene.texts) {
    json.beginObjectRow().key("element").value(std::uint64_t{each.element});
    json.key("text").value(each.text).key("position").value(each.position);
    json.key("along").value(unit(each.along)).key("up").value(unit(each.up));
    json.key("height").value(each.height);
    json.key("width").value(each.width * each.along.length()).endObject();
  }
  json.endArray();
}

void addElements(JsonWriter& json, PageData& data, const PageModel& model) {
  const std::vector<Vesk::SceneElement>& elements = model.scene().elements;
  std::vector<std::uint8_t> kinds;
  std::vector<std::uint32_t> column;
  for (const Vesk::SceneElement& each : elements) kinds.push_back(each.kind);
  json.key("elements").beginObject().key("count").value(std::uint64_t{elements.size()});
  addBlock(json, "kind", data.add(kinds));
  const auto add = [&](std::string_view name, auto value) {
    column.clear();
    for (const Vesk::SceneElement& each : elements) {
      column.push_back(static_cast<std::uint32_t>(value(each)));
    }
    addBlock(json, name, data.add(column));
  };
  add("header", [](const Vesk::SceneElement& each) { return each.header; });
  add("file", [](const Vesk::SceneElement& each) { return each.file; });
  add("line", [](const Vesk::SceneElement& each) { return each.line; });
  addBlock(json, "counter", data.add(model.counters()));
  addBlock(json, "layout", data.add(model.layoutIds()));
  column.assign(model.recordStarts().begin(), model.recordStarts().end());
  column.push_back(static_cast<std::uint32_t>(model.records().size()));
  addBlock(json, "record", data.add(column));
  json.endObject();
}

void addTexts(JsonWriter& json, std::string_view name, const std::vector<std::string>& texts) {
  json.key(name).beginArrayRow();
  for (const std::string& each : texts) json.value(each);
  json.endArray();
}

void addNames(JsonWriter& json, const PageModel& model) {
  addTexts(json, "files", model.scene().files);
  addTexts(json, "headers", model.scene().headers);
  addTexts(json, "strings", model.strings());
  json.key("kinds").beginArray();
  for (std::size_t i = 0; i < kKinds; ++i) {
    const auto kind = static_cast<Kind>(i);
    json.beginObjectRow().key("name").value(nameOf(kind));
    json.key("plural").value(pluralOf(kind)).endObject();
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
  json.beginObject().key("schema").value("vesk-scene/1").key("title").value(title);
  json.key("unit").value("mm");
  addVector(json, "offset", scene.offset);
  json.key("bounds").beginArrayRow();
  json.value(isEmpty ? GePoint() : scene.bounds.min);
  json.value(isEmpty ? GePoint() : scene.bounds.max).endArray();
  addNames(json, model);
  json.key("meshes").beginArray();
  for (const Vesk::Mesh& mesh : scene.meshes) addMesh(json, data, mesh);
  json.endArray();
  addGroups(json, data, scene);
  addPointsAndLines(json, data, scene);
  addTexts(json, scene);
  addElements(json, data, model);
  addBlock(json, "records", data.add(model.records()));
  addBlock(json, "values", data.add(model.values()));
  addMarks(json, model);
  json.endObject();
  return text;
}

// No text of a record can end the block that holds it: "<" stands in strings
// alone, and there it may be written so.
std::string inert(std::string_view json) {
  std::string text;
  text.reserve(json.size());
  for (const char c : json) {
    if (c == '<') {
      text += "\\u003c";
    } else {
      text += c;
    }
  }
  return text;
}

}  // namespace

void requirePageTemplate() {
  if (!pageTemplate().empty()) return;
  throw Failure(Exit::kUsage, "this vesk was built without the viewer",
                "where it is built, npm must be there and VESK_BUILD_VIEWER on");
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
    if (head.size() + data.size() > kMostBytes) {
      throw Failure(Exit::kOutput, "the model is too large for a page that browsers can read",
                    "export it, or view the files of a part of the plant");
    }
    to.write(page.substr(0, scene));
    to.write(inert(head));
  }
  to.write(page.substr(scene, place - scene));
  data.writeBase64(to);
  to.write(page.substr(place));
}

}  // namespace VeskTool
