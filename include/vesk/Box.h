// SPDX-License-Identifier: MIT
#ifndef VESK_BOX_H
#define VESK_BOX_H

#include <array>
#include <vector>

#include <vesk/Geo.h>
#include <vesk/TagEntry.h>

namespace Vesk {

// A parallelepiped.
//
//   mode 2  BOX origin, origin + edge1, origin + edge2, origin + edge3
//           then the marks; see writeTagLines
//   mode 3  b   edge1,origin,edge2,edge3
//           be  ed name v v ...,ed name      only if there are marks
//
// In mode 3 the first edge comes before the corner.
class Box : public Geo {
 public:
  static constexpr std::int32_t kTypeCode = 2;

  GePoint origin;  // the corner where the three edges start
  GeVector edge1;  // the edges need not be perpendicular
  GeVector edge2;
  GeVector edge3;
  std::vector<TagEntry> edges;  // named edge marks

  Box() = default;

  // From the position vectors of a corner and of its three neighbours.
  Box(const GeVector& corner, const GeVector& end1, const GeVector& end2, const GeVector& end3);

  std::array<GePoint, 8> corners() const;

  std::int32_t typeCode() const override { return kTypeCode; }

  // Messages: "line "60" not found", "bad line "63"", "bad line "64"" (mode 2),
  // "unknown tag xy" (mode 3, level 2), "box: wrong style" and the scanner's, all
  // with ", primitive box". See readTagLines for what marks can't keep.
  std::int32_t read(Input& in) override;

  std::int32_t write(Output& out) const override;
  void move(const GeVector& v) override;
  void rot(const GeMatrix& m) override;
  void scale(double factor) override;
  Extents& addExtents(Extents& box) const override;
  std::int32_t checkSize() const override { return 0; }
  bool isSolid() const override { return true; }

  // The product of the three edge lengths: an oblique box counts as the
  // right-angled one with the same edges.
  double volume() const override;

  GePoint& centroid(GePoint& p) const override;

  // Two boxes are equal when their corners coincide, whichever corner each is
  // given from. Edge marks are not compared.
  bool equal(const Geo& other, double tolerance) const override;
};

}  // namespace Vesk

#endif
