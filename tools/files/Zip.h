// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_FILES_ZIP_H
#define VESK_TOOLS_FILES_ZIP_H

#include <cstdint>
#include <string>
#include <string_view>

namespace VeskTool {

// Makes a zip archive in memory. Files are stored as they are; all have the date
// 1980-01-01, so that the same content gives the same bytes.
class Zip {
 public:
  static constexpr std::size_t kMostFiles = 65535;

  // Adds a file; the name is UTF-8 with / between folders. At most kMostFiles, and
  // 4 GB in all.
  void add(std::string_view name, std::string_view content);

  std::size_t files() const { return files_; }

  // The whole archive; nothing can be added any more.
  std::string finish();

 private:
  std::string archive_;
  std::string directory_;
  std::size_t files_ = 0;
};

}  // namespace VeskTool

#endif
