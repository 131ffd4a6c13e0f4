// SPDX-License-Identifier: MIT
#include "vesk/GeMatrix.h"

#include "vesk/GeConstants.h"
#include "vesk/GeEx.h"

using Vesk::kDirectionTolerance;
using Vesk::kNullVector;

namespace {

GeVector axis(const GeMatrix& m, std::size_t column) { return {m.columns[column].data()}; }

}  // namespace

GeMatrix::GeMatrix(const GeVector& x, const GeVector& y, const GeVector& z, const GeVector& origin)
    : columns{{{x.x, x.y, x.z, 0.0},
               {y.x, y.y, y.z, 0.0},
               {z.x, z.y, z.z, 0.0},
               {origin.x, origin.y, origin.z, 1.0}}} {}

GeMatrix::GeMatrix(const GeVector& main, const GeVector& reference) {
  if (main.isNull(kDirectionTolerance)) throw GeEx::NullDir("GeMatrix");
  const GeVector z = main.normalised(kDirectionTolerance);
  const GeVector r = reference.isNull(kDirectionTolerance)
                         ? z.perpendicular()
                         : reference.normalised(kDirectionTolerance);
  const GeVector zr = cross(z, r);
  const GeVector y =
      zr.isNull(kDirectionTolerance) ? z.perpendicular() : zr.normalised(kDirectionTolerance);
  const GeVector x = cross(y, z).normalised(kDirectionTolerance);
  *this = GeMatrix(x, y, z, kNullVector);
}

GeMatrix GeMatrix::scaling(double factor) {
  GeMatrix m;
  for (std::size_t i = 0; i < 3; ++i) m.columns[i][i] = factor;
  return m;
}

GeVector GeMatrix::translation() const { return axis(*this, 3); }

GePoint Vesk::operator*(const GeMatrix& m, const GePoint& p) {
  const GeVector t = m.translation();
  const GeVector v = GeVector{p.x, p.y, p.z};
  return GePoint{t.x, t.y, t.z} + axis(m, 0) * v.x + axis(m, 1) * v.y + axis(m, 2) * v.z;
}

GeVector Vesk::operator*(const GeMatrix& m, const GeVector& v) {
  return axis(m, 0) * v.x + axis(m, 1) * v.y + axis(m, 2) * v.z;
}
