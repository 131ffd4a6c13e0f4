// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_FILES_H
#define VESK_TOOLS_FILES_H

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "terminal/Exit.h"
#include "terminal/Session.h"
#include "vesk/RecordFile.h"

namespace VeskTool {

// The files that the words of the command line mean: a folder means all *.dat in
// it and below, a word with * or ? that is no file all that match it. What a
// word brings is sorted by name; "-" and files stay as they are. A folder or
// pattern without a file throws a Failure with Exit::kInput.
std::vector<std::string> expandFiles(const std::vector<std::string>& words);

// The same where a folder means all files in it and below whose names end so, in
// any case: {".pcf"}.
std::vector<std::string> expandFiles(const std::vector<std::string>& words,
                                     const std::vector<std::string>& ends);

// Throws a Failure with Exit::kUsage if "-" is there more than once.
void refuseStdinTwice(const std::vector<std::string>& words);

// The options of commands that read many files.
struct ManyFiles {
  std::vector<std::string> words;
  int jobs = 1;  // 0: as many as there are cores

  void define(CLI::App& app);
};

// The work on the file with this index.
using FileWork = std::function<Exit(std::size_t index, Session& session)>;

// Does the work on each file, on as many threads as `jobs` says. What the work
// writes to its session comes out in the order of the files; with one job it is
// written at once, with more it is kept until its turn. A Failure becomes a
// message and its exit code; the other files go on. Returns the worst code.
//
// The total of bytes is told to the progress beforehand.
Exit forEachFile(Session& session, const std::vector<std::string>& files, int jobs,
                 const FileWork& work);

// What reading a record file came to.
struct RecordsRead {
  std::string name;  // as messages show it
  int mode = 0;      // the style, or kMixedStyle; 0 for a file without elements
  InputCount count;
  std::uint64_t elements = 0;
  std::uint64_t faults = 0;

  Exit exit() const { return faults > 0 ? Exit::kNo : Exit::kDone; }
};

// Reads a record file from its beginning to its end: hands out each element and
// says what can't be read. Throws what requireRecords does.
RecordsRead readRecords(const std::string& file, Session& session,
                        const std::function<void(Vesk::RecordFile&)>& take);

// For those who read on by themselves. Opens a record file, in both styles if the session's
// options say so: `count` and the session outlive it.
Vesk::RecordFile openRecords(const std::string& file, InputCount& count, Session& session);

// To be called when next() has given kEnd: throws a Failure with Exit::kInput if
// the file could not be read to its end, or holds bytes but no element.
void requireRecords(const Vesk::RecordFile& records, const InputCount& count,
                    std::uint64_t elements);

}  // namespace VeskTool

#endif
