// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_SUPPORT_TEMPFOLDER_H
#define VESK_TESTS_SUPPORT_TEMPFOLDER_H

#include <filesystem>
#include <string>

namespace VeskTest {

// A new private folder that is the current one while the object lives; then the
// former current folder is restored and the folder is deleted with its content.
class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path former_;
  std::filesystem::path path_;
};

// All bytes of a file, on Windows with "\r\n" as "\n"; "<no file NAME>" if it can't be read.
std::string readFile(const std::filesystem::path& name);

}  // namespace VeskTest

#endif
