// SPDX-License-Identifier: MIT
#ifndef VESK_CYL_H
#define VESK_CYL_H

#include <vesk/Geo.h>

namespace Vesk {

// A straight circular cylinder.
//
//   mode 2  CYL origin, origin + axis, diameter       (seven numbers)
//   mode 3  c   origin,axis,diameter
class Cyl : public Geo {
 public:
  static constexpr std::int32_t kTypeCode = 1;

  GePoint origin;         // centre of the start face
  GeVector axis;          // to the centre of the end face; its length is the height
  double diameter = 0.0;  // of both faces

  Cyl() = default;

  // From the position vectors of the two face centres.
  Cyl(const GeVector& start, const GeVector& end, double faceDiameter);

  std::int32_t typeCode() const override { return kTypeCode; }

  // Mode 2 begins at the current first line whatever its number is. Messages:
  // "cylinder: wrong style" and the scanner's, all with ", primitive cylinder".
  std::int32_t read(Input& in) override;

  std::int32_t write(Output& out) const override;
  void move(const GeVector& v) override;
  void rot(const GeMatrix& m) override;
  void scale(double factor) override;

  // Of both faces; without an axis, of the start's centre alone.
  Extents& addExtents(Extents& box) const override;

  // 2 for a diameter below 0; 1 for a diameter or an axis shorter than 0.01.
  std::int32_t checkSize() const override;
  bool isSolid() const override { return true; }
  double volume() const override;
  GePoint& centroid(GePoint& p) const override;

  // Two cylinders are also equal when they are given from opposite ends.
  bool equal(const Geo& other, double tolerance) const override;
};

}  // namespace Vesk

#endif
