// SPDX-License-Identifier: MIT
#include "view/Browser.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "terminal/Exit.h"
#include "terminal/Terminal.h"

#ifdef _WIN32
#include <windows.h>
// Behind windows.h, which it needs.
#include <shellapi.h>
#else
#include <fcntl.h>
#include <spawn.h>
#include <stdlib.h>
#include <unistd.h>
#endif

namespace VeskTool {

namespace fs = std::filesystem;

#ifdef _WIN32

std::string makePrivateFolder() {
  // The folder for temporary files is the user's own.
  std::error_code error;
  const fs::path base = fs::temp_directory_path(error);
  for (int i = 0; !error && i < 1000; ++i) {
    const fs::path folder =
        base / ("vesk-" + std::to_string(processNumber()) + '-' + std::to_string(i));
    if (fs::create_directory(folder, error)) return nameOf(folder);
  }
  throw Failure(Exit::kOutput, "no temporary folder can be made: " + error.message(),
                "-o names a file of your own");
}

std::string openOnDesktop(const std::string& file) {
  const fs::path path = fs::absolute(pathOf(file));
  // NOLINTNEXTLINE: the result is a number in the form of a handle
  const auto result = reinterpret_cast<INT_PTR>(
      ShellExecuteW(nullptr, L"open", path.c_str(), nullptr, nullptr, SW_SHOWNORMAL));
  return result > 32 ? "" : "no program for HTML files could be started";
}

#else

std::string makePrivateFolder() {
  std::error_code error;
  std::string name = nameOf(fs::temp_directory_path(error) / "vesk-XXXXXX");
  errno = error ? error.value() : 0;
  if (error || mkdtemp(name.data()) == nullptr) {
    throw Failure(Exit::kOutput, "no temporary folder can be made: " + errorText(errno),
                  "-o names a file of your own");
  }
  return name;
}

std::string openOnDesktop(const std::string& file) {
#ifdef __APPLE__
  const std::string opener = "open";
#else
  const std::string opener = "xdg-open";
  // Without a desktop it would look for a browser in the terminal.
  if (!hasVariable("DISPLAY") && !hasVariable("WAYLAND_DISPLAY") && !hasVariable("BROWSER")) {
    return "there is no desktop to open it on";
  }
#endif
  const std::string path = nameOf(fs::absolute(pathOf(file)));
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  std::string words[] = {opener, path};
  char* arguments[] = {words[0].data(), words[1].data(), nullptr};
  pid_t child = 0;
  const int failed = posix_spawnp(&child, opener.c_str(), &actions, nullptr, arguments, environ);
  posix_spawn_file_actions_destroy(&actions);
  return failed == 0 ? "" : opener + " can't be started: " + errorText(failed);
}

#endif

}  // namespace VeskTool
