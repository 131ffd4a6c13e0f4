// SPDX-License-Identifier: MIT
// replay FOLDER_OR_FILE... - gives every file to the harness that it is linked
// with, without libFuzzer. Ends with 0 if there was at least one file.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "Fuzz.h"

namespace fs = std::filesystem;

int main(int count, char** names) {
  std::vector<fs::path> files;
  for (int i = 1; i < count; ++i) {
    if (!fs::is_directory(names[i])) {
      files.push_back(fs::absolute(names[i]));
      continue;
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(fs::absolute(names[i])))
      files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  for (const fs::path& path : files) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
      std::fprintf(stderr, "replay: cannot read %s\n", path.string().c_str());
      return 1;
    }
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    // Shown before, so that the one that ends the program is the last line.
    std::printf("%s\n", path.string().c_str());
    std::fflush(stdout);
    // A block of exactly this size, so that sanitizers see a read beyond it.
    const auto block = std::make_unique<std::uint8_t[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), block.get());
    LLVMFuzzerTestOneInput(block.get(), bytes.size());
  }
  std::printf("%zu files\n", files.size());
  return files.empty() ? 1 : 0;
}
