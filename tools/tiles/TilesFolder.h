// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_TILES_TILESFOLDER_H
#define VESK_TOOLS_TILES_TILESFOLDER_H

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "terminal/Streams.h"
#include "terminal/Terminal.h"

namespace VeskTool {

// The names in the folder of a tileset.
inline constexpr const char* kTilesetName = "tileset.json";
inline constexpr const char* kTilesPageName = "index.html";
inline constexpr const char* kContentName = "content";

// A new file in a folder that is not there yet. It is not brought to the disk before others
// are written: with thousands of them that would take most of the time. Every operation
// throws a Failure with Exit::kOutput when the system refuses, Interrupted after Ctrl-C.
class TileFile : public TextSink {
 public:
  explicit TileFile(std::filesystem::path path);

  void write(std::string_view text) override;
  void close();

 private:
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  [[noreturn]] void fail(int number) const;

  std::filesystem::path path_;
  std::unique_ptr<std::FILE, Closer> file_;
};

// A folder that appears whole or not at all: what it will hold is written into a folder
// beside it, and commit gives that its name. Without commit nothing stays. Every
// operation throws a Failure with Exit::kOutput when the system refuses.
class TilesFolder {
 public:
  // An existing folder is refused unless it is empty; one that holds a tileset and
  // nothing else is replaced if `force` is set.
  TilesFolder(const std::string& name, bool force);
  ~TilesFolder();
  TilesFolder(const TilesFolder&) = delete;
  TilesFolder& operator=(const TilesFolder&) = delete;

  // Where to write.
  const std::filesystem::path& path() const { return part_; }

  void commit();

 private:
  void refuse() const;

  std::string name_;
  bool force_;
  std::filesystem::path target_;
  std::filesystem::path part_;  // empty once it has its name
  HalfFile half_;
};

}  // namespace VeskTool

#endif
