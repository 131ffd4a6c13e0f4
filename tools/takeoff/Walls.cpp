// SPDX-License-Identifier: MIT
#include "takeoff/Walls.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <fstream>
#include <iterator>
#include <numbers>
#include <optional>

#include "pcf/Sizes.h"
#include "terminal/Exit.h"
#include "terminal/Terminal.h"
#include "text/Numbers.h"
#include "text/Words.h"

namespace VeskTool {
namespace {

using std::numbers::pi;

constexpr double kMillimetre = 1e-3;  // metres

constexpr double kAgree = 1e-3;     // of a diameter
constexpr double kAgreeMin = 0.05;  // mm

constexpr std::size_t kLargestFile = std::size_t{1} << 20;

struct Schedule {
  std::string_view name;
  std::span<const ScheduledWall> walls;
};

// clang-format off
constexpr ScheduledWall k5S[] = {
    {15, 1.65}, {20, 1.65}, {25, 1.65}, {32, 1.65}, {40, 1.65}, {50, 1.65}, {65, 2.11},
    {80, 2.11}, {90, 2.11}, {100, 2.11}, {125, 2.77}, {150, 2.77}, {200, 2.77}, {250, 3.4},
    {300, 3.96}, {350, 3.96}, {400, 4.19}, {450, 4.19}, {500, 4.78}, {550, 4.78}, {600, 5.54},
    {750, 6.35}};
constexpr ScheduledWall k10S[] = {
    {6, 1.24}, {8, 1.65}, {10, 1.65}, {15, 2.11}, {20, 2.11}, {25, 2.77}, {32, 2.77}, {40, 2.77},
    {50, 2.77}, {65, 3.05}, {80, 3.05}, {90, 3.05}, {100, 3.05}, {125, 3.4}, {150, 3.4},
    {200, 3.76}, {250, 4.19}, {300, 4.57}, {350, 4.78}, {400, 4.78}, {450, 4.78}, {500, 5.54},
    {550, 5.54}, {600, 6.35}, {750, 7.92}};
constexpr ScheduledWall k40S[] = {
    {6, 1.73}, {8, 2.24}, {10, 2.31}, {15, 2.77}, {20, 2.87}, {25, 3.38}, {32, 3.56}, {40, 3.68},
    {50, 3.91}, {65, 5.16}, {80, 5.49}, {90, 5.74}, {100, 6.02}, {125, 6.55}, {150, 7.11},
    {200, 8.18}, {250, 9.27}, {300, 9.53}, {350, 9.53}, {400, 9.53}, {450, 9.53}, {500, 9.53},
    {600, 9.53}};
constexpr ScheduledWall k80S[] = {
    {6, 2.41}, {8, 3.02}, {10, 3.2}, {15, 3.73}, {20, 3.91}, {25, 4.55}, {32, 4.85}, {40, 5.08},
    {50, 5.54}, {65, 7.01}, {80, 7.62}, {90, 8.08}, {100, 8.56}, {125, 9.53}, {150, 10.97},
    {200, 12.7}, {250, 12.7}, {300, 12.7}, {350, 12.7}, {400, 12.7}, {450, 12.7}, {500, 12.7},
    {600, 12.7}};
constexpr ScheduledWall k10[] = {
    {350, 6.35}, {400, 6.35}, {450, 6.35}, {500, 6.35}, {550, 6.35}, {600, 6.35}, {650, 7.92},
    {700, 7.92}, {750, 7.92}, {800, 7.92}, {850, 7.92}, {900, 7.92}};
constexpr ScheduledWall k20[] = {
    {200, 6.35}, {250, 6.35}, {300, 6.35}, {350, 7.92}, {400, 7.92}, {450, 7.92}, {500, 9.53},
    {550, 9.53}, {600, 9.53}, {650, 12.7}, {700, 12.7}, {750, 12.7}, {800, 12.7}, {850, 12.7},
    {900, 12.7}};
constexpr ScheduledWall k30[] = {
    {6, 1.45}, {8, 1.85}, {10, 1.85}, {15, 2.41}, {20, 2.41}, {25, 2.9}, {32, 2.97}, {40, 3.18},
    {50, 3.18}, {65, 4.78}, {80, 4.78}, {90, 4.78}, {100, 4.78}, {200, 7.04}, {250, 7.8},
    {300, 8.38}, {350, 9.53}, {400, 9.53}, {450, 11.13}, {500, 12.7}, {550, 12.7}, {600, 14.27},
    {700, 15.88}, {750, 15.88}, {800, 15.88}, {850, 15.88}, {900, 15.88}};
constexpr ScheduledWall kStd[] = {
    {6, 1.73}, {8, 2.24}, {10, 2.31}, {15, 2.77}, {20, 2.87}, {25, 3.38}, {32, 3.56}, {40, 3.68},
    {50, 3.91}, {65, 5.16}, {80, 5.49}, {90, 5.74}, {100, 6.02}, {125, 6.55}, {150, 7.11},
    {200, 8.18}, {250, 9.27}, {300, 9.53}, {350, 9.53}, {400, 9.53}, {450, 9.53}, {500, 9.53},
    {550, 9.53}, {600, 9.53}, {650, 9.53}, {700, 9.53}, {750, 9.53}, {800, 9.53}, {850, 9.53},
    {900, 9.53}, {950, 9.53}, {1000, 9.53}, {1050, 9.53}, {1100, 9.53}, {1150, 9.53},
    {1200, 9.53}};
constexpr ScheduledWall k40[] = {
    {6, 1.73}, {8, 2.24}, {10, 2.31}, {15, 2.77}, {20, 2.87}, {25, 3.38}, {32, 3.56}, {40, 3.68},
    {50, 3.91}, {65, 5.16}, {80, 5.49}, {90, 5.74}, {100, 6.02}, {125, 6.55}, {150, 7.11},
    {200, 8.18}, {250, 9.27}, {300, 10.31}, {350, 11.13}, {400, 12.7}, {450, 14.27}, {500, 15.09},
    {600, 17.48}, {800, 17.48}, {850, 17.48}, {900, 19.05}};
constexpr ScheduledWall k60[] = {
    {200, 10.31}, {250, 12.7}, {300, 14.27}, {350, 15.09}, {400, 16.66}, {450, 19.05},
    {500, 20.62}, {550, 22.23}, {600, 24.61}};
constexpr ScheduledWall kXs[] = {
    {6, 2.41}, {8, 3.02}, {10, 3.2}, {15, 3.73}, {20, 3.91}, {25, 4.55}, {32, 4.85}, {40, 5.08},
    {50, 5.54}, {65, 7.01}, {80, 7.62}, {90, 8.08}, {100, 8.56}, {125, 9.53}, {150, 10.97},
    {200, 12.7}, {250, 12.7}, {300, 12.7}, {350, 12.7}, {400, 12.7}, {450, 12.7}, {500, 12.7},
    {550, 12.7}, {600, 12.7}, {650, 12.7}, {700, 12.7}, {750, 12.7}, {800, 12.7}, {850, 12.7},
    {900, 12.7}, {950, 12.7}, {1000, 12.7}, {1050, 12.7}, {1100, 12.7}, {1150, 12.7},
    {1200, 12.7}};
constexpr ScheduledWall k80[] = {
    {6, 2.41}, {8, 3.02}, {10, 3.2}, {15, 3.73}, {20, 3.91}, {25, 4.55}, {32, 4.85}, {40, 5.08},
    {50, 5.54}, {65, 7.01}, {80, 7.62}, {90, 8.08}, {100, 8.56}, {125, 9.53}, {150, 10.97},
    {200, 12.7}, {250, 15.09}, {300, 17.48}, {350, 19.05}, {400, 21.44}, {450, 23.83},
    {500, 26.19}, {550, 28.58}, {600, 30.96}};
constexpr ScheduledWall k100[] = {
    {200, 15.09}, {250, 18.26}, {300, 21.44}, {350, 23.83}, {400, 26.19}, {450, 29.36},
    {500, 32.54}, {550, 34.93}, {600, 38.89}};
constexpr ScheduledWall k120[] = {
    {100, 11.13}, {125, 12.7}, {150, 14.27}, {200, 18.26}, {250, 21.44}, {300, 25.4},
    {350, 27.79}, {400, 30.96}, {450, 34.93}, {500, 38.1}, {550, 41.28}, {600, 46.02}};
constexpr ScheduledWall k140[] = {
    {200, 20.62}, {250, 25.4}, {300, 28.58}, {350, 31.75}, {400, 36.53}, {450, 39.67},
    {500, 44.45}, {550, 47.63}, {600, 52.37}};
constexpr ScheduledWall k160[] = {
    {15, 4.78}, {20, 5.56}, {25, 6.35}, {32, 6.35}, {40, 7.14}, {50, 8.74}, {65, 9.53},
    {80, 11.13}, {100, 13.49}, {125, 15.88}, {150, 18.26}, {200, 23.01}, {250, 28.58},
    {300, 33.32}, {350, 35.71}, {400, 40.49}, {450, 45.24}, {500, 50.01}, {550, 53.98},
    {600, 59.54}};
constexpr ScheduledWall kXxs[] = {
    {15, 7.47}, {20, 7.82}, {25, 9.09}, {32, 9.7}, {40, 10.15}, {50, 11.07}, {65, 14.02},
    {80, 15.24}, {100, 17.12}, {125, 19.05}, {150, 21.95}, {200, 22.23}, {250, 25.4},
    {300, 25.4}};
constexpr Schedule kSchedules[] = {
    {"5S", k5S},
    {"10S", k10S},
    {"40S", k40S},
    {"80S", k80S},
    {"10", k10},
    {"20", k20},
    {"30", k30},
    {"STD", kStd},
    {"40", k40},
    {"60", k60},
    {"XS", kXs},
    {"80", k80},
    {"100", k100},
    {"120", k120},
    {"140", k140},
    {"160", k160},
    {"XXS", kXxs}};
// clang-format on

double agreement(double diameter) { return std::max(kAgree * diameter, kAgreeMin); }

// "400 x 300" or "114.3": one or two sizes above zero.
std::optional<std::pair<double, double>> readSize(std::string_view text) {
  const std::vector<std::string> words = splitAt(text, 'x');
  double sizes[2] = {0.0, 0.0};
  if (words.size() > 2) return {};
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (!readNumber(words[i], sizes[i]) || !(sizes[i] > 0.0) || !std::isfinite(sizes[i])) return {};
  }
  return std::pair(sizes[0], sizes[1]);
}

std::string wholeOf(const std::string& file) {
  errno = 0;
  std::ifstream stream(pathOf(file), std::ios::binary);
  if (!stream) throw Failure(Exit::kInput, file + ": " + errorText(errno));
  std::string text(kLargestFile + 1, '\0');
  stream.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (stream.bad()) throw Failure(Exit::kInput, file + ": " + errorText(errno));
  text.resize(static_cast<std::size_t>(stream.gcount()));
  if (text.size() > kLargestFile) {
    throw Failure(Exit::kInput, file + ": a table of walls of more than 1 MB");
  }
  return text;
}

double ringOf(double diameter, double wall) { return pi * (diameter - wall) * wall; }
double discOf(double diameter) { return pi / 4.0 * diameter * diameter; }

double frustumOf(double d1, double d2, double length) {
  return pi / 12.0 * (d1 * d1 + d1 * d2 + d2 * d2) * length;
}

bool isCone(const Measures& measures) { return measures.size.kind == Kind::kCone; }

}  // namespace

