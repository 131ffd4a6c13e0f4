// SPDX-License-Identifier: MIT
#include "files/Files.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <exception>
#include <filesystem>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>

#include "elements/Kinds.h"
#include "files/PackedSource.h"
#include "findings/Findings.h"
#include "select/Pattern.h"
#include "terminal/Terminal.h"
#include "text/Numbers.h"

namespace VeskTool {
namespace {

namespace fs = std::filesystem;
using Vesk::matchesPattern;

const std::string kRecordFiles = ".dat";

bool endsWith(std::string_view name, const std::string& end) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return name.size() >= end.size() &&
         std::equal(end.begin(), end.end(), name.end() - static_cast<std::ptrdiff_t>(end.size()),
                    [&](char a, char b) { return a == lower(b); });
}

// A folder that can't be read is added like a file: whoever reads the files names it
// then, and goes on.
void addFilesBelow(std::vector<std::string>& files, const fs::path& folder,
                   const std::function<bool(const std::string&)>& isWanted) {
  std::error_code error;
  fs::directory_iterator entry(folder, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    checkInterrupt();
    std::error_code unknown;
    if (entry->is_directory(unknown) && !entry->is_symlink(unknown)) {
      addFilesBelow(files, entry->path(), isWanted);
    } else if (entry->is_regular_file(unknown) && isWanted(nameOf(entry->path().filename()))) {
      files.push_back(nameOf(entry->path()));
    }
  }
  if (error) files.push_back(nameOf(folder));
}

std::vector<std::string> filesBelow(const std::string& folder,
                                    const std::vector<std::string>& ends) {
  const auto isWanted = [&](const std::string& name) {
    // Record files are told by their case, as they always were.
    if (ends.size() == 1 && ends[0] == kRecordFiles) return matchesPattern(name, "*.dat");
    return std::any_of(ends.begin(), ends.end(),
                       [&](const std::string& end) { return endsWith(name, end); });
  };
  std::vector<std::string> files;
  addFilesBelow(files, pathOf(folder), isWanted);
  if (files.empty()) {
    std::string kinds;
    for (const std::string& end : ends) kinds += (kinds.empty() ? "*" : " or *") + end;
    throw Failure(Exit::kInput, folder + ": there is no " + kinds + " file in this folder",
                  "name the files, or another folder");
  }
  return files;
}

// Patterns in the last part of the name only.
std::vector<std::string> filesMatching(const std::string& pattern) {
  const fs::path path = pathOf(pattern);
  const fs::path folder = path.parent_path();
  std::vector<std::string> files;
  std::error_code error;
  for (const fs::directory_entry& entry :
       fs::directory_iterator(folder.empty() ? fs::path(".") : folder, error)) {
    const fs::path name = entry.path().filename();
    if (matchesPattern(nameOf(name), nameOf(path.filename())) && !entry.is_directory(error)) {
      files.push_back(nameOf(folder / name));
    }
  }
  if (files.empty()) throw Failure(Exit::kInput, pattern + ": no file matches this pattern");
  return files;
}

Exit workOn(std::size_t index, Session& session, const FileWork& work) {
  try {
    const Exit exit = work(index, session);
    session.sayRest();
    return exit;
  } catch (const Failure& failure) {
    session.sayRest();
    session.error(failure.what(), failure.hint);
    return failure.exit;
  }
}

// What to do with a file that is none of records, by the end of its name.
std::string formatHint(const std::string& name) {
  for (const char* end : {".pcf", ".rvm", ".rev"}) {
    if (endsWith(name, end)) {
      return "vesk import " + name + " -o " + nameOf(pathOf(name).replace_extension(".dat")) +
             " makes a record file of it";
    }
  }
  for (const char* end : {".glb", ".gltf", ".obj", ".stl", ".ply", ".step", ".stp", ".ifc", ".dxf",
                          ".sqlite", ".html", ".svg", ".png"}) {
    if (endsWith(name, end)) {
      return "vesk export and vesk view make such files from record files; there is no way back";
    }
  }
  return "a record file has lines of fixed columns or of tokens; see docs/records.md";
}

// One file's texts, until its turn comes.
struct Result {
  TextBuffer answer;
  TextBuffer messages;
  Exit exit = Exit::kDone;
  bool ready = false;
};

Exit workInParallel(Session& session, std::size_t count, std::size_t jobs, const FileWork& work) {
  std::vector<std::unique_ptr<Result>> results(count);
  for (auto& result : results) result = std::make_unique<Result>();
  std::atomic<std::size_t> next{0};
  std::mutex mutex;
  std::condition_variable done;
  std::exception_ptr failed;  // the first; nothing is begun behind it
  const auto runSome = [&] {
    for (std::size_t i = next++; i < count; i = next++) {
      Result& result = *results[i];
      Session own(session, result.answer, result.messages);
      std::exception_ptr error;
      try {
        result.exit = workOn(i, own, work);
      } catch (...) {
        error = std::current_exception();
        next = count;
      }
      const std::lock_guard lock(mutex);
      if (error && !failed) failed = error;
      result.ready = true;
      done.notify_all();
    }
  };
  std::vector<std::jthread> threads;
  for (std::size_t i = 0; i < jobs; ++i) threads.emplace_back(runSome);
  Exit exit = Exit::kDone;
  try {
    for (const auto& result : results) {
      {
        std::unique_lock lock(mutex);
        done.wait(lock, [&] { return result->ready || failed; });
        if (failed) std::rethrow_exception(failed);
      }
      session.replay(result->answer.text(), result->messages.text());
      exit = worst(exit, result->exit);
      result->answer = {};
      result->messages = {};
    }
  } catch (...) {
    next = count;
    throw;
  }
  return exit;
}

}  // namespace

