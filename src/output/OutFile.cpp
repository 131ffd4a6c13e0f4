#include "output/OutFile.h"

#include <cstddef>
#include <new>
#include <utility>

#include "api/ElementHolder.h"
#include "ge/ExceptionInfo.h"
#include "output/TextFile.h"

namespace Vesk {
namespace {

constexpr std::size_t kFileBufferSize = std::size_t{1} << 18;

// The file belongs to one thread, so that its lock would guard nothing.
void printLine(const std::string& line, std::FILE* file) {
#if defined(__linux__)
  fwrite_unlocked(line.data(), 1, line.size(), file);
  putc_unlocked('\n', file);
#else
  std::fwrite(line.data(), 1, line.size(), file);
  std::fputc('\n', file);
#endif
}

}  // namespace

Recs& OutFile::records() { return output_.recs; }

int OutFile::setRecords(const Recs& lines) {
  output_.counter = 0;
  if (&lines != &output_.recs) output_.recs = lines;
  return static_cast<int>(output_.recs.size());
}

bool OutFile::open(const char* name, int mode) { return open(name, mode, false); }

void OutFile::close() {
  file_.reset();
  buffer_.reset();
}

OutFile::~OutFile() { OutFile::close(); }

bool OutFile::open(const char* name, int mode, bool append) {
  close();
  if (name == nullptr) return false;
  std::string copy = name;
  file_.reset(openTextFile(name, append));
  if (file_ == nullptr) return false;
  // Without memory for it the C library's own buffer serves.
  buffer_.reset(new (std::nothrow) char[kFileBufferSize]);
  if (buffer_ != nullptr) std::setvbuf(file_.get(), buffer_.get(), _IOFBF, kFileBufferSize);
  name_ = std::move(copy);
  status_ = 0;
  mode_ = mode;
  output_.mode = mode;
  output_.format = mode;
  output_.valueDecimals = 6;
  output_.pointDecimals = 4;
  output_.lineSize = mode == kFixedColumns ? kFixedColumnsLineSize : kTokensLineSize;
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

void OutFile::print() const {
  for (const std::string& line : output_.recs) printLine(line, file_.get());
}

}  // namespace Vesk
