// SPDX-License-Identifier: MIT
#ifndef VESK_GEO_H
#define VESK_GEO_H

#include <cstdint>

#include <vesk/Extents.h>
#include <vesk/GeMatrix.h>
#include <vesk/GePoint.h>
#include <vesk/GeVector.h>

namespace Vesk {

class Input;
class Output;

// A geometric primitive: what every kind can do.
//
// The kinds are plain value classes with public fields; they are copied freely
// and none of them checks its fields. Lengths are in the unit of the record
// file, by custom millimetres; angles are radians.
class Geo {
 public:
  virtual ~Geo() = default;

  // Which kind this is: 1 Cyl, 2 Box, 3 Relb, 4 Torus, 5 Red, 6 Cone, 7 Pline,
  // 8 Pgon, 9 Txt.
  virtual std::int32_t typeCode() const = 0;

  // Fills the primitive from record lines and returns 0. Throws ExceptionInfo;
  // the primitive may then be partly filled.
  virtual std::int32_t read(Input& in);

  // Writes the primitive's records in the assembler's mode; in a mode other
  // than 2 and 3, nothing. Returns the number of lines now in the assembler's
  // `recs`, which do not include the record's last line yet. Throws what the
  // assembler throws.
  virtual std::int32_t write(Output& out) const;

  // Shifts by a vector.
  virtual void move(const GeVector& v);

  // Transforms by a rigid matrix: points with its translation, vectors without.
  virtual void rot(const GeMatrix& m);

  // Multiplies coordinates and sizes by `factor`, about the world origin. A
  // factor of zero or below is not rejected.
  virtual void scale(double factor);

  // Enlarges the box to enclose the primitive exactly; returns the box. A
  // diameter, width or depth below zero counts by its absolute value; a primitive
  // without points leaves the box as it is.
  virtual Extents& addExtents(Extents& box) const = 0;

  // 0 usable; 1 degenerate: a size or axis below the smallest size; 2 invalid:
  // a size below zero, or a tube wider than its bend.
  virtual std::int32_t checkSize() const = 0;

  // 1, except for polylines and polygons of many vertices.
  virtual std::int32_t pieceCount() const;

  virtual bool isSolid() const = 0;

  // 0.0 for a primitive that is not solid.
  virtual double volume() const;

  // Writes the centre of gravity into `p` and returns p.
  virtual GePoint& centroid(GePoint& p) const = 0;

  // Whether `other` is of the same kind and describes the same shape, with no
  // difference above `tolerance`.
  virtual bool equal(const Geo& other, double tolerance) const;

 protected:
  Geo() = default;
  Geo(const Geo&) = default;
  Geo& operator=(const Geo&) = default;

  // `other` as a Primitive if it has this one's type code and is one.
  template <class Primitive>
  const Primitive* sameKind(const Geo& other) const {
    return other.typeCode() == typeCode() ? dynamic_cast<const Primitive*>(&other) : nullptr;
  }

 private:
  void printNotSupported(const char* operation) const;
};

}  // namespace Vesk

#endif
