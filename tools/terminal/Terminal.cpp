// SPDX-License-Identifier: MIT
#include "terminal/Terminal.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <process.h>
#include <sys/stat.h>
#include <windows.h>
// Behind windows.h, which it needs.
#include <shellapi.h>
#else
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace VeskTool {
#ifdef _WIN32
namespace {

HANDLE handleOf(std::FILE* stream) {
  return GetStdHandle(stream == stdout ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
}

std::string utf8Of(const wchar_t* wide) { return nameOf(std::filesystem::path(wide)); }

}  // namespace
#endif

std::vector<std::string> commandLine(int count, char** words) {
#ifdef _WIN32
  static_cast<void>(count);
  static_cast<void>(words);
  int wideCount = 0;
  wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &wideCount);
  std::vector<std::string> result;
  for (int i = 1; i < wideCount; ++i) result.push_back(utf8Of(wide[i]));
  LocalFree(wide);
  return result;
#else
  return {words + (count > 0 ? 1 : 0), words + count};
#endif
}

bool isTerminal(std::FILE* stream) {
#ifdef _WIN32
  // _isatty takes any device for one, NUL too.
  DWORD mode = 0;
  return GetConsoleMode(handleOf(stream), &mode) != 0;
#else
  return isatty(fileno(stream)) != 0;
#endif
}

int terminalWidth(std::FILE* stream) {
  constexpr int kUnknown = 80;
#ifdef _WIN32
  CONSOLE_SCREEN_BUFFER_INFO screen;
  if (GetConsoleScreenBufferInfo(handleOf(stream), &screen) == 0) return kUnknown;
  return screen.srWindow.Right - screen.srWindow.Left + 1;
#else
  winsize size = {};
  if (ioctl(fileno(stream), TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kUnknown;
  return size.ws_col;
#endif
}

bool hasVariable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr && *value != '\0';
}

std::filesystem::path pathOf(std::string_view name) {
  return {std::u8string(name.begin(), name.end())};
}

std::string nameOf(const std::filesystem::path& path) {
  const std::u8string name = path.u8string();
  return {name.begin(), name.end()};
}

std::FILE* openFile(const std::filesystem::path& path, const char* mode) {
  errno = 0;
#ifdef _WIN32
  // The C library of older systems knows no "x".
  int flags = _O_BINARY | _O_NOINHERIT;
  const std::string_view wanted = mode;
  // Only what may be written can be synced.
  const bool both = wanted.find('+') != wanted.npos;
  if (wanted.starts_with('r')) {
    flags |= both ? _O_RDWR : _O_RDONLY;
  } else {
    // Devices, which are written without "x", can't be made.
    flags |= _O_WRONLY | (wanted.find('x') == wanted.npos ? 0 : _O_CREAT | _O_EXCL);
  }
  const int handle = _wopen(path.c_str(), flags, _S_IREAD | _S_IWRITE);
  if (handle < 0) return nullptr;
  return _fdopen(handle, both ? "rb+" : (wanted.starts_with('r') ? "rb" : "wb"));
#else
  return std::fopen(path.c_str(), mode);
#endif
}

bool isDevice(const std::filesystem::path& path) {
#ifdef _WIN32
  const HANDLE handle = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return false;
  const DWORD type = GetFileType(handle);
  CloseHandle(handle);
  return type != FILE_TYPE_DISK;
#else
  std::error_code error;
  return std::filesystem::exists(path, error) && !std::filesystem::is_regular_file(path, error);
#endif
}

bool syncFile(std::FILE* file) {
  errno = 0;
  if (std::fflush(file) != 0) return false;
#ifdef _WIN32
  return _commit(_fileno(file)) == 0;
#else
  // Some file systems can't.
  return fsync(fileno(file)) == 0 || errno == EINVAL || errno == EROFS || errno == ENOTSUP;
#endif
}

std::string errorText(int number) {
  return number == 0 ? "unknown error" : std::generic_category().message(number);
}

bool isClosedPipe(int number) {
#ifdef _WIN32
  return number == EPIPE || number == EINVAL;
#else
  return number == EPIPE;
#endif
}

long processNumber() {
#ifdef _WIN32
  return _getpid();
#else
  return getpid();
#endif
}

}  // namespace VeskTool
