// SPDX-License-Identifier: MIT
#include "tiles/TilesFolder.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include "terminal/Exit.h"
#include "terminal/SystemFailure.h"

namespace VeskTool {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail(const std::string& name, const std::error_code& error) {
  throw Failure(Exit::kOutput, name + ": " + error.message());
}

bool holdsOnlyATileset(const fs::path& folder) {
  std::error_code error;
  for (const fs::directory_entry& each : fs::directory_iterator(folder, error)) {
    const std::string name = nameOf(each.path().filename());
    if (name != kTilesetName && name != kTilesPageName && name != kContentName) return false;
  }
  return !error && fs::is_regular_file(folder / kTilesetName, error);
}

}  // namespace

TileFile::TileFile(fs::path path) : path_(std::move(path)) {
  checkInterrupt();
  errno = 0;
  file_.reset(openFile(path_, "wbx"));
  if (!file_) fail(errno);
}

void TileFile::write(std::string_view text) {
  checkInterrupt();
  errno = 0;
  if (std::fwrite(text.data(), 1, text.size(), file_.get()) != text.size()) fail(errno);
}

void TileFile::close() {
  errno = 0;
  if (std::fclose(file_.release()) != 0) fail(errno);
}

void TileFile::fail(int number) const {
  const std::string name = nameOf(path_);
  throw SystemFailure(Exit::kOutput, name + ": " + errorText(number), number, name);
}

TilesFolder::TilesFolder(const std::string& name, bool force) : name_(name), force_(force) {
  while (name_.size() > 1 && (name_.back() == '/' || name_.back() == '\\')) name_.pop_back();
  target_ = pathOf(name_);
  refuse();
  part_ = target_;
  part_ += ".part-" + std::to_string(processNumber());
  half_ = HalfFile(part_);
  std::error_code error;
  if (fs::create_directory(part_, error)) fs::create_directory(part_ / kContentName, error);
  if (!error) return;
  std::error_code ignored;
  fs::remove(part_, ignored);
  fail(name_, error);
}

// Whatever is not a tileset is somebody's.
void TilesFolder::refuse() const {
  std::error_code error;
  const fs::file_status status = fs::status(target_, error);
  if (!fs::exists(status)) return;
  if (!fs::is_directory(status)) {
    throw Failure(Exit::kOutput, name_ + ": not a folder", "a tileset is a folder of files");
  }
  if (fs::is_empty(target_, error)) return;
  if (!holdsOnlyATileset(target_)) {
    throw Failure(Exit::kOutput, name_ + ": the folder holds other files",
                  "name a new folder for the tileset");
  }
  if (!force_) {
    throw Failure(Exit::kOutput, name_ + ": there is a tileset already", "-f replaces it");
  }
}

TilesFolder::~TilesFolder() {
  if (part_.empty()) return;
  const Together together;
  std::error_code error;
  fs::remove_all(part_, error);
}

void TilesFolder::commit() {
  checkInterrupt();
  refuse();
  const Together together;
  std::error_code error;
  fs::path old;
  if (fs::exists(target_, error)) {
    old = target_;
    old += ".old-" + std::to_string(processNumber());
    fs::rename(target_, old, error);
    if (error) fail(name_, error);
  }
  fs::rename(part_, target_, error);
  if (error) {
    std::error_code ignored;
    if (!old.empty()) fs::rename(old, target_, ignored);
    fail(name_, error);
  }
  part_.clear();
  half_.release();
  if (!old.empty()) fs::remove_all(old, error);
}

}  // namespace VeskTool
