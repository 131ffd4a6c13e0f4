// SPDX-License-Identifier: MIT
#include "terminal/Terminal.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <system_error>

#include "terminal/Exit.h"

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
#include <sys/time.h>
#include <unistd.h>
#endif

namespace VeskTool {
namespace {

volatile std::sig_atomic_t interrupted = 0;

// Milliseconds from the signal until the process ends by itself.
constexpr int kPatience = 500;

// A place for the name of a file, which the handler of a signal may read if it is taken.
struct HalfName {
  enum State { kFree, kClaimed, kTaken };

  std::atomic<int> state = kFree;
  std::filesystem::path name;
};

// More than any command has at a time; what is beyond stays when the process ends by itself.
std::array<HalfName, 1024> halfNames;
std::atomic<int> together = 0;
std::atomic<std::size_t> drawnColumns = 0;

#ifdef _WIN32
HANDLE mainThread = nullptr;
UINT codePage = 0;  // of the console, before us

// Runs on a thread of its own.
BOOL WINAPI onInterrupt(DWORD event) {
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) return FALSE;
  interrupted = 1;
  CancelSynchronousIo(mainThread);
  const auto isFree = [](const HalfName& each) { return each.state == HalfName::kFree; };
  do {
    Sleep(kPatience);
  } while (together != 0 || !std::all_of(halfNames.begin(), halfNames.end(), isFree));
  if (codePage != 0) SetConsoleOutputCP(codePage);
  TerminateProcess(GetCurrentProcess(), static_cast<UINT>(Exit::kInterrupted));
  return TRUE;
}

HANDLE handleOf(std::FILE* stream) {
  return GetStdHandle(stream == stdout ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
}

std::string utf8Of(const wchar_t* wide) { return nameOf(std::filesystem::path(wide)); }

// Lets a console understand colours; others stay as they are.
void allowColours(std::FILE* stream) {
  const HANDLE console = handleOf(stream);
  DWORD mode = 0;
  if (GetConsoleMode(console, &mode) != 0) {
    SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
  }
}
#else
extern "C" void onInterrupt(int /*signal*/) {
  if (interrupted != 0) return;
  interrupted = 1;
  // And again, while it must wait.
  constexpr int kMicro = 1000;
  constexpr int kAgain = 20;
  const itimerval timer{{0, kAgain * kMicro}, {0, kPatience * kMicro}};
  setitimer(ITIMER_REAL, &timer, nullptr);
}

// Calls only what a handler of a signal may call.
extern "C" void onPatienceEnded(int /*signal*/) {
  if (together != 0) return;
  // Files before the folders that they are in.
  for (const bool isFolder : {false, true}) {
    for (const HalfName& each : halfNames) {
      if (each.state != HalfName::kTaken) continue;
      static_cast<void>(!(isFolder ? rmdir : unlink)(each.name.c_str()));
    }
  }
  char blanks[256];
  std::memset(blanks, ' ', sizeof blanks);
  const std::size_t columns = std::min(drawnColumns.load(), sizeof blanks - 2);
  blanks[0] = '\r';
  blanks[columns + 1] = '\r';
  if (columns > 0) static_cast<void>(!write(STDERR_FILENO, blanks, columns + 2));
  _exit(static_cast<int>(Exit::kInterrupted));
}

// A standard stream that is closed would be the next file that is opened, and get
// what is meant for the stream. One that can't be used takes its place.
void fillStandardStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(stream, F_GETFD) >= 0) continue;
    static_cast<void>(open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY));
  }
}
#endif

}  // namespace

void prepareProcess() {
#ifdef _WIN32
  const HANDLE process = GetCurrentProcess();
  DuplicateHandle(process, GetCurrentThread(), process, &mainThread, 0, FALSE,
                  DUPLICATE_SAME_ACCESS);
  SetConsoleCtrlHandler(onInterrupt, TRUE);
  codePage = GetConsoleOutputCP();
  if (codePage != 0) {
    SetConsoleOutputCP(CP_UTF8);
    std::atexit([] { SetConsoleOutputCP(codePage); });
  }
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  allowColours(stdout);
  allowColours(stderr);
#else
  fillStandardStreams();
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  // Without SA_RESTART: a read that waits for a terminal or a pipe must end.
  struct sigaction action = {};
  action.sa_handler = onInterrupt;
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
  action.sa_handler = onPatienceEnded;
  sigaction(SIGALRM, &action, nullptr);
#endif
}

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

void checkInterrupt() {
  if (interrupted != 0) throw Interrupted();
}

HalfFile::HalfFile(const std::filesystem::path& path) {
  for (std::size_t i = 0; i < halfNames.size(); ++i) {
    int free = HalfName::kFree;
    if (!halfNames[i].state.compare_exchange_strong(free, HalfName::kClaimed)) continue;
    halfNames[i].name = path;
    halfNames[i].state = HalfName::kTaken;
    slot_ = i;
    return;
  }
}

HalfFile& HalfFile::operator=(HalfFile&& other) noexcept {
  if (this != &other) {
    release();
    slot_ = std::exchange(other.slot_, kNone);
  }
  return *this;
}

void HalfFile::release() noexcept {
  if (slot_ != kNone) halfNames[slot_].state = HalfName::kFree;
  slot_ = kNone;
}

Together::Together() { ++together; }
Together::~Together() { --together; }

void setDrawnColumns(std::size_t columns) { drawnColumns = columns; }

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
