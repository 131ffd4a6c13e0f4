// SPDX-License-Identifier: MIT
// What the tool makes of a record file: nothing differs from itself; what is chosen and what is
// not are all there is; what is converted without a loss is read back the same; a glTF file points
// nowhere but into its data and its bounds are those of its points; a page holds the lines, the
// places and the triangles that went in.
//
//   1 byte what is chosen; 1 byte how the glTF file is made; then the record file
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "Fuzz.h"
#include "Tool.h"
#include "view/Page.h"
#include "view/PageCode.h"
#include "view/PageInput.h"

using nlohmann::json;
using VeskFuzz::check;
using VeskFuzz::Workplace;

namespace {

template <class Number>
Number numberAt(const std::string& bytes, std::size_t at) {
  Number number{};
  check(at + sizeof number <= bytes.size(), "a number lies in the data");
  std::memcpy(&number, bytes.data() + at, sizeof number);
  return number;
}

// ---- glTF

constexpr int kFloat = 5126;

std::size_t bytesOfComponent(int type) {
  switch (type) {
    case 5120:
    case 5121:
      return 1;
    case 5122:
    case 5123:
      return 2;
    case 5125:
    case kFloat:
      return 4;
    default:
      check(false, "a component is of a type that there is", std::to_string(type));
      return 0;
  }
}

std::size_t componentsOf(const std::string& type) {
  constexpr std::array<std::string_view, 4> kTypes{"SCALAR", "VEC2", "VEC3", "VEC4"};
  const auto found = std::find(kTypes.begin(), kTypes.end(), type);
  check(found != kTypes.end(), "an accessor is of a type that there is", type);
  return static_cast<std::size_t>(found - kTypes.begin()) + 1;
}

class GltfJudge {
 public:
  // The bytes are empty if they are compressed.
  GltfJudge(const json& all, const std::string& bytes) : all_(all), bytes_(bytes) {}

  void judge() const {
    check(all_.at("asset").at("version") == "2.0", "the version is 2.0");
    for (const json& view : of("bufferViews")) judgeView(view);
    for (const json& accessor : of("accessors")) judgeAccessor(accessor);
    for (const json& mesh : of("meshes")) {
      check(!mesh.at("primitives").empty(), "a mesh has a primitive");
      for (const json& primitive : mesh.at("primitives")) judgePrimitive(primitive);
    }
    for (const json& node : of("nodes")) {
      for (const json& child : node.value("children", json::array())) at("nodes", child);
      if (node.contains("mesh")) at("meshes", node["mesh"]);
    }
    for (const json& root : all_.at("scenes").at(0).at("nodes")) at("nodes", root);
  }

 private:
  json of(const char* name) const { return all_.value(name, json::array()); }

  const json& at(const char* name, const json& index) const {
    check(all_.contains(name) && index.get<std::size_t>() < all_[name].size(),
          "an index points to something that is there", name);
    return all_[name][index.get<std::size_t>()];
  }

  void judgeView(const json& view) const {
    const auto end =
        view.value("byteOffset", std::size_t{0}) + view.at("byteLength").get<std::size_t>();
    check(view.at("byteLength") > 0, "a view holds something");
    check(end <= at("buffers", view.at("buffer")).at("byteLength"), "a view lies in its buffer");
  }

  void judgeAccessor(const json& accessor) const {
    const json& view = at("bufferViews", accessor.at("bufferView"));
    const std::size_t one = bytesOfComponent(accessor.at("componentType"));
    const std::size_t each = one * componentsOf(accessor.at("type"));
    const std::size_t stride = view.value("byteStride", each);
    const std::size_t offset = accessor.value("byteOffset", std::size_t{0});
    const std::size_t count = accessor.at("count");
    check(count > 0 && offset % one == 0 &&
              offset + (count - 1) * stride + each <= view.at("byteLength"),
          "an accessor lies in its view", accessor.dump());
    if (bytes_.empty() || accessor.at("componentType") != kFloat) return;
    const std::size_t begin = view.value("byteOffset", std::size_t{0}) + offset;
    for (std::size_t axis = 0; axis < componentsOf(accessor.at("type")); ++axis) {
      float low = std::numeric_limits<float>::infinity();
      float high = -low;
      for (std::size_t i = 0; i < count; ++i) {
        const auto value = numberAt<float>(bytes_, begin + i * stride + axis * 4);
        check(std::isfinite(value), "a number is finite", accessor.dump());
        low = std::min(low, value);
        high = std::max(high, value);
      }
      if (!accessor.contains("min")) continue;
      check(accessor["min"][axis] == low && accessor["max"][axis] == high,
            "the bounds are those of the points", accessor.dump());
    }
  }

