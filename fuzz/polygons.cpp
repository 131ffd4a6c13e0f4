// SPDX-License-Identifier: MIT
// Polygons: triangles have valid corners and cover the polygon; what mode 2
// writes reads back.
//
//   1 byte the kind of coordinates, then the corners: on a small grid, 1 byte
//   each, where areas are exact; or any numbers
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "Fuzz.h"
#include "Records.h"
#include "prims/EarClipper.h"
#include "vesk/Pgon.h"

using VeskFuzz::check;

namespace {

using Corner = std::array<long, 2>;

// Twice the area of the triangle, positive if it turns left.
long turn(const Corner& a, const Corner& b, const Corner& c) {
  return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
}

bool between(const Corner& a, const Corner& p, const Corner& b) {
  return std::min(a[0], b[0]) <= p[0] && p[0] <= std::max(a[0], b[0]) &&
         std::min(a[1], b[1]) <= p[1] && p[1] <= std::max(a[1], b[1]);
}

bool touch(const Corner& a, const Corner& b, const Corner& c, const Corner& d) {
  const auto sign = [](long v) { return (v > 0) - (v < 0); };
  const int c1 = sign(turn(a, b, c));
  const int d1 = sign(turn(a, b, d));
  const int a1 = sign(turn(c, d, a));
  const int b1 = sign(turn(c, d, b));
  if (c1 * d1 < 0 && a1 * b1 < 0) return true;
  return (c1 == 0 && between(a, c, b)) || (d1 == 0 && between(a, d, b)) ||
         (a1 == 0 && between(c, a, d)) || (b1 == 0 && between(c, b, d));
}

// Whether no side touches another but at their common corner.
bool isSimple(const std::vector<Corner>& corners) {
  const std::size_t n = corners.size();
  for (std::size_t i = 0; i < n; ++i) {
    const Corner& a = corners[i];
    const Corner& b = corners[(i + 1) % n];
    if (a == b) return false;
    // The next side may not lead back.
    const Corner& c = corners[(i + 2) % n];
    if (turn(a, b, c) == 0 && !(between(a, b, c))) return false;
    for (std::size_t k = i + 2; k < n; ++k) {
      if ((k + 1) % n == i) continue;
      if (touch(a, b, corners[k], corners[(k + 1) % n])) return false;
    }
  }
  return true;
}

void checkCover(const std::vector<Corner>& corners,
                const std::vector<Vesk::EarTriangle>& triangles) {
  long area = 0;
  for (std::size_t i = 1; i + 1 < corners.size(); ++i)
    area += turn(corners[0], corners[i], corners[i + 1]);
  check(triangles.size() == corners.size() - 2, "n - 2 triangles");
  long sum = 0;
  for (const Vesk::EarTriangle& t : triangles) {
    const long each = turn(corners[t[0]], corners[t[1]], corners[t[2]]);
    // On a straight side the last corners may be left over; only three corners
    // are returned as they are.
    check(each != 0 || corners.size() == 3, "no triangle has an area of zero");
    check(each == 0 || (each > 0) == (area > 0), "triangles turn as the polygon does");
    sum += each;
  }
  check(sum == area, "the triangles cover the polygon");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  VeskFuzz::Bytes bytes(data, size);
  const int kind = bytes.below(3);
  std::vector<Corner> corners;
  std::vector<GePoint> points;
  while (!bytes.empty() && points.size() < 64) {
    if (kind == 2) {
      const double x = bytes.number();
      const double y = bytes.number();
      points.emplace_back(x, y, bytes.number());
      continue;
    }
    const int both = bytes.byte();
    corners.push_back({both % 16, both / 16});
    const double x = static_cast<double>(corners.back()[0]);
    const double y = static_cast<double>(corners.back()[1]);
    points.emplace_back(x, y, kind == 0 ? 0 : x - 2 * y);  // a flat or a sloping plane
  }

  const std::vector<Vesk::EarTriangle> triangles = Vesk::clipEars(points);
  for (const Vesk::EarTriangle& t : triangles) {
    for (const std::uint32_t corner : t) check(corner < points.size(), "a corner of the polygon");
    check(t[0] != t[1] && t[1] != t[2] && t[2] != t[0], "three corners");
  }
  check(triangles.size() + 2 <= std::max<std::size_t>(points.size(), 2), "n - 2 triangles at most");
  if (kind != 2 && corners.size() > 2 && isSimple(corners)) checkCover(corners, triangles);

  Vesk::Pgon polygon;
  for (const GePoint& p : points) polygon.addVertex(p);
  std::vector<Vesk::Pgon> pieces;
  check(polygon.triangulate(pieces) == !pieces.empty(), "true if a piece is left");
  check(pieces.size() <= triangles.size() || points.size() == 3, "no piece but the triangles");

  Vesk::ElementHolder holder;
  holder.setElement(polygon);
  for (const std::int32_t mode : {Vesk::kFixedColumns, Vesk::kTokens}) {
    const std::string text = VeskFuzz::writtenText(holder, mode);
    check(text.empty() == (points.size() < 3) || kind == 2, "three corners can be written", text);
    if (kind == 2 && !VeskFuzz::isTame(text)) continue;
    const VeskFuzz::Reading read = VeskFuzz::readAll(text, mode);
    check(read.faults == 0 && read.text == text, "what was written reads back",
          text + "---\n" + read.text + read.report);
  }
  return 0;
}
