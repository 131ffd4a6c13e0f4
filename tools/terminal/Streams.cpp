// SPDX-License-Identifier: MIT
#include "terminal/Streams.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "terminal/SystemFailure.h"
#include "terminal/Terminal.h"
#include "text/Words.h"

namespace VeskTool {

namespace fs = std::filesystem;

void Answer::write(std::string_view text) {
  buffer_ += text;
  if (buffer_.size() >= kBlock) flush();
}

void Answer::flush() {
  checkInterrupt();
  if (isTerminal(stdout)) buffer_ = harmless(buffer_);
  errno = 0;
  const bool written = std::fwrite(buffer_.data(), 1, buffer_.size(), stdout) == buffer_.size() &&
                       std::fflush(stdout) == 0;
  const int number = errno;
  buffer_.clear();
  if (written) return;
  checkInterrupt();
  if (isClosedPipe(number)) throw ClosedPipe();
  throw Failure(Exit::kOutput, "standard output: " + errorText(number));
}

InputSource::InputSource(const std::string& name, InputCount& count, Progress& progress)
    : count_(count), progress_(progress) {
  if (name == "-") {
    file_ = stdin;
    return;
  }
  owned_.reset(openFile(pathOf(name), "rb"));
  file_ = owned_.get();
  if (file_ == nullptr) setError(errorNumber_ = errno);
}

std::size_t InputSource::read(char* buffer, std::size_t size) {
  checkInterrupt();
  if (file_ == nullptr || !error().empty()) return 0;
  errno = 0;
  const std::size_t count = std::fread(buffer, 1, size, file_);
  const int number = errno;
  if (count < size) {
    checkInterrupt();
    if (std::ferror(file_) != 0) setError(errorNumber_ = number);
  }
  if (count == 0) return 0;
  lineEnds_ += static_cast<std::uint64_t>(std::count(buffer, buffer + count, '\n'));
  open_ = buffer[count - 1] != '\n';
  count_.bytes += count;
  count_.lines = lineEnds_ + (open_ ? 1 : 0);
  progress_.advance(count);
  return count;
}

void expectInput(const std::string& name, Progress& progress) {
  std::error_code error;
  const std::uintmax_t size = name == "-" ? 0 : fs::file_size(pathOf(name), error);
  if (name == "-" || error) {
    progress.expectUnknown();
  } else {
    progress.expect(size);
  }
}

std::string shownName(const std::string& name) { return name == "-" ? "<stdin>" : name; }

OutputFile::OutputFile(const std::string& name, bool force) : name_(name), force_(force) {
  if (name == "-") {
    file_ = stdout;
    return;
  }
  std::error_code error;
  target_ = pathOf(name);
  // A link keeps pointing to the file, which is replaced.
  if (fs::is_symlink(fs::symlink_status(target_, error))) {
    const fs::path real = fs::weakly_canonical(target_, error);
    if (!error) target_ = real;
  }
  const fs::file_status status = fs::status(target_, error);
  if (fs::is_directory(status)) fail(EISDIR);
  if (fs::exists(status) && !force) {
    throw Failure(Exit::kOutput, name + ": the file already exists", "-f replaces it");
  }
  if (isDevice(target_)) {
    file_ = openFile(target_, "wb");
    if (file_ == nullptr) fail(errno);
    return;
  }
  part_ = target_;
  part_ += ".part-" + std::to_string(processNumber());
  half_ = HalfFile(part_);
  file_ = openFile(part_, "wbx");
  if (file_ == nullptr) {
    const int number = errno;
    part_.clear();
    half_.release();
    fail(number);
  }
}

OutputFile::~OutputFile() { discard(); }

void OutputFile::write(std::string_view text) {
  buffer_ += text;
  if (buffer_.size() >= kBlock) flush();
}

// Mode "r+" is for files that are there, on every system.
void OutputFile::reopen() {
  file_ = openFile(part_, "rb+");
  if (file_ == nullptr || std::fseek(file_, 0, SEEK_END) != 0) fail(errno);
}

void OutputFile::rest() {
  if (file_ == nullptr && buffer_.empty()) return;
  flush();
  buffer_.shrink_to_fit();
  if (part_.empty()) return;
  std::FILE* file = std::exchange(file_, nullptr);
  errno = 0;
  if (std::fclose(file) != 0) fail(errno);
}

void OutputFile::flush() {
  checkInterrupt();
  if (file_ == nullptr) reopen();
  errno = 0;
  if (std::fwrite(buffer_.data(), 1, buffer_.size(), file_) != buffer_.size()) {
    const int number = errno;
    if (file_ == stdout && isClosedPipe(number)) throw ClosedPipe();
    fail(number);
  }
  buffer_.clear();
}

void OutputFile::finish() {
  if (isFinished_) return;
  flush();
  isFinished_ = true;
  if (file_ == stdout) {
    errno = 0;
    if (std::fflush(stdout) == 0) return;
    if (isClosedPipe(errno)) throw ClosedPipe();
    fail(errno);
  }
  // Pipes and devices have nothing to sync.
  const bool synced = part_.empty() || syncFile(file_);
  const int number = errno;
  std::FILE* file = file_;
  file_ = nullptr;
  errno = 0;
  const bool closed = std::fclose(file) == 0;
  if (!synced) fail(number);
  if (!closed) fail(errno);
}

void OutputFile::commit() {
  finish();
  if (part_.empty()) return;
  checkInterrupt();
  std::error_code error;
  if (!force_ && fs::exists(target_, error)) {
    throw Failure(Exit::kOutput, name_ + ": the file has appeared in the meantime",
                  "-f replaces it");
  }
  const fs::file_status status = fs::status(target_, error);
  if (fs::exists(status)) fs::permissions(part_, status.permissions(), error);
  fs::rename(part_, target_, error);
  if (error) throw Failure(Exit::kOutput, name_ + ": " + error.message());
  part_.clear();
  half_.release();
  isCommitted_ = true;
}

void OutputFile::commitForNow() {
  finish();
  together_.emplace();
  std::error_code error;
  if (!part_.empty() && force_ && fs::exists(target_, error)) {
    fs::path old = target_;
    old += ".old-" + std::to_string(processNumber());
    fs::rename(target_, old, error);
    if (error) throw Failure(Exit::kOutput, name_ + ": " + error.message());
    old_ = old;
  }
  try {
    commit();
  } catch (...) {
    withdraw();
    throw;
  }
}

void OutputFile::withdraw() noexcept {
  std::error_code error;
  if (isCommitted_) fs::remove(target_, error);
  isCommitted_ = false;
  if (!old_.empty()) fs::rename(old_, target_, error);
  old_.clear();
}

void commitTogether(const std::vector<OutputFile*>& files) {
  for (OutputFile* file : files) file->finish();
  std::size_t done = 0;
  try {
    for (; done + 1 < files.size(); ++done) files[done]->commitForNow();
    if (!files.empty()) files.back()->commit();
  } catch (...) {
    while (done > 0) files[--done]->withdraw();
    throw;
  }
}

void OutputFile::fail(int number) const {
  const std::string name = name_ == "-" ? "standard output" : name_;
  throw SystemFailure(Exit::kOutput, name + ": " + errorText(number), number, name);
}

void OutputFile::discard() {
  if (file_ != nullptr && file_ != stdout) std::fclose(file_);
  file_ = nullptr;
  std::error_code error;
  if (!part_.empty()) fs::remove(part_, error);
  part_.clear();
  half_.release();
  if (!old_.empty()) fs::remove(old_, error);
  old_.clear();
  together_.reset();
}

void refuseSameFile(const std::string& input, const std::string& output) {
  std::error_code error;
  if (input == "-" || output == "-") return;
  const fs::path one = pathOf(input);
  const fs::path other = pathOf(output);
  if (!fs::is_regular_file(one, error)) return;
  if (fs::exists(other, error) && fs::equivalent(one, other, error)) {
    throw Failure(Exit::kUsage, output + " is both input and output", "name another output");
  }
}

}  // namespace VeskTool