std::vector<std::string> scheduleNames() {
  std::vector<std::string> names;
  for (const Schedule& schedule : kSchedules) names.emplace_back(schedule.name);
  return names;
}

std::span<const ScheduledWall> wallsOfSchedule(std::string_view name) {
  for (const Schedule& schedule : kSchedules) {
    if (schedule.name == name) return schedule.walls;
  }
  return {};
}

Walls Walls::ofSchedule(const std::string& name) {
  Walls walls;
  walls.isGiven_ = true;
  for (const ScheduledWall& each : wallsOfSchedule(name)) {
    walls.round_[Vesk::Pcf::sizeOfDn(each.dn)->outside] = each.wall;
  }
  return walls;
}

Walls Walls::ofFile(const std::string& file) {
  Walls walls;
  walls.isGiven_ = true;
  std::size_t number = 0;
  for (const std::string& line : splitAt(wholeOf(file), '\n')) {
    ++number;
    const std::string text = line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
    const bool isHeading = number == 1 && text.find_first_of("0123456789") != 0;
    if (text.empty() || isHeading) continue;
    const std::vector<std::string> cells = splitAt(text, ',');
    const auto size = cells.size() == 2 ? readSize(cells[0]) : std::nullopt;
    double wall = 0.0;
    // Of a round size the other side is 0.
    if (!size || !readNumber(cells[1], wall) || !(wall > 0.0) ||
        !(2.0 * wall < (size->second > 0.0 ? std::min(size->first, size->second) : size->first))) {
      throw Failure(Exit::kInput, file + ':' + std::to_string(number) + ": not a size and a wall",
                    "a line is 114.3,6.02 or, for a duct, 400 x 300,1; millimetres");
    }
    if (size->second > 0.0) {
      walls.ducts_[{std::max(size->first, size->second), std::min(size->first, size->second)}] =
          wall;
    } else {
      walls.round_[size->first] = wall;
    }
  }
  return walls;
}

