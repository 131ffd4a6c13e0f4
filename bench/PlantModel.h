// SPDX-License-Identifier: MIT
#ifndef VESK_BENCH_PLANTMODEL_H
#define VESK_BENCH_PLANTMODEL_H

#include <array>
#include <string>
#include <vector>

namespace VeskBench {

// One call of an export: the points p0, p1 ... of three numbers each, then the
// sizes, in the order of its parameters.
struct Element {
  enum Kind { kCyl, kTor, kCon, kBox, kElb, kRed, kPnt, kSeg, kTri, kQua, kTxt };

  Kind kind = kCyl;
  std::array<std::array<double, 3>, 8> points{};
  std::array<double, 2> sizes{};
  int alignment = 0;
  std::string text;

  const double* point(std::size_t i) const { return points[i].data(); }
};

// `count` elements of a plant, always the same: of a hundred 36 cylinders, 24
// tori, 7 cones, 7 boxes, 4 elbows, 3 reducers, 6 segments, 3 triangles, 4
// quadrangles, 5 texts and a point. Most run along the axes in whole or tenth
// millimetres, as pipes do; an eighth is turned, with all the digits of a double.
std::vector<Element> plantModel(std::size_t count);

// The numbers of these elements in the order of the calls.
std::vector<double> plantNumbers(const std::vector<Element>& elements);

}  // namespace VeskBench

#endif
