// SPDX-License-Identifier: MIT
#include "export/GltfBuffer.h"

#include <algorithm>

#include "export/GltfText.h"
#include "export/LittleEndian.h"

namespace VeskTool {
namespace {

// As glTF numbers them.
constexpr int kFloat = 5126;
constexpr int kUnsignedInt = 5125;
constexpr int kUnsignedShort = 5123;
constexpr int kVertexTarget = 34962;
constexpr int kIndexTarget = 34963;

struct ViewKind {
  const char* type;
  int component;
  std::size_t bytes;  // of one element
  int target;         // 0: none
};

constexpr ViewKind kViewKinds[GltfBuffer::kViews] = {
    {"VEC3", kFloat, 12, kVertexTarget},
    {"VEC3", kFloat, 12, kVertexTarget},
    {"SCALAR", kUnsignedInt, 4, kIndexTarget},
    {"SCALAR", kUnsignedShort, 2, kIndexTarget},
    {"VEC3", kFloat, 12, 0},
    {"VEC4", kFloat, 16, 0},
    {"SCALAR", kFloat, 4, 0},
};

constexpr std::size_t kMostShort = 0xFFFF;  // stands for no vertex

std::size_t padded(std::size_t size) { return (size + 3) / 4 * 4; }

void appendMember(std::string& to, std::string_view key, std::size_t value) {
  to += ",\"";
  to += key;
  to += "\":";
  appendJsonNumber(to, value);
}

// Readers compare 64 bits, so that the shortest text of 32 will not do.
void appendBound(std::string& to, const std::array<float, 3>& bound) {
  appendJsonNumbers(to, std::array<double, 3>{bound[0], bound[1], bound[2]});
}

}  // namespace

std::size_t GltfBuffer::addAccessor(View view, std::size_t count) {
  accessors_.push_back({view, bytes_[view].size(), count, false, {}, {}});
  return accessors_.size() - 1;
}

std::size_t GltfBuffer::addVectors(View view, std::span<const float> numbers, bool withBounds) {
  const std::size_t index = addAccessor(view, numbers.size() / 3);
  Accessor& accessor = accessors_.back();
  accessor.withBounds = withBounds;
  accessor.low = accessor.high = {numbers[0], numbers[1], numbers[2]};
  std::string& bytes = bytes_[view];
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    appendF32(bytes, numbers[i]);
    accessor.low[i % 3] = std::min(accessor.low[i % 3], numbers[i]);
    accessor.high[i % 3] = std::max(accessor.high[i % 3], numbers[i]);
  }
  return index;
}

std::size_t GltfBuffer::addInstances(std::span<const float> numbers, std::size_t size) {
  const View view = size == 3 ? kInstances3 : size == 4 ? kInstances4 : kInstances1;
  const std::size_t index = addAccessor(view, numbers.size() / size);
  for (const float number : numbers) appendF32(bytes_[view], number);
  return index;
}

std::size_t GltfBuffer::addIndices(std::span<const std::uint32_t> indices, std::size_t vertices) {
  const bool isShort = vertices <= kMostShort;
  const View view = isShort ? kIndices16 : kIndices32;
  const std::size_t index = addAccessor(view, indices.size());
  for (const std::uint32_t i : indices) {
    if (isShort) {
      appendU16(bytes_[view], static_cast<std::uint16_t>(i));
    } else {
      appendU32(bytes_[view], i);
    }
  }
  return index;
}

std::size_t GltfBuffer::size() const {
  std::size_t size = 0;
  for (const std::string& bytes : bytes_) size += padded(bytes.size());
  return size;
}

void GltfBuffer::appendJson(std::string& to, std::string_view uri) const {
  if (size() == 0) return;
  std::array<std::size_t, kViews> places{};
  std::string views;
  std::size_t offset = 0;
  std::size_t used = 0;
  for (std::size_t view = 0; view < kViews; ++view) {
    if (bytes_[view].empty()) continue;
    const ViewKind& kind = kViewKinds[view];
    views += used == 0 ? "{\"buffer\":0" : ",{\"buffer\":0";
    if (offset > 0) appendMember(views, "byteOffset", offset);
    appendMember(views, "byteLength", bytes_[view].size());
    if (kind.target == kVertexTarget) appendMember(views, "byteStride", kind.bytes);
    if (kind.target != 0) appendMember(views, "target", static_cast<std::size_t>(kind.target));
    views += '}';
    places[view] = used++;
    offset += padded(bytes_[view].size());
  }
  to += ",\"accessors\":[";
  for (std::size_t i = 0; i < accessors_.size(); ++i) {
    const Accessor& accessor = accessors_[i];
    const ViewKind& kind = kViewKinds[accessor.view];
    to += i == 0 ? "{\"bufferView\":" : ",{\"bufferView\":";
    appendJsonNumber(to, places[accessor.view]);
    if (accessor.offset > 0) appendMember(to, "byteOffset", accessor.offset);
    appendMember(to, "componentType", static_cast<std::size_t>(kind.component));
    appendMember(to, "count", accessor.count);
    to += ",\"type\":\"";
    to += kind.type;
    to += '"';
    if (accessor.withBounds) {
      to += ",\"min\":";
      appendBound(to, accessor.low);
      to += ",\"max\":";
      appendBound(to, accessor.high);
    }
    to += '}';
  }
  to += "],\"bufferViews\":[";
  to += views;
  to += "],\"buffers\":[{\"byteLength\":";
  appendJsonNumber(to, offset);
  if (!uri.empty()) {
    to += ",\"uri\":\"";
    to += uri;
    to += '"';
  }
  to += "}]";
}

void GltfBuffer::writeTo(TextSink& out) const {
  // In pieces, so that a sink that keeps what it gets need not keep all at once.
  constexpr std::size_t kPiece = std::size_t{1} << 18;
  for (const std::string& bytes : bytes_) {
    for (std::string_view rest = bytes; !rest.empty();) {
      const std::string_view piece = rest.substr(0, kPiece);
      out.write(piece);
      rest.remove_prefix(piece.size());
    }
    out.write(std::string(padded(bytes.size()) - bytes.size(), '\0'));
  }
}

std::string GltfBuffer::dataUri() const {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  TextBuffer all;
  writeTo(all);
  const std::string_view bytes = all.text();
  std::string uri = "data:application/octet-stream;base64,";
  uri.reserve(uri.size() + (bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
    std::uint32_t bits = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      bits = bits << 8U | (k < count ? static_cast<unsigned char>(bytes[i + k]) : 0U);
    }
    for (std::size_t k = 0; k < 4; ++k) {
      uri += k <= count ? kDigits[bits >> (18U - 6U * k) & 0x3FU] : '=';
    }
  }
  return uri;
}

}  // namespace VeskTool
