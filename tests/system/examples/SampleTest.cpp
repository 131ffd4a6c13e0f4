// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <map>
#include <sstream>

#include "examples/HostRun.h"

// The sample is read here by a few lines of its own, so that the host has no say in
// whether it is right.
namespace {

using Vec = std::array<double, 3>;

struct Place {
  std::string key;
  Vec at{};
  std::string bore;
};

struct Part {
  std::string name;
  int line = 0;
  std::vector<Place> places;
};

std::vector<Part> readSample() {
  std::ifstream file(PIPING_SAMPLE);
  std::vector<Part> parts;
  int number = 0;
  bool open = false;
  for (std::string line; std::getline(file, line);) {
    ++number;
    std::istringstream words(line);
    std::string key;
    words >> key;
    if (line[0] != ' ') {
      open = key.rfind("UNITS", 0) != 0 && key.rfind("PIPELINE", 0) != 0 && key != "MATERIALS" &&
             key != "ITEM-CODE";
      if (open) parts.push_back({key, number, {}});
      continue;
    }
    Place place{key, {}, ""};
    const bool isPlace = key == "CO-ORDS" || key.find("-POINT") != std::string::npos;
    if (!open || !isPlace) continue;
    words >> place.at[0] >> place.at[1] >> place.at[2] >> place.bore;
    parts.back().places.push_back(place);
  }
  return parts;
}

double distance(const Vec& a, const Vec& b) {
  return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

bool joins(const Place& place) {
  return place.key == "END-POINT" || place.key.rfind("BRANCH", 0) == 0;
}

// Whether something else ends there: another component with the same bore, or the
// equipment or pipeline that the line is connected to.
bool meets(const std::vector<Part>& parts, std::size_t self, const Place& end) {
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i == self || parts[i].name == "WELD" || parts[i].name == "BOLT") continue;
    const bool connection = parts[i].name.rfind("END-CONNECTION", 0) == 0;
    for (const Place& other : parts[i].places)
      if (distance(end.at, other.at) < 0.001 &&
          (connection || (joins(other) && other.bore == end.bore)))
        return true;
  }
  return false;
}

bool closes(const Part& part) {
  return part.name == "CAP" || part.name == "FLANGE-BLIND" || part.name == "INSTRUMENT";
}

double distanceToPiece(const Vec& p, const Vec& a, const Vec& b) {
  const double length = distance(a, b);
  double along = 0;
  for (std::size_t i = 0; i < 3; ++i) along += (p[i] - a[i]) * (b[i] - a[i]) / length;
  along = std::min(std::max(along, 0.0), length);
  return distance(p, {a[0] + (b[0] - a[0]) * along / length, a[1] + (b[1] - a[1]) * along / length,
                      a[2] + (b[2] - a[2]) * along / length});
}

TEST(Sample, EveryEndMeetsAnother) {
  const std::vector<Part> parts = readSample();
  EXPECT_GE(parts.size(), 100u);
  for (std::size_t i = 0; i < parts.size(); ++i) {
    int open = 0;
    for (const Place& place : parts[i].places)
      if (joins(place) && !meets(parts, i, place)) ++open;
    EXPECT_EQ(open, closes(parts[i]) ? 1 : 0) << parts[i].name << " in line " << parts[i].line;
  }
}

// Supports and the feet of olets stand on a straight pipe; welds where a component ends.
TEST(Sample, WhatStandsOnTheLineStandsOnIt) {
  const std::vector<Part> parts = readSample();
  for (const Part& part : parts) {
    const bool onPipe = part.name == "SUPPORT" || part.name == "OLET";
    if (!onPipe && part.name != "WELD") continue;
    double nearest = 1e9;
    for (const Part& other : parts) {
      if (other.name == "PIPE" && onPipe)
        nearest = std::min(
            nearest, distanceToPiece(part.places[0].at, other.places[0].at, other.places[1].at));
      for (const Place& place : other.places)
        if (!onPipe && joins(place))
          nearest = std::min(nearest, distance(part.places[0].at, place.at));
    }
    EXPECT_LT(nearest, 0.001) << part.name << " in line " << part.line;
  }
}

// Long radius elbows: 1.5 times the nominal size in inches, 38.1 mm an inch.
TEST(Sample, ElbowsHaveTheirTrueRadius) {
  const HostFolder folder;
  runHost(folder, PIPING_PROGRAM, std::string("'") + PIPING_SAMPLE + "' pump");
  std::map<std::string, int> radii;
  for (const std::string& record : recordsOf(folder.read("veskpump.dat"))) {
    if (record[0] != 't') continue;
    const double radius = distance(pointOf(record, 1), {0, 0, 0});
    const std::string diameter = record.substr(record.rfind(',') + 1);
    // Handwheels are tori too.
    if (diameter != "168.3" && diameter != "114.3") continue;
    EXPECT_NEAR(radius, diameter == "168.3" ? 228.6 : 152.4, 0.001) << record;
    ++radii[diameter];
  }
  EXPECT_EQ(radii["168.3"], 4);
  EXPECT_EQ(radii["114.3"], 3);
}

// What stands in the file is proven line by line by the tests of the host; this one
// holds every byte on every machine.
TEST(Sample, GivesTheSameBytesEverywhere) {
  const HostFolder folder;
  runHost(folder, PIPING_PROGRAM, std::string("'") + PIPING_SAMPLE + "' pump");
  std::ifstream file(GOLDEN_PUMP, std::ios::binary);
  const std::string golden((std::istreambuf_iterator<char>(file)),
                           std::istreambuf_iterator<char>());
  ASSERT_NE(golden, "");
  EXPECT_EQ(linesOf(folder.read("veskpump.dat")), linesOf(golden));
}

TEST(Sample, IsDrawnWithoutAWord) {
  const std::vector<Part> parts = readSample();
  const HostFolder folder;
  const HostRun run = runHost(folder, PIPING_PROGRAM, std::string("'") + PIPING_SAMPLE + "' pump");
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_NE(run.out.find("Components: " + std::to_string(parts.size()) + '\n'), std::string::npos)
      << run.out;
  EXPECT_EQ(run.out.find("not drawn"), std::string::npos) << run.out;
  EXPECT_EQ(run.out.find("in part"), std::string::npos) << run.out;
}

}  // namespace
