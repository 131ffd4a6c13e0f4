// SPDX-License-Identifier: MIT
// What Ctrl-C does to the process; of Terminal.h the part that another process, in which
// the tool's code is a guest, answers otherwise.
#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include "terminal/Exit.h"
#include "terminal/Terminal.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>
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

// Lets a console understand colours; others stay as they are.
void allowColours(DWORD stream) {
  const HANDLE console = GetStdHandle(stream);
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
  constexpr decltype(timeval::tv_usec) kMicro = 1000;
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
  allowColours(STD_OUTPUT_HANDLE);
  allowColours(STD_ERROR_HANDLE);
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

}  // namespace VeskTool
