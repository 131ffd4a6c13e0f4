// SPDX-License-Identifier: MIT
#include "check/Duplicates.h"

#include <algorithm>
#include <bit>
#include <string_view>
#include <utility>

#include "prims/Visit.h"

namespace VeskTool {
namespace {

using namespace Vesk;

constexpr std::uint64_t kFactor1 = 0x9e3779b97f4a7c15U;  // odd, its bits well mixed
constexpr std::uint64_t kFactor2 = 0xc2b2ae3d27d4eb4fU;
constexpr int kLineBits = 40;

// Added to a number it leaves thousandths only: 1.5 * 2^52 in units of 1.
constexpr double kRounder = 6755399441055744.0;

class Hash {
 public:
  explicit Hash(std::int32_t kind) { add(static_cast<std::uint64_t>(kind)); }

  void add(std::uint64_t v) {
    high_ = (high_ ^ v) * kFactor1;
    high_ ^= high_ >> 32;
    low_ = (low_ + v) * kFactor2;
    low_ ^= low_ >> 29;
  }
  // Adding the rounder takes the sign of zero away too.
  void add(double v) { add(std::bit_cast<std::uint64_t>(v * 1000.0 + kRounder)); }
  void add(const GePoint& p) { add(p.x), add(p.y), add(p.z); }
  void add(const GeVector& v) { add(v.x), add(v.y), add(v.z); }
  void add(std::string_view text) {
    for (const char c : text) add(std::uint64_t{static_cast<unsigned char>(c)});
  }
  void add(const ShapeKey& key) { add(key.high), add(key.low); }

  ShapeKey key() const {
    ShapeKey key{high_ * kFactor2, low_ * kFactor1};
    key.high ^= key.high >> 31;
    key.low ^= key.low >> 33;
    return key;
  }

 private:
  std::uint64_t high_ = 0x243f6a8885a308d3U;
  std::uint64_t low_ = 0x13198a2e03707344U;
};

// The end of a pipe or bend, with what belongs to it.
ShapeKey keyOfEnd(const GePoint& p, double size) {
  Hash hash(0);
  hash.add(p);
  hash.add(size);
  return hash.key();
}

bool isBefore(const ShapeKey& a, const ShapeKey& b) {
  return std::pair(a.high, a.low) < std::pair(b.high, b.low);
}

// In either order.
void addEnds(Hash& hash, ShapeKey a, ShapeKey b) {
  if (isBefore(b, a)) std::swap(a, b);
  hash.add(a);
  hash.add(b);
}

void addCorners(Hash& hash, const Box& box) {
  ShapeKey sum;
  for (const GePoint& corner : box.corners()) {
    const ShapeKey key = keyOfEnd(corner, 0.0);
    sum.high += key.high;
    sum.low += key.low;
  }
  hash.add(sum);
}

// What makes an element the same as another one, one function for each class.
struct AddShape {
  Hash& hash;

  void operator()(const Cyl& cyl) const {
    addEnds(hash, keyOfEnd(cyl.origin, cyl.diameter),
            keyOfEnd(cyl.origin + cyl.axis, cyl.diameter));
  }
  void operator()(const Cone& cone) const {
    addEnds(hash, keyOfEnd(cone.origin, cone.diameter1),
            keyOfEnd(cone.origin + cone.axis, cone.diameter2));
  }
  void operator()(const Box& box) const { addCorners(hash, box); }
  void operator()(const Torus& torus) const {
    hash.add(torus.centre);
    addEnds(hash, keyOfEnd(torus.centre + torus.startVector, torus.diameter),
            keyOfEnd(torus.centre + torus.endVector, torus.diameter));
  }
  void operator()(const Relb& relb) const {
    hash.add(relb.centre);
    hash.add(relb.width);
    addEnds(hash, keyOfEnd(relb.centre + relb.startVector, relb.depth),
            keyOfEnd(relb.centre + relb.endVector, relb.depth));
  }
  void operator()(const Red& red) const {
    for (int k = 0; k < 8; ++k) hash.add(red.corner(k));
  }
  void operator()(const Pline& pline) const {
    for (const GePoint& p : pline.vertices) hash.add(p);
  }
  void operator()(const Pgon& pgon) const {
    for (const PgonVertex& vertex : pgon.vertices) hash.add(vertex.point);
  }
  void operator()(const Txt& txt) const {
    hash.add(txt.position), hash.add(txt.direction), hash.add(txt.upDirection);
    hash.add(txt.height), hash.add(txt.charWidth);
    hash.add(std::string_view(txt.text));
  }
};

}  // namespace

ShapeKey shapeKey(const Geo& geo) {
  Hash hash(geo.typeCode());
  visit(geo, AddShape{hash}, [] {});
  return hash.key();
}

bool countsAsDuplicate(const Geo& geo) {
  return geo.typeCode() != Pline::kTypeCode || static_cast<const Pline&>(geo).vertices.size() > 1;
}

std::uint64_t ShapeSet::insert(const ShapeKey& key, std::uint64_t line) {
  if (4 * (count_ + 1) > 3 * slots_.size()) grow();
  const std::uint64_t low = key.low >> kLineBits;
  Slot& slot = find(key.high, low);
  if (slot.lowAndLine != 0) return slot.lowAndLine & kLastLine;
  slot = {key.high, low << kLineBits | std::min(std::max<std::uint64_t>(line, 1), kLastLine)};
  ++count_;
  return 0;
}

void ShapeSet::prefetch(const ShapeKey& key) const {
  if (!slots_.empty()) __builtin_prefetch(&slots_[key.high & (slots_.size() - 1)]);
}

ShapeSet::Slot& ShapeSet::find(std::uint64_t high, std::uint64_t low) {
  const std::size_t mask = slots_.size() - 1;
  std::size_t i = static_cast<std::size_t>(high) & mask;
  while (slots_[i].lowAndLine != 0 &&
         (slots_[i].high != high || slots_[i].lowAndLine >> kLineBits != low)) {
    i = (i + 1) & mask;
  }
  return slots_[i];
}

void ShapeSet::grow() {
  constexpr std::size_t kLeast = 1024;
  std::vector<Slot> old(std::max(kLeast, 2 * slots_.size()));
  old.swap(slots_);
  for (const Slot& slot : old) {
    if (slot.lowAndLine != 0) find(slot.high, slot.lowAndLine >> kLineBits) = slot;
  }
}

}  // namespace VeskTool
