// SPDX-License-Identifier: MIT
#include "vesk/RecordWriter.h"

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <utility>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#else
#include <unistd.h>
#endif

#include "api/ElementRecords.h"
#include "api/HeaderRecord.h"
#include "output/Base36.h"
#include "output/Output.h"
#include "output/Utf16.h"
#include "prims/Visit.h"
#include "vesk/RecordFile.h"

namespace Vesk {
namespace {

namespace fs = std::filesystem;

constexpr int kMostParts = 1000;

fs::path pathOf(const std::string& name) {
#ifdef _WIN32
  if (const std::optional<std::u16string> wide = toUtf16(name)) return {*wide};
#endif
  return {name};
}

std::string decimal(int number) {
  char digits[12];
  return {digits, std::to_chars(digits, std::end(digits), number).ptr};
}

// A new file in text mode, null if the system refuses or there is one.
std::FILE* createFile(const fs::path& path) {
  errno = 0;
#ifdef _WIN32
  // The C library of older systems knows no "x".
  const int handle = _wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_TEXT | _O_NOINHERIT,
                            _S_IREAD | _S_IWRITE);
  if (handle < 0) return nullptr;
  std::FILE* file = _fdopen(handle, "wt");
  if (file == nullptr) _close(handle);
  return file;
#else
  return std::fopen(path.c_str(), "wx");
#endif
}

std::FILE* openDevice(const fs::path& path) {
  errno = 0;
#ifdef _WIN32
  return _wfopen(path.c_str(), L"wt");
#else
  return std::fopen(path.c_str(), "w");
#endif
}

// Whether all of the file is on the disk; not every file system can tell.
bool syncFile(std::FILE* file) {
  if (std::fflush(file) != 0) return false;
#ifdef _WIN32
  return _commit(_fileno(file)) == 0;
#else
  return fsync(fileno(file)) == 0 || errno == EINVAL || errno == EROFS || errno == ENOTSUP;
#endif
}

}  // namespace

// The file on its way to its name.
class RecordWriter::Part {
 public:
  Part(const std::string& path, std::int32_t style);
  Part(const Part&) = delete;
  Part& operator=(const Part&) = delete;
  ~Part() { discard(); }

  int write(const HeaderFields& fields, const Geo& geo, const ClosingAttributes& closing);
  void close();

  HeaderRecord header;

 private:
  void create();
  void print(const std::string& line);
  [[noreturn]] void fail(std::error_code error);
  [[noreturn]] void fail(int number);
  void discard();

  std::string name_;
  fs::path target_;
  fs::path path_;  // of the part; empty when the target is written directly
  std::FILE* file_ = nullptr;
  bool closed_ = false;
  std::error_code error_;  // the first thing that the system refused
  Output out_;
};

RecordWriter::Part::Part(const std::string& path, std::int32_t style)
    : name_(path), target_(pathOf(path)) {
  if (style != kTokens && style != kFixedColumns) {
    throw std::invalid_argument("RecordWriter: the style is neither kTokens nor kFixedColumns");
  }
  out_.setStyle(style);
  std::error_code error;
  // A link keeps pointing to the file, which is replaced.
  if (fs::is_symlink(fs::symlink_status(target_, error))) {
    const fs::path real = fs::weakly_canonical(target_, error);
    if (!error) target_ = real;
  }
  const fs::file_status status = fs::status(target_, error);
  if (fs::is_directory(status)) fail(EISDIR);
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    file_ = openDevice(target_);
    if (file_ == nullptr) fail(errno);
    return;
  }
  create();
}

void RecordWriter::Part::create() {
  for (int number = 1; file_ == nullptr; ++number) {
    path_ = target_;
    path_ += ".part-" + decimal(number);
    file_ = createFile(path_);
    if (file_ != nullptr) return;
    const int reason = errno;
    if (reason == EEXIST && number < kMostParts) continue;
    path_.clear();
    fail(reason);
  }
}

int RecordWriter::Part::write(const HeaderFields& fields, const Geo& geo,
                              const ClosingAttributes& closing) {
  if (closed_) throw std::logic_error(name_ + ": the file is closed");
  if (error_) fail(error_);
  if (!isTypeCode(geo.typeCode())) {
    throw std::invalid_argument("RecordWriter: an element of none of the nine kinds");
  }
  out_.counter = 0;
  out_.clear();
  writeElementRecords(fields, geo, closing, out_);
  out_.flushLine();
  for (const std::string& line : out_.recs) print(line);
  return static_cast<int>(out_.recs.size());
}

void RecordWriter::Part::print(const std::string& line) {
  errno = 0;
  if (std::fwrite(line.data(), 1, line.size(), file_) != line.size() ||
      std::fputc('\n', file_) == EOF) {
    fail(errno);
  }
}

void RecordWriter::Part::close() {
  if (closed_) return;
  if (error_) fail(error_);
  errno = 0;
  // Devices and pipes have nothing to sync.
  const bool synced = path_.empty() || syncFile(file_);
  const int number = errno;
  errno = 0;
  const bool closed = std::fclose(std::exchange(file_, nullptr)) == 0;
  if (!synced) fail(number);
  if (!closed) fail(errno);
  if (!path_.empty()) {
    std::error_code error;
    const fs::file_status status = fs::status(target_, error);
    if (fs::exists(status)) fs::permissions(path_, status.permissions(), error);
    fs::rename(path_, target_, error);
    if (error) fail(error);
    path_.clear();
  }
  closed_ = true;
}

void RecordWriter::Part::fail(std::error_code error) {
  error_ = error;
  throw std::system_error(error, name_);
}

void RecordWriter::Part::fail(int number) {
  // Not every C library tells the reason.
  fail(std::error_code(number != 0 ? number : EIO, std::generic_category()));
}

void RecordWriter::Part::discard() {
  if (file_ != nullptr) std::fclose(file_);
  std::error_code error;
  if (!path_.empty()) fs::remove(path_, error);
}

RecordWriter::RecordWriter(const std::string& path, std::int32_t style)
    : part_(std::make_unique<Part>(path, style)) {}

RecordWriter::RecordWriter(RecordWriter&& other) noexcept = default;
RecordWriter& RecordWriter::operator=(RecordWriter&& other) noexcept = default;
RecordWriter::~RecordWriter() = default;

void RecordWriter::setHeader(const std::string& f1, const std::string& f2, int number) {
  if (number < 0 || number > kMaxCounter) {
    throw std::out_of_range("RecordWriter: an element number is 0 to 46655, not " +
                            decimal(number));
  }
  HeaderRecord header;
  header.set(f1.c_str(), f2.c_str(), number);
  part_->header = header;
}

void RecordWriter::setHeader(const HeaderFields& header) {
  static_cast<HeaderFields&>(part_->header) = header;
}

int RecordWriter::write(const Geo& geo) { return part_->write(part_->header, geo, {}); }

int RecordWriter::write(const RecordElement& element) {
  if (element.geo == nullptr) throw std::invalid_argument("RecordWriter: an element without shape");
  return part_->write(element.header, *element.geo, {element.ft, element.tk});
}

void RecordWriter::close() { part_->close(); }

}  // namespace Vesk
