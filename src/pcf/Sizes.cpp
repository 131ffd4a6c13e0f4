// SPDX-License-Identifier: MIT
#include "pcf/Sizes.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace Vesk::Pcf {
namespace {

// clang-format off
constexpr PipeSize kSizes[] = {
    { 0.125,    6,   10.3}, { 0.25,    8,   13.7}, { 0.375,  10,   17.1}, { 0.5,   15,   21.3},
    { 0.75,    20,   26.7}, { 1,      25,   33.4}, { 1.25,   32,   42.2}, { 1.5,   40,   48.3},
    { 2,       50,   60.3}, { 2.5,    65,   73.0}, { 3,      80,   88.9}, { 3.5,   90,  101.6},
    { 4,      100,  114.3}, { 5,     125,  141.3}, { 6,     150,  168.3}, { 8,    200,  219.1},
    {10,      250,  273.0}, {12,     300,  323.8}, {14,     350,  355.6}, {16,    400,  406.4},
    {18,      450,  457.0}, {20,     500,  508.0}, {22,     550,  559.0}, {24,    600,  610.0},
    {26,      650,  660.0}, {28,     700,  711.0}, {30,     750,  762.0}, {32,    800,  813.0},
    {34,      850,  864.0}, {36,     900,  914.0}, {38,     950,  965.0}, {40,   1000, 1016.0},
    {42,     1050, 1067.0}, {44,    1100, 1118.0}, {46,    1150, 1168.0}, {48,   1200, 1219.0},
};

// What EN 10220 has beside these.
constexpr double kEuropean[] = {10.2, 13.5, 17.2, 26.9, 33.7, 42.4, 76.1, 139.7, 323.9};
// clang-format on

}  // namespace

const PipeSize* sizeOfDn(double dn) {
  const auto size = std::find_if(std::begin(kSizes), std::end(kSizes), [dn](const PipeSize& row) {
    return std::fabs(row.dn - dn) <= 0.01;
  });
  return size == std::end(kSizes) ? nullptr : size;
}

const PipeSize* sizeOfNps(double inches, double tolerance) {
  const auto size = std::min_element(
      std::begin(kSizes), std::end(kSizes), [inches](const auto& a, const auto& b) {
        return std::fabs(a.inches - inches) < std::fabs(b.inches - inches);
      });
  return std::fabs(size->inches - inches) <= tolerance ? size : nullptr;
}

double distanceToOutside(double diameter) {
  double nearest = std::numeric_limits<double>::infinity();
  for (const PipeSize& size : kSizes)
    nearest = std::min(nearest, std::fabs(size.outside - diameter));
  for (const double outside : kEuropean) nearest = std::min(nearest, std::fabs(outside - diameter));
  return nearest;
}

}  // namespace Vesk::Pcf