double Walls::ofDiameter(double millimetres) const {
  const double error = agreement(millimetres);
  double wall = 0.0;
  double nearest = error;
  for (auto each = round_.lower_bound(millimetres - error);
       each != round_.end() && each->first <= millimetres + error; ++each) {
    const double apart = std::fabs(each->first - millimetres);
    if (apart > nearest) continue;
    nearest = apart;
    wall = each->second;
  }
  return wall;
}

double Walls::ofSection(double width, double depth) const {
  const double larger = std::max(width, depth);
  const double smaller = std::min(width, depth);
  const double error = agreement(larger);
  for (auto each = ducts_.lower_bound({larger - error, 0.0});
       each != ducts_.end() && each->first.first <= larger + error; ++each) {
    if (std::fabs(each->first.second - smaller) <= agreement(smaller)) return each->second;
  }
  return 0.0;
}

std::pair<double, double> Walls::of(const Measures& measures) const {
  std::pair<double, double> walls;
  switch (measures.section) {
    case Section::kNone:
      break;
    case Section::kRound:
      walls.first = ofDiameter(measures.diameter1 / kMillimetre);
      walls.second = isCone(measures) ? ofDiameter(measures.diameter2 / kMillimetre) : walls.first;
      break;
    case Section::kDuct:
      walls.first = ofSection(measures.width / kMillimetre, measures.depth / kMillimetre);
      walls.second = walls.first;
      break;
  }
  return walls.first > 0.0 && walls.second > 0.0 ? walls : std::pair(0.0, 0.0);
}

