// SPDX-License-Identifier: MIT
#include "export/GltfBuffer.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "export/GltfText.h"
#include "export/LittleEndian.h"

namespace VeskTool {
namespace {

// As glTF numbers them.
constexpr int kByte = 5120;
constexpr int kFloat = 5126;
constexpr int kUnsignedInt = 5125;
constexpr int kUnsignedShort = 5123;
constexpr int kVertexTarget = 34962;
constexpr int kIndexTarget = 34963;

struct ViewKind {
  const char* type;
  int component;
  std::size_t bytes;   // of one element
  int target;          // 0: none
  const char* filter;  // of the compressed form
};

constexpr ViewKind kViewKinds[GltfBuffer::kViews] = {
    {"VEC3", kFloat, 12, kVertexTarget, "EXPONENTIAL"},
    {"VEC3", kFloat, 12, kVertexTarget, "NONE"},
    {"SCALAR", kUnsignedInt, 4, kIndexTarget, "NONE"},
    {"SCALAR", kUnsignedShort, 2, kIndexTarget, "NONE"},
    {"VEC3", kFloat, 12, 0, "EXPONENTIAL"},
    {"VEC4", kFloat, 16, 0, "NONE"},
    {"SCALAR", kFloat, 4, 0, "NONE"},
};

constexpr std::size_t kOctahedralBytes = 4;

constexpr std::size_t kMostShort = 0xFFFF;  // stands for no vertex

std::size_t padded(std::size_t size) { return (size + 3) / 4 * 4; }

bool isIndices(std::size_t view) { return kViewKinds[view].target == kIndexTarget; }

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

// Numbers as whole multiples of a power of two: 24 bits of the multiple, sign
// included, and 8 bits of the exponent, as the filter "EXPONENTIAL" takes them.
class Multiples {
 public:
  Multiples(double step, double largest) {
    constexpr int kLeast = -100;
    constexpr int kBits = 23;
    // A shape that is small beside the step keeps its form.
    constexpr double kCoarsest = 1.0 / 1024.0;
    if (step > 0.0) exponent_ = std::ilogb(std::min(step, kCoarsest * largest));
    if (largest > 0.0) exponent_ = std::max(exponent_, std::ilogb(largest) + 1 - kBits);
    exponent_ = std::max(exponent_, kLeast);
    // Where rounding needs a bit more.
    if (multiple(largest) >= std::int32_t{1} << kBits) ++exponent_;
  }

  std::uint32_t packed(double number) const {
    return (static_cast<std::uint32_t>(multiple(number)) & 0xFFFFFFU) |
           static_cast<std::uint32_t>(exponent_) << 24U;
  }

  float rounded(double number) const {
    return static_cast<float>(std::ldexp(multiple(number), exponent_));
  }

 private:
  std::int32_t multiple(double number) const {
    return static_cast<std::int32_t>(std::nearbyint(std::ldexp(number, -exponent_)));
  }

  int exponent_ = std::numeric_limits<int>::min();
};

std::array<Multiples, 3> multiplesFor(std::span<const float> numbers,
                                      const GltfBuffer::Steps& steps) {
  std::array<float, 3> largest{};
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    largest[i % 3] = std::max(largest[i % 3], std::fabs(numbers[i]));
  }
  return {Multiples(steps[0], largest[0]), Multiples(steps[1], largest[1]),
          Multiples(steps[2], largest[2])};
}

std::vector<std::uint32_t> indicesOf(std::string_view bytes, std::size_t size) {
  std::vector<std::uint32_t> indices;
  indices.reserve(bytes.size() / size);
  for (std::size_t i = 0; i < bytes.size(); i += size) {
    std::uint32_t index = 0;
    for (std::size_t k = size; k-- > 0;) {
      index = index << 8U | static_cast<unsigned char>(bytes[i + k]);
    }
    indices.push_back(index);
  }
  return indices;
}

}  // namespace

std::size_t GltfBuffer::addAccessor(View view, std::size_t count) {
  accessors_.push_back({view, bytes_[view].size(), count, false, {}, {}});
  return accessors_.size() - 1;
}

// With the bounds of what a reader gets.
std::size_t GltfBuffer::addPositions(std::span<const float> numbers, const Steps& steps) {
  const std::size_t index = addAccessor(kPositions, numbers.size() / 3);
  Accessor& accessor = accessors_.back();
  accessor.withBounds = true;
  constexpr float kInfinite = std::numeric_limits<float>::infinity();
  accessor.low = {kInfinite, kInfinite, kInfinite};
  accessor.high = {-kInfinite, -kInfinite, -kInfinite};
  const auto widen = [&accessor](std::size_t axis, float number) {
    accessor.low[axis] = std::min(accessor.low[axis], number);
    accessor.high[axis] = std::max(accessor.high[axis], number);
  };
  appendVectors(kPositions, numbers, steps, widen);
  return index;
}

std::size_t GltfBuffer::addNormals(std::span<const float> numbers) {
  const std::size_t index = addAccessor(kNormals, numbers.size() / 3);
  if (roundsNormals_) {
    bytes_[kNormals] += packer_->octahedral(numbers);
  } else {
    for (const float number : numbers) appendF32(bytes_[kNormals], number);
  }
  return index;
}

std::size_t GltfBuffer::addInstanceVectors(std::span<const float> numbers, double step) {
  const std::size_t index = addAccessor(kInstances3, numbers.size() / 3);
  appendVectors(kInstances3, numbers, {step, step, step}, [](std::size_t, float) {});
  return index;
}

