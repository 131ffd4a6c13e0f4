// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_SUPPORT_KINDS_H
#define VESK_TESTS_SUPPORT_KINDS_H

#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <random>
#include <span>

#include "vesk/GeMatrix.h"
#include "vesk/Geo.h"

namespace VeskTest {

// Random numbers that are the same with every standard library.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  double between(double low, double high);
  int below(int n);
  GePoint point();       // in a cube of 200 about the origin
  GeVector direction();  // of unit length
  GeMatrix motion();     // a turn and a shift

 private:
  std::mt19937_64 engine_;
};

// What a test of all kinds needs to know about one of them.
struct Kind {
  const char* name;
  std::int32_t typeCode;
  const char* keyword2;  // of the first line in mode 2
  const char* keyword3;  // in mode 3
  bool solid;
  bool movable;  // whether a translation moves it

  // Whether the centroid is that of the solid that it describes, not a rule of
  // this system's own.
  bool exactCentroid;

  // A usable primitive of this kind anywhere in space. A solid is of the
  // shape for which its volume is exact. The number of straight pieces of a
  // polyline or polygon divides 24.
  std::function<std::unique_ptr<Vesk::Geo>(Random&)> make;

  std::function<std::unique_ptr<Vesk::Geo>(const Vesk::Geo&)> copy;

  // The point of the described shape at these three parameters, each 0..1: the
  // unit cube is mapped onto the whole shape. Written from the meaning of the
  // fields, without the primitive's own operations.
  std::function<GePoint(const Vesk::Geo&, double u, double v, double w)> at;

  friend std::ostream& operator<<(std::ostream& os, const Kind& kind) { return os << kind.name; }
};

// All nine.
std::span<const Kind> kinds();

}  // namespace VeskTest

#endif
