// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXPORT_MESHPACKER_H
#define VESK_TOOLS_EXPORT_MESHPACKER_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace VeskTool {

// The packing of EXT_meshopt_compression. The same input gives the same bytes.
class MeshPacker {
 public:
  virtual ~MeshPacker() = default;

  // Mode "ATTRIBUTES": items of `stride` bytes, a multiple of four up to 256.
  virtual std::string packedAttributes(std::string_view bytes, std::size_t stride) const = 0;

  // Mode "TRIANGLES": keeps the triangles' order and sides, not where each begins.
  virtual std::string packedTriangles(std::span<const std::uint32_t> indices) const = 0;

  // For the filter "OCTAHEDRAL": four bytes for each unit vector.
  virtual std::string octahedral(std::span<const float> vectors) const = 0;
};

// By meshoptimizer. Throws as requireLibrary does in a build without it.
std::unique_ptr<MeshPacker> makeMeshPacker();

}  // namespace VeskTool

#endif
