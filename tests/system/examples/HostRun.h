// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <vector>

// A folder of its own for one test, removed at its end.
class HostFolder {
 public:
  HostFolder();
  ~HostFolder();
  HostFolder(const HostFolder&) = delete;
  HostFolder& operator=(const HostFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  void write(const std::string& name, const std::string& bytes) const;
  // The bytes of a file, with line ends of any system as "\n"; empty if there is none.
  std::string read(const std::string& name) const;
  bool has(const std::string& name) const { return std::filesystem::exists(path_ / name); }

 private:
  std::filesystem::path path_;
};

// What a program left behind.
struct HostRun {
  int exitCode = -1;
  std::string out;
  std::string err;
};

// Runs a shell command in the folder. `program` is quoted here; `arguments` are quoted by
// their writer, with ', and `before` is text of the system's own shell.
HostRun runHost(const HostFolder& folder, const std::string& program, const std::string& arguments,
                const std::string& before = "");

std::vector<std::string> linesOf(const std::string& text);

// The lines of a record file without the 19 characters before the keyword.
std::vector<std::string> recordsOf(const std::string& file);

// Whether two records agree: the words as they are, numbers within 0.0001 (and so
// "-0" is "0").
bool sameRecord(const std::string& one, const std::string& other);

// The three numbers at the given place of a record split at its commas.
std::array<double, 3> pointOf(const std::string& record, std::size_t place);