  void judgePrimitive(const json& primitive) const {
    std::size_t count = 0;
    for (const auto& [name, index] : primitive.at("attributes").items()) {
      const std::size_t own = at("accessors", index).at("count");
      check(count == 0 || own == count, "attributes of a primitive are as many", name);
      count = own;
    }
    check(primitive["attributes"].contains("POSITION"), "a primitive has positions");
    check(at("accessors", primitive["attributes"]["POSITION"]).contains("min"),
          "positions have bounds");
    if (!primitive.contains("indices")) return;
    const json& indices = at("accessors", primitive["indices"]);
    if (primitive.value("mode", 4) == 4) {
      check(indices.at("count").get<std::size_t>() % 3 == 0, "a triangle has three corners");
    }
    if (bytes_.empty()) return;
    const std::size_t one = bytesOfComponent(indices.at("componentType"));
    const std::size_t begin =
        at("bufferViews", indices.at("bufferView")).value("byteOffset", std::size_t{0}) +
        indices.value("byteOffset", std::size_t{0});
    for (std::size_t i = 0; i < indices.at("count"); ++i) {
      const std::size_t index = one == 2 ? numberAt<std::uint16_t>(bytes_, begin + i * 2)
                                         : numberAt<std::uint32_t>(bytes_, begin + i * 4);
      check(index < count, "a corner is one of the positions");
    }
  }

  const json& all_;
  const std::string& bytes_;
};

void judgeGlb(const std::string& file, bool isCompressed) {
  check(file.starts_with("glTF") && numberAt<std::uint32_t>(file, 4) == 2 &&
            numberAt<std::uint32_t>(file, 8) == file.size(),
        "a file has its head and its length");
  const auto size = numberAt<std::uint32_t>(file, 12);
  check(
      size % 4 == 0 && numberAt<std::uint32_t>(file, 16) == 0x4E4F534A && 20 + size <= file.size(),
      "the first chunk is JSON");
  const json all = json::parse(file.substr(20, size), nullptr, false);
  check(!all.is_discarded(), "the JSON can be read");
  std::string bytes;
  if (20 + size < file.size()) {
    const auto length = numberAt<std::uint32_t>(file, 20 + size);
    check(length % 4 == 0 && 28 + size + length == file.size() &&
              all.at("buffers").at(0).at("byteLength") <= length,
          "the second chunk holds the buffer");
    if (!isCompressed) bytes = file.substr(28 + size);
  }
  GltfJudge(all, bytes).judge();
}

// ---- the page

constexpr std::string_view kTemplate =
    "<script type=\"text/plain\" id=\"vesk-scene\"></script>\n"
    "<script type=\"text/plain\" id=\"vesk-data\"></script>\n";

std::string fromBase64(std::string_view text) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  check(text.size() % 4 == 0, "base64 is whole");
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); i += 4) {
    std::uint32_t bits = 0;
    std::size_t digits = 0;
    for (std::size_t k = 0; k < 4; ++k) {
      const std::size_t digit = kDigits.find(text[i + k]);
      if (digit != kDigits.npos) ++digits;
      bits = bits << 6U | (digit == kDigits.npos ? 0U : static_cast<std::uint32_t>(digit));
    }
    for (std::size_t k = 0; k + 1 < digits; ++k) bytes += static_cast<char>(bits >> (16 - 8 * k));
  }
  return bytes;
}

std::string inflated(const std::string& packed) {
  std::string bytes;
  std::array<char, 1 << 14> room{};
  z_stream stream{};
  check(inflateInit(&stream) == Z_OK, "zlib begins");
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
  stream.avail_in = static_cast<uInt>(packed.size());
  int code = Z_OK;
  while (code == Z_OK) {
    stream.next_out = reinterpret_cast<Bytef*>(room.data());
    stream.avail_out = room.size();
    code = inflate(&stream, Z_NO_FLUSH);
    bytes.append(room.data(), room.size() - stream.avail_out);
  }
  inflateEnd(&stream);
  check(code == Z_STREAM_END && stream.avail_in == 0, "a block of the page is whole");
  return bytes;
}

