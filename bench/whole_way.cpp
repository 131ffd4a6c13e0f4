// SPDX-License-Identifier: MIT
// The whole way of a plant's elements, from the call to the bytes in the file,
// beside its rivals in the same run:
//
//   whole_way [ELEMENTS [ROUNDS]]      by custom 2,000,000 and 5
//   whole_way --flat ELEMENTS          the peak of memory for a tenth of a
//                                      thousandth, ..., all of the elements
//
// Each round runs every rival once; the table gives the middle of the rounds.
// The files go to a new folder beside the system's temporary files, which is
// removed at the end.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "Calls.h"
#include "Measure.h"
#include "PlantFile.h"
#include "PlantModel.h"
#include "output/NumberText.h"
#include "plain/PlainWriter.h"

namespace {

using namespace VeskBench;

void writePlainly(const std::vector<Element>& model, std::size_t count, const char* name,
                  int mode) {
  PlainWriter writer;
  writer.open(name, mode);
  forEachElement(
      model, count, [&](int n) { writer.setHeader("P-1001", "A1", n); },
      [&](const Element& element) {
        withPrimitive(element, [&](const auto& primitive) { writer.write(primitive); });
      });
}

std::string contentOf(const char* name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    lines.push_back(text.substr(0, text.find('\n') + 1));
    text.remove_prefix(lines.back().size());
  }
  return lines;
}

// The lines of the model as often as `count` elements have them.
void writeLines(const std::vector<std::string_view>& lines, std::size_t repeats, const char* name) {
  std::FILE* const file = std::fopen(name, "wb");
  for (std::size_t i = 0; i < repeats; ++i) {
    for (const std::string_view line : lines) std::fwrite(line.data(), 1, line.size(), file);
  }
  std::fclose(file);
}

// The bytes of both writers for the model, which must be equal.
std::string modelText(const std::vector<Element>& model, int mode) {
  if (mode == 3) {
    vk_openVesk("own");
    writeByExports(model, model.size());
    vk_openVesk(nullptr);
  } else {
    writeByModel(model, model.size(), "veskown.dat");
  }
  writePlainly(model, model.size(), "plain.dat", mode);
  std::string text = contentOf("veskown.dat");
  if (text.empty() || text != contentOf("plain.dat")) {
    std::fprintf(stderr, "The two writers differ in mode %d\n", mode);
    std::exit(1);
  }
  return text;
}

void compare(const std::vector<Element>& model, std::size_t count, int rounds) {
  const std::size_t repeats = count / model.size();
  for (const int mode : {3, 2}) {
    const std::string text = modelText(model, mode);
    const std::vector<std::string_view> lines = linesOf(text);
    std::vector<char> copy(text.size());
    std::vector<Rival> rivals;
    if (mode == 3) {
      rivals.push_back({"vesk, by the exports", [&] {
                          vk_openVesk("own");
                          writeByExports(model, count);
                          vk_openVesk(nullptr);
                        }});
    } else {
      rivals.push_back({"vesk, by the C++ model", [&] { writeByModel(model, count, "own.dat"); }});
    }
    rivals.push_back({"plain", [&] { writePlainly(model, count, "plain.dat", mode); }});
    rivals.push_back({"fwrite of the lines", [&] { writeLines(lines, repeats, "lines.dat"); }});
    rivals.push_back({"memcpy of the bytes", [&] {
                        for (std::size_t i = 0; i < repeats; ++i) {
                          std::memcpy(copy.data(), text.data(), text.size());
                          asm volatile("" : : "r"(copy.data()) : "memory");
                        }
                      }});
    runAll(rivals, count, rounds);
    std::printf("\nmode %d: %zu elements, %.1f bytes an element\n", mode, count,
                static_cast<double>(text.size()) / static_cast<double>(model.size()));
    printTable("whole way", rivals);
  }
}

// What each step of the way adds, mode 3.
void steps(const std::vector<Element>& model, std::size_t count, int rounds) {
  const std::vector<double> numbers = plantNumbers(model);
  std::vector<char> room(Vesk::fixedRoom(6));
  std::vector<Rival> rivals{
      {"the numbers alone",
       [&] {
         for (std::size_t i = 0; i < count / model.size(); ++i) {
           for (const double v : numbers) Vesk::writeFixed(room.data(), v, 6);
         }
       }},
      {"lines, no file open", [&] { writeByExports(model, count); }},
      {"lines into the file's buffer",
       [&] {
         vk_openVesk("null");
         writeByExports(model, count);
         vk_openVesk(nullptr);
       }},
      {"the file",
       [&] {
         vk_openVesk("own");
         writeByExports(model, count);
         vk_openVesk(nullptr);
       }},
  };
  // A link to the device that forgets what is written to it.
  std::filesystem::create_symlink("/dev/null", "vesknull.dat");
  runAll(rivals, count, rounds);
  std::printf("\n%.1f numbers an element\n",
              static_cast<double>(numbers.size()) / static_cast<double>(model.size()));
  printTable("up to", rivals);
}

void flat(const std::vector<Element>& model, std::size_t count) {
  vk_openVesk("null");
  std::size_t done = 0;
  for (std::size_t goal = std::max(count / 1000, model.size()); goal <= count; goal *= 10) {
    const double start = processorTime();
    writeByExports(model, goal - done);
    const double time = processorTime() - start;
    std::printf("%11zu elements: peak memory %ld KiB, %.1f ns an element\n", goal, peakMemory(),
                time / static_cast<double>(goal - done));
    done = goal;
  }
  vk_openVesk(nullptr);
}

}  // namespace

int main(int argc, char** argv) {
  const bool isFlat = argc > 2 && std::strcmp(argv[1], "--flat") == 0;
  const std::size_t count =
      argc > 1 ? std::strtoull(argv[isFlat ? 2 : 1], nullptr, 10) : std::size_t{2000000};
  const int rounds = argc > 2 && !isFlat ? std::atoi(argv[2]) : 5;

  const WorkFolder folder;
  const std::vector<Element> model = plantModel(kModelSize);
  if (isFlat) {
    std::filesystem::create_symlink("/dev/null", "vesknull.dat");
    flat(model, count);
  } else {
    compare(model, count, rounds);
    steps(model, count, rounds);
  }
  return 0;
}