void refuseStdinTwice(const std::vector<std::string>& words) {
  if (std::count(words.begin(), words.end(), "-") > 1) {
    throw Failure(Exit::kUsage, "the standard input can be read only once");
  }
}

std::vector<std::string> expandFiles(const std::vector<std::string>& words) {
  return expandFiles(words, {kRecordFiles});
}

std::vector<std::string> expandFiles(const std::vector<std::string>& words,
                                     const std::vector<std::string>& ends) {
  std::vector<std::string> files;
  refuseStdinTwice(words);
  for (const std::string& word : words) {
    std::error_code error;
    std::vector<std::string> some;
    if (word == "-") {
      some = {word};
    } else if (fs::is_directory(pathOf(word), error)) {
      some = filesBelow(word, ends);
    } else if (word.find_first_of("*?") != word.npos && !fs::exists(pathOf(word), error)) {
      some = filesMatching(word);
    } else {
      some = {word};
    }
    std::sort(some.begin(), some.end());
    files.insert(files.end(), some.begin(), some.end());
  }
  return files;
}

void ManyFiles::define(CLI::App& app) {
  app.add_option("FILE", words, "record files, folders of *.dat files or patterns; - is stdin")
      ->required();
  app.add_option("-j,--jobs", jobs, "files that are read at a time; 0: one for each core")
      ->type_name("N")
      ->check(CLI::Range(0, 1024))
      ->capture_default_str();
}

Exit forEachFile(Session& session, const std::vector<std::string>& files, int jobs,
                 const FileWork& work) {
  for (const std::string& file : files) expectInput(file, session.progress());
  std::size_t threads =
      jobs == 0 ? std::thread::hardware_concurrency() : static_cast<std::size_t>(jobs);
  threads = std::min(std::max<std::size_t>(threads, 1), files.size());
  if (threads > 1) return workInParallel(session, files.size(), threads, work);
  Exit exit = Exit::kDone;
  for (std::size_t i = 0; i < files.size(); ++i) exit = worst(exit, workOn(i, session, work));
  return exit;
}

RecordsRead readRecords(const std::string& file, Session& session,
                        const std::function<void(Vesk::RecordFile&)>& take) {
  RecordsRead read;
  int mode = 0;
  Vesk::RecordFile records = openRecords(file, read.count, session);
  for (;;) {
    const Vesk::RecordFile::Found found = records.next();
    if (found == Vesk::RecordFile::Found::kEnd) break;
    if (found == Vesk::RecordFile::Found::kFault) {
      ++read.faults;
      // Before any element is found the file may be none of records at all.
      if (records.mode() != 0) session.say(findingOf(records));
    } else {
      ++read.elements;
      mode = joinedStyle(mode, records.mode());
      take(records);
    }
  }
  requireRecords(records, read.count, read.elements);
  read.name = records.name();
  read.mode = mode == kMixedStyle ? mode : records.mode();
  session.note(read.name + ": " + std::string(styleName(read.mode)) + " style, " +
               counted(read.elements, "element") + ", " + counted(read.count.lines, "line") + ", " +
               counted(read.count.bytes, "byte"));
  return read;
}

Vesk::RecordFile openRecords(const std::string& file, InputCount& count, Session& session) {
  Vesk::RecordOptions options;
  options.bothStyles = session.options().mixed;
  return {std::make_unique<TextInput>(file, count, session.progress()), shownName(file), options};
}

void requireRecords(const Vesk::RecordFile& records, const InputCount& count,
                    std::uint64_t elements) {
  if (!records.error().empty()) {
    throw Failure(Exit::kInput, records.name() + ": " + records.error());
  }
  if (elements == 0 && count.bytes > 0 && !count.isBlank && records.mode() == 0) {
    throw Failure(Exit::kInput, records.name() + ": this is not a record file",
                  formatHint(records.name()));
  }
}

}  // namespace VeskTool
