// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TAKEOFF_WALLS_H
#define VESK_TOOLS_TAKEOFF_WALLS_H

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "takeoff/Measures.h"

namespace VeskTool {

// A wall of ASME B36.10M or, with an S behind the number, B36.19M.
struct ScheduledWall {
  double dn;    // nominal size
  double wall;  // millimetres
};

// The names of all schedules: "5S", "10S", "STD", "40" ...
std::vector<std::string> scheduleNames();

// The walls of a schedule, small to large; empty for a name that is none.
std::span<const ScheduledWall> wallsOfSchedule(std::string_view name);

// The walls of a take-off: those of a schedule, or of a table of one's own.
class Walls {
 public:
  // No walls: everything is solid.
  Walls() = default;

  // `name` is one of scheduleNames().
  static Walls ofSchedule(const std::string& name);

  // A CSV file: a line `diameter,wall` or `width x depth,wall` for each size, in
  // millimetres; a first line that begins with a letter names the columns. Throws a
  // Failure with Exit::kInput for what can't be read or is no wall of that size.
  static Walls ofFile(const std::string& file);

  bool isEmpty() const { return !isGiven_; }

  // The wall in millimetres; 0 if the table has none for this size. Diameters agree
  // within a thousandth, and 0.05 mm at the least: 273.1 is 273, 33.7 is not 33.4.
  double ofDiameter(double millimetres) const;
  double ofSection(double width, double depth) const;

  // At either end of what is round, or all along a duct; none where one is missing.
  std::pair<double, double> of(const Measures& measures) const;

 private:
  bool isGiven_ = false;
  std::map<double, double> round_;                     // by diameter
  std::map<std::pair<double, double>, double> ducts_;  // by larger and smaller side
};

// The steel of a body and what it holds, cubic metres. The walls are in millimetres.
struct Hollow {
  double steel = 0.0;
  double content = 0.0;
};
Hollow hollowOf(const Measures& measures, std::pair<double, double> walls);

// What insulation of this thickness (millimetres) round a body comes to.
struct Insulation {
  double volume = 0.0;   // m3
  double surface = 0.0;  // m2, outside
};
Insulation insulationOf(const Measures& measures, double thickness);

}  // namespace VeskTool

#endif
