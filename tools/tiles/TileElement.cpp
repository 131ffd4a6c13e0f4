// SPDX-License-Identifier: MIT
#include "tiles/TileElement.h"

#include <cstring>
#include <type_traits>

namespace VeskTool {
namespace {

constexpr std::uint32_t kCoarseSegments = 8;

// What has always the same size.
struct Fixed {
  double box[6];
  ElementDetail detail;
  std::uint64_t line;
  std::uint32_t file;
  std::uint32_t kind;
  std::uint64_t header;  // bytes of the texts
  std::uint64_t group;
};
static_assert(std::is_trivially_copyable_v<Fixed>);

}  // namespace

GePoint centreOf(const Vesk::Extents& box) { return box.min + (box.max - box.min) / 2.0; }

std::string bytesOf(const TileElement& element) {
  const GePoint& low = element.box.min;
  const GePoint& high = element.box.max;
  const Fixed fixed{{low.x, low.y, low.z, high.x, high.y, high.z},
                    element.detail,
                    element.line,
                    element.file,
                    element.kind,
                    element.header.size(),
                    element.group.size()};
  std::string bytes(sizeof fixed, '\0');
  std::memcpy(bytes.data(), &fixed, sizeof fixed);
  return bytes.append(element.header).append(element.group).append(element.geo);
}

TileElement tileElementOf(std::string_view bytes) {
  Fixed fixed;
  std::memcpy(&fixed, bytes.data(), sizeof fixed);
  bytes.remove_prefix(sizeof fixed);
  TileElement element;
  element.box = Vesk::Extents({fixed.box[0], fixed.box[1], fixed.box[2]},
                              {fixed.box[3], fixed.box[4], fixed.box[5]});
  element.detail = fixed.detail;
  element.line = fixed.line;
  element.file = fixed.file;
  element.kind = static_cast<std::uint8_t>(fixed.kind);
  element.header = bytes.substr(0, fixed.header);
  bytes.remove_prefix(fixed.header);
  element.group = bytes.substr(0, fixed.group);
  element.geo = bytes.substr(fixed.group);
  return element;
}

Vesk::Fineness coarseFineness() { return Vesk::Fineness::ofSegments(kCoarseSegments); }

}  // namespace VeskTool