Hollow hollowOf(const Measures& measures, std::pair<double, double> walls) {
  Hollow hollow;
  if (walls.first <= 0.0) return hollow;
  const double t1 = walls.first * kMillimetre;
  const double t2 = walls.second * kMillimetre;
  const double length = measures.length;
  if (measures.section == Section::kDuct) {
    const double inside = (measures.width - 2.0 * t1) * (measures.depth - 2.0 * t1);
    return {(measures.width * measures.depth - inside) * length, inside * length};
  }
  if (isCone(measures)) {
    hollow.content =
        frustumOf(measures.diameter1 - 2.0 * t1, measures.diameter2 - 2.0 * t2, length);
    hollow.steel = measures.volume - hollow.content;
    return hollow;
  }
  return {ringOf(measures.diameter1, t1) * length, discOf(measures.diameter1 - 2.0 * t1) * length};
}

Insulation insulationOf(const Measures& measures, double thickness) {
  const double t = thickness * kMillimetre;
  const double length = measures.length;
  switch (measures.section) {
    case Section::kNone:
      break;
    case Section::kRound: {
      const double d1 = measures.diameter1 + 2.0 * t;
      const double d2 = measures.diameter2 + 2.0 * t;
      if (!isCone(measures)) return {ringOf(d1, t) * length, pi * d1 * length};
      return {frustumOf(d1, d2, length) - measures.volume,
              pi * (d1 + d2) / 2.0 * std::hypot(length, (d1 - d2) / 2.0)};
    }
    case Section::kDuct: {
      const double width = measures.width + 2.0 * t;
      const double depth = measures.depth + 2.0 * t;
      return {(width * depth - measures.width * measures.depth) * length,
              2.0 * (width + depth) * length};
    }
  }
  return {};
}

}  // namespace VeskTool