std::size_t GltfBuffer::addInstances(std::span<const float> numbers, std::size_t size) {
  const View view = size == 4 ? kInstances4 : kInstances1;
  const std::size_t index = addAccessor(view, numbers.size() / size);
  for (const float number : numbers) appendF32(bytes_[view], number);
  return index;
}

template <class Seen>
void GltfBuffer::appendVectors(View view, std::span<const float> numbers, const Steps& steps,
                               Seen seen) {
  std::string& bytes = bytes_[view];
  if (!isCompressed()) {
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      appendF32(bytes, numbers[i]);
      seen(i % 3, numbers[i]);
    }
    return;
  }
  const std::array<Multiples, 3> multiples = multiplesFor(numbers, steps);
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    appendU32(bytes, multiples[i % 3].packed(numbers[i]));
    seen(i % 3, multiples[i % 3].rounded(numbers[i]));
  }
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

void GltfBuffer::finish() {
  for (std::size_t view = 0; view < kViews; ++view) {
    plainSizes_[view] = bytes_[view].size();
    if (packer_ == nullptr || bytes_[view].empty()) continue;
    const std::size_t stride = strideOf(view);
    bytes_[view] = isIndices(view) ? packer_->packedTriangles(indicesOf(bytes_[view], stride))
                                   : packer_->packedAttributes(bytes_[view], stride);
  }
}

std::size_t GltfBuffer::size() const {
  std::size_t size = 0;
  for (const std::string& bytes : bytes_) size += padded(bytes.size());
  return size;
}

std::size_t GltfBuffer::strideOf(std::size_t view) const {
  return roundsNormals_ && view == kNormals ? kOctahedralBytes : kViewKinds[view].bytes;
}

std::string_view GltfBuffer::filterOf(std::size_t view) const {
  return roundsNormals_ && view == kNormals ? "OCTAHEDRAL" : kViewKinds[view].filter;
}

// Where the compressed bytes of a view are, and how they are to be read.
void GltfBuffer::appendCompression(std::string& to, std::size_t view, std::size_t offset) const {
  to += ",\"extensions\":{\"EXT_meshopt_compression\":{\"buffer\":0";
  if (offset > 0) appendMember(to, "byteOffset", offset);
  appendMember(to, "byteLength", bytes_[view].size());
  appendMember(to, "byteStride", strideOf(view));
  appendMember(to, "count", plainSizes_[view] / strideOf(view));
  to += isIndices(view) ? ",\"mode\":\"TRIANGLES\"" : ",\"mode\":\"ATTRIBUTES\",\"filter\":\"";
  if (!isIndices(view)) {
    to += filterOf(view);
    to += '"';
  }
  to += "}}";
}

// Compressed views lie in buffer 0; what they hold would lie in buffer 1.
void GltfBuffer::appendViews(std::string& to) const {
  std::size_t offset = 0;
  std::size_t plainOffset = 0;
  for (std::size_t view = 0; view < kViews; ++view) {
    if (bytes_[view].empty()) continue;
    const ViewKind& kind = kViewKinds[view];
    const std::size_t place = isCompressed() ? plainOffset : offset;
    to += plainOffset == 0 ? "{\"buffer\":" : ",{\"buffer\":";
    to += isCompressed() ? '1' : '0';
    if (place > 0) appendMember(to, "byteOffset", place);
    appendMember(to, "byteLength", plainSizes_[view]);
    if (kind.target == kVertexTarget) appendMember(to, "byteStride", strideOf(view));
    if (kind.target != 0) appendMember(to, "target", static_cast<std::size_t>(kind.target));
    if (isCompressed()) appendCompression(to, view, offset);
    to += '}';
    offset += padded(bytes_[view].size());
    plainOffset += padded(plainSizes_[view]);
  }
}

void GltfBuffer::appendAccessors(std::string& to) const {
  std::array<std::size_t, kViews> places{};
  std::size_t used = 0;
  for (std::size_t view = 0; view < kViews; ++view) {
    places[view] = used;
    if (!bytes_[view].empty()) ++used;
  }
  for (std::size_t i = 0; i < accessors_.size(); ++i) {
    const Accessor& accessor = accessors_[i];
    const ViewKind& kind = kViewKinds[accessor.view];
    const bool isOctahedral = roundsNormals_ && accessor.view == kNormals;
    to += i == 0 ? "{\"bufferView\":" : ",{\"bufferView\":";
    appendJsonNumber(to, places[accessor.view]);
    if (accessor.offset > 0) appendMember(to, "byteOffset", accessor.offset);
    appendMember(to, "componentType",
                 static_cast<std::size_t>(isOctahedral ? kByte : kind.component));
    if (isOctahedral) to += ",\"normalized\":true";
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
}

void GltfBuffer::appendJson(std::string& to, std::string_view uri) const {
  if (size() == 0) return;
  to += ",\"accessors\":[";
  appendAccessors(to);
  to += "],\"bufferViews\":[";
  appendViews(to);
  to += "],\"buffers\":[{\"byteLength\":";
  appendJsonNumber(to, size());
  if (!uri.empty()) {
    to += ",\"uri\":\"";
    to += uri;
    to += '"';
  }
  to += '}';
  if (isCompressed()) {
    std::size_t plain = 0;
    for (const std::size_t each : plainSizes_) plain += padded(each);
    to += ",{\"byteLength\":";
    appendJsonNumber(to, plain);
    to += ",\"extensions\":{\"EXT_meshopt_compression\":{\"fallback\":true}}}";
  }
  to += ']';
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
