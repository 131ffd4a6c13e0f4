// SPDX-License-Identifier: MIT
#ifndef VESK_RVM_SHAPEMAPPER_H
#define VESK_RVM_SHAPEMAPPER_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "rvm/ReviewModel.h"
#include "vesk/Geo.h"

namespace Vesk {

// What becomes of a shape.
enum class ShapeFate : std::uint8_t {
  kExact,     // one primitive, or faces that are plane
  kInPieces,  // bends of 120 degrees at most, exact as well
  kSliced,    // cones one on the other
  kFaceted,   // bodies with plane ends, or triangles of a face that is not plane
  kDoubtful,  // the file does not say for certain what it is
  kRefused,   // it can't be
};
inline constexpr std::size_t kShapeFates = 6;

// "exact", "in pieces", ...
const char* nameOf(ShapeFate fate);

struct ShapeOutcome {
  ShapeFate fate = ShapeFate::kRefused;
  const char* reason = "";  // why it is doubtful or refused
  std::size_t elements = 0;

  double deviation = 0.0;   // the most that shape and elements are apart, mm
  double volumeLost = 0.0;  // mm3; the difference of both volumes

  std::size_t facetsRefused = 0;  // of its polygons
  std::size_t normals = 0;        // of its corners, which no element keeps
  bool boxDisagrees = false;      // with the parameters
  bool isOddSnout = false;        // sheared, and of two radii
};

// Takes an element; it is the caller's for the time of the call.
using PutElement = std::function<void(const Geo& element)>;

// Makes primitives of the shapes of review models, in millimetres.
class ShapeMapper {
 public:
  // tolerance: the most that what can't be exact may be off, mm, above 0.
  explicit ShapeMapper(double tolerance) : tolerance_(tolerance) {}

  // Hands over the elements of the shape in order and says what became of it. A
  // shape that is refused, or doubtful and a line, has none.
  ShapeOutcome map(const ReviewShape& shape, const PutElement& put) const;

 private:
  double tolerance_;
};

}  // namespace Vesk

#endif
