// SPDX-License-Identifier: MIT
#ifndef VESK_PGON_H
#define VESK_PGON_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <vector>

#include <vesk/ArcEntry.h>
#include <vesk/Geo.h>
#include <vesk/PgonVertex.h>

namespace Vesk {

// A plane face: a closed polygon of at least three vertices.
//
//   mode 2  TRI, QUA     three, four points
//           TRN, QUN     the same, and on line "61" their normals
//   mode 3  g   pt x y z,pt dx dy dz ... ,vn nx ny nz ... ,ar radius i i i ...
//
// In mode 3 every later point is relative to the first one. In mode 2 vertex 0
// decides whether normals are written. A polygon of more than four vertices
// becomes one record for each triangle of its triangulation or, if that yields
// none, a fan of quadrangles from vertex 0 with a closing triangle; each further
// record takes the next element counter, and when the counters are used up the
// rest is not written.
//
// Writing fewer than three vertices throws ExceptionInfo "pgon: less than 3
// vertices" in every mode.
class Pgon : public Geo {
 public:
  static constexpr std::int32_t kTypeCode = 8;

  std::vector<PgonVertex> vertices;  // the boundary, in order
  std::vector<ArcEntry> arcs;        // kept in mode 3 only

  Pgon() = default;

  Pgon(std::initializer_list<GePoint> points);

  // The point and the normal of vertex i; std::out_of_range if there is none.
  GePoint point(std::size_t i) const { return vertices.at(i).point; }
  GeVector normal(std::size_t i) const { return vertices.at(i).normal; }

  void addVertex(const GePoint& point);
  void addVertex(const GePoint& point, const GeVector& normal);

  // Replaces `pieces` by the triangles that ear clipping cuts off, without
  // those of an area of 1e-8 or less. False if none is left.
  bool triangulate(std::vector<Pgon>& pieces) const;

  std::int32_t typeCode() const override { return kTypeCode; }

  // Mode 2 keeps one piece a record, and no arcs; a record with normals gives
  // every vertex one. Mode 3 does not keep which vertices have a normal if not all
  // have: those that were written belong to the first vertices. Messages: "line
  // "60" not found", "line "61" not found" (mode 2); "identifier expected" for a
  // digit where an item should begin, "unknown tag "xy"" (level 2; also for a
  // normal without a vertex, mode 3); "Can't process this kind of style" for a
  // wrong style or keyword; and the scanner's. The suffix is ", primitive
  // triangle" or ", primitive quadrangle", with " with normals" if so, by the
  // keyword (mode 2) or by what was read so far, more than three points being a
  // quadrangle.
  std::int32_t read(Input& in) override;

  std::int32_t write(Output& out) const override;
  void move(const GeVector& v) override;

  // Normals are made unit directions again; a null one throws GeEx::NullDir and
  // nothing is changed.
  void rot(const GeMatrix& m) override;

  void scale(double factor) override;
  Extents& addExtents(Extents& box) const override;
  std::int32_t checkSize() const override { return 0; }

  // 1 for fewer than five vertices, else half their number, however many records
  // the polygon becomes.
  std::int32_t pieceCount() const override;

  bool isSolid() const override { return false; }

  // Weighted by area over the triangulation; (0, 0, 0) when that yields none.
  GePoint& centroid(GePoint& p) const override;

  // Vertex by vertex in order, normals too; arcs are not compared.
  bool equal(const Geo& other, double tolerance) const override;

 private:
  std::vector<std::array<std::uint32_t, 3>> keptTriangles() const;
  void writeFixedColumns(Output& out) const;
  void writeTokens(Output& out) const;
};

}  // namespace Vesk

#endif
