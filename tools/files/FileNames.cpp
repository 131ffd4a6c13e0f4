// SPDX-License-Identifier: MIT
#include "files/FileNames.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <map>
#include <numeric>
#include <set>

#include "terminal/Terminal.h"

namespace VeskTool {

std::vector<std::string> handedOnNames(const std::vector<std::string>& files) {
  std::vector<std::vector<std::string>> paths;  // from the last part on
  for (const std::string& file : files) {
    std::vector<std::string>& parts = paths.emplace_back();
    for (const std::filesystem::path& part : pathOf(file)) parts.push_back(nameOf(part));
    std::reverse(parts.begin(), parts.end());
  }
  const auto tail = [&](std::size_t file, std::size_t length) {
    std::string name;
    for (std::size_t i = 0; i < std::min(length, paths[file].size()); ++i) {
      name = name.empty() ? paths[file][i] : paths[file][i] + '/' + name;
    }
    return name;
  };
  std::vector<std::string> names(files.size());
  std::vector<std::size_t> open(files.size());  // whose names are still to become longer
  std::iota(open.begin(), open.end(), std::size_t{0});
  for (std::size_t length = 1; !open.empty(); ++length) {
    std::map<std::string, std::size_t> first;
    std::set<std::string> taken;
    for (const std::size_t file : open) {
      names[file] = tail(file, length);
      const auto [place, isNew] = first.try_emplace(names[file], file);
      if (!isNew && paths[place->second] != paths[file]) taken.insert(names[file]);
    }
    std::erase_if(open, [&](std::size_t file) {
      return length >= paths[file].size() || !taken.contains(names[file]);
    });
  }
  return names;
}

}  // namespace VeskTool
