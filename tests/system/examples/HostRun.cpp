// SPDX-License-Identifier: MIT
#include "examples/HostRun.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>

#ifndef _WIN32
#include <sys/wait.h>
#endif

HostFolder::HostFolder() {
  std::random_device random;
#ifdef _WIN32
  // The paths that CMake hands over have no drive letter: they mean the current drive.
  const std::filesystem::path parent = std::filesystem::current_path();
#else
  const std::filesystem::path parent = std::filesystem::temp_directory_path();
#endif
  do {
    path_ = parent / ("vesk-host-" + std::to_string(random()));
  } while (!std::filesystem::create_directory(path_));
}

HostFolder::~HostFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

void HostFolder::write(const std::string& name, const std::string& bytes) const {
  std::ofstream(path_ / name, std::ios::binary) << bytes;
}

std::string HostFolder::read(const std::string& name) const {
  std::ifstream stream(path_ / name, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
#ifdef _WIN32
  std::erase(text, '\r');
#endif
  return text;
}

HostRun runHost(const HostFolder& folder, const std::string& program, const std::string& arguments,
                const std::string& before) {
#ifdef _WIN32
  // cmd.exe quotes with " alone.
  std::string quoted = arguments;
  std::replace(quoted.begin(), quoted.end(), '\'', '"');
  const std::string command = "cd /d \"" + folder.path().string() + "\" && " + before + " \"" +
                              std::filesystem::path(program).make_preferred().string() + "\" " +
                              quoted + " >stdout.txt 2>stderr.txt";
  const int exitCode = std::system(command.c_str());
#else
  const std::string command = "cd '" + folder.path().string() + "' && { " + before + " '" +
                              program + "' " + arguments + "; } >stdout.txt 2>stderr.txt";
  const int status = std::system(command.c_str());
  const int exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
#endif
  HostRun run;
  run.exitCode = exitCode;
  run.out = folder.read("stdout.txt");
  run.err = folder.read("stderr.txt");
  return run;
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

std::vector<std::string> recordsOf(const std::string& file) {
  std::vector<std::string> records;
  for (const std::string& line : linesOf(file))
    records.push_back(line.size() < 19 ? "short line: " + line : line.substr(19));
  return records;
}

namespace {

std::vector<std::string> split(const std::string& text, const std::string& separators) {
  std::vector<std::string> words(1);
  for (const char c : text) {
    if (separators.find(c) == std::string::npos)
      words.back() += c;
    else
      words.emplace_back();
  }
  return words;
}

bool toNumber(const std::string& word, double& number) {
  const char* end = word.data() + word.size();
  const auto [last, error] = std::from_chars(word.data(), end, number);
  return error == std::errc() && last == end;
}

}  // namespace

bool sameRecord(const std::string& one, const std::string& other) {
  const std::vector<std::string> words = split(one, " ,");
  const std::vector<std::string> others = split(other, " ,");
  if (words.size() != others.size()) return false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    double a = 0;
    double b = 0;
    if (toNumber(words[i], a) && toNumber(others[i], b)) {
      if (!(std::abs(a - b) <= 0.0001)) return false;
    } else if (words[i] != others[i]) {
      return false;
    }
  }
  return true;
}

std::array<double, 3> pointOf(const std::string& record, std::size_t place) {
  const std::vector<std::string> tokens = split(record, ",");
  std::array<double, 3> point{};
  if (place >= tokens.size()) throw std::out_of_range("no token in " + record);
  std::size_t next = 0;
  for (const std::string& word : split(tokens[place], " "))
    if (next < 3 && toNumber(word, point[next])) ++next;
  if (next != 3) throw std::out_of_range("no point in " + record);
  return point;
}