// As viewer/src/scene/decode.js reads it.
class PageReader {
 public:
  explicit PageReader(const std::string& page) {
    const std::string_view all(page);
    const std::size_t scene = all.find('>') + 1;
    const std::size_t data = all.find('>', all.find("vesk-data")) + 1;
    const auto until = [&](std::size_t at) { return all.substr(at, all.find('<', at) - at); };
    head_ = json::parse(inflated(fromBase64(until(scene))), nullptr, false);
    check(!head_.is_discarded(), "the head of a page can be read");
    data_ = inflated(fromBase64(until(data)));
  }

  const json& head() const { return head_; }

  std::string bytes(const json& block, std::size_t width = 1) const {
    const std::size_t offset = block.at(0);
    const std::size_t size = block.at(1).get<std::size_t>() * width;
    check(offset % 8 == 0 && offset + size <= data_.size(), "a block lies in the data");
    return data_.substr(offset, size);
  }

  std::vector<std::uint32_t> planes(const json& block, std::size_t width = 1) const {
    const std::string all = bytes(block, 4 * width);
    const std::size_t count = all.size() / 4;
    std::vector<std::uint32_t> numbers(count);
    for (std::size_t i = 0; i < all.size(); ++i) {
      numbers[i % count] |= static_cast<std::uint32_t>(static_cast<unsigned char>(all[i]))
                            << (8 * (i / count));
    }
    return numbers;
  }

  std::vector<std::uint32_t> steps(const json& block) const {
    std::vector<std::uint32_t> numbers = planes(block);
    std::uint32_t sum = 0;
    for (std::uint32_t& each : numbers) each = sum += (each >> 1U) ^ (0U - (each & 1U));
    return numbers;
  }

 private:
  json head_;
  std::string data_;
};

std::string joined(const std::string& heads, const std::string& rests) {
  const std::size_t count = heads.size() / VeskTool::SplitLines::kHead;
  std::string lines;
  std::size_t at = 0;
  for (std::size_t i = 0; i < count; ++i) {
    std::string line;
    for (std::size_t k = 0; k < VeskTool::SplitLines::kHead && !line.ends_with('\n'); ++k) {
      line += heads[k * count + i];
    }
    while (!line.ends_with('\n') && at < rests.size()) line += rests[at++];
    lines += line;
  }
  check(at == rests.size(), "all of the lines is used");
  return lines;
}

void judgeElements(const PageReader& page, const VeskTool::PageModel& model) {
  const json& head = page.head();
  const Vesk::Scene& scene = model.scene();
  const json& elements = head.at("elements");
  check(elements.at("count") == scene.elements.size(), "all elements are in a page");
  const std::string kinds = page.bytes(elements.at("kind"));
  const std::vector<std::uint32_t> lines = page.steps(elements.at("line"));
  const std::vector<std::uint32_t> headers = page.steps(elements.at("header"));
  check(page.steps(elements.at("counter")) == model.counters(),
        "counters come out as they went in");
  for (std::size_t i = 0; i < scene.elements.size(); ++i) {
    const Vesk::SceneElement& each = scene.elements[i];
    check(static_cast<unsigned char>(kinds[i]) == each.kind && lines[i] == each.line &&
              headers[i] == each.header,
          "an element comes out as it went in");
  }
  const json& records = head.at("records");
  check(joined(page.bytes(records.at("heads"), VeskTool::SplitLines::kHead),
               page.bytes(records.at("rests"))) == model.records(),
        "the lines come out as they went in", model.records());
}

void judgeMeshes(const PageReader& page, const Vesk::Scene& scene) {
  const json& meshes = page.head().at("meshes");
  check(meshes.size() == scene.meshes.size(), "all meshes are in a page");
  for (std::size_t m = 0; m < meshes.size(); ++m) {
    const Vesk::Mesh& mesh = scene.meshes[m];
    const std::vector<std::uint32_t> positions = page.planes(meshes[m].at("positions"), 3);
    const std::vector<std::uint32_t> indices = page.steps(meshes[m].at("indices"));
    check(indices.size() == 3 * mesh.triangles.size(), "all triangles are in a page");
    for (std::size_t i = 0; i < indices.size(); ++i) {
      check(indices[i] < positions.size() / 3, "a corner is one of the positions");
      const GePoint& p = mesh.positions[mesh.triangles[i / 3][i % 3]];
      const std::array<double, 3> wanted{p.x, p.y, p.z};
      for (std::size_t k = 0; k < 3; ++k) {
        check(positions[3 * indices[i] + k] ==
                  std::bit_cast<std::uint32_t>(static_cast<float>(wanted[k])),
              "a corner comes out as it went in");
      }
    }
  }
}

