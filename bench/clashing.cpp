// SPDX-License-Identifier: MIT
// From a record file to its clashes: how long a plant of pipelines takes, how many
// pairs are measured for it, and how much memory.
//
//   clashing [ELEMENTS [ROUNDS]]     by custom 100,000 and 5
//
// Pipelines of 32 pipes and bends walk through a plant whose size grows with their
// number. The rows read the file into memory; find what overlaps besides; and find
// what is nearer than 100. One core does it all.

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>

#include "Measure.h"
#include "clash/ClashSearch.h"
#include "vesk/RecordFile.h"

namespace {

using namespace VeskBench;

constexpr std::size_t kLine = 32;           // elements of a header
constexpr double kRoomForElement = 2.1e10;  // cubic millimetres of the plant
constexpr double kHeight = 30000.0;

class Plant {
 public:
  // A new file of so many elements; its name.
  static std::string write(std::size_t count) {
    const std::string name = "clashing.dat";
    Plant plant(std::sqrt(static_cast<double>(count) * kRoomForElement / kHeight));
    std::ofstream file(name, std::ios::binary);
    for (std::size_t i = 0; i < count; ++i) {
      if (i % kLine == 0) plant.beginLine();
      char head[32];
      std::snprintf(head, sizeof head, "P-%05zu 01%03zu    00", i / kLine % 100000, i % kLine + 1);
      file << head << (i % 2 == 0 ? plant.pipe() : plant.bend()) << '\n';
    }
    return name;
  }

 private:
  explicit Plant(double side) : side_(side) {}

  double random(double from, double to) {
    return from + (to - from) * static_cast<double>(engine_() >> 11U) * 0x1p-53;
  }

  static std::string text(const GeVector& v) {
    char out[96];
    std::snprintf(out, sizeof out, "%.4f %.4f %.4f", v.x, v.y, v.z);
    return out;
  }

  void beginLine() {
    constexpr std::array<double, 6> kDiameters = {60.3, 88.9, 114.3, 168.3, 219.1, 323.9};
    at_ = {random(0, side_), random(0, side_), random(0, kHeight)};
    diameter_ = kDiameters[engine_() % kDiameters.size()];
    along_ = axis();
  }

  GeVector axis() {
    const double sign = engine_() % 2 == 0 ? 1.0 : -1.0;
    switch (engine_() % 5) {
      case 0:
        return {0, 0, sign};
      case 1:
      case 2:
        return {0, sign, 0};
      default:
        return {sign, 0, 0};
    }
  }

  std::string pipe() {
    const GeVector axis = along_ * random(500, 4000);
    const std::string record = "c " + text(at_) + ',' + text(axis) + ',' + size();
    at_ += axis;
    return record;
  }

  std::string bend() {
    GeVector next = axis();
    while (cross(next, along_).length() < 0.5) next = axis();
    const double radius = 1.5 * diameter_;
    const GeVector centre = at_ + next * radius;
    const std::string record = "t " + text(centre) + ',' + text(next * -radius) + ',' +
                               text(along_ * radius) + ',' + size();
    at_ = centre + along_ * radius;
    along_ = next;
    return record;
  }

  std::string size() const {
    char out[16];
    std::snprintf(out, sizeof out, "%.1f", diameter_);
    return out;
  }

  std::mt19937_64 engine_{1};
  double side_;
  GeVector at_;
  GeVector along_;
  double diameter_ = 0.0;
};

VeskTool::ClashModel modelOf(const std::string& name) {
  VeskTool::ClashModel model;
  model.beginFile(name);
  Vesk::RecordFile records(name);
  while (records.next() == Vesk::RecordFile::Found::kElement) model.add(records.element(), "");
  return model;
}

}  // namespace

int main(int argc, char** argv) {
  const std::size_t count = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 100000;
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 5;
  const WorkFolder folder;
  const std::string file = Plant::write(count);

  VeskTool::ClashOptions hard;
  VeskTool::ClashOptions clearance;
  clearance.clearance = 100.0;
  std::size_t clashes[2] = {};
  std::uint64_t pairs[2] = {};
  const auto find = [&](const VeskTool::ClashOptions& options, std::size_t row) {
    const VeskTool::ClashModel model = modelOf(file);
    VeskTool::ClashSearch search(model, options);
    clashes[row] = search.find().size();
    pairs[row] = search.pairs();
  };
  std::vector<Rival> rivals;
  rivals.push_back({"reading", [&] { modelOf(file); }});
  rivals.push_back({"overlaps", [&] { find(hard, 0); }});
  rivals.push_back({"nearer than 100", [&] { find(clearance, 1); }});
  runAll(rivals, count, rounds);

  std::printf("\n%zu elements\n\n| | seconds | pairs | clashes |\n|---|---:|---:|---:|\n", count);
  for (std::size_t i = 0; i < rivals.size(); ++i) {
    std::printf("| %s | %.2f | %llu | %zu |\n", rivals[i].name.c_str(),
                rivals[i].middle() * static_cast<double>(count) / 1e9,
                static_cast<unsigned long long>(i > 0 ? pairs[i - 1] : 0),
                i > 0 ? clashes[i - 1] : 0);
  }
  std::printf("\npeak memory: %ld KiB\n", peakMemory());
}
