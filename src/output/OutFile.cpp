// SPDX-License-Identifier: MIT
#include "output/OutFile.h"

#include <cerrno>
#include <cstddef>
#include <new>
#include <utility>

#include "api/ElementHolder.h"
#include "output/TextFile.h"
#include "vesk/ExceptionInfo.h"

namespace Vesk {
namespace {

constexpr std::size_t kFileBufferSize = std::size_t{1} << 18;

// False if the system refused a part. The file belongs to one thread, so that
// its lock would guard nothing.
bool printLine(const std::string& line, std::FILE* file) {
#if defined(__linux__)
  const std::size_t printed = fwrite_unlocked(line.data(), 1, line.size(), file);
  const int end = putc_unlocked('\n', file);
#else
  const std::size_t printed = std::fwrite(line.data(), 1, line.size(), file);
  const int end = std::fputc('\n', file);
#endif
  return printed == line.size() && end != EOF;
}

}  // namespace

Recs& OutFile::records() { return output_.recs; }

int OutFile::setRecords(const Recs& lines) {
  output_.counter = 0;
  if (&lines != &output_.recs) output_.recs = lines;
  return static_cast<int>(output_.recs.size());
}

bool OutFile::open(const char* name, int mode) { return open(name, mode, false); }

bool OutFile::close() {
  if (file_ == nullptr) return !error_;
  const int before = errno;
  errno = 0;
  if (std::fclose(file_.release()) != 0) keepError(errno);
  buffer_.reset();
  errno = error_ ? error_.value() : before;
  return !error_;
}

OutFile::~OutFile() { OutFile::close(); }

bool OutFile::open(const char* name, int mode, bool append) {
  close();
  error_.clear();
  if (name == nullptr) {
    keepError(EINVAL);
    return false;
  }
  std::string copy = name;
  file_.reset(openTextFile(name, append));
  if (file_ == nullptr) {
    keepError(errno);
    return false;
  }
  // Without memory for it the C library's own buffer serves.
  buffer_.reset(new (std::nothrow) char[kFileBufferSize]);
  if (buffer_ != nullptr) std::setvbuf(file_.get(), buffer_.get(), _IOFBF, kFileBufferSize);
  name_ = std::move(copy);
  status_ = 0;
  mode_ = mode;
  output_.setStyle(mode);
  return true;
}

int OutFile::writeElement(const ElementHolder& holder) {
  if (!holder.isValid()) return 0;
  output_.counter = 0;
  output_.clear();
  try {
    holder.writeRecords(output_);
    output_.flushLine();
  } catch (const ExceptionInfo&) {
    // The element is cut short in the file.
  }
  if (file_ == nullptr) return 0;
  print();
  return static_cast<int>(output_.recs.size());
}

void OutFile::print() {
  for (const std::string& line : output_.recs) {
    if (!printLine(line, file_.get())) keepError(errno);
  }
}

void OutFile::keepError(int number) {
  if (error_) return;
  // Not every C library tells the reason.
  error_.assign(number != 0 ? number : EIO, std::generic_category());
}

}  // namespace Vesk
