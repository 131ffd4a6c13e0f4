// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_STREAMS_H
#define VESK_TOOLS_STREAMS_H

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "terminal/Progress.h"
#include "terminal/Terminal.h"
#include "vesk/ByteSource.h"

namespace VeskTool {

// Where text goes.
class TextSink {
 public:
  virtual ~TextSink() = default;
  virtual void write(std::string_view text) = 0;

  // Brings on its way what was written.
  virtual void flush() {}

 protected:
  TextSink() = default;
  TextSink(const TextSink&) = default;
  TextSink& operator=(const TextSink&) = default;
};

// Keeps it.
class TextBuffer : public TextSink {
 public:
  void write(std::string_view text) override { text_ += text; }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

// The standard output. Writing throws ClosedPipe when the reader has gone, a
// Failure with Exit::kOutput for any other error, Interrupted after Ctrl-C.
// flush must be called at the end; what is written later is lost.
class Answer : public TextSink {
 public:
  void write(std::string_view text) override;
  void flush() override;

 private:
  static constexpr std::size_t kBlock = std::size_t{1} << 16;

  std::string buffer_;
};

// How much was read of an input.
struct InputCount {
  std::uint64_t bytes = 0;
  std::uint64_t lines = 0;  // a last line without an end counts
  bool isBlank = false;     // known of record files: there is nothing to see in it
};

// An input: the file of this name, or for "-" the standard input. Counts what it
// gives and tells the progress. Throws Interrupted after Ctrl-C. `count` and
// `progress` outlive it.
class InputSource : public Vesk::ByteSource {
 public:
  InputSource(const std::string& name, InputCount& count, Progress& progress);

  std::size_t read(char* buffer, std::size_t size) override;

  // The errno behind error(); 0 without one.
  int errorNumber() const { return errorNumber_; }

 private:
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  std::unique_ptr<std::FILE, Closer> owned_;
  std::FILE* file_ = nullptr;
  InputCount& count_;
  Progress& progress_;
  std::uint64_t lineEnds_ = 0;
  bool open_ = false;  // the last line has no end so far
  int errorNumber_ = 0;
};

// Tells the progress how large the input is.
void expectInput(const std::string& name, Progress& progress);

// "-" is "<stdin>" in messages.
std::string shownName(const std::string& name);

// A file that appears whole or not at all: what is written goes to a file beside
// it, and commit syncs it and gives it its name. Without commit nothing stays.
// A device or a pipe that exists is written directly, "-" is the standard output.
// Every operation throws a Failure with Exit::kOutput when the system refuses.
class OutputFile : public TextSink {
 public:
  // Without `force` an existing file is refused.
  OutputFile(const std::string& name, bool force);
  ~OutputFile() override;
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  void write(std::string_view text) override;

  // Brings all of it to the disk; what is left for commit is the name.
  void finish();

  void commit();

  // For files that appear together or not at all: commit that can be taken back.
  // Until the object goes the file that was there before is kept.
  void commitForNow();
  void withdraw() noexcept;

  // Brings what was written so far to the file and closes it until the next write,
  // for those who write more files than may be open at a time.
  void rest();

 private:
  [[noreturn]] void fail(int number) const;
  void flush() override;
  void reopen();
  void discard();

  static constexpr std::size_t kBlock = std::size_t{1} << 18;

  std::string name_;
  bool force_;
  std::filesystem::path target_;
  std::filesystem::path part_;  // empty when written directly
  std::filesystem::path old_;   // what was there before; see commitForNow
  HalfFile half_;
  std::optional<Together> together_;  // from commitForNow on
  bool isFinished_ = false;
  bool isCommitted_ = false;
  std::FILE* file_ = nullptr;
  std::string buffer_;
};

// Commits all of them in their order, or takes back what was committed and throws.
void commitTogether(const std::vector<OutputFile*>& files);

// Throws a Failure with Exit::kUsage when both names are the same file.
void refuseSameFile(const std::string& input, const std::string& output);

}  // namespace VeskTool

#endif