void judgePage() {
  VeskTool::TextBuffer answer;
  VeskTool::TextBuffer messages;
  VeskTool::Progress progress("", VeskTool::Progress::Mode::kNever);
  const VeskTool::CommonOptions options;
  VeskTool::Session session(options, answer, messages, progress);
  VeskTool::PageModel model(Vesk::Fineness::ofSegments(8));
  try {
    VeskTool::readInto(model, "in.dat", session, false);
  } catch (const VeskTool::Failure&) {
    return;
  }
  model.finish();
  VeskTool::TextBuffer page;
  VeskTool::writePage(page, kTemplate, model, "a title");
  const PageReader reader(page.text());
  judgeElements(reader, model);
  judgeMeshes(reader, model.scene());
}

// ---- the commands

std::size_t elementsOf(Workplace& workplace, const char* name) {
  if (!Workplace::has(name)) return 0;
  const Workplace::Outcome outcome = workplace.run({"info", "--json", name});
  if (outcome.code != 0) return 0;
  const json all = json::parse(outcome.answer, nullptr, false);
  check(!all.is_discarded(), "info answers in JSON", outcome.answer);
  return Workplace::get(name).size();
}

void judgeParts(Workplace& workplace, std::size_t choice) {
  constexpr std::array<std::array<const char*, 2>, 6> kChoices{{{"--only", "cylinder"},
                                                                {"--lines", "1-2"},
                                                                {"--bbox", "0,0,0,100,100,100"},
                                                                {"--near", "0,0,0,10"},
                                                                {"--size", "50..200"},
                                                                {"--header", "*1*"}}};
  const auto& [option, value] = kChoices[choice % kChoices.size()];
  const int code = workplace.run({"extract", "in.dat", "-o", "all.dat"}).code;
  if (code > 1) return;
  workplace.run({"extract", "in.dat", "-o", "some.dat", option, value});
  workplace.run({"extract", "in.dat", "-o", "rest.dat", "--not", option, value});
  check(elementsOf(workplace, "some.dat") + elementsOf(workplace, "rest.dat") ==
            elementsOf(workplace, "all.dat"),
        "what is chosen and what is not are all there is", option);
}

void judgeItself(Workplace& workplace) {
  if (workplace.run({"info", "in.dat"}).code != 0) return;
  const Workplace::Outcome outcome = workplace.run({"diff", "in.dat", "in.dat"});
  check(outcome.code == 0, "nothing differs from itself", outcome.answer + outcome.messages);
}

void judgeConversion(Workplace& workplace) {
  if (workplace.run({"convert", "in.dat", "to.dat"}).code != 0) return;
  const Workplace::Outcome outcome =
      workplace.run({"convert", "in.dat", "to.dat", "--verify", "--force"});
  check(outcome.code == 0, "what is converted without a loss is read back the same",
        outcome.messages);
}

void judgeExport(Workplace& workplace, std::size_t how) {
  std::vector<std::string> words{"export", "in.dat", "-o", "new.glb", "--quality", "draft"};
  if (how % 3 == 1) words.emplace_back("--instances");
  if (how % 3 == 2) words.emplace_back("--merge");
  const bool isCompressed = how % 3 != 0 && how / 3 % 4 == 3;
  if (isCompressed) words.emplace_back("--compress");
  workplace.run(words);
  if (Workplace::has("new.glb")) judgeGlb(Workplace::get("new.glb"), isCompressed);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Workplace workplace;
  VeskFuzz::Bytes bytes(data, size);
  const std::size_t choice = bytes.byte();
  const std::size_t how = bytes.byte();
  workplace.clear();
  Workplace::put("in.dat", bytes.rest());
  judgeItself(workplace);
  judgeParts(workplace, choice);
  judgeConversion(workplace);
  judgeExport(workplace, how);
  judgePage();
  return 0;
}
