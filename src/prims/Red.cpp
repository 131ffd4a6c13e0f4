// SPDX-License-Identifier: MIT
#include "vesk/Red.h"

#include "output/Output.h"
#include "output/RecordWords.h"
#include "prims/TagLines.h"
#include "vesk/GeConstants.h"

namespace Vesk {
namespace {

// The two triangulations of the six faces, all seen in the same sense.
constexpr int kTriangles[24][3] = {
    {0, 1, 3}, {0, 3, 2}, {0, 1, 2}, {3, 2, 1},  // first end
    {2, 7, 6}, {2, 3, 7}, {3, 7, 6}, {2, 3, 6},  //
    {2, 6, 4}, {0, 2, 4}, {0, 2, 6}, {0, 6, 4},  //
    {1, 4, 5}, {1, 0, 4}, {5, 0, 4}, {5, 1, 0},  //
    {4, 7, 5}, {4, 6, 7}, {4, 6, 5}, {6, 7, 5},  // second end
    {3, 5, 7}, {3, 1, 5}, {3, 1, 7}, {1, 5, 7},
};

GePoint meanCorner(const Red& red) {
  GeVector sum;
  for (int k = 0; k < 8; ++k) sum += red.corner(k) - GePoint();
  return GePoint(sum / 8.0);
}

// Calls visit(a, b, d, c, volume) for the tetrahedra (a, b, d, c) from the
// triangles to the mean corner c.
template <class Visit>
void forEachTetrahedron(const Red& red, Visit visit) {
  const GePoint c = meanCorner(red);
  for (const auto& triangle : kTriangles) {
    const GePoint a = red.corner(triangle[0]);
    const GePoint b = red.corner(triangle[1]);
    const GePoint d = red.corner(triangle[2]);
    visit(a, b, d, c, triple(b - a, d - a, c - a) / 6.0);
  }
}

}  // namespace

Red::Red(const std::array<GeVector, 8>& corners) : origin(corners[0]) {
  for (std::size_t k = 1; k < 8; ++k) cornerVectors[k - 1] = corners[k] - corners[0];
}

GePoint Red::corner(int k) const {
  if (k < 0 || k > 7) return kUndefinedPoint;
  return k == 0 ? origin : origin + cornerVectors[static_cast<std::size_t>(k - 1)];
}

std::int32_t Red::write(Output& out) const {
  if (out.mode == kFixedColumns) {
    out.beginRecord(Keywords::kRed.fixedColumns, true);
    for (int k = 0; k < 8; ++k) {
      if (k == 4) out.nextLine();
      out.addPoint9(corner(k));
    }
    writeTagLines(out, tags);
  } else if (out.mode == kTokens) {
    out.beginRecord(Keywords::kRed.tokens, true);
    out.addPoint(origin, out.pointDecimals, true);
    for (const GeVector& v : cornerVectors) {
      out.addPoint(v, out.valueDecimals, &v != &cornerVectors.back());
    }
    writeTagTokens(out);
  }
  return static_cast<std::int32_t>(out.recs.size());
}

// The last tag is a token anew after each of its value pairs.
void Red::writeTagTokens(Output& out) const {
  if (tags.empty()) return;
  out.startLine(Keywords::kRedTags);
  for (const TagEntry& tag : tags) {
    const bool last = &tag == &tags.back();
    std::string token = tagToken(tag);
    for (const auto& values : tag.values) {
      appendTagValues(token, values, out);
      if (last) out.addText(token);
    }
    if (!last) out.addText(token, true);
    if (last && tag.values.empty()) out.addText(token);
  }
}

void Red::move(const GeVector& v) { origin += v; }

void Red::rot(const GeMatrix& m) {
  origin = m * origin;
  for (GeVector& v : cornerVectors) v = m * v;
}

void Red::scale(double factor) { rot(GeMatrix::scaling(factor)); }

Extents& Red::addExtents(Extents& box) const {
  for (int k = 0; k < 8; ++k) box.add(corner(k));
  return box;
}

double Red::volume() const {
  double sum = 0.0;
  forEachTetrahedron(*this, [&sum](const GePoint&, const GePoint&, const GePoint&, const GePoint&,
                                   double volume) { sum += volume; });
  return sum / 2.0;
}

GePoint& Red::centroid(GePoint& p) const {
  GeVector moment;
  double sum = 0.0;
  forEachTetrahedron(*this, [&](const GePoint& a, const GePoint& b, const GePoint& d,
                                const GePoint& c, double volume) {
    for (const GePoint& corner : {a, b, d, c}) moment += (corner - GePoint()) * (volume / 4.0);
    sum += volume;
  });
  return p = {moment.x / sum, moment.y / sum, moment.z / sum};
}

bool Red::equal(const Geo& other, double tolerance) const {
  const auto* red = sameKind<Red>(other);
  if (red == nullptr) return false;
  for (int k = 0; k < 8; ++k) {
    if (!(distance(corner(k), red->corner(k)) <= tolerance)) return false;
  }
  return true;
}

}  // namespace Vesk
