// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TERMINAL_H
#define VESK_TOOLS_TERMINAL_H

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace VeskTool {

// What differs between systems: terminals, signals, file names, syncing.
//
// File names are UTF-8 inside the program, whatever the system's own form is.

// Prepares the process: a closed pipe and a file that grows too large are errors
// and no signals, Ctrl-C sets a flag and ends a read that waits, the standard
// streams keep their bytes as they are. Call once, on the thread that reads
// standard input.
void prepareProcess();

// The words of the command line without the program's name, in UTF-8.
std::vector<std::string> commandLine(int count, char** words);

// Of standard output and standard error only.
bool isTerminal(std::FILE* stream);

// Columns of the terminal behind the stream; 80 if nobody knows.
int terminalWidth(std::FILE* stream);

// Whether the variable is set and not empty.
bool hasVariable(const char* name);

// Throws Interrupted if Ctrl-C was pressed, or the process told to end, since it
// began. Who does not ask is not waited for: half a second later the process ends
// by itself with 130, without what is half written. (On Windows, which does not
// remove an open file, only if nothing is half written.)
void checkInterrupt();

// A file, or an empty folder, that must not stay if the process ends now.
class HalfFile {
 public:
  HalfFile() = default;
  explicit HalfFile(const std::filesystem::path& path);
  ~HalfFile() { release(); }
  HalfFile(HalfFile&& other) noexcept : slot_(std::exchange(other.slot_, kNone)) {}
  HalfFile& operator=(HalfFile&& other) noexcept;

  // The file stays, or is gone already.
  void release() noexcept;

 private:
  static constexpr std::size_t kNone = ~std::size_t{0};

  std::size_t slot_ = kNone;
};

// While one lives, the process does not end by itself: what belongs together
// appears under its names.
class Together {
 public:
  Together();
  ~Together();
  Together(const Together&) = delete;
  Together& operator=(const Together&) = delete;
};

// Tells how many columns the line of the progress has on the terminal; it is
// wiped out when the process ends by itself.
void setDrawnColumns(std::size_t columns);

// A name as the file system takes it, and back.
std::filesystem::path pathOf(std::string_view name);
std::string nameOf(const std::filesystem::path& path);

// Like std::fopen; the mode "wx" fails if there is such a file, "w" is for devices.
// Null on failure, with errno set.
std::FILE* openFile(const std::filesystem::path& path, const char* mode);

// Whether this is there and no file: a terminal, a pipe, /dev/null, NUL.
bool isDevice(const std::filesystem::path& path);

// Brings what was written to the disk; false with errno set if that fails.
bool syncFile(std::FILE* file);

// The text of an error number; no number gives "unknown error".
std::string errorText(int number);

// Whether a failed write with this errno means that the reader has gone.
bool isClosedPipe(int number);

// A number that no other process on this machine has now.
long processNumber();

}  // namespace VeskTool

#endif
