// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXPORT_GLTFBUFFER_H
#define VESK_TOOLS_EXPORT_GLTFBUFFER_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "terminal/Streams.h"

namespace VeskTool {

// The one buffer of a glTF file, its views and accessors. Views that hold nothing
// are left out.
class GltfBuffer {
 public:
  // What the views hold; those for indices and for instances have no stride.
  enum View { kPositions, kNormals, kIndices32, kIndices16, kInstances3, kInstances4, kInstances1 };
  static constexpr std::size_t kViews = 7;

  // An accessor of three numbers a vertex, with its bounds if asked for; its index.
  std::size_t addVectors(View view, std::span<const float> numbers, bool withBounds);

  // One of `size` numbers (1, 3 or 4) an instance.
  std::size_t addInstances(std::span<const float> numbers, std::size_t size);

  // Corners of triangles, of 16 bits where `vertices` allows it.
  std::size_t addIndices(std::span<const std::uint32_t> indices, std::size_t vertices);

  // Bytes of all views.
  std::size_t size() const;

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

  std::size_t addAccessor(View view, std::size_t count);

  std::array<std::string, kViews> bytes_;
  std::vector<Accessor> accessors_;
};

}  // namespace VeskTool

#endif
