// SPDX-License-Identifier: MIT
#ifndef VESK_PLINE_H
#define VESK_PLINE_H

#include <initializer_list>
#include <vector>

#include <vesk/ArcEntry.h>
#include <vesk/Geo.h>

namespace Vesk {

// Everything made of straight pieces: a point (one vertex), a segment (two), an
// open polyline.
//
//   mode 2  PNT vertex                     one vertex
//           PNT vertex size                pointSize at least 1
//           PNT vertex 0 0 0 direction     else, a direction that is not null
//           SEG vertex vertex              one record for each pair of neighbours
//   mode 3  l   pt x y z,pt dx dy dz ... ,ar radius i i i
//
// In mode 3 every later vertex is relative to the first one. Each further SEG
// record takes the next element counter; when the counters are used up the
// remaining pieces are not written. Without vertices mode 2 writes nothing, mode
// 3 a record that holds the arcs only.
class Pline : public Geo {
 public:
  static constexpr std::int32_t kTypeCode = 7;

  std::int32_t pointSize = 0;     // symbol size of a single point
  GePoint pointDirection;         // of a single point; (0, 0, 0) is none
  std::vector<GePoint> vertices;  // in drawing order
  std::vector<ArcEntry> arcs;     // kept in mode 3 only

  Pline() = default;

  Pline(std::initializer_list<GePoint> points) : vertices(points) {}

  // Vertex i; (0, 0, 0) if there is none.
  GePoint vertex(int i) const;

  void addArc(double radius, std::int32_t a, std::int32_t b, std::int32_t c);

  std::int32_t typeCode() const override { return kTypeCode; }

  // Mode 2 keeps one piece a record, and no arcs. Mode 3 keeps neither size nor
  // direction of a point. Messages: "line "60" not found" (mode 2), "Pline: wrong
  // style" (also for a digit where an item should begin), "Pline: unknown
  // identifier "xy"" (mode 3) and the scanner's, with ", primitive point" or
  // ", primitive segment" by the mode 2 keyword, else ", primitive polyline".
  std::int32_t read(Input& in) override;

  std::int32_t write(Output& out) const override;
  void move(const GeVector& v) override;
  void rot(const GeMatrix& m) override;
  void scale(double factor) override;
  Extents& addExtents(Extents& box) const override;
  std::int32_t checkSize() const override { return 0; }

  // The number of SEG records; 1 for a point or nothing.
  std::int32_t pieceCount() const override;

  bool isSolid() const override { return false; }

  // Weighted by length; (0, 0, 0) when there is none.
  GePoint& centroid(GePoint& p) const override;

  // Every coordinate of every vertex, in order; arcs, size and direction of a
  // point are not compared.
  bool equal(const Geo& other, double tolerance) const override;

 private:
  void writePoint(Output& out) const;
  void writeSegments(Output& out) const;
  void writeTokens(Output& out) const;
};

}  // namespace Vesk

#endif
