// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXPORT_GLTFBUFFER_H
#define VESK_TOOLS_EXPORT_GLTFBUFFER_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "export/MeshPacker.h"
#include "terminal/Streams.h"

namespace VeskTool {

// The one buffer of a glTF file, its views and accessors. Views that hold nothing
// are left out.
//
// Compressed it is EXT_meshopt_compression's. Positions and vectors of instances are
// whole multiples of a power of two, which is at most the step asked for, or as small
// as 24 bits allow. Rounded normals have 8 bits a number, by KHR_mesh_quantization.
// Everything else stays as it is.
class GltfBuffer {
 public:
  // How far apart neighbouring values may be, along x, y and z, once compressed; 0:
  // as near as can be.
  using Steps = std::array<double, 3>;

  // What the views hold; those for indices and for instances have no stride.
  enum View { kPositions, kNormals, kIndices32, kIndices16, kInstances3, kInstances4, kInstances1 };
  static constexpr std::size_t kViews = 7;

  // Compressed by the packer, if there is one, which has to live as long. To round
  // normals takes meshes that no node stretches.
  GltfBuffer(const MeshPacker* packer, bool roundsNormals)
      : packer_(packer), roundsNormals_(packer != nullptr && roundsNormals) {}

  // An accessor of three numbers a vertex, with their bounds; its index.
  std::size_t addPositions(std::span<const float> numbers, const Steps& steps);

  std::size_t addNormals(std::span<const float> numbers);

  // One of three numbers an instance.
  std::size_t addInstanceVectors(std::span<const float> numbers, double step);

  // One of `size` numbers (1 or 4) an instance.
  std::size_t addInstances(std::span<const float> numbers, std::size_t size);

  // Corners of triangles, of 16 bits where `vertices` allows it.
  std::size_t addIndices(std::span<const std::uint32_t> indices, std::size_t vertices);

  // Compresses what was added, if that was asked for. Nothing is added after it.
  void finish();

  // Bytes of all views, as they are written.
  std::size_t size() const;

  // Whether there are normals of 8 bits.
  bool isQuantized() const { return roundsNormals_ && !bytes_[kNormals].empty(); }

  // Appends "accessors", "bufferViews" and "buffers" to an object that has members
  // already; `uri` is empty for the buffer of a binary file. Nothing without data.
  void appendJson(std::string& to, std::string_view uri) const;

  void writeTo(TextSink& out) const;

  // As "data:application/octet-stream;base64,...".
  std::string dataUri() const;

 private:
  struct Accessor {
    View view;
    std::size_t offset;
    std::size_t count;
    bool withBounds;
    std::array<float, 3> low;
    std::array<float, 3> high;
  };

  bool isCompressed() const { return packer_ != nullptr; }
  std::size_t addAccessor(View view, std::size_t count);

  // `seen` is told of each number as readers get it, with its axis.
  template <class Seen>
  void appendVectors(View view, std::span<const float> numbers, const Steps& steps, Seen seen);

  void appendViews(std::string& to) const;
  std::string_view filterOf(std::size_t view) const;
  void appendCompression(std::string& to, std::size_t view, std::size_t offset) const;
  void appendAccessors(std::string& to) const;
  std::size_t strideOf(std::size_t view) const;

  const MeshPacker* packer_;
  bool roundsNormals_;
  std::array<std::string, kViews> bytes_;         // as they are written
  std::array<std::size_t, kViews> plainSizes_{};  // before they were compressed
  std::vector<Accessor> accessors_;
};

}  // namespace VeskTool

#endif
