// SPDX-License-Identifier: MIT
#include "support/TempFolder.h"

#include <fstream>
#include <iterator>
#include <random>

namespace fs = std::filesystem;

namespace VeskTest {

TempFolder::TempFolder() : former_(fs::current_path()) {
  std::random_device random;
  do {
    path_ = fs::temp_directory_path() / ("vesk-test-" + std::to_string(random()));
  } while (!fs::create_directory(path_));
  fs::current_path(path_);
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  fs::current_path(former_, ignored);
  fs::remove_all(path_, ignored);
}

std::string readFile(const fs::path& name) {
  std::ifstream file(name, std::ios::binary);
  if (!file) return "<no file " + name.string() + ">";
  std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
#ifdef _WIN32
  for (std::size_t i = 0; (i = text.find("\r\n", i)) != std::string::npos;) text.erase(i, 1);
#endif
  return text;
}

}  // namespace VeskTest
