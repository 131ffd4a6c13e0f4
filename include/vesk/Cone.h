// SPDX-License-Identifier: MIT
#ifndef VESK_CONE_H
#define VESK_CONE_H

#include <vesk/Geo.h>

namespace Vesk {

// A truncated circular cone, pointed when one diameter is 0. The end faces are
// perpendicular to the axis.
//
//   mode 2  CON origin, origin + axis, diameter1, diameter2       (eight numbers)
//   mode 3  n   origin,axis,diameter1,diameter2
class Cone : public Geo {
 public:
  static constexpr std::int32_t kTypeCode = 6;

  GePoint origin;          // centre of the start face
  GeVector axis;           // to the centre of the end face
  double diameter1 = 0.0;  // of the start face
  double diameter2 = 0.0;  // of the end face

  Cone() = default;

  // From the position vectors of the two face centres.
  Cone(const GeVector& start, const GeVector& end, double startDiameter, double endDiameter);

  std::int32_t typeCode() const override { return kTypeCode; }

  // Messages: "line "60" not found" (mode 2), "Cone: wrong style" and the
  // scanner's, all with ", primitive cone".
  std::int32_t read(Input& in) override;

  std::int32_t write(Output& out) const override;
  void move(const GeVector& v) override;
  void rot(const GeMatrix& m) override;
  void scale(double factor) override;

  // Of both faces; without an axis, of the start's centre alone.
  Extents& addExtents(Extents& box) const override;

  // 2 for a diameter below 0; 1 for both diameters below 0.01 or an axis shorter
  // than 1e-7, a finer limit than the cylinder's.
  std::int32_t checkSize() const override;
  bool isSolid() const override { return true; }
  double volume() const override;

  // A NaN point when both diameters are 0.
  GePoint& centroid(GePoint& p) const override;

  // Two cones are also equal when they are given from opposite ends.
  bool equal(const Geo& other, double tolerance) const override;
};

}  // namespace Vesk

#endif
