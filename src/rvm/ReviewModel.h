// SPDX-License-Identifier: MIT
#ifndef VESK_RVM_REVIEWMODEL_H
#define VESK_RVM_REVIEWMODEL_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "vesk/Extents.h"
#include "vesk/GePoint.h"
#include "vesk/GeVector.h"

namespace Vesk {

// Puts the next bytes of a file into the buffer, `size` at most, and returns how
// many; 0 at the end. It may throw, and reading ends with what it threw.
using ReadBytes = std::function<std::size_t(char* buffer, std::size_t size)>;

// The shapes of review models, by the numbers that stand in the files.
enum class ReviewKind : std::uint8_t {
  kUnknown = 0,
  kPyramid = 1,
  kBox = 2,
  kRectangularTorus = 3,
  kCircularTorus = 4,
  kEllipticalDish = 5,
  kSphericalDish = 6,
  kSnout = 7,
  kCylinder = 8,
  kSphere = 9,
  kLine = 10,
  kFacets = 11,
};
inline constexpr std::size_t kReviewKinds = 12;

// "pyramid", "rectangular torus"; "unknown kind" for any other.
const char* nameOf(ReviewKind kind);

// How many numbers describe a shape of this kind; 0 for facets and unknown ones.
std::size_t parameterCount(ReviewKind kind);

enum class ReviewUse : std::uint8_t { kShape, kObstruction, kInsulation };

// Polygons of one or more contours each, the first the outline. Contour c has
// the points from contourEnds[c - 1] on and before contourEnds[c], and so
// polygons have contours. Local, in millimetres.
struct ReviewFacets {
  std::vector<GePoint> points;
  std::vector<std::size_t> contourEnds;
  std::vector<std::size_t> polygonEnds;

  void clear() {
    points.clear();
    contourEnds.clear();
    polygonEnds.clear();
  }
};

// One shape as the file has it.
struct ReviewShape {
  std::uint64_t place = 0;  // its chunk's byte, from 0, or its line, from 1
  bool isLine = false;      // the text form has lines
  ReviewUse use = ReviewUse::kShape;
  std::uint32_t number = 0;  // of the kind, as it stands in the file
  ReviewKind kind = ReviewKind::kUnknown;

  // World, in metres, is x axis[0] + y axis[1] + z axis[2] + origin with local
  // coordinates in millimetres.
  std::array<GeVector, 3> axes;
  GeVector origin;
  Extents box;  // local
  std::array<double, 9> parameters{};
  ReviewFacets facets;

  int transparency = 0;      // in percent
  bool isUncertain = false;  // the word of the transparency has two possible places, or none
  bool axesWereRepaired = false;
};

struct ReviewGroup {
  std::uint64_t place = 0;  // as a shape's
  bool isLine = false;
  std::string name;
  std::uint32_t material = 0;
  int transparency = 0;  // in percent
};

// What is odd about a file but can be passed over.
enum class ReviewOddity : std::uint8_t {
  kGroupEndTooMany,  // an end without a group
  kGroupLeftOpen,    // a group without an end
  kUnknownChunk,
  kNewerBody,       // more in a chunk than is known of it
  kCutOffAtEnd,     // the file ends inside the last chunk, END:
  kBytesBehindEnd,  // something other than zeros, or blanks, behind it
  kOutOfOrder,      // a chunk before MODL, or HEAD or MODL again
};
inline constexpr std::size_t kReviewOddities = 7;

// Takes what a reader finds, in the order of the file.
class ReviewHandler {
 public:
  virtual ~ReviewHandler() = default;
  virtual void beginGroup(const ReviewGroup& group) = 0;
  virtual void endGroup() = 0;
  virtual void shape(ReviewShape& shape) = 0;
  virtual void colour() = 0;
  virtual void odd(ReviewOddity oddity, std::uint64_t place) = 0;

 protected:
  ReviewHandler() = default;
  ReviewHandler(const ReviewHandler&) = default;
  ReviewHandler& operator=(const ReviewHandler&) = default;
};

// What holds for both forms.
namespace ReviewLimits {
inline constexpr std::size_t kDepth = 10000;                     // groups within each other
inline constexpr std::size_t kTextBytes = std::size_t{1} << 16;  // of one name
inline constexpr std::size_t kKeys = 4096;                       // different attributes
}  // namespace ReviewLimits

// Reads a review model from its first byte to its last, in the binary or the text
// form, whichever it is. Obstructions and insulations are handed over like shapes.
// One shape is in memory at a time.
//
// Throws ReviewFault for what is no review model, is cut off, or can't be: a size
// beyond its chunk, an offset that leads backwards, groups nested too deeply.
void readReview(const ReadBytes& bytes, ReviewHandler& handler);

}  // namespace Vesk

#endif
