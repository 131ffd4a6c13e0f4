// SPDX-License-Identifier: MIT
#include "export/MeshPacker.h"

#include <meshoptimizer.h>

#include <algorithm>
#include <vector>

namespace VeskTool {
namespace {

// The formats that the extension prescribes.
constexpr int kAttributesVersion = 0;
constexpr int kTrianglesVersion = 1;

std::string textOf(const std::vector<unsigned char>& bytes, std::size_t size) {
  return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)};
}

class Meshoptimizer : public MeshPacker {
 public:
  std::string packedAttributes(std::string_view bytes, std::size_t stride) const override {
    const std::size_t count = bytes.size() / stride;
    std::vector<unsigned char> packed(meshopt_encodeVertexBufferBound(count, stride));
    meshopt_encodeVertexVersion(kAttributesVersion);
    return textOf(packed, meshopt_encodeVertexBuffer(packed.data(), packed.size(), bytes.data(),
                                                     count, stride));
  }

  std::string packedTriangles(std::span<const std::uint32_t> indices) const override {
    const std::size_t vertices = *std::max_element(indices.begin(), indices.end()) + std::size_t{1};
    std::vector<unsigned char> packed(meshopt_encodeIndexBufferBound(indices.size(), vertices));
    meshopt_encodeIndexVersion(kTrianglesVersion);
    return textOf(packed, meshopt_encodeIndexBuffer(packed.data(), packed.size(), indices.data(),
                                                    indices.size()));
  }

  std::string octahedral(std::span<const float> vectors) const override {
    constexpr std::size_t kStride = 4;
    const std::size_t count = vectors.size() / 3;
    std::vector<float> padded(4 * count, 0.0F);
    for (std::size_t i = 0; i < vectors.size(); ++i) padded[i / 3 * 4 + i % 3] = vectors[i];
    std::string bytes(kStride * count, '\0');
    meshopt_encodeFilterOct(bytes.data(), count, kStride, 8, padded.data());
    return bytes;
  }
};

}  // namespace

std::unique_ptr<MeshPacker> makeMeshPacker() { return std::make_unique<Meshoptimizer>(); }

}  // namespace VeskTool
