// SPDX-License-Identifier: MIT
#include "export/MeshPacker.h"

#include <dlfcn.h>
#define MESHOPTIMIZER_NO_WRAPPERS
#include <meshoptimizer.h>

#include <algorithm>
#include <vector>

#include "terminal/Exit.h"

namespace VeskTool {
namespace {

// The formats that the extension prescribes.
constexpr int kAttributesVersion = 0;
constexpr int kTrianglesVersion = 1;

std::string textOf(const std::vector<unsigned char>& bytes, std::size_t size) {
  return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)};
}

// The library is opened when a file is to be compressed: every other command would
// pay for its start and memory.
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

 private:
  static void* opened() {
    static void* const library = dlopen(VESK_MESHOPTIMIZER_FILE, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
      throw Failure(Exit::kUsage, std::string("--compress: ") + dlerror(),
                    "the library meshoptimizer");
    }
    return library;
  }

  template <class Function>
  static Function find(const char* name) {
    void* const found = dlsym(opened(), name);
    if (found == nullptr) throw Failure(Exit::kUsage, std::string("--compress: ") + dlerror());
    return reinterpret_cast<Function>(found);
  }

#define VESK_FROM_MESHOPTIMIZER(name) decltype(&::name) name = find<decltype(&::name)>(#name)
  VESK_FROM_MESHOPTIMIZER(meshopt_encodeVertexBufferBound);
  VESK_FROM_MESHOPTIMIZER(meshopt_encodeVertexVersion);
  VESK_FROM_MESHOPTIMIZER(meshopt_encodeVertexBuffer);
  VESK_FROM_MESHOPTIMIZER(meshopt_encodeIndexBufferBound);
  VESK_FROM_MESHOPTIMIZER(meshopt_encodeIndexVersion);
  VESK_FROM_MESHOPTIMIZER(meshopt_encodeIndexBuffer);
  VESK_FROM_MESHOPTIMIZER(meshopt_encodeFilterOct);
#undef VESK_FROM_MESHOPTIMIZER
};

}  // namespace

std::unique_ptr<MeshPacker> makeMeshPacker() { return std::make_unique<Meshoptimizer>(); }

}  // namespace VeskTool
