// SPDX-License-Identifier: MIT
#ifndef VESK_RED_H
#define VESK_RED_H

#include <array>
#include <vector>

#include <vesk/Geo.h>
#include <vesk/TagEntry.h>

namespace Vesk {

// A reducer: a solid with eight corners. Corners 0 to 3 form the first end, and
// 0, 1, 3, 2 run around its face; corner k + 4 lies opposite corner k. Its faces
// need not be plane.
//
//   mode 2  RED corners 0 to 3     line "60"
//               corners 4 to 7     line "61"
//           then the tags; see writeTagLines
//   mode 3  r   corner 0,vector 1, ... ,vector 7
//           re  ed name v v ...    only if there are tags
//
// In mode 3 a last tag with n value pairs becomes n tokens without a comma, each
// with one pair more: "ed a 1 2ed a 1 2 3 4".
class Red : public Geo {
 public:
  static constexpr std::int32_t kTypeCode = 5;

  GePoint origin;                         // corner 0
  std::array<GeVector, 7> cornerVectors;  // from corner 0 to corner 1, 2 ... 7
  std::vector<TagEntry> tags;

  Red() = default;

  // From the position vectors of the eight corners.
  explicit Red(const std::array<GeVector, 8>& corners);

  // Corner k; the undefined point if k is not 0 to 7.
  GePoint corner(int k) const;

  std::int32_t typeCode() const override { return kTypeCode; }

  // Messages: "line "60" not found", "line "61" not found", "bad line "63"",
  // "bad line "64"" (mode 2), "unknown tag" (mode 3, level 2), "reducer: wrong
  // style" and the scanner's, all with ", primitive reducer". The repeated last
  // tag of mode 3 comes back as one tag. See readTagLines for what tags can't keep.
  std::int32_t read(Input& in) override;

  std::int32_t write(Output& out) const override;
  void move(const GeVector& v) override;
  void rot(const GeMatrix& m) override;
  void scale(double factor) override;
  Extents& addExtents(Extents& box) const override;
  std::int32_t checkSize() const override { return 0; }
  bool isSolid() const override { return true; }

  // The sum of the pyramids from the mean of the corners to the faces; a face
  // that is not plane counts as the mean of its two triangulations. Corners in
  // the wrong order make it smaller or negative.
  double volume() const override;

  // Of the same pyramids. A NaN point when the volume is 0.
  GePoint& centroid(GePoint& p) const override;

  // Corner by corner; tags are not compared.
  bool equal(const Geo& other, double tolerance) const override;

 private:
  void writeTagTokens(Output& out) const;
};

}  // namespace Vesk

#endif
