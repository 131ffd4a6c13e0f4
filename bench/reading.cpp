// SPDX-License-Identifier: MIT
// Reading a plant's file, element by element, beside its rivals in the same run:
//
//   reading [ELEMENTS [ROUNDS]]      by custom 1,000,000 and 3
//   reading --flat ELEMENTS          time and the peak of memory for files of a
//                                    thousandth, ..., all of the elements
//
// The file is in the system's memory: it was written just before.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "Measure.h"
#include "PlantFile.h"
#include "PlantModel.h"
#include "plain/PlainReader.h"
#include "vesk/RecordFile.h"

namespace {

using namespace VeskBench;

// Ends the program if the file does not have so many elements.
void check(const char* reader, std::size_t found, std::size_t count) {
  if (found == count) return;
  std::fprintf(stderr, "%s has read %zu elements of %zu\n", reader, found, count);
  std::exit(1);
}

void readByRecordFile(const std::string& name, std::size_t count) {
  Vesk::RecordFile file(name);
  std::size_t elements = 0;
  while (file.next() == Vesk::RecordFile::Found::kElement) ++elements;
  check("RecordFile", elements, count);
}

void readPlainly(const std::string& name, int mode, std::size_t count) {
  PlainReader reader(name, mode);
  std::size_t elements = 0;
  while (reader.next()) ++elements;
  check("PlainReader", elements, count);
}

void readLines(const std::string& name) {
  std::ifstream file(name);
  for (std::string line; std::getline(file, line);) {
  }
}

void readBytes(const std::string& name) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(name.c_str(), "rb"),
                                                             std::fclose);
  std::vector<char> buffer(std::size_t{1} << 18);
  while (std::fread(buffer.data(), 1, buffer.size(), file.get()) > 0) {
  }
}

void compare(const std::vector<Element>& model, std::size_t count, int rounds) {
  for (const int mode : {3, 2}) {
    const std::string name = writePlant(model, count, mode);
    std::vector<Rival> rivals{
        {"vesk", [&] { readByRecordFile(name, count); }},
        {"plain", [&] { readPlainly(name, mode, count); }},
        {"std::getline alone", [&] { readLines(name); }},
        {"fread alone", [&] { readBytes(name); }},
    };
    runAll(rivals, count, rounds);
    const double bytes =
        static_cast<double>(std::filesystem::file_size(name)) / static_cast<double>(count);
    std::printf("\nmode %d: %zu elements, %.1f bytes an element\n", mode, count, bytes);
    printTable("reading", rivals, bytes);
  }
}

void flat(const std::vector<Element>& model, std::size_t most) {
  std::printf("\n| elements | mode | ns an element | peak memory |\n|---:|---:|---:|---:|\n");
  for (std::size_t count = std::max(most / 1000, model.size()); count <= most; count *= 10) {
    for (const int mode : {3, 2}) {
      const std::string name = writePlant(model, count, mode);
      const double start = processorTime();
      readByRecordFile(name, count);
      const double time = processorTime() - start;
      std::printf("| %zu | %d | %.1f | %ld KiB |\n", count, mode, time / static_cast<double>(count),
                  peakMemory());
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  const bool isFlat = argc > 2 && std::strcmp(argv[1], "--flat") == 0;
  const std::size_t count =
      argc > 1 ? std::strtoull(argv[isFlat ? 2 : 1], nullptr, 10) : std::size_t{1000000};
  const int rounds = argc > 2 && !isFlat ? std::atoi(argv[2]) : 3;
  const WorkFolder folder;
  const std::vector<Element> model = plantModel(kModelSize);
  if (isFlat) {
    flat(model, count);
  } else {
    compare(model, count, rounds);
  }
  return 0;
}
