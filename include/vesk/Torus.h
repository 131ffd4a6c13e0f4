// SPDX-License-Identifier: MIT
#ifndef VESK_TORUS_H
#define VESK_TORUS_H

#include <vesk/Geo.h>

namespace Vesk {

// A bend, a piece of pipe along an arc: a segment of a torus. It turns from the
// start to the end vector by the angle between them, 0..pi. The vectors need not
// be equally long; where one radius is needed it is the mean of their lengths.
//
//   mode 2  TOR centre, start point, end point, bend radius, diameter
//   mode 3  t   centre,startVector,endVector,diameter
//
// Mode 2 writes the stored bend radius if it is above 0.0, else the mean. A
// negative scale makes the -1.0 that stands for none positive.
class Torus : public Geo {
 public:
  static constexpr std::int32_t kTypeCode = 4;

  GePoint centre;            // the point about which the tube bends
  GeVector startVector;      // from the centre to the start of the tube's centre line
  GeVector endVector;        // and to its end
  double diameter = 0.0;     // of the tube
  double bendRadius = -1.0;  // of the centre line; not given unless above 0.0

  Torus() = default;

  // From the position vectors of the bend's centre and of the centre line's
  // ends; the bend radius is not given.
  Torus(const GeVector& bendCentre, const GeVector& start, const GeVector& end,
        double tubeDiameter);

  std::int32_t typeCode() const override { return kTypeCode; }

  // Mode 3 does not keep the bend radius: it comes back as not given, -1.0.
  // Messages: "line "60" not found" (mode 2) and the scanner's with ", primitive
  // torus"; "torus: wrong style" stands alone.
  std::int32_t read(Input& in) override;

  std::int32_t write(Output& out) const override;
  void move(const GeVector& v) override;
  void rot(const GeMatrix& m) override;
  void scale(double factor) override;

  // The ends' circles and the tube where the arc reaches furthest along an axis;
  // the centre alone when the vectors are collinear or one is null or infinite.
  Extents& addExtents(Extents& box) const override;

  // 2 for a tube wider than its bend (half the diameter above the mean radius by
  // more than 0.01); 1 for a vector shorter than 1e-7.
  std::int32_t checkSize() const override;
  bool isSolid() const override { return true; }

  // Sweep times mean radius times section; 0.0 when a vector has no length. A
  // stored bend radius is not used.
  double volume() const override;

  // On the bisector, with R the length of the start vector alone and h half the
  // diameter, at
  //
  //     sin(sweep / 2) / (sweep / 2) * (R^2 + h^2 / 8) / R
  //
  // from the centre. The 8 is this system's own; the solid's centre of gravity
  // has 4 there. Throws GeEx::NullDir when a vector is null or both are opposite;
  // a sweep of 0 gives a NaN point.
  GePoint& centroid(GePoint& p) const override;

  // Two tori are equal when their diameters, centres, middles and, in either
  // order, ends are. Bend radii are not compared.
  bool equal(const Geo& other, double tolerance) const override;
};

}  // namespace Vesk

#endif
