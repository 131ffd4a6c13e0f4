// SPDX-License-Identifier: MIT
#ifndef VESK_RELB_H
#define VESK_RELB_H

#include <vesk/Geo.h>

namespace Vesk {

// A duct elbow: a rectangle swept about a bend axis by the angle between the two
// vectors, 0..pi. The axis is along their cross product.
//
//   mode 2  ELB a, b, c, e     ends of the bend axis segment, outer points at
//               inner radius   start and end beside a; the radius on line "61"
//   mode 3  e   centre,startVector,endVector,depth,width
//
// Mode 2 throws GeEx::NullDir when the two vectors are collinear.
class Relb : public Geo {
 public:
  static constexpr std::int32_t kTypeCode = 3;

  GePoint centre;        // middle of the bend axis segment
  GeVector startVector;  // from the centre to the middle of the section at the start
  GeVector endVector;    // and at the end; the length is the mean bend radius
  double width = 0.0;    // of the section, along the bend axis
  double depth = 0.0;    // of the section, outer less inner radius
  bool flipped = false;  // the written points start from the other side of the centre

  Relb() = default;

  // From the position vectors of the ends of the bend axis segment (p0, p1) and
  // of the outer points at start and end beside p0 (p2, p3), and the inner
  // radius. Throws GeEx::NullDir when p2 or p3 is at p0.
  Relb(const GeVector& p0, const GeVector& p1, const GeVector& p2, const GeVector& p3,
       double innerRadius);

  std::int32_t typeCode() const override { return kTypeCode; }

  // Mode 2 keeps the points, not the fields, and each point only to its last
  // decimal, so that they are a little out of square. The fields, including
  // `flipped`, are chosen so that write makes the same numbers again. If no elbow
  // does, the points move by as few last decimals as possible, and then stay.
  // Mode 3 does not keep `flipped`.
  //
  // Messages: "line "60" not found", "line "61" not found" (mode 2), "relb: wrong
  // style", the scanner's and that of GeEx::NullDir for an outer point at the
  // first one, all with ", primitive relbow".
  std::int32_t read(Input& in) override;

  std::int32_t write(Output& out) const override;
  void move(const GeVector& v) override;
  void rot(const GeMatrix& m) override;
  void scale(double factor) override;

  // The centre alone when the vectors are collinear or one is null or infinite.
  Extents& addExtents(Extents& box) const override;

  // 2 for half the depth above the mean radius by more than 0.01; 1 for a vector
  // shorter than 1e-7.
  std::int32_t checkSize() const override;
  bool isSolid() const override { return true; }

  // Sweep times mean radius times section; 0.0 when a vector has no length.
  double volume() const override;

  // That of the solid with the start vector's length as the mean bend radius.
  // Throws GeEx::NullDir when a vector is null or both are opposite; a sweep of 0
  // gives a NaN point.
  GePoint& centroid(GePoint& p) const override;

  // Two elbows are equal when their widths, depths, centres, middles and, in
  // either order, ends are. `flipped` is not compared.
  bool equal(const Geo& other, double tolerance) const override;
};

}  // namespace Vesk

#endif
